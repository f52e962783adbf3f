#include "examples/netdraw/netfont.h"

#include <algorithm>

namespace {

int32_t widthOf(char c) { return netwidth::WIDTHS[static_cast<unsigned char>(c)]; }

// A byte that is no UTF-8 stands for itself.
std::string latin1(const std::string& utf8) {
  auto continues = [&](size_t i) { return i < utf8.size() && (utf8[i] & 0xc0) == 0x80; };
  std::string result;
  for (size_t i = 0; i < utf8.size(); ++i) {
    const auto c = static_cast<unsigned char>(utf8[i]);
    if (c < 0xc0 || !continues(i + 1)) {
      result += utf8[i];
    } else if (c <= 0xc3) {
      ++i;
      result += static_cast<char>((c & 0x03) << 6 | (utf8[i] & 0x3f));
    } else {
      while (continues(i + 1)) ++i;
      result += 'W';
    }
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
