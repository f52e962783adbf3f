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

ZVShape polygon(std::initializer_list<std::pair<int, int>> vertices, const ZVRect& textBox) {
  ZVShape shape(listOf(vertices));
  shape.setInnerRect(textBox);
  return shape;
}

}  // namespace

ZVShape outlineOf(Shape shape) {
  switch (shape) {
    case Shape::ELLIPSE: {
      ZVShape ellipse(ZV_SHAPE_ELLIPSE);
      ellipse.setInnerRect(ZVRect(-707, -707, 707, 707));
      return ellipse;
    }
    case Shape::HEXAGON:
      return polygon({{-1000, 0}, {-500, 1000}, {500, 1000}, {1000, 0}, {500, -1000}, {-500, -1000}},
                     ZVRect(-750, -500, 750, 500));
    case Shape::HOUSE:
      return polygon({{-1000, -1000}, {-1000, 300}, {0, 1000}, {1000, 300}, {1000, -1000}},
                     ZVRect(-900, -900, 900, 300));
    case Shape::OCTAGON:
      return polygon({{-1000, -414},
                      {-1000, 414},
                      {-414, 1000},
                      {414, 1000},
                      {1000, 414},
                      {1000, -414},
                      {414, -1000},
                      {-414, -1000}},
                     ZVRect(-800, -600, 800, 600));
    case Shape::CHEVRON:
      return polygon({{-1000, -1000}, {-600, 0}, {-1000, 1000}, {600, 1000}, {1000, 0}, {600, -1000}},
                     ZVRect(-600, -600, 760, 600));
    default:
      return {};
  }
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
