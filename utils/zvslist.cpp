#include "utils/zvslist.h"

#include "utils/zvdlist.h"

ZV_DEFINE_FULL(ZVSList, ZVSListBase)

ZVSList::ZVSList(const ZVDList& source) { appendObjectsOf(&source); }

ZVSList::~ZVSList() { deleteAllCells(); }

template <class Match>
ZVSListCell* ZVSList::searchPrevious(Match match) const {
  ZVSListCell* previous = nullptr;
  ZVSListCell* cell = pFirstCell();
  while (cell && !match(cell)) {
    previous = cell;
    cell = cell->pNextCell();
  }
  return cell ? previous : noPredecessor();
}

ZVSListCell* ZVSList::searchPreviousCell(const ZVSListCell* cell) const {
  return searchPrevious([cell](const ZVSListCell* here) { return here == cell; });
}

ZVSListCell* ZVSList::searchPreviousObject(const ZVObject* object) const {
  if (!object) return noPredecessor();
  return searchPrevious([object](const ZVSListCell* here) { return here->pObject() == object; });
}

int ZVSList::transferNextListPart(ZVSListCell* after, ZVSList* source, ZVSListCell* previous,
                                  ZVSListCell* last) {
  if (refuses(source) || previous == noPredecessor()) return 0;
  int32_t count = source->lengthOfRun(source->cellBehind(previous), last);
  if (count == 0) return 0;
  moveRun(after, source, previous, last, count);
  return 1;
}

const ZVSList& ZVSList::operator=(const ZVDList& source) {
  copyAllCells(&source);
  return *this;
}

ZVSList::operator ZVDList() const {
  ZVDList sharing(*this);
  return ZVDList(sharing, ZV_DEEP_COPY);
}

int32_t ZVSList::sizeOf() const {
  return static_cast<int32_t>(sizeof(ZVSList) + static_cast<size_t>(length()) * sizeof(ZVSListCell));
}

void ZVSList::init() {
  pFirstSListCell(nullptr);
  pLastSListCell(nullptr);
  length(0);
}

void ZVSList::ZVSListdeepCopy(const ZVSList& other) {
  ZVObject::copyObject(&other);
  copyAllCellsAndObjects(&other);
}

void ZVSList::ZVSListattributeCopy(const ZVSList& other) { ZVObject::copyAttributes(&other); }
