#include "examples/netdraw/netshape.h"

#include <initializer_list>
#include <utility>

#include "utils/zvptdl.h"
#include "utils/zvptdlit.h"
#include "utils/zvrect.h"

namespace {

ZVPointDList* listOf(std::initializer_list<std::pair<int, int>> vertices) {
  auto* list = new ZVPointDList;
  for (auto [x, y] : vertices) list->appendPoint(new ZVPoint(x, y));
  return list;
}

// The text rectangle between -x and x, -y and y.
ZVRect around(int32_t x, int32_t y) { return {-x, -y, x, y}; }

}  // namespace

ShapeSet::ShapeSet() {
  at(Shape::ELLIPSE).setShapeType(ZV_SHAPE_ELLIPSE);
  at(Shape::ELLIPSE).setInnerRect(around(707, 707));

  at(Shape::HEXAGON)
      .pPointList(listOf({{-1000, 0}, {-500, 1000}, {500, 1000}, {1000, 0}, {500, -1000}, {-500, -1000}}));
  at(Shape::HEXAGON).setInnerRect(around(750, 500));

  at(Shape::HOUSE).pPointList(listOf({{-1000, -1000}, {-1000, 300}, {0, 1000}, {1000, 300}, {1000, -1000}}));
  at(Shape::HOUSE).setInnerRect(ZVRect(-900, -900, 900, 300));

  at(Shape::OCTAGON)
      .pPointList(listOf({{-1000, -414},
                          {-1000, 414},
                          {-414, 1000},
                          {414, 1000},
                          {1000, 414},
                          {1000, -414},
                          {414, -1000},
                          {-414, -1000}}));
  at(Shape::OCTAGON).setInnerRect(around(800, 600));

  at(Shape::CHEVRON)
      .pPointList(listOf({{-1000, -1000}, {-600, 0}, {-1000, 1000}, {600, 1000}, {1000, 0}, {600, -1000}}));
  at(Shape::CHEVRON).setInnerRect(ZVRect(-600, -600, 760, 600));
}

bool isPolygon(const ZVShape& shape) { return shape.pPointList() != nullptr; }

std::vector<ZVPoint> verticesOf(const ZVShape& shape, const ZVPoint& centre, const ZVSize& size) {
  std::vector<ZVPoint> vertices;
  if (!isPolygon(shape)) return vertices;
  // As the shape itself places them: the extra unit of an odd size is to the right and the top.
  auto place = [](int64_t v, int32_t middle, int32_t extent) {
    return static_cast<int32_t>(middle + v * (v < 1 ? extent / 2 : extent - extent / 2) / 1000);
  };
  for (ZVPointDListIter it(shape.pPointList()); it; ++it) {
    vertices.emplace_back(place(it.pPoint()->x(), centre.x(), size.width()),
                          place(it.pPoint()->y(), centre.y(), size.height()));
  }
  return vertices;
}

ZVPolygon outlinePolygon(const ZVShape& shape, const ZVPoint& centre, const ZVSize& size) {
  auto* list = new ZVPointDList;
  for (const ZVPoint& p : verticesOf(shape, centre, size)) list->appendPoint(new ZVPoint(p));
  return ZVPolygon(list);
}
