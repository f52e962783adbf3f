#include "utils/zvdebmsg.h"

#include <cstring>

#include "utils/zvtext.h"

namespace {

ZVErrorCodeEnum asErrorCode(ZVFileCodeEnum code) { return static_cast<ZVErrorCodeEnum>(code); }

}  // namespace

ZVErrorCodeEnum ZVDebugMessage::fileOutput(const char* fileName, const char* text, const char*) {
  if (isOpen() && fileName && std::strcmp(fileName, pFileName()) == 0) return asErrorCode(writeString(text));
  // Opening ends what was open before, and frees its name, which may be the text. Whatever comes of it shows
  // when the text is written.
  const ZVInternalText kept(text);
  open(fileName, ZV_FILE_APPEND);
  return asErrorCode(writeString(kept.pString()));
}

ZVErrorCodeEnum ZVDebugMessage::fastFileOutput(const char* text) { return asErrorCode(writeLine(text)); }
