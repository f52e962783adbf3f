// The set of shared values of one kind: each distinct value exists once, with a count of its users.
//
// A client that wants a value inserts a candidate and goes on with the resource that comes back, since the
// candidate may be gone. A client that is done with it, or wants to change it, removes its share and owns
// what comes back.
//
// Ownership: the database owns the resources of its list. What it gives out as const stays its own; what
// remove gives belongs to the caller. A free resource may outlive its database, a shared one ends with it.
// Invariants: the list ascends by sortKey; resources of one key are unequal and in the order of their
// insertion; each has this database and at least one count.
// Cost: a look-up by value walks the list up to the first larger key; index and the file table are linear.
#ifndef ZV_ZVRESRDB_H
#define ZV_ZVRESRDB_H

#include <cstdint>
#include <memory>

#include "utils/zvresrc.h"
#include "utils/zvslist.h"

class ZV_EXPORT ZVResourceDB : public ZVObject {
 public:
  ZVResourceDB() = default;
  // As empty.
  ~ZVResourceDB() override;

  // The position of that very object in the list, from 1; -1 if it is not there.
  int32_t index(const ZVResource* resource) const { return iIndex(resource); }

  // Adds a share to the resource of that value and gives it. If there is none yet, a free argument becomes
  // it, and of another one a clone does. If there is one, a free argument is deleted. Null gives null.
  const ZVResource* insert(const ZVResource* resource) { return iInsert(resource); }
  // Takes a share from a resource of the list and gives a free resource of its value: a private copy, or with
  // the last share the resource itself. Anything else comes back unchanged.
  ZVResource* remove(const ZVResource* resource) { return iRemove(resource); }
  // Act on the resource of that value; 0 if there is none. A resource that becomes transient without users is
  // deleted.
  int makePermanent(const ZVResource* resource) { return iMakePermanent(resource); }
  int makeTransient(const ZVResource* resource) { return iMakeTransient(resource); }
  void makeAllPermanent();
  void makeAllTransient();
  // Inserts the permanent resources of other and makes them permanent here. 0 for null and this database.
  int copyPermanent(const ZVResourceDB* other);
  // The default value, which is inserted and made permanent on first request and again after it has left the
  // list.
  const ZVResource* pDefaultResource();
  // Deletes all resources and the file table.
  void empty();

  // The file table numbers resources from 0 in the order of their use while a file is read or written. It
  // exists from preFileSupport, which replaces an old one, to postFileSupport, which may delete its resources
  // with it, each once.
  void preFileSupport();
  void postFileSupport(int deleteObjects);
  // The number of the resource, which is appended if it is not there or if append is not 0. -1, and no
  // change, for null and without a table.
  int32_t insertForFileSupport(const ZVResource* resource, int append);
  // Null if there is no such number.
  const ZVResource* pFileSupportResource(int32_t index) const;
  ZVSList* pResourceListForFileSupport() const { return resourceListForFileSupport_.get(); }
  // Takes over the list and leaves the former one to the caller.
  ZVSList* pResourceListForFileSupport(ZVSList* list);

 protected:
  // A new resource with the default value, in this database.
  virtual ZVResource* vNewResource() = 0;

  ZV_SHAPE_NO_COPY(ZVResourceDB)
  friend class ZVResource;

  static ZVResource* resourceOf(const ZVSListCell* cell) { return ZVResource::castDown(cell->pObject()); }

  // Gives 1 with the cell of the resource of that value and the one before it; else 0, and cell is the one
  // behind which it belongs. A null cell is the front of the list.
  int search(const ZVResource* resource, ZVSListCell*& cell, ZVSListCell*& previous) const;
  const ZVResource* iInsert(const ZVResource* resource);
  ZVResource* iRemove(const ZVResource* resource);
  int iMakePermanent(const ZVResource* resource);
  int iMakeTransient(const ZVResource* resource);
  int32_t iIndex(const ZVResource* resource) const;
  // Takes the resource behind previous (null: the first one) out of the list and gives it; null for none.
  ZVResource* takeOut(ZVSList& list, ZVSListCell* previous);
  // Takes out that very object, whatever its value is by now; nothing if it is not there.
  void withdraw(const ZVResource* resource);
  void deleteResources(ZVSList& list);

  ZVSList* pResourceList() { return &resourceList_; }

  ZVSList resourceList_;
  std::unique_ptr<ZVSList> resourceListForFileSupport_;
  ZVResource* defaultResource_ = nullptr;  // null or in the list
};

// The operations with the type of the resources of one database DB. They do what those of ZVResourceDB do.
template <class DB, class Resource>
class ZVTypedResourceDB : public ZVResourceDB {
 public:
  const Resource* insert(const Resource* resource) {
    return Resource::castDown(ZVResourceDB::insert(resource));
  }
  Resource* remove(const Resource* resource) { return Resource::castDown(ZVResourceDB::remove(resource)); }
  int copyPermanent(const DB* other) { return ZVResourceDB::copyPermanent(other); }
  const Resource* pDefaultResource() { return Resource::castDown(ZVResourceDB::pDefaultResource()); }

 protected:
  ZVTypedResourceDB() = default;
  ZVResource* vNewResource() override { return new Resource(static_cast<DB*>(this)); }
};

#endif
