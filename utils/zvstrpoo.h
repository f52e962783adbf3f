// Interns strings: each distinct string gets a dense index, counted from 0, and may carry one pointer.
//
// Ownership: the pool keeps copies of its strings until it dies or is overwritten by a copy; what the
// pointers point at is not owned. Indices never change, and no string is removed alone.
// A pool that does not tell case apart keeps its strings in upper case. Letters are those of ASCII.
// Cost: the number of buckets is fixed at construction, so update and lookup are constant as long as the
// caller sized the pool for its content. A pool that comes to hold more strings than it has buckets makes a
// directory that grows, and is constant again.
#ifndef ZV_ZVSTRPOO_H
#define ZV_ZVSTRPOO_H

#include <cstddef>
#include <memory>

#include "utils/zvobject.h"

// One record for each string of a bucket.
struct ZVStringPoolHash {
  int32_t index;
  ZVStringPoolHash* next;
};

class ZV_EXPORT ZVStringPool : public ZVObject {
 public:
  // hashSize is the number of buckets for good, decodeSize the number of strings expected.
  ZVStringPool(int32_t hashSize = 3, int32_t decodeSize = 3, int caseSensitive = 1, int withPointers = 0);
  ~ZVStringPool() override;

  // The index of text, or -1. A null text, or a pool without buckets, gives -1.
  int32_t lookup(const char* text);
  // The string of index, "" for an index that was not given. It stays the pool's.
  char* decode(int32_t index) const;
  // The pointer of index; null for an index that was not given, or a pool without pointers.
  void* pointer(int32_t index) const;
  // The number of strings.
  int32_t decodeTableMax() const { return decodeTableMax_; }

  // The index of text, entered if new. A null text, or a pool without buckets, gives -1.
  int32_t update(const char* text);
  // Gives value, or null where nothing could be stored (see the reading form).
  void* pointer(int32_t index, void* value);

  void hashStatistics(const char*) {}

  ZV_SHAPE_FULL(ZVStringPool)

  struct Block;      // memory for records and strings, released as a whole
  struct Directory;  // finds the strings of a pool that has outgrown its buckets

  ZVStringPoolHash** hashTable() const { return hashTable_.get(); }
  char** decodeTable() const { return decodeTable_.get(); }
  void** pointerTable() const { return pointerTable_.get(); }
  int32_t hashTableSize() const { return hashTableSize_; }
  int32_t decodeTableSize() const { return decodeTableSize_; }
  int caseSensitive() const { return caseSensitive_; }

  // Releases everything; the pool has no buckets afterwards.
  void empty();
  // New tables of the present sizes without a string.
  void makeTables(bool withPointers);
  // The bucket of text. The same for either kind of pool: strings that differ by case share a bucket.
  int32_t hash(const char* text) const;
  const ZVStringPoolHash* find(int32_t bucket, const char* text) const;
  void makeDirectory(size_t count);
  // The index of text, or -1; key is that of text.
  int32_t findInDirectory(uint32_t key, const char* text) const;
  bool equal(const char* text, const char* own) const;
  void increaseDecodeTable(int32_t newSize);
  // Memory that lives as long as the content, aligned for a record.
  void* obtain(size_t size);

  std::unique_ptr<ZVStringPoolHash*[]> hashTable_;
  std::unique_ptr<Directory> directory_;
  std::unique_ptr<char*[]> decodeTable_;
  std::unique_ptr<void*[]> pointerTable_;
  Block* blocks_ = nullptr;  // the current block first
  int32_t hashTableSize_ = 0;
  int32_t decodeTableSize_ = 0;
  int32_t decodeTableMax_ = 0;
  uint8_t caseSensitive_ = 1;
};

#endif
