#include "utils/zvbheapc.h"

ZV_DEFINE_FULL(ZVBinHeapCell, ZVBinHeapCellBase)

void ZVBinHeapCell::init() {
  clearTreeLinks();
  value_ = 0;
}

void ZVBinHeapCell::ZVBinHeapCelldeepCopy(const ZVBinHeapCell& other) {
  ZVDListCell::copyObject(&other);
  value_ = other.value_;
}

void ZVBinHeapCell::ZVBinHeapCellattributeCopy(const ZVBinHeapCell& other) {
  ZVDListCell::copyAttributes(&other);
  value_ = other.value_;
}
