// Walks the edges of a closed polygon given by its vertices. The first edge is the closing one, from the last
// vertex to the first; the others follow in list order. No vertices have no edge, one has an edge of no
// length.
//
//   for (ZVEdges edge(&vertices); edge; ++edge) use(edge.start(), edge.end());
#ifndef ZV_ZVEDGES_H
#define ZV_ZVEDGES_H

#include "utils/zvptdl.h"

class ZVEdges {
 public:
  // REQUIRES: vertices is not null, and stays as it is during the walk.
  explicit ZVEdges(const ZVPointDList* vertices)
      : start_(vertices->pLastCell()), end_(vertices->pFirstCell()) {}

  // The other two REQUIRE that this holds.
  explicit operator bool() const { return end_ != nullptr; }
  const ZVPoint& start() const { return *ZVPoint::castDown(start_->pObject()); }
  const ZVPoint& end() const { return *ZVPoint::castDown(end_->pObject()); }

  void operator++() {
    start_ = end_;
    end_ = end_->pNextCell();
  }

 private:
  const ZVDListCell* start_;
  const ZVDListCell* end_;
};

#endif
