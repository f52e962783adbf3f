#include "examples/netdraw/netnotes.h"

#include "examples/netdraw/netmodel.h"
#include "netkeys.h"
#include "utils/zvomlsyn.h"

void NetNotes::vWriteContents(ZVObject* top) {
  forEach<ZVText>(static_cast<NetGraph*>(top)->notes, [&](ZVText* note) {
    writeObjectStart("note", note, 1);
    writeOpeningBracket();
    writeStringAttribute("text", note->pString());
    writeClosingBracket();
  });
}

ZVObject* NetNotes::vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject*, ZVObject* owner) {
  if (object->objTypeIDIndex() != ZV_XKEY_OI_NOTE) return nullptr;
  return static_cast<NetGraph*>(owner)->addNote("");
}

int NetNotes::vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVObject* target) {
  if (!object || object->objTypeIDIndex() != ZV_XKEY_OI_NOTE) return 0;
  ZVText::castDown(target)->pString(field->stringValue());
  return 1;
}
