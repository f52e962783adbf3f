// A list whose cells are at the same time the nodes of a red-black tree, so that the order of two cells is
// found in logarithmic time.
//
// The tree has no keys: as in a list, the caller names the cell that a new one goes behind. ZVSortedBinTree
// adds keys. The in-order sequence of the tree is the list at every moment, and every ZVDListIter walks it.
// Cells never move in memory, and taking one out leaves every other cell with its object.
//
// Ownership: the tree owns its cells, never the objects.
//
// Invariants: the root alone has no parent. Every absent child is the tree's nil cell, which is black and in
// no list; its parent is scratch. Of binTreeType 1 no red cell has a red child, and from any cell every way
// down to the nil cell passes equally many black ones; the root may be red. Of any other type the shape
// follows from the order of insertion alone.
//
// While iterating, step first and remove then: removing may exchange the cell with its successor, which an
// iterator left behind would then pass over.
//
// Cost of type 1: inserting, removing and compare are logarithmic, ends, neighbours and length constant;
// searches and positions walk the list, and transfers and reverse insert each cell.
//
// Out of bounds, because they know nothing of the tree: merge, the IfNotInList forms, and whatever changes a
// list through a ZVDList pointer. Reading it is fine.
//
// Threads: compare marks cells, so it must not run beside anything else on the same tree.
#ifndef ZV_ZVBTREE_H
#define ZV_ZVBTREE_H

#include <memory>

#include "utils/zvbtreec.h"
#include "utils/zvdlist.h"

class ZV_EXPORT ZVBinTree : public ZVDList {
 public:
  explicit ZVBinTree(int binTreeType = 1) : nil_(makeNil()), binTreeType_(binTreeType) {}

  int32_t binTreeType() const { return binTreeType_; }
  // Null if the tree is empty.
  ZVBinTreeCell* pRoot() const { return root_; }
  ZVBinTreeCell* pNil() const { return nil_.get(); }
  // Each as in ZVListBase.
  ZVBinTreeCell* pFirstCell() const { return ZVBinTreeCell::castDown(ZVDList::pFirstCell()); }
  ZVBinTreeCell* pLastCell() const { return ZVBinTreeCell::castDown(ZVDList::pLastCell()); }
  ZVBinTreeCell* pCellInPosition(int32_t position) const {
    return ZVBinTreeCell::castDown(ZVDList::pCellInPosition(position));
  }
  ZVBinTreeCell* searchCell(const ZVBinTreeCell* cell) const {
    return ZVBinTreeCell::castDown(ZVDList::searchCell(cell));
  }
  ZVBinTreeCell* searchObject(const ZVObject* object) const {
    return ZVBinTreeCell::castDown(ZVDList::searchObject(object));
  }
  // -1 if cell1 comes before cell2, 1 if after, 0 if they are the same or in no common tree.
  int32_t compare(const ZVBinTreeCell* cell1, const ZVBinTreeCell* cell2) const;

  // Links a free cell behind after, or at the front for null, and gives it back; null for a null cell.
  ZVBinTreeCell* insertCell(ZVBinTreeCell* after, ZVBinTreeCell* cell);
  ZVBinTreeCell* appendCell(ZVBinTreeCell* cell) { return insertCell(pLastCell(), cell); }
  ZVBinTreeCell* prependCell(ZVBinTreeCell* cell) { return insertCell(nullptr, cell); }
  // The same behind cell, or at the end for null; and before cell, or at the front for null.
  ZVBinTreeCell* insertAfter(ZVBinTreeCell* cell, ZVBinTreeCell* newCell) {
    return insertCell(cell ? cell : pLastCell(), newCell);
  }
  ZVBinTreeCell* insertBefore(ZVBinTreeCell* cell, ZVBinTreeCell* newCell) {
    return insertCell(cell ? previousOf(cell) : nullptr, newCell);
  }
  // Each gives the new cell.
  ZVBinTreeCell* addObject(ZVBinTreeCell* after, ZVObject* object) {
    return insertCell(after, new ZVBinTreeCell(object));
  }
  ZVBinTreeCell* appendObject(ZVObject* object) { return addObject(pLastCell(), object); }
  ZVBinTreeCell* prependObject(ZVObject* object) { return addObject(nullptr, object); }
  ZVBinTreeCell* addAfter(ZVBinTreeCell* cell, ZVObject* object) {
    return insertAfter(cell, new ZVBinTreeCell(object));
  }
  ZVBinTreeCell* addBefore(ZVBinTreeCell* cell, ZVObject* object) {
    return insertBefore(cell, new ZVBinTreeCell(object));
  }

  // Unlinks cell and hands it to the caller; null for null. REQUIRES: cell is null or in this tree.
  ZVBinTreeCell* removeCell(ZVBinTreeCell* cell);
  // Null, and no change, if the cell or object is not in this tree.
  ZVBinTreeCell* searchAndRemoveCell(const ZVBinTreeCell* cell) { return removeCell(searchCell(cell)); }
  ZVBinTreeCell* searchAndRemoveObject(const ZVObject* object) { return removeCell(searchObject(object)); }
  // removeCell, then the cell is deleted; null does nothing.
  void discardCell(ZVBinTreeCell* cell) { delete removeCell(cell); }
  void deleteAllCells();
  void deleteAllFromBinTree() { deleteAllCells(); }
  // REQUIRES: no object is held twice.
  void deleteAllCellsAndObjects();

  // Exchanges the places of two cells of this tree, and their colours.
  void swapPosition(ZVBinTreeCell* cell1, ZVBinTreeCell* cell2);
  // Every cell keeps its identity. Always 1.
  int reverse();

  // Move cells, or make new ones for the objects of any list, with the refusals of ZVListBase.
  int transferList(ZVBinTreeCell* after, ZVBinTree* source);
  int transferListPart(ZVBinTreeCell* after, ZVBinTree* source, ZVBinTreeCell* first, ZVBinTreeCell* last);
  int appendList(ZVBinTree* source) { return transferList(pLastCell(), source); }
  int prependList(ZVBinTree* source) { return transferList(nullptr, source); }
  int copyTransferList(ZVBinTreeCell* after, const ZVDList* source);
  int copyTransferListPart(ZVBinTreeCell* after, const ZVDList* source, const ZVDListCell* first,
                           const ZVDListCell* last);
  int copyAppendList(const ZVDList* source) { return copyTransferList(pLastCell(), source); }
  int copyPrependList(const ZVDList* source) { return copyTransferList(nullptr, source); }

  // Make this tree hold the source's objects, or clones of them, in new cells; AndObjects deletes the objects
  // held before. The shape may differ from the source's. A null source empties the tree. REQUIRES: source is
  // not this tree.
  void copyAllCells(const ZVBinTree* source);
  void copyAllCellsAndObjects(const ZVBinTree* source);

  // The bytes of the tree, its nil cell and its cells, without the objects.
  int32_t sizeOf() const override;

 protected:
  // Take the cells of another tree, or a run of them, or visit the objects of any list; what is done with
  // them is up to place. Each has the refusals of the transfer that it serves. ZVListBase has the one for the
  // objects of a run.
  template <class Place>
  int takeAllCells(ZVBinTree* source, Place place);
  template <class Place>
  int takeCells(ZVBinTree* source, ZVBinTreeCell* first, ZVBinTreeCell* last, Place place);
  template <class Place>
  int visitAllObjects(const ZVDList* source, Place place) const;

  static ZVBinTreeCell* previousOf(const ZVBinTreeCell* cell) {
    return ZVBinTreeCell::castDown(cell->pPreviousCell());
  }
  static ZVBinTreeCell* nextOf(const ZVBinTreeCell* cell) {
    return ZVBinTreeCell::castDown(cell->pNextCell());
  }

  // As for ZVDList. Each copy takes over binTreeType.
  ZV_SHAPE_FULL(ZVBinTree)
  using Side = ZVBinTreeCell::Side;

  static std::unique_ptr<ZVBinTreeCell> makeNil() { return std::make_unique<ZVBinTreeCell>(nullptr, 2); }
  // The nil cell stands for an empty tree.
  ZVBinTreeCell* pRoot(ZVBinTreeCell* cell) { return root_ = cell == pNil() ? nullptr : cell; }
  // Exchanges the places of two cells in the tree alone, and their colours. REQUIRES: cell2 is not the parent
  // of cell1.
  void exchangeInTree(ZVBinTreeCell* cell1, ZVBinTreeCell* cell2);
  // Enters other where cell hangs, as a child or as the root.
  void replaceBelowParent(ZVBinTreeCell* cell, ZVBinTreeCell* other);

  // Moves the cell down to the left, or to the right, below the child that takes its place.
  void leftRotate(ZVBinTreeCell* cell);
  void rightRotate(ZVBinTreeCell* cell);
  void rotate(ZVBinTreeCell* cell, Side side);

  // Restore the colours above a red cell that was entered, and above one that took a black cell's place.
  void insertRedBlackFixup(ZVBinTreeCell* cell);
  void removeRedBlackFixup(ZVBinTreeCell* cell);
  // One step of them, each with the side on which the parent, or the cell, hangs. Give the cell to go on
  // with, of an insertion null if the colours are right.
  ZVBinTreeCell* insertFixupStep(ZVBinTreeCell* cell, ZVBinTreeCell* parent, ZVBinTreeCell* grandparent);
  ZVBinTreeCell* removeFixupStep(ZVBinTreeCell* parent, Side side);

  // Clears the marks from cell upward.
  static void clearVisited(ZVBinTreeCell* cell);
  // Moves all cells of source to the end of a plain list.
  static void moveAllCells(ZVBinTree* source, ZVDList* target);

  // Probes without effect, for the layers above; always 1.
  int isValidRedBlackTree() const;
  int isValidRedBlackTree(const ZVBinTreeCell* cell, int& blackHeight) const;
  // Does nothing; a hook for the layers above.
  void recursiveDebugOutput(const ZVBinTreeCell* cell, int level) const;

  ZVBinTreeCell* root_ = nullptr;
  std::unique_ptr<ZVBinTreeCell> nil_;
  int32_t binTreeType_;
};

template <class Place>
int ZVBinTree::takeAllCells(ZVBinTree* source, Place place) {
  if (refuses(source)) return 0;
  ZVDList cells;
  moveAllCells(source, &cells);
  while (cells.pFirstCell()) place(ZVBinTreeCell::castDown(cells.removeCell(cells.pFirstCell())));
  return 1;
}

template <class Place>
int ZVBinTree::takeCells(ZVBinTree* source, ZVBinTreeCell* first, ZVBinTreeCell* last, Place place) {
  if (refuses(source) || source->lengthOfRun(first, last) == 0) return 0;
  const ZVBinTreeCell* end = nextOf(last);
  for (ZVBinTreeCell* cell = first; cell != end;) {
    ZVBinTreeCell* next = nextOf(cell);
    place(source->removeCell(cell));
    cell = next;
  }
  return 1;
}

template <class Place>
int ZVBinTree::visitAllObjects(const ZVDList* source, Place place) const {
  if (refuses(source)) return 0;
  return source->length() == 0 || visitObjects(source, source->pFirstCell(), source->pLastCell(), place);
}

#endif
