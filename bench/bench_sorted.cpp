// The sorts of lists, and lists that keep themselves sorted, beside std::list, each on the same objects in
// the same order. No sort should take longer than std::list::sort.
#include <benchmark/benchmark.h>

#include "bench/benchlst.h"
#include "utils/zvdlists.h"
#include "utils/zvsdlist.h"
#include "utils/zvslists.h"
#include "utils/zvsslist.h"

namespace {

// ---- Sorts

template <class Base, class Cell>
struct KeySort : Base {
  int32_t virtualCompare(Cell* cell1, Cell* cell2) override {
    return keyOf(cell1->pObject()) - keyOf(cell2->pObject());
  }
  void virtualDebugOutputElement(Cell*) override {}
};
using DSort = KeySort<ZVDListSort, ZVDListCell>;
using SSort = KeySort<ZVSListSort, ZVSListCell>;

// The counterpart of a sort object: one comparison behind a virtual call.
struct StdOrder {
  virtual ~StdOrder() = default;
  virtual bool isBefore(const ZVObject* object1, const ZVObject* object2) = 0;
};
struct StdKeyOrder : StdOrder {
  bool isBefore(const ZVObject* object1, const ZVObject* object2) override {
    return keyOf(object1) < keyOf(object2);
  }
};

struct StdSort {
  std::unique_ptr<StdOrder> order = std::make_unique<StdKeyOrder>();
  void operator()(StdList& list) {
    benchmark::DoNotOptimize(order);
    list.sort([this](const ZVObject* a, const ZVObject* b) { return order->isBefore(a, b); });
  }
};
struct StdInlineSort {
  void operator()(StdList& list) {
    list.sort([](const ZVObject* a, const ZVObject* b) { return keyOf(a) < keyOf(b); });
  }
};
template <class Sort>
struct QuickSort {
  Sort sort;
  void operator()(auto& list) { sort.quickSort(&list, 0); }
};
template <class Sort>
struct MergeSort {
  Sort sort;
  void operator()(auto& list) { sort.mergeSort(&list); }
};
template <class Sort>
struct BubbleSort {
  Sort sort;
  void operator()(auto& list) { sort.bubbleSort(&list); }
};

// The order of the keys: FEW are 16 different ones at random.
enum Order : int64_t { RANDOM, SORTED, REVERSED, FEW };

std::vector<std::unique_ptr<ZVInt>> objectsIn(int64_t order, int64_t count) {
  std::vector<std::unique_ptr<ZVInt>> objects;
  for (int32_t i = 0; i < count; ++i) objects.push_back(std::make_unique<ZVInt>(order == FEW ? i % 16 : i));
  if (order == REVERSED) std::reverse(objects.begin(), objects.end());
  if (order == RANDOM || order == FEW) std::shuffle(objects.begin(), objects.end(), std::mt19937(1));
  return objects;
}

// A list that can be put back in its first order, in the same cells at the same addresses.
struct RestorableStd {
  explicit RestorableStd(const std::vector<std::unique_ptr<ZVInt>>& objects) {
    for (const auto& object : objects) cells.push_back(list.insert(list.end(), object.get()));
  }
  void restore() {
    for (StdList::iterator cell : cells) list.splice(list.end(), list, cell);
  }
  StdList list;
  std::vector<StdList::iterator> cells;
};
template <class List>
struct RestorableList {
  explicit RestorableList(const std::vector<std::unique_ptr<ZVInt>>& objects) {
    for (const auto& object : objects) cells.push_back(list.appendObject(object.get()));
  }
  void restore() {
    while (list.pFirstCell()) list.removeCell(list.pFirstCell());
    for (auto* cell : cells) list.appendCell(cell);
  }
  List list;
  std::vector<decltype(list.pFirstCell())> cells;
};
using RestorableD = RestorableList<ZVDList>;
using RestorableS = RestorableList<ZVSList>;

template <class List, class Sorter>
void SortList(benchmark::State& state) {
  const auto objects = objectsIn(state.range(0), state.range(1));
  List restorable(objects);
  Sorter sorter;
  for (auto _ : state) {
    sorter(restorable.list);
    benchmark::DoNotOptimize(&restorable);
    state.PauseTiming();
    restorable.restore();
    state.ResumeTiming();
  }
}

// ---- Lists that keep themselves sorted

struct StdSortedList {
  void add(ZVObject* object) {
    auto place = std::find_if(list.begin(), list.end(),
                              [&](const ZVObject* other) { return order->isBefore(object, other); });
    list.insert(place, object);
  }
  bool holds(const ZVObject* object) {
    for (const ZVObject* other : list) {
      if (other == object) return true;
      if (order->isBefore(object, other)) return false;
    }
    return false;
  }
  StdList list;
  std::unique_ptr<StdOrder> order = std::make_unique<StdKeyOrder>();
};
template <class Base>
struct SortedList : Base {
  int32_t virtualObjectCompare(const ZVObject* object1, const ZVObject* object2) const override {
    return keyOf(object1) - keyOf(object2);
  }
  void add(ZVObject* object) { this->addObject(object); }
  bool holds(const ZVObject* object) const { return this->searchObject(object) != nullptr; }
};

template <class List>
void SortIn(benchmark::State& state) {
  const auto& objects = shuffledObjects(state.range(0));
  for (auto _ : state) {
    List list;
    benchmark::DoNotOptimize(&list);
    for (const auto& object : objects) list.add(object.get());
  }
}

// Half of the objects are held; the place of the others shows that they are not.
template <class List>
void SearchSorted(benchmark::State& state) {
  const auto& objects = shuffledObjects(state.range(0));
  List list;
  benchmark::DoNotOptimize(&list);
  for (size_t i = 0; i < objects.size(); i += 2) list.add(objects[i].get());
  size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(list.holds(objects[next].get()));
    next = next + 1 < objects.size() ? next + 1 : 0;
  }
}

#define SORT(List, ...)                  \
  BENCHMARK(SortList<List, __VA_ARGS__>) \
      ->ArgNames({"order", "cells"})     \
      ->ArgsProduct({{RANDOM, SORTED, REVERSED, FEW}, {1000, 10000, 100000, 1000000}})
SORT(RestorableStd, StdSort);
SORT(RestorableStd, StdInlineSort);
SORT(RestorableD, QuickSort<DSort>);
SORT(RestorableS, QuickSort<SSort>);
SORT(RestorableD, MergeSort<DSort>);
SORT(RestorableS, MergeSort<SSort>);
// Quadratic, so for a handful of cells.
BENCHMARK(SortList<RestorableStd, StdSort>)->Args({RANDOM, 5});
BENCHMARK(SortList<RestorableD, BubbleSort<DSort>>)->Args({RANDOM, 5})->Args({RANDOM, 100});
BENCHMARK(SortList<RestorableS, BubbleSort<SSort>>)->Args({RANDOM, 5})->Args({RANDOM, 100});

#define SORTED_LISTS(operation)                                                     \
  BENCHMARK(operation<StdSortedList>)->Arg(100)->Arg(1000)->Arg(10000);             \
  BENCHMARK(operation<SortedList<ZVSortedDList>>)->Arg(100)->Arg(1000)->Arg(10000); \
  BENCHMARK(operation<SortedList<ZVSortedSList>>)->Arg(100)->Arg(1000)->Arg(10000)
SORTED_LISTS(SortIn);
SORTED_LISTS(SearchSorted);

}  // namespace
