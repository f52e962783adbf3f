// What the cells of heaps and trees share: the links of a binary tree beside those of the list. A caller uses
// ZVBinHeapCell or ZVBinTreeCell.
//
// Cell is the class itself. Only the container writes links; no copy touches them.
#ifndef ZV_ZVBCELL_H
#define ZV_ZVBCELL_H

#include "utils/zvdlistc.h"

template <class Cell>
class ZVBinCellBase : public ZVDListCell {
 public:
  ZVBinCellBase(const ZVBinCellBase&) = delete;
  ZVBinCellBase& operator=(const ZVBinCellBase&) = delete;

  Cell* pLeftChild() const { return leftChild_; }
  Cell* pRightChild() const { return rightChild_; }
  // Null at the root.
  Cell* pParent() const { return parent_; }

 protected:
  explicit ZVBinCellBase(ZVObject* object = nullptr) : ZVDListCell(object) {}

  Cell* pLeftChild(Cell* cell) { return leftChild_ = cell; }
  Cell* pRightChild(Cell* cell) { return rightChild_ = cell; }
  Cell* pParent(Cell* cell) { return parent_ = cell; }
  void clearTreeLinks() { leftChild_ = rightChild_ = parent_ = nullptr; }

  // Makes these the children, either of which may be null.
  void adopt(Cell* leftChild, Cell* rightChild);
  // Enters other, or null, where this cell hangs below its parent. REQUIRES: there is a parent.
  void replaceBelowParent(Cell* other) {
    (parent_->leftChild_ == this ? parent_->leftChild_ : parent_->rightChild_) = other;
  }
  // Exchanges the places of two different cells in the tree; where a root changes, the container has to learn
  // of it. REQUIRES: cell2 is not the parent of cell1.
  static void exchangeTreeLinks(Cell* cell1, Cell* cell2);

 private:
  bool isRightChild() const { return parent_ && parent_->rightChild_ == this; }

  Cell* leftChild_ = nullptr;
  Cell* rightChild_ = nullptr;
  Cell* parent_ = nullptr;
};

template <class Cell>
void ZVBinCellBase<Cell>::adopt(Cell* leftChild, Cell* rightChild) {
  leftChild_ = leftChild;
  rightChild_ = rightChild;
  if (leftChild) leftChild->pParent(static_cast<Cell*>(this));
  if (rightChild) rightChild->pParent(static_cast<Cell*>(this));
}

template <class Cell>
void ZVBinCellBase<Cell>::exchangeTreeLinks(Cell* cell1, Cell* cell2) {
  Cell* parent1 = cell1->parent_;
  Cell* parent2 = cell2->parent_;
  bool right1 = cell1->isRightChild();
  bool right2 = cell2->isRightChild();
  Cell* left = cell1->leftChild_;
  Cell* right = cell1->rightChild_;
  if (parent2 == cell1) {
    parent2 = cell2;
    (right2 ? right : left) = cell1;
  }
  cell1->adopt(cell2->leftChild_, cell2->rightChild_);
  cell2->adopt(left, right);
  cell1->parent_ = parent2;
  cell2->parent_ = parent1;
  if (parent1) (right1 ? parent1->rightChild_ : parent1->leftChild_) = cell2;
  if (parent2) (right2 ? parent2->rightChild_ : parent2->leftChild_) = cell1;
}

#endif
