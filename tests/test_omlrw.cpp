#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tests/support/omlprobe.h"
#include "tests/support/rows.h"
#include "utils/zvdlist.h"
#include "utils/zvdlisti.h"
#include "utils/zvidxhsh.h"
#include "utils/zvomlbva.h"
#include "utils/zvomlfil.h"
#include "utils/zvomlobj.h"
#include "utils/zvomlsrt.h"
#include "utils/zvomlsyn.h"
#include "utils/zvslist.h"

namespace {

// ---- A small layer above: things within things, with one field of every kind.

constexpr const char* TYPES[] = {"thing", "other", "strict", nullptr};
constexpr const char* SECTIONS[] = {"sec", "inner", nullptr};
constexpr ZVOMLStaticVEStruct VALUES[] = {{"left", 10}, {"right", 20}, {"far", -7}, {nullptr, 0}};

ZVOMLStatic& grammar() {
  static const std::unique_ptr<ZVOMLStatic> grammar = compileRows(
      TYPES, SECTIONS, VALUES,
      "O $toplevel$;F title S;T thing;T other;T strict;];"
      "O thing;F num I;F flag B;F text S;F real R;E side [ left right far ];F addr P;F data X;"
      "  R ref thing;R any _;T thing;T other;T strict;S sec;F depth I;T thing;S inner;F depth I;];];];"
      "O other;F num I;];O strict;F must I R;F also I R;];");
  return *grammar;
}

struct Thing : ZVOMLObject {
  explicit Thing(std::string kind = "THING", Thing* itsOwner = nullptr)
      : type(std::move(kind)), owner(itsOwner) {
    ++alive;
    if (owner) owner->children.emplace_back(this);
  }
  ~Thing() override { --alive; }

  ZVOMLObject* pOwnerObject() override { return owner; }
  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject*, ZVOMLFile*) override;
  void vPreReadFields(ZVOMLSyntaxObject*, ZVOMLFile*) override { log += "<"; }
  void vPostReadFields(ZVOMLSyntaxObject*, ZVOMLFile*) override { log += ">"; }
  void vBuildListOfSubObjects(ZVDList& list) override {
    for (auto& child : children) list.appendObject(child.get());
  }

  static inline int alive = 0;

  std::string type;
  Thing* owner;
  std::vector<std::unique_ptr<Thing>> children;
  std::string log;  // what was read, in order
  int32_t num = 0;
  int32_t side = 0;
  int32_t depth = 0;
  int flag = 0;
  std::string text;
  double real = 0;
  uint32_t addr = 256;
  ZVOMLBinValue data;
  Thing* ref = nullptr;
  Thing* any = nullptr;
};

int Thing::vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject*, ZVOMLFile*) {
  const std::string name = field->nameString();
  log += field->sectionPathIndex() ? std::string(field->sectionString()) + "." + name : name;
  if (name == "NUM" || name == "MUST" || name == "ALSO" || name == "DEPTH")
    log += "=" + std::to_string(field->longValue());
  log += ";";
  if (name == "NUM") num = field->longValue();
  if (name == "FLAG") flag = field->boolValue();
  if (name == "TEXT") text = field->stringValue();
  if (name == "REAL") real = field->doubleValue();
  if (name == "SIDE") side = field->enumValue();
  if (name == "ADDR") addr = field->ipbytesValue();
  if (name == "DATA") data = *field->pBinValue();
  if (name == "REF") ref = static_cast<Thing*>(field->objectValue());
  if (name == "ANY") any = static_cast<Thing*>(field->objectValue());
  if (name == "DEPTH") depth = field->longValue();
  return name != "ALSO";
}

class ThingFile : public ZVOMLFile {
 public:
  std::function<void(ThingFile&)> contents;  // what a write puts out; without it, the things
  std::function<void(ThingFile&, Thing&)> onCreate;
  int refuse = 0;  // the application's check refuses the object with this line
  std::string created;
  int calls = 0;  // of the functions that take output
  using ZVOMLFile::pSyntaxTree;
  using ZVOMLFile::pTopLevelObject;

  ZVFileCodeEnum read(const char* path, int binary, int keepIDs = 0, Thing* expected = nullptr,
                      int32_t type = -1) {
    pErrorStringBuffer(4096);
    pWarningStringBuffer(4096);
    created.clear();
    return readOMLFile(path, &grammar(), expected, type, binary, keepIDs, 0);
  }
  ZVFileCodeEnum write(const char* path, Thing* top, int binary, int keepIDs = 0) {
    calls = 0;
    if (top) top->preFileWrite(this);
    const ZVFileCodeEnum code = writeOMLFile(path, &grammar(), top, binary, keepIDs, 0);
    if (top) top->postFileWrite(this, code);
    return code;
  }
  ZVFileCodeEnum writeString(const char* text) override {
    ++calls;
    return ZVOMLFile::writeString(text);
  }
  ZVFileCodeEnum writeBinary(const char* data, int count) override {
    ++calls;
    return ZVOMLFile::writeBinary(data, count);
  }
  int32_t thingType() const { return objTypeIDIndex("thing"); }

 protected:
  void vWriteContents(ZVObject* top) override {
    if (contents) {
      contents(*this);
    } else if (top) {
      writeThing(*static_cast<Thing*>(top));
    }
  }
  ZVObject* vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject*, ZVObject* owner) override {
    auto* thing = new Thing(object->typeString(), static_cast<Thing*>(owner));
    created += std::string(object->nameString()) + " ";
    if (onCreate) onCreate(*this, *thing);
    return thing;
  }
  int vCheckObject(ZVOMLSyntaxObject* object) override { return object->line() == refuse ? 0 : 2; }

 private:
  void writeThing(Thing& thing) {
    writeObjectStart(thing.type.c_str(), &thing, 0, 1);
    writeOpeningBracket();
    writeAttribute("NUM", thing.num);
    writeBoolAttribute("FLAG", thing.flag);
    writeStringAttribute("TEXT", thing.text.c_str());
    writeAttribute("REAL", thing.real);
    if (thing.side) writeAttribute("SIDE", thing.side == 10 ? "LEFT" : thing.side == 20 ? "RIGHT" : "FAR");
    writeIPBytesAttribute("ADDR", thing.addr);
    if (thing.data.length() > 0) writeAttribute("DATA", &thing.data);
    writeAttribute("REF", thing.ref, &thing, 1);
    writeAttribute("ANY", thing.any, nullptr, 1);
    writeSectionStart("SEC", 1);
    writeOpeningBracket();
    writeAttribute("DEPTH", thing.depth);
    writeClosingBracket();
    for (auto& child : thing.children) writeThing(*child);
    writeClosingBracket();
  }
};

// Reads a file in a class of its own: the things that came out, freed at the end.
struct Result {
  ThingFile file;
  ZVFileCodeEnum code = ZV_FILE_OK;
  std::unique_ptr<Thing> top;
  std::string messages;

  void read(const char* path, int binary = 0, int keepIDs = 0) {
    code = file.read(path, binary, keepIDs);
    if (code == ZV_FILE_OK) top.reset(static_cast<Thing*>(file.pTopObject()));
    messages = std::string(file.pErrorStringBuffer()) + file.pWarningStringBuffer();
  }
  void readText(const std::string& content) {
    writeFile("f.oml", content);
    read("f.oml");
  }
};

std::string hex(const std::string& bytes) {
  std::string text;
  char two[3];
  for (const char c : bytes) {
    std::snprintf(two, sizeof two, "%02x", static_cast<unsigned>(static_cast<unsigned char>(c)));
    text += two;
  }
  return text;
}

// ---- The writer

std::string written(int binary, const std::function<void(ThingFile&)>& contents, Thing* top = nullptr) {
  ThingFile file;
  file.contents = contents;
  EXPECT_EQ(file.write("rw.out", top, binary), ZV_FILE_OK);
  EXPECT_EQ(file.storedOnDisk(), 1);
  return readFile("rw.out");
}

TEST(OmlWriter, SpellsEachItemToTheByteInBothForms) {
  const ZVOMLBinValue three(3, "\x00\xff\x1a");
  const struct {
    const char* text;
    const char* binary;  // in hexadecimal digits; null: not written
    std::function<void(ThingFile&)> item;
  } cases[] = {
      {"\r\n", "", [](ThingFile& f) { f.writeBlancLine(); }},
      {"thing: defaults\r\n", "6f014e64656661756c747322",
       [](ThingFile& f) { f.writeObjectDefaultStart("thing"); }},
      {"thing:\r\n", "6f01", [](ThingFile& f) { f.writeObjectStart("thing", nullptr, 0); }},
      {"sec: \r\n{\r\n\tdepth: 5\r\n}\r\n", "73027b661169057d",
       [](ThingFile& f) {
         f.writeSectionStart("sec", 0);
         f.writeOpeningBracket();
         f.writeAttribute("depth", 5);
         f.writeClosingBracket();
       }},
      {"thing: { num: 1 flag: true }\r\n\r\n", nullptr,
       [](ThingFile& f) {
         f.writeObjectStart("thing", nullptr, 1);
         f.writeOpeningBracket();
         f.writeAttribute("num", 1L);
         f.writeBoolAttribute("flag", -1);
         f.writeClosingBracket();
         f.writeBlancLine();
       }},
      {"sec:  { depth: 1 }\r\nnum: 2\r\n", nullptr,
       [](ThingFile& f) {
         f.writeSectionStart("sec", 1);
         f.writeOpeningBracket();
         f.writeAttribute("depth", 1);
         f.writeClosingBracket();
         f.writeAttribute("num", 2);
       }},
      {"text: \"a\\\"b\\\\c\\012\\177\\001\xe4\"\r\n", "660a22615c22625c5c635c3031325c3137375c303031e422",
       [](ThingFile& f) { f.writeStringAttribute("text", "a\"b\\c\n\x7f\x01\xe4"); }},
      {"text: \"\"\r\n", "660a2222", [](ThingFile& f) { f.writeStringAttribute("text", nullptr); }},
      {"num: -2147483648\r\n", nullptr,
       [](ThingFile& f) { f.writeAttribute("num", std::numeric_limits<long>::min()); }},
      {"flag: false\r\n", "66096501", [](ThingFile& f) { f.writeBoolAttribute("flag", 0); }},
      {"addr: 192.168.0.1\r\n", "660d50c0a80001",
       [](ThingFile& f) { f.writeIPBytesAttribute("addr", 0xC0A80001u); }},
      {"side: right\r\n", "660c6503", [](ThingFile& f) { f.writeAttribute("side", "right"); }},
      {"num: 255\r\nnum: 256\r\nnum: -1\r\n", "660869ff66084900000100660849ffffffff",
       [](ThingFile& f) {
         f.writeAttribute("num", 255);
         f.writeAttribute("num", 256);
         f.writeAttribute("num", -1L);
       }},
      {"real: 1.500000\r\n", "660b5200e4e1c052fffffff9", [](ThingFile& f) { f.writeAttribute("real", 1.5); }},
      {"real: -0.250000\r\n", "660b52fe8287c052fffffff8",
       [](ThingFile& f) { f.writeAttribute("real", -0.25F); }},
      {"real: 0.000000\r\n", "660b72007200", [](ThingFile& f) { f.writeAttribute("real", 0.0); }},
      {"data: 0x00ff1a\r\n", "660e58690300ff1a", [&](ThingFile& f) { f.writeAttribute("data", &three); }},
      {"", "",
       [](ThingFile& f) {
         f.writeAttribute("data", static_cast<const ZVOMLBinValue*>(nullptr));
         f.writeAttribute("data", nullptr);
         f.writeAttribute("ref", static_cast<ZVOMLObject*>(nullptr), nullptr, 1);
         Thing unnumbered;
         f.writeAttribute("ref", &unnumbered, nullptr, 1);
       }},
  };
  for (const auto& item : cases) {
    EXPECT_EQ(written(0, item.item), item.text);
    EXPECT_EQ(item.binary ? hex(written(1, item.item)) : "-", item.binary ? item.binary : "-") << item.text;
  }
}

TEST(OmlWriter, BreaksByteSequencesByTheirLength) {
  for (const int32_t length : {0, 15, 16, 17, 31, 32, 33, 256, 257, 288, 1000}) {
    std::string bytes(static_cast<size_t>(length), '\0');
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7);
    const ZVOMLBinValue value(length, bytes.data());
    auto item = [&](ThingFile& f) {
      f.writeOpeningBracket();
      f.writeAttribute("data", &value);
      f.writeClosingBracket();
    };
    const std::string digits = hex(bytes);
    std::string expected = length <= 16 ? "{\r\n\tdata: 0x" + digits + "\r\n" : "{\r\n\tdata: \r\n";
    const size_t width = length <= 256 ? 32 : 64;
    for (size_t i = 0; length > 16 && i < digits.size(); i += width)
      expected += (length <= 256 ? "\t\t0x" : "0x") + digits.substr(i, width) + "\r\n";
    EXPECT_EQ(written(0, item), expected + "}\r\n") << length;
    char head[24];
    std::snprintf(head, sizeof head, length <= 255 ? "7b660e5869%02x" : "7b660e5849%08x",
                  static_cast<unsigned>(length));
    EXPECT_EQ(hex(written(1, item)), head + digits + "7d") << length;
  }
}

TEST(OmlWriter, AddressesSiblingsByIdAndOthersByPath) {
  Thing top;
  Thing* a = new Thing("THING", &top);
  Thing* b = new Thing("THING", &top);
  Thing* inner = new Thing("THING", a);
  Thing outside;
  auto items = [&](ThingFile& f) {
    top.iUserField(12);
    a->iUserField(7);
    b->iUserField(-9);
    inner->iUserField(3);
    outside.iUserField(5);
    f.writeAttribute("ref", b, a, 1);
    f.writeAttribute("ref", b, nullptr, 1);
    f.writeAttribute("ref", inner, b, 1);
    f.writeAttribute("ref", &top, inner, 1);
    f.writeAttribute("ref", &outside, &top, 0);  // both without an owner
    f.writeAttribute("ref", &outside, a, 0);
    f.writeObjectStart("thing", a, 0, 1);
  };
  EXPECT_EQ(written(0, items, &top),
            "ref: -9\r\nref: $12,-9\r\nref: $12,7,3\r\nref: $12\r\n5\r\n$5\r\nthing: 7\r\n");
  EXPECT_EQ(written(1, items, &top),
            "f\x0fN-9\"f\x0f$12,-9\"f\x0f$12,7,3\"f\x0f$12\"f\x0fN5\"f\x0f$5\"o\x01N7\"");
}

TEST(OmlWriter, CallsTheWriteFunctionOfAType) {
  auto hook = [](void*, const ZVObject* object) { return object ? 3 : 4; };
  const ZVOMLStaticOEStruct types[] = {{"thing", nullptr, nullptr, nullptr, hook}, {"other"}, {}};
  ZVOMLStatic own(types, nullptr, nullptr, nullptr);
  ThingFile file;
  file.initParser(&own, nullptr, -1, 0);
  EXPECT_EQ(file.writeHook("thing", &file), 3);
  for (const char* without : {"other", "unheard", static_cast<const char*>(nullptr)})
    EXPECT_EQ(file.writeHook(without, &file), 0);
  file.initParser(nullptr, nullptr, -1, 0);
}

TEST(OmlWriter, PutsItemsOutInLargePiecesAndInOrder) {
  ThingFile file;
  std::string expected;
  file.contents = [&](ThingFile& f) {
    for (int i = 0; i < 20000; ++i) {
      f.writeAttribute("num", i);
      expected += "num: " + std::to_string(i) + "\r\n";
      if (i % 7000 == 0) {
        f.writeString("# direct\r\n");
        expected += "# direct\r\n";
      }
    }
  };
  EXPECT_EQ(file.write("rw.out", nullptr, 0), ZV_FILE_OK);
  EXPECT_EQ(readFile("rw.out"), expected);
  EXPECT_LT(file.calls, 15);

  // Outside a write of a whole file each item is one call.
  ThingFile loose;
  EXPECT_EQ(loose.open("rw.out", ZV_FILE_WRITE), ZV_FILE_OK);
  loose.writeStringAttribute("text", std::string(100000, 'x').c_str());
  loose.writeAttribute("num", 1);
  EXPECT_EQ(loose.calls, 2);
  EXPECT_EQ(loose.close(), ZV_FILE_OK);
  EXPECT_EQ(readFile("rw.out"), "text: \"" + std::string(100000, 'x') + "\"\r\nnum: 1\r\n");
}

TEST(OmlWriter, NeverReportsSuccessForAFileThatIsNotWhole) {
  ThingFile file;
  for (const int binary : {0, 1}) {
    // The result of a write in which something happens between two items.
    auto write = [&](const char* path, const std::function<void(ThingFile&)>& mishap) {
      file.contents = [&](ThingFile& f) {
        f.writeAttribute("num", 1);
        mishap(f);
        f.writeAttribute("num", 2);
      };
      const ZVFileCodeEnum code = file.write(path, nullptr, binary);
      EXPECT_EQ(file.storedOnDisk(), code == ZV_FILE_OK);
      EXPECT_EQ(file.isOpen(), 0);
      return code;
    };
    EXPECT_EQ(file.writeOMLFile(nullptr, &grammar(), nullptr, binary, 0, 0), ZV_FILE_BAD_WRITE_CALL);
    EXPECT_EQ(file.writeOMLFile("rw.out", nullptr, nullptr, binary, 0, 0), ZV_FILE_BAD_WRITE_CALL);
    EXPECT_EQ(write("no/such/folder", [](ThingFile&) {}), ZV_FILE_OPEN_ERROR);
#ifdef __linux__
    EXPECT_NE(write("/dev/full", [](ThingFile&) {}), ZV_FILE_OK);
    auto manyItems = [](ThingFile& f) {
      for (int i = 0; i < 100000; ++i) f.writeAttribute("num", i);
    };
    EXPECT_NE(write("/dev/full", manyItems), ZV_FILE_OK);
#endif
    EXPECT_NE(write("rw.out", [](ThingFile& f) { f.close(); }), ZV_FILE_OK);
    EXPECT_EQ(write("rw.out", [](ThingFile&) { throw 42; }), ZV_FILE_WRITE_ERROR);
    for (const double value : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
      auto writeValue = [&](ThingFile& f) {
        f.writeAttribute("real", value);
        EXPECT_EQ(f.error(), 1);
      };
      EXPECT_EQ(write("rw.out", writeValue), ZV_FILE_WRITE_ERROR);
      EXPECT_EQ(hex(readFile("rw.out")), binary ? "6608690166086902" : hex("num: 1\r\nnum: 2\r\n"));
    }
    EXPECT_EQ(write("rw.out", [](ThingFile&) {}), ZV_FILE_OK);
  }
}

// ---- Round trips

using Random = std::mt19937;

std::string randomText(Random& random) {
  std::string text;
  const int length = static_cast<int>(random() % 40);
  for (int i = 0; i < length; ++i) text += static_cast<char>(1 + random() % 255);
  return text;
}

double randomReal(Random& random) {
  const double mantissa = static_cast<double>(static_cast<int32_t>(random())) / 1000;
  switch (random() % 4) {
    case 0:
      return mantissa;
    case 1:
      return std::ldexp(mantissa, static_cast<int>(random() % 2000) - 1000);
    case 2:
      return static_cast<double>(static_cast<int>(random() % 2001) - 1000);
    default:
      return 0;
  }
}

void fillAtRandom(Thing& thing, Random& random) {
  thing.num = random() % 2 ? static_cast<int32_t>(random()) : static_cast<int32_t>(random() % 600) - 300;
  thing.flag = static_cast<int>(random() % 2);
  thing.text = randomText(random);
  thing.real = static_cast<double>(static_cast<int32_t>(random() % 2001) - 1000) / 8;  // exact in both forms
  constexpr int32_t SIDES[] = {0, 10, 20, -7};
  thing.side = SIDES[random() % 4];
  thing.addr =
      256 + static_cast<uint32_t>(random() % 0xffffff00u);  // below 256 the binary form reads back as 1.0.0.x
  std::string bytes = randomText(random);
  if (random() % 8 == 0) bytes.resize(250 + random() % 300);
  thing.data.fill(static_cast<int32_t>(bytes.size()), bytes.data());
  thing.depth = static_cast<int32_t>(random() % 9);
}

std::vector<Thing*> flat(Thing& thing) {
  std::vector<Thing*> all{&thing};
  for (auto& child : thing.children)
    for (Thing* below : flat(*child)) all.push_back(below);
  return all;
}

std::unique_ptr<Thing> randomTree(Random& random) {
  auto top = std::make_unique<Thing>();
  std::vector<Thing*> all{top.get()};
  const size_t count = 1 + random() % 60;
  while (all.size() < count) all.push_back(new Thing("THING", all[random() % all.size()]));
  for (Thing* thing : all) {
    fillAtRandom(*thing, random);
    if (random() % 2) thing->ref = all[random() % all.size()];
    if (random() % 4 == 0) thing->any = all[random() % all.size()];
  }
  return top;
}

std::string fileOf(ThingFile& file, Thing& top, int binary) {
  EXPECT_EQ(file.write("rw.out", &top, binary, 1), ZV_FILE_OK);
  return readFile("rw.out");
}

TEST(OmlRoundTrip, WhatIsReadIsWrittenAlikeInBothForms) {
  for (uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    Random random(seed);
    auto tree = randomTree(random);
    ThingFile writer;
    const std::string forms[] = {fileOf(writer, *tree, 0), fileOf(writer, *tree, 1)};
    EXPECT_EQ(tree->iUserField(), 0);
    for (const int binary : {0, 1}) {
      writeFile("f.oml", forms[binary]);
      Result result;
      result.read("f.oml", binary, 1);
      ASSERT_EQ(result.messages, "");
      for (const int other : {0, 1}) EXPECT_EQ(fileOf(result.file, *result.top, other), forms[other]);
      // New things since then get ids of their own among their siblings.
      for (Thing* thing : flat(*result.top))
        if (random() % 3 == 0) new Thing("THING", thing);
      const std::string more = fileOf(result.file, *result.top, binary);
      writeFile("f.oml", more);
      Result again;
      again.read("f.oml", binary, 1);
      ASSERT_EQ(again.messages, "");
      EXPECT_EQ(fileOf(again.file, *again.top, binary), more);
      EXPECT_EQ(flat(*again.top).size(), flat(*result.top).size());
    }
  }
  EXPECT_EQ(Thing::alive, 0);
}

TEST(OmlRoundTrip, RealsKeepTheDigitsOfTheForm) {
  Random random(1);
  for (int round = 0; round < 400; ++round) {
    const int binary = round % 2;
    Thing thing;
    thing.real = randomReal(random);
    Result result;
    writeFile("f.oml", fileOf(result.file, thing, binary));
    result.read("f.oml", binary);
    EXPECT_NEAR(result.top->real, thing.real, binary ? std::abs(thing.real) * 1.1e-7 : 5.1e-7);
  }
}

// ---- Object building

// TYPE log{children}, with what ref and any lead to as the place in the order of the tree.
std::string printed(Thing& top, const Thing& thing) {
  const std::vector<Thing*> all = flat(top);
  auto place = [&](const Thing* there) {
    return std::to_string(std::find(all.begin(), all.end(), there) - all.begin());
  };
  std::string text = thing.type + ' ' + thing.log;
  if (thing.ref) text += " ref " + place(thing.ref);
  if (thing.any) text += " any " + place(thing.any);
  text += '{';
  for (const auto& child : thing.children) text += printed(top, *child);
  return text + '}';
}

// Owners are made first, in the order of the file, and then filled in that order.
TEST(OmlBuilding, MakesAndFillsTheObjectsThatTheFileDescribes) {
  const char* const UNABLE = "Warning # 49 unable to set fields in several objects !\n";
  const struct {
    const char* text;
    const char* created;
    const char* objects;
    const char* messages;
  } cases[] = {
      // Nobody takes the title. The reference leads forward into a deeper scope.
      {"title: \"skipped\"\n"
       "thing: 1 { num: 5 ref: 1,b  thing: a { num: 6 } thing: { num: 7 } sec { thing: b { } depth: 2 inner "
       "depth 3 } other: 4 { num: 8 } }",
       "$,1 $,1,a $,1,-2 $,1,b $,1,4 ",
       "THING <NUM=5;REF;SEC.DEPTH=2;INNER.DEPTH=3;> ref 3{THING <NUM=6;>{}THING <NUM=7;>{}THING <>{}"
       "OTHER <NUM=8;>{}}",
       UNABLE},
      // Defaults are read before own fields, and make no object.
      {"thing: 1 { thing: defaults { num: 1 flag: true  thing: a { num: 2 } thing: b { } } thing: c { }"
       "  strict: defaults { must: 4  strict: d { also: 5 } strict: e { must: 6 also: 7 } } }",
       "$,1 $,1,a $,1,b $,1,c $,1,d $,1,e ",
       "THING <>{THING <NUM=1;FLAG;NUM=2;>{}THING <NUM=1;FLAG;>{}THING <>{}STRICT <MUST=4;ALSO=5;>{}"
       "STRICT <MUST=4;MUST=6;ALSO=7;>{}}",
       UNABLE},
      {"thing: defaults { num: 1 }", "", "", ""},
      // Objects of one address become one. The object without id is the -2 before it.
      {"thing: 1 { num: 1 thing: a { num: 2 thing: x { num: 3 } } }\n"
       "thing: 1 { flag: true thing: a { flag: false thing: x { flag: true } thing: y { } }"
       "  thing: defaults { text: \"d\" thing: a { } } thing: a { num: 9 } thing: -2 { } thing: { num: 4 } }",
       "$,1 $,1,a $,1,a,x $,1,a,y $,1,-2 ",
       "THING <NUM=1;FLAG;>{THING <TEXT;NUM=2;FLAG;NUM=9;>{THING <NUM=3;FLAG;>{}THING <>{}}THING <NUM=4;>{}}",
       ""},
      // A reference of a default is read by the first object that has it, whose scope then holds for all.
      {"thing: 1 { thing: defaults { ref: t  thing: a { } thing: b { } } thing: t { num: 1 }"
       "  thing: c { ref: $1,t  thing: d { ref: e any: $,1,a } thing: e { ref: d thing: t { } } }"
       "  ref: 1 any: 1,c,e }",
       "$,1 $,1,a $,1,b $,1,t $,1,c $,1,c,d $,1,c,e $,1,c,e,t ",
       "THING <REF;ANY;> ref 0 any 6{THING <REF;> ref 3{}THING <REF;> ref 3{}THING <NUM=1;>{}"
       "THING <REF;> ref 3{THING <REF;ANY;> ref 6 any 1{}THING <REF;> ref 5{THING <>{}}}}",
       ""},
  };
  for (const auto& item : cases) {
    Result r;
    r.readText(item.text);
    EXPECT_EQ(r.messages, item.messages) << item.text;
    EXPECT_EQ(r.file.created, item.created) << item.text;
    EXPECT_EQ(r.top ? printed(*r.top, *r.top) : "", item.objects) << item.text;
  }
}

TEST(OmlBuilding, FaultsGetTheirMessagesAndLeaveNoObjectBehind) {
  const struct {
    const char* text;
    const char* messages;
  } cases[] = {
      {"thing: 1 {\n ref: nowhere }", "28 2:13"},
      {"thing: 1 {\n ref: 2 other: 2 { } thing: 3 { ref: 2 } }", "28 2:7\n27 2:38 THING"},
      {"thing: 1 { any: $1,2 other: 2 { } }", ""},
      {"thing: 1 {\n strict: { must: 1 } strict: defaults { strict: 2 { also: 1 } } }",
       "29 2:7 ALSO\n29 2:46 MUST"},
      {"thing: 1 { strict: { } }", "29 1:17 ALSO"},
      {"thing: 1 { thing: 2 { }\n other: 2 { } }", "31 2:6"},
      {"thing: 1 { }\nthing: 2 { thing: 3 { } }", "33 2:5"},
      {"thing: 1 {\n\n\n\n\n\n\n\n thing: 2 { thing: 3 { } } }", "34 -"},
      {"thing: 1 { thing: { thing: { } } thing: { } thing: -3 { } other: -2 { } }", "31 1:63"},
  };
  for (const auto& item : cases) {
    Result r;
    r.file.refuse = 9;
    r.readText(item.text);
    EXPECT_EQ(r.messages, fullMessages(item.messages)) << item.text;
    EXPECT_EQ(r.code, *item.messages ? ZV_FILE_READ_ERROR : ZV_FILE_OK);
    EXPECT_EQ(r.file.pTopObject() != nullptr, r.code == ZV_FILE_OK);
    r.top.reset();
    EXPECT_EQ(Thing::alive, 0) << item.text;
  }
  ThingFile file;
  EXPECT_EQ(file.readOMLFile(nullptr, &grammar(), nullptr, -1, 0, 0, 0), ZV_FILE_BAD_READ_CALL);
  EXPECT_EQ(file.readOMLFile("f.oml", nullptr, nullptr, -1, 0, 0, 0), ZV_FILE_BAD_READ_CALL);
}

TEST(OmlBuilding, AnExpectedObjectIsFilledAndStaysTheCallers) {
  Thing mine;
  ThingFile file;
  file.initParser(&grammar(), nullptr, -1, 0);
  const int32_t type = file.thingType();
  writeFile("f.oml", "thing: 1 { num: 5 thing: 2 { } }");
  EXPECT_EQ(file.read("f.oml", 0, 0, &mine, type), ZV_FILE_OK);
  EXPECT_EQ(file.pTopObject(), &mine);
  EXPECT_EQ(mine.num, 5);
  EXPECT_EQ(mine.children.size(), 1U);

  writeFile("f.oml", "other: 1 { num: 6 }");
  EXPECT_EQ(file.read("f.oml", 0, 0, &mine, type), ZV_FILE_READ_ERROR);
  EXPECT_EQ(file.pErrorStringBuffer(), fullMessages("32 1:5"));
  EXPECT_EQ(file.pTopObject(), &mine);
  writeFile("f.oml", "thing: 1 { thing: 2 { } } thing: 2 { }");
  EXPECT_EQ(file.read("f.oml", 0, 0, &mine, type), ZV_FILE_READ_ERROR);
  EXPECT_EQ(file.pErrorStringBuffer(), fullMessages("33 1:31"));
  EXPECT_EQ(mine.num, 5);
}

TEST(OmlBuilding, AFatalErrorFromACallbackEndsTheRunSafely) {
  writeFile("f.oml", "thing: 1 { num: 1 thing: 2 { thing: 3 { } } thing: 4 { } }");
  for (int stopAt = 1; stopAt <= 4; ++stopAt) {
    Result r;
    int count = 0;
    std::vector<Thing*> lost;
    r.file.onCreate = [&](ThingFile& f, Thing& thing) {
      if (++count != stopAt) return;
      if (stopAt % 2) f.updateObject(nullptr, nullptr, &thing);
      f.errorMessage(f.pSyntaxTree(), 77, "enough", 1);
    };
    r.read("f.oml", 0, 1);
    EXPECT_EQ(r.code, ZV_FILE_READ_ERROR);
    EXPECT_EQ(count, stopAt);
    EXPECT_EQ(r.messages, "Fatal error #077 enough !\n");
    EXPECT_EQ(Thing::alive, 0);
  }
}

TEST(OmlBuilding, TheObjectOfAGoodReadIsTheCallersWhateverComesLater) {
  for (const int fatal : {0, 1}) {
    Result r;
    r.readText("thing: 1 { thing: 2 { } }");
    r.file.errorMessage(nullptr, 77, "later", fatal);
    EXPECT_EQ(r.file.pTopObject() == nullptr, fatal == 1);
    r.file.cleanup();
    EXPECT_EQ(r.file.pTopObject(), nullptr);
    EXPECT_EQ(r.file.pSyntaxTree(), nullptr);
    EXPECT_EQ(Thing::alive, 2);
  }
  EXPECT_EQ(Thing::alive, 0);
}

TEST(OmlBuilding, AFileCutOffByAFaultMakesNoObject) {
  Result r;
  r.readText("thing: 1 { num: 5 } include: \".\"");  // a folder can be opened, not read
  EXPECT_NE(r.code, ZV_FILE_OK);
  EXPECT_EQ(r.file.created, "");
  EXPECT_EQ(r.file.pTopObject(), nullptr);
}

TEST(OmlBuilding, ReadsTheFileThatItHasOpen) {
  writeFile("f.oml", "thing: 1 {\n ref: nowhere }");
  Result r;
  ASSERT_EQ(r.file.open("f.oml", ZV_FILE_READ), ZV_FILE_OK);
  r.read(r.file.pFileName());
  EXPECT_EQ(r.messages, fullMessages("28 2:13"));
}

TEST(OmlBuilding, UpdateObjectReplacesTheLiveObjectOfANode) {
  writeFile("f.oml", "thing: 1 { thing: 2 { num: 5 } thing: 3 { ref: 2 } }");
  Result r;
  r.file.onCreate = [](ThingFile& f, Thing& thing) {
    if (!thing.owner || thing.owner->children.size() < 2) return;
    auto& second = thing.owner->children[0];
    auto* substitute = new Thing("THING", nullptr);
    substitute->owner = thing.owner;
    f.updateObject(f.pSyntaxTree()->pObjectList()->pObject->pObjectList()->pObject, second.release(),
                   substitute);
    second.reset(substitute);
  };
  r.read("f.oml", 0, 1);
  ASSERT_EQ(r.messages, "");
  EXPECT_EQ(Thing::alive, 3);
  EXPECT_EQ(r.top->children[0]->num, 5);
  EXPECT_EQ(r.top->children[1]->ref, r.top->children[0].get());
  const ZVObject* first = r.top->children[0].get();
  EXPECT_EQ(r.file.pIndexHashTable()->lookup(reinterpret_cast<intptr_t>(first)), 2);
}

// ---- Ids for writing

TEST(OmlIds, ComeFromTheTableElseFromTheIdentity) {
  ZVIndexHashTable table(7, 8, 0);
  Thing known;
  Thing unknown;
  table.update(reinterpret_cast<intptr_t>(static_cast<ZVObject*>(&known)), 41);
  known.prepareIDForGraphFile(&table);
  unknown.prepareIDForGraphFile(&table);
  EXPECT_EQ(known.graphFileID(), 41);
  EXPECT_EQ(unknown.graphFileID(), unknown.identityNumber());
  known.prepareIDForGraphFile(nullptr);
  EXPECT_EQ(known.graphFileID(), known.identityNumber());
  EXPECT_EQ(known.internalUserFieldsInUse(), 1);
  ZVOMLObject other;
  other = static_cast<ZVOMLObject&>(known);
  EXPECT_EQ(other.iUserField(), 0);
  known.finalizeIDForGraphFile();
  EXPECT_EQ(known.internalUserFieldsInUse(), 0);
  known.pIUserField(&other);
  EXPECT_EQ(known.pIUserField(), &other);
  known.nullInternalUserFields();
  EXPECT_EQ(known.pIUserField(), nullptr);
}

// Things with these ids, in a list.
struct Numbered {
  explicit Numbered(const std::vector<int32_t>& ids) {
    for (const int32_t id : ids) {
      things.push_back(std::make_unique<Thing>());
      things.back()->iUserField(id);
      list.appendObject(things.back().get());
    }
  }
  std::vector<std::unique_ptr<Thing>> things;
  ZVDList list;
};

TEST(OmlIds, AreMadeUniqueAmongSiblings) {
  const struct {
    int32_t errorValue;
    int32_t largest;
    std::vector<int32_t> before;
    std::vector<int32_t> after;
  } cases[] = {
      {0, 0, {3, 1, 2}, {1, 2, 3}},       {0, 0, {5, 5, 5, 2}, {2, 5, 8, 16}},
      {0, 100, {0, 0, 4}, {108, 116, 4}},  // an object with the error value has no id
      {0, 100, {-1, 0, 1}, {-1, 108, 1}}, {24, 8, {1, 1, 1, 1}, {1, 16, 32, 40}},  // 24 is never given
      {16, 8, {1, 1}, {1, 24}},           {0, 0x7ffffff0, {1, 1, 1}, {1, 0x7ffffff8, -2147483647 - 1}},
  };
  for (const auto& item : cases) {
    ZVIndexHashTable table(3, 8, item.errorValue);
    table.update(800, item.largest);
    Numbered numbered(item.before);
    numbered.things[0]->makeIDsUniqueForGraphFile(&table, &numbered.list);
    std::vector<int32_t> after;
    for (ZVDListIter it(&numbered.list); it; ++it)
      after.push_back(static_cast<Thing*>(it.pObject())->iUserField());
    EXPECT_EQ(after, item.after);
  }
}

TEST(OmlIds, SortsOrderByTheUserField) {
  Numbered numbered({3, -5, 2147483647, -2147483647 - 1, 0, 3});
  ZVSList slist(numbered.list);
  ZVIUserFieldDListSort().quickSort(&numbered.list, 0);
  ZVIUserFieldSListSort().quickSort(&slist, 0);
  const std::vector<size_t> order{3, 1, 4, 0, 5, 2};
  for (int32_t i = 0; i < 6; ++i) {
    Thing* expected = numbered.things[order[static_cast<size_t>(i)]].get();
    EXPECT_EQ(numbered.list.pObjectInPosition(i + 1), expected);
    EXPECT_EQ(slist.pObjectInPosition(i + 1), expected);
  }
}

TEST(OmlIds, OfAFileAreKeptForTheNextWrite) {
  Result r;
  writeFile("f.oml", "thing: 12 { thing: a7 { } thing: { } thing: x { } thing: 99999999999 { } }");
  r.read("f.oml", 0, 1);
  ASSERT_EQ(r.messages, "");
  std::vector<int32_t> ids;
  r.file.contents = [&](ThingFile&) {
    for (Thing* thing : flat(*r.top)) ids.push_back(thing->graphFileID());
  };
  ASSERT_EQ(r.file.write("rw.out", r.top.get(), 0, 1), ZV_FILE_OK);
  const int32_t unnumbered = r.top->children[2]->identityNumber();
  EXPECT_EQ(ids, (std::vector<int32_t>{12, 7, -2, unnumbered, 2147483647}));
  EXPECT_NE(r.file.pIndexHashTable(), nullptr);
  ASSERT_EQ(r.file.write("rw.out", r.top.get(), 0, 0), ZV_FILE_OK);
  EXPECT_EQ(r.file.pIndexHashTable(), nullptr);
}

}  // namespace
