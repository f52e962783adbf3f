#include "utils/zvptdl.h"

#include "utils/zvptsl.h"

ZV_DEFINE_FULL(ZVPointDList, ZVPointDListBase)

ZVPointDList::ZVPointDList(const ZVPointSList& source) : ZVPointDListBase(source) {}

void ZVPointDList::init() {}

void ZVPointDList::ZVPointDListdeepCopy(const ZVPointDList& other) { ZVDList::copyObject(&other); }

void ZVPointDList::ZVPointDListattributeCopy(const ZVPointDList& other) { ZVDList::copyAttributes(&other); }
