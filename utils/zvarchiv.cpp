#include "utils/zvarchiv.h"

#include <istream>
#include <ostream>

CArchive::~CArchive() = default;

int ZVStreamArchive::ReadString(CString& line) {
  std::string& text = line.text_;
  if (!input_ || !std::getline(*input_, text)) {
    text.clear();
    return 0;
  }
  // The second half of a line end LF CR begins the next line.
  if (!text.empty() && text.front() == '\r') text.erase(0, 1);
  if (!text.empty() && text.back() == '\r') text.pop_back();
  return 1;
}

void ZVStreamArchive::WriteString(const char* text) {
  if (output_ && text) *output_ << text;
}

void ZVStreamArchive::Flush() {
  if (output_) output_->flush();
}
