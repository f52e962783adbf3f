#include "utils/zvobjwid.h"

#include <cinttypes>
#include <cstdio>
#include <limits>

ZV_DEFINE_FULL(ZVObjectWithID, ZVObject)

int32_t ZVObjectWithID::localID() const { return 0; }

void ZVObjectWithID::init() {}

void ZVObjectWithID::ZVObjectWithIDdeepCopy(const ZVObjectWithID& other) { ZVObject::copyObject(&other); }

void ZVObjectWithID::ZVObjectWithIDattributeCopy(const ZVObjectWithID& other) {
  ZVObject::copyAttributes(&other);
}

char* ZVUniqueID::idString(char* buffer) const {
  std::snprintf(buffer, 19, "ID%08" PRIx32 "%08" PRIx32, static_cast<uint32_t>(firstID_),
                static_cast<uint32_t>(secondID_));
  return buffer;
}

void ZVUniqueID::getObjectID(const ZVObject* object) {
  firstID_ = object ? object->identityNumber() : 0;
  secondID_ = object ? object->localID() : 0;
}

int32_t ZVIDGenerator::nextLocalID() {
  if (nextID_ == std::numeric_limits<int32_t>::max()) {
    nextID_ = -2147483647;
    ++overflow_;
  } else {
    ++nextID_;
  }
  return nextID_;
}
