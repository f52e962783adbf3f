// A byte sequence: the value of a binary field of an OML file. It owns its bytes, and every copy of it
// copies them.
#ifndef ZV_ZVOMLBVA_H
#define ZV_ZVOMLBVA_H

#include "utils/zvobject.h"

class ZV_EXPORT ZVOMLBinValue : public ZVObject {
 public:
  // Copies length bytes; null bytes leave the content undefined until it is filled.
  ZVOMLBinValue(int32_t length = 0, const char* bytes = nullptr);
  ~ZVOMLBinValue() override;

  int32_t length() const { return length_; }
  const char* pByteSequence() const { return bytes_; }
  char* pByteSequence() { return bytes_; }

  // Both go through fill: with null bytes, and with the present length.
  int32_t length(int32_t newLength);
  const char* pByteSequence(const char* bytes);

  // A length below 1 frees everything. Else the value has exactly that length, holding a copy of the bytes
  // if they are given; without them its content is undefined.
  void fill(int32_t length, const char* bytes);
  // Appends the other value's bytes.
  void concat(const ZVOMLBinValue* other);

  ZV_SHAPE_VALUE(ZVOMLBinValue)
  int32_t length_ = 0;
  int32_t maxLength_ = 0;
  char* bytes_ = nullptr;
};

#endif
