// Definitions that the sources of ZVOMLFile share. Not a public header.
#ifndef ZV_ZVOMLINT_H
#define ZV_ZVOMLINT_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "utils/zvomlfil.h"
#include "utils/zvomlids.h"
#include "utils/zvstrhnd.h"

class ZVStringPool;

// Fields with a lower index are keywords of the format.
constexpr int32_t FIRST_ORDINARY_FIELD = 7;

// The characters of the text form.
namespace zvomlchar {

enum CharClass : uint8_t {
  LETTER = 1,
  DIGIT = 2,
  UNDERSCORE = 4,
  HEX_DIGIT = 8,
  SIGN = 16,
  SCOPE_SEPARATOR = 32,
  INTEGER_BREAK = 64,
  WHITE_SPACE = 128
};
constexpr int IDENTIFIER = LETTER | DIGIT | UNDERSCORE;

inline constexpr std::array<uint8_t, 256> CHAR_CLASSES = [] {
  std::array<uint8_t, 256> classes{};
  for (unsigned c = 'a'; c <= 'z'; ++c) classes[c] = classes[c - 'a' + 'A'] = LETTER;
  for (unsigned c = 'a'; c <= 'f'; ++c) classes[c] = classes[c - 'a' + 'A'] = LETTER | HEX_DIGIT;
  for (unsigned c = '0'; c <= '9'; ++c) classes[c] = DIGIT | HEX_DIGIT;
  classes['_'] = UNDERSCORE;
  classes['+'] = classes['-'] = SIGN;
  classes[','] = classes['|'] = SCOPE_SEPARATOR;
  classes[' '] = classes['\t'] = classes['\n'] = WHITE_SPACE;
  // What makes something else of the digits before it.
  for (char c : {',', '|', '.', 'e', 'E', 'x'}) classes[static_cast<unsigned char>(c)] |= INTEGER_BREAK;
  return classes;
}();

inline bool is(char c, int classes) { return (CHAR_CLASSES[static_cast<unsigned char>(c)] & classes) != 0; }

inline bool isLeftBracket(char c) { return c == '(' || c == '<' || c == '[' || c == '{'; }

// The opening bracket of a closing one; any other character itself.
inline char leftBracketOf(char c) {
  switch (c) {
    case ')':
      return '(';
    case '>':
      return '<';
    case ']':
      return '[';
    case '}':
      return '{';
    default:
      return c;
  }
}

// Reads an id of the binary form that is a short number, and its end; -1 for any other. With a leading zero
// the text is not that of the number.
int32_t scanNumberID(const char*& bytes, const char* end);

}  // namespace zvomlchar

// One entry of the stack of open files. Entries below the top keep the state of their file while another one
// is read in their place.
struct ZVOpenFileList {
  static constexpr int32_t BINARY_BUFFER_SIZE = 254;

  int32_t fileNameIndex = -1;  // in the string pool
  int32_t line = 0;            // of a binary file: bytes taken
  int16_t position = 0;        // characters of the line taken
  ZVStringHandle text;         // the current line
  const char* read = nullptr;  // next character of the line; null: no line yet
  char binaryBuffer[BINARY_BUFFER_SIZE];
  const char* binaryRead = nullptr;
  int32_t binaryLeft = 0;

  uint16_t bits = 0;
  int fileHandle = -1;
  CArchive* archive = nullptr;
  char* fileBuffer = nullptr;  // owned while another file is read
  char* topBuffer = nullptr;
  int numberOfBufferedBytes = 0;
  std::string fileName;
  std::string pathName;

  int32_t depth = 1;  // number of entries from here down
  ZVOpenFileList* next = nullptr;

  // Wraps around behind the last number of 32 bits.
  void addToLine(int32_t count) {
    line = static_cast<int32_t>(static_cast<uint32_t>(line) + static_cast<uint32_t>(count));
  }
};

// One entry of the stack of open brackets.
struct ZVBracketList {
  char bracket;
  int32_t fileNameIndex;
  int32_t line;
  int16_t position;
  ZVBracketList* next;
};

// Memory for many small things that go together: nothing is released before all of it.
class ZVOMLArena {
 public:
  ZVOMLArena() = default;
  ZVOMLArena(const ZVOMLArena&) = delete;
  ZVOMLArena& operator=(const ZVOMLArena&) = delete;
  ~ZVOMLArena();

  // Aligned for pointers and numbers; null without memory.
  void* obtain(size_t size) {
    constexpr size_t STEP = std::max(alignof(double), alignof(void*));
    size = (size + STEP - 1) / STEP * STEP;
    if (left_ < size && !nextBlock(size)) return nullptr;
    left_ -= size;
    return std::exchange(next_, next_ + size);
  }

 private:
  bool nextBlock(size_t size);

  std::vector<std::unique_ptr<std::byte[]>> blocks_;
  size_t inBlocks_ = 0;
  size_t blockSize_ = 1 << 13;  // of the next one
  std::vector<void*> pages_;    // behind the blocks
  std::byte* next_ = nullptr;
  size_t left_ = 0;
};

// Owns what cleanup takes out of reach. During a run it waits here, so that no frame of the parser or of a
// callback ever looks at freed memory.
struct ZVOMLFile::Remains {
  Remains() = default;
  Remains(const Remains&) = delete;
  Remains& operator=(const Remains&) = delete;
  ~Remains();

  std::vector<ZVObject*> objects;
  std::vector<ZVOMLSyntaxObject*> trees;
  std::vector<ZVStringPool*> pools;
  std::vector<std::unique_ptr<ZVOMLArena>> arenas;  // of the trees
  std::vector<std::unique_ptr<ZVOMLIDTable>> ids;
};

// One run of a read or a write, from behind initParser to the last use of the file: what cleanup releases
// while it lasts is deleted when it is over.
class ZVOMLFile::Run {
 public:
  explicit Run(ZVOMLFile& file) : file_(file) { ++file_.runDepth_; }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;
  ~Run() {
    if (--file_.runDepth_ == 0) file_.releaseRemains();
  }

 private:
  ZVOMLFile& file_;
};

template <class... Arguments>
ZVOMLToken* ZVOMLFile::newTokenOf(Arguments&&... arguments) {
  void* memory = freeTokens_;
  if (memory) {
    freeTokens_ = *static_cast<void**>(memory);
  } else {
    memory = ::operator new(sizeof(ZVOMLToken));
  }
  return new (memory) ZVOMLToken(std::forward<Arguments>(arguments)...);
}

inline void ZVOMLFile::returnToken(ZVOMLToken* token) {
  token->~ZVOMLToken();
  freeTokens_ = new (token) void*(freeTokens_);
}

// ---- The reader's innermost steps

inline int32_t ZVOMLFile::fileNameIndex() const { return openFiles_ ? openFiles_->fileNameIndex : -1; }

inline ZVOMLToken* ZVOMLFile::newToken(ZVOMLTokenTagEnum tag, int32_t value) {
  const ZVOpenFileList* top = openFiles_;
  return newTokenOf(tag, value, top ? top->line : -1, top ? int32_t{top->position} : -1);
}

inline void ZVOMLFile::nextPosition() {
  openFiles_->position = static_cast<int16_t>(openFiles_->position + 1);
}

inline char ZVOMLFile::nextChar() {
  const ZVOpenFileList* top = openFiles_;
  if (auxCLIBuffer_ || !top || !top->read || !*top->read) return nextCharElsewhere();
  nextPosition();
  return *openFiles_->read++;
}

inline char ZVOMLFile::lookAheadChar() const {
  if (auxCLIBuffer_) return *auxCLIBuffer_->pString();
  return openFiles_ && openFiles_->read ? *openFiles_->read : '\0';
}

// Takes characters of the present line that were looked at in place.
inline void ZVOMLFile::takeCharacters(size_t count) {
  openFiles_->read += count;
  openFiles_->position = static_cast<int16_t>(openFiles_->position + static_cast<int64_t>(count));
}

inline void ZVOMLFile::nextBinaryPosition() { openFiles_->addToLine(1); }

// Takes bytes of the buffer that were looked at in place.
inline void ZVOMLFile::skipBinaryBytes(int32_t count) {
  ZVOpenFileList& top = *openFiles_;
  top.binaryRead += count;
  top.binaryLeft -= count;
  top.addToLine(count);
}

inline char ZVOMLFile::nextBinaryChar() {
  if ((!openFiles_ || openFiles_->binaryLeft <= 0) && !findBinaryByte()) return '\0';
  nextBinaryPosition();
  --openFiles_->binaryLeft;
  return *openFiles_->binaryRead++;
}

inline char ZVOMLFile::nextReadChar(char c) {
  return ignoreField_ || bracketSkipLevel_ >= 0 ? skipUnread(c) : c;
}

inline bool ZVOMLFile::inputEnded(char c) const {
  return c == '\0' && (auxCLIBuffer_ ? *auxCLIBuffer_->pString() == '\0' : openFiles_ == nullptr);
}

// What an identifier was classified as. The tag of a bad token stands for the name of a declared field.
struct ZVOMLFile::KnownName {
  // Whether the identifier that begins there is this one.
  bool standsAt(const char* place) const {
    size_t same = 0;
    while (same < length && text[same] == place[same]) ++same;
    return same == length && same > 0 && !zvomlchar::is(place[same], zvomlchar::IDENTIFIER);
  }

  char text[24];
  size_t length;
  ZVOMLTokenTagEnum tag;
  int32_t index;
  KnownName* next;  // a place that is likely to hold the name behind this one, or null
};

// What the token reader keeps between tokens for speed alone.
struct ZVOMLFile::TokenScratch {
  // Each identifier in the place that its text leads to. Forgotten when a name is declared.
  std::array<KnownName, 256> names{};
  KnownName* last = names.data();  // where the last one was found

  static uint32_t nextKey(uint32_t key, char c) { return key * 31 + static_cast<unsigned char>(c); }

  // Null for a text that is too long.
  KnownName* placeOf(uint32_t key, size_t length) {
    return length < sizeof KnownName::text ? &names[key % names.size()] : nullptr;
  }

  ZVStringHandle text;
  std::string bytes;
};

#endif
