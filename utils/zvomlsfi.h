// Iterates over the fields that apply to a syntax object: first every list of defaults, in order, then the
// object's own fields, so a reader that keeps the last value of a name gets the object's own.
//
// A field with a wildcard in its section path comes once for each section that defines it, each time bound
// to that section (definition, section and path), and is set back when its turns are over. An iteration
// that is broken off in between leaves the field bound.
#ifndef ZV_ZVOMLSFI_H
#define ZV_ZVOMLSFI_H

#include "utils/zvobject.h"
#include "utils/zvomlsyn.h"

class ZVOMLDefSection;

// The plain state of an iteration, on which the functions below work.
struct ZVOMLSyntaxFieldIterEncapsulation {
  ZVOMLSyntaxFieldList* current = nullptr;
  ZVOMLSyntaxDefaultList* nextDefaults = nullptr;
  ZVOMLSyntaxFieldList* ownFields = nullptr;  // still to come
  ZVOMLDefObjType* objType = nullptr;
  // Set while a wildcard field is being expanded.
  ZVOMLDefSection* section = nullptr;
  uint32_t wildcardPath = 0;
  uint32_t wildcardMask = 0;
};

extern "C" {
// A null object gives an exhausted iteration.
ZV_EXPORT void initSyntaxFieldIterEncapsulation(ZVOMLSyntaxFieldIterEncapsulation* state,
                                                const ZVOMLSyntaxObject* object);
// The current item, null when exhausted.
ZV_EXPORT ZVOMLSyntaxField* getFromSyntaxFieldIterEncapsulation(
    const ZVOMLSyntaxFieldIterEncapsulation* state);
ZV_EXPORT void incrementSyntaxFieldIterEncapsulation(ZVOMLSyntaxFieldIterEncapsulation* state);
// 1 while there is a current item.
ZV_EXPORT int checkListEndSyntaxFieldIterEncapsulation(const ZVOMLSyntaxFieldIterEncapsulation* state);
}

class ZV_EXPORT ZVOMLSyntaxFieldIter : public ZVObject {
 public:
  ZVOMLSyntaxFieldIter(const ZVOMLSyntaxObject* object = nullptr) { init(object); }

  // The steps that nearly all fields take, those with a definition, are made in line.
  ZVOMLSyntaxField* pField() const { return state_.current ? state_.current->pField : nullptr; }
  operator int() const { return state_.current != nullptr; }

  void init(const ZVOMLSyntaxObject* object) {
    ZVOMLSyntaxFieldList* first = object && !object->pDefaultList() ? object->pFieldList() : nullptr;
    if (first && first->pField->pDefField()) {
      state_ = {first, nullptr, nullptr, object->pDefObjType(), nullptr, 0, 0};
    } else {
      initSyntaxFieldIterEncapsulation(&state_, object);
    }
  }
  void operator++() {
    if (state_.current && !state_.section) {
      ZVOMLSyntaxFieldList* next = state_.current->pNext;
      if (next ? next->pField->pDefField() != nullptr : !state_.nextDefaults && !state_.ownFields) {
        state_.current = next;
        return;
      }
    }
    incrementSyntaxFieldIterEncapsulation(&state_);
  }
  void operator++(int) { ++*this; }

  ZV_SHAPE_NO_COPY(ZVOMLSyntaxFieldIter)
  const ZVOMLSyntaxFieldIterEncapsulation* pEncapsulation() const { return &state_; }

  ZVOMLSyntaxFieldIterEncapsulation state_;
};

#endif
