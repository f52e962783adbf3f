// A cell of a tree: a list cell with the links of the tree and a colour.
//
// The cell keeps its address and its object whatever happens to the tree around it. A cell that was taken out
// keeps its links until it is inserted again.
#ifndef ZV_ZVBTREEC_H
#define ZV_ZVBTREEC_H

#include "utils/zvbcell.h"

class ZVBinTreeCell;

using ZVBinTreeCellBase = ZVBinCellBase<ZVBinTreeCell>;

class ZV_EXPORT ZVBinTreeCell : public ZVBinTreeCellBase {
 public:
  // Colour 1 is red, 2 is black, any other is none. A tree colours its cells itself.
  ZVBinTreeCell(ZVObject* object = nullptr, int colour = 0) : ZVBinTreeCellBase(object) {
    if (colour == 1) makeRed();
    if (colour == 2) makeBlack();
  }

  // The bytes of the cell alone.
  int32_t sizeOf() const override;

 protected:
  // A mark of ZVBinTree::compare, clear outside of it.
  int visited() const { return (flags_ & VISITED) != 0; }
  // Gives the mark set.
  int visited(int flag) {
    flags_ = static_cast<uint8_t>(flag ? flags_ | VISITED : flags_ & ~VISITED);
    return visited();
  }

  // As for ZVDListCell, and the flags are copied.
  ZV_SHAPE_FULL(ZVBinTreeCell)
  friend class ZVBinTree;
  friend ZVBinTreeCellBase;

  enum Flags : uint8_t { VISITED = 1, RED = 2, BLACK = 4 };

  int isRed() const { return (flags_ & RED) != 0; }
  int isBlack() const { return (flags_ & BLACK) != 0; }
  int isUncolored() const { return !isRed() && !isBlack(); }
  void makeRed() { flags_ = static_cast<uint8_t>((flags_ & VISITED) | RED); }
  void makeBlack() { flags_ = static_cast<uint8_t>((flags_ & VISITED) | BLACK); }

  uint8_t flags_ = 0;
};

#endif
