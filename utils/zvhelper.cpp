#include "utils/zvhelper.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <utility>

namespace {

constexpr std::array<int32_t, 31> PRIMES = {
    160201, 120199, 80077, 60077, 40031, 30029, 20011, 15013, 10007, 7507, 5003, 3511, 2503, 1657, 1103, 751,
    503,    353,    251,   167,   113,   79,    53,    37,    29,    17,   11,   7,    5,    3,    2};

uint32_t magnitude(int32_t n) { return n < 0 ? 0U - static_cast<uint32_t>(n) : static_cast<uint32_t>(n); }

}  // namespace

int32_t nextPrimeNumber(int32_t n) {
  const auto* notAbove = std::lower_bound(PRIMES.begin(), PRIMES.end(), n, std::greater<>());
  return notAbove == PRIMES.begin() ? 0 : *(notAbove - 1);
}

int32_t prevPrimeNumber(int32_t n) {
  const auto* below = std::upper_bound(PRIMES.begin(), PRIMES.end(), n, std::greater<>());
  return below == PRIMES.end() ? 0 : *below;
}

int32_t greatestCommonDivisor(int32_t a, int32_t b) {
  uint32_t x = std::min(magnitude(a), magnitude(b));
  uint32_t y = std::max(magnitude(a), magnitude(b));
  while (x != 0) y = std::exchange(x, y % x);
  return static_cast<int32_t>(y);
}

int32_t maxRandomNumber() { return 32767; }

char* zvGetCurrentWorkingDir(char* buffer, int size, int withSeparator) {
  buffer[0] = '\0';
  zvplatform::workingDirectory(buffer, size);
  if (withSeparator) std::memcpy(buffer + std::strlen(buffer), "\\", 2);
  return buffer;
}

void* getModuleHandle(const char* name) { return name ? zvplatform::loadModule(name) : nullptr; }

uint32_t getModuleFileName(void* module, char* buffer) {
  buffer[0] = '\0';
  return zvplatform::moduleFileName(module, buffer, 254);
}

void* freeModuleHandle(void* module) {
  if (module) zvplatform::freeModule(module);
  return nullptr;
}

void* getFunctionHandle(void* module, const char* name) {
  return module && name ? zvplatform::functionAddress(module, name) : nullptr;
}
