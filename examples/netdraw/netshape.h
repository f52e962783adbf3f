// The outlines of the node shapes.
#ifndef NETDRAW_NETSHAPE_H
#define NETDRAW_NETSHAPE_H

#include <array>
#include <vector>

#include "examples/netdraw/netmodel.h"
#include "utils/zvpolygo.h"
#include "utils/zvshape.h"

// One outline for each shape, with the rectangle inside it that suits a text. Polygons run clockwise.
class ShapeSet {
 public:
  ShapeSet();
  ShapeSet(const ShapeSet&) = delete;
  ShapeSet& operator=(const ShapeSet&) = delete;

  const ZVShape& operator[](Shape shape) const { return shapes_[static_cast<size_t>(shape)]; }

 private:
  ZVShape& at(Shape shape) { return shapes_[static_cast<size_t>(shape)]; }

  std::array<ZVShape, 6> shapes_;
};

// The vertices of a polygonal shape for a node of that centre and size; none for other shapes.
std::vector<ZVPoint> verticesOf(const ZVShape& shape, const ZVPoint& centre, const ZVSize& size);

// The polygon of the outline, as labels are placed in it.
ZVPolygon outlinePolygon(const ZVShape& shape, const ZVPoint& centre, const ZVSize& size);

bool isPolygon(const ZVShape& shape);

#endif
