#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <random>
#include <unordered_map>

#include "utils/zvidxhsh.h"

namespace {

constexpr intptr_t LOWEST = std::numeric_limits<intptr_t>::min();
constexpr intptr_t HIGHEST = std::numeric_limits<intptr_t>::max();

using Model = std::unordered_map<intptr_t, int32_t>;

void checkAnswers(const ZVIndexHashTable& table, const Model& model, intptr_t key) {
  auto found = model.find(key);
  ASSERT_EQ(table.lookup(key), found == model.end() ? table.errorValue() : found->second) << key;
}

void checkAll(const ZVIndexHashTable& table, const Model& model, int32_t buckets) {
  intptr_t maxKey = 0;
  int32_t maxValue = 0;
  for (auto [key, value] : model) {
    ASSERT_NO_FATAL_FAILURE(checkAnswers(table, model, key));
    maxKey = std::max(maxKey, key);
    maxValue = std::max(maxValue, value);
  }
  for (intptr_t key : {LOWEST, LOWEST + 1, HIGHEST, intptr_t{-1}, intptr_t{0}}) {
    ASSERT_NO_FATAL_FAILURE(checkAnswers(table, model, key));
  }
  // Each key has one record.
  size_t size = sizeof(ZVIndexHashTable) + static_cast<size_t>(buckets) * sizeof(void*);
  ASSERT_EQ(table.sizeOf(), static_cast<int32_t>(size + model.size() * sizeof(ZVIndexHash)));
  ASSERT_EQ(table.maxHashIndex(), maxKey);
  ASSERT_GE(table.maxValueIndex(), maxValue);
}

TEST(IndexHashTable, AnswersLikeAMapForKeysOfAnySignAndSize) {
  struct Geometry {
    int32_t buckets, divisor, errorValue;
  };
  for (Geometry g : {Geometry{3, 8, 0}, Geometry{1, 1, -1}, Geometry{101, -1, 7}, Geometry{64, -16, 0}}) {
    SCOPED_TRACE(testing::Message() << "seed and buckets " << g.buckets << ", divisor " << g.divisor);
    std::mt19937_64 random(static_cast<unsigned>(g.buckets));
    ZVIndexHashTable table(g.buckets, g.divisor, g.errorValue);
    Model model;
    ASSERT_NO_FATAL_FAILURE(checkAll(table, model, g.buckets));
    for (int step = 0; step < 600; ++step) {
      auto key = static_cast<intptr_t>(random());
      if (step % 3) key = key % 100;
      if (step % 97 == 0) key = step % 2 ? LOWEST : HIGHEST;
      auto value = static_cast<int32_t>(random());
      table.update(key, value);
      model[key] = value;
      ASSERT_NO_FATAL_FAILURE(checkAnswers(table, model, key));
      ASSERT_NO_FATAL_FAILURE(checkAnswers(table, model, static_cast<intptr_t>(random() % 100)));
    }
    ASSERT_NO_FATAL_FAILURE(checkAll(table, model, g.buckets));

    ZVIndexHashTable target(5);
    target.update(12345678, 1);
    target = table;
    ASSERT_NO_FATAL_FAILURE(checkAll(target, model, g.buckets));
    target.copyAttributes(&table);
    ASSERT_NO_FATAL_FAILURE(checkAll(target, Model(), g.buckets));
    EXPECT_EQ(target.maxValueIndex(), 0);
    EXPECT_EQ(target.divisor(), g.divisor);
    EXPECT_EQ(target.errorValue(), g.errorValue);
  }
}

TEST(IndexHashTable, MaximaStartAtZeroAndACopyCountsWhatItHolds) {
  ZVIndexHashTable table;
  table.update(-5, -7);
  EXPECT_EQ(table.maxHashIndex() + table.maxValueIndex(), 0);
  table.update(-5, 9);
  table.update(-5, 3);
  EXPECT_EQ(table.maxValueIndex(), 9);
  EXPECT_EQ(std::unique_ptr<ZVIndexHashTable>(table.cloneObject())->maxValueIndex(), 3);
}

// With a look at the chain for each of them this would not end in any patience.
TEST(IndexHashTable, AscendingKeysFillOneChainQuickly) {
  constexpr int32_t COUNT = 1000000;
  constexpr intptr_t STEP = 8;
  ZVIndexHashTable table(1, 8, -1);
  for (int32_t i = 1; i <= COUNT; ++i) table.update(STEP * i, i);
  EXPECT_EQ(table.lookup(STEP), 1);
  EXPECT_EQ(table.lookup(STEP * COUNT), COUNT);
  EXPECT_EQ(table.maxHashIndex(), STEP * COUNT);
}

}  // namespace
