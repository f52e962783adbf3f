// Definitions that the sources of ZVOMLFile share. Not a public header.
#ifndef ZV_ZVOMLINT_H
#define ZV_ZVOMLINT_H

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "utils/zvomlfil.h"
#include "utils/zvstrhnd.h"

class ZVStringPool;

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
};

// One entry of the stack of open brackets.
struct ZVBracketList {
  char bracket;
  int32_t fileNameIndex;
  int32_t line;
  int16_t position;
  ZVBracketList* next;
};

// What an entry of the object id pool points to: the nodes of both phases. Neither is owned.
struct ZVOMLFile::ObjectRecord {
  ZVOMLSyntaxObject* syntaxObject = nullptr;
  ZVObject* object = nullptr;
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
  std::vector<ZVStringPool*> recordPools;  // whose entries point to an ObjectRecord each, or to nothing
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

// Remembers to which index a pair of numbers led: each pair has one place, which a later pair may take over,
// and the places grow with the pairs. Pairs that follow one another lie side by side.
class ZVIndexMemory {
 public:
  // The index of the pair, -1 if it is not remembered.
  int32_t find(int32_t first, int32_t second) const {
    if (places_.empty()) return -1;
    const Place& place = places_[placeOf(first, second)];
    return place.first == first && place.second == second ? place.index : -1;
  }
  void remember(int32_t first, int32_t second, int32_t index);

 private:
  struct Place {
    int32_t first = 0;
    int32_t second = 0;
    int32_t index = -1;
  };

  size_t placeOf(int32_t first, int32_t second) const {
    return (static_cast<uint32_t>(first) * 0x9e3779b1U + static_cast<uint32_t>(second)) &
           (places_.size() - 1);
  }

  std::vector<Place> places_;  // a power of two, or none
  size_t used_ = 0;
};

// What the object id pool would answer again and again.
struct ZVOMLFile::KnownIDs {
  ZVIndexMemory integers;   // 0 and a number to the index of its text
  ZVIndexMemory addresses;  // a scope and an id to the index of the address
};

// What the token reader keeps between tokens for speed alone.
struct ZVOMLFile::TokenScratch {
  // What identifiers were classified as, each in the place that its text leads to. Forgotten when a name is
  // declared.
  struct Name {
    char text[24];
    ZVOMLTokenTagEnum tag;
    int32_t index;
  };
  std::array<Name, 256> names{};

  ZVStringHandle text;
  std::string bytes;
};

#endif
