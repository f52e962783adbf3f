// The typed faces of the two list classes: lists of points and of rectangles, and iterators to match.
//
// They add no field, no virtual operation and no behaviour. Each operation does what the one of the list
// below does on objects (ZVListBase), cells are the plain ones, and ownership is that of the list below: a
// list owns its cells, never the points or rectangles.
//
// Only like takes from like: the source of a whole-list operation is of the same class. To copy from the twin
// of the other family, include its header.
#ifndef ZV_ZVTYPLST_H
#define ZV_ZVTYPLST_H

#include <cstddef>
#include <cstdint>
#include <type_traits>

class ZVDListIter;
class ZVPoint;
class ZVRect;
enum ZVIterDirectionEnum : int32_t;

// What the four lists share. List is the class itself, Twin its counterpart on the other of the two families,
// Base the list below and Cell its cell.
template <class List, class Twin, class Base, class Cell>
class ZVTypedList : public Base {
 public:
  ZVTypedList(const ZVTypedList&) = delete;
  ZVTypedList& operator=(const ZVTypedList&) = delete;

  int transferList(Cell* after, List* source) { return Base::transferList(after, source); }
  int transferListPart(Cell* after, List* source, Cell* first, Cell* last) {
    return Base::transferListPart(after, source, first, last);
  }
  int appendList(List* source) { return Base::appendList(source); }
  int prependList(List* source) { return Base::prependList(source); }

  int copyTransferList(Cell* after, const List* source) { return Base::copyTransferList(after, source); }
  int copyTransferListPart(Cell* after, const List* source, const Cell* first, const Cell* last) {
    return Base::copyTransferListPart(after, source, first, last);
  }
  int copyAppendList(const List* source) { return Base::copyAppendList(source); }
  int copyPrependList(const List* source) { return Base::copyPrependList(source); }

  int transferListIfNotInList(Cell* after, List* source) {
    return Base::transferListIfNotInList(after, source);
  }
  int transferListPartIfNotInList(Cell* after, List* source, Cell* first, Cell* last) {
    return Base::transferListPartIfNotInList(after, source, first, last);
  }
  int appendListIfNotInList(List* source) { return Base::appendListIfNotInList(source); }
  int prependListIfNotInList(List* source) { return Base::prependListIfNotInList(source); }

  int copyTransferListIfNotInList(Cell* after, const List* source) {
    return Base::copyTransferListIfNotInList(after, source);
  }
  int copyTransferListPartIfNotInList(Cell* after, const List* source, const Cell* first, const Cell* last) {
    return Base::copyTransferListPartIfNotInList(after, source, first, last);
  }
  int copyAppendListIfNotInList(const List* source) { return Base::copyAppendListIfNotInList(source); }
  int copyPrependListIfNotInList(const List* source) { return Base::copyPrependListIfNotInList(source); }

  void copyAllCells(const List* source) { Base::copyAllCells(source); }
  void copyAllCells(const Twin* source) { Base::copyAllCells(source); }
  void copyAllCells(std::nullptr_t) { Base::copyAllCells(nullptr); }

 protected:
  ZVTypedList() = default;
  explicit ZVTypedList(const Twin& source) : Base(source) {}
};

// The operations with the word Point in their names.
template <class List, class Twin, class Base, class Cell>
class ZVPointList : public ZVTypedList<List, Twin, Base, Cell> {
 public:
  // By address, not by coordinates.
  Cell* searchPoint(const ZVPoint* point) const { return this->searchObject(point); }
  int32_t positionOfPoint(const ZVPoint* point) const { return this->positionOfObject(point); }
  ZVPoint* pPointInPosition(int32_t position) const {
    return static_cast<ZVPoint*>(this->pObjectInPosition(position));
  }

  Cell* addPoint(Cell* after, ZVPoint* point) { return this->addObject(after, point); }
  Cell* appendPoint(ZVPoint* point) { return this->appendObject(point); }
  Cell* prependPoint(ZVPoint* point) { return this->prependObject(point); }
  Cell* addPointIfNotInList(Cell* after, ZVPoint* point) { return this->addObjectIfNotInList(after, point); }
  Cell* appendPointIfNotInList(ZVPoint* point) { return this->appendObjectIfNotInList(point); }
  Cell* prependPointIfNotInList(ZVPoint* point) { return this->prependObjectIfNotInList(point); }

  void deleteAllCellsAndPoints() { this->deleteAllCellsAndObjects(); }
  void copyAllCellsAndPoints(const List* source) { this->copyAllCellsAndObjects(source); }
  void copyAllCellsAndPoints(const Twin* source) { this->copyAllCellsAndObjects(source); }
  void copyAllCellsAndPoints(std::nullptr_t) { this->copyAllCellsAndObjects(nullptr); }

 protected:
  using ZVTypedList<List, Twin, Base, Cell>::ZVTypedList;
};

// The same with the word Rect.
template <class List, class Twin, class Base, class Cell>
class ZVRectList : public ZVTypedList<List, Twin, Base, Cell> {
 public:
  // By address, not by sides.
  Cell* searchRect(const ZVRect* rect) const { return this->searchObject(rect); }
  int32_t positionOfRect(const ZVRect* rect) const { return this->positionOfObject(rect); }
  ZVRect* pRectInPosition(int32_t position) const {
    return static_cast<ZVRect*>(this->pObjectInPosition(position));
  }

  Cell* addRect(Cell* after, ZVRect* rect) { return this->addObject(after, rect); }
  Cell* appendRect(ZVRect* rect) { return this->appendObject(rect); }
  Cell* prependRect(ZVRect* rect) { return this->prependObject(rect); }
  Cell* addRectIfNotInList(Cell* after, ZVRect* rect) { return this->addObjectIfNotInList(after, rect); }
  Cell* appendRectIfNotInList(ZVRect* rect) { return this->appendObjectIfNotInList(rect); }
  Cell* prependRectIfNotInList(ZVRect* rect) { return this->prependObjectIfNotInList(rect); }

  void deleteAllCellsAndRects() { this->deleteAllCellsAndObjects(); }
  void copyAllCellsAndRects(const List* source) { this->copyAllCellsAndObjects(source); }
  void copyAllCellsAndRects(const Twin* source) { this->copyAllCellsAndObjects(source); }
  void copyAllCellsAndRects(std::nullptr_t) { this->copyAllCellsAndObjects(nullptr); }

 protected:
  using ZVTypedList<List, Twin, Base, Cell>::ZVTypedList;
};

// What the four iterators share. Iter is the iterator of the list below.
template <class List, class Iter, class Cell>
class ZVTypedListIter : public Iter {
  static constexpr bool TWO_WAY = std::is_same_v<Iter, ZVDListIter>;

 public:
  // A null list gives an exhausted iterator.
  ZVTypedListIter(const List* list = nullptr) : Iter(list) {}
  ZVTypedListIter(const List* list, ZVIterDirectionEnum direction) requires(TWO_WAY)
      : Iter(list, direction) {}
  // Starts at cell, which is not tested against the list.
  ZVTypedListIter(const List* list, Cell* cell) : Iter(list, cell) {}

  void init(const List* list) { Iter::init(list); }
  void init(const List* list, ZVIterDirectionEnum direction) requires(TWO_WAY) {
    Iter::init(list, direction);
  }
  void init(const List* list, Cell* cell) { Iter::init(list, cell); }
};

#endif
