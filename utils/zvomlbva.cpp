#include "utils/zvomlbva.h"

#include <cstring>
#include <limits>
#include <new>

ZV_DEFINE_VALUE(ZVOMLBinValue, ZVObject)

ZVOMLBinValue::ZVOMLBinValue(int32_t length, const char* bytes) { fill(length, bytes); }

ZVOMLBinValue::~ZVOMLBinValue() { delete[] bytes_; }

void ZVOMLBinValue::init() {
  length_ = 0;
  maxLength_ = 0;
  bytes_ = nullptr;
}

void ZVOMLBinValue::ZVOMLBinValueattributeCopy(const ZVOMLBinValue& other) {
  ZVObject::copyAttributes(&other);
  fill(other.length_, other.bytes_);
}

int32_t ZVOMLBinValue::length(int32_t newLength) {
  fill(newLength, nullptr);
  return length_;
}

const char* ZVOMLBinValue::pByteSequence(const char* bytes) {
  fill(length_, bytes);
  return bytes_;
}

void ZVOMLBinValue::fill(int32_t length, const char* bytes) {
  if (length < 1) {
    delete[] bytes_;
    init();
    return;
  }
  // The bytes may lie in this value, so they are copied before the old ones go.
  char* old = nullptr;
  if (length > maxLength_) {
    old = bytes_;
    bytes_ = new char[static_cast<size_t>(length)];
    maxLength_ = length;
  }
  length_ = length;
  if (bytes) std::memmove(bytes_, bytes, static_cast<size_t>(length));
  delete[] old;
}

void ZVOMLBinValue::concat(const ZVOMLBinValue* other) {
  if (!other || other->length_ < 1) return;
  const int64_t sum = static_cast<int64_t>(length_) + other->length_;
  if (sum > std::numeric_limits<int32_t>::max()) throw std::bad_alloc();
  char* old = nullptr;
  if (sum > maxLength_) {
    old = bytes_;
    bytes_ = new char[static_cast<size_t>(sum)];
    maxLength_ = static_cast<int32_t>(sum);
    if (old) std::memcpy(bytes_, old, static_cast<size_t>(length_));
  }
  // The other value may be this one, whose bytes are at the front in either case.
  std::memcpy(bytes_ + length_, other->bytes_, static_cast<size_t>(other->length_));
  length_ = static_cast<int32_t>(sum);
  delete[] old;
}
