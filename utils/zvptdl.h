// A doubly linked list of points: ZVDList with typed names.
#ifndef ZV_ZVPTDL_H
#define ZV_ZVPTDL_H

#include "utils/zvdlist.h"
#include "utils/zvpoint.h"
#include "utils/zvtyplst.h"

class ZVPointDList;
class ZVPointSList;

using ZVPointDListBase = ZVPointList<ZVPointDList, ZVPointSList, ZVDList, ZVDListCell>;

class ZV_EXPORT ZVPointDList : public ZVPointDListBase {
 public:
  ZVPointDList() = default;
  // New cells around the same points.
  explicit ZVPointDList(const ZVPointSList& source);

  ZV_SHAPE_FULL(ZVPointDList)
};

#endif
