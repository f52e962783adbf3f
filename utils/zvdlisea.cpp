#include "utils/zvdlisea.h"

#include <algorithm>

ZV_DEFINE_NO_COPY(ZVDListSearch)

ZVDListSearch::ZVDListSearch(ZVDList* list) {
  if (list && list->length() == 1) listToSortedArray(list);
}

void ZVDListSearch::init(ZVDList* list) { listToSortedArray(list); }

void ZVDListSearch::empty() {
  pSearchArray(nullptr);
  length(0);
}

void ZVDListSearch::listToSortedArray(ZVDList* list) {
  empty();
  if (!list || list->length() == 0) return;
  if (!isSorted(list)) quickSort(list, 0);
  ZVDListCell** entry = pSearchArray(new (std::nothrow) ZVDListCell*[static_cast<size_t>(list->length())]);
  if (!entry) return;
  for (ZVDListCell* cell = list->pFirstCell(); cell; cell = cell->pNextCell()) *entry++ = cell;
  length(list->length());
}

ZVDListCell* ZVDListSearch::linearSearch(void* key) {
  for (int32_t probe = 0; probe < length(); ++probe) {
    if (virtualCompareKey(pSearchArray()[probe], key) == 0) return pSearchArray()[probe];
  }
  return nullptr;
}

ZVDListCell* ZVDListSearch::binarySearch(void* key) {
  int32_t low = 0;
  int32_t high = length() - 1;
  while (low <= high) {
    int32_t probe = low + (high - low) / 2;
    int32_t c = virtualCompareKey(pSearchArray()[probe], key);
    if (c == 0) return pSearchArray()[probe];
    if (c < 0) {
      low = probe + 1;
    } else {
      high = probe - 1;
    }
  }
  return nullptr;
}

// While comparisons give the same, the probes go on in that direction, by a tenth of the range for which the
// last estimate was made. Where they change, the next estimate is made, for the range that is left.
ZVDListCell* ZVDListSearch::retrieveSearch(void* key) {
  if (length() == 0) return nullptr;
  int32_t low = 0;
  int32_t high = length() - 1;
  int32_t step = (high - low) / 10;
  int32_t probe = estimate(key, low, high);
  int32_t c = virtualCompareKey(pSearchArray()[probe], key);
  int32_t previous = c;
  while (c != 0) {
    if (c < 0) {
      low = probe + 1;
    } else {
      high = probe - 1;
    }
    if (low > high) return nullptr;
    if (c != previous) {
      step = (high - low) / 10;
      probe = estimate(key, low, high);
    } else if (c < 0) {
      probe = low + std::min(step, high - low);
    } else {
      probe = high - std::min(step, high - low);
    }
    previous = c;
    c = virtualCompareKey(pSearchArray()[probe], key);
  }
  return pSearchArray()[probe];
}

int32_t ZVDListSearch::virtualEstimateKeyPosition(void*, int32_t low, int32_t high) {
  return static_cast<int32_t>((int64_t{low} + high) / 2);
}

int32_t ZVDListSearch::estimate(void* key, int32_t low, int32_t high) {
  return std::min(std::max(virtualEstimateKeyPosition(key, low, high), low), high);
}
