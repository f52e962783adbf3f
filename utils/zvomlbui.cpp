// Object building: the semantic pass over a finished syntax tree, and the pass that creates the live objects
// and fills them.
#include <algorithm>
#include <cstring>

#include "utils/zvidxhsh.h"
#include "utils/zvomldef.h"
#include "utils/zvomlfil.h"
#include "utils/zvomlint.h"
#include "utils/zvomlobj.h"
#include "utils/zvomlsfi.h"
#include "utils/zvomlsta.h"
#include "utils/zvomlsyn.h"
#include "utils/zvomltkn.h"

namespace {

bool isDefaults(const ZVOMLSyntaxObject* object) { return object->objectIDIndex() == 0; }

// Runs some objects ahead of a walk along siblings and names the references that the walk will come to, which
// lead all over the memory of a large file.
class LookAhead {
 public:
  explicit LookAhead(const ZVOMLSyntaxObjectList* first) : cell_(first) {
    for (int i = 0; i < DISTANCE && cell_; ++i) cell_ = cell_->pNext;
  }

  template <class Fetch>
  void step(Fetch fetch) {
    if (!cell_) return;
    for (const ZVOMLSyntaxFieldList* cell = cell_->pObject->pFieldList(); cell; cell = cell->pNext) {
      const ZVOMLToken* value = cell->pField->pValueToken();
      if (value && value->tag() == ZV_OML_OBJECT_ID) fetch(value->longValue());
    }
    cell_ = cell_->pNext;
  }

 private:
  static constexpr int DISTANCE = 4;

  const ZVOMLSyntaxObjectList* cell_;
};

}  // namespace

// ---- Whole reads

ZVFileCodeEnum ZVOMLFile::readOMLFile(const char* path, ZVOMLStatic* grammar, ZVObject* expected,
                                      int32_t expectedType, int binary, int keepIDs, int32_t) {
  if (!grammar || !path) return ZV_FILE_BAD_READ_CALL;
  saveMode(binary ? ZV_FILE_READ_BINARY : ZV_FILE_READ);
  initParser(grammar, expected, expectedType, keepIDs);
  Run run(*this);
  parse(path);
  checkSemantics();
  execute();
  cleanup();
  topObjectGiven_ = numberOfErrors() == 0 && !error();
  return topObjectGiven_ ? ZV_FILE_OK : errorCode();
}

ZVObject* ZVOMLFile::pTopObject() const {
  return expectedTopLevelObject_ ? expectedTopLevelObject_ : topLevelObject_;
}

void ZVOMLFile::updateObject(ZVOMLSyntaxObject* object, ZVObject* oldObject, ZVObject* newObject) {
  const int32_t address = object ? object->objectIDIndex() : -1;
  if (oldObject) {
    if (oldObject == topLevelObject_) topLevelObject_ = newObject;
    delete oldObject;
  }
  if (ZVOMLIDTable::Record* record = ids_ ? ids_->makeRecord(address) : nullptr) record->object = newObject;
  if (indexHashTable_)
    indexHashTable_->update(reinterpret_cast<intptr_t>(newObject), extractIDFromScope(address));
}

// ---- Semantic pass

void ZVOMLFile::checkSemantics() {
  const int32_t root = storeObjectIDIndex("$");
  int32_t counter = -2;
  if (numberOfErrors() == 0) {
    if (sawDefaults_) collectDefaultFields(syntaxTree_);
    collectObjects(syntaxTree_, root, counter);
  }
  if (numberOfErrors() == 0) checkRequiredFields(syntaxTree_, root, root, counter);
  if (numberOfErrors() == 0 && !checkObjectsForApplication(syntaxTree_) && syntaxTree_)
    internalErrorMessage(string(syntaxTree_->fileNameIndex()), syntaxTree_->line(), syntaxTree_->position(),
                         34, nullptr, nullptr, nullptr, 0);
}

void ZVOMLFile::collectDefaultFields(ZVOMLSyntaxObject* object) {
  for (ZVOMLSyntaxObjectList* cell = object->pObjectList(); cell; cell = cell->pNext) {
    if (isDefaults(object)) cell->pObject->addDefaultList(object->pFieldList());
    collectDefaultFields(cell->pObject);
  }
}

// An object that continues an earlier one of the same address is taken up by that one, and leaves its list.
void ZVOMLFile::collectObjects(ZVOMLSyntaxObject* object, int32_t scope, int32_t& counter) {
  ZVOMLSyntaxObjectList* previous = nullptr;
  ZVOMLSyntaxObjectList* next = nullptr;
  for (ZVOMLSyntaxObjectList* cell = object->pObjectList(); cell && !isFatalError(); cell = next) {
    ZVOMLSyntaxObject* child = cell->pObject;
    next = cell->pNext;
    if (isDefaults(child)) {
      collectObjects(child, scope, counter);
      previous = cell;
      continue;
    }
    const int32_t address = fullObjectScopeIDIndex(child, scope, counter);
    collectObjects(child, address, counter);
    ZVOMLSyntaxObject* first = pSyntaxObject(address);
    if (first && first->typeIndex() == child->typeIndex()) {
      first->append(child);
      object->deleteObjectItem(previous);
      continue;
    }
    if (first) {
      internalErrorMessage(string(child->fileNameIndex()), child->line(), child->position(), 31, nullptr,
                           nullptr, nullptr, 0);
    } else {
      pSyntaxObject(address, child);
      if (ids_) ids_->note(scope, child->objectIDIndex(), child->typeIndex());
      child->objectIDIndex(address);
    }
    previous = cell;
  }
}

int32_t ZVOMLFile::fullObjectScopeIDIndex(ZVOMLSyntaxObject* object, int32_t scope, int32_t& counter) {
  if (isDefaults(object)) return 0;
  if (!ids_) return -1;
  const int32_t id = object->objectIDIndex();
  return id >= 0 ? ids_->enterAddress(scope, id) : ids_->enterUnnamed(scope, counter--);
}

void ZVOMLFile::checkRequiredFields(ZVOMLSyntaxObject* object, int32_t own, int32_t scope, int32_t& counter) {
  if (ZVOMLDefObjType* type = object->pDefObjType()) {
    for (ZVOMLDefField* field = type->pRequiredFieldList(); field; field = field->pNextRequired())
      field->marked(0);
    for (ZVOMLSyntaxFieldIter iter(object); iter && !isFatalError(); ++iter) {
      ZVOMLDefField* definition = iter.pField()->pDefField();
      if (!definition) continue;
      definition->marked(1);
      if (definition->fieldType() == ZV_FIELD_OBJECT) checkObjectDefinition(iter.pField(), scope);
    }
    ZVOMLDefField* missing = own == 0 ? nullptr : type->pRequiredFieldList();
    while (missing && missing->marked()) missing = missing->pNextRequired();
    if (missing)
      internalErrorMessage(string(object->fileNameIndex()), object->line(), object->position(), 29,
                           fieldID(missing->fieldIDIndex()), nullptr, nullptr, 0);
  }
  const int32_t inner = own == 0 ? scope : own;
  LookAhead ahead(object->pObjectList());
  for (ZVOMLSyntaxObjectList* cell = object->pObjectList(); cell && !isFatalError(); cell = cell->pNext) {
    ahead.step([&](int32_t id) {
      if (ids_) ids_->prefetchAddress(inner, id);
    });
    checkRequiredFields(cell->pObject, cell->pObject->objectIDIndex(), inner, counter);
  }
}

// A relative value becomes an absolute address once: the first object that is visited decides its scope. What
// lies at an address does not change any more, so its type is noted where the address is remembered.
void ZVOMLFile::checkObjectDefinition(ZVOMLSyntaxField* field, int32_t scope) {
  ZVOMLToken* value = field->pValueToken();
  if (!value || !ids_) return;
  ZVIndexMemory::Place* known = ids_->remembered(scope, value->longValue());
  if (known) {
    value->longValue(known->index);
  } else if (!ids_->isAbsolute(value->longValue())) {
    value->longValue(ids_->enterAddress(scope, value->longValue()));
  }
  int32_t type = known ? known->note : ZVIndexMemory::UNKNOWN;
  if (type == ZVIndexMemory::UNKNOWN) {
    const ZVOMLSyntaxObject* target = pSyntaxObject(value->longValue());
    type = target ? target->typeIndex() : -1;
    if (known) known->note = type;
  }
  const int32_t expectedType = field->pDefField()->objTypeIDIndex();
  if (type < 0) {
    internalErrorMessage(field->fileNameIndex(), value, 28, nullptr, nullptr, nullptr, 0);
  } else if (expectedType >= 0 && type != expectedType) {
    internalErrorMessage(field->fileNameIndex(), value, 27, objTypeID(expectedType), nullptr, nullptr, 0);
  }
}

int ZVOMLFile::checkObjectsForApplication(ZVOMLSyntaxObject* object) {
  int good = 1;
  for (ZVOMLSyntaxObjectList* cell = object->pObjectList(); cell && good && !isFatalError();
       cell = cell->pNext) {
    if (!isDefaults(cell->pObject)) good = vCheckObject(cell->pObject) != 0;
    good = good && checkObjectsForApplication(cell->pObject);
  }
  return good;
}

// The decimal number at the end of an address, with its sign; 0 without digits.
int32_t ZVOMLFile::extractIDFromScope(int32_t index) const {
  const int32_t item = ids_ ? ids_->lastItem(index) : -1;
  if (ZVOMLIDTable::isNumber(item)) return ZVOMLIDTable::numberOf(item);
  const char* text = objectID(item);
  const char* end = text + std::strlen(text);
  const char* digits = end;
  while (digits > text && digits[-1] >= '0' && digits[-1] <= '9') --digits;
  const bool negative = digits > text && digits[-1] == '-';
  const int64_t limit = negative ? -static_cast<int64_t>(INT32_MIN) : INT32_MAX;
  int64_t number = 0;
  for (; digits < end && number < limit; ++digits) number = number * 10 + (*digits - '0');
  if (number > limit) number = limit;
  return static_cast<int32_t>(negative ? -number : number);
}

// ---- Live objects

void ZVOMLFile::execute() {
  // No object comes of a file that a fault has cut off.
  if (!syntaxTree_ || error()) return;
  if (numberOfErrors() == 0) createAllObjects(syntaxTree_);
  if (numberOfErrors() == 0 && !setOwnedFields(syntaxTree_, syntaxTree_, nullptr))
    internalWarningMessage(nullptr, -1, 0, 49);
}

void ZVOMLFile::createAllObjects(ZVOMLSyntaxObject* object) {
  for (ZVOMLSyntaxObjectList* cell = object->pObjectList(); cell && !isFatalError(); cell = cell->pNext) {
    if (isDefaults(cell->pObject)) {
      createAllObjects(cell->pObject);
    } else {
      createTopLevelObject(cell->pObject);
    }
  }
}

void ZVOMLFile::createTopLevelObject(ZVOMLSyntaxObject* object) {
  auto stop = [&](int id) {
    internalErrorMessage(string(object->fileNameIndex()), object->line(), object->position(), id, nullptr,
                         nullptr, nullptr, 1);
  };
  ZVObject* const expected = expectedTopLevelObject_;
  if (expected && object->typeIndex() != expectedTopLevelObjTypeIDIndex_) return stop(32);
  ZVObject* const created = expected ? expected : vCreateObject(object, nullptr, nullptr);
  updateObject(object, nullptr, created);
  if (topLevelObject_) stop(33);
  if (isFatalError()) {
    // Nobody has received the object, so it goes the way of the first one.
    std::vector<ZVObject*>& doomed = remains().objects;
    if (created && created != expected && std::find(doomed.begin(), doomed.end(), created) == doomed.end())
      doomed.push_back(created);
    return;
  }
  pTopLevelObject(created, object->typeIndex());
  createOwnedObjects(object, object, created);
}

void ZVOMLFile::createOwnedObjects(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax,
                                   ZVObject* owner) {
  for (ZVOMLSyntaxObjectList* cell = object->pObjectList(); cell && !isFatalError(); cell = cell->pNext) {
    ZVOMLSyntaxObject* child = cell->pObject;
    if (isDefaults(child)) {
      createOwnedObjects(child, ownerSyntax, owner);
      continue;
    }
    ZVObject* created = vCreateObject(child, ownerSyntax, owner);
    updateObject(child, nullptr, created);
    createOwnedObjects(child, child, created);
  }
}

int ZVOMLFile::setOwnedFields(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax, ZVObject* owner) {
  int good = 1;
  if (!isDefaults(object)) {
    vPreReadFields(ownerSyntax, owner);
    for (ZVOMLSyntaxFieldIter iter(object); iter && !isFatalError(); ++iter)
      if (!vReadField(iter.pField(), ownerSyntax, owner)) good = 0;
    if (!isFatalError()) vPostReadFields(ownerSyntax, owner);
  }
  LookAhead ahead(object->pObjectList());
  for (ZVOMLSyntaxObjectList* cell = object->pObjectList(); cell && !isFatalError(); cell = cell->pNext) {
    // A callback may have ended the run.
    ahead.step([&](int32_t address) { zvPrefetch(ids_ ? ids_->record(address) : nullptr); });
    ZVOMLSyntaxObject* child = cell->pObject;
    const int childGood = isDefaults(child) ? setOwnedFields(child, ownerSyntax, owner)
                                            : setOwnedFields(child, child, pObject(child->objectIDIndex()));
    if (!childGood) good = 0;
  }
  return good;
}

// ---- Hooks of the subclass

int ZVOMLFile::vCheckObject(ZVOMLSyntaxObject* object) {
  if (!object || !object->pDefObjType()) return 0;
  return object->pDefObjType()->checkFunction(this, object);
}

ZVObject* ZVOMLFile::vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax,
                                   ZVObject* owner) {
  if (!object || !object->pDefObjType()) return nullptr;
  return object->pDefObjType()->createFunction(this, object, ownerSyntax, owner);
}

int ZVOMLFile::vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVObject* target) {
  if (target && target->isOMLObject() && ZVOMLObject::castDown(target)->vReadField(field, object, this))
    return 1;
  if (!object || !object->pDefObjType()) return 0;
  return object->pDefObjType()->fieldFunction(this, field, object, target);
}

void ZVOMLFile::vPreReadFields(ZVOMLSyntaxObject* object, ZVObject* target) {
  if (target && target->isOMLObject()) ZVOMLObject::castDown(target)->vPreReadFields(object, this);
}

void ZVOMLFile::vPostReadFields(ZVOMLSyntaxObject* object, ZVObject* target) {
  if (target && target->isOMLObject()) ZVOMLObject::castDown(target)->vPostReadFields(object, this);
}

// ---- Look-ups in the grammar and in the pool of addresses

ZVOMLDefObjType* ZVOMLFile::pObjTypeDefinition(int32_t index) const {
  return grammar_ ? grammar_->pObjTypeDefinition(index) : nullptr;
}

int32_t ZVOMLFile::enumValue(int32_t index) const { return grammar_ ? grammar_->enumValue(index) : 0; }

int ZVOMLFile::definedSection(int32_t index) const { return grammar_ && grammar_->definedSection(index); }

ZVOMLSyntaxObject* ZVOMLFile::pSyntaxObject(int32_t index) const {
  const ZVOMLIDTable::Record* record = ids_ ? ids_->record(index) : nullptr;
  return record ? record->syntaxObject : nullptr;
}

ZVOMLSyntaxObject* ZVOMLFile::pSyntaxObject(int32_t index, ZVOMLSyntaxObject* object) {
  if (ZVOMLIDTable::Record* record = ids_ ? ids_->makeRecord(index) : nullptr) record->syntaxObject = object;
  return object;
}

ZVObject* ZVOMLFile::pObject(int32_t index) const {
  const ZVOMLIDTable::Record* record = ids_ ? ids_->record(index) : nullptr;
  return record ? record->object : nullptr;
}
