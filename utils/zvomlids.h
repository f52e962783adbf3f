// The object ids and addresses of one run of ZVOMLFile. Not a public header.
//
// Each has an index that holds as long as the run. An address is a scope, itself an id or an address, with an
// id behind it, written with a comma in between; so it is kept as a pair of indices and the decimal text of a
// number as the number. Their texts are made for those who ask, and equal texts have one index all the same:
// a text is taken apart at its commas before it is looked up.
#ifndef ZV_ZVOMLIDS_H
#define ZV_ZVOMLIDS_H

#include <algorithm>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "utils/zvfetch.h"

class ZVObject;
class ZVOMLSyntaxObject;
class ZVStringPool;

// Remembers to which index a pair of numbers led: each pair has one place, which a later pair may take over,
// and the places grow with the pairs. Pairs that follow one another lie side by side.
class ZVIndexMemory {
 public:
  struct Place {
    int32_t first = 0;
    int32_t second = 0;
    int32_t index = -1;
    int32_t note = UNKNOWN;  // the caller's
  };
  static constexpr int32_t UNKNOWN = -2;

  // The place of the pair, null if it is not remembered.
  Place* find(int32_t first, int32_t second) {
    if (places_.empty()) return nullptr;
    Place& place = places_[placeOf(first, second)];
    return place.index >= 0 && place.first == first && place.second == second ? &place : nullptr;
  }
  void remember(int32_t first, int32_t second, int32_t index);
  void prefetch(int32_t first, int32_t second) const {
    if (!places_.empty()) zvPrefetch(&places_[placeOf(first, second)]);
  }

 private:
  size_t placeOf(int32_t first, int32_t second) const {
    return (static_cast<uint32_t>(first) * 0x9e3779b1U + static_cast<uint32_t>(second)) &
           (places_.size() - 1);
  }

  std::vector<Place> places_;  // a power of two, or none
  size_t used_ = 0;
};

// A set of numbers from 0 on, most of them next to one another.
class ZVNumberSet {
 public:
  bool holds(int32_t number) const {
    const size_t block = blockOf(number);
    return block < blocks_.size() && blocks_[block] && blocks_[block]->test(placeIn(number));
  }
  void add(int32_t number) {
    const size_t block = blockOf(number);
    if (block >= blocks_.size()) blocks_.resize(block + 1);
    if (!blocks_[block]) blocks_[block] = std::make_unique<Block>();
    blocks_[block]->set(placeIn(number));
  }

 private:
  static constexpr size_t BLOCK_SIZE = 512;
  using Block = std::bitset<BLOCK_SIZE>;

  static size_t blockOf(int32_t number) { return static_cast<size_t>(number) / BLOCK_SIZE; }
  static size_t placeIn(int32_t number) { return static_cast<size_t>(number) % BLOCK_SIZE; }

  std::vector<std::unique_ptr<Block>> blocks_;
};

class ZVOMLIDTable {
 public:
  // What an address stands for, the nodes of both phases. Neither is owned.
  struct Record {
    ZVOMLSyntaxObject* syntaxObject = nullptr;
    ZVObject* object = nullptr;
  };

  // The names among the ids go to the pool, whose pointers are the table's.
  explicit ZVOMLIDTable(ZVStringPool& names) : names_(names) {}

  // The index of a text, -1 if it has not been entered.
  int32_t find(const char* text) const;
  int32_t enter(const char* text);
  // The index of the decimal text of a number.
  int32_t enterNumber(int32_t number);
  // The index of the address that an id, or an address, has in a scope.
  int32_t enterAddress(int32_t scope, int32_t id);
  // The address that an object without id has in a scope. Each number, from -2 on downward, is given once.
  int32_t enterUnnamed(int32_t scope, int32_t number);
  // What enterAddress remembers, null if it does not; the note is the caller's.
  ZVIndexMemory::Place* remembered(int32_t scope, int32_t id) { return memory_.find(scope, id); }
  void note(int32_t scope, int32_t id, int32_t value) {
    if (ZVIndexMemory::Place* place = memory_.find(scope, id)) place->note = value;
  }
  void prefetchAddress(int32_t scope, int32_t id) const { memory_.prefetch(scope, id); }

  // "" for an index that was not given. The text holds as long as the table.
  const char* text(int32_t index);
  // Whether the text begins with a dollar sign.
  bool isAbsolute(int32_t index) const { return isEntry(index) && entries_[at(index)].absolute; }
  // Whether the text holds a comma.
  bool isAddress(int32_t index) const { return isEntry(index) && entries_[at(index)].scope < NAME; }
  // The id at the end of an address, else the index itself.
  int32_t lastItem(int32_t index) const { return isAddress(index) ? idOf(entries_[at(index)]) : index; }
  // Those that are kept as numbers, and their number.
  static bool isNumber(int32_t index) { return index >= NUMBERS; }
  static int32_t numberOf(int32_t index) {
    return index < NEGATIVE_NUMBERS ? index - NUMBERS : NEGATIVE_NUMBERS - 1 - index;
  }

  // Null for one that has none, or an index that was not given. It holds until the next one is made.
  Record* record(int32_t index) {
    return index >= 0 && at(index) < records_.size() ? &records_[at(index)] : nullptr;
  }
  // Made if there is none; null for an index that was not given.
  Record* makeRecord(int32_t index) {
    if (!isEntry(index)) return nullptr;
    if (at(index) >= records_.size()) records_.resize(std::max(entries_.size(), 2 * records_.size()));
    return &records_[at(index)];
  }

 private:
  // Indices from here on are numbers themselves, those below 0 last.
  static constexpr int32_t NUMBERS = 1 << 30;
  static constexpr int32_t NEGATIVE_NUMBERS = NUMBERS + NUMBERS / 2;
  static constexpr int32_t LARGEST_NUMBER = NUMBERS / 2 - 1;
  static constexpr uint32_t NAME = NUMBERS * 2U - 1;  // in the place of a scope
  static constexpr size_t GROUP = 8;  // neighbours among the ids of a scope that are neighbours in memory

  // An address, or a name of the pool. Parts of a text have entries too, without having been entered.
  struct Entry {
    uint32_t scope : 31;
    uint32_t entered : 1;
    uint32_t id : 31;
    uint32_t absolute : 1;
  };
  // Open addressing with linear probing, at most half full; a free place has index 0, which is a name's.
  struct Place {
    uint32_t check = 0;
    int32_t index = 0;
  };

  static size_t at(int32_t index) { return static_cast<size_t>(index); }
  static int32_t scopeOf(const Entry& entry) { return static_cast<int32_t>(entry.scope); }
  static int32_t idOf(const Entry& entry) { return static_cast<int32_t>(entry.id); }
  bool isEntry(int32_t index) const { return index >= 0 && at(index) < entries_.size(); }
  static bool hasIndex(int32_t number) { return number >= -LARGEST_NUMBER && number <= LARGEST_NUMBER; }
  static int32_t indexOf(int32_t number) {
    return number >= 0 ? NUMBERS + number : NEGATIVE_NUMBERS - 1 - number;
  }

  // An item is what stands between commas.
  static bool isOwnNumber(std::string_view item, int32_t& number);
  int32_t findItem(std::string_view item) const;
  int32_t makeItem(std::string_view item);
  std::string itemText(int32_t index) const;
  int32_t findPair(int32_t scope, int32_t id) const;
  int32_t findUnnamed(int32_t scope, int32_t id) const;
  int32_t makePair(int32_t scope, int32_t id);
  int32_t addEntry(uint32_t scope, int32_t id, bool absolute);
  bool isEntered(int32_t index) const;
  int32_t markEntered(int32_t index);
  // The items of an address, the last one first.
  std::vector<int32_t> itemsOf(int32_t index) const;
  static uint32_t checkOf(int32_t scope, int32_t id) {
    return static_cast<uint32_t>(scope) * 0x9e3779b1U + static_cast<uint32_t>(id);
  }
  // The place of the pair, or the free one where it belongs.
  size_t placeOf(int32_t scope, int32_t id) const;
  void enlarge();

  ZVStringPool& names_;
  std::vector<Entry> entries_;
  std::vector<Place> places_;  // of the addresses; a power of two, or none
  size_t addresses_ = 0;
  // Odd, and not the same in each run, so that no file can be made whose addresses all want one place.
  const uint64_t factor_ = reinterpret_cast<uintptr_t>(this) * uint64_t{0x9e3779b97f4a7c15U} | 1;
  // Those of objects without id, which have no place, by their numbers; 0: none.
  std::vector<int32_t> unnamed_;
  bool placedNegative_ = false;  // a place may have the address that the next object without id will get
  ZVNumberSet numbers_;          // those that are entered
  ZVNumberSet negativeNumbers_;  // the same below 0, each less the first one
  ZVIndexMemory memory_;
  std::vector<Record> records_;
  std::unordered_map<int32_t, std::string> texts_;  // of addresses and numbers
};

#endif
