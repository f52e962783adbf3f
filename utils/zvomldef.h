// The definitions that a compiled grammar consists of: which fields, sections and sub-objects an object type
// may hold, and which functions make, fill, check and write its objects.
//
// Names stand here as indices into the pools of the grammar (ZVOMLStatic), which owns all object types.
//
// A section path is the way from an object type down to a section, in one number of eight digits of 4 bits.
// The lowest digit is the first level; each digit is the number of the section among its siblings, counted
// from 1 in the order of definition. Digit 0 ends the path, digit 15 is the wildcard: any section at that
// level. So the second sub-section of the third section of a type has the path 0x23, and path 0 means the
// type itself. There are at most 14 sections under one parent and 8 levels.
//
// Invariants:
//   1. Lists hold the newest entry first; positions and section numbers count up in the order of definition.
//   2. Each definition owns what its lists hold, apart from the required list, which only links fields that
//      the type or its sections own.
//   3. A field, a section or a sub-object type occurs at most once in its list.
//
// Cost: a look-up in a list is linear in its length; a look-up by path visits the siblings of each level.
#ifndef ZV_ZVOMLDEF_H
#define ZV_ZVOMLDEF_H

#include <cstdint>

#include "utils/zvplatfo.h"

class ZVObject;
class ZVOMLDefObjType;
class ZVOMLDefSection;
class ZVOMLFile;
class ZVOMLSyntaxField;
class ZVOMLSyntaxObject;

// What a field takes. The comments name the letter in a definition row.
enum ZVFieldTypeEnum : int32_t {
  ZV_FIELD_INT = 0,       // I: an integer
  ZV_FIELD_BOOL = 1,      // B: true or false
  ZV_FIELD_STRING = 2,    // S: a string
  ZV_FIELD_OBJECT = 3,    // row R: an object id, a scope or an integer
  ZV_FIELD_REAL = 4,      // R: a real
  ZV_FIELD_ENUM = 5,      // row E: one of the listed enum values
  ZV_FIELD_IPBYTES = 6,   // P: an IP address
  ZV_FIELD_BINVALUE = 7,  // X: a binary byte sequence
  ZV_FIELD_NONE = 8       // no type
};

// The functions of an object type. The file is the ZVOMLFile that calls.
using ZVOMLCreateFunction = ZVObject* (*)(void* file, ZVOMLSyntaxObject* object,
                                          ZVOMLSyntaxObject* ownerSyntax, ZVObject* owner);
// Non-zero when the field is stored.
using ZVOMLFieldFunction = int (*)(void* file, ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object,
                                   ZVObject* target);
// Non-zero when the object is good.
using ZVOMLCheckFunction = int (*)(void* file, ZVOMLSyntaxObject* object);
using ZVOMLWriteFunction = int (*)(void* file, const ZVObject* object);

// A cell of a list of indices.
struct ZVOMLDefIndexList {
  int32_t index;
  ZVOMLDefIndexList* next;
};

// A cell of a list of object types that may stand somewhere. Deleting a cell leaves the next one alone.
class ZV_EXPORT ZVOMLDefObjTypeIndex {
 public:
  ZVOMLDefObjTypeIndex(int32_t objTypeIDIndex, ZVOMLDefObjTypeIndex* next)
      : objTypeIDIndex_(objTypeIDIndex), pNext_(next) {}

  int32_t objTypeIDIndex() const { return objTypeIDIndex_; }
  ZVOMLDefObjTypeIndex* pNext() const { return pNext_; }

 private:
  int32_t objTypeIDIndex_;
  ZVOMLDefObjTypeIndex* pNext_;
};

// A field of an object type or section. Deleting it frees its value list and leaves the next field alone.
class ZV_EXPORT ZVOMLDefField {
 public:
  // Takes over the list.
  ZVOMLDefField(int32_t fieldIDIndex = -1, ZVFieldTypeEnum fieldType = ZV_FIELD_NONE,
                ZVOMLDefIndexList* list = nullptr, int required = 0, int position = 0,
                ZVOMLDefField* next = nullptr);
  ZVOMLDefField(const ZVOMLDefField&) = delete;
  ZVOMLDefField& operator=(const ZVOMLDefField&) = delete;
  ~ZVOMLDefField();

  int32_t fieldIDIndex() const { return fieldIDIndex_; }
  ZVFieldTypeEnum fieldType() const { return fieldType_; }
  int required() const { return required_; }
  // Place in the order of definition within the object type or section, from 1.
  int position() const { return position_; }
  // The older field of the same list, and the next in the required list of the type.
  ZVOMLDefField* pNext() const { return pNext_; }
  ZVOMLDefField* pNextRequired() const { return pNextRequired_; }
  // An enum field: the allowed values. A reference: one cell with the index of the type, or none.
  ZVOMLDefIndexList* pValueIDIndexList() const { return pValueIDIndexList_; }
  // The type that a reference must have; -1 for any.
  int32_t objTypeIDIndex() const { return pValueIDIndexList_ ? pValueIDIndexList_->index : -1; }

  // Scratch of the check for required fields.
  int marked() const { return marked_; }
  int marked(int mark) { return marked_ = mark != 0; }
  ZVOMLDefField* pNextRequired(ZVOMLDefField* field) { return pNextRequired_ = field; }
  // Takes over the list; the list so far goes back to the caller.
  ZVOMLDefIndexList* pValueIDIndexList(ZVOMLDefIndexList* list) { return pValueIDIndexList_ = list; }
  // Puts the value at the head of the list.
  void addEnumValue(int32_t index);
  int32_t objTypeIDIndex(int32_t index);

 private:
  int32_t fieldIDIndex_;
  ZVFieldTypeEnum fieldType_;
  ZVOMLDefIndexList* pValueIDIndexList_;
  uint8_t required_;
  uint8_t marked_ = 0;
  int16_t position_;
  ZVOMLDefField* pNext_;
  ZVOMLDefField* pNextRequired_ = nullptr;
};

// What object types and sections have in common: the lists of what may stand in them, with their look-ups.
class ZV_EXPORT ZVOMLDefContent {
 public:
  ZVOMLDefContent() = default;
  ZVOMLDefContent(const ZVOMLDefContent&) = delete;
  ZVOMLDefContent& operator=(const ZVOMLDefContent&) = delete;
  ~ZVOMLDefContent();

  ZVOMLDefField* findField(int32_t fieldIDIndex) const;
  ZVOMLDefField* findNthField(int32_t n) const;
  ZVOMLDefObjTypeIndex* findObjType(int32_t objTypeIDIndex) const;
  ZVOMLDefSection* findSection(int32_t sectionIDIndex) const;
  uint32_t findUniqueSection(int32_t sectionIDIndex) const;

  ZVOMLDefField* addField(int32_t fieldIDIndex, ZVFieldTypeEnum fieldType, int required,
                          ZVOMLDefObjType* objType);
  ZVOMLDefObjTypeIndex* addObjType(int32_t objTypeIDIndex);
  // The parent is null for the sections of an object type.
  ZVOMLDefSection* addSection(int32_t sectionIDIndex, ZVOMLDefSection* parent);

  ZVOMLDefField* pFieldList = nullptr;
  ZVOMLDefSection* pSectionList = nullptr;
  ZVOMLDefObjTypeIndex* pObjTypeList = nullptr;
};

// A section of an object type or of another section. Deleting it frees what it holds, its sub-sections
// included, and leaves its siblings alone.
class ZV_EXPORT ZVOMLDefSection {
 public:
  ZVOMLDefSection(int32_t sectionIDIndex, uint32_t sectionPathIndex, ZVOMLDefSection* next,
                  ZVOMLDefSection* parent)
      : sectionIDIndex_(sectionIDIndex),
        sectionPathIndex_(sectionPathIndex),
        pNext_(next),
        pParent_(parent) {}

  int32_t sectionIDIndex() const { return sectionIDIndex_; }
  uint32_t sectionPathIndex() const { return sectionPathIndex_; }
  ZVOMLDefField* pFieldList() const { return content_.pFieldList; }
  ZVOMLDefSection* pSectionList() const { return content_.pSectionList; }
  ZVOMLDefObjTypeIndex* pObjTypeList() const { return content_.pObjTypeList; }
  // The next sibling, and the enclosing section: null on the first level.
  ZVOMLDefSection* pNext() const { return pNext_; }
  ZVOMLDefSection* pParent() const { return pParent_; }

  // As in ZVOMLDefObjType.
  ZVOMLDefField* findField(int32_t fieldIDIndex) const { return content_.findField(fieldIDIndex); }
  ZVOMLDefField* findNthField(int32_t n) const { return content_.findNthField(n); }
  uint32_t findSection(int32_t sectionIDIndex) const;
  uint32_t findUniqueSection(int32_t sectionIDIndex) const {
    return content_.findUniqueSection(sectionIDIndex);
  }
  ZVOMLDefObjTypeIndex* findObjType(int32_t objTypeIDIndex) const {
    return content_.findObjType(objTypeIDIndex);
  }

  // A required field also goes into the required list of the type.
  ZVOMLDefField* addField(int32_t fieldIDIndex, ZVFieldTypeEnum fieldType, int required,
                          ZVOMLDefObjType* objType) {
    return content_.addField(fieldIDIndex, fieldType, required, objType);
  }
  ZVOMLDefSection* addSection(int32_t sectionIDIndex) { return content_.addSection(sectionIDIndex, this); }
  ZVOMLDefObjTypeIndex* addObjType(int32_t objTypeIDIndex) { return content_.addObjType(objTypeIDIndex); }

 private:
  friend class ZVOMLDefContent;
  friend class ZVOMLDefObjType;
  friend class ZVOMLFile;

  // The section with exactly this path among this section, the siblings behind it and all below them.
  ZVOMLDefSection* findSectionPath(uint32_t path);
  // The path of the one section of that name among this section, the siblings behind it and all below
  // them; 0 if there is none, 15 if there are several.
  uint32_t testUniqueSection(int32_t sectionIDIndex) const;
  // The path of sub-section n; 0 if this section stands on the last level.
  uint32_t newSectionPathIndex(int32_t n) const;

  int32_t sectionIDIndex_;
  uint32_t sectionPathIndex_;
  ZVOMLDefContent content_;
  ZVOMLDefSection* pNext_;
  ZVOMLDefSection* pParent_;
};

class ZV_EXPORT ZVOMLDefObjType {
 public:
  ZVOMLDefObjType(ZVOMLCreateFunction create = nullptr, ZVOMLFieldFunction field = nullptr,
                  ZVOMLCheckFunction check = nullptr, ZVOMLWriteFunction write = nullptr)
      : pCreateFunction_(create), pFieldFunction_(field), pCheckFunction_(check), pWriteFunction_(write) {}

  // Outside sections.
  ZVOMLDefField* pFieldList() const { return content_.pFieldList; }
  ZVOMLDefSection* pSectionList() const { return content_.pSectionList; }
  ZVOMLDefObjTypeIndex* pObjTypeList() const { return content_.pObjTypeList; }
  // All required fields, also those in sections, chained by pNextRequired.
  ZVOMLDefField* pRequiredFieldList() const { return pRequiredFieldList_; }

  // Outside sections, by index or by position; null if there is none.
  ZVOMLDefField* findField(int32_t fieldIDIndex) const { return content_.findField(fieldIDIndex); }
  ZVOMLDefField* findNthField(int32_t n) const { return content_.findNthField(n); }
  // The first definition of the field in the sections that match the path, which may hold wildcards. Null if
  // there is none, or if two definitions differ in type, referenced type or enum values.
  ZVOMLDefField* findFieldInAllSections(uint32_t path, int32_t fieldIDIndex) const;
  // The path of a section of the first level; 0 if there is none.
  uint32_t findSection(int32_t sectionIDIndex) const;
  // The path of the section of that name at any depth; 0 if there is none or more than one.
  uint32_t findUniqueSection(int32_t sectionIDIndex) const {
    return content_.findUniqueSection(sectionIDIndex);
  }
  // The section with exactly this path; null if there is none or the path holds a wildcard.
  ZVOMLDefSection* findSectionPath(uint32_t path) const;
  // Walk all sections that stand as deep as the path goes and equal it under the mask, depth first.
  ZVOMLDefSection* findFirstSectionPath(uint32_t path, uint32_t mask) const;
  ZVOMLDefSection* findNextSectionPath(uint32_t path, uint32_t mask, ZVOMLDefSection* section) const;
  // The mask that leaves the wildcards of the path out of a comparison.
  static uint32_t wildCardMask(uint32_t path);
  ZVOMLDefObjTypeIndex* findObjType(int32_t objTypeIDIndex) const {
    return content_.findObjType(objTypeIDIndex);
  }

  // Call the function; without one they give 1, null, 0 and 0.
  int checkFunction(void* file, ZVOMLSyntaxObject* object) const {
    return pCheckFunction_ ? pCheckFunction_(file, object) : 1;
  }
  ZVObject* createFunction(void* file, ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax,
                           ZVObject* owner) const {
    return pCreateFunction_ ? pCreateFunction_(file, object, ownerSyntax, owner) : nullptr;
  }
  int fieldFunction(void* file, ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVObject* target) const {
    return pFieldFunction_ ? pFieldFunction_(file, field, object, target) : 0;
  }
  int writeFunction(void* file, const ZVObject* object) const {
    return pWriteFunction_ ? pWriteFunction_(file, object) : 0;
  }

  // The field of that index, made if it is new. Null, and nothing changed, if there is one of another type
  // or with another required flag.
  ZVOMLDefField* addField(int32_t fieldIDIndex, ZVFieldTypeEnum fieldType, int required) {
    return content_.addField(fieldIDIndex, fieldType, required, this);
  }
  // Puts the field at the head of the required list, unless it is in there.
  void addRequiredField(ZVOMLDefField* field);
  // The section of that name, made if it is new. Null for a fifteenth section or a ninth level.
  ZVOMLDefSection* addSection(int32_t sectionIDIndex) { return content_.addSection(sectionIDIndex, nullptr); }
  ZVOMLDefObjTypeIndex* addObjType(int32_t objTypeIDIndex) { return content_.addObjType(objTypeIDIndex); }
  ZVOMLCreateFunction pCreateFunction(ZVOMLCreateFunction create) { return pCreateFunction_ = create; }
  ZVOMLFieldFunction pFieldFunction(ZVOMLFieldFunction field) { return pFieldFunction_ = field; }
  ZVOMLCheckFunction pCheckFunction(ZVOMLCheckFunction check) { return pCheckFunction_ = check; }
  ZVOMLWriteFunction pWriteFunction(ZVOMLWriteFunction write) { return pWriteFunction_ = write; }

 private:
  friend class ZVOMLFile;

  ZVOMLDefContent content_;
  ZVOMLDefField* pRequiredFieldList_ = nullptr;
  ZVOMLCreateFunction pCreateFunction_;
  ZVOMLFieldFunction pFieldFunction_;
  ZVOMLCheckFunction pCheckFunction_;
  ZVOMLWriteFunction pWriteFunction_;
};

#endif
