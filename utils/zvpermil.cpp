#include "utils/zvpermil.h"

#include "utils/zvsize.h"

ZV_DEFINE_VALUE(ZVPerMil, ZVObject)

void ZVPerMil::resize(const ZVSize& size) {
  resize(static_cast<int16_t>(size.width()), static_cast<int16_t>(size.height()));
}

int32_t ZVPerMil::sizeOf() const { return static_cast<int32_t>(sizeof *this); }

void ZVPerMil::init() { resize(0, 0); }

void ZVPerMil::ZVPerMilattributeCopy(const ZVPerMil& other) {
  ZVObject::copyAttributes(&other);
  resize(other.x_, other.y_);
}

double ZVSpacing::combined(double size) const { return proportional_ / 1000.0 * size + constant_; }

int32_t ZVSpacing::calculateOuterSize(const ZVSpacing& a, const ZVSpacing& b, int32_t inner) {
  const int32_t p = a.proportional_;
  const int32_t q = b.proportional_;
  // What is left of an outer size without the proportional parts.
  auto remaining = [p, q](int64_t outer) {
    const int32_t size = static_cast<int32_t>(outer);
    return int64_t{size} - (int64_t{multiply32(size, p) / 1000} + multiply32(size, q) / 1000);
  };

  const int64_t wanted = int64_t{inner} + a.constant_ + b.constant_;
  const int64_t divisor = 1000 - p - q;
  if (wanted < 1 || divisor == 0) return 0;
  const int64_t u = (wanted - 2) * 1000 / divisor + 1;
  const int64_t v = (wanted - 1) * 1000 / divisor + 1;
  int64_t high = 2 * v - u;
  int64_t low = 3 * u - 2 * v;
  for (;;) {
    const int64_t middle = (low + high) / 2;
    const int64_t left = remaining(middle);
    int64_t& bound = left > wanted ? high : low;
    // A bound that no longer moves ends the search where the contract was not kept.
    if (left == wanted || bound == middle) return static_cast<int32_t>(middle);
    bound = middle;
  }
}
