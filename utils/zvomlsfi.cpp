#include "utils/zvomlsfi.h"

#include "utils/zvomldef.h"

namespace {

// Binds the current field to the first section, from section on, that matches the wildcard path and defines
// the field. Gives false if there is none.
bool bindToSection(ZVOMLSyntaxFieldIterEncapsulation* state, ZVOMLDefSection* section) {
  ZVOMLSyntaxField* field = state->current->pField;
  for (; section;
       section = state->objType->findNextSectionPath(state->wildcardPath, state->wildcardMask, section)) {
    if (ZVOMLDefField* definition = section->findField(field->fieldIDIndex())) {
      field->pDefField(definition);
      field->sectionIDIndex(section->sectionIDIndex());
      field->sectionPathIndex(section->sectionPathIndex());
      state->section = section;
      return true;
    }
  }
  return false;
}

bool startExpansion(ZVOMLSyntaxFieldIterEncapsulation* state) {
  uint32_t path = state->current->pField->sectionPathIndex();
  if (!state->objType || path == 0) return false;
  state->wildcardPath = path;
  state->wildcardMask = ZVOMLDefObjType::wildCardMask(path);
  return bindToSection(state, state->objType->findFirstSectionPath(path, state->wildcardMask));
}

// Makes sure that the current cell, if any, holds a field to deliver, going on through the lists until it
// does.
void settle(ZVOMLSyntaxFieldIterEncapsulation* state) {
  for (;;) {
    while (!state->current) {
      if (state->nextDefaults) {
        state->current = state->nextDefaults->pFieldList;
        state->nextDefaults = state->nextDefaults->pNext;
      } else if (state->ownFields) {
        state->current = state->ownFields;
        state->ownFields = nullptr;
      } else {
        return;
      }
    }
    ZVOMLSyntaxField* field = state->current->pField;
    if (field->pDefField() || field->inUncheckedSection() || startExpansion(state)) return;
    state->current = state->current->pNext;
  }
}

}  // namespace

void initSyntaxFieldIterEncapsulation(ZVOMLSyntaxFieldIterEncapsulation* state,
                                      const ZVOMLSyntaxObject* object) {
  *state = {};
  if (!object) return;
  state->nextDefaults = object->pDefaultList();
  state->ownFields = object->pFieldList();
  state->objType = object->pDefObjType();
  settle(state);
}

ZVOMLSyntaxField* getFromSyntaxFieldIterEncapsulation(const ZVOMLSyntaxFieldIterEncapsulation* state) {
  return state->current ? state->current->pField : nullptr;
}

void incrementSyntaxFieldIterEncapsulation(ZVOMLSyntaxFieldIterEncapsulation* state) {
  if (!state->current) return;
  if (state->section) {
    if (bindToSection(state, state->objType->findNextSectionPath(state->wildcardPath, state->wildcardMask,
                                                                 state->section))) {
      return;
    }
    ZVOMLSyntaxField* field = state->current->pField;
    field->pDefField(nullptr);
    field->sectionPathIndex(state->wildcardPath);
    state->section = nullptr;
  }
  state->current = state->current->pNext;
  settle(state);
}

int checkListEndSyntaxFieldIterEncapsulation(const ZVOMLSyntaxFieldIterEncapsulation* state) {
  return state->current != nullptr;
}

ZV_DEFINE_NO_COPY(ZVOMLSyntaxFieldIter)
