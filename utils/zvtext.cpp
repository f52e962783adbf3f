#include "utils/zvtext.h"

#include <cstring>
#include <utility>

#include "utils/zverrmsg.h"

ZVInternalText::ZVInternalText(int32_t id) : ZVInternalText(getStringResource(id)) {}

ZVInternalText& ZVInternalText::operator=(const ZVInternalText& other) {
  if (&other != this) pString(other.pString());
  return *this;
}

int32_t ZVInternalText::sizeOf() const {
  return static_cast<int32_t>(sizeof *this + (pString_ ? std::strlen(pString()) : 0));
}

char* ZVInternalText::join(const char* first, const char* second) {
  size_t length = std::strlen(first);
  size_t rest = std::strlen(second);
  std::unique_ptr<char[]> text(new char[length + rest + 1]);
  std::memcpy(text.get(), first, length);
  std::memcpy(text.get() + length, second, rest + 1);
  return hold(std::move(text));
}

char* ZVInternalText::hold(std::unique_ptr<char[]> text) {
  pString_ = std::move(text);
  ++revision_;
  return pString();
}

char* ZVInternalText::pString(const char* text) { return text ? join(text, "") : hold(nullptr); }

char* ZVInternalText::prependString(const char* text) {
  return text ? join(text, pString_ ? pString() : "") : pString();
}

char* ZVInternalText::appendString(const char* text) {
  return text ? join(pString_ ? pString() : "", text) : pString();
}

ZV_DEFINE_FULL(ZVText, ZVObject)

void ZVText::init() { text_.pString(nullptr); }

void ZVText::ZVTextdeepCopy(const ZVText& other) {
  ZVObject::copyObject(&other);
  text_ = other.text_;
}

void ZVText::ZVTextattributeCopy(const ZVText& other) {
  ZVObject::copyAttributes(&other);
  text_.pString(nullptr);
}

int32_t ZVText::sizeOf() const { return static_cast<int32_t>(sizeof *this - sizeof text_) + text_.sizeOf(); }
