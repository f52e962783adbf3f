// The affine map without rotation from world coordinates (the source) to those of another system (the
// target), a device for example, and back: for each axis an origin and an extent on both sides. A negative
// target extent mirrors its axis.
//
// Nothing limits the extents; where one of 0 would divide, the answer is 0. The maps of whole numbers round
// and need results that fit 32 bits.
#ifndef ZV_ZVTRANSF_H
#define ZV_ZVTRANSF_H

#include "utils/zvdtuple.h"
#include "utils/zvobject.h"
#include "utils/zvpoint.h"
#include "utils/zvrect.h"
#include "utils/zvsize.h"

class ZV_EXPORT ZVTransform : public ZVObject {
 public:
  // The identity: all origins 0, all extents 1.
  ZVTransform() = default;

  double sourceOriginX() const { return sourceOriginX_; }
  double sourceOriginY() const { return sourceOriginY_; }
  double targetOriginX() const { return targetOriginX_; }
  double targetOriginY() const { return targetOriginY_; }
  double sourceExtentX() const { return sourceExtentX_; }
  double sourceExtentY() const { return sourceExtentY_; }
  double targetExtentX() const { return targetExtentX_; }
  double targetExtentY() const { return targetExtentY_; }
  // Whether on both axes one of the two extents is exactly 1.
  int hasNormalizedExt() const;

  double transformX(double x) const {
    return map(x, sourceOriginX_, sourceExtentX_, targetOriginX_, targetExtentX_);
  }
  double transformY(double y) const {
    return map(y, sourceOriginY_, sourceExtentY_, targetOriginY_, targetExtentY_);
  }
  double inverseTransformX(double x) const {
    return map(x, targetOriginX_, targetExtentX_, sourceOriginX_, sourceExtentX_);
  }
  double inverseTransformY(double y) const {
    return map(y, targetOriginY_, targetExtentY_, sourceOriginY_, sourceExtentY_);
  }
  int32_t transformX(int32_t x) const { return roundHalfUp(transformX(static_cast<double>(x))); }
  int32_t transformY(int32_t y) const { return roundHalfUp(transformY(static_cast<double>(y))); }
  int32_t inverseTransformX(int32_t x) const {
    return roundHalfUp(inverseTransformX(static_cast<double>(x)));
  }
  int32_t inverseTransformY(int32_t y) const {
    return roundHalfUp(inverseTransformY(static_cast<double>(y)));
  }
  int32_t transformX(long x) const { return transformX(static_cast<int32_t>(x)); }
  int32_t transformY(long y) const { return transformY(static_cast<int32_t>(y)); }
  int32_t inverseTransformX(long x) const { return inverseTransformX(static_cast<int32_t>(x)); }
  int32_t inverseTransformY(long y) const { return inverseTransformY(static_cast<int32_t>(y)); }

  void transformPoint(const ZVPoint& in, ZVPoint& out) const {
    out.set(transformX(in.x()), transformY(in.y()));
  }
  void transformPoint(const ZVPoint& in, tagPOINT& out) const;
  void transformPoint(const ZVDTuple& in, ZVDTuple& out) const {
    out.set(transformX(in.x()), transformY(in.y()));
  }
  void inverseTransformPoint(const ZVPoint& in, ZVPoint& out) const;
  void inverseTransformPoint(const tagPOINT& in, ZVPoint& out) const;
  void inverseTransformPoint(const ZVDTuple& in, ZVDTuple& out) const;

  // The map of the size less the map of 0, each rounded first in whole numbers. A mirrored axis gives a
  // negative size.
  void transformSize(const ZVSize& in, ZVSize& out) const;
  void transformSize(const ZVSize& in, tagSIZE& out) const;
  void transformSize(const ZVDTuple& in, ZVDTuple& out) const;
  void inverseTransformSize(const ZVSize& in, ZVSize& out) const;
  void inverseTransformSize(const tagSIZE& in, ZVSize& out) const;
  void inverseTransformSize(const ZVDTuple& in, ZVDTuple& out) const;

  // A ZVRect comes out in order, whatever is mirrored. The platform's rectangle is mapped field by field, so
  // that with y mirrored its top is the smaller y, as on a device.
  void transformRect(const ZVRect& in, ZVRect& out) const;
  void transformRect(const ZVRect& in, tagRECT* out) const;
  void inverseTransformRect(const ZVRect& in, ZVRect& out) const;
  void inverseTransformRect(const tagRECT* in, ZVRect& out) const;

  // The setters give the value set.
  double sourceOriginX(double value) { return sourceOriginX_ = value; }
  double sourceOriginY(double value) { return sourceOriginY_ = value; }
  double targetOriginX(double value) { return targetOriginX_ = value; }
  double targetOriginY(double value) { return targetOriginY_ = value; }
  double sourceExtentX(double value) { return sourceExtentX_ = value; }
  double sourceExtentY(double value) { return sourceExtentY_ = value; }
  double targetExtentX(double value) { return targetExtentX_ = value; }
  double targetExtentY(double value) { return targetExtentY_ = value; }

  // Widens the source on one axis until both have one scale, so that all of it stays in view. Made for
  // positive extents: a negative target extent ends in a source extent of 0.
  void adjustExtentToPreserveAspectRatio();
  // Scales each axis so that the smaller of its extents becomes 1; an extent of 0 counts as 1.
  void normalizeExt();

  ZV_SHAPE_VALUE(ZVTransform)
  static double map(double value, double fromOrigin, double fromExtent, double toOrigin, double toExtent) {
    return fromExtent == 0.0 ? 0.0 : (toExtent * (value - fromOrigin)) / fromExtent + toOrigin;
  }

  double sourceOriginX_ = 0.0;
  double sourceOriginY_ = 0.0;
  double targetOriginX_ = 0.0;
  double targetOriginY_ = 0.0;
  double sourceExtentX_ = 1.0;
  double sourceExtentY_ = 1.0;
  double targetExtentX_ = 1.0;
  double targetExtentY_ = 1.0;
};

#endif
