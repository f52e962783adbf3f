// A closed polygon over a list of integer points. The last vertex joins the first; the vertices may run in
// either rotation.
//
// Ownership: the polygon owns its list and the points in it. A polygon without a list may only be copied,
// assigned to and destroyed.
//
// Cost: linear in the number of vertices, times those of the other polygon for polygonWithin. Nothing is
// cached.
#ifndef ZV_ZVPOLYGO_H
#define ZV_ZVPOLYGO_H

#include <memory>

#include "utils/zvobject.h"
#include "utils/zvptdl.h"
#include "utils/zvsides.h"

class ZV_EXPORT ZVPolygon : public ZVObject {
 public:
  // Takes over the list, which may be null.
  ZVPolygon(ZVPointDList* list) : pointList_(list) {}
  ~ZVPolygon() override;

  ZVPointDList* pPointList() const { return pointList_.get(); }
  // Bounds of the vertices. Without vertices the low bounds are the greatest number and the high ones the
  // smallest, so that nothing lies within them.
  int32_t left() const { return bounds().left; }
  int32_t right() const { return bounds().right; }
  int32_t bottom() const { return bounds().bottom; }
  int32_t top() const { return bounds().top; }

  // Whether the point lies in the polygon, counted by the crossings of a ray toward larger x. An edge counts
  // as hit where its crossing, rounded, is the point. Where the boundary only touches the ray in a vertex
  // beyond the point, that counts as a crossing.
  int pointWithin(int32_t x, int32_t y) const;
  // Whether every vertex of other lies in the polygon; its edges are not looked at.
  int polygonWithin(const ZVPolygon& other) const;
  // Whether an end of the segment lies in the polygon or the segment meets an edge.
  int overlapsSegment(int32_t x1, int32_t y1, int32_t x2, int32_t y2) const;

  // Replaces the points by copies of the other's, in a new list if there is none.
  void copyPolygon(const ZVPolygon& other);

  // Puts a polygon that approximates the ellipse of the given size in front of the list, counterclockwise
  // from its leftmost point: a point below and one above the centre line at each step of x. Nothing is added
  // to a null list, for a size below 2, and for a step below 1 or not below the width.
  static void polygonOfEllipse(ZVPointDList* list, const ZVPoint& center, int32_t width, int32_t height,
                               int32_t step);

  // Both kinds of copy give the polygon points of its own.
  ZV_SHAPE_FULL(ZVPolygon)
  ZVRectSides bounds() const;

  std::unique_ptr<ZVPointDList> pointList_;
};

#endif
