// What the objects of a drawing share: each distinct colour and each distinct shape exists once in it, and
// its nodes and edges have shares in them.
#ifndef NETDRAW_NETSHARE_H
#define NETDRAW_NETSHARE_H

#include <cstdint>
#include <vector>

#include "utils/zvcoredb.h"
#include "utils/zvshredb.h"
#include "utils/zvslist.h"
#include "utils/zvslisti.h"

// A share in a resource, or none. It must go before the database does.
template <class Resource>
class Share {
 public:
  Share() = default;
  ~Share() { take(nullptr); }
  Share(const Share&) = delete;
  Share& operator=(const Share&) = delete;

  const Resource* get() const { return resource_; }
  explicit operator bool() const { return resource_ != nullptr; }
  // Takes over a share that a database gave, in place of the present one.
  void take(const Resource* resource) {
    if (resource_) delete resource_->pResourceDB()->remove(resource_);
    resource_ = resource;
  }

  // By value: the two may be of different drawings.
  friend bool operator==(const Share& a, const Share& b) {
    return a && b ? a.resource_->isEqual(b.resource_) != 0 : !a && !b;
  }

 private:
  const Resource* resource_ = nullptr;
};

// The resources of one kind in a drawing, and their table while its file is read or written. In the file,
// objects name a resource by its place in the table, counted from 0.
//
// What a file tells is permanent: it stays in the drawing, and in the table of the next file, whether
// anything uses it or not. What else is in use follows it there in the order of its use.
template <class DB, class Resource>
class SharedResources {
 public:
  // Shares in the resource of that value, in the default value, and in what stands in the table at that
  // place; null if nothing does.
  template <class Value>
  const Resource* share(const Value& value) {
    return db_.insert(new Resource(&db_, &value));
  }
  const Resource* shareDefault() { return db_.insert(db_.pDefaultResource()); }
  const Resource* shareInTable(int32_t place) {
    return db_.insert(Resource::castDown(db_.pFileSupportResource(place)));
  }

  // Puts the next resource of a file that is read into the table, which the first one opens.
  template <class Value>
  const Resource* appendToTable(const Value& value) {
    if (!db_.pResourceListForFileSupport()) db_.preFileSupport();
    const Resource* resource = share(value);
    db_.makePermanent(resource);
    delete db_.remove(resource);  // the table is no user
    db_.insertForFileSupport(resource, 1);
    permanent_.push_back(resource);
    return resource;
  }

  // The table of a file that is written; each resource in use must be put into it before it is written.
  void openTable() {
    db_.preFileSupport();
    for (const Resource* resource : permanent_) db_.insertForFileSupport(resource, 0);
  }
  // Its place, where it is put if it has none yet; -1 for no resource.
  int32_t placeInTable(const Share<Resource>& share) { return db_.insertForFileSupport(share.get(), 0); }
  template <class Action>
  void forEachInTable(Action action) const {
    for (ZVSListIter it(db_.pResourceListForFileSupport()); it; ++it) {
      action(*Resource::castDown(it.pObject()));
    }
  }

  void closeTable() { db_.postFileSupport(0); }

 private:
  DB db_;
  std::vector<const Resource*> permanent_;  // those of the file, in its order
};

using SharedColors = SharedResources<ZVColorResourceDB, ZVColorResource>;
using SharedShapes = SharedResources<ZVShapeResourceDB, ZVShapeResource>;

#endif
