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

  Cell* pLeftChild() const { return children_[LEFT]; }
  Cell* pRightChild() const { return children_[RIGHT]; }
  // Null at the root.
  Cell* pParent() const { return parent_; }

 protected:
  enum Side : unsigned { LEFT, RIGHT };
  static constexpr Side opposite(Side side) { return side == LEFT ? RIGHT : LEFT; }

  explicit ZVBinCellBase(ZVObject* object = nullptr) : ZVDListCell(object) {}

  Cell* child(Side side) const { return children_[side]; }
  Cell* child(Side side, Cell* cell) { return children_[side] = cell; }
  Cell* pLeftChild(Cell* cell) { return children_[LEFT] = cell; }
  Cell* pRightChild(Cell* cell) { return children_[RIGHT] = cell; }
  Cell* pParent(Cell* cell) { return parent_ = cell; }
  void clearTreeLinks() { children_[LEFT] = children_[RIGHT] = parent_ = nullptr; }

  // The side on which this cell hangs; a root counts as hanging on the left.
  Side side() const { return parent_ ? parent_->sideOf(this) : LEFT; }
  Side sideOf(const ZVBinCellBase* childCell) const { return children_[RIGHT] == childCell ? RIGHT : LEFT; }

  // Makes cell, which may be null, the child on that side.
  void adopt(Side side, Cell* cell) {
    children_[side] = cell;
    if (cell) cell->pParent(static_cast<Cell*>(this));
  }
  // Enters cell, or null, where this cell hangs. REQUIRES: there is a parent.
  void replaceBelowParent(Cell* cell) { parent_->children_[side()] = cell; }

 private:
  Cell* children_[2] = {nullptr, nullptr};
  Cell* parent_ = nullptr;
};

#endif
