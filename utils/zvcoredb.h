// The database of shared colours. Colours sort by red, then green, then blue; the default is black.
#ifndef ZV_ZVCOREDB_H
#define ZV_ZVCOREDB_H

#include "utils/zvcoresr.h"
#include "utils/zvresrdb.h"

class ZV_EXPORT ZVColorResourceDB : public ZVTypedResourceDB<ZVColorResourceDB, ZVColorResource> {
 public:
  ZVColorResourceDB() = default;

  ZV_SHAPE_NO_COPY(ZVColorResourceDB)
};

#endif
