// Iterates over the sub-objects of a syntax object, in reading order.
#ifndef ZV_ZVOMLSOI_H
#define ZV_ZVOMLSOI_H

#include "utils/zvobject.h"
#include "utils/zvomlsyn.h"

// The plain state of an iteration, on which the functions below work.
struct ZVOMLSyntaxObjectIterEncapsulation {
  ZVOMLSyntaxObjectList* current = nullptr;
};

extern "C" {
// A null object gives an exhausted iteration.
ZV_EXPORT void initSyntaxObjectIterEncapsulation(ZVOMLSyntaxObjectIterEncapsulation* state,
                                                 const ZVOMLSyntaxObject* object);
// The current item, null when exhausted.
ZV_EXPORT ZVOMLSyntaxObject* getFromSyntaxObjectIterEncapsulation(
    const ZVOMLSyntaxObjectIterEncapsulation* state);
ZV_EXPORT void incrementSyntaxObjectIterEncapsulation(ZVOMLSyntaxObjectIterEncapsulation* state);
// 1 while there is a current item.
ZV_EXPORT int checkListEndSyntaxObjectIterEncapsulation(const ZVOMLSyntaxObjectIterEncapsulation* state);
}

class ZV_EXPORT ZVOMLSyntaxObjectIter : public ZVObject {
 public:
  ZVOMLSyntaxObjectIter(const ZVOMLSyntaxObject* object = nullptr) { init(object); }

  ZVOMLSyntaxObject* pObject() const { return getFromSyntaxObjectIterEncapsulation(pEncapsulation()); }
  operator int() const { return checkListEndSyntaxObjectIterEncapsulation(pEncapsulation()); }

  void init(const ZVOMLSyntaxObject* object) { initSyntaxObjectIterEncapsulation(&state_, object); }
  void operator++() { incrementSyntaxObjectIterEncapsulation(&state_); }
  void operator++(int) { incrementSyntaxObjectIterEncapsulation(&state_); }

  ZV_SHAPE_NO_COPY(ZVOMLSyntaxObjectIter)
  const ZVOMLSyntaxObjectIterEncapsulation* pEncapsulation() const { return &state_; }

  ZVOMLSyntaxObjectIterEncapsulation state_;
};

#endif
