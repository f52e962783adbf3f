// What a broken contract leaves on the error stream, as a pattern for EXPECT_DEATH.
#ifndef ZV_TESTS_ASSERTION_H
#define ZV_TESTS_ASSERTION_H

#include <cstring>
#include <string>

// The report of the condition with exactly this text, in this source file.
inline std::string assertionReport(const char* condition, const char* file, const char* line = "[0-9]+") {
  std::string pattern = "(^|\n)Assertion failed: ";
  for (const char* next = condition; *next; ++next) {
    if (std::strchr("()[]{}|*+?.^$\\", *next)) pattern += '\\';
    pattern += *next;
  }
  return pattern + ", file " + file + ", line " + line + "\n";
}

#endif
