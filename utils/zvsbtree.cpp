#include "utils/zvsbtree.h"

ZV_DEFINE_ABSTRACT(ZVSortedBinTree, ZVBinTree)

template <class IsWanted, class SortsBefore>
ZVBinTreeCell* ZVSortedBinTree::descend(IsWanted isWanted, SortsBefore sortsBefore) const {
  const ZVBinTreeCell* nil = pNil();
  ZVBinTreeCell* cell = pRoot();
  while (cell && cell != nil) {
    if (isWanted(cell)) return cell;
    cell = sortsBefore(cell) ? cell->pRightChild() : cell->pLeftChild();
  }
  return nullptr;
}

ZVBinTreeCell* ZVSortedBinTree::searchCell(const ZVBinTreeCell* cell) const {
  if (!cell) return nullptr;
  return descend([=](const ZVBinTreeCell* here) { return here == cell; },
                 [=, this](const ZVBinTreeCell* here) { return virtualCellCompare(here, cell) < 0; });
}

ZVBinTreeCell* ZVSortedBinTree::searchObject(const ZVObject* object) const {
  return descend(
      [=](const ZVBinTreeCell* here) { return here->pObject() == object; },
      [=, this](const ZVBinTreeCell* here) { return virtualObjectCompare(here->pObject(), object) < 0; });
}

ZVBinTreeCell* ZVSortedBinTree::insertCell(ZVBinTreeCell* cell) {
  ZVBinTreeCell* anchor = nullptr;
  bool goesBehind = true;
  descend(
      [&](ZVBinTreeCell* here) {
        anchor = here;
        return false;
      },
      [&](const ZVBinTreeCell* here) { return goesBehind = virtualCellCompare(here, cell) < 0; });
  return ZVBinTree::insertCell(goesBehind ? anchor : previousOf(anchor), cell);
}

int ZVSortedBinTree::transferList(ZVBinTree* source) {
  return takeAllCells(source, [this](ZVBinTreeCell* cell) { insertCell(cell); });
}

int ZVSortedBinTree::transferListPart(ZVBinTree* source, ZVBinTreeCell* first, ZVBinTreeCell* last) {
  return takeCells(source, first, last, [this](ZVBinTreeCell* cell) { insertCell(cell); });
}

int ZVSortedBinTree::copyTransferList(const ZVDList* source) {
  return visitAllObjects(source, [this](ZVObject* object) { addObject(object); });
}

int ZVSortedBinTree::copyTransferListPart(const ZVDList* source, const ZVDListCell* first,
                                          const ZVDListCell* last) {
  return visitObjects(source, first, last, [this](ZVObject* object) { addObject(object); });
}

int32_t ZVSortedBinTree::virtualCellCompare(const ZVBinTreeCell* cell1, const ZVBinTreeCell* cell2) const {
  return virtualObjectCompare(cell1->pObject(), cell2->pObject());
}

void ZVSortedBinTree::init() {}

void ZVSortedBinTree::ZVSortedBinTreedeepCopy(const ZVSortedBinTree& other) { ZVBinTree::copyObject(&other); }

void ZVSortedBinTree::ZVSortedBinTreeattributeCopy(const ZVSortedBinTree& other) {
  ZVBinTree::copyAttributes(&other);
}
