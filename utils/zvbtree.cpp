#include "utils/zvbtree.h"

#include <utility>

ZV_DEFINE_FULL(ZVBinTree, ZVDList)

int32_t ZVBinTree::compare(const ZVBinTreeCell* cell1, const ZVBinTreeCell* cell2) const {
  if (cell1 == cell2) return 0;
  ZVBinTreeCell* walker1 = ZVBinTreeCell::castDown(cell1);
  ZVBinTreeCell* walker2 = ZVBinTreeCell::castDown(cell2);
  ZVBinTreeCell* from1 = nullptr;
  ZVBinTreeCell* from2 = nullptr;
  // The lowest common ancestor is the first cell that a walker finds marked by the other.
  while (walker1 && walker2 && !walker1->visited()) {
    walker1->visited(1);
    from1 = std::exchange(walker1, walker1->pParent());
    if (walker2->visited()) break;
    walker2->visited(1);
    from2 = std::exchange(walker2, walker2->pParent());
  }
  // Where one has run off the root, the other goes on alone, without marking.
  while (walker1 && !walker2 && !walker1->visited()) from1 = std::exchange(walker1, walker1->pParent());
  while (walker2 && !walker1 && !walker2->visited()) from2 = std::exchange(walker2, walker2->pParent());
  // No more than one of them stands on a marked cell.
  int32_t result = 0;
  if (walker1 && walker1->visited()) {
    result = walker1->pLeftChild() == from1 ? -1 : 1;
  } else if (walker2 && walker2->visited()) {
    result = walker2->pRightChild() == from2 ? -1 : 1;
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
  ZVDList::removeCell(cell);
  if (cell->pLeftChild() != pNil() && cell->pRightChild() != pNil()) {
    // What swapPosition of the cell and its successor would leave, the list links of the cell included.
    ZVBinTreeCell* successor = nextOf(cell);
    exchangeInTree(cell, successor);
    cell->pPrevDListCell(successor);
    cell->pNextDListCell(successor->pNextCell());
  }
  ZVBinTreeCell* below = cell->pLeftChild() != pNil() ? cell->pLeftChild() : cell->pRightChild();
  below->pParent(cell->pParent());
  replaceBelowParent(cell, below);
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
  exchangeInTree(cell1, cell2);
}

void ZVBinTree::exchangeInTree(ZVBinTreeCell* cell1, ZVBinTreeCell* cell2) {
  const bool red1 = cell1->isRed();
  cell2->isRed() ? cell1->makeRed() : cell1->makeBlack();
  red1 ? cell2->makeRed() : cell2->makeBlack();

  ZVBinTreeCell* parent1 = cell1->pParent();
  ZVBinTreeCell* parent2 = cell2->pParent();
  const Side side1 = cell1->side();
  const Side side2 = cell2->side();
  ZVBinTreeCell* left = cell1->pLeftChild();
  ZVBinTreeCell* right = cell1->pRightChild();
  if (parent2 == cell1) {
    parent2 = cell2;
    (side2 == ZVBinTreeCell::LEFT ? left : right) = cell1;
  }
  cell1->adopt(ZVBinTreeCell::LEFT, cell2->pLeftChild());
  cell1->adopt(ZVBinTreeCell::RIGHT, cell2->pRightChild());
  cell2->adopt(ZVBinTreeCell::LEFT, left);
  cell2->adopt(ZVBinTreeCell::RIGHT, right);
  cell1->pParent(parent2);
  cell2->pParent(parent1);
  parent1 ? parent1->child(side1, cell2) : pRoot(cell2);
  parent2 ? parent2->child(side2, cell1) : pRoot(cell1);
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

void ZVBinTree::rotate(ZVBinTreeCell* cell, Side side) {
  const Side other = ZVBinTreeCell::opposite(side);
  ZVBinTreeCell* raised = cell->child(other);
  if (raised == pNil()) return;
  cell->adopt(other, raised->child(side));
  replaceBelowParent(cell, raised);
  raised->pParent(cell->pParent());
  raised->adopt(side, cell);
}

void ZVBinTree::leftRotate(ZVBinTreeCell* cell) { rotate(cell, ZVBinTreeCell::LEFT); }

void ZVBinTree::rightRotate(ZVBinTreeCell* cell) { rotate(cell, ZVBinTreeCell::RIGHT); }

void ZVBinTree::insertRedBlackFixup(ZVBinTreeCell* cell) {
  // At the start: a red that rises to the root stays there until the next insertion.
  root_->makeBlack();
  while (cell) {
    ZVBinTreeCell* parent = cell->pParent();
    if (!parent || !parent->isRed() || parent == root_) return;
    cell = insertFixupStep(cell, parent, parent->pParent());
  }
}

ZVBinTreeCell* ZVBinTree::insertFixupStep(ZVBinTreeCell* cell, ZVBinTreeCell* parent,
                                          ZVBinTreeCell* grandparent) {
  const Side side = grandparent->pLeftChild() == parent ? ZVBinTreeCell::LEFT : ZVBinTreeCell::RIGHT;
  const Side other = ZVBinTreeCell::opposite(side);
  ZVBinTreeCell* uncle = grandparent->child(other);
  grandparent->makeRed();
  if (uncle->isRed()) {
    parent->makeBlack();
    uncle->makeBlack();
    return grandparent;
  }
  if (cell == parent->child(other)) {
    rotate(parent, side);
    parent = cell;
  }
  parent->makeBlack();
  rotate(grandparent, other);
  return nullptr;
}

void ZVBinTree::removeRedBlackFixup(ZVBinTreeCell* cell) {
  while (cell->pParent() && cell->isBlack()) {
    ZVBinTreeCell* parent = cell->pParent();
    cell = removeFixupStep(parent, cell == parent->pLeftChild() ? ZVBinTreeCell::LEFT : ZVBinTreeCell::RIGHT);
  }
  cell->makeBlack();
}

ZVBinTreeCell* ZVBinTree::removeFixupStep(ZVBinTreeCell* parent, Side side) {
  const Side other = ZVBinTreeCell::opposite(side);
  ZVBinTreeCell* sibling = parent->child(other);
  if (sibling->isRed()) {
    sibling->makeBlack();
    parent->makeRed();
    rotate(parent, side);
    sibling = parent->child(other);
  }
  // Only a tree that grew with another binTreeType, or whose cells were coloured by hand, lacks the sibling.
  if (sibling == pNil()) return parent;
  if (sibling->pLeftChild()->isBlack() && sibling->pRightChild()->isBlack()) {
    sibling->makeRed();
    return parent;
  }
  if (sibling->child(other)->isBlack()) {
    sibling->child(side)->makeBlack();
    sibling->makeRed();
    rotate(sibling, other);
    sibling = parent->child(other);
  }
  parent->isRed() ? sibling->makeRed() : sibling->makeBlack();
  parent->makeBlack();
  sibling->child(other)->makeBlack();
  rotate(parent, side);
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
