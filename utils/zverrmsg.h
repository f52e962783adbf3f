// The texts of the library's messages, and a message that shows itself to the user.
#ifndef ZV_ZVERRMSG_H
#define ZV_ZVERRMSG_H

#include "utils/zvtext.h"

class ZV_EXPORT ZVErrorMsg : public ZVText {
 public:
  ZVErrorMsg(const char* text = nullptr) : ZVText(text) {}

  // Shows the text and blocks until the user has answered. No text shows as an empty notice.
  void display() const;

  ZV_SHAPE_FULL(ZVErrorMsg)
};

extern "C" {

// Shows text as a ZVErrorMsg does.
ZV_EXPORT void displayErrorMessage(const char* text);

// The text of a message, a format of printf where it has placeholders; "" for an id that has none.
ZV_EXPORT const char* getStringResource(int32_t id);

}  // extern "C"

#endif
