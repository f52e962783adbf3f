// Notes on a drawing in its file. A drawing holds them; this companion of the file reads and writes them, so
// that the file itself knows nothing of notes.
#ifndef NETDRAW_NETNOTES_H
#define NETDRAW_NETNOTES_H

#include "utils/zvomlext.h"

class NetNotes : public ZVOMLExtension {
 public:
  using ZVOMLExtension::ZVOMLExtension;

  void vWriteContents(ZVObject* top) override;
  // Null for what is no note.
  ZVObject* vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax,
                          ZVObject* owner) override;
  // 0 for what is no field of a note.
  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVObject* target) override;
};

#endif
