// The tables of shared colours and shapes in the file of a drawing. As with notes, this companion of the file
// reads and writes them.
#ifndef NETDRAW_NETRESRC_H
#define NETDRAW_NETRESRC_H

#include <cstdint>

#include "utils/zvcolor.h"
#include "utils/zvomlext.h"
#include "utils/zvshape.h"

class NetResources : public ZVOMLExtension {
 public:
  using ZVOMLExtension::ZVOMLExtension;

  void vWriteContents(ZVObject* top) override;
  // Reports colours and shapes that are none, and objects that name what no table has. Always 1, so that the
  // other objects are checked as well.
  int vCheckObject(ZVOMLSyntaxObject* object) override;
  // The shared resource of an entry, null for anything else. Entries are whole before any field is read, so
  // a table may stand behind the objects that refer to it.
  ZVObject* vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax,
                          ZVObject* owner) override;
  // 1 for the fields of entries, which have been read by then.
  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVObject* target) override;

 private:
  void writeColor(const ZVColor& color);
  void writeShape(const ZVShape& shape);
  void countEntries(ZVOMLSyntaxObject* graph);
  void checkOutline(ZVOMLSyntaxObject* outline);
  // A field of an object of that type.
  void checkField(ZVOMLSyntaxField* field, int32_t type);
  void checkIndex(ZVOMLSyntaxField* field, int32_t entries, const char* what);

  // Entries of the file that is checked.
  int32_t colors_ = 0;
  int32_t shapes_ = 0;
};

#endif
