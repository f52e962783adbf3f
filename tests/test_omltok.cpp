#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/omlprobe.h"
#include "tests/support/rows.h"

namespace {

// The first names of its own have the index 1 as types, 2 as sections and values, and 7 as fields.
std::unique_ptr<ZVOMLStatic> makeGrammar() {
  static constexpr const char* TYPES[] = {"graph", "node", nullptr};
  static constexpr const char* SECTIONS[] = {"layout", nullptr};
  static constexpr ZVOMLStaticVEStruct VALUES[] = {{"left", 3}, {"right", 4}, {nullptr, 0}};
  return compileRows(TYPES, SECTIONS, VALUES,
                     "O $toplevel$;T graph;F title S;F scale R;O graph;T node;F label S;F size R;O node;"
                     "F width I;F data X;F address P;E side [ left right ];R next node;"
                     "S layout;F spacing I;};};");
}

// The text without its newlines, so that a table shows one message after the other.
std::string oneLine(std::string text) {
  std::replace(text.begin(), text.end(), '\n', '|');
  return text;
}

std::string bytes(std::initializer_list<int> values) {
  std::string text;
  for (int value : values) text += static_cast<char>(value);
  return text;
}

class OmlTokens : public testing::Test {
 protected:
  std::string of(const std::string& text, int binary = 0) {
    writeFile("t.oml", text);
    std::string tokens = file_.printTokens("t.oml", grammar_, binary);
    return tokens + oneLine(file_.messages());
  }
  // The messages of a whole read.
  std::string messagesOf(const std::string& text, int binary = 0) {
    writeFile("f.oml", text);
    result_ = file_.readOMLFile("f.oml", &grammar_, nullptr, -1, binary, 0, 0);
    return file_.messages();
  }

  std::unique_ptr<ZVOMLStatic> owner_ = makeGrammar();
  ZVOMLStatic& grammar_ = *owner_;
  ZVOMLFileProbe file_;
  ZVFileCodeEnum result_ = ZV_FILE_OK;
};

struct Row {
  std::string text;
  const char* tokens;
};

TEST_F(OmlTokens, OfTheTextForm) {
  const Row rows[] = {
      {"", ""},
      {" \t# rest { \" \n// rest\n/* a * \" / */ /**/ /*/ ;", "; "},
      {"([{<>}]):=;", "( [ { < > } ] ) : = ; "},
      {"/ \v\f ?\r\n", "bad 47 bad 11 bad 12 bad 63 "},
      {"5 +5 -5 + 99999999999 -99999999999 007", "5 5 -5 0 2147483647 -2147483648 7 "},
      {"1. .5 1.5 -.5 1e5 2.5E-3 1.5e3 300.25 5e 1.e2 1.300 +1.2.3",
       "real 1 real 0.5 real 1.5 real -0.5 real 100000 real 0.0025000000000000001 real 1500 real 300.25 "
       "real 5 real 100 real 1.3 real 1.2 real 0.29999999999999999 "},
      {"1e999 1e-999 300.5.5", "real inf real 0 real 300.5 real 0.5 "},
      {"192.168.0.1 0.0.0.0 255.255.255.255 1.2.3 1.2.3.400 1.300.2.3 1.2. 256.1.2.3 1.2.3.4.5",
       "ipc0a80001 ip00000000 ipffffffff bad 0 bad 0 bad 0 bad 0 real 256.10000000000002 real "
       "0.20000000000000001 "
       "real 0.29999999999999999 ip01020304 5 "},
      {"0x00fF10; 0xA ; 0xA 0x; 0xabz 0x1\n0x2g;00x1 ; 1x 0X1",
       "0x00ff10 ; 0xa0 ; 0xa000 ; 0xab id z 0x1020 ; 0x10 ; 1 id x 0 id X1 "},
      {"node NODE nOde_ layout width title true LEFT skip _ _x x",
       "type NODE type NODE id nOde_ section LAYOUT "
       "field WIDTH field TITLE value TRUE value LEFT section SKIP section _ id _x id x "},
      {"a,b a|b|3 12,7 -1,+2 node,7 _a,b a,_b",
       "id a,b id a,b,3 id 12,7 id -1,+2 id node,7 id _a,b bad 13 id _b "},
      {"$ $12,7 $,12,7 $a|b $-3 $ 5 $_", "id $ id $,12,7 id $,12,7 id $,a,b id $,-3 id $ 5 id $ section _ "},
      {"a, b a,,b a,", "bad 3 id b bad 3 bad 44 id b bad 3 "},
      {"\"a#b//\\\"c\" \"x\ny\"", "\"a#b//\"c\" \"x\ny\" "},
      {R"("\a\b\f\n\r\t\v\101\60x\x41\x4z\xG\q\\" "\1234\400")", "\"\a\b\f\n\r\t\vA0xA\4z\" \"S4\" "},
      {"1\r2\r\r3\n\r4", "1 2 3 4 "},
      {"a\x80"
       "b",
       "id a bad -128 id b "},
      {std::string("1 2\0 3\n4", 8), "1 2 "},
  };
  for (const Row& row : rows) EXPECT_EQ(of(row.text), row.tokens) << row.text;
}

TEST_F(OmlTokens, BearThePlaceWhereTheyEnd) {
  writeFile("t.oml", "node: 12 {\n  \"a\nbc\" 1.5\n\n}");
  std::string places;
  file_.readTokens("t.oml", grammar_, [&](ZVOMLToken* token) {
    places += std::to_string(token->line()) + ':' + std::to_string(token->position()) + ' ';
  });
  EXPECT_EQ(places, "1:4 1:5 1:8 1:10 3:3 3:7 5:1 ");
}

TEST_F(OmlTokens, OfTheBinaryForm) {
  const Row rows[] = {
      {"", ""},
      {"([{<>}]):=;", "( [ { < > } ] ) : = ; "},
      {" ?\n", "bad 32 bad 63 bad 10 "},
      {bytes({'o', 2,   'O', 0,   0, 0,   1,   's', 2,   'f', 7,   'e',
              0,   'o', 9,   's', 3, 'F', 255, 255, 255, 255, 'e', 200}),
       "type NODE type GRAPH section LAYOUT field TITLE value TRUE bad 0 bad 0 bad 0 bad 0 "},
      {bytes({'i', 255, 'I', 255, 255, 255, 255, 'I', 127, 255, 255, 255, 'I', 128, 0, 0, 0}),
       "255 -1 2147483647 -2147483648 "},
      {bytes({'P', 192, 168, 0, 1, 'p', 200}), "ipc0a80001 ip010000c8 "},
      {bytes({'R', 0, 0xe4, 0xe1, 0xc0, 'R', 255, 255, 255, 0xf9, 'r', 0, 'r', 0, 'r', 2, 'r', 3}),
       "real 1.5 real 0 real 2000 "},
      {bytes({'r', 1, 'R', 127, 255, 255, 255, 'r', 1, 'R', 128, 0, 0, 0, 'r', 0, 'R', 127, 255, 255, 255}),
       "real inf real 0 real 0 "},
      {bytes({'r', 1, 'i', ';'}), "bad 0 ; "},
      {std::string("\"a\\\"\\012\\\\b\"") + bytes({'"', 'x', 0, 'y', '"'}), "\"a\"\n\\b\" \"x\" "},
      {bytes({'X', 'i', 3, 0, '}', 255, 'X', 'I', 0, 0, 0, 1, 7, 'X', 'i', 0, ';'}), "0x007dff07 ; "},
      {bytes({'X', 'i', 0, ';', 'X', 'r', 1, ';', 'X', 'I', 255, 255, 255, 255, ';'}),
       "0x ; bad 0 bad 1 ; bad 0 ; "},
      {"N12\"N-3,a\"Ndefaults\"$12,7\"$,12\"N", "id 12 id -3,a id defaults id $,12,7 id $,12 id  "},
      {"Nabc", "id abc "},
      {bytes({'X', 'I', 127, 255, 255, 255, 1, 2, 3}),
       "0x010203 Error #019 (t.oml:1:0) unterminated binary sequence !|"},
      {bytes({'i', 1, '"', 'a', 'b', '\\'}), "1 \"ab\" Error #018 (t.oml:3:0) unterminated string !|"},
  };
  for (const Row& row : rows) EXPECT_EQ(of(row.text, 1), row.tokens) << testing::PrintToString(row.text);

  for (const std::string& cut : {bytes({'i'}), bytes({'I', 0, 0, 1}), bytes({'f'}), bytes({'P', 1, 2}),
                                 bytes({'r', 5}), bytes({'r', 5, 'r'}), bytes({'X'})}) {
    EXPECT_EQ(of(cut, 1), "bad 0 ") << cut;
  }

  // Longer than any buffer on the way.
  std::string sequence = bytes({'X', 'I', 0, 0, 100, 0});
  std::string digits = "0x";
  for (int i = 0; i < 25600; ++i) {
    sequence += static_cast<char>(i);
    char text[3];
    std::snprintf(text, sizeof text, "%02x", static_cast<unsigned>(i & 255));
    digits += text;
  }
  EXPECT_EQ(of(sequence + ";", 1), digits + " ; ");
  std::string broken;
  for (size_t i = 2; i < digits.size(); i += 64) broken.append("0x").append(digits, i, 64).append("\n");
  EXPECT_EQ(of(broken + ";"), digits + " ; ");
  const std::string longText(100000, 'a');
  const std::string file = longText + " \"" + longText + "\" " + longText + ",7";
  EXPECT_EQ(of(file), "id " + longText + " \"" + longText + "\" id " + longText + ",7 ");
}

// The content of the tree of each text, null after errors, and the messages that its tokens give rise to.
TEST_F(OmlTokens, MakeATreeAndMessagesThatNameThePlace) {
  const struct {
    const char* text;
    const char* tree;
    const char* messages;
    const char* included = "";  // as i.oml
  } rows[] = {
      {"\n }", nullptr, "16 2:2\n24 2:2 5"},
      {"graph: 1 (\n } ", "GRAPH:1@1:5{}", "50 1:10\n51 2:2"},
      {"\n  /* x\n*", nullptr, "17 2:3"},
      {"title: \"abc\n", nullptr, "18 1:8"},
      {"title: \"abc\\", nullptr, "18 1:8"},
      {"include: \"f.oml\"", nullptr, "13 1:16 f.oml"},

      // Skipped bodies and ignored lines are not read.
      {"section: \"extras\" field: \"oldwidth\"\n extras { ( } ) oldwidth: 1 2 {\nOldWidth 3 }\nEXTRAS "
       "title: \"a\"",
       "TITLE/0[EXTRAS]=\"a\"@4:12", "50 2:11\n51 2:13\n50 2:9\n51 2:15"},
      {"graph: 1 { skip { { [ /* ] \" } */ label: \"b\" }", nullptr, "15 1:10\n15 1:10\n15 1:10\n15 1:10"},
      {"graph: 1 { skip { \" }\" label: \"b\" }", nullptr,
       "24 1:31 6\n23 1:32\n18 1:33\n23 -\n15 1:10\n15 1:10\n15 1:10\n15 1:10"},
      {"graph: 1 { skip { { ", nullptr, "15 1:19\n15 1:19\n15 1:19\n15 1:19"},
      {"field: \"x\" x", "", ""},
      {"graph: x { label: \"a\" } field: \"x\" x 7 8", "GRAPH:x@1:5{LABEL=\"a\"@1:16}", ""},

      // Included text continues in the including file.
      {"include: \"i.oml\" c\" scale: 1.5", "TITLE=\"ab\n c\"@1:5 SCALE=1.5@1:25", "", "title: \"ab"},
      {"input \"i.oml\"; */ title: \"t\"", "TITLE=\"t\"@1:23", "", "/* x"},
      {"include: \"i.oml\" label: \"b\"\n}", "GRAPH:1@1:5{LABEL=\"b\"@1:22}", "50 i.oml:1:10\n51 2:1",
       "graph: 1 ("},
      {"include: \"i.oml\" include: \"i.oml\" title: \"t\"", "TITLE=\"t\"@1:39", "", "\n"},
  };
  for (const auto& row : rows) {
    writeFile("i.oml", row.included);
    writeFile("f.oml", row.text);
    std::string tree;
    file_.parseTree("f.oml", grammar_,
                    [&](const ZVOMLSyntaxObject* root) { tree = root ? file_.print(root) : ""; });
    EXPECT_EQ(tree, row.tree ? std::string("$TOPLEVEL$@-1:0{") + row.tree + '}' : "") << row.text;
    EXPECT_EQ(file_.messages(), fullMessages(row.messages)) << row.text;
    EXPECT_EQ(file_.numberOfErrors(),
              std::count(file_.pErrorStringBuffer(), std::strchr(file_.pErrorStringBuffer(), 0), '\n'));
  }
  writeFile("i.oml", bytes({'i'}));
  EXPECT_EQ(messagesOf(bytes({'f', 0}) + "\"i.oml\"f" + bytes({7, '"', 'a', '"'}), 1),
            fullMessages("24 10:0 6\n20 11:0\n23 14:0"));
  // The including file goes on behind what its buffer holds.
  writeFile("i.oml", "\n");
  EXPECT_EQ(messagesOf("include: \"i.oml\" " + std::string(20000, ' ') + "title: ?"),
            fullMessages("20 1:20025"));
  EXPECT_EQ(file_.readOMLFile("none.oml", &grammar_, nullptr, -1, 0, 0, 0), ZV_FILE_OPEN_ERROR);
  EXPECT_EQ(file_.messages(), "Fatal error #013 cannot open `none.oml' !\n");
  // A folder can be opened, but not be read.
  EXPECT_NE(file_.readOMLFile(".", &grammar_, nullptr, -1, 0, 0, 0), ZV_FILE_OK);
  EXPECT_NE(file_.readOMLFile(".", &grammar_, nullptr, -1, 1, 0, 0), ZV_FILE_OK);
}

TEST_F(OmlTokens, InputMayComeFromMemory) {
  ZVStringHandle buffer;
  buffer.appendString("node 12,7 \"a\nb\" /* x */ 0x");
  EXPECT_EQ(file_.printMemoryTokens(buffer, grammar_), "type NODE id 12,7 \"a\nb\" 0x ");
  EXPECT_STREQ(buffer.pString(), "");
  EXPECT_EQ(file_.auxCLIMode(), 0);
}

struct Names : ZVOMLFileProbe {
  void check(ZVOMLStatic& grammar) {
    // Without a grammar there are no names.
    EXPECT_EQ(storeSectionIDIndex("a"), -1);
    EXPECT_EQ(storeFieldIDIndex("a"), -1);
    EXPECT_EQ(storeUnknownFieldIDIndex("a"), -1);
    EXPECT_EQ(storeObjectIDIndex("a"), -1);
    EXPECT_EQ(valueIDIndex("true") + objTypeIDIndex("node") + fieldIDIndex("width"), -3);
    EXPECT_STREQ(sectionID(0), "");
    EXPECT_STREQ(fieldID(0), "");
    EXPECT_STREQ(objectID(0), "");

    initParser(&grammar, nullptr, -1, 0);
    EXPECT_EQ(objectIDIndex("defaults"), 0);
    EXPECT_EQ(storeObjectIDIndex("Ab"), 1);
    EXPECT_EQ(objectIDIndex("ab"), -1);
    EXPECT_EQ(storeStringIndex("s"), 0);
    EXPECT_STREQ(string(stringIndex("s")), "s");
    EXPECT_EQ(storeSectionIDIndex("LAYOUT"), sectionIDIndex("Layout"));
    EXPECT_EQ(storeSectionIDIndex("own"), 3);
    EXPECT_STREQ(sectionID(sectionIDIndex("OWN")), "OWN");
    const int32_t own = storeFieldIDIndex("own");
    EXPECT_EQ(fieldIDIndex("OWN"), own);
    EXPECT_EQ(storeFieldIDIndex("Width"), checkedFieldIDIndex("width"));
    EXPECT_EQ(checkedFieldIDIndex("own"), -1);
    EXPECT_STREQ(fieldID(own - 1), "SPACING");
    EXPECT_EQ(storeUnknownFieldIDIndex("u"), 1);
    EXPECT_EQ(storeUnknownFieldIDIndex("v"), 3);
    EXPECT_EQ(unknownFieldIDIndex("U"), 2);
    EXPECT_EQ(unknownFieldIDIndex("width"), -1);
    EXPECT_EQ(objTypeIDIndex(nullptr) + stringIndex(nullptr), -2);
    initParser(nullptr, nullptr, -1, 0);
  }
};

TEST_F(OmlTokens, NamesHaveIndicesBehindThoseOfTheGrammar) {
  Names names;
  for (int round = 0; round < 2; ++round) names.check(grammar_);
}

// ---- Diagnostics

TEST_F(OmlTokens, LimitsOfMessagesEndTheReading) {
  const std::string bad(100, '?');
  messagesOf(bad);
  EXPECT_EQ(file_.numberOfErrors(), 17);
  EXPECT_NE(file_.messages().find("(f.oml:1:16) unexpected token !\nFatal error #010 too many errors !\n"),
            std::string::npos);
  EXPECT_EQ(file_.messages().find("1:17"), std::string::npos);
  file_.maxNumberOfErrors(1);
  EXPECT_EQ(messagesOf(bad), fullMessages("20 1:1") + "Fatal error #010 too many errors !\n");
  EXPECT_EQ(file_.numberOfErrors(), 2);
  file_.maxNumberOfErrors(16);
  file_.maxNumberOfWarnings(1);
  EXPECT_EQ(messagesOf("graph: 1 ( } ?"), "Fatal error #011 too many warnings !\n" + fullMessages("50 1:10"));
  EXPECT_EQ(file_.numberOfWarnings(), 1);
  EXPECT_EQ(result_, ZV_FILE_READ_ERROR);
  file_.maxNumberOfWarnings(2);
  EXPECT_EQ(messagesOf("graph: 1"), "");
}

TEST_F(OmlTokens, MessagesOfCallbacksKeepTheirTextAndNumber) {
  ZVOMLSyntaxStruct place(&file_, 3, 4, -1);
  file_.errorMessage(&place, 7, "100%s %d", 0);
  file_.errorMessage(nullptr, 1234, nullptr, 0);
  file_.warningMessage(&place, 7, nullptr);
  file_.warningMessage(nullptr, 7, "odd");
  EXPECT_EQ(file_.messages(),
            "Error #007 (:3:4) 100%s %d !\nError #1234  !\nWarning #007 (:3:4) something wrong !\nWarning #  "
            "7 odd !\n");
  file_.errorMessage(nullptr, 8, "last", 1);
  file_.errorMessage(nullptr, 9, "after", 0);
  file_.warningMessage(nullptr, 9, "after");
  EXPECT_EQ(file_.numberOfErrors(), 3);
  EXPECT_EQ(file_.numberOfWarnings(), 2);
}

TEST_F(OmlTokens, BuffersAreCutWithAMarkAndNeverOverrun) {
  // Each message takes 17 characters.
  const std::vector<std::pair<int, std::string>> rows = {
      {1, ""},
      {4, ""},
      {5, "...|"},
      {6, "...|"},
      {7, "E...|"},
      {22, "Error #007 abc !...|"},
      {23, "Error #007 abc !|...|"},
      {24, "Error #007 abc !|E...|"},
      {40, "Error #007 abc !|Error #007 abc !|...|"},
      {1000, "Error #007 abc !|Error #007 abc !|Error #007 abc !|"}};
  for (const auto& [size, text] : rows) {
    EXPECT_NE(file_.pErrorStringBuffer(size), nullptr);
    EXPECT_STREQ(file_.pErrorStringBuffer(), "");
    for (int i = 0; i < 3; ++i) file_.errorMessage(nullptr, 7, "abc", 0);
    EXPECT_EQ(oneLine(file_.pErrorStringBuffer()), text) << size;
    EXPECT_EQ(file_.pErrorStringBuffer(-1), file_.pErrorStringBuffer());
    EXPECT_EQ(file_.errorStringBufferSize(), size);
    file_.initParser(nullptr, nullptr, -1, 0);
  }
  EXPECT_EQ(file_.pErrorStringBuffer(0), nullptr);
  EXPECT_EQ(file_.pWarningStringBuffer(0), nullptr);
  file_.errorMessage(nullptr, 7, "abc", 0);
  file_.warningMessage(nullptr, 7, "abc");
  EXPECT_EQ(file_.numberOfErrors() + file_.numberOfWarnings(), 2);
  file_.pErrorStringBuffer(100);
  file_.pWarningStringBuffer(100);
}

// ---- Frame

TEST_F(OmlTokens, CloseThatFailsIsFatal) {
  struct Failing : ZVOMLFileProbe {
    ZVFileCodeEnum close() override {
      ZVOMLFileProbe::close();
      return fails ? ZV_FILE_CLOSE_ERROR : ZV_FILE_OK;
    }
    bool fails = true;
  } file;
  writeFile("t.oml", "title: \"a\"");
  EXPECT_EQ(file.readOMLFile("t.oml", &grammar_, nullptr, -1, 0, 0, 0), ZV_FILE_CLOSE_ERROR);
  EXPECT_EQ(file.messages(), "Fatal error #014 (t.oml:2:0) cannot close this file !\n");
  file.fails = false;
  EXPECT_EQ(file.readOMLFile("t.oml", &grammar_, nullptr, -1, 0, 0, 0), ZV_FILE_OK);
}

TEST_F(OmlTokens, ReadThatFailsEndsTheFileForGood) {
  struct Failing : ZVOMLFileProbe {
    ZVFileCodeEnum readString(ZVStringHandle& text) override {
      return --callsToFault == 0 ? ZV_FILE_READ_ERROR : ZVOMLFileProbe::readString(text);
    }
    int callsToFault = 0;
  } file;
  writeFile("t.oml", "title: \"a\"\ntitle: \"b\"\nscale: 1.5");
  const char* const trees[] = {"", "TITLE=\"a\"@1:5", "TITLE=\"a\"@1:5 TITLE=\"b\"@2:5"};
  for (int calls = 1; calls <= 3; ++calls) {
    file.callsToFault = calls;
    file.parseTree("t.oml", grammar_, [&](const ZVOMLSyntaxObject* root) {
      ASSERT_NE(root, nullptr);
      EXPECT_EQ(file.print(root), std::string("$TOPLEVEL$@-1:0{") + trees[calls - 1] + '}');
    });
    file.callsToFault = calls;
    EXPECT_EQ(file.readOMLFile("t.oml", &grammar_, nullptr, -1, 0, 0, 0), ZV_FILE_READ_ERROR);
    EXPECT_EQ(file.numberOfErrors(), 0);
  }
}

// ---- Values

TEST(BinValue, OwnsItsBytes) {
  auto bytesOf = [](const ZVOMLBinValue& value) {
    return std::string(value.pByteSequence(), static_cast<size_t>(value.length()));
  };
  ZVOMLBinValue value(3, "abc");
  ZVOMLBinValue copy(value);
  value.concat(&copy);
  value.concat(&value);
  value.concat(nullptr);
  EXPECT_EQ(bytesOf(value), "abcabcabcabc");
  value.length(2);
  EXPECT_EQ(bytesOf(value), "ab");
  value.pByteSequence("xyz");
  copy = value;
  std::unique_ptr<ZVOMLBinValue> clone(copy.cloneAttributes());
  value.fill(0, "abc");
  EXPECT_EQ(value.pByteSequence(), nullptr);
  EXPECT_EQ(bytesOf(*clone), "xy");
  copy = value;
  EXPECT_EQ(copy.length(), 0);
  value.concat(clone.get());
  EXPECT_EQ(value.length(), 2);

  ZVOMLToken token(ZV_OML_BINVALUE, new ZVOMLBinValue(2, "ab"), 1, 2);
  ZVOMLToken other(token);
  EXPECT_NE(other.pBinValue(), token.pBinValue());
  other = ZVOMLToken(ZV_OML_REAL, 1.5, 3, 4);
  other = *&other;
  EXPECT_EQ(other.doubleValue(), 1.5);
  EXPECT_EQ(other.line() * 10 + other.position(), 34);
  other = token;
  EXPECT_EQ(bytesOf(*other.pBinValue()), "ab");
  EXPECT_EQ(ZVOMLToken().tag(), ZV_OML_BAD);
}

}  // namespace
