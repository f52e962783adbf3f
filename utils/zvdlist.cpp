#include "utils/zvdlist.h"

#include <initializer_list>

#include "utils/zvslist.h"
#include "utils/zvutdlso.h"

ZV_DEFINE_FULL(ZVDList, ZVDListBase)

ZVDList::ZVDList(const ZVSList& source) { appendObjectsOf(&source); }

ZVDList::~ZVDList() { deleteAllCells(); }

int ZVDList::compareUnordered(const ZVDList* other) const {
  if (!other || other->length() != length()) return 0;
  ZVDList mine;
  ZVDList theirs;
  mine.copyAllCells(this);
  theirs.copyAllCells(other);
  ZVMemAddressDListSort sort;
  sort.quickSort(&mine, 0);
  sort.quickSort(&theirs, 0);
  return mine.compare(&theirs);
}

void ZVDList::swapPosition(ZVDListCell* cell1, ZVDListCell* cell2) {
  if (cell1 == cell2) return;
  ZVDListCell* previous1 = cell1->pPreviousCell();
  ZVDListCell* previous2 = cell2->pPreviousCell();
  if (previous1 == cell2) {
    insertCell(cell1, removeCell(cell2));
  } else if (previous2 == cell1) {
    insertCell(cell2, removeCell(cell1));
  } else {
    insertCell(previous2, removeCell(cell1));
    insertCell(previous1, removeCell(cell2));
  }
}

int ZVDList::merge(ZVDList* list1, ZVDList* list2) {
  if (refuses(list1) || refuses(list2)) return 0;
  while (list1->pFirstCell() || list2->pFirstCell()) {
    for (ZVDList* list : {list1, list2}) {
      if (list->pFirstCell()) appendCell(list->removeCell(list->pFirstCell()));
    }
  }
  return 1;
}

const ZVDList& ZVDList::operator=(const ZVSList& source) {
  copyAllCells(&source);
  return *this;
}

ZVDList::operator ZVSList() const {
  ZVSList sharing(*this);
  return ZVSList(sharing, ZV_DEEP_COPY);
}

int32_t ZVDList::sizeOf() const {
  return static_cast<int32_t>(sizeof(ZVDList) + static_cast<size_t>(length()) * sizeof(ZVDListCell));
}

void ZVDList::init() {
  pFirstDListCell(nullptr);
  pLastDListCell(nullptr);
  length(0);
}

void ZVDList::ZVDListdeepCopy(const ZVDList& other) {
  ZVObject::copyObject(&other);
  copyAllCellsAndObjects(&other);
}

void ZVDList::ZVDListattributeCopy(const ZVDList& other) { ZVObject::copyAttributes(&other); }
