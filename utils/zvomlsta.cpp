#include "utils/zvomlsta.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "utils/zvascii.h"
#include "utils/zvhelper.h"
#include "utils/zvstrpoo.h"
#include "utils/zvtextfi.h"

ZV_DEFINE_NO_COPY(ZVOMLStatic)

namespace {

constexpr int32_t HASH_TABLE_BEYOND_PRIMES = 15013;

bool isBlank(char c) { return c == ' ' || c == '\t'; }

bool isWordChar(char c) {
  const char upper = zvascii::toUpper(c);
  return (upper >= 'A' && upper <= 'Z') || zvascii::isDigit(c) || c == '$' || c == '_';
}

const char* skipBlanks(const char* text) {
  while (isBlank(*text)) ++text;
  return text;
}

const char* skipBlanksAndCommas(const char* text) {
  while (isBlank(*text) || *text == ',') ++text;
  return text;
}

// The first letter of the row, in upper case; 0 for an empty row.
char kindOfRow(const char* row) { return zvascii::toUpper(*skipBlanks(row)); }

const char* textBehindKind(const char* row) { return skipBlanks(row) + 1; }

int requiredMark(const char* text) { return zvascii::toUpper(*skipBlanks(text)) == 'R'; }

bool isClosing(char kind) { return kind == '}' || kind == ']'; }

ZVFieldTypeEnum simpleFieldType(char letter) {
  switch (zvascii::toUpper(letter)) {
    case 'B':
      return ZV_FIELD_BOOL;
    case 'I':
      return ZV_FIELD_INT;
    case 'P':
      return ZV_FIELD_IPBYTES;
    case 'R':
      return ZV_FIELD_REAL;
    case 'S':
      return ZV_FIELD_STRING;
    case 'X':
      return ZV_FIELD_BINVALUE;
    default:
      return ZV_FIELD_NONE;
  }
}

// Writes an empty line, the comment, an empty line, and a line for each name from first on.
ZVFileCodeEnum writeGroup(ZVTextFile& file, const char* comment, const char* prefix, const ZVStringPool& pool,
                          int32_t first) {
  for (const char* line : {"", comment, ""}) {
    if (ZVFileCodeEnum code = file.writeLine(line)) return code;
  }
  for (int32_t index = first; index < pool.decodeTableMax(); ++index) {
    const std::string line = std::string(prefix) + pool.decode(index) + ' ' + std::to_string(index);
    if (ZVFileCodeEnum code = file.writeLine(line.c_str())) return code;
  }
  return ZV_FILE_OK;
}

}  // namespace

ZVOMLStatic::ZVOMLStatic(const ZVOMLStaticOEStruct* types, const char* const* sections,
                         const ZVOMLStaticVEStruct* values, const char* const* definitions,
                         int32_t stringPoolSize, int32_t valueIDPoolSize, int32_t objTypeIDPoolSize,
                         int32_t sectionIDPoolSize, int32_t fieldIDPoolSize, int32_t objectIDPoolSize) {
  initialize(stringPoolSize, valueIDPoolSize, objTypeIDPoolSize, sectionIDPoolSize, fieldIDPoolSize,
             objectIDPoolSize);
  installObjectTypeTable(types);
  installOtherTables(sections, values, definitions);
}

ZVOMLStatic::ZVOMLStatic(const char* const* types, const char* const* sections,
                         const ZVOMLStaticVEStruct* values, const char* const* definitions,
                         int32_t stringPoolSize, int32_t valueIDPoolSize, int32_t objTypeIDPoolSize,
                         int32_t sectionIDPoolSize, int32_t fieldIDPoolSize, int32_t objectIDPoolSize)
    : ZVOMLStatic(nullptr, nullptr, nullptr, nullptr, stringPoolSize, valueIDPoolSize, objTypeIDPoolSize,
                  sectionIDPoolSize, fieldIDPoolSize, objectIDPoolSize) {
  installObjectTypeTable(types);
  installOtherTables(sections, values, definitions);
}

ZVOMLStatic::~ZVOMLStatic() { empty(); }

void ZVOMLStatic::installObjectTypeTable(const ZVOMLStaticOEStruct* types) {
  for (; types && types->name; ++types) {
    installObjTypeID(types->name, types->check, types->create, types->field, types->write);
  }
}

void ZVOMLStatic::installObjectTypeTable(const char* const* types) {
  for (; types && *types; ++types) installObjTypeID(*types, nullptr, nullptr, nullptr, nullptr);
}

void ZVOMLStatic::installEnumValueTable(const ZVOMLStaticVEStruct* values) {
  for (; values && values->name; ++values) installEnumValueID(values->name, values->value);
}

void ZVOMLStatic::installSectionTable(const char* const* sections) {
  for (; sections && *sections; ++sections) installSectionID(*sections);
}

void ZVOMLStatic::installFieldTable(const char* const* fields) {
  for (; fields && *fields; ++fields) installFieldID(*fields);
}

void ZVOMLStatic::installDefinitionTable(const char* const* definitions) {
  if (!definitions) return;
  int32_t row = 0;
  while (definitions[row]) {
    row = kindOfRow(definitions[row]) == 'O' ? scanObjectTypeInDefTable(definitions, row) : row + 1;
  }
}

void ZVOMLStatic::installOtherTables(const char* const* sections, const ZVOMLStaticVEStruct* values,
                                     const char* const* definitions) {
  installSectionTable(sections);
  installEnumValueTable(values);
  installDefinitionTable(definitions);
}

ZVFileCodeEnum ZVOMLStatic::writeIndexDefinitions(const char* path) const {
  struct Group {
    const char* comment;
    const char* prefix;
    const ZVStringPool* pool;
    int32_t first;
  };
  const Group groups[] = {
      {"/* Coding of fields */", "#define ZV_XKEY_FI_", pFieldIDPool(), 4},
      {"/* Coding of sections */", "#define ZV_XKEY_SI_", pSectionIDPool(), 2},
      {"/* Coding of enum value identifiers */", "#define ZV_XKEY_VI_", pValueIDPool(), 0},
      {"/* Coding of object type identifiers */", "#define ZV_XKEY_OI_", pObjTypeIDPool(), 1}};
  ZVTextFile file;
  ZVFileCodeEnum code = file.open(path, ZV_FILE_WRITE_ASCII);
  if (code) return code;
  for (const Group& group : groups) {
    if (!code) code = writeGroup(file, group.comment, group.prefix, *group.pool, group.first);
  }
  if (!code) code = file.writeLine("");
  const ZVFileCodeEnum closed = file.close();
  return code ? code : closed;
}

ZVOMLDefObjType* ZVOMLStatic::installObjTypeID(const char* name, ZVOMLCheckFunction check,
                                               ZVOMLCreateFunction create, ZVOMLFieldFunction field,
                                               ZVOMLWriteFunction write) {
  if (!name) return nullptr;
  const int32_t index = pObjTypeIDPool_->update(name);
  ZVOMLDefObjType* type = pObjTypeDefinition(index);
  if (!type) {
    type = new ZVOMLDefObjType(create, field, check, write);
    pObjTypeIDPool_->pointer(index, type);
    return type;
  }
  if (check) type->pCheckFunction(check);
  if (create) type->pCreateFunction(create);
  if (field) type->pFieldFunction(field);
  if (write) type->pWriteFunction(write);
  return type;
}

int ZVOMLStatic::installEnumValueID(const char* name, int32_t value) {
  if (!name) return 0;
  // The pointer of an entry holds the number itself.
  pValueIDPool_->pointer(pValueIDPool_->update(name), reinterpret_cast<void*>(static_cast<intptr_t>(value)));
  return 1;
}

int ZVOMLStatic::addFieldDefinition(const char* type, const char* field, ZVFieldTypeEnum fieldType,
                                    int required) {
  return addFieldDefinition(type, 0, field, fieldType, required);
}

int ZVOMLStatic::addFieldDefinition(const char* type, uint32_t path, const char* field,
                                    ZVFieldTypeEnum fieldType, int required) {
  const Place place = findPlace(type, path);
  if (!place.objType || !field) return 0;
  return place.addField(installFieldID(field), fieldType, required) != nullptr;
}

int ZVOMLStatic::addFieldDefinition(const char* type, const char* field, const char* valueOrType,
                                    int required) {
  return addFieldDefinition(type, 0, field, valueOrType, required);
}

int ZVOMLStatic::addFieldDefinition(const char* type, uint32_t path, const char* field,
                                    const char* valueOrType, int required) {
  const Place place = findPlace(type, path);
  if (!place.objType || !field || !valueOrType) return 0;
  const int32_t value = pValueIDPool_->lookup(valueOrType);
  const int32_t objType = pObjTypeIDPool_->lookup(valueOrType);
  if (value < 0 && objType < 0) return 0;
  ZVOMLDefField* added =
      place.addField(installFieldID(field), value >= 0 ? ZV_FIELD_ENUM : ZV_FIELD_OBJECT, required);
  if (!added) return 0;
  if (value >= 0) {
    added->addEnumValue(value);
  } else {
    added->objTypeIDIndex(objType);
  }
  return 1;
}

uint32_t ZVOMLStatic::addSectionDefinition(const char* type, const char* section) {
  return addSectionDefinition(type, 0, section);
}

uint32_t ZVOMLStatic::addSectionDefinition(const char* type, uint32_t path, const char* section) {
  const Place place = findPlace(type, path);
  if (!place.objType || !section) return 0;
  const ZVOMLDefSection* added = place.addSection(installSectionID(section));
  return added ? added->sectionPathIndex() : 0;
}

int ZVOMLStatic::addObjectTypeDefinition(const char* type, const char* subType) {
  return addObjectTypeDefinition(type, 0, subType);
}

int ZVOMLStatic::addObjectTypeDefinition(const char* type, uint32_t path, const char* subType) {
  const Place place = findPlace(type, path);
  if (!place.objType || !subType) return 0;
  installSubObjectType(subType, place);
  return 1;
}

ZVOMLDefObjType* ZVOMLStatic::pObjTypeDefinition(int32_t index) const {
  return static_cast<ZVOMLDefObjType*>(pObjTypeIDPool_->pointer(index));
}

int32_t ZVOMLStatic::enumValue(int32_t index) const {
  return static_cast<int32_t>(reinterpret_cast<intptr_t>(pValueIDPool_->pointer(index)));
}

int ZVOMLStatic::definedSection(int32_t index) const {
  return index >= 0 && index < pSectionIDPool_->decodeTableMax();
}

void ZVOMLStatic::initialize(int32_t stringSize, int32_t valueIDSize, int32_t objTypeIDSize,
                             int32_t sectionIDSize, int32_t fieldIDSize, int32_t objectIDSize) {
  stringPoolSize_ = stringSize;
  valueIDPoolSize_ = valueIDSize;
  objTypeIDPoolSize_ = objTypeIDSize;
  sectionIDPoolSize_ = sectionIDSize;
  fieldIDPoolSize_ = fieldIDSize;
  objectIDPoolSize_ = objectIDSize;
  stringHashSize_ = hashTableSize(stringSize);
  valueIDHashSize_ = hashTableSize(valueIDSize);
  objTypeIDHashSize_ = hashTableSize(objTypeIDSize);
  sectionIDHashSize_ = hashTableSize(sectionIDSize);
  fieldIDHashSize_ = hashTableSize(fieldIDSize);
  objectIDHashSize_ = hashTableSize(objectIDSize);

  const auto makePool = [](int32_t hashSize, int32_t size, int withPointers) {
    return std::make_unique<ZVStringPool>(hashSize, size, 0, withPointers);
  };
  pValueIDPool_ = makePool(valueIDHashSize_, valueIDSize, 1);
  pObjTypeIDPool_ = makePool(objTypeIDHashSize_, objTypeIDSize, 1);
  pSectionIDPool_ = makePool(sectionIDHashSize_, sectionIDSize, 0);
  pFieldIDPool_ = makePool(fieldIDHashSize_, fieldIDSize, 0);

  for (const char* name : {"include", "input", "comment", "section", "id", "name"}) installFieldID(name);
  installSectionID("skip");
  installFieldID("field");
  installSectionID("_");
  installEnumValueID("true", 1);
  installEnumValueID("false", 0);
  installObjTypeID("$toplevel$", nullptr, nullptr, nullptr, nullptr);
}

void ZVOMLStatic::empty() {
  for (int32_t index = 0; index < pObjTypeIDPool_->decodeTableMax(); ++index)
    delete pObjTypeDefinition(index);
  pValueIDPool_.reset();
  pObjTypeIDPool_.reset();
  pSectionIDPool_.reset();
  pFieldIDPool_.reset();
}

int32_t ZVOMLStatic::hashTableSize(int32_t poolSize) {
  int64_t size = int64_t{poolSize} * 3 / 2;
  if (size < 256) {
    size *= 4;
  } else if (size < 512) {
    size *= 2;
  }
  const int64_t limit = std::numeric_limits<int32_t>::max();
  const int32_t prime = nextPrimeNumber(static_cast<int32_t>(std::clamp(size, -limit, limit)));
  return prime > 0 ? prime : HASH_TABLE_BEYOND_PRIMES;
}

int32_t ZVOMLStatic::installSectionID(const char* name) { return pSectionIDPool_->update(name); }

int32_t ZVOMLStatic::installFieldID(const char* name) { return pFieldIDPool_->update(name); }

void ZVOMLStatic::installSubObjectType(const char* name, const Place& place) {
  installObjTypeID(name, nullptr, nullptr, nullptr, nullptr);
  place.addObjType(pObjTypeIDPool_->lookup(name));
}

ZVOMLDefField* ZVOMLStatic::Place::addField(int32_t fieldIDIndex, ZVFieldTypeEnum fieldType,
                                            int required) const {
  return section ? section->addField(fieldIDIndex, fieldType, required, objType)
                 : objType->addField(fieldIDIndex, fieldType, required);
}

ZVOMLDefSection* ZVOMLStatic::Place::addSection(int32_t sectionIDIndex) const {
  return section ? section->addSection(sectionIDIndex) : objType->addSection(sectionIDIndex);
}

ZVOMLDefObjTypeIndex* ZVOMLStatic::Place::addObjType(int32_t objTypeIDIndex) const {
  return section ? section->addObjType(objTypeIDIndex) : objType->addObjType(objTypeIDIndex);
}

ZVOMLStatic::Place ZVOMLStatic::findPlace(const char* type, uint32_t path) {
  ZVOMLDefObjType* objType = installObjTypeID(type, nullptr, nullptr, nullptr, nullptr);
  if (!objType || path == 0) return {objType, nullptr};
  ZVOMLDefSection* section = objType->findSectionPath(path);
  return {section ? objType : nullptr, section};
}

int32_t ZVOMLStatic::scanObjectTypeInDefTable(const char* const* rows, int32_t row) {
  const char* text = textBehindKind(rows[row]);
  const std::string name = makeCopyOfNextWord(text);
  if (name.empty()) return row + 1;
  ZVOMLDefObjType* objType = installObjTypeID(name.c_str(), nullptr, nullptr, nullptr, nullptr);
  return scanBodyInDefTable(rows, row + 1, Place{objType, nullptr});
}

int32_t ZVOMLStatic::scanSectionInDefTable(const char* const* rows, int32_t row, const Place& place) {
  const char* text = textBehindKind(rows[row]);
  const std::string name = makeCopyOfNextWord(text);
  if (name.empty()) return row + 1;
  ZVOMLDefSection* section = place.addSection(installSectionID(name.c_str()));
  if (!section) return skipBodyInDefTable(rows, row + 1);
  return scanBodyInDefTable(rows, row + 1, Place{place.objType, section});
}

int32_t ZVOMLStatic::scanBodyInDefTable(const char* const* rows, int32_t row, const Place& place) {
  while (rows[row]) {
    const char kind = kindOfRow(rows[row]);
    if (isClosing(kind)) return row + 1;
    switch (kind) {
      case 'O':
        return row;
      case 'S':
        row = scanSectionInDefTable(rows, row, place);
        continue;
      case 'E':
        scanEnumField(textBehindKind(rows[row]), place);
        break;
      case 'F':
        scanSimpleField(textBehindKind(rows[row]), place);
        break;
      case 'R':
        scanObjTypeRef(textBehindKind(rows[row]), place);
        break;
      case 'T':
        scanSubObjectType(textBehindKind(rows[row]), place);
        break;
      default:  // an opening bracket, or a mistake
        break;
    }
    ++row;
  }
  return row;
}

int32_t ZVOMLStatic::skipBodyInDefTable(const char* const* rows, int32_t row) {
  int open = 1;
  while (rows[row] && kindOfRow(rows[row]) != 'O') {
    const char kind = kindOfRow(rows[row]);
    const char* text = rows[row++];
    if (kind == 'S' && isWordChar(*skipBlanks(textBehindKind(text)))) ++open;
    if (isClosing(kind) && --open == 0) break;
  }
  return row;
}

void ZVOMLStatic::scanSubObjectType(const char* text, const Place& place) {
  const std::string name = makeCopyOfNextWord(text);
  if (!name.empty()) installSubObjectType(name.c_str(), place);
}

void ZVOMLStatic::scanSimpleField(const char* text, const Place& place) {
  const std::string name = makeCopyOfNextWord(text);
  text = skipBlanks(text);
  const ZVFieldTypeEnum fieldType = simpleFieldType(*text);
  if (name.empty() || fieldType == ZV_FIELD_NONE) return;
  place.addField(installFieldID(name.c_str()), fieldType, requiredMark(text + 1));
}

void ZVOMLStatic::scanEnumField(const char* text, const Place& place) {
  const std::string name = makeCopyOfNextWord(text);
  if (name.empty()) return;
  const char* end = std::strpbrk(text, "]}");
  ZVOMLDefField* field =
      place.addField(installFieldID(name.c_str()), ZV_FIELD_ENUM, end ? requiredMark(end + 1) : 0);
  const char* values = std::strpbrk(text, "[{");
  if (!field || field->pValueIDIndexList() || !values) return;
  text = skipBlanksAndCommas(values + 1);
  while (isWordChar(*text)) {
    int32_t low = pValueIDPool_->lookup(makeCopyOfNextWord(text).c_str());
    field->addEnumValue(low);
    text = skipBlanksAndCommas(text);
    while (*text == '.') {
      while (*text == '.') ++text;
      const std::string upper = makeCopyOfNextWord(text);
      if (upper.empty()) return;
      const int32_t high = pValueIDPool_->lookup(upper.c_str());
      field->addEnumValue(high);
      // A range with an unknown end holds nothing in between.
      if (low >= 0 && high >= 0) {
        for (int32_t index = std::min(low, high) + 1; index < std::max(low, high); ++index) {
          field->addEnumValue(index);
        }
      }
      low = high;
      text = skipBlanksAndCommas(text);
    }
  }
}

void ZVOMLStatic::scanObjTypeRef(const char* text, const Place& place) {
  const std::string name = makeCopyOfNextWord(text);
  if (name.empty()) return;
  const std::string type = makeCopyOfNextWord(text);
  ZVOMLDefField* field = place.addField(installFieldID(name.c_str()), ZV_FIELD_OBJECT, requiredMark(text));
  if (field && type != "_" && field->objTypeIDIndex() < 0) {
    field->objTypeIDIndex(pObjTypeIDPool_->lookup(type.c_str()));
  }
}

std::string ZVOMLStatic::makeCopyOfNextWord(const char*& text) {
  const char* start = skipBlanks(text);
  text = start;
  while (isWordChar(*text)) ++text;
  return {start, text};
}
