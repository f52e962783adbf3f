#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <type_traits>
#include <vector>

#include "tests/support/families.h"
#include "tests/support/treewalk.h"

namespace {

#if UINTPTR_MAX > 0xffffffffU
static_assert(sizeof(ZVDListCell) == 40);
#endif

struct Tree {
  using List = ZVBinTree;
  using Twin = ZVDList;
  using Cell = ZVBinTreeCell;
};

template <class Family>
constexpr bool TREE = std::is_same_v<Family, Tree>;
template <class Family>
constexpr bool TWO_WAY = !std::is_same_v<Family, Singly>;

// An object that counts how many of its kind live.
struct Counted : ZVObject {
  explicit Counted(int* counter) : live(counter) { ++*live; }
  ~Counted() override { --*live; }
  ZVObject* vCloneObject() const override { return new Counted(live); }
  int* live;
};

// Random operations on a few lists, each done to a vector as well. Whatever holds for a list is looked at
// after each operation.
template <class Family>
class ListModel {
  using List = typename Family::List;
  using Cell = typename Family::Cell;

  // A null cell is one that the list has made and the model has not seen yet.
  struct Entry {
    Cell* cell;
    ZVObject* object;
  };
  using Model = std::vector<Entry>;
  static constexpr int LISTS = 3;
  static constexpr int OBJECTS = 7;

 public:
  explicit ListModel(unsigned seed) : random_(seed), limit_(4 * seed) {
    // One tree is not balanced.
    if constexpr (TREE<Family>) lists_[1].copyAttributes(std::make_unique<ZVBinTree>(2).get());
  }

  void run(int steps) {
    for (int step = 0; step < steps && !testing::Test::HasFatalFailure(); ++step) {
      SCOPED_TRACE(testing::Message() << "step " << step);
      at_ = below(LISTS);
      list_ = &lists_[at_];
      model_ = &models_[at_];
      change();
      for (int i = 0; i < LISTS; ++i) checkCells(lists_[i], models_[i]);
      checkReading();
    }
  }

 private:
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  ZVObject* anyObject() {
    int i = below(OBJECTS + 1);
    return i < OBJECTS ? &objects_[static_cast<size_t>(i)] : nullptr;
  }
  // An index into the model, or -1.
  int anyPlace(const Model& model) { return below(static_cast<int>(model.size()) + 1) - 1; }
  static Cell* cellAt(const Model& model, int place) {
    return place < 0 ? nullptr : model[static_cast<size_t>(place)].cell;
  }
  template <class Member, class Value>
  static int placeWith(const Model& model, Member member, Value value) {
    auto found = std::find_if(model.begin(), model.end(), [=](const Entry& e) { return e.*member == value; });
    return found == model.end() ? -1 : static_cast<int>(found - model.begin());
  }
  static int placeOf(const Model& model, const ZVObject* object) {
    return placeWith(model, &Entry::object, object);
  }
  static void put(Model& model, int after, Entry entry) { model.insert(model.begin() + (after + 1), entry); }
  static void drop(Model& model, int place) { model.erase(model.begin() + place); }

  void change() {
    if (model_->size() > limit_) return clear();
    const int die = below(10);
    if (die < 2) return insertOne();
    if (die < 3) return removeOne();
    if (die < 5) return transferWhole();
    if (die < 7) return transferPart();
    if (die < 8) return changeWhole();
    if constexpr (TWO_WAY<Family>) return changeTwoWay();
    return transferNext();
  }

  // Where a new element goes: 0 behind a given cell, 1 at the tail, 2 at the front.
  int choosePlace() {
    where_ = below(3);
    if (where_ == 0) return anyPlace(*model_);
    return where_ == 1 ? static_cast<int>(model_->size()) - 1 : -1;
  }

  // Trees cannot skip what they hold.
  bool anySkips() { return !TREE<Family> && below(2); }

  void insertOne() {
    if constexpr (TREE<Family>) {
      if (below(2)) return insertBeside();
    }
    bool skips = anySkips();
    bool makesCell = below(2);
    int place = choosePlace();
    Cell* after = cellAt(*model_, place);
    ZVObject* object = anyObject();
    Cell* cell = makesCell ? nullptr : new Cell(object);
    int holder = skips ? placeOf(*model_, object) : -1;
    Cell* result = makesCell ? insertObject(skips, after, object) : insertFreeCell(skips, after, cell);
    if (holder >= 0) {
      ASSERT_EQ(result, cellAt(*model_, holder));
      delete cell;
    } else {
      ASSERT_TRUE(makesCell || result == cell);
      put(*model_, place, {result, object});
    }
  }

  Cell* insertObject(bool skips, Cell* after, ZVObject* object) {
    if (where_ == 1)
      return down(skips ? list_->appendObjectIfNotInList(object) : list_->appendObject(object));
    if (where_ == 2)
      return down(skips ? list_->prependObjectIfNotInList(object) : list_->prependObject(object));
    return down(skips ? list_->addObjectIfNotInList(after, object) : list_->addObject(after, object));
  }

  Cell* insertFreeCell(bool skips, Cell* after, Cell* cell) {
    EXPECT_EQ(list_->insertCellIfNotInList(after, nullptr), nullptr);
    if (where_ == 1) return down(skips ? list_->appendCellIfNotInList(cell) : list_->appendCell(cell));
    if (where_ == 2) return down(skips ? list_->prependCellIfNotInList(cell) : list_->prependCell(cell));
    return down(skips ? list_->insertCellIfNotInList(after, cell) : list_->insertCell(after, cell));
  }

  template <class Below>
  static Cell* down(Below* cell) {
    return static_cast<Cell*>(cell);
  }

  // In one of the other ways into a tree.
  void insertBeside() {
    const int place = anyPlace(*model_);
    const int end = static_cast<int>(model_->size()) - 1;
    Cell* at = cellAt(*model_, place);
    ZVObject* object = anyObject();
    Cell* made = below(2) ? new Cell(object, below(3)) : nullptr;
    const bool behind = below(2);
    Cell* cell = behind ? (made ? list_->insertAfter(at, made) : list_->addAfter(at, object))
                        : (made ? list_->insertBefore(at, made) : list_->addBefore(at, object));
    ASSERT_TRUE(!made || cell == made);
    ASSERT_EQ(list_->insertCell(at, nullptr), nullptr);
    put(*model_, behind ? (place < 0 ? end : place) : std::max(place, 0) - 1, {cell, object});
  }

  void removeOne() {
    int place = anyPlace(*model_);
    Cell* cell = cellAt(*model_, place);
    Cell* removed = nullptr;
    switch (below(TWO_WAY<Family> ? 4 : 6)) {
      case 0:
        removed = list_->removeCell(cell);
        break;
      case 1: {
        const Model& other = models_[below(LISTS)];
        cell = cellAt(other, anyPlace(other));
        place = placeWith(*model_, &Entry::cell, cell);
        removed = list_->searchAndRemoveCell(cell);
        if (place < 0) cell = nullptr;
        break;
      }
      case 2: {
        ZVObject* object = anyObject();
        place = !TWO_WAY<Family> && !object ? -1 : placeOf(*model_, object);
        cell = cellAt(*model_, place);
        removed = list_->searchAndRemoveObject(object);
        break;
      }
      case 3:
        list_->discardCell(cell);
        if (place >= 0) drop(*model_, place);
        return;
      default:
        if constexpr (!TWO_WAY<Family>) {
          // A place of -1 stands for the front, the cell behind it is the one that goes.
          Cell* behind = cellAt(*model_, place + 1 < static_cast<int>(model_->size()) ? place + 1 : -1);
          ASSERT_EQ(list_->removeNextCell(ZVSList::noPredecessor()), nullptr);
          list_->discardNextCell(ZVSList::noPredecessor());
          ASSERT_EQ(list_->removeNextCell(cell), behind);
          if (behind) drop(*model_, place + 1);
          delete behind;
        }
        return;
    }
    ASSERT_EQ(removed, cell);
    if (!removed) return;
    drop(*model_, place);
    // It comes back into any list, whatever links it has left.
    const int to = below(LISTS);
    lists_[to].appendCell(removed);
    models_[to].push_back({removed, removed->pObject()});
  }

  void clear() {
    if constexpr (TREE<Family>) {
      list_->deleteAllFromBinTree();
    } else {
      list_->deleteAllCells();
    }
    model_->clear();
  }

  // A source: one of the lists, perhaps the target, or none (-1).
  int chooseSource() { return below(LISTS + 1) - 1; }

  void transferWhole() {
    bool copies = below(2);
    bool skips = anySkips();
    int place = choosePlace();
    Cell* after = cellAt(*model_, place);
    int from = chooseSource();
    List* source = from < 0 ? nullptr : &lists_[from];
    int result = copies ? copyWhole(skips, after, source) : moveWhole(skips, after, source);
    int last = from < 0 ? -1 : static_cast<int>(models_[from].size()) - 1;
    checkTransfer(result, from >= 0 && from != at_, place, from, 0, last, copies, skips);
  }

  int moveWhole(bool skips, Cell* after, List* source) {
    if (where_ == 1) return skips ? list_->appendListIfNotInList(source) : list_->appendList(source);
    if (where_ == 2) return skips ? list_->prependListIfNotInList(source) : list_->prependList(source);
    return skips ? list_->transferListIfNotInList(after, source) : list_->transferList(after, source);
  }

  int copyWhole(bool skips, Cell* after, const List* source) {
    if (where_ == 1) return skips ? list_->copyAppendListIfNotInList(source) : list_->copyAppendList(source);
    if (where_ == 2)
      return skips ? list_->copyPrependListIfNotInList(source) : list_->copyPrependList(source);
    return skips ? list_->copyTransferListIfNotInList(after, source) : list_->copyTransferList(after, source);
  }

  void transferPart() {
    bool copies = below(2);
    bool skips = anySkips();
    int place = anyPlace(*model_);
    Cell* after = cellAt(*model_, place);
    int from = chooseSource();
    List* source = from < 0 ? nullptr : &lists_[from];
    int first = from < 0 ? -1 : anyPlace(models_[from]);
    int last = from < 0 ? -1 : anyPlace(models_[from]);
    Cell* firstCell = from < 0 ? nullptr : cellAt(models_[from], first);
    Cell* lastCell = from < 0 ? nullptr : cellAt(models_[from], last);
    int result;
    if (copies) {
      result = skips ? list_->copyTransferListPartIfNotInList(after, source, firstCell, lastCell)
                     : list_->copyTransferListPart(after, source, firstCell, lastCell);
    } else {
      result = skips ? list_->transferListPartIfNotInList(after, source, firstCell, lastCell)
                     : list_->transferListPart(after, source, firstCell, lastCell);
    }
    bool accepted = from >= 0 && from != at_ && first >= 0 && last >= first;
    checkTransfer(result, accepted, place, from, first, last, copies, skips);
  }

  void transferNext() {
    if constexpr (!TWO_WAY<Family>) {
      int place = anyPlace(*model_);
      int from = below(LISTS);
      int previous = anyPlace(models_[from]);
      int last = anyPlace(models_[from]);
      Cell* lastCell = cellAt(models_[from], last);
      Cell* after = cellAt(*model_, place);
      ASSERT_EQ(list_->transferNextListPart(after, &lists_[from], ZVSList::noPredecessor(), lastCell), 0);
      int result =
          list_->transferNextListPart(after, &lists_[from], cellAt(models_[from], previous), lastCell);
      bool accepted = from != at_ && last > previous;
      checkTransfer(result, accepted, place, from, previous + 1, last, false, false);

      // A first cell of another list is refused, and a foreign cell survives.
      const Model& other = models_[(from + 1) % LISTS];
      Cell* foreign = cellAt(other, anyPlace(other));
      ASSERT_EQ(list_->transferListPart(nullptr, &lists_[from], foreign, foreign), 0);
      ASSERT_EQ(list_->transferListPartIfNotInList(nullptr, &lists_[from], foreign, foreign), 0);
      ASSERT_EQ(lists_[from].removeCell(foreign), nullptr);
    }
  }

  void checkTransfer(int result, bool accepted, int place, int from, int first, int last, bool copies,
                     bool skips) {
    ASSERT_EQ(result, accepted);
    for (int i = first, left = accepted ? last - first + 1 : 0; left > 0; --left) {
      Entry entry = models_[from][static_cast<size_t>(i)];
      const bool skipped = skips && placeOf(*model_, entry.object) >= 0;
      if (!skipped) put(*model_, place++, copies ? Entry{nullptr, entry.object} : entry);
      if (skipped || copies) {
        ++i;
      } else {
        drop(models_[from], i);
      }
    }
  }

  void changeWhole() {
    int from = (at_ + 1 + below(LISTS - 1)) % LISTS;
    switch (below(4)) {
      case 0:
        ASSERT_EQ(list_->reverse(), 1);
        std::reverse(model_->begin(), model_->end());
        return;
      case 1:
        return clear();
      case 2:
        list_->copyAllCells(&lists_[from]);
        break;
      default: {
        typename Family::Twin twin;
        if constexpr (TREE<Family>) {
          twin.copyAllCells(&static_cast<const ZVDList&>(lists_[from]));
          clear();
          ASSERT_EQ(list_->copyAppendList(&twin), 1);
        } else if (twin = lists_[from]; below(2)) {
          list_->copyAllCells(&twin);
        } else {
          *list_ = twin;
        }
      }
    }
    *model_ = models_[from];
    for (Entry& entry : *model_) entry.cell = nullptr;
  }

  void changeTwoWay() {
    if constexpr (TWO_WAY<Family>) {
      if (below(2)) return swapTwo();
    }
    if constexpr (std::is_same_v<Family, Doubly>) {
      int b = below(LISTS);
      int a = b == at_ ? (at_ + 1) % LISTS : LISTS - at_ - b;
      ASSERT_EQ(list_->merge(nullptr, &lists_[a]), 0);
      ASSERT_EQ(list_->merge(list_, &lists_[a]), 0);
      int result = list_->merge(&lists_[a], &lists_[b]);
      ASSERT_EQ(result, b != at_);
      while (result && models_[a].size() + models_[b].size() > 0) {
        for (int i : {a, b}) {
          if (models_[i].empty()) continue;
          model_->push_back(models_[i].front());
          drop(models_[i], 0);
        }
      }
    }
  }

  void swapTwo() {
    if (model_->empty()) return;
    int place1 = std::max(0, anyPlace(*model_));
    Cell* cell1 = cellAt(*model_, place1);
    int place2 = below(2) ? std::max(0, anyPlace(*model_)) : std::max(0, place1 - 1);
    if constexpr (TREE<Family>) {
      if (below(2) && cell1->pParent()) place2 = placeWith(*model_, &Entry::cell, cell1->pParent());
    }
    if (below(2)) {
      list_->swapPosition(cell1, cellAt(*model_, place2));
    } else {
      list_->swapPosition(cellAt(*model_, place2), cell1);
    }
    std::swap((*model_)[static_cast<size_t>(place1)], (*model_)[static_cast<size_t>(place2)]);
  }

  void checkCells(const List& list, Model& model) {
    size_t allCells = model.size();
    if constexpr (TREE<Family>) {
      ASSERT_STREQ(TreeWalk(list).fault, nullptr);
      ++allCells;  // of no object
    }
    ASSERT_EQ(list.length(), static_cast<int32_t>(model.size()));
    ASSERT_EQ(list.sizeOf(), static_cast<int32_t>(sizeof(List) + allCells * sizeof(Cell)));
    Cell* previous = nullptr;
    Cell* cell = list.pFirstCell();
    for (Entry& entry : model) {
      ASSERT_NE(cell, nullptr);
      ASSERT_TRUE(!entry.cell || cell == entry.cell);
      entry.cell = cell;
      ASSERT_EQ(cell->pObject(), entry.object);
      if constexpr (TWO_WAY<Family>) {
        ASSERT_EQ(cell->pPreviousCell(), previous);
      }
      previous = cell;
      cell = down(cell->pNextCell());
    }
    ASSERT_EQ(cell, nullptr);
    ASSERT_EQ(list.pLastCell(), previous);
  }

  void checkReading() {
    const Model& model = *model_;
    int place = anyPlace(model);
    Cell* cell = cellAt(model, place);
    int position = place < 0 ? -1 : place + 1;
    ASSERT_EQ(list_->pCellInPosition(place + 1), cell);
    ASSERT_EQ(list_->pObjectInPosition(place + 1), cell ? cell->pObject() : nullptr);
    ASSERT_EQ(list_->pCellInPosition(static_cast<int32_t>(model.size()) + 1), nullptr);
    ASSERT_EQ(list_->positionOfCell(cell), position);
    ASSERT_EQ(list_->searchCell(cell), cell);

    ZVObject* object = anyObject();
    int holder = placeOf(model, object);
    ASSERT_EQ(list_->searchObject(object), cellAt(model, holder));
    ASSERT_EQ(list_->positionOfObject(object), object && holder >= 0 ? holder + 1 : -1);

    int other = below(LISTS);
    bool same = std::equal(model.begin(), model.end(), models_[other].begin(), models_[other].end(),
                           [](const Entry& a, const Entry& b) { return a.object == b.object; });
    const std::conditional_t<TREE<Family>, ZVDList, List>& asList = *list_;
    ASSERT_EQ(asList.compare(&lists_[other]), same);
    ASSERT_EQ(asList.compare(nullptr), 0);
    if constexpr (TREE<Family>) {
      const int place2 = anyPlace(model);
      if (place >= 0 && place2 >= 0) {
        ASSERT_EQ(list_->compare(cell, cellAt(model, place2)), (place > place2) - (place < place2));
      }
      const int foreign = other == at_ ? -1 : anyPlace(models_[other]);
      if (place >= 0 && foreign >= 0) {
        ASSERT_EQ(list_->compare(cell, cellAt(models_[other], foreign)), 0);
      }
    }
    if constexpr (!TWO_WAY<Family>) {
      Cell* none = ZVSList::noPredecessor();
      ASSERT_EQ(list_->searchPreviousCell(cell), cell ? cellAt(model, place - 1) : none);
      ASSERT_EQ(list_->searchPreviousObject(object),
                object && holder >= 0 ? cellAt(model, holder - 1) : none);
    }
  }

  std::mt19937 random_;
  size_t limit_;
  std::array<ZVObject, OBJECTS> objects_;
  List lists_[LISTS];
  Model models_[LISTS];
  int at_ = 0;
  List* list_ = nullptr;
  Model* model_ = nullptr;
  int where_ = 0;
};

template <class Family>
class Sequences : public testing::Test {};
using Three = testing::Types<Doubly, Singly, Tree>;
TYPED_TEST_SUITE(Sequences, Three);

TYPED_TEST(Sequences, AreVectorsUnderRandomOperations) {
  for (unsigned seed = 1; seed <= 25; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    ListModel<TypeParam>(seed).run(TREE<TypeParam> ? 4000 : 400);
    if (this->HasFatalFailure()) return;
  }
}

template <class Family>
class Lists : public testing::Test {};
using Two = testing::Types<Doubly, Singly>;
TYPED_TEST_SUITE(Lists, Two);

TYPED_TEST(Lists, CopiesCloneTheObjectsOrShareThem) {
  using List = typename TypeParam::List;
  using Twin = typename TypeParam::Twin;
  int live = 0;
  List source;
  for (int i = 0; i < 3; ++i) source.appendObject(i == 1 ? nullptr : new Counted(&live));
  List deep(source);
  Twin cloned = source;
  std::unique_ptr<ZVObject> clone(static_cast<const ZVObject&>(source).cloneObject());
  // Each of these destroys what the target held.
  for (int way = 0; way < 3; ++way) {
    EXPECT_EQ(live, 8);
    if (way == 0) deep = source;
    if (way == 1) deep.copyObject(&source);
    if (way == 2) deep.copyAllCellsAndObjects(&source);
    cloned.copyAllCellsAndObjects(&source);
    deep.copyAttributes(&source);
    EXPECT_EQ(deep.length(), 3);
    EXPECT_EQ(deep.searchObject(source.pObjectInPosition(1)), nullptr);
    EXPECT_EQ(cloned.searchObject(source.pObjectInPosition(1)), nullptr);
    EXPECT_EQ(deep.pObjectInPosition(2), nullptr);
  }
  EXPECT_EQ(live, 8);

  Twin shared(source), assigned;
  assigned.appendObject(nullptr);
  assigned = source;
  EXPECT_EQ(assigned.compare(&shared), 1);
  List again;
  again.copyAllCells(&source);
  EXPECT_EQ(again.compare(&source), 1);
  EXPECT_EQ(List(source, ZV_ATTRIBUTE_COPY).length(), 0);
  EXPECT_EQ(std::unique_ptr<List>(source.cloneAttributes())->length(), 0);
  again.copyAllCells(nullptr);
  deep.copyAllCellsAndObjects(nullptr);
  EXPECT_EQ(again.length() + deep.length(), 0);
  EXPECT_EQ(live, 6);
  cloned.deleteAllCellsAndObjects();
  List::castDown(clone.get())->deleteAllCellsAndObjects();
  source.deleteAllCellsAndObjects();
  EXPECT_EQ(live, 0);
}

TYPED_TEST(Lists, ObjectsAreDeletedFromHeadToTail) {
  struct Noted : ZVObject {
    Noted(std::vector<int>* to, int number) : notes(to), mine(number) {}
    ~Noted() override { notes->push_back(mine); }
    std::vector<int>* notes;
    int mine;
  };
  std::vector<int> notes;
  typename TypeParam::List list;
  for (int i = 0; i < 3; ++i) list.appendObject(new Noted(&notes, i));
  list.deleteAllCellsAndObjects();
  EXPECT_EQ(notes, (std::vector<int>{0, 1, 2}));
}

TYPED_TEST(Lists, RemovedCellStillStepsToItsOldNeighbour) {
  using Iter = typename TypeParam::Iter;
  typename TypeParam::List list;
  ZVObject objects[3];
  for (ZVObject& object : objects) list.appendObject(&object);

  Iter it(&list);
  ++it;
  std::unique_ptr<typename TypeParam::Cell> middle(list.removeCell(it.pCell()));
  it++;
  EXPECT_EQ(it.pObject(), &objects[2]);
  auto* inserted = list.addObject(it.pCell(), nullptr);
  ++it;
  EXPECT_EQ(it.pCell(), inserted);
  for (int i = 0; i < 2; ++i) {
    ++it;
    EXPECT_EQ(it, 0);
  }
  it.init(&list, middle.get());
  EXPECT_EQ(it.pCell(), middle.get());
  it.init(&list);
  EXPECT_EQ(it.pObject(), &objects[0]);
  it.init(&list, nullptr);
  EXPECT_EQ(it, 0);
  it.init(nullptr, middle.get());
  EXPECT_EQ(it, 0);
  EXPECT_EQ(Iter(), 0);
  EXPECT_EQ(Iter(nullptr), 0);
  EXPECT_EQ(Iter(nullptr, middle.get()), 0);
  EXPECT_EQ(Iter(&list, middle.get()).pObject(), &objects[1]);
}

TEST(DList, CellCopiesLeaveTheLinksAlone) {
  int live = 0;
  Counted object(&live);
  ZVDList list;
  ZVDListCell* first = list.appendObject(&object);
  ZVDListCell* second = list.appendObject(nullptr);

  ZVDListCell shared(*first, ZV_ATTRIBUTE_COPY);
  EXPECT_EQ(shared.pObject(), &object);
  EXPECT_EQ(shared.pNextCell(), nullptr);
  *second = *first;
  std::unique_ptr<ZVObject> copy(second->pObject());
  EXPECT_NE(copy.get(), &object);
  EXPECT_EQ(live, 2);
  EXPECT_EQ(second->pPrevDListCell(), first);
  second->copyAttributes(first);
  EXPECT_EQ(second->pObject(), &object);
  EXPECT_EQ(first->pNextDListCell(), second);
  *first = *&*first;
  EXPECT_EQ(first->pObject(), &object);
  EXPECT_EQ(first->pObject(nullptr), nullptr);
  second->copyObject(first);
  EXPECT_EQ(second->pObject(), nullptr);
  EXPECT_EQ(first->sizeOf(), static_cast<int32_t>(sizeof(ZVDListCell)));
}

TEST(SList, CellCopiesShareTheObjectAndHaveNoNext) {
  ZVObject object;
  ZVSList list;
  ZVSListCell* first = list.appendObject(&object);
  list.appendObject(nullptr);
  *first = *&*first;
  EXPECT_EQ(first->pNextCell(), list.pLastCell());
  ZVSListCell assigned(nullptr);
  assigned = *first;
  for (const ZVSListCell& copy : {ZVSListCell(*first), assigned}) {
    EXPECT_EQ(copy.pObject(), &object);
    EXPECT_EQ(copy.pNextSListCell(), nullptr);
  }
}

TEST(SList, DiscardDeletesAForeignCellAllTheSame) {
  int live = 0;
  struct Cell : ZVSListCell {
    explicit Cell(int* counter) : counted(counter) {}
    Counted counted;
  };
  ZVSList list;
  list.appendObject(nullptr);
  list.discardCell(new Cell(&live));
  EXPECT_EQ(live, 0);
  EXPECT_EQ(list.length(), 1);
}

}  // namespace
