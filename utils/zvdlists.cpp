#include "utils/zvdlists.h"

ZV_DEFINE_NO_COPY(ZVDListSort)

namespace {

ZVDListCell* sourceCell(const ZVDListCell* metaCell) { return ZVDListCell::castDown(metaCell->pObject()); }

}  // namespace

ZVDListCell* ZVDListSort::findIthElement(ZVDList* list, int32_t i) {
  if (!list || i < 1 || i > list->length()) return nullptr;
  std::unique_ptr<ZVDList> metaList = buildMetaList(list);
  return ithWrapper(metaList.get(), i);
}

std::unique_ptr<ZVDList> ZVDListSort::buildMetaList(ZVDList* list) {
  auto metaList = std::make_unique<ZVDList>();
  for (ZVDListCell* cell = list->pFirstCell(); cell; cell = cell->pNextCell()) metaList->appendObject(cell);
  return metaList;
}

ZVDListCell* ZVDListSort::ithWrapper(ZVDList* metaList, int32_t i) {
  ZVDList upper;
  while (true) {
    ZVDListCell* pivot = metaList->pCellInPosition((metaList->length() + 1) / 2);
    ZVDListCell* pivotCell = sourceCell(pivot);
    metaCompareAndSplitIntoTwoLists(metaList, pivot, &upper);
    int32_t beyond = i - metaList->length();
    if (beyond == 0) return pivotCell;
    if (beyond > 0) {
      metaList->deleteAllCells();
      metaList->appendList(&upper);
      i = beyond;
    } else {
      // The pivot is the largest one left, so it is not the wanted one.
      metaList->discardCell(pivot);
      upper.deleteAllCells();
    }
  }
}

void ZVDListSort::metaCompareAndSplitIntoTwoLists(ZVDList* metaList, ZVDListCell* pivot, ZVDList* upper) {
  ZVDListCell* pivotCell = sourceCell(pivot);
  for (ZVDListCell* cell = metaList->pFirstCell(); cell;) {
    ZVDListCell* next = cell->pNextCell();
    if (cell != pivot && virtualCompare(sourceCell(cell), pivotCell) > 0) {
      upper->appendCell(metaList->removeCell(cell));
    }
    cell = next;
  }
}
