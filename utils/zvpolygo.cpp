#include "utils/zvpolygo.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "utils/zvedges.h"

ZV_DEFINE_FULL(ZVPolygon, ZVObject)

namespace {

constexpr int32_t MAX = std::numeric_limits<int32_t>::max();
constexpr int32_t MIN = std::numeric_limits<int32_t>::min();

// Counts the crossings of the boundary with a ray that starts at x and leads toward larger x. They come in
// the order of the edges, and of a run of equal ones only the last counts, so that a vertex on the ray counts
// once though both its edges cross there. The run may reach over the end: the first crossing does not count
// if it equals the last. A crossing at MAX never counts.
class RayCrossings {
 public:
  explicit RayCrossings(int32_t x) : x_(x) {}

  void add(int32_t crossing) {
    if (number_ == 0) {
      first_ = crossing;
    } else if (number_ == 1) {
      firstStands_ = crossing != first_;
    } else if (crossing != last_) {
      count(last_);
    }
    last_ = crossing;
    ++number_;
  }

  // Whether an odd number of crossings lies beyond x, once all are added.
  int odd() {
    if (number_ > 1) count(last_);
    if (firstStands_ && first_ != last_) count(first_);
    return odd_;
  }

 private:
  void count(int32_t crossing) {
    if (crossing > x_ && crossing != MAX) odd_ = !odd_;
  }

  const int32_t x_;
  int32_t first_ = 0;
  int32_t last_ = 0;
  size_t number_ = 0;
  bool firstStands_ = false;
  bool odd_ = false;
};

// Where the line through two points that share no coordinate has the height y, rounded. Slope and intercept
// are single precision; all else is double.
int32_t slantedCrossing(const ZVPoint& p, const ZVPoint& q, int32_t y) {
  const double dx = static_cast<double>(p.x()) - q.x();
  const double dy = static_cast<double>(p.y()) - q.y();
  const float slope = static_cast<float>(dy / dx);
  const float intercept = static_cast<float>(p.y() - p.x() * double{slope});
  return roundHalfUp((y - double{intercept}) / double{slope});
}

}  // namespace

ZVPolygon::~ZVPolygon() {
  if (pointList_) pointList_->deleteAllCellsAndPoints();
}

ZVRectSides ZVPolygon::bounds() const {
  ZVRectSides bounds{MAX, MIN, MIN, MAX};
  for (const ZVDListCell* cell = pointList_->pFirstCell(); cell; cell = cell->pNextCell()) {
    const ZVPoint& p = *ZVPoint::castDown(cell->pObject());
    bounds.left = std::min(bounds.left, p.x());
    bounds.right = std::max(bounds.right, p.x());
    bounds.bottom = std::min(bounds.bottom, p.y());
    bounds.top = std::max(bounds.top, p.y());
  }
  return bounds;
}

int ZVPolygon::pointWithin(int32_t x, int32_t y) const {
  if (!bounds().within(x, y)) return 0;
  RayCrossings crossings(x);
  for (ZVEdges edge(pPointList()); edge; ++edge) {
    const ZVPoint& p = edge.start();
    const ZVPoint& q = edge.end();
    if (p.x() == x && p.y() == y) return 1;
    if (y < std::min(p.y(), q.y()) || y > std::max(p.y(), q.y())) continue;
    if (p.x() == q.x()) {
      if (p.x() == x) return 1;
      crossings.add(p.x());
    } else if (p.y() == q.y()) {
      // A point on an edge toward smaller x is left to the count.
      if (p.x() <= x && x <= q.x()) return 1;
      crossings.add(p.x());
      crossings.add(q.x());
    } else {
      const int32_t crossing = slantedCrossing(p, q, y);
      if (crossing == x) return 1;
      crossings.add(crossing);
    }
  }
  return crossings.odd();
}

int ZVPolygon::polygonWithin(const ZVPolygon& other) const {
  for (const ZVDListCell* cell = other.pPointList()->pFirstCell(); cell; cell = cell->pNextCell()) {
    const ZVPoint& p = *ZVPoint::castDown(cell->pObject());
    if (!pointWithin(p.x(), p.y())) return 0;
  }
  return 1;
}

int ZVPolygon::overlapsSegment(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const {
  if (pointWithin(x1, y1) || pointWithin(x2, y2)) return 1;
  for (ZVEdges edge(pPointList()); edge; ++edge) {
    int32_t hitX = x1;
    int32_t hitY = y1;
    if (ZVPoint::segmentsIntersect(hitX, hitY, x2, y2, edge.start().x(), edge.start().y(), edge.end().x(),
                                   edge.end().y())) {
      return 1;
    }
  }
  return 0;
}

void ZVPolygon::copyPolygon(const ZVPolygon& other) {
  if (&other == this) return;
  if (!pointList_) pointList_ = std::make_unique<ZVPointDList>();
  pointList_->copyAllCellsAndPoints(other.pPointList());
}

void ZVPolygon::polygonOfEllipse(ZVPointDList* list, const ZVPoint& center, int32_t width, int32_t height,
                                 int32_t step) {
  if (width <= 1 || height <= 1 || step <= 0 || step >= width || !list) return;
  const double a = width / 2.0;
  const double b = height / 2.0;
  const double ratio = b * b / (a * a);
  const int32_t halfWidth = roundHalfUp(a);
  auto addPoint = [&](ZVDListCell* after, int32_t dx, int32_t dy) {
    return list->addPoint(after, new ZVPoint(add32(center.x(), dx), add32(center.y(), dy)));
  };

  ZVDListCell* cell = addPoint(nullptr, -halfWidth, 0);
  // In 64 bits, since the step behind the last one may not fit 32.
  for (int64_t t = int64_t{step} - halfWidth; static_cast<double>(t) < a; t += step) {
    const int32_t dx = static_cast<int32_t>(t);
    const int32_t dy = truncateToInt32(std::sqrt(b * b - multiply32(dx, dx) * ratio));
    addPoint(cell, dx, dy);
    cell = addPoint(cell, dx, -dy);
  }
  addPoint(cell, halfWidth, 0);
}

void ZVPolygon::init() { pointList_ = nullptr; }

void ZVPolygon::ZVPolygondeepCopy(const ZVPolygon& other) {
  ZVObject::copyObject(&other);
  copyPolygon(other);
}

void ZVPolygon::ZVPolygonattributeCopy(const ZVPolygon& other) {
  ZVObject::copyAttributes(&other);
  copyPolygon(other);
}
