// The outline of a node, independent of where the node stands and how large it is: a rectangle, an ellipse or
// a polygon, with the rectangle inside it that is meant for text.
//
// Shape coordinates: vertices and text borders live in a box in which -1000 is the left or bottom side of the
// node and 1000 its right or top side; nothing forces vertices to stay in it. Queries take the node's centre
// and size and work in world coordinates. An odd size has its extra unit to the right and the top.
//
// Ownership: a shape owns its point list and the points. Invariant: only a polygon type has a list, and one
// given from outside has at least 3 points; a polygon type set by hand has none, and its answers mean
// nothing before it gets one.
// Cost: queries on a polygon are linear in its points, which are mapped afresh at each call.
#ifndef ZV_ZVSHAPE_H
#define ZV_ZVSHAPE_H

#include <memory>

#include "utils/zvobject.h"
#include "utils/zvpoint.h"
#include "utils/zvptdl.h"
#include "utils/zvrect.h"
#include "utils/zvsize.h"

// Any other value acts as a rectangle.
enum ZVShapeTypeEnum : uint8_t {
  ZV_SHAPE_RECTANGLE = 0,
  ZV_SHAPE_ELLIPSE = 1,
  ZV_SHAPE_CONVEX_POLYGON = 2,
  ZV_SHAPE_NONCONVEX_POLYGON = 3
};

class ZV_EXPORT ZVShape : public ZVObject {
 public:
  // A polygon type needs a list before any query.
  ZVShape(ZVShapeTypeEnum type = ZV_SHAPE_RECTANGLE) : type_(type) {}
  // As pPointList(list).
  ZVShape(ZVPointDList* list) { pPointList(list); }

  ZVShapeTypeEnum shapeType() const { return type_; }
  // Null without a polygon.
  const ZVPointDList* pPointList() const { return pointList_.get(); }
  // By the turns of the vertices, in either sense of rotation; collinear ones do not count. A triangle always
  // is, and a shape known to be convex is not tested again.
  int isConvexPolygon() const;
  // 1 if types, text borders and, for polygons, the points in their order are equal; 0 for null.
  int compare(const ZVShape* other) const;

  // The text rectangle in shape coordinates, and in world coordinates for a placed node.
  void getInnerRect(ZVRect& r) const;
  void getCurrentInnerRect(ZVRect& r, const ZVPoint& center, const ZVSize& size) const;
  // The node's rectangle for which the text rectangle lies on inner, the way back from getCurrentInnerRect.
  void fitBoundingRectToInnerRect(ZVRect& bounds, const ZVRect& inner) const;

  // 1, and the first point moved to the crossing of the outline nearest to the second one along the segment;
  // 0, and no change, without a crossing.
  int intersectsSegment(int32_t& x1, int32_t& y1, int32_t x2, int32_t y2, int32_t cx, int32_t cy, int32_t w,
                        int32_t h) const;
  int intersectsSegment(ZVPoint& p1, const ZVPoint& p2, const ZVPoint& center, const ZVSize& size) const;
  // Whether the point lies in the closed shape; a convex polygon holds points only if it runs clockwise.
  int within(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) const;
  int within(const ZVPoint& p, const ZVPoint& center, const ZVSize& size) const;
  // Whether the point lies on the outline; for an ellipse, on the rounded end of its chord along x.
  int onBoundary(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) const;
  int onBoundary(const ZVPoint& p, const ZVPoint& center, const ZVSize& size) const;
  // Within and not on the boundary.
  int withinInterior(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) const;
  int withinInterior(const ZVPoint& p, const ZVPoint& center, const ZVSize& size) const;
  // Moves p to the outline and gives 1: for a rectangle to the nearest point, else to a crossing of the
  // outline with the line from p through the nearest point of the node's rectangle. If there is none, p moves
  // to that nearest point, which need not lie on the outline, and the result is 0.
  int nearestPoint(ZVPoint& p, const ZVPoint& center, const ZVSize& size) const;
  // The width of the shape across the direction from the first point to the second; for a polygon that of
  // the widest band around the line through the centre. 0 for coincident points.
  double maxAvailableDiagonalLengthAtShape(int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t w,
                                           int32_t h) const;
  double maxAvailableDiagonalLengthAtShape(const ZVPoint& p1, const ZVPoint& p2, const ZVSize& size) const;

  // The angle between two vectors in radians, from 0 to pi; a right angle if one has no length. Products are
  // taken in 32 bits.
  static double angleBetweenTwoLines(int32_t x1, int32_t y1, int32_t x2, int32_t y2);

  // Frees the point list: the way to a rectangle or an ellipse.
  void setShapeType(ZVShapeTypeEnum type);
  // Takes over a list of at least 3 points, in place of the present one, finds its type and gives 1. Any
  // other list is freed with its points and leaves a rectangle; the result is 0.
  int pPointList(ZVPointDList* list);
  // Turns a polygon by 90, 180 or 270 degrees counterclockwise; anything else does nothing. The text borders
  // stay.
  void rotate(int degrees);
  // Stores the sides clamped to the box. A flat rectangle, also one that clamping makes flat, is ignored.
  void setInnerRect(const ZVRect& r);

  ZV_SHAPE_VALUE(ZVShape)
  static constexpr double kBoxWidth = 2000.0;
  struct PointListRelease {
    void operator()(ZVPointDList* list) const;
  };
  struct Edge;

  // Appends a vertex, which makes the shape a polygon, and gives it.
  ZVPoint* addPoint(int32_t x, int32_t y);
  static const ZVPoint& vertexOf(const ZVDListCell* cell) { return *ZVPoint::castDown(cell->pObject()); }
  int comparePointList(const ZVPointDList* other) const;
  // The side of b seen from the line through a and c: 1, -1, or 0 on the line.
  static int pointInWhichHalfplane(const ZVPoint& a, const ZVPoint& b, const ZVPoint& c);
  void rotatePolygonNinty();
  void rotatePolygonOneEighty();
  void rotatePolygonTwoSeventy();

  int16_t textRectLeftBorder() const { return textRectLeftBorder_; }
  int16_t textRectRightBorder() const { return textRectRightBorder_; }
  int16_t textRectTopBorder() const { return textRectTopBorder_; }
  int16_t textRectBottomBorder() const { return textRectBottomBorder_; }
  int16_t textRectLeftBorder(int16_t border) { return textRectLeftBorder_ = border; }
  int16_t textRectRightBorder(int16_t border) { return textRectRightBorder_ = border; }
  int16_t textRectTopBorder(int16_t border) { return textRectTopBorder_ = border; }
  int16_t textRectBottomBorder(int16_t border) { return textRectBottomBorder_ = border; }
  // The distance of a border from the node's left or bottom side, for a box of the given width.
  static int32_t getInnerValue(int32_t size, int32_t border, double box);
  static void fitRange(int32_t innerLow, int32_t innerHigh, int32_t lowBorder, int32_t highBorder,
                       int32_t& low, int32_t& high);

  // The world coordinate of a shape coordinate v, for a node with this centre and size on the axis.
  static int32_t shapeToWorld(int32_t v, int32_t center, int32_t size);
  // Visits the edges in world coordinates, beginning with the closing one, until visit gives true. Gives
  // whether it did.
  template <class Visit>
  bool anyEdge(int32_t cx, int32_t cy, int32_t w, int32_t h, Visit visit) const;

  static int rectangleIntersect(int32_t& x1, int32_t& y1, int32_t x2, int32_t y2, int32_t cx, int32_t cy,
                                int32_t w, int32_t h);
  static int ellipseIntersect(int32_t& x1, int32_t& y1, int32_t x2, int32_t y2, int32_t cx, int32_t cy,
                              int32_t w, int32_t h);
  static int ellipseIntersectSteep(int32_t& x1, int32_t& y1, int32_t x2, int32_t y2, int32_t cx, int32_t cy,
                                   int32_t w, int32_t h);
  int polygonIntersect(int32_t& x1, int32_t& y1, int32_t x2, int32_t y2, int32_t cx, int32_t cy, int32_t w,
                       int32_t h) const;
  static int withinRectangle(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h);
  static int withinEllipse(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h);
  int withinConvPolygon(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) const;
  int withinNonConvPolygon(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) const;
  static int onBoundaryRectangle(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h);
  static int onBoundaryEllipse(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h);
  int onBoundaryPolygon(int32_t x, int32_t y, int32_t cx, int32_t cy, int32_t w, int32_t h) const;

  ZVShapeTypeEnum type_ = ZV_SHAPE_RECTANGLE;
  std::unique_ptr<ZVPointDList, PointListRelease> pointList_;
  int16_t textRectLeftBorder_ = -1000;
  int16_t textRectRightBorder_ = 1000;
  int16_t textRectTopBorder_ = 1000;
  int16_t textRectBottomBorder_ = -1000;
};

#endif
