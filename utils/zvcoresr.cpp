#include "utils/zvcoresr.h"

#include "utils/zvcoredb.h"

ZV_DEFINE_FULL(ZVColorResource, ZVResource)

ZVColorResource::ZVColorResource(ZVColorResourceDB* db, const ZVColor* color) : ZVResource(db) {
  if (color) color_ = *color;
}

ZVColorResource::~ZVColorResource() { cleanup(); }

ZVColorResourceDB* ZVColorResource::pResourceDB() const {
  return static_cast<ZVColorResourceDB*>(ZVResource::pResourceDB());
}

int32_t ZVColorResource::sortKey() const {
  return (((color_.ired() << 8) + color_.igreen()) << 8) + color_.iblue();
}

int ZVColorResource::isEqual(const ZVResource* other) const {
  return other && sortKey() == other->sortKey() && color_.compare(castDown(other)->pColor());
}

void ZVColorResource::init() {
  color_.rgb(ZV_COLOR_BLACK);
  color_.transparent(0);
  color_.needsSaving(1);
}

void ZVColorResource::ZVColorResourcedeepCopy(const ZVColorResource& other) {
  ZVResource::copyObject(&other);
  color_ = other.color_;
}

void ZVColorResource::ZVColorResourceattributeCopy(const ZVColorResource& other) {
  ZVResource::copyAttributes(&other);
}
