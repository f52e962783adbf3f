#include "utils/zvbheap.h"

#include <utility>

ZV_DEFINE_FULL(ZVBinHeap, ZVDList)

ZVBinHeapCell* ZVBinHeap::addObject(ZVObject* object, int32_t value) {
  return insertCell(new ZVBinHeapCell(object, value));
}

ZVBinHeapCell* ZVBinHeap::insertCell(ZVBinHeapCell* cell) {
  appendCell(cell);
  ZVBinHeapCell* parent = addChildrenPlace_;
  if (!parent) {
    pAddChildrenPlace(cell);
    return cell;
  }
  cell->pParent(parent);
  if (parent->pLeftChild()) {
    parent->pRightChild(cell);
    pAddChildrenPlace(ZVBinHeapCell::castDown(parent->pNextCell()));
  } else {
    parent->pLeftChild(cell);
  }
  bubbleUp(cell);
  return cell;
}

void ZVBinHeap::changeValue(ZVBinHeapCell* cell, int32_t value) {
  if (!cell) return;
  cell->value(value);
  heapify(cell);
  bubbleUp(cell);
}

ZVBinHeapCell* ZVBinHeap::pExtractMinCell() {
  ZVBinHeapCell* root = pFirstCell();
  ZVBinHeapCell* last = pLastCell();
  if (!root) return nullptr;
  if (root == last) return removeLastBinHeapCell();
  swapPosition(root, last);
  removeLastBinHeapCell();
  heapify(last);
  return root;
}

ZVBinHeapCell* ZVBinHeap::removeCell(ZVBinHeapCell* cell) {
  ZVBinHeapCell* last = pLastCell();
  if (cell == last) return removeLastBinHeapCell();
  swapPosition(cell, last);
  removeLastBinHeapCell();
  heapify(last);
  bubbleUp(last);
  return cell;
}

ZVBinHeapCell* ZVBinHeap::removeLastBinHeapCell() {
  ZVBinHeapCell* last = pLastCell();
  ZVBinHeapCell* parent = last->pParent();
  if (!parent) {
    pAddChildrenPlace(nullptr);
  } else if (parent->pRightChild() == last) {
    parent->pRightChild(nullptr);
    pAddChildrenPlace(parent);
  } else {
    parent->pLeftChild(nullptr);
  }
  last->pParent(nullptr);
  ZVDList::removeCell(last);
  return last;
}

void ZVBinHeap::discardCell(ZVBinHeapCell* cell) { delete removeCell(cell); }

void ZVBinHeap::deleteAllCells() {
  ZVDList::deleteAllCells();
  pAddChildrenPlace(nullptr);
}

void ZVBinHeap::deleteAllCellsAndObjects() {
  ZVDList::deleteAllCellsAndObjects();
  pAddChildrenPlace(nullptr);
}

void ZVBinHeap::copyAllCells(const ZVBinHeap* source) {
  deleteAllCells();
  if (!source) return;
  for (const ZVDListCell* cell = source->pFirstCell(); cell; cell = cell->pNextCell()) {
    addObject(cell->pObject(), ZVBinHeapCell::castDown(cell)->value());
  }
}

void ZVBinHeap::copyAllCellsAndObjects(const ZVBinHeap* source) {
  deleteAllCellsAndObjects();
  if (!source) return;
  for (const ZVDListCell* cell = source->pFirstCell(); cell; cell = cell->pNextCell()) {
    addObject(ZVObject::cloneObject(cell->pObject()), ZVBinHeapCell::castDown(cell)->value());
  }
}

int32_t ZVBinHeap::virtualCompare(ZVBinHeapCell* cell1, ZVBinHeapCell* cell2) {
  return (cell1->value() > cell2->value()) - (cell1->value() < cell2->value());
}

void ZVBinHeap::swapPosition(ZVBinHeapCell* cell1, ZVBinHeapCell* cell2) {
  if (cell1 == cell2) return;
  if (cell1->pParent() == cell2) std::swap(cell1, cell2);
  ZVDList::swapPosition(cell1, cell2);
  if (addChildrenPlace_ == cell1) {
    pAddChildrenPlace(cell2);
  } else if (addChildrenPlace_ == cell2) {
    pAddChildrenPlace(cell1);
  }
  ZVBinHeapCell::exchangeTreeLinks(cell1, cell2);
}

void ZVBinHeap::heapify(ZVBinHeapCell* cell) {
  while (true) {
    ZVBinHeapCell* smallest = cell;
    ZVBinHeapCell* left = cell->pLeftChild();
    ZVBinHeapCell* right = cell->pRightChild();
    if (left && virtualCompare(left, smallest) < 0) smallest = left;
    if (right && virtualCompare(right, smallest) < 0) smallest = right;
    if (smallest == cell) return;
    swapPosition(cell, smallest);
  }
}

void ZVBinHeap::bubbleUp(ZVBinHeapCell* cell) {
  while (cell->pParent() && virtualCompare(cell->pParent(), cell) > 0) swapPosition(cell->pParent(), cell);
}

void ZVBinHeap::recursiveDebugOutput(const ZVBinHeapCell*, int) const {}

void ZVBinHeap::init() { pAddChildrenPlace(nullptr); }

void ZVBinHeap::ZVBinHeapdeepCopy(const ZVBinHeap& other) {
  // The copy of a plain list would make plain cells.
  ZVObject::copyObject(&other);  // NOLINT(bugprone-parent-virtual-call)
  copyAllCellsAndObjects(&other);
}

void ZVBinHeap::ZVBinHeapattributeCopy(const ZVBinHeap& other) { ZVDList::copyAttributes(&other); }
