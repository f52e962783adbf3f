// The token reader of ZVOMLFile: raw input, the stacks of files and brackets, names and their indices, and
// the tokens of the text form.
#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "utils/zvnumtxt.h"
#include "utils/zvomlbva.h"
#include "utils/zvomlint.h"
#include "utils/zvomlsta.h"
#include "utils/zvstrpoo.h"

using namespace zvomlchar;

namespace {

// Files that include one another nest no deeper: each level holds a handle and a buffer, and a file may
// include itself.
constexpr int32_t DEEPEST_FILE = 1000;
// In bytes.
constexpr int32_t LONGEST_VALUE = std::numeric_limits<int32_t>::max();

bool isExponent(char c) { return c == 'e' || c == 'E'; }

// The value of a hexadecimal digit; 0 for any other character.
int hexValue(char c) {
  if (!is(c, HEX_DIGIT)) return 0;
  return is(c, DIGIT) ? c - '0' : (c | 0x20) - 'a' + 10;
}

// An index in the second of two pools whose indices follow one another.
int32_t behind(const ZVStringPool* first, int32_t index) {
  return index < 0 ? -1 : first->decodeTableMax() + index;
}

const char* decode(const ZVStringPool* pool, int32_t index) { return pool ? pool->decode(index) : ""; }
int32_t lookup(ZVStringPool* pool, const char* text) { return pool && text ? pool->lookup(text) : -1; }
int32_t update(ZVStringPool* pool, const char* text) { return pool && text ? pool->update(text) : -1; }

}  // namespace

// ---- Tokens

ZVOMLFile::TokenPtr ZVOMLFile::nextToken() {
  TokenPtr token = owned(lookAhead_ ? lookAhead_.release() : makeToken());
  tokenFile_ = fileNameIndex();
  if (token && token->tag() == ZV_OML_BINVALUE) joinBytes(token);
  return token;
}

ZVOMLToken* ZVOMLFile::lookAheadToken() {
  if (!lookAhead_) lookAhead_ = owned(makeToken());
  return lookAhead_.get();
}

// The next token of the input; null at its end and after a fatal error.
ZVOMLToken* ZVOMLFile::makeToken() {
  ZVOMLToken* token = saveMode_ == ZV_FILE_READ_BINARY ? makeBinaryToken() : makeTextToken();
  if (!isFatalError() || !token) return token;
  returnToken(token);
  return nullptr;
}

// Sequences in a row are one value. They are collected first, so that a value in many pieces is not copied
// for each of them.
void ZVOMLFile::joinBytes(TokenPtr& token) {
  std::string bytes;
  const auto append = [&bytes](const ZVOMLBinValue* value) {
    bytes.append(value->pByteSequence(), static_cast<size_t>(value->length()));
  };
  const ZVOMLToken* next = lookAheadToken();
  for (; next && next->tag() == ZV_OML_BINVALUE; next = lookAheadToken()) {
    if (bytes.empty()) append(token->pBinValue());
    append(next->pBinValue());
    lookAhead_.reset();
  }
  if (bytes.size() > static_cast<size_t>(LONGEST_VALUE)) {
    *token = ZVOMLToken(ZV_OML_BAD, 0, token->line(), token->position());
  } else if (!bytes.empty()) {
    token->pBinValue()->fill(static_cast<int32_t>(bytes.size()), bytes.data());
  }
  if (isFatalError()) token.reset();
}

// A bad token for more bytes than a value can count.
ZVOMLToken* ZVOMLFile::newBytesToken(const std::string& bytes) {
  if (bytes.size() > static_cast<size_t>(LONGEST_VALUE)) return newToken(ZV_OML_BAD, 0);
  auto value = std::make_unique<ZVOMLBinValue>(static_cast<int32_t>(bytes.size()), bytes.data());
  ZVOMLToken token(ZV_OML_BINVALUE, value.release(), line(), position());  // the owner from here on
  return newTokenOf(std::move(token));
}

char ZVOMLFile::nextFormChar() { return saveMode_ == ZV_FILE_READ_BINARY ? nextBinaryChar() : nextChar(); }

ZVStringHandle& ZVOMLFile::emptyScratch() {
  if (!scratch_) scratch_ = std::make_unique<TokenScratch>();
  scratch_->text.empty();
  return scratch_->text;
}

std::string& ZVOMLFile::emptyByteScratch() {
  if (!scratch_) scratch_ = std::make_unique<TokenScratch>();
  scratch_->bytes.clear();
  return scratch_->bytes;
}

// The first character, from c on, that is not in a skipped body or an ignored rest of a line.
char ZVOMLFile::skipUnread(char c) {
  if (ignoreField_) {
    while (c != '\n' && !inputEnded(c)) c = nextFormChar();
    ignoreField_ = 0;
  }
  if (bracketSkipLevel_ < 0 || bracketLevel_ < bracketSkipLevel_) return c;
  for (; !inputEnded(c); c = nextFormChar()) {
    countBracket(c);
    if (bracketLevel_ < bracketSkipLevel_) break;
  }
  bracketSkipLevel_ = -1;
  return inputEnded(c) ? c : nextFormChar();
}

ZVOMLToken* ZVOMLFile::endOfInput() {
  if (const ZVBracketList* top = brackets_) {
    internalErrorMessage(string(top->fileNameIndex), top->line, top->position, 15, nullptr, nullptr, nullptr,
                         0);
  }
  return nullptr;
}

ZVOMLToken* ZVOMLFile::makeTextToken() {
  char c = skipTextWhiteSpace(nextReadChar(nextChar()));
  if (inputEnded(c)) return endOfInput();
  if (ZVOMLToken* token = checkCharToken(c)) return token;
  if (is(c, LETTER | UNDERSCORE)) return readTextIdentifier(c);
  if (is(c, DIGIT)) return readTextIntRealScopeOrIP(c);
  if (is(c, SIGN)) return readTextIntRealOrScope(c);
  switch (c) {
    case '"':
      return readTextString();
    case '$':
      return readTextFullScope();
    case '.':
      return readTextPointReal(c);
    default:
      return newToken(ZV_OML_BAD, c);
  }
}

char ZVOMLFile::skipTextWhiteSpace(char c) {
  for (;; c = nextChar()) {
    if (c == ' ' || c == '\t' || c == '\n') continue;
    const char next = c == '/' ? lookAheadChar() : '\0';
    if (c == '#' || next == '/') {
      while (c != '\n' && !inputEnded(c)) c = nextChar();
      if (inputEnded(c)) return c;
    } else if (next == '*') {
      if (!skipTextComment()) return '\0';
    } else {
      return c;
    }
  }
}

// Behind the slash. The star that opens the comment may also close it. Gives 0 if the comment has no end.
int ZVOMLFile::skipTextComment() {
  const int32_t file = fileNameIndex();
  const int32_t startLine = line();
  const int startPosition = position();
  for (char c = nextChar(); !inputEnded(c); c = nextChar()) {
    if (c == '*' && lookAheadChar() == '/') {
      nextChar();
      return 1;
    }
  }
  internalErrorMessage(string(file), startLine, startPosition, 17, nullptr, nullptr, nullptr, 0);
  return 0;
}

ZVOMLToken* ZVOMLFile::checkCharToken(char c) {
  switch (c) {
    case '(':
    case '<':
    case '[':
    case '{':
      countBracket(c);
      return newToken(ZV_OML_LEFT_BRACKET, c);
    case ')':
    case '>':
    case ']':
    case '}':
      countBracket(c);
      return newToken(ZV_OML_RIGHT_BRACKET, c);
    case ':':
    case '=':
      return newToken(ZV_OML_ASSIGN, c);
    case ';':
      return newToken(ZV_OML_SEPARATOR, c);
    default:
      return nullptr;
  }
}

ZVOMLToken* ZVOMLFile::readTextString() { return readQuotedString(&ZVOMLFile::nextChar); }

ZVOMLToken* ZVOMLFile::readQuotedString(char (ZVOMLFile::*next)()) {
  const int32_t file = fileNameIndex();
  const int32_t startLine = line();
  const int startPosition = position();
  std::string& text = emptyByteScratch();
  bool escaped = false;
  for (;;) {
    takeStringRun(text);
    char c = (this->*next)();
    if (c == '"') break;
    if (c == '\\') {
      escaped = true;
      text += c;
      c = (this->*next)();
    }
    if (inputEnded(c)) {
      internalErrorMessage(string(file), startLine, startPosition, 18, nullptr, nullptr, nullptr, 0);
      break;
    }
    text += c;
  }
  if (escaped) removeEscapeSequences(text.data());
  return newToken(ZV_OML_STRING, storeStringIndex(text.c_str()));
}

// Takes the characters up to a quote or a backslash that wait in the line or the buffer.
void ZVOMLFile::takeStringRun(std::string& text) {
  if (auxCLIBuffer_ || !openFiles_) return;
  if (saveMode_ == ZV_FILE_READ_BINARY) {
    const char* first = openFiles_->binaryRead;
    const char* end =
        std::find_if(first, first + openFiles_->binaryLeft, [](char c) { return c == '"' || c == '\\'; });
    takeBinaryRun(text, static_cast<int32_t>(end - first));
  } else if (const char* first = openFiles_->read) {
    const size_t count = std::strcspn(first, "\"\\");
    text.append(first, count);
    takeCharacters(count);
  }
}

char* ZVOMLFile::removeEscapeSequences(char* text) {
  const char* from = text;
  char* to = text;
  while (*from) {
    char c = *from++;
    if (c == '\\') {
      c = *from;
      if (c == '\0') break;
      ++from;
      switch (c) {
        case 'a':
          c = '\a';
          break;
        case 'b':
          c = '\b';
          break;
        case 'f':
          c = '\f';
          break;
        case 'n':
          c = '\n';
          break;
        case 'r':
          c = '\r';
          break;
        case 't':
          c = '\t';
          break;
        case 'v':
          c = '\v';
          break;
        case 'x': {
          int number = 0;
          for (int i = 0; i < 2 && is(*from, HEX_DIGIT); ++i) number = number * 16 + hexValue(*from++);
          c = static_cast<char>(number);
          break;
        }
        default:
          if (c >= '0' && c <= '7') {
            int number = c - '0';
            for (int i = 0; i < 2 && *from >= '0' && *from <= '7'; ++i) number = number * 8 + (*from++ - '0');
            c = static_cast<char>(number);
          }
      }
    }
    *to++ = c;
  }
  *to = '\0';
  return text;
}

// ---- Numbers

ZVOMLToken* ZVOMLFile::readTextIntRealScopeOrIP(char c) {
  if (ZVOMLToken* token = readShortInteger(c)) return token;
  ZVStringHandle& text = emptyScratch();
  readTextIntegerToBuffer(c, text);
  const int32_t number = zvnumber::integerOf(text.pString());
  const char next = lookAheadChar();
  if (number == 0 && next == 'x') {
    nextChar();
    return readTextBinValue();
  }
  if (number <= 255 && next == '.') {
    nextChar();
    return readTextRealOrIP(text, number);
  }
  return readTextNumberEnd(text, number);
}

// The token of a few digits that are an integer and nothing else, in which case they are taken; else null.
ZVOMLToken* ZVOMLFile::readShortInteger(char c) {
  if (auxCLIBuffer_) return nullptr;
  const char* next = openFiles_->read;
  int32_t number = c - '0';
  for (int left = 8; left > 0 && is(*next, DIGIT); --left) number = number * 10 + (*next++ - '0');
  if (is(*next, DIGIT | INTEGER_BREAK)) return nullptr;
  takeCharacters(static_cast<size_t>(next - openFiles_->read));
  return newToken(ZV_OML_INTEGER, number);
}

ZVOMLToken* ZVOMLFile::readTextIntRealOrScope(char c) {
  ZVStringHandle& text = emptyScratch();
  readTextIntegerToBuffer(c, text);
  return readTextNumberEnd(text, zvnumber::integerOf(text.pString()));
}

ZVOMLToken* ZVOMLFile::readTextNumberEnd(ZVStringHandle& text, int32_t number) {
  const char next = lookAheadChar();
  if (isExponent(next) || next == '.') return readTextReal(text, nextChar());
  if (is(next, SCOPE_SEPARATOR)) return readTextRemainingScope(text, nextChar());
  return newToken(ZV_OML_INTEGER, number);
}

ZVOMLToken* ZVOMLFile::readTextPointReal(char c) { return readTextReal(emptyScratch(), c); }

ZVOMLToken* ZVOMLFile::readTextRealOrIP(ZVStringHandle& text, int32_t firstOctet) {
  int32_t octets[4] = {firstOctet, 0, 0, 0};
  bool isIP = true;
  bool isReal = true;
  char c = '.';
  for (int i = 1; i < 4; ++i) {
    if (c != '.') {
      isIP = false;
      break;
    }
    text.appendChar(c);
    isReal = i == 1;
    if (!is(lookAheadChar(), DIGIT)) {
      isIP = false;
      break;
    }
    const int32_t start = text.strlenBuf();
    readTextIntegerToBuffer(nextChar(), text);
    octets[i] = zvnumber::integerOf(text.pString() + start);
    if (octets[i] > 255) isIP = false;
    c = lookAheadChar() == '.' ? nextChar() : '\0';
  }
  if (isIP) return newTokenOf(ZV_OML_IPBYTES, octets, line(), position());
  if (!isReal) return newToken(ZV_OML_BAD, 0);
  return readTextExponent(text, isExponent(lookAheadChar()) ? nextChar() : '\0');
}

ZVOMLToken* ZVOMLFile::readTextReal(ZVStringHandle& text, char c) {
  if (c == '.') {
    text.appendChar(c);
    if (is(lookAheadChar(), DIGIT)) readTextIntegerToBuffer(nextChar(), text);
    c = isExponent(lookAheadChar()) ? nextChar() : '\0';
  }
  return readTextExponent(text, c);
}

// The token of a real, with an exponent if c begins one.
ZVOMLToken* ZVOMLFile::readTextExponent(ZVStringHandle& text, char c) {
  if (isExponent(c)) {
    text.appendChar(c);
    if (is(lookAheadChar(), DIGIT | SIGN)) readTextIntegerToBuffer(nextChar(), text);
  }
  return newTokenOf(ZV_OML_REAL, zvnumber::realOf(text.pString()), line(), position());
}

ZVOMLToken* ZVOMLFile::readTextBinValue() {
  std::string& bytes = emptyByteScratch();
  while (is(lookAheadChar(), HEX_DIGIT)) {
    const int high = hexValue(nextChar());
    bytes += static_cast<char>(high * 16 + hexValue(nextChar()));
  }
  return newBytesToken(bytes);
}

int32_t ZVOMLFile::readTextIntegerToBuffer(char c, ZVStringHandle& text) { return takeRun(c, DIGIT, text); }
int32_t ZVOMLFile::readTextIdentifierToBuffer(char c, ZVStringHandle& text) {
  return takeRun(c, IDENTIFIER, text);
}

// Appends c, which is taken already, and all characters of these classes that follow it. Gives the length.
int32_t ZVOMLFile::takeRun(char c, int classes, ZVStringHandle& text) {
  if (auxCLIBuffer_ || !openFiles_) {
    text.appendChar(c);
    while (is(lookAheadChar(), classes)) text.appendChar(nextChar());
    return text.strlenBuf();
  }
  const char* first = openFiles_->read;
  const char* end = first;
  while (is(*end, classes)) ++end;
  const auto count = static_cast<size_t>(end - first);
  char* place = text.obtainAppendBuffer(static_cast<int32_t>(count) + 1);
  place[0] = c;
  std::memcpy(place + 1, first, count);
  place[count + 1] = '\0';
  takeCharacters(count);
  return text.strlenBuf();
}

// ---- Identifiers and scopes

ZVOMLToken* ZVOMLFile::readTextIdentifier(char c) {
  ZVStringHandle& text = emptyScratch();
  const int32_t length = readTextIdentifierToBuffer(c, text);
  if (is(lookAheadChar(), SCOPE_SEPARATOR)) return readTextRemainingScope(text, nextChar());
  const char* name = text.pString();
  if (inUncheckedSection_) {
    const int32_t index = storeFieldIDIndex(name);
    return newToken(index < 0 ? ZV_OML_BAD : ZV_OML_FIELD_ID, index);
  }

  const auto size = static_cast<size_t>(length);
  uint32_t key = 0;
  for (size_t i = 0; i < size; ++i) key = TokenScratch::nextKey(key, name[i]);
  KnownName* const place = scratch_->placeOf(key, size);
  if (place && place->standsAt(name)) return newNameToken(place->tag, place->index);
  int32_t index = -1;
  const ZVOMLTokenTagEnum tag = classify(name, index);
  if (place) {
    *place = {{}, size, tag, index, nullptr};
    std::memcpy(place->text, name, size);
  }
  return newNameToken(tag, index);
}

// The kind of an identifier that is no scope, and its index. The tag of a bad token stands for the name of a
// declared field.
ZVOMLTokenTagEnum ZVOMLFile::classify(const char* name, int32_t& index) {
  if ((index = objTypeIDIndex(name)) >= 0) return ZV_OML_OBJTYPE_ID;
  if ((index = sectionIDIndex(name)) >= 0) return ZV_OML_SECTION_ID;
  if ((index = checkedFieldIDIndex(name)) >= 0) return ZV_OML_FIELD_ID;
  if ((index = unknownFieldIDIndex(name)) >= 0) return ZV_OML_BAD;
  if ((index = valueIDIndex(name)) >= 0) return ZV_OML_VALUE_ID;
  index = storeObjectIDIndex(name);
  return ZV_OML_OBJECT_ID;
}

ZVOMLToken* ZVOMLFile::newNameToken(ZVOMLTokenTagEnum tag, int32_t index) {
  if (tag != ZV_OML_BAD) return newToken(tag, index);
  ZVOMLToken* token = newToken(ZV_OML_FIELD_ID, index);
  token->isUnknownField(1);
  return token;
}

// Enters a name that changes how identifiers are classified.
int32_t ZVOMLFile::declare(ZVStringPool* pool, const char* name) {
  const int32_t known = lookup(pool, name);
  if (known >= 0) return known;
  forgetNames();
  return update(pool, name);
}

void ZVOMLFile::forgetNames() {
  if (scratch_) scratch_->names.fill({});
}

ZVOMLToken* ZVOMLFile::readTextFullScope() {
  ZVStringHandle& text = emptyScratch();
  text.appendChar('$');
  const char next = lookAheadChar();
  if (is(next, LETTER | SIGN | DIGIT)) {
    text.appendChar(',');
    takeScopeItem(text);
  }
  if (is(lookAheadChar(), SCOPE_SEPARATOR)) return readTextRemainingScope(text, nextChar());
  return newToken(ZV_OML_OBJECT_ID, storeObjectIDIndex(text.pString()));
}

ZVOMLToken* ZVOMLFile::readTextRemainingScope(ZVStringHandle& text, char c) {
  ZVOMLTokenTagEnum tag = ZV_OML_OBJECT_ID;
  while (is(c, SCOPE_SEPARATOR)) {
    text.appendChar(',');
    if (!is(lookAheadChar(), LETTER | SIGN | DIGIT)) {
      tag = ZV_OML_BAD;
      break;
    }
    takeScopeItem(text);
    c = is(lookAheadChar(), SCOPE_SEPARATOR) ? nextChar() : '\0';
  }
  return newToken(tag, storeObjectIDIndex(text.pString()));
}

// An identifier or a number, whichever the next character begins.
void ZVOMLFile::takeScopeItem(ZVStringHandle& text) {
  const char c = nextChar();
  if (is(c, LETTER)) {
    readTextIdentifierToBuffer(c, text);
  } else {
    readTextIntegerToBuffer(c, text);
  }
}

// ---- Raw input

// The next character where it is not the next one of the present line.
char ZVOMLFile::nextCharElsewhere() {
  if (auxCLIBuffer_) return nextAuxCLIChar();
  while (openFiles_ && !isFatalError()) {
    ZVOpenFileList& top = *openFiles_;
    if (top.read && *top.read) {
      nextPosition();
      return *top.read++;
    }
    if (!nextLine()) popFile();
  }
  return '\0';
}

// Removes the first character of the buffer in memory.
char ZVOMLFile::nextAuxCLIChar() {
  const char c = *auxCLIBuffer_->pString();
  if (c == '\0') return c;
  const std::string rest(auxCLIBuffer_->pString() + 1);
  auxCLIBuffer_->empty();
  auxCLIBuffer_->appendString(rest.c_str());
  return c;
}

int ZVOMLFile::nextLine() {
  ZVOpenFileList& top = *openFiles_;
  const bool found = readLine(top.text) == ZV_FILE_OK;
  if (!found && !endOfFile()) {
    errorCode(ZV_FILE_READ_ERROR);
    endOfFile(1);  // what comes behind a gap is not read
  }
  top.read = found ? top.text.pString() : nullptr;
  top.addToLine(1);
  top.position = 0;
  return found ? 1 : 0;
}

char* ZVOMLFile::stripBuffer(char* text) {
  if (!text) return nullptr;
  size_t length = std::strlen(text);
  while (length > 0 && isCntrl(text[length - 1])) --length;
  text[length] = '\n';
  text[length + 1] = '\0';
  return text;
}

void ZVOMLFile::resetPosition() {
  if (!openFiles_) return;
  openFiles_->line = 0;
  openFiles_->position = 0;
}

int32_t ZVOMLFile::line() const { return openFiles_ ? openFiles_->line : -1; }
int ZVOMLFile::position() const { return openFiles_ ? openFiles_->position : -1; }
const char* ZVOMLFile::pFileNameString() const { return string(fileNameIndex()); }

// ---- Stack of open files

void ZVOMLFile::pushFile(const char* name) {
  if (isFatalError()) return;
  // The name may be this file's own, which open frees.
  const std::string path = name;
  const bool tooDeep = openFiles_ && openFiles_->depth >= DEEPEST_FILE;
  copyThisFileToTopStack();
  if (tooDeep || open(path.c_str(), saveMode_) != ZV_FILE_OK) {
    copyTopStackToThisFile();
    internalErrorMessage(13, path.c_str(), nullptr, nullptr, 1);
    errorCode(ZV_FILE_OPEN_ERROR);
    return;
  }
  auto* entry = new ZVOpenFileList;
  entry->fileNameIndex = storeStringIndex(path.c_str());
  entry->depth = openFiles_ ? openFiles_->depth + 1 : 1;
  entry->next = openFiles_;
  openFiles_ = entry;
  resetPosition();
}

// Puts the state of the open file aside, which leaves this object without a file.
void ZVOMLFile::copyThisFileToTopStack() {
  if (!openFiles_) return;
  ZVOpenFileList& top = *openFiles_;
  top.bits = bits();
  top.fileHandle = fileHandle();
  top.archive = pArchive();
  top.topBuffer = pTopBuffer();
  top.numberOfBufferedBytes = numberOfBufferedBytes();
  top.fileBuffer = takeFileBuffer();
  top.fileName = pFileName();
  top.pathName = pPathName();
  bits(0);
  fileHandle(-1);
  pArchive(nullptr);
  pTopBuffer(nullptr);
  numberOfBufferedBytes(0);
}

void ZVOMLFile::copyTopStackToThisFile() {
  if (!openFiles_) return;
  ZVOpenFileList& top = *openFiles_;
  bits(top.bits);
  fileHandle(top.fileHandle);
  pArchive(top.archive);
  pFileBuffer(std::exchange(top.fileBuffer, nullptr));
  pTopBuffer(top.topBuffer);
  numberOfBufferedBytes(top.numberOfBufferedBytes);
  pFileName(top.fileName.c_str());
  pPathName(top.pathName.c_str());
}

void ZVOMLFile::popFile() {
  ZVOpenFileList* entry = openFiles_;
  if (!entry) return;
  if (close() != ZV_FILE_OK) {
    // The handle is gone all the same, and the fatal message removes the whole stack.
    internalErrorMessage(14, nullptr, nullptr, nullptr, 1);
    errorCode(ZV_FILE_CLOSE_ERROR);
    if (openFiles_ != entry) return;
  }
  openFiles_ = entry->next;
  delete entry;
  copyTopStackToThisFile();
  // A fault while reading is no end of the file: the flag outlives the close.
  if (errorCode() == ZV_FILE_READ_ERROR) error(1);
}

// ---- Stack of open brackets

void ZVOMLFile::countBracket(char c) {
  if (c == '(' || c == '<' || c == '[' || c == '{') {
    pushBracket(c, fileNameIndex(), line(), position());
  } else if (c == ')' || c == '>' || c == ']' || c == '}') {
    popBracket(c, fileNameIndex(), line(), position());
  }
}

void ZVOMLFile::pushBracket(char c, int32_t file, int32_t line, int position) {
  void* memory = std::exchange(freeBrackets_, freeBrackets_ ? freeBrackets_->next : nullptr);
  if (!memory) memory = ::operator new(sizeof(ZVBracketList));
  brackets_ = new (memory) ZVBracketList{c, file, line, static_cast<int16_t>(position), brackets_};
  ++bracketLevel_;
}

void ZVOMLFile::popBracket(char c, int32_t file, int32_t line, int position) {
  ZVBracketList* const top = brackets_;
  if (top) {
    brackets_ = std::exchange(top->next, freeBrackets_);
    freeBrackets_ = top;
    if (c != ' ' && leftBracketOf(c) != top->bracket) {
      internalWarningMessage(string(top->fileNameIndex), top->line, top->position, 50);
      internalWarningMessage(string(file), line, position, 51);
    }
  }
  if (--bracketLevel_ >= 0) return;
  internalErrorMessage(string(file), line, position, 16, nullptr, nullptr, nullptr, 0);
  bracketLevel_ = 0;
}

// ---- Names and indices

int32_t ZVOMLFile::stringIndex(const char* text) const { return lookup(stringPool_, text); }

int32_t ZVOMLFile::valueIDIndex(const char* name) const {
  return grammar_ ? lookup(grammar_->pValueIDPool(), name) : -1;
}

int32_t ZVOMLFile::objTypeIDIndex(const char* name) const {
  return grammar_ ? lookup(grammar_->pObjTypeIDPool(), name) : -1;
}

int32_t ZVOMLFile::sectionIDIndex(const char* name) const {
  if (!grammar_) return -1;
  const int32_t known = lookup(grammar_->pSectionIDPool(), name);
  return known >= 0 ? known : behind(grammar_->pSectionIDPool(), lookup(unknownSectionIDPool_, name));
}

int32_t ZVOMLFile::checkedFieldIDIndex(const char* name) const {
  return grammar_ ? lookup(grammar_->pFieldIDPool(), name) : -1;
}

int32_t ZVOMLFile::unknownFieldIDIndex(const char* name) const {
  return behind(unknownFieldIDPool_, lookup(unknownFieldIDPool_, name));
}

const char* ZVOMLFile::unknownFieldID(int32_t index) const {
  return unknownFieldIDPool_ ? unknownFieldIDPool_->decode(index - unknownFieldIDPool_->decodeTableMax())
                             : "";
}

int32_t ZVOMLFile::fieldIDIndex(const char* name) const {
  const int32_t known = checkedFieldIDIndex(name);
  if (known >= 0 || !grammar_) return known;
  return behind(grammar_->pFieldIDPool(), lookup(uncheckedFieldIDPool_, name));
}

int32_t ZVOMLFile::objectIDIndex(const char* text) const { return ids_ && text ? ids_->find(text) : -1; }

int32_t ZVOMLFile::storeStringIndex(const char* text) { return update(stringPool_, text); }

int32_t ZVOMLFile::storeSectionIDIndex(const char* name) {
  if (!grammar_) return -1;
  const int32_t known = lookup(grammar_->pSectionIDPool(), name);
  return known >= 0 ? known : behind(grammar_->pSectionIDPool(), declare(unknownSectionIDPool_, name));
}

int32_t ZVOMLFile::storeUnknownFieldIDIndex(const char* name) {
  return behind(unknownFieldIDPool_, declare(unknownFieldIDPool_, name));
}

int32_t ZVOMLFile::storeFieldIDIndex(const char* name) {
  const int32_t known = checkedFieldIDIndex(name);
  if (known >= 0 || !grammar_) return known;
  return behind(grammar_->pFieldIDPool(), update(uncheckedFieldIDPool_, name));
}

int32_t ZVOMLFile::storeObjectIDIndex(const char* text) { return ids_ && text ? ids_->enter(text) : -1; }

int32_t ZVOMLFile::storeIntegerIDIndex(int32_t number) { return ids_ ? ids_->enterNumber(number) : -1; }

const char* ZVOMLFile::string(int32_t index) const { return decode(stringPool_, index); }

const char* ZVOMLFile::valueID(int32_t index) const {
  return grammar_ ? decode(grammar_->pValueIDPool(), index) : "";
}

const char* ZVOMLFile::objTypeID(int32_t index) const {
  return grammar_ ? decode(grammar_->pObjTypeIDPool(), index) : "";
}

const char* ZVOMLFile::sectionID(int32_t index) const {
  if (!grammar_) return "";
  const int32_t known = grammar_->pSectionIDPool()->decodeTableMax();
  return index < known ? decode(grammar_->pSectionIDPool(), index)
                       : decode(unknownSectionIDPool_, index - known);
}

const char* ZVOMLFile::fieldID(int32_t index) const {
  if (!grammar_) return "";
  const int32_t known = grammar_->pFieldIDPool()->decodeTableMax();
  return index < known ? decode(grammar_->pFieldIDPool(), index)
                       : decode(uncheckedFieldIDPool_, index - known);
}

const char* ZVOMLFile::objectID(int32_t index) const { return ids_ ? ids_->text(index) : ""; }
