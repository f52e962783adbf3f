#include "utils/zvresrdb.h"

#include <unordered_set>
#include <utility>

ZV_DEFINE_NO_COPY(ZVResourceDB)

ZVResourceDB::~ZVResourceDB() { empty(); }

int ZVResourceDB::search(const ZVResource* resource, ZVSListCell*& cell, ZVSListCell*& previous) const {
  cell = previous = nullptr;
  if (!resource) return 0;
  const int32_t key = resource->sortKey();
  for (ZVSListCell* here = resourceList_.pFirstCell(); here; here = here->pNextCell()) {
    previous = cell;
    cell = here;
    const ZVResource* element = resourceOf(here);
    const int32_t k = element->sortKey();
    if (k == key && resource->isEqual(element)) return 1;
    if (k > key) {
      cell = previous;
      return 0;
    }
  }
  return 0;
}

ZVResource* ZVResourceDB::takeOut(ZVSList& list, ZVSListCell* previous) {
  const std::unique_ptr<ZVSListCell> cell(list.removeNextCell(previous));
  if (!cell) return nullptr;
  ZVResource* resource = resourceOf(cell.get());
  if (resource == defaultResource_) defaultResource_ = nullptr;
  return resource;
}

void ZVResourceDB::withdraw(const ZVResource* resource) {
  takeOut(resourceList_, resourceList_.searchPreviousObject(resource));
}

const ZVResource* ZVResourceDB::iInsert(const ZVResource* resource) {
  if (!resource) return nullptr;
  ZVResource* candidate = ZVResource::castDown(resource);
  const bool isFree = candidate->refCount() == 0;
  ZVSListCell* cell;
  ZVSListCell* previous;
  if (search(candidate, cell, previous)) {
    ZVResource* entry = resourceOf(cell);
    entry->incrementRefCount();
    if (isFree && candidate != entry) delete candidate;
    return entry;
  }
  ZVResource* entry = isFree ? candidate : candidate->cloneObject();
  if (!entry) return nullptr;
  entry->resourceDB_ = this;
  pResourceList()->addObject(cell, entry);
  entry->incrementRefCount();
  return entry;
}

ZVResource* ZVResourceDB::iRemove(const ZVResource* resource) {
  ZVResource* entry = ZVResource::castDown(resource);
  ZVSListCell* cell;
  ZVSListCell* previous;
  if (!search(entry, cell, previous) || cell->pObject() != entry) return entry;
  entry->decrementRefCount();
  return entry->refCount() > 0 ? entry->cloneObject() : takeOut(resourceList_, previous);
}

int ZVResourceDB::iMakePermanent(const ZVResource* resource) {
  ZVSListCell* cell;
  ZVSListCell* previous;
  if (!search(resource, cell, previous)) return 0;
  resourceOf(cell)->addPermanentShare();
  return 1;
}

int ZVResourceDB::iMakeTransient(const ZVResource* resource) {
  ZVSListCell* cell;
  ZVSListCell* previous;
  if (!search(resource, cell, previous)) return 0;
  resourceOf(cell)->dropPermanentShare();
  if (resourceOf(cell)->refCount() < 1) delete takeOut(resourceList_, previous);
  return 1;
}

int32_t ZVResourceDB::iIndex(const ZVResource* resource) const {
  return resourceList_.positionOfObject(resource);
}

void ZVResourceDB::makeAllPermanent() {
  for (ZVSListCell* cell = resourceList_.pFirstCell(); cell; cell = cell->pNextCell())
    resourceOf(cell)->addPermanentShare();
}

// What nobody uses is deleted when the walk is over: a destructor may change the list.
void ZVResourceDB::makeAllTransient() {
  ZVSList unused;
  ZVSListCell* previous = nullptr;
  ZVSListCell* cell = resourceList_.pFirstCell();
  while (cell) {
    ZVResource* resource = resourceOf(cell);
    ZVSListCell* next = cell->pNextCell();
    resource->dropPermanentShare();
    if (resource->refCount() < 1) {
      unused.appendObject(takeOut(resourceList_, previous));
    } else {
      previous = cell;
    }
    cell = next;
  }
  deleteResources(unused);
}

int ZVResourceDB::copyPermanent(const ZVResourceDB* other) {
  if (!other || other == this) return 0;
  for (ZVSListCell* cell = other->resourceList_.pFirstCell(); cell; cell = cell->pNextCell()) {
    if (!resourceOf(cell)->permanent()) continue;
    if (const ZVResource* entry = iInsert(resourceOf(cell))) ZVResource::castDown(entry)->addPermanentShare();
  }
  return 1;
}

const ZVResource* ZVResourceDB::pDefaultResource() {
  if (!defaultResource_) {
    defaultResource_ = ZVResource::castDown(iInsert(vNewResource()));
    if (defaultResource_) defaultResource_->addPermanentShare();
  }
  return defaultResource_;
}

// Takes one resource at a time from the front, so that the list is whole while a destructor runs. A resource
// without a count does not look for itself in the list when it goes.
void ZVResourceDB::deleteResources(ZVSList& list) {
  while (ZVResource* resource = takeOut(list, nullptr)) {
    resource->refCount_ = 0;
    delete resource;
  }
}

void ZVResourceDB::empty() {
  if (defaultResource_) {
    ZVResource* share = iRemove(defaultResource_);
    defaultResource_ = nullptr;
    delete share;
  }
  makeAllTransient();
  deleteResources(resourceList_);
  resourceListForFileSupport_.reset();
}

void ZVResourceDB::preFileSupport() { resourceListForFileSupport_ = std::make_unique<ZVSList>(); }

void ZVResourceDB::postFileSupport(int deleteObjects) {
  const std::unique_ptr<ZVSList> table = std::move(resourceListForFileSupport_);
  if (!table || !deleteObjects) return;
  std::unordered_set<ZVObject*> deleted;
  for (ZVSListCell* cell = table->pFirstCell(); cell; cell = cell->pNextCell())
    if (deleted.insert(cell->pObject()).second) delete cell->pObject();
}

int32_t ZVResourceDB::insertForFileSupport(const ZVResource* resource, int append) {
  ZVSList* table = pResourceListForFileSupport();
  if (!table || !resource) return -1;
  const int32_t position = append ? -1 : table->positionOfObject(resource);
  if (position > 0) return position - 1;
  table->appendObject(ZVResource::castDown(resource));
  return table->length() - 1;
}

const ZVResource* ZVResourceDB::pFileSupportResource(int32_t index) const {
  const ZVSList* table = pResourceListForFileSupport();
  if (!table || index < 0 || index >= table->length()) return nullptr;
  return ZVResource::castDown(table->pObjectInPosition(index + 1));
}

ZVSList* ZVResourceDB::pResourceListForFileSupport(ZVSList* list) {
  static_cast<void>(resourceListForFileSupport_.release());
  resourceListForFileSupport_.reset(list);
  return list;
}
