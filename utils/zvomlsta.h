// A grammar of the object file format: which object types exist, what each may hold, and which functions
// make and fill its objects. A layer above hands in tables, and the grammar compiles them into definitions
// and four pools of names. One grammar serves any number of files, which only read it.
//
// Names are kept in upper case and matched without regard to case. Their indices follow the order of first
// installation and never change: reserved names, then table names in the order object types, sections, enum
// values, then names that first appear in the definition table. Binary files store these indices, so a table
// may only be extended at its end.
//
// Reserved: fields include, input, comment, section, id, name, field (0 to 6); sections skip and _ (0, 1);
// enum values true and false (0 with value 1, 1 with value 0); object type $toplevel$ (0).
//
// All tables end with a null name or row. The definition table is an array of text rows; blanks and tabs
// around words mean nothing, and the first letter, of either case, is the kind of the row:
//
//   O name                  starts an object type, whose rows follow; it may continue an earlier one
//   S name                  starts a section within it, whose rows follow
//   { or [                  optional, directly behind O or S
//   } or ]                  ends the object type or section; the next O ends all that is open
//   F name type [R]         field of type B, I, P, R, S or X (see ZVFieldTypeEnum); R at the end: required
//   E name [ values ] [R]   enum field of installed values, separated by blanks or commas; low .. high
//                           stands for the two and all installed between them
//   R name type [R]         reference to an object of that type, _ for any
//   T name                  objects of that type may stand here
//
// Rows of other kinds, and rows outside a definition, are stepped over. The compiler reports nothing.
#ifndef ZV_ZVOMLSTA_H
#define ZV_ZVOMLSTA_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "utils/zvfile.h"
#include "utils/zvobject.h"
#include "utils/zvomldef.h"

class ZVStringPool;

// A row of the object type table. Any function may be null.
struct ZVOMLStaticOEStruct {
  const char* name = nullptr;
  ZVOMLCheckFunction check = nullptr;
  ZVOMLCreateFunction create = nullptr;
  ZVOMLFieldFunction field = nullptr;
  ZVOMLWriteFunction write = nullptr;
};

// A row of the enum value table: a name and the number that it stands for.
struct ZVOMLStaticVEStruct {
  const char* name = nullptr;
  int32_t value = 0;
};

class ZV_EXPORT ZVOMLStatic : public ZVObject {
 public:
  // Any table may be null. The sizes are the numbers of names that the pools of the grammar and of the files
  // that use it are made for; pools grow beyond them.
  ZVOMLStatic(const ZVOMLStaticOEStruct* types, const char* const* sections,
              const ZVOMLStaticVEStruct* values, const char* const* definitions,
              int32_t stringPoolSize = 4048, int32_t valueIDPoolSize = 512, int32_t objTypeIDPoolSize = 32,
              int32_t sectionIDPoolSize = 32, int32_t fieldIDPoolSize = 256, int32_t objectIDPoolSize = 4048);
  // Object types by name alone.
  ZVOMLStatic(const char* const* types, const char* const* sections, const ZVOMLStaticVEStruct* values,
              const char* const* definitions, int32_t stringPoolSize = 4048, int32_t valueIDPoolSize = 512,
              int32_t objTypeIDPoolSize = 32, int32_t sectionIDPoolSize = 32, int32_t fieldIDPoolSize = 256,
              int32_t objectIDPoolSize = 4048);
  ZVOMLStatic(std::nullptr_t, const char* const* sections, const ZVOMLStaticVEStruct* values,
              const char* const* definitions, int32_t stringPoolSize = 4048, int32_t valueIDPoolSize = 512,
              int32_t objTypeIDPoolSize = 32, int32_t sectionIDPoolSize = 32, int32_t fieldIDPoolSize = 256,
              int32_t objectIDPoolSize = 4048)
      : ZVOMLStatic(static_cast<const ZVOMLStaticOEStruct*>(nullptr), sections, values, definitions,
                    stringPoolSize, valueIDPoolSize, objTypeIDPoolSize, sectionIDPoolSize, fieldIDPoolSize,
                    objectIDPoolSize) {}
  ~ZVOMLStatic() override;

  // Install one more table; null installs nothing. REQUIRES: no file uses the grammar.
  void installObjectTypeTable(const ZVOMLStaticOEStruct* types);
  void installObjectTypeTable(const char* const* types);
  void installObjectTypeTable(std::nullptr_t) {}
  void installEnumValueTable(const ZVOMLStaticVEStruct* values);
  void installSectionTable(const char* const* sections);
  void installFieldTable(const char* const* fields);
  void installDefinitionTable(const char* const* definitions);

  // Writes the indices of all names as #define lines, for programs that compare them. Gives the first failure
  // of the file, whose content is incomplete then.
  ZVFileCodeEnum writeIndexDefinitions(const char* path) const;
  // A hook without effect.
  void initTestParser() {}

 protected:
  // Build a grammar by calls instead of rows. Names of types, sections and fields that are new are installed.
  // Path 0 means the type, any other path the section that has it.

  // The type, made if it is new; functions that are not null replace those present.
  ZVOMLDefObjType* installObjTypeID(const char* name, ZVOMLCheckFunction check, ZVOMLCreateFunction create,
                                    ZVOMLFieldFunction field, ZVOMLWriteFunction write);
  // A name that is known takes the new value. Non-zero on success.
  int installEnumValueID(const char* name, int32_t value);
  // Non-zero on success; 0 for an unknown path, or a field that has another type or required flag already.
  int addFieldDefinition(const char* type, const char* field, ZVFieldTypeEnum fieldType, int required);
  int addFieldDefinition(const char* type, uint32_t path, const char* field, ZVFieldTypeEnum fieldType,
                         int required);
  // An enum value name makes an enum field, and repeated calls build its list; else an object type name
  // makes a reference. Gives 0 and adds nothing for a name that is neither.
  int addFieldDefinition(const char* type, const char* field, const char* valueOrType, int required);
  int addFieldDefinition(const char* type, uint32_t path, const char* field, const char* valueOrType,
                         int required);
  // The path of the section, new or not; 0 on failure.
  uint32_t addSectionDefinition(const char* type, const char* section);
  uint32_t addSectionDefinition(const char* type, uint32_t path, const char* section);
  int addObjectTypeDefinition(const char* type, const char* subType);
  int addObjectTypeDefinition(const char* type, uint32_t path, const char* subType);

  ZV_SHAPE_NO_COPY(ZVOMLStatic)
  friend class ZVOMLFile;
  friend class ZVOMLStaticTest;

  int32_t stringPoolSize() const { return stringPoolSize_; }
  int32_t valueIDPoolSize() const { return valueIDPoolSize_; }
  int32_t objTypeIDPoolSize() const { return objTypeIDPoolSize_; }
  int32_t sectionIDPoolSize() const { return sectionIDPoolSize_; }
  int32_t fieldIDPoolSize() const { return fieldIDPoolSize_; }
  int32_t objectIDPoolSize() const { return objectIDPoolSize_; }
  int32_t stringHashSize() const { return stringHashSize_; }
  int32_t valueIDHashSize() const { return valueIDHashSize_; }
  int32_t objTypeIDHashSize() const { return objTypeIDHashSize_; }
  int32_t sectionIDHashSize() const { return sectionIDHashSize_; }
  int32_t fieldIDHashSize() const { return fieldIDHashSize_; }
  int32_t objectIDHashSize() const { return objectIDHashSize_; }
  ZVStringPool* pValueIDPool() const { return pValueIDPool_.get(); }
  ZVStringPool* pObjTypeIDPool() const { return pObjTypeIDPool_.get(); }
  ZVStringPool* pSectionIDPool() const { return pSectionIDPool_.get(); }
  ZVStringPool* pFieldIDPool() const { return pFieldIDPool_.get(); }
  // Null for a bad index.
  ZVOMLDefObjType* pObjTypeDefinition(int32_t index) const;
  // The number that the enum value stands for; 0 for a bad index.
  int32_t enumValue(int32_t index) const;
  // True when the index is one of the section pool's.
  int definedSection(int32_t index) const;

  void initialize(int32_t stringSize, int32_t valueIDSize, int32_t objTypeIDSize, int32_t sectionIDSize,
                  int32_t fieldIDSize, int32_t objectIDSize);
  void empty();
  void installOtherTables(const char* const* sections, const ZVOMLStaticVEStruct* values,
                          const char* const* definitions);
  static int32_t hashTableSize(int32_t poolSize);
  // The index of the name, installed if it is new; -1 for null.
  int32_t installSectionID(const char* name);
  int32_t installFieldID(const char* name);

  // What a definition row or call refers to: an object type, or one of its sections.
  struct Place {
    ZVOMLDefObjType* objType;
    ZVOMLDefSection* section;  // null: the type itself

    ZVOMLDefField* addField(int32_t fieldIDIndex, ZVFieldTypeEnum fieldType, int required) const;
    ZVOMLDefSection* addSection(int32_t sectionIDIndex) const;
    ZVOMLDefObjTypeIndex* addObjType(int32_t objTypeIDIndex) const;
  };
  void installSubObjectType(const char* name, const Place& place);
  // The place at the path, the type being installed if it is new; its objType is null if there is none.
  Place findPlace(const char* type, uint32_t path);

  // The scans of the definition table take a row number and give the number of the row to go on with; those
  // of a single row take the text behind the letter.
  int32_t scanObjectTypeInDefTable(const char* const* rows, int32_t row);
  int32_t scanSectionInDefTable(const char* const* rows, int32_t row, const Place& place);
  int32_t scanBodyInDefTable(const char* const* rows, int32_t row, const Place& place);
  // Steps over the body of a section that was refused, with all that is nested in it.
  static int32_t skipBodyInDefTable(const char* const* rows, int32_t row);
  void scanSubObjectType(const char* text, const Place& place);
  void scanSimpleField(const char* text, const Place& place);
  void scanEnumField(const char* text, const Place& place);
  void scanObjTypeRef(const char* text, const Place& place);
  // The word at text behind leading blanks, and text moved behind it; empty if no word stands there.
  static std::string makeCopyOfNextWord(const char*& text);

  std::unique_ptr<ZVStringPool> pValueIDPool_;
  std::unique_ptr<ZVStringPool> pObjTypeIDPool_;
  std::unique_ptr<ZVStringPool> pSectionIDPool_;
  std::unique_ptr<ZVStringPool> pFieldIDPool_;
  int32_t stringPoolSize_ = 0;
  int32_t valueIDPoolSize_ = 0;
  int32_t objTypeIDPoolSize_ = 0;
  int32_t sectionIDPoolSize_ = 0;
  int32_t fieldIDPoolSize_ = 0;
  int32_t objectIDPoolSize_ = 0;
  int32_t stringHashSize_ = 0;
  int32_t valueIDHashSize_ = 0;
  int32_t objTypeIDHashSize_ = 0;
  int32_t sectionIDHashSize_ = 0;
  int32_t fieldIDHashSize_ = 0;
  int32_t objectIDHashSize_ = 0;
};

#endif
