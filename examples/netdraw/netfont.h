// The font of labels, and texts measured in it. Lengths are in units of the font: NetFont::EM to the size of
// the letters.
#ifndef NETDRAW_NETFONT_H
#define NETDRAW_NETFONT_H

#include <string>

#include "examples/netdraw/netwidth.h"
#include "utils/zvfninfo.h"
#include "utils/zvtextwd.h"

// The metrics of DejaVu Sans for the characters of Latin-1. Pictures name this font, so that a text takes the
// room that was measured for it.
class NetFont : public ZVFontInfo {
 public:
  static constexpr const char* FAMILY = "DejaVu Sans, Verdana, sans-serif";
  static constexpr int32_t EM = netwidth::EM;
  // The box of a line, from the depth of its letters to their height, and from its middle down to where they
  // stand.
  static constexpr int32_t LINE_HEIGHT = netwidth::ASCENT + netwidth::DESCENT;
  static constexpr int32_t BASE = (netwidth::ASCENT - netwidth::DESCENT) / 2;

  NetFont();

  int32_t charWidth(char c) override;
  int32_t xSpacing(char c) override;
  // The boxes of lines stand close.
  int32_t ySpacing(char c) override;
};

// A text in UTF-8 as the font measures it; what is not in Latin-1 counts as wide as a W. The font must live
// as long.
class NetText : public ZVTextWithDim {
 public:
  NetText(const std::string& text, NetFont& font);
};

// The text with line breaks where it may be broken, behind a blank or a hyphen, so that no line is wider than
// that if it can be helped. Line breaks of the text itself stay.
std::string brokenIntoLines(const std::string& text, int64_t widest, NetFont& font);

#endif
