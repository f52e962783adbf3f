// What the programs on lists share: the same objects in the same order on either side, in the words of both.
#ifndef BENCH_BENCHLST_H
#define BENCH_BENCHLST_H

#include <algorithm>
#include <list>
#include <memory>
#include <random>
#include <vector>

#include "utils/zvdlist.h"
#include "utils/zvslist.h"
#include "utils/zvvalue.h"

using StdList = std::list<ZVObject*>;

// Boxed numbers 0 to count - 1 in a random order.
inline const std::vector<std::unique_ptr<ZVInt>>& shuffledObjects(int64_t count) {
  static std::vector<std::unique_ptr<ZVInt>> objects;
  if (static_cast<int64_t>(objects.size()) != count) {
    objects.clear();
    for (int32_t i = 0; i < count; ++i) objects.push_back(std::make_unique<ZVInt>(i));
    std::shuffle(objects.begin(), objects.end(), std::mt19937(1));
  }
  return objects;
}

inline void append(StdList& list, ZVObject* object) { list.push_back(object); }
inline void append(ZVDList& list, ZVObject* object) { list.appendObject(object); }
inline void append(ZVSList& list, ZVObject* object) { list.appendObject(object); }

inline void clear(StdList& list) { list.clear(); }
inline void clear(ZVDList& list) { list.deleteAllCells(); }
inline void clear(ZVSList& list) { list.deleteAllCells(); }

template <class List>
void fill(List& list, int64_t count) {
  for (const auto& object : shuffledObjects(count)) append(list, object.get());
}

inline int32_t keyOf(const ZVObject* object) { return ZVInt::castDown(object)->value(); }

#endif
