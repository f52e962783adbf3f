// The writer: the spelling of each item in the text and the binary form.
//
// Items are spelled into a buffer. During writeOMLFile it goes to the file in large pieces; outside, at the
// end of each item.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "utils/zvidxhsh.h"
#include "utils/zvnumtxt.h"
#include "utils/zvomlbva.h"
#include "utils/zvomldef.h"
#include "utils/zvomlfil.h"
#include "utils/zvomlint.h"
#include "utils/zvomlobj.h"

namespace {

constexpr size_t OUTPUT_SIZE = 65536;
constexpr int32_t BINARY_PIECE = 200;
constexpr char LINE_END[] = "\r\n";

// The decimal text of a number.
class Decimal {
 public:
  explicit Decimal(int32_t number) { zvnumber::formatInteger(text_, number); }
  const char* text() const { return text_; }

 private:
  char text_[zvnumber::INTEGER_ROOM];
};

const char* orEmpty(const char* text) { return text ? text : ""; }

bool isControl(char c) { return (c >= 1 && c < 32) || c == 127; }

bool needsEscape(char c) { return isControl(c) || c == '\\' || c == '"'; }

}  // namespace

// ---- Whole writes

ZVFileCodeEnum ZVOMLFile::writeOMLFile(const char* path, ZVOMLStatic* grammar, ZVObject* top, int binary,
                                       int keepIDs, int32_t) {
  if (!grammar || !path) return ZV_FILE_BAD_WRITE_CALL;
  saveMode(binary ? ZV_FILE_WRITE_BINARY : ZV_FILE_WRITE);
  initParser(grammar, top, expectedTopLevelObjTypeIDIndex(), keepIDs);
  Run run(*this);
  if (open(path, saveMode()) != ZV_FILE_OK) return ZV_FILE_OPEN_ERROR;
  pTopLevelObject(top, expectedTopLevelObjTypeIDIndex());
  writeFailed_ = false;
  collecting_ = true;
  output_.clear();
  bool thrown = false;
  try {
    output_.reserve(OUTPUT_SIZE + OUTPUT_SIZE / 4);
    storedOnDisk(0);
    vWriteContents(top);
    flushOutput();
    storedOnDisk(1);
  } catch (...) {
    thrown = true;
  }
  collecting_ = false;
  std::string().swap(output_);
  ZVFileCodeEnum result = closeWritten();
  if (thrown || (result == ZV_FILE_OK && writeFailed_)) result = ZV_FILE_WRITE_ERROR;
  if (result != ZV_FILE_OK) storedOnDisk(0);
  pTopLevelObject(nullptr, -1);
  return result;
}

// Closing may throw as well, in a subclass.
ZVFileCodeEnum ZVOMLFile::closeWritten() {
  try {
    return close();
  } catch (...) {
    return ZV_FILE_WRITE_ERROR;
  }
}

void ZVOMLFile::vWriteContents(ZVObject*) {}

ZVFileCodeEnum ZVOMLFile::writeString(const char* text) {
  if (auxCLIMode()) {
    addToAuxCLIBuffer(text);
    return ZV_FILE_OK;
  }
  flushOutput();
  const ZVFileCodeEnum code = ZVTextFile::writeString(text);
  if (code != ZV_FILE_OK) writeFailed_ = true;
  return code;
}

ZVFileCodeEnum ZVOMLFile::writeBinary(const char* data, int count) {
  flushOutput();
  const ZVFileCodeEnum code = ZVTextFile::writeBinary(data, count);
  if (code != ZV_FILE_OK) writeFailed_ = true;
  return code;
}

void ZVOMLFile::addToAuxCLIBuffer(const char* text) {
  if (auxCLIBuffer_) auxCLIBuffer_->appendString(text);
}

// ---- The buffer

void ZVOMLFile::beginItem() {
  if (!collecting_) output_.clear();
}

void ZVOMLFile::endItem() {
  if (!collecting_ || output_.size() >= OUTPUT_SIZE) flushOutput();
}

void ZVOMLFile::put(const char* text) { output_ += orEmpty(text); }

// The buffer is empty while the file takes its bytes, so what that call puts out directly comes at its place.
void ZVOMLFile::flushOutput() {
  if (output_.empty()) return;
  std::string bytes;
  bytes.swap(output_);
  for (size_t done = 0; done < bytes.size();) {
    const size_t count = std::min(bytes.size() - done, static_cast<size_t>(std::numeric_limits<int>::max()));
    const ZVFileCodeEnum code =
        inBinary() ? writeBinary(bytes.data() + done, static_cast<int>(count)) : writeString(bytes.c_str());
    if (code != ZV_FILE_OK) writeFailed_ = true;
    done = inBinary() ? done + count : bytes.size();
  }
  bytes.clear();
  if (output_.empty()) output_.swap(bytes);
}

void ZVOMLFile::beginField(const char* field) {
  if (inBinary()) {
    writeBinaryField(field);
  } else {
    writeIndentation();
    put(field);
    output_ += ": ";
  }
}

void ZVOMLFile::endField() {
  if (!inBinary() && !oneline_) output_ += LINE_END;
}

void ZVOMLFile::writeIndentation() {
  if (inBinary()) return;
  if (oneline_) {
    output_ += ' ';
  } else if (indent_ > 0) {
    output_.append(static_cast<size_t>(indent_), '\t');
  }
}

// ---- Structure

void ZVOMLFile::writeBlancLine() {
  if (inBinary()) return;
  beginItem();
  output_ += LINE_END;
  endItem();
}

void ZVOMLFile::writeObjectDefaultStart(const char* type) {
  beginItem();
  if (inBinary()) {
    writeBinaryObjType(type);
    writeBinaryObjectOrScope('N', "defaults");
  } else {
    writeIndentation();
    put(type);
    output_ += ": defaults";
    endField();
  }
  endItem();
}

void ZVOMLFile::writeObjectStart(const char* type, const ZVOMLObject* object, int oneline, int writeID) {
  internalWriteObjectStart(type, object, oneline, writeID);
}

void ZVOMLFile::writeObjectStart(const char* type, const ZVObject* object, int oneline) {
  internalWriteObjectStart(type, object, oneline, 0);
}

void ZVOMLFile::internalWriteObjectStart(const char* type, const ZVObject* object, int oneline, int writeID) {
  const int32_t id = object ? object->graphFileID() : 0;
  if (writeID && object && indexHashTable_) indexHashTable_->update(reinterpret_cast<intptr_t>(object), id);
  beginItem();
  if (inBinary()) {
    writeBinaryObjType(type);
    if (writeID) writeBinaryObjectOrScope('N', Decimal(id).text());
  } else {
    writeIndentation();
    put(type);
    output_ += ':';
    if (writeID) {
      output_ += ' ';
      output_ += Decimal(id).text();
    }
    oneline_ = oneline ? 1 : 0;
    endField();
  }
  endItem();
}

void ZVOMLFile::writeSectionStart(const char* section, int oneline) {
  beginItem();
  if (inBinary()) {
    writeBinarySection(section);
  } else {
    writeIndentation();
    put(section);
    output_ += ": ";
    oneline_ = oneline ? 1 : 0;
    endField();
  }
  endItem();
}

void ZVOMLFile::writeOpeningBracket() {
  beginItem();
  writeIndentation();
  output_ += '{';
  endField();
  ++indent_;
  endItem();
}

void ZVOMLFile::writeClosingBracket() {
  beginItem();
  --indent_;
  writeIndentation();
  output_ += '}';
  oneline_ = 0;
  endField();
  endItem();
}

int ZVOMLFile::writeHook(const char* type, const ZVObject* object) {
  ZVOMLDefObjType* definition = pObjTypeDefinition(objTypeIDIndex(orEmpty(type)));
  return definition ? definition->writeFunction(this, object) : 0;
}

// ---- Fields

void ZVOMLFile::writeStringAttribute(const char* field, const char* value) {
  beginItem();
  beginField(field);
  if (inBinary()) {
    writeBinaryString(value);
  } else {
    output_ += '"';
    putEscaped(value);
    output_ += '"';
  }
  endField();
  endItem();
}

void ZVOMLFile::writeBoolAttribute(const char* field, int value) {
  writeAttribute(field, value ? "true" : "false");
}

void ZVOMLFile::writeIPBytesAttribute(const char* field, uint32_t address) {
  beginItem();
  beginField(field);
  if (inBinary()) {
    writeBinaryIPAddress(address);
  } else {
    for (int shift = 24; shift >= 0; shift -= 8) {
      output_ += Decimal(static_cast<int32_t>(address >> shift & 0xff)).text();
      if (shift > 0) output_ += '.';
    }
  }
  endField();
  endItem();
}

void ZVOMLFile::writeAttribute(const char* field, const char* value) {
  beginItem();
  beginField(field);
  if (inBinary()) {
    writeBinaryValue(value);
  } else {
    put(value);
  }
  endField();
  endItem();
}

void ZVOMLFile::writeAttribute(const char* field, int value) {
  beginItem();
  beginField(field);
  if (inBinary()) {
    writeBinaryInt(value);
  } else {
    output_ += Decimal(value).text();
  }
  endField();
  endItem();
}

void ZVOMLFile::writeAttribute(const char* field, long value) {
  writeAttribute(field, zvnumber::saturated(value));
}

void ZVOMLFile::writeAttribute(const char* field, float value) {
  writeAttribute(field, static_cast<double>(value));
}

void ZVOMLFile::writeAttribute(const char* field, double value) {
  if (!std::isfinite(value)) {
    error(1);
    writeFailed_ = true;
    return;
  }
  beginItem();
  beginField(field);
  if (inBinary()) {
    writeBinaryReal(value);
  } else {
    char text[zvnumber::REAL_ROOM];
    output_.append(text, static_cast<size_t>(zvnumber::formatReal(text, value)));
  }
  endField();
  endItem();
}

void ZVOMLFile::writeAttribute(const char* field, const ZVOMLBinValue* value) {
  if (!value) return;
  const int32_t length = value->length();
  const char* bytes = value->pByteSequence();
  // The lines of a value that is too long for its field's line.
  auto lines = [&](int32_t width) {
    output_ += LINE_END;
    for (int32_t left = length; left > 0; left -= width) {
      if (width == 16) writeIndentation();
      writeBinBytes(bytes + (length - left), std::min(width, left));
      output_ += LINE_END;
    }
  };
  beginItem();
  beginField(field);
  if (inBinary()) {
    writeBinaryBinValue(value);
  } else if (length <= 16) {
    writeBinBytes(bytes, length);
    endField();
  } else if (length <= 256) {
    ++indent_;
    lines(16);
    --indent_;
  } else {
    lines(32);
  }
  endItem();
}

void ZVOMLFile::writeAttribute(const char*, std::nullptr_t) {}

void ZVOMLFile::writeAttribute(const char* field, ZVOMLObject* object, ZVOMLObject* context, int writeName) {
  if (!object || object->graphFileID() == 0) return;
  beginItem();
  if (inBinary() || writeName) {
    beginField(field);
  } else {
    writeIndentation();
  }
  writeObjectAddress(object, context);
  endField();
  endItem();
}

void ZVOMLFile::writeBinBytes(const char* bytes, int32_t count) {
  constexpr char DIGITS[] = "0123456789abcdef";
  output_ += "0x";
  for (int32_t i = 0; i < count; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    output_ += DIGITS[byte >> 4];
    output_ += DIGITS[byte & 15];
  }
}

void ZVOMLFile::writeObjectAddress(ZVOMLObject* object, ZVOMLObject* context) {
  if (context && object->pOwnerObject() == context->pOwnerObject()) {
    const Decimal id(object->graphFileID());
    if (inBinary()) {
      writeBinaryObjectOrScope('N', id.text());
    } else {
      output_ += id.text();
    }
    return;
  }
  std::vector<int32_t> path;  // from the object upwards
  for (ZVOMLObject* level = object; level; level = level->pOwnerObject()) {
    path.push_back(level->graphFileID());
    if (level == pTopLevelObject()) break;
  }
  output_ += '$';
  for (auto id = path.rbegin(); id != path.rend(); ++id) {
    if (id != path.rbegin()) output_ += ',';
    output_ += Decimal(*id).text();
  }
  if (inBinary()) output_ += '"';
}

// ---- Strings

char* ZVOMLFile::convertEscapes(char* destination, const char* source, size_t count) {
  for (const char* end = source + count; source != end; ++source) {
    const char c = *source;
    if (!needsEscape(c)) {
      *destination++ = c;
      continue;
    }
    *destination++ = '\\';
    if (!isControl(c)) {
      *destination++ = c;
      continue;
    }
    *destination++ = static_cast<char>('0' + (c >> 6));
    *destination++ = static_cast<char>('0' + (c >> 3 & 7));
    *destination++ = static_cast<char>('0' + (c & 7));
  }
  return destination;
}

void ZVOMLFile::putEscaped(const char* source) {
  constexpr size_t PIECE = 256;
  char escaped[4 * PIECE];
  source = orEmpty(source);
  for (size_t left = std::strlen(source); left > 0;) {
    const size_t count = std::min(left, PIECE);
    output_.append(escaped, convertEscapes(escaped, source, count));
    source += count;
    left -= count;
  }
}

// ---- Binary items

void ZVOMLFile::writeBinarySection(const char* section) {
  writeBinaryIndex('S', sectionIDIndex(orEmpty(section)));
}
void ZVOMLFile::writeBinaryField(const char* field) { writeBinaryIndex('F', fieldIDIndex(orEmpty(field))); }
void ZVOMLFile::writeBinaryObjType(const char* type) { writeBinaryIndex('O', objTypeIDIndex(orEmpty(type))); }
void ZVOMLFile::writeBinaryValue(const char* value) { writeBinaryIndex('E', valueIDIndex(orEmpty(value))); }
void ZVOMLFile::writeBinaryInt(int32_t value) { writeBinaryIndex('I', value); }

void ZVOMLFile::writeBinaryIPAddress(uint32_t address) {
  writeBinaryIndex('P', static_cast<int32_t>(address));
}

// Eight digits of the value, and the power of ten that belongs to them.
void ZVOMLFile::writeBinaryReal(double value) {
  int32_t exponent = 0;
  const double sign = value < 0 ? -1 : 1;
  double digits = value * sign;
  while (digits != 0 && digits < 1e7) {
    digits *= 10;
    --exponent;
  }
  while (digits > 1e8) {
    digits /= 10;
    ++exponent;
  }
  writeBinaryIndex('R', static_cast<int32_t>(digits * sign));
  writeBinaryIndex('R', exponent);
}

void ZVOMLFile::writeBinaryString(const char* value) {
  writeBinaryTSChar('"');
  putEscaped(value);
  writeBinaryTSChar('"');
}

void ZVOMLFile::writeBinaryBinValue(const ZVOMLBinValue* value) {
  const int32_t length = value->length();
  writeBinaryTSChar('X');
  writeBinaryIndex('I', length);
  for (int32_t left = length; left > 0; left -= BINARY_PIECE)
    output_.append(value->pByteSequence() + (length - left),
                   static_cast<size_t>(std::min(BINARY_PIECE, left)));
}

void ZVOMLFile::writeBinaryObjectOrScope(char tag, const char* text) {
  writeBinaryTSChar(tag);
  output_ += text;
  writeBinaryTSChar('"');
}

void ZVOMLFile::writeBinaryIndex(char tag, int32_t value) {
  if (value >= 0 && value <= 255) {
    writeBinaryTSChar(static_cast<char>(tag | 0x20));
    writeBinaryTSChar(static_cast<char>(value));
    return;
  }
  writeBinaryTSChar(tag);
  for (int shift = 24; shift >= 0; shift -= 8)
    writeBinaryTSChar(static_cast<char>(static_cast<uint32_t>(value) >> shift & 0xff));
}

void ZVOMLFile::writeBinaryTSChar(char c) { output_ += c; }
