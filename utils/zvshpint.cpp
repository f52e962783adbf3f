// Where a shape meets the plane: crossings of its outline, containment, the nearest point and the width.
#include <algorithm>
#include <cmath>

#include "utils/zvshape.h"

namespace {

ZVRectSides nodeSides(int32_t cx, int32_t cy, int32_t w, int32_t h) {
  return {subtract32(cx, w / 2), add32(cy, h / 2 + h % 2), add32(cx, w / 2 + w % 2), subtract32(cy, h / 2)};
}

bool between(double v, double end1, double end2) {
  return std::min(end1, end2) <= v && v <= std::max(end1, end2);
}

// Half the length of the ellipse's chord at y. Negative beyond the ellipse. REQUIRES: h is not 0.
double halfChord(int32_t y, int32_t cy, int32_t w, int32_t h) {
  const double width = w;
  const double part = width * (static_cast<double>(y) - cy) / h;
  const double square = width * width * 0.25 - part * part;
  return square < 0.0 ? -1.0 : std::sqrt(square);
}

// Asks the form for coordinates about points.
template <class Question>
int askAbout(const ZVPoint& p, const ZVPoint& center, const ZVSize& size, Question question) {
  return question(p.x(), p.y(), center.x(), center.y(), size.width(), size.height());
}

}  // namespace

// An edge in world coordinates, and the first of its vertices in shape coordinates.
struct ZVShape::Edge {
  int32_t ax;
  int32_t ay;
  int32_t bx;
  int32_t by;
  const ZVPoint& vertexA;
};

int32_t ZVShape::shapeToWorld(int32_t v, int32_t center, int32_t size) {
  const int32_t half = v < 1 ? size / 2 : size / 2 + size % 2;
  return add32(center, multiply32(multiply32(v, half), 2) / 2000);
}

template <class Visit>
bool ZVShape::anyEdge(int32_t cx, int32_t cy, int32_t w, int32_t h, Visit visit) const {
  if (!pointList_ || pointList_->length() == 0) return false;
  const ZVPoint* a = &vertexOf(pointList_->pLastCell());
  int32_t ax = shapeToWorld(a->x(), cx, w);
  int32_t ay = shapeToWorld(a->y(), cy, h);
  for (const ZVDListCell* cell = pointList_->pFirstCell(); cell; cell = cell->pNextCell()) {
    const ZVPoint& b = vertexOf(cell);
    const int32_t bx = shapeToWorld(b.x(), cx, w);
    const int32_t by = shapeToWorld(b.y(), cy, h);
    if (visit(Edge{ax, ay, bx, by, *a})) return true;
    a = &b;
    ax = bx;
    ay = by;
  }
  return false;
}

int ZVShape::intersectsSegment(int32_t& x1, int32_t& y1, int32_t x2, int32_t y2, int32_t cx, int32_t cy,
                               int32_t w, int32_t h) const {
  switch (type_) {
    case ZV_SHAPE_ELLIPSE:
      return ellipseIntersect(x1, y1, x2, y2, cx, cy, w, h);
    case ZV_SHAPE_CONVEX_POLYGON:
    case ZV_SHAPE_NONCONVEX_POLYGON:
      return polygonIntersect(x1, y1, x2, y2, cx, cy, w, h);
    default:
      return rectangleIntersect(x1, y1, x2, y2, cx, cy, w, h);
  }
}

int ZVShape::intersectsSegment(ZVPoint& p1, const ZVPoint& p2, const ZVPoint& center,
                               const ZVSize& size) const {
  int32_t x = p1.x();
  int32_t y = p1.y();
  const int hit =
      intersectsSegment(x, y, p2.x(), p2.y(), center.x(), center.y(), size.width(), size.height());
  p1.set(x, y);
  return hit;
}

int ZVShape::within(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) const {
  switch (type_) {
    case ZV_SHAPE_ELLIPSE:
      return withinEllipse(x, y, cx, cy, w, h);
    case ZV_SHAPE_CONVEX_POLYGON:
      return withinConvPolygon(x, y, cx, cy, w, h);
    case ZV_SHAPE_NONCONVEX_POLYGON:
      return withinNonConvPolygon(x, y, cx, cy, w, h);
    default:
      return withinRectangle(x, y, cx, cy, w, h);
  }
}

int ZVShape::within(const ZVPoint& p, const ZVPoint& center, const ZVSize& size) const {
  return askAbout(p, center, size, [this](auto... xy) { return within(xy...); });
}

int ZVShape::onBoundary(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) const {
  switch (type_) {
    case ZV_SHAPE_ELLIPSE:
      return onBoundaryEllipse(x, y, cx, cy, w, h);
    case ZV_SHAPE_CONVEX_POLYGON:
    case ZV_SHAPE_NONCONVEX_POLYGON:
      return onBoundaryPolygon(x, y, cx, cy, w, h);
    default:
      return onBoundaryRectangle(x, y, cx, cy, w, h);
  }
}

int ZVShape::onBoundary(const ZVPoint& p, const ZVPoint& center, const ZVSize& size) const {
  return askAbout(p, center, size, [this](auto... xy) { return onBoundary(xy...); });
}

int ZVShape::withinInterior(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) const {
  return within(x, y, cx, cy, w, h) && !onBoundary(x, y, cx, cy, w, h);
}

int ZVShape::withinInterior(const ZVPoint& p, const ZVPoint& center, const ZVSize& size) const {
  return askAbout(p, center, size, [this](auto... xy) { return withinInterior(xy...); });
}

// The intersections try the parts of the outline in a fixed order, and each hit becomes the start of the
// segment that is still searched: what remains is the crossing nearest to the end.

int ZVShape::rectangleIntersect(int32_t& x1, int32_t& y1, int32_t x2, int32_t y2, int32_t cx, int32_t cy,
                                int32_t w, int32_t h) {
  const ZVRectSides s = nodeSides(cx, cy, w, h);
  int hit = ZVPoint::segmentsIntersect(x1, y1, x2, y2, s.left, s.bottom, s.left, s.top);
  hit |= ZVPoint::segmentsIntersect(x1, y1, x2, y2, s.left, s.top, s.right, s.top);
  hit |= ZVPoint::segmentsIntersect(x1, y1, x2, y2, s.right, s.top, s.right, s.bottom);
  hit |= ZVPoint::segmentsIntersect(x1, y1, x2, y2, s.right, s.bottom, s.left, s.bottom);
  return hit;
}

int ZVShape::ellipseIntersect(int32_t& x1, int32_t& y1, int32_t x2, int32_t y2, int32_t cx, int32_t cy,
                              int32_t w, int32_t h) {
  if (x1 == x2 && y1 == y2) return 0;
  const ZVRectSides s = nodeSides(cx, cy, w, h);
  if (w == 0) return ZVPoint::segmentsIntersect(x1, y1, x2, y2, cx, s.bottom, cx, s.top);
  if (h == 0) return ZVPoint::segmentsIntersect(x1, y1, x2, y2, s.left, cy, s.right, cy);
  const double dx = static_cast<double>(x1) - x2;
  const double dy = static_cast<double>(y1) - y2;
  if (dx * dx >= dy * dy) return ellipseIntersectSteep(y1, x1, y2, x2, cy, cx, h, w);
  return ellipseIntersectSteep(x1, y1, x2, y2, cx, cy, w, h);
}

int ZVShape::ellipseIntersectSteep(int32_t& x1, int32_t& y1, int32_t x2, int32_t y2, int32_t cx, int32_t cy,
                                   int32_t w, int32_t h) {
  double startX = static_cast<double>(x1) - cx;
  double startY = static_cast<double>(y1) - cy;
  const double endX = static_cast<double>(x2) - cx;
  const double endY = static_cast<double>(y2) - cy;
  const double a = w * 0.5;
  const double e = static_cast<double>(w) / h;
  // The line is x = m * y + b, the ellipse x * x + e * e * y * y = a * a.
  const double m = (startX - endX) / (startY - endY);
  const double b = endX - m * endY;
  const double e2 = e * e;
  const double a2 = a * a;
  const double m2 = m * m;
  const double discriminant = e2 * a2 + m2 * a2 - e2 * (b * b);
  if (discriminant < 0.0) return 0;
  const double root = std::sqrt(discriminant);
  int hit = 0;
  for (const double signedRoot : {root, -root}) {
    const double y = (signedRoot - m * b) / (m2 + e2);
    const double x = m * y + b;
    if (between(x, startX, endX) && between(y, startY, endY)) {
      startX = x;
      startY = y;
      hit = 1;
    }
  }
  if (hit) {
    x1 = add32(roundHalfUp(startX), cx);
    y1 = add32(roundHalfUp(startY), cy);
  }
  return hit;
}

int ZVShape::polygonIntersect(int32_t& x1, int32_t& y1, int32_t x2, int32_t y2, int32_t cx, int32_t cy,
                              int32_t w, int32_t h) const {
  double x = x1;
  double y = y1;
  double countedX = x;
  double countedY = y;
  int count = 0;
  int hit = 0;
  anyEdge(cx, cy, w, h, [&](const Edge& edge) {
    if (!ZVPoint::segmentsIntersect(x, y, x2, y2, edge.ax, edge.ay, edge.bx, edge.by)) return false;
    hit = 1;
    // A vertex is a hit of both its edges and counts once.
    if (x == countedX && y == countedY) return false;
    countedX = x;
    countedY = y;
    // A convex outline has no third crossing.
    return ++count == 2 && type_ == ZV_SHAPE_CONVEX_POLYGON;
  });
  if (hit) {
    x1 = roundHalfUp(x);
    y1 = roundHalfUp(y);
  }
  return hit;
}

int ZVShape::withinRectangle(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) {
  return nodeSides(cx, cy, w, h).within(x, y);
}

int ZVShape::withinEllipse(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) {
  if (w == 0 || h == 0) return withinRectangle(x, y, cx, cy, w, h);
  const double r = halfChord(y, cy, w, h);
  return r >= 0.0 && cx - r <= x && x <= cx + r;
}

// The inside is on the right of every edge.
int ZVShape::withinConvPolygon(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) const {
  return !anyEdge(cx, cy, w, h, [x, y](const Edge& edge) {
    const int32_t toRight = multiply32(subtract32(edge.bx, edge.ax), subtract32(y, edge.ay));
    const int32_t toLeft = multiply32(subtract32(edge.by, edge.ay), subtract32(x, edge.ax));
    return subtract32(toRight, toLeft) > 0;
  });
}

// Counts the crossings of a ray toward smaller x. An edge's upper end is on the ray's level, its lower is
// not.
int ZVShape::withinNonConvPolygon(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) const {
  if (!withinRectangle(x, y, cx, cy, w, h)) return 0;
  const int32_t farX = subtract32(x, multiply32(2, w));
  int crossings = 0;
  const bool onEdge = anyEdge(cx, cy, w, h, [&](const Edge& edge) {
    // The first end lies by the plain proportion, which for an odd size may be a unit off the mapped vertex.
    const int32_t ax = add32(cx, multiply32(edge.vertexA.x(), w) / 2000);
    if (ax > x && edge.bx > x) return false;
    if (y <= std::min(edge.ay, edge.by) || y > std::max(edge.ay, edge.by)) return false;
    if (ZVPoint::pointInSegment(x, y, ax, edge.ay, edge.bx, edge.by)) return true;
    int32_t rayX = x;
    int32_t rayY = y;
    crossings += ZVPoint::segmentsIntersect(rayX, rayY, farX, y, ax, edge.ay, edge.bx, edge.by);
    return false;
  });
  return onEdge || crossings % 2;
}

int ZVShape::onBoundaryRectangle(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) {
  return nodeSides(cx, cy, w, h).onBoundary(ZVPoint(x, y));
}

int ZVShape::onBoundaryEllipse(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) {
  if (w == 0 || h == 0) return withinRectangle(x, y, cx, cy, w, h);
  const double r = halfChord(y, cy, w, h);
  if (r < 0.0) return 0;
  const int32_t reach = roundHalfUp(r);
  return x == subtract32(cx, reach) || x == add32(cx, reach);
}

int ZVShape::onBoundaryPolygon(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) const {
  return anyEdge(cx, cy, w, h, [x, y](const Edge& edge) {
    return ZVPoint::pointInSegment(x, y, edge.ax, edge.ay, edge.bx, edge.by) != 0;
  });
}

int ZVShape::nearestPoint(ZVPoint& p, const ZVPoint& center, const ZVSize& size) const {
  const ZVRect node(center, size);
  if (type_ != ZV_SHAPE_ELLIPSE && type_ != ZV_SHAPE_CONVEX_POLYGON && type_ != ZV_SHAPE_NONCONVEX_POLYGON) {
    return node.nearestPoint(p);
  }
  if (onBoundary(p, center, size)) return 1;
  ZVPoint nearest(p);
  node.nearestPoint(nearest);
  // From within, first toward the near side, and only then from the far side of the line.
  if (node.within(p)) {
    ZVPoint nearHit(nearest);
    if (intersectsSegment(nearHit, p, center, size)) {
      p.moveTo(nearHit);
      return 1;
    }
  }
  ZVPoint farHit(p);
  node.pointInOtherSide(farHit, nearest);
  const int hit = intersectsSegment(farHit, p, center, size);
  p.moveTo(hit ? farHit : nearest);
  return hit;
}

double ZVShape::maxAvailableDiagonalLengthAtShape(int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t w,
                                                  int32_t h) const {
  const double dx = static_cast<double>(x2) - x1;
  const double dy = static_cast<double>(y2) - y1;
  const double length = std::sqrt(dx * dx + dy * dy);
  if (length == 0.0) return 0.0;
  const double across = h * dx;
  const double along = w * dy;
  if (type_ == ZV_SHAPE_ELLIPSE) return std::sqrt(across * across + along * along) / length;
  if (type_ != ZV_SHAPE_CONVEX_POLYGON && type_ != ZV_SHAPE_NONCONVEX_POLYGON) {
    return std::max(std::fabs(across + along), std::fabs(across - along)) / length;
  }
  double left = 0.0;
  double right = 0.0;
  for (const ZVDListCell* cell = pointList_ ? pointList_->pFirstCell() : nullptr; cell;
       cell = cell->pNextCell()) {
    const int32_t px = multiply32(vertexOf(cell).x(), w) / 2000;
    const int32_t py = multiply32(vertexOf(cell).y(), h) / 2000;
    const double distance = (py * dx - px * dy) / length;
    left = std::max(left, distance);
    right = std::max(right, -distance);
  }
  return 2.0 * std::min(left, right);
}

double ZVShape::maxAvailableDiagonalLengthAtShape(const ZVPoint& p1, const ZVPoint& p2,
                                                  const ZVSize& size) const {
  return maxAvailableDiagonalLengthAtShape(p1.x(), p1.y(), p2.x(), p2.y(), size.width(), size.height());
}
