#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

#include "utils/zvcolor.h"

namespace {

using Bytes = std::array<int, 3>;

Bytes bytesOf(const ZVColor& color) { return {color.ired(), color.igreen(), color.iblue()}; }

ZVColor colorOf(const Bytes& bytes) {
  ZVColor color;
  color.ired(bytes[0]);
  color.igreen(bytes[1]);
  color.iblue(bytes[2]);
  color.needsSaving(0);
  return color;
}

std::string textOf(const ZVColor& color) {
  std::array<char, 16> text;
  text.fill('#');
  EXPECT_EQ(color.setStringFromRGB(text.data()), 0);
  EXPECT_EQ(text[15], '#');
  return text.data();
}

TEST(Color, StoresBytesUnclampedAndFractionsRoundedAndClamped) {
  ZVColor color;
  for (int value = -300; value < 600; ++value) {
    auto byte = [value](int more) { return (value + more + 512) % 256; };
    EXPECT_EQ(color.ired(value), byte(0));
    EXPECT_EQ(color.igreen(value + 1), byte(1));
    EXPECT_EQ(color.iblue(value + 2), byte(2));
    EXPECT_EQ(bytesOf(color), (Bytes{byte(0), byte(1), byte(2)}));
    ZVColor same;
    same.rgb(color.red(), color.green(), color.blue());
    EXPECT_EQ(same.compare(&color), 1);
  }
  const struct {
    double fraction;
    int byte;
  } fractions[] = {{0.5, 128},   {-1.0, 0},   {2.0, 255}, {0.1, 26},       {0.3, 77},     {0.7, 179},
                   {1e300, 255}, {-1e300, 0}, {NAN, 0},   {0.49 / 255, 0}, {0.5 / 255, 1}};
  for (const auto& [fraction, byte] : fractions) {
    EXPECT_EQ(color.red(fraction), byte / 255.0);
    EXPECT_EQ(color.green(fraction), byte / 255.0);
    EXPECT_EQ(color.blue(fraction), byte / 255.0);
    EXPECT_EQ(bytesOf(color), (Bytes{byte, byte, byte}));
    for (const double inverse : {color.invertRed(), color.invertGreen(), color.invertBlue()})
      EXPECT_EQ(inverse, 1.0 - byte / 255.0);
    color.rgb(ZV_COLOR_LIGHT_RED);
    EXPECT_EQ(color.gray(fraction), byte / 255.0);
    EXPECT_EQ(bytesOf(color), (Bytes{byte, byte, byte}));
    EXPECT_NEAR(color.gray(), byte / 255.0, 1e-15);
    EXPECT_EQ(color.invertGray(), 1.0 - color.gray());
  }
  EXPECT_NEAR(colorOf({10, 100, 200}).gray(), (0.299 * 10 + 0.587 * 100 + 0.114 * 200) / 255, 1e-15);
}

TEST(Color, NeedsSavingAfterEachChangeAndOnlyThen) {
  const ZVColor black;
  EXPECT_EQ(bytesOf(black), (Bytes{0, 0, 0}));
  EXPECT_EQ(black.transparent(), 0);
  EXPECT_EQ(black.needsSaving(), 1);
  static const ZVColor red = colorOf({255, 0, 0});
  const struct {
    void (*act)(ZVColor& color);
    bool changes;
  } acts[] = {
      {[](ZVColor& c) { c.ired(256); }, false},
      {[](ZVColor& c) { c.igreen(1); }, true},
      {[](ZVColor& c) { c.blue(0.001); }, false},
      {[](ZVColor& c) { c.rgb(ZV_COLOR_BLACK); }, false},
      {[](ZVColor& c) { c.transparent(0); }, false},
      {[](ZVColor& c) { EXPECT_EQ(c.transparent(5), 5); }, true},
      {[](ZVColor& c) { c = red; }, true},
      {[](ZVColor& c) { c.copyObject(&red); }, true},
      {[](ZVColor& c) { c = ZVColor(); }, false},
      {[](ZVColor& c) { c.copyAttributes(&c); }, false},
  };
  for (const auto& [act, changes] : acts) {
    ZVColor target = black;
    EXPECT_EQ(target.needsSaving(), 1);
    EXPECT_EQ(target.needsSaving(0), 0);
    act(target);
    EXPECT_EQ(target.needsSaving(), changes);
    EXPECT_EQ(target.compare(&black), !changes);
    const ZVColor copy = target;
    EXPECT_EQ(target.compare(&copy), 1);
  }
  EXPECT_EQ(black.compare(nullptr), 0);
}

TEST(Color, KnowsTheNamedColors) {
  const Bytes named[] = {{0, 0, 0},       {0, 0, 255},     {255, 0, 0},     {0, 255, 0},     {255, 255, 0},
                         {255, 0, 255},   {0, 255, 255},   {230, 230, 230}, {204, 204, 255}, {255, 204, 204},
                         {204, 255, 204}, {255, 255, 179}, {255, 179, 255}, {179, 255, 255}, {153, 153, 153},
                         {26, 26, 204},   {204, 26, 26},   {26, 204, 26},   {204, 204, 26},  {204, 26, 204},
                         {26, 204, 204},  {102, 102, 102}, {0, 0, 128},     {128, 0, 0},     {0, 128, 0},
                         {128, 128, 0},   {128, 0, 128},   {0, 128, 128},   {255, 255, 255}};
  ZVColor color;
  for (int id = 0; id <= ZV_COLOR_WHITE; ++id) {
    color.rgb(static_cast<ZVColorIdentifierEnum>(id));
    EXPECT_EQ(bytesOf(color), named[id]) << id;
  }
  color.needsSaving(0);
  for (int id : {29, -1, 1000}) color.rgb(static_cast<ZVColorIdentifierEnum>(id));
  EXPECT_EQ(bytesOf(color), named[ZV_COLOR_WHITE]);
  EXPECT_EQ(color.needsSaving(), 0);
}

TEST(Color, HasAnInverse) {
  ZVColor color = colorOf({10, 100, 200});
  color.transparent(1);
  color.needsSaving(0);
  const ZVColor inverse = color.invertColor();
  EXPECT_EQ(bytesOf(inverse), (Bytes{245, 155, 55}));
  EXPECT_EQ(inverse.transparent(), 1);
  EXPECT_EQ(inverse.needsSaving(), 1);
  EXPECT_EQ(bytesOf(color), (Bytes{10, 100, 200}));
  EXPECT_EQ(color.needsSaving(), 0);
}

// The smallest percentage that gives at least the byte, by whole numbers.
TEST(Color, TextHasTheSmallestPercentageForEachByte) {
  for (int byte = 0; byte < 256; ++byte) {
    int percent = 0;
    while ((percent * 255 + 50) / 100 < byte) ++percent;
    const std::string level = std::to_string(percent / 100.0).substr(0, 4);
    EXPECT_EQ(textOf(colorOf({byte, 0, 255})), level + " 0.00 1.00");
    EXPECT_EQ(textOf(colorOf({0, byte, byte})), "0.00 " + level + " " + level);
    ZVColor read;
    EXPECT_EQ(read.setRGBFromString((level + " 0.50 " + level).c_str()), 1);
    const int back = (percent * 255 + 50) / 100;
    EXPECT_EQ(bytesOf(read), (Bytes{back, 128, back}));
  }
}

TEST(Color, ReadsThreeWordsOrNothing) {
  const struct {
    const char* text;
    bool read;
    Bytes bytes;
  } lines[] = {
      {"  1 0.5   0", true, {255, 128, 0}},
      {"0 0 1 0.5 more", true, {0, 0, 255}},
      {"red 1,0 1e0x", true, {0, 255, 255}},  // the numbers that the words begin with
      {"nan 0x1p-1 5e-1", true, {0, 128, 128}},
      {"\t1 \t 1", true, {255, 0, 255}},  // a tab is a word, and no number
      {"\n+ 1\t1 1", true, {0, 255, 255}},
      {"1\t1\t1", false, {}},
      {"1 1 ", false, {}},
      {"", false, {}},
      {nullptr, false, {}},
  };
  for (const auto& [text, read, bytes] : lines) {
    SCOPED_TRACE(text ? text : "null");
    ZVColor color = colorOf({1, 2, 3});
    EXPECT_EQ(color.setRGBFromString(text), read);
    EXPECT_EQ(bytesOf(color), read ? bytes : (Bytes{1, 2, 3}));
    EXPECT_EQ(color.needsSaving(), read);
  }
}

}  // namespace
