#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "utils/zvcoredb.h"
#include "utils/zvshredb.h"

// A look at the private list, by explicit instantiation.
template <class Tag, typename Tag::Type member>
struct Opened {
  friend typename Tag::Type open(Tag) { return member; }
};
struct ResourceList {
  using Type = ZVSList* (ZVResourceDB::*)();
  friend Type open(ResourceList);
};
template struct Opened<ResourceList, &ZVResourceDB::pResourceList>;

namespace {

constexpr int32_t PERMANENT = 0x3FFFFFFF;
constexpr int VALUES = 9;
constexpr int DEFAULT_VALUE = 4;

// A resource that is known to be alive. Three values share a key.
class Probe : public ZVResource {
 public:
  Probe(ZVResourceDB* db, int value) : ZVResource(db), value_(value) { alive.insert(this); }
  ~Probe() override {
    cleanup();
    if (atEnd) atEnd();
    EXPECT_EQ(alive.erase(this), 1U);
  }

  int value() const { return value_; }
  int32_t sortKey() const override { return value_ / 3; }
  int isEqual(const ZVResource* other) const override {
    return value_ == static_cast<const Probe*>(other)->value_;
  }

  std::function<void()> atEnd;
  static inline std::set<const ZVObject*> alive;

 protected:
  ZVObject* vCloneObject() const override {
    Probe* clone = new Probe(nullptr, value_);
    clone->copyObject(this);
    return clone;
  }

 private:
  const int value_;
};

class ProbeDB : public ZVResourceDB {
 protected:
  ZVResource* vNewResource() override { return new Probe(this, DEFAULT_VALUE); }
};

// Two databases and what they should hold, under random operations.
class ResourceModel {
 public:
  explicit ResourceModel(unsigned seed) : engine_(seed) {}
  // The databases go before the resources that are free, or behind them.
  ~ResourceModel() {
    for (Side& side : sides_)
      if (pick(2)) side.db.reset();
    for (const Probe* probe : free_) delete probe;
  }

  void step() {
    using Model = ResourceModel;
    static constexpr void (Model::*acts[])(Side&, const Probe*) = {
        &Model::add,     &Model::add,     &Model::insert,        &Model::insert,
        &Model::insert,  &Model::remove,  &Model::remove,        &Model::makePermanent,
        &Model::makeAll, &Model::request, &Model::copyPermanent, &Model::deleteOne};
    Side& side = sides_[pick(2)];
    pick(60) ? (this->*acts[pick(std::size(acts))])(side, anyProbe()) : end(side);
  }

  void check() {
    size_t count = free_.size();
    for (Side& side : sides_) {
      const ZVSList* list = (side.db.get()->*open(ResourceList()))();
      std::pair<int32_t, int> last(-1, 0);
      for (int32_t position = 1; position <= list->length(); ++position) {
        const Probe* probe = static_cast<const Probe*>(list->pObjectInPosition(position));
        Entry& entry = side.entryOf(probe);
        if (!entry.since) entry.since = ++clock_;
        if (!entry.probe) entry.probe = probe;
        EXPECT_EQ(entry.probe, probe);
        const std::pair place(probe->sortKey(), entry.since);
        EXPECT_LT(std::exchange(last, place), place);
        EXPECT_EQ(side.db->index(probe), position);
        EXPECT_EQ(probe->index(), position);
        EXPECT_EQ(probe->pResourceDB(), side.db.get());
        EXPECT_EQ(probe->permanent(), entry.permanent);
        EXPECT_EQ(probe->refCount(), entry.users + (entry.permanent ? PERMANENT : 0));
      }
      int32_t held = 0;
      for (Entry& entry : side.entries) {
        if (entry.users == 0 && !entry.permanent) entry = {};
        held += entry.probe != nullptr;
      }
      EXPECT_EQ(list->length(), held);
      count += static_cast<size_t>(held);
      for (const Probe* probe : free_) EXPECT_EQ(side.db->index(probe), -1);
    }
    for (const Probe* probe : free_) EXPECT_EQ(probe->refCount(), 0);
    EXPECT_EQ(Probe::alive.size(), count);
  }

 private:
  struct Entry {
    int users = 0;
    bool permanent = false;
    bool isDefault = false;
    const Probe* probe = nullptr;  // null until it is seen in the list
    int since = 0;
  };
  struct Side {
    std::unique_ptr<ProbeDB> db = std::make_unique<ProbeDB>();
    Entry entries[VALUES];

    // The entry of that value.
    Entry& entryOf(const Probe* probe) { return entries[probe->value()]; }
  };

  int pick(size_t count) { return static_cast<int>(engine_() % count); }
  // Free, or an entry of any side.
  const Probe* anyProbe() {
    if (free_.empty()) free_.push_back(new Probe(nullptr, pick(VALUES)));
    std::vector<const Probe*> all = free_;
    for (const Side& side : sides_)
      for (const Entry& entry : side.entries)
        if (entry.probe) all.push_back(entry.probe);
    return all[static_cast<size_t>(pick(all.size()))];
  }

  void add(Side& side, const Probe*) {
    free_.push_back(new Probe(pick(2) ? side.db.get() : nullptr, pick(VALUES)));
  }

  void insert(Side& side, const Probe* probe) {
    Entry& entry = side.entryOf(probe);
    const bool isFree = std::erase(free_, probe) > 0;
    const ZVResource* result = side.db->insert(probe);
    ++entry.users;
    EXPECT_TRUE(entry.probe ? result == entry.probe : (result == probe) == isFree);
  }

  void remove(Side& side, const Probe* probe) {
    Entry& entry = side.entryOf(probe);
    ZVResource* back = side.db->remove(probe);
    if (entry.probe == probe) {
      if (entry.users > 0) --entry.users;
      EXPECT_EQ(back == probe, entry.users == 0 && !entry.permanent);
      EXPECT_NE(back->isEqual(probe), 0);
      free_.push_back(static_cast<Probe*>(back));
    } else {
      EXPECT_EQ(back, probe);
    }
  }

  void makePermanent(Side& side, const Probe* probe) {
    Entry& entry = side.entryOf(probe);
    const int permanent = pick(2);
    entry.permanent = permanent && entry.probe;
    EXPECT_EQ(permanent ? side.db->makePermanent(probe) : side.db->makeTransient(probe),
              entry.probe != nullptr);
  }

  void makeAll(Side& side, const Probe*) {
    const int permanent = pick(2);
    permanent ? side.db->makeAllPermanent() : side.db->makeAllTransient();
    for (Entry& entry : side.entries) entry.permanent = permanent && entry.probe;
  }

  void copyPermanent(Side& side, const Probe*) {
    Side& source = sides_[pick(2)];
    EXPECT_EQ(side.db->copyPermanent(source.db.get()), &side != &source);
    for (int value = 0; value < VALUES; ++value) {
      if (&side == &source || !source.entries[value].permanent) continue;
      ++side.entries[value].users;
      side.entries[value].permanent = true;
    }
  }

  void request(Side& side, const Probe*) {
    Entry& entry = side.entries[DEFAULT_VALUE];
    const ZVResource* given = side.db->pDefaultResource();
    EXPECT_TRUE(entry.probe ? given == entry.probe : side.db->index(given) > 0);
    if (std::exchange(entry.isDefault, true)) return;
    ++entry.users;
    entry.permanent = true;
  }

  // Also one that is still in use.
  void deleteOne(Side&, const Probe* probe) {
    std::erase(free_, probe);
    for (Side& each : sides_)
      if (each.entryOf(probe).probe == probe) each.entryOf(probe) = {};
    delete probe;
  }

  void end(Side& side) {
    if (pick(2)) side.db = std::make_unique<ProbeDB>();
    side.db->empty();
    for (Entry& entry : side.entries) entry = {};
  }

  std::mt19937 engine_;
  Side sides_[2];
  std::vector<const Probe*> free_;
  int clock_ = 0;
};

TEST(Resource, CountsAndOwnersFollowTheModel) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE(seed);
    {
      ResourceModel model(seed);
      for (int step = 0; step < 1000 && !HasFailure(); ++step) {
        model.step();
        model.check();
      }
    }
    ASSERT_TRUE(Probe::alive.empty());
  }
}

// A resource that has a share of another one gives it back when it ends.
TEST(Resource, DestructorMayChangeItsDatabase) {
  for (const bool permanent : {false, true}) {
    ProbeDB db;
    for (int value : {0, 1, 2}) {
      const ZVResource* held = db.insert(new Probe(&db, value + 3));
      Probe* holder = new Probe(&db, value);
      holder->atEnd = [holder, held] { delete holder->pResourceDB()->remove(held); };
      db.insert(holder);
      if (!permanent) continue;
      db.makePermanent(holder);
      delete db.remove(holder);
    }
    EXPECT_EQ(Probe::alive.size(), 6U);
    permanent ? db.makeAllTransient() : db.empty();
    EXPECT_TRUE(Probe::alive.empty());
  }
}

TEST(Resource, NullIsRefused) {
  ProbeDB db;
  EXPECT_EQ(db.insert(nullptr), nullptr);
  EXPECT_EQ(db.remove(nullptr), nullptr);
  EXPECT_EQ(db.makePermanent(nullptr) | db.makeTransient(nullptr) | db.copyPermanent(nullptr), 0);
  EXPECT_EQ(db.index(nullptr), -1);
  const Probe alone(nullptr, 0);
  EXPECT_EQ(alone.index(), -1);
}

TEST(Resource, FileTableNumbersResourcesByTheirUse) {
  ProbeDB db;
  const Probe* shared = new Probe(&db, 1);
  const Probe* free = new Probe(nullptr, 1);
  db.insert(shared);
  const struct {
    const Probe* probe;
    int append;
    int32_t number;
  } uses[] = {{shared, 0, 0}, {free, 0, 1}, {shared, 1, 2}, {free, 0, 1}, {shared, 0, 0}, {nullptr, 1, -1}};
  for (const int deletes : {0, 1}) {
    EXPECT_EQ(db.insertForFileSupport(shared, 1), -1);
    EXPECT_EQ(db.pFileSupportResource(0), nullptr);
    db.postFileSupport(1);
    db.preFileSupport();
    db.insertForFileSupport(free, 0);
    db.preFileSupport();
    for (const auto& [probe, append, number] : uses) {
      EXPECT_EQ(db.insertForFileSupport(probe, append), number);
      EXPECT_EQ(db.pFileSupportResource(number), probe);
    }
    EXPECT_EQ(db.pFileSupportResource(3), nullptr);
    ZVSList* table = db.pResourceListForFileSupport();
    EXPECT_EQ(db.pResourceListForFileSupport(nullptr), nullptr);
    EXPECT_EQ(db.pFileSupportResource(0), nullptr);
    EXPECT_EQ(db.pResourceListForFileSupport(table), table);
    db.postFileSupport(deletes);
    EXPECT_EQ(Probe::alive.size(), deletes ? 0U : 2U);
    EXPECT_EQ(db.index(shared), deletes ? -1 : 1);
  }
  db.preFileSupport();
  db.empty();
  EXPECT_EQ(db.pResourceListForFileSupport(), nullptr);
}

// Each value is shared once, in the given order; copies keep or drop the value.
template <class DB, class Resource, class Value>
void checkSharing(const std::vector<Value>& ordered, const std::vector<int32_t>& keys) {
  DB db;
  DB other;
  const Resource plain;
  EXPECT_NE(db.pDefaultResource()->isEqual(&plain), 0);
  EXPECT_EQ(db.pDefaultResource()->isEqual(nullptr), 0);
  std::vector<const Resource*> shared(ordered.size());
  for (size_t i = ordered.size(); i-- > 0;) shared[i] = db.insert(new Resource(&db, &ordered[i]));
  for (size_t i = 0; i < ordered.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(shared[i]->sortKey(), keys[i]);
    EXPECT_EQ(db.insert(new Resource(nullptr, &ordered[i])), shared[i]);
    EXPECT_GE(db.index(shared[i]), i > 0 && keys[i - 1] < keys[i] ? db.index(shared[i - 1]) : 1);
    const std::unique_ptr<Resource> copy(db.remove(shared[i]));
    for (const Resource* each : shared) EXPECT_EQ(copy->isEqual(each), each == shared[i]);
    const std::unique_ptr<Resource> fresh(shared[i]->cloneAttributes());
    EXPECT_NE(fresh->isEqual(&plain), 0);
    EXPECT_EQ(fresh->pResourceDB(), &db);
    Resource elsewhere(&other);
    elsewhere = *shared[i];
    elsewhere.copyAttributes(&plain);
    EXPECT_NE(elsewhere.isEqual(shared[i]), 0);
    EXPECT_EQ(elsewhere.pResourceDB(), &other);
  }
  EXPECT_EQ(other.copyPermanent(&db), 1);
  EXPECT_EQ(other.pDefaultResource()->refCount(), PERMANENT + 2);
  for (const Resource* each : shared) {
    delete each;
    EXPECT_EQ(db.index(each), -1);
  }
}

TEST(Resource, ColorsAreSharedWithTheirTransparency) {
  std::vector<ZVColor> colors(5);
  colors[1].blue(1.0);
  colors[2].ired(1);
  colors[2].igreen(2);
  colors[2].iblue(3);
  colors[3].red(1.0);
  colors[4] = colors[3];
  colors[4].transparent(1);
  checkSharing<ZVColorResourceDB, ZVColorResource>(colors, {0, 0xff, 0x010203, 0xff0000, 0xff0000});
}

TEST(Resource, ShapesAreSortedByTypeAndNumberOfPoints) {
  auto polygon = [](const std::vector<std::pair<int, int>>& points) {
    ZVPointDList* list = new ZVPointDList;
    for (const auto& [x, y] : points) list->appendPoint(new ZVPoint(x, y));
    return ZVShape(list);
  };
  ZVShape labelled;
  labelled.setInnerRect(ZVRect(-500, -500, 500, 500));
  const std::vector<ZVShape> shapes = {static_cast<ZVShapeTypeEnum>(4),
                                       ZV_SHAPE_RECTANGLE,
                                       labelled,
                                       ZV_SHAPE_CONVEX_POLYGON,  // without points
                                       ZV_SHAPE_ELLIPSE,
                                       ZV_SHAPE_NONCONVEX_POLYGON,
                                       polygon({{-1000, -1000}, {0, 1000}, {1000, -1000}}),
                                       polygon({{-1000, -1000}, {-1000, 1000}, {1000, 1000}, {1000, -1000}}),
                                       polygon({{-900, -1000}, {-1000, 1000}, {1000, 1000}, {1000, -1000}}),
                                       polygon({{-1000, -1000}, {0, 0}, {1000, -1000}, {0, 1000}})};
  checkSharing<ZVShapeResourceDB, ZVShapeResource>(shapes, {-1, 0, 0, 0, 1, 1, 6, 8, 8, 9});
}

}  // namespace
