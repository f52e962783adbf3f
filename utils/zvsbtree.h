// A tree that keeps itself sorted by a comparison that a derived class supplies: a search tree whose list is
// in ascending order. An element goes in front of those that tie with it, so among equals the newest comes
// first.
//
// Searches follow the comparison. Where it answers zero for different objects, rotations may have moved one
// of them to where a search does not come: a tree that is to be searched exactly needs a comparison without
// ties. REQUIRES: the comparison of two objects does not change while a cell here holds one of them.
//
// Cost: searches, insertions and removals are logarithmic; a transfer is an insertion for each cell.
//
// Out of bounds, since they place cells by position and would break the order: appendCell, appendObject,
// prependCell, prependObject, addAfter, addBefore, insertAfter, insertBefore, swapPosition, reverse,
// appendList, prependList, copyAppendList, copyPrependList.
#ifndef ZV_ZVSBTREE_H
#define ZV_ZVSBTREE_H

#include "utils/zvbtree.h"

class ZV_EXPORT ZVSortedBinTree : public ZVBinTree {
 public:
  ZVSortedBinTree() = default;

  // The cell itself if the walk finds it, else null; null for null.
  ZVBinTreeCell* searchCell(const ZVBinTreeCell* cell) const;
  // The cell that holds the object if the walk finds it, else null. REQUIRES: object is not null.
  ZVBinTreeCell* searchObject(const ZVObject* object) const;

  // Sorts a free cell in and gives it back. REQUIRES: cell is not null and in no list.
  ZVBinTreeCell* insertCell(ZVBinTreeCell* cell);
  // Gives the new cell.
  ZVBinTreeCell* addObject(ZVObject* object) { return insertCell(new ZVBinTreeCell(object)); }

  // Hand the cell to the caller; null, and no change, if the search does not find it.
  ZVBinTreeCell* searchAndRemoveCell(const ZVBinTreeCell* cell) { return removeCell(searchCell(cell)); }
  ZVBinTreeCell* searchAndRemoveObject(const ZVObject* object) { return removeCell(searchObject(object)); }

  // Sort in the cells of any tree, or new ones for the objects of any list, with the refusals of ZVListBase.
  int transferList(ZVBinTree* source);
  int transferListPart(ZVBinTree* source, ZVBinTreeCell* first, ZVBinTreeCell* last);
  int copyTransferList(const ZVDList* source);
  int copyTransferListPart(const ZVDList* source, const ZVDListCell* first, const ZVDListCell* last);

  // As in ZVBinTree: the source's order is taken over without comparing.
  void copyAllCells(const ZVSortedBinTree* source) { ZVBinTree::copyAllCells(source); }
  void copyAllCellsAndObjects(const ZVSortedBinTree* source) { ZVBinTree::copyAllCellsAndObjects(source); }

 protected:
  // The order: below 0 if the first sorts before the second; zero and above count as one. By the objects of
  // the cells as it stands here.
  virtual int32_t virtualCellCompare(const ZVBinTreeCell* cell1, const ZVBinTreeCell* cell2) const;
  virtual int32_t virtualObjectCompare(const ZVObject* object1, const ZVObject* object2) const = 0;

  // As for ZVBinTree. A concrete tree defines the virtual clones if clones are to be of its class.
  ZV_SHAPE_ABSTRACT_CLOSED(ZVSortedBinTree)
  // Walks down from the root to the cell that is the wanted one, or to the end of the tree (null). A cell
  // that sorts before the wanted one is left to the right.
  template <class IsWanted, class SortsBefore>
  ZVBinTreeCell* descend(IsWanted isWanted, SortsBefore sortsBefore) const;
};

#endif
