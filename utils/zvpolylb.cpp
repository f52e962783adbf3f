// The label work of polygons: the grid of stripes, and the places of rectangles in it.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "utils/zvedges.h"
#include "utils/zvhorseg.h"
#include "utils/zvpolygo.h"

namespace {

ZVHorSegment* stripeOf(const ZVDListCell* cell) { return ZVHorSegment::castDown(cell->pObject()); }

int32_t yOf(const ZVDListCell* cell) { return stripeOf(cell)->y(); }

ZVDListCell* addStripe(ZVDList* grid, ZVDListCell* after, int32_t y) {
  ZVHorSegment* stripe = new ZVHorSegment;
  stripe->y(y);
  return grid->addObject(after, stripe);
}

// The first stripe at or below y, looked for from any stripe of the grid (the hint); null if all lie
// above or there is none.
ZVDListCell* firstNotAbove(ZVDListCell* hint, int32_t y) {
  ZVDListCell* cell = hint;
  while (cell && yOf(cell) > y) cell = cell->pNextCell();
  if (cell != hint || !cell) return cell;
  while (cell->pPreviousCell() && yOf(cell->pPreviousCell()) <= y) cell = cell->pPreviousCell();
  return cell;
}

// The stripe at y, found or made.
ZVDListCell* stripeAt(ZVDList* grid, ZVDListCell* hint, int32_t y) {
  ZVDListCell* cell = firstNotAbove(hint, y);
  if (cell && yOf(cell) == y) return cell;
  return addStripe(grid, cell ? cell->pPreviousCell() : grid->pLastCell(), y);
}

// As roundHalfUp, for what need not fit 32 bits while the comb of stripes is laid out.
int64_t rounded(double value) { return static_cast<int64_t>(std::floor(value + 0.5)); }

// While a grid is built, a stripe's list holds crossings: points with the value in one coordinate and this in
// the other.
constexpr int32_t NO_VALUE = std::numeric_limits<int32_t>::max();

int32_t valueOf(const ZVDListCell* crossing) {
  const ZVPoint& p = *ZVPoint::castDown(crossing->pObject());
  return p.x() != NO_VALUE ? p.x() : p.y();
}

// Deletes the first crossing and gives its value.
int32_t takeFirst(ZVDList& crossings) {
  ZVDListCell* cell = crossings.pFirstCell();
  const int32_t value = valueOf(cell);
  delete cell->pObject();
  crossings.discardCell(cell);
  return value;
}

// Walks the intervals of a stripe in the order that the region gives.
class Intervals {
 public:
  Intervals(const ZVDListCell* stripe, ZVLabelRegionEnum region)
      : backward_(region == ZV_LABEL_REGION_RIGHT),
        cell_(backward_ ? stripeOf(stripe)->pList()->pLastCell() : stripeOf(stripe)->pList()->pFirstCell()) {}

  explicit operator bool() const { return cell_ != nullptr; }
  int32_t left() const { return ZVPoint::castDown(cell_->pObject())->x(); }
  int32_t right() const { return ZVPoint::castDown(cell_->pObject())->y(); }
  void operator++() { cell_ = backward_ ? cell_->pPreviousCell() : cell_->pNextCell(); }

 private:
  bool backward_;
  const ZVDListCell* cell_;
};

int32_t middle(int32_t l, int32_t r) { return static_cast<int32_t>((int64_t{l} + r) / 2); }

}  // namespace

// The rectangle that is looked for, and how.
struct ZVPolygon::LabelSearch {
  ZVLabelRegionEnum region;
  bool upward;  // at the bottom: the search goes from stripe to stripe upward
  bool followLocation;
  int32_t height;
  int32_t width;
  ZVPoint* p;
  int32_t endY = 0;  // where a search from an end stops
  // Of a search at the centre: the wanted height of the top edge, and how far off it the best place so far
  // is.
  int64_t wantedTop = 0;
  int64_t best = 0;

  bool isTooNarrow(int32_t l, int32_t r) const { return int64_t{r} - l < width; }

  const ZVDListCell* nextStripe(const ZVDListCell* stripe) const {
    return upward ? stripe->pPreviousCell() : stripe->pNextCell();
  }

  int32_t alignedX(int32_t l, int32_t r) const {
    const bool atRight = followLocation ? upward : region == ZV_LABEL_REGION_RIGHT;
    const bool atLeft = followLocation ? !upward : region == ZV_LABEL_REGION_LEFT;
    if (atRight) return subtract32(r, width / 2);
    return atLeft ? add32(l, width / 2) : middle(l, r);
  }

  // An odd width at the right end lies one unit further left than in a search from an end.
  int32_t alignedXCenter(int32_t l, int32_t r) const {
    if (region == ZV_LABEL_REGION_RIGHT) return add32(subtract32(r, width), width / 2);
    return region == ZV_LABEL_REGION_LEFT ? add32(l, width / 2) : middle(l, r);
  }
};

// A vertex is mostly near the one before it, so each stripe is looked for from there.
void ZVPolygon::createGrid(ZVDList* grid, int32_t height, ZVLabelLocationEnum location) const {
  ZVDListCell* hint = grid->pFirstCell();
  for (ZVEdges edge(pPointList()); edge; ++edge) hint = stripeAt(grid, hint, edge.end().y());
  if (!hint) return;
  completeHorizontalStripes(grid, height, location);
  for (ZVEdges edge(pPointList()); edge; ++edge) {
    if (edge.start().y() != edge.end().y()) hint = addLineSegment(hint, edge.start(), edge.end());
  }
  for (ZVDListCell* cell = grid->pFirstCell(); cell; cell = cell->pNextCell())
    completeIntervals(stripeOf(cell));
}

void ZVPolygon::deleteGrid(ZVDList* grid) {
  for (ZVDListCell* cell = grid->pFirstCell(); cell; cell = cell->pNextCell()) {
    stripeOf(cell)->pList()->deleteAllCellsAndObjects();
  }
  grid->deleteAllCellsAndObjects();
}

ZVDListCell* ZVPolygon::queryHorizontalStripe(ZVDList* grid, int32_t y, int duplicate) {
  ZVDListCell* cell = stripeAt(grid, grid->pFirstCell(), y);
  const ZVDListCell* next = cell->pNextCell();
  return duplicate && next && yOf(next) != y ? addStripe(grid, cell, y) : cell;
}

ZVDListCell* ZVPolygon::retrieveHorizontalStripe(const ZVDList* grid, int32_t y) {
  ZVDListCell* cell = firstNotAbove(grid->pFirstCell(), y);
  if (!cell) return grid->pLastCell();
  return yOf(cell) == y ? cell : nullptr;
}

// Lays a comb of stripes between those of the vertices, such that one of its lines lies where the location
// wants the edge of a rectangle. If the comb begins on the first stripe, its first line is that stripe, the
// second lies one distance below, and the third two distances below the second.
void ZVPolygon::completeHorizontalStripes(ZVDList* grid, int32_t height, ZVLabelLocationEnum location) {
  const double distance = std::max(height / 3.0, 2.0);
  const int64_t top = yOf(grid->pFirstCell());
  const int64_t bottom = yOf(grid->pLastCell());
  int64_t offset = 0;
  if (location == ZV_LABEL_LOCATION_CENTER) offset = top - ((top + bottom) / 2 - height / 2);
  if (location == ZV_LABEL_LOCATION_BOTTOM) offset = top - bottom;
  offset = std::max(offset, int64_t{0});  // a negative height would begin above the first stripe
  const double lines = std::trunc(static_cast<double>(offset) / distance);
  int64_t base = top - (offset - rounded(lines * distance));
  int64_t line = 0;
  if (base == top) {
    line = 1;
    base -= rounded(distance);
  }

  int64_t y = base;
  int64_t limit = top;
  for (ZVDListCell* cell = grid->pFirstCell(); cell; cell = cell->pNextCell()) {
    if (cell->pNextCell()) limit = yOf(cell->pNextCell());
    while (y >= limit) {
      ++line;
      if (y > limit) cell = addStripe(grid, cell, static_cast<int32_t>(y));
      y = base - rounded(static_cast<double>(line) * distance);
    }
  }
}

// Adds the crossings of an edge that is not horizontal: on each stripe from its upper end down to above its
// lower end. Both ends have a stripe; gives the one of q.
ZVDListCell* ZVPolygon::addLineSegment(ZVDListCell* hint, const ZVPoint& p, const ZVPoint& q) {
  const bool falls = p.y() > q.y();
  const ZVPoint& high = falls ? p : q;
  const ZVPoint& low = falls ? q : p;
  const bool slanted = high.x() != low.x();
  double slope = 0.0;
  double intercept = 0.0;
  if (slanted) {
    slope = (static_cast<double>(high.y()) - low.y()) / (static_cast<double>(high.x()) - low.x());
    intercept = low.y() - low.x() * slope;
  }
  ZVDListCell* const highest = firstNotAbove(hint, high.y());
  addPointInLineSegment(stripeOf(highest)->pList(), high.x());
  ZVDListCell* cell = highest->pNextCell();
  for (; yOf(cell) > low.y(); cell = cell->pNextCell()) {
    const int32_t x = slanted ? roundHalfUp((yOf(cell) - intercept) / slope) : low.x();
    addPointInLineSegment(stripeOf(cell)->pList(), x);
  }
  return falls ? cell : highest;
}

// Keeps the crossings ascending.
void ZVPolygon::addPointInLineSegment(ZVDList* crossings, int32_t value) {
  const ZVDListCell* cell = crossings->pFirstCell();
  while (cell && valueOf(cell) < value) cell = cell->pNextCell();
  crossings->addObject(cell ? cell->pPreviousCell() : crossings->pLastCell(), new ZVPoint(value, NO_VALUE));
}

// The crossings of a list that have the value.
int32_t ZVPolygon::numberOfPoint(const ZVDList* crossings, int32_t value) {
  int32_t number = 0;
  for (const ZVDListCell* cell = crossings->pFirstCell(); cell && valueOf(cell) <= value;
       cell = cell->pNextCell()) {
    if (valueOf(cell) == value) ++number;
  }
  return number;
}

// Turns the crossings of a stripe into intervals, in pairs from the left. All crossings of one value are a
// single left end if they are odd in number; else they make no interval, and the crossing behind them is
// dropped.
void ZVPolygon::completeIntervals(ZVHorSegment* stripe) {
  ZVDList crossings;
  crossings.appendList(stripe->pList());
  while (crossings.pFirstCell()) {
    const int32_t start = valueOf(crossings.pFirstCell());
    const int32_t number = numberOfPoint(&crossings, start);
    for (int32_t i = 0; i < number; ++i) takeFirst(crossings);
    if (!crossings.pFirstCell()) return;
    const int32_t end = takeFirst(crossings);
    if (number % 2 != 0) stripe->pList()->appendObject(new ZVPoint(start, end));
  }
}

int ZVPolygon::assignRectangle(ZVLabelRegionEnum region, ZVLabelLocationEnum location, const ZVDList* grid,
                               int32_t height, int32_t width, ZVPoint* p, int followLocation) const {
  if (!grid->pFirstCell()) return 0;
  LabelSearch search{region, location == ZV_LABEL_LOCATION_BOTTOM, followLocation != 0, height, width, p};
  if (location == ZV_LABEL_LOCATION_CENTER) {
    const int32_t top = yOf(grid->pFirstCell());
    p->set(0, add32(top, 1));
    assignInternalRectangleCenter(search, grid);
    return p->y() <= top;
  }
  const ZVDListCell* start = search.upward ? grid->pLastCell() : grid->pFirstCell();
  const ZVDListCell* end = search.upward ? grid->pFirstCell() : grid->pLastCell();
  search.endY = yOf(end);
  return assignInternalRectangle(search, start);
}

// Tries the stripes one after the other, and on each its intervals. The last stripe serves no rectangle.
int ZVPolygon::assignInternalRectangle(const LabelSearch& search, const ZVDListCell* startStripe) {
  for (const ZVDListCell* stripe = startStripe; yOf(stripe) != search.endY;
       stripe = search.nextStripe(stripe)) {
    for (Intervals interval(stripe, search.region); interval; ++interval) {
      if (search.isTooNarrow(interval.left(), interval.right())) continue;
      if (assignRectangleOne(search, stripe, yOf(stripe), interval.left(), interval.right())) return 1;
    }
  }
  return 0;
}

// Grows a rectangle that began at startY and may lie from l to r beyond the stripe, as far as it must: the
// free span gets narrower with each stripe. The stripe behind the rectangle does not limit it.
int ZVPolygon::assignRectangleOne(const LabelSearch& search, const ZVDListCell* stripe, int32_t startY,
                                  int32_t l, int32_t r) {
  if (yOf(stripe) == search.endY) return 0;
  const ZVDListCell* next = search.nextStripe(stripe);
  const int32_t nextY = yOf(next);
  if (std::abs(int64_t{startY} - nextY) >= search.height) {
    const int32_t y = search.upward ? add32(std::min(startY, nextY), search.height / 2)
                                    : subtract32(std::max(startY, nextY), search.height / 2);
    search.p->set(search.alignedX(l, r), y);
    return 1;
  }
  for (Intervals interval(next, search.region); interval; ++interval) {
    if (l >= interval.right() || r <= interval.left()) continue;
    const int32_t left = std::max(l, interval.left());
    const int32_t right = std::min(r, interval.right());
    if (search.isTooNarrow(left, right)) continue;
    if (assignRectangleOne(search, next, startY, left, right)) return 1;
  }
  return 0;
}

// Tries all stripes that can still give a place nearer to the middle than the best so far.
void ZVPolygon::assignInternalRectangleCenter(LabelSearch& search, const ZVDList* grid) {
  const int64_t top = yOf(grid->pFirstCell());
  const int64_t bottom = yOf(grid->pLastCell());
  search.wantedTop = (bottom + top) / 2 + search.height / 2 + search.height % 2;
  search.best = top - bottom - search.height + 1;
  for (const ZVDListCell* stripe = grid->pFirstCell(); stripe; stripe = stripe->pNextCell()) {
    const int32_t y = yOf(stripe);
    if (std::abs(y - search.wantedTop) >= search.best) continue;
    for (Intervals interval(stripe, search.region); interval; ++interval) {
      if (assignRectangleOneCenter(search, stripe, y, interval.left(), interval.right())) break;
    }
  }
}

// As assignRectangleOne, for a rectangle below the stripe at y whose top edge may lie anywhere from there
// down to where its bottom edge reaches the stripe behind it. It must come nearer to the middle than the best
// so far.
int ZVPolygon::assignRectangleOneCenter(LabelSearch& search, const ZVDListCell* stripe, int32_t y, int32_t l,
                                        int32_t r) {
  const ZVDListCell* next = stripe->pNextCell();
  if (!next) return 0;
  const int64_t lowest = int64_t{yOf(next)} + search.height;
  for (Intervals interval(stripe, search.region); interval; ++interval) {
    const int32_t left = std::max(l, interval.left());
    const int32_t right = std::min(r, interval.right());
    if (search.isTooNarrow(left, right)) continue;
    if (y < lowest) {
      if (assignRectangleOneCenter(search, next, y, left, right)) return 1;
      continue;
    }
    const int64_t topEdge = search.wantedTop < y ? std::max(lowest, search.wantedTop) : y;
    const int64_t off = std::abs(topEdge - search.wantedTop);
    if (off >= search.best) continue;
    search.best = off;
    search.p->set(search.alignedXCenter(left, right),
                  static_cast<int32_t>(topEdge - (search.height / 2 + search.height % 2)));
    return 1;
  }
  return 0;
}
