#include "utils/zvbheap.h"

#include <limits>

#include "utils/zvfetch.h"

ZV_DEFINE_FULL(ZVBinHeap, ZVDList)

namespace {

// From this length on the cells overflow the near caches, and are asked for before they are needed.
constexpr int32_t FAR_LENGTH = 4096;

void fetch(const ZVBinHeapCell* cell) {
  if (!cell) return;
  zvPrefetch(cell);
  zvPrefetch(reinterpret_cast<const char*>(cell + 1) - 1);
}

void fetchChildren(const ZVBinHeapCell* cell) {
  if (!cell) return;
  fetch(cell->pLeftChild());
  fetch(cell->pRightChild());
}

}  // namespace

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
  if (length() >= FAR_LENGTH) {
    fetch(cell->pParent());
    fetchChildren(cell);
  }
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
  if (cell1->value() < cell2->value()) return -1;
  return cell1->value() > cell2->value();
}

void ZVBinHeap::swapPosition(ZVBinHeapCell* cell1, ZVBinHeapCell* cell2) {
  if (cell1 == cell2) return;
  ZVBinHeapCell* const attachment = addChildrenPlace_;
  Place place1 = placeOf(cell1);
  Place place2 = placeOf(cell2);
  place1.replace(cell2, cell1);
  place2.replace(cell1, cell2);
  occupy(place2, cell1);
  occupy(place1, cell2);
  if (attachment == cell1) pAddChildrenPlace(cell2);
  if (attachment == cell2) pAddChildrenPlace(cell1);
}

// The comparison has to find a whole heap. So the way is found first, and then its cells take the free place
// above them one by one, and cell takes the last one. On a way only the root and its left child are
// neighbours in the list.
void ZVBinHeap::heapify(ZVBinHeapCell* cell) {
  const bool isFar = length() >= FAR_LENGTH;
  ZVBinHeapCell* way[std::numeric_limits<int32_t>::digits];
  int steps = 0;
  for (ZVBinHeapCell* here = cell;;) {
    ZVBinHeapCell* left = here->pLeftChild();
    ZVBinHeapCell* right = here->pRightChild();
    if (isFar) {
      fetchChildren(left);
      fetchChildren(right);
    }
    ZVBinHeapCell* smallest = cell;
    if (left && virtualCompare(left, smallest) < 0) smallest = left;
    if (right && virtualCompare(right, smallest) < 0) smallest = right;
    if (smallest == cell) break;
    way[steps++] = here = smallest;
  }
  if (steps == 0) return;

  ZVBinHeapCell* const attachment = addChildrenPlace_;
  ZVBinHeapCell* leaver = cell;
  Place free = placeOf(cell);
  for (int step = 0; step < steps; ++step) {
    ZVBinHeapCell* riser = way[step];
    Place below = placeOf(riser);
    below.parent = riser;
    below.side = riser == free.right ? ZVBinHeapCell::RIGHT : ZVBinHeapCell::LEFT;
    if (free.next == riser) {
      free.next = cell;
      below.previous = riser;
    }
    hang(free, riser);
    riser->adopt(ZVBinHeapCell::opposite(below.side), riser == free.right ? free.left : free.right);
    if (leaver == attachment) pAddChildrenPlace(riser);
    leaver = riser;
    free = below;
  }
  occupy(free, cell);
  if (leaver == attachment) pAddChildrenPlace(cell);
}

// Most cells rise by a step or two: looking for the way first would cost more than it saves.
void ZVBinHeap::bubbleUp(ZVBinHeapCell* cell) {
  while (cell->pParent() && virtualCompare(cell->pParent(), cell) > 0) swapPosition(cell->pParent(), cell);
}

ZVBinHeap::Place ZVBinHeap::placeOf(const ZVBinHeapCell* cell) {
  return {cell->pPreviousCell(), cell->pNextCell(),   cell->pParent(),
          cell->pLeftChild(),    cell->pRightChild(), cell->side()};
}

void ZVBinHeap::Place::replace(const ZVBinHeapCell* cell, ZVBinHeapCell* other) {
  if (previous == cell) previous = other;
  if (next == cell) next = other;
  if (parent == cell) parent = other;
  if (left == cell) left = other;
  if (right == cell) right = other;
}

void ZVBinHeap::hang(const Place& place, ZVBinHeapCell* cell) {
  join(place.previous, cell);
  join(cell, place.next);
  cell->pParent(place.parent);
  if (place.parent) place.parent->child(place.side, cell);
}

void ZVBinHeap::occupy(const Place& place, ZVBinHeapCell* cell) {
  hang(place, cell);
  cell->adopt(ZVBinHeapCell::LEFT, place.left);
  cell->adopt(ZVBinHeapCell::RIGHT, place.right);
}

void ZVBinHeap::recursiveDebugOutput(const ZVBinHeapCell*, int) const {}

void ZVBinHeap::init() { pAddChildrenPlace(nullptr); }

void ZVBinHeap::ZVBinHeapdeepCopy(const ZVBinHeap& other) {
  // The copy of a plain list would make plain cells.
  ZVObject::copyObject(&other);  // NOLINT(bugprone-parent-virtual-call)
  copyAllCellsAndObjects(&other);
}

void ZVBinHeap::ZVBinHeapattributeCopy(const ZVBinHeap& other) { ZVDList::copyAttributes(&other); }
