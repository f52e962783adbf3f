#include "utils/zvtextfi.h"

#include <cstring>

#include "utils/zvnumtxt.h"
#include "utils/zvstrhnd.h"

namespace {

// What an override of stripBuffer may put behind the text it got.
constexpr int32_t STRIP_ROOM = 2;
constexpr const char* LINE_END = "\r\n";

// A number as text, ready to be written.
struct NumberText {
  char text[zvnumber::REAL_ROOM];

  explicit NumberText(int32_t value) { zvnumber::formatInteger(text, value); }
  explicit NumberText(uint32_t value) { zvnumber::formatUnsigned(text, value); }
  explicit NumberText(double value) { zvnumber::formatReal(text, value); }
};

const char* truthText(int value) { return value ? "TRUE" : "FALSE"; }

}  // namespace

ZV_DEFINE_FULL(ZVTextFile, ZVFile)

void ZVTextFile::init() {}

void ZVTextFile::ZVTextFiledeepCopy(const ZVTextFile& other) { ZVFile::copyObject(&other); }

void ZVTextFile::ZVTextFileattributeCopy(const ZVTextFile& other) { ZVFile::copyAttributes(&other); }

ZVFileCodeEnum ZVTextFile::readResult(bool success) {
  if (success) return ZV_FILE_OK;
  if (!endOfFile()) error(1);
  return ZV_FILE_READ_ERROR;
}

ZVFileCodeEnum ZVTextFile::readLine(ZVStringHandle& line) {
  if (readString(line) != ZV_FILE_OK) return readResult(false);
  line.increaseLength(STRIP_ROOM);
  char* text = line.pChangeableString();
  const char* stripped = stripBuffer(text);
  if (stripped != text) {
    ZVStringHandle result;
    result.appendString(stripped);
    line.empty();
    line.appendString(result.pString());
  }
  return ZV_FILE_OK;
}

template <class Number, class Value>
ZVFileCodeEnum ZVTextFile::readNumber(const char* (*scan)(const char*, Number&), Value& value) {
  ZVStringHandle line;
  Number number{};
  bool success = readLine(line) == ZV_FILE_OK && scan(line.pString(), number);
  if (success) value = number;
  return readResult(success);
}

ZVFileCodeEnum ZVTextFile::readLine(long& value) { return readNumber(zvnumber::scanInteger, value); }

ZVFileCodeEnum ZVTextFile::readLine(unsigned long& value) {
  return readNumber(zvnumber::scanUnsigned, value);
}

ZVFileCodeEnum ZVTextFile::readLine(int& value) { return readNumber(zvnumber::scanInteger, value); }

ZVFileCodeEnum ZVTextFile::readLine(unsigned int& value) { return readNumber(zvnumber::scanUnsigned, value); }

ZVFileCodeEnum ZVTextFile::readLine(double& value) { return readNumber(zvnumber::scanReal, value); }

ZVFileCodeEnum ZVTextFile::readLineTrueOrFalse(int& value) {
  ZVStringHandle line;
  if (readLine(line) != ZV_FILE_OK) return readResult(false);
  for (int truth : {0, 1}) {
    const char* text = truthText(truth);
    if (std::strncmp(line.pString(), text, std::strlen(text)) == 0) {
      value = truth;
      return ZV_FILE_OK;
    }
  }
  return readResult(false);
}

ZVFileCodeEnum ZVTextFile::write(long value) { return write(zvnumber::saturated(value)); }

ZVFileCodeEnum ZVTextFile::write(unsigned long value) { return write(zvnumber::saturated(value)); }

ZVFileCodeEnum ZVTextFile::write(int value) { return write(NumberText(value).text); }

ZVFileCodeEnum ZVTextFile::write(unsigned int value) { return write(NumberText(value).text); }

ZVFileCodeEnum ZVTextFile::write(double value) { return write(NumberText(value).text); }

ZVFileCodeEnum ZVTextFile::write(double value, const char* format) {
  ZVStringHandle text;
  bool formatted = format && zvnumber::appendReal(text, value, format);
  return write(formatted ? text.pString() : nullptr);
}

ZVFileCodeEnum ZVTextFile::writeTrueOrFalse(int value) { return write(truthText(value)); }

ZVFileCodeEnum ZVTextFile::finishLine(ZVFileCodeEnum written) {
  if (written == ZV_FILE_OK) written = writeString(LINE_END);
  if (written == ZV_FILE_OK) return ZV_FILE_OK;
  error(1);
  return ZV_FILE_WRITE_ERROR;
}

ZVFileCodeEnum ZVTextFile::writeLine(const char* text) { return finishLine(write(text)); }

ZVFileCodeEnum ZVTextFile::writeLine(long value) { return finishLine(write(value)); }

ZVFileCodeEnum ZVTextFile::writeLine(unsigned long value) { return finishLine(write(value)); }

ZVFileCodeEnum ZVTextFile::writeLine(int value) { return finishLine(write(value)); }

ZVFileCodeEnum ZVTextFile::writeLine(unsigned int value) { return finishLine(write(value)); }

ZVFileCodeEnum ZVTextFile::writeLine(double value) { return finishLine(write(value)); }

ZVFileCodeEnum ZVTextFile::writeLine(double value, const char* format) {
  return finishLine(write(value, format));
}

ZVFileCodeEnum ZVTextFile::writeLineTrueOrFalse(int value) { return finishLine(writeTrueOrFalse(value)); }

int ZVTextFile::isDoubleSlashString(const char* text) { return text && text[0] == '/' && text[1] == '/'; }

int32_t ZVTextFile::sizeOf() const { return ZVFile::sizeOf(); }

char* ZVTextFile::stripBuffer(char* text) {
  if (!text) return nullptr;
  size_t length = std::strlen(text);
  while (length > 0 && isCntrl(text[length - 1])) --length;
  text[length] = '\0';
  return text;
}
