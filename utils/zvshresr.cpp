#include "utils/zvshresr.h"

#include "utils/zvshredb.h"

ZV_DEFINE_FULL(ZVShapeResource, ZVResource)

ZVShapeResource::ZVShapeResource(ZVShapeResourceDB* db, const ZVShape* shape) : ZVResource(db) {
  if (shape) shape_ = *shape;
}

ZVShapeResource::~ZVShapeResource() { cleanup(); }

ZVShapeResourceDB* ZVShapeResource::pResourceDB() const {
  return static_cast<ZVShapeResourceDB*>(ZVResource::pResourceDB());
}

int32_t ZVShapeResource::sortKey() const {
  const ZVShapeTypeEnum type = shape_.shapeType();
  if (type > ZV_SHAPE_NONCONVEX_POLYGON) return -1;
  if (type < ZV_SHAPE_CONVEX_POLYGON) return type;
  const int32_t points = shape_.pPointList() ? shape_.pPointList()->length() : 0;
  return points * 2 + (type == ZV_SHAPE_NONCONVEX_POLYGON);
}

int ZVShapeResource::isEqual(const ZVResource* other) const {
  return other && sortKey() == other->sortKey() && shape_.compare(castDown(other)->pShape());
}

void ZVShapeResource::init() { shape_ = ZVShape(); }

void ZVShapeResource::ZVShapeResourcedeepCopy(const ZVShapeResource& other) {
  ZVResource::copyObject(&other);
  shape_ = other.shape_;
}

void ZVShapeResource::ZVShapeResourceattributeCopy(const ZVShapeResource& other) {
  ZVResource::copyAttributes(&other);
}
