// The one-link twin of ZVDList, with smaller cells, for callers that walk forward only. Most of its
// operations, and what holds for all of them, stand in ZVListBase; the rest is that of ZVDList except for
// what needs a cell's predecessor. That costs a walk from the head, so removal is also offered by naming it.
//
// A walk that removes keeps the predecessor at hand and uses removeNextCell.
//
// Cost beyond ZVListBase: removeNextCell and discardNextCell are constant. removeCell, discardCell,
// searchAndRemoveCell and transferListPart look for the predecessor: linear.
#ifndef ZV_ZVSLIST_H
#define ZV_ZVSLIST_H

#include <type_traits>

#include "utils/zvlstbas.h"
#include "utils/zvslistc.h"

class ZVDList;
class ZVSList;

using ZVSListBase = ZVListBase<ZVSList, ZVSListCell>;

class ZV_EXPORT ZVSList : public ZVSListBase {
 public:
  ZVSList() = default;
  // New cells around the same objects.
  explicit ZVSList(const ZVDList& source);
  // The same for the classes derived from it, where the conversion to a list of clones would match better.
  template <class Source>
  requires(std::is_convertible_v<const Source*, const ZVDList*>) explicit ZVSList(const Source& source)
      : ZVSList(static_cast<const ZVDList&>(source)) {}
  // Deletes the cells and leaves the objects.
  ~ZVSList() override;

  ZVSListCell* pFirstSListCell() const { return pFirstCell(); }
  ZVSListCell* pLastSListCell() const { return pLastCell(); }

  // The marker for a cell that is not in the list: all bits set. Null says that the cell is the first one.
  // Whatever takes a previous cell refuses the marker, so the result of a search can be passed on untested.
  static ZVSListCell* noPredecessor() { return ZVSListBase::noPredecessor(); }
  // The cell before cell, or before the first cell that holds object; the marker also for null.
  ZVSListCell* searchPreviousCell(const ZVSListCell* cell) const;
  ZVSListCell* searchPreviousObject(const ZVObject* object) const;

  // Unlinks the cell behind previous (null: the first one) and hands it to the caller. Null if there is none.
  ZVSListCell* removeNextCell(ZVSListCell* previous) {
    if (previous == noPredecessor()) return nullptr;
    ZVSListCell* cell = cellBehind(previous);
    return cell ? takeOut(previous, cell) : nullptr;
  }
  void discardNextCell(ZVSListCell* previous) { delete removeNextCell(previous); }
  // Null, and no change, if the cell or object is null or not in this list.
  ZVSListCell* removeCell(ZVSListCell* cell) { return removeNextCell(searchPreviousCell(cell)); }
  ZVSListCell* searchAndRemoveCell(ZVSListCell* cell) { return removeCell(cell); }
  ZVSListCell* searchAndRemoveObject(const ZVObject* object) {
    return removeNextCell(searchPreviousObject(object));
  }

  // Moves the run behind previous (null: from the first cell of source) up to last behind after. 0 if source
  // is null or this list, last is null or not behind previous, or previous is the marker.
  int transferNextListPart(ZVSListCell* after, ZVSList* source, ZVSListCell* previous, ZVSListCell* last);

  // Shares the objects, unlike the assignment of a ZVSList.
  const ZVSList& operator=(const ZVDList& source);
  // A list of clones of the objects, which belong to the caller.
  operator ZVDList() const;

  // The bytes of the list and its cells, without the objects.
  virtual int32_t sizeOf() const;

  // As in ZVDList.
  ZV_SHAPE_FULL(ZVSList)
  friend class ZVListBase<ZVSList, ZVSListCell>;

  void join(ZVSListCell* previous, ZVSListCell* next) {
    previous ? previous->pNextSListCell(next) : pFirstSListCell(next);
    if (!next) pLastSListCell(previous);
  }
  ZVSListCell* predecessorOf(const ZVSListCell* cell) const { return searchPreviousCell(cell); }

  // The predecessor of the first cell that matches, or the marker.
  template <class Match>
  ZVSListCell* searchPrevious(Match match) const;

  ZVSListCell* pFirstSListCell(ZVSListCell* cell) { return firstCell_ = cell; }
  ZVSListCell* pLastSListCell(ZVSListCell* cell) { return lastCell_ = cell; }
};

#endif
