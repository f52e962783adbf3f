// The short way of the parser for plain fields, which are most of a file: a name that the grammar knows, an
// assignment or none, and a short value of the field's own kind, all of it waiting in the line or the buffer.
//
// It only looks until it is sure, and then takes the whole field at once and adds the same node as the long
// way would. Whatever is not plain is left alone for the long way, and so is every message.
#include <cstring>

#include "utils/zvomldef.h"
#include "utils/zvomlint.h"
#include "utils/zvomlsta.h"
#include "utils/zvomlsyn.h"
#include "utils/zvstrpoo.h"

using namespace zvomlchar;

namespace {

constexpr int LONGEST_INTEGER = 8;

bool isBlank(char c) { return c == ' ' || c == '\t'; }

const char* skipBlanks(const char* text) {
  while (isBlank(*text)) ++text;
  return text;
}

bool allows(const ZVOMLDefField* field, int32_t value) {
  if (field->fieldType() == ZV_FIELD_BOOL) return value <= 1;
  if (field->fieldType() != ZV_FIELD_ENUM) return false;
  const ZVOMLDefIndexList* cell = field->pValueIDIndexList();
  while (cell && cell->index != value) cell = cell->next;
  return cell != nullptr;
}

bool isPlainValue(const ZVOMLDefField* field, ZVOMLTokenTagEnum tag, int32_t value) {
  switch (tag) {
    case ZV_OML_INTEGER:
      return field->fieldType() == ZV_FIELD_INT || field->fieldType() == ZV_FIELD_OBJECT;
    case ZV_OML_STRING:
      return field->fieldType() == ZV_FIELD_STRING;
    case ZV_OML_VALUE_ID:
      return allows(field, value);
    case ZV_OML_OBJECT_ID:
      return field->fieldType() == ZV_FIELD_OBJECT;
    default:
      return false;
  }
}

// The digits from first to last, which are few.
int32_t integerOf(const char* first, const char* last) {
  int32_t number = 0;
  for (; first != last; ++first) number = number * 10 + (*first - '0');
  return number;
}

ZVOMLDefField* definitionOf(const ZVOMLSyntaxObject* object, uint32_t path, int32_t index) {
  if (index < FIRST_ORDINARY_FIELD) return nullptr;
  if (path == 0) return object->pDefObjType()->findField(index);
  const ZVOMLDefSection* section = object->pDefObjType()->findSectionPath(path);
  return section ? section->findField(index) : nullptr;
}

}  // namespace

// Reads a field at the place where an attribute begins. Gives 0, with nothing taken but white space, if it is
// not a plain one.
int ZVOMLFile::takePlainField(ZVOMLSyntaxObject* object, int32_t section, uint32_t path) {
  if (!plainFields_ || lookAhead_ || ignoreField_ || bracketSkipLevel_ >= 0 || inUncheckedSection_) return 0;
  if (numberOfErrors() > 0 || auxCLIBuffer_ || !openFiles_ || !object->pDefObjType()) return 0;
  return saveMode_ == ZV_FILE_READ_BINARY ? takePlainBinaryField(object, section, path)
                                          : takePlainTextField(object, section, path);
}

// A separator behind an attribute. The look-ahead token is made only where it cannot be told without.
void ZVOMLFile::skipSeparator() {
  if (!lookAhead_ && !ignoreField_ && bracketSkipLevel_ < 0 && !auxCLIBuffer_ && openFiles_) {
    if (saveMode_ == ZV_FILE_READ_BINARY) {
      if (openFiles_->binaryLeft > 0 && *openFiles_->binaryRead != ';') return;
    } else {
      const char c = skipBlankLines();
      if (c != ';' && c != '/' && c != '#' && c != '\0') return;
    }
  }
  const ZVOMLToken* next = lookAheadToken();
  if (next && next->tag() == ZV_OML_SEPARATOR) nextToken();
}

// Takes white space without comments. Gives the character behind it, which stays; 0 at the end of the file.
char ZVOMLFile::skipBlankLines() {
  for (;;) {
    if (const char* text = openFiles_->read) {
      const char* end = text;
      while (isBlank(*end) || *end == '\n') ++end;
      takeCharacters(static_cast<size_t>(end - text));
      if (*end) return *end;
    }
    if (nextLine()) continue;
    openFiles_->addToLine(-1);  // the long way counts the end of the file
    return '\0';
  }
}

int ZVOMLFile::takePlainTextField(ZVOMLSyntaxObject* object, int32_t section, uint32_t path) {
  if (!scratch_ || !skipBlankLines()) return 0;
  const char* const start = openFiles_->read;
  const char* text = start;
  const KnownName* name = findName(text);
  if (!name || name->tag != ZV_OML_FIELD_ID || is(*text, SCOPE_SEPARATOR)) return 0;
  ZVOMLDefField* definition = definitionOf(object, path, name->index);
  if (!definition) return 0;
  const auto position = [&](const char* place) {
    return static_cast<int16_t>(openFiles_->position + (place - start));
  };
  const int namePosition = position(text);

  text = skipBlanks(text);
  if (*text == ':' || *text == '=') text = skipBlanks(text + 1);
  ZVOMLTokenTagEnum tag = ZV_OML_BAD;
  int32_t value = 0;
  if (*text == '"') {
    const char* const first = ++text;
    text += std::strcspn(text, "\"\\");
    if (definition->fieldType() != ZV_FIELD_STRING || *text != '"') return 0;
    std::string& bytes = emptyByteScratch();
    bytes.assign(first, text++);
    tag = ZV_OML_STRING;
    value = storeStringIndex(bytes.c_str());
  } else if (is(*text, DIGIT) || *text == '-') {
    const bool negative = *text == '-';
    const char* const first = text + negative;
    const char* last = first;
    while (is(*last, DIGIT)) ++last;
    if (first == last || last - first > LONGEST_INTEGER || is(*last, INTEGER_BREAK)) return 0;
    value = negative ? -integerOf(first, last) : integerOf(first, last);
    text = last;
    tag = ZV_OML_INTEGER;
  } else if (const KnownName* word = findName(text)) {
    if (is(*text, SCOPE_SEPARATOR)) return 0;
    tag = word->tag;
    value = word->index;
  }
  if (!isPlainValue(definition, tag, value)) return 0;

  ZVOMLToken token(tag, value, openFiles_->line, position(text));
  takeCharacters(static_cast<size_t>(text - start));
  addPlainField(object, section, path, definition, openFiles_->line, namePosition, token);
  return 1;
}

int ZVOMLFile::takePlainBinaryField(ZVOMLSyntaxObject* object, int32_t section, uint32_t path) {
  const ZVOpenFileList& top = *openFiles_;
  // The tag and index of the name, and the tag and at least one byte of the value.
  if (top.binaryLeft < 4 || top.binaryRead[0] != 'f') return 0;
  ZVOMLDefField* definition = definitionOf(object, path, static_cast<unsigned char>(top.binaryRead[1]));
  if (!definition) return 0;
  const char* const end = top.binaryRead + top.binaryLeft;
  const char* bytes = top.binaryRead + 2;
  ZVOMLTokenTagEnum tag = ZV_OML_INTEGER;
  uint32_t value = 0;
  switch (*bytes++) {
    case 'i':
      value = static_cast<unsigned char>(*bytes++);
      break;
    case 'I':
      if (end - bytes < 4) return 0;
      for (int i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(*bytes++);
      break;
    case 'e':
      tag = ZV_OML_VALUE_ID;
      value = static_cast<unsigned char>(*bytes++);
      break;
    case 'N': {
      const char* const first = bytes;
      while (bytes != end && is(*bytes, DIGIT)) ++bytes;
      if (bytes == end || *bytes != '"' || bytes == first || bytes - first > LONGEST_INTEGER) return 0;
      // With a leading zero the text is not that of the number.
      if (definition->fieldType() != ZV_FIELD_OBJECT || (*first == '0' && bytes - first > 1)) return 0;
      value = static_cast<uint32_t>(integerOf(first, bytes++));
      break;
    }
    case '"': {
      const char* const first = bytes;
      while (bytes != end && *bytes != '"' && *bytes != '\\') ++bytes;
      if (definition->fieldType() != ZV_FIELD_STRING || bytes == end || *bytes != '"') return 0;
      std::string& text = emptyByteScratch();
      text.assign(first, bytes++);
      tag = ZV_OML_STRING;
      value = static_cast<uint32_t>(storeStringIndex(text.c_str()));
      break;
    }
    default:
      return 0;
  }
  if (!isPlainValue(definition, tag, static_cast<int32_t>(value))) return 0;

  const auto nameLine = static_cast<int32_t>(static_cast<uint32_t>(top.line) + 2U);
  skipBinaryBytes(static_cast<int32_t>(bytes - top.binaryRead));
  ZVOMLToken token(tag, static_cast<int32_t>(value), top.line, top.position);
  addPlainField(object, section, path, definition, nameLine, top.position, token);
  return 1;
}

// What the identifier at text was classified as, and text moved behind it; null if that is not remembered.
const ZVOMLFile::KnownName* ZVOMLFile::findName(const char*& text) const {
  const char* const first = text;
  const char* last = first;
  uint32_t key = 0;
  for (; is(*last, IDENTIFIER); ++last) key = TokenScratch::nextKey(key, *last);
  const auto length = static_cast<size_t>(last - first);
  if (length == 0 || is(*first, DIGIT)) return nullptr;
  const KnownName* name = scratch_->placeOf(key, length);
  if (!name || !name->is(first, length)) return nullptr;
  text = last;
  return name;
}

// Adds the field, whose value is of its kind, and goes on behind a separator.
void ZVOMLFile::addPlainField(ZVOMLSyntaxObject* object, int32_t section, uint32_t path,
                              ZVOMLDefField* definition, int32_t line, int position, ZVOMLToken& value) {
  tokenFile_ = fileNameIndex();
  if (definition->fieldType() == ZV_FIELD_OBJECT && value.tag() == ZV_OML_INTEGER) {
    value.intToObjectID(storeIntegerIDIndex(value.longValue()));
  }
  const ZVOMLSyntaxStruct place(this, line, position, tokenFile_);
  addNewField(object, place, definition->fieldIDIndex(), section, path, &value, definition, 0);
  skipSeparator();
}
