#include "utils/zvstrpoo.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

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
  if (other.pointerTable()) std::copy_n(other.pointerTable(), decodeTableSize_, pointerTable());
}

void ZVStringPool::ZVStringPoolattributeCopy(const ZVStringPool& other) {
  ZVObject::copyAttributes(&other);
  empty();
  caseSensitive_ = other.caseSensitive_;
}

int32_t ZVStringPool::lookup(const char* text) {
  if (!text || hashTableSize_ == 0) return -1;
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
  int32_t bucket = hash(text);
  if (const ZVStringPoolHash* record = find(bucket, text)) return record->index;

  if (decodeTableMax_ >= decodeTableSize_ - 1) {
    int64_t newSize = static_cast<int64_t>(decodeTableMax_) * 3 / 2 + 5;
    increaseDecodeTable(
        static_cast<int32_t>(std::min<int64_t>(newSize, std::numeric_limits<int32_t>::max())));
  }
  size_t size = std::strlen(text) + 1;
  void* memory = obtain(sizeof(ZVStringPoolHash) + size);
  auto* record = new (memory) ZVStringPoolHash{decodeTableMax_, hashTable()[bucket]};
  auto* copy = reinterpret_cast<char*>(record + 1);
  std::memcpy(copy, text, size);
  if (!caseSensitive_) std::transform(copy, copy + size, copy, zvascii::toUpper);
  hashTable()[bucket] = record;
  decodeTable()[decodeTableMax_] = copy;
  return decodeTableMax_++;
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
  decodeTable_.reset();
  pointerTable_.reset();
  hashTableSize_ = 0;
  decodeTableSize_ = 0;
  decodeTableMax_ = 0;
}

void ZVStringPool::makeTables(bool withPointers) {
  hashTable_ = std::make_unique<ZVStringPoolHash*[]>(static_cast<size_t>(hashTableSize_));
  decodeTable_ = std::make_unique<char*[]>(static_cast<size_t>(decodeTableSize_));
  if (withPointers) pointerTable_ = std::make_unique<void*[]>(static_cast<size_t>(decodeTableSize_));
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
    const char* candidate = stringOf(record);
    bool equal = caseSensitive_ ? std::strcmp(text, candidate) == 0 : equalFolded(text, candidate);
    if (equal) return record;
  }
  return nullptr;
}

void ZVStringPool::increaseDecodeTable(int32_t newSize) {
  if (newSize <= decodeTableSize_) return;
  auto enlarge = [&](auto& table) {
    auto larger = std::make_unique<typename std::remove_reference_t<decltype(table)>::element_type[]>(
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
