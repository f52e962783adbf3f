#include "utils/zvsize.h"

ZV_DEFINE_VALUE(ZVSize, ZVTuple)

void ZVSize::debugOutput(int level) {
  char label[] = "Size";
  internalDebugOutput(level, label);
}

int32_t ZVSize::sizeOf() const { return static_cast<int32_t>(sizeof *this); }

void ZVSize::init() {}

void ZVSize::ZVSizeattributeCopy(const ZVSize& other) { ZVTuple::copyAttributes(&other); }
