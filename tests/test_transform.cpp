#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "tests/support/plane.h"
#include "utils/zvrorect.h"
#include "utils/zvtransf.h"

namespace {

// One axis of a map, exact: target extent * (v - source origin) / source extent + target origin.
struct Axis {
  int64_t fromOrigin, fromExtent, toOrigin, toExtent;

  int64_t rounded(int64_t v) const {
    return fromExtent == 0 ? 0
                           : divideHalfUp(toExtent * (v - fromOrigin) + toOrigin * fromExtent, fromExtent);
  }
  Axis inverse() const { return {toOrigin, toExtent, fromOrigin, fromExtent}; }
};

Axis randomAxis(Random& numbers) {
  return {numbers.from(-5, 5), numbers.from(-5, 5), numbers.from(-5, 5), numbers.from(-5, 5)};
}

ZVTransform transformOf(const Axis& x, const Axis& y) {
  ZVTransform t;
  t.sourceOriginX(real(x.fromOrigin)), t.sourceOriginY(real(y.fromOrigin));
  t.sourceExtentX(real(x.fromExtent)), t.sourceExtentY(real(y.fromExtent));
  t.targetOriginX(real(x.toOrigin)), t.targetOriginY(real(y.toOrigin));
  t.targetExtentX(real(x.toExtent)), t.targetExtentY(real(y.toExtent));
  return t;
}

using Pair = std::array<int64_t, 2>;
using Four = std::array<int64_t, 4>;
Pair pairOf(const ZVTuple& t) { return {t.x(), t.y()}; }
Four sidesOf(const ZVRect& r) { return {r.left(), r.bottom(), r.right(), r.top()}; }

TEST(Transform, MapsWholeObjectsAsItMapsTheirCoordinates) {
  Random numbers(1);
  for (int round = 0; round < 20000; ++round) {
    SCOPED_TRACE(round);
    const Axis x = randomAxis(numbers), y = randomAxis(numbers), ix = x.inverse(), iy = y.inverse();
    const ZVTransform t(transformOf(x, y), ZV_DEEP_COPY);
    const P from = numbers.point(20), to = numbers.point(20);
    const int32_t a = i32(from.x), b = i32(from.y), c = i32(to.x), d = i32(to.y);
    const Pair there{x.rounded(a), y.rounded(b)}, back{ix.rounded(a), iy.rounded(b)};
    ASSERT_EQ((Pair{t.transformX(long{a}), t.transformY(long{b})}), there);
    ASSERT_EQ((Pair{t.inverseTransformX(long{a}), t.inverseTransformY(long{b})}), back);

    tagPOINT device = {a, b};
    ZVPoint p;
    t.inverseTransformPoint(device, p);
    ASSERT_EQ(pairOf(p), back);
    p.set(a, b);
    t.transformPoint(p, device);
    ASSERT_EQ(pairOf(ZVPoint(device)), there);
    t.transformPoint(p, p);
    ASSERT_EQ(pairOf(p), there);
    t.inverseTransformPoint(ZVPoint(a, b), p);
    ASSERT_EQ(pairOf(p), back);

    const Pair wide{there[0] - x.rounded(0), there[1] - y.rounded(0)};
    const Pair wideBack{back[0] - ix.rounded(0), back[1] - iy.rounded(0)};
    tagSIZE deviceSize = {a, b};
    ZVSize size;
    t.inverseTransformSize(deviceSize, size);
    ASSERT_EQ(pairOf(size), wideBack);
    size.resize(a, b);
    t.transformSize(size, deviceSize);
    ASSERT_EQ(pairOf(ZVSize(deviceSize)), wide);
    t.transformSize(size, size);
    ASSERT_EQ(pairOf(size), wide);
    t.inverseTransformSize(ZVSize(a, b), size);
    ASSERT_EQ(pairOf(size), wideBack);

    auto sides = [&](const Axis& u, const Axis& v) {
      const auto [left, right] = std::minmax({u.rounded(a), u.rounded(c)});
      const auto [bottom, top] = std::minmax({v.rounded(b), v.rounded(d)});
      return Four{left, bottom, right, top};
    };
    tagRECT deviceRect = {a, b, c, d};
    ZVRect r;
    t.inverseTransformRect(&deviceRect, r);
    ASSERT_EQ(sidesOf(r), sides(ix, iy));
    r.setCorners(a, b, c, d);
    t.transformRect(r, &deviceRect);
    ASSERT_EQ((Four{deviceRect.left, deviceRect.bottom, deviceRect.right, deviceRect.top}),
              (Four{x.rounded(r.left()), y.rounded(r.bottom()), x.rounded(r.right()), y.rounded(r.top())}));
    t.transformRect(r, r);
    ASSERT_EQ(sidesOf(r), sides(x, y));
    t.inverseTransformRect(ZVRect(a, b, c, d), r);
    ASSERT_EQ(sidesOf(r), sides(ix, iy));

    ZVDTuple real(a / 2.0, b / 2.0), sizes(real);
    t.transformPoint(real, real);
    ASSERT_EQ(real.x(), t.transformX(a / 2.0));
    t.inverseTransformPoint(real, real);
    ASSERT_EQ(real.y(), t.inverseTransformY(t.transformY(b / 2.0)));
    ASSERT_NEAR(real.x(), x.fromExtent && x.toExtent ? a / 2.0 : real.x(), 1e-12);
    t.transformSize(sizes, sizes);
    const double height = sizes.y();
    ASSERT_EQ(sizes.x(), t.transformX(a / 2.0) - t.transformX(0.0));
    t.inverseTransformSize(sizes, sizes);
    ASSERT_EQ(sizes.y(), t.inverseTransformY(height) - t.inverseTransformY(0.0));
  }
}

TEST(Transform, ZeroExtentsGiveZero) {
  ZVTransform t;
  EXPECT_EQ(t.transformX(7.25), 7.25);
  t.sourceExtentX(0.0);
  t.sourceOriginX(3.0);
  t.targetOriginX(9.0);
  EXPECT_EQ(t.transformX(5.0), 0.0);
  EXPECT_EQ(t.inverseTransformX(5.0), 3.0);
  t.targetExtentX(std::numeric_limits<double>::infinity());
  t.sourceExtentX(std::numeric_limits<double>::infinity());
  EXPECT_EQ(t.inverseTransformX(5), 0);  // not a number
}

TEST(Transform, NormalizedExtentsKeepTheMap) {
  Random numbers(2);
  for (int round = 0; round < 2000; ++round) {
    SCOPED_TRACE(round);
    Axis x = randomAxis(numbers), y = randomAxis(numbers);
    ZVTransform t = transformOf(x, y);
    t.normalizeExt();
    ASSERT_EQ(t.hasNormalizedExt(), 1);
    for (int64_t* extent : {&x.fromExtent, &x.toExtent, &y.fromExtent, &y.toExtent}) {
      if (*extent == 0) *extent = 1;
    }
    // The smaller one becomes 1, on a tie the target.
    const double ratio = real(x.toExtent) / real(x.fromExtent);
    ASSERT_EQ(t.sourceExtentX(), std::fabs(ratio) > 1.0 ? 1.0 : 1.0 / ratio);
    ASSERT_EQ(t.targetExtentX(), std::fabs(ratio) > 1.0 ? ratio : 1.0);
    ASSERT_EQ(t.transformY(7), y.rounded(7));
  }
  EXPECT_EQ(transformOf({0, 1, 0, 2}, {0, 2, 0, 3}).hasNormalizedExt(), 0);
}

TEST(Transform, OneScaleKeepsTheWholeSourceInView) {
  Random numbers(3);
  for (int round = 0; round < 5000; ++round) {
    SCOPED_TRACE(round);
    const auto [tx, ty] = numbers.point(3);
    const int64_t sx = numbers.from(1, 17), sy = numbers.from(1, 17);
    ZVTransform t = transformOf({0, sx, 0, tx}, {0, sy, 0, ty});
    t.adjustExtentToPreserveAspectRatio();
    const bool onX = tx * sy > ty * sx, stays = tx == 0 || ty == 0;
    ASSERT_EQ(t.sourceExtentX(), stays || !onX ? real(sx) : ty > 0 ? real(tx * sy) / real(ty) : 0.0);
    ASSERT_EQ(t.sourceExtentY(), stays || onX ? real(sy) : tx > 0 ? real(ty * sx) / real(tx) : 0.0);
    ASSERT_TRUE(tx <= 0 || ty <= 0 || (t.sourceExtentX() >= real(sx) && t.sourceExtentY() >= real(sy)));
  }
}

TEST(RotatedRect, ClipsAgainstAnUprightBand) {
  const ZVPoint from(0, 0), to(100, 0), at(5, 5);
  const ZVRotatedRect band(&from, &to, 10), square(&at, &at, 3), line(&from, &to, 0);
  EXPECT_EQ(band.delta(), 10);
  const struct {
    const ZVRotatedRect& band;
    ZVPoint a, b;
    int result;
    Four clipped;
  } cases[] = {
      {band, {50, -50}, {50, 50}, 1, {50, -9, 50, 10}},
      {band, {0, 5}, {50, 5}, 1, {0, 5, 50, 5}},
      {band, {-50, 0}, {200, 0}, 1, {-9, 0, 110, 0}},
      {band, {0, 20}, {100, 20}, 0, {0, 20, 100, 20}},
      {band, {0, 10}, {100, 10}, 1, {0, 10, 100, 10}},
      {band, {200, 200}, {300, 300}, 0, {200, 200, 300, 300}},
      {band, {5, 5}, {5, 5}, 0, {5, 5, 5, 5}},
      {band, {110, 30}, {130, 10}, 0, {110, 30, 130, 10}},
      {band, {110, 30}, {110, -30}, 1, {110, 10, 110, -9}},
      {square, {0, 8}, {10, 8}, 1, {2, 8, 8, 8}},
      {square, {0, 9}, {10, 9}, 0, {0, 9, 10, 9}},
      {line, {7, -7}, {7, 7}, 1, {7, 0, 7, 0}},
  };
  for (const auto& c : cases) {
    ZVRotatedRect copy;
    copy.copyObject(&c.band);
    ZVPoint a = c.a, b = c.b;
    EXPECT_EQ(copy.clipping(&a, &b), c.result);
    EXPECT_EQ((Four{a.x(), a.y(), b.x(), b.y()}), c.clipped);
  }
}

// By two slabs, along and across the band, instead of four sides. Cases that hang on the last bit are left
// out.
TEST(RotatedRect, ClipsAnyBandAsTwoSlabsDo) {
  Random numbers(4);
  int compared = 0;
  for (int round = 0; round < 200000; ++round) {
    SCOPED_TRACE(round);
    const int reach = round % 2 ? 6 : 60;
    const ZVPoint p = point(numbers.point(reach)), q = point(numbers.point(reach));
    const ZVPoint a = point(numbers.point(reach)), b = point(numbers.point(reach));
    const int32_t delta = i32(numbers.from(0, 8));
    if (a.distance(b) == 0.0) continue;
    const double length = p.distance(q);
    const double u[2] = {length > 0.0 ? (q.x() - p.x()) / length : 1.0,
                         length > 0.0 ? (q.y() - p.y()) / length : 0.0};
    const double far = a.distance(b);
    const double d[2] = {(b.x() - a.x()) / far, (b.y() - a.y()) / far};
    const double axes[2][2] = {{u[0], u[1]}, {-u[1], u[0]}};
    double t0 = 0.0, t1 = far;
    bool missed = false, close = false;
    for (int slab = 0; slab < 2; ++slab) {
      const double high = slab ? delta : length + delta;
      const double start = (a.x() - p.x()) * axes[slab][0] + (a.y() - p.y()) * axes[slab][1];
      const double rate = d[0] * axes[slab][0] + d[1] * axes[slab][1];
      if (std::fabs(rate) > 0.01) {
        t0 = std::max(t0, ((rate > 0.0 ? -delta : high) - start) / rate);
        t1 = std::min(t1, ((rate > 0.0 ? high : -delta) - start) / rate);
      } else {
        missed = missed || start < -delta || start > high;
        close = close || std::fabs(start + delta) < 1e-9 || std::fabs(start - high) < 1e-9;
      }
    }
    const double ends[4] = {a.x() + t0 * d[0], a.y() + t0 * d[1], a.x() + t1 * d[0], a.y() + t1 * d[1]};
    const bool hit = !missed && t0 <= t1;
    close = close || std::fabs(t0 - t1) < 1e-9;
    for (double end : ends) close = close || std::fabs(end + 0.5 - std::round(end + 0.5)) < 1e-9;
    if (close) continue;
    ++compared;
    ZVPoint from = a, to = b;
    ASSERT_EQ(ZVRotatedRect(&p, &q, delta).clipping(&from, &to), hit);
    if (!hit) continue;
    ASSERT_EQ(from.x(), std::trunc(ends[0] + 0.5));
    ASSERT_EQ(from.y(), std::trunc(ends[1] + 0.5));
    ASSERT_EQ(to.x(), std::trunc(ends[2] + 0.5));
    ASSERT_EQ(to.y(), std::trunc(ends[3] + 0.5));
  }
  EXPECT_GT(compared, 80000);
}

}  // namespace
