// The shapes that nodes come with, and the outlines of placed ones.
#ifndef NETDRAW_NETSHAPE_H
#define NETDRAW_NETSHAPE_H

#include <vector>

#include "utils/zvpoint.h"
#include "utils/zvpolygo.h"
#include "utils/zvshape.h"
#include "utils/zvsize.h"

enum class Shape : int32_t { BOX, ELLIPSE, HEXAGON, HOUSE, OCTAGON, CHEVRON };

// The outline of a shape, with the rectangle inside it that suits a text. Polygons run clockwise.
ZVShape outlineOf(Shape shape);

// The vertices of a polygonal shape for a node of that centre and size; none for other shapes.
std::vector<ZVPoint> verticesOf(const ZVShape& shape, const ZVPoint& centre, const ZVSize& size);

// The polygon of the outline, as labels are placed in it.
ZVPolygon outlinePolygon(const ZVShape& shape, const ZVPoint& centre, const ZVSize& size);

bool isPolygon(const ZVShape& shape);

#endif
