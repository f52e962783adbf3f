// The frames that the layers above fill: algorithms and arrays.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "utils/zvalgori.h"
#include "utils/zvsarray.h"

namespace {

using Calls = std::vector<std::string>;

struct Phases : ZVAlgorithm {
  void emptyInformation() override { calls.push_back("emptyInformation"); }
  void initialize() override { calls.push_back("initialize"); }
  void algorithmBody() override { calls.push_back("algorithmBody"); }
  void finalize() override { calls.push_back("finalize"); }
  Calls calls;
};

TEST(Algorithm, EachRunIsTheSameFourPhases) {
  static_assert(std::is_abstract_v<ZVAlgorithm>);
  static_assert(!std::is_copy_constructible_v<Phases>);
  Phases algorithm;
  const Calls once = {"emptyInformation", "initialize", "algorithmBody", "finalize"};
  Calls expected;
  for (int run = 1; run <= 2; ++run) {
    algorithm.run();
    expected.insert(expected.end(), once.begin(), once.end());
    EXPECT_EQ(algorithm.calls, expected);
  }
  Phases other;
  algorithm = other;
  algorithm.ZVAlgorithm::copyAttributes(&other);
  EXPECT_EQ(other.calls, Calls());
}

// An array of numbers as a layer above would write it, which notes what the frame calls.
class Numbers : public ZVSimpleArray {
 public:
  Numbers() = default;
  explicit Numbers(int32_t size) : ZVSimpleArray(size), values(static_cast<size_t>(this->size())) {}
  Numbers(std::initializer_list<int> list) : Numbers(static_cast<int32_t>(list.size())) { values = list; }

  std::vector<int> values;
  mutable Calls calls;

 protected:
  void empty() override {
    calls.push_back("empty");
    values.clear();
  }
  void allocate(int32_t newSize) override {
    calls.push_back("allocate " + std::to_string(newSize));
    values.resize(static_cast<size_t>(newSize));
  }
  void reallocate(int32_t newSize) override {
    calls.push_back("reallocate " + std::to_string(newSize) + " of " + std::to_string(size()));
    values.resize(static_cast<size_t>(newSize));
  }
  int elementEquals(const ZVSimpleArray* other, int32_t index) const override {
    calls.push_back("elementEquals " + std::to_string(index));
    return at(index) == castDown(other)->at(index);
  }
  void copyElement(const ZVSimpleArray* other, int32_t index) override {
    values[static_cast<size_t>(index)] = castDown(other)->at(index);
  }

 private:
  int at(int32_t index) const { return values[static_cast<size_t>(index)]; }

  ZV_SHAPE_FULL(Numbers)
};
ZV_DEFINE_FULL(Numbers, ZVSimpleArray)
void Numbers::init() {}
void Numbers::NumbersdeepCopy(const Numbers& other) {
  ZVSimpleArray::copyObject(&other);
  for (int32_t index = 0; index < size(); ++index) copyElement(&other, index);
}
void Numbers::NumbersattributeCopy(const Numbers& other) { ZVSimpleArray::copyAttributes(&other); }

TEST(SimpleArray, ResizesAndComparesThroughItsElements) {
  Numbers array(-3);
  EXPECT_EQ(array.size(), 0);
  array.resize(-1);
  array.resize(4);
  array.resize(4);
  EXPECT_EQ(array.calls, (Calls{"reallocate 0 of 0", "reallocate 4 of 0", "reallocate 4 of 4"}));
  EXPECT_EQ(array.size(), 4);

  struct Case {
    Numbers a, b;
    int equal;
    Calls calls;
  };
  const Case cases[] = {{{}, {}, 1, {}},
                        {{1}, {1, 2}, 0, {}},
                        {{1, 2}, {1, 2}, 1, {"elementEquals 0", "elementEquals 1"}},
                        {{1, 2, 3}, {1, 5, 3}, 0, {"elementEquals 0", "elementEquals 1"}}};
  for (const Case& c : cases) {
    EXPECT_EQ(c.a == c.b, c.equal);
    EXPECT_EQ(c.a.calls, c.calls);
    EXPECT_EQ(c.a != c.b, !c.equal);
    EXPECT_EQ(c.b.calls, Calls());
  }
}

TEST(SimpleArray, CopiesGetTheSizeFirst) {
  Numbers source{1, 2, 3};
  Numbers same{7, 8, 9};
  same = source;
  EXPECT_EQ(same.calls, Calls());
  EXPECT_TRUE(same == source);
  Numbers other{7};
  other.copyObject(&source);
  EXPECT_EQ(other.calls, (Calls{"empty", "allocate 3"}));
  EXPECT_TRUE(other == source);
  std::unique_ptr<Numbers> clone(source.cloneObject());
  EXPECT_EQ(clone->calls, (Calls{"empty", "allocate 3"}));
  EXPECT_TRUE(*clone == source);

  other.calls.clear();
  other.copyAttributes(&source);
  EXPECT_EQ(other.calls, Calls{"empty"});
  EXPECT_EQ(other.size(), 0);
  other = *&other;
  EXPECT_EQ(other.calls, Calls{"empty"});
  EXPECT_EQ(std::unique_ptr<Numbers>(source.cloneAttributes())->size(), 0);
}

}  // namespace
