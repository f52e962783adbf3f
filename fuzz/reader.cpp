#include "fuzz/reader.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/files.h"
#include "tests/support/rows.h"
#include "utils/zvomlbva.h"
#include "utils/zvomlfil.h"
#include "utils/zvomlobj.h"
#include "utils/zvomlsfi.h"
#include "utils/zvomlsoi.h"
#include "utils/zvomlsta.h"
#include "utils/zvomlsyn.h"

namespace {

#define CHECK(condition) (static_cast<bool>(condition) ? static_cast<void>(0) : failed(#condition))

[[noreturn]] void failed(const char* condition) { throw std::logic_error(condition); }

// A live object: owns what is made below it, and counts.
class Live : public ZVOMLObject {
 public:
  explicit Live(Live* owner) : owner_(owner) {
    ++count;
    if (owner) owner->children_.push_back(this);
  }
  Live(const Live&) = delete;
  Live& operator=(const Live&) = delete;
  ~Live() override {
    // Not by recursion alone: the chain may be as deep as the file.
    for (Live* child : children_) delete child;
    --count;
  }

  ZVOMLObject* pOwnerObject() override { return owner_; }
  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject*, ZVOMLFile*) override {
    return field->valueType() == ZV_OML_VALUE_BINARY;
  }

  static int count;

 private:
  Live* owner_;
  std::vector<Live*> children_;
};

int Live::count = 0;

// What the callbacks see of the nodes, in one number that depends on all of it.
struct Look {
  uint32_t sum = 0;
  int fields = 0;
  int objects = 0;
  bool refuse = false;
  int callsToEnd = 0;  // 0: never
  bool fatal = true;

  void add(const char* text) {
    CHECK(text);
    while (*text) sum = sum * 31 + static_cast<unsigned char>(*text++);
  }
  void add(int32_t number) { sum = sum * 31 + static_cast<uint32_t>(number); }

  void call(void* file, ZVOMLSyntaxStruct* node) {
    if (callsToEnd == 0 || --callsToEnd > 0) return;
    auto* reader = static_cast<ZVOMLFile*>(file);
    fatal ? reader->errorMessage(node, 90, "stop", 1) : reader->cleanup();
  }
};

Look look;

int check(void* file, ZVOMLSyntaxObject* object) {
  look.call(file, object);
  for (ZVOMLSyntaxObjectIter iter(object); iter; ++iter) look.add(iter.pObject()->typeString());
  for (ZVOMLSyntaxFieldIter iter(object); iter; ++iter) {
    look.add(iter.pField()->sectionString());
    look.add(static_cast<int32_t>(iter.pField()->sectionPathIndex()));
  }
  if (object->searchField("width", nullptr)) look.add(1);
  return !look.refuse;
}

ZVObject* create(void* file, ZVOMLSyntaxObject* object, ZVOMLSyntaxObject*, ZVObject* owner) {
  ++look.objects;
  look.add(object->typeString());
  look.add(object->sectionString());
  auto* live = new Live(static_cast<Live*>(owner));
  look.call(file, object);
  return live;
}

int store(void* file, ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVObject*) {
  ++look.fields;
  look.add(field->nameString());
  look.add(field->sectionString());
  look.add(object->typeString());
  switch (field->valueType()) {
    case ZV_OML_VALUE_STRING:
      look.add(field->stringValue());
      break;
    case ZV_OML_VALUE_ENUM:
      look.add(field->enumValue());
      break;
    case ZV_OML_VALUE_REAL:
      look.add(field->doubleValue() > 0 ? 1 : 0);
      break;
    case ZV_OML_VALUE_BINARY:
      for (int32_t i = 0; i < field->pBinValue()->length(); ++i)
        look.add(field->pBinValue()->pByteSequence()[i]);
      break;
    default:
      look.add(field->longValue());
      if (field->pDefField() && field->pDefField()->fieldType() == ZV_FIELD_OBJECT) {
        look.add(field->objectTypeString());
        look.add(field->objectValue() != nullptr);
      }
  }
  look.call(file, field);
  return 1;
}

const ZVOMLStaticOEStruct TYPES[] = {
    {"$toplevel$", check, nullptr, store, nullptr}, {"graph", check, create, store, nullptr},
    {"node", check, create, store, nullptr},        {"edge", nullptr, create, store, nullptr},
    {"ghost", nullptr, nullptr, nullptr, nullptr},  {}};
const char* const SECTIONS[] = {"layout", "view", nullptr};
const ZVOMLStaticVEStruct VALUES[] = {{"red", 10}, {"green", 20}, {"blue", 30}, {"black", 40}, {}};
const char ROWS[] =
    "O $toplevel$;T graph;T ghost;F title S;F scale R;};"
    "O graph;F label S R;F size I;T graph;T node;T edge;T ghost;"
    "  S layout;F spacing I;F kind S;T node;S flat;F gap I;S deep;F gap I;F only S;};};"
    "    S tall;F gap I;S deep;F gap I;};S unique;F ratio R;};};};"
    "  S view;F spacing I;E tint [ red .. black ];};};"
    "O node;F width I;F height R;F visible B;F data X;F address P;E color [ red blue ] R;R owner graph;R any "
    "_;"
    "  S layout;F spacing I;F bends I;R next node;};T node;};"
    "O edge;R source node R;R target node R;F weight R;};";

// Two file names of this process, in memory where that is to be had.
struct Names {
  std::string main;
  std::string included;
  std::string good;

  Names() {
    std::error_code none;
    std::string folder = std::filesystem::is_directory("/dev/shm", none)
                             ? "/dev/shm"
                             : std::filesystem::temp_directory_path(none).string();
    folder += "/zvfuzz" + std::to_string(::getpid());
    main = folder + "main";
    included = folder + "included";
    good = folder + "good";
  }
  ~Names() {
    for (const std::string& name : {main, included, good}) std::remove(name.c_str());
  }
};

// Opens no file but those of this process.
class Reader : public ZVOMLFile {
 public:
  explicit Reader(const Names& names) : names_(names) {
    pErrorStringBuffer(2000);
    pWarningStringBuffer(2000);
  }
  ZVFileCodeEnum open(const char* name, ZVFileModeEnum mode) override {
    const std::string text = name ? name : "";
    if (text == "i") return ZVOMLFile::open(names_.included.c_str(), mode);
    const bool own = text == names_.main || text == names_.good;
    return ZVOMLFile::open(own ? name : nullptr, mode);
  }
  bool unopened = false;  // a file could not be opened

 private:
  void vErrorMessage(const char* file, int32_t line, int position, int id, const char* text,
                     int fatal) override {
    unopened = unopened || id == 13;
    ZVOMLFile::vErrorMessage(file, line, position, id, text, fatal);
  }

  const Names& names_;
};

const char GOOD_TEXT[] =
    "title: \"t\" graph: 1 { label: \"g\" layout { spacing: 3 _ gap: 4 } view tint: green\n"
    "node: defaults { color: red node: 1 { width: 5 data: 0x0102 any: 2 } node: 2 { address: 1.2.3.4 } }\n"
    "edge { source: 1 target: $1,2 weight: 0.5 } }";

// title: "t" graph: 1 { label: "g" node: 1 { color: red any: 1 } }
const char GOOD_BINARY[] = "f\7\"t\"o\1N1\"{f\11\"g\"o\2N1\"{f\26e\2f\30N1\"}}";

struct State {
  Names names;
  std::unique_ptr<ZVOMLStatic> grammar = compileRows(TYPES, SECTIONS, VALUES, ROWS);
  Reader reader{names};
  uint32_t goodSum[2] = {};
  bool goodRead[2] = {};
};

ZVFileCodeEnum read(State& state, const std::string& name, ZVObject* expected, bool binary, bool keepIDs) {
  state.reader.unopened = false;
  const ZVFileCodeEnum result = state.reader.readOMLFile(name.c_str(), state.grammar.get(), expected,
                                                         expected ? 1 : -1, binary, keepIDs, 0);
  const bool unopened = state.reader.unopened;
  const bool good = state.reader.numberOfErrors() == 0;
  CHECK(result == (good ? ZV_FILE_OK : unopened ? ZV_FILE_OPEN_ERROR : ZV_FILE_READ_ERROR));
  CHECK((state.reader.numberOfErrors() > 0) == (*state.reader.pErrorStringBuffer() != '\0'));
  CHECK(std::strlen(state.reader.pErrorStringBuffer()) < 2000);
  CHECK(!state.reader.isOpen());
  return result;
}

void readGoodFile(State& state, bool binary) {
  look = {};
  state.reader.maxNumberOfErrors(16);
  writeFile(state.names.good, binary ? GOOD_BINARY : GOOD_TEXT);
  CHECK(read(state, state.names.good, nullptr, binary, false) == ZV_FILE_OK);
  CHECK(state.reader.numberOfWarnings() == 0);
  CHECK(look.objects == (binary ? 2 : 4));
  if (!state.goodRead[binary]) state.goodSum[binary] = look.sum;
  state.goodRead[binary] = true;
  CHECK(look.sum == state.goodSum[binary]);
  delete state.reader.pTopObject();
  CHECK(Live::count == 0);
}

}  // namespace

bool readInput(const std::string& input, bool binary) {
  static State state;
  if (!state.goodRead[binary]) readGoodFile(state, binary);
  if (input.empty()) return false;

  const unsigned options = static_cast<unsigned char>(input[0]);
  look = {};
  look.refuse = (options & 8U) != 0;
  look.callsToEnd = static_cast<int>(options >> 4U);
  look.fatal = (options & 4U) == 0;
  state.reader.maxNumberOfErrors(options & 4U ? 1 : 16);

  const size_t end = std::min(input.find("===="), input.size());
  writeFile(state.names.main, input.substr(1, end - 1));
  writeFile(state.names.included, input.substr(std::min(end + 4, input.size())));

  Live* expected = options & 2U ? new Live(nullptr) : nullptr;
  const ZVFileCodeEnum result = read(state, state.names.main, expected, binary, options & 1U);
  CHECK(state.reader.pTopObject() == expected || result == ZV_FILE_OK);
  delete state.reader.pTopObject();
  CHECK(Live::count == 0);
  readGoodFile(state, binary);
  return result == ZV_FILE_OK;
}
