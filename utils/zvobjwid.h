// Identity: objects that are told apart over time or across files.
#ifndef ZV_ZVOBJWID_H
#define ZV_ZVOBJWID_H

#include "utils/zvobject.h"

// Base of the objects that have an id. The id itself comes from subclasses.
class ZV_EXPORT ZVObjectWithID : public ZVObject {
 public:
  ZVObjectWithID() = default;

  // 0 here; the smallest 32-bit number, which means none, is never given.
  int32_t localID() const override;

  ZV_SHAPE_FULL(ZVObjectWithID)
};

// Names an object by two words: which object it is, and its local id. A value: it neither keeps the object
// alive nor notices its end. The pair (0, 0) is the null id.
class ZV_EXPORT ZVUniqueID {
 public:
  ZVUniqueID(int32_t first = 0, int32_t second = 0) : firstID_(first), secondID_(second) {}
  // REQUIRES: object is not null.
  ZVUniqueID(const ZVObject* object) { getObjectID(object); }
  ZVUniqueID(const ZVUniqueID&) = default;
  ZVUniqueID& operator=(const ZVUniqueID&) = default;
  const ZVUniqueID& operator=(const ZVObject* object) {
    getObjectID(object);
    return *this;
  }

  // The object's identity number and its local id.
  int32_t firstID() const { return firstID_; }
  int32_t secondID() const { return secondID_; }
  int isNullID() const { return firstID_ == 0 && secondID_ == 0; }
  // A null id counts as not null when there is none at all.
  static int isNullID(const ZVUniqueID* id) { return id ? id->isNullID() : 0; }

  // Writes "ID" and 16 lower-case hexadecimal digits, the first word first; gives buffer.
  // REQUIRES: buffer has room for 19 bytes.
  char* idString(char* buffer) const;

  // Takes the words of object; a null object gives the null id.
  void getObjectID(const ZVObject* object);

  void debugOutput(int) {}

 private:
  int32_t firstID_ = 0;
  int32_t secondID_ = 0;
};

// Counts out local ids from the bottom of the 32-bit range, through 0 to the top. After a wrap ids repeat,
// and overflow tells how often that happened.
class ZV_EXPORT ZVIDGenerator {
 public:
  ZVIDGenerator() = default;
  ZVIDGenerator(const ZVIDGenerator&) = default;
  ZVIDGenerator& operator=(const ZVIDGenerator&) = default;

  int overflow() const { return overflow_; }

  int32_t nextLocalID();
  // Ids are not used again: does nothing.
  void releaseLocalID(int32_t) {}

  void debugOutput(int) {}

 private:
  int32_t nextID_ = -2147483647;
  int32_t overflow_ = 0;
};

#endif
