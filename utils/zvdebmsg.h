// A trace for the layers above: a text file that is open from the moment the object exists and is only ever
// appended to, so that it grows from run to run.
//
// A failure to open is told by isOpen and error alone; what is written then fails, and fileOutput tries
// again. A copy is that of a text file: what it copies is open, so it is closed until its first fileOutput.
#ifndef ZV_ZVDEBMSG_H
#define ZV_ZVDEBMSG_H

#include "utils/zvtextfi.h"

class ZV_EXPORT ZVDebugMessage : public ZVTextFile {
 public:
  ZVDebugMessage() : ZVDebugMessage("zvs.trc") {}
  ZVDebugMessage(const char* fileName) { ZVTextFile::open(fileName, ZV_FILE_APPEND); }

  // Writes the text as it stands. The trace moves to another file when the name differs from that of the
  // present one, as given and not as resolved, and is opened again if it is not open. The mode is not looked
  // at. Gives the ZVFileCodeEnum of the write.
  ZVErrorCodeEnum fileOutput(const char* fileName, const char* text, const char* mode);
  // Writes the text and a line end where the trace is now. Gives the ZVFileCodeEnum of the write.
  ZVErrorCodeEnum fastFileOutput(const char* text);
};

#endif
