#include "utils/zvhorseg.h"

ZV_DEFINE_FULL(ZVHorSegment, ZVObject)

int32_t ZVHorSegment::sizeOf() const {
  return static_cast<int32_t>(sizeof(ZVHorSegment) +
                              static_cast<size_t>(list_.length()) * sizeof(ZVDListCell));
}

void ZVHorSegment::init() {
  y_ = 0;
  list_.deleteAllCells();
}

void ZVHorSegment::ZVHorSegmentdeepCopy(const ZVHorSegment& other) {
  ZVObject::copyObject(&other);
  y_ = other.y_;
  list_.copyAllCells(&other.list_);
}

void ZVHorSegment::ZVHorSegmentattributeCopy(const ZVHorSegment& other) {
  ZVObject::copyAttributes(&other);
  y_ = other.y_;
  list_.deleteAllCells();
}
