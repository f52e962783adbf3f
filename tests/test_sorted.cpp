#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

#include "utils/zvsdlist.h"
#include "utils/zvsslist.h"
#include "utils/zvvalue.h"

namespace {

struct Doubly {
  using List = ZVDList;
  using Cell = ZVDListCell;
  using Sorted = ZVSortedDList;
};
struct Singly {
  using List = ZVSList;
  using Cell = ZVSListCell;
  using Sorted = ZVSortedSList;
};

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
  decltype(list.pFirstCell()) previous = nullptr;
  for (auto* cell = list.pFirstCell(); cell; cell = cell->pNextCell()) {
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

void sortIn(Objects& model, ZVObject* object) {
  auto below = [](ZVObject* a, ZVObject* b) { return keyOf(a) < keyOf(b); };
  model.insert(std::upper_bound(model.begin(), model.end(), object, below), object);
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
    for (int32_t i = 0; i < 40; ++i) numbers.push_back(std::make_unique<ZVInt>(i / 3));
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
using Families = testing::Types<Doubly, Singly>;
TYPED_TEST_SUITE(SortedLists, Families);

template <class Family>
void SortedLists<Family>::add() {
  ZVObject* object = anyNumber();
  Cell* holder = list.searchObject(object);
  ASSERT_EQ(holder != nullptr, holds(model, object));
  const bool once = random() % 2;
  const bool ownCell = random() % 2;
  auto cell = std::make_unique<Cell>(object);
  Cell* result = nullptr;
  if (ownCell) {
    result = once ? list.insertCellIfNotInList(cell.get()) : list.insertCell(cell.get());
  } else {
    result = once ? list.addObjectIfNotInList(object) : list.addObject(object);
  }
  ASSERT_EQ(result->pObject(), object);
  if (once && holder) {
    ASSERT_EQ(result, holder);
    return;
  }
  if (ownCell) {
    ASSERT_EQ(result, cell.release());
  }
  sortIn(model, object);
}

template <class Family>
void SortedLists<Family>::find() {
  ZVObject* object = anyNumber();
  auto place = std::find(model.begin(), model.end(), object);
  Cell* cell = list.pCellInPosition(static_cast<int32_t>(place - model.begin()) + 1);
  ASSERT_EQ(list.searchObject(object), cell);
  ASSERT_EQ(list.searchCell(cell), cell);
  Cell foreign(object);
  ASSERT_EQ(list.searchCell(&foreign), nullptr);
  ASSERT_EQ(list.searchAndRemoveCell(&foreign), nullptr);
  if constexpr (std::is_same_v<Family, Singly>) {
    Cell* previous = cell ? list.pCellInPosition(list.positionOfCell(cell) - 1) : ZVSList::noPredecessor();
    ASSERT_EQ(list.searchPreviousObject(object), previous);
    ASSERT_EQ(list.searchPreviousCell(cell), previous);
    ASSERT_EQ(list.searchPreviousCell(&foreign), ZVSList::noPredecessor());
  }
  ASSERT_EQ(random() % 2 ? list.searchAndRemoveObject(object) : list.searchAndRemoveCell(cell), cell);
  delete cell;
  if (cell) model.erase(place);
}

// All or part of an unsorted list, moved or copied, all objects or only those not held yet.
template <class Family>
void SortedLists<Family>::transfer() {
  List source;
  for (auto n = random() % 8; n > 0; --n) source.appendObject(anyNumber());
  const Objects before = objectsOf(source);
  const auto form = random() % 8;
  const bool whole = form & 1, copies = form & 2, once = form & 4;
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
  if (once) {
    result = copies ? (whole ? list.copyTransferListIfNotInList(&source)
                             : list.copyTransferListPartIfNotInList(&source, first, last))
                    : (whole ? list.transferListIfNotInList(&source)
                             : list.transferListPartIfNotInList(&source, first, last));
  } else {
    result = copies
                 ? (whole ? list.copyTransferList(&source) : list.copyTransferListPart(&source, first, last))
                 : (whole ? list.transferList(&source) : list.transferListPart(&source, first, last));
  }
  ASSERT_EQ(result, !refused);
  Objects left;
  for (int32_t i = 0; i < static_cast<int32_t>(before.size()); ++i) {
    ZVObject* object = before[static_cast<size_t>(i)];
    const bool taken = !refused && i >= from && i < to && !(once && holds(model, object));
    if (taken) sortIn(model, object);
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
  }
}

TYPED_TEST(SortedLists, StopWhereTheOrderShowsThatNothingCanCome) {
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
    EXPECT_EQ(this->list.transferListIfNotInList(source), 0);
    EXPECT_EQ(this->list.transferListPartIfNotInList(source, cell, cell), 0);
    EXPECT_EQ(this->list.copyTransferList(source), 0);
    EXPECT_EQ(this->list.copyTransferListPart(source, cell, cell), 0);
    EXPECT_EQ(this->list.copyTransferListIfNotInList(source), 0);
    EXPECT_EQ(this->list.copyTransferListPartIfNotInList(source, cell, cell), 0);
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
