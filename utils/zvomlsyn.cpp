#include "utils/zvomlsyn.h"
#include "utils/zvomlfil.h"
#include "utils/zvomlsfi.h"

namespace {

template <class Cell>
void dropCell(Cell* cell) {
  cell->pNext = nullptr;
  if (cell->inArena()) {
    cell->~Cell();
  } else {
    delete cell;
  }
}

void dropCell(ZVOMLSyntaxDefaultList* cell) {
  cell->pNext = nullptr;
  delete cell;
}

// Deletes the cells from first on one by one.
template <class Cell>
void deleteChain(Cell* first) {
  while (first) {
    Cell* next = first->pNext;
    dropCell(first);
    first = next;
  }
}

template <class Cell>
void appendChain(Cell*& list, Cell*& end, Cell* first, Cell* last) {
  if (!first) return;
  if (end) {
    end->pNext = first;
  } else {
    list = first;
  }
  end = last;
}

}  // namespace

// ---- Node and chains

ZV_DEFINE_MIRROR(ZVOMLSyntaxStruct)

bool ZVOMLSyntaxObjectList::inArena() const { return pObject && pObject->inArena_; }

ZVOMLSyntaxObjectList::~ZVOMLSyntaxObjectList() {
  ZVOMLSyntaxObject::drop(pObject);
  deleteChain(pNext);
}

bool ZVOMLSyntaxFieldList::inArena() const { return pField && pField->inArena_; }

ZVOMLSyntaxFieldList::~ZVOMLSyntaxFieldList() {
  ZVOMLSyntaxField::drop(pField);
  deleteChain(pNext);
}

ZVOMLSyntaxDefaultList::~ZVOMLSyntaxDefaultList() { deleteChain(pNext); }

// ---- Object

ZVOMLSyntaxObject::~ZVOMLSyntaxObject() {
  deleteChain(objectList_);
  deleteChain(fieldList_);
  deleteChain(defaultList_);
}

void ZVOMLSyntaxObject::drop(ZVOMLSyntaxObject* object) {
  if (object && object->inArena_) {
    object->ZVOMLSyntaxObject::~ZVOMLSyntaxObject();
  } else {
    delete object;
  }
}

ZVOMLSyntaxDefaultList* ZVOMLSyntaxObject::pDefaultList(ZVOMLSyntaxDefaultList* list) {
  defaultListEnd_ = list;
  return defaultList_ = list;
}

const char* ZVOMLSyntaxObject::typeString() const {
  return pOMLFile() ? pOMLFile()->objTypeID(objTypeIDIndex_) : "";
}

const char* ZVOMLSyntaxObject::nameString() const {
  return pOMLFile() ? pOMLFile()->objectID(objectIDIndex_) : "";
}

const char* ZVOMLSyntaxObject::sectionString() const {
  return pOMLFile() ? pOMLFile()->sectionID(sectionIDIndex_) : "";
}

ZVObject* ZVOMLSyntaxObject::object() const {
  return pOMLFile() ? pOMLFile()->pObject(objectIDIndex_) : nullptr;
}

ZVOMLSyntaxField* ZVOMLSyntaxObject::searchField(int32_t fieldIDIndex, int32_t sectionIDIndex) const {
  for (ZVOMLSyntaxFieldIter iter(this); iter; ++iter) {
    ZVOMLSyntaxField* field = iter.pField();
    if (field->fieldIDIndex() == fieldIDIndex &&
        (sectionIDIndex == -1 || field->sectionIDIndex() == sectionIDIndex)) {
      return field;
    }
  }
  return nullptr;
}

ZVOMLSyntaxField* ZVOMLSyntaxObject::searchField(const char* name, const char* section) const {
  if (!pOMLFile() || !name) return nullptr;
  int32_t fieldIndex = pOMLFile()->fieldIDIndex(name);
  int32_t sectionIndex = section ? pOMLFile()->sectionIDIndex(section) : -1;
  // No field bears a name, or stands in a section, that the file does not know.
  if (fieldIndex < 0 || (section && sectionIndex < 0)) return nullptr;
  return searchField(fieldIndex, sectionIndex);
}

ZVOMLSyntaxField* ZVOMLSyntaxObject::searchUniqueField(int32_t fieldIDIndex,
                                                       uint32_t sectionPathIndex) const {
  for (ZVOMLSyntaxFieldIter iter(this); iter; ++iter) {
    ZVOMLSyntaxField* field = iter.pField();
    if (field->fieldIDIndex() == fieldIDIndex && field->sectionPathIndex() == sectionPathIndex) return field;
  }
  return nullptr;
}

void ZVOMLSyntaxObject::addObject(ZVOMLSyntaxObject* object) { addCell(new ZVOMLSyntaxObjectList(object)); }

void ZVOMLSyntaxObject::addField(ZVOMLSyntaxField* field) { addCell(new ZVOMLSyntaxFieldList(field)); }

void ZVOMLSyntaxObject::addCell(ZVOMLSyntaxObjectList* cell) {
  cell->pObject->pOwnerObject(this);
  appendChain(objectList_, objectListEnd_, cell, cell);
}

void ZVOMLSyntaxObject::addCell(ZVOMLSyntaxFieldList* cell) {
  appendChain(fieldList_, fieldListEnd_, cell, cell);
}

void ZVOMLSyntaxObject::addDefaultList(ZVOMLSyntaxFieldList* list) {
  if (!list) return;
  auto* cell = new ZVOMLSyntaxDefaultList(list);
  cell->pNext = defaultList_;
  if (!defaultList_) defaultListEnd_ = cell;
  defaultList_ = cell;
}

void ZVOMLSyntaxObject::append(ZVOMLSyntaxObject* other) {
  if (!other || other == this) return;
  for (ZVOMLSyntaxObjectList* cell = other->objectList_; cell; cell = cell->pNext) {
    cell->pObject->pOwnerObject(this);
  }
  appendChain(objectList_, objectListEnd_, other->objectList_, other->objectListEnd_);
  appendChain(fieldList_, fieldListEnd_, other->fieldList_, other->fieldListEnd_);
  while (defaultListEnd_ && defaultListEnd_->pNext) defaultListEnd_ = defaultListEnd_->pNext;
  appendChain(defaultList_, defaultListEnd_, other->defaultList_, other->defaultListEnd_);
  other->objectList_ = other->objectListEnd_ = nullptr;
  other->fieldList_ = other->fieldListEnd_ = nullptr;
  other->defaultList_ = other->defaultListEnd_ = nullptr;
}

void ZVOMLSyntaxObject::deleteObjectItem(ZVOMLSyntaxObjectList* previous) {
  ZVOMLSyntaxObjectList*& link = previous ? previous->pNext : objectList_;
  ZVOMLSyntaxObjectList* cell = link;
  if (!cell) return;
  link = cell->pNext;
  if (objectListEnd_ == cell) objectListEnd_ = previous;
  dropCell(cell);
}

// ---- Field

ZVOMLSyntaxField::ZVOMLSyntaxField(ZVOMLFile* file, int32_t line, int position, int32_t fileNameIndex,
                                   int32_t fieldIDIndex, int32_t sectionIDIndex, uint32_t sectionPathIndex,
                                   ZVOMLToken* value, ZVOMLDefField* definition, int unchecked)
    : ZVOMLSyntaxField(ZVOMLSyntaxStruct(file, line, position, fileNameIndex), fieldIDIndex, sectionIDIndex,
                       sectionPathIndex, nullptr, definition, unchecked) {
  inArena_ = false;
  if (!value) return;
  holds_ = HEAP_TOKEN;
  value_.heap = value;
}

ZVOMLSyntaxField::~ZVOMLSyntaxField() {
  if (holds_ == OWN_TOKEN) {
    value_.own.~ZVOMLToken();
  } else {
    delete value_.heap;
  }
}

void ZVOMLSyntaxField::drop(ZVOMLSyntaxField* field) {
  if (field && field->inArena_) {
    field->ZVOMLSyntaxField::~ZVOMLSyntaxField();
  } else {
    delete field;
  }
}

const char* ZVOMLSyntaxField::nameString() const {
  return pOMLFile() ? pOMLFile()->fieldID(fieldIDIndex_) : "";
}

const char* ZVOMLSyntaxField::sectionString() const {
  return pOMLFile() ? pOMLFile()->sectionID(sectionIDIndex_) : "";
}

ZVOMLFieldTypeEnum ZVOMLSyntaxField::valueType() const {
  const ZVOMLToken* value = pValueToken();
  switch (value ? value->tag() : ZV_OML_BAD) {
    case ZV_OML_INTEGER:
      return ZV_OML_VALUE_INT;
    case ZV_OML_REAL:
      return ZV_OML_VALUE_REAL;
    case ZV_OML_STRING:
      return ZV_OML_VALUE_STRING;
    case ZV_OML_VALUE_ID:
      return ZV_OML_VALUE_ENUM;
    case ZV_OML_BINVALUE:
      return ZV_OML_VALUE_BINARY;
    case ZV_OML_OBJTYPE_ID:
      return ZV_OML_VALUE_OBJTYPE;
    default:
      return ZV_OML_VALUE_OTHER;
  }
}

int16_t ZVOMLSyntaxField::shortValue() const { return static_cast<int16_t>(longValue()); }

int ZVOMLSyntaxField::intValue() const { return longValue(); }

int32_t ZVOMLSyntaxField::longValue() const {
  const ZVOMLToken* value = pValueToken();
  return value ? value->longValue() : 0;
}

uint32_t ZVOMLSyntaxField::ipbytesValue() const {
  const ZVOMLToken* value = pValueToken();
  return value ? value->ipbytesValue() : 0;
}

ZVOMLBinValue* ZVOMLSyntaxField::pBinValue() const {
  return valueType() == ZV_OML_VALUE_BINARY ? pValueToken()->pBinValue() : nullptr;
}

float ZVOMLSyntaxField::floatValue() const { return static_cast<float>(doubleValue()); }

double ZVOMLSyntaxField::doubleValue() const {
  const ZVOMLToken* value = pValueToken();
  return value ? value->doubleValue() : 0.0;
}

int32_t ZVOMLSyntaxField::enumValue() const {
  return valueType() == ZV_OML_VALUE_ENUM && pOMLFile() ? pOMLFile()->enumValue(pValueToken()->longValue())
                                                        : 0;
}

const char* ZVOMLSyntaxField::stringValue() const {
  return valueType() == ZV_OML_VALUE_STRING && pOMLFile() ? pOMLFile()->string(pValueToken()->longValue())
                                                          : "";
}

ZVObject* ZVOMLSyntaxField::objectValue() const {
  const ZVOMLToken* value = pValueToken();
  return value && value->tag() == ZV_OML_OBJECT_ID && pOMLFile() ? pOMLFile()->pObject(value->longValue())
                                                                 : nullptr;
}

int32_t ZVOMLSyntaxField::objectTypeIndex() const {
  const ZVOMLToken* value = pValueToken();
  if (!value || value->tag() != ZV_OML_OBJECT_ID || !pOMLFile()) return -1;
  ZVOMLSyntaxObject* object = pOMLFile()->pSyntaxObject(value->longValue());
  return object ? object->objTypeIDIndex() : -1;
}

const char* ZVOMLSyntaxField::objectTypeString() const {
  return pOMLFile() ? pOMLFile()->objTypeID(objectTypeIndex()) : "";
}
