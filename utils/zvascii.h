// Characters as the library sees them: letters and blanks are those of ASCII, whatever the locale says.
#ifndef ZV_ZVASCII_H
#define ZV_ZVASCII_H

#include <array>

namespace zvascii {

constexpr char toUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
// Blank, tab, line feed, vertical tab, form feed, carriage return.
constexpr bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// toUpper by one look-up, indexed by the character as an unsigned byte.
inline constexpr std::array<char, 256> UPPER = [] {
  std::array<char, 256> table{};
  for (int i = 0; i < 256; ++i) table[static_cast<unsigned>(i)] = toUpper(static_cast<char>(i));
  return table;
}();

}  // namespace zvascii

#endif
