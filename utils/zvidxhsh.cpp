#include "utils/zvidxhsh.h"

ZV_DEFINE_FULL(ZVIndexHashTable, ZVObject)

namespace {

// |number|, also where the negated number would overflow.
uintptr_t magnitude(intptr_t number) {
  auto bits = static_cast<uintptr_t>(number);
  return number < 0 ? 0 - bits : bits;
}

}  // namespace

ZVIndexHashTable::ZVIndexHashTable(int32_t hashTableSize, int32_t divisor, int32_t errorValue)
    : divisor_(divisor), errorValue_(errorValue) {
  makeBuckets(hashTableSize);
}

ZVIndexHashTable::~ZVIndexHashTable() { empty(); }

int32_t ZVIndexHashTable::lookup(intptr_t key) const {
  const ZVIndexHash* entry = find(key);
  return entry ? entry->value : errorValue_;
}

int32_t ZVIndexHashTable::sizeOf() const {
  size_t size = sizeof(ZVIndexHashTable) + static_cast<size_t>(hashTableSize()) * sizeof(ZVIndexHash*);
  for (int32_t i = 0; i < hashTableSize(); ++i) {
    for (const ZVIndexHash* entry = hashTable()[i]; entry; entry = entry->next) size += sizeof(ZVIndexHash);
  }
  return static_cast<int32_t>(size);
}

void ZVIndexHashTable::update(intptr_t key, int32_t value) {
  ZVIndexHash* entry = key > maxHashIndex_ ? nullptr : find(key);
  if (entry) {
    entry->value = value;
  } else {
    ZVIndexHash*& bucket = hashTable()[hash(key)];
    bucket = new ZVIndexHash{key, value, bucket};
  }
  if (key > maxHashIndex_) maxHashIndex(key);
  if (value > maxValueIndex_) maxValueIndex(value);
}

// |key / divisor|, which truncates, is the quotient of the magnitudes.
uintptr_t ZVIndexHashTable::hash(intptr_t key) const {
  return magnitude(key) / magnitude(divisor_) % static_cast<uintptr_t>(hashTableSize());
}

ZVIndexHash* ZVIndexHashTable::find(intptr_t key) const {
  ZVIndexHash* entry = hashTable()[hash(key)];
  while (entry && entry->key != key) entry = entry->next;
  return entry;
}

void ZVIndexHashTable::makeBuckets(int32_t count) {
  hashTable_ = std::make_unique<ZVIndexHash*[]>(static_cast<size_t>(count));
  hashTableSize_ = count;
}

void ZVIndexHashTable::empty() {
  for (int32_t i = 0; i < hashTableSize(); ++i) {
    for (ZVIndexHash* entry = hashTable()[i]; entry;) {
      ZVIndexHash* next = entry->next;
      delete entry;
      entry = next;
    }
  }
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
  for (int32_t i = 0; i < other.hashTableSize(); ++i) {
    for (const ZVIndexHash* entry = other.hashTable()[i]; entry; entry = entry->next) {
      update(entry->key, entry->value);
    }
  }
}

void ZVIndexHashTable::ZVIndexHashTableattributeCopy(const ZVIndexHashTable& other) {
  ZVObject::copyAttributes(&other);
  takeGeometry(other);
}
