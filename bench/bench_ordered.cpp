// Trees and heaps beside containers that give stable handles as well, on the same elements in the same order.
// None of them should take more than 1.1 times as long as the fastest of these.
#include <benchmark/benchmark.h>

#include <boost/heap/d_ary_heap.hpp>
#include <boost/heap/fibonacci_heap.hpp>
#include <boost/heap/pairing_heap.hpp>
#include <boost/intrusive/rbtree.hpp>
#include <deque>
#include <memory>
#include <numeric>
#include <queue>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "bench/benchlst.h"
#include "utils/zvbheap.h"
#include "utils/zvsbtree.h"

namespace {

using Indices = std::vector<size_t>;

Indices shuffled(size_t count, unsigned seed) {
  Indices order(count);
  std::iota(order.begin(), order.end(), size_t{0});
  std::shuffle(order.begin(), order.end(), std::mt19937(seed));
  return order;
}

// ---- Trees

// One comparison behind a virtual call, as a sorted tree makes it, and the same inline.
struct Order {
  virtual ~Order() = default;
  virtual bool isBefore(const ZVObject* object1, const ZVObject* object2) const = 0;
};
struct KeyOrder : Order {
  bool isBefore(const ZVObject* object1, const ZVObject* object2) const override {
    return keyOf(object1) < keyOf(object2);
  }
};
struct VirtualLess {
  bool operator()(const ZVObject* object1, const ZVObject* object2) const {
    return order->isBefore(object1, object2);
  }
  std::shared_ptr<const Order> owner = std::make_shared<KeyOrder>();
  const Order* order = owner.get();
};
struct InlineLess {
  bool operator()(const ZVObject* object1, const ZVObject* object2) const {
    return keyOf(object1) < keyOf(object2);
  }
};

template <class Less>
struct StdTree {
  using Handle = typename std::set<ZVObject*, Less>::iterator;
  Handle insert(ZVObject* object) { return set.insert(object).first; }
  Handle insertBehind(Handle place, ZVObject* object) { return set.insert(std::next(place), object); }
  void erase(Handle handle) { set.erase(handle); }
  void clear() { set.clear(); }
  std::set<ZVObject*, Less> set;
};

template <class Less>
struct BoostTree {
  struct Node : boost::intrusive::set_base_hook<boost::intrusive::link_mode<boost::intrusive::normal_link>> {
    explicit Node(ZVObject* o) : object(o) {}
    ZVObject* object;
  };
  struct NodeLess : Less {
    bool operator()(const Node& a, const Node& b) const { return Less::operator()(a.object, b.object); }
  };
  using Set = boost::intrusive::rbtree<Node, boost::intrusive::compare<NodeLess>>;
  using Handle = Node*;

  ~BoostTree() { clear(); }
  Handle insert(ZVObject* object) { return &*set.insert_equal(*new Node(object)); }
  Handle insertBehind(Handle place, ZVObject* object) { return link(place, new Node(object)); }
  Handle link(Handle place, Handle node) {
    return &*set.insert_before(place ? std::next(set.iterator_to(*place)) : set.begin(), *node);
  }
  void unlink(Handle handle) { set.erase(set.iterator_to(*handle)); }
  void erase(Handle handle) {
    unlink(handle);
    delete handle;
  }
  void clear() {
    set.clear_and_dispose([](Node* node) { delete node; });
  }
  // The order of two nodes by their places: both climb to the depth of the upper one, then together.
  int32_t compare(Handle a, Handle b) const {
    using Traits = typename Set::node_traits;
    using Links = typename Traits::node_ptr;
    auto depth = [&](Links node) {
      int result = 0;
      for (Links root = Traits::get_parent(header()); node != root; node = Traits::get_parent(node)) ++result;
      return result;
    };
    if (a == b) return 0;
    Links left = Set::value_traits::to_node_ptr(*a);
    Links right = Set::value_traits::to_node_ptr(*b);
    Links fromLeft = nullptr;
    Links fromRight = nullptr;
    int above = depth(left) - depth(right);
    for (; above > 0; --above) fromLeft = std::exchange(left, Traits::get_parent(left));
    for (; above < 0; ++above) fromRight = std::exchange(right, Traits::get_parent(right));
    while (left != right) {
      fromLeft = std::exchange(left, Traits::get_parent(left));
      fromRight = std::exchange(right, Traits::get_parent(right));
    }
    if (!fromLeft) return fromRight == Traits::get_right(left) ? -1 : 1;
    return fromLeft == Traits::get_left(left) ? -1 : 1;
  }
  auto header() const { return Set::value_traits::to_node_ptr(const_cast<Node&>(*set.end().operator->())); }
  Set set;
};

struct ZvTree {
  struct Tree : ZVSortedBinTree {
    int32_t virtualObjectCompare(const ZVObject* object1, const ZVObject* object2) const override {
      return keyOf(object1) - keyOf(object2);
    }
  };
  using Handle = ZVBinTreeCell*;

  Handle insert(ZVObject* object) { return tree.addObject(object); }
  Handle insertBehind(Handle place, ZVObject* object) { return list().addObject(place, object); }
  Handle link(Handle place, Handle cell) { return list().insertCell(place, cell); }
  void unlink(Handle handle) { tree.removeCell(handle); }
  void erase(Handle handle) { tree.discardCell(handle); }
  void clear() { tree.deleteAllCells(); }
  int32_t compare(Handle a, Handle b) const { return tree.compare(a, b); }
  ZVBinTree& list() { return tree; }
  Tree tree;
};

using StdVirtual = StdTree<VirtualLess>;
using StdInline = StdTree<InlineLess>;
using BoostVirtual = BoostTree<VirtualLess>;
using BoostInline = BoostTree<InlineLess>;

// Elements come in an order in which each goes behind one that is already there.
struct Places {
  explicit Places(size_t count) {
    std::mt19937 random(3);
    ZVDList sequence;
    std::vector<ZVDListCell*> cells{sequence.appendObject(nullptr)};
    for (size_t i = 1; i < count; ++i) {
      behind.push_back(random() % i);
      cells.push_back(sequence.addObject(cells[behind.back()], nullptr));
    }
    // Their keys are the ranks that they have in the end.
    objects.resize(count);
    for (size_t i = 0; i < count; ++i) cells[i]->pObject(&objects[i]);
    int32_t rank = 0;
    for (ZVDListCell* cell = sequence.pFirstCell(); cell; cell = cell->pNextCell()) {
      static_cast<ZVInt*>(cell->pObject())->value(rank++);
    }
  }
  std::vector<size_t> behind;
  std::deque<ZVInt> objects;
};

template <class Tree>
void InsertBehind(benchmark::State& state) {
  Places places(static_cast<size_t>(state.range(0)));
  std::vector<typename Tree::Handle> handles(places.objects.size());
  for (auto _ : state) {
    Tree tree;
    handles[0] = tree.insert(&places.objects[0]);
    for (size_t i = 1; i < handles.size(); ++i) {
      handles[i] = tree.insertBehind(handles[places.behind[i - 1]], &places.objects[i]);
    }
    benchmark::DoNotOptimize(&tree);
    state.PauseTiming();
    tree.clear();
    state.ResumeTiming();
  }
}

// The same with elements that are kept, so that nothing is allocated.
template <class Tree>
void LinkBehind(benchmark::State& state) {
  Places places(static_cast<size_t>(state.range(0)));
  std::vector<typename Tree::Handle> handles;
  Tree tree;
  for (ZVInt& object : places.objects) handles.push_back(tree.insert(&object));
  for (auto _ : state) {
    state.PauseTiming();
    for (auto handle : handles) tree.unlink(handle);
    state.ResumeTiming();
    tree.link(nullptr, handles[0]);
    for (size_t i = 1; i < handles.size(); ++i) tree.link(handles[places.behind[i - 1]], handles[i]);
    benchmark::DoNotOptimize(&tree);
  }
}

template <class Tree>
void InsertOrdered(benchmark::State& state) {
  const auto& objects = shuffledObjects(state.range(0));
  for (auto _ : state) {
    Tree tree;
    for (const auto& object : objects) tree.insert(object.get());
    benchmark::DoNotOptimize(&tree);
    state.PauseTiming();
    tree.clear();
    state.ResumeTiming();
  }
}

template <class Tree>
void Erase(benchmark::State& state) {
  const auto& objects = shuffledObjects(state.range(0));
  Indices order = shuffled(objects.size(), 2);
  std::vector<typename Tree::Handle> handles(objects.size());
  Tree tree;
  for (auto _ : state) {
    state.PauseTiming();
    for (size_t i = 0; i < objects.size(); ++i) handles[i] = tree.insert(objects[i].get());
    state.ResumeTiming();
    for (size_t i : order) tree.erase(handles[i]);
    benchmark::DoNotOptimize(&tree);
  }
}

// The same with elements that are kept.
template <class Tree>
void Unlink(benchmark::State& state) {
  const auto& objects = shuffledObjects(state.range(0));
  Indices order = shuffled(objects.size(), 2);
  std::vector<typename Tree::Handle> handles;
  Tree tree;
  for (const auto& object : objects) handles.push_back(tree.insert(object.get()));
  for (auto _ : state) {
    for (size_t i : order) tree.unlink(handles[i]);
    benchmark::DoNotOptimize(&tree);
    state.PauseTiming();
    tree.link(nullptr, handles[0]);
    for (size_t i = 1; i < handles.size(); ++i) tree.link(handles[i / 2], handles[i]);
    state.ResumeTiming();
  }
}

template <class Tree>
void ComparePlaces(benchmark::State& state) {
  const auto& objects = shuffledObjects(state.range(0));
  Indices order = shuffled(objects.size(), 2);
  std::vector<typename Tree::Handle> handles;
  Tree tree;
  for (const auto& object : objects) handles.push_back(tree.insert(object.get()));
  for (auto _ : state) {
    int64_t sum = 0;
    for (size_t i = 0; i < order.size(); ++i) sum += tree.compare(handles[i], handles[order[i]]);
    benchmark::DoNotOptimize(sum);
  }
}

// ---- Heaps

// What each heap does with an element that has the number of a node: push, pop the smallest, lower a value.
struct ZvHeap {
  explicit ZvHeap(size_t count) : nodes(count), cells(count) {}
  ~ZvHeap() {
    while (!empty()) pop();
  }
  bool empty() const { return heap.length() == 0; }
  void push(size_t i, int32_t value) {
    if (!cells[i]) cells[i] = std::make_unique<ZVBinHeapCell>(&nodes[i]);
    cells[i]->value(value);
    heap.insertCell(cells[i].get());
  }
  size_t pop() { return static_cast<size_t>(heap.pExtractMinCell()->pObject() - nodes.data()); }
  void lower(size_t i, int32_t value) { change(i, value); }
  void change(size_t i, int32_t value) { heap.changeValue(cells[i].get(), value); }
  std::vector<ZVObject> nodes;
  std::vector<std::unique_ptr<ZVBinHeapCell>> cells;
  ZVBinHeap heap;
};

struct Element {
  int32_t value;
  size_t node;
  bool operator<(const Element& other) const { return value > other.value; }
};

template <class Heap>
struct BoostHeap {
  explicit BoostHeap(size_t count) : handles(count) {}
  bool empty() const { return heap.empty(); }
  void push(size_t i, int32_t value) { handles[i] = heap.push({value, i}); }
  size_t pop() {
    size_t top = heap.top().node;
    heap.pop();
    return top;
  }
  void lower(size_t i, int32_t value) { heap.increase(handles[i], {value, i}); }
  void change(size_t i, int32_t value) { heap.update(handles[i], {value, i}); }
  Heap heap;
  std::vector<typename Heap::handle_type> handles;
};
namespace bh = boost::heap;
using BoostBinary = BoostHeap<bh::d_ary_heap<Element, bh::arity<2>, bh::mutable_<true>>>;
using BoostQuaternary = BoostHeap<bh::d_ary_heap<Element, bh::arity<4>, bh::mutable_<true>>>;
using BoostPairing = BoostHeap<bh::pairing_heap<Element>>;
using BoostFibonacci = BoostHeap<bh::fibonacci_heap<Element>>;

// Without handles: an element is pushed again, and its old self is skipped.
struct StdHeap {
  explicit StdHeap(size_t count) : values(count) {}
  bool empty() {
    while (!heap.empty() && values[heap.top().node] != heap.top().value) heap.pop();
    return heap.empty();
  }
  void push(size_t i, int32_t value) {
    values[i] = value;
    heap.push({value, i});
  }
  size_t pop() {
    size_t top = heap.top().node;
    values[top] = -1;
    heap.pop();
    return top;
  }
  void lower(size_t i, int32_t value) { push(i, value); }
  std::priority_queue<Element> heap;
  std::vector<int32_t> values;
};

// Shortest ways from one node of a random graph with four edges out of each node.
template <class Heap>
void ShortestWays(benchmark::State& state) {
  constexpr size_t DEGREE = 4;
  constexpr int32_t FAR = 0x7FFFFFFF;
  auto count = static_cast<size_t>(state.range(0));
  std::mt19937 random(5);
  std::vector<std::pair<size_t, int32_t>> edges(count * DEGREE);
  for (auto& edge : edges) edge = {random() % count, static_cast<int32_t>(random() % 100000)};
  std::vector<int32_t> distances;
  Heap heap(count);
  for (auto _ : state) {
    distances.assign(count, FAR);
    distances[0] = 0;
    heap.push(0, 0);
    while (!heap.empty()) {
      size_t node = heap.pop();
      for (size_t e = node * DEGREE; e < (node + 1) * DEGREE; ++e) {
        auto [target, length] = edges[e];
        int32_t distance = distances[node] + length;
        if (distance >= distances[target]) continue;
        bool isNew = std::exchange(distances[target], distance) == FAR;
        isNew ? heap.push(target, distance) : heap.lower(target, distance);
      }
    }
    benchmark::DoNotOptimize(distances.data());
  }
  int64_t sum = 0;
  for (int32_t distance : distances) sum += distance == FAR ? 0 : distance;
  state.counters["sum"] = static_cast<double>(sum);
}

// A full heap whose values go down at random places, and the smallest ones leave and come back last.
template <class Heap>
void LowerValues(benchmark::State& state) {
  auto count = static_cast<size_t>(state.range(0));
  std::mt19937 random(6);
  std::vector<int32_t> values(count);
  Heap heap(count);
  for (size_t i = 0; i < count; ++i) heap.push(i, values[i] = static_cast<int32_t>(random() % 1000000));
  Indices order = shuffled(count, 7);
  int32_t now = 0;
  for (auto _ : state) {
    for (size_t k = 0; k < count; ++k) {
      size_t i = order[k];
      if (k % 4 == 0) {
        heap.empty();
        i = heap.pop();
        now = std::max(now, values[i]);
        heap.push(i, values[i] = now + 1000000);
      } else if (values[i] > now) {
        heap.lower(i, values[i] -= (values[i] - now) / 4);
      }
    }
  }
  state.counters["now"] = static_cast<double>(now) / static_cast<double>(state.iterations());
}

template <class Heap>
void ChangeValues(benchmark::State& state) {
  auto count = static_cast<size_t>(state.range(0));
  std::mt19937 random(8);
  Heap heap(count);
  for (size_t i = 0; i < count; ++i) heap.push(i, static_cast<int32_t>(random() % 1000000));
  Indices order = shuffled(count, 9);
  for (auto _ : state) {
    for (size_t i : order) heap.change(i, static_cast<int32_t>(random() % 1000000));
  }
  while (!heap.empty()) heap.pop();
}

template <class Heap>
void FillAndDrain(benchmark::State& state) {
  auto count = static_cast<size_t>(state.range(0));
  std::mt19937 random(10);
  std::vector<int32_t> values(count);
  for (int32_t& value : values) value = static_cast<int32_t>(random() % 1000000);
  Heap heap(count);
  for (auto _ : state) {
    for (size_t i = 0; i < count; ++i) heap.push(i, values[i]);
    while (!heap.empty()) benchmark::DoNotOptimize(heap.pop());
  }
}

#define SIZES ->Arg(1000)->Arg(100000)
BENCHMARK(LinkBehind<BoostInline>) SIZES;
BENCHMARK(LinkBehind<ZvTree>) SIZES;
BENCHMARK(InsertBehind<StdInline>) SIZES;
BENCHMARK(InsertBehind<BoostInline>) SIZES;
BENCHMARK(InsertBehind<ZvTree>) SIZES;
BENCHMARK(InsertOrdered<StdInline>) SIZES;
BENCHMARK(InsertOrdered<StdVirtual>) SIZES;
BENCHMARK(InsertOrdered<BoostInline>) SIZES;
BENCHMARK(InsertOrdered<BoostVirtual>) SIZES;
BENCHMARK(InsertOrdered<ZvTree>) SIZES;
BENCHMARK(Unlink<BoostInline>) SIZES;
BENCHMARK(Unlink<ZvTree>) SIZES;
BENCHMARK(Erase<StdInline>) SIZES;
BENCHMARK(Erase<BoostInline>) SIZES;
BENCHMARK(Erase<ZvTree>) SIZES;
BENCHMARK(ComparePlaces<BoostInline>) SIZES;
BENCHMARK(ComparePlaces<ZvTree>) SIZES;

#define HEAPS(operation)                       \
  BENCHMARK(operation<BoostBinary>) SIZES;     \
  BENCHMARK(operation<BoostQuaternary>) SIZES; \
  BENCHMARK(operation<BoostPairing>) SIZES;    \
  BENCHMARK(operation<BoostFibonacci>) SIZES;  \
  BENCHMARK(operation<ZvHeap>) SIZES
BENCHMARK(ShortestWays<StdHeap>) SIZES;
HEAPS(ShortestWays);
BENCHMARK(LowerValues<StdHeap>) SIZES;
HEAPS(LowerValues);
HEAPS(ChangeValues);
BENCHMARK(FillAndDrain<StdHeap>) SIZES;
HEAPS(FillAndDrain);

}  // namespace
