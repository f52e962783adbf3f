#include <gtest/gtest.h>

#include <algorithm>
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
    Side& side = sides_[pick(2)];
    const Probe* probe = anyProbe();
    switch (pick(14)) {
      case 0:
      case 1: {
        ZVResourceDB* databases[] = {nullptr, sides_[0].db.get(), sides_[1].db.get()};
        free_.push_back(new Probe(databases[pick(3)], pick(9)));
        break;
      }
      case 2:
      case 3:
      case 4:
        return insert(side, probe);
      case 5:
      case 6:
        return remove(side, probe);
      case 7:
        return makePermanent(side, probe, pick(2));
      case 8:
        return makeAll(side, pick(2));
      case 9:
        return copyPermanent(side, sides_[pick(2)]);
      case 10:
        return requestDefault(side);
      case 11:
        return deleteOne(probe);
      case 12:
        return useFileTable(side);
      default:
        return pick(5) ? void() : end(side, pick(2));
    }
  }

  void check() {
    size_t count = free_.size();
    for (Side& side : sides_) {
      count += side.entries.size();
      ASSERT_EQ(side.list()->length(), static_cast<int32_t>(side.entries.size()));
      int32_t position = 0;
      for (const Entry& entry : side.entries) {
        EXPECT_EQ(side.db->index(entry.probe), ++position);
        EXPECT_EQ(entry.probe->index(), position);
        EXPECT_EQ(entry.probe->pResourceDB(), side.db.get());
        EXPECT_EQ(entry.probe->refCount(), entry.users + (entry.permanent ? PERMANENT : 0));
        EXPECT_EQ(entry.probe->permanent(), entry.permanent);
      }
      for (const Probe* probe : free_) EXPECT_EQ(side.db->index(probe), -1);
      const int32_t length = static_cast<int32_t>(side.table.size());
      for (int32_t outside : {-1, length}) EXPECT_EQ(side.db->pFileSupportResource(outside), nullptr);
      for (int32_t i = 0; i < length; ++i) {
        const ZVResource* listed = side.table[static_cast<size_t>(i)];
        EXPECT_TRUE(!Probe::alive.count(listed) || side.db->pFileSupportResource(i) == listed);
      }
    }
    for (const Probe* probe : free_) EXPECT_EQ(probe->refCount(), 0);
    EXPECT_EQ(Probe::alive.size(), count);
  }

 private:
  struct Entry {
    const Probe* probe;
    int users;
    bool permanent;
  };
  using Place = std::vector<Entry>::iterator;
  struct Side {
    std::unique_ptr<ProbeDB> db = std::make_unique<ProbeDB>();
    std::vector<Entry> entries;
    const Probe* defaultProbe = nullptr;
    std::vector<const ZVResource*> table;

    ZVSList* list() { return (db.get()->*open(ResourceList()))(); }
    Place find(const Probe* equal) {
      return std::find_if(entries.begin(), entries.end(),
                          [&](const Entry& entry) { return equal && entry.probe->isEqual(equal); });
    }
    // After an insert: the entry of that value, behind all whose key is not larger.
    Entry& inserted(int value) {
      const Probe equal(nullptr, value);
      Place entry = find(&equal);
      if (entry == entries.end()) {
        entry = std::find_if(entries.begin(), entries.end(),
                             [&](const Entry& other) { return other.probe->sortKey() > equal.sortKey(); });
        const int32_t position = static_cast<int32_t>(entry - entries.begin()) + 1;
        const ZVObject* object = list()->pObjectInPosition(position);
        entry = entries.insert(entry, {static_cast<const Probe*>(object), 0, false});
      }
      ++entry->users;
      return *entry;
    }
    void eraseIf(const std::function<bool(const Entry&)>& leaves) {
      std::erase_if(entries, [&](const Entry& entry) {
        if (leaves(entry) && entry.probe == defaultProbe) defaultProbe = nullptr;
        return leaves(entry);
      });
    }
    void eraseUnused() {
      eraseIf([](const Entry& entry) { return entry.users == 0 && !entry.permanent; });
    }
  };

  int pick(int count) { return static_cast<int>(engine_() % static_cast<unsigned>(count)); }
  // Free, or an entry of any side; null now and then.
  const Probe* anyProbe() {
    std::vector<const Probe*> all{nullptr};
    all.insert(all.end(), free_.begin(), free_.end());
    for (const Side& side : sides_)
      for (const Entry& entry : side.entries) all.push_back(entry.probe);
    return all[static_cast<size_t>(pick(static_cast<int>(all.size())))];
  }

  void insert(Side& side, const Probe* probe) {
    if (!probe) {
      EXPECT_EQ(side.db->insert(nullptr), nullptr);
      return;
    }
    const int value = probe->value();
    const bool isFree = std::erase(free_, probe) > 0;
    const bool isNew = side.find(probe) == side.entries.end();
    const ZVResource* result = side.db->insert(probe);
    EXPECT_EQ(side.inserted(value).probe, result);
    EXPECT_EQ(result == probe, isNew ? isFree : !isFree && side.db->index(probe) > 0);
  }

  void remove(Side& side, const Probe* probe) {
    ZVResource* back = side.db->remove(probe);
    const Place entry = side.find(probe);
    if (entry == side.entries.end() || entry->probe != probe) {
      EXPECT_EQ(back, probe);
      return;
    }
    if (entry->users > 0) --entry->users;
    EXPECT_EQ(back == probe, entry->users == 0 && !entry->permanent);
    EXPECT_NE(back->isEqual(probe), 0);
    free_.push_back(static_cast<Probe*>(back));
    side.eraseUnused();
  }

  void makePermanent(Side& side, const Probe* probe, bool permanent) {
    const Place entry = side.find(probe);
    const bool found = entry != side.entries.end();
    EXPECT_EQ(permanent ? side.db->makePermanent(probe) : side.db->makeTransient(probe), found);
    if (found) entry->permanent = permanent;
    side.eraseUnused();
  }

  void makeAll(Side& side, bool permanent) {
    permanent ? side.db->makeAllPermanent() : side.db->makeAllTransient();
    for (Entry& entry : side.entries) entry.permanent = permanent;
    side.eraseUnused();
  }

  void copyPermanent(Side& side, Side& source) {
    EXPECT_EQ(side.db->copyPermanent(nullptr), 0);
    EXPECT_EQ(side.db->copyPermanent(source.db.get()), &side != &source);
    if (&side == &source) return;
    for (const Entry& entry : source.entries)
      if (entry.permanent) side.inserted(entry.probe->value()).permanent = true;
  }

  void requestDefault(Side& side) {
    const ZVResource* given = side.db->pDefaultResource();
    if (!side.defaultProbe) {
      Entry& entry = side.inserted(DEFAULT_VALUE);
      entry.permanent = true;
      side.defaultProbe = entry.probe;
    }
    EXPECT_EQ(given, side.defaultProbe);
  }

  // Also one that is still in use.
  void deleteOne(const Probe* probe) {
    std::erase(free_, probe);
    for (Side& side : sides_) side.eraseIf([&](const Entry& entry) { return entry.probe == probe; });
    delete probe;
  }

  void useFileTable(Side& side) {
    // Its objects go with the table only if none of them is gone already.
    const bool deletes = std::all_of(side.table.begin(), side.table.end(),
                                     [](const ZVResource* object) { return Probe::alive.count(object); });
    side.db->postFileSupport(deletes);
    auto gone = [&](const Probe* probe) {
      return deletes && std::count(side.table.begin(), side.table.end(), probe);
    };
    std::erase_if(free_, gone);
    for (Side& each : sides_) each.eraseIf([&](const Entry& entry) { return gone(entry.probe); });
    side.table.clear();
    EXPECT_EQ(side.db->insertForFileSupport(anyProbe(), 1), -1);

    side.db->preFileSupport();
    ZVSList* table = side.db->pResourceListForFileSupport();
    EXPECT_EQ(side.db->pResourceListForFileSupport(nullptr), nullptr);
    EXPECT_EQ(side.db->pResourceListForFileSupport(table), table);
    for (int count = pick(8); count > 0; --count) {
      const Probe* probe = anyProbe();
      const int append = pick(2);
      const auto known = append ? side.table.end() : std::find(side.table.begin(), side.table.end(), probe);
      const int32_t number = static_cast<int32_t>(known - side.table.begin());
      EXPECT_EQ(side.db->insertForFileSupport(probe, append), probe ? number : -1);
      if (probe && known == side.table.end()) side.table.push_back(probe);
    }
  }

  void end(Side& side, bool database) {
    if (database) side.db = std::make_unique<ProbeDB>();
    side.db->empty();
    side.entries.clear();
    side.defaultProbe = nullptr;
    side.table.clear();
    EXPECT_EQ(side.db->pResourceListForFileSupport(), nullptr);
  }

  std::mt19937 engine_;
  Side sides_[2];
  std::vector<const Probe*> free_;
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
      holder->atEnd = [&db, held] { delete db.remove(held); };
      db.insert(holder);
      if (!permanent) continue;
      db.makePermanent(holder);
      delete db.remove(holder);
    }
    EXPECT_EQ(Probe::alive.size(), 6U);
    if (permanent) db.makeAllTransient();
    if (!permanent) db.empty();
    EXPECT_TRUE(Probe::alive.empty());
  }
}

// Inserts each value twice and finds each shared once, in the given order; copies keep or drop the value.
template <class DB, class Resource, class Value>
void checkSharing(const std::vector<Value>& ordered, const std::vector<int32_t>& keys) {
  DB db;
  EXPECT_EQ(db.pDefaultResource()->refCount(), PERMANENT + 1);
  EXPECT_EQ(db.pDefaultResource()->pResourceDB(), &db);
  EXPECT_NE(db.pDefaultResource()->isEqual(std::make_unique<Resource>().get()), 0);
  EXPECT_EQ(db.pDefaultResource()->isEqual(nullptr), 0);
  std::vector<const Resource*> shared(ordered.size());
  for (size_t i = ordered.size(); i-- > 0;) shared[i] = db.insert(new Resource(&db, &ordered[i]));
  EXPECT_EQ(std::set(shared.begin(), shared.end()).size(), ordered.size());
  DB other;
  for (size_t i = 0; i < ordered.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(shared[i]->sortKey(), keys[i]);
    EXPECT_EQ(db.insert(new Resource(nullptr, &ordered[i])), shared[i]);
    EXPECT_GE(db.index(shared[i]), i > 0 && keys[i - 1] < keys[i] ? db.index(shared[i - 1]) : 1);
    std::unique_ptr<Resource> copy(db.remove(shared[i]));
    for (const Resource* each : shared) EXPECT_EQ(copy->isEqual(each), each == shared[i]);
    copy.reset(shared[i]->cloneAttributes());
    EXPECT_NE(copy->isEqual(std::make_unique<Resource>().get()), 0);
    EXPECT_EQ(copy->pResourceDB(), &db);
    Resource elsewhere(&other);
    elsewhere = *shared[i];
    EXPECT_NE(elsewhere.isEqual(shared[i]), 0);
    EXPECT_EQ(elsewhere.pResourceDB(), &other);
    elsewhere.copyAttributes(copy.get());
    EXPECT_NE(elsewhere.isEqual(shared[i]), 0);
  }
  EXPECT_EQ(other.copyPermanent(&db), 1);
  EXPECT_NE(other.pDefaultResource()->isEqual(db.pDefaultResource()), 0);
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
