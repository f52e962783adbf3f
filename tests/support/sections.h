// Paths of sections, read digit by digit.
#ifndef ZV_TESTS_SECTIONS_H
#define ZV_TESTS_SECTIONS_H

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "utils/zvomldef.h"

inline int depthOf(uint32_t path) {
  int depth = 0;
  while (depth < 8 && path >> 4 * depth != 0) ++depth;
  return depth;
}

// Whether path has the digits of the pattern, where 15 stands for any.
inline bool matches(uint32_t path, uint32_t pattern) {
  bool equal = depthOf(path) == depthOf(pattern);
  for (; pattern != 0; path >>= 4, pattern >>= 4) {
    equal = equal && ((pattern & 15) == 15 || (pattern & 15) == (path & 15));
  }
  return equal;
}

// All sections below, depth first with the newest sibling first; checks their numbers.
template <class Definition>
std::vector<ZVOMLDefSection*> sectionsBelow(const Definition& parent, uint32_t path) {
  std::vector<ZVOMLDefSection*> result;
  uint32_t count = 0;
  for (ZVOMLDefSection* section = parent.pSectionList(); section; section = section->pNext()) ++count;
  for (ZVOMLDefSection* section = parent.pSectionList(); section; section = section->pNext()) {
    EXPECT_EQ(section->sectionPathIndex(), path | count-- << 4 * depthOf(path));
    result.push_back(section);
    const std::vector<ZVOMLDefSection*> below = sectionsBelow(*section, section->sectionPathIndex());
    result.insert(result.end(), below.begin(), below.end());
  }
  return result;
}

#endif
