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

#include <bit>
#include <cstdint>
#include <deque>
#include <memory>

#include "utils/zvobject.h"

// One entry of a chain, owned by the table.
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
  int32_t lookup(intptr_t key) const {
    const ZVIndexHash* entry = find(key);
    return entry ? entry->value : errorValue_;
  }
  // The largest value and key ever stored, at least 0.
  int32_t maxValueIndex() const { return maxValueIndex_; }
  intptr_t maxHashIndex() const { return maxHashIndex_; }
  int32_t divisor() const { return divisor_; }
  int32_t errorValue() const { return errorValue_; }
  // The bytes of the table, its buckets and its entries.
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

  // |number|, also where the negated number would overflow.
  static uintptr_t magnitude(intptr_t number) {
    auto bits = static_cast<uintptr_t>(number);
    return number < 0 ? 0 - bits : bits;
  }
  // The bucket of key: |key / divisor|, which truncates and so is the quotient of the magnitudes, modulo the
  // number of buckets. A division costs more than the rest, so a power of two is shifted out.
  uintptr_t hash(intptr_t key) const {
    uintptr_t by = magnitude(divisor_);
    uintptr_t quotient = (by & (by - 1)) == 0 ? magnitude(key) >> std::countr_zero(by) : magnitude(key) / by;
    return quotient % static_cast<uintptr_t>(hashTableSize());
  }
  // The entry of key, or null.
  ZVIndexHash* find(intptr_t key) const {
    ZVIndexHash* entry = hashTable()[hash(key)];
    while (entry && entry->key != key) entry = entry->next;
    return entry;
  }

  std::unique_ptr<ZVIndexHash*[]> hashTable_;  // the heads of the chains
  int32_t hashTableSize_ = 0;
  int32_t maxValueIndex_ = 0;
  intptr_t maxHashIndex_ = 0;
  int32_t divisor_ = 1;
  int32_t errorValue_ = 0;
  std::deque<ZVIndexHash> entries_;  // never moved, since chains point at them
};

#endif
