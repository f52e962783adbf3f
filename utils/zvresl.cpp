#include "utils/zvresl.h"

#include "utils/zvredl.h"

ZV_DEFINE_FULL(ZVRectSList, ZVRectSListBase)

ZVRectSList::ZVRectSList(const ZVRectDList& source) : ZVRectSListBase(source) {}

void ZVRectSList::init() {}

void ZVRectSList::ZVRectSListdeepCopy(const ZVRectSList& other) { ZVSList::copyObject(&other); }

void ZVRectSList::ZVRectSListattributeCopy(const ZVRectSList& other) { ZVSList::copyAttributes(&other); }
