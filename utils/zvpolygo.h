// A closed polygon over a list of integer points. The last vertex joins the first; the vertices may run in
// either rotation.
//
// Ownership: the polygon owns its list and the points in it. A polygon without a list may only be copied,
// assigned to and destroyed.
//
// Cost: linear in the number of vertices, times those of the other polygon for polygonWithin. Nothing is
// cached.
//
// Labels: createGrid cuts the polygon into horizontal stripes, assignRectangle finds a place for a rectangle
// in such a grid. A grid is a list of ZVHorSegment, the highest first, from the polygon's top to its bottom.
// A stripe's list holds the parts of its line that lie in the polygon, from left to right, each a ZVPoint
// whose x is the left and whose y the right end of the part. Each side of the polygon counts on the stripes
// above its lower end, up to its upper end. A grid serves one polygon and one height. It belongs to the
// caller, with its stripes and parts, and is only read after createGrid.
#ifndef ZV_ZVPOLYGO_H
#define ZV_ZVPOLYGO_H

#include <memory>

#include "utils/zvdlist.h"
#include "utils/zvobject.h"
#include "utils/zvptdl.h"
#include "utils/zvsides.h"

class ZVHorSegment;

// Where in a polygon a label is looked for: from the top down, nearest to the middle, or from the bottom up.
// The first place found from the top or bottom wins. Any other value acts as the top.
enum ZVLabelLocationEnum : int32_t {
  ZV_LABEL_LOCATION_TOP = 0,
  ZV_LABEL_LOCATION_CENTER = 1,
  ZV_LABEL_LOCATION_BOTTOM = 2
};

// Where in the free span a label is put; any other value acts as the centre. The right one also prefers the
// spans on the right.
enum ZVLabelRegionEnum : int32_t {
  ZV_LABEL_REGION_CENTER = 0,
  ZV_LABEL_REGION_LEFT = 2,
  ZV_LABEL_REGION_RIGHT = 3
};

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

  // Fills the empty grid for rectangles of the given height at the location: a stripe at the height of each
  // vertex, and between them stripes about a third of the height apart, but not less than 2. Where a line of
  // this comb falls on the top, the one below it is left out. The lowest stripe has no parts, so that a label
  // at the bottom stands on the stripe above it.
  void createGrid(ZVDList* grid, int32_t height, ZVLabelLocationEnum location) const;
  // Looks for a place. On 1, p is the centre of the rectangle. On 0, p is as before, or after a search at the
  // centre (0, top + 1). followLocation aligns a label at the top to the left and one at the bottom to the
  // right, whatever the region says; a search at the centre ignores it.
  // Recursion goes as deep as there are stripes within the height.
  int assignRectangle(ZVLabelRegionEnum region, ZVLabelLocationEnum location, const ZVDList* grid,
                      int32_t height, int32_t width, ZVPoint* p, int followLocation) const;

  // Replaces the points by copies of the other's, in a new list if there is none.
  void copyPolygon(const ZVPolygon& other);

  // Puts a polygon that approximates the ellipse of the given size in front of the list, counterclockwise
  // from its leftmost point: a point below and one above the centre line at each step of x. Nothing is added
  // to a null list, for a size below 2, and for a step below 1 or not below the width.
  static void polygonOfEllipse(ZVPointDList* list, const ZVPoint& center, int32_t width, int32_t height,
                               int32_t step);

  // The cell of the stripe at y, which is made if there is none. With duplicate a second stripe at y is made
  // and given, unless the first one is the last of the grid or a second one is there already.
  static ZVDListCell* queryHorizontalStripe(ZVDList* grid, int32_t y, int duplicate);
  // The cell of the stripe at y, null if there is none. Below all stripes it is the last cell.
  static ZVDListCell* retrieveHorizontalStripe(const ZVDList* grid, int32_t y);
  // Empties the grid and deletes its stripes and their parts.
  static void deleteGrid(ZVDList* grid);

  // Both kinds of copy give the polygon points of its own.
  ZV_SHAPE_FULL(ZVPolygon)
  struct LabelSearch;

  ZVRectSides bounds() const;

  static void completeHorizontalStripes(ZVDList* grid, int32_t height, ZVLabelLocationEnum location);
  static ZVDListCell* addLineSegment(ZVDListCell* hint, const ZVPoint& p, const ZVPoint& q);
  static void addPointInLineSegment(ZVDList* crossings, int32_t value);
  static void completeIntervals(ZVHorSegment* stripe);
  static int32_t numberOfPoint(const ZVDList* crossings, int32_t value);

  static int assignInternalRectangle(const LabelSearch& search, const ZVDListCell* startStripe);
  static int assignRectangleOne(const LabelSearch& search, const ZVDListCell* stripe, int32_t startY,
                                int32_t l, int32_t r);
  static void assignInternalRectangleCenter(LabelSearch& search, const ZVDList* grid);
  static int assignRectangleOneCenter(LabelSearch& search, const ZVDListCell* stripe, int32_t y, int32_t l,
                                      int32_t r);

  std::unique_ptr<ZVPointDList> pointList_;
};

#endif
