// Sort lists of ZVOMLObjects by the number in their user field.
#ifndef ZV_ZVOMLSRT_H
#define ZV_ZVOMLSRT_H

#include "utils/zvdlists.h"
#include "utils/zvslists.h"

class ZV_EXPORT ZVIUserFieldDListSort : public ZVDListSort {
 public:
  ZVIUserFieldDListSort() = default;

 protected:
  int32_t virtualCompare(ZVDListCell* cell1, ZVDListCell* cell2) override;
  void virtualDebugOutputElement(ZVDListCell* cell) override;

  ZV_SHAPE_NO_COPY(ZVIUserFieldDListSort)
};

class ZV_EXPORT ZVIUserFieldSListSort : public ZVSListSort {
 public:
  ZVIUserFieldSListSort() = default;

 protected:
  int32_t virtualCompare(ZVSListCell* cell1, ZVSListCell* cell2) override;
  void virtualDebugOutputElement(ZVSListCell* cell) override;

  ZV_SHAPE_NO_COPY(ZVIUserFieldSListSort)
};

#endif
