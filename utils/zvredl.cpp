#include "utils/zvredl.h"

#include "utils/zvresl.h"

ZV_DEFINE_FULL(ZVRectDList, ZVRectDListBase)

ZVRectDList::ZVRectDList(const ZVRectSList& source) : ZVRectDListBase(source) {}

void ZVRectDList::init() {}

void ZVRectDList::ZVRectDListdeepCopy(const ZVRectDList& other) { ZVDList::copyObject(&other); }

void ZVRectDList::ZVRectDListattributeCopy(const ZVRectDList& other) { ZVDList::copyAttributes(&other); }
