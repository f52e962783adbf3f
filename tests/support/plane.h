// Exact models of the geometry stand on whole coordinates of 64 bits.
#ifndef ZV_TEST_PLANE_H
#define ZV_TEST_PLANE_H

#include <cstdint>
#include <limits>
#include <ostream>
#include <random>
#include <utility>
#include <vector>

#include "utils/zvpoint.h"

constexpr int32_t kMax = std::numeric_limits<int32_t>::max();
constexpr int32_t kMin = std::numeric_limits<int32_t>::min();

struct P {
  int64_t x, y;
  bool operator==(const P&) const = default;
  friend std::ostream& operator<<(std::ostream& out, const P& p) { return out << p.x << ", " << p.y; }
};
using Points = std::vector<P>;

inline int32_t i32(int64_t v) { return static_cast<int32_t>(v); }
inline double real(int64_t v) { return static_cast<double>(v); }
inline ZVPoint point(const P& p) { return ZVPoint(i32(p.x), i32(p.y)); }
inline P place(const ZVTuple& p) { return {p.x(), p.y()}; }

// Twice the area of the triangle, positive if it turns left.
inline int64_t turn(const P& a, const P& b, const P& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

// The quotient rounded, halves up.
inline int64_t divideHalfUp(int64_t num, int64_t den) {
  if (den < 0) num = -num, den = -den;
  const int64_t twice = 2 * num + den;
  return twice / (2 * den) - (twice % (2 * den) < 0);
}

// Coordinates from a small lattice, so that ties, touches and empty sizes come all the time.
class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}
  int64_t from(int64_t low, int64_t high) {
    return low + static_cast<int64_t>(engine_() % static_cast<uint64_t>(high - low + 1));
  }
  P point(int64_t reach) {
    const int64_t x = from(-reach, reach);
    return {x, from(-reach, reach)};
  }
  Points points(int64_t count, int64_t reach) {
    Points points(static_cast<size_t>(count));
    for (P& p : points) p = point(reach);
    return points;
  }

 private:
  std::mt19937 engine_;
};

#endif
