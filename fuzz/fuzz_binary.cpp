#include <cstdint>

#include "fuzz/reader.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  readInput({reinterpret_cast<const char*>(data), size}, true);
  return 0;
}
