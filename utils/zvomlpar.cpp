// The parser of ZVOMLFile: checks the tokens against the grammar as they come and builds the syntax tree.
//
// It recurses with the nesting of the file, up to a limit, and loops over everything else. It goes on behind
// an error, to find more of them, but from the first one on the tree gets no more nodes. After a fatal error
// there are no more tokens, so every loop ends, and the pools are gone.
#include <bit>
#include <cstdio>
#include <cstring>
#include <new>

#include "utils/zverrmsg.h"
#include "utils/zvomldef.h"
#include "utils/zvomlint.h"
#include "utils/zvomlsta.h"
#include "utils/zvomlsyn.h"

namespace {

// Brackets that may be open at a time where their content is parsed.
constexpr int32_t MAX_DEPTH = 1000;

// The reserved names of the grammar.
enum Keyword : int32_t {
  INCLUDE_FIELD = 0,
  INPUT_FIELD = 1,
  COMMENT_FIELD = 2,
  SECTION_FIELD = 3,
  ID_FIELD = 4,
  NAME_FIELD = 5,
  FIELD_FIELD = 6
};
constexpr int32_t SKIP_SECTION = 0;
constexpr int32_t WILDCARD_SECTION = 1;
constexpr int32_t TOP_LEVEL_TYPE = 0;
constexpr int32_t DEFAULTS_ID = 0;
constexpr int32_t NO_SECTION = -1;
constexpr int32_t NO_ID = -1;

// Messages, by their numbers in the table of texts.
enum Message : int {
  INTEGER_TEXT = 4,
  STRING_TEXT = 5,
  REAL_TEXT = 6,
  IP_ADDRESS_TEXT = 7,
  BIN_VALUE_TEXT = 8,
  BOOL_TEXT = 9,
  MEMORY_EXHAUSTED = 12,
  UNEXPECTED_TOKEN = 20,
  UNEXPECTED_FIELD = 21,
  UNEXPECTED_IDENTIFIER = 22,
  UNEXPECTED_VALUE = 23,
  KIND_EXPECTED = 24,
  OTHER_VALUE_EXPECTED = 25,
  ID_EXPECTED = 26,
  DOUBLE_ID = 30,
  NO_SUCH_SECTION = 35,
  NO_SUCH_SUBSECTION = 36,
  NO_SUCH_SUBSECTION_OF_ALL = 37,
  // Followed by the seven combinations of: in a section, parent is a defaults group, object is one.
  OBJECT_NOT_ALLOWED = 38,
  FIELD_NOT_ALLOWED = 46,
  FIELD_NOT_ALLOWED_IN_SECTION = 47,
  NAME_AFTER_NAME = 48
};

bool hasTag(const ZVOMLToken* token, ZVOMLTokenTagEnum tag) { return token && token->tag() == tag; }

// Tokens that come before the value of an attribute.
bool isHeadToken(const ZVOMLToken* token) {
  return hasTag(token, ZV_OML_OBJTYPE_ID) || hasTag(token, ZV_OML_SECTION_ID) ||
         hasTag(token, ZV_OML_FIELD_ID) || hasTag(token, ZV_OML_BAD);
}

bool isIdentifier(const ZVOMLToken* token) {
  return token && token->tag() >= ZV_OML_VALUE_ID && token->tag() <= ZV_OML_OBJECT_ID;
}

// The sections that match a path.
struct Matches {
  int count = 0;
  ZVOMLDefSection* last = nullptr;
};

// The path of which find gives the rest for the sections that match path, as long as all that have one agree
// on it; else 0.
template <class Find>
uint32_t agreedPath(const ZVOMLDefObjType* type, uint32_t path, Matches& matches, Find find) {
  uint32_t mask = ZVOMLDefObjType::wildCardMask(path);
  uint32_t agreed = 0;
  matches = {};
  for (ZVOMLDefSection* section = type->findFirstSectionPath(path, mask); section;
       section = type->findNextSectionPath(path, mask, section)) {
    ++matches.count;
    matches.last = section;
    uint32_t found = find(section) & mask;
    if (found == 0) continue;
    if (agreed != 0 && agreed != found) return 0;
    agreed = found;
  }
  return agreed != 0 ? path | agreed : 0;
}

}  // namespace

// ---- Lists and attributes

void ZVOMLFile::parse(const char* path) {
  parseDepth_ = 0;
  sawDefaults_ = false;
  pushFile(path);
  if (isFatalError()) return;
  syntaxTree_ = new (std::nothrow) ZVOMLSyntaxObject(this, -1, 0, fileNameIndex(), TOP_LEVEL_TYPE, NO_ID,
                                                     NO_SECTION, 0, pObjTypeDefinition(TOP_LEVEL_TYPE));
  if (!syntaxTree_) {
    internalErrorMessage(MEMORY_EXHAUSTED, nullptr, nullptr, nullptr, 1);
    return;
  }
  objectNodes_ = std::make_unique<ZVOMLArena>();
  fieldNodes_ = std::make_unique<ZVOMLArena>();
  parseAttributeList(fileNameIndex(), nullptr, NO_SECTION, 0, syntaxTree_, 0);
  if (numberOfErrors() > 0) releaseTree();
}

void ZVOMLFile::parseAttributeList(int32_t file, const ZVOMLToken* prefix, int32_t section, uint32_t path,
                                   ZVOMLSyntaxObject* object, int bracketed) {
  for (int number = 1;; ++number) {
    if (!prefix && takePlainAttributes(object, section, path, bracketed, number)) break;
    TokenPtr token = nextToken();
    if (!token || (bracketed && token->tag() == ZV_OML_RIGHT_BRACKET)) break;
    parseAttribute(file, prefix, section, path, object, token, number);
  }
  inUncheckedSection(0);
}

// Takes a copy of the prefix that the list gives all its attributes, and uses the token up.
void ZVOMLFile::parseAttribute(int32_t file, const ZVOMLToken* listPrefix, int32_t section, uint32_t path,
                               ZVOMLSyntaxObject* object, TokenPtr& token, int number) {
  TokenPtr prefix = owned(listPrefix ? newTokenOf(*listPrefix) : nullptr);
  int unknownField = 0;
  for (; isHeadToken(token.get()); token = nextToken()) {
    if (token->tag() == ZV_OML_BAD) {
      internalErrorMessage(tokenFile_, token.get(), UNEXPECTED_TOKEN, nullptr, nullptr, nullptr, 0);
    } else if (token->tag() == ZV_OML_SECTION_ID) {
      section = token->longValue();
      path = extendSectionPath(tokenFile_, token.get(), object->objTypeIDIndex(), path);
    } else {
      unknownField = token->isUnknownField();
      if (prefix) illegalSectionInside(file, prefix.get(), token.get());
      prefix = std::move(token);
      file = tokenFile_;
    }
  }
  if (hasTag(token.get(), ZV_OML_ASSIGN)) token = nextToken();

  bool isObject = hasTag(prefix.get(), ZV_OML_OBJTYPE_ID);
  if (hasTag(token.get(), ZV_OML_LEFT_BRACKET)) {
    if (!isObject && isSkipSection(section)) {
      bracketSkipLevel_ = bracketLevel_;
    } else if (enterBracket(token.get())) {
      token.reset();
      if (isObject) {
        parseObject(file, *prefix, NO_ID, section, path, object, 1);
      } else {
        parseAttributeList(file, prefix.get(), section, path, object, 1);
      }
      leaveBracket();
    }
  } else if (isObject) {
    parseObjectBehindID(file, *prefix, checkSimpleScope(token.get()), section, path, object);
  } else if (unknownField) {
    ignoreField_ = 1;
  } else {
    parseField(file, prefix.get(), section, path, object, token.get(), number);
  }
  skipSeparator();
}

int ZVOMLFile::enterBracket(const ZVOMLToken* bracket) {
  if (parseDepth_ >= MAX_DEPTH) {
    internalErrorMessage(tokenFile_, bracket, MEMORY_EXHAUSTED, nullptr, nullptr, nullptr, 1);
    return 0;
  }
  ++parseDepth_;
  return 1;
}

// An object that has an id, and a body if a bracket follows.
void ZVOMLFile::parseObjectBehindID(int32_t file, const ZVOMLToken& typeToken, int32_t id, int32_t section,
                                    uint32_t path, ZVOMLSyntaxObject* parent) {
  const int hasBody = hasTag(lookAheadToken(), ZV_OML_LEFT_BRACKET);
  if (hasBody && !enterBracket(nextToken().get())) return;
  parseObject(file, typeToken, id, section, path, parent, hasBody);
  if (hasBody) leaveBracket();
}

// ---- Objects and fields

// Memory in the syntax tree; null without memory, and after a fatal error.
void* ZVOMLFile::obtainNode(size_t size, const std::unique_ptr<ZVOMLArena>& arena) {
  return arena ? arena->obtain(size) : nullptr;
}

void ZVOMLFile::parseObject(int32_t file, const ZVOMLToken& typeToken, int32_t id, int32_t section,
                            uint32_t path, ZVOMLSyntaxObject* parent, int hasBody) {
  int32_t type = typeToken.longValue();
  void* memory = obtainNode(sizeof(ZVOMLSyntaxObjectList) + sizeof(ZVOMLSyntaxObject), objectNodes_);
  if (!memory) {
    internalErrorMessage(file, &typeToken, MEMORY_EXHAUSTED, nullptr, nullptr, nullptr, 1);
    return;
  }
  auto* node = new (static_cast<ZVOMLSyntaxObjectList*>(memory) + 1) ZVOMLSyntaxObject(
      this, typeToken.line(), typeToken.position(), file, type, id, section, path, pObjTypeDefinition(type));
  node->inArena_ = true;
  auto* cell = new (memory) ZVOMLSyntaxObjectList(node);
  // Until the parent has it.
  const auto drop = [](ZVOMLSyntaxObjectList* unused) { unused->~ZVOMLSyntaxObjectList(); };
  std::unique_ptr<ZVOMLSyntaxObjectList, decltype(drop)> owner(cell, drop);
  if (hasBody) {
    parseAttributeList(file, nullptr, NO_SECTION, 0, node, 1);
    if (node->objectIDIndex() == DEFAULTS_ID) {
      sawDefaults_ = true;
      for (ZVOMLSyntaxObjectList* sub = node->pObjectList(); sub; sub = sub->pNext) {
        sub->pObject->sectionIDIndex(section);
        sub->pObject->sectionPathIndex(path);
      }
    }
  }
  checkObjectSection(parent->objTypeIDIndex(), parent->objectIDIndex(), section, path, file, &typeToken,
                     node->objectIDIndex());
  if (numberOfErrors() == 0) parent->addCell(owner.release());
}

// Takes over the content of the value.
void ZVOMLFile::parseField(int32_t file, const ZVOMLToken* nameToken, int32_t section, uint32_t path,
                           ZVOMLSyntaxObject* object, ZVOMLToken* value, int number) {
  if (nameToken && !nameToken->isUnknownField() && nameToken->longValue() < FIRST_ORDINARY_FIELD) {
    parseKeyword(nameToken->longValue(), object, value);
    return;
  }
  int32_t type = object->objTypeIDIndex();
  int unchecked = inUncheckedSection();
  TokenPtr positional;
  if (!nameToken) {
    file = tokenFile_;
    if (unchecked) {
      internalErrorMessage(file, value, UNEXPECTED_VALUE, nullptr, nullptr, nullptr, 0);
    } else {
      positional = nthFieldDescrToken(type, path, number, file, value);
      nameToken = positional.get();
    }
  }
  ZVOMLDefField* definition = nullptr;
  if (nameToken && !unchecked) {
    checkFieldType(checkFieldSection(type, section, path, file, nameToken), value);
    definition = getDefinitionField(type, path, nameToken);
  }
  if (!nameToken || numberOfErrors() > 0) return;
  const ZVOMLSyntaxStruct place(this, nameToken->line(), nameToken->position(), file);
  addNewField(object, place, nameToken->longValue(), section, path, value, definition, unchecked);
}

// Takes over the content of the value, which may be null.
void ZVOMLFile::addNewField(ZVOMLSyntaxObject* object, const ZVOMLSyntaxStruct& place, int32_t name,
                            int32_t section, uint32_t path, ZVOMLToken* value, ZVOMLDefField* definition,
                            int unchecked) {
  void* memory = obtainNode(sizeof(ZVOMLSyntaxFieldList) + sizeof(ZVOMLSyntaxField), fieldNodes_);
  if (!memory) {
    internalErrorMessage(string(place.fileNameIndex()), place.line(), place.position(), MEMORY_EXHAUSTED,
                         nullptr, nullptr, nullptr, 1);
    return;
  }
  auto* field = new (static_cast<ZVOMLSyntaxFieldList*>(memory) + 1)
      ZVOMLSyntaxField(place, name, section, path, value, definition, unchecked);
  auto* cell = new (memory) ZVOMLSyntaxFieldList(field);
  object->addCell(cell);
}

void ZVOMLFile::parseKeyword(int32_t keyword, ZVOMLSyntaxObject* object, ZVOMLToken* value) {
  if (keyword == ID_FIELD || keyword == NAME_FIELD) {
    int32_t id = checkSimpleScope(value);
    if (object->objectIDIndex() >= 0 && object->objectIDIndex() != id) {
      internalErrorMessage(tokenFile_, value, DOUBLE_ID, nullptr, nullptr, nullptr, 0);
    }
    object->objectIDIndex(id);
    return;
  }
  if (!checkString(value)) return;
  const char* text = string(value->longValue());
  switch (keyword) {
    case INCLUDE_FIELD:
    case INPUT_FIELD:
      pushFile(text);
      break;
    case COMMENT_FIELD:
      if (std::strcmp(text, "unchecked") == 0) inUncheckedSection(1);
      break;
    case SECTION_FIELD:
      storeSectionIDIndex(text);
      break;
    case FIELD_FIELD:
      storeUnknownFieldIDIndex(text);
      break;
    default:
      break;
  }
}

// ---- What may stand where

int ZVOMLFile::isSkipSection(int32_t section) const {
  return section == SKIP_SECTION || !definedSection(section);
}

uint32_t ZVOMLFile::extendSectionPath(int32_t file, ZVOMLToken* token, int32_t objType, uint32_t path) {
  int32_t section = token->longValue();
  if (isSkipSection(section)) return path;
  int usedBits = (static_cast<int>(std::bit_width(path)) + 3) / 4 * 4;
  if (section == WILDCARD_SECTION && usedBits < 32) return path | (uint32_t{15} << usedBits);

  Matches matches;
  uint32_t extended = 0;
  if (const ZVOMLDefObjType* type = pObjTypeDefinition(objType)) {
    if (path == 0) {
      extended = type->findSection(section);
      if (extended == 0) extended = type->findUniqueSection(section);
    } else {
      extended =
          agreedPath(type, path, matches, [=](ZVOMLDefSection* one) { return one->findSection(section); });
      if (extended == 0) {
        extended = agreedPath(type, path, matches,
                              [=](ZVOMLDefSection* one) { return one->findUniqueSection(section); });
      }
    }
  }
  if (extended != 0) return extended;

  const char* name = decodeIdeToken(token);
  if (matches.count > 1) {
    internalErrorMessage(file, token, NO_SUCH_SUBSECTION_OF_ALL, name, objTypeID(objType), nullptr, 0);
  } else if (matches.last) {
    internalErrorMessage(file, token, NO_SUCH_SUBSECTION, name, sectionID(matches.last->sectionIDIndex()),
                         objTypeID(objType), 0);
  } else {
    internalErrorMessage(file, token, NO_SUCH_SECTION, name, objTypeID(objType), nullptr, 0);
  }
  return path;
}

void ZVOMLFile::checkObjectSection(int32_t parentType, int32_t parentID, int32_t section, uint32_t path,
                                   int32_t file, const ZVOMLToken* token, int32_t objectID) {
  int32_t type = token->longValue();
  bool allowed = false;
  if (parentID == DEFAULTS_ID) {
    allowed = type == parentType && objectID != DEFAULTS_ID && path == 0 && section == NO_SECTION;
  } else if (const ZVOMLDefObjType* parent = pObjTypeDefinition(parentType)) {
    const ZVOMLDefSection* place = path != 0 ? parent->findSectionPath(path) : nullptr;
    allowed = (path == 0 ? parent->findObjType(type) : place ? place->findObjType(type) : nullptr) != nullptr;
  }
  if (allowed) return;
  int message = OBJECT_NOT_ALLOWED + (section != NO_SECTION ? 1 : 0) + (parentID == DEFAULTS_ID ? 2 : 0) +
                (objectID == DEFAULTS_ID ? 4 : 0);
  internalErrorMessage(file, token, message, decodeIdeToken(token),
                       section != NO_SECTION ? sectionID(section) : nullptr, objTypeID(parentType), 0);
}

ZVOMLDefField* ZVOMLFile::checkFieldSection(int32_t objType, int32_t section, uint32_t path, int32_t file,
                                            const ZVOMLToken* token) {
  const ZVOMLDefObjType* type = pObjTypeDefinition(objType);
  ZVOMLDefField* field =
      type && !token->isUnknownField() ? type->findFieldInAllSections(path, token->longValue()) : nullptr;
  if (field) return field;
  if (section == NO_SECTION) {
    internalErrorMessage(file, token, FIELD_NOT_ALLOWED, decodeIdeToken(token), objTypeID(objType), nullptr,
                         0);
  } else {
    internalErrorMessage(file, token, FIELD_NOT_ALLOWED_IN_SECTION, decodeIdeToken(token), sectionID(section),
                         objTypeID(objType), 0);
  }
  return nullptr;
}

ZVOMLDefField* ZVOMLFile::getDefinitionField(int32_t objType, uint32_t path, const ZVOMLToken* token) {
  const ZVOMLDefObjType* type = pObjTypeDefinition(objType);
  if (!type || token->isUnknownField()) return nullptr;
  if (path == 0) return type->findField(token->longValue());
  const ZVOMLDefSection* section = type->findSectionPath(path);
  return section ? section->findField(token->longValue()) : nullptr;
}

ZVOMLFile::TokenPtr ZVOMLFile::nthFieldDescrToken(int32_t objType, uint32_t path, int number, int32_t file,
                                                  ZVOMLToken* value) {
  ZVOMLDefField* field = nullptr;
  if (const ZVOMLDefObjType* type = pObjTypeDefinition(objType)) {
    const ZVOMLDefSection* section = path != 0 ? type->findSectionPath(path) : nullptr;
    if (path == 0) {
      field = type->findNthField(number);
    } else if (section) {
      field = section->findNthField(number);
    }
  }
  if (!field || !value) {
    internalErrorMessage(file, value, UNEXPECTED_VALUE, nullptr, nullptr, nullptr, 0);
    return nullptr;
  }
  return owned(newTokenOf(ZV_OML_FIELD_ID, field->fieldIDIndex(), value->line(), value->position()));
}

void ZVOMLFile::illegalSectionInside(int32_t file, ZVOMLToken* first, ZVOMLToken* second) {
  char place[32];
  std::snprintf(place, sizeof place, "%ld:%d", static_cast<long>(second->line()),
                static_cast<int>(second->position()));
  internalErrorMessage(file, first, NAME_AFTER_NAME, decodeIdeToken(first), decodeIdeToken(second), place, 0);
}

// ---- Values

void ZVOMLFile::checkFieldType(ZVOMLDefField* field, ZVOMLToken* value) {
  if (!value || value->tag() == ZV_OML_BAD) {
    internalErrorMessage(tokenFile_, value, UNEXPECTED_TOKEN, nullptr, nullptr, nullptr, 0);
    return;
  }
  if (!field) return;
  switch (field->fieldType()) {
    case ZV_FIELD_INT:
      checkInt(value);
      break;
    case ZV_FIELD_BOOL:
      checkBool(value);
      break;
    case ZV_FIELD_STRING:
      checkString(value);
      break;
    case ZV_FIELD_OBJECT:
      checkScope(value);
      break;
    case ZV_FIELD_REAL:
      checkReal(value);
      break;
    case ZV_FIELD_ENUM:
      checkEnumValue(value, field->pValueIDIndexList());
      break;
    case ZV_FIELD_IPBYTES:
      checkIPBytes(value);
      break;
    case ZV_FIELD_BINVALUE:
      checkBinVal(value);
      break;
    default:
      internalErrorMessage(tokenFile_, value, UNEXPECTED_FIELD, nullptr, nullptr, nullptr, 0);
  }
}

int ZVOMLFile::checkSomething(ZVOMLToken* token, ZVOMLTokenTagEnum tag, const char* what) {
  if (hasTag(token, tag)) return 1;
  if (isIdentifier(token)) {
    internalErrorMessage(tokenFile_, token, UNEXPECTED_IDENTIFIER, decodeIdeToken(token), nullptr, nullptr,
                         0);
  } else {
    internalErrorMessage(tokenFile_, token, KIND_EXPECTED, what, nullptr, nullptr, 0);
  }
  return 0;
}

int ZVOMLFile::checkInt(ZVOMLToken* token) {
  return checkSomething(token, ZV_OML_INTEGER, getStringResource(INTEGER_TEXT));
}

int ZVOMLFile::checkString(ZVOMLToken* token) {
  return checkSomething(token, ZV_OML_STRING, getStringResource(STRING_TEXT));
}

int ZVOMLFile::checkReal(ZVOMLToken* token) {
  return checkSomething(token, ZV_OML_REAL, getStringResource(REAL_TEXT));
}

int ZVOMLFile::checkIPBytes(ZVOMLToken* token) {
  return checkSomething(token, ZV_OML_IPBYTES, getStringResource(IP_ADDRESS_TEXT));
}

int ZVOMLFile::checkBinVal(ZVOMLToken* token) {
  return checkSomething(token, ZV_OML_BINVALUE, getStringResource(BIN_VALUE_TEXT));
}

int ZVOMLFile::checkBool(ZVOMLToken* token) {
  if (hasTag(token, ZV_OML_VALUE_ID) && (token->longValue() == 0 || token->longValue() == 1)) return 1;
  if (isIdentifier(token)) {
    internalErrorMessage(tokenFile_, token, UNEXPECTED_IDENTIFIER, decodeIdeToken(token), nullptr, nullptr,
                         0);
  }
  internalErrorMessage(tokenFile_, token, KIND_EXPECTED, getStringResource(BOOL_TEXT), nullptr, nullptr, 0);
  return 0;
}

int ZVOMLFile::checkEnumValue(ZVOMLToken* token, ZVOMLDefIndexList* values) {
  if (hasTag(token, ZV_OML_VALUE_ID)) {
    for (ZVOMLDefIndexList* value = values; value; value = value->next) {
      if (value->index == token->longValue()) return 1;
    }
  }
  internalErrorMessage(tokenFile_, token, OTHER_VALUE_EXPECTED, nullptr, nullptr, nullptr, 0);
  return 0;
}

int ZVOMLFile::checkScope(ZVOMLToken* token) {
  return hasTag(token, ZV_OML_OBJECT_ID) || checkSimpleScope(token) >= 0;
}

int32_t ZVOMLFile::checkSimpleScope(ZVOMLToken* token) {
  if (ids_ && hasTag(token, ZV_OML_INTEGER)) {
    token->intToObjectID(storeIntegerIDIndex(token->longValue()));
    return token->longValue();
  }
  if (hasTag(token, ZV_OML_OBJECT_ID)) {
    const int32_t id = token->longValue();
    if (!ids_ || (!ids_->isAbsolute(id) && !ids_->isAddress(id))) return id;
  }
  internalErrorMessage(tokenFile_, token, ID_EXPECTED, nullptr, nullptr, nullptr, 0);
  return NO_ID;
}

const char* ZVOMLFile::decodeIdeToken(const ZVOMLToken* token) const {
  switch (token ? token->tag() : ZV_OML_BAD) {
    case ZV_OML_STRING:
      return string(token->longValue());
    case ZV_OML_VALUE_ID:
      return valueID(token->longValue());
    case ZV_OML_OBJTYPE_ID:
      return objTypeID(token->longValue());
    case ZV_OML_SECTION_ID:
      return sectionID(token->longValue());
    case ZV_OML_FIELD_ID:
      return token->isUnknownField() ? unknownFieldID(token->longValue()) : fieldID(token->longValue());
    case ZV_OML_OBJECT_ID:
      return objectID(token->longValue());
    default:
      return "";
  }
}
