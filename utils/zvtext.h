// Owned texts, which may be missing: null is told apart from the empty text.
#ifndef ZV_ZVTEXT_H
#define ZV_ZVTEXT_H

#include <cstddef>
#include <memory>

#include "utils/zvobject.h"

// A plain owned string. What pString gives holds until the next change.
class ZV_EXPORT ZVInternalText {
 public:
  ZVInternalText(const char* text = nullptr) { pString(text); }
  ZVInternalText(std::nullptr_t) {}
  // The message of that number (see getStringResource); the literal 0 is a number here.
  ZVInternalText(int32_t id);
  ZVInternalText(const ZVInternalText& other) : ZVInternalText(other.pString()) {}
  ZVInternalText& operator=(const ZVInternalText& other);

  char* pString() const { return pString_.get(); }
  // The record and the length of the text, in bytes.
  int32_t sizeOf() const;

  // Each takes a copy, which may be of a part of this text, and gives the text now held. Adding null changes
  // nothing; added to no text, the addition is the text.
  char* pString(const char* text);
  char* prependString(const char* text);
  char* appendString(const char* text);

  // A number that every change of the text through the operations above makes a new one.
  uint64_t revision() const { return revision_; }

  void debugOutput(int) {}

 private:
  char* join(const char* first, const char* second);
  char* hold(std::unique_ptr<char[]> text);

  std::unique_ptr<char[]> pString_;
  uint64_t revision_ = 0;
};

// The same as an object.
class ZV_EXPORT ZVText : public ZVObject {
 public:
  ZVText(const char* text = nullptr) : text_(text) {}
  ZVText(std::nullptr_t) {}
  ZVText(int32_t id) : text_(id) {}
  ZVText(const ZVInternalText& text) : text_(text) {}

  char* pString() const { return text_.pString(); }
  char* pString(const char* text) { return text_.pString(text); }
  char* prependString(const char* text) { return text_.prependString(text); }
  char* appendString(const char* text) { return text_.appendString(text); }

  virtual int32_t sizeOf() const;

 protected:
  uint64_t textRevision() const { return text_.revision(); }

  ZV_SHAPE_FULL(ZVText)

  ZVInternalText text_;
};

#endif
