#include "utils/zvomlobj.h"

#include "utils/zvdlist.h"
#include "utils/zvdlisti.h"
#include "utils/zvidxhsh.h"
#include "utils/zvomlfil.h"
#include "utils/zvomlsrt.h"

ZV_DEFINE_FULL(ZVOMLObject, ZVObjectWithID)

namespace {

constexpr uint32_t ID_STEP = 8;

int32_t plusStep(int32_t id) { return static_cast<int32_t>(static_cast<uint32_t>(id) + ID_STEP); }

// The id behind this one that a table does not take for an absent object.
int32_t nextFreeID(int32_t id, int32_t errorValue) {
  const int32_t next = plusStep(id);
  return next == errorValue ? plusStep(next) : next;
}

}  // namespace

int32_t ZVOMLObject::iUserField(int32_t value) {
  userField_ = value;
  return value;
}

ZVObject* ZVOMLObject::pIUserField(ZVObject* value) {
  userField_ = reinterpret_cast<intptr_t>(value);
  return value;
}

int32_t ZVOMLObject::graphFileID() const { return iUserField(); }
int ZVOMLObject::isOMLObject() const { return 1; }
int ZVOMLObject::isFactory() const { return 0; }
ZVOMLObject* ZVOMLObject::pOwnerObject() { return nullptr; }

void ZVOMLObject::preFileWrite(ZVOMLFile* file) {
  ZVIndexHashTable* table = file ? file->pIndexHashTable() : nullptr;
  prepareIDForGraphFile(table);
  ZVDList subObjects;
  vBuildListOfSubObjects(subObjects);
  for (ZVDListIter iter(&subObjects); iter; ++iter) castDown(iter.pObject())->preFileWrite(file);
  if (table && subObjects.length() > 0) makeIDsUniqueForGraphFile(table, &subObjects);
}

void ZVOMLObject::postFileWrite(ZVOMLFile* file, ZVFileCodeEnum code) {
  finalizeIDForGraphFile();
  ZVDList subObjects;
  vBuildListOfSubObjects(subObjects);
  for (ZVDListIter iter(&subObjects, ZV_ITER_BACKWARD); iter; --iter)
    castDown(iter.pObject())->postFileWrite(file, code);
}

int ZVOMLObject::vReadField(ZVOMLSyntaxField*, ZVOMLSyntaxObject*, ZVOMLFile*) { return 0; }
void ZVOMLObject::vWriteFields(ZVOMLFile*, int) {}
ZVObject* ZVOMLObject::vCreateObject(ZVOMLSyntaxObject*, ZVOMLSyntaxObject*, ZVOMLFile*) { return nullptr; }
void ZVOMLObject::vPreReadFields(ZVOMLSyntaxObject*, ZVOMLFile*) {}
void ZVOMLObject::vPostReadFields(ZVOMLSyntaxObject*, ZVOMLFile*) {}
int ZVOMLObject::internalUserFieldsInUse() const { return userField_ != 0; }
void ZVOMLObject::nullInternalUserFields() { userField_ = 0; }

void ZVOMLObject::prepareIDForGraphFile(ZVIndexHashTable* table) {
  if (table) {
    const int32_t id = table->lookup(reinterpret_cast<intptr_t>(static_cast<const ZVObject*>(this)));
    if (id != table->errorValue()) {
      iUserField(id);
      return;
    }
  }
  iUserField(identityNumber());
}

void ZVOMLObject::finalizeIDForGraphFile() { userField_ = 0; }
int ZVOMLObject::objectType() const { return 0; }

void ZVOMLObject::makeIDsUniqueForGraphFile(ZVIndexHashTable* table, ZVDList* list) {
  const int32_t none = table->errorValue();
  int32_t next = nextFreeID(table->maxValueIndex(), none);
  ZVIUserFieldDListSort().quickSort(list, 0);
  int32_t previous = none;
  for (ZVDListIter iter(list); iter; ++iter) {
    ZVOMLObject* object = castDown(iter.pObject());
    const int32_t id = object->iUserField();
    if (id == previous || id == none) {
      object->iUserField(next);
      next = nextFreeID(next, none);
    }
    previous = id;
  }
}

void ZVOMLObject::vBuildListOfSubObjects(ZVDList&) {}

void ZVOMLObject::init() { userField_ = 0; }

// The id belongs to one object during one write: no copy takes it over.
void ZVOMLObject::ZVOMLObjectdeepCopy(const ZVOMLObject& other) { ZVObjectWithID::copyObject(&other); }

void ZVOMLObject::ZVOMLObjectattributeCopy(const ZVOMLObject& other) {
  ZVObjectWithID::copyAttributes(&other);
}
