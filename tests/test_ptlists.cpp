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
  using List = typename F::List;
  using Base = typename F::Base;
  using Cell = typename F::Cell;

 public:
  explicit SideBySide(unsigned seed) : random_(seed) {}

  void step() {
    List& list = typed_[0];
    Base& plain = plain_[0];
    List* from = below(8) ? &typed_[1] : below(2) ? &list : nullptr;
    Base* source = from == &typed_[1] ? &plain_[1] : from == &list ? &plain : nullptr;
    const int32_t where = below(list.length() + 1);
    Cell* after = list.pCellInPosition(where);
    Cell* behind = plain.pCellInPosition(where);
    const int32_t i = below(typed_[1].length() + 1);
    const int32_t j = below(typed_[1].length() + 1);
    Cell* first = typed_[1].pCellInPosition(i);
    Cell* last = typed_[1].pCellInPosition(j);
    Cell* head = plain_[1].pCellInPosition(i);
    Cell* tail = plain_[1].pCellInPosition(j);
    auto* object = below(6) ? &objects_[static_cast<size_t>(below(5))] : nullptr;
    auto sameFlag = [](int a, int b) { ASSERT_EQ(a, b); };
    auto sameObject = [](Cell* a, Cell* b) { ASSERT_EQ(a->pObject(), b->pObject()); };
    switch (below(22)) {
      case 0:
        return sameFlag(list.transferList(after, from), plain.transferList(behind, source));
      case 1:
        return sameFlag(list.transferListPart(after, from, first, last),
                        plain.transferListPart(behind, source, head, tail));
      case 2:
        return sameFlag(list.appendList(from), plain.appendList(source));
      case 3:
        return sameFlag(list.prependList(from), plain.prependList(source));
      case 4:
        return sameFlag(list.copyTransferList(after, from), plain.copyTransferList(behind, source));
      case 5:
        return sameFlag(list.copyTransferListPart(after, from, first, last),
                        plain.copyTransferListPart(behind, source, head, tail));
      case 6:
        return sameFlag(list.copyAppendList(from), plain.copyAppendList(source));
      case 7:
        return sameFlag(list.copyPrependList(from), plain.copyPrependList(source));
      case 8:
        return sameFlag(list.transferListIfNotInList(after, from),
                        plain.transferListIfNotInList(behind, source));
      case 9:
        return sameFlag(list.transferListPartIfNotInList(after, from, first, last),
                        plain.transferListPartIfNotInList(behind, source, head, tail));
      case 10:
        return sameFlag(list.appendListIfNotInList(from), plain.appendListIfNotInList(source));
      case 11:
        return sameFlag(list.prependListIfNotInList(from), plain.prependListIfNotInList(source));
      case 12:
        return sameFlag(list.copyTransferListIfNotInList(after, from),
                        plain.copyTransferListIfNotInList(behind, source));
      case 13:
        return sameFlag(list.copyTransferListPartIfNotInList(after, from, first, last),
                        plain.copyTransferListPartIfNotInList(behind, source, head, tail));
      case 14:
        return sameFlag(list.copyAppendListIfNotInList(from), plain.copyAppendListIfNotInList(source));
      case 15:
        return sameFlag(list.copyPrependListIfNotInList(from), plain.copyPrependListIfNotInList(source));
      case 16:
        return sameObject(Word::add(list, after, object), plain.addObject(behind, object));
      case 17:
        return sameObject(Word::append(list, object), plain.appendObject(object));
      case 18:
        return sameObject(Word::prepend(list, object), plain.prependObject(object));
      case 19:
        return sameObject(Word::addNew(list, after, object), plain.addObjectIfNotInList(behind, object));
      case 20:
        return sameObject(Word::appendNew(list, object), plain.appendObjectIfNotInList(object));
      default:
        return sameObject(Word::prependNew(list, object), plain.prependObjectIfNotInList(object));
    }
  }

  void compareAndRefill() {
    for (int i : {0, 1}) {
      ASSERT_EQ(typed_[i].compare(&plain_[i]), 1);
      ASSERT_EQ(typed_[i].sizeOf(), plain_[i].sizeOf());
    }
    ASSERT_EQ(typed_[0].compare(&typed_[1]), plain_[0].compare(&plain_[1]));
    auto* object = below(6) ? &objects_[static_cast<size_t>(below(5))] : nullptr;
    Cell* held = Word::search(typed_[0], object);
    ASSERT_EQ(typed_[0].positionOfCell(held), plain_[0].positionOfCell(plain_[0].searchObject(object)));
    const int32_t position = Word::position(typed_[0], object);
    ASSERT_EQ(position, plain_[0].positionOfObject(object));
    ASSERT_EQ(Word::at(typed_[0], position), position < 0 ? nullptr : object);
    if constexpr (!F::TWO_WAY) {
      ASSERT_EQ(Word::searchPrev(typed_[0], object), typed_[0].searchPreviousObject(object));
    }

    // Both lists stay short, and what the first one loses the second one gets.
    if (typed_[0].length() < 12) return;
    typed_[1].deleteAllCells();
    typed_[1].transferListPart(nullptr, &typed_[0], typed_[0].pFirstCell(), typed_[0].pCellInPosition(8));
    plain_[1].copyAllCells(&typed_[1]);
    plain_[0].copyAllCells(&typed_[0]);
  }

 private:
  int32_t below(int32_t limit) { return static_cast<int32_t>(random_() % static_cast<unsigned>(limit)); }

  std::mt19937 random_;
  std::array<typename Word::Element, 5> objects_;
  List typed_[2];
  Base plain_[2];
};

TYPED_TEST(TypedLists, DoWhatTheListBelowDoes) {
  for (unsigned seed = 1; seed <= 8; ++seed) {
    SideBySide<TypeParam> lists(seed);
    for (int step = 0; step < 600 && !this->HasFatalFailure(); ++step) {
      SCOPED_TRACE(testing::Message() << "seed " << seed << " step " << step);
      lists.step();
      lists.compareAndRefill();
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
