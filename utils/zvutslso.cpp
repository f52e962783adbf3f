#include "utils/zvutslso.h"

#include "utils/zvpoint.h"

ZV_DEFINE_NO_COPY(ZVPointSListSort)

int32_t ZVPointSListSort::virtualCompare(ZVSListCell* cell1, ZVSListCell* cell2) {
  const ZVPoint* point1 = ZVPoint::castDown(cell1->pObject());
  const ZVPoint* point2 = ZVPoint::castDown(cell2->pObject());
  int32_t dx = subtract32(point1->x(), point2->x());
  return dx != 0 ? dx : subtract32(point1->y(), point2->y());
}
