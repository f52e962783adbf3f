#include "utils/zvbtreec.h"

ZV_DEFINE_FULL(ZVBinTreeCell, ZVBinTreeCellBase)

int32_t ZVBinTreeCell::sizeOf() const { return sizeof(ZVBinTreeCell); }

void ZVBinTreeCell::init() {
  clearTreeLinks();
  flags_ = 0;
}

void ZVBinTreeCell::ZVBinTreeCelldeepCopy(const ZVBinTreeCell& other) {
  ZVDListCell::copyObject(&other);
  flags_ = other.flags_;
}

void ZVBinTreeCell::ZVBinTreeCellattributeCopy(const ZVBinTreeCell& other) {
  ZVDListCell::copyAttributes(&other);
  flags_ = other.flags_;
}
