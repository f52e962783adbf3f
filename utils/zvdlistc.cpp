#include "utils/zvdlistc.h"

ZV_DEFINE_FULL(ZVDListCell, ZVObject)

int32_t ZVDListCell::sizeOf() const { return sizeof(ZVDListCell); }

void ZVDListCell::init() {
  previousCell_ = nullptr;
  nextCell_ = nullptr;
  object_ = nullptr;
}

void ZVDListCell::ZVDListCelldeepCopy(const ZVDListCell& other) {
  ZVObject::copyObject(&other);
  object_ = ZVObject::cloneObject(other.object_);
}

void ZVDListCell::ZVDListCellattributeCopy(const ZVDListCell& other) {
  ZVObject::copyAttributes(&other);
  object_ = other.object_;
}
