#include "utils/zvpoint.h"

#include <algorithm>
#include <cstdlib>

ZV_DEFINE_VALUE(ZVPoint, ZVTuple)

namespace {

// Differences of integer coordinates are taken in 32 bits before any work in double.
double difference(int32_t a, int32_t b) { return subtract32(a, b); }
double difference(double a, double b) { return a - b; }

int onSegment(int32_t px, int32_t py, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  return ZVPoint::pointInSegment(px, py, x1, y1, x2, y2);
}
int onSegment(double px, double py, double x1, double y1, double x2, double y2) {
  return ZVPoint::doublePointInSegment(px, py, x1, y1, x2, y2);
}

void bringBack(double value, int32_t& result) { result = roundHalfUp(value); }
void bringBack(double value, double& result) { result = value; }

// The line through two points as dy * x - dx * y + c = 0; the sign of side tells on which side a point lies.
template <class Number>
struct Line {
  Line(Number x1, Number y1, Number x2, Number y2)
      : dy(difference(y2, y1)),
        dx(difference(x2, x1)),
        c(static_cast<double>(x2) * static_cast<double>(y1) -
          static_cast<double>(x1) * static_cast<double>(y2)) {}

  double side(Number x, Number y) const {
    return dy * static_cast<double>(x) - dx * static_cast<double>(y) + c;
  }

  double dy;
  double dx;
  double c;
};

template <class Number>
int boxesMiss(Number a1, Number a2, Number b1, Number b2) {
  return std::min(a1, a2) > std::max(b1, b2) || std::min(b1, b2) > std::max(a1, a2);
}

template <class Number>
int intersectSegments(Number& x1, Number& y1, Number x2, Number y2, Number x3, Number y3, Number x4,
                      Number y4) {
  if (boxesMiss(x1, x2, x3, x4) || boxesMiss(y1, y2, y3, y4)) return 0;

  auto hit = [&x1, &y1](Number x, Number y) {
    x1 = x;
    y1 = y;
    return 1;
  };
  if (onSegment(x3, y3, x1, y1, x2, y2)) return hit(x3, y3);
  if (onSegment(x4, y4, x1, y1, x2, y2)) return hit(x4, y4);
  if (onSegment(x1, y1, x3, y3, x4, y4)) return 1;
  if (onSegment(x2, y2, x3, y3, x4, y4)) return hit(x2, y2);

  const Line<Number> first(x1, y1, x2, y2);
  if (first.side(x3, y3) * first.side(x4, y4) >= 0.0) return 0;
  const Line<Number> second(x3, y3, x4, y4);
  if (second.side(x1, y1) * second.side(x2, y2) >= 0.0) return 0;
  const double determinant = first.dy * second.dx - second.dy * first.dx;
  if (determinant == 0.0) return 0;
  bringBack((first.dx * second.c - second.dx * first.c) / determinant, x1);
  bringBack((first.dy * second.c - second.dy * first.c) / determinant, y1);
  return 1;
}

// The line through (u1, v1) and (u2, v2) at u. The x and y forms below are this one with the axes exchanged.
int lineAt(int32_t u1, int32_t v1, int32_t u2, int32_t v2, double u, double& v) {
  if (u1 == u2) return 0;
  const double du = static_cast<double>(u2) - u1;
  const double dv = static_cast<double>(v2) - v1;
  if (u == u1) {
    v = v1;
  } else if (u == u2) {
    v = v2;
  } else {
    v = v1 + dv * (u - u1) / du;
  }
  return 1;
}

int rayReaches(int32_t u1, int32_t u2, double u) { return u2 > u1 ? u1 <= u : u2 < u1 && u1 >= u; }

int segmentReaches(int32_t u1, int32_t u2, double u) { return (u1 <= u && u <= u2) || (u2 <= u && u <= u1); }

}  // namespace

double ZVPoint::distance(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  return std::sqrt(distanceSquare(x1, y1, x2, y2));
}

double ZVPoint::distanceSquare(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  const double dx = difference(x2, x1);
  const double dy = difference(y2, y1);
  return dx * dx + dy * dy;
}

ZVDirectionEnum ZVPoint::direction(const ZVPoint& other) const {
  if (x_ != other.x_ && y_ != other.y_) return ZV_DIRECTION_NONE;
  if (x_ != other.x_) return x_ < other.x_ ? ZV_DIRECTION_RIGHT : ZV_DIRECTION_LEFT;
  if (y_ != other.y_) return y_ < other.y_ ? ZV_DIRECTION_UP : ZV_DIRECTION_DOWN;
  return ZV_DIRECTION_NONE;
}

ZVDirectionEnum ZVPoint::roughDirection(const ZVPoint& other) const {
  const int64_t dx = int64_t{other.x_} - x_;
  const int64_t dy = int64_t{other.y_} - y_;
  if (std::abs(dx) < std::abs(dy)) return dy < 0 ? ZV_DIRECTION_DOWN : ZV_DIRECTION_UP;
  return dx < 0 ? ZV_DIRECTION_LEFT : ZV_DIRECTION_RIGHT;
}

int ZVPoint::pointInSegment(int32_t px, int32_t py, int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  return doublePointInSegment(px, py, x1, y1, x2, y2);
}

int ZVPoint::doublePointInSegment(double px, double py, double x1, double y1, double x2, double y2) {
  if (px < std::min(x1, x2) || px > std::max(x1, x2)) return 0;
  if (py < std::min(y1, y2) || py > std::max(y1, y2)) return 0;
  const double dx = x2 - x1;
  const double dy = y2 - y1;
  const double lengthSquare = dx * dx + dy * dy;
  if (lengthSquare == 0.0) return 1;
  const double cross = dx * (py - y1) - dy * (px - x1);
  return cross * cross / lengthSquare < 0.2;
}

int ZVPoint::segmentsIntersect(int32_t& x1, int32_t& y1, int32_t x2, int32_t y2, int32_t x3, int32_t y3,
                               int32_t x4, int32_t y4) {
  return intersectSegments(x1, y1, x2, y2, x3, y3, x4, y4);
}

int ZVPoint::segmentsIntersect(double& x1, double& y1, double x2, double y2, double x3, double y3, double x4,
                               double y4) {
  return intersectSegments(x1, y1, x2, y2, x3, y3, x4, y4);
}

int ZVPoint::lineAtX(int32_t x1, int32_t y1, int32_t x2, int32_t y2, double x, double& y) {
  return lineAt(x1, y1, x2, y2, x, y);
}

int ZVPoint::lineAtY(int32_t x1, int32_t y1, int32_t x2, int32_t y2, double& x, double y) {
  return lineAt(y1, x1, y2, x2, y, x);
}

int ZVPoint::rayAtX(int32_t x1, int32_t y1, int32_t x2, int32_t y2, double x, double& y) {
  return rayReaches(x1, x2, x) && lineAt(x1, y1, x2, y2, x, y);
}

int ZVPoint::rayAtY(int32_t x1, int32_t y1, int32_t x2, int32_t y2, double& x, double y) {
  return rayReaches(y1, y2, y) && lineAt(y1, x1, y2, x2, y, x);
}

int ZVPoint::segmentAtX(int32_t x1, int32_t y1, int32_t x2, int32_t y2, double x, double& y) {
  return segmentReaches(x1, x2, x) && lineAt(x1, y1, x2, y2, x, y);
}

int ZVPoint::segmentAtY(int32_t x1, int32_t y1, int32_t x2, int32_t y2, double& x, double y) {
  return segmentReaches(y1, y2, y) && lineAt(y1, x1, y2, x2, y, x);
}

void ZVPoint::debugOutput(int level) {
  char label[] = "Point";
  internalDebugOutput(level, label);
}

void ZVPoint::init() {}

void ZVPoint::ZVPointattributeCopy(const ZVPoint& other) { ZVTuple::copyAttributes(&other); }
