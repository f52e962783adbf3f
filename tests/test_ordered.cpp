#include <gtest/gtest.h>

#include <iterator>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/treewalk.h"
#include "utils/zvbheap.h"
#include "utils/zvdlisti.h"
#include "utils/zvssbtre.h"
#include "utils/zvsweep.h"
#include "utils/zvvalue.h"

namespace {

// An object that counts how many of its kind live.
struct Counted : ZVObject {
  explicit Counted(int* counter) : live(counter) { ++*live; }
  ~Counted() override { --*live; }
  ZVObject* vCloneObject() const override { return new Counted(live); }
  int* live;
};

// Whether a heap holds exactly these cells, and its tree has them in level order. It gives the fault, or
// null.
const char* levelOrderFault(const ZVBinHeap& heap, const std::vector<ZVBinHeapCell*>& cells) {
  if (const char* text = threadFault(heap, cells)) return text;
  auto cellAt = [&](size_t i) { return i < cells.size() ? cells[i] : nullptr; };
  for (size_t i = 0; i < cells.size(); ++i) {
    if (cells[i]->pParent() != (i == 0 ? nullptr : cells[(i - 1) / 2])) return "a parent is wrong";
    if (cells[i]->pLeftChild() != cellAt(2 * i + 1)) return "a left child is wrong";
    if (cells[i]->pRightChild() != cellAt(2 * i + 2)) return "a right child is wrong";
  }
  return nullptr;
}

// Whoever compares its cells finds a whole heap, even between two steps of a cell that rises or sinks.
struct MaxHeap : ZVBinHeap {
  int32_t virtualCompare(ZVBinHeapCell* cell1, ZVBinHeapCell* cell2) override {
    std::vector<ZVBinHeapCell*> cells;
    for (auto* cell = pFirstDListCell(); cell && cells.size() < 99; cell = cell->pNextCell()) {
      cells.push_back(ZVBinHeapCell::castDown(cell));
    }
    if (!testing::Test::HasFailure()) {
      EXPECT_STREQ(levelOrderFault(*this, cells), nullptr);
    }
    return ZVBinHeap::virtualCompare(cell2, cell1);
  }
};

// A heap beside an array heap with the same ties, whose cells stand in the heap's level order.
template <class Heap>
class HeapModel {
 public:
  HeapModel(unsigned seed, size_t limit) : random_(seed), limit_(limit) {}

  void run(int steps) {
    for (int step = 0; step < steps; ++step) {
      change();
      ASSERT_STREQ(fault(), nullptr) << "step " << step;
      ASSERT_EQ(heap_.pMinCell(), cells_.empty() ? nullptr : cells_[0]);
    }
    while (!cells_.empty()) removeAs(&ZVBinHeap::pExtractMinCell, 0);
    ASSERT_EQ(heap_.pExtractMinCell(), nullptr);
  }

 private:
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  size_t index(size_t size) { return random_() % size; }
  // Few values, so that many tie, and the extremes.
  int32_t anyValue() {
    static constexpr int32_t VALUES[] = {std::numeric_limits<int32_t>::min(), -2, 0, 1, 2, 3, 5,
                                         std::numeric_limits<int32_t>::max()};
    return VALUES[index(std::size(VALUES))];
  }
  bool before(const ZVBinHeapCell* cell1, const ZVBinHeapCell* cell2) const {
    return std::is_same_v<Heap, MaxHeap> ? cell1->value() > cell2->value() : cell1->value() < cell2->value();
  }

  void rise(size_t i) {
    for (; i > 0 && before(cells_[i], cells_[(i - 1) / 2]); i = (i - 1) / 2) {
      std::swap(cells_[i], cells_[(i - 1) / 2]);
    }
  }
  void sink(size_t i) {
    while (true) {
      size_t smallest = i;
      for (size_t child : {2 * i + 1, 2 * i + 2}) {
        if (child < cells_.size() && before(cells_[child], cells_[smallest])) smallest = child;
      }
      if (smallest == i) return;
      std::swap(cells_[i], cells_[smallest]);
      i = smallest;
    }
  }

  void change() {
    int kind = cells_.empty() || (cells_.size() < limit_ && below(9) == 0) ? 0 : below(10);
    if (kind == 0 || (kind == 1 && cells_.size() < limit_)) {
      auto* cell = below(2) ? heap_.addObject(&object_, anyValue())
                            : heap_.insertCell(new ZVBinHeapCell(&object_, anyValue()));
      cells_.push_back(cell);
      return rise(cells_.size() - 1);
    }
    size_t i = index(cells_.size());
    switch (kind) {
      case 1:
        return removeAs(&ZVBinHeap::pExtractMinCell, 0);
      case 2:
        return removeAs(&ZVBinHeap::removeLastBinHeapCell, cells_.size() - 1);
      case 3:
        ASSERT_EQ(heap_.removeCell(cells_[i]), cells_[i]);
        // A removed cell can come back.
        if (below(2)) {
          ZVBinHeapCell* cell = cells_[i];
          removeFromModel(i);
          heap_.insertCell(cell);
          cells_.push_back(cell);
          return rise(cells_.size() - 1);
        }
        delete cells_[i];
        return removeFromModel(i);
      case 4:
        heap_.discardCell(cells_[i]);
        return removeFromModel(i);
      case 5:
        if (below(50) == 0) return copyThere();
        break;
      case 6:
        heap_.changeValue(nullptr, 5);
        break;
      default:
        break;
    }
    heap_.changeValue(cells_[i], anyValue());
    sink(i);
    rise(i);
  }

  void removeAs(ZVBinHeapCell* (ZVBinHeap::*remove)(), size_t i) {
    ASSERT_EQ((heap_.*remove)(), cells_[i]);
    ASSERT_TRUE(!cells_[i]->pParent() && !cells_[i]->pLeftChild() && !cells_[i]->pRightChild());
    delete cells_[i];
    removeFromModel(i);
  }
  void removeFromModel(size_t i) {
    cells_[i] = cells_.back();
    cells_.pop_back();
    if (i == cells_.size()) return;
    sink(i);
    rise(i);
  }

  // The heap goes on as a copy of a copy of itself, whose cells stand and weigh as before.
  void copyThere() {
    std::vector<int32_t> values;
    for (const ZVBinHeapCell* cell : cells_) values.push_back(cell->value());
    Heap other;
    other.addObject(nullptr, 3);
    other.copyAllCells(&heap_);
    heap_.copyAllCells(&other);
    ASSERT_EQ(heap_.length(), static_cast<int32_t>(values.size()));
    ZVDListIter it(&heap_);
    for (size_t i = 0; i < values.size(); ++i, ++it) {
      cells_[i] = ZVBinHeapCell::castDown(it.pCell());
      ASSERT_EQ(cells_[i]->value(), values[i]);
    }
  }

  const char* fault() const {
    if (const char* text = levelOrderFault(heap_, cells_)) return text;
    for (size_t i = 0; i < cells_.size(); ++i) {
      if (i > 0 && before(cells_[i], cells_[(i - 1) / 2])) return "a cell comes before its parent";
      if (cells_[i]->pObject() != &object_) return "an object is lost";
    }
    return nullptr;
  }

  std::mt19937 random_;
  size_t limit_;
  mutable ZVObject object_;
  Heap heap_;
  std::vector<ZVBinHeapCell*> cells_;
};

TEST(BinHeap, StandsAsAnArrayHeapUnderRandomOperations) {
  for (unsigned seed = 1; seed <= 16; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    HeapModel<ZVBinHeap>(seed, 1 + 4 * seed).run(10000);
    HeapModel<MaxHeap>(seed, 2 * seed).run(5000);
    if (HasFatalFailure()) return;
  }
}

using Cell = ZVBinTreeCell;
// The numbers of the cells with their colours, children in brackets.
std::string shape(const ZVBinTree& tree, const Cell* cell) {
  if (cell == tree.pNil()) return "-";
  std::string text = std::to_string(ZVInt::castDown(cell->pObject())->value()) + (isRed(cell) ? "r" : "b");
  if (cell->pLeftChild() == tree.pNil() && cell->pRightChild() == tree.pNil()) return text;
  return text + "(" + shape(tree, cell->pLeftChild()) + " " + shape(tree, cell->pRightChild()) + ")";
}

TEST(BinTree, RecoloursAndRotatesInTheToldOrder) {
  ZVInt numbers[9];
  Cell* cells[9];
  ZVBinTree tree;
  // A red that rises to the root stays there until the next insertion.
  const char* const GROWN[] = {"1b",
                               "1b(- 2r)",
                               "2b(1r 3r)",
                               "2r(1b 3b(- 4r))",
                               "2b(1b 4b(3r 5r))",
                               "2b(1b 4r(3b 5b(- 6r)))",
                               "2b(1b 4r(3b 6b(5r 7r)))",
                               "4b(2r(1b 3b) 6r(5b 7b(- 8r)))"};
  for (int32_t i = 1; i <= 8; ++i) {
    numbers[i].value(i);
    cells[i] = tree.appendObject(&numbers[i]);
    EXPECT_EQ(shape(tree, tree.pRoot()), GROWN[i - 1]);
  }
  // The cell is exchanged with its successor: what it keeps points past that one.
  EXPECT_EQ(tree.removeCell(cells[4]), cells[4]);
  EXPECT_EQ(cells[4]->pPreviousCell(), cells[5]);
  EXPECT_EQ(cells[4]->pNextCell(), cells[6]);
  const char* const SHRUNK[] = {"5b(2r(1b 3b) 7r(6b 8b))", "5b(2b(- 3r) 7r(6b 8b))", "5b(3b 7r(6b 8b))",
                                "7b(5b(- 6r) 8b)"};
  for (int i = 0; i <= 3; ++i) {
    if (i > 0) tree.discardCell(cells[i]);
    EXPECT_EQ(shape(tree, tree.pRoot()), SHRUNK[i]);
  }
  // A cell with all its old links is the only one of an emptied tree.
  tree.deleteAllCells();
  EXPECT_EQ(tree.pRoot(), nullptr);
  tree.insertCell(nullptr, cells[4]);
  EXPECT_EQ(shape(tree, tree.pRoot()), "4b");
  EXPECT_EQ(tree.pRoot()->pParent(), nullptr);

  // Of two red children of the sibling the outer one decides.
  for (bool appends : {true, false}) {
    ZVBinTree five;
    for (int i = 1; i <= 5; ++i)
      appends ? five.appendObject(&numbers[i]) : five.prependObject(&numbers[6 - i]);
    five.discardCell(appends ? five.pFirstCell() : five.pLastCell());
    EXPECT_EQ(shape(five, five.pRoot()), appends ? "4b(2b(- 3r) 5b)" : "2b(1b 4b(3r -))");
  }
}

TEST(BinTree, StaysAListWhereColoursAndShapeDoNotFit) {
  for (int colour = 0; colour <= 2; ++colour) {
    ZVBinTree tree(0);
    for (int i = 1; i <= 20; ++i) tree.appendObject(nullptr);
    EXPECT_EQ(TreeWalk(tree).deepest, 20);
    // From now on it is told to be balanced.
    tree.copyAttributes(std::make_unique<ZVBinTree>().get());
    for (ZVDListIter it(&tree); it; ++it)
      it.pCell()->copyAttributes(std::make_unique<Cell>(nullptr, colour).get());
    for (int step = 0; tree.length() > 0; ++step) {
      tree.discardCell(tree.pCellInPosition((tree.length() + 1) / (1 + step % 3)));
      if (step % 4 == 0) tree.addObject(tree.pRoot(), nullptr);
      TreeWalk walk(tree);
      ASSERT_STREQ(threadFault(tree, walk.cells), nullptr);
    }
    EXPECT_EQ(tree.pRoot(), nullptr);
  }
}

struct NumberSweep : ZVSweep {
  int32_t startCoordinateOfSegment(const ZVObject*) override { return 0; }
  int32_t endCoordinateOfSegment(const ZVObject*) override { return 0; }
  int32_t otherStartCoordinateOfSegment(const ZVObject* segment) override {
    return ZVInt::castDown(segment)->value();
  }
};

TEST(SweepLine, CopiesAskTheSameSweep) {
  NumberSweep sweep;
  ZVInt first(1), second(2), absent(3);
  ZVSegSortedBinTree tree(&sweep);
  EXPECT_EQ(tree.pPreceedingSegment(&absent), nullptr);
  for (ZVInt* segment : {&second, &first}) tree.addObject(segment);
  std::unique_ptr<ZVSegSortedBinTree> copy(tree.cloneAttributes());
  EXPECT_EQ(copy->copyTransferList(&tree), 1);
  for (const ZVSegSortedBinTree* line : {&tree, copy.get()}) {
    EXPECT_EQ(line->pPreceedingSegment(&second), &first);
    EXPECT_EQ(line->pSucceedingSegment(&first), &second);
    EXPECT_EQ(line->pPreceedingSegment(&absent), nullptr);
    EXPECT_EQ(line->pSucceedingSegment(&absent), nullptr);
  }
  ZVSegSortedBinTree deep;
  deep = tree;
  deep.addObject(&absent);
  EXPECT_EQ(deep.pPreceedingSegment(&absent), deep.pObjectInPosition(2));
  delete deep.searchAndRemoveObject(&absent);
  deep.deleteAllCellsAndObjects();
}

// What deep and attribute copies of a container with four counted objects and a null do.
template <class Container>
void checkCopies(Container& source, Container& target, const int& live) {
  ASSERT_EQ(live, 5);
  target = source;
  EXPECT_EQ(live, 8);
  std::unique_ptr<Container> clone(source.cloneObject());
  std::unique_ptr<Container> empty(source.cloneAttributes());
  EXPECT_EQ(live, 12);
  EXPECT_EQ(empty->length(), 0);
  for (Container* copy : {&target, clone.get()}) {
    copy->copyObject(copy);
    copy->copyAttributes(&source);
    EXPECT_EQ(copy->length(), 5);
    EXPECT_EQ(copy->sizeOf(), source.sizeOf());
    EXPECT_EQ(copy->positionOfCell(copy->searchObject(nullptr)), 3);
    EXPECT_EQ(source.searchObject(copy->pObjectInPosition(1)), nullptr);
    copy->deleteAllCellsAndObjects();
  }
  EXPECT_EQ(live, 4);
  source.copyAllCellsAndObjects(nullptr);
  EXPECT_EQ(live + source.length(), 0);
}

// Copies of a cell have what it weighs, but no links, and those that a target had stay in place.
template <class C, class Weight>
void checkCellCopies(C* root, C* leaf, Weight weight) {
  C deep(*leaf);
  std::unique_ptr<ZVObject> clone(deep.pObject());
  C shared(*leaf, ZV_ATTRIBUTE_COPY);
  EXPECT_NE(deep.pObject(), leaf->pObject());
  EXPECT_EQ(shared.pObject(), leaf->pObject());
  ASSERT_NE(weight(root), weight(leaf));
  for (const C* cell : {&deep, &shared}) {
    EXPECT_TRUE(!cell->pLeftChild() && !cell->pRightChild() && !cell->pParent() && !cell->pNextCell());
    EXPECT_EQ(weight(cell), weight(leaf));
  }
  root->copyAttributes(&shared);
  EXPECT_EQ(root->pObject(), leaf->pObject());
  EXPECT_EQ(weight(root), weight(leaf));
  EXPECT_TRUE(leaf->pParent() == root && root->pNextCell() == leaf);
}

TEST(OrderedContainers, CopiesCloneTheObjectsOrComeOutEmpty) {
  int live = 0;
  {
    ZVBinHeap heap;
    ZVBinHeap target;
    target.addObject(new Counted(&live), 9);
    for (int32_t value = 1; value <= 5; ++value)
      heap.addObject(value == 3 ? nullptr : new Counted(&live), value);
    checkCopies(heap, target, live);
    EXPECT_EQ(heap.pMinObject(), nullptr);
    ZVBinHeapCell* first = heap.addObject(nullptr, 1);
    EXPECT_EQ(heap.pMinCell(), first);
  }
  {
    ZVBinTree tree;
    ZVBinTree target(7);
    target.appendObject(new Counted(&live));
    for (int i = 1; i <= 5; ++i) tree.appendObject(i == 3 ? nullptr : new Counted(&live));
    checkCopies(tree, target, live);
    EXPECT_EQ(target.binTreeType(), 1);
    EXPECT_EQ(target.pRoot(), nullptr);
    EXPECT_EQ(target.sizeOf(), static_cast<int32_t>(sizeof(ZVBinTree)) + target.pNil()->sizeOf());
    EXPECT_EQ(std::unique_ptr<ZVBinTree>(ZVBinTree(7).cloneAttributes())->binTreeType(), 7);
    EXPECT_EQ(std::unique_ptr<ZVBinTree>(ZVBinTree(7).cloneObject())->binTreeType(), 7);
  }
  ZVInt number(7);
  ZVBinHeap heap;
  heap.addObject(nullptr, 1);
  checkCellCopies(heap.pMinCell(), heap.addObject(&number, 2), [](auto* cell) { return cell->value(); });
  ZVBinTree tree;
  tree.appendObject(nullptr);
  checkCellCopies(tree.pRoot(), tree.appendObject(&number), [](auto* cell) { return isRed(cell); });
}

}  // namespace
