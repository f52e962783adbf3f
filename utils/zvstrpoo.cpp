#include "utils/zvstrpoo.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include "utils/zvascii.h"

namespace {

// A pool starts small and takes larger blocks as it grows.
constexpr size_t FIRST_BLOCK = 1024;
constexpr size_t LARGEST_BLOCK = 65536;

// What each byte adds to a hash: its upper case, taken as a signed byte, less the digit 0.
constexpr std::array<int16_t, 256> WEIGHTS = [] {
  std::array<int16_t, 256> table{};
  for (int i = 0; i < 256; ++i) {
    int upper = i < 128 ? zvascii::toUpper(static_cast<char>(i)) : i - 256;
    table[static_cast<size_t>(i)] = static_cast<int16_t>(upper - '0');
  }
  return table;
}();

int32_t weightOf(char c) { return WEIGHTS[static_cast<unsigned char>(c)]; }

constexpr uint32_t FACTOR = 29;
// 2 to the 24th times 29 to the 8th is below 2 to the 63rd.
constexpr int32_t LARGEST_SIZE_TO_WAIT = 1 << 24;
constexpr int LONGEST_WAIT = 8;
// Spreads texts that differ before their last characters; a factor as small as the other one would heap up
// the keys of numbers.
constexpr uint32_t KEY_FACTOR = 0x9e3779b1U;

// The string of a record lies right behind it.
const char* stringOf(const ZVStringPoolHash* record) { return reinterpret_cast<const char*>(record + 1); }

size_t roundedUp(size_t size) {
  constexpr size_t STEP = alignof(ZVStringPoolHash);
  return (size + STEP - 1) / STEP * STEP;
}

// text against a string in upper case.
bool equalFolded(const char* text, const char* upper) {
  while (zvascii::UPPER[static_cast<unsigned char>(*text)] == *upper) {
    if (!*text) return true;
    ++text;
    ++upper;
  }
  return false;
}

}  // namespace

// The header of a block; the memory given out follows it.
struct alignas(ZVStringPoolHash) ZVStringPool::Block {
  Block* next;
  size_t size;
  size_t used;

  char* memory() { return reinterpret_cast<char*>(this + 1); }
};

// Open addressing with linear probing, at most half full. Texts that follow one another in counting have keys
// that do, and so lie close together.
struct ZVStringPool::Directory {
  struct Place {
    uint32_t key = 0;
    int32_t index = -1;  // none
  };

  // Texts that differ by case have one key only where they are one text.
  static uint32_t keyOf(const char* text, bool caseSensitive) {
    uint32_t key = 0;
    for (; *text; ++text)
      key = key * KEY_FACTOR + static_cast<uint32_t>(caseSensitive ? *text : weightOf(*text));
    return key;
  }

  explicit Directory(size_t count) : mask(std::bit_ceil(count * 2) - 1), places(mask + 1) {}

  // The first place from position on that is free or has the key.
  size_t find(uint32_t key, size_t position) const {
    position &= mask;
    while (places[position].index >= 0 && places[position].key != key) position = (position + 1) & mask;
    return position;
  }
  void enter(uint32_t key, int32_t index) {
    size_t position = key & mask;
    while (places[position].index >= 0) position = (position + 1) & mask;
    places[position] = {key, index};
  }

  size_t mask;
  std::vector<Place> places;  // a power of two
};

ZV_DEFINE_FULL(ZVStringPool, ZVObject)

ZVStringPool::ZVStringPool(int32_t hashSize, int32_t decodeSize, int caseSensitive, int withPointers)
    : hashTableSize_(std::max(hashSize, 0)),
      decodeTableSize_(std::max(decodeSize, 0)),
      caseSensitive_(caseSensitive != 0) {
  makeTables(withPointers != 0);
}

ZVStringPool::~ZVStringPool() { empty(); }

void ZVStringPool::init() {
  empty();
  caseSensitive_ = 1;
}

void ZVStringPool::ZVStringPooldeepCopy(const ZVStringPool& other) {
  ZVObject::copyObject(&other);
  empty();
  caseSensitive_ = other.caseSensitive_;
  hashTableSize_ = other.hashTableSize_;
  decodeTableSize_ = other.decodeTableSize_;
  makeTables(other.pointerTable() != nullptr);
  for (int32_t index = 0; index < other.decodeTableMax_; ++index) update(other.decode(index));
  if (other.pointerTable()) std::copy_n(other.pointerTable(), decodeTableMax_, pointerTable());
}

void ZVStringPool::ZVStringPoolattributeCopy(const ZVStringPool& other) {
  ZVObject::copyAttributes(&other);
  empty();
  caseSensitive_ = other.caseSensitive_;
}

int32_t ZVStringPool::lookup(const char* text) {
  if (!text || hashTableSize_ == 0) return -1;
  if (directory_) return findInDirectory(Directory::keyOf(text, caseSensitive_), text);
  const ZVStringPoolHash* record = find(hash(text), text);
  return record ? record->index : -1;
}

char* ZVStringPool::decode(int32_t index) const {
  if (index < 0 || index >= decodeTableMax_) return const_cast<char*>("");
  return decodeTable()[index];
}

void* ZVStringPool::pointer(int32_t index) const {
  if (index < 0 || index >= decodeTableMax_ || !pointerTable_) return nullptr;
  return pointerTable()[index];
}

int32_t ZVStringPool::update(const char* text) {
  if (!text || hashTableSize_ == 0) return -1;
  if (decodeTableMax_ > hashTableSize_ && !directory_)
    makeDirectory(static_cast<size_t>(decodeTableMax_) * 2);
  uint32_t key = 0;
  int32_t bucket = 0;
  if (directory_) {
    key = Directory::keyOf(text, caseSensitive_);
    const int32_t known = findInDirectory(key, text);
    if (known >= 0) return known;
  } else {
    bucket = hash(text);
    if (const ZVStringPoolHash* record = find(bucket, text)) return record->index;
  }

  if (decodeTableMax_ >= decodeTableSize_ - 1) {
    int64_t newSize = static_cast<int64_t>(decodeTableMax_) * 3 / 2 + 5;
    increaseDecodeTable(
        static_cast<int32_t>(std::min<int64_t>(newSize, std::numeric_limits<int32_t>::max())));
  }
  size_t size = std::strlen(text) + 1;
  char* copy = nullptr;
  if (directory_) {
    if (static_cast<size_t>(decodeTableMax_) * 2 > directory_->mask)
      makeDirectory(static_cast<size_t>(decodeTableMax_) * 2);
    copy = static_cast<char*>(obtain(size));
    directory_->enter(key, decodeTableMax_);
  } else {
    auto* record =
        new (obtain(sizeof(ZVStringPoolHash) + size)) ZVStringPoolHash{decodeTableMax_, hashTable()[bucket]};
    hashTable()[bucket] = record;
    copy = reinterpret_cast<char*>(record + 1);
  }
  std::memcpy(copy, text, size);
  if (!caseSensitive_) std::transform(copy, copy + size, copy, zvascii::toUpper);
  decodeTable()[decodeTableMax_] = copy;
  if (pointerTable_) pointerTable()[decodeTableMax_] = nullptr;
  return decodeTableMax_++;
}

// A directory of all strings, with room for count.
void ZVStringPool::makeDirectory(size_t count) {
  auto directory = std::make_unique<Directory>(count);
  if (directory_) {
    for (const Directory::Place& place : directory_->places)
      if (place.index >= 0) directory->enter(place.key, place.index);
  } else {
    for (int32_t index = 0; index < decodeTableMax_; ++index)
      directory->enter(Directory::keyOf(decodeTable()[index], caseSensitive_), index);
  }
  directory_ = std::move(directory);
}

int32_t ZVStringPool::findInDirectory(uint32_t key, const char* text) const {
  size_t position = directory_->find(key, key);
  while (directory_->places[position].index >= 0) {
    const int32_t index = directory_->places[position].index;
    if (equal(text, decodeTable()[index])) return index;
    position = directory_->find(key, position + 1);
  }
  return -1;
}

void* ZVStringPool::pointer(int32_t index, void* value) {
  if (index < 0 || index >= decodeTableMax_ || !pointerTable_) return nullptr;
  return pointerTable()[index] = value;
}

void ZVStringPool::empty() {
  while (blocks_) {
    Block* block = blocks_;
    blocks_ = block->next;
    ::operator delete(block);
  }
  hashTable_.reset();
  directory_.reset();
  decodeTable_.reset();
  pointerTable_.reset();
  hashTableSize_ = 0;
  decodeTableSize_ = 0;
  decodeTableMax_ = 0;
}

void ZVStringPool::makeTables(bool withPointers) {
  hashTable_ = std::make_unique<ZVStringPoolHash*[]>(static_cast<size_t>(hashTableSize_));
  const auto size = static_cast<size_t>(decodeTableSize_);
  decodeTable_ = std::make_unique_for_overwrite<char*[]>(size);
  if (withPointers) pointerTable_ = std::make_unique_for_overwrite<void*[]>(size);
}

// Horner's rule with the remainder at each step, the truncating one, so the running value may take either
// sign. As long as no byte has a negative weight the value has no sign either and the remainder may wait,
// for as many bytes as 64 bits have room.
int32_t ZVStringPool::hash(const char* text) const {
  const int32_t size = hashTableSize_;
  int32_t value = 0;
  if (size <= LARGEST_SIZE_TO_WAIT) {
    int waiting = 0;
    do {
      auto sum = static_cast<uint64_t>(value);
      // The weight of the NUL is negative too.
      for (waiting = 0; waiting < LONGEST_WAIT && weightOf(*text) >= 0; ++waiting, ++text)
        sum = sum * FACTOR + static_cast<uint64_t>(weightOf(*text));
      value = static_cast<int32_t>(sum % static_cast<uint64_t>(size));
    } while (waiting == LONGEST_WAIT);
  }
  for (; *text; ++text) {
    uint32_t sum = static_cast<uint32_t>(value) * FACTOR + static_cast<uint32_t>(weightOf(*text));
    value = static_cast<int32_t>(sum) % size;
  }
  return value < 0 ? -value : value;
}

const ZVStringPoolHash* ZVStringPool::find(int32_t bucket, const char* text) const {
  for (const ZVStringPoolHash* record = hashTable()[bucket]; record; record = record->next) {
    if (equal(text, stringOf(record))) return record;
  }
  return nullptr;
}

bool ZVStringPool::equal(const char* text, const char* own) const {
  return caseSensitive_ ? std::strcmp(text, own) == 0 : equalFolded(text, own);
}

void ZVStringPool::increaseDecodeTable(int32_t newSize) {
  if (newSize <= decodeTableSize_) return;
  auto enlarge = [&](auto& table) {
    auto larger =
        std::make_unique_for_overwrite<typename std::remove_reference_t<decltype(table)>::element_type[]>(
            static_cast<size_t>(newSize));
    std::copy_n(table.get(), decodeTableMax_, larger.get());
    table = std::move(larger);
  };
  enlarge(decodeTable_);
  if (pointerTable_) enlarge(pointerTable_);
  decodeTableSize_ = newSize;
}

void* ZVStringPool::obtain(size_t size) {
  size = roundedUp(size);
  if (!blocks_ || blocks_->size - blocks_->used < size) {
    size_t blockSize = blocks_ ? std::min(blocks_->size * 2, LARGEST_BLOCK) : FIRST_BLOCK;
    blockSize = std::max(blockSize, size);
    void* memory = ::operator new(sizeof(Block) + blockSize);
    blocks_ = new (memory) Block{blocks_, blockSize, 0};
  }
  char* result = blocks_->memory() + blocks_->used;
  blocks_->used += size;
  return result;
}
