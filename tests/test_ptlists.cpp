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

// The operations whose names hold the word, under names that the tests can share.
struct PointWord {
  using Element = ZVPoint;
  static constexpr auto add = [](auto& l, auto* after, ZVPoint* p) { return l.addPoint(after, p); };
  static constexpr auto append = [](auto& l, ZVPoint* p) { return l.appendPoint(p); };
  static constexpr auto prepend = [](auto& l, ZVPoint* p) { return l.prependPoint(p); };
  static constexpr auto addNew = [](auto& l, auto* c, ZVPoint* p) { return l.addPointIfNotInList(c, p); };
  static constexpr auto appendNew = [](auto& l, ZVPoint* p) { return l.appendPointIfNotInList(p); };
  static constexpr auto prependNew = [](auto& l, ZVPoint* p) { return l.prependPointIfNotInList(p); };
  static constexpr auto search = [](auto& l, const ZVPoint* p) { return l.searchPoint(p); };
  static constexpr auto searchPrev = [](auto& l, const ZVPoint* p) { return l.searchPointPrev(p); };
  static constexpr auto position = [](auto& l, const ZVPoint* p) { return l.positionOfPoint(p); };
  static constexpr auto at = [](auto& l, int32_t position) { return l.pPointInPosition(position); };
  static constexpr auto deleteAll = [](auto& l) { l.deleteAllCellsAndPoints(); };
  static constexpr auto copyAll = [](auto& l, auto* source) { l.copyAllCellsAndPoints(source); };
  static constexpr auto current = [](auto& iter) { return iter.pPoint(); };
};

struct RectWord {
  using Element = ZVRect;
  static constexpr auto add = [](auto& l, auto* after, ZVRect* r) { return l.addRect(after, r); };
  static constexpr auto append = [](auto& l, ZVRect* r) { return l.appendRect(r); };
  static constexpr auto prepend = [](auto& l, ZVRect* r) { return l.prependRect(r); };
  static constexpr auto addNew = [](auto& l, auto* c, ZVRect* r) { return l.addRectIfNotInList(c, r); };
  static constexpr auto appendNew = [](auto& l, ZVRect* r) { return l.appendRectIfNotInList(r); };
  static constexpr auto prependNew = [](auto& l, ZVRect* r) { return l.prependRectIfNotInList(r); };
  static constexpr auto search = [](auto& l, const ZVRect* r) { return l.searchRect(r); };
  static constexpr auto searchPrev = [](auto& l, const ZVRect* r) { return l.searchRectPrev(r); };
  static constexpr auto position = [](auto& l, const ZVRect* r) { return l.positionOfRect(r); };
  static constexpr auto at = [](auto& l, int32_t position) { return l.pRectInPosition(position); };
  static constexpr auto deleteAll = [](auto& l) { l.deleteAllCellsAndRects(); };
  static constexpr auto copyAll = [](auto& l, auto* source) { l.copyAllCellsAndRects(source); };
  static constexpr auto current = [](auto& iter) { return iter.pRect(); };
};

struct ObjectWord {
  static constexpr auto add = [](auto& l, auto* after, ZVObject* o) { return l.addObject(after, o); };
  static constexpr auto append = [](auto& l, ZVObject* o) { return l.appendObject(o); };
  static constexpr auto prepend = [](auto& l, ZVObject* o) { return l.prependObject(o); };
  static constexpr auto addNew = [](auto& l, auto* c, ZVObject* o) { return l.addObjectIfNotInList(c, o); };
  static constexpr auto appendNew = [](auto& l, ZVObject* o) { return l.appendObjectIfNotInList(o); };
  static constexpr auto prependNew = [](auto& l, ZVObject* o) { return l.prependObjectIfNotInList(o); };
};

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

// The typed operation on typed lists and the untyped one on plain lists, side by side.
template <class F>
class SideBySide {
  using Word = typename F::Word;

 public:
  explicit SideBySide(unsigned seed) : random_(seed) {}

  void step() {
    operation_ = below(22);
    source_ = below(8) ? 1 : below(2) - 1;
    place_ = below(typed_[0].length() + 1);
    first_ = below(typed_[1].length() + 1);
    last_ = below(typed_[1].length() + 1);
    ASSERT_EQ(apply<Word>(typed_), apply<ObjectWord>(plain_));
    for (int i : {0, 1}) {
      ASSERT_EQ(typed_[i].compare(&plain_[i]), 1);
      ASSERT_EQ(typed_[i].sizeOf(), plain_[i].sizeOf());
    }
    ASSERT_EQ(typed_[0].compare(&typed_[1]), plain_[0].compare(&plain_[1]));
    checkSearches();
    if (typed_[0].length() > 12) refill();
  }

 private:
  // The position of the cell given, or the flag.
  template <class TheWord, class List>
  int32_t apply(List (&lists)[2]) {
    List& list = lists[0];
    List* source = source_ < 0 ? nullptr : &lists[source_];
    auto* after = list.pCellInPosition(place_);
    auto* first = lists[1].pCellInPosition(first_);
    auto* last = lists[1].pCellInPosition(last_);
    auto* object = object_;
    auto position = [&list](auto* cell) { return list.positionOfCell(cell); };
    switch (operation_) {
      // clang-format off
      case 0: return list.transferList(after, source);
      case 1: return list.transferListPart(after, source, first, last);
      case 2: return list.appendList(source);
      case 3: return list.prependList(source);
      case 4: return list.copyTransferList(after, source);
      case 5: return list.copyTransferListPart(after, source, first, last);
      case 6: return list.copyAppendList(source);
      case 7: return list.copyPrependList(source);
      case 8: return list.transferListIfNotInList(after, source);
      case 9: return list.transferListPartIfNotInList(after, source, first, last);
      case 10: return list.appendListIfNotInList(source);
      case 11: return list.prependListIfNotInList(source);
      case 12: return list.copyTransferListIfNotInList(after, source);
      case 13: return list.copyTransferListPartIfNotInList(after, source, first, last);
      case 14: return list.copyAppendListIfNotInList(source);
      case 15: return list.copyPrependListIfNotInList(source);
      case 16: return position(TheWord::add(list, after, object));
      case 17: return position(TheWord::append(list, object));
      case 18: return position(TheWord::prepend(list, object));
      case 19: return position(TheWord::addNew(list, after, object));
      case 20: return position(TheWord::appendNew(list, object));
      default: return position(TheWord::prependNew(list, object));
        // clang-format on
    }
  }

  void checkSearches() {
    object_ = below(6) ? &objects_[static_cast<size_t>(below(5))] : nullptr;
    const int32_t position = Word::position(typed_[0], object_);
    ASSERT_EQ(position, plain_[0].positionOfObject(object_));
    ASSERT_EQ(Word::at(typed_[0], position), position < 0 ? nullptr : object_);
    ASSERT_EQ(Word::search(typed_[0], object_), typed_[0].searchObject(object_));
    if constexpr (!F::TWO_WAY) {
      ASSERT_EQ(Word::searchPrev(typed_[0], object_), typed_[0].searchPreviousObject(object_));
    }
  }

  // The first lists lose most of their cells to the second ones.
  void refill() {
    typed_[1].deleteAllCells();
    typed_[1].transferListPart(nullptr, &typed_[0], typed_[0].pFirstCell(), typed_[0].pCellInPosition(8));
    for (int i : {0, 1}) plain_[i].copyAllCells(&typed_[i]);
  }

  int32_t below(int32_t limit) { return static_cast<int32_t>(random_() % static_cast<unsigned>(limit)); }

  std::mt19937 random_;
  std::array<typename Word::Element, 5> objects_;
  typename Word::Element* object_ = nullptr;
  typename F::List typed_[2];
  typename F::Base plain_[2];
  int operation_ = 0;
  int source_ = 0;
  int32_t place_ = 0;
  int32_t first_ = 0;
  int32_t last_ = 0;
};

TYPED_TEST(TypedLists, DoWhatTheListBelowDoes) {
  for (unsigned seed = 1; seed <= 8; ++seed) {
    SideBySide<TypeParam> lists(seed);
    for (int step = 0; step < 600 && !this->HasFatalFailure(); ++step) {
      SCOPED_TRACE(testing::Message() << "seed " << seed << " step " << step);
      lists.step();
    }
  }
}

TYPED_TEST(TypedLists, CopiesShareOrCloneAndKeepTheClass) {
  using Word = typename TypeParam::Word;
  using List = typename TypeParam::List;
  using Base = typename TypeParam::Base;
  using Twin = typename TypeParam::Twin;
  List list;
  for (int i = 0; i < 3; ++i) Word::append(list, new typename Word::Element(i, 5));

  Twin sharing(list);
  List again(sharing);
  EXPECT_EQ(again.compare(&list), 1);
  const std::conditional_t<TypeParam::TWO_WAY, ZVSList, ZVDList> plain(list);
  EXPECT_EQ(plain.compare(&sharing), 1);
  again.copyAllCells(static_cast<List*>(nullptr));
  EXPECT_EQ(again.compare(&list), 0);
  again.copyAllCells(&sharing);
  EXPECT_EQ(again.compare(&list), 1);
  again.copyAllCells(nullptr);
  again.copyAllCells(&list);
  EXPECT_EQ(again.compare(&list), 1);
  EXPECT_EQ(list.compare(nullptr), 0);

  // Equal elements, but not the same ones.
  Base* clone = static_cast<const Base&>(list).cloneObject();
  ASSERT_EQ(typeid(*clone), typeid(List));
  List* deep = static_cast<List*>(clone);
  EXPECT_EQ(deep->length(), 3);
  EXPECT_EQ(deep->compare(&list), 0);
  EXPECT_EQ(Word::at(*deep, 2)->x(), Word::at(list, 2)->x());
  EXPECT_EQ(Word::position(*deep, Word::at(list, 2)), -1);
  *deep = list;
  EXPECT_EQ(deep->compare(&list), 0);
  Word::copyAll(*deep, &list);
  Word::copyAll(*deep, &sharing);
  EXPECT_EQ(deep->length(), 3);
  EXPECT_EQ(Word::search(*deep, Word::at(list, 1)), nullptr);
  Word::copyAll(*deep, static_cast<Twin*>(nullptr));
  EXPECT_EQ(deep->length(), 0);
  delete deep;
  EXPECT_EQ(List(list, ZV_ATTRIBUTE_COPY).length(), 0);
  Word::deleteAll(list);
  EXPECT_EQ(list.length(), 0);
}

TYPED_TEST(TypedLists, IteratorsGiveTheElements) {
  using Word = typename TypeParam::Word;
  using Iter = typename TypeParam::Iter;
  typename TypeParam::List list;
  std::array<typename Word::Element, 3> elements;
  for (auto& element : elements) Word::append(list, &element);

  size_t i = 0;
  for (Iter it(&list); it; ++it) EXPECT_EQ(Word::current(it), &elements[i++]);
  EXPECT_EQ(i, 3U);
  Iter it(&list, list.pLastCell());
  EXPECT_EQ(Word::current(it), &elements[2]);
  it.init(&list);
  EXPECT_EQ(Word::current(it), &elements[0]);
  it.init(&list, list.pLastCell());
  EXPECT_EQ(it.pObject(), &elements[2]);
  it.init(&list, nullptr);
  EXPECT_EQ(it, 0);
  EXPECT_EQ(Iter(), 0);
  if constexpr (TypeParam::TWO_WAY) {
    for (Iter back(&list, ZV_ITER_BACKWARD); back; --back) EXPECT_EQ(Word::current(back), &elements[--i]);
    EXPECT_EQ(i, 0U);
    it.init(&list, ZV_ITER_BACKWARD);
    EXPECT_EQ(Word::current(it), &elements[2]);
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

  ZVHorSegment* deep = segment.cloneObject();
  EXPECT_EQ(deep->y(), 7);
  EXPECT_EQ(static_cast<const ZVHorSegment*>(deep)->pList()->compare(segment.pList()), 1);
  delete deep;
  ZVHorSegment target;
  target.pList()->appendObject(&points[1]);
  target = segment;
  EXPECT_EQ(target.pList()->compare(segment.pList()), 1);
  segment.y(-3);
  target.copyAttributes(&segment);
  EXPECT_EQ(target.y(), -3);
  EXPECT_EQ(target.pList()->length(), 0);
}

}  // namespace
