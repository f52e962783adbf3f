// What lies on top of what in a drawing.
#ifndef NETDRAW_NETOVER_H
#define NETDRAW_NETOVER_H

#include <utility>
#include <vector>

#include "examples/netdraw/netmodel.h"

struct Overlaps {
  // Nodes whose rectangles share more than a side or a corner, each pair once: how many pairs, and the first
  // ones by their numbers.
  int64_t nodePairs = 0;
  std::vector<std::pair<const NetNode*, const NetNode*>> nodes;
  // Edges whose line runs through the rectangle of a node that is none of its ends, with the first such node
  // that was met, in the order of the drawing.
  std::vector<std::pair<const NetEdge*, const NetNode*>> edges;
};

// Keeps at most that many pairs of nodes. Cost: a sweep of the nodes, and of the edges up to where each meets
// its first node; where nodes lie stacked, time for each pair, but no memory.
Overlaps findOverlaps(const NetGraph& graph, size_t most);

#endif
