// Where the program tells what it does, a line each: a trace file that grows from run to run, or nowhere.
#ifndef NETDRAW_NETTRACE_H
#define NETDRAW_NETTRACE_H

#include <memory>
#include <string>

#include "utils/zvdebmsg.h"

class Trace {
 public:
  // Nowhere if the path is empty.
  explicit Trace(const std::string& path) {
    if (!path.empty()) file_ = std::make_unique<ZVDebugMessage>(path.c_str());
  }

  // False if the trace file cannot be opened or a line was lost.
  bool isGood() const { return !file_ || (file_->isOpen() && !file_->error()); }
  void line(const std::string& text) {
    if (file_) file_->fastFileOutput(text.c_str());
  }

 private:
  std::unique_ptr<ZVDebugMessage> file_;
};

#endif
