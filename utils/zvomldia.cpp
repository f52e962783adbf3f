// Diagnostics of ZVOMLFile: every message is counted, formatted and collected here.
#include <cstdio>
#include <cstring>
#include <utility>

#include "utils/zverrmsg.h"
#include "utils/zvomlint.h"
#include "utils/zvomlsyn.h"

namespace {

// Numbers of the texts that serve as labels, and of the messages that the limits give.
constexpr int LABEL_ERROR = 0;
constexpr int LABEL_FATAL = 1;
constexpr int LABEL_WARNING = 2;
constexpr int DEFAULT_WARNING = 3;
constexpr int TOO_MANY_ERRORS = 10;
constexpr int TOO_MANY_WARNINGS = 11;

const char* present(const char* text) { return text ? text : ""; }

// The format with each "%s" replaced by the next argument that is there.
std::string expanded(const char* format, const char* s1, const char* s2, const char* s3) {
  const char* arguments[] = {s1, s2, s3};
  const char** next = arguments;
  const char** const end = arguments + 3;
  std::string text;
  for (format = present(format);;) {
    const char* place = std::strstr(format, "%s");
    if (!place) return text += format;
    text.append(format, static_cast<size_t>(place - format));
    while (next != end && !*next) ++next;
    if (next != end) text += *next++;
    format = place + 2;
  }
}

// A whole line. The number is written with numberFormat; a negative line means no place.
std::string messageLine(int label, const char* numberFormat, int id, const char* file, int32_t line,
                        int position, const char* text) {
  char number[32];
  std::snprintf(number, sizeof number, numberFormat, id);
  std::string message = getStringResource(label);
  message.append(" #").append(number).append(" ");
  if (line >= 0) {
    message.append("(").append(present(file)).append(":").append(std::to_string(line)).append(":");
    message.append(std::to_string(position)).append(") ");
  }
  return message.append(present(text)).append(" !\n");
}

const char* textOfID(int id) { return id >= 0 ? getStringResource(id) : ""; }

// Replaces a buffer by a new, empty one. A negative size changes nothing.
void replaceBuffer(char*& buffer, int& present, int size) {
  if (size < 0) return;
  delete[] std::exchange(buffer, nullptr);
  present = size;
  if (size > 0) {
    buffer = new char[static_cast<size_t>(size)];
    *buffer = '\0';
  }
}

}  // namespace

char* ZVOMLFile::pErrorStringBuffer(int size) {
  replaceBuffer(errorStringBuffer_, errorStringBufferSize_, size);
  return errorStringBuffer_;
}

char* ZVOMLFile::pWarningStringBuffer(int size) {
  replaceBuffer(warningStringBuffer_, warningStringBufferSize_, size);
  return warningStringBuffer_;
}

void ZVOMLFile::errorMessage(ZVOMLSyntaxStruct* where, int id, const char* text, int fatal) {
  internalErrorMessage(where ? string(where->fileNameIndex()) : "", where ? where->line() : -1,
                       where ? where->position() : 0, id, "%s", present(text), nullptr, nullptr, fatal);
}

void ZVOMLFile::warningMessage(ZVOMLSyntaxStruct* where, int id, const char* text) {
  internalWarningMessage(where ? string(where->fileNameIndex()) : "", where ? where->line() : -1,
                         where ? where->position() : 0, id, text ? text : textOfID(DEFAULT_WARNING));
}

void ZVOMLFile::vErrorMessage(const char* file, int32_t line, int position, int id, const char* text,
                              int fatal) {
  const std::string message =
      messageLine(fatal ? LABEL_FATAL : LABEL_ERROR, "%03d", id, file, line, position, text);
  bufferAppend(errorStringBuffer_, message.c_str(), errorStringBufferSize_);
  if (!fatal && numberOfErrors_ >= maxNumberOfErrors_) {
    internalErrorMessage("", -1, 0, TOO_MANY_ERRORS, nullptr, nullptr, nullptr, 1);
  }
}

void ZVOMLFile::vWarningMessage(const char* file, int32_t line, int position, int id, const char* text) {
  // Without a place the number is filled up with blanks.
  const std::string message =
      messageLine(LABEL_WARNING, line >= 0 ? "%03d" : "%3d", id, file, line, position, text);
  bufferAppend(warningStringBuffer_, message.c_str(), warningStringBufferSize_);
  if (numberOfWarnings_ >= maxNumberOfWarnings_) {
    internalErrorMessage("", -1, 0, TOO_MANY_WARNINGS, nullptr, nullptr, nullptr, 1);
  }
}

void ZVOMLFile::internalErrorMessage(const char* file, int32_t line, int position, int id, const char* format,
                                     const char* s1, const char* s2, const char* s3, int fatal) {
  if (isFatalError()) return;
  const std::string text = expanded(format, s1, s2, s3);
  ++numberOfErrors_;
  errorCode(ZV_FILE_READ_ERROR);
  vErrorMessage(file, line, position, id, text.c_str(), fatal);
  if (!fatal) return;
  setFatalError();
  cleanup();
}

void ZVOMLFile::internalErrorMessage(const char* file, int32_t line, int position, int id, const char* s1,
                                     const char* s2, const char* s3, int fatal) {
  internalErrorMessage(file, line, position, id, textOfID(id), s1, s2, s3, fatal);
}

void ZVOMLFile::internalErrorMessage(int32_t file, const ZVOMLToken* token, int id, const char* s1,
                                     const char* s2, const char* s3, int fatal) {
  internalErrorMessage(string(file), token ? token->line() : -1, token ? token->position() : 0, id, s1, s2,
                       s3, fatal);
}

void ZVOMLFile::internalErrorMessage(int id, const char* s1, const char* s2, const char* s3, int fatal) {
  internalErrorMessage(pFileNameString(), line(), position(), id, s1, s2, s3, fatal);
}

void ZVOMLFile::internalWarningMessage(const char* file, int32_t line, int position, int id,
                                       const char* text) {
  if (isFatalError()) return;
  ++numberOfWarnings_;
  vWarningMessage(file, line, position, id, text);
}

void ZVOMLFile::internalWarningMessage(const char* file, int32_t line, int position, int id) {
  internalWarningMessage(file, line, position, id, textOfID(id));
}

void ZVOMLFile::bufferAppend(char* buffer, const char* text, int size) {
  if (!buffer || size < 2) return;
  int length = static_cast<int>(std::strlen(buffer));
  while (*text && length < size - 6) buffer[length++] = *text++;
  buffer[length] = '\0';
  constexpr char MARK[] = "...\n";
  if (*text && length + static_cast<int>(sizeof MARK) <= size)
    std::memcpy(buffer + length, MARK, sizeof MARK);
}
