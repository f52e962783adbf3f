// What a shape is: its type, vertices and text rectangle. Its meeting with the plane is in zvshpint.cpp.
#include "utils/zvshape.h"

#include <algorithm>
#include <cmath>

ZV_DEFINE_VALUE(ZVShape, ZVObject)

namespace {

int32_t negative32(int32_t v) { return subtract32(0, v); }

// Gives each vertex the coordinates that turned gives for it.
template <class Turned>
void turnVertices(const ZVPointDList* list, Turned turned) {
  for (const ZVDListCell* cell = list ? list->pFirstCell() : nullptr; cell; cell = cell->pNextCell()) {
    ZVPoint* vertex = ZVPoint::castDown(cell->pObject());
    vertex->moveTo(turned(*vertex));
  }
}

int32_t clampToBox(int32_t v) { return std::clamp(v, -1000, 1000); }

}  // namespace

void ZVShape::PointListRelease::operator()(ZVPointDList* list) const {
  list->deleteAllCellsAndPoints();
  delete list;
}

int ZVShape::isConvexPolygon() const {
  if (type_ == ZV_SHAPE_CONVEX_POLYGON) return 1;
  if (!pointList_ || pointList_->length() < 3) return 0;
  if (pointList_->length() == 3) return 1;
  const ZVDListCell* b = pointList_->pLastCell();
  const ZVDListCell* a = b->pPreviousCell();
  int turn = 0;
  for (const ZVDListCell* c = pointList_->pFirstCell(); c; c = c->pNextCell()) {
    const int side = pointInWhichHalfplane(vertexOf(a), vertexOf(b), vertexOf(c));
    if (turn == 0) turn = side;
    if (side != 0 && side != turn) return 0;
    a = b;
    b = c;
  }
  return 1;
}

int ZVShape::pointInWhichHalfplane(const ZVPoint& a, const ZVPoint& b, const ZVPoint& c) {
  auto difference = [](int32_t v1, int32_t v2) { return static_cast<double>(subtract32(v1, v2)); };
  const double side = difference(b.x(), a.x()) * difference(c.y(), a.y()) -
                      difference(c.x(), a.x()) * difference(b.y(), a.y());
  return side > 0.0 ? 1 : side < 0.0 ? -1 : 0;
}

int ZVShape::compare(const ZVShape* other) const {
  if (!other || type_ != other->type_) return 0;
  if (textRectLeftBorder_ != other->textRectLeftBorder_ ||
      textRectRightBorder_ != other->textRectRightBorder_ ||
      textRectTopBorder_ != other->textRectTopBorder_ ||
      textRectBottomBorder_ != other->textRectBottomBorder_) {
    return 0;
  }
  if (type_ != ZV_SHAPE_CONVEX_POLYGON && type_ != ZV_SHAPE_NONCONVEX_POLYGON) return 1;
  return pointList_ == other->pointList_ || comparePointList(other->pointList_.get());
}

int ZVShape::comparePointList(const ZVPointDList* other) const {
  if (!pointList_ || !other || pointList_->length() != other->length()) return 0;
  const ZVDListCell* theirs = other->pFirstCell();
  for (const ZVDListCell* ours = pointList_->pFirstCell(); ours; ours = ours->pNextCell()) {
    if (vertexOf(ours).x() != vertexOf(theirs).x() || vertexOf(ours).y() != vertexOf(theirs).y()) return 0;
    theirs = theirs->pNextCell();
  }
  return 1;
}

void ZVShape::getInnerRect(ZVRect& r) const {
  r.width(textRectRightBorder_ - textRectLeftBorder_);
  r.height(textRectTopBorder_ - textRectBottomBorder_);
  r.x((textRectRightBorder_ + textRectLeftBorder_) >> 1);
  r.y((textRectTopBorder_ + textRectBottomBorder_) >> 1);
}

int32_t ZVShape::getInnerValue(int32_t size, int32_t border, double box) {
  return roundHalfUp((border / box + 0.5) * size);
}

void ZVShape::getCurrentInnerRect(ZVRect& r, const ZVPoint& center, const ZVSize& size) const {
  const int32_t width = size.width();
  const int32_t height = size.height();
  const int32_t left = subtract32(center.x(), width / 2);
  const int32_t bottom = subtract32(center.y(), height / 2);
  r.setCorners(add32(left, getInnerValue(width, textRectLeftBorder_, kBoxWidth)),
               add32(bottom, getInnerValue(height, textRectBottomBorder_, kBoxWidth)),
               add32(left, getInnerValue(width, textRectRightBorder_, kBoxWidth)),
               add32(bottom, getInnerValue(height, textRectTopBorder_, kBoxWidth)));
}

// One axis: the node's range low..high for which the borders fall on innerLow and innerHigh. Rounding may
// miss by a unit, which is corrected against getInnerValue, at the low end first.
void ZVShape::fitRange(int32_t innerLow, int32_t innerHigh, int32_t lowBorder, int32_t highBorder,
                       int32_t& low, int32_t& high) {
  const double scale = static_cast<double>(subtract32(innerHigh, innerLow)) / (highBorder - lowBorder);
  low = roundHalfUp(innerLow - (lowBorder + 1000.0) * scale);
  high = roundHalfUp(innerLow + (1000.0 - lowBorder) * scale);
  auto misses = [&low, &high](int32_t inner, int32_t border) {
    return subtract32(inner, low) != getInnerValue(subtract32(high, low), border, kBoxWidth);
  };
  auto shift = [](int32_t& end, int32_t by) { end = add32(end, by); };
  if (misses(innerLow, lowBorder)) {
    shift(low, -1);
    if (misses(innerLow, lowBorder)) {
      shift(low, 1);
      shift(high, -1);
    }
  } else if (misses(innerHigh, highBorder)) {
    shift(high, -1);
    if (misses(innerHigh, highBorder)) {
      shift(high, 1);
      shift(low, -1);
    }
  }
}

void ZVShape::fitBoundingRectToInnerRect(ZVRect& bounds, const ZVRect& inner) const {
  int32_t left, right, bottom, top;
  fitRange(inner.left(), inner.right(), textRectLeftBorder_, textRectRightBorder_, left, right);
  fitRange(inner.bottom(), inner.top(), textRectBottomBorder_, textRectTopBorder_, bottom, top);
  bounds.setCorners(left, bottom, right, top);
}

double ZVShape::angleBetweenTwoLines(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  const ZVTuple first(x1, y1);
  const ZVTuple second(x2, y2);
  const double lengths = std::sqrt(static_cast<double>(first.normSquare())) *
                         std::sqrt(static_cast<double>(second.normSquare()));
  if (truncateToInt32(lengths) == 0) return std::acos(0.0);
  return std::acos(std::clamp(first.innerProduct(second) / lengths, -1.0, 1.0));
}

void ZVShape::setShapeType(ZVShapeTypeEnum type) {
  pointList_.reset();
  type_ = type;
}

int ZVShape::pPointList(ZVPointDList* list) {
  if (list != pointList_.get()) pointList_.reset(list);
  // The list is judged by its own turns, whatever the shape was before.
  type_ = ZV_SHAPE_NONCONVEX_POLYGON;
  if (!pointList_ || pointList_->length() < 3) {
    setShapeType(ZV_SHAPE_RECTANGLE);
    return 0;
  }
  if (isConvexPolygon()) type_ = ZV_SHAPE_CONVEX_POLYGON;
  return 1;
}

ZVPoint* ZVShape::addPoint(int32_t x, int32_t y) {
  if (!pointList_) pointList_.reset(new ZVPointDList);
  ZVPoint* vertex = new ZVPoint(x, y);
  pointList_->appendPoint(vertex);
  type_ = ZV_SHAPE_NONCONVEX_POLYGON;
  if (isConvexPolygon()) type_ = ZV_SHAPE_CONVEX_POLYGON;
  return vertex;
}

void ZVShape::rotate(int degrees) {
  if (type_ != ZV_SHAPE_CONVEX_POLYGON && type_ != ZV_SHAPE_NONCONVEX_POLYGON) return;
  if (degrees == 90) rotatePolygonNinty();
  if (degrees == 180) rotatePolygonOneEighty();
  if (degrees == 270) rotatePolygonTwoSeventy();
}

void ZVShape::rotatePolygonNinty() {
  turnVertices(pointList_.get(), [](const ZVPoint& v) { return ZVPoint(negative32(v.y()), v.x()); });
}

void ZVShape::rotatePolygonOneEighty() {
  turnVertices(pointList_.get(),
               [](const ZVPoint& v) { return ZVPoint(negative32(v.x()), negative32(v.y())); });
}

void ZVShape::rotatePolygonTwoSeventy() {
  turnVertices(pointList_.get(), [](const ZVPoint& v) { return ZVPoint(v.y(), negative32(v.x())); });
}

void ZVShape::setInnerRect(const ZVRect& r) {
  const ZVRect box(clampToBox(r.left()), clampToBox(r.bottom()), clampToBox(r.right()), clampToBox(r.top()));
  if (box.left() == box.right() || box.bottom() == box.top()) return;
  textRectLeftBorder(static_cast<int16_t>(box.left()));
  textRectRightBorder(static_cast<int16_t>(box.right()));
  textRectTopBorder(static_cast<int16_t>(box.top()));
  textRectBottomBorder(static_cast<int16_t>(box.bottom()));
}

void ZVShape::init() {
  type_ = ZV_SHAPE_RECTANGLE;
  pointList_.reset();
  textRectLeftBorder_ = textRectBottomBorder_ = -1000;
  textRectRightBorder_ = textRectTopBorder_ = 1000;
}

void ZVShape::ZVShapeattributeCopy(const ZVShape& other) {
  ZVObject::copyAttributes(&other);
  type_ = other.type_;
  pointList_.reset(other.pointList_ ? new ZVPointDList(*other.pointList_) : nullptr);
  textRectLeftBorder_ = other.textRectLeftBorder_;
  textRectRightBorder_ = other.textRectRightBorder_;
  textRectTopBorder_ = other.textRectTopBorder_;
  textRectBottomBorder_ = other.textRectBottomBorder_;
}
