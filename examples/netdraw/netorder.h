// The nodes of a drawing in reading order: from top to bottom, beside each other from left to right.
#ifndef NETDRAW_NETORDER_H
#define NETDRAW_NETORDER_H

#include "examples/netdraw/netmodel.h"
#include "utils/zvsbtree.h"

// Each node stands by its upper left corner, one at the same place by its number.
class ReadingOrder : public ZVSortedBinTree {
 public:
  explicit ReadingOrder(const NetGraph& graph) { copyTransferList(&graph.nodes); }

  // Below 0 if a is read before b, above 0 if after. REQUIRES: both are in the drawing. Cost: logarithmic.
  int32_t rank(const NetNode& a, const NetNode& b) const {
    return compare(searchObject(&a), searchObject(&b));
  }

 protected:
  int32_t virtualObjectCompare(const ZVObject* object1, const ZVObject* object2) const override;
};

#endif
