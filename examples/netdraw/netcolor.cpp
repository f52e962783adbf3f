#include "examples/netdraw/netcolor.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <span>
#include <string_view>

namespace {

struct Name {
  std::string_view name;
  uint32_t rgb;
};

// The names of SVG. Of those with the same colour, the first is the one that pictures have.
// clang-format off
constexpr Name NAMES[] = {
    {"aliceblue", 0xf0f8ff}, {"antiquewhite", 0xfaebd7}, {"aqua", 0x00ffff}, {"aquamarine", 0x7fffd4},
    {"azure", 0xf0ffff}, {"beige", 0xf5f5dc}, {"bisque", 0xffe4c4}, {"black", 0x000000},
    {"blanchedalmond", 0xffebcd}, {"blue", 0x0000ff}, {"blueviolet", 0x8a2be2}, {"brown", 0xa52a2a},
    {"burlywood", 0xdeb887}, {"cadetblue", 0x5f9ea0}, {"chartreuse", 0x7fff00}, {"chocolate", 0xd2691e},
    {"coral", 0xff7f50}, {"cornflowerblue", 0x6495ed}, {"cornsilk", 0xfff8dc}, {"crimson", 0xdc143c},
    {"cyan", 0x00ffff}, {"darkblue", 0x00008b}, {"darkcyan", 0x008b8b}, {"darkgoldenrod", 0xb8860b},
    {"darkgray", 0xa9a9a9}, {"darkgreen", 0x006400}, {"darkgrey", 0xa9a9a9}, {"darkkhaki", 0xbdb76b},
    {"darkmagenta", 0x8b008b}, {"darkolivegreen", 0x556b2f}, {"darkorange", 0xff8c00},
    {"darkorchid", 0x9932cc}, {"darkred", 0x8b0000}, {"darksalmon", 0xe9967a}, {"darkseagreen", 0x8fbc8f},
    {"darkslateblue", 0x483d8b}, {"darkslategray", 0x2f4f4f}, {"darkslategrey", 0x2f4f4f},
    {"darkturquoise", 0x00ced1}, {"darkviolet", 0x9400d3}, {"deeppink", 0xff1493},
    {"deepskyblue", 0x00bfff}, {"dimgray", 0x696969}, {"dimgrey", 0x696969}, {"dodgerblue", 0x1e90ff},
    {"firebrick", 0xb22222}, {"floralwhite", 0xfffaf0}, {"forestgreen", 0x228b22}, {"fuchsia", 0xff00ff},
    {"gainsboro", 0xdcdcdc}, {"ghostwhite", 0xf8f8ff}, {"gold", 0xffd700}, {"goldenrod", 0xdaa520},
    {"gray", 0x808080}, {"green", 0x008000}, {"greenyellow", 0xadff2f}, {"grey", 0x808080},
    {"honeydew", 0xf0fff0}, {"hotpink", 0xff69b4}, {"indianred", 0xcd5c5c}, {"indigo", 0x4b0082},
    {"ivory", 0xfffff0}, {"khaki", 0xf0e68c}, {"lavender", 0xe6e6fa}, {"lavenderblush", 0xfff0f5},
    {"lawngreen", 0x7cfc00}, {"lemonchiffon", 0xfffacd}, {"lightblue", 0xadd8e6}, {"lightcoral", 0xf08080},
    {"lightcyan", 0xe0ffff}, {"lightgoldenrodyellow", 0xfafad2}, {"lightgray", 0xd3d3d3},
    {"lightgreen", 0x90ee90}, {"lightgrey", 0xd3d3d3}, {"lightpink", 0xffb6c1}, {"lightsalmon", 0xffa07a},
    {"lightseagreen", 0x20b2aa}, {"lightskyblue", 0x87cefa}, {"lightslategray", 0x778899},
    {"lightslategrey", 0x778899}, {"lightsteelblue", 0xb0c4de}, {"lightyellow", 0xffffe0},
    {"lime", 0x00ff00}, {"limegreen", 0x32cd32}, {"linen", 0xfaf0e6}, {"magenta", 0xff00ff},
    {"maroon", 0x800000}, {"mediumaquamarine", 0x66cdaa}, {"mediumblue", 0x0000cd},
    {"mediumorchid", 0xba55d3}, {"mediumpurple", 0x9370db}, {"mediumseagreen", 0x3cb371},
    {"mediumslateblue", 0x7b68ee}, {"mediumspringgreen", 0x00fa9a}, {"mediumturquoise", 0x48d1cc},
    {"mediumvioletred", 0xc71585}, {"midnightblue", 0x191970}, {"mintcream", 0xf5fffa},
    {"mistyrose", 0xffe4e1}, {"moccasin", 0xffe4b5}, {"navajowhite", 0xffdead}, {"navy", 0x000080},
    {"oldlace", 0xfdf5e6}, {"olive", 0x808000}, {"olivedrab", 0x6b8e23}, {"orange", 0xffa500},
    {"orangered", 0xff4500}, {"orchid", 0xda70d6}, {"palegoldenrod", 0xeee8aa}, {"palegreen", 0x98fb98},
    {"paleturquoise", 0xafeeee}, {"palevioletred", 0xdb7093}, {"papayawhip", 0xffefd5},
    {"peachpuff", 0xffdab9}, {"peru", 0xcd853f}, {"pink", 0xffc0cb}, {"plum", 0xdda0dd},
    {"powderblue", 0xb0e0e6}, {"purple", 0x800080}, {"red", 0xff0000}, {"rosybrown", 0xbc8f8f},
    {"royalblue", 0x4169e1}, {"saddlebrown", 0x8b4513}, {"salmon", 0xfa8072}, {"sandybrown", 0xf4a460},
    {"seagreen", 0x2e8b57}, {"seashell", 0xfff5ee}, {"sienna", 0xa0522d}, {"silver", 0xc0c0c0},
    {"skyblue", 0x87ceeb}, {"slateblue", 0x6a5acd}, {"slategray", 0x708090}, {"slategrey", 0x708090},
    {"snow", 0xfffafa}, {"springgreen", 0x00ff7f}, {"steelblue", 0x4682b4}, {"tan", 0xd2b48c},
    {"teal", 0x008080}, {"thistle", 0xd8bfd8}, {"tomato", 0xff6347}, {"turquoise", 0x40e0d0},
    {"violet", 0xee82ee}, {"wheat", 0xf5deb3}, {"white", 0xffffff}, {"whitesmoke", 0xf5f5f5},
    {"yellow", 0xffff00}, {"yellowgreen", 0x9acd32}};

// Further names of the X Window System, which layout programs use. Where that has a name of SVG for another
// colour, the one of SVG holds.
constexpr Name X_NAMES[] = {
    {"lightgoldenrod", 0xeedd82}, {"lightslateblue", 0x8470ff}, {"navyblue", 0x000080},
    {"violetred", 0xd02090}, {"hotpink2", 0xee6aa7}, {"hotpink3", 0xcd6090}, {"hotpink4", 0x8b3a62}};

// The lightest of four numbered shades, as red1 is of red1 to red4. The darker ones of hotpink are not made of
// it by the rule, and stand above.
constexpr Name X_SHADES[] = {
    {"antiquewhite", 0xffefdb}, {"aquamarine", 0x7fffd4}, {"azure", 0xf0ffff}, {"bisque", 0xffe4c4},
    {"blue", 0x0000ff}, {"brown", 0xff4040}, {"burlywood", 0xffd39b}, {"cadetblue", 0x98f5ff},
    {"chartreuse", 0x7fff00}, {"chocolate", 0xff7f24}, {"coral", 0xff7256}, {"cornsilk", 0xfff8dc},
    {"cyan", 0x00ffff}, {"darkgoldenrod", 0xffb90f}, {"darkolivegreen", 0xcaff70}, {"darkorange", 0xff7f00},
    {"darkorchid", 0xbf3eff}, {"darkseagreen", 0xc1ffc1}, {"darkslategray", 0x97ffff}, {"deeppink", 0xff1493},
    {"deepskyblue", 0x00bfff}, {"dodgerblue", 0x1e90ff}, {"firebrick", 0xff3030}, {"gold", 0xffd700},
    {"goldenrod", 0xffc125}, {"green", 0x00ff00}, {"honeydew", 0xf0fff0}, {"hotpink", 0xff6eb4},
    {"indianred", 0xff6a6a}, {"ivory", 0xfffff0}, {"khaki", 0xfff68f}, {"lavenderblush", 0xfff0f5},
    {"lemonchiffon", 0xfffacd}, {"lightblue", 0xbfefff}, {"lightcyan", 0xe0ffff},
    {"lightgoldenrod", 0xffec8b}, {"lightpink", 0xffaeb9}, {"lightsalmon", 0xffa07a},
    {"lightskyblue", 0xb0e2ff}, {"lightsteelblue", 0xcae1ff}, {"lightyellow", 0xffffe0},
    {"magenta", 0xff00ff}, {"maroon", 0xff34b3}, {"mediumorchid", 0xe066ff}, {"mediumpurple", 0xab82ff},
    {"mistyrose", 0xffe4e1}, {"navajowhite", 0xffdead}, {"olivedrab", 0xc0ff3e}, {"orange", 0xffa500},
    {"orangered", 0xff4500}, {"orchid", 0xff83fa}, {"palegreen", 0x9aff9a}, {"paleturquoise", 0xbbffff},
    {"palevioletred", 0xff82ab}, {"peachpuff", 0xffdab9}, {"pink", 0xffb5c5}, {"plum", 0xffbbff},
    {"purple", 0x9b30ff}, {"red", 0xff0000}, {"rosybrown", 0xffc1c1}, {"royalblue", 0x4876ff},
    {"salmon", 0xff8c69}, {"seagreen", 0x54ff9f}, {"seashell", 0xfff5ee}, {"sienna", 0xff8247},
    {"skyblue", 0x87ceff}, {"slateblue", 0x836fff}, {"slategray", 0xc6e2ff}, {"snow", 0xfffafa},
    {"springgreen", 0x00ff7f}, {"steelblue", 0x63b8ff}, {"tan", 0xffa54f}, {"thistle", 0xffe1ff},
    {"tomato", 0xff6347}, {"turquoise", 0x00f5ff}, {"violetred", 0xff3e96}, {"wheat", 0xffe7ba},
    {"yellow", 0xffff00}};
// clang-format on
constexpr uint32_t SHADES[] = {10000, 9355, 8065, 5484};  // in parts of ten thousand

uint32_t rgbOf(const ZVColor& color) {
  return static_cast<uint32_t>(color.ired() << 16 | color.igreen() << 8 | color.iblue());
}

void setRGB(ZVColor& color, uint32_t rgb) {
  color.ired(static_cast<int>(rgb >> 16 & 0xff));
  color.igreen(static_cast<int>(rgb >> 8 & 0xff));
  color.iblue(static_cast<int>(rgb & 0xff));
}

// The digits behind the #; three stand for twice as many.
bool setFromDigits(ZVColor& color, std::string digits) {
  if (digits.size() == 3) digits = {digits[0], digits[0], digits[1], digits[1], digits[2], digits[2]};
  uint32_t rgb = 0;
  const char* const end = digits.data() + digits.size();
  if (digits.size() != 6 || std::from_chars(digits.data(), end, rgb, 16).ptr != end) return false;
  setRGB(color, rgb);
  return true;
}

const Name* find(std::span<const Name> names, std::string_view name) {
  const auto found = std::ranges::find(names, name, &Name::name);
  return found == names.end() ? nullptr : &*found;
}

// A name with a number behind it: gray0 to gray100 in either spelling, or one of four shades.
bool setShade(ZVColor& color, const std::string& name) {
  const size_t digits = name.find_last_not_of("0123456789") + 1;
  const std::string stem = name.substr(0, digits);
  uint32_t number = 0;
  std::from_chars(name.data() + digits, name.data() + name.size(), number);
  if (std::to_string(number) != name.substr(digits)) return false;  // none, or not as it is spelled
  if ((stem == "gray" || stem == "grey") && number <= 100) {
    const uint32_t half = number == 50 || number == 90 ? 49 : 50;  // which are rounded down
    setRGB(color, (255 * number + half) / 100 * 0x010101);
    return true;
  }
  const Name* lightest = find(X_SHADES, stem);
  if (!lightest || number < 1 || number > std::size(SHADES)) return false;
  uint32_t rgb = 0;
  for (int shift : {16, 8, 0}) {
    rgb |= (lightest->rgb >> shift & 0xff) * SHADES[number - 1] / 10000 << shift;
  }
  setRGB(color, rgb);
  return true;
}

}  // namespace

bool setColor(ZVColor& color, const std::string& name) {
  std::string lower = name;
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  if (lower.starts_with('#')) return setFromDigits(color, lower.substr(1));
  if (lower == "none" || lower == "transparent") {
    color.transparent(1);
    return true;
  }
  const Name* known = find(NAMES, lower);
  if (!known) known = find(X_NAMES, lower);
  if (!known) return setShade(color, lower);
  setRGB(color, known->rgb);
  return true;
}

std::string nameOf(const ZVColor& color) {
  if (color.transparent()) return "none";
  const uint32_t rgb = rgbOf(color);
  for (const Name& known : NAMES) {
    if (rgb == known.rgb) return std::string(known.name);
  }
  char text[8];
  std::snprintf(text, sizeof text, "#%06x", static_cast<unsigned>(rgb));
  return text;
}
