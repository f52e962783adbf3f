#include "utils/zvrorect.h"

#include <algorithm>
#include <cmath>

ZV_DEFINE_VALUE(ZVRotatedRect, ZVObject)

namespace {

// Sine of the angle up to which a segment counts as parallel to a side.
constexpr double kParallel = 0.01;

int32_t addHalfAndTruncate(double value) { return truncateToInt32(value + 0.5); }

}  // namespace

// Parametric line clipping.
int ZVRotatedRect::clipping(ZVPoint* a, ZVPoint* b) const {
  if (std::max(a->x(), b->x()) < minX_ || std::min(a->x(), b->x()) > maxX_) return 0;
  if (std::max(a->y(), b->y()) < minY_ || std::min(a->y(), b->y()) > maxY_) return 0;
  const double ax = a->x();
  const double ay = a->y();
  double dx = b->x() - ax;
  double dy = b->y() - ay;
  const double length = std::sqrt(dx * dx + dy * dy);
  if (length == 0.0) return 0;
  dx /= length;
  dy /= length;

  // Each side by a point on it and a direction that has the inside on its left.
  const struct {
    double px, py, nx, ny;
  } sides[] = {
      {x1(), y1(), ux_, uy_}, {x1(), y1(), uy_, -ux_}, {x2(), y2(), -uy_, ux_}, {x4(), y4(), -ux_, -uy_}};
  double t0 = 0.0;
  double t1 = length;
  for (const auto& side : sides) {
    const double den = dx * side.ny - dy * side.nx;
    const double num = (side.px - ax) * side.ny - (side.py - ay) * side.nx;
    if (std::fabs(den) > kParallel) {
      const double r = num / den;
      if (den >= 0.0) {
        t1 = std::min(t1, r);
      } else {
        t0 = std::max(t0, r);
      }
    } else if (num < 0.0) {
      return 0;
    }
  }
  if (t0 > t1) return 0;
  a->set(addHalfAndTruncate(ax + t0 * dx), addHalfAndTruncate(ay + t0 * dy));
  b->set(addHalfAndTruncate(ax + t1 * dx), addHalfAndTruncate(ay + t1 * dy));
  return 1;
}

void ZVRotatedRect::set(const ZVPoint* p1, const ZVPoint* p2, int32_t delta) {
  delta_ = delta;
  const double dx = static_cast<double>(p2->x()) - p1->x();
  const double dy = static_cast<double>(p2->y()) - p1->y();
  const double distance = std::sqrt(dx * dx + dy * dy);
  ux_ = distance != 0.0 ? dx / distance : 1.0;
  uy_ = distance != 0.0 ? dy / distance : 0.0;
  x1_ = p1->x() - (ux_ - uy_) * delta;
  y1_ = p1->y() - (ux_ + uy_) * delta;
  length_ = distance + 2.0 * delta;
  width_ = 2.0 * delta;
  minX_ = std::min({x1(), x2(), x3(), x4()});
  minY_ = std::min({y1(), y2(), y3(), y4()});
  maxX_ = std::max({x1(), x2(), x3(), x4()});
  maxY_ = std::max({y1(), y2(), y3(), y4()});
}

void ZVRotatedRect::init() {
  ux_ = uy_ = x1_ = y1_ = length_ = width_ = minX_ = minY_ = maxX_ = maxY_ = 0.0;
  delta_ = 0;
}

void ZVRotatedRect::ZVRotatedRectattributeCopy(const ZVRotatedRect& other) {
  ZVObject::copyAttributes(&other);
  ux_ = other.ux_;
  uy_ = other.uy_;
  x1_ = other.x1_;
  y1_ = other.y1_;
  length_ = other.length_;
  width_ = other.width_;
  minX_ = other.minX_;
  minY_ = other.minY_;
  maxX_ = other.maxX_;
  maxY_ = other.maxY_;
  delta_ = other.delta_;
}
