// Where the program tells what it does, a line each: a trace file that grows from run to run, or nowhere.
#ifndef NETDRAW_NETTRACE_H
#define NETDRAW_NETTRACE_H

#include <optional>
#include <string>

#include "utils/zvdebmsg.h"

class Trace {
 public:
  // Nowhere if the path is empty.
  explicit Trace(const std::string& path) {
    if (!path.empty()) file_.emplace(path.c_str());
  }

  // False if the trace file cannot be opened.
  bool isGood() const { return !file_ || file_->isOpen(); }
  void line(const std::string& text) {
    if (file_) file_->fastFileOutput(text.c_str());
  }

 private:
  std::optional<ZVDebugMessage> file_;
};

#endif
