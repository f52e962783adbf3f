// What all of the geometry shares: its enumerations, its one rounding rule, and arithmetic that is defined
// for every operand.
//
// x grows to the right and y grows upward. Coordinates are unitless 32-bit integers; real-valued work is done
// in double, and only the result is brought back to integers: rounded (roundHalfUp) unless an operation says
// that it truncates.
//
// Headers hold no sum of products of reals: a caller's compiler may fuse the two and round once, and answers
// would differ from one program to the next.
#ifndef ZV_ZVGEOM_H
#define ZV_ZVGEOM_H

#include <cmath>
#include <cstdint>
#include <limits>

// Travel along an axis. The first four are numbered like ZVSideEnum, and a direction may be passed on as the
// side that it leads to. An even value is horizontal travel, an odd one vertical.
enum ZVDirectionEnum : int32_t {
  ZV_DIRECTION_RIGHT = 0,
  ZV_DIRECTION_UP = 1,
  ZV_DIRECTION_LEFT = 2,
  ZV_DIRECTION_DOWN = 3,
  ZV_DIRECTION_NONE = 4
};

enum ZVSideEnum : int32_t {
  ZV_SIDE_RIGHT = 0,
  ZV_SIDE_TOP = 1,
  ZV_SIDE_LEFT = 2,
  ZV_SIDE_BOTTOM = 3,
  ZV_SIDE_NONE = 4
};

// Selects y and the height, or x and the width. Any value but 0 acts as horizontal.
enum ZVOrientationEnum : int32_t { ZV_ORIENTATION_VERTICAL = 0, ZV_ORIENTATION_HORIZONTAL = 1 };

// Drops the fraction, toward zero: 2.9 gives 2, -2.9 gives -2. What 32 bits cannot hold saturates, and what
// is not a number gives 0.
inline int32_t truncateToInt32(double value) {
  if (value >= 2147483648.0) return std::numeric_limits<int32_t>::max();
  if (value <= -2147483649.0) return std::numeric_limits<int32_t>::min();
  return value == value ? static_cast<int32_t>(value) : 0;
}

// The rounding of the geometry. Halves go toward positive infinity: 2.5 gives 3, -2.5 gives -2.
inline int32_t roundHalfUp(double value) { return truncateToInt32(std::floor(value + 0.5)); }

// Arithmetic in 32 bits that wraps.
constexpr int32_t add32(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}
constexpr int32_t subtract32(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}
constexpr int32_t multiply32(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

#endif
