#include <gtest/gtest.h>

#include <array>
#include <random>
#include <type_traits>

#include "utils/zvhorseg.h"
#include "utils/zvptdl.h"
#include "utils/zvptdlit.h"
#include "utils/zvptsl.h"
#include "utils/zvptslit.h"
#include "utils/zvredl.h"
#include "utils/zvredlit.h"
#include "utils/zvresl.h"
#include "utils/zvreslit.h"

namespace {

// The operations whose names hold the word, under names that the tests can share. The plain lists need only
// some of them.
#define WORD(Name)                                                                                        \
  struct Name##Word {                                                                                     \
    using Element = ZV##Name;                                                                             \
    [[maybe_unused]] static constexpr auto add = [](auto& l, auto* c, auto* o) {                          \
      return l.add##Name(c, o);                                                                           \
    };                                                                                                    \
    [[maybe_unused]] static constexpr auto append = [](auto& l, auto* o) { return l.append##Name(o); };   \
    [[maybe_unused]] static constexpr auto prepend = [](auto& l, auto* o) { return l.prepend##Name(o); }; \
    [[maybe_unused]] static constexpr auto addNew = [](auto& l, auto* c, auto* o) {                       \
      return l.add##Name##IfNotInList(c, o);                                                              \
    };                                                                                                    \
    [[maybe_unused]] static constexpr auto appendNew = [](auto& l, auto* o) {                             \
      return l.append##Name##IfNotInList(o);                                                              \
    };                                                                                                    \
    [[maybe_unused]] static constexpr auto prependNew = [](auto& l, auto* o) {                            \
      return l.prepend##Name##IfNotInList(o);                                                             \
    };                                                                                                    \
    [[maybe_unused]] static constexpr auto search = [](auto& l, const auto* o) {                          \
      return l.search##Name(o);                                                                           \
    };                                                                                                    \
    [[maybe_unused]] static constexpr auto searchPrev = [](auto& l, const auto* o) {                      \
      return l.search##Name##Prev(o);                                                                     \
    };                                                                                                    \
    [[maybe_unused]] static constexpr auto position = [](auto& l, const auto* o) {                        \
      return l.positionOf##Name(o);                                                                       \
    };                                                                                                    \
    [[maybe_unused]] static constexpr auto at = [](auto& l, int32_t position) {                           \
      return l.p##Name##InPosition(position);                                                             \
    };                                                                                                    \
    [[maybe_unused]] static constexpr auto deleteAll = [](auto& l) { l.deleteAllCellsAnd##Name##s(); };   \
    [[maybe_unused]] static constexpr auto copyAll = [](auto& l, auto source) {                           \
      l.copyAllCellsAnd##Name##s(source);                                                                 \
    };                                                                                                    \
    [[maybe_unused]] static constexpr auto current = [](const auto& iter) { return iter.p##Name(); };     \
  }
WORD(Point);
WORD(Rect);
WORD(Object);
#undef WORD

template <class TypedList, class TwinList, class BaseList, class BaseCell, class TypedIter, class TheWord>
struct Family {
  using List = TypedList;
  using Twin = TwinList;
  using Base = BaseList;
  using Cell = BaseCell;
  using Iter = TypedIter;
  using Word = TheWord;
  static constexpr bool TWO_WAY = std::is_same_v<Base, ZVDList>;
};

template <class F>
class TypedLists : public testing::Test {};
using Families =
    testing::Types<Family<ZVPointDList, ZVPointSList, ZVDList, ZVDListCell, ZVPointDListIter, PointWord>,
                   Family<ZVPointSList, ZVPointDList, ZVSList, ZVSListCell, ZVPointSListIter, PointWord>,
                   Family<ZVRectDList, ZVRectSList, ZVDList, ZVDListCell, ZVRectDListIter, RectWord>,
                   Family<ZVRectSList, ZVRectDList, ZVSList, ZVSListCell, ZVRectSListIter, RectWord>>;
TYPED_TEST_SUITE(TypedLists, Families);

// One operation on the first of two lists. The numbers are positions, 0 for null.
struct Call {
  int operation, source, place, first, last;

  // The position of the cell given, or the flag.
  template <class Word, class List, class Object>
  int32_t on(List (&lists)[2], Object* object) const {
    List& list = lists[0];
    List* from = source ? &lists[source - 1] : nullptr;
    auto* after = list.pCellInPosition(place);
    auto* start = lists[1].pCellInPosition(first);
    auto* end = lists[1].pCellInPosition(last);
    switch (operation) {
      // clang-format off
      case 0: return list.transferList(after, from);
      case 1: return list.transferListPart(after, from, start, end);
      case 2: return list.appendList(from);
      case 3: return list.prependList(from);
      case 4: return list.copyTransferList(after, from);
      case 5: return list.copyTransferListPart(after, from, start, end);
      case 6: return list.copyAppendList(from);
      case 7: return list.copyPrependList(from);
      case 8: return list.transferListIfNotInList(after, from);
      case 9: return list.transferListPartIfNotInList(after, from, start, end);
      case 10: return list.appendListIfNotInList(from);
      case 11: return list.prependListIfNotInList(from);
      case 12: return list.copyTransferListIfNotInList(after, from);
      case 13: return list.copyTransferListPartIfNotInList(after, from, start, end);
      case 14: return list.copyAppendListIfNotInList(from);
      case 15: return list.copyPrependListIfNotInList(from);
      case 16: return list.positionOfCell(Word::add(list, after, object));
      case 17: return list.positionOfCell(Word::append(list, object));
      case 18: return list.positionOfCell(Word::prepend(list, object));
      case 19: return list.positionOfCell(Word::addNew(list, after, object));
      case 20: return list.positionOfCell(Word::appendNew(list, object));
      default: return list.positionOfCell(Word::prependNew(list, object));
        // clang-format on
    }
  }
};

TYPED_TEST(TypedLists, DoWhatTheListBelowDoes) {
  using Word = typename TypeParam::Word;
  std::mt19937 random(1);
  auto below = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
  std::array<typename Word::Element, 5> objects;
  for (int round = 0; round < 20000; ++round) {
    SCOPED_TRACE(round);
    typename TypeParam::List typed[2];
    typename TypeParam::Base plain[2];
    auto anyObject = [&] { return below(6) ? &objects[static_cast<size_t>(below(5))] : nullptr; };
    for (int i : {0, 1}) {
      for (int length = below(5); length > 0; --length) Word::append(typed[i], anyObject());
      plain[i].copyAllCells(&typed[i]);
    }
    const Call call{round % 22, below(8) ? 2 : below(2), below(typed[0].length() + 1),
                    below(typed[1].length() + 1), below(typed[1].length() + 1)};
    auto* object = anyObject();
    ASSERT_EQ(call.on<Word>(typed, object), call.on<ObjectWord>(plain, object));
    for (int i : {0, 1}) {
      ASSERT_EQ(typed[i].compare(&plain[i]), 1);
      ASSERT_EQ(typed[i].sizeOf(), plain[i].sizeOf());
    }
    ASSERT_EQ(typed[0].compare(&typed[1]), plain[0].compare(&plain[1]));
    const int32_t position = Word::position(typed[0], object);
    ASSERT_EQ(position, plain[0].positionOfObject(object));
    ASSERT_EQ(Word::at(typed[0], position), position < 0 ? nullptr : object);
    ASSERT_EQ(Word::search(typed[0], object), typed[0].searchObject(object));
    if constexpr (!TypeParam::TWO_WAY) {
      ASSERT_EQ(Word::searchPrev(typed[0], object), typed[0].searchPreviousObject(object));
    }
  }
}

TYPED_TEST(TypedLists, CopiesShareOrCloneAndKeepTheClass) {
  using Word = typename TypeParam::Word;
  using List = typename TypeParam::List;
  List list;
  for (int i = 0; i < 3; ++i) Word::append(list, new typename Word::Element(i, 5));

  typename TypeParam::Twin sharing(list);
  List again(sharing);
  EXPECT_EQ(again.compare(&list), 1);
  again.copyAllCells(nullptr);
  EXPECT_EQ(again.compare(&list), 0);
  again.copyAllCells(&sharing);
  EXPECT_EQ(again.compare(&list), 1);
  EXPECT_EQ(list.compare(nullptr), 0);

  // Equal elements, but not the same ones.
  typename TypeParam::Base* clone = static_cast<const typename TypeParam::Base&>(list).cloneObject();
  ASSERT_EQ(typeid(*clone), typeid(List));
  List& deep = static_cast<List&>(*clone);
  auto expectClones = [&] {
    EXPECT_EQ(deep.length(), 3);
    EXPECT_EQ(Word::at(deep, 2)->x(), Word::at(list, 2)->x());
    EXPECT_EQ(Word::position(deep, Word::at(list, 2)), -1);
  };
  expectClones();
  deep = list;
  expectClones();
  Word::copyAll(deep, &list);
  expectClones();
  Word::copyAll(deep, &sharing);
  expectClones();
  Word::copyAll(deep, nullptr);
  EXPECT_EQ(deep.length(), 0);
  delete clone;
  EXPECT_EQ(List(list, ZV_ATTRIBUTE_COPY).length(), 0);
  Word::deleteAll(list);
}

TYPED_TEST(TypedLists, IteratorsGiveTheElements) {
  using Word = typename TypeParam::Word;
  typename TypeParam::List list;
  std::array<typename Word::Element, 3> elements;
  for (auto& element : elements) Word::append(list, &element);

  size_t i = 0;
  typename TypeParam::Iter it;
  EXPECT_EQ(it, 0);
  for (it.init(&list); it; ++it) EXPECT_EQ(Word::current(it), &elements[i++]);
  EXPECT_EQ(i, 3U);
  it.init(&list, list.pLastCell());
  EXPECT_EQ(Word::current(it), &elements[2]);
  EXPECT_EQ(Word::current(typename TypeParam::Iter(&list, list.pCellInPosition(2))), &elements[1]);
  EXPECT_EQ(Word::current(typename TypeParam::Iter(&list)), &elements[0]);
  if constexpr (TypeParam::TWO_WAY) {
    typename TypeParam::Iter back(&list, ZV_ITER_BACKWARD);
    for (; back; i % 2 ? --back : back--) EXPECT_EQ(Word::current(back), &elements[--i]);
    EXPECT_EQ(i, 0U);
    back.init(&list, ZV_ITER_BACKWARD);
    EXPECT_EQ(Word::current(back), &elements[2]);
  }
}

TEST(HorSegment, CopiesShareTheObjectsOrAreEmpty) {
  ZVPoint points[2];
  ZVHorSegment segment;
  EXPECT_EQ(segment.y(), 0);
  EXPECT_EQ(segment.y(7), 7);
  const int32_t empty = segment.sizeOf();
  for (ZVPoint& point : points) segment.pList()->appendObject(&point);
  EXPECT_EQ(segment.sizeOf(), empty + 2 * segment.pList()->pFirstCell()->sizeOf());

  ZVHorSegment target;
  target.pList()->appendObject(&points[1]);
  target = segment;
  EXPECT_EQ(target.y(), 7);
  EXPECT_EQ(target.pList()->compare(segment.pList()), 1);
  segment.y(-3);
  target.copyAttributes(&segment);
  EXPECT_EQ(target.y(), -3);
  EXPECT_EQ(target.pList()->length(), 0);
}

}  // namespace
