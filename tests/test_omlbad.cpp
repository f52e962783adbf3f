#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/omlprobe.h"
#include "tests/support/omlsample.h"
#include "utils/zvomlobj.h"

namespace {

// A live object that owns those below it, as the layers above have them.
struct Item : ZVOMLObject {
  explicit Item(Item* itsOwner = nullptr) : owner(itsOwner) { ++alive; }
  ~Item() override { --alive; }
  ZVOMLObject* pOwnerObject() override { return owner; }

  static inline int alive = 0;
  Item* owner;
  std::vector<std::unique_ptr<Item>> below;
  int32_t sum = 0;  // of the values read
};

// Reads files into items, looks at everything that a callback is given, and complains now and then itself.
class ItemFile : public ZVOMLFile {
 public:
  ItemFile() {
    pErrorStringBuffer(4096);
    pWarningStringBuffer(64);
  }

  ZVFileCodeEnum read(const char* path, int binary, Item* expected = nullptr, int keepIDs = 0) {
    return readOMLFile(path, &sampleGrammar(), expected, expected ? 1 : -1, binary, keepIDs, 0);
  }

 protected:
  void vWriteContents(ZVObject* top) override;

  int vCheckObject(ZVOMLSyntaxObject* object) override {
    const ZVOMLSyntaxField* field = object->searchField("label", nullptr);
    return !field || field->stringValue()[0] != '!';
  }

  ZVObject* vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax,
                          ZVObject* owner) override {
    if (ownerSyntax && !owner) return nullptr;  // nobody would own it
    const ZVOMLSyntaxField* field = object->searchField("x", nullptr);
    if (field && field->longValue() == 13) errorMessage(object, 60, "refused", 1);
    if (field && field->longValue() == 14) return nullptr;
    auto item = std::make_unique<Item>(static_cast<Item*>(owner));
    if (!owner) return item.release();
    item->owner->below.push_back(std::move(item));
    return static_cast<Item*>(owner)->below.back().get();
  }

  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVObject* target) override {
    const std::string texts = std::string(field->nameString()) + field->sectionString() +
                              field->stringValue() + field->objectTypeString() + object->nameString() +
                              object->typeString();
    auto* item = static_cast<Item*>(target);
    auto* named = static_cast<Item*>(field->objectValue());
    const ZVOMLBinValue* bytes = field->pBinValue();
    if (field->valueType() == ZV_OML_VALUE_INT && field->longValue() == 13) {
      errorMessage(field, 61, texts.c_str(), field->sectionPathIndex() != 0);
    }
    if (!item) return 0;
    item->sum ^=
        field->longValue() ^ field->enumValue() ^ (named ? named->sum : 0) ^ (bytes ? bytes->length() : 0);
    return field->doubleValue() != 1.75;
  }
};

// The sample in the writer's hand, in either form.
void ItemFile::vWriteContents(ZVObject* top) {
  const char* const bytes = "0123456789abcdef\x80\"{";
  const ZVOMLBinValue value(static_cast<int32_t>(std::strlen(bytes)), bytes);
  auto* item = static_cast<Item*>(top);
  writeObjectStart("graph", item, 0, 1);
  writeOpeningBracket();
  writeAttribute("width", 1 << 20);
  writeAttribute("scale", -2.5e-3);
  writeStringAttribute("label", "a \"quoted\"\n\\label\x80");
  writeBoolAttribute("visible", 1);
  writeAttribute("side", "right");
  writeIPBytesAttribute("address", 0x7f000001U);
  writeAttribute("data", &value);
  for (const char* section : {"layout", "horizontal"}) {
    writeSectionStart(section, 0);
    writeOpeningBracket();
    writeAttribute("spacing", -3);
  }
  writeAttribute("gap", 0.0);
  writeClosingBracket();
  writeObjectStart("node", top, 0);
  writeOpeningBracket();
  writeClosingBracket();
  writeClosingBracket();
  writeObjectDefaultStart("node");
  writeOpeningBracket();
  writeAttribute("x", 5);
  writeObjectStart("node", item->below[0].get(), 1, 1);
  writeOpeningBracket();
  writeAttribute("y", 6);
  writeClosingBracket();
  writeClosingBracket();
  writeAttribute("source", item->below[0].get(), nullptr, 1);
  writeClosingBracket();
}

const char* const SAMPLE =
    "# all there is\n"
    "version: 2 section: \"own\" field: \"old\" own { ( ] }\n"
    "graph: 1 {\n"
    "  width: 12; scale=-2.5e-3 label \"a \\\"b\\\" \\101\\x41\n\\\\\" visible: true side left // side\n"
    "  source: $1,2 address 127.0.0.1 data: 0x00ff10 0x2233 /* more\n */ old 1 2 ] 3\n"
    "  layout { 1 2 bends: { 3 4 } horizontal gap: 1.5 deep { spacing 9 note \"n\" } node n1 { } }\n"
    "  _ spacing: 4 layout _ spacing 5 extra horizontal { 7 }\n"
    "  node: defaults { x: 1 peer: 2 node: 2 { node a { peer $,1,2,a } } node 3 { y: 3 peer 2|a } }\n"
    "  node { name: b 8 2 } node 3 { layout spacing 6 node b } point: -4 { 1 2 }\n"
    "  strict { must 1 layout must \"x\" } skip [ { ) ]\n"
    "  comment: \"unchecked\" what: 1 is \"this\" include \"part.oml\"\n"
    "}\n";

// Reads one file that may be bad and then a good one with the same reader, and looks for what must hold
// whatever the bad one is.
class Reader {
 public:
  // Works in a folder of that name, so that tests may run side by side.
  Reader(const std::string& folder, int binary) : binary_(binary) {
    std::filesystem::create_directories(folder);
    std::filesystem::current_path(folder);
    writeFile("part.oml", "part 5\n");
    writeFile("good.oml", "graph 1 { width 7 node 5 { x 1 } source $1,5 }");
  }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;
  ~Reader() { std::filesystem::current_path(".."); }

  // Gives whether the file was good.
  bool read(const std::string& bytes, unsigned variant) {
    writeFile("bad.oml", bytes);
    file_.maxNumberOfErrors(variant % 4 == 0 ? 1000 : 16);
    Item expected;
    Item* given = variant % 8 == 1 ? &expected : nullptr;
    ZVFileCodeEnum code = file_.read("bad.oml", binary_, given, variant % 8 == 2);
    const std::string messages = file_.pErrorStringBuffer();
    bool unopened = messages.find("Fatal error #013 ") != std::string::npos;
    EXPECT_EQ(code, unopened           ? ZV_FILE_OPEN_ERROR
                    : messages.empty() ? ZV_FILE_OK
                                       : ZV_FILE_READ_ERROR)
        << messages;
    EXPECT_EQ(messages.empty(), file_.numberOfErrors() == 0);
    take(code, given);

    EXPECT_EQ(file_.read("good.oml", 0, given), ZV_FILE_OK) << file_.pErrorStringBuffer();
    const auto* top = static_cast<const Item*>(file_.pTopObject());
    EXPECT_TRUE(top && top->sum != 0 && top->below.size() == 1);
    take(ZV_FILE_OK, given);
    return code == ZV_FILE_OK;
  }

 private:
  // The caller owns what a good read made, and nothing else is left.
  void take(ZVFileCodeEnum code, const Item* given) {
    auto* top = static_cast<Item*>(file_.pTopObject());
    if (top != given) {
      EXPECT_TRUE(code == ZV_FILE_OK || !top);
      delete top;
    } else if (given) {
      top->below.clear();
    }
    EXPECT_EQ(Item::alive, 1);
  }

  int binary_;
  ItemFile file_;
};

std::string sample(int binary) {
  if (!binary) return SAMPLE;
  Item top;
  top.below.push_back(std::make_unique<Item>(&top));
  top.iUserField(1);
  top.below[0]->iUserField(300);
  ItemFile file;
  EXPECT_EQ(file.writeOMLFile("sample.omb", &sampleGrammar(), &top, 1, 0, 0), ZV_FILE_OK);
  return readFile("sample.omb");
}

// What a mutation may put in, with ~ behind each piece.
const char* const TEXT_PIECES =
    "{~}~[~)~:~;~\"~\\~/*~*/~//~#~\n~ ~,~|~$~$,1~ 0x~ 0xA ~.5~1.2.3.4~-~99999999999~1e999~\xff~ 13 ~ 14 ~ "
    "1.75 ~"
    " \"!\" ~ node ~ node defaults {~ node 3 {~ id: defaults ~ id 2 ~ graph 5 { } ~ layout ~ _ ~ _ {~ "
    "horizontal ~"
    " deep ~ skip {~ own ~ old ~ field \"old\" ~ section \"s\" s ~ comment \"unchecked\" ~ include "
    "\"part.oml\" ~"
    " include \"none.oml\" ~ must ~ peer ~ source $ ~";
const char* const BINARY_PIECES =
    "{~}~:~;~\"~\\~N1\"~N~Ndefaults\"~$1,300\"~$~O~o\2~o\1N5\"{}~S~s\1~s\2~F~f\4~f\2\"unchecked\"~E~e\2~I~"
    "i\r~"
    "I\x7f\xff\xff\xff~I\xff\xff\xff\xff~F\x7f\xff\xff\xff~S\xff\xff\xff\xff~O\x80~R~r\1R\x7f\xff\xff\xff~"
    "r\1R\x80~"
    "r\1r\x80~P~p\5~X~Xi\3abc~XI\x7f\xff\xff\xff~XI\xff\xff\xff\xff~Xi~\xff~";

std::string mutate(std::mt19937& random, std::string bytes, const std::vector<std::string>& pieces) {
  for (size_t steps = 1 + random() % 4; steps > 0; --steps) {
    size_t place = random() % (bytes.size() + 1);
    size_t length = random() % (random() % 8 == 0 ? 200 : 8);
    switch (random() % 8) {
      case 0:
        bytes.erase(place, length);
        break;
      case 1:
        bytes.insert(random() % (bytes.size() + 1), bytes.substr(place, length));
        break;
      case 2:
        if (place < bytes.size()) bytes[place] = static_cast<char>(random());
        break;
      case 3:
        if (place < bytes.size()) bytes[place] = static_cast<char>(bytes[place] ^ (1 << random() % 8));
        break;
      case 4:
        if (random() % 8 == 0) bytes.resize(place);
        break;
      default:
        bytes.insert(place, pieces[random() % pieces.size()]);
    }
  }
  return bytes;
}

TEST(OMLBadFile, EveryPrefixOfASampleIsReadOrRefused) {
  for (int binary = 0; binary < 2; ++binary) {
    Reader reader("prefix" + std::to_string(binary), binary);
    const std::string whole = sample(binary);
    for (size_t length = 0; length <= whole.size() && !testing::Test::HasFailure(); ++length) {
      SCOPED_TRACE(length);
      bool good = reader.read(whole.substr(0, length), static_cast<unsigned>(length));
      EXPECT_TRUE(good || length < whole.size());
    }
  }
}

class OMLMutation : public testing::TestWithParam<int> {};

TEST_P(OMLMutation, IsReadOrRefused) {
  const int binary = GetParam() % 2;
  Reader reader("mutation" + std::to_string(GetParam()), binary);
  const std::string whole = sample(binary);
  std::vector<std::string> pieces;
  std::istringstream all(binary ? BINARY_PIECES : TEXT_PIECES);
  for (std::string piece; std::getline(all, piece, '~');) pieces.push_back(piece);
  std::mt19937 random(static_cast<unsigned>(GetParam()));
  int good = 0;
  for (unsigned i = 0; i < 12500 && !testing::Test::HasFailure(); ++i) {
    SCOPED_TRACE(i);
    good += reader.read(mutate(random, whole, pieces), i);
  }
  // Some must get through to the last phase.
  EXPECT_GT(good, 500);
  EXPECT_LT(good, 8000);
}

INSTANTIATE_TEST_SUITE_P(Quarter, OMLMutation, testing::Range(0, 4));

}  // namespace
