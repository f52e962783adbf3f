// The short way of the parser for plain attributes, which are most of a file, and for the bracket that ends
// them. A plain field is a name that the grammar knows, an assignment or none, and a short value of the
// field's own kind; a plain object is a type, an assignment or none, and an id or a body; all of it waiting
// in the line or the buffer.
//
// It only looks until it is sure, and then takes the whole field or head at once and makes the same node as
// the long way would. Whatever is not plain is left alone for the long way, and so is every message.
#include <cstddef>
#include <cstring>

#include "utils/zvascii.h"
#include "utils/zvnumtxt.h"
#include "utils/zvomldef.h"
#include "utils/zvomlint.h"
#include "utils/zvomlsta.h"
#include "utils/zvomlsyn.h"

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
    case ZV_OML_REAL:
      return field->fieldType() == ZV_FIELD_REAL;
    case ZV_OML_VALUE_ID:
      return allows(field, value);
    case ZV_OML_OBJECT_ID:
      return field->fieldType() == ZV_FIELD_OBJECT;
    default:
      return false;
  }
}

ZVOMLToken plainToken(ZVOMLTokenTagEnum tag, int32_t value, double real, int32_t line, int position) {
  if (tag == ZV_OML_REAL) return {tag, real, line, position};
  return {tag, value, line, position};
}

// Behind an assignment, if there is one.
const char* skipAssignment(const char* text) {
  text = skipBlanks(text);
  return *text == ':' || *text == '=' ? skipBlanks(text + 1) : text;
}

// Reads digits up to end or to another character. Gives their number; more than a short one has are not read
// on, and give 0.
int scanDigits(const char*& text, const char* end, int32_t& number) {
  const char* const first = text;
  uint32_t value = 0;
  for (; text != end; ++text) {
    const uint32_t digit = static_cast<unsigned char>(*text) - uint32_t{'0'};
    if (digit > 9) break;
    value = value * 10 + digit;
    if (text - first == LONGEST_INTEGER) return 0;
  }
  number = static_cast<int32_t>(value);
  return static_cast<int>(text - first);
}

// Reads a short integer of the text form that is nothing else.
bool scanInteger(const char*& text, int32_t& number) {
  const bool negative = *text == '-';
  if (negative) ++text;
  if (scanDigits(text, nullptr, number) == 0 || is(*text, INTEGER_BREAK)) return false;
  if (negative) number = -number;
  return true;
}

// Reads a real of the text form with digits on both sides of the point and no exponent.
bool scanReal(const char*& text, double& number) {
  const char* digits = text + (*text == '-');
  while (is(*digits, DIGIT)) ++digits;
  const char* const point = digits;
  if (*point != '.' || !is(point[-1], DIGIT)) return false;
  for (++digits; is(*digits, DIGIT);) ++digits;
  if (digits == point + 1 || is(*digits, INTEGER_BREAK)) return false;
  const char* const end = zvnumber::scanReal(text, number);
  text = digits;
  return end == digits;
}

// Reads the value of a number item of the binary form.
bool scanIndex(char tag, const char*& bytes, const char* end, int32_t& value) {
  const std::ptrdiff_t count = zvascii::toUpper(tag) == tag ? 4 : 1;
  if (end - bytes < count) return false;
  uint32_t bits = 0;
  for (std::ptrdiff_t i = 0; i < count; ++i) bits = bits << 8 | static_cast<unsigned char>(*bytes++);
  value = static_cast<int32_t>(bits);
  return true;
}

ZVOMLDefField* definitionOf(const ZVOMLSyntaxObject* object, uint32_t path, int32_t index) {
  if (index < FIRST_ORDINARY_FIELD) return nullptr;
  if (path == 0) return object->pDefObjType()->findField(index);
  const ZVOMLDefSection* section = object->pDefObjType()->findSectionPath(path);
  return section ? section->findField(index) : nullptr;
}

}  // namespace

int32_t zvomlchar::scanNumberID(const char*& bytes, const char* end) {
  const char* const first = bytes;
  int32_t number = 0;
  const int count = scanDigits(bytes, end, number);
  if (count == 0 || bytes == end || *bytes != '"' || (*first == '0' && count > 1)) return -1;
  ++bytes;
  return number;
}

// Takes plain attributes from the place where one begins, and counts them. What is not plain is left, but for
// white space. Gives 1 at the end of the list.
int ZVOMLFile::takePlainAttributes(ZVOMLSyntaxObject* object, int32_t section, uint32_t path, int bracketed,
                                   int& number) {
  Plain plain = Plain::AGAIN;
  while (plain == Plain::AGAIN) {
    if (!shortWay_ || lookAhead_ || ignoreField_ || bracketSkipLevel_ >= 0 || inUncheckedSection_) return 0;
    if (numberOfErrors() > 0 || auxCLIBuffer_ || !openFiles_ || !object->pDefObjType()) return 0;
    plain = saveMode_ == ZV_FILE_READ_BINARY ? takePlainBinary(object, section, path, bracketed, number)
                                             : takePlainText(object, section, path, bracketed, number);
  }
  return plain == Plain::END;
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
      while (is(*end, WHITE_SPACE)) ++end;
      takeCharacters(static_cast<size_t>(end - text));
      if (*end) return *end;
    }
    if (nextLine()) continue;
    openFiles_->addToLine(-1);  // the long way counts the end of the file
    return '\0';
  }
}

ZVOMLFile::Plain ZVOMLFile::takePlainText(ZVOMLSyntaxObject* object, int32_t section, uint32_t path,
                                          int bracketed, int& number) {
  if (!scratch_) return Plain::NONE;
  for (;; ++number) {
    const char first = skipBlankLines();
    if (!first) return Plain::NONE;
    if (bracketed && closesTop(first)) {
      takeCharacters(1);
      return takePlainEnd(first);
    }
    const char* text = openFiles_->read;
    const KnownName* name = findName(text);
    if (!name || is(*text, SCOPE_SEPARATOR)) return Plain::NONE;
    if (name->tag == ZV_OML_OBJTYPE_ID) {
      if (!takePlainTextObject(object, section, path, name->index, text)) return Plain::NONE;
      ++number;
      return Plain::AGAIN;
    }
    ZVOMLDefField* definition =
        name->tag == ZV_OML_FIELD_ID ? definitionOf(object, path, name->index) : nullptr;
    if (!definition || !takePlainTextField(object, section, path, definition, text)) return Plain::NONE;
    if (!skipPlainSeparator()) {
      ++number;
      return Plain::AGAIN;
    }
  }
}

// As skipSeparator, behind a field of the text form. Gives false where that took more than a look.
bool ZVOMLFile::skipPlainSeparator() {
  if (openFiles_) {
    const char c = skipBlankLines();
    if (c == ';') takeCharacters(1);
    if (c != '/' && c != '#' && c != '\0') return true;
  }
  skipSeparator();
  return false;
}

// The place of the reader once it has taken what is before text.
int ZVOMLFile::positionAt(const char* text) const {
  return static_cast<int16_t>(openFiles_->position + (text - openFiles_->read));
}

// The type's name is before text.
bool ZVOMLFile::takePlainTextObject(ZVOMLSyntaxObject* parent, int32_t section, uint32_t path, int32_t type,
                                    const char* text) {
  const ZVOMLToken typeToken(ZV_OML_OBJTYPE_ID, type, openFiles_->line, positionAt(text));
  text = skipAssignment(text);
  int32_t id = -1;
  if (is(*text, DIGIT)) {
    int32_t number = 0;
    if (!scanInteger(text, number)) return false;
    id = storeIntegerIDIndex(number);
  } else if (const KnownName* name = findName(text)) {
    if (name->tag != ZV_OML_OBJECT_ID || is(*text, SCOPE_SEPARATOR)) return false;
    id = name->index;
  } else if (!isLeftBracket(*text)) {
    return false;
  }
  takeCharacters(static_cast<size_t>(text - openFiles_->read));
  const int32_t file = tokenFile_ = fileNameIndex();
  const char next = skipBlankLines();
  if (isLeftBracket(next)) {
    takeCharacters(1);
    parsePlainBody(file, typeToken, id, section, path, parent, next);
  } else {
    parseObjectBehindID(file, typeToken, id, section, path, parent);
  }
  skipSeparator();
  return true;
}

// The object with the body behind a bracket that is taken.
void ZVOMLFile::parsePlainBody(int32_t file, const ZVOMLToken& typeToken, int32_t id, int32_t section,
                               uint32_t path, ZVOMLSyntaxObject* parent, char bracket) {
  pushBracket(bracket, file, openFiles_->line, openFiles_->position);
  const ZVOMLToken token(ZV_OML_LEFT_BRACKET, bracket, openFiles_->line, openFiles_->position);
  if (!enterBracket(&token)) return;
  parseObject(file, typeToken, id, section, path, parent, 1);
  leaveBracket();
}

// Whether c is the bracket that belongs to the innermost one that is open.
bool ZVOMLFile::closesTop(char c) const {
  return brackets_ && c != brackets_->bracket && leftBracketOf(c) == brackets_->bracket;
}

// The end of a list at a bracket that is taken.
ZVOMLFile::Plain ZVOMLFile::takePlainEnd(char bracket) {
  popBracket(bracket, fileNameIndex(), openFiles_->line, openFiles_->position);
  tokenFile_ = fileNameIndex();
  return Plain::END;
}

// The field's name is before text.
bool ZVOMLFile::takePlainTextField(ZVOMLSyntaxObject* object, int32_t section, uint32_t path,
                                   ZVOMLDefField* definition, const char* text) {
  const int namePosition = positionAt(text);
  text = skipAssignment(text);
  ZVOMLTokenTagEnum tag = ZV_OML_BAD;
  int32_t value = 0;
  double real = 0.0;
  if (*text == '"') {
    const char* const first = ++text;
    text += std::strcspn(text, "\"\\");
    if (definition->fieldType() != ZV_FIELD_STRING || *text != '"') return false;
    std::string& bytes = emptyByteScratch();
    bytes.assign(first, text++);
    tag = ZV_OML_STRING;
    value = storeStringIndex(bytes.c_str());
  } else if (is(*text, DIGIT) || *text == '-') {
    tag = definition->fieldType() == ZV_FIELD_REAL ? ZV_OML_REAL : ZV_OML_INTEGER;
    if (tag == ZV_OML_REAL ? !scanReal(text, real) : !scanInteger(text, value)) return false;
  } else if (const KnownName* word = findName(text)) {
    if (is(*text, SCOPE_SEPARATOR)) return false;
    tag = word->tag;
    value = word->index;
  }
  if (!isPlainValue(definition, tag, value)) return false;

  ZVOMLToken token = plainToken(tag, value, real, openFiles_->line, positionAt(text));
  takeCharacters(static_cast<size_t>(text - openFiles_->read));
  addPlainField(object, section, path, definition, openFiles_->line, namePosition, token);
  return true;
}

ZVOMLFile::Plain ZVOMLFile::takePlainBinary(ZVOMLSyntaxObject* object, int32_t section, uint32_t path,
                                            int bracketed, int& number) {
  const ZVOpenFileList& top = *openFiles_;
  for (;; ++number) {
    if (top.binaryLeft == 0) return Plain::NONE;
    const char first = *top.binaryRead;
    if (bracketed && closesTop(first)) {
      skipBinaryBytes(1);
      return takePlainEnd(first);
    }
    // The tag and index of a name, and one or two bytes at least behind it.
    if (top.binaryLeft < 4) return Plain::NONE;
    const int32_t index = static_cast<unsigned char>(top.binaryRead[1]);
    if (first == 'o') {
      if (!takePlainBinaryObject(object, section, path, index)) return Plain::NONE;
      ++number;
      return Plain::AGAIN;
    }
    ZVOMLDefField* definition = first == 'f' ? definitionOf(object, path, index) : nullptr;
    if (!definition || !takePlainBinaryField(object, section, path, definition)) return Plain::NONE;
    if (!openFiles_ || top.binaryLeft == 0) {
      skipSeparator();
      ++number;
      return Plain::AGAIN;
    }
    if (*top.binaryRead == ';') skipBinaryBytes(1);
  }
}

// Only with a body, as nearly all have.
bool ZVOMLFile::takePlainBinaryObject(ZVOMLSyntaxObject* parent, int32_t section, uint32_t path,
                                      int32_t type) {
  if (!pObjTypeDefinition(type)) return false;
  const ZVOpenFileList& top = *openFiles_;
  const char* const end = top.binaryRead + top.binaryLeft;
  const char* bytes = top.binaryRead + 2;
  int32_t number = -1;
  if (*bytes == 'N') {
    number = scanNumberID(++bytes, end);
    if (number < 0) return false;
  }
  if (bytes == end || !isLeftBracket(*bytes)) return false;
  const char bracket = *bytes++;
  const int32_t id = number >= 0 ? storeIntegerIDIndex(number) : -1;
  const int32_t file = tokenFile_ = fileNameIndex();
  const ZVOMLToken typeToken(ZV_OML_OBJTYPE_ID, type, lineBehind(2), top.position);
  skipBinaryBytes(static_cast<int32_t>(bytes - top.binaryRead));
  parsePlainBody(file, typeToken, id, section, path, parent, bracket);
  skipSeparator();
  return true;
}

bool ZVOMLFile::takePlainBinaryField(ZVOMLSyntaxObject* object, int32_t section, uint32_t path,
                                     ZVOMLDefField* definition) {
  const ZVOpenFileList& top = *openFiles_;
  const char* const end = top.binaryRead + top.binaryLeft;
  const char* bytes = top.binaryRead + 2;
  ZVOMLTokenTagEnum tag = ZV_OML_INTEGER;
  int32_t value = 0;
  double real = 0.0;
  switch (const char kind = *bytes++) {
    case 'I':
    case 'i':
      if (!scanIndex(kind, bytes, end, value)) return false;
      break;
    case 'e':
      tag = ZV_OML_VALUE_ID;
      value = static_cast<unsigned char>(*bytes++);
      break;
    case 'R':
    case 'r': {
      tag = ZV_OML_REAL;
      int32_t exponent = 0;
      if (!scanIndex(kind, bytes, end, value) || bytes == end) return false;
      const char exponentKind = *bytes++;
      if (exponentKind != 'R' && exponentKind != 'r') return false;
      if (!scanIndex(exponentKind, bytes, end, exponent)) return false;
      real = realOfParts(value, exponent);
      break;
    }
    case 'N': {
      if (definition->fieldType() != ZV_FIELD_OBJECT) return false;
      value = scanNumberID(bytes, end);
      if (value < 0) return false;
      break;
    }
    case '"': {
      const char* const first = bytes;
      while (bytes != end && *bytes != '"' && *bytes != '\\') ++bytes;
      if (definition->fieldType() != ZV_FIELD_STRING || bytes == end || *bytes != '"') return false;
      std::string& text = emptyByteScratch();
      text.assign(first, bytes++);
      tag = ZV_OML_STRING;
      value = storeStringIndex(text.c_str());
      break;
    }
    default:
      return false;
  }
  if (!isPlainValue(definition, tag, value)) return false;

  const int32_t nameLine = lineBehind(2);
  skipBinaryBytes(static_cast<int32_t>(bytes - top.binaryRead));
  ZVOMLToken token = plainToken(tag, value, real, top.line, top.position);
  addPlainField(object, section, path, definition, nameLine, top.position, token);
  return true;
}

// What the identifier at text was classified as, and text moved behind it; null if that is not remembered.
// Names tend to follow one another in the same order, so the one that came next the last time is tried first.
const ZVOMLFile::KnownName* ZVOMLFile::findName(const char*& text) const {
  KnownName*& following = scratch_->last->next;
  if (!following || !following->standsAt(text)) {
    const char* last = text;
    uint32_t key = 0;
    for (; is(*last, IDENTIFIER); ++last) key = TokenScratch::nextKey(key, *last);
    const auto length = static_cast<size_t>(last - text);
    if (length == 0 || is(*text, DIGIT)) return nullptr;
    KnownName* name = scratch_->placeOf(key, length);
    if (!name || !name->standsAt(text)) return nullptr;
    following = name;
  }
  scratch_->last = following;
  text += following->length;
  return scratch_->last;
}

// The line of a token of a binary file that ends behind that many bytes.
int32_t ZVOMLFile::lineBehind(uint32_t bytes) const {
  return static_cast<int32_t>(static_cast<uint32_t>(openFiles_->line) + bytes);
}

// Adds the field, whose value is of its kind.
void ZVOMLFile::addPlainField(ZVOMLSyntaxObject* object, int32_t section, uint32_t path,
                              ZVOMLDefField* definition, int32_t line, int position, ZVOMLToken& value) {
  tokenFile_ = fileNameIndex();
  if (definition->fieldType() == ZV_FIELD_OBJECT && value.tag() == ZV_OML_INTEGER) {
    value.intToObjectID(storeIntegerIDIndex(value.longValue()));
  }
  const ZVOMLSyntaxStruct place(this, line, position, tokenFile_);
  addNewField(object, place, definition->fieldIDIndex(), section, path, &value, definition, 0);
}
