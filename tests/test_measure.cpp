#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "utils/zvfninfo.h"
#include "utils/zvtextwd.h"

namespace {

// A font with boxes that lie before and over the pen, and a pen that may go back.
struct SlantedFont : ZVFontInfo {
  explicit SlantedFont(ZVDirectionEnum direction) : ZVFontInfo(7, 9, 3, 2, direction) {}

  int32_t charWidth(char c) override { return c - 'a' + 1; }
  int32_t charHeight(char c) override { return c == 'b' ? 20 : 4; }
  int32_t xBearing(char c) override { return c == 'a' ? -9 : c - 'a'; }
  int32_t yBearing(char c) override { return c == 'c' ? -30 : 5; }
  int32_t xSpacing(char c) override { return c == '\n' ? 40 : c == 'd' ? -6 : 3; }
  int32_t ySpacing(char c) override { return c == '\n' ? 50 : c == 'd' ? -8 : 6; }
};

std::vector<std::string> split(const std::string& text) {
  std::vector<std::string> lines(1);
  for (char c : text) c == '\n' ? lines.emplace_back() : lines.back() += c;
  return lines;
}

// The boxes of a line along one axis.
int32_t extentOf(const std::string& line, SlantedFont& font, bool alongX) {
  if (line.empty()) return 0;
  std::vector<int32_t> ends;
  int32_t pen = 0;
  for (char c : line) {
    ends.push_back(pen + (alongX ? font.xBearing(c) : font.yBearing(c)));
    ends.push_back(ends.back() + (alongX ? font.charWidth(c) : font.charHeight(c)));
    pen += alongX ? font.xSpacing(c) : font.ySpacing(c);
  }
  auto [first, last] = std::minmax_element(ends.begin(), ends.end());
  return *last - *first + 2 * (alongX ? font.xMargin() : font.yMargin());
}

TEST(MeasuredText, KnowsTheRasterOfTheDefaultFont) {
  ZVFontInfo font;
  ZVTextWithDim text("one\ntwenty\n\nfour", &font);
  EXPECT_EQ(text.lineWidth(0), 18);
  EXPECT_EQ(text.lineHeight(0), 10);
  EXPECT_EQ(text.lineWidth(2), 0);
  EXPECT_EQ(text.lineWidth(4), 0);
  EXPECT_EQ(text.width(), 36);
  EXPECT_EQ(text.height(), 48);

  font = ZVFontInfo(8, 12, 2, 3, ZV_DIRECTION_DOWN);
  EXPECT_EQ(text.lineWidth(0), 28);
  EXPECT_EQ(text.lineHeight(0), 18);
  EXPECT_EQ(text.lineHeight(2), 0);
  EXPECT_EQ(text.width(), 0);
  EXPECT_EQ(text.height(), 18);
  EXPECT_EQ(font.ySpacing('\n'), 14);
  EXPECT_EQ(font.charWidth('\n') + font.charHeight('\n') + font.xBearing('\n') + font.yBearing('\n'), 0);
}

TEST(MeasuredText, TellsNoTextFromAnEmptyOneAndMeasuresNothingWithoutAFont) {
  ZVFontInfo font;
  ZVTextWithDim text(nullptr, &font);
  EXPECT_EQ(text.numberOfLines(), 0);
  EXPECT_EQ(text.line(0), nullptr);
  EXPECT_EQ(text.width() + text.height(), 0);
  text.pString("");
  EXPECT_EQ(text.numberOfLines(), 1);
  EXPECT_STREQ(text.line(0), "");
  EXPECT_EQ(text.line(-1), nullptr);
  EXPECT_EQ(text.height(), 12);
  text.pString("a\n");
  EXPECT_EQ(text.numberOfLines(), 2);
  text.pFontInfo(nullptr);
  EXPECT_EQ(text.lineWidth(0) + text.lineHeight(0) + text.width() + text.height(), 0);
}

// Changes through every door, lines in any order between them; an address sanitizer sees a stale line.
TEST(MeasuredText, AgreesWithAPlainSplitWhateverChangesTheText) {
  std::mt19937 random(11);
  for (int direction = ZV_DIRECTION_RIGHT; direction <= ZV_DIRECTION_NONE; ++direction) {
    const bool alongX = direction == ZV_DIRECTION_RIGHT || direction == ZV_DIRECTION_LEFT;
    SlantedFont font(static_cast<ZVDirectionEnum>(direction));
    ZVTextWithDim text("", &font);
    ZVText& base = text;
    std::string model;
    for (int step = 0; step < 3000; ++step) {
      std::string change;
      for (size_t i = random() % 12; i-- > 0;) change += "abcd\n"[random() % 5];
      ZVTextWithDim other(ZVText(change.c_str()), &font);
      const auto door = random() % 10;
      if (door == 0) text.pString(change.c_str());
      if (door == 1) base.pString(change.c_str());
      if (door == 2) base = other;
      if (door == 3) text = other;
      if (door == 4) base.copyObject(&other);
      if (door <= 4) model = change;
      if (door == 5) base.prependString(change.c_str());
      if (door == 5) model.insert(0, change);
      if (door == 6 && model.size() < 60) model += text.appendString(change.c_str()) + model.size();

      const std::vector<std::string> lines = split(model);
      for (size_t i = random() % 6; i-- > 0;) {
        const size_t index = random() % (lines.size() + 1);
        const auto number = static_cast<int>(index);
        const bool there = index < lines.size();
        ASSERT_STREQ(text.line(number), there ? lines[index].c_str() : nullptr) << step;
        if (random() % 2) continue;
        ASSERT_EQ(text.lineWidth(number), there ? extentOf(lines[index], font, true) : 0) << step;
        ASSERT_EQ(text.lineHeight(number), there ? extentOf(lines[index], font, false) : 0) << step;
      }
      int32_t longest = 0;
      for (const std::string& line : lines) longest = std::max(longest, extentOf(line, font, alongX));
      const auto count = static_cast<int32_t>(lines.size());
      ASSERT_EQ(text.numberOfLines(), count);
      ASSERT_EQ(text.width(), alongX ? longest : count * 40) << step;
      ASSERT_EQ(text.height(), alongX ? count * 50 : longest) << step;
    }
  }
}

TEST(MeasuredText, RemembersWhereTheNextLineBeginsAndCopiesOnlyTheFont) {
  ZVFontInfo font;
  ZVTextWithDim text("one\ntwo\nthree", &font);
  EXPECT_EQ(text.cachedLineIndex(), -1);
  EXPECT_STREQ(text.line(1), "two");
  EXPECT_EQ(text.cachedLineIndex(), 2);
  EXPECT_EQ(text.pCachedLineStart(), text.pString() + 8);
  static_cast<ZVText&>(text).pString("one\ntwo\nthree");
  EXPECT_EQ(text.cachedLineIndex(), -1);
  EXPECT_EQ(text.pCachedLineStart(), nullptr);
  EXPECT_STREQ(text.pStringBuffer(), "two");

  // What is set is believed, until the text changes.
  text.cachedLineIndex(5);
  text.pCachedLineStart(text.pString() + 4);
  EXPECT_STREQ(text.line(5), "two");
  text.cachedLineIndex(INT32_MAX);
  text.pCachedLineStart(text.pString());
  EXPECT_STREQ(text.line(INT32_MAX), "one");

  std::unique_ptr<ZVTextWithDim> copy(text.cloneObject());
  EXPECT_STREQ(copy->pString(), text.pString());
  EXPECT_EQ(copy->pFontInfo(), &font);
  EXPECT_EQ(copy->pStringBuffer(), nullptr);
  EXPECT_EQ(copy->pCachedLineStart(), nullptr);
  copy->line(0);
  copy->copyAttributes(&text);
  EXPECT_EQ(copy->pString(), nullptr);
  EXPECT_EQ(copy->pStringBuffer(), nullptr);
}

}  // namespace
