#include "utils/zvomlsoi.h"

void initSyntaxObjectIterEncapsulation(ZVOMLSyntaxObjectIterEncapsulation* state,
                                       const ZVOMLSyntaxObject* object) {
  state->current = object ? object->pObjectList() : nullptr;
}

ZVOMLSyntaxObject* getFromSyntaxObjectIterEncapsulation(const ZVOMLSyntaxObjectIterEncapsulation* state) {
  return state->current ? state->current->pObject : nullptr;
}

void incrementSyntaxObjectIterEncapsulation(ZVOMLSyntaxObjectIterEncapsulation* state) {
  if (state->current) state->current = state->current->pNext;
}

int checkListEndSyntaxObjectIterEncapsulation(const ZVOMLSyntaxObjectIterEncapsulation* state) {
  return state->current != nullptr;
}

ZV_DEFINE_NO_COPY(ZVOMLSyntaxObjectIter)
