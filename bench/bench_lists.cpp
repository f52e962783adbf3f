// The lists and the index hash table beside their counterparts in the standard library, each
// pair on the same objects in the same order. No list operation should take more than 1.2 times as long.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <unordered_map>
#include <vector>

#include "bench/benchlst.h"
#include "utils/zvdlisti.h"
#include "utils/zvidxhsh.h"
#include "utils/zvslisti.h"

namespace {

// What the benchmarks do, in the words of either side.
template <class Visit>
void walk(StdList& list, Visit visit) {
  for (ZVObject* object : list) visit(object);
}
template <class Visit>
void walk(ZVDList& list, Visit visit) {
  for (ZVDListIter it(&list); it; ++it) visit(it.pObject());
}
template <class Visit>
void walk(ZVSList& list, Visit visit) {
  for (ZVSListIter it(&list); it; ++it) visit(it.pObject());
}

bool holds(StdList& list, ZVObject* object) {
  return std::find(list.begin(), list.end(), object) != list.end();
}
bool holds(ZVDList& list, ZVObject* object) { return list.searchObject(object) != nullptr; }
bool holds(ZVSList& list, ZVObject* object) { return list.searchObject(object) != nullptr; }

void moveAll(StdList& target, StdList& source) { target.splice(target.end(), source); }
void moveAll(ZVDList& target, ZVDList& source) { target.appendList(&source); }
void moveAll(ZVSList& target, ZVSList& source) { target.appendList(&source); }

// The first ten cells go to the end of the other list.
constexpr int RUN = 10;
void moveRun(StdList& target, StdList& source) {
  target.splice(target.end(), source, source.begin(), std::next(source.begin(), RUN));
}
void moveRun(ZVDList& target, ZVDList& source) {
  target.transferListPart(target.pLastCell(), &source, source.pFirstCell(), source.pCellInPosition(RUN));
}
void moveRun(ZVSList& target, ZVSList& source) {
  target.transferNextListPart(target.pLastCell(), &source, nullptr, source.pCellInPosition(RUN));
}

// The first cell goes to the end.
void rotate(StdList& list) { list.splice(list.end(), list, list.begin()); }
void rotate(ZVDList& list) { list.appendCell(list.removeCell(list.pFirstCell())); }
void rotate(ZVSList& list) { list.appendCell(list.removeNextCell(nullptr)); }

// A new element behind the first one comes and goes.
void insertAndErase(StdList& list, ZVObject* object) {
  list.erase(list.insert(std::next(list.begin()), object));
}
void insertAndErase(ZVDList& list, ZVObject* object) {
  list.discardCell(list.addObject(list.pFirstCell(), object));
}
void insertAndErase(ZVSList& list, ZVObject* object) {
  list.addObject(list.pFirstCell(), object);
  list.discardNextCell(list.pFirstCell());
}

void copyInto(StdList& target, const StdList& source) {
  target.clear();
  target.insert(target.end(), source.begin(), source.end());
}
void copyInto(ZVDList& target, const ZVDList& source) { target.copyAllCells(&source); }
void copyInto(ZVSList& target, const ZVSList& source) { target.copyAllCells(&source); }

template <class List>
void Append(benchmark::State& state) {
  shuffledObjects(state.range(0));
  for (auto _ : state) {
    List list;
    fill(list, state.range(0));
    benchmark::DoNotOptimize(&list);
    state.PauseTiming();
    clear(list);
    state.ResumeTiming();
  }
}

template <class List>
void Clear(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    List list;
    fill(list, state.range(0));
    state.ResumeTiming();
    clear(list);
    benchmark::DoNotOptimize(&list);
  }
}

template <class List>
void AppendAndClear(benchmark::State& state) {
  shuffledObjects(state.range(0));
  for (auto _ : state) {
    List list;
    fill(list, state.range(0));
    benchmark::DoNotOptimize(&list);
  }
}

template <class List>
void Copy(benchmark::State& state) {
  List source;
  List target;
  fill(source, state.range(0));
  for (auto _ : state) {
    copyInto(target, source);
    benchmark::DoNotOptimize(&target);
    clear(target);
  }
}

template <class List>
void Walk(benchmark::State& state) {
  List list;
  fill(list, state.range(0));
  for (auto _ : state) {
    uintptr_t sum = 0;
    walk(list, [&](ZVObject* object) { sum += reinterpret_cast<uintptr_t>(object); });
    benchmark::DoNotOptimize(sum);
  }
}

template <class List>
void Search(benchmark::State& state) {
  List list;
  fill(list, state.range(0));
  ZVObject absent;
  for (auto _ : state) benchmark::DoNotOptimize(holds(list, &absent));
}

template <class List>
void Reverse(benchmark::State& state) {
  List list;
  fill(list, state.range(0));
  for (auto _ : state) {
    list.reverse();
    benchmark::DoNotOptimize(&list);
  }
}

// Two lists of one family and what goes back and forth between them.
template <class List, void (*move)(List&, List&)>
void Transfer(benchmark::State& state) {
  List lists[2];
  for (List& list : lists) fill(list, state.range(0));
  for (auto _ : state) {
    move(lists[0], lists[1]);
    benchmark::DoNotOptimize(&lists);
    move(lists[1], lists[0]);
    benchmark::DoNotOptimize(&lists);
  }
}
template <class List>
void TransferWhole(benchmark::State& state) {
  Transfer<List, moveAll>(state);
}
template <class List>
void TransferPart(benchmark::State& state) {
  Transfer<List, moveRun>(state);
}

template <class List>
void MoveCell(benchmark::State& state) {
  List list;
  fill(list, state.range(0));
  for (auto _ : state) {
    rotate(list);
    benchmark::DoNotOptimize(&list);
  }
}

template <class List>
void InsertAndErase(benchmark::State& state) {
  List list;
  fill(list, state.range(0));
  ZVObject object;
  for (auto _ : state) {
    insertAndErase(list, &object);
    benchmark::DoNotOptimize(&list);
  }
}

// Keys as the writer of files enters them: addresses of objects, in a random order.
std::vector<intptr_t> addresses(int64_t count) {
  std::vector<intptr_t> keys;
  for (const auto& object : shuffledObjects(count)) keys.push_back(reinterpret_cast<intptr_t>(object.get()));
  return keys;
}

struct StdTable {
  explicit StdTable(int64_t buckets) : map(static_cast<size_t>(buckets)) {}
  void update(intptr_t key, int32_t value) { map[key] = value; }
  int32_t lookup(intptr_t key) const {
    auto found = map.find(key);
    return found == map.end() ? 0 : found->second;
  }
  std::unordered_map<intptr_t, int32_t> map;
};
struct Table : ZVIndexHashTable {
  explicit Table(int64_t buckets) : ZVIndexHashTable(static_cast<int32_t>(buckets)) {}
};

// A prime near the number of keys.
int64_t bucketsFor(int64_t count) { return count < 10000 ? 1009 : 100003; }

template <class HashTable>
void Update(benchmark::State& state) {
  std::vector<intptr_t> keys = addresses(state.range(0));
  for (auto _ : state) {
    HashTable table(bucketsFor(state.range(0)));
    int32_t id = 0;
    for (intptr_t key : keys) table.update(key, ++id);
    benchmark::DoNotOptimize(&table);
  }
}

template <class HashTable>
void LookUp(benchmark::State& state) {
  std::vector<intptr_t> keys = addresses(state.range(0));
  HashTable table(bucketsFor(state.range(0)));
  for (intptr_t key : keys) table.update(key, 1);
  std::shuffle(keys.begin(), keys.end(), std::mt19937(2));
  for (auto _ : state) {
    int32_t sum = 0;
    for (intptr_t key : keys) sum += table.lookup(key) + table.lookup(key + 8);
    benchmark::DoNotOptimize(sum);
  }
}

#define LISTS(operation)                                             \
  BENCHMARK(operation<StdList>)->Arg(100)->Arg(10000)->Arg(1000000); \
  BENCHMARK(operation<ZVDList>)->Arg(100)->Arg(10000)->Arg(1000000); \
  BENCHMARK(operation<ZVSList>)->Arg(100)->Arg(10000)->Arg(1000000)
LISTS(AppendAndClear);
LISTS(Append);
LISTS(Clear);
LISTS(Copy);
LISTS(Walk);
LISTS(Search);
LISTS(Reverse);
LISTS(TransferWhole);
LISTS(TransferPart);
LISTS(MoveCell);
LISTS(InsertAndErase);

#define TABLES(operation)                                 \
  BENCHMARK(operation<StdTable>)->Arg(1000)->Arg(100000); \
  BENCHMARK(operation<Table>)->Arg(1000)->Arg(100000)
TABLES(Update);
TABLES(LookUp);

}  // namespace
