#include "utils/zvutdlso.h"

#include <functional>

#include "utils/zvdtuple.h"

ZV_DEFINE_NO_COPY(ZVMemAddressDListSort)
ZV_DEFINE_NO_COPY(ZVDTupleDListSort)

int32_t ZVMemAddressDListSort::virtualCompare(ZVDListCell* cell1, ZVDListCell* cell2) {
  std::less<> below;
  return below(cell2->pObject(), cell1->pObject()) - below(cell1->pObject(), cell2->pObject());
}

int32_t ZVDTupleDListSort::virtualCompare(ZVDListCell* cell1, ZVDListCell* cell2) {
  const ZVDTuple* tuple1 = ZVDTuple::castDown(cell1->pObject());
  const ZVDTuple* tuple2 = ZVDTuple::castDown(cell2->pObject());
  double a = firstComponent() ? tuple1->x() : tuple1->y();
  double b = firstComponent() ? tuple2->x() : tuple2->y();
  int32_t ascending = (a > b) - (a < b);
  return increasing() ? ascending : -ascending;
}
