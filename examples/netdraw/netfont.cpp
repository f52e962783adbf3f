#include "examples/netdraw/netfont.h"

#include <algorithm>

#include "examples/netdraw/netutf8.h"

namespace {

int32_t widthOf(char c) { return netwidth::WIDTHS[static_cast<unsigned char>(c)]; }

std::string latin1(const std::string& utf8) {
  std::string result;
  for (size_t i = 0; i < utf8.size();) {
    const size_t length = utf8Length(utf8, i);
    const auto first = static_cast<unsigned char>(utf8[i]);
    if (length < 2) {
      result += utf8[i];
    } else if (first <= 0xc3) {
      result += static_cast<char>((first & 0x03) << 6 | (utf8[i + 1] & 0x3f));
    } else {
      result += 'W';
    }
    i += std::max<size_t>(length, 1);
  }
  return result;
}

}  // namespace

NetFont::NetFont() : ZVFontInfo(widthOf('W'), LINE_HEIGHT) {}

int32_t NetFont::charWidth(char c) { return c == '\n' ? 0 : widthOf(c); }

int32_t NetFont::xSpacing(char c) { return charWidth(c); }

int32_t NetFont::ySpacing(char c) { return c == '\n' ? LINE_HEIGHT : 0; }

NetText::NetText(const std::string& text, NetFont& font) : ZVTextWithDim(latin1(text).c_str(), &font) {}

std::string brokenIntoLines(const std::string& text, int64_t widest, NetFont& font) {
  std::string result;
  int64_t lineWidth = 0;
  for (size_t start = 0; start < text.size();) {
    const size_t end = std::min(text.find_first_of(" -\n", start), text.size() - 1) + 1;
    const std::string piece = text.substr(start, end - start);
    const int32_t width = NetText(piece, font).width();
    // A blank at the end of a line shows nowhere.
    const int32_t shown = piece.back() == ' ' ? width - font.xSpacing(' ') : width;
    if (lineWidth > 0 && lineWidth + shown > widest) {
      if (result.back() == ' ') result.pop_back();
      result += '\n';
      lineWidth = 0;
    }
    result += piece;
    lineWidth = piece.back() == '\n' ? 0 : lineWidth + width;
    start = end;
  }
  return result;
}
