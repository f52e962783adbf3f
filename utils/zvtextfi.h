// A file of lines, numbers and truth values as text. Numbers read and write the same in every locale.
//
// Lines are written with CR LF; every line end that ZVFile knows is read. Results and flags are those of
// ZVFile. A whole number beyond 32 bits saturates, read or written.
#ifndef ZV_ZVTEXTFI_H
#define ZV_ZVTEXTFI_H

#include "utils/zvfile.h"

class ZV_EXPORT ZVTextFile : public ZVFile {
 public:
  ZVTextFile() = default;

  // One line without its line end, through stripBuffer.
  ZVFileCodeEnum readLine(ZVStringHandle& line);
  // The number at the start of one line; what follows it is ignored. A line without a number is an error
  // and leaves value alone.
  ZVFileCodeEnum readLine(long& value);
  ZVFileCodeEnum readLine(unsigned long& value);
  ZVFileCodeEnum readLine(int& value);
  ZVFileCodeEnum readLine(unsigned int& value);
  ZVFileCodeEnum readLine(double& value);
  // A line that begins with TRUE or FALSE.
  ZVFileCodeEnum readLineTrueOrFalse(int& value);

  // The text as it stands, or the number; a double with six decimals.
  ZVFileCodeEnum write(const char* text) { return writeString(text); }
  ZVFileCodeEnum write(long value);
  ZVFileCodeEnum write(unsigned long value);
  ZVFileCodeEnum write(int value);
  ZVFileCodeEnum write(unsigned int value);
  ZVFileCodeEnum write(double value);
  // format is one of printf with one conversion, which takes a double; any other is an error.
  ZVFileCodeEnum write(double value, const char* format);
  ZVFileCodeEnum writeTrueOrFalse(int value);
  // The same and a line end.
  ZVFileCodeEnum writeLine(const char* text);
  ZVFileCodeEnum writeLine(long value);
  ZVFileCodeEnum writeLine(unsigned long value);
  ZVFileCodeEnum writeLine(int value);
  ZVFileCodeEnum writeLine(unsigned int value);
  ZVFileCodeEnum writeLine(double value);
  ZVFileCodeEnum writeLine(double value, const char* format);
  ZVFileCodeEnum writeLineTrueOrFalse(int value);

  static int isDoubleSlashString(const char* text);

  int32_t sizeOf() const override;

  // Removes the line ends at the end of text in place; gives text. readLine passes each line through here,
  // with room for two more characters behind it.
  virtual char* stripBuffer(char* text);

 protected:
  // 1 for LF and CR.
  static int isCntrl(char c) { return c == '\n' || c == '\r'; }
  // 1 for a blank and a tab.
  static int isSpace(char c) { return c == ' ' || c == '\t'; }

  ZV_SHAPE_FULL(ZVTextFile)

  template <class Number, class Value>
  ZVFileCodeEnum readNumber(const char* (*scan)(const char*, Number&), Value& value);
  // A failure that is not the end of the file is an error.
  ZVFileCodeEnum readResult(bool success);
  // Ends the line if its text was written.
  ZVFileCodeEnum finishLine(ZVFileCodeEnum written);
};

#endif
