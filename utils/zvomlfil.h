// Reader, writer and open file of the OML object file format, in one object. Upper layers derive from it for
// each kind of file.
//
// A read runs in three passes: the parser builds a syntax tree and checks it against the grammar, the
// semantic pass resolves addresses, defaults and references, and the last pass creates the live objects and
// fills their fields. No live object exists before the whole file is read and found good. A write is driven
// by vWriteContents of the subclass, which puts items out one after the other.
//
// Errors are counted and collected as numbered messages in text buffers, up to limits; the first fatal one
// ends the reading. Counts and texts stay readable until the next run.
//
// Invariants:
// 1. Between runs no pool, no open file, no bracket and no look-ahead token is held; the syntax tree of a
//    good read stays, with its numbers.
// 2. After a fatal error nothing of the run can be reached any more, and it is released when the last frame
//    that may still look at it has returned.
// 3. The grammar, the extension and the expected object belong to the caller.
//
// Sources: zvomlfil (frame), zvomltok (tokens, text form), zvomlbin (tokens, binary form), zvomlpar (parser),
// zvomlbui (object building), zvomlwri (writer), zvomldia (diagnostics).
#ifndef ZV_ZVOMLFIL_H
#define ZV_ZVOMLFIL_H

#include <cstddef>
#include <memory>
#include <string>

#include "utils/zvomltkn.h"
#include "utils/zvtextfi.h"

class ZVIndexHashTable;
class ZVOMLBinValue;
class ZVOMLDefField;
class ZVOMLDefObjType;
class ZVOMLExtension;
class ZVOMLIDTable;
class ZVOMLObject;
class ZVOMLStatic;
class ZVOMLSyntaxField;
class ZVOMLSyntaxObject;
class ZVOMLSyntaxStruct;
class ZVStringPool;
class ZVOMLArena;
struct ZVBracketList;
struct ZVOMLDefIndexList;
struct ZVOpenFileList;

class ZV_EXPORT ZVOMLFile : public ZVTextFile {
 public:
  ZVOMLFile();
  ~ZVOMLFile() override;

  // ---- Whole runs

  // Reads a file into live objects; pTopObject gives the result. With an expected object the file's top
  // object must have the expected type, and its fields go into that object. With keepIDs the ids of the
  // file are kept for the next write. The reserved number is not looked at, here and in a write. Without a
  // path or a grammar: ZV_FILE_BAD_READ_CALL.
  virtual ZVFileCodeEnum readOMLFile(const char* path, ZVOMLStatic* grammar, ZVObject* expected,
                                     int32_t expectedType, int binary, int keepIDs, int reserved);
  // Writes a file through vWriteContents. Never reports success for a file that is not whole. Without a path
  // or a grammar: ZV_FILE_BAD_WRITE_CALL.
  virtual ZVFileCodeEnum writeOMLFile(const char* path, ZVOMLStatic* grammar, ZVObject* top, int binary,
                                      int keepIDs, int reserved);
  // The expected object if there is one, else the top object that the file produced: the caller's after a
  // good read, null after a failed one.
  ZVObject* pTopObject() const;
  // Records newObject as the live object of a syntax object; deletes oldObject if it is given.
  void updateObject(ZVOMLSyntaxObject* object, ZVObject* oldObject, ZVObject* newObject);

  // Begin and end of one run. Called by the whole runs above.
  virtual void initParser(ZVOMLStatic* grammar, ZVObject* expected, int32_t expectedType, int keepIDs);
  virtual void cleanup();

  // Live objects and their ids in the file; null while ids are not kept.
  ZVIndexHashTable* pIndexHashTable() const { return indexHashTable_; }
  ZVOMLExtension* pOMLExtension() const { return extension_; }
  ZVOMLExtension* pOMLExtension(ZVOMLExtension* extension) { return extension_ = extension; }
  int inUncheckedSection() const { return inUncheckedSection_; }
  int inUncheckedSection(int flag) { return inUncheckedSection_ = flag ? 1 : 0; }
  // 1 while input comes from, and output goes to, a buffer in memory.
  int auxCLIMode() const { return auxCLIBuffer_ != nullptr; }

  int32_t sizeOf() const override;

  // ---- Diagnostics

  int32_t numberOfErrors() const { return numberOfErrors_; }
  int32_t numberOfWarnings() const { return numberOfWarnings_; }
  // The error, or warning, that reaches the limit is followed by a fatal one.
  int maxNumberOfErrors() const { return maxNumberOfErrors_; }
  int maxNumberOfErrors(int limit) { return maxNumberOfErrors_ = limit; }
  int maxNumberOfWarnings() const { return maxNumberOfWarnings_; }
  int maxNumberOfWarnings(int limit) { return maxNumberOfWarnings_ = limit; }
  // Collected messages; null without a buffer. The file's own.
  char* pErrorStringBuffer() const { return errorStringBuffer_; }
  char* pWarningStringBuffer() const { return warningStringBuffer_; }
  int errorStringBufferSize() const { return errorStringBufferSize_; }
  int warningStringBufferSize() const { return warningStringBufferSize_; }
  // Make a new, empty buffer of that size in bytes; 0 frees it, a negative size changes nothing.
  char* pErrorStringBuffer(int size);
  char* pWarningStringBuffer(int size);
  // For the functions of upper layers: a message at a node, or without a place for a null node. A fatal one
  // ends the run; between runs it releases the syntax tree, and pTopObject forgets what the caller has.
  void errorMessage(ZVOMLSyntaxStruct* where, int id, const char* text, int fatal);
  void warningMessage(ZVOMLSyntaxStruct* where, int id, const char* text);

  // ---- Writer: one item each, in the form of the running write

  void writeBlancLine();
  void writeObjectDefaultStart(const char* type);
  void writeObjectStart(const char* type, const ZVOMLObject* object, int oneline, int writeID);
  void writeObjectStart(const char* type, const ZVObject* object, int oneline);
  void writeSectionStart(const char* section, int oneline);
  // A null value is written as the empty string.
  void writeStringAttribute(const char* field, const char* value);
  void writeBoolAttribute(const char* field, int value);
  // First byte highest.
  void writeIPBytesAttribute(const char* field, uint32_t address);
  // The name of an enum value.
  void writeAttribute(const char* field, const char* value);
  void writeAttribute(const char* field, int value);
  void writeAttribute(const char* field, long value);
  // A number that is not finite has no spelling: nothing is written, and the write ends as failed.
  void writeAttribute(const char* field, float value);
  void writeAttribute(const char* field, double value);
  // A null value writes nothing.
  void writeAttribute(const char* field, const ZVOMLBinValue* value);
  void writeAttribute(const char* field, std::nullptr_t);
  // A reference: the id alone for a sibling of context, else the path from the top object. A null object, or
  // one without id, writes nothing. The name is left out only in text, and only if writeName is 0.
  void writeAttribute(const char* field, ZVOMLObject* object, ZVOMLObject* context, int writeName);
  void writeOpeningBracket();
  void writeClosingBracket();
  // The write function of the object type; 0 if it has none.
  int writeHook(const char* type, const ZVObject* object);
  // These put out what items have left in the buffer first.
  ZVFileCodeEnum writeString(const char* text) override;
  ZVFileCodeEnum writeBinary(const char* data, int count) override;

  // ---- Debugging hooks; they do nothing

  void debugOutputToken(ZVOMLToken* token);
  void debugOutputField(ZVOMLSyntaxField* field);
  void debugOutputObject(ZVOMLSyntaxObject* object);

 protected:
  // ---- What a subclass supplies or replaces

  // Writes the whole file, given the top object. Does nothing here.
  virtual void vWriteContents(ZVObject* top);
  // The application's test of one object; non-zero when good. Here the type's check function.
  virtual int vCheckObject(ZVOMLSyntaxObject* object);
  // Makes the live object, null for none. Here the type's create function.
  virtual ZVObject* vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax, ZVObject* owner);
  // Stores one field; non-zero when done. Here first the target itself, then the type's field function.
  virtual int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVObject* target);
  virtual void vPreReadFields(ZVOMLSyntaxObject* object, ZVObject* target);
  virtual void vPostReadFields(ZVOMLSyntaxObject* object, ZVObject* target);
  // Format one message and store it. A negative line means no place.
  virtual void vErrorMessage(const char* file, int32_t line, int position, int id, const char* text,
                             int fatal);
  virtual void vWarningMessage(const char* file, int32_t line, int position, int id, const char* text);
  // Creates the live objects of the tree and fills them.
  virtual void execute();
  // Removes line ends behind the text and puts one line feed back. REQUIRES: room for one more character.
  char* stripBuffer(char* text) override;

  // ---- State for subclasses

  ZVFileModeEnum saveMode() const { return saveMode_; }
  ZVFileModeEnum saveMode(ZVFileModeEnum mode) { return saveMode_ = mode; }
  ZVOMLSyntaxObject* pSyntaxTree() const { return syntaxTree_; }
  ZVObject* pTopLevelObject() const { return topLevelObject_; }
  int32_t topLevelObjectIDIndex() const { return topLevelObjectIDIndex_; }
  ZVObject* pTopLevelObject(ZVObject* object, int32_t type);
  ZVObject* pExpectedTopLevelObject() const { return expectedTopLevelObject_; }
  int32_t expectedTopLevelObjTypeIDIndex() const { return expectedTopLevelObjTypeIDIndex_; }
  ZVObject* pExpectedTopLevelObject(ZVObject* object, int32_t type);

  // Where the reader stands: -1, or no name, while no file is open.
  int32_t line() const;
  int position() const;
  const char* pFileNameString() const;

  // Names and indices. A look-up gives -1 when the name is absent or no grammar is loaded; a store enters a
  // new name. The way back gives the empty string when no grammar is loaded.
  int32_t stringIndex(const char* text) const;
  int32_t valueIDIndex(const char* name) const;
  int32_t objTypeIDIndex(const char* name) const;
  int32_t sectionIDIndex(const char* name) const;
  int32_t checkedFieldIDIndex(const char* name) const;
  int32_t unknownFieldIDIndex(const char* name) const;
  int32_t fieldIDIndex(const char* name) const;
  int32_t objectIDIndex(const char* text) const;
  int32_t storeStringIndex(const char* text);
  int32_t storeSectionIDIndex(const char* name);
  int32_t storeUnknownFieldIDIndex(const char* name);
  int32_t storeFieldIDIndex(const char* name);
  int32_t storeObjectIDIndex(const char* text);
  const char* string(int32_t index) const;
  const char* valueID(int32_t index) const;
  const char* objTypeID(int32_t index) const;
  const char* sectionID(int32_t index) const;
  const char* fieldID(int32_t index) const;
  const char* objectID(int32_t index) const;

  ZV_SHAPE_NO_COPY(ZVOMLFile)
  friend class ZVOMLSyntaxObject;
  friend class ZVOMLSyntaxField;
  friend class ZVOMLFileProbe;  // the tests look at tokens and pools through it

  // What a fatal error or cleanup takes out of reach during a run, until the run has returned.
  struct Remains;
  class Run;
  struct TokenScratch;
  struct KnownName;
  // Gives the memory of a token back to the file.
  struct TokenReturn {
    TokenReturn() : file(nullptr) {}
    explicit TokenReturn(ZVOMLFile* owner) : file(owner) {}
    void operator()(ZVOMLToken* token) const { file->returnToken(token); }
    ZVOMLFile* file;
  };
  using TokenPtr = std::unique_ptr<ZVOMLToken, TokenReturn>;

  // ---- Frame
  void makePools();
  void releasePools();
  void releaseTree();
  Remains& remains();
  void releaseRemains();

  // ---- Tokens: one of look-ahead; null at the end of input
  TokenPtr nextToken();
  ZVOMLToken* lookAheadToken();
  ZVOMLToken* makeToken();
  void joinBytes(TokenPtr& token);
  ZVOMLToken* makeTextToken();
  ZVOMLToken* makeBinaryToken();
  template <class... Arguments>
  ZVOMLToken* newTokenOf(Arguments&&... arguments);
  void returnToken(ZVOMLToken* token);
  TokenPtr owned(ZVOMLToken* token) { return TokenPtr(token, TokenReturn{this}); }
  ZVOMLToken* newToken(ZVOMLTokenTagEnum tag, int32_t value);
  ZVOMLToken* newBytesToken(const std::string& bytes);
  // Drops what the parser asked to ignore, c being the first character that may belong to it.
  char skipUnread(char c);
  char nextReadChar(char c);
  ZVOMLToken* endOfInput();
  char skipTextWhiteSpace(char c);
  int skipTextComment();
  ZVOMLToken* checkCharToken(char c);
  ZVOMLToken* readTextString();
  ZVOMLToken* readTextIntRealScopeOrIP(char c);
  ZVOMLToken* readShortInteger(char c);
  ZVOMLToken* readTextIntRealOrScope(char c);
  ZVOMLToken* readTextPointReal(char c);
  ZVOMLToken* readTextRealOrIP(ZVStringHandle& text, int32_t firstOctet);
  ZVOMLToken* readTextReal(ZVStringHandle& text, char c);
  ZVOMLToken* readTextExponent(ZVStringHandle& text, char c);
  ZVOMLToken* readTextNumberEnd(ZVStringHandle& text, int32_t number);
  ZVOMLToken* readTextIdentifier(char c);
  ZVOMLTokenTagEnum classify(const char* name, int32_t& index);
  ZVOMLToken* newNameToken(ZVOMLTokenTagEnum tag, int32_t index);
  int32_t declare(ZVStringPool* pool, const char* name);
  void forgetNames();
  ZVOMLToken* readTextFullScope();
  ZVOMLToken* readTextRemainingScope(ZVStringHandle& text, char c);
  ZVOMLToken* readTextBinValue();
  int32_t readTextIdentifierToBuffer(char c, ZVStringHandle& text);
  int32_t readTextIntegerToBuffer(char c, ZVStringHandle& text);
  int32_t takeRun(char c, int classes, ZVStringHandle& text);
  void takeScopeItem(ZVStringHandle& text);
  ZVOMLToken* readQuotedString(char (ZVOMLFile::*next)());
  void takeStringRun(std::string& text);
  ZVOMLToken* readBinarySection(char tag);
  ZVOMLToken* readBinaryField(char tag);
  ZVOMLToken* readBinaryObjType(char tag);
  ZVOMLToken* readBinaryValue(char tag);
  ZVOMLToken* readBinaryInt(char tag);
  ZVOMLToken* readBinaryIPAddress(char tag);
  ZVOMLToken* readBinaryReal(char tag);
  ZVOMLToken* readBinaryString();
  ZVOMLToken* readBinaryBinValue();
  ZVOMLToken* readBinaryObjectOrScope(char tag);
  ZVOMLToken* readBinaryName(char tag, ZVOMLTokenTagEnum tokenTag, int32_t count);
  int32_t readBinaryIndex(char tag);
  static double realOfParts(int32_t mantissa, int32_t exponent);
  int32_t takeShortID();
  void skipBinaryBytes(int32_t count);
  int32_t takeBinaryRun(std::string& bytes, int32_t count);
  char readBinaryTSChar();
  static char* removeEscapeSequences(char* text);
  ZVStringHandle& emptyScratch();
  std::string& emptyByteScratch();

  // The name of a token that is marked as an unknown field.
  const char* unknownFieldID(int32_t index) const;

  // ---- Raw input: 0 at the end, which inputEnded tells from a byte 0
  char nextFormChar();
  bool inputEnded(char c) const;
  char nextChar();
  char nextCharElsewhere();
  char lookAheadChar() const;
  char nextAuxCLIChar();
  void takeCharacters(size_t count);
  int nextLine();
  char nextBinaryChar();
  char lookAheadBinaryChar();
  bool findBinaryByte();
  int nextBinaryBuffer();
  void pushFile(const char* name);
  void popFile();
  void copyThisFileToTopStack();
  void copyTopStackToThisFile();
  void pushBracket(char c, int32_t file, int32_t line, int position);
  void popBracket(char c, int32_t file, int32_t line, int position);
  void countBracket(char c);
  void resetPosition();
  void nextPosition();
  void nextBinaryPosition();
  int32_t fileNameIndex() const;

  // ---- Parser
  void parse(const char* path);
  void parseAttributeList(int32_t file, const ZVOMLToken* prefix, int32_t section, uint32_t path,
                          ZVOMLSyntaxObject* object, int bracketed);
  void parseAttribute(int32_t file, const ZVOMLToken* listPrefix, int32_t section, uint32_t path,
                      ZVOMLSyntaxObject* object, TokenPtr& token, int number);
  static void* obtainNode(size_t size, const std::unique_ptr<ZVOMLArena>& arena);
  void addNewField(ZVOMLSyntaxObject* object, const ZVOMLSyntaxStruct& place, int32_t name, int32_t section,
                   uint32_t path, ZVOMLToken* value, ZVOMLDefField* definition, int unchecked);
  void parseObject(int32_t file, const ZVOMLToken& typeToken, int32_t id, int32_t section, uint32_t path,
                   ZVOMLSyntaxObject* parent, int hasBody);
  void parseObjectBehindID(int32_t file, const ZVOMLToken& typeToken, int32_t id, int32_t section,
                           uint32_t path, ZVOMLSyntaxObject* parent);
  void parseField(int32_t file, const ZVOMLToken* nameToken, int32_t section, uint32_t path,
                  ZVOMLSyntaxObject* object, ZVOMLToken* value, int number);
  void parseKeyword(int32_t keyword, ZVOMLSyntaxObject* object, ZVOMLToken* value);
  // Counts one more bracket whose content is parsed, until leaveBracket. Gives 0, with a fatal message, for
  // one that nests too deep.
  int enterBracket(const ZVOMLToken* bracket);
  void leaveBracket() { --parseDepth_; }
  int isSkipSection(int32_t section) const;
  uint32_t extendSectionPath(int32_t file, ZVOMLToken* token, int32_t objType, uint32_t path);
  void checkObjectSection(int32_t parentType, int32_t parentID, int32_t section, uint32_t path, int32_t file,
                          const ZVOMLToken* token, int32_t objectID);
  ZVOMLDefField* checkFieldSection(int32_t objType, int32_t section, uint32_t path, int32_t file,
                                   const ZVOMLToken* token);
  ZVOMLDefField* getDefinitionField(int32_t objType, uint32_t path, const ZVOMLToken* token);
  void checkFieldType(ZVOMLDefField* field, ZVOMLToken* value);
  TokenPtr nthFieldDescrToken(int32_t objType, uint32_t path, int number, int32_t file, ZVOMLToken* value);
  const char* decodeIdeToken(const ZVOMLToken* token) const;
  void illegalSectionInside(int32_t file, ZVOMLToken* first, ZVOMLToken* second);
  int checkSomething(ZVOMLToken* token, ZVOMLTokenTagEnum tag, const char* what);
  int checkInt(ZVOMLToken* token);
  int checkBool(ZVOMLToken* token);
  int checkString(ZVOMLToken* token);
  int checkReal(ZVOMLToken* token);
  int checkIPBytes(ZVOMLToken* token);
  int checkBinVal(ZVOMLToken* token);
  int checkScope(ZVOMLToken* token);
  int checkEnumValue(ZVOMLToken* token, ZVOMLDefIndexList* values);
  int32_t checkSimpleScope(ZVOMLToken* token);

  // ---- The parser's short way
  // What stands behind plain attributes: something else, what has to be looked at anew, or the bracket that
  // ends the list.
  enum class Plain { NONE, AGAIN, END };
  int takePlainAttributes(ZVOMLSyntaxObject* object, int32_t section, uint32_t path, int bracketed,
                          int& number);
  Plain takePlainText(ZVOMLSyntaxObject* object, int32_t section, uint32_t path, int bracketed, int& number);
  bool skipPlainSeparator();
  bool takePlainTextObject(ZVOMLSyntaxObject* parent, int32_t section, uint32_t path, int32_t type,
                           const char* text);
  bool takePlainTextField(ZVOMLSyntaxObject* object, int32_t section, uint32_t path,
                          ZVOMLDefField* definition, const char* text);
  Plain takePlainBinary(ZVOMLSyntaxObject* object, int32_t section, uint32_t path, int bracketed,
                        int& number);
  bool takePlainBinaryObject(ZVOMLSyntaxObject* parent, int32_t section, uint32_t path, int32_t type);
  bool takePlainBinaryField(ZVOMLSyntaxObject* object, int32_t section, uint32_t path,
                            ZVOMLDefField* definition);
  Plain takePlainEnd(char bracket);
  bool closesTop(char c) const;
  void parsePlainBody(int32_t file, const ZVOMLToken& typeToken, int32_t id, int32_t section, uint32_t path,
                      ZVOMLSyntaxObject* parent, char bracket);
  int positionAt(const char* text) const;
  int32_t lineBehind(uint32_t bytes) const;
  void skipSeparator();
  char skipBlankLines();
  const KnownName* findName(const char*& text) const;
  void addPlainField(ZVOMLSyntaxObject* object, int32_t section, uint32_t path, ZVOMLDefField* definition,
                     int32_t line, int position, ZVOMLToken& value);

  // ---- Semantic pass and object building
  void checkSemantics();
  void collectDefaultFields(ZVOMLSyntaxObject* object);
  void collectObjects(ZVOMLSyntaxObject* object, int32_t scope, int32_t& counter);
  int32_t fullObjectScopeIDIndex(ZVOMLSyntaxObject* object, int32_t scope, int32_t& counter);
  void checkRequiredFields(ZVOMLSyntaxObject* object, int32_t own, int32_t scope, int32_t& counter);
  void checkObjectDefinition(ZVOMLSyntaxField* field, int32_t scope);
  int checkObjectsForApplication(ZVOMLSyntaxObject* object);
  int32_t extractIDFromScope(int32_t index) const;
  void createAllObjects(ZVOMLSyntaxObject* object);
  void createTopLevelObject(ZVOMLSyntaxObject* object);
  void createOwnedObjects(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax, ZVObject* owner);
  int setOwnedFields(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax, ZVObject* owner);
  ZVOMLDefObjType* pObjTypeDefinition(int32_t index) const;
  int32_t enumValue(int32_t index) const;
  int definedSection(int32_t index) const;
  ZVOMLSyntaxObject* pSyntaxObject(int32_t index) const;
  ZVOMLSyntaxObject* pSyntaxObject(int32_t index, ZVOMLSyntaxObject* object);
  ZVObject* pObject(int32_t index) const;
  int32_t storeIntegerIDIndex(int32_t number);

  // ---- Writer. Each public operation puts its bytes in the buffer between beginItem and endItem.
  int inBinary() const { return saveMode_ == ZV_FILE_WRITE_BINARY; }
  void beginItem();
  void endItem();
  void put(const char* text);
  void flushOutput();
  ZVFileCodeEnum closeWritten();
  // In text: indentation, the field's name, a colon and a blank; in binary: the field item.
  void beginField(const char* field);
  // In text: the line end, unless the object stands on one line.
  void endField();
  void internalWriteObjectStart(const char* type, const ZVObject* object, int oneline, int writeID);
  void writeIndentation();
  void writeBinBytes(const char* bytes, int32_t count);
  void writeObjectAddress(ZVOMLObject* object, ZVOMLObject* context);
  void writeBinarySection(const char* section);
  void writeBinaryField(const char* field);
  void writeBinaryObjType(const char* type);
  void writeBinaryValue(const char* value);
  void writeBinaryInt(int32_t value);
  void writeBinaryIPAddress(uint32_t address);
  void writeBinaryReal(double value);
  void writeBinaryString(const char* value);
  void writeBinaryBinValue(const ZVOMLBinValue* value);
  void writeBinaryObjectOrScope(char tag, const char* text);
  void writeBinaryIndex(char tag, int32_t value);
  void writeBinaryTSChar(char c);
  // Writes count characters of the source in their escaped form and gives the end. REQUIRES: room for 4
  // times as many.
  static char* convertEscapes(char* destination, const char* source, size_t count);
  void putEscaped(const char* source);
  void addToAuxCLIBuffer(const char* text);

  // ---- Diagnostics
  void internalErrorMessage(const char* file, int32_t line, int position, int id, const char* format,
                            const char* s1, const char* s2, const char* s3, int fatal);
  // The format comes from the message table.
  void internalErrorMessage(const char* file, int32_t line, int position, int id, const char* s1,
                            const char* s2, const char* s3, int fatal);
  // At a token; a null token has no place.
  void internalErrorMessage(int32_t file, const ZVOMLToken* token, int id, const char* s1, const char* s2,
                            const char* s3, int fatal);
  // At the reader's current place.
  void internalErrorMessage(int id, const char* s1, const char* s2, const char* s3, int fatal);
  void internalWarningMessage(const char* file, int32_t line, int position, int id, const char* text);
  void internalWarningMessage(const char* file, int32_t line, int position, int id);
  static void bufferAppend(char* buffer, const char* text, int size);
  int isFatalError() const { return fatalError_; }
  void setFatalError() { fatalError_ = 1; }
  void clearFatalError() { fatalError_ = 0; }
  ZVFileCodeEnum errorCode() const { return errorCode_; }
  ZVFileCodeEnum errorCode(ZVFileCodeEnum code) { return errorCode_ = code; }

  // Frame
  ZVOMLStatic* grammar_ = nullptr;
  ZVOMLExtension* extension_ = nullptr;
  ZVIndexHashTable* indexHashTable_ = nullptr;
  ZVStringPool* stringPool_ = nullptr;
  ZVStringPool* unknownSectionIDPool_ = nullptr;
  ZVStringPool* unknownFieldIDPool_ = nullptr;
  ZVStringPool* uncheckedFieldIDPool_ = nullptr;
  ZVStringPool* objectIDPool_ = nullptr;
  ZVOMLSyntaxObject* syntaxTree_ = nullptr;
  ZVObject* topLevelObject_ = nullptr;
  ZVObject* expectedTopLevelObject_ = nullptr;
  int32_t topLevelObjectIDIndex_ = -1;
  int32_t expectedTopLevelObjTypeIDIndex_ = -1;
  bool topObjectGiven_ = false;  // a good read has ended, and the top object is the caller's
  int runDepth_ = 0;             // above 0, what cleanup releases goes to the remains
  Remains* remains_ = nullptr;

  // Parser
  int32_t parseDepth_ = 0;  // brackets being parsed

  // Tokens
  ZVFileModeEnum saveMode_ = ZV_FILE_READ;
  ZVOpenFileList* openFiles_ = nullptr;
  ZVBracketList* brackets_ = nullptr;
  ZVBracketList* freeBrackets_ = nullptr;  // entries that are used up
  int32_t bracketLevel_ = 0;
  int32_t bracketSkipLevel_ = -1;
  TokenPtr lookAhead_;
  bool shortWay_ = true;      // plain attributes may go the short way
  bool sawDefaults_ = false;  // the tree holds a defaults group
  int32_t tokenFile_ = -1;    // where the last token that nextToken gave was read
  std::unique_ptr<TokenScratch> scratch_;
  std::unique_ptr<ZVOMLIDTable> ids_;  // the object id pool holds their names
  void* freeTokens_ = nullptr;         // memory of tokens that are used up; each begins with the next
  // The nodes of the syntax tree, apart, since most passes look at objects alone.
  std::unique_ptr<ZVOMLArena> objectNodes_;
  std::unique_ptr<ZVOMLArena> fieldNodes_;
  int ignoreField_ = 0;
  int inUncheckedSection_ = 0;
  ZVStringHandle* auxCLIBuffer_ = nullptr;  // not owned

  // Writer
  std::string output_;       // items that have not gone to the file yet
  bool collecting_ = false;  // inside writeOMLFile: items stay in the buffer until it is full
  int16_t indent_ = 0;
  int8_t oneline_ = 0;
  bool writeFailed_ = false;

  // Diagnostics
  int32_t numberOfErrors_ = 0;
  int32_t numberOfWarnings_ = 0;
  int maxNumberOfErrors_ = 16;
  int maxNumberOfWarnings_ = 32000;
  char* errorStringBuffer_ = nullptr;
  char* warningStringBuffer_ = nullptr;
  int errorStringBufferSize_ = 0;
  int warningStringBufferSize_ = 0;
  int fatalError_ = 0;
  ZVFileCodeEnum errorCode_{};
};

#endif
