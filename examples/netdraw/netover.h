// What lies on top of what in a drawing.
#ifndef NETDRAW_NETOVER_H
#define NETDRAW_NETOVER_H

#include <utility>
#include <vector>

#include "examples/netdraw/netmodel.h"

struct Overlaps {
  // Nodes whose rectangles share more than a side or a corner, each pair once, ordered by their numbers.
  std::vector<std::pair<const NetNode*, const NetNode*>> nodes;
  // Edges whose line runs through the rectangle of a node that is none of its ends, with the first such node
  // that was met, in the order of the drawing.
  std::vector<std::pair<const NetEdge*, const NetNode*>> edges;
};

// Cost: a sweep of the nodes, and of the edges up to where each meets its first node.
Overlaps findOverlaps(const NetGraph& graph);

#endif
