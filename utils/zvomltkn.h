// One token of an OML file, and the kinds of tokens.
//
// A token has one owner at a time: the reader, the parser, and at last the field whose value it is. It owns
// its byte sequence, if it is one; its other values are plain numbers, most of them indices in the pools of
// the file that read it.
#ifndef ZV_ZVOMLTKN_H
#define ZV_ZVOMLTKN_H

#include <cstdint>

#include "utils/zvplatfo.h"

class ZVOMLBinValue;
class ZVStringPool;

enum ZVOMLTokenTagEnum : int32_t {
  ZV_OML_LEFT_BRACKET = 0,
  ZV_OML_RIGHT_BRACKET = 1,
  ZV_OML_ASSIGN = 2,
  ZV_OML_SEPARATOR = 3,
  ZV_OML_INTEGER = 4,
  ZV_OML_STRING = 5,
  ZV_OML_VALUE_ID = 6,
  ZV_OML_OBJTYPE_ID = 7,
  ZV_OML_SECTION_ID = 8,
  ZV_OML_FIELD_ID = 9,
  ZV_OML_OBJECT_ID = 10,
  ZV_OML_REAL = 11,
  ZV_OML_IPBYTES = 12,
  ZV_OML_BINVALUE = 13,
  ZV_OML_BAD = 14
};

class ZV_EXPORT ZVOMLToken {
 public:
  // A bad token at no place.
  ZVOMLToken() = default;
  ZVOMLToken(ZVOMLTokenTagEnum tag, int32_t value, int32_t line, int32_t position)
      : tag_(tag), line_(line), position_(position) {
    value_.number = value;
  }
  // Takes over the byte sequence.
  ZVOMLToken(ZVOMLTokenTagEnum tag, ZVOMLBinValue* value, int32_t line, int32_t position);
  ZVOMLToken(ZVOMLTokenTagEnum tag, double value, int32_t line, int32_t position);
  // Packs four octets into an address, the first into the top byte.
  ZVOMLToken(ZVOMLTokenTagEnum tag, const int32_t octets[4], int32_t line, int32_t position);
  // Copies clone a byte sequence.
  ZVOMLToken(const ZVOMLToken& other);
  ZVOMLToken& operator=(const ZVOMLToken& other);
  // Takes over a byte sequence, and leaves a bad token.
  ZVOMLToken(ZVOMLToken&& other) noexcept
      : tag_(other.tag_),
        line_(other.line_),
        value_(other.value_),
        position_(other.position_),
        isUnknownField_(other.isUnknownField_) {
    other.tag_ = ZV_OML_BAD;
  }
  ~ZVOMLToken() {
    if (tag_ == ZV_OML_BINVALUE) deleteBytes();
  }

  ZVOMLTokenTagEnum tag() const { return tag_; }
  // Where the reader stood when the token was finished.
  int32_t line() const { return line_; }
  int32_t position() const { return position_; }
  char charValue() const { return static_cast<char>(value_.number); }
  int32_t longValue() const { return value_.number; }
  int32_t longValue(int32_t value) { return value_.number = value; }
  double doubleValue() const { return value_.real; }
  uint32_t ipbytesValue() const { return static_cast<uint32_t>(value_.number); }
  ZVOMLBinValue* pBinValue() const { return value_.bytes; }
  // 1 for a field whose name was declared in the file.
  int isUnknownField() const { return isUnknownField_; }
  int isUnknownField(int flag) { return isUnknownField_ = flag; }

  // Turns an integer into an object id: its decimal text is entered in the pool.
  void intToObjectID(ZVStringPool* pool);
  // The same with the index that the text has.
  void intToObjectID(int32_t index) {
    tag_ = ZV_OML_OBJECT_ID;
    value_.number = index;
  }

 private:
  void deleteBytes();

  // The widest view comes first, so that all of it is 0 to begin with.
  union Value {
    double real;
    int32_t number;
    ZVOMLBinValue* bytes;
  };

  ZVOMLTokenTagEnum tag_ = ZV_OML_BAD;
  int32_t line_ = 0;
  Value value_{};
  int32_t position_ = 0;
  int32_t isUnknownField_ = 0;
};

#endif
