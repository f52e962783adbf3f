#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

#include "utils/zvdlisea.h"
#include "utils/zvvalue.h"

namespace {

int32_t keyOf(const ZVObject* object) { return ZVInt::castDown(object)->value(); }

using Estimate = std::function<int32_t(int32_t key, int32_t low, int32_t high)>;

// Boxed numbers looked up by numbers; notes the key of each cell that a search looks at.
class NumberSearch : public ZVDListSearch {
 public:
  explicit NumberSearch(ZVDList* list = nullptr) { init(list); }

  std::vector<int32_t> keys() const {
    std::vector<int32_t> result;
    for (int32_t i = 0; i < length(); ++i) result.push_back(keyOf(pSearchArray()[i]->pObject()));
    return result;
  }

  bool signs = true;
  Estimate estimate;
  std::vector<const ZVDListCell*> probes;

 protected:
  int32_t virtualCompare(ZVDListCell* cell1, ZVDListCell* cell2) override {
    return keyOf(cell1->pObject()) - keyOf(cell2->pObject());
  }
  void virtualDebugOutputElement(ZVDListCell*) override {}
  int32_t virtualEstimateKeyPosition(void* key, int32_t low, int32_t high) override {
    if (!estimate) return ZVDListSearch::virtualEstimateKeyPosition(key, low, high);
    return estimate(*static_cast<int32_t*>(key), low, high);
  }
  int32_t virtualCompareKey(ZVDListCell* cell, void* key) override {
    probes.push_back(cell);
    int32_t difference = keyOf(cell->pObject()) - *static_cast<int32_t*>(key);
    return signs ? (difference > 0) - (difference < 0) : difference;
  }
};

// The guided search as it is meant, on an array of keys: gives the indices that it looks at.
std::vector<int32_t> guidedProbes(const std::vector<int32_t>& keys, int32_t key, bool signs,
                                  const Estimate& estimate) {
  std::vector<int32_t> probes;
  auto look = [&](int32_t probe) {
    probes.push_back(probe);
    int32_t difference = keys[static_cast<size_t>(probe)] - key;
    return signs ? (difference > 0) - (difference < 0) : difference;
  };
  auto low = 0;
  auto high = static_cast<int32_t>(keys.size()) - 1;
  if (high < 0) return probes;
  auto guess = [&] { return std::min(std::max(estimate(key, low, high), low), high); };
  int32_t step = (high - low) / 10;
  int32_t probe = guess();
  int32_t c = look(probe);
  for (int32_t p = c; c != 0; p = c, c = look(probe)) {
    (c < 0 ? low : high) = c < 0 ? probe + 1 : probe - 1;
    if (low > high) break;
    if (c == p) {
      probe = c < 0 ? std::min(low + step, high) : std::max(high - step, low);
    } else {
      step = (high - low) / 10;
      probe = guess();
    }
  }
  return probes;
}

std::vector<int32_t> binaryProbes(const std::vector<int32_t>& keys, int32_t key) {
  std::vector<int32_t> probes;
  auto low = 0;
  auto high = static_cast<int32_t>(keys.size()) - 1;
  while (low <= high) {
    probes.push_back((low + high) / 2);
    int32_t here = keys[static_cast<size_t>(probes.back())];
    if (here == key) break;
    (here < key ? low : high) = here < key ? probes.back() + 1 : probes.back() - 1;
  }
  return probes;
}

TEST(ListSearch, LooksWhereItsStepsLead) {
  std::mt19937 random(41);
  for (int round = 0; round < 120; ++round) {
    auto length = round < 20 ? round / 2 : static_cast<int>(random() % 400);
    ZVDList list;
    for (int i = 0; i < length; ++i) list.appendObject(new ZVInt(static_cast<int32_t>(random() % 800)));
    NumberSearch search(&list);
    const std::vector<int32_t> keys = search.keys();
    ASSERT_TRUE(std::is_sorted(keys.begin(), keys.end()));
    ASSERT_EQ(list.length(), static_cast<int32_t>(keys.size()));
    const Estimate estimates[] = {
        [](int32_t, int32_t low, int32_t high) { return (low + high) / 2; },
        [&](int32_t key, int32_t, int32_t) { return static_cast<int32_t>(keys.size()) * key / 800; },
        [](int32_t key, int32_t, int32_t) { return key % 2 ? INT32_MAX : INT32_MIN; },
        [](int32_t, int32_t low, int32_t) { return low; }};
    for (int32_t key = -1; key <= 801; key += 1 + static_cast<int32_t>(random() % 20)) {
      auto check = [&](ZVDListCell* found, const std::vector<int32_t>& probes) {
        bool held = std::binary_search(keys.begin(), keys.end(), key);
        ASSERT_EQ(found != nullptr, held);
        ASSERT_EQ(search.probes.size(), probes.size());
        for (size_t i = 0; i < probes.size(); ++i) {
          ASSERT_EQ(search.probes[i], list.pCellInPosition(probes[i] + 1));
        }
        if (held) {
          ASSERT_EQ(found, search.probes.back());
          ASSERT_EQ(keyOf(found->pObject()), key);
        }
        search.probes.clear();
      };
      SCOPED_TRACE(testing::Message() << "seed 41, round " << round << ", key " << key);
      ASSERT_NO_FATAL_FAILURE(check(search.binarySearch(&key), binaryProbes(keys, key)));
      for (int i = 0; i < 4; ++i) {
        if (i > 0) search.estimate = estimates[i];
        for (bool signs : {true, false}) {
          search.signs = signs;
          ASSERT_NO_FATAL_FAILURE(
              check(search.retrieveSearch(&key), guidedProbes(keys, key, signs, estimates[i])));
        }
      }
      search.estimate = nullptr;
      ZVDListCell* first = search.linearSearch(&key);
      auto place = std::find(keys.begin(), keys.end(), key) - keys.begin();
      ASSERT_EQ(first, list.pCellInPosition(static_cast<int32_t>(place) + 1));
      search.probes.clear();
    }
    list.deleteAllCellsAndObjects();
  }
}

TEST(ListSearch, HoldsASnapshotOfTheListBoundLast) {
  ZVInt numbers[] = {3, 1, 2, 9};
  ZVDList list;
  for (ZVInt& number : numbers) list.appendObject(&number);
  NumberSearch search(&list);
  const std::vector<int32_t> all = {1, 2, 3, 9};
  EXPECT_EQ(search.keys(), all);
  list.prependObject(&numbers[3]);
  EXPECT_EQ(search.keys(), all);

  list.deleteAllCells();
  list.appendObject(&numbers[3]);
  list.appendObject(&numbers[0]);
  search.init(&list);
  EXPECT_EQ(search.keys(), (std::vector<int32_t>{3, 9}));
  EXPECT_EQ(list.pFirstCell()->pObject(), &numbers[0]);

  int32_t key = 3;
  list.deleteAllCells();
  for (ZVDList* none : {&list, static_cast<ZVDList*>(nullptr)}) {
    search.init(none);
    EXPECT_EQ(search.linearSearch(&key), nullptr);
    EXPECT_EQ(search.binarySearch(&key), nullptr);
    EXPECT_EQ(search.retrieveSearch(&key), nullptr);
    list.appendObject(&numbers[0]);
    search.init(&list);
    EXPECT_EQ(search.linearSearch(&key), list.pFirstCell());
    list.deleteAllCells();
  }
  search.empty();
  EXPECT_EQ(search.binarySearch(&key), nullptr);
}

// The base's constructor cannot reach the comparisons of the class to come.
TEST(ListSearch, IsBoundByItsBaseToAtMostOneCell) {
  struct Bound : ZVDListSearch {
    using ZVDListSearch::ZVDListSearch;
    int32_t bound() const { return length(); }
    int32_t virtualCompare(ZVDListCell*, ZVDListCell*) override { return 0; }
    int32_t virtualCompareKey(ZVDListCell*, void*) override { return 0; }
    void virtualDebugOutputElement(ZVDListCell*) override {}
  };
  ZVDList list;
  EXPECT_EQ(Bound(&list).bound(), 0);
  list.appendObject(nullptr);
  EXPECT_EQ(Bound(&list).bound(), 1);
  list.appendObject(nullptr);
  Bound search(&list);
  EXPECT_EQ(search.bound(), 0);
  search.init(&list);
  EXPECT_EQ(search.bound(), 2);
}

}  // namespace
