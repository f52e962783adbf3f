#include <gtest/gtest.h>

#include <cstdio>
#include <limits>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/files.h"
#include "tests/support/rows.h"
#include "utils/zvstrpoo.h"

// A grammar with everything open that files and the layers above see of it.
class ZVOMLStaticTest : public ZVOMLStatic {
 public:
  using ZVOMLStatic::addFieldDefinition;
  using ZVOMLStatic::addObjectTypeDefinition;
  using ZVOMLStatic::addSectionDefinition;
  using ZVOMLStatic::definedSection;
  using ZVOMLStatic::enumValue;
  using ZVOMLStatic::hashTableSize;
  using ZVOMLStatic::installEnumValueID;
  using ZVOMLStatic::installObjTypeID;
  using ZVOMLStatic::pFieldIDPool;
  using ZVOMLStatic::pObjTypeIDPool;
  using ZVOMLStatic::pSectionIDPool;
  using ZVOMLStatic::pValueIDPool;
  using ZVOMLStatic::ZVOMLStatic;

  ZVOMLDefObjType* definition(const char* type) const {
    return pObjTypeDefinition(pObjTypeIDPool()->lookup(type));
  }
  std::vector<int32_t> poolAndHashSizes() const {
    return {stringPoolSize(),    valueIDPoolSize(),   objTypeIDPoolSize(), sectionIDPoolSize(),
            fieldIDPoolSize(),   objectIDPoolSize(),  stringHashSize(),    valueIDHashSize(),
            objTypeIDHashSize(), sectionIDHashSize(), fieldIDHashSize(),   objectIDHashSize()};
  }
};

namespace {

using Grammar = ZVOMLStaticTest;

std::string name(const ZVStringPool* pool, int32_t index) { return index < 0 ? "?" : pool->decode(index); }

std::string names(const ZVStringPool* pool) {
  std::string result;
  for (int32_t i = 0; i < pool->decodeTableMax(); ++i) result.append(pool->decode(i)).append(" ");
  return result;
}

// The entries of a list, oldest first.
template <class Cell>
std::vector<Cell*> oldestFirst(Cell* cell) {
  std::vector<Cell*> cells;
  for (; cell; cell = cell->pNext()) cells.insert(cells.begin(), cell);
  return cells;
}

void printField(const Grammar& grammar, const ZVOMLDefField& field, std::ostream& out) {
  static const char LETTERS[] = "IBSoRePX";
  out << ' ' << name(grammar.pFieldIDPool(), field.fieldIDIndex()) << ':' << LETTERS[field.fieldType()];
  if (field.fieldType() == ZV_FIELD_OBJECT) {
    out << '(' << name(grammar.pObjTypeIDPool(), field.objTypeIDIndex()) << ')';
  }
  if (field.fieldType() == ZV_FIELD_ENUM) {
    std::string values;
    for (const ZVOMLDefIndexList* cell = field.pValueIDIndexList(); cell; cell = cell->next) {
      values.insert(0, name(grammar.pValueIDPool(), cell->index)).insert(0, 1, ' ');
    }
    out << '[' << values << " ]";
  }
  if (field.required()) out << '!';
}

// Writes a type or section as "{ FIELD:type! <SUBTYPE> SECTION@path{ ... } }", all in the order of
// definition, and checks that the fields are numbered in this order.
template <class Definition>
void print(const Grammar& grammar, const Definition& definition, std::ostream& out) {
  int position = 0;
  out << '{';
  for (const ZVOMLDefField* field : oldestFirst(definition.pFieldList())) {
    EXPECT_EQ(field->position(), ++position);
    EXPECT_EQ(definition.findNthField(position), field);
    EXPECT_EQ(definition.findField(field->fieldIDIndex()), field);
    printField(grammar, *field, out);
  }
  EXPECT_EQ(definition.findNthField(position + 1), nullptr);
  for (const ZVOMLDefObjTypeIndex* cell : oldestFirst(definition.pObjTypeList())) {
    EXPECT_EQ(definition.findObjType(cell->objTypeIDIndex()), cell);
    out << " <" << name(grammar.pObjTypeIDPool(), cell->objTypeIDIndex()) << '>';
  }
  for (const ZVOMLDefSection* section : oldestFirst(definition.pSectionList())) {
    out << ' ' << name(grammar.pSectionIDPool(), section->sectionIDIndex()) << '@' << std::hex
        << section->sectionPathIndex() << std::dec;
    print(grammar, *section, out);
  }
  out << " }";
}

std::string describe(const Grammar& grammar, const char* type) {
  const ZVOMLDefObjType* definition = grammar.definition(type);
  if (!definition) return "none";
  std::ostringstream out;
  print(grammar, *definition, out);
  const ZVOMLDefField* field = definition->pRequiredFieldList();
  if (field) out << " requires";
  for (; field; field = field->pNextRequired()) {
    out << ' ' << name(grammar.pFieldIDPool(), field->fieldIDIndex());
  }
  return out.str();
}

TEST(Grammar, HashTablesAreSizedFromThePools) {
  Grammar standard(nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(standard.poolAndHashSizes(),
            (std::vector<int32_t>{4048, 512, 32, 32, 256, 4048, 7507, 1103, 251, 251, 1103, 7507}));
  Grammar own(nullptr, nullptr, nullptr, nullptr, 1, 2, 3, 4, 5, 6);
  EXPECT_EQ(own.poolAndHashSizes(), (std::vector<int32_t>{1, 2, 3, 4, 5, 6, 5, 17, 17, 29, 29, 37}));
  // On both sides of the steps at 256 and 512, of the largest prime, and out of all bounds.
  const int32_t most = std::numeric_limits<int32_t>::max();
  const std::pair<int32_t, int32_t> sizes[] = {{170, 1103},      {171, 751},      {341, 1103}, {342, 751},
                                               {106800, 160201}, {106801, 15013}, {0, 2},      {-7, 2},
                                               {most, 15013},    {-most - 1, 2}};
  for (const auto& [size, prime] : sizes) EXPECT_EQ(Grammar::hashTableSize(size), prime) << size;
  Grammar tiny(nullptr, nullptr, nullptr, nullptr, -1, -1, -1, 0, 0, -1);
  for (int i = 0; i < 50; ++i) tiny.installEnumValueID(std::to_string(i).c_str(), i);
  EXPECT_EQ(tiny.enumValue(51), 49);
}

int checkSeven(void*, ZVOMLSyntaxObject*) { return 7; }
int checkNine(void*, ZVOMLSyntaxObject*) { return 9; }
ZVObject* createFile(void* file, ZVOMLSyntaxObject*, ZVOMLSyntaxObject*, ZVObject*) {
  return static_cast<ZVObject*>(file);
}
int fieldFive(void*, ZVOMLSyntaxField*, ZVOMLSyntaxObject*, ZVObject*) { return 5; }
int writeThree(void*, const ZVObject*) { return 3; }

TEST(Grammar, IndicesFollowTheOrderOfInstallation) {
  const ZVOMLStaticOEStruct types[] = {{"Graph"}, {"$TopLevel$", checkSeven}, {"node"}, {"GRAPH"}, {}};
  const char* sections[] = {"layout", "SKIP", "_", "more", nullptr};
  ZVOMLStaticVEStruct values[] = {{"left", 3}, {"True", 1}, {"right", -4}, {"left", 5}, {}};
  const char* rows[] = {"O edge", "F width I", "S deep", "F name S", "}", "T port", "}", nullptr};
  Grammar grammar(types, sections, values, rows);
  EXPECT_EQ(names(grammar.pFieldIDPool()), "INCLUDE INPUT COMMENT SECTION ID NAME FIELD WIDTH ");
  EXPECT_EQ(names(grammar.pSectionIDPool()), "SKIP _ LAYOUT MORE DEEP ");
  EXPECT_EQ(names(grammar.pValueIDPool()), "TRUE FALSE LEFT RIGHT ");
  EXPECT_EQ(names(grammar.pObjTypeIDPool()), "$TOPLEVEL$ GRAPH NODE EDGE PORT ");
  const int32_t numbers[] = {0, 1, 0, 5, -4, 0};
  for (int32_t index = -1; index < 5; ++index) EXPECT_EQ(grammar.enumValue(index), numbers[index + 1]);
  for (int32_t index : {-1, 0, 4, 5}) EXPECT_EQ(grammar.definedSection(index), index >= 0 && index < 5);
  EXPECT_EQ(describe(grammar, "nothing"), "none");
  EXPECT_EQ(describe(grammar, "node"), "{ }");

  const char* const moreFields[] = {"label", "WIDTH", nullptr};
  grammar.installFieldTable(moreFields);
  grammar.installFieldTable(nullptr);
  grammar.installObjectTypeTable(nullptr);
  EXPECT_EQ(grammar.pFieldIDPool()->lookup("Label"), 8);
  EXPECT_EQ(grammar.pFieldIDPool()->decodeTableMax(), 9);
}

TEST(Grammar, LaterFunctionsReplaceOnlyWhereTheyAreGiven) {
  Grammar grammar(nullptr, nullptr, nullptr, nullptr);
  ZVOMLDefObjType* type = grammar.installObjTypeID("node", nullptr, nullptr, nullptr, nullptr);
  ZVObject file;
  auto expectResults = [&](int check, ZVObject* created, int field, int write) {
    EXPECT_EQ(type->checkFunction(&file, nullptr), check);
    EXPECT_EQ(type->createFunction(&file, nullptr, nullptr, nullptr), created);
    EXPECT_EQ(type->fieldFunction(&file, nullptr, nullptr, nullptr), field);
    EXPECT_EQ(type->writeFunction(&file, nullptr), write);
  };
  expectResults(1, nullptr, 0, 0);

  const ZVOMLStaticOEStruct first[] = {{"Node", checkSeven, createFile, fieldFive, nullptr}, {}};
  const ZVOMLStaticOEStruct second[] = {{"NODE", checkNine, nullptr, nullptr, writeThree}, {}};
  grammar.installObjectTypeTable(first);
  grammar.installObjectTypeTable(second);
  EXPECT_EQ(grammar.definition("node"), type);
  expectResults(9, &file, 5, 3);
}

TEST(Grammar, RowsCompile) {
  const std::pair<const char*, const char*> cases[] = {
      // Simple fields: all types, both letter cases, any blanks.
      {"O t|{|F i I R| \tf\tb\tB\tr\t|Fs S|F r R|F rr R R|F p P|F x XR|}",
       "{ I:I! B:B! S:S R:R RR:R! P:P X:X! } requires X RR B I"},
      {"o T [|f _1 s|F $x i|]|F late I", "{ _1:S $X:I }"},
      // Rows that add no field.
      {"O t|{|F|F  |F n|F n Q|F n-n I|F -n I|E|R|T|T *|}", "{ }"},
      // The same field again: alike, with another type, with another flag.
      {"O t|F n I|F m I R|F N I|F n S|F n I R|F m I|R m node|F k B|}", "{ N:I M:I! K:B } requires M"},
      // Rows of an unknown kind are stepped over, a bracket further down too.
      {"x|F n I||O t|{||{|Z F n I|#|   |F n I|[|}", "{ N:I }"},
      // Enum values and ranges; ranges follow the pool in either direction and never leave it.
      {"O t|E x [ a b,c\t, d ] R|E y{e}r|E z [a..d]|E u [ a ... d, .. b ]|}",
       "{ X:e[ A B C D ]! Y:e[ E ]! Z:e[ A D B C ] U:e[ A D B C B C ] } requires Y X"},
      {"O t|E x [ e .. c ]|E y [ a .. b ]|E z [ nix a nix .. b ] |E w [ true .. b",
       "{ X:e[ E C D ] Y:e[ A B ] Z:e[ ? A ? B ] W:e[ TRUE B FALSE A ] }"},
      {"O t|E x [ ]|E x [ a ]|E X [ b ]|E x [ b ] R|E y R|E z [ a .. ]|E w [ .. a ] R",
       "{ X:e[ A ] Y:e[ ] Z:e[ A ] W:e[ ]! } requires W"},
      // References: a known type, any type, one that comes too late, one named in a later row.
      {"O t|R n node R|r m _ r|R l late|R k edge|R k node|T late|R o t|}",
       "{ N:o(NODE)! M:o(?)! L:o(?) K:o(EDGE) O:o(T) <LATE> } requires M N"},
      {"O t|T _|R n _|R n edge|R m _ R", "{ N:o(EDGE) M:o(?)! <_> } requires M"},
      {"O t|R l late|T late|R l late|R n", "{ L:o(LATE) N:o(?) <LATE> }"},
      // Sections: nested, continued, ended by the next object type or by the end of the table.
      {"O t|{|S one|{|F n I R|S in|F m I R|T node|}|F k I|]|s two|[|T node|T edge|T Node|}|F n S|}",
       "{ N:S ONE@1{ N:I! K:I IN@11{ M:I! <NODE> } } TWO@2{ <NODE> <EDGE> } } requires M N"},
      {"O t|S one|S in|F n I|O u|F u I|}|O t|S two|}|S ONE|F m I|S in|F k I R",
       "{ ONE@1{ M:I IN@11{ N:I K:I! } } TWO@2{ } } requires K"},
      // A name of the wrong form starts nothing.
      {"O t|F n I|}|O -|F m I|}|F k I|O t|S +|F l I", "{ N:I L:I }"},
      {"O $toplevel$|{|T t|}|O t|{|F name S|S layout|{|F spacing I R|}|T node|}|O node|{|F width I|R o t",
       "{ NAME:S <NODE> LAYOUT@1{ SPACING:I! } } requires SPACING"},
  };
  const char* types[] = {"node", "edge", nullptr};
  ZVOMLStaticVEStruct values[] = {{"a", 1}, {"b", 2}, {"c", 3}, {"d", 4}, {"e", 5}, {}};
  for (const auto& [rows, expected] : cases) {
    Grammar grammar(types, nullptr, values, Rows(rows, '|').table());
    EXPECT_EQ(describe(grammar, "t"), expected) << rows;
    for (ZVStringPool* pool : {grammar.pObjTypeIDPool(), grammar.pSectionIDPool(), grammar.pFieldIDPool()}) {
      EXPECT_EQ(pool->lookup(""), -1) << rows;
    }
  }
}

TEST(Grammar, FifteenthSubSectionAndNinthLevelAreRefusedWithTheirRows) {
  std::string rows = "O t";
  for (int i = 1; i <= 15; ++i) rows.append("|S s").append(std::to_string(i)).append("|{|F f I|S in|}|}");
  rows += "|F after I|}|O u";
  for (int i = 1; i <= 10; ++i) rows.append("|S d").append(std::to_string(i));
  rows += "|F lost I|}|}|F found I R|}|F above I";
  Grammar grammar(nullptr, nullptr, nullptr, Rows(rows, '|').table());

  const ZVOMLDefObjType* wide = grammar.definition("t");
  EXPECT_EQ(oldestFirst(wide->pSectionList()).size(), 14U);
  EXPECT_EQ(wide->pSectionList()->sectionPathIndex(), 14U);
  EXPECT_EQ(oldestFirst(wide->pFieldList()).size(), 1U);
  EXPECT_EQ(describe(grammar, "u"),
            "{ D1@1{ D2@11{ D3@111{ D4@1111{ D5@11111{ D6@111111{ D7@1111111{ ABOVE:I D8@11111111{ FOUND:I! "
            "} } } } } } } } } requires FOUND");
  EXPECT_EQ(grammar.pFieldIDPool()->lookup("lost"), -1);
  EXPECT_EQ(grammar.addSectionDefinition("u", 0x11111111, "d9"), 0U);
  EXPECT_EQ(grammar.addSectionDefinition("t", "s16"), 0U);
  EXPECT_EQ(grammar.addSectionDefinition("t", "s14"), 14U);
}

TEST(Grammar, CallsBuildWhatRowsBuild) {
  Grammar g(nullptr, nullptr, nullptr, nullptr);
  EXPECT_NE(g.installEnumValueID("red", 10), 0);
  EXPECT_NE(g.installEnumValueID("blue", 0), 0);
  EXPECT_EQ(g.addFieldDefinition("t", "w", ZV_FIELD_INT, 2), 1);
  EXPECT_EQ(g.addFieldDefinition("t", "w", ZV_FIELD_INT, 1), 1);
  EXPECT_EQ(g.addFieldDefinition("t", "w", ZV_FIELD_INT, 0), 0);
  EXPECT_EQ(g.addFieldDefinition("t", "w", "red", 1), 0);
  EXPECT_EQ(g.addSectionDefinition("t", "one"), 1U);
  EXPECT_EQ(g.addSectionDefinition("t", 0, "two"), 2U);
  EXPECT_EQ(g.addSectionDefinition("t", 2, "in"), 0x12U);
  EXPECT_EQ(g.addSectionDefinition("T", 2, "IN"), 0x12U);
  EXPECT_EQ(g.addSectionDefinition("t", 0xf, "in"), 0U);
  EXPECT_EQ(g.addSectionDefinition("t", 3, "in"), 0U);
  EXPECT_EQ(g.addFieldDefinition("t", 0x12, "r", ZV_FIELD_REAL, 1), 1);
  EXPECT_EQ(g.addFieldDefinition("t", 0x22, "r", ZV_FIELD_REAL, 1), 0);
  for (const char* value : {"Red", "blue", "TRUE"}) EXPECT_EQ(g.addFieldDefinition("t", 1, "c", value, 0), 1);
  EXPECT_EQ(g.addFieldDefinition("t", "own", "t", 0), 1);
  EXPECT_EQ(g.addFieldDefinition("t", "bad", "nothing", 0), 0);
  EXPECT_EQ(g.addFieldDefinition("t", "bad", "_", 0), 0);
  EXPECT_EQ(g.pFieldIDPool()->lookup("bad"), -1);
  EXPECT_EQ(g.addObjectTypeDefinition("t", "sub"), 1);
  EXPECT_EQ(g.addObjectTypeDefinition("t", 0x12, "sub"), 1);
  EXPECT_EQ(g.addObjectTypeDefinition("t", 9, "other"), 0);
  EXPECT_EQ(
      describe(g, "t"),
      "{ W:I! OWN:o(T) <SUB> ONE@1{ C:e[ RED BLUE TRUE ] } TWO@2{ IN@12{ R:R! <SUB> } } } requires R W");
  EXPECT_EQ(g.addFieldDefinition("t", nullptr, ZV_FIELD_INT, 0), 0);
  EXPECT_EQ(g.addFieldDefinition(nullptr, "f", ZV_FIELD_INT, 0), 0);
  EXPECT_EQ(g.addSectionDefinition("t", nullptr), 0U);
  EXPECT_EQ(g.installObjTypeID(nullptr, nullptr, nullptr, nullptr, nullptr), nullptr);
}

TEST(Grammar, WritesTheIndicesOfItsNames) {
  const char* types[] = {"graph", nullptr};
  const char* sections[] = {"layout", nullptr};
  const ZVOMLStaticVEStruct values[] = {{"left", 1}, {}};
  const char* rows[] = {"O graph", "F width I", nullptr};
  Grammar grammar(types, sections, values, rows);
  ASSERT_EQ(grammar.writeIndexDefinitions("indices.h"), ZV_FILE_OK);
  EXPECT_EQ(readFile("indices.h"),
            "\r\n/* Coding of fields */\r\n\r\n"
            "#define ZV_XKEY_FI_ID 4\r\n#define ZV_XKEY_FI_NAME 5\r\n"
            "#define ZV_XKEY_FI_FIELD 6\r\n#define ZV_XKEY_FI_WIDTH 7\r\n"
            "\r\n/* Coding of sections */\r\n\r\n#define ZV_XKEY_SI_LAYOUT 2\r\n"
            "\r\n/* Coding of enum value identifiers */\r\n\r\n"
            "#define ZV_XKEY_VI_TRUE 0\r\n#define ZV_XKEY_VI_FALSE 1\r\n#define ZV_XKEY_VI_LEFT 2\r\n"
            "\r\n/* Coding of object type identifiers */\r\n\r\n#define ZV_XKEY_OI_GRAPH 1\r\n\r\n");
  std::remove("indices.h");
  EXPECT_EQ(grammar.writeIndexDefinitions("no/such/folder/indices.h"), ZV_FILE_OPEN_ERROR);
  EXPECT_EQ(grammar.writeIndexDefinitions(nullptr), ZV_FILE_OPEN_ERROR);
  EXPECT_EQ(grammar.writeIndexDefinitions("/dev/full"), ZV_FILE_WRITE_ERROR);
}

TEST(Grammar, AChainOfAMillionValuesIsFreed) {
  ZVOMLDefField field(1, ZV_FIELD_ENUM);
  for (int32_t i = 0; i < 1000000; ++i) field.addEnumValue(i);
  EXPECT_EQ(field.pValueIDIndexList()->index, 999999);
  EXPECT_EQ(ZVOMLDefField().fieldType(), ZV_FIELD_NONE);
  EXPECT_EQ(ZVOMLDefField().objTypeIDIndex(), -1);
}

TEST(SectionPaths, OddPathsFindNothing) {
  ZVOMLDefObjType type;
  type.addSection(2)->addSection(3)->addSection(2);
  type.addSection(4)->addSection(4);
  for (uint32_t path : {0x0U, 0x10U, 0x101U, 0x3U, 0x1111U, 0xf0U, 0xf01U, 0xffffffffU}) {
    EXPECT_EQ(type.findFirstSectionPath(path, ZVOMLDefObjType::wildCardMask(path)), nullptr) << path;
    EXPECT_EQ(type.findSectionPath(path), nullptr) << path;
  }
  EXPECT_EQ(type.findNextSectionPath(0xf, 0xfffffff0, nullptr), nullptr);
  EXPECT_EQ(ZVOMLDefObjType::wildCardMask(0x7f2ef0f1), 0xf0ff0f0fU);
  EXPECT_EQ(type.findSection(4), 2U);
  EXPECT_EQ(type.findUniqueSection(9), 0U);
}

}  // namespace
