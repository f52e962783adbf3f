#include "utils/zvstrhnd.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <limits>
#include <new>

namespace {

constexpr int32_t FIRST_CAPACITY = 254;

int32_t saturated(int64_t value) {
  return static_cast<int32_t>(std::min<int64_t>(value, std::numeric_limits<int32_t>::max()));
}

}  // namespace

ZV_DEFINE_VALUE(ZVStringHandle, ZVObject)

void ZVStringHandle::init() {
  capacity(FIRST_CAPACITY);
  pString(new char[FIRST_CAPACITY]);
  empty();
}

void ZVStringHandle::ZVStringHandleattributeCopy(const ZVStringHandle& other) {
  ZVObject::copyAttributes(&other);
  int32_t length = other.strlenBuf();
  needCapacity(other.capacity_ - 1);
  std::memcpy(pString_.get(), other.pString(), static_cast<size_t>(length) + 1);
  knownLength_ = length;
}

int32_t ZVStringHandle::measuredLength() const {
  return knownLength_ + static_cast<int32_t>(std::strlen(pString() + knownLength_));
}

void ZVStringHandle::appendChar(char c) { append(&c, c ? 1 : 0); }

void ZVStringHandle::appendString(const char* text) {
  if (!text) return;
  const char* first = pString();
  bool own = !std::less<>()(text, first) && std::less<>()(text, first + capacity_);
  std::ptrdiff_t offset = own ? text - first : 0;
  int32_t count = saturated(static_cast<int64_t>(std::strlen(text)));
  increaseLength(count);
  append(own ? pString() + offset : text, count);
}

char* ZVStringHandle::obtainAppendBuffer(int32_t count) {
  increaseLength(saturated(static_cast<int64_t>(count) + 1));
  knownLength_ = strlenBuf();
  return pString_.get() + knownLength_;
}

void ZVStringHandle::empty() {
  pString_[0] = '\0';
  knownLength_ = 0;
}

void ZVStringHandle::needCapacity(int32_t length) {
  int64_t required = static_cast<int64_t>(length) + 1;
  if (required <= capacity_) return;
  int64_t newCapacity = capacity_;
  while (newCapacity < required) newCapacity *= 2;
  // A text that 32 bits cannot count has no room anywhere.
  if (newCapacity > std::numeric_limits<int32_t>::max()) throw std::bad_alloc();
  auto* buffer = new char[static_cast<size_t>(newCapacity)];
  std::memcpy(buffer, pString(), static_cast<size_t>(strlenBuf()) + 1);
  pString(buffer);
  capacity(static_cast<int32_t>(newCapacity));
}

void ZVStringHandle::growBy(int32_t count) {
  needCapacity(saturated(static_cast<int64_t>(strlenBuf()) + count + 1));
}

int32_t ZVStringHandle::sizeOf() const { return saturated(static_cast<int64_t>(sizeof *this) + capacity_); }

char* ZVStringHandle::pChangeableString() {
  knownLength_ = 0;
  return pString_.get();
}
