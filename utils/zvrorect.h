// The band around a segment: the rectangle that follows the segment's direction and reaches a margin delta
// beyond it on all sides. It clips other segments, which tells how much of them runs close by.
#ifndef ZV_ZVRORECT_H
#define ZV_ZVRORECT_H

#include "utils/zvobject.h"
#include "utils/zvpoint.h"

class ZV_EXPORT ZVRotatedRect : public ZVObject {
 public:
  // An empty band; clipping needs a set before.
  ZVRotatedRect() = default;
  ZVRotatedRect(const ZVPoint* p1, const ZVPoint* p2, int32_t delta) { set(p1, p2, delta); }

  int32_t delta() const { return delta_; }
  // Clips the segment from a to b, which keeps its direction. 1 if a part of it lies in the band, else 0 with
  // both ends unchanged, also for a segment of no length. A direction within 0.57 degrees of a side counts
  // as parallel to it. The ends are converted by adding 0.5 and truncating toward zero, so that negative
  // whole coordinates come out greater by 1.
  int clipping(ZVPoint* a, ZVPoint* b) const;

  // The band around p1-p2; coincident points give a square parallel to the axes.
  void set(const ZVPoint* p1, const ZVPoint* p2, int32_t delta);

  ZV_SHAPE_VALUE(ZVRotatedRect)
  // The four corners, counterclockwise.
  double x1() const { return x1_; }
  double y1() const { return y1_; }
  double x2() const { return length_ * ux_ + x1_; }
  double y2() const { return length_ * uy_ + y1_; }
  double x3() const { return length_ * ux_ + x1_ - width_ * uy_; }
  double y3() const { return length_ * uy_ + y1_ + width_ * ux_; }
  double x4() const { return x1_ - width_ * uy_; }
  double y4() const { return y1_ + width_ * ux_; }

  // The unit vector along the segment, the first corner, the extents along and across, the bounding box.
  double ux_ = 0.0;
  double uy_ = 0.0;
  double x1_ = 0.0;
  double y1_ = 0.0;
  double length_ = 0.0;
  double width_ = 0.0;
  double minX_ = 0.0;
  double minY_ = 0.0;
  double maxX_ = 0.0;
  double maxY_ = 0.0;
  int32_t delta_ = 0;
};

#endif
