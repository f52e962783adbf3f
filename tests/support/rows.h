// The definition table of a grammar, written as one text.
#ifndef ZV_TESTS_ROWS_H
#define ZV_TESTS_ROWS_H

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "utils/zvomlsta.h"

// The table of the rows that stand in a text, with an end mark between them.
class Rows {
 public:
  explicit Rows(const std::string& text, char end = ';') {
    std::istringstream in(text);
    for (std::string row; std::getline(in, row, end);) rows_.push_back(row);
    for (const std::string& row : rows_) table_.push_back(row.c_str());
    table_.push_back(nullptr);
  }
  const char* const* table() const { return table_.data(); }

 private:
  std::vector<std::string> rows_;
  std::vector<const char*> table_;
};

template <class Type>
std::unique_ptr<ZVOMLStatic> compileRows(const Type* types, const char* const* sections,
                                         const ZVOMLStaticVEStruct* values, const std::string& text,
                                         int32_t poolSize = 64) {
  return std::make_unique<ZVOMLStatic>(types, sections, values, Rows(text).table(), poolSize, poolSize,
                                       poolSize, poolSize, poolSize, poolSize);
}

#endif
