// An owned, growable, NUL-terminated text. It is not shared and has no reference count.
//
// Invariant: strlen(pString()) < capacity(). The capacity starts at 254, doubles, and never shrinks.
// Cost: appending is linear in what is appended, amortised. strlenBuf reads only what was written through
// obtainAppendBuffer since the last append.
#ifndef ZV_ZVSTRHND_H
#define ZV_ZVSTRHND_H

#include <cstddef>
#include <cstring>
#include <memory>

#include "utils/zvobject.h"

class ZV_EXPORT ZVStringHandle : public ZVObject {
 public:
  ZVStringHandle() { init(); }

  // The text stays the handle's and its address holds until the next growth.
  const char* pString() const { return pString_.get(); }
  int32_t strlenBuf() const {
    return pString_[static_cast<size_t>(knownLength_)] ? measuredLength() : knownLength_;
  }
  int32_t capacity() const { return capacity_; }

  // A NUL ends the text, so appending one changes nothing.
  void appendChar(char c);
  // Null adds nothing. The text may lie inside this handle.
  void appendString(const char* text);
  // Makes room for count more characters and gives the place of the terminating NUL. The caller writes
  // there and terminates the text, at any time before the next operation that changes the handle.
  char* obtainAppendBuffer(int32_t count);
  // The text becomes empty, the capacity stays.
  void empty();

  // Makes the capacity greater than length.
  void needCapacity(int32_t length);
  // needCapacity for count more characters and their NUL.
  void increaseLength(int32_t count) {
    if (count > capacity_ - 2 - strlenBuf()) growBy(count);
  }

  // The record and the capacity, in bytes.
  virtual int32_t sizeOf() const;

  void internalDebugOutput(int) {}

  ZV_SHAPE_VALUE(ZVStringHandle)

  friend class ZVFile;      // adds runs of characters
  friend class ZVTextFile;  // strips its lines in place

  int32_t measuredLength() const;
  void growBy(int32_t count);
  // Appends the characters, and one more or none as end has it. REQUIRES: no NUL is among the characters; if
  // they lie in this handle, there is room for them already.
  void append(const char* characters, int32_t count, const char* end = "") {
    increaseLength(count + (*end ? 1 : 0));
    char* place = pString_.get() + strlenBuf();
    std::memcpy(place, characters, static_cast<size_t>(count));
    place += count;
    if (*end) *place++ = *end;
    *place = '\0';
    knownLength_ = static_cast<int32_t>(place - pString_.get());
  }

  // The text for changes of any kind.
  char* pChangeableString();
  // Takes over a new buffer of capacity() bytes.
  void pString(char* buffer) { pString_.reset(buffer); }
  void capacity(int32_t bytes) { capacity_ = bytes; }

  std::unique_ptr<char[]> pString_;
  int32_t capacity_ = 0;
  int32_t knownLength_ = 0;  // the text is at least this long, and no caller can shorten that part
};

#endif
