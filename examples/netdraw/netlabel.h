// Labels in nodes: laid out in lines, placed inside an outline, and nodes made to fit around them.
#ifndef NETDRAW_NETLABEL_H
#define NETDRAW_NETLABEL_H

#include <string>

#include "examples/netdraw/netpage.h"
#include "utils/zvpolygo.h"
#include "utils/zvshape.h"

// The size of letters, unless there is no room for them.
constexpr int32_t LETTERS = 180;

// A label in letters of one size: its lines, and the rectangle that holds them.
struct LabelBlock {
  std::string text;
  int32_t letters = 0;
  int32_t width = 0;
  int32_t height = 0;
};

// Lines are broken where they would be wider than that; 0: nowhere.
LabelBlock layOut(const std::string& label, int32_t letters, int32_t widest);

// Finds the place of a label in a node, in more lines or smaller letters if it must be, and gives the label
// as it fits, with the centre of its rectangle. Letters of size 0 if it fits nowhere.
LabelBlock placeLabel(ZVPoint& place, const ZVShape& shape, const ZVPoint& centre, const ZVSize& size,
                      const std::string& label, int32_t letters, ZVLabelLocationEnum location);

void drawLabel(SvgPage& page, const ZVPoint& centre, const LabelBlock& block);

// The size of a node of that shape whose text rectangle takes the label.
ZVSize sizeAround(const std::string& label, const ZVShape& shape);

#endif
