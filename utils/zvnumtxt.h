// Numbers as text, the same in every locale: the formats of printf and scanf as the "C" locale has them.
//
// Nothing here allocates, except appendReal with a format of the caller's.
#ifndef ZV_ZVNUMTXT_H
#define ZV_ZVNUMTXT_H

#include <cstdint>

#include "utils/zvplatfo.h"

class ZVStringHandle;

namespace zvnumber {

// Room for any number with its NUL.
inline constexpr int32_t INTEGER_ROOM = 12;
inline constexpr int32_t REAL_ROOM = 330;
// The most decimals that REAL_ROOM has room for.
inline constexpr int32_t MOST_DECIMALS = 16;

// Write the number and a NUL to buffer and give the number of characters: "%ld", "%lu", "%.*lf".
// REQUIRES: buffer has the room above; decimals is 0 to MOST_DECIMALS.
ZV_EXPORT int32_t formatInteger(char* buffer, int32_t value);
ZV_EXPORT int32_t formatUnsigned(char* buffer, uint32_t value);
ZV_EXPORT int32_t formatReal(char* buffer, double value, int32_t decimals = 6);

// Appends format, a printf format with at most one conversion, which takes a double. Gives 0, with any text
// appended so far, for other formats and for a width or precision above 99999.
ZV_EXPORT int appendReal(ZVStringHandle& text, double value, const char* format);

// Read a number at the start of text, behind blanks: "%ld", "%lu", "%lf". They give the place behind it, or
// null without touching value if there is no number. Whole numbers saturate at 32 bits, reals at infinity
// and 0. As in scanf, an unsigned number may have a minus sign and then wraps around.
// Cost: linear in the length of the number, whatever follows it.
ZV_EXPORT const char* scanInteger(const char* text, int32_t& value);
ZV_EXPORT const char* scanUnsigned(const char* text, uint32_t& value);
ZV_EXPORT const char* scanReal(const char* text, double& value);

// The number at the start of text, 0 if there is none.
inline int32_t integerOf(const char* text) {
  int32_t value = 0;
  scanInteger(text, value);
  return value;
}
inline double realOf(const char* text) {
  double value = 0.0;
  scanReal(text, value);
  return value;
}

// A number of the language's own types, brought to 32 bits.
inline int32_t saturated(long value) {
  if (value > INT32_MAX) return INT32_MAX;
  return value < INT32_MIN ? INT32_MIN : static_cast<int32_t>(value);
}
inline uint32_t saturated(unsigned long value) {
  return value > UINT32_MAX ? UINT32_MAX : static_cast<uint32_t>(value);
}

}  // namespace zvnumber

#endif
