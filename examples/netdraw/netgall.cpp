#include "examples/netdraw/netgall.h"

#include <cmath>
#include <numbers>

#include "examples/netdraw/netlabel.h"
#include "examples/netdraw/netpict.h"
#include "examples/netdraw/netshape.h"

namespace {

constexpr int32_t CELL = 1700;
constexpr int32_t COLUMNS = 6;
constexpr int32_t ROWS = 5;
constexpr int RING = 24;
constexpr const char* OUTLINE = "fill=\"aliceblue\" stroke=\"black\"";
constexpr const char* THIN = "stroke=\"steelblue\" stroke-width=\"0.7\"";
constexpr const char* FAINT = "stroke=\"lightgray\" stroke-width=\"0.7\"";

ZVPoint ringPoint(const ZVPoint& centre, int i, double radius) {
  const double angle = 2.0 * std::numbers::pi * i / RING + 0.05;
  return ZVPoint(centre.x() + static_cast<int32_t>(std::lround(radius * std::cos(angle))),
                 centre.y() + static_cast<int32_t>(std::lround(radius * std::sin(angle))));
}

class Gallery {
 public:
  Gallery() {
    for (int column = 0; column < COLUMNS; ++column) {
      const ZVShape shape = outlineOf(static_cast<Shape>(column));
      drawClipping(shape, cell(column, 0));
      drawNearest(shape, cell(column, 1));
      drawLabels(shape, cell(column, 2), ZV_LABEL_LOCATION_TOP);
      drawLabels(shape, cell(column, 3), ZV_LABEL_LOCATION_CENTER);
      drawLabels(shape, cell(column, 4), ZV_LABEL_LOCATION_BOTTOM);
    }
  }

  std::string svg() const { return page_.svg(); }

 private:
  static ZVPoint cell(int column, int row) {
    return ZVPoint(column * CELL + CELL / 2, (ROWS - row) * CELL - CELL / 2);
  }

  // Segments from a ring to the centre: what lies outside, up to the crossing nearest the ring.
  void drawClipping(const ZVShape& shape, const ZVPoint& centre) {
    drawOutline(page_, shape, centre, size_, OUTLINE);
    for (int i = 0; i < RING; ++i) {
      const ZVPoint outside = ringPoint(centre, i, 0.46 * CELL);
      ZVPoint crossing = centre;
      if (!shape.intersectsSegment(crossing, outside, centre, size_)) continue;
      page_.line(outside, crossing, THIN);
      page_.dot(crossing, "fill=\"crimson\"");
    }
  }

  void drawNearest(const ZVShape& shape, const ZVPoint& centre) {
    drawOutline(page_, shape, centre, size_, OUTLINE);
    for (double radius : {0.46 * CELL, 0.2 * CELL}) {
      for (int i = 0; i < RING; ++i) {
        const ZVPoint point = ringPoint(centre, i, radius);
        ZVPoint nearest = point;
        const bool onOutline = shape.nearestPoint(nearest, centre, size_) != 0;
        page_.line(point, nearest, onOutline ? THIN : FAINT);
        if (onOutline) page_.dot(nearest, "fill=\"crimson\"");
      }
    }
  }

  // Polygons place labels themselves; the other shapes have a text rectangle for them.
  void drawLabels(const ZVShape& shape, const ZVPoint& centre, ZVLabelLocationEnum location) {
    constexpr int32_t LARGE_LETTERS = 220;
    const char* const names[] = {"top", "centre", "bottom"};
    ZVPoint place;
    const LabelBlock label =
        placeLabel(place, shape, centre, size_, names[location], LARGE_LETTERS, location);
    drawOutline(page_, shape, centre, size_, OUTLINE);
    if (isPolygon(shape)) {
      drawGrid(page_, outlinePolygon(shape, centre, size_), label.height, location);
    } else {
      ZVRect inner;
      shape.getCurrentInnerRect(inner, centre, size_);
      page_.rect(inner, "fill=\"none\" stroke=\"crimson\" stroke-width=\"0.5\"");
    }
    if (label.letters == 0) return;
    page_.rect(ZVRect(place, label.width, label.height), "fill=\"white\" stroke=\"steelblue\"");
    drawLabel(page_, place, label);
  }

  ZVSize size_{1201, 901};
  SvgPage page_{ZVRect(0, 0, COLUMNS* CELL, ROWS* CELL), 1000.0 / 72.0};
};

}  // namespace

std::string gallerySvg() { return Gallery().svg(); }
