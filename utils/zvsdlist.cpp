#include "utils/zvsdlist.h"

ZV_DEFINE_ABSTRACT(ZVSortedDList, ZVSortedDListBase)

void ZVSortedDList::init() {}

void ZVSortedDList::ZVSortedDListdeepCopy(const ZVSortedDList& other) { ZVDList::copyObject(&other); }

void ZVSortedDList::ZVSortedDListattributeCopy(const ZVSortedDList& other) {
  ZVDList::copyAttributes(&other);
}
