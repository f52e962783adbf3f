#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "utils/zvbheap.h"
#include "utils/zvbtree.h"
#include "utils/zvdlisti.h"
#include "utils/zvssbtre.h"
#include "utils/zvsweep.h"
#include "utils/zvvalue.h"

namespace {

class Random {
 public:
  explicit Random(unsigned seed) : random_(seed) {}
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  size_t index(size_t size) { return static_cast<size_t>(below(static_cast<int>(size))); }
  template <class T>
  T anyOf(const std::vector<T>& items) {
    return items[index(items.size())];
  }

 private:
  std::mt19937 random_;
};

// An object that counts how many of its kind live.
struct Counted : ZVObject {
  explicit Counted(int* counter) : live(counter) { ++*live; }
  ~Counted() override { --*live; }
  ZVObject* vCloneObject() const override { return new Counted(live); }
  int* live;
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

// The same for a heap whose tree has these cells in level order.
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
  // Few values, so that many tie, and the extremes.
  int32_t anyValue() {
    static constexpr int32_t VALUES[] = {std::numeric_limits<int32_t>::min(), -2, 0, 1, 2, 3, 5,
                                         std::numeric_limits<int32_t>::max()};
    return VALUES[random_.index(std::size(VALUES))];
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
    int kind = cells_.empty() || (cells_.size() < limit_ && random_.below(9) == 0) ? 0 : random_.below(10);
    if (kind == 0 || (kind == 1 && cells_.size() < limit_)) {
      auto* cell = random_.below(2) ? heap_.addObject(&object_, anyValue())
                                    : heap_.insertCell(new ZVBinHeapCell(&object_, anyValue()));
      cells_.push_back(cell);
      return rise(cells_.size() - 1);
    }
    size_t i = random_.index(cells_.size());
    switch (kind) {
      case 1:
        return removeAs(&ZVBinHeap::pExtractMinCell, 0);
      case 2:
        return removeAs(&ZVBinHeap::removeLastBinHeapCell, cells_.size() - 1);
      case 3:
        ASSERT_EQ(heap_.removeCell(cells_[i]), cells_[i]);
        // A removed cell can come back.
        if (random_.below(2)) {
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
        if (random_.below(50) == 0) return copyThere();
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

  Random random_;
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

// The colours of a cell are private to the tree family; this opens one of them to the walk below.
template <auto member>
struct Opened {
  friend int isRed(const ZVBinTreeCell* cell) { return (cell->*member)(); }
};
int isRed(const ZVBinTreeCell* cell);
template struct Opened<&ZVBinTreeCell::isRed>;

struct Marked : ZVBinTreeCell {
  static int isMarked(const ZVBinTreeCell* cell) {
    int (ZVBinTreeCell::*read)() const = &Marked::visited;
    return (cell->*read)();
  }
};

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

using Cell = ZVBinTreeCell;
using Cells = std::vector<Cell*>;

const char* treeFault(const ZVBinTree& tree, const Cells& cells) {
  const char* fault = TreeWalk(tree).fault;
  return fault ? fault : threadFault(tree, cells);
}

// The index of any cell, or -1, which stands for null.
int anyPlace(Random& random, const Cells& cells) {
  return random.below(static_cast<int>(cells.size()) + 1) - 1;
}
Cell* cellAt(const Cells& cells, int place) {
  return place < 0 ? nullptr : cells[static_cast<size_t>(place)];
}
int lastPlace(const Cells& cells) { return static_cast<int>(cells.size()) - 1; }

// A few trees, each beside a vector of its cells.
class TreeModel {
 public:
  TreeModel(unsigned seed, size_t limit) : random_(seed), limit_(limit) {}

  void run(int steps) {
    for (int step = 0; step < steps && !testing::Test::HasFatalFailure(); ++step) {
      at_ = random_.index(trees_.size());
      tree_ = &trees_[at_];
      cells_ = &models_[at_];
      change();
      compareAny();
      for (size_t i = 0; i < trees_.size(); ++i) {
        ASSERT_STREQ(treeFault(trees_[i], models_[i]), nullptr) << "step " << step;
      }
    }
  }

 private:
  ZVObject* anyObject() { return &objects_[random_.index(objects_.size())]; }

  void change() {
    if (cells_->size() > limit_) {
      random_.below(2) ? tree_->deleteAllCells() : tree_->deleteAllFromBinTree();
      return cells_->clear();
    }
    switch (random_.below(10)) {
      case 0:
        ASSERT_EQ(tree_->reverse(), 1);
        return std::reverse(cells_->begin(), cells_->end());
      case 1:
        return swapTwo();
      case 2:
        return takeFromAny(false);
      case 3:
        return takeFromAny(true);
      case 4:
      case 5:
      case 6:
        return removeOne();
      default:
        return insertOne();
    }
  }

  void insertOne() {
    int place = anyPlace(random_, *cells_);
    Cell* at = cellAt(*cells_, place);
    ZVObject* object = anyObject();
    int end = lastPlace(*cells_) + 1;
    int kind = random_.below(5);
    const int targets[] = {place + 1, end, 0, place < 0 ? end : place + 1, std::max(place, 0)};
    auto* made = random_.below(2) ? new Cell(object, random_.below(3)) : nullptr;
    Cell* cell = kind == 0   ? (made ? tree_->insertCell(at, made) : tree_->addObject(at, object))
                 : kind == 1 ? (made ? tree_->appendCell(made) : tree_->appendObject(object))
                 : kind == 2 ? (made ? tree_->prependCell(made) : tree_->prependObject(object))
                 : kind == 3 ? (made ? tree_->insertAfter(at, made) : tree_->addAfter(at, object))
                             : (made ? tree_->insertBefore(at, made) : tree_->addBefore(at, object));
    ASSERT_TRUE(!made || cell == made);
    ASSERT_EQ(tree_->insertCell(at, nullptr), nullptr);
    ASSERT_EQ(cell->pObject(), object);
    cells_->insert(cells_->begin() + targets[kind], cell);
  }

  void removeOne() {
    int place = anyPlace(random_, *cells_);
    Cell* cell = cellAt(*cells_, place);
    ZVObject* object = cell ? cell->pObject() : anyObject();
    int kind = random_.below(4);
    if (kind == 1) {
      auto found =
          std::find_if(cells_->begin(), cells_->end(), [=](Cell* c) { return c->pObject() == object; });
      place = found == cells_->end() ? -1 : static_cast<int>(found - cells_->begin());
      cell = cellAt(*cells_, place);
      ASSERT_EQ(tree_->searchObject(object), cell);
    }
    ASSERT_EQ(tree_->pCellInPosition(place + 1), cell);
    const Cells& others = models_[(at_ + 1) % models_.size()];
    ASSERT_EQ(tree_->searchAndRemoveCell(cellAt(others, anyPlace(random_, others))), nullptr);
    if (cell) cells_->erase(cells_->begin() + place);
    if (kind == 0) return tree_->discardCell(cell);
    Cell* removed = kind == 1   ? tree_->searchAndRemoveObject(object)
                    : kind == 2 ? tree_->searchAndRemoveCell(cell)
                                : tree_->removeCell(cell);
    ASSERT_EQ(removed, cell);
    if (!cell) return;
    ASSERT_EQ(cell->pObject(), object);
    // It comes back into any tree, whatever links and colours it has left.
    size_t to = random_.index(trees_.size());
    trees_[to].appendCell(cell);
    models_[to].push_back(cell);
  }

  void swapTwo() {
    if (cells_->empty()) return;
    auto cell1 = cells_->begin() + anyPlace(random_, *cells_);
    if (cell1 < cells_->begin()) cell1 = cells_->begin();
    // Any two, neighbours in the list, or parent and child.
    auto cell2 = cells_->begin() + random_.below(lastPlace(*cells_) + 1);
    int kind = random_.below(3);
    if (kind == 0 && cell1 != cells_->begin()) cell2 = cell1 - 1;
    if (kind == 1 && (*cell1)->pParent())
      cell2 = std::find(cells_->begin(), cells_->end(), (*cell1)->pParent());
    if (random_.below(2)) std::swap(cell1, cell2);
    tree_->swapPosition(*cell1, *cell2);
    std::swap(*cell1, *cell2);
  }

  // Copies from a tree or from a plain list of the same objects.
  void takeFromAny(bool copies) {
    size_t from = random_.index(trees_.size());
    ZVBinTree* source = &trees_[from];
    Cells& sources = models_[from];
    ZVDList plain;
    plain.copyAllCells(static_cast<const ZVDList*>(source));
    const ZVDList* copied = source;
    if (copies && random_.below(2)) copied = &plain;
    int kind = random_.below(copies ? 5 : 4);
    if (kind == 4 && from == at_) return;
    int place = kind == 0 ? lastPlace(*cells_) : kind < 3 ? anyPlace(random_, *cells_) : -1;
    int first = kind == 2 ? anyPlace(random_, sources) : 0;
    int last = kind == 2 ? anyPlace(random_, sources) : lastPlace(sources);
    Cell* after = cellAt(*cells_, place);
    int result;
    if (kind == 0) {
      result = copies ? tree_->copyAppendList(copied) : tree_->appendList(source);
    } else if (kind == 1) {
      ASSERT_EQ(tree_->transferList(after, nullptr) + tree_->copyTransferList(after, nullptr), 0);
      result = copies ? tree_->copyTransferList(after, copied) : tree_->transferList(after, source);
    } else if (kind == 2) {
      result = copies ? tree_->copyTransferListPart(after, copied, copied->pCellInPosition(first + 1),
                                                    copied->pCellInPosition(last + 1))
                      : tree_->transferListPart(after, source, cellAt(sources, first), cellAt(sources, last));
    } else if (kind == 3) {
      result = copies ? tree_->copyPrependList(copied) : tree_->prependList(source);
    } else {
      cells_->clear();
      tree_->copyAllCells(source);
      copied = source;
      result = 1;
    }
    bool accepted = (from != at_ || copied == &plain) && (kind != 2 || (first >= 0 && last >= first));
    ASSERT_EQ(result, accepted);
    if (!accepted) return;
    auto to = cells_->begin() + (place + 1);
    if (!copies) {
      cells_->insert(to, sources.begin() + first, sources.begin() + (last + 1));
      sources.erase(sources.begin() + first, sources.begin() + (last + 1));
      return;
    }
    for (; first <= last; ++first, ++to) {
      Cell* cell = tree_->pCellInPosition(++place + 1);
      ASSERT_EQ(cell->pObject(), plain.pObjectInPosition(first + 1));
      to = cells_->insert(to, cell);
    }
  }

  void compareAny() {
    if (cells_->empty()) return;
    for (int i = 0; i < 3; ++i) {
      size_t place1 = random_.index(cells_->size());
      size_t place2 = random_.index(cells_->size());
      ASSERT_EQ(tree_->compare((*cells_)[place1], (*cells_)[place2]), (place1 > place2) - (place1 < place2));
    }
    const Cells& others = models_[(at_ + 1) % models_.size()];
    if (others.empty()) return;
    ASSERT_EQ(tree_->compare(random_.anyOf(*cells_), random_.anyOf(others)), 0);
  }

  Random random_;
  size_t limit_;
  std::array<ZVObject, 9> objects_;
  // Of the two kinds of trees.
  std::array<ZVBinTree, 3> trees_{ZVBinTree(), ZVBinTree(2), ZVBinTree()};
  std::array<Cells, 3> models_;
  size_t at_ = 0;
  ZVBinTree* tree_ = nullptr;
  Cells* cells_ = nullptr;
};

TEST(BinTree, IsAListAndARedBlackTreeUnderRandomOperations) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    TreeModel(seed, 4 * seed).run(5000);
    if (HasFatalFailure()) return;
  }
}

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

TEST(BinTree, StaysFlatHoweverItGrows) {
  ZVObject object;
  for (int order = 0; order < 3; ++order) {
    ZVBinTree tree;
    for (int i = 1; i <= 1000; ++i) {
      Cell* places[] = {tree.pLastCell(), nullptr, tree.pRoot()};
      tree.addObject(places[order], &object);
      TreeWalk walk(tree);
      ASSERT_STREQ(walk.fault, nullptr);
      ASSERT_LE(walk.deepest, 2 * std::log2(i + 1) + 1);
    }
  }
}

// Orders numbers by their tens, and then, unless ties are wanted, by their ones.
struct NumberTree : ZVSortedBinTree {
  int32_t virtualObjectCompare(const ZVObject* object1, const ZVObject* object2) const override {
    ++comparisons;
    return key(object1) - key(object2);
  }
  int32_t key(const ZVObject* object) const {
    int32_t value = ZVInt::castDown(object)->value();
    return ties ? value / 10 : value;
  }
  bool ties = false;
  mutable int comparisons = 0;
};

// A sorted tree beside a sorted vector of its objects.
class SortedModel {
 public:
  SortedModel(unsigned seed, bool ties) : random_(seed) {
    tree_.ties = ties;
    for (size_t i = 0; i < numbers_.size(); ++i) numbers_[i].value(static_cast<int32_t>(i));
  }

  void run(int steps) {
    for (int step = 0; step < steps && !testing::Test::HasFailure(); ++step) {
      model_.size() < 50 && random_.below(3) == 0 ? enterSome() : removeOne();
      TreeWalk walk(tree_);
      ASSERT_STREQ(walk.fault, nullptr) << "step " << step;
      ASSERT_TRUE(std::equal(walk.cells.begin(), walk.cells.end(), model_.begin(), model_.end(),
                             [](const Cell* cell, const ZVInt* number) { return cell->pObject() == number; }))
          << "step " << step;
    }
  }

 private:
  // In one of the ways in, from a list of objects in any order, perhaps without its first one.
  void enterSome() {
    ZVBinTree source;
    for (int i = 0; i < 4; ++i) {
      ZVInt* number = &numbers_[random_.index(numbers_.size())];
      bool fits = tree_.ties || std::find(model_.begin(), model_.end(), number) == model_.end();
      if (fits && !source.searchObject(number)) source.appendObject(number);
    }
    if (source.length() < 2) return;
    int kind = random_.below(6);
    Cell* first = kind % 2 ? Cell::castDown(source.pFirstCell()->pNextCell()) : source.pFirstCell();
    auto before = [this](const ZVInt* number1, const ZVInt* number2) {
      return tree_.key(number1) < tree_.key(number2);
    };
    for (ZVDListIter it(&source, first); it; ++it) {
      ZVInt* number = ZVInt::castDown(it.pObject());
      if (kind > 3) kind == 4 ? tree_.addObject(number) : tree_.insertCell(new Cell(number));
      // In front of its equals.
      model_.insert(std::lower_bound(model_.begin(), model_.end(), number, before), number);
    }
    EXPECT_EQ(tree_.transferList(&tree_) + tree_.transferList(nullptr) + tree_.copyTransferList(&tree_) +
                  tree_.copyTransferList(nullptr) + tree_.transferListPart(&source, first, nullptr) +
                  tree_.transferListPart(&source, source.pLastCell(), source.pFirstCell()),
              0);
    int32_t left = kind == 0 ? 0 : kind == 1 ? 1 : source.length();
    EXPECT_EQ(kind == 0   ? tree_.transferList(&source)
              : kind == 1 ? tree_.transferListPart(&source, first, source.pLastCell())
              : kind == 2 ? tree_.copyTransferList(&source)
              : kind == 3 ? tree_.copyTransferListPart(&source, first, source.pLastCell())
                          : 1,
              1);
    EXPECT_EQ(source.length(), left);
    EXPECT_STREQ(TreeWalk(source).fault, nullptr);
  }

  void removeOne() {
    ZVInt foreign(random_.below(60));
    EXPECT_EQ(tree_.searchAndRemoveObject(&foreign), nullptr);
    if (model_.empty()) return;
    auto place = static_cast<int32_t>(random_.index(model_.size()));
    Cell* cell = tree_.pCellInPosition(place + 1);
    // With ties a search may miss a cell among its equals, but finds no other one.
    Cell* found = tree_.searchCell(cell);
    EXPECT_TRUE(found == cell || (tree_.ties && !found));
    EXPECT_TRUE(tree_.ties || tree_.searchObject(cell->pObject()) == cell);
    Cell* removed = tree_.ties         ? tree_.removeCell(cell)
                    : random_.below(2) ? tree_.searchAndRemoveCell(cell)
                                       : tree_.searchAndRemoveObject(cell->pObject());
    EXPECT_EQ(removed, cell);
    delete removed;
    model_.erase(model_.begin() + place);
  }

  Random random_;
  std::array<ZVInt, 60> numbers_;
  NumberTree tree_;
  std::vector<ZVInt*> model_;
};

TEST(SortedBinTree, StaysSortedUnderRandomOperations) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    SortedModel(seed, false).run(2000);
    SortedModel(seed, true).run(2000);
    if (HasFatalFailure()) return;
  }
}

TEST(SortedBinTree, ComparesAtMostOnceForEachLevel) {
  std::vector<ZVInt> numbers(10000);
  NumberTree tree;
  EXPECT_EQ(tree.searchObject(&numbers[0]), nullptr);
  EXPECT_EQ(tree.searchCell(nullptr), nullptr);
  for (int32_t i = 0; i < 10000; ++i) {
    numbers[static_cast<size_t>(i)].value(i);
    tree.comparisons = 0;
    Cell* cell = tree.addObject(&numbers[static_cast<size_t>(i)]);
    EXPECT_EQ(tree.searchCell(cell), cell);
    EXPECT_EQ(tree.searchObject(cell->pObject()), cell);
    ASSERT_LE(tree.comparisons, 3 * (2 * std::log2(i + 1) + 1));
  }
  // A copy takes the order over as it is.
  NumberTree copy;
  copy.copyAllCells(&tree);
  EXPECT_EQ(copy.compareUnordered(&tree), 1);
  EXPECT_EQ(copy.comparisons, 0);
}

struct NumberSweep : ZVSweep {
  int32_t startCoordinateOfSegment(const ZVObject*) override { return 0; }
  int32_t endCoordinateOfSegment(const ZVObject*) override { return 0; }
  int32_t otherStartCoordinateOfSegment(const ZVObject* segment) override {
    return ZVInt::castDown(segment)->value();
  }
};

TEST(SweepLine, AnswersForNeighboursAndKeepsEqualsByAddress) {
  NumberSweep sweep;
  std::array<ZVInt, 40> segments;
  Random random(1);
  for (ZVInt& segment : segments) segment.value(random.below(5));
  std::vector<ZVInt*> order;
  for (ZVInt& segment : segments) order.push_back(&segment);
  ZVSegSortedBinTree tree(&sweep);
  ZVInt absent(2);
  EXPECT_EQ(tree.pPreceedingSegment(&absent), nullptr);
  for (size_t i = 0; i < 40; ++i) tree.addObject(order[i * 7 % 40]);
  std::stable_sort(order.begin(), order.end(), [](ZVInt* a, ZVInt* b) { return a->value() < b->value(); });
  std::unique_ptr<ZVSegSortedBinTree> copy(tree.cloneAttributes());
  EXPECT_EQ(copy->copyTransferList(&tree), 1);
  for (const ZVSegSortedBinTree* line : {&tree, copy.get()}) {
    for (size_t i = 0; i < order.size(); ++i) {
      EXPECT_EQ(line->pPreceedingSegment(order[i]), i > 0 ? order[i - 1] : nullptr);
      EXPECT_EQ(line->pSucceedingSegment(order[i]), i + 1 < order.size() ? order[i + 1] : nullptr);
    }
    EXPECT_EQ(line->pPreceedingSegment(&absent), nullptr);
    EXPECT_EQ(line->pSucceedingSegment(&absent), nullptr);
  }
  // A deep copy asks the same sweep.
  ZVSegSortedBinTree deep;
  deep = tree;
  absent.value(9);
  deep.addObject(&absent);
  EXPECT_EQ(deep.pPreceedingSegment(&absent), deep.pObjectInPosition(40));
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
