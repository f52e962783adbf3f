// A value that drawing objects share through a database: a colour, a shape.
//
// A resource is free (count 0, in no list, owned by whoever has it), shared (count 1 or more, in the list of
// its database, which owns it) or permanent (shared, and kept without users). Permanence lives in the count:
// it is a share of 0x3FFFFFFF.
//
// The value of a shared resource must not be changed in place, since its key decides its place in the list.
// To change one: remove it from the database, change the private copy that comes back, insert that.
//
// A concrete class supplies sortKey, isEqual and the virtual clones, and its destructor calls cleanup first.
#ifndef ZV_ZVRESRC_H
#define ZV_ZVRESRC_H

#include <cstdint>

#include "utils/zvobject.h"

class ZVResourceDB;

class ZV_EXPORT ZVResource : public ZVObject {
 public:
  // The number of users, plus the permanent share.
  int32_t refCount() const { return refCount_; }
  // The database that holds it or that it was made for; null for none. A free resource may outlive it.
  ZVResourceDB* pResourceDB() const { return resourceDB_; }
  int permanent() const { return refCount_ >= kPermanentShare; }
  // Its position in the database's list, from 1; -1 if it is not there. REQUIRES: its database still lives.
  int32_t index() const;

  // The key by which a database orders its resources; equal values have equal keys.
  virtual int32_t sortKey() const = 0;
  // Non-zero if the values are equal. REQUIRES: other is of this object's class.
  virtual int isEqual(const ZVResource* other) const = 0;

 protected:
  ZVResource(ZVResourceDB* db = nullptr) : resourceDB_(db) {}

  void incrementRefCount();
  // Leaves the bare permanent share alone.
  void decrementRefCount();
  // Ends every share of this resource, so that it leaves its database. A free one leaves the database alone,
  // which may be gone.
  void cleanup();

  // A copy is free, and in the database of its source if it has none yet.
  ZV_SHAPE_ABSTRACT(ZVResource)
  friend class ZVResourceDB;

  static constexpr int32_t kPermanentShare = 0x3FFFFFFF;

  void addPermanentShare() {
    if (!permanent()) refCount_ += kPermanentShare;
  }
  void dropPermanentShare() {
    if (permanent()) refCount_ -= kPermanentShare;
  }

  int32_t refCount_ = 0;
  ZVResourceDB* resourceDB_ = nullptr;
};

#endif
