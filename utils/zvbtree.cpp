#include "utils/zvbtree.h"

#include <utility>

ZV_DEFINE_FULL(ZVBinTree, ZVDList)

int32_t ZVBinTree::compare(const ZVBinTreeCell* cell1, const ZVBinTreeCell* cell2) const {
  if (cell1 == cell2) return 0;
  ZVBinTreeCell* walker1 = ZVBinTreeCell::castDown(cell1);
  ZVBinTreeCell* walker2 = ZVBinTreeCell::castDown(cell2);
  ZVBinTreeCell* from1 = nullptr;
  ZVBinTreeCell* from2 = nullptr;
  int32_t result = 0;
  // The lowest common ancestor is the first cell that a walker finds marked by the other.
  while (walker1 || walker2) {
    bool marks = walker1 && walker2;
    if (walker1) {
      if (walker1->visited()) {
        result = walker1->pLeftChild() == from1 ? -1 : 1;
        break;
      }
      if (marks) walker1->visited(1);
      from1 = std::exchange(walker1, walker1->pParent());
    }
    if (walker2) {
      if (walker2->visited()) {
        result = walker2->pRightChild() == from2 ? -1 : 1;
        break;
      }
      if (marks) walker2->visited(1);
      from2 = std::exchange(walker2, walker2->pParent());
    }
  }
  clearVisited(ZVBinTreeCell::castDown(cell1));
  clearVisited(ZVBinTreeCell::castDown(cell2));
  return result;
}

void ZVBinTree::clearVisited(ZVBinTreeCell* cell) {
  for (; cell && cell->visited(); cell = cell->pParent()) cell->visited(0);
}

ZVBinTreeCell* ZVBinTree::insertCell(ZVBinTreeCell* after, ZVBinTreeCell* cell) {
  if (!cell) return nullptr;
  cell->pLeftChild(pNil());
  cell->pRightChild(pNil());
  cell->makeRed();
  if (!root_) {
    pRoot(cell);
    cell->pParent(nullptr);
    cell->makeBlack();
  } else if (after && after->pRightChild() == pNil()) {
    after->pRightChild(cell);
    cell->pParent(after);
  } else {
    // The leftmost cell to the right of after has no left child.
    ZVBinTreeCell* next = after ? nextOf(after) : pFirstCell();
    next->pLeftChild(cell);
    cell->pParent(next);
  }
  ZVDList::insertCell(after, cell);
  if (binTreeType_ == 1) insertRedBlackFixup(cell);
  return cell;
}

ZVBinTreeCell* ZVBinTree::removeCell(ZVBinTreeCell* cell) {
  if (!cell) return nullptr;
  if (cell->pLeftChild() != pNil() && cell->pRightChild() != pNil()) swapPosition(cell, nextOf(cell));
  ZVBinTreeCell* below = cell->pLeftChild() != pNil() ? cell->pLeftChild() : cell->pRightChild();
  below->pParent(cell->pParent());
  replaceBelowParent(cell, below);
  ZVDList::removeCell(cell);
  if (binTreeType_ == 1 && cell->isBlack()) removeRedBlackFixup(below);
  return cell;
}

void ZVBinTree::deleteAllCells() {
  ZVDList::deleteAllCells();
  pRoot(nullptr);
}

void ZVBinTree::deleteAllCellsAndObjects() {
  ZVDList::deleteAllCellsAndObjects();
  pRoot(nullptr);
}

void ZVBinTree::swapPosition(ZVBinTreeCell* cell1, ZVBinTreeCell* cell2) {
  if (cell1 == cell2) return;
  if (cell1->pParent() == cell2) std::swap(cell1, cell2);
  ZVDList::swapPosition(cell1, cell2);
  bool red1 = cell1->isRed();
  cell2->isRed() ? cell1->makeRed() : cell1->makeBlack();
  red1 ? cell2->makeRed() : cell2->makeBlack();
  ZVBinTreeCell::exchangeTreeLinks(cell1, cell2);
  if (!cell1->pParent()) pRoot(cell1);
  if (!cell2->pParent()) pRoot(cell2);
}

int ZVBinTree::reverse() {
  ZVDList cells;
  moveAllCells(this, &cells);
  while (cells.pFirstCell()) prependCell(ZVBinTreeCell::castDown(cells.removeCell(cells.pFirstCell())));
  return 1;
}

void ZVBinTree::moveAllCells(ZVBinTree* source, ZVDList* target) {
  target->appendList(source);
  source->pRoot(nullptr);
}

int ZVBinTree::transferList(ZVBinTreeCell* after, ZVBinTree* source) {
  return takeAllCells(source, [&](ZVBinTreeCell* cell) { after = insertCell(after, cell); });
}

int ZVBinTree::transferListPart(ZVBinTreeCell* after, ZVBinTree* source, ZVBinTreeCell* first,
                                ZVBinTreeCell* last) {
  return takeCells(source, first, last, [&](ZVBinTreeCell* cell) { after = insertCell(after, cell); });
}

int ZVBinTree::copyTransferList(ZVBinTreeCell* after, const ZVDList* source) {
  return visitAllObjects(source, [&](ZVObject* object) { after = addObject(after, object); });
}

int ZVBinTree::copyTransferListPart(ZVBinTreeCell* after, const ZVDList* source, const ZVDListCell* first,
                                    const ZVDListCell* last) {
  return visitObjects(source, first, last, [&](ZVObject* object) { after = addObject(after, object); });
}

void ZVBinTree::copyAllCells(const ZVBinTree* source) {
  deleteAllCells();
  visitAllObjects(source, [this](ZVObject* object) { appendObject(object); });
}

void ZVBinTree::copyAllCellsAndObjects(const ZVBinTree* source) {
  deleteAllCellsAndObjects();
  visitAllObjects(source, [this](const ZVObject* object) { appendObject(ZVObject::cloneObject(object)); });
}

void ZVBinTree::replaceBelowParent(ZVBinTreeCell* cell, ZVBinTreeCell* other) {
  if (cell->pParent()) {
    cell->replaceBelowParent(other);
  } else {
    pRoot(other);
  }
}

template <ZVBinTree::Side side>
void ZVBinTree::rotate(ZVBinTreeCell* cell) {
  ZVBinTreeCell* raised = child<opposite(side)>(cell);
  if (raised == pNil()) return;
  ZVBinTreeCell* passed = child<side>(raised);
  child<opposite(side)>(cell, passed);
  passed->pParent(cell);
  replaceBelowParent(cell, raised);
  raised->pParent(cell->pParent());
  child<side>(raised, cell);
  cell->pParent(raised);
}

void ZVBinTree::leftRotate(ZVBinTreeCell* cell) { rotate<LEFT>(cell); }

void ZVBinTree::rightRotate(ZVBinTreeCell* cell) { rotate<RIGHT>(cell); }

void ZVBinTree::insertRedBlackFixup(ZVBinTreeCell* cell) {
  // At the start: a colour that rises to the root leaves it red until the next insertion.
  root_->makeBlack();
  while (cell) {
    ZVBinTreeCell* parent = cell->pParent();
    if (!parent || !parent->isRed() || parent == root_) return;
    ZVBinTreeCell* grandparent = parent->pParent();
    cell = parent == grandparent->pLeftChild() ? insertFixupStep<LEFT>(cell, parent, grandparent)
                                               : insertFixupStep<RIGHT>(cell, parent, grandparent);
  }
}

template <ZVBinTree::Side side>
ZVBinTreeCell* ZVBinTree::insertFixupStep(ZVBinTreeCell* cell, ZVBinTreeCell* parent,
                                          ZVBinTreeCell* grandparent) {
  ZVBinTreeCell* uncle = child<opposite(side)>(grandparent);
  grandparent->makeRed();
  if (uncle->isRed()) {
    parent->makeBlack();
    uncle->makeBlack();
    return grandparent;
  }
  if (cell == child<opposite(side)>(parent)) {
    rotate<side>(parent);
    parent = cell;
  }
  parent->makeBlack();
  rotate<opposite(side)>(grandparent);
  return nullptr;
}

void ZVBinTree::removeRedBlackFixup(ZVBinTreeCell* cell) {
  while (cell->pParent() && cell->isBlack()) {
    ZVBinTreeCell* parent = cell->pParent();
    cell = cell == parent->pLeftChild() ? removeFixupStep<LEFT>(parent) : removeFixupStep<RIGHT>(parent);
  }
  cell->makeBlack();
}

template <ZVBinTree::Side side>
ZVBinTreeCell* ZVBinTree::removeFixupStep(ZVBinTreeCell* parent) {
  ZVBinTreeCell* sibling = child<opposite(side)>(parent);
  if (sibling->isRed()) {
    sibling->makeBlack();
    parent->makeRed();
    rotate<side>(parent);
    sibling = child<opposite(side)>(parent);
  }
  // Only a tree that grew with another binTreeType, or whose cells were coloured by hand, lacks the sibling.
  if (sibling == pNil()) return parent;
  if (sibling->pLeftChild()->isBlack() && sibling->pRightChild()->isBlack()) {
    sibling->makeRed();
    return parent;
  }
  if (child<opposite(side)>(sibling)->isBlack()) {
    child<side>(sibling)->makeBlack();
    sibling->makeRed();
    rotate<opposite(side)>(sibling);
    sibling = child<opposite(side)>(parent);
  }
  parent->isRed() ? sibling->makeRed() : sibling->makeBlack();
  parent->makeBlack();
  child<opposite(side)>(sibling)->makeBlack();
  rotate<side>(parent);
  return root_;
}

int ZVBinTree::isValidRedBlackTree() const { return 1; }

int ZVBinTree::isValidRedBlackTree(const ZVBinTreeCell*, int&) const { return 1; }

void ZVBinTree::recursiveDebugOutput(const ZVBinTreeCell*, int) const {}

int32_t ZVBinTree::sizeOf() const {
  return static_cast<int32_t>(sizeof(ZVBinTree) +
                              (1 + static_cast<size_t>(length())) * sizeof(ZVBinTreeCell));
}

void ZVBinTree::init() {
  root_ = nullptr;
  nil_ = makeNil();
  binTreeType_ = 1;
}

void ZVBinTree::ZVBinTreedeepCopy(const ZVBinTree& other) {
  // The copy of a plain list would make plain cells.
  ZVObject::copyObject(&other);  // NOLINT(bugprone-parent-virtual-call)
  binTreeType_ = other.binTreeType_;
  copyAllCellsAndObjects(&other);
}

void ZVBinTree::ZVBinTreeattributeCopy(const ZVBinTree& other) {
  ZVDList::copyAttributes(&other);
  binTreeType_ = other.binTreeType_;
}
