// The syntax tree of an OML file: what the parser read, with the place of each item. The functions that an
// upper layer puts in its grammar receive these nodes.
//
// An object owns its sub-objects and fields, a field its value token. Texts and live objects are looked up
// in the pools of the file, so they are there as long as the run lasts: after it the numbers stay, texts
// read as empty strings and objects as null.
#ifndef ZV_ZVOMLSYN_H
#define ZV_ZVOMLSYN_H

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "utils/zvobject.h"
#include "utils/zvomltkn.h"

class ZVOMLBinValue;
class ZVOMLDefField;
class ZVOMLDefObjType;
class ZVOMLFile;
class ZVOMLSyntaxField;
class ZVOMLSyntaxObject;

// The kind of a field's value, from its token.
enum ZVOMLFieldTypeEnum : int32_t {
  ZV_OML_VALUE_INT = 0,
  ZV_OML_VALUE_REAL = 1,
  ZV_OML_VALUE_STRING = 2,
  ZV_OML_VALUE_ENUM = 3,
  ZV_OML_VALUE_BINARY = 4,
  ZV_OML_VALUE_OBJTYPE = 5,
  ZV_OML_VALUE_OTHER = 6
};

// What every node has: its file and its place in it.
class ZV_EXPORT ZVOMLSyntaxStruct : public ZVObject {
 public:
  ZVOMLSyntaxStruct(ZVOMLFile* file, int32_t line, int position, int32_t fileNameIndex)
      : file_(file),
        fileNameIndex_(fileNameIndex),
        line_(line),
        position_(static_cast<int16_t>(std::min<int>(position, std::numeric_limits<int16_t>::max()))) {}
  // Memberwise.
  ZVOMLSyntaxStruct(const ZVOMLSyntaxStruct& other) = default;
  ZVOMLSyntaxStruct& operator=(const ZVOMLSyntaxStruct& other) = default;

  int32_t line() const { return line_; }
  int position() const { return position_; }
  // Index of the file's name in the string pool.
  int32_t fileNameIndex() const { return fileNameIndex_; }
  ZVOMLFile* pOMLFile() const { return file_; }

  ZV_MIRROR(ZVOMLSyntaxStruct)
  ZVOMLFile* file_ = nullptr;
  int32_t fileNameIndex_ = -1;
  int32_t line_ = -1;
  int16_t position_ = 0;
};

// Chains of nodes. Deleting a cell deletes the rest of its chain, in a loop.
struct ZV_EXPORT ZVOMLSyntaxObjectList {
  explicit ZVOMLSyntaxObjectList(ZVOMLSyntaxObject* object) : pObject(object) {}
  ZVOMLSyntaxObjectList(const ZVOMLSyntaxObjectList&) = delete;
  ZVOMLSyntaxObjectList& operator=(const ZVOMLSyntaxObjectList&) = delete;
  ~ZVOMLSyntaxObjectList();

  // Whether the memory of the cell is the file's, as that of its object.
  bool inArena() const;

  ZVOMLSyntaxObject* pObject;  // owned
  ZVOMLSyntaxObjectList* pNext = nullptr;
};

struct ZV_EXPORT ZVOMLSyntaxFieldList {
  explicit ZVOMLSyntaxFieldList(ZVOMLSyntaxField* field) : pField(field) {}
  ZVOMLSyntaxFieldList(const ZVOMLSyntaxFieldList&) = delete;
  ZVOMLSyntaxFieldList& operator=(const ZVOMLSyntaxFieldList&) = delete;
  ~ZVOMLSyntaxFieldList();

  // Whether the memory of the cell is the file's, as that of its field.
  bool inArena() const;

  ZVOMLSyntaxField* pField;  // owned
  ZVOMLSyntaxFieldList* pNext = nullptr;
};

struct ZV_EXPORT ZVOMLSyntaxDefaultList {
  explicit ZVOMLSyntaxDefaultList(ZVOMLSyntaxFieldList* list) : pFieldList(list) {}
  ZVOMLSyntaxDefaultList(const ZVOMLSyntaxDefaultList&) = delete;
  ZVOMLSyntaxDefaultList& operator=(const ZVOMLSyntaxDefaultList&) = delete;
  ~ZVOMLSyntaxDefaultList();

  ZVOMLSyntaxFieldList* pFieldList;  // not owned
  ZVOMLSyntaxDefaultList* pNext = nullptr;
};

// An object of the file: a type, an id and a section, its sub-objects and fields in reading order, and the
// defaults that apply to it.
class ZV_EXPORT ZVOMLSyntaxObject : public ZVOMLSyntaxStruct {
 public:
  // A node without lists.
  ZVOMLSyntaxObject(ZVOMLFile* file, int32_t line, int position, int32_t fileNameIndex,
                    int32_t objTypeIDIndex, int32_t objectIDIndex, int32_t sectionIDIndex,
                    uint32_t sectionPathIndex, ZVOMLDefObjType* definition)
      : ZVOMLSyntaxStruct(file, line, position, fileNameIndex),
        objTypeIDIndex_(objTypeIDIndex),
        objectIDIndex_(objectIDIndex),
        sectionIDIndex_(sectionIDIndex),
        sectionPathIndex_(sectionPathIndex),
        definition_(definition) {}
  ~ZVOMLSyntaxObject() override;

  // Index in the object type pool.
  int32_t objTypeIDIndex() const { return objTypeIDIndex_; }
  int32_t typeIndex() const { return objTypeIDIndex_; }
  // Index in the object id pool, -1 for no id; after the semantic pass the index of the full address.
  int32_t objectIDIndex() const { return objectIDIndex_; }
  int32_t objectIDIndex(int32_t index) { return objectIDIndex_ = index; }
  int32_t nameIndex() const { return objectIDIndex_; }
  // The section in which the object stands, -1 and path 0 for none.
  int32_t sectionIDIndex() const { return sectionIDIndex_; }
  int32_t sectionIDIndex(int32_t index) { return sectionIDIndex_ = index; }
  uint32_t sectionPathIndex() const { return sectionPathIndex_; }
  uint32_t sectionPathIndex(uint32_t path) { return sectionPathIndex_ = path; }
  ZVOMLSyntaxObject* pOwnerObject() const { return owner_; }
  ZVOMLSyntaxObject* pOwnerObject(ZVOMLSyntaxObject* owner) { return owner_ = owner; }
  ZVOMLSyntaxObjectList* pObjectList() const { return objectList_; }
  ZVOMLSyntaxObjectList* pObjectList(ZVOMLSyntaxObjectList* list) { return objectList_ = list; }
  ZVOMLSyntaxObjectList* pObjectListEnd() const { return objectListEnd_; }
  ZVOMLSyntaxObjectList* pObjectListEnd(ZVOMLSyntaxObjectList* list) { return objectListEnd_ = list; }
  ZVOMLSyntaxFieldList* pFieldList() const { return fieldList_; }
  ZVOMLSyntaxFieldList* pFieldList(ZVOMLSyntaxFieldList* list) { return fieldList_ = list; }
  ZVOMLSyntaxFieldList* pFieldListEnd() const { return fieldListEnd_; }
  ZVOMLSyntaxFieldList* pFieldListEnd(ZVOMLSyntaxFieldList* list) { return fieldListEnd_ = list; }
  ZVOMLSyntaxDefaultList* pDefaultList() const { return defaultList_; }
  ZVOMLSyntaxDefaultList* pDefaultList(ZVOMLSyntaxDefaultList* list);
  ZVOMLDefObjType* pDefObjType() const { return definition_; }
  ZVOMLDefObjType* pDefObjType(ZVOMLDefObjType* definition) { return definition_ = definition; }

  const char* typeString() const;
  const char* nameString() const;
  const char* sectionString() const;
  // The live object once it is created, else null.
  ZVObject* object() const;

  // The first field of that name; a section of -1 means any section. Goes through the field iterator, so
  // defaults come first and a field of a wildcard path stays bound to the section that matched.
  ZVOMLSyntaxField* searchField(int32_t fieldIDIndex, int32_t sectionIDIndex) const;
  // The same by text; a null section means any.
  ZVOMLSyntaxField* searchField(const char* name, const char* section) const;
  // The first field with that name and exactly that path.
  ZVOMLSyntaxField* searchUniqueField(int32_t fieldIDIndex, uint32_t sectionPathIndex) const;

  // Append at the end; addObject also becomes the owner.
  void addObject(ZVOMLSyntaxObject* object);
  void addField(ZVOMLSyntaxField* field);
  // Puts a list at the head of the defaults; a null list is ignored.
  void addDefaultList(ZVOMLSyntaxFieldList* list);
  // Takes over all lists of other, which is left empty.
  void append(ZVOMLSyntaxObject* other);
  // Deletes the cell behind previous (null: the first cell) with its object.
  void deleteObjectItem(ZVOMLSyntaxObjectList* previous);

  ZVOMLSyntaxObject(const ZVOMLSyntaxObject&) = delete;
  ZVOMLSyntaxObject& operator=(const ZVOMLSyntaxObject&) = delete;

 private:
  friend class ZVOMLFile;
  friend struct ZVOMLSyntaxObjectList;

  // As delete, for a node that may lie in the file's memory.
  static void drop(ZVOMLSyntaxObject* object);
  void addCell(ZVOMLSyntaxObjectList* cell);
  void addCell(ZVOMLSyntaxFieldList* cell);

  bool inArena_ = false;  // the memory of the node and its cell is the file's
  int32_t objTypeIDIndex_;
  int32_t objectIDIndex_;
  int32_t sectionIDIndex_;
  uint32_t sectionPathIndex_;
  ZVOMLSyntaxObject* owner_ = nullptr;
  ZVOMLSyntaxObjectList* objectList_ = nullptr;
  ZVOMLSyntaxObjectList* objectListEnd_ = nullptr;
  ZVOMLSyntaxFieldList* fieldList_ = nullptr;
  ZVOMLSyntaxFieldList* fieldListEnd_ = nullptr;
  ZVOMLSyntaxDefaultList* defaultList_ = nullptr;
  ZVOMLSyntaxDefaultList* defaultListEnd_ = nullptr;  // a cell of that list to look for the end from
  ZVOMLDefObjType* definition_;
};

// A field of an object: its name, its section, and its value.
class ZV_EXPORT ZVOMLSyntaxField : public ZVOMLSyntaxStruct {
 public:
  // Takes over the token, which may be null.
  ZVOMLSyntaxField(ZVOMLFile* file, int32_t line, int position, int32_t fileNameIndex, int32_t fieldIDIndex,
                   int32_t sectionIDIndex, uint32_t sectionPathIndex, ZVOMLToken* value,
                   ZVOMLDefField* definition, int unchecked);
  ~ZVOMLSyntaxField() override;

  int32_t fieldIDIndex() const { return fieldIDIndex_; }
  int32_t nameIndex() const { return fieldIDIndex_; }
  int32_t sectionIDIndex() const { return sectionIDIndex_; }
  int32_t sectionIDIndex(int32_t index) { return sectionIDIndex_ = index; }
  int32_t sectionIndex() const { return sectionIDIndex_; }
  // May hold wildcard digits.
  uint32_t sectionPathIndex() const { return sectionPathIndex_; }
  uint32_t sectionPathIndex(uint32_t path) { return sectionPathIndex_ = path; }
  ZVOMLToken* pValueToken() const {
    return holds_ == OWN_TOKEN    ? const_cast<ZVOMLToken*>(&value_.own)
           : holds_ == HEAP_TOKEN ? value_.heap
                                  : nullptr;
  }
  // Null in an unchecked stretch, and for a wildcard path outside an iteration.
  ZVOMLDefField* pDefField() const { return definition_; }
  ZVOMLDefField* pDefField(ZVOMLDefField* definition) { return definition_ = definition; }
  int inUncheckedSection() const { return inUncheckedSection_; }

  const char* nameString() const;
  const char* sectionString() const;

  ZVOMLFieldTypeEnum valueType() const;
  // The value in that view, without a conversion between kinds; 0 or null without a token.
  int16_t shortValue() const;
  int intValue() const;
  int32_t longValue() const;
  uint32_t ipbytesValue() const;
  ZVOMLBinValue* pBinValue() const;
  float floatValue() const;
  double doubleValue() const;
  // The number that the grammar gives the enum value.
  int32_t enumValue() const;
  int boolValue() const { return enumValue(); }
  // The empty string without a token.
  const char* stringValue() const;
  // The live object that the reference names, null if none.
  ZVObject* objectValue() const;
  // Type of the object named, -1 and the empty string if none.
  int32_t objectTypeIndex() const;
  const char* objectTypeString() const;

  ZVOMLSyntaxField(const ZVOMLSyntaxField&) = delete;
  ZVOMLSyntaxField& operator=(const ZVOMLSyntaxField&) = delete;

 private:
  friend class ZVOMLFile;
  friend struct ZVOMLSyntaxFieldList;

  // A field in the file's memory, which takes over the content of a token.
  ZVOMLSyntaxField(const ZVOMLSyntaxStruct& place, int32_t fieldIDIndex, int32_t sectionIDIndex,
                   uint32_t sectionPathIndex, ZVOMLToken* value, ZVOMLDefField* definition, int unchecked)
      : ZVOMLSyntaxStruct(place),
        inArena_(true),
        inUncheckedSection_(unchecked != 0),
        fieldIDIndex_(fieldIDIndex),
        sectionIDIndex_(sectionIDIndex),
        sectionPathIndex_(sectionPathIndex),
        definition_(definition) {
    if (!value) return;
    holds_ = OWN_TOKEN;
    new (&value_.own) ZVOMLToken(std::move(*value));
  }
  // As delete, for a node that may lie in the file's memory.
  static void drop(ZVOMLSyntaxField* field);

  enum Holds : uint8_t { NO_TOKEN, OWN_TOKEN, HEAP_TOKEN };
  // As the enumeration says.
  union Value {
    Value() : heap(nullptr) {}
    ~Value() {}
    ZVOMLToken own;
    ZVOMLToken* heap;
  };

  bool inArena_ : 1 = false;  // the memory of the node and its cell is the file's
  bool inUncheckedSection_ : 1;
  Holds holds_ = NO_TOKEN;
  int32_t fieldIDIndex_;
  int32_t sectionIDIndex_;
  uint32_t sectionPathIndex_;
  ZVOMLDefField* definition_;
  Value value_;
};

#endif
