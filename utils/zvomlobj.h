// Base of every object that an OML file can hold.
//
// While a write runs, the field iUserField holds the object's id in the file: preFileWrite settles it for
// the object and all below it, postFileWrite clears it. It is one word of address width, seen as a number
// (its low 32 bits, sign kept) or as a pointer. A copy has it 0; assignment leaves the target's alone.
#ifndef ZV_ZVOMLOBJ_H
#define ZV_ZVOMLOBJ_H

#include "utils/zvfile.h"
#include "utils/zvobjwid.h"

class ZVDList;
class ZVIndexHashTable;
class ZVOMLFile;
class ZVOMLSyntaxField;
class ZVOMLSyntaxObject;

class ZV_EXPORT ZVOMLObject : public ZVObjectWithID {
 public:
  ZVOMLObject() = default;

  int32_t iUserField() const { return static_cast<int32_t>(userField_); }
  int32_t iUserField(int32_t value);
  ZVObject* pIUserField() const { return reinterpret_cast<ZVObject*>(userField_); }
  ZVObject* pIUserField(ZVObject* value);

  // The id in the file, 0 while no write runs.
  int32_t graphFileID() const override;
  int isOMLObject() const override;

  virtual int isFactory() const;
  // The enclosing object, null for none.
  virtual ZVOMLObject* pOwnerObject();
  // Settle and clear the ids of this object and of all below it, around a write.
  virtual void preFileWrite(ZVOMLFile* file);
  virtual void postFileWrite(ZVOMLFile* file, ZVFileCodeEnum code);
  // Stores one field of a file in this object; non-zero when done.
  virtual int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVOMLFile* file);
  // The two that follow are for the layers above; nothing in this library calls them.
  virtual void vWriteFields(ZVOMLFile* file, int flag);
  virtual ZVObject* vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax, ZVOMLFile* file);
  // Before and after all fields of this object are read.
  virtual void vPreReadFields(ZVOMLSyntaxObject* object, ZVOMLFile* file);
  virtual void vPostReadFields(ZVOMLSyntaxObject* object, ZVOMLFile* file);
  virtual int internalUserFieldsInUse() const;
  virtual void nullInternalUserFields();
  // Takes the id that the object had in the last file, from the table, or else its identity number.
  virtual void prepareIDForGraphFile(ZVIndexHashTable* table);
  virtual void finalizeIDForGraphFile();
  virtual int objectType() const;

  // Gives a new id to each object of the list whose id another one before it has, or which has none; sorts
  // the list by id.
  void makeIDsUniqueForGraphFile(ZVIndexHashTable* table, ZVDList* list);

 protected:
  // Puts every ZVOMLObject that is stored below this one on the list.
  virtual void vBuildListOfSubObjects(ZVDList& list);

  ZV_SHAPE_FULL(ZVOMLObject)
  intptr_t userField_ = 0;
};

#endif
