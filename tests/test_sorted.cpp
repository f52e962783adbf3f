#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

#include "tests/support/families.h"
#include "tests/support/treewalk.h"
#include "utils/zvsbtree.h"
#include "utils/zvvalue.h"

namespace {

// A search in a tree may miss a cell among its equals. Without ties it finds what is there.
template <int ties>
struct Tree {
  using List = ZVBinTree;
  using Cell = ZVBinTreeCell;
  using Sorted = ZVSortedBinTree;
  static constexpr int TIES = ties;
};
template <class Family>
constexpr bool TREE = std::is_same_v<typename Family::List, ZVBinTree>;
template <class Family>
constexpr bool DISTINCT = Family::TIES == 1;

int32_t keyOf(const ZVObject* object) { return ZVInt::castDown(object)->value(); }

// A concrete sorted list of either family, of boxed numbers. Counts its comparisons.
template <class Family>
class NumberList : public Family::Sorted {
 public:
  int64_t takeComparisons() { return std::exchange(comparisons, 0); }

 protected:
  int32_t virtualObjectCompare(const ZVObject* object1, const ZVObject* object2) const override {
    ++comparisons;
    return keyOf(object1) - keyOf(object2);
  }
  mutable int64_t comparisons = 0;
};

using Objects = std::vector<ZVObject*>;

template <class List>
Objects objectsOf(const List& list) {
  Objects result;
  decltype(list.pFirstCell()->pNextCell()) previous = nullptr, cell = list.pFirstCell();
  for (; cell; cell = cell->pNextCell()) {
    if constexpr (requires { cell->pPreviousCell(); }) {
      EXPECT_EQ(cell->pPreviousCell(), previous);
    }
    result.push_back(cell->pObject());
    previous = cell;
  }
  EXPECT_EQ(list.pLastCell(), previous);
  EXPECT_EQ(list.length(), static_cast<int32_t>(result.size()));
  return result;
}

// A list puts an object behind its equals, a tree in front of them.
template <class Family>
void sortIn(Objects& model, ZVObject* object) {
  auto below = [](ZVObject* a, ZVObject* b) { return keyOf(a) < keyOf(b); };
  model.insert(TREE<Family> ? std::lower_bound(model.begin(), model.end(), object, below)
                            : std::upper_bound(model.begin(), model.end(), object, below),
               object);
}

bool holds(const Objects& model, const ZVObject* object) {
  return std::find(model.begin(), model.end(), object) != model.end();
}

template <class Family>
class SortedLists : public testing::Test {
 protected:
  using List = typename Family::List;
  using Cell = typename Family::Cell;

  SortedLists() {
    for (int32_t i = 0; i < 40; ++i) numbers.push_back(std::make_unique<ZVInt>(i / Family::TIES));
  }
  ZVObject* anyNumber() { return numbers[random() % numbers.size()].get(); }
  Cell* anyCell(const List& of) {
    return of.pCellInPosition(1 + static_cast<int32_t>(random() % static_cast<unsigned>(of.length())));
  }

  void add();
  void find();
  void transfer();

  std::mt19937 random{43};
  std::vector<std::unique_ptr<ZVInt>> numbers;
  NumberList<Family> list;
  Objects model;
};
using Families = testing::Types<Doubly, Singly, Tree<3>, Tree<1>>;
TYPED_TEST_SUITE(SortedLists, Families);

template <class Family>
void SortedLists<Family>::add() {
  ZVObject* object = anyNumber();
  if (DISTINCT<Family> && holds(model, object)) return;
  Cell* holder = list.searchObject(object);
  if (!TREE<Family>) {
    ASSERT_EQ(holder != nullptr, holds(model, object));
  }
  const bool once = !TREE<Family> && random() % 2;
  const bool ownCell = random() % 2;
  auto cell = std::make_unique<Cell>(object);
  Cell* result = nullptr;
  if (!once) {
    result = ownCell ? list.insertCell(cell.get()) : list.addObject(object);
  } else if constexpr (!TREE<Family>) {
    result = ownCell ? list.insertCellIfNotInList(cell.get()) : list.addObjectIfNotInList(object);
  }
  ASSERT_EQ(result->pObject(), object);
  if (once && holder) {
    ASSERT_EQ(result, holder);
    return;
  }
  if (ownCell) {
    ASSERT_EQ(result, cell.release());
  }
  sortIn<Family>(model, object);
}

template <class Family>
void SortedLists<Family>::find() {
  ZVObject* object = anyNumber();
  auto place = std::find(model.begin(), model.end(), object);
  Cell* cell = list.pCellInPosition(static_cast<int32_t>(place - model.begin()) + 1);
  list.takeComparisons();
  Cell* byObject = list.searchObject(object);
  if constexpr (TREE<Family>) {
    ASSERT_LE(list.takeComparisons(), TreeWalk(list).deepest);
  }
  Cell* byCell = list.searchCell(cell);
  if (TREE<Family> && !DISTINCT<Family>) {
    ASSERT_TRUE(!byObject || byObject->pObject() == object);
    ASSERT_TRUE(!byCell || byCell == cell);
  } else {
    ASSERT_EQ(byObject, cell);
    ASSERT_EQ(byCell, cell);
  }
  Cell foreign(object);
  ASSERT_EQ(list.searchCell(&foreign), nullptr);
  ASSERT_EQ(list.searchAndRemoveCell(&foreign), nullptr);
  if constexpr (std::is_same_v<Family, Singly>) {
    Cell* previous = cell ? list.pCellInPosition(list.positionOfCell(cell) - 1) : ZVSList::noPredecessor();
    ASSERT_EQ(list.searchPreviousObject(object), previous);
    ASSERT_EQ(list.searchPreviousCell(cell), previous);
    ASSERT_EQ(list.searchPreviousCell(&foreign), ZVSList::noPredecessor());
  }
  ASSERT_EQ(TREE<Family> && !DISTINCT<Family> ? list.removeCell(cell)
            : random() % 2                    ? list.searchAndRemoveObject(object)
                                              : list.searchAndRemoveCell(cell),
            cell);
  delete cell;
  if (cell) model.erase(place);
}

// All or part of an unsorted list, moved or copied, all objects or only those not held yet.
template <class Family>
void SortedLists<Family>::transfer() {
  List source;
  for (auto n = random() % 8; n > 0; --n) {
    ZVObject* object = anyNumber();
    if (!DISTINCT<Family> || !(holds(model, object) || source.searchObject(object)))
      source.appendObject(object);
  }
  const Objects before = objectsOf(source);
  const auto form = random() % 8;
  const bool whole = form & 1, copies = form & 2, once = form & 4 && !TREE<Family>;
  Cell* first = nullptr;
  Cell* last = nullptr;
  if (!before.empty()) {
    first = whole ? source.pFirstCell() : anyCell(source);
    last = whole ? source.pLastCell() : anyCell(source);
  }
  const int32_t from = source.positionOfCell(first) - 1;
  const int32_t to = source.positionOfCell(last);
  const bool refused = !whole && (from < 0 || from >= to);

  int result = 0;
  if (!once) {
    result = copies
                 ? (whole ? list.copyTransferList(&source) : list.copyTransferListPart(&source, first, last))
                 : (whole ? list.transferList(&source) : list.transferListPart(&source, first, last));
  } else if constexpr (!TREE<Family>) {
    result = copies ? (whole ? list.copyTransferListIfNotInList(&source)
                             : list.copyTransferListPartIfNotInList(&source, first, last))
                    : (whole ? list.transferListIfNotInList(&source)
                             : list.transferListPartIfNotInList(&source, first, last));
  }
  ASSERT_EQ(result, !refused);
  Objects left;
  for (int32_t i = 0; i < static_cast<int32_t>(before.size()); ++i) {
    ZVObject* object = before[static_cast<size_t>(i)];
    const bool taken = !refused && i >= from && i < to && !(once && holds(model, object));
    if (taken) sortIn<Family>(model, object);
    if (!taken || copies) left.push_back(object);
  }
  ASSERT_EQ(objectsOf(source), left);
}

TYPED_TEST(SortedLists, AgreeWithAModelThroughAnyMixOfOperations) {
  for (int step = 0; step < 6000; ++step) {
    SCOPED_TRACE(testing::Message() << "seed 43, step " << step);
    const auto kind = this->random() % 10;
    if (kind < 4) {
      ASSERT_NO_FATAL_FAILURE(this->add());
    } else if (kind < 9) {
      ASSERT_NO_FATAL_FAILURE(this->find());
    } else {
      ASSERT_NO_FATAL_FAILURE(this->transfer());
    }
    ASSERT_EQ(objectsOf(this->list), this->model);
    if constexpr (TREE<TypeParam>) {
      ASSERT_STREQ(TreeWalk(this->list).fault, nullptr);
    }
  }
}

template <class Family>
using PlainSortedLists = SortedLists<Family>;
using PlainFamilies = testing::Types<Doubly, Singly>;
TYPED_TEST_SUITE(PlainSortedLists, PlainFamilies);

TYPED_TEST(PlainSortedLists, StopWhereTheOrderShowsThatNothingCanCome) {
  for (int i : {0, 3, 6, 9}) this->list.addObject(this->numbers[static_cast<size_t>(i)].get());
  ZVInt below(-1), above(99), between(1);
  for (auto [object, comparisons] : {std::pair(&below, 1), {&between, 3}, {&above, 4}}) {
    this->list.takeComparisons();
    EXPECT_EQ(this->list.searchObject(object), nullptr);
    EXPECT_EQ(this->list.takeComparisons(), comparisons);
    // One walk serves the search and the place.
    auto* added = this->list.addObjectIfNotInList(object);
    EXPECT_EQ(this->list.takeComparisons(), comparisons);
    delete this->list.searchAndRemoveCell(added);
  }
  auto* last = this->list.addObjectIfNotInList(&above);
  EXPECT_EQ(this->list.pLastCell(), last);
  EXPECT_EQ(this->list.searchCell(nullptr), nullptr);
}

TYPED_TEST(SortedLists, RefuseNoListAndThemselves) {
  this->list.addObject(this->numbers[0].get());
  auto* cell = this->list.pFirstCell();
  for (typename TypeParam::List* source : {static_cast<typename TypeParam::List*>(nullptr),
                                           static_cast<typename TypeParam::List*>(&this->list)}) {
    EXPECT_EQ(this->list.transferList(source), 0);
    EXPECT_EQ(this->list.transferListPart(source, cell, cell), 0);
    EXPECT_EQ(this->list.copyTransferList(source), 0);
    EXPECT_EQ(this->list.copyTransferListPart(source, cell, cell), 0);
    if constexpr (!TREE<TypeParam>) {
      EXPECT_EQ(this->list.transferListIfNotInList(source), 0);
      EXPECT_EQ(this->list.transferListPartIfNotInList(source, cell, cell), 0);
      EXPECT_EQ(this->list.copyTransferListIfNotInList(source), 0);
      EXPECT_EQ(this->list.copyTransferListPartIfNotInList(source, cell, cell), 0);
    }
  }
  EXPECT_EQ(this->list.length(), 1);
}

TYPED_TEST(SortedLists, CopiesTakeTheOrderOverAndCompareNothing) {
  for (int i : {5, 4, 3, 30}) this->list.addObject(this->numbers[static_cast<size_t>(i)].get());
  this->list.takeComparisons();
  NumberList<TypeParam> other;
  other.copyAllCells(&this->list);
  EXPECT_EQ(objectsOf(other), objectsOf(this->list));
  other.deleteAllCells();
  other.copyAllCellsAndObjects(&this->list);
  other = this->list;
  other.copyObject(&this->list);
  other = *&other;
  other.copyAttributes(&this->list);
  ASSERT_EQ(other.length(), 4);
  for (int32_t i = 1; i <= 4; ++i) {
    EXPECT_NE(other.pObjectInPosition(i), this->list.pObjectInPosition(i));
    EXPECT_EQ(keyOf(other.pObjectInPosition(i)), keyOf(this->list.pObjectInPosition(i)));
  }
  EXPECT_EQ(other.takeComparisons(), 0);
  other.copyAllCellsAndObjects(nullptr);
  EXPECT_EQ(other.length(), 0);
}

}  // namespace
