#include "utils/zvidxhsh.h"

ZV_DEFINE_FULL(ZVIndexHashTable, ZVObject)

ZVIndexHashTable::ZVIndexHashTable(int32_t hashTableSize, int32_t divisor, int32_t errorValue)
    : divisor_(divisor), errorValue_(errorValue) {
  makeBuckets(hashTableSize);
}

ZVIndexHashTable::~ZVIndexHashTable() { empty(); }

int32_t ZVIndexHashTable::sizeOf() const {
  size_t size = sizeof(ZVIndexHashTable) + static_cast<size_t>(hashTableSize()) * sizeof(void*) +
                entries_.size() * sizeof(ZVIndexHash);
  return static_cast<int32_t>(size);
}

void ZVIndexHashTable::update(intptr_t key, int32_t value) {
  ZVIndexHash* entry = key > maxHashIndex_ ? nullptr : find(key);
  if (entry) {
    entry->value = value;
  } else {
    ZVIndexHash*& bucket = hashTable()[hash(key)];
    entries_.push_back({key, value, bucket});
    bucket = &entries_.back();
  }
  if (key > maxHashIndex_) maxHashIndex(key);
  if (value > maxValueIndex_) maxValueIndex(value);
}

void ZVIndexHashTable::makeBuckets(int32_t count) {
  hashTable_ = std::make_unique<ZVIndexHash*[]>(static_cast<size_t>(count));
  hashTableSize_ = count;
}

void ZVIndexHashTable::empty() {
  entries_.clear();
  init();
}

void ZVIndexHashTable::init() {
  hashTable_.reset();
  hashTableSize_ = 0;
  maxValueIndex(0);
  maxHashIndex(0);
  divisor_ = 1;
  errorValue_ = 0;
}

void ZVIndexHashTable::takeGeometry(const ZVIndexHashTable& other) {
  empty();
  divisor_ = other.divisor_;
  errorValue_ = other.errorValue_;
  makeBuckets(other.hashTableSize());
}

void ZVIndexHashTable::ZVIndexHashTabledeepCopy(const ZVIndexHashTable& other) {
  ZVObject::copyObject(&other);
  takeGeometry(other);
  for (const ZVIndexHash& entry : other.entries_) update(entry.key, entry.value);
}

void ZVIndexHashTable::ZVIndexHashTableattributeCopy(const ZVIndexHashTable& other) {
  ZVObject::copyAttributes(&other);
  takeGeometry(other);
}
