// What the sorts of both list families share. A caller derives from ZVDListSort or ZVSListSort and supplies
// one comparison of two cells.
//
// A sort relinks the cells of a list in place: it copies no cell, touches no object and allocates nothing.
// All three algorithms are stable. An inconsistent comparison gives an undefined order, but a sort still ends
// and loses no cell.
//
// A sort object serves one sort at a time. Lists that are in fact trees or heaps must not be sorted.
//
// Cost: quickSort and mergeSort n log n comparisons (quickSort turns to merging where bad pivots would let it
// go deep), bubbleSort quadratic, the others one pass. The stack holds at most 31 levels of quicksort and the
// logarithm of the length in levels of merging. A list too long for the processor's caches is sorted twice as
// fast by mergeSort.
#ifndef ZV_ZVLSTSOR_H
#define ZV_ZVLSTSOR_H

#include <cstdint>

#include "utils/zvobject.h"

template <class List, class Cell>
class ZVListSortBase : public ZVObject {
 public:
  ZVListSortBase(const ZVListSortBase&) = delete;
  ZVListSortBase& operator=(const ZVListSortBase&) = delete;

  // 1 if no cell compares after its successor.
  int isSorted(List* list);
  // Of several equal extremes the one nearest the head; null for an empty list.
  Cell* findSmallestElement(List* list);
  Cell* findLargestElement(List* list);

  // With checkSorted a sorted list is left alone, and the result is 1 if the list was not sorted. Without it
  // the result means nothing. A null list changes nothing.
  int32_t quickSort(List* list, int checkSorted);
  // 1 if some cell moved in front of another, 0 also for null.
  int32_t mergeSort(List* list);
  int32_t bubbleSort(List* list);

  // Does nothing; a hook for the layers above.
  void debugOutputList(List*) {}

 protected:
  ZVListSortBase() = default;

  // Negative if cell1 sorts before cell2, 0 if they tie, positive if after.
  virtual int32_t virtualCompare(Cell* cell1, Cell* cell2) = 0;
  virtual void virtualDebugOutputElement(Cell* cell) = 0;

 private:
  static constexpr int32_t DEEPEST_QUICKSORT = 30;
  static constexpr int32_t LONGEST_BUBBLESORT = 5;

  int32_t recursionDepth() const { return recursionDepth_; }
  int32_t recursionDepth(int32_t depth) { return recursionDepth_ = depth; }
  int32_t changed() const { return changed_; }
  int32_t changed(int32_t flag) { return changed_ = flag; }

  bool isBefore(Cell* cell1, Cell* cell2) { return virtualCompare(cell1, cell2) < 0; }
  bool isAfter(Cell* cell1, Cell* cell2) { return virtualCompare(cell1, cell2) > 0; }

  // Follows the cell in position (length + 1) / 2 of a list that grows at its end. That spares quicksort the
  // walk to it, which in a long list takes as long as a good part of the split.
  class MiddleCell {
   public:
    Cell* cell() const { return cell_; }
    void appended(Cell* cell) {
      ++length_;
      if (length_ == 1) {
        cell_ = cell;
      } else if (length_ % 2 == 1) {
        cell_ = cell_->pNextCell();
      }
    }

   private:
    Cell* cell_ = nullptr;
    int32_t length_ = 0;
  };
  struct Split {
    MiddleCell list;
    MiddleCell upper;
  };

  // middle is the cell in position (length + 1) / 2.
  void qsortWrapper(List* list, Cell* middle);
  // The middle one, by comparison, of the first, the middle and the last cell.
  Cell* medianOfThree(List* list, Cell* middle);
  // Moves the cells that belong behind pivot to the end of upper, and takes pivot out of list. A cell that
  // ties with the pivot stays on its side of it, so no cell ever crosses one that it ties with.
  Split compareAndSplitIntoTwoLists(List* list, Cell* pivot, List* upper);
  // Sorts what quicksort at its deepest level has split.
  void sortAtDepthLimit(List* list);

  void msortWrapper(List* list);
  // Merges two sorted lists into list; of a tie the cell of list comes first.
  void mergeSortedLists(List* list, List* other);

  int32_t recursionDepth_ = 0;
  int32_t changed_ = 0;  // 1 if the last operation moved a cell
};

template <class List, class Cell>
int ZVListSortBase<List, Cell>::isSorted(List* list) {
  Cell* cell = list->pFirstCell();
  if (!cell) return 1;
  while (Cell* next = cell->pNextCell()) {
    if (isAfter(cell, next)) return 0;
    cell = next;
  }
  return 1;
}

template <class List, class Cell>
Cell* ZVListSortBase<List, Cell>::findSmallestElement(List* list) {
  Cell* smallest = list->pFirstCell();
  for (Cell* cell = smallest; cell; cell = cell->pNextCell()) {
    if (isBefore(cell, smallest)) smallest = cell;
  }
  return smallest;
}

template <class List, class Cell>
Cell* ZVListSortBase<List, Cell>::findLargestElement(List* list) {
  Cell* largest = list->pFirstCell();
  for (Cell* cell = largest; cell; cell = cell->pNextCell()) {
    if (isAfter(cell, largest)) largest = cell;
  }
  return largest;
}

template <class List, class Cell>
int32_t ZVListSortBase<List, Cell>::quickSort(List* list, int checkSorted) {
  recursionDepth(0);
  if (!list) return changed();
  if (checkSorted && isSorted(list)) return changed(0);
  qsortWrapper(list, list->pCellInPosition((list->length() + 1) / 2));
  return checkSorted ? changed(1) : changed();
}

// Quicksort by splitting the list in two at the median of three.
template <class List, class Cell>
void ZVListSortBase<List, Cell>::qsortWrapper(List* list, Cell* middle) {
  if (list->length() <= 1) return;
  int32_t depth = recursionDepth(recursionDepth() + 1);
  Cell* pivot = medianOfThree(list, middle);
  List upper;
  Split split = compareAndSplitIntoTwoLists(list, pivot, &upper);
  if (depth <= DEEPEST_QUICKSORT) {
    qsortWrapper(list, split.list.cell());
    qsortWrapper(&upper, split.upper.cell());
  } else {
    sortAtDepthLimit(list);
    sortAtDepthLimit(&upper);
  }
  list->appendCell(pivot);
  list->appendList(&upper);
  recursionDepth(recursionDepth() - 1);
}

template <class List, class Cell>
Cell* ZVListSortBase<List, Cell>::medianOfThree(List* list, Cell* middle) {
  Cell* first = list->pFirstCell();
  Cell* last = list->pLastCell();
  if (isBefore(last, middle)) {
    if (!isBefore(first, middle)) return middle;
    return isBefore(last, first) ? first : last;
  }
  if (!isBefore(middle, first)) return middle;
  return isBefore(last, first) ? last : first;
}

template <class List, class Cell>
auto ZVListSortBase<List, Cell>::compareAndSplitIntoTwoLists(List* list, Cell* pivot, List* upper) -> Split {
  Split split;
  Cell* previous = nullptr;
  // Cells in front of the pivot move if they compare above this, cells behind it from 0 on.
  int32_t staysUpTo = 0;
  for (Cell* cell = list->pFirstCell(); cell;) {
    Cell* next = cell->pNextCell();
    if (cell == pivot) {
      list->takeOut(previous, cell);
      staysUpTo = -1;
    } else if (virtualCompare(cell, pivot) > staysUpTo) {
      upper->appendCell(list->takeOut(previous, cell));
      split.upper.appended(cell);
    } else {
      previous = cell;
      split.list.appended(cell);
    }
    cell = next;
  }
  return split;
}

template <class List, class Cell>
void ZVListSortBase<List, Cell>::sortAtDepthLimit(List* list) {
  if (list->length() <= LONGEST_BUBBLESORT) {
    bubbleSort(list);
  } else {
    msortWrapper(list);
  }
}

template <class List, class Cell>
int32_t ZVListSortBase<List, Cell>::mergeSort(List* list) {
  changed(0);
  if (list) msortWrapper(list);
  return changed();
}

template <class List, class Cell>
void ZVListSortBase<List, Cell>::msortWrapper(List* list) {
  if (list->length() < 2) return;
  int32_t half = (list->length() + 1) / 2;
  List upper;
  upper.moveRun(nullptr, list, list->pCellInPosition(half), list->pLastCell(), list->length() - half);
  msortWrapper(list);
  msortWrapper(&upper);
  mergeSortedLists(list, &upper);
}

template <class List, class Cell>
void ZVListSortBase<List, Cell>::mergeSortedLists(List* list, List* other) {
  Cell* previous = nullptr;
  Cell* a = list->pFirstCell();
  Cell* b = other->pFirstCell();
  while (a && b) {
    if (isAfter(a, b)) {
      changed(1);
      previous = list->insertCell(previous, other->takeOut(nullptr, b));
      b = other->pFirstCell();
    } else {
      previous = a;
      a = a->pNextCell();
    }
  }
  list->appendList(other);
}

template <class List, class Cell>
int32_t ZVListSortBase<List, Cell>::bubbleSort(List* list) {
  changed(0);
  if (!list) return changed();
  bool swapped = true;
  for (int32_t n = list->length() - 1; n > 0 && swapped; --n) {
    swapped = false;
    Cell* previous = nullptr;
    Cell* a = list->pFirstCell();
    for (int32_t i = 0; i < n; ++i) {
      Cell* b = a->pNextCell();
      if (isAfter(a, b)) {
        list->insertCell(b, list->takeOut(previous, a));
        previous = b;
        swapped = true;
      } else {
        previous = a;
        a = b;
      }
    }
    if (swapped) changed(1);
  }
  return changed();
}

#endif
