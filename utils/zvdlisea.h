// Looks up cells of a sorted list by a key: linear, binary, or guided by an estimate of where the key lies.
//
// Binding a list sorts that list in place, if it is not sorted yet, and takes a snapshot of its cells in an
// array. The array refers to the cells and does not own them; it does not follow later changes to the list.
// REQUIRES of every search: the list has not been changed since init.
//
// A derived class supplies the comparison of two cells and that of a cell with a key. A key is opaque here.
//
// Cost: init one test for order, a sort if the list needs it, and one walk; linearSearch linear, binarySearch
// logarithmic, retrieveSearch few probes if the estimates are good and at most one for each cell.
#ifndef ZV_ZVDLISEA_H
#define ZV_ZVDLISEA_H

#include "utils/zvdlists.h"

class ZV_EXPORT ZVDListSearch : public ZVDListSort {
 public:
  // Binds a list of at most one cell, which needs no comparison. To bind a longer one, the constructor of the
  // concrete class calls init: until then the search stays empty.
  ZVDListSearch(ZVDList* list = nullptr);

  // Binds list; a null or empty list leaves the search empty. So does lack of memory for the array.
  void init(ZVDList* list);
  void empty();

  // A cell that matches key, or null: the first one, or whichever the search meets first.
  ZVDListCell* linearSearch(void* key);
  ZVDListCell* binarySearch(void* key);
  ZVDListCell* retrieveSearch(void* key);

 protected:
  // The index between low and high where key may lie. An index beyond them counts as the nearer of the two.
  virtual int32_t virtualEstimateKeyPosition(void* key, int32_t low, int32_t high);
  // Negative if cell sorts before key, 0 if it matches, positive if after. What gives only -1, 0 and 1 lets
  // retrieveSearch go on in steps; other differences make it estimate at nearly every probe.
  virtual int32_t virtualCompareKey(ZVDListCell* cell, void* key) = 0;

  // The cells in sorted order; null when empty.
  ZVDListCell** pSearchArray() const { return searchArray_.get(); }
  int32_t length() const { return length_; }

  void debugOutputList(ZVDList*) {}

  ZV_SHAPE_NO_COPY(ZVDListSearch)
  ZVDListCell** pSearchArray(ZVDListCell** array) {
    searchArray_.reset(array);
    return array;
  }
  int32_t length(int32_t newLength) { return length_ = newLength; }

  void listToSortedArray(ZVDList* list);
  // What virtualEstimateKeyPosition says, within the range.
  int32_t estimate(void* key, int32_t low, int32_t high);

  std::unique_ptr<ZVDListCell*[]> searchArray_;
  int32_t length_ = 0;
};

#endif
