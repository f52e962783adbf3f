// The inside of the trees, and what must hold in it.
#ifndef ZV_TESTS_TREEWALK_H
#define ZV_TESTS_TREEWALK_H

#include <algorithm>
#include <utility>
#include <vector>

#include "utils/zvbtree.h"

// The colours of a cell are private to the tree family; this opens one of them to the walk below.
template <auto member>
struct OpenedColour {
  friend int isRed(const ZVBinTreeCell* cell) { return (cell->*member)(); }
};
int isRed(const ZVBinTreeCell* cell);
template struct OpenedColour<&ZVBinTreeCell::isRed>;

struct Marked : ZVBinTreeCell {
  static int isMarked(const ZVBinTreeCell* cell) {
    int (ZVBinTreeCell::*read)() const = &Marked::visited;
    return (cell->*read)();
  }
};

// Whether a list holds exactly these cells. It gives the fault, or null.
template <class Cell>
const char* threadFault(const ZVDList& list, const std::vector<Cell*>& cells) {
  const ZVDListCell* previous = nullptr;
  const ZVDListCell* here = list.pFirstDListCell();
  for (const Cell* cell : cells) {
    if (here != cell) return "another cell stands here";
    if (here->pPreviousCell() != previous) return "a backward link is wrong";
    previous = std::exchange(here, here->pNextCell());
  }
  if (here) return "the list goes on";
  if (list.pLastDListCell() != previous) return "the last cell is wrong";
  return list.length() == static_cast<int32_t>(cells.size()) ? nullptr : "the length is wrong";
}

// Walks a tree in order and collects its cells.
struct TreeWalk {
  explicit TreeWalk(const ZVBinTree& tree) : nil(tree.pNil()), balanced(tree.binTreeType() == 1) {
    const ZVBinTreeCell* root = tree.pRoot();
    if (root == nil) fault = "the root is the nil cell";
    if (nil->pLeftChild() || nil->pRightChild() || isRed(nil)) fault = "the nil cell has changed";
    if (root && root->pParent()) fault = "the root has a parent";
    if (root) visit(root);
    if (!fault) fault = threadFault(tree, cells);
  }

  // Gives the number of black cells on each way down.
  int visit(const ZVBinTreeCell* cell) {
    if (cell == nil) return 1;
    deepest = std::max(deepest, ++depth);
    for (const ZVBinTreeCell* child : {cell->pLeftChild(), cell->pRightChild()}) {
      if (child == nil) continue;
      if (child->pParent() != cell) fault = "a parent is wrong";
      if (balanced && isRed(cell) && isRed(child)) fault = "a red cell has a red child";
    }
    if (Marked::isMarked(cell)) fault = "a mark was left";
    int left = visit(cell->pLeftChild());
    cells.push_back(cell);
    int right = visit(cell->pRightChild());
    if (balanced && left != right) fault = "the black cells differ";
    --depth;
    return left + !isRed(cell);
  }

  const ZVBinTreeCell* nil;
  bool balanced;
  const char* fault = nullptr;
  std::vector<const ZVBinTreeCell*> cells;
  int depth = 0;
  int deepest = 0;
};

#endif
