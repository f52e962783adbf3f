// The shortest way through a drawing.
#ifndef NETDRAW_NETROUTE_H
#define NETDRAW_NETROUTE_H

#include <vector>

#include "examples/netdraw/netmodel.h"

struct Route {
  bool found = false;
  double length = 0.0;  // of the lines of its edges
  // From the first node to the last; the first one came by no edge.
  std::vector<const NetNode*> nodes;
};

// The shortest route from one node to another along the edges, from source to target, or with bothWays also
// back. Cost: n log n in the nodes and edges.
Route findRoute(const NetGraph& graph, const NetNode& from, const NetNode& to, bool bothWays);

#endif
