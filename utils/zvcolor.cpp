#include "utils/zvcolor.h"

#include <algorithm>
#include <iterator>

#include "utils/zvascii.h"
#include "utils/zvgeom.h"
#include "utils/zvnumtxt.h"

ZV_DEFINE_VALUE(ZVColor, ZVObject)

namespace {

struct Fractions {
  double red, green, blue;
};

// By ZVColorIdentifierEnum.
constexpr Fractions NAMED_COLORS[] = {
    {0, 0, 0},        // black
    {0, 0, 1},        // blue
    {1, 0, 0},        // red
    {0, 1, 0},        // green
    {1, 1, 0},        // yellow
    {1, 0, 1},        // magenta
    {0, 1, 1},        // cyan
    {0.9, 0.9, 0.9},  // light gray
    {0.8, 0.8, 1},    // light blue
    {1, 0.8, 0.8},    // light red
    {0.8, 1, 0.8},    // light green
    {1, 1, 0.7},      // light yellow
    {1, 0.7, 1},      // light magenta
    {0.7, 1, 1},      // light cyan
    {0.6, 0.6, 0.6},  // gray
    {0.1, 0.1, 0.8},  // medium blue
    {0.8, 0.1, 0.1},  // medium red
    {0.1, 0.8, 0.1},  // medium green
    {0.8, 0.8, 0.1},  // medium yellow
    {0.8, 0.1, 0.8},  // medium magenta
    {0.1, 0.8, 0.8},  // medium cyan
    {0.4, 0.4, 0.4},  // dark gray
    {0, 0, 0.5},      // dark blue
    {0.5, 0, 0},      // dark red
    {0, 0.5, 0},      // dark green
    {0.5, 0.5, 0},    // dark yellow
    {0.5, 0, 0.5},    // dark magenta
    {0, 0.5, 0.5},    // dark cyan
    {1, 1, 1},        // white
};

// The number that a word begins with. White space other than blanks may lead it, but not the next word.
double numberOfWord(const char* word, const char* end) {
  while (word != end && zvascii::isSpace(*word)) ++word;
  return word == end ? 0.0 : zvnumber::realOf(word);
}

}  // namespace

int ZVColor::channel(double fraction) { return std::clamp(truncateToInt32(fraction * 255.0 + 0.5), 0, 255); }

int ZVColor::store(uint8_t& channel, int value) {
  const uint8_t byte = static_cast<uint8_t>(value);
  if (byte != channel) needsSaving(1);
  return channel = byte;
}

double ZVColor::gray() const { return 0.114 * blue() + (0.587 * green() + 0.299 * red()); }

ZVColor ZVColor::invertColor() const {
  ZVColor inverse(*this);  // needs saving, like every new colour
  inverse.ired(255 - ired_);
  inverse.igreen(255 - igreen_);
  inverse.iblue(255 - iblue_);
  return inverse;
}

int ZVColor::compare(const ZVColor* other) const {
  return other && ired_ == other->ired_ && iblue_ == other->iblue_ && igreen_ == other->igreen_ &&
         transparent() == other->transparent();
}

int ZVColor::setStringFromRGB(char* text) const {
  for (const int byte : {ired(), igreen(), iblue()}) {
    int percent = byte * 100 / 255;
    while (percent < 100 && channel(percent / 100.0) < byte) ++percent;
    for (const int sign :
         {'0' + percent / 100, int{'.'}, '0' + percent / 10 % 10, '0' + percent % 10, int{' '}})
      *text++ = static_cast<char>(sign);
  }
  text[-1] = '\0';
  return 0;
}

double ZVColor::gray(double value) {
  const int byte = channel(value);
  ired(byte);
  igreen(byte);
  iblue(byte);
  return red();
}

void ZVColor::rgb(double newRed, double newGreen, double newBlue) {
  red(newRed);
  green(newGreen);
  blue(newBlue);
}

void ZVColor::rgb(ZVColorIdentifierEnum id) {
  const uint32_t index = static_cast<uint32_t>(id);
  if (index >= std::size(NAMED_COLORS)) return;
  const Fractions& named = NAMED_COLORS[index];
  rgb(named.red, named.green, named.blue);
}

int ZVColor::setRGBFromString(const char* text) {
  if (!text) return 0;
  double numbers[3];
  for (double& number : numbers) {
    while (*text == ' ') ++text;
    if (!*text) return 0;
    const char* word = text;
    while (*text && *text != ' ') ++text;
    number = numberOfWord(word, text);
  }
  rgb(numbers[0], numbers[1], numbers[2]);
  return 1;
}

int ZVColor::transparent(int on) {
  if (transparent() != (on != 0)) needsSaving(1);
  flag(TRANSPARENT_COLOR, on != 0);
  return on;
}

int ZVColor::needsSaving(int on) {
  flag(NEEDS_SAVING, on != 0);
  return on;
}

int32_t ZVColor::sizeOf() const { return static_cast<int32_t>(sizeof *this); }

void ZVColor::init() {
  ired_ = igreen_ = iblue_ = 0;
  flags_ = NEEDS_SAVING;
}

void ZVColor::ZVColorattributeCopy(const ZVColor& other) {
  ZVObject::copyAttributes(&other);
  ired(other.ired_);
  igreen(other.igreen_);
  iblue(other.iblue_);
  transparent(other.transparent());
}
