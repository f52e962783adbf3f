// What the two sorted lists share: lists that keep themselves in ascending order by a comparison that a
// derived class supplies. A new cell goes behind all that tie with it, so equals stand in the order in which
// they came.
//
// Out of bounds, since they place cells by position: appendCell, appendObject, prependCell, prependObject,
// swapPosition, reverse, merge, appendList, prependList, copyAppendList, copyPrependList and the IfNotInList
// forms of these. The other operations of the list below are fine.
//
// Ownership, names and flags are those of ZVListBase. A copy takes over the order of its source and compares
// nothing. REQUIRES: the comparison does not change its answers while cells are in the list.
//
// Cost: a search, insertion or removal is one walk, which stops as soon as the order shows that what it looks
// for cannot come any more. A transfer costs such a walk for each cell.
#ifndef ZV_ZVSRTLST_H
#define ZV_ZVSRTLST_H

#include <cstdint>

class ZVObject;

// List is the class itself, Base the list below and Cell its cell.
template <class List, class Base, class Cell>
class ZVSortedList : public Base {
 public:
  ZVSortedList(const ZVSortedList&) = delete;
  ZVSortedList& operator=(const ZVSortedList&) = delete;

  // The cell itself, or the one that holds object, if the walk finds it, else null.
  Cell* searchCell(const Cell* cell) const { return placeOfCell(cell).found; }
  Cell* searchObject(const ZVObject* object) const { return placeOfObject(object).found; }

  // Sorts a free cell in and gives it back. REQUIRES: cell is not null and in no list.
  Cell* insertCell(Cell* cell);
  // Gives the new cell.
  Cell* addObject(ZVObject* object) { return insertCell(new Cell(object)); }
  // Each gives the cell that now holds the object. If that is another cell than the given one, the given one
  // stays free, and the caller's. REQUIRES: cell is not null.
  Cell* addObjectIfNotInList(ZVObject* object);
  Cell* insertCellIfNotInList(Cell* cell);

  // Each unlinks what its search finds and hands it to the caller, else gives null.
  Cell* searchAndRemoveCell(const Cell* cell) { return remove(placeOfCell(cell)); }
  Cell* searchAndRemoveObject(const ZVObject* object) { return remove(placeOfObject(object)); }

  // The source may be any list, in any order.
  int transferList(Base* source);
  int transferListPart(Base* source, Cell* first, Cell* last);
  int copyTransferList(const Base* source);
  int copyTransferListPart(const Base* source, const Cell* first, const Cell* last);
  int transferListIfNotInList(Base* source);
  int transferListPartIfNotInList(Base* source, Cell* first, Cell* last);
  int copyTransferListIfNotInList(const Base* source);
  int copyTransferListPartIfNotInList(const Base* source, const Cell* first, const Cell* last);

  void copyAllCells(const List* source) { Base::copyAllCells(source); }
  void copyAllCellsAndObjects(const List* source) { Base::copyAllCellsAndObjects(source); }

 protected:
  ZVSortedList() = default;

  // Positive if the first sorts after the second; 0 and below are taken alike.
  virtual int32_t virtualCellCompare(const Cell* cell1, const Cell* cell2) const {
    return virtualObjectCompare(cell1->pObject(), cell2->pObject());
  }
  virtual int32_t virtualObjectCompare(const ZVObject* object1, const ZVObject* object2) const = 0;

  // What a walk found, null if it did not, and the last cell that it passed, null if it passed none.
  struct Place {
    Cell* previous;
    Cell* found;
  };
  Place placeOfCell(const Cell* wanted) const;
  Place placeOfObject(const ZVObject* wanted) const;

 private:
  // Passes cells until one is the wanted one or sorts after it.
  template <class IsWanted, class IsAfter>
  Place walk(IsWanted isWanted, IsAfter isAfter) const;
  Cell* remove(const Place& place) {
    return place.found ? this->takeOut(place.previous, place.found) : nullptr;
  }

  // What moves or copies a whole list does it to the run from its first to its last cell.
  template <class Source, class Part>
  int ofWhole(Source* source, Part part) {
    if (this->refuses(source)) return 0;
    return source->length() == 0 || (this->*part)(source, source->pFirstCell(), source->pLastCell());
  }
};

template <class List, class Base, class Cell>
template <class IsWanted, class IsAfter>
auto ZVSortedList<List, Base, Cell>::walk(IsWanted isWanted, IsAfter isAfter) const -> Place {
  Place place{nullptr, nullptr};
  for (Cell* cell = this->pFirstCell(); cell; cell = cell->pNextCell()) {
    if (isWanted(cell)) {
      place.found = cell;
      break;
    }
    if (isAfter(cell)) break;
    place.previous = cell;
  }
  return place;
}

template <class List, class Base, class Cell>
auto ZVSortedList<List, Base, Cell>::placeOfCell(const Cell* wanted) const -> Place {
  if (!wanted) return {nullptr, nullptr};
  return walk([&](const Cell* cell) { return cell == wanted; },
              [&](const Cell* cell) { return virtualCellCompare(cell, wanted) > 0; });
}

template <class List, class Base, class Cell>
auto ZVSortedList<List, Base, Cell>::placeOfObject(const ZVObject* wanted) const -> Place {
  return walk([&](const Cell* cell) { return cell->pObject() == wanted; },
              [&](const Cell* cell) { return virtualObjectCompare(cell->pObject(), wanted) > 0; });
}

template <class List, class Base, class Cell>
Cell* ZVSortedList<List, Base, Cell>::insertCell(Cell* newCell) {
  Place place = walk([](const Cell*) { return false; },
                     [&](const Cell* cell) { return virtualCellCompare(cell, newCell) > 0; });
  return Base::insertCell(place.previous, newCell);
}

template <class List, class Base, class Cell>
Cell* ZVSortedList<List, Base, Cell>::addObjectIfNotInList(ZVObject* object) {
  Place place = placeOfObject(object);
  return place.found ? place.found : Base::addObject(place.previous, object);
}

template <class List, class Base, class Cell>
Cell* ZVSortedList<List, Base, Cell>::insertCellIfNotInList(Cell* cell) {
  Place place = placeOfObject(cell->pObject());
  return place.found ? place.found : Base::insertCell(place.previous, cell);
}

template <class List, class Base, class Cell>
int ZVSortedList<List, Base, Cell>::transferList(Base* source) {
  return ofWhole(source, &ZVSortedList::transferListPart);
}

template <class List, class Base, class Cell>
int ZVSortedList<List, Base, Cell>::transferListPart(Base* source, Cell* first, Cell* last) {
  return this->moveCells(
      source, first, last, [](const ZVObject*) { return true; }, [this](Cell* cell) { insertCell(cell); });
}

template <class List, class Base, class Cell>
int ZVSortedList<List, Base, Cell>::copyTransferList(const Base* source) {
  return ofWhole(source, &ZVSortedList::copyTransferListPart);
}

template <class List, class Base, class Cell>
int ZVSortedList<List, Base, Cell>::copyTransferListPart(const Base* source, const Cell* first,
                                                         const Cell* last) {
  return this->visitObjects(source, first, last, [this](ZVObject* object) { addObject(object); });
}

template <class List, class Base, class Cell>
int ZVSortedList<List, Base, Cell>::transferListIfNotInList(Base* source) {
  return ofWhole(source, &ZVSortedList::transferListPartIfNotInList);
}

template <class List, class Base, class Cell>
int ZVSortedList<List, Base, Cell>::transferListPartIfNotInList(Base* source, Cell* first, Cell* last) {
  return this->moveCells(
      source, first, last, [this](const ZVObject* object) { return !searchObject(object); },
      [this](Cell* cell) { insertCell(cell); });
}

template <class List, class Base, class Cell>
int ZVSortedList<List, Base, Cell>::copyTransferListIfNotInList(const Base* source) {
  return ofWhole(source, &ZVSortedList::copyTransferListPartIfNotInList);
}

template <class List, class Base, class Cell>
int ZVSortedList<List, Base, Cell>::copyTransferListPartIfNotInList(const Base* source, const Cell* first,
                                                                    const Cell* last) {
  return this->visitObjects(source, first, last, [this](ZVObject* object) {
    if (!searchObject(object)) addObject(object);
  });
}

#endif
