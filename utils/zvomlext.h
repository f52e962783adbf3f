// Lets a class that is no ZVOMLFile take part in reading and writing a file: its own hooks for what a kind of
// file must do, and the writer's and the diagnostics' operations passed on to the file it works on.
//
// It works on a file given from outside, which it does not own, and it may have a file of its own, made on
// first demand; neither takes the place of the other. Nothing in this library calls the hooks: a subclass of
// ZVOMLFile that knows the extension by its pOMLExtension does.
// A copy takes over no file. An extension that is copied onto loses the file of its own and keeps the other.
#ifndef ZV_ZVOMLEXT_H
#define ZV_ZVOMLEXT_H

#include <cstddef>

#include "utils/zvobject.h"

class ZVOMLBinValue;
class ZVOMLFile;
class ZVOMLObject;
class ZVOMLSyntaxField;
class ZVOMLSyntaxObject;
class ZVOMLSyntaxStruct;

class ZV_EXPORT ZVOMLExtension : public ZVObject {
 public:
  ZVOMLExtension(ZVOMLFile* file = nullptr) : file_(file) {}
  ~ZVOMLExtension() override;

  ZVOMLFile* pOMLFile() const { return file_; }
  ZVOMLFile* pOMLFile(ZVOMLFile* file) { return file_ = file; }
  // The file of its own, null as long as it has none.
  ZVOMLFile* pQueryOwnedOMLFile() const { return ownedFile_; }
  // The same, made if there is none.
  ZVOMLFile* pOwnedOMLFile();

  // The hooks, with the arguments and results of those of ZVOMLFile. These do nothing and give null or 0.
  virtual void vWriteContents(ZVObject* top);
  virtual int vCheckObject(ZVOMLSyntaxObject* object);
  virtual ZVObject* vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax, ZVObject* owner);
  virtual int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVObject* target);

  // The record, and the file of its own.
  virtual int32_t sizeOf() const;

 protected:
  // Makes the file of its own: a plain one, with this as its extension.
  virtual ZVOMLFile* vNewOwnedOMLFile();

  // The operations of these names of pOMLFile. Without one they do nothing and give 0.
  int32_t numberOfErrors() const;
  int32_t numberOfWarnings() const;
  void errorMessage(ZVOMLSyntaxStruct* where, int id, const char* text, int fatal);
  void warningMessage(ZVOMLSyntaxStruct* where, int id, const char* text);
  void writeBlancLine();
  void writeObjectDefaultStart(const char* type);
  void writeStringAttribute(const char* field, const char* value);
  void writeBoolAttribute(const char* field, int value);
  void writeIPBytesAttribute(const char* field, uint32_t address);
  void writeAttribute(const char* field, const char* value);
  void writeAttribute(const char* field, int value);
  void writeAttribute(const char* field, long value);
  void writeAttribute(const char* field, float value);
  void writeAttribute(const char* field, double value);
  void writeAttribute(const char* field, const ZVOMLBinValue* value);
  void writeAttribute(const char* field, std::nullptr_t);
  void writeAttribute(const char* field, ZVOMLObject* object, ZVOMLObject* context, int writeName);
  void writeObjectStart(const char* type, const ZVOMLObject* object, int oneline, int writeID);
  void writeObjectStart(const char* type, const ZVObject* object, int oneline);
  void writeSectionStart(const char* section, int oneline);
  void writeOpeningBracket();
  void writeClosingBracket();

  ZV_SHAPE_FULL(ZVOMLExtension)

  void dropOwnedFile();

  ZVOMLFile* file_ = nullptr;
  ZVOMLFile* ownedFile_ = nullptr;
};

#endif
