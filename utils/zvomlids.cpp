#include "utils/zvomlids.h"

#include "utils/zvascii.h"
#include "utils/zvnumtxt.h"
#include "utils/zvstrpoo.h"

namespace {

constexpr char SEPARATOR = ',';
constexpr size_t FIRST_PLACES = 1024;
constexpr size_t GROWTH = 4;
constexpr int32_t FIRST_UNNAMED = -2;

// Whether an item is a number, spelled as numbers are printed, with few digits.
bool isShortInteger(std::string_view item, int32_t& number) {
  constexpr size_t LONGEST = 9;
  const bool negative = !item.empty() && item[0] == '-';
  const std::string_view digits = item.substr(negative);
  if (digits.empty() || digits.size() > LONGEST) return false;
  if (digits[0] == '0' && (negative || digits.size() > 1)) return false;
  number = 0;
  for (const char c : digits) {
    if (!zvascii::isDigit(c)) return false;
    number = number * 10 + (c - '0');
  }
  if (negative) number = -number;
  return true;
}

// Gives the items of a text one by one.
class Items {
 public:
  explicit Items(const char* text) : rest_(text) {}

  bool next(std::string_view& item) {
    if (ended_) return false;
    const size_t end = rest_.find(SEPARATOR);
    item = rest_.substr(0, end);
    ended_ = end == std::string_view::npos;
    if (!ended_) rest_.remove_prefix(end + 1);
    return true;
  }

 private:
  std::string_view rest_;
  bool ended_ = false;
};

}  // namespace

void ZVIndexMemory::remember(int32_t first, int32_t second, int32_t index) {
  if (used_ >= places_.size() / 2) {
    std::vector<Place> before(std::max<size_t>(places_.size() * 2, 256));
    before.swap(places_);
    for (const Place& place : before)
      if (place.index >= 0) places_[placeOf(place.first, place.second)] = place;
  }
  Place& place = places_[placeOf(first, second)];
  if (place.index < 0) ++used_;
  place = {first, second, index, UNKNOWN};
}

int32_t ZVOMLIDTable::find(const char* text) const {
  int32_t index = -1;
  std::string_view item;
  Items items(text);
  for (bool first = true; items.next(item); first = false) {
    const int32_t id = findItem(item);
    if (id < 0) return -1;
    index = first ? id : findPair(index, id);
    if (index < 0) return -1;
  }
  return isEntered(index) ? index : -1;
}

int32_t ZVOMLIDTable::enter(const char* text) {
  int32_t index = -1;
  std::string_view item;
  Items items(text);
  for (bool first = true; items.next(item); first = false) {
    const int32_t id = makeItem(item);
    index = first ? id : makePair(index, id);
  }
  return markEntered(index);
}

int32_t ZVOMLIDTable::enterNumber(int32_t number) {
  if (hasIndex(number)) return markEntered(indexOf(number));
  char text[zvnumber::INTEGER_ROOM];
  zvnumber::formatInteger(text, number);
  return enter(text);
}

int32_t ZVOMLIDTable::enterAddress(int32_t scope, int32_t id) {
  if (const ZVIndexMemory::Place* known = memory_.find(scope, id)) return known->index;
  int32_t index = scope;
  if (isAddress(id)) {
    const std::vector<int32_t> items = itemsOf(id);
    for (auto item = items.rbegin(); item != items.rend(); ++item) index = makePair(index, *item);
  } else {
    index = makePair(scope, id);
  }
  memory_.remember(scope, id, index);
  return markEntered(index);
}

int32_t ZVOMLIDTable::enterUnnamed(int32_t scope, int32_t number) {
  const int32_t id = indexOf(number);
  if (placedNegative_) return markEntered(makePair(scope, id));
  const size_t order = at(FIRST_UNNAMED - number);
  if (order >= unnamed_.size()) unnamed_.resize(order + 1);
  unnamed_[order] = addEntry(static_cast<uint32_t>(scope), id, isAbsolute(scope));
  return markEntered(unnamed_[order]);
}

const char* ZVOMLIDTable::text(int32_t index) {
  if (isEntry(index) && entries_[at(index)].scope == NAME) return names_.decode(idOf(entries_[at(index)]));
  if (!isEntry(index) && !isNumber(index)) return "";
  std::string& text = texts_[index];
  if (!text.empty()) return text.c_str();
  const std::vector<int32_t> items = itemsOf(index);
  for (auto item = items.rbegin(); item != items.rend(); ++item) {
    if (item != items.rbegin()) text += SEPARATOR;
    text += itemText(*item);
  }
  return text.c_str();
}

// ---- Items

bool ZVOMLIDTable::isOwnNumber(std::string_view item, int32_t& number) {
  return isShortInteger(item, number) && hasIndex(number);
}

int32_t ZVOMLIDTable::findItem(std::string_view item) const {
  int32_t number = 0;
  if (isOwnNumber(item, number)) return indexOf(number);
  const int32_t name = names_.lookup(std::string(item).c_str());
  return name < 0 ? -1 : static_cast<int32_t>(reinterpret_cast<intptr_t>(names_.pointer(name)));
}

int32_t ZVOMLIDTable::makeItem(std::string_view item) {
  int32_t number = 0;
  if (isOwnNumber(item, number)) return indexOf(number);
  const int32_t before = names_.decodeTableMax();
  const int32_t name = names_.update(std::string(item).c_str());
  if (name < before)
    return name < 0 ? -1 : static_cast<int32_t>(reinterpret_cast<intptr_t>(names_.pointer(name)));
  const int32_t index = addEntry(NAME, name, item.starts_with('$'));
  names_.pointer(name, reinterpret_cast<void*>(static_cast<intptr_t>(index)));
  return index;
}

std::string ZVOMLIDTable::itemText(int32_t index) const {
  return isNumber(index) ? std::to_string(numberOf(index)) : names_.decode(idOf(entries_[at(index)]));
}

std::vector<int32_t> ZVOMLIDTable::itemsOf(int32_t index) const {
  std::vector<int32_t> items;
  for (; isAddress(index); index = scopeOf(entries_[at(index)])) items.push_back(idOf(entries_[at(index)]));
  items.push_back(index);
  return items;
}

// ---- Entries

int32_t ZVOMLIDTable::addEntry(uint32_t scope, int32_t id, bool absolute) {
  const auto index = static_cast<int32_t>(entries_.size());
  entries_.push_back({scope & NAME, 0, static_cast<uint32_t>(id) & NAME, absolute});
  return index;
}

bool ZVOMLIDTable::isEntered(int32_t index) const {
  if (!isNumber(index)) return isEntry(index) && entries_[at(index)].entered;
  const int32_t number = numberOf(index);
  return number >= 0 ? numbers_.holds(number) : negativeNumbers_.holds(-1 - number);
}

int32_t ZVOMLIDTable::markEntered(int32_t index) {
  if (isNumber(index)) {
    const int32_t number = numberOf(index);
    number >= 0 ? numbers_.add(number) : negativeNumbers_.add(-1 - number);
  } else if (isEntry(index)) {
    entries_[at(index)].entered = 1;
  }
  return index;
}

// ---- Pairs

int32_t ZVOMLIDTable::findUnnamed(int32_t scope, int32_t id) const {
  const size_t order = isNumber(id) ? at(FIRST_UNNAMED - numberOf(id)) : unnamed_.size();
  if (order >= unnamed_.size() || unnamed_[order] == 0) return -1;
  return entries_[at(unnamed_[order])].scope == static_cast<uint32_t>(scope) ? unnamed_[order] : -1;
}

int32_t ZVOMLIDTable::findPair(int32_t scope, int32_t id) const {
  const int32_t unnamed = findUnnamed(scope, id);
  if (unnamed > 0) return unnamed;
  if (places_.empty()) return -1;
  const int32_t index = places_[placeOf(scope, id)].index;
  return index > 0 ? index : -1;
}

int32_t ZVOMLIDTable::makePair(int32_t scope, int32_t id) {
  if (scope < 0 || id < 0) return -1;
  const int32_t unnamed = findUnnamed(scope, id);
  if (unnamed > 0) return unnamed;
  if (id >= NEGATIVE_NUMBERS) placedNegative_ = true;
  if (addresses_ * 2 >= places_.size()) enlarge();
  Place& place = places_[placeOf(scope, id)];
  if (place.index == 0) {
    place = {checkOf(scope, id), addEntry(static_cast<uint32_t>(scope), id, isAbsolute(scope))};
    ++addresses_;
  }
  return place.index;
}

// Ids that follow one another begin their search side by side.
size_t ZVOMLIDTable::placeOf(int32_t scope, int32_t id) const {
  const uint64_t group =
      static_cast<uint64_t>(static_cast<uint32_t>(scope)) << 32 | static_cast<uint32_t>(id) / GROUP;
  const auto hash = static_cast<size_t>(group * factor_ >> 32);
  const uint32_t check = checkOf(scope, id);
  const size_t mask = places_.size() - 1;
  for (size_t position = hash * GROUP + static_cast<uint32_t>(id) % GROUP;; ++position) {
    const Place& place = places_[position & mask];
    if (place.index == 0) return position & mask;
    const Entry& entry = entries_[at(place.index)];
    if (place.check == check && scopeOf(entry) == scope && idOf(entry) == id) return position & mask;
  }
}

void ZVOMLIDTable::enlarge() {
  std::vector<Place> before(std::max(places_.size() * GROWTH, FIRST_PLACES));
  before.swap(places_);
  for (const Place& place : before) {
    if (place.index == 0) continue;
    const Entry& entry = entries_[at(place.index)];
    places_[placeOf(scopeOf(entry), idOf(entry))] = place;
  }
}
