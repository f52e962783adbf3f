#include "utils/zvslistc.h"

ZV_DEFINE_MIRROR(ZVSListCell)

const ZVSListCell& ZVSListCell::operator=(const ZVSListCell& other) {
  if (&other == this) return *this;
  object_ = other.object_;
  nextCell_ = nullptr;
  return *this;
}
