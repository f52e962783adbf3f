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
#include "utils/zvslist.h"
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

struct MaxHeap : ZVBinHeap {
  int32_t virtualCompare(ZVBinHeapCell* cell1, ZVBinHeapCell* cell2) override {
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
    if (const char* text = threadFault(heap_, cells_)) return text;
    auto cellAt = [this](size_t i) { return i < cells_.size() ? cells_[i] : nullptr; };
    for (size_t i = 0; i < cells_.size(); ++i) {
      const ZVBinHeapCell* parent = i == 0 ? nullptr : cells_[(i - 1) / 2];
      if (cells_[i]->pParent() != parent) return "a parent is wrong";
      if (parent && before(cells_[i], parent)) return "a cell comes before its parent";
      if (cells_[i]->pLeftChild() != cellAt(2 * i + 1)) return "a left child is wrong";
      if (cells_[i]->pRightChild() != cellAt(2 * i + 2)) return "a right child is wrong";
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

TEST(BinHeap, CopiesCloneTheObjectsOrComeOutEmpty) {
  int live = 0;
  {
    ZVBinHeap heap;
    for (int32_t value : {5, 3, 4, 1}) heap.addObject(new Counted(&live), value);
    heap.addObject(nullptr, 2);
    ZVBinHeap target;
    target.addObject(new Counted(&live), 9);
    target = heap;
    EXPECT_EQ(live, 8);
    std::unique_ptr<ZVBinHeap> clone(heap.cloneObject());
    std::unique_ptr<ZVBinHeap> empty(heap.cloneAttributes());
    EXPECT_EQ(live, 12);
    EXPECT_EQ(empty->pMinObject(), nullptr);
    ZVBinHeapCell* first = empty->addObject(nullptr, 1);
    EXPECT_EQ(empty->pMinCell(), first);
    for (ZVBinHeap* copy : {&target, clone.get()}) {
      copy->copyObject(copy);
      copy->copyAttributes(&heap);
      EXPECT_EQ(copy->sizeOf(), heap.sizeOf());
      EXPECT_NE(copy->pMinObject(), heap.pMinObject());
      for (int32_t value = 1; value <= 5; ++value) {
        std::unique_ptr<ZVBinHeapCell> cell(copy->pExtractMinCell());
        EXPECT_EQ(cell->value(), value);
        EXPECT_EQ(cell->pObject() == nullptr, value == 2);
        delete cell->pObject();
      }
    }
    EXPECT_EQ(live, 4);
    heap.copyAllCellsAndObjects(nullptr);
    EXPECT_EQ(heap.length(), 0);
  }
  EXPECT_EQ(live, 0);

  ZVInt number(7);
  ZVBinHeap heap;
  ZVBinHeapCell* root = heap.addObject(&number, 1);
  ZVBinHeapCell* leaf = heap.addObject(nullptr, 2);
  ZVBinHeapCell deep(*root);
  std::unique_ptr<ZVObject> clone(deep.pObject());
  ZVBinHeapCell shared(*root, ZV_ATTRIBUTE_COPY);
  EXPECT_NE(clone.get(), &number);
  EXPECT_EQ(shared.pObject(), &number);
  for (const ZVBinHeapCell* cell : {&deep, &shared}) {
    EXPECT_EQ(cell->value(), 1);
    EXPECT_EQ(cell->pLeftChild(), nullptr);
    EXPECT_EQ(cell->pNextCell(), nullptr);
  }
  leaf->copyAttributes(&shared);
  EXPECT_EQ(leaf->value(), 1);
  EXPECT_EQ(leaf->pParent(), root);
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
    if (!root) return;
    if (root->pParent()) fault = "the root has a parent";
    visit(root);
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

// A few trees, each beside a vector of its cells.
class TreeModel {
  using Cell = ZVBinTreeCell;
  using Cells = std::vector<Cell*>;

 public:
  TreeModel(unsigned seed, int limit) : random_(seed), limit_(static_cast<size_t>(limit)) {}

  void run(int steps) {
    for (int step = 0; step < steps && !testing::Test::HasFatalFailure(); ++step) {
      at_ = random_.index(trees_.size());
      tree_ = &trees_[at_];
      cells_ = &models_[at_];
      change();
      compareAny();
      for (size_t i = 0; i < trees_.size(); ++i) {
        ASSERT_STREQ(TreeWalk(trees_[i]).fault, nullptr) << "step " << step;
        ASSERT_STREQ(threadFault(trees_[i], models_[i]), nullptr) << "step " << step;
        for (const Cell* cell : models_[i]) {
          ASSERT_TRUE(cell->pObject() >= objects_.data() && cell->pObject() < objects_.end());
        }
      }
    }
  }

 private:
  ZVObject* anyObject() { return &objects_[random_.index(objects_.size())]; }
  // The index of a cell, or -1.
  int anyPlace(const Cells& cells) { return random_.below(static_cast<int>(cells.size()) + 1) - 1; }
  static Cell* cellAt(const Cells& cells, int place) {
    return place < 0 ? nullptr : cells[static_cast<size_t>(place)];
  }

  void change() {
    if (cells_->size() > limit_) {
      random_.below(2) ? tree_->deleteAllCells() : tree_->deleteAllFromBinTree();
      return cells_->clear();
    }
    switch (random_.below(9)) {
      case 0:
      case 1:
      case 2:
        return insertOne();
      case 3:
      case 4:
        return removeOne();
      case 5:
        return swapTwo();
      case 6:
        if (random_.below(4)) return removeOne();
        ASSERT_EQ(tree_->reverse(), 1);
        return std::reverse(cells_->begin(), cells_->end());
      case 7:
        return transfer();
      default:
        return copy();
    }
  }

  void insertOne() {
    int place = anyPlace(*cells_);
    Cell* at = cellAt(*cells_, place);
    ZVObject* object = anyObject();
    ASSERT_EQ(tree_->insertCell(at, nullptr), nullptr);
    int end = static_cast<int>(cells_->size());
    int target = place + 1;
    Cell* cell = nullptr;
    int kind = random_.below(10);
    if (kind > 1 && kind < 4) target = end;
    if (kind > 3 && kind < 6) target = 0;
    if (kind > 5 && kind < 8 && place < 0) target = end;
    if (kind > 7) target = std::max(place, 0);
    Cell* made = kind % 2 ? nullptr : new Cell(object, random_.below(3));
    switch (kind) {
      case 0:
        cell = tree_->insertCell(at, made);
        break;
      case 1:
        cell = tree_->addObject(at, object);
        break;
      case 2:
        cell = tree_->appendCell(made);
        break;
      case 3:
        cell = tree_->appendObject(object);
        break;
      case 4:
        cell = tree_->prependCell(made);
        break;
      case 5:
        cell = tree_->prependObject(object);
        break;
      case 6:
        cell = tree_->insertAfter(at, made);
        break;
      case 7:
        cell = tree_->addAfter(at, object);
        break;
      case 8:
        cell = tree_->insertBefore(at, made);
        break;
      default:
        cell = tree_->addBefore(at, object);
    }
    ASSERT_EQ(cell->pObject(), object);
    cells_->insert(cells_->begin() + target, cell);
  }

  void removeOne() {
    int place = anyPlace(*cells_);
    Cell* cell = cellAt(*cells_, place);
    Cell* removed = nullptr;
    switch (random_.below(4)) {
      case 0:
        tree_->discardCell(cell);
        if (cell) cells_->erase(cells_->begin() + place);
        return;
      case 1: {
        ZVObject* object = anyObject();
        auto found =
            std::find_if(cells_->begin(), cells_->end(), [=](Cell* c) { return c->pObject() == object; });
        place = found == cells_->end() ? -1 : static_cast<int>(found - cells_->begin());
        cell = cellAt(*cells_, place);
        ASSERT_EQ(tree_->searchObject(object), cell);
        removed = tree_->searchAndRemoveObject(object);
        break;
      }
      case 2: {
        const Cells& others = models_[(at_ + 1) % models_.size()];
        ASSERT_EQ(tree_->searchAndRemoveCell(cellAt(others, anyPlace(others))), nullptr);
        ASSERT_EQ(tree_->pCellInPosition(place + 1), cell);
        removed = tree_->searchAndRemoveCell(cell);
        break;
      }
      default:
        removed = tree_->removeCell(cell);
    }
    ASSERT_EQ(removed, cell);
    if (!cell) return;
    cells_->erase(cells_->begin() + place);
    // It comes back into any tree, whatever links and colours it has left.
    size_t to = random_.index(trees_.size());
    trees_[to].appendCell(cell);
    models_[to].push_back(cell);
  }

  void swapTwo() {
    if (cells_->empty()) return;
    size_t place1 = random_.index(cells_->size());
    size_t place2 = random_.index(cells_->size());
    int kind = random_.below(3);
    if (kind == 0) place2 = place1 + 1 < cells_->size() ? place1 + 1 : 0;
    if (kind == 1) {
      const Cell* parent = (*cells_)[place1]->pParent();
      place2 = static_cast<size_t>(std::find(cells_->begin(), cells_->end(), parent) - cells_->begin());
      if (!parent) place2 = place1;
    }
    if (random_.below(2)) std::swap(place1, place2);
    tree_->swapPosition((*cells_)[place1], (*cells_)[place2]);
    std::swap((*cells_)[place1], (*cells_)[place2]);
  }

  void transfer() {
    size_t from = random_.index(trees_.size());
    ZVBinTree* source = &trees_[from];
    Cells& sources = models_[from];
    int place = anyPlace(*cells_);
    Cell* after = cellAt(*cells_, place);
    int first = 0;
    int last = static_cast<int>(sources.size()) - 1;
    int result = 0;
    switch (random_.below(4)) {
      case 0:
        result = tree_->transferList(after, source);
        ASSERT_EQ(tree_->transferList(after, nullptr), 0);
        break;
      case 1:
        place = static_cast<int>(cells_->size()) - 1;
        result = tree_->appendList(source);
        break;
      case 2:
        place = -1;
        result = tree_->prependList(source);
        break;
      default:
        first = anyPlace(sources);
        last = anyPlace(sources);
        result = tree_->transferListPart(after, source, cellAt(sources, first), cellAt(sources, last));
        ASSERT_EQ(result, from != at_ && first >= 0 && last >= first);
        if (!result) return;
    }
    ASSERT_EQ(result, from != at_);
    if (!result) return;
    cells_->insert(cells_->begin() + (place + 1), sources.begin() + first, sources.begin() + (last + 1));
    sources.erase(sources.begin() + first, sources.begin() + (last + 1));
  }

  // From a tree or a plain list of the same objects.
  void copy() {
    size_t from = random_.index(trees_.size());
    Cells& sources = models_[from];
    ZVDList list;
    list.copyAllCells(static_cast<const ZVDList*>(&trees_[from]));
    bool plain = random_.below(2);
    ZVDList* source = plain ? &list : &trees_[from];
    int place = anyPlace(*cells_);
    Cell* after = cellAt(*cells_, place);
    int first = 0;
    int last = static_cast<int>(sources.size()) - 1;
    int result = 0;
    switch (random_.below(5)) {
      case 0:
        result = tree_->copyTransferList(after, source);
        ASSERT_EQ(tree_->copyTransferList(after, nullptr), 0);
        break;
      case 1:
        place = static_cast<int>(cells_->size()) - 1;
        result = tree_->copyAppendList(source);
        break;
      case 2:
        place = -1;
        result = tree_->copyPrependList(source);
        break;
      case 3:
        if (from == at_) return;
        place = -1;
        cells_->clear();
        tree_->copyAllCells(&trees_[from]);
        result = 1;
        break;
      default:
        first = anyPlace(sources);
        last = anyPlace(sources);
        ZVDListCell* firstCell = source->pCellInPosition(first + 1);
        ZVDListCell* lastCell = source->pCellInPosition(last + 1);
        result = tree_->copyTransferListPart(after, source, firstCell, lastCell);
        ASSERT_EQ(result, (plain || from != at_) && first >= 0 && last >= first);
        if (!result) return;
    }
    ASSERT_EQ(result, plain || from != at_);
    if (!result) return;
    ZVDListCell* object = list.pCellInPosition(first + 1);
    for (; first <= last; ++first, object = object->pNextCell()) {
      Cell* cell = tree_->pCellInPosition(++place + 1);
      ASSERT_EQ(cell->pObject(), object->pObject());
      cells_->insert(cells_->begin() + place, cell);
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
    TreeModel(seed, static_cast<int>(3 * seed)).run(5000);
    if (HasFatalFailure()) return;
  }
}

// The numbers of the cells with their colours, children in brackets.
std::string shape(const ZVBinTree& tree, const ZVBinTreeCell* cell) {
  if (cell == tree.pNil()) return "-";
  std::string text = std::to_string(ZVInt::castDown(cell->pObject())->value()) + (isRed(cell) ? "r" : "b");
  if (cell->pLeftChild() == tree.pNil() && cell->pRightChild() == tree.pNil()) return text;
  return text + "(" + shape(tree, cell->pLeftChild()) + " " + shape(tree, cell->pRightChild()) + ")";
}

TEST(BinTree, RecoloursAndRotatesInTheToldOrder) {
  std::vector<std::unique_ptr<ZVInt>> numbers;
  std::vector<ZVBinTreeCell*> cells(1);
  ZVBinTree tree;
  // A colour that rises to the root stays there until the next insertion.
  const char* const GROWN[] = {"1b",
                               "1b(- 2r)",
                               "2b(1r 3r)",
                               "2r(1b 3b(- 4r))",
                               "2b(1b 4b(3r 5r))",
                               "2b(1b 4r(3b 5b(- 6r)))",
                               "2b(1b 4r(3b 6b(5r 7r)))",
                               "4b(2r(1b 3b) 6r(5b 7b(- 8r)))"};
  for (const char* grown : GROWN) {
    numbers.push_back(std::make_unique<ZVInt>(static_cast<int32_t>(cells.size())));
    cells.push_back(tree.appendObject(numbers.back().get()));
    EXPECT_EQ(shape(tree, tree.pRoot()), grown);
  }
  // The cell is exchanged with its successor: what is left points past it.
  EXPECT_EQ(tree.removeCell(cells[4]), cells[4]);
  EXPECT_EQ(shape(tree, tree.pRoot()), "5b(2r(1b 3b) 7r(6b 8b))");
  EXPECT_EQ(cells[4]->pPreviousCell(), cells[5]);
  EXPECT_EQ(cells[4]->pNextCell(), cells[6]);
  tree.discardCell(cells[1]);
  EXPECT_EQ(shape(tree, tree.pRoot()), "5b(2b(- 3r) 7r(6b 8b))");
  tree.discardCell(cells[2]);
  EXPECT_EQ(shape(tree, tree.pRoot()), "5b(3b 7r(6b 8b))");
  tree.discardCell(cells[3]);
  EXPECT_EQ(shape(tree, tree.pRoot()), "7b(5b(- 6r) 8b)");
  // The removed cell is the first one of an empty tree, and black there.
  tree.deleteAllCells();
  EXPECT_EQ(tree.pRoot(), nullptr);
  tree.insertCell(nullptr, cells[4]);
  EXPECT_EQ(shape(tree, tree.pRoot()), "4b");
  EXPECT_EQ(tree.pRoot()->pParent(), nullptr);
  delete tree.removeCell(cells[4]);
  EXPECT_EQ(tree.pRoot(), nullptr);
  // A red root on its way from the tree of another type.
  ZVBinTree plain(0);
  for (const auto& number : numbers) plain.appendObject(number.get());
  EXPECT_EQ(TreeWalk(plain).deepest, 8);
  plain.copyAttributes(&tree);
  while (plain.length() > 0) plain.discardCell(plain.pCellInPosition((plain.length() + 1) / 2));
  EXPECT_EQ(plain.pRoot(), nullptr);
}

TEST(BinTree, StaysFlatHoweverItGrows) {
  ZVObject object;
  for (int order = 0; order < 3; ++order) {
    ZVBinTree tree;
    for (int i = 1; i <= 1000; ++i) {
      ZVBinTreeCell* places[] = {tree.pLastCell(), nullptr, tree.pRoot()};
      tree.addObject(places[order], &object);
      TreeWalk walk(tree);
      ASSERT_STREQ(walk.fault, nullptr);
      ASSERT_LE(walk.deepest, 2 * std::log2(i + 1) + 1);
    }
  }
}

TEST(BinTree, CopiesCloneTheObjectsOrComeOutEmpty) {
  int live = 0;
  {
    ZVBinTree tree;
    for (int i = 0; i < 5; ++i) tree.appendObject(i == 2 ? nullptr : new Counted(&live));
    ZVBinTree target(7);
    target.appendObject(new Counted(&live));
    target = tree;
    std::unique_ptr<ZVBinTree> clone(tree.cloneObject());
    EXPECT_EQ(live, 12);
    for (ZVBinTree* copy : {&target, clone.get()}) {
      copy->copyObject(copy);
      EXPECT_STREQ(TreeWalk(*copy).fault, nullptr);
      EXPECT_NE(copy->pNil(), tree.pNil());
      EXPECT_EQ(copy->binTreeType(), 1);
      EXPECT_EQ(copy->length(), 5);
      EXPECT_EQ(copy->sizeOf(), tree.sizeOf());
      EXPECT_EQ(copy->positionOfCell(copy->searchObject(nullptr)), 3);
      copy->deleteAllCellsAndObjects();
      EXPECT_EQ(copy->pRoot(), nullptr);
    }
    EXPECT_EQ(live, 4);
    ZVBinTree plain(7);
    std::unique_ptr<ZVBinTree> empty(plain.cloneAttributes());
    EXPECT_EQ(empty->binTreeType(), 7);
    tree.copyAttributes(&plain);
    EXPECT_EQ(tree.binTreeType(), 7);
    EXPECT_EQ(tree.length(), 5);
    tree.copyAllCellsAndObjects(nullptr);
  }
  EXPECT_EQ(live, 0);

  ZVInt number(7);
  ZVBinTree tree;
  ZVBinTreeCell* root = tree.appendObject(&number);
  ZVBinTreeCell* leaf = tree.appendObject(nullptr);
  ZVBinTreeCell deep(*leaf);
  ZVBinTreeCell shared(*root, ZV_ATTRIBUTE_COPY);
  EXPECT_TRUE(isRed(&deep));
  EXPECT_EQ(deep.pObject(), nullptr);
  EXPECT_FALSE(isRed(&shared));
  EXPECT_EQ(shared.pObject(), &number);
  EXPECT_EQ(shared.pRightChild(), nullptr);
  leaf->copyAttributes(&shared);
  EXPECT_FALSE(isRed(leaf));
  EXPECT_EQ(leaf->pParent(), root);
}

}  // namespace
