#include "utils/zvomlsrt.h"

#include "utils/zvdlistc.h"
#include "utils/zvomlobj.h"
#include "utils/zvslistc.h"

ZV_DEFINE_NO_COPY(ZVIUserFieldDListSort)
ZV_DEFINE_NO_COPY(ZVIUserFieldSListSort)

namespace {

int32_t compareUserFields(const ZVObject* object1, const ZVObject* object2) {
  const int32_t field1 = ZVOMLObject::castDown(object1)->iUserField();
  const int32_t field2 = ZVOMLObject::castDown(object2)->iUserField();
  return field1 < field2 ? -1 : field1 > field2;
}

}  // namespace

int32_t ZVIUserFieldDListSort::virtualCompare(ZVDListCell* cell1, ZVDListCell* cell2) {
  return compareUserFields(cell1->pObject(), cell2->pObject());
}

void ZVIUserFieldDListSort::virtualDebugOutputElement(ZVDListCell*) {}

int32_t ZVIUserFieldSListSort::virtualCompare(ZVSListCell* cell1, ZVSListCell* cell2) {
  return compareUserFields(cell1->pObject(), cell2->pObject());
}

void ZVIUserFieldSListSort::virtualDebugOutputElement(ZVSListCell*) {}
