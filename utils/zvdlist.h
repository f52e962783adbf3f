// The library's standard container: a list of cells linked in both directions. Most of its operations, and
// what holds for all of them, stand in ZVListBase.
//
// No list operation is virtual. A derived container redeclares what it must change and hides the rest; an
// operation reached through a ZVDList pointer always does what it does here.
//
// While iterating: inserting never disturbs an iterator, and moved cells take it along to their new list. To
// remove a cell, read pCell, step the iterator, then remove.
//
// Cost beyond ZVListBase: removeCell, discardCell and swapPosition are constant, merge is linear.
#ifndef ZV_ZVDLIST_H
#define ZV_ZVDLIST_H

#include <type_traits>

#include "utils/zvdlistc.h"
#include "utils/zvlstbas.h"

class ZVDList;
class ZVSList;

using ZVDListBase = ZVListBase<ZVDList, ZVDListCell>;

class ZV_EXPORT ZVDList : public ZVDListBase {
 public:
  ZVDList() = default;
  // New cells around the same objects.
  explicit ZVDList(const ZVSList& source);
  // The same for the classes derived from it, where the conversion to a list of clones would match better.
  template <class Source>
  requires(std::is_convertible_v<const Source*, const ZVSList*>) explicit ZVDList(const Source& source)
      : ZVDList(static_cast<const ZVSList&>(source)) {}
  // Deletes the cells and leaves the objects.
  ~ZVDList() override;

  ZVDListCell* pFirstDListCell() const { return pFirstCell(); }
  ZVDListCell* pLastDListCell() const { return pLastCell(); }
  // 1 if both lists hold the same objects equally often; 0 for null. Sorts copies of both.
  int compareUnordered(const ZVDList* other) const;

  // Unlinks cell and hands it to the caller; null for null. REQUIRES: cell is null or in this list.
  ZVDListCell* removeCell(ZVDListCell* cell) { return cell ? takeOut(cell->pPreviousCell(), cell) : nullptr; }
  // Null, and no change, if the cell or object is not in this list.
  ZVDListCell* searchAndRemoveCell(ZVDListCell* cell) { return removeCell(searchCell(cell)); }
  ZVDListCell* searchAndRemoveObject(const ZVObject* object) { return removeCell(searchObject(object)); }

  // Exchanges the places of two cells of this list.
  void swapPosition(ZVDListCell* cell1, ZVDListCell* cell2);
  // Moves all cells of both lists behind those of this one, taking from each in turn; nothing is compared.
  // 0 if one is null or this list. REQUIRES: list1 and list2 are different.
  int merge(ZVDList* list1, ZVDList* list2);

  // Shares the objects, unlike the assignment of a ZVDList.
  const ZVDList& operator=(const ZVSList& source);
  // A list of clones of the objects, which belong to the caller.
  operator ZVSList() const;

  // The bytes of the list and its cells, without the objects.
  virtual int32_t sizeOf() const;

  // A deep copy deletes the cells and objects of the target, then holds clones of the source's objects, which
  // belong to the holder of the copy. An attribute copy touches no cell: a new copy is empty.
  ZV_SHAPE_FULL(ZVDList)
  friend class ZVListBase<ZVDList, ZVDListCell>;
  friend class ZVBinHeap;
  friend class ZVBinTree;

  using ZVDListBase::lengthOfRun;

  void join(ZVDListCell* previous, ZVDListCell* next) {
    previous ? previous->pNextDListCell(next) : pFirstDListCell(next);
    next ? next->pPrevDListCell(previous) : pLastDListCell(previous);
  }
  ZVDListCell* predecessorOf(const ZVDListCell* cell) const { return cell->pPreviousCell(); }

  ZVDListCell* pFirstDListCell(ZVDListCell* cell) { return firstCell_ = cell; }
  ZVDListCell* pLastDListCell(ZVDListCell* cell) { return lastCell_ = cell; }
};

#endif
