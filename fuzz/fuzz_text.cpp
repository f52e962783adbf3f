#include "fuzz/reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  readInput(data, size, false);
  return 0;
}
