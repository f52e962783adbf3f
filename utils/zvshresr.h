// A shape that is shared through a ZVShapeResourceDB.
#ifndef ZV_ZVSHRESR_H
#define ZV_ZVSHRESR_H

#include "utils/zvresrc.h"
#include "utils/zvshape.h"

class ZVShapeResourceDB;

class ZV_EXPORT ZVShapeResource : public ZVResource {
 public:
  // A copy of shape; a rectangle for null.
  ZVShapeResource(ZVShapeResourceDB* db = nullptr, const ZVShape* shape = nullptr);
  ~ZVShapeResource() override;

  // Only the shape of a free resource may be changed.
  ZVShape* pShape() { return &shape_; }
  const ZVShape* pShape() const { return &shape_; }
  ZVShapeResourceDB* pResourceDB() const;

  // 0 and 1 for a rectangle and an ellipse; for a polygon twice the number of its points, and 1 more if it is
  // not convex; -1 for any other type.
  int32_t sortKey() const override;
  int isEqual(const ZVResource* other) const override;

  // An attribute copy leaves the shape as it was, and that of a new resource a rectangle.
  ZV_SHAPE_FULL(ZVShapeResource)
  ZVShape shape_;
};

#endif
