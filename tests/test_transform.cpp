#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

#include "utils/zvrorect.h"
#include "utils/zvtransf.h"

namespace {

class Numbers {
 public:
  explicit Numbers(unsigned seed) : engine_(seed) {}
  int32_t upTo(int32_t reach) { return static_cast<int32_t>(engine_() % unsigned(2 * reach + 1)) - reach; }

 private:
  std::mt19937 engine_;
};

// One axis of a map, exact: target extent * (v - source origin) / source extent + target origin.
struct Axis {
  int64_t fromOrigin, fromExtent, toOrigin, toExtent;

  int64_t rounded(int64_t v) const {
    if (fromExtent == 0) return 0;
    int64_t n = toExtent * (v - fromOrigin) + toOrigin * fromExtent;
    int64_t d = fromExtent;
    if (d < 0) n = -n, d = -d;
    const int64_t twice = 2 * n + d;
    return twice >= 0 ? twice / (2 * d) : -((-twice + 2 * d - 1) / (2 * d));
  }
  Axis inverse() const { return {toOrigin, toExtent, fromOrigin, fromExtent}; }
};

Axis randomAxis(Numbers& numbers) {
  return {numbers.upTo(5), numbers.upTo(5), numbers.upTo(5), numbers.upTo(5)};
}

ZVTransform transformOf(const Axis& x, const Axis& y) {
  auto real = [](int64_t v) { return static_cast<double>(v); };
  ZVTransform t;
  t.sourceOriginX(real(x.fromOrigin));
  t.sourceExtentX(real(x.fromExtent));
  t.targetOriginX(real(x.toOrigin));
  t.targetExtentX(real(x.toExtent));
  t.sourceOriginY(real(y.fromOrigin));
  t.sourceExtentY(real(y.fromExtent));
  t.targetOriginY(real(y.toOrigin));
  t.targetExtentY(real(y.toExtent));
  return t;
}

TEST(Transform, MapsWholeObjectsAsItMapsTheirCoordinates) {
  Numbers numbers(1);
  for (int round = 0; round < 20000; ++round) {
    SCOPED_TRACE(round);
    const Axis x = randomAxis(numbers), y = randomAxis(numbers);
    const ZVTransform t = transformOf(x, y);
    const int32_t a = numbers.upTo(20), b = numbers.upTo(20), c = numbers.upTo(20), d = numbers.upTo(20);
    ASSERT_EQ(t.transformX(a), x.rounded(a));
    ASSERT_EQ(t.transformY(long{b}), y.rounded(b));
    ASSERT_EQ(t.inverseTransformX(a), x.inverse().rounded(a));
    ASSERT_EQ(t.inverseTransformY(long{b}), y.inverse().rounded(b));
    if (x.fromExtent && x.toExtent) {
      ASSERT_NEAR(t.inverseTransformX(t.transformX(a / 4.0)), a / 4.0, 1e-12);
    }

    ZVPoint p(a, b);
    tagPOINT device;
    t.transformPoint(p, device);
    ASSERT_EQ(device.x, x.rounded(a));
    ASSERT_EQ(device.y, y.rounded(b));
    ZVPoint back;
    t.inverseTransformPoint(device, back);
    ASSERT_EQ(back.x(), x.inverse().rounded(device.x));
    t.transformPoint(p, p);
    ASSERT_EQ(p.y(), y.rounded(b));
    t.inverseTransformPoint(p, p);
    ASSERT_EQ(p.x(), back.x());
    ASSERT_EQ(p.y(), back.y());

    ZVSize size(a, b);
    tagSIZE deviceSize;
    t.transformSize(size, deviceSize);
    t.transformSize(size, size);
    ASSERT_EQ(size.width(), x.rounded(a) - x.rounded(0));
    ASSERT_EQ(size.height(), y.rounded(b) - y.rounded(0));
    ASSERT_EQ(deviceSize.cx, size.width());
    ASSERT_EQ(deviceSize.cy, size.height());
    ZVSize backSize;
    t.inverseTransformSize(deviceSize, backSize);
    t.inverseTransformSize(size, size);
    ASSERT_EQ(size.width(), x.inverse().rounded(deviceSize.cx) - x.inverse().rounded(0));
    ASSERT_EQ(size.height(), backSize.height());

    const ZVRect r(a, b, c, d);
    ZVRect target;
    tagRECT deviceRect;
    t.transformRect(r, target);
    t.transformRect(r, &deviceRect);
    ASSERT_EQ(deviceRect.left, x.rounded(std::min(a, c)));
    ASSERT_EQ(deviceRect.right, x.rounded(std::max(a, c)));
    ASSERT_EQ(deviceRect.top, y.rounded(std::max(b, d)));
    ASSERT_EQ(deviceRect.bottom, y.rounded(std::min(b, d)));
    ASSERT_EQ(target.left(), std::min(deviceRect.left, deviceRect.right));
    ASSERT_EQ(target.right(), std::max(deviceRect.left, deviceRect.right));
    ASSERT_EQ(target.bottom(), std::min(deviceRect.top, deviceRect.bottom));
    ASSERT_EQ(target.top(), std::max(deviceRect.top, deviceRect.bottom));
    ZVRect world;
    ZVRect worldOfDevice;
    t.inverseTransformRect(target, world);
    t.inverseTransformRect(&deviceRect, worldOfDevice);
    ASSERT_EQ(world.left(),
              std::min(x.inverse().rounded(target.left()), x.inverse().rounded(target.right())));
    ASSERT_EQ(world.top(), std::max(y.inverse().rounded(target.bottom()), y.inverse().rounded(target.top())));
    ASSERT_EQ(worldOfDevice.right(), world.right());
    ASSERT_EQ(worldOfDevice.bottom(), world.bottom());

    ZVDTuple real(a / 2.0, b / 2.0);
    ZVDTuple sizes(real);
    t.transformPoint(real, real);
    ASSERT_EQ(real.x(), t.transformX(a / 2.0));
    t.inverseTransformPoint(real, real);
    ASSERT_EQ(real.y(), t.inverseTransformY(t.transformY(b / 2.0)));
    t.transformSize(sizes, sizes);
    ASSERT_EQ(sizes.x(), t.transformX(a / 2.0) - t.transformX(0.0));
    const double height = sizes.y();
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
  ZVTransform* clone = t.cloneObject();
  EXPECT_EQ(clone->sourceOriginX(), 3.0);
  EXPECT_EQ(clone->targetExtentX(), t.targetExtentX());
  delete clone;
}

TEST(Transform, NormalizedExtentsKeepTheMap) {
  Numbers numbers(2);
  for (int round = 0; round < 2000; ++round) {
    SCOPED_TRACE(round);
    Axis x = randomAxis(numbers), y = randomAxis(numbers);
    ZVTransform t = transformOf(x, y);
    t.normalizeExt();
    ASSERT_EQ(t.hasNormalizedExt(), 1);
    ASSERT_GE(std::fabs(t.sourceExtentX()), 1.0);
    ASSERT_GE(std::fabs(t.targetExtentX()), 1.0);
    if (x.fromExtent == 0) x.fromExtent = 1;
    if (x.toExtent == 0) x.toExtent = 1;
    ASSERT_EQ(t.transformX(7), x.rounded(7));
    if (y.fromExtent == 0) y.fromExtent = 1;
    if (y.toExtent == 0) y.toExtent = 1;
    ASSERT_NEAR(t.targetExtentY() * static_cast<double>(y.fromExtent),
                t.sourceExtentY() * static_cast<double>(y.toExtent), 1e-12);
  }
  ZVTransform t;
  t.sourceExtentY(0.0);
  t.targetExtentY(5.0);
  t.sourceExtentX(400.0);
  t.targetExtentX(200.0);
  EXPECT_EQ(t.hasNormalizedExt(), 0);
  t.normalizeExt();
  EXPECT_EQ(t.sourceExtentX(), 2.0);
  EXPECT_EQ(t.sourceExtentY(), 1.0);
  EXPECT_EQ(t.targetExtentY(), 5.0);
  t.sourceExtentX(5.0);
  t.targetExtentX(-5.0);
  t.normalizeExt();
  EXPECT_EQ(t.sourceExtentX(), -1.0);  // of equal magnitudes the target becomes 1
  EXPECT_EQ(t.targetExtentX(), 1.0);
}

TEST(Transform, OneScaleKeepsTheWholeSourceInView) {
  Numbers numbers(3);
  for (int round = 0; round < 5000; ++round) {
    SCOPED_TRACE(round);
    ZVTransform t;
    const double tx = numbers.upTo(3), ty = numbers.upTo(3);
    const double sx = numbers.upTo(8) + 9, sy = numbers.upTo(8) + 9;
    t.targetExtentX(tx);
    t.targetExtentY(ty);
    t.sourceExtentX(sx);
    t.sourceExtentY(sy);
    t.adjustExtentToPreserveAspectRatio();
    if (tx > 0.0 && ty > 0.0) {
      ASSERT_NEAR(t.sourceExtentX() * ty, t.sourceExtentY() * tx, 1e-9);
      ASSERT_GE(t.sourceExtentX() + 1e-9, sx);
      ASSERT_GE(t.sourceExtentY() + 1e-9, sy);
      ASSERT_TRUE(t.sourceExtentX() == sx || t.sourceExtentY() == sy);
    } else if (tx == 0.0 || ty == 0.0) {
      ASSERT_TRUE(t.sourceExtentX() == sx && t.sourceExtentY() == sy);
    } else {
      const bool onX = tx * sy > ty * sx;
      ASSERT_EQ(t.sourceExtentX(), onX ? (ty > 0.0 ? tx * sy / ty : 0.0) : sx);
      ASSERT_EQ(t.sourceExtentY(), onX ? sy : (tx > 0.0 ? ty * sx / tx : 0.0));
    }
  }
}

struct Clip {
  int result;
  ZVPoint a, b;
};

Clip clip(const ZVRotatedRect& band, ZVPoint a, ZVPoint b) {
  const int result = band.clipping(&a, &b);
  return {result, a, b};
}

TEST(RotatedRect, ClipsAgainstAnUprightBand) {
  const ZVPoint from(0, 0), to(100, 0);
  const ZVRotatedRect band(&from, &to, 10);
  EXPECT_EQ(band.delta(), 10);
  const struct {
    int32_t ax, ay, bx, by;
    int result;
    int32_t cx, cy, dx, dy;
  } cases[] = {
      {50, -50, 50, 50, 1, 50, -9, 50, 10},     {0, 5, 50, 5, 1, 0, 5, 50, 5},
      {-50, 0, 200, 0, 1, -9, 0, 110, 0},       {0, 20, 100, 20, 0, 0, 20, 100, 20},
      {0, 10, 100, 10, 1, 0, 10, 100, 10},      {200, 200, 300, 300, 0, 200, 200, 300, 300},
      {60, 9, 60, -8, 1, 60, 9, 60, -7},        {5, 5, 5, 5, 0, 5, 5, 5, 5},
      {110, 30, 110, -30, 1, 110, 10, 110, -9}, {110, 30, 130, 10, 0, 110, 30, 130, 10},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.ax << ' ' << c.ay << ' ' << c.bx << ' ' << c.by);
    const Clip got = clip(band, ZVPoint(c.ax, c.ay), ZVPoint(c.bx, c.by));
    EXPECT_EQ(got.result, c.result);
    EXPECT_EQ(got.a.x(), c.cx);
    EXPECT_EQ(got.a.y(), c.cy);
    EXPECT_EQ(got.b.x(), c.dx);
    EXPECT_EQ(got.b.y(), c.dy);
  }
  const ZVPoint at(5, 5);
  ZVRotatedRect square;
  square.set(&at, &at, 3);
  EXPECT_EQ(clip(square, ZVPoint(0, 8), ZVPoint(10, 8)).a.x(), 2);
  EXPECT_EQ(clip(square, ZVPoint(0, 9), ZVPoint(10, 9)).result, 0);
  square.copyObject(&band);
  EXPECT_EQ(clip(square, ZVPoint(50, -50), ZVPoint(50, 50)).b.y(), 10);
  square.set(&from, &to, 0);
  const Clip touch = clip(square, ZVPoint(7, -7), ZVPoint(7, 7));
  EXPECT_EQ(touch.result, 1);
  EXPECT_EQ(touch.a.distance(touch.b), 0.0);
}

// By two slabs, along and across the band, instead of four sides. Cases that hang on the last bit are left
// out.
TEST(RotatedRect, ClipsAnyBandAsTwoSlabsDo) {
  Numbers numbers(4);
  int compared = 0;
  for (int round = 0; round < 200000; ++round) {
    SCOPED_TRACE(round);
    const int reach = round % 2 ? 6 : 60;
    const ZVPoint p(numbers.upTo(reach), numbers.upTo(reach)), q(numbers.upTo(reach), numbers.upTo(reach));
    const ZVPoint a(numbers.upTo(reach), numbers.upTo(reach)), b(numbers.upTo(reach), numbers.upTo(reach));
    const int32_t delta = numbers.upTo(4) + 4;
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
    const Clip got = clip(ZVRotatedRect(&p, &q, delta), a, b);
    ++compared;
    ASSERT_EQ(got.result, hit);
    ASSERT_EQ(got.a.x(), hit ? std::trunc(ends[0] + 0.5) : a.x());
    ASSERT_EQ(got.a.y(), hit ? std::trunc(ends[1] + 0.5) : a.y());
    ASSERT_EQ(got.b.x(), hit ? std::trunc(ends[2] + 0.5) : b.x());
    ASSERT_EQ(got.b.y(), hit ? std::trunc(ends[3] + 0.5) : b.y());
  }
  EXPECT_GT(compared, 80000);
}

}  // namespace
