// Counts as messages have them.
#ifndef NETDRAW_NETWORDS_H
#define NETDRAW_NETWORDS_H

#include <concepts>
#include <string>

// "1 node", "2 nodes", for a noun whose plural ends in a plain s.
template <std::integral Count>
std::string counted(Count count, const std::string& noun) {
  return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

#endif
