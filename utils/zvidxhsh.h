// A hash table from whole numbers as wide as an address to 32-bit numbers, by chaining. It maps the addresses
// of objects to their ids in a file.
//
// There is no removal and no growth: the number of buckets is the caller's choice for the life of the table,
// and a table that is too small stays correct and gets long chains. Keys are unique.
//
// Cost: constant for a table sized for its load. A key above all others is entered without a look at its
// chain, so ascending keys cost constant time in any table.
#ifndef ZV_ZVIDXHSH_H
#define ZV_ZVIDXHSH_H

#include <cstdint>
#include <memory>

#include "utils/zvobject.h"

// One entry of a chain.
struct ZVIndexHash {
  intptr_t key;
  int32_t value;
  ZVIndexHash* next;
};

class ZV_EXPORT ZVIndexHashTable : public ZVObject {
 public:
  // A key is divided by divisor before it is reduced to a bucket: a divisor of 8 takes away the low bits in
  // which addresses do not differ. REQUIRES: hashTableSize is positive, divisor is not 0.
  ZVIndexHashTable(int32_t hashTableSize = 3, int32_t divisor = 8, int32_t errorValue = 0);
  ~ZVIndexHashTable() override;

  // The value stored for key, or errorValue.
  int32_t lookup(intptr_t key) const;
  // The largest value and key ever stored, at least 0.
  int32_t maxValueIndex() const { return maxValueIndex_; }
  intptr_t maxHashIndex() const { return maxHashIndex_; }
  int32_t divisor() const { return divisor_; }
  int32_t errorValue() const { return errorValue_; }
  // The bytes of the table, its buckets and its entries. Linear.
  int32_t sizeOf() const;
  // Does nothing; a hook for the layers above.
  void hashStatistics(const char*) const {}

  // Enters the pair, or replaces the value of an existing key.
  void update(intptr_t key, int32_t value);

  // A deep copy answers as its source does, an attribute copy is an empty table of the same geometry. Both
  // free the target's entries.
  ZV_SHAPE_FULL(ZVIndexHashTable)
  void empty();
  // Makes this an empty table of other's geometry.
  void takeGeometry(const ZVIndexHashTable& other);
  void makeBuckets(int32_t count);

  ZVIndexHash** hashTable() const { return hashTable_.get(); }
  int32_t hashTableSize() const { return hashTableSize_; }
  int32_t maxValueIndex(int32_t value) { return maxValueIndex_ = value; }
  intptr_t maxHashIndex(intptr_t key) { return maxHashIndex_ = key; }

  // The bucket of key. Keys of either sign share one.
  uintptr_t hash(intptr_t key) const;
  // The entry of key, or null.
  ZVIndexHash* find(intptr_t key) const;

  std::unique_ptr<ZVIndexHash*[]> hashTable_;
  int32_t hashTableSize_ = 0;
  int32_t maxValueIndex_ = 0;
  intptr_t maxHashIndex_ = 0;
  int32_t divisor_ = 1;
  int32_t errorValue_ = 0;
};

#endif
