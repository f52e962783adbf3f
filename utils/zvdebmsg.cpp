#include "utils/zvdebmsg.h"

#include <cstring>

namespace {

ZVErrorCodeEnum asErrorCode(ZVFileCodeEnum code) { return static_cast<ZVErrorCodeEnum>(code); }

}  // namespace

ZVErrorCodeEnum ZVDebugMessage::fileOutput(const char* fileName, const char* text, const char*) {
  // Opening ends what was open before. Whatever comes of it shows when the text is written.
  if (!isOpen() || !fileName || std::strcmp(fileName, pFileName()) != 0) open(fileName, ZV_FILE_APPEND);
  return asErrorCode(writeString(text));
}

ZVErrorCodeEnum ZVDebugMessage::fastFileOutput(const char* text) { return asErrorCode(writeLine(text)); }
