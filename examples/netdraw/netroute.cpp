#include "examples/netdraw/netroute.h"

#include <algorithm>
#include <cmath>

#include "utils/zvbheap.h"

namespace {

// A node on the way: how far it is from the start, by which stop before it, and its cell in the heap of those
// that may still come nearer.
struct Stop : ZVObject {
  struct Step {
    Stop* to;
    double length;
  };

  const NetNode* node = nullptr;
  std::vector<Step> steps;
  double distance = 0.0;
  Stop* previous = nullptr;
  ZVBinHeapCell* cell = nullptr;
  bool reached = false;
};

Stop* stopOf(const ZVBinHeapCell* cell) { return static_cast<Stop*>(cell->pObject()); }

// The nearest stop on top. The distances are the order, since sums of lengths need not fit the values.
class StopHeap : public ZVBinHeap {
 public:
  void cameNearer(Stop& stop) {
    if (stop.cell) {
      changeValue(stop.cell, 0);
    } else {
      stop.cell = addObject(&stop, 0);
    }
  }
  Stop* takeNearest() {
    if (!pMinCell()) return nullptr;
    Stop* stop = stopOf(pMinCell());
    discardCell(stop->cell);
    stop->cell = nullptr;
    return stop;
  }

 protected:
  int32_t virtualCompare(ZVBinHeapCell* cell1, ZVBinHeapCell* cell2) override {
    const double a = stopOf(cell1)->distance;
    const double b = stopOf(cell2)->distance;
    return (a > b) - (a < b);
  }
};

double lengthOf(const NetEdge& edge) {
  const std::vector<ZVPoint> line = edge.line();
  double length = 0.0;
  for (size_t i = 1; i < line.size(); ++i) {
    // The distances of the library wrap where coordinates lie too far apart for 32 bits.
    const double dx = static_cast<double>(line[i].x()) - line[i - 1].x();
    const double dy = static_cast<double>(line[i].y()) - line[i - 1].y();
    length += std::sqrt(dx * dx + dy * dy);
  }
  return length;
}

// The stops by the numbers of their nodes.
std::vector<Stop> stopsOf(const NetGraph& graph, bool bothWays) {
  std::vector<Stop> stops(static_cast<size_t>(graph.nodes.length() + graph.edges.length()) + 1);
  auto at = [&](const NetNode* node) -> Stop& { return stops[static_cast<size_t>(node->number())]; };
  forEach<NetNode>(graph.nodes, [&](NetNode* node) { at(node).node = node; });
  forEach<NetEdge>(graph.edges, [&](NetEdge* edge) {
    if (!edge->source || !edge->target) return;
    const double length = lengthOf(*edge);
    at(edge->source).steps.push_back({&at(edge->target), length});
    if (bothWays) at(edge->target).steps.push_back({&at(edge->source), length});
  });
  return stops;
}

}  // namespace

Route findRoute(const NetGraph& graph, const NetNode& from, const NetNode& to, bool bothWays) {
  std::vector<Stop> stops = stopsOf(graph, bothWays);
  Stop* goal = &stops[static_cast<size_t>(to.number())];
  Stop& start = stops[static_cast<size_t>(from.number())];
  StopHeap heap;
  start.reached = true;
  heap.cameNearer(start);
  Stop* here = nullptr;
  while ((here = heap.takeNearest()) && here != goal) {
    for (const Stop::Step& step : here->steps) {
      const double distance = here->distance + step.length;
      if (step.to->reached && step.to->distance <= distance) continue;
      step.to->reached = true;
      step.to->distance = distance;
      step.to->previous = here;
      heap.cameNearer(*step.to);
    }
  }
  Route route;
  if (!here) return route;
  route.found = true;
  route.length = goal->distance;
  for (const Stop* stop = goal; stop; stop = stop->previous) route.nodes.push_back(stop->node);
  std::reverse(route.nodes.begin(), route.nodes.end());
  return route;
}
