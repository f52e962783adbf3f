// What the doubly and the singly linked list share: every operation that follows next links only, written
// once for both. A caller uses ZVDList or ZVSList.
//
// A list is a sequence of cells, each pointing at one object. A cell is a position that a caller may keep:
// it stays valid while the list around it changes, and moving a run of cells between lists allocates nothing.
// The list never looks into its objects; it compares addresses.
//
// Ownership: a list owns its cells, never the objects. A cell that an operation takes out belongs to the
// caller. Objects go only with deleteAllCellsAndObjects and with what is built on it.
//
// Invariants: an empty list has no first and no last cell and the length 0; else length cells lead from the
// first to the last, and the last has no next cell. A cell lies in at most one list.
//
// Positions count from 1. A null after means the front of the list; any other after is a cell of this list.
// Flags are 1 for success and 0 for a refusal, which changes nothing.
//
// Names: copy... makes new cells around the same objects and leaves the source alone, while the forms without
// it move the cells themselves; ...IfNotInList skips objects that this list already holds.
//
// Cost: constant, except searches, positions, compare and reverse (linear), parts (one walk over the part)
// and the IfNotInList forms (a search for each object).
//
// List supplies, besides removeCell:
//   void join(Cell* previous, Cell* next)          lets next follow previous; a null previous is the front of
//                                                  the list, a null next its end
//   Cell* predecessorOf(const Cell* cell) const    the cell before cell, null at the front; noPredecessor()
//                                                  if the list has to search and does not find cell
#ifndef ZV_ZVLSTBAS_H
#define ZV_ZVLSTBAS_H

#include <cstddef>
#include <cstdint>

#include "utils/zvobject.h"

class ZVDList;
class ZVSList;

template <class List, class Cell>
class ZVListSortBase;

template <class List, class Cell>
class ZVListBase : public ZVObject {
 public:
  ZVListBase(const ZVListBase&) = delete;
  ZVListBase& operator=(const ZVListBase&) = delete;

  int32_t length() const { return length_; }
  Cell* pFirstCell() const { return firstCell_; }
  Cell* pLastCell() const { return lastCell_; }
  // Null if position is out of range.
  Cell* pCellInPosition(int32_t position) const;
  ZVObject* pObjectInPosition(int32_t position) const;
  // -1 for null and if there is none.
  int32_t positionOfCell(const Cell* cell) const;
  int32_t positionOfObject(const ZVObject* object) const;
  // The cell itself if it is in this list, else null.
  Cell* searchCell(const Cell* cell) const;
  // The first cell that holds object, else null. A null object is searched like any other.
  Cell* searchObject(const ZVObject* object) const;
  // 1 if both lists hold the same objects in the same order; 0 for null.
  int compare(const List* other) const;

  // Links a free cell and gives it back. REQUIRES: cell is not null and in no list.
  Cell* insertCell(Cell* after, Cell* cell) {
    Cell* next = cellBehind(after);
    self()->join(after, cell);
    self()->join(cell, next);
    ++length_;
    return cell;
  }
  Cell* appendCell(Cell* cell) { return insertCell(lastCell_, cell); }
  Cell* prependCell(Cell* cell) { return insertCell(nullptr, cell); }
  // Each gives the new cell.
  Cell* addObject(Cell* after, ZVObject* object) { return insertCell(after, new Cell(object)); }
  Cell* appendObject(ZVObject* object) { return addObject(lastCell_, object); }
  Cell* prependObject(ZVObject* object) { return addObject(nullptr, object); }

  // Each gives the cell that now holds the object. If that is another cell than the given one, the given one
  // stays free, and the caller's. A null cell gives null.
  Cell* addObjectIfNotInList(Cell* after, ZVObject* object);
  Cell* insertCellIfNotInList(Cell* after, Cell* cell);
  Cell* appendCellIfNotInList(Cell* cell) { return insertCellIfNotInList(lastCell_, cell); }
  Cell* prependCellIfNotInList(Cell* cell) { return insertCellIfNotInList(nullptr, cell); }
  Cell* appendObjectIfNotInList(ZVObject* object) { return addObjectIfNotInList(lastCell_, object); }
  Cell* prependObjectIfNotInList(ZVObject* object) { return addObjectIfNotInList(nullptr, object); }

  // removeCell, then the cell is deleted, in any case; null does nothing.
  void discardCell(Cell* cell);
  void deleteAllCells();
  // REQUIRES: no object is held twice.
  void deleteAllCellsAndObjects();

  // 0 if source is null or this list. An empty source is no refusal.
  int transferList(Cell* after, List* source);
  // The run first..last of source. 0 also if an end is null or last does not follow first.
  int transferListPart(Cell* after, List* source, Cell* first, Cell* last);
  int appendList(List* source) { return transferList(lastCell_, source); }
  int prependList(List* source) { return transferList(nullptr, source); }

  int copyTransferList(Cell* after, const List* source);
  int copyTransferListPart(Cell* after, const List* source, const Cell* first, const Cell* last);
  int copyAppendList(const List* source) { return copyTransferList(lastCell_, source); }
  int copyPrependList(const List* source) { return copyTransferList(nullptr, source); }

  // Of several cells of the source with one object only the first is taken; the others stay there. 1 even if
  // all were skipped.
  int transferListIfNotInList(Cell* after, List* source);
  int transferListPartIfNotInList(Cell* after, List* source, Cell* first, Cell* last);
  int appendListIfNotInList(List* source) { return transferListIfNotInList(lastCell_, source); }
  int prependListIfNotInList(List* source) { return transferListIfNotInList(nullptr, source); }

  int copyTransferListIfNotInList(Cell* after, const List* source);
  int copyTransferListPartIfNotInList(Cell* after, const List* source, const Cell* first, const Cell* last);
  int copyAppendListIfNotInList(const List* source) { return copyTransferListIfNotInList(lastCell_, source); }
  int copyPrependListIfNotInList(const List* source) { return copyTransferListIfNotInList(nullptr, source); }

  // Make this list hold the source's objects, or clones of them, in new cells; AndObjects deletes the objects
  // held before. A null source empties the list. REQUIRES: source is not this list. To copy from the other
  // family, include its header.
  void copyAllCells(const ZVDList* source);
  void copyAllCells(const ZVSList* source);
  void copyAllCells(std::nullptr_t) { deleteAllCells(); }
  void copyAllCellsAndObjects(const ZVDList* source);
  void copyAllCellsAndObjects(const ZVSList* source);
  void copyAllCellsAndObjects(std::nullptr_t) { deleteAllCellsAndObjects(); }

  // Every cell keeps its identity. Always 1.
  int reverse();

 protected:
  ZVListBase() = default;

  // Neither a null list nor this one can be a source.
  bool refuses(const List* source) const { return !source || source == this; }

  // Unlinks cell, the one behind previous. The cell keeps its own links.
  Cell* takeOut(Cell* previous, Cell* cell) {
    self()->join(previous, cell->pNextCell());
    --length_;
    return cell;
  }

  // Takes those cells of a run out of source that hold wanted objects, and hands each to place. With the
  // refusals of transferListPart.
  template <class Wanted, class Place>
  int moveCells(List* source, Cell* first, Cell* last, Wanted wanted, Place place);
  // Hands the objects of a run to place. With the refusals of copyTransferListPart.
  template <class Place>
  int visitObjects(const List* source, const Cell* first, const Cell* last, Place place) const;

 private:
  friend List;
  friend class ZVListSortBase<List, Cell>;

  List* self() { return static_cast<List*>(this); }
  const List* self() const { return static_cast<const List*>(this); }

  int32_t length(int32_t newLength) { return length_ = newLength; }

  // A value that is no cell and not null either.
  static Cell* noPredecessor() { return reinterpret_cast<Cell*>(~uintptr_t{0}); }

  Cell* cellBehind(const Cell* previous) const { return previous ? previous->pNextCell() : firstCell_; }

  // Moves count cells of source, those behind previous up to last, behind after.
  void moveRun(Cell* after, List* source, Cell* previous, Cell* last, int32_t count);

  // The number of cells from first to last, 0 if last does not follow first or one of them is null.
  int32_t lengthOfRun(const Cell* first, const Cell* last) const;

  // One new cell for each cell of a list of either family, which may be null.
  template <class Source>
  void appendObjectsOf(const Source* source);
  template <class Source>
  void appendClonesOf(const Source* source);

  Cell* firstCell_ = nullptr;
  Cell* lastCell_ = nullptr;
  int32_t length_ = 0;
};

template <class List, class Cell>
Cell* ZVListBase<List, Cell>::pCellInPosition(int32_t position) const {
  if (position < 1 || position > length_) return nullptr;
  Cell* cell = firstCell_;
  while (--position > 0) cell = cell->pNextCell();
  return cell;
}

template <class List, class Cell>
ZVObject* ZVListBase<List, Cell>::pObjectInPosition(int32_t position) const {
  Cell* cell = pCellInPosition(position);
  return cell ? cell->pObject() : nullptr;
}

template <class List, class Cell>
int32_t ZVListBase<List, Cell>::positionOfCell(const Cell* cell) const {
  int32_t position = 1;
  for (Cell* here = firstCell_; here; here = here->pNextCell(), ++position) {
    if (here == cell) return position;
  }
  return -1;
}

template <class List, class Cell>
int32_t ZVListBase<List, Cell>::positionOfObject(const ZVObject* object) const {
  if (!object) return -1;
  int32_t position = 1;
  for (Cell* cell = firstCell_; cell; cell = cell->pNextCell(), ++position) {
    if (cell->pObject() == object) return position;
  }
  return -1;
}

template <class List, class Cell>
Cell* ZVListBase<List, Cell>::searchCell(const Cell* cell) const {
  Cell* here = firstCell_;
  while (here && here != cell) here = here->pNextCell();
  return here;
}

template <class List, class Cell>
Cell* ZVListBase<List, Cell>::searchObject(const ZVObject* object) const {
  Cell* cell = firstCell_;
  while (cell && cell->pObject() != object) cell = cell->pNextCell();
  return cell;
}

template <class List, class Cell>
int ZVListBase<List, Cell>::compare(const List* other) const {
  if (!other || other->length() != length_) return 0;
  Cell* theirs = other->pFirstCell();
  for (Cell* cell = firstCell_; cell; cell = cell->pNextCell(), theirs = theirs->pNextCell()) {
    if (cell->pObject() != theirs->pObject()) return 0;
  }
  return 1;
}

template <class List, class Cell>
Cell* ZVListBase<List, Cell>::addObjectIfNotInList(Cell* after, ZVObject* object) {
  Cell* holder = searchObject(object);
  return holder ? holder : addObject(after, object);
}

template <class List, class Cell>
Cell* ZVListBase<List, Cell>::insertCellIfNotInList(Cell* after, Cell* cell) {
  if (!cell) return nullptr;
  Cell* holder = searchObject(cell->pObject());
  return holder ? holder : insertCell(after, cell);
}

template <class List, class Cell>
void ZVListBase<List, Cell>::discardCell(Cell* cell) {
  self()->removeCell(cell);
  delete cell;
}

template <class List, class Cell>
void ZVListBase<List, Cell>::deleteAllCells() {
  Cell* cell = firstCell_;
  firstCell_ = nullptr;
  lastCell_ = nullptr;
  length_ = 0;
  while (cell) {
    Cell* next = cell->pNextCell();
    delete cell;
    cell = next;
  }
}

template <class List, class Cell>
void ZVListBase<List, Cell>::deleteAllCellsAndObjects() {
  for (Cell* cell = firstCell_; cell; cell = cell->pNextCell()) delete cell->pObject();
  deleteAllCells();
}

template <class List, class Cell>
void ZVListBase<List, Cell>::moveRun(Cell* after, List* source, Cell* previous, Cell* last, int32_t count) {
  Cell* first = source->cellBehind(previous);
  source->join(previous, last->pNextCell());
  source->length(source->length() - count);
  Cell* next = cellBehind(after);
  self()->join(after, first);
  self()->join(last, next);
  length_ += count;
}

template <class List, class Cell>
int32_t ZVListBase<List, Cell>::lengthOfRun(const Cell* first, const Cell* last) const {
  if (!first || !last) return 0;
  if (first == firstCell_ && last == lastCell_) return length_;
  int32_t count = 1;
  while (first && first != last) {
    first = first->pNextCell();
    ++count;
  }
  return first ? count : 0;
}

template <class List, class Cell>
int ZVListBase<List, Cell>::transferList(Cell* after, List* source) {
  if (refuses(source)) return 0;
  if (source->length() > 0) moveRun(after, source, nullptr, source->pLastCell(), source->length());
  return 1;
}

template <class List, class Cell>
int ZVListBase<List, Cell>::transferListPart(Cell* after, List* source, Cell* first, Cell* last) {
  if (refuses(source)) return 0;
  int32_t count = source->lengthOfRun(first, last);
  if (count == 0) return 0;
  Cell* previous = source->predecessorOf(first);
  if (previous == noPredecessor()) return 0;
  moveRun(after, source, previous, last, count);
  return 1;
}

template <class List, class Cell>
int ZVListBase<List, Cell>::copyTransferList(Cell* after, const List* source) {
  if (refuses(source)) return 0;
  return source->length() == 0 ||
         copyTransferListPart(after, source, source->pFirstCell(), source->pLastCell());
}

template <class List, class Cell>
int ZVListBase<List, Cell>::copyTransferListPart(Cell* after, const List* source, const Cell* first,
                                                 const Cell* last) {
  return visitObjects(source, first, last, [&](ZVObject* object) { after = addObject(after, object); });
}

template <class List, class Cell>
template <class Place>
int ZVListBase<List, Cell>::visitObjects(const List* source, const Cell* first, const Cell* last,
                                         Place place) const {
  if (refuses(source) || source->lengthOfRun(first, last) == 0) return 0;
  for (const Cell* cell = first;; cell = cell->pNextCell()) {
    place(cell->pObject());
    if (cell == last) return 1;
  }
}

template <class List, class Cell>
int ZVListBase<List, Cell>::transferListIfNotInList(Cell* after, List* source) {
  if (refuses(source)) return 0;
  return source->length() == 0 ||
         transferListPartIfNotInList(after, source, source->pFirstCell(), source->pLastCell());
}

template <class List, class Cell>
int ZVListBase<List, Cell>::transferListPartIfNotInList(Cell* after, List* source, Cell* first, Cell* last) {
  return moveCells(
      source, first, last, [this](ZVObject* object) { return !searchObject(object); },
      [&](Cell* cell) { after = insertCell(after, cell); });
}

template <class List, class Cell>
template <class Wanted, class Place>
int ZVListBase<List, Cell>::moveCells(List* source, Cell* first, Cell* last, Wanted wanted, Place place) {
  if (refuses(source) || source->lengthOfRun(first, last) == 0) return 0;
  Cell* previous = source->predecessorOf(first);
  if (previous == noPredecessor()) return 0;
  const Cell* end = last->pNextCell();
  while (true) {
    Cell* cell = source->cellBehind(previous);
    if (cell == end) return 1;
    if (wanted(cell->pObject())) {
      place(source->takeOut(previous, cell));
    } else {
      previous = cell;
    }
  }
}

template <class List, class Cell>
int ZVListBase<List, Cell>::copyTransferListIfNotInList(Cell* after, const List* source) {
  if (refuses(source)) return 0;
  return source->length() == 0 ||
         copyTransferListPartIfNotInList(after, source, source->pFirstCell(), source->pLastCell());
}

template <class List, class Cell>
int ZVListBase<List, Cell>::copyTransferListPartIfNotInList(Cell* after, const List* source,
                                                            const Cell* first, const Cell* last) {
  return visitObjects(source, first, last, [&](ZVObject* object) {
    if (!searchObject(object)) after = addObject(after, object);
  });
}

template <class List, class Cell>
void ZVListBase<List, Cell>::copyAllCells(const ZVDList* source) {
  deleteAllCells();
  appendObjectsOf(source);
}

template <class List, class Cell>
void ZVListBase<List, Cell>::copyAllCells(const ZVSList* source) {
  deleteAllCells();
  appendObjectsOf(source);
}

template <class List, class Cell>
void ZVListBase<List, Cell>::copyAllCellsAndObjects(const ZVDList* source) {
  deleteAllCellsAndObjects();
  appendClonesOf(source);
}

template <class List, class Cell>
void ZVListBase<List, Cell>::copyAllCellsAndObjects(const ZVSList* source) {
  deleteAllCellsAndObjects();
  appendClonesOf(source);
}

template <class List, class Cell>
template <class Source>
void ZVListBase<List, Cell>::appendObjectsOf(const Source* source) {
  if (!source) return;
  for (auto* cell = source->pFirstCell(); cell; cell = cell->pNextCell()) appendObject(cell->pObject());
}

template <class List, class Cell>
template <class Source>
void ZVListBase<List, Cell>::appendClonesOf(const Source* source) {
  if (!source) return;
  for (auto* cell = source->pFirstCell(); cell; cell = cell->pNextCell()) {
    appendObject(ZVObject::cloneObject(cell->pObject()));
  }
}

template <class List, class Cell>
int ZVListBase<List, Cell>::reverse() {
  List reversed;
  while (firstCell_) reversed.prependCell(takeOut(nullptr, firstCell_));
  transferList(nullptr, &reversed);
  return 1;
}

#endif
