// The database of shared node shapes. The default is the rectangle whose text rectangle is all of it.
#ifndef ZV_ZVSHREDB_H
#define ZV_ZVSHREDB_H

#include "utils/zvresrdb.h"
#include "utils/zvshresr.h"

class ZV_EXPORT ZVShapeResourceDB : public ZVTypedResourceDB<ZVShapeResourceDB, ZVShapeResource> {
 public:
  ZVShapeResourceDB() = default;

  ZV_SHAPE_NO_COPY(ZVShapeResourceDB)
};

#endif
