#include "utils/zvomlext.h"

#include <utility>

#include "utils/zvomlfil.h"

ZV_DEFINE_FULL(ZVOMLExtension, ZVObject)

ZVOMLExtension::~ZVOMLExtension() { delete ownedFile_; }

void ZVOMLExtension::init() {
  file_ = nullptr;
  ownedFile_ = nullptr;
}

void ZVOMLExtension::ZVOMLExtensiondeepCopy(const ZVOMLExtension& other) {
  ZVObject::copyObject(&other);
  dropOwnedFile();
}

void ZVOMLExtension::ZVOMLExtensionattributeCopy(const ZVOMLExtension& other) {
  ZVObject::copyAttributes(&other);
  dropOwnedFile();
}

void ZVOMLExtension::dropOwnedFile() {
  if (file_ == ownedFile_) file_ = nullptr;
  delete std::exchange(ownedFile_, nullptr);
}

ZVOMLFile* ZVOMLExtension::pOwnedOMLFile() {
  if (!ownedFile_) ownedFile_ = vNewOwnedOMLFile();
  return ownedFile_;
}

ZVOMLFile* ZVOMLExtension::vNewOwnedOMLFile() {
  auto* file = new ZVOMLFile;
  file->pOMLExtension(this);
  return file;
}

void ZVOMLExtension::vWriteContents(ZVObject*) {}

int ZVOMLExtension::vCheckObject(ZVOMLSyntaxObject*) { return 0; }

ZVObject* ZVOMLExtension::vCreateObject(ZVOMLSyntaxObject*, ZVOMLSyntaxObject*, ZVObject*) { return nullptr; }

int ZVOMLExtension::vReadField(ZVOMLSyntaxField*, ZVOMLSyntaxObject*, ZVObject*) { return 0; }

int32_t ZVOMLExtension::sizeOf() const {
  return static_cast<int32_t>(sizeof *this) + (ownedFile_ ? ownedFile_->sizeOf() : 0);
}

int32_t ZVOMLExtension::numberOfErrors() const { return file_ ? file_->numberOfErrors() : 0; }

int32_t ZVOMLExtension::numberOfWarnings() const { return file_ ? file_->numberOfWarnings() : 0; }

void ZVOMLExtension::errorMessage(ZVOMLSyntaxStruct* where, int id, const char* text, int fatal) {
  if (file_) file_->errorMessage(where, id, text, fatal);
}

void ZVOMLExtension::warningMessage(ZVOMLSyntaxStruct* where, int id, const char* text) {
  if (file_) file_->warningMessage(where, id, text);
}

void ZVOMLExtension::writeBlancLine() {
  if (file_) file_->writeBlancLine();
}

void ZVOMLExtension::writeObjectDefaultStart(const char* type) {
  if (file_) file_->writeObjectDefaultStart(type);
}

void ZVOMLExtension::writeStringAttribute(const char* field, const char* value) {
  if (file_) file_->writeStringAttribute(field, value);
}

void ZVOMLExtension::writeBoolAttribute(const char* field, int value) {
  if (file_) file_->writeBoolAttribute(field, value);
}

void ZVOMLExtension::writeIPBytesAttribute(const char* field, uint32_t address) {
  if (file_) file_->writeIPBytesAttribute(field, address);
}

void ZVOMLExtension::writeAttribute(const char* field, const char* value) {
  if (file_) file_->writeAttribute(field, value);
}

void ZVOMLExtension::writeAttribute(const char* field, int value) {
  if (file_) file_->writeAttribute(field, value);
}

void ZVOMLExtension::writeAttribute(const char* field, long value) {
  if (file_) file_->writeAttribute(field, value);
}

void ZVOMLExtension::writeAttribute(const char* field, float value) {
  if (file_) file_->writeAttribute(field, value);
}

void ZVOMLExtension::writeAttribute(const char* field, double value) {
  if (file_) file_->writeAttribute(field, value);
}

void ZVOMLExtension::writeAttribute(const char* field, const ZVOMLBinValue* value) {
  if (file_) file_->writeAttribute(field, value);
}

void ZVOMLExtension::writeAttribute(const char* field, std::nullptr_t) {
  if (file_) file_->writeAttribute(field, nullptr);
}

void ZVOMLExtension::writeAttribute(const char* field, ZVOMLObject* object, ZVOMLObject* context,
                                    int writeName) {
  if (file_) file_->writeAttribute(field, object, context, writeName);
}

void ZVOMLExtension::writeObjectStart(const char* type, const ZVOMLObject* object, int oneline, int writeID) {
  if (file_) file_->writeObjectStart(type, object, oneline, writeID);
}

void ZVOMLExtension::writeObjectStart(const char* type, const ZVObject* object, int oneline) {
  if (file_) file_->writeObjectStart(type, object, oneline);
}

void ZVOMLExtension::writeSectionStart(const char* section, int oneline) {
  if (file_) file_->writeSectionStart(section, oneline);
}

void ZVOMLExtension::writeOpeningBracket() {
  if (file_) file_->writeOpeningBracket();
}

void ZVOMLExtension::writeClosingBracket() {
  if (file_) file_->writeClosingBracket();
}
