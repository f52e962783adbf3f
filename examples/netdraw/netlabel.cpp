#include "examples/netdraw/netlabel.h"

#include <algorithm>
#include <vector>

#include "examples/netdraw/netfont.h"
#include "examples/netdraw/netshape.h"
#include "utils/zvdlist.h"

namespace {

constexpr int32_t SMALLEST_LETTERS = 20;
constexpr int32_t MOST_LINES = 1000;  // of letters in a node, which bounds the grid of a huge one
// A node that is fitted around a label has lines of that width at the most, and that much room around them.
constexpr int32_t WIDEST_LINE = 1200;
constexpr int32_t PADDING = 40;

// From units of the font to those of the drawing, rounded up.
int32_t scaled(int32_t units, int32_t letters) {
  return static_cast<int32_t>((int64_t{units} * letters + NetFont::EM - 1) / NetFont::EM);
}

// Whether a side of the outline runs through the rectangle. The grid of labels looks at the sides on its
// stripes alone, and a corner between two stripes may stand out.
bool crosses(const std::vector<ZVPoint>& outline, ZVRect rect) {
  rect.inflate(-1, -1);
  for (size_t i = 0; i < outline.size(); ++i) {
    if (rect.overlapsSegment(outline[i], outline[(i + 1) % outline.size()])) return true;
  }
  return false;
}

// The grid of a polygon finds a place, or else the text rectangle of the shape is one in the middle.
bool fits(ZVPoint& place, const LabelBlock& block, const ZVShape& shape, const ZVPoint& centre,
          const ZVSize& size, ZVLabelLocationEnum location) {
  if (isPolygon(shape)) {
    const ZVPolygon polygon = outlinePolygon(shape, centre, size);
    ZVDList grid;
    polygon.createGrid(&grid, block.height, location);
    const int found = polygon.assignRectangle(ZV_LABEL_REGION_CENTER, location, &grid, block.height,
                                              block.width, &place, 0);
    ZVPolygon::deleteGrid(&grid);
    if (found && !crosses(verticesOf(shape, centre, size), ZVRect(place, block.width, block.height))) {
      return true;
    }
    if (location != ZV_LABEL_LOCATION_CENTER) return false;
  }
  ZVRect inner;
  shape.getCurrentInnerRect(inner, centre, size);
  if (block.width > inner.width() || block.height > inner.height()) return false;
  place = inner.center();
  return true;
}

}  // namespace

LabelBlock layOut(const std::string& label, int32_t letters, int32_t widest) {
  NetFont font;
  LabelBlock block{label, letters};
  if (widest > 0) {
    const int64_t units = int64_t{widest} * NetFont::EM / letters;
    block.text = brokenIntoLines(label, units, font);
  }
  NetText text(block.text, font);
  // Even, so that the rectangle reaches equally far to both sides of its centre.
  block.width = (scaled(text.width(), letters) + 1) / 2 * 2;
  block.height = (scaled(text.height(), letters) + 1) / 2 * 2;
  return block;
}

LabelBlock placeLabel(ZVPoint& place, const ZVShape& shape, const ZVPoint& centre, const ZVSize& size,
                      const std::string& label, int32_t letters, ZVLabelLocationEnum location) {
  ZVRect inner;
  shape.getCurrentInnerRect(inner, centre, size);
  const int32_t smallest = std::max(SMALLEST_LETTERS, size.height() / MOST_LINES);
  for (; letters >= smallest; letters = letters * 9 / 10) {
    for (int32_t widest : {0, inner.width()}) {
      LabelBlock block = layOut(label, letters, widest);
      if (fits(place, block, shape, centre, size, location)) return block;
    }
  }
  return {};
}

void drawLabel(SvgPage& page, const ZVPoint& centre, const LabelBlock& block) {
  NetFont font;
  NetText measured(block.text, font);
  ZVTextWithDim lines(block.text.c_str());
  const int32_t height = scaled(NetFont::LINE_HEIGHT, block.letters);
  int32_t middle = centre.y() + (block.height - height) / 2;
  for (int i = 0; const char* line = lines.line(i); ++i, middle -= height) {
    page.text(ZVPoint(centre.x(), middle - scaled(NetFont::BASE, block.letters)),
              scaled(measured.lineWidth(i), block.letters), block.letters, line);
  }
}

ZVSize sizeAround(const std::string& label, const ZVShape& shape) {
  const LabelBlock block = layOut(label, LETTERS, WIDEST_LINE);
  ZVRect bounds;
  shape.fitBoundingRectToInnerRect(bounds,
                                   ZVRect(ZVPoint(), block.width + 2 * PADDING, block.height + 2 * PADDING));
  return ZVSize(bounds.width(), bounds.height());
}
