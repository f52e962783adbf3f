#include "utils/zvtransf.h"

#include <cmath>

ZV_DEFINE_VALUE(ZVTransform, ZVObject)

namespace {

void normalizeAxis(double& source, double& target) {
  if (source == 0.0) source = 1.0;
  if (target == 0.0) target = 1.0;
  if (std::fabs(target) > std::fabs(source)) {
    target /= source;
    source = 1.0;
  } else {
    source /= target;
    target = 1.0;
  }
}

}  // namespace

int ZVTransform::hasNormalizedExt() const {
  return (sourceExtentX_ == 1.0 || targetExtentX_ == 1.0) && (sourceExtentY_ == 1.0 || targetExtentY_ == 1.0);
}

void ZVTransform::transformPoint(const ZVPoint& in, tagPOINT& out) const {
  ZVPoint target;
  transformPoint(in, target);
  out = target;
}

void ZVTransform::inverseTransformPoint(const ZVPoint& in, ZVPoint& out) const {
  out.set(inverseTransformX(in.x()), inverseTransformY(in.y()));
}

void ZVTransform::inverseTransformPoint(const tagPOINT& in, ZVPoint& out) const {
  inverseTransformPoint(ZVPoint(in), out);
}

void ZVTransform::inverseTransformPoint(const ZVDTuple& in, ZVDTuple& out) const {
  out.set(inverseTransformX(in.x()), inverseTransformY(in.y()));
}

void ZVTransform::transformSize(const ZVSize& in, ZVSize& out) const {
  out.resize(subtract32(transformX(in.width()), transformX(0)),
             subtract32(transformY(in.height()), transformY(0)));
}

void ZVTransform::transformSize(const ZVSize& in, tagSIZE& out) const {
  ZVSize target;
  transformSize(in, target);
  out = target;
}

void ZVTransform::transformSize(const ZVDTuple& in, ZVDTuple& out) const {
  out.set(transformX(in.x()) - transformX(0.0), transformY(in.y()) - transformY(0.0));
}

void ZVTransform::inverseTransformSize(const ZVSize& in, ZVSize& out) const {
  out.resize(subtract32(inverseTransformX(in.width()), inverseTransformX(0)),
             subtract32(inverseTransformY(in.height()), inverseTransformY(0)));
}

void ZVTransform::inverseTransformSize(const tagSIZE& in, ZVSize& out) const {
  inverseTransformSize(ZVSize(in), out);
}

void ZVTransform::inverseTransformSize(const ZVDTuple& in, ZVDTuple& out) const {
  out.set(inverseTransformX(in.x()) - inverseTransformX(0.0),
          inverseTransformY(in.y()) - inverseTransformY(0.0));
}

void ZVTransform::transformRect(const ZVRect& in, ZVRect& out) const {
  out.setCorners(transformX(in.left()), transformY(in.bottom()), transformX(in.right()),
                 transformY(in.top()));
}

void ZVTransform::transformRect(const ZVRect& in, tagRECT* out) const {
  out->left = transformX(in.left());
  out->top = transformY(in.top());
  out->right = transformX(in.right());
  out->bottom = transformY(in.bottom());
}

void ZVTransform::inverseTransformRect(const ZVRect& in, ZVRect& out) const {
  out.setCorners(inverseTransformX(in.left()), inverseTransformY(in.bottom()), inverseTransformX(in.right()),
                 inverseTransformY(in.top()));
}

void ZVTransform::inverseTransformRect(const tagRECT* in, ZVRect& out) const {
  out.setCorners(inverseTransformX(in->left), inverseTransformY(in->bottom), inverseTransformX(in->right),
                 inverseTransformY(in->top));
}

void ZVTransform::adjustExtentToPreserveAspectRatio() {
  if (targetExtentX_ == 0.0 || targetExtentY_ == 0.0) return;
  const double wanted = targetExtentX_ * sourceExtentY_;
  const double present = targetExtentY_ * sourceExtentX_;
  if (wanted > present) {
    sourceExtentX_ = targetExtentY_ > 0.0 ? wanted / targetExtentY_ : 0.0;
  } else {
    sourceExtentY_ = targetExtentX_ > 0.0 ? present / targetExtentX_ : 0.0;
  }
}

void ZVTransform::normalizeExt() {
  normalizeAxis(sourceExtentX_, targetExtentX_);
  normalizeAxis(sourceExtentY_, targetExtentY_);
}

void ZVTransform::init() {
  sourceOriginX_ = sourceOriginY_ = targetOriginX_ = targetOriginY_ = 0.0;
  sourceExtentX_ = sourceExtentY_ = targetExtentX_ = targetExtentY_ = 1.0;
}

void ZVTransform::ZVTransformattributeCopy(const ZVTransform& other) {
  ZVObject::copyAttributes(&other);
  sourceOriginX_ = other.sourceOriginX_;
  sourceOriginY_ = other.sourceOriginY_;
  targetOriginX_ = other.targetOriginX_;
  targetOriginY_ = other.targetOriginY_;
  sourceExtentX_ = other.sourceExtentX_;
  sourceExtentY_ = other.sourceExtentY_;
  targetExtentX_ = other.targetExtentX_;
  targetExtentY_ = other.targetExtentY_;
}
