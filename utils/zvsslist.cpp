#include "utils/zvsslist.h"

ZV_DEFINE_ABSTRACT(ZVSortedSList, ZVSortedSListBase)

ZVSListCell* ZVSortedSList::searchPreviousCell(const ZVSListCell* cell) const {
  Place place = placeOfCell(cell);
  return place.found ? place.previous : noPredecessor();
}

ZVSListCell* ZVSortedSList::searchPreviousObject(const ZVObject* object) const {
  if (!object) return noPredecessor();
  Place place = placeOfObject(object);
  return place.found ? place.previous : noPredecessor();
}

void ZVSortedSList::init() {}

void ZVSortedSList::ZVSortedSListdeepCopy(const ZVSortedSList& other) { ZVSList::copyObject(&other); }

void ZVSortedSList::ZVSortedSListattributeCopy(const ZVSortedSList& other) {
  ZVSList::copyAttributes(&other);
}
