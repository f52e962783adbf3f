#include "utils/zvomltkn.h"

#include <charconv>

#include "utils/zvomlbva.h"
#include "utils/zvstrpoo.h"

ZVOMLToken::ZVOMLToken(ZVOMLTokenTagEnum tag, ZVOMLBinValue* value, int32_t line, int32_t position)
    : tag_(tag), line_(line), position_(position) {
  value_.bytes = value;
}

ZVOMLToken::ZVOMLToken(ZVOMLTokenTagEnum tag, double value, int32_t line, int32_t position)
    : tag_(tag), line_(line), position_(position) {
  value_.real = value;
}

ZVOMLToken::ZVOMLToken(ZVOMLTokenTagEnum tag, const int32_t octets[4], int32_t line, int32_t position)
    : tag_(tag), line_(line), position_(position) {
  uint32_t address = 0;
  for (int i = 0; i < 4; ++i) address = address << 8 | (static_cast<uint32_t>(octets[i]) & 0xffU);
  value_.number = static_cast<int32_t>(address);
}

ZVOMLToken::ZVOMLToken(const ZVOMLToken& other)
    : tag_(other.tag_),
      line_(other.line_),
      value_(other.value_),
      position_(other.position_),
      isUnknownField_(other.isUnknownField_) {
  if (tag_ == ZV_OML_BINVALUE) value_.bytes = ZVOMLBinValue::cloneObject(other.value_.bytes);
}

ZVOMLToken& ZVOMLToken::operator=(const ZVOMLToken& other) {
  if (&other == this) return *this;
  Value value = other.value_;
  if (other.tag_ == ZV_OML_BINVALUE) value.bytes = ZVOMLBinValue::cloneObject(other.value_.bytes);
  if (tag_ == ZV_OML_BINVALUE) delete value_.bytes;
  tag_ = other.tag_;
  line_ = other.line_;
  value_ = value;
  position_ = other.position_;
  isUnknownField_ = other.isUnknownField_;
  return *this;
}

void ZVOMLToken::deleteBytes() { delete value_.bytes; }

void ZVOMLToken::intToObjectID(ZVStringPool* pool) {
  char text[16];
  *std::to_chars(text, text + sizeof text - 1, value_.number).ptr = '\0';
  intToObjectID(pool ? pool->update(text) : -1);
}
