#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <new>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include "tests/support/families.h"
#include "utils/zvdtuple.h"
#include "utils/zvpoint.h"
#include "utils/zvutdlso.h"
#include "utils/zvutslso.h"
#include "utils/zvvalue.h"

namespace {

int64_t allocations = 0;
// Behind volatile pointers, so that no compiler takes these operators for the malloc and free they call.
void* (*volatile takeMemory)(std::size_t) = std::malloc;
void (*volatile freeMemory)(void*) = std::free;

}  // namespace

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++allocations;
  return takeMemory(size);
}
void* operator new(std::size_t size) {
  if (void* block = operator new(size, std::nothrow)) return block;
  throw std::bad_alloc();
}
void operator delete(void* block) noexcept { freeMemory(block); }
void operator delete(void* block, std::size_t) noexcept { freeMemory(block); }

namespace {

int32_t keyOf(const ZVObject* object) { return ZVInt::castDown(object)->value(); }
int32_t compareKeys(const ZVObject* object1, const ZVObject* object2) {
  return keyOf(object1) - keyOf(object2);
}

// Sorts by any comparison of objects, and counts the comparisons.
template <class Family>
struct Sort : Family::Sort {
  using Cell = typename Family::Cell;
  using Comparison = std::function<int32_t(const ZVObject*, const ZVObject*)>;
  explicit Sort(Comparison by = compareKeys) : comparison(std::move(by)) {}
  int32_t virtualCompare(Cell* cell1, Cell* cell2) override {
    ++comparisons;
    return comparison(cell1->pObject(), cell2->pObject());
  }
  void virtualDebugOutputElement(Cell*) override {}
  Comparison comparison;
  int64_t comparisons = 0;
};

enum Algorithm { QUICK, QUICK_CHECKED, MERGE, BUBBLE };
constexpr Algorithm ALGORITHMS[] = {QUICK, QUICK_CHECKED, MERGE, BUBBLE};

template <class Family>
int32_t sortBy(Algorithm algorithm, Sort<Family>& sort, typename Family::List* list) {
  if (algorithm == MERGE) return sort.mergeSort(list);
  if (algorithm == BUBBLE) return sort.bubbleSort(list);
  return sort.quickSort(list, algorithm == QUICK_CHECKED);
}

std::vector<int32_t> randomKeys(std::mt19937& random, int length, int kinds) {
  std::vector<int32_t> keys(static_cast<size_t>(length));
  for (int32_t& key : keys) key = static_cast<int32_t>(random() % static_cast<unsigned>(kinds));
  return keys;
}

// A list of boxed keys that it owns.
template <class Family>
struct Keyed {
  using Cell = typename Family::Cell;
  explicit Keyed(const std::vector<int32_t>& keys) {
    for (int32_t key : keys) list.appendObject(new ZVInt(key));
  }
  Keyed(const Keyed&) = delete;
  ~Keyed() { list.deleteAllCellsAndObjects(); }

  // The cells in list order, after a look at the links.
  std::vector<Cell*> cells() const {
    std::vector<Cell*> result;
    Cell* previous = nullptr;
    for (Cell* cell = list.pFirstCell(); cell; cell = cell->pNextCell()) {
      if constexpr (std::is_same_v<Family, Doubly>) {
        EXPECT_EQ(cell->pPreviousCell(), previous);
      }
      previous = cell;
      result.push_back(cell);
    }
    EXPECT_EQ(list.pLastCell(), previous);
    EXPECT_EQ(list.length(), static_cast<int32_t>(result.size()));
    return result;
  }

  std::vector<Cell*> stablySorted() const {
    std::vector<Cell*> result = cells();
    std::stable_sort(result.begin(), result.end(),
                     [](Cell* a, Cell* b) { return keyOf(a->pObject()) < keyOf(b->pObject()); });
    return result;
  }

  typename Family::List list;
};

template <class Family>
class ListSorts : public testing::Test {};
using Families = testing::Types<Doubly, Singly>;
TYPED_TEST_SUITE(ListSorts, Families);

TYPED_TEST(ListSorts, AreStableAllocateNothingAndTellWhetherAnythingMoved) {
  std::mt19937 random(23);
  for (int round = 0; round < 600; ++round) {
    int length = round < 60 ? round % 6 : static_cast<int>(random() % 150);
    std::vector<int32_t> keys = randomKeys(random, length, round % 3 ? 1 + length / 4 : 1000000);
    if (round % 10 == 0) std::sort(keys.begin(), keys.end());
    for (Algorithm algorithm : ALGORITHMS) {
      SCOPED_TRACE(testing::Message() << "seed 23, round " << round << ", algorithm " << algorithm);
      Keyed<TypeParam> keyed(keys);
      auto expected = keyed.stablySorted();
      int sorted = keyed.cells() == expected;
      Sort<TypeParam> sort;
      int64_t before = allocations;
      ASSERT_EQ(sort.isSorted(&keyed.list), sorted);
      sort.comparisons = 0;
      int32_t result = sortBy(algorithm, sort, &keyed.list);
      ASSERT_EQ(sort.isSorted(&keyed.list), 1);
      ASSERT_EQ(allocations, before);
      ASSERT_EQ(keyed.cells(), expected);
      if (algorithm != QUICK) {
        ASSERT_EQ(result, !sorted);
      }
    }
  }
}

TYPED_TEST(ListSorts, IgnoreANullListAndLeaveASortedOneAlone) {
  Sort<TypeParam> sort;
  Keyed<TypeParam> two({2, 1});
  EXPECT_EQ(sort.quickSort(&two.list, 1), 1);
  // Null gives the answer as it stood.
  EXPECT_EQ(sort.quickSort(nullptr, 1), 1);
  EXPECT_EQ(sort.mergeSort(nullptr), 0);
  EXPECT_EQ(sort.bubbleSort(nullptr), 0);
  EXPECT_EQ(sort.quickSort(nullptr, 0), 0);
  sort.comparisons = 0;
  EXPECT_EQ(sort.quickSort(&two.list, 1), 0);
  EXPECT_EQ(sort.comparisons, 1);
}

// An order that is only decided while a sort asks for it, so that each pivot comes out as bad as it can
// (the adversary of McIlroy). Afterwards decided[i] is the rank of the i-th object.
struct Adversary {
  explicit Adversary(int length) : open(length), decided(static_cast<size_t>(length), length) {}

  int32_t operator()(const ZVObject* object1, const ZVObject* object2) {
    auto x = static_cast<size_t>(keyOf(object1));
    auto y = static_cast<size_t>(keyOf(object2));
    if (decided[x] == open && decided[y] == open) decided[x == candidate ? x : y] = next++;
    if (decided[x] == open) {
      candidate = x;
    } else if (decided[y] == open) {
      candidate = y;
    }
    return decided[x] - decided[y];
  }

  int32_t open;
  std::vector<int32_t> decided;
  int32_t next = 0;
  size_t candidate = 0;
};

TYPED_TEST(ListSorts, QuickSortStaysStableAndFastPastItsDepthLimit) {
  // Each level down to the 31st takes two or three cells away, so that the short lengths leave just a few for
  // the limit. The comparisons are those of this choice of pivots, this limit and what takes over there.
  struct Case {
    int length;
    int64_t comparisons[2];
  };
  for (const auto& [length, comparisons] :
       {Case{64, {1087, 1116}}, Case{67, {1186, 1212}}, Case{68, {1221, 1250}}, Case{69, {1255, 1283}},
        Case{93, {2109, 2131}}, Case{2000, {80373, 79946}}}) {
    std::vector<int32_t> keys(static_cast<size_t>(length));
    std::iota(keys.begin(), keys.end(), 0);
    Adversary adversary(length);
    {
      Keyed<TypeParam> keyed(keys);
      Sort<TypeParam> sort(std::ref(adversary));
      sort.quickSort(&keyed.list, 0);
      EXPECT_EQ(sort.isSorted(&keyed.list), 1);
    }
    // The order found is bad for this sort every time, also when neighbours in it tie.
    for (int32_t tied : {1, 2}) {
      SCOPED_TRACE(testing::Message() << "length " << length << ", " << tied << " tie");
      for (size_t i = 0; i < keys.size(); ++i) keys[i] = adversary.decided[i] / tied;
      Keyed<TypeParam> keyed(keys);
      auto expected = keyed.stablySorted();
      Sort<TypeParam> sort;
      int64_t before = allocations;
      sort.quickSort(&keyed.list, 0);
      EXPECT_EQ(allocations, before);
      EXPECT_EQ(keyed.cells(), expected);
      EXPECT_EQ(sort.comparisons, comparisons[tied - 1]);
    }
  }
  std::vector<int32_t> keys(100);
  for (size_t i = 0; i < keys.size(); ++i) keys[i] = static_cast<int32_t>(i * i % 101);
  Keyed<TypeParam> keyed(keys);
  Sort<TypeParam> sort;
  sort.quickSort(&keyed.list, 0);
  EXPECT_EQ(sort.comparisons, 960);
}

TYPED_TEST(ListSorts, InconsistentComparisonLosesNoCell) {
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    SCOPED_TRACE(testing::Message() << "seed 5, round " << round);
    Keyed<TypeParam> keyed(randomKeys(random, 1 + round, 10));
    auto expected = keyed.cells();
    std::sort(expected.begin(), expected.end());
    Sort<TypeParam> sort([&](auto*, auto*) { return static_cast<int32_t>(random() % 3) - 1; });
    for (Algorithm algorithm : ALGORITHMS) {
      sortBy(algorithm, sort, &keyed.list);
      auto cells = keyed.cells();
      std::sort(cells.begin(), cells.end());
      ASSERT_EQ(cells, expected);
    }
    if constexpr (std::is_same_v<TypeParam, Doubly>) {
      ASSERT_NE(keyed.list.searchCell(sort.findIthElement(&keyed.list, 1 + round / 2)), nullptr);
    }
  }
}

TYPED_TEST(ListSorts, ExtremesAreTheOnesNearestTheHead) {
  Sort<TypeParam> sort;
  Keyed<TypeParam> keyed({3, 1, 5, 1, 5});
  EXPECT_EQ(sort.findSmallestElement(&keyed.list), keyed.list.pCellInPosition(2));
  EXPECT_EQ(sort.findLargestElement(&keyed.list), keyed.list.pCellInPosition(3));
  Keyed<TypeParam> empty({});
  EXPECT_EQ(sort.findSmallestElement(&empty.list), nullptr);
  EXPECT_EQ(sort.findLargestElement(&empty.list), nullptr);
}

TEST(DListSort, IthElementHasTheIthSmallestValue) {
  std::mt19937 random(7);
  Sort<Doubly> sort;
  for (int round = 0; round < 100; ++round) {
    SCOPED_TRACE(testing::Message() << "seed 7, round " << round);
    Keyed<Doubly> keyed(randomKeys(random, round, round % 2 ? 5 : 1000));
    auto cells = keyed.cells();
    auto sorted = keyed.stablySorted();
    ASSERT_EQ(sort.findIthElement(&keyed.list, 0), nullptr);
    ASSERT_EQ(sort.findIthElement(&keyed.list, round + 1), nullptr);
    for (int32_t i = 1; i <= round; ++i) {
      ZVDListCell* found = sort.findIthElement(&keyed.list, i);
      ASSERT_NE(keyed.list.searchCell(found), nullptr);
      ASSERT_EQ(keyOf(found->pObject()), keyOf(sorted[static_cast<size_t>(i - 1)]->pObject()));
    }
    ASSERT_EQ(keyed.cells(), cells);
  }
  EXPECT_EQ(sort.findIthElement(nullptr, 1), nullptr);
}

TEST(DListSort, UnorderedComparisonCountsDuplicates) {
  std::mt19937 random(11);
  ZVObject objects[4];
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE(testing::Message() << "seed 11, round " << round);
    ZVDList lists[2];
    std::vector<ZVObject*> models[2];
    for (int i = 0; i < 2; ++i) {
      for (auto n = random() % 5; n > 0; --n)
        models[i].push_back(random() % 5 ? &objects[random() % 4] : nullptr);
      if (i == 1 && round % 3 == 0) models[1] = models[0];
      std::shuffle(models[i].begin(), models[i].end(), random);
      for (ZVObject* object : models[i]) lists[i].appendObject(object);
    }
    bool same = std::is_permutation(models[0].begin(), models[0].end(), models[1].begin(), models[1].end());
    ASSERT_EQ(lists[0].compareUnordered(&lists[1]), same);
    for (int i = 0; i < 2; ++i) {
      for (size_t k = 0; k < models[i].size(); ++k) {
        ASSERT_EQ(lists[i].pObjectInPosition(static_cast<int32_t>(k) + 1), models[i][k]);
      }
    }
    ASSERT_EQ(lists[0].compareUnordered(nullptr), 0);
  }
}

TEST(ReadySorts, OrderTuplesAndPoints) {
  struct Case {
    int increasing, firstComponent;
    double expected[3][2];
  };
  for (const Case& c : {Case{1, 1, {{1, 5}, {1, 2}, {2.5, 3}}}, Case{0, 1, {{2.5, 3}, {1, 5}, {1, 2}}},
                        Case{1, 0, {{1, 2}, {2.5, 3}, {1, 5}}}, Case{0, 0, {{1, 5}, {2.5, 3}, {1, 2}}}}) {
    ZVDTuple tuples[] = {{2.5, 3}, {1, 5}, {1, 2}};
    ZVDList list;
    for (ZVDTuple& tuple : tuples) list.appendObject(&tuple);
    ZVDTupleDListSort(c.increasing, c.firstComponent).quickSort(&list, 0);
    for (int i = 0; i < 3; ++i) {
      const ZVDTuple* tuple = ZVDTuple::castDown(list.pObjectInPosition(i + 1));
      EXPECT_EQ(tuple->x(), c.expected[i][0]) << c.increasing << c.firstComponent << i;
      EXPECT_EQ(tuple->y(), c.expected[i][1]) << c.increasing << c.firstComponent << i;
    }
  }

  ZVPoint points[] = {{4, 1}, {-3, 9}, {4, -1}, {-3, -9}};
  ZVSList list;
  for (ZVPoint& point : points) list.appendObject(&point);
  EXPECT_EQ(ZVPointSListSort().mergeSort(&list), 1);
  ZVPoint* expected[] = {&points[3], &points[1], &points[2], &points[0]};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(list.pObjectInPosition(i + 1), expected[i]);
}

}  // namespace
