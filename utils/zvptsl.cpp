#include "utils/zvptsl.h"

#include "utils/zvptdl.h"

ZV_DEFINE_FULL(ZVPointSList, ZVPointSListBase)

ZVPointSList::ZVPointSList(const ZVPointDList& source) : ZVPointSListBase(source) {}

void ZVPointSList::init() {}

void ZVPointSList::ZVPointSListdeepCopy(const ZVPointSList& other) { ZVSList::copyObject(&other); }

void ZVPointSList::ZVPointSListattributeCopy(const ZVPointSList& other) { ZVSList::copyAttributes(&other); }
