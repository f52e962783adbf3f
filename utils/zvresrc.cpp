#include "utils/zvresrc.h"

#include "utils/zvgeom.h"
#include "utils/zvresrdb.h"

ZV_DEFINE_ABSTRACT(ZVResource, ZVObject)

int32_t ZVResource::index() const { return resourceDB_ ? resourceDB_->index(this) : -1; }

void ZVResource::incrementRefCount() { refCount_ = add32(refCount_, 1); }

void ZVResource::decrementRefCount() {
  if (refCount_ != kPermanentShare) refCount_ = subtract32(refCount_, 1);
}

// As one remove for each share, without the private copies that these would give.
void ZVResource::cleanup() {
  if (resourceDB_ && refCount_ > 0) resourceDB_->withdraw(this);
  refCount_ = 0;
}

void ZVResource::init() {
  refCount_ = 0;
  resourceDB_ = nullptr;
}

void ZVResource::ZVResourcedeepCopy(const ZVResource& other) {
  ZVObject::copyObject(&other);
  if (!resourceDB_) resourceDB_ = other.resourceDB_;
}

void ZVResource::ZVResourceattributeCopy(const ZVResource& other) {
  ZVObject::copyAttributes(&other);
  if (!resourceDB_) resourceDB_ = other.resourceDB_;
}
