// A priority queue whose cells are stable handles: a binary heap of linked cells, the smallest value on top,
// which is a list in level order at every moment.
//
// The list thread makes the position arithmetic of an array heap unnecessary. The first cell is the smallest,
// the last one is the last leaf, and the cell behind the one that takes the next child takes the one after.
//
// Ties: a cell does not rise above an equal parent, nor sink below an equal child; of two equal children the
// left one rises.
//
// Ownership: the heap owns its cells, never the objects.
// Invariants: the tree is complete, and its level order is the list; no cell compares before its parent.
// Cost: logarithmic, except pMinCell, pMinObject, removeLastBinHeapCell (constant) and the copies.
//
// Out of bounds, because they know nothing of the tree: the operations of ZVDList that change a list and are
// not redeclared here. Reading it is fine, and ZVDListIter walks it in level order; pFirstCell is
// pMinCell here, and the last leaf is the heap's own affair.
#ifndef ZV_ZVBHEAP_H
#define ZV_ZVBHEAP_H

#include "utils/zvbheapc.h"
#include "utils/zvdlist.h"

class ZV_EXPORT ZVBinHeap : public ZVDList {
 public:
  ZVBinHeap() = default;

  // Null if the heap is empty.
  ZVBinHeapCell* pMinCell() const { return pFirstCell(); }
  ZVObject* pMinObject() const { return pMinCell() ? pMinCell()->pObject() : nullptr; }

  // Gives the new cell.
  ZVBinHeapCell* addObject(ZVObject* object, int32_t value);
  // Links a free cell and gives it back. REQUIRES: cell is not null and in no list.
  ZVBinHeapCell* insertCell(ZVBinHeapCell* cell);
  // Restores the order around a cell of this heap; null does nothing.
  void changeValue(ZVBinHeapCell* cell, int32_t value);

  // Take a cell out and hand it to the caller. Only the first one may be asked of an empty heap, and gives
  // null. REQUIRES: cell is in this heap.
  ZVBinHeapCell* pExtractMinCell();
  ZVBinHeapCell* removeCell(ZVBinHeapCell* cell);
  // The last leaf.
  ZVBinHeapCell* removeLastBinHeapCell();
  // REQUIRES: cell is in this heap.
  void discardCell(ZVBinHeapCell* cell);
  void deleteAllCells();
  // REQUIRES: no object is held twice.
  void deleteAllCellsAndObjects();

  // Make this heap hold the source's objects, or clones of them, with the source's values in cells that stand
  // as the source's do; AndObjects deletes the objects held before. A null source empties the heap.
  // REQUIRES: source is not this heap.
  void copyAllCells(const ZVBinHeap* source);
  void copyAllCellsAndObjects(const ZVBinHeap* source);

 protected:
  // The order: below 0 if cell1 comes before cell2, above 0 if after, 0 for a tie. By the values as they
  // stand here. It finds a whole heap, list and tree, whenever it is called. A subclass with another order
  // needs a shape of its own to be copied: within this class's copying constructor its order is not known.
  virtual int32_t virtualCompare(ZVBinHeapCell* cell1, ZVBinHeapCell* cell2);

  // As for ZVDList. A deep copy takes over the values too.
  ZV_SHAPE_FULL(ZVBinHeap)
  ZVBinHeapCell* pFirstCell() const { return ZVBinHeapCell::castDown(ZVDList::pFirstCell()); }
  ZVBinHeapCell* pLastCell() const { return ZVBinHeapCell::castDown(ZVDList::pLastCell()); }
  ZVBinHeapCell* pAddChildrenPlace() const { return addChildrenPlace_; }
  ZVBinHeapCell* pAddChildrenPlace(ZVBinHeapCell* cell) { return addChildrenPlace_ = cell; }

  // Exchanges the places of two cells in list and tree.
  void swapPosition(ZVBinHeapCell* cell1, ZVBinHeapCell* cell2);
  // Lets cell sink below the children that come before it, as if by one swapPosition for each of them.
  void heapify(ZVBinHeapCell* cell);
  // The same upward, above the parents that come after it.
  void bubbleUp(ZVBinHeapCell* cell);

  // A place in list and tree by its neighbours there.
  struct Place {
    // Enters other where cell is a neighbour.
    void replace(const ZVBinHeapCell* cell, ZVBinHeapCell* other);

    ZVDListCell* previous;
    ZVDListCell* next;
    ZVBinHeapCell* parent;
    ZVBinHeapCell* left;
    ZVBinHeapCell* right;
    ZVBinHeapCell::Side side;
  };
  static Place placeOf(const ZVBinHeapCell* cell);
  // Puts cell there, with or without the children of the place.
  void occupy(const Place& place, ZVBinHeapCell* cell);
  void hang(const Place& place, ZVBinHeapCell* cell);
  // Do nothing; a hook for the layers above.
  void recursiveDebugOutput(const ZVBinHeapCell* cell, int level) const;

  // The first cell in level order with a free place for a child; null in an empty heap.
  ZVBinHeapCell* addChildrenPlace_ = nullptr;
};

#endif
