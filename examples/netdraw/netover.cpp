#include "examples/netdraw/netover.h"

#include <algorithm>
#include <cmath>
#include <deque>

#include "utils/zvsweep.h"

namespace {

// The line of an edge, and the first foreign node that it met.
struct Line {
  const NetEdge* edge;
  const NetNode* met;
};

// What is swept: a node, or a straight piece of a line.
struct Item : ZVObject {
  Item(const NetNode* itsNode, const ZVRect& itsRect)
      : node(itsNode), rect(itsRect), bottom(rect.bottom()), top(rect.top()) {}
  Item(Line* itsLine, const ZVPoint& first, const ZVPoint& second)
      : line(itsLine),
        from(first),
        to(second),
        bottom(std::min(from.y(), to.y())),
        top(std::max(from.y(), to.y())) {}

  bool isDone() const { return line && line->met; }

  const NetNode* node = nullptr;
  ZVRect rect;
  Line* line = nullptr;
  ZVPoint from;
  ZVPoint to;
  int32_t bottom;
  int32_t top;
  // Its extent in the band that is swept.
  int32_t left = 0;
  int32_t right = 0;
};

const Item* itemOf(const ZVObject* object) { return static_cast<const Item*>(object); }

int32_t within32Bits(int64_t value) {
  return static_cast<int32_t>(std::clamp(value, int64_t{INT32_MIN}, int64_t{INT32_MAX}));
}

bool areInOrder(const std::pair<const NetNode*, const NetNode*>& a,
                const std::pair<const NetNode*, const NetNode*>& b) {
  return std::pair(a.first->number(), a.second->number()) < std::pair(b.first->number(), b.second->number());
}

bool shareArea(const ZVRect& a, const ZVRect& b) {
  return std::max(a.left(), b.left()) < std::min(a.right(), b.right()) &&
         std::max(a.bottom(), b.bottom()) < std::min(a.top(), b.top());
}

bool runsThrough(const Item& piece, const Item& node) {
  const ZVRectSides sides = node.rect.sides();
  if (sides.left == sides.right || sides.bottom == sides.top) return false;
  const ZVRectSides inner{sides.left + 1, sides.top - 1, sides.right - 1, sides.bottom + 1};
  return inner.left <= inner.right && inner.bottom <= inner.top &&
         inner.overlapsSegment(piece.from.x(), piece.from.y(), piece.to.x(), piece.to.y());
}

// Sweeps a horizontal band of the drawing from left to right; in a band, all that is open at one coordinate
// lies close together. The sweep line holds the nodes by their numbers, and behind them the pieces of lines
// that have met no node yet: a node has everything as its neighbours, a piece the nodes.
class BandSweep : public ZVSweep {
 public:
  BandSweep(Overlaps& overlaps, size_t most) : overlaps_(overlaps), most_(most) {}

  // The items are those that reach into the band, which is without its top.
  void sweepBand(const std::vector<Item*>& items, int32_t bottom, int32_t top) {
    bottom_ = bottom;
    top_ = top;
    for (Item* item : items) {
      setExtent(*item);
      pStartSegmentList()->appendObject(item);
      pEndSegmentList()->appendObject(item);
    }
    run();
  }

 protected:
  int32_t startCoordinateOfSegment(const ZVObject* segment) override { return itemOf(segment)->left; }
  int32_t endCoordinateOfSegment(const ZVObject* segment) override { return itemOf(segment)->right; }
  int32_t otherStartCoordinateOfSegment(const ZVObject* segment) override {
    const NetNode* node = itemOf(segment)->node;
    return node ? node->number() : INT32_MAX;
  }

  void actOnStartOfSegment(ZVObject* segment) override {
    const Item& item = *itemOf(segment);
    ZVBinTreeCell* next = nullptr;
    for (ZVBinTreeCell* cell = pSweepLine()->pFirstCell(); cell; cell = next) {
      next = ZVBinTreeCell::castDown(cell->pNextCell());
      const Item& other = *itemOf(cell->pObject());
      if (other.node) {
        item.node ? meetNodes(item, other) : meetLine(item, other);
        if (item.isDone()) break;
      } else {
        if (!item.node) return;
        meetLine(other, item);
        if (other.isDone()) delete pSweepLine()->removeCell(cell);
      }
    }
    if (item.isDone()) delete pSweepLine()->searchAndRemoveObject(segment);
  }

 private:
  void setExtent(Item& item) const {
    if (item.node) {
      item.left = item.rect.left();
      item.right = item.rect.right();
      return;
    }
    double x1 = item.from.x();
    double x2 = item.to.x();
    if (item.bottom < item.top) {
      auto xAt = [&](int32_t y) {
        double x = 0.0;
        ZVPoint::segmentAtY(item.from.x(), item.from.y(), item.to.x(), item.to.y(), x, y);
        return x;
      };
      x1 = xAt(std::max(item.bottom, bottom_));
      x2 = xAt(std::min(item.top, top_));
    }
    item.left = truncateToInt32(std::floor(std::min(x1, x2)));
    item.right = truncateToInt32(std::ceil(std::max(x1, x2)));
  }

  // Two nodes meet in each band that both reach into, and are noted in that of the lower side of what they
  // share.
  void meetNodes(const Item& a, const Item& b) {
    const int32_t side = std::max(a.bottom, b.bottom);
    if (&a == &b || side < bottom_ || side >= top_ || !shareArea(a.rect, b.rect)) return;
    ++overlaps_.nodePairs;
    // A heap of the first pairs so far, with the last of them on top.
    auto& kept = overlaps_.nodes;
    const auto pair =
        a.node->number() < b.node->number() ? std::pair(a.node, b.node) : std::pair(b.node, a.node);
    if (kept.size() >= most_) {
      if (kept.empty() || !areInOrder(pair, kept.front())) return;
      std::pop_heap(kept.begin(), kept.end(), areInOrder);
      kept.pop_back();
    }
    kept.push_back(pair);
    std::push_heap(kept.begin(), kept.end(), areInOrder);
  }

  static void meetLine(const Item& piece, const Item& node) {
    Line& line = *piece.line;
    const bool foreign = node.node != line.edge->source && node.node != line.edge->target;
    if (!line.met && foreign && runsThrough(piece, node)) line.met = node.node;
  }

  Overlaps& overlaps_;
  size_t most_;
  int32_t bottom_ = 0;
  int32_t top_ = 0;
};

// The items of a drawing, from top to bottom.
class Items {
 public:
  explicit Items(const NetGraph& graph) {
    forEach<NetNode>(graph.nodes, [&](NetNode* node) { items_.emplace_back(node, node->rect()); });
    forEach<NetEdge>(graph.edges, [&](NetEdge* edge) {
      if (!edge->source || !edge->target) return;
      lines.push_back({edge, nullptr});
      const std::vector<ZVPoint> points = edge->line();
      for (size_t i = 1; i < points.size(); ++i) items_.emplace_back(&lines.back(), points[i - 1], points[i]);
    });
    for (Item& item : items_) sorted.push_back(&item);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const Item* a, const Item* b) { return a->top > b->top; });
  }

  // More bands let fewer items meet without need, but cut lines into more parts. With this many both cost
  // about the same, as measured where lines run far and past most nodes.
  int32_t bandHeight(int32_t nodes) const {
    int64_t lowest = sorted.front()->bottom;
    for (const Item* item : sorted) lowest = std::min<int64_t>(lowest, item->bottom);
    const auto bands = 1 + static_cast<int64_t>(std::sqrt(nodes) / 16.0);
    return within32Bits((sorted.front()->top - lowest) / bands + 1);
  }

  std::deque<Line> lines;
  std::vector<Item*> sorted;

 private:
  std::deque<Item> items_;
};

}  // namespace

Overlaps findOverlaps(const NetGraph& graph, size_t most) {
  Overlaps overlaps;
  Items items(graph);
  if (items.sorted.empty()) return overlaps;
  const int32_t height = items.bandHeight(graph.nodes.length());
  BandSweep sweep(overlaps, most);
  std::vector<Item*> active;
  int64_t top = int64_t{items.sorted.front()->top} + 1;
  for (auto next = items.sorted.begin(); next != items.sorted.end() || !active.empty(); top -= height) {
    const int64_t bottom = top - height;
    std::erase_if(active, [&](const Item* item) { return item->bottom >= top || item->isDone(); });
    for (; next != items.sorted.end() && (*next)->top >= bottom; ++next) active.push_back(*next);
    sweep.sweepBand(active, within32Bits(bottom), within32Bits(top));
  }
  std::sort_heap(overlaps.nodes.begin(), overlaps.nodes.end(), areInOrder);
  for (const Line& line : items.lines) {
    if (line.met) overlaps.edges.emplace_back(line.edge, line.met);
  }
  return overlaps;
}
