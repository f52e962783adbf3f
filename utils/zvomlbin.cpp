// The binary form of the token reader of ZVOMLFile.
//
// Nothing in a binary file is trusted: an index outside its pool, a number item that the end of the input
// cuts off, or a length or second tag of the wrong kind gives a bad token, and memory for a byte sequence
// grows only with the bytes that arrive.
#include <algorithm>
#include <cmath>

#include "utils/zvomlint.h"
#include "utils/zvomlsta.h"
#include "utils/zvstrpoo.h"

namespace {

int32_t namesIn(const ZVStringPool* pool) { return pool ? pool->decodeTableMax() : 0; }

bool isUpper(char tag) { return tag >= 'A' && tag <= 'Z'; }

}  // namespace

ZVOMLToken* ZVOMLFile::makeBinaryToken() {
  const char c = nextReadChar(nextBinaryChar());
  if (inputEnded(c)) return endOfInput();
  switch (c) {
    case 'O':
    case 'o':
      return readBinaryObjType(c);
    case 'S':
    case 's':
      return readBinarySection(c);
    case 'F':
    case 'f':
      return readBinaryField(c);
    case 'E':
    case 'e':
      return readBinaryValue(c);
    case 'I':
    case 'i':
      return readBinaryInt(c);
    case 'P':
    case 'p':
      return readBinaryIPAddress(c);
    case 'R':
    case 'r':
      return readBinaryReal(c);
    case '"':
      return readBinaryString();
    case 'X':
      return readBinaryBinValue();
    case 'N':
    case '$':
      return readBinaryObjectOrScope(c);
    default: {
      ZVOMLToken* token = checkCharToken(c);
      return token ? token : newToken(ZV_OML_BAD, c);
    }
  }
}

// The token of an index into names of which there are count.
ZVOMLToken* ZVOMLFile::readBinaryName(char tag, ZVOMLTokenTagEnum tokenTag, int32_t count) {
  const int32_t index = readBinaryIndex(tag);
  const bool good = openFiles_ && index >= 0 && index < count;
  return newToken(good ? tokenTag : ZV_OML_BAD, good ? index : 0);
}

ZVOMLToken* ZVOMLFile::readBinarySection(char tag) {
  const int32_t known = grammar_ ? namesIn(grammar_->pSectionIDPool()) : 0;
  return readBinaryName(tag, ZV_OML_SECTION_ID, known + namesIn(unknownSectionIDPool_));
}

ZVOMLToken* ZVOMLFile::readBinaryField(char tag) {
  const int32_t known = grammar_ ? namesIn(grammar_->pFieldIDPool()) : 0;
  return readBinaryName(tag, ZV_OML_FIELD_ID, known + namesIn(uncheckedFieldIDPool_));
}

ZVOMLToken* ZVOMLFile::readBinaryObjType(char tag) {
  return readBinaryName(tag, ZV_OML_OBJTYPE_ID, grammar_ ? namesIn(grammar_->pObjTypeIDPool()) : 0);
}

ZVOMLToken* ZVOMLFile::readBinaryValue(char tag) {
  return readBinaryName(tag, ZV_OML_VALUE_ID, grammar_ ? namesIn(grammar_->pValueIDPool()) : 0);
}

ZVOMLToken* ZVOMLFile::readBinaryInt(char tag) {
  const int32_t value = readBinaryIndex(tag);
  return openFiles_ ? newToken(ZV_OML_INTEGER, value) : newToken(ZV_OML_BAD, 0);
}

ZVOMLToken* ZVOMLFile::readBinaryIPAddress(char tag) {
  int32_t octets[4] = {1, 0, 0, 0};
  for (int i = isUpper(tag) ? 0 : 3; i < 4; ++i) octets[i] = static_cast<unsigned char>(nextBinaryChar());
  if (!openFiles_) return newToken(ZV_OML_BAD, 0);
  return newTokenOf(ZV_OML_IPBYTES, octets, line(), position());
}

// The value of a real item. Zero and infinity stay as they are, which ends an exponent out of all bounds.
double ZVOMLFile::realOfParts(int32_t mantissa, int32_t exponent) {
  double value = mantissa;
  for (; exponent > 0 && value != 0 && std::isfinite(value); --exponent) value *= 10.0;
  for (; exponent < 0 && value != 0; ++exponent) value /= 10.0;
  return value;
}

ZVOMLToken* ZVOMLFile::readBinaryReal(char tag) {
  const int32_t mantissa = readBinaryIndex(tag);
  const char exponentTag = nextBinaryChar();
  if (exponentTag != 'R' && exponentTag != 'r') return newToken(ZV_OML_BAD, 0);
  const int32_t exponent = readBinaryIndex(exponentTag);
  if (!openFiles_) return newToken(ZV_OML_BAD, 0);
  return newTokenOf(ZV_OML_REAL, realOfParts(mantissa, exponent), line(), position());
}

ZVOMLToken* ZVOMLFile::readBinaryString() { return readQuotedString(&ZVOMLFile::readBinaryTSChar); }

ZVOMLToken* ZVOMLFile::readBinaryBinValue() {
  const int32_t file = fileNameIndex();
  const int32_t startLine = line();
  const int startPosition = position();
  const char tag = nextBinaryChar();
  if (tag != 'I' && tag != 'i') return newToken(ZV_OML_BAD, 0);
  int32_t left = readBinaryIndex(tag);
  if (left < 0) return newToken(ZV_OML_BAD, 0);

  std::string& bytes = emptyByteScratch();
  for (; left > 0; --left) {
    const char c = nextBinaryChar();
    if (!openFiles_) break;
    bytes += c;
    left -= takeBinaryRun(bytes, left - 1);
  }
  if (!openFiles_) {
    internalErrorMessage(string(file), startLine, startPosition, 19, nullptr, nullptr, nullptr, 0);
  }
  return newBytesToken(bytes);
}

// Takes at most count bytes of those that wait in the buffer. Gives their number.
int32_t ZVOMLFile::takeBinaryRun(std::string& bytes, int32_t count) {
  ZVOpenFileList& top = *openFiles_;
  count = std::min(count, top.binaryLeft);
  bytes.append(top.binaryRead, static_cast<size_t>(count));
  skipBinaryBytes(count);
  return count;
}

// The number of an id that is a few digits, all of them in the buffer, in which case they are taken; else -1.
int32_t ZVOMLFile::takeShortID() {
  const ZVOpenFileList& top = *openFiles_;
  const char* bytes = top.binaryRead;
  const int32_t number = zvomlchar::scanNumberID(bytes, bytes + top.binaryLeft);
  if (number >= 0) skipBinaryBytes(static_cast<int32_t>(bytes - top.binaryRead));
  return number;
}

ZVOMLToken* ZVOMLFile::readBinaryObjectOrScope(char tag) {
  const int32_t number = tag == 'N' && openFiles_ ? takeShortID() : -1;
  if (number >= 0) return newToken(ZV_OML_OBJECT_ID, storeIntegerIDIndex(number));
  std::string& text = emptyByteScratch();
  if (tag == '$') {
    text += '$';
    if (lookAheadBinaryChar() != ',') text += ',';
  }
  for (char c = nextBinaryChar(); c != '"' && openFiles_; c = nextBinaryChar()) text += c;
  return newToken(ZV_OML_OBJECT_ID, storeObjectIDIndex(text.c_str()));
}

int32_t ZVOMLFile::readBinaryIndex(char tag) {
  uint32_t value = 0;
  for (int i = isUpper(tag) ? 4 : 1; i > 0; --i) {
    value = value << 8 | static_cast<unsigned char>(nextBinaryChar());
  }
  return static_cast<int32_t>(value);
}

char ZVOMLFile::readBinaryTSChar() { return nextBinaryChar(); }

// ---- Raw input

// The next byte, which stays; 0 at the end of the input.
char ZVOMLFile::lookAheadBinaryChar() { return findBinaryByte() ? *openFiles_->binaryRead : '\0'; }

// Makes the next byte wait in the buffer of the top file, dropping files that are used up.
bool ZVOMLFile::findBinaryByte() {
  while (openFiles_ && !isFatalError()) {
    if (openFiles_->binaryLeft > 0 || nextBinaryBuffer()) return true;
    popFile();
  }
  return false;
}

int ZVOMLFile::nextBinaryBuffer() {
  ZVOpenFileList& top = *openFiles_;
  int count = ZVOpenFileList::BINARY_BUFFER_SIZE;
  const bool found = readBinary(top.binaryBuffer, count) == ZV_FILE_OK && count > 0;
  if (!found && !endOfFile()) errorCode(ZV_FILE_READ_ERROR);
  top.binaryRead = top.binaryBuffer;
  top.binaryLeft = found ? count : 0;
  return found ? 1 : 0;
}
