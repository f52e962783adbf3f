#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/support/omlprobe.h"
#include "tests/support/omlsample.h"
#include "utils/zvomldef.h"
#include "utils/zvomlsfi.h"
#include "utils/zvomlsoi.h"

namespace {

struct Case {
  const char* text;
  const char* expected;
};

// ---- Messages, in the short form of the probe

// Read as the content of a graph, from the second line of f.oml on.
const Case BODY_ERRORS[] = {
    // Tokens that are none
    {"@ width 5", "20 2:1"},
    {"width: @", "20 2:8"},
    {"width @ 5", "20 2:7"},
    {"width @", "20 2:7\n24 3:1 4"},
    // Values of another kind
    {"width: 1.5", "24 2:10 4"},
    {"width: foo", "22 2:10 foo"},
    {"scale: 5", "24 2:8 6"},
    {"label: 5", "24 2:8 5"},
    {"address: 1.5", "24 2:12 7"},
    {"data: 5", "24 2:7 8"},
    {"visible: 1", "24 2:10 9"},
    {"visible: left", "22 2:13 LEFT\n24 2:13 9"},
    {"side: up", "25 2:8"},
    {"source: 1.5", "26 2:11"},
    {"section: 1.5 field: left", "24 2:12 5\n22 2:24 LEFT"},
    // Ids
    {"node: 1,2 { x: 1 }", "26 2:9"},
    {"node: $1", "26 2:8"},
    {"node: 5 { id: 6 }", "30 2:15"},
    {"node: 5 { name: a,b }", "26 2:19\n30 2:19"},
    {"node: defaults { id: 7 }", "30 2:22"},
    // Sections
    {"horizontal spacing: 3", "35 2:10 HORIZONTAL GRAPH\n47 2:18 SPACING HORIZONTAL GRAPH"},
    {"layout extra spacing: 3", "36 2:12 EXTRA LAYOUT GRAPH"},
    {"_ extra { }", "37 2:7 EXTRA GRAPH"},
    {"_ _ _ _ _ { layout { } }", "35 2:18 LAYOUT GRAPH"},
    // What may not stand where it does
    {"node 1 { width: 3 }", "46 2:14 WIDTH NODE"},
    {"layout bends: 3 layout gap: 3", "47 2:26 GAP LAYOUT GRAPH"},
    {"layout _ gap: 3", "47 2:12 GAP _ GRAPH"},
    {"graph 2 { }", "38 2:5 GRAPH GRAPH"},
    {"layout edge 5", "39 2:11 EDGE LAYOUT GRAPH"},
    {"_ node 5", "39 2:6 NODE _ GRAPH"},
    {"node defaults { edge 2 }", "40 2:20 EDGE NODE"},
    {"node defaults { layout node 2 { } }", "41 2:27 NODE LAYOUT NODE"},
    {"graph defaults { }", "42 2:5 GRAPH GRAPH"},
    {"extra node defaults", "43 2:10 NODE EXTRA GRAPH"},
    {"node { id: defaults node { name = defaults } }", "44 2:24 NODE NODE"},
    {"node defaults { layout node defaults }", "45 2:27 NODE LAYOUT NODE"},
    // Values without a field
    {"point 3 { 10 20 30 }", "23 2:18"},
    {"point 3 { 10 node 1.5 }", "26 2:21\n38 2:17 NODE POINT"},
    {"_ 5", "23 2:3"},
    {"layout { 1 2 ; ; }", "23 2:16"},
    {"comment: \"unchecked\" width: foo 5", "23 2:33"},
    {"layout { comment: \"unchecked\" a 1 } width 1.5", "24 2:45 4"},
    // Two names in a row
    {"width label: \"a\"", "48 2:5 WIDTH LABEL 2:11"},
    {"node node 5", "48 2:4 NODE NODE 2:9"},
    {"layout { bends { 1\nspacing 3 } }", "48 2:14 BENDS SPACING 3:7"},
    // Names declared in the file, whatever number they have
    {"field: \"old\" layout { old { 1 2 } }", "47 2:25 OLD LAYOUT GRAPH\n47 2:25 OLD LAYOUT GRAPH"},
    {"field: \"old\" layout old { \"none.oml\" }", "47 2:23 OLD LAYOUT GRAPH"},
    {"field: \"old\" old width: 1.5", "48 2:16 OLD WIDTH 2:22\n24 2:27 4"},
    // Files
    {"include: \"none.oml\"", "13 2:19 none.oml"},
};

// Read as they are.
const Case FILE_ERRORS[] = {
    {"version: 1 }", "16 1:12\n23 1:12"},
    {"version 0x00", "24 1:12 4"},
    {"version", "20 -"},
    {"version 1 :", "23 -"},
    {"graph", "26 -"},
    {"graph: 1 {", "15 1:10\n15 1:10\n15 1:10"},
    {"id: defaults graph 1", "40 1:18 GRAPH $TOPLEVEL$"},
    {"graph 1 { width", "15 1:9\n20 -\n15 1:9\n15 1:9\n15 1:9\n15 1:9"},
    {"include: \"name.oml\" 5", "46 name.oml:2:5 SCALE $TOPLEVEL$"},
    {"include: \"value.oml\" version: 1.5", "24 value.oml:1:12 4\n24 1:33 4"},
};

TEST(OMLParser, ComplainsOnceForEachFaultAtItsPlace) {
  writeFile("name.oml", "version: 1\nscale");
  writeFile("value.oml", "version 0x00");
  ZVOMLFileProbe file;
  auto check = [&](const Case& one, const std::string& text) {
    SCOPED_TRACE(one.text);
    writeFile("f.oml", text);
    std::string expected = fullMessages(one.expected);
    EXPECT_EQ(file.readOMLFile("f.oml", &sampleGrammar(), nullptr, -1, 0, 0, 0),
              expected.find("#013") == std::string::npos ? ZV_FILE_READ_ERROR : ZV_FILE_OPEN_ERROR);
    EXPECT_EQ(file.messages(), expected);
    EXPECT_EQ(file.numberOfErrors(), std::count(expected.begin(), expected.end(), '\n'));
  };
  for (const Case& one : BODY_ERRORS) check(one, std::string("graph 1 {\n") + one.text + "\n}\n");
  for (const Case& one : FILE_ERRORS) check(one, one.text);
}

// ---- Trees

// The content of the file, and of the root.
const Case TREES[] = {
    {"", ""},
    {"version: 3 version = 4; version 5", "VERSION=3@1:7 VERSION=4@1:18 VERSION=5@1:31"},
    {"7", "VERSION=7@1:1"},
    {"graph: { node: 12 { } node 13 node n1 { } node { } }",
     "GRAPH@1:5{NODE:12@1:13{} NODE:13@1:26{} NODE:n1@1:34{} NODE@1:46{}}"},
    {"graph { id: 5 node { name = +7 } }", "GRAPH:5@1:5{NODE:7@1:18{}}"},
    // A bracket is skipped outside sections, and continues the section inside one.
    {"graph { width { 1 2 } { 5 @ } layout { { spacing 1 } bends { 1 2 } bends: {} } }",
     "GRAPH@1:5{SPACING/1[LAYOUT]=1@1:48 BENDS/1[LAYOUT]=1@1:58 BENDS/1[LAYOUT]=2@1:58}"},
    {"graph { skip { @ \" [ ] } section: \"own\" own { 5 } own width 3 layout own { 6 } }",
     "GRAPH@1:5{WIDTH/0[OWN]=3@1:59}"},
    {"graph { _ spacing 1 layout _ spacing = 2 _ horizontal spacing 3 _ deep note \"a\" layout spacing _ 4 }",
     "GRAPH@1:5{SPACING/f[_]?=1@1:17 SPACING/f1[_]?=2@1:36 SPACING/1f[HORIZONTAL]?=3@1:61 "
     "NOTE/11f[DEEP]?=\"a\"@1:75 SPACING/f1[_]?=4@1:94}"},
    {"graph { source $ source $,1,a source 3 source a|b }",
     "GRAPH@1:5{SOURCE=10$@1:14 SOURCE=10$,1,a@1:23 SOURCE=103@1:36 SOURCE=10a,b@1:45}"},
    // Declared fields drop the rest of their line, and act as nothing.
    {"graph { field: \"old\" old: 1 } @ {\nold = \"none.oml\"\n old { } width 3 }",
     "GRAPH@1:5{WIDTH=3@3:14}"},
    {"graph { comment: \"Unchecked\" comment: \"unchecked\" layout: left foo 1.5 comment \"c\" }",
     "GRAPH@1:5{LAYOUT?!=9LEFT@1:56 FOO?!=1.5@1:66}"},
    {"include: \"part.oml\" 2 version 4", "VERSION=1@1:7 VERSION=2@2:9 VERSION=4@1:29"},
};

void expectTree(const char* path, const std::string& text, const std::string& expected) {
  ZVOMLFileProbe file;
  writeFile(path, text);
  file.parseTree(path, sampleGrammar(), [&](const ZVOMLSyntaxObject* root) {
    EXPECT_EQ(file.messages(), "") << text;
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(file.print(root), "$TOPLEVEL$@-1:0{" + expected + '}') << text;
  });
}

TEST(OMLParser, BuildsTheTreeThatTheFileDescribes) {
  writeFile("part.oml", "version 1\n  version");
  for (const Case& one : TREES) expectTree("tree.oml", one.text, one.expected);
}

// A file made up at random together with the tree that it stands for.
class RandomDocument {
 public:
  explicit RandomDocument(unsigned seed) : random_(seed) {
    word("graph");
    tree = object("GRAPH", "", "", GRAPH, 0);
  }

  std::string text;
  std::string tree;

 private:
  using Field = std::string;  // the letter of its type and its name
  static char typeOf(const Field& field) { return field[0]; }
  static std::string nameOf(const Field& field) { return field.substr(2); }
  struct Section {
    const char* name;
    uint32_t path;
    std::vector<Field> fields;
    bool holdsNodes;
  };
  using Type = std::vector<Section>;  // the first one is the type itself
  struct Content {
    std::string fields;
    std::string objects;
    std::string all() const {
      return (fields + objects).substr(0, std::max<size_t>(fields.size() + objects.size(), 1) - 1);
    }
  };

  static const Type GRAPH;
  static const Type NODE;

  size_t below(size_t limit) { return random_() % limit; }
  template <class List>
  const auto& oneOf(const List& list) {
    return list[below(list.size())];
  }

  void put(const std::string& piece) {
    for (char c : piece) {
      if (c == '\n') ++line_;
      column_ = c == '\n' ? 0 : column_ + 1;
    }
    text += piece;
  }
  // A token, with white space and comments before it. Gives its place.
  std::string word(const std::string& token) {
    static const std::vector<std::string> SPACES{" ",   "\t ",      "\n",     " /* } \" */ ",
                                                 "/*/", " # { x\n", "//\n\n "};
    put(oneOf(SPACES));
    put(token);
    return '@' + std::to_string(line_) + ':' + std::to_string(column_);
  }
  std::string anyCase(std::string name) {
    for (char& c : name) {
      if (c >= 'A' && c <= 'Z' && below(3)) c = static_cast<char>(c + 32);
    }
    return word(name);
  }
  void assign() { put(oneOf(std::vector<std::string>{"", ":", " ="})); }

  // Writes a value. Gives its printed form, with its place apart.
  std::string value(char type, std::string* place = nullptr) {
    std::string number = std::to_string(below(1000));
    std::pair<std::string, std::string> form;
    switch (type) {
      case 'I':
        form = {number, number};
        break;
      case 'R':
        form = {number + ".5", number + ".5"};
        break;
      case 'S':
        form = {'"' + number + "}\\\"\"", '"' + number + "}\"\""};
        break;
      case 'O':
        form = oneOf(std::vector<decltype(form)>{{'$' + number + "|a", "10$," + number + ",a"},
                                                 {number, "10" + number},
                                                 {'n' + number, "10n" + number}});
        break;
      default:
        static const std::vector<decltype(form)> FORMS[] = {{{"TRUE", "6TRUE"}, {"false", "6FALSE"}},
                                                            {{"Left", "6LEFT"}, {"right", "6RIGHT"}},
                                                            {{"1.2.3.4", "ip01020304"}},
                                                            {{"0x00fF", "0x00ff"}}};
        form = oneOf(FORMS[std::string("BEPX").find(type)]);
    }
    std::string end = word(form.first);
    if (place) *place = end;
    return form.second;
  }

  static bool isBelow(uint32_t path, uint32_t from) {
    uint32_t mask = 0;
    while ((from & ~mask) != 0) mask = mask << 4 | 0xf;
    return path != from && (path & mask) == from;
  }
  // The sections that may be named in another one, itself included.
  static std::vector<const Section*> reach(const Type& type, const Section& from) {
    std::vector<const Section*> result{&from};
    for (const Section& one : type) {
      if (isBelow(one.path, from.path)) result.push_back(&one);
    }
    return result;
  }
  // Writes the names that lead from one section to another: all of them, or the last if it is unique.
  void sectionNames(const Type& type, const Section& from, const Section& to) {
    std::vector<const Section*> way;
    int namesakes = 0;
    for (const Section* one : reach(type, from)) {
      if (one == &from) continue;
      if (one == &to || isBelow(to.path, one->path)) way.push_back(one);
      if (std::string(one->name) == to.name) ++namesakes;
    }
    if (way.size() > 1 && namesakes == 1 && below(2)) way.erase(way.begin(), way.end() - 1);
    for (const Section* one : way) anyCase(one->name);
  }
  static std::string printPlace(const Section& section) {
    char number[12];
    std::snprintf(number, sizeof number, "/%x[", static_cast<unsigned>(section.path));
    return section.path == 0 ? "" : std::string(number) + section.name + ']';
  }

  // The rest of an object, behind its type name.
  std::string object(const std::string& name, const std::string& id, const std::string& section,
                     const Type& type, unsigned depth) {
    std::string head = name + (id.empty() ? "" : ":") + id + section + '@' + std::to_string(line_) + ':' +
                       std::to_string(column_) + '{';
    assign();
    if (!id.empty()) word(id);
    if (!id.empty() && depth > 0 && below(4) == 0) return head + '}';
    put("{");
    Content content;
    attributes(content, type, type[0], id, depth);
    word("}");
    return head + content.all() + '}';
  }

  // Attributes in a section of an object, up to the end of their list.
  void attributes(Content& content, const Type& type, const Section& section, const std::string& id,
                  unsigned depth) {
    size_t count = depth > 3 ? 0 : below(depth == 0 ? 30 : 8);
    bool afterBytes = false;
    for (size_t number = 1; number <= count; ++number) {
      size_t kind = below(16);
      bool positional = kind < 3 && number <= section.fields.size() && !afterBytes;
      afterBytes = false;
      if (positional) {
        const Field& field = section.fields[number - 1];
        std::string place;
        std::string printed = value(typeOf(field), &place);
        content.fields.append(nameOf(field) + printPlace(section)).append('=' + printed).append(place + ' ');
        afterBytes = typeOf(field) == 'X';
      } else if (kind < 8) {
        afterBytes = namedField(content, type, section);
      } else if (kind < 10) {
        const Section& target = *oneOf(reach(type, section));
        sectionNames(type, section, target);
        put("=");  // without it and a name this could be the body of the object before it
        word(target.path == 0 ? "{ @ [ 5 ] }" : "{");
        if (target.path == 0) continue;
        attributes(content, type, target, id, depth + 1);
        word("}");
      } else if (kind < 13) {
        nodes(content, type, section, depth);
      } else if (kind == 13 && section.path == 0 && !id.empty()) {
        word("id: " + id);
      } else if (kind == 14) {
        word(number % 2 ? "skip { @ [ 5 width ] }" : "comment \"c\" ");
      } else if (kind == 15 && below(8) == 0) {
        word("comment = \"unchecked\"");
        return unchecked(content, section);
      } else {
        word(below(2) ? "field \"old\"; old 5 } @ \"\n" : "SECTION \"own\" own { @ \" } ");
        ++number;  // two attributes
      }
      if (below(4) == 0) word(";");
    }
  }

  // Gives whether the value was a byte sequence, which another one must not follow.
  bool namedField(Content& content, const Type& type, const Section& section) {
    const Section& target = *oneOf(reach(type, section));
    const Field& field = oneOf(target.fields);
    bool nameFirst = below(4) == 0;
    std::string place = nameFirst ? anyCase(nameOf(field)) : "";
    sectionNames(type, section, target);
    if (!nameFirst) place = anyCase(nameOf(field));
    assign();
    bool list = target.path != 0 && below(3) == 0;
    if (list) put("{");
    for (size_t i = list ? below(4) : 1; i > 0; --i) {
      content.fields += nameOf(field) + printPlace(target) + '=' + value(typeOf(field)) + place + ' ';
    }
    if (list) word("}");
    return typeOf(field) == 'X';
  }

  void nodes(Content& content, const Type& type, const Section& section, unsigned depth) {
    const Section& target = *oneOf(reach(type, section));
    if (!target.holdsNodes) return void(word("comment \"none\""));
    sectionNames(type, section, target);
    std::string place = anyCase("NODE");
    std::string id = below(4) ? std::to_string(below(100)) : "";
    if (below(4) != 0) {
      content.objects += object("NODE", id, printPlace(target), NODE, depth + 1) + ' ';
      return;
    }
    assign();
    word("defaults {");
    Content group;
    for (size_t i = below(4); i > 0; --i) namedField(group, NODE, NODE[0]);
    for (size_t i = below(4); i > 0; --i) {
      word("node");
      group.objects += object("NODE", id, printPlace(target), NODE, depth + 1) + ' ';
    }
    word("}");
    content.objects += "NODE:defaults" + printPlace(target) + place + '{' + group.all() + "} ";
  }

  void unchecked(Content& content, const Section& section) {
    static const std::vector<std::string> NAMES{"WIDTH", "NODE", "LAYOUT", "SKIP", "LEFT", "NEW", "_"};
    for (size_t i = below(5); i > 0; --i) {
      const std::string& name = oneOf(NAMES);
      std::string place = anyCase(name);
      assign();
      content.fields.append(name + printPlace(section)).append("?!=" + value("IRS"[below(3)]) + place + ' ');
    }
  }

  std::mt19937 random_;
  int line_ = 1;
  int column_ = 0;
};

const RandomDocument::Type RandomDocument::GRAPH = {
    {"",
     0,
     {"I WIDTH", "R SCALE", "S LABEL", "B VISIBLE", "E SIDE", "O SOURCE", "P ADDRESS", "X DATA"},
     true},
    {"LAYOUT", 0x1, {"I SPACING", "I BENDS"}, true},
    {"HORIZONTAL", 0x11, {"I SPACING", "R GAP"}, false},
    {"DEEP", 0x111, {"I SPACING", "S NOTE"}, false},
    {"VERTICAL", 0x21, {"I SPACING", "I GAP"}, false},
    {"EXTRA", 0x2, {"I SPACING"}, false},
    {"HORIZONTAL", 0x12, {"I ONLY"}, false}};
const RandomDocument::Type RandomDocument::NODE = {{"", 0, {"I X", "I Y", "O PEER"}, true},
                                                   {"LAYOUT", 0x1, {"I SPACING"}, true}};

TEST(OMLParser, BuildsTheTreesOfRandomDocuments) {
  for (unsigned seed = 0; seed < 1500 && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    RandomDocument document(seed);
    expectTree("random.oml", document.text, document.tree);
  }
}

// ---- Nesting and length

std::string repeat(const std::string& piece, int times) {
  std::string text;
  for (int i = 0; i < times; ++i) text += piece;
  return text;
}

TEST(OMLParser, StopsAtTheBracketThatNestsTooDeep) {
  ZVOMLFileProbe file;
  file.maxNumberOfErrors(1 << 20);
  auto read = [&](const std::string& text) {
    writeFile("deep.oml", text);
    file.readOMLFile("deep.oml", &sampleGrammar(), nullptr, -1, 0, 0, 0);
    std::string messages = file.messages();
    return messages.substr(std::min(messages.find("Fatal"), messages.size()));
  };
  const char* expected = "Fatal error #012 (deep.oml:1001:6) memory exhausted !\n";
  EXPECT_EQ(read("graph{\n" + repeat("node {\n", 100000)), expected);
  EXPECT_EQ(read("graph{\n" + repeat("node:{\n", 1000) + repeat("}", 1001)), expected);
  EXPECT_EQ(read("graph{ layout{\n\n" + repeat("     {\n", 100000)), expected);
  // Here the reader never sees more than three open brackets: the values take the closing ones away.
  EXPECT_EQ(read("graph{\n" + repeat("node {x}\n", 100000)), expected);
  // At the limit, and beyond it in what is skipped.
  EXPECT_EQ(read("graph{" + repeat("node{", 999) + "skip{" + repeat("{", 2000) + repeat("}", 3001)), "");
  EXPECT_EQ(file.numberOfErrors(), 0);
}

TEST(OMLParser, ReadsAMillionSiblingsInALine) {
  const int count = 1000000;
  writeFile("long.oml",
            "graph{" + repeat("node{x 7}", count) + "layout{bends{" + repeat("1 ", count) + "}}}");
  ZVOMLFileProbe file;
  file.parseTree("long.oml", sampleGrammar(), [&](const ZVOMLSyntaxObject* root) {
    ASSERT_NE(root, nullptr) << file.messages();
    const ZVOMLSyntaxObject* graph = root->pObjectList()->pObject;
    int objects = 0;
    for (ZVOMLSyntaxObjectIter iter(graph); iter; iter++) objects += iter.pObject()->pFieldList() != nullptr;
    EXPECT_EQ(objects, count);
    int fields = 0;
    for (ZVOMLSyntaxFieldIter iter(graph); iter; iter++) fields += iter.pField()->intValue();
    EXPECT_EQ(fields, count);
  });
}

// ---- Sections and their paths

int depthOf(uint32_t path) {
  int depth = 0;
  while (depth < 8 && path >> 4 * depth != 0) ++depth;
  return depth;
}

// Whether path has the digits of the pattern, where 15 stands for any.
bool matches(uint32_t path, uint32_t pattern) {
  bool equal = depthOf(path) == depthOf(pattern);
  for (; pattern != 0; path >>= 4, pattern >>= 4) {
    equal = equal && ((pattern & 15) == 15 || (pattern & 15) == (path & 15));
  }
  return equal;
}

// All sections below, depth first with the newest sibling first; checks their numbers.
template <class Definition>
std::vector<ZVOMLDefSection*> sectionsBelow(const Definition& parent, uint32_t path) {
  std::vector<ZVOMLDefSection*> result;
  uint32_t count = 0;
  for (ZVOMLDefSection* section = parent.pSectionList(); section; section = section->pNext()) ++count;
  for (ZVOMLDefSection* section = parent.pSectionList(); section; section = section->pNext()) {
    EXPECT_EQ(section->sectionPathIndex(), path | count-- << 4 * depthOf(path));
    result.push_back(section);
    const std::vector<ZVOMLDefSection*> below = sectionsBelow(*section, section->sectionPathIndex());
    result.insert(result.end(), below.begin(), below.end());
  }
  return result;
}

// An object type with random sections that have up to three fields each.
struct RandomSections {
  std::unique_ptr<ZVOMLStatic> grammar;
  ZVOMLDefObjType* type;
  std::vector<ZVOMLDefSection*> sections;

  RandomSections(std::mt19937& random, int deepest) {
    static constexpr const char* TYPES[] = {"type", "other", nullptr};
    static constexpr const char* NAMES[] = {"s0", "s1", "s2", "s3", nullptr};
    static constexpr ZVOMLStaticVEStruct VALUES[] = {{"a", 1}, {"b", 2}, {"c", 3}, {nullptr, 0}};
    std::string text = "O type; {; F f0 I; F f1 I; F f2 I;";
    text += rows(random, deepest, deepest, random() % 3) + "};";
    grammar = compileRows(TYPES, NAMES, VALUES, text, 8);
    type = ZVOMLFileProbe().definition(*grammar, 1);
    sections = sectionsBelow(*type, 0);
  }

  // So many levels of sections. Now and then the first field is another one than usual.
  static std::string rows(std::mt19937& random, int levels, int deepest, size_t usual) {
    static constexpr const char* FIRST[][4] = {
        {"F f0 I;", "F f0 B;", "F f0 R;", "F f0 I R;"},
        {"R f0 type;", "R f0 other;", "R f0 _;", "F f0 B;"},
        {"E f0 [ a b c ];", "E f0 [ a b ];", "E f0 [ a c b ];", "F f0 B;"}};
    std::string text;
    std::vector<int> names{0, 1, 2, 3};
    std::shuffle(names.begin(), names.end(), random);
    size_t count = levels == 0 ? 0 : deepest > 4 ? 1 + random() % 2 : random() % 4;
    for (size_t i = 0; i < count; ++i) {
      text += "S s" + std::to_string(names[i]) + "; {;";
      for (const char* field : {FIRST[usual][random() % 12 ? 0 : random() % 4], "F f1 I;", "F f2 I;"}) {
        if (random() % 2) text += field;
      }
      text += rows(random, levels - 1, deepest, usual) + "};";
    }
    return text;
  }

  // The path of a section, some digits turned into wildcards; 0 if there are no sections.
  uint32_t randomPath(std::mt19937& random) const {
    uint32_t path = sections.empty() ? 0 : sections[random() % sections.size()]->sectionPathIndex();
    const int depth = depthOf(path);
    for (int level = 0; level < depth; ++level) {
      if (random() % 3 == 0) path |= uint32_t{15} << (4 * level);
    }
    return path;
  }
};

// The path of the only section of that name, else 0.
uint32_t uniquePath(const std::vector<ZVOMLDefSection*>& sections, int32_t id) {
  std::vector<uint32_t> paths;
  for (const ZVOMLDefSection* section : sections) {
    if (section->sectionIDIndex() == id) paths.push_back(section->sectionPathIndex());
  }
  return paths.size() == 1 ? paths.front() : 0;
}

// What the definitions of one field must agree in.
std::string signature(const ZVOMLDefField& field) {
  std::string text = std::to_string(field.fieldType());
  for (const ZVOMLDefIndexList* cell = field.pValueIDIndexList(); cell; cell = cell->next) {
    text.append(" ").append(std::to_string(cell->index));
  }
  return text;
}

TEST(OMLSectionPaths, FindWhatAPlainEnumerationFinds) {
  size_t hits = 0;
  size_t disagreements = 0;
  for (unsigned seed = 1; seed <= 300 && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const RandomSections model(random, seed % 4 == 0 ? 8 : 4);
    const ZVOMLDefObjType& type = *model.type;
    for (int i = 0; i < 40; ++i) {
      uint32_t path = model.randomPath(random);
      if (random() % 8 == 0) path ^= uint32_t{1} << random() % 32;
      if (depthOf(path) < 8 && random() % 8 == 0) path |= uint32_t{15} << 4 * depthOf(path);
      const uint32_t mask = ZVOMLDefObjType::wildCardMask(path);
      std::vector<ZVOMLDefSection*> expected;
      std::set<std::string> signatures;
      ZVOMLDefField* field = path == 0 ? type.findField(7) : nullptr;
      for (ZVOMLDefSection* section : model.sections) {
        if (!matches(section->sectionPathIndex(), path)) continue;
        expected.push_back(section);
        ZVOMLDefField* here = section->findField(7);
        if (here) signatures.insert(signature(*here));
        if (!field) field = here;
      }
      std::vector<ZVOMLDefSection*> found;
      for (auto* s = type.findFirstSectionPath(path, mask); s; s = type.findNextSectionPath(path, mask, s)) {
        found.push_back(s);
      }
      EXPECT_EQ(found, expected) << std::hex << path;
      EXPECT_EQ(type.findFieldInAllSections(path, 7), signatures.size() < 2 ? field : nullptr) << path;
      const bool exact = mask == 0xffffffffU && !expected.empty();
      EXPECT_EQ(type.findSectionPath(path), exact ? expected.front() : nullptr) << path;
      hits += expected.size();
      disagreements += signatures.size() > 1;
    }
    for (int32_t id = 1; id < 7; ++id) {
      EXPECT_EQ(type.findUniqueSection(id), uniquePath(model.sections, id)) << id;
      for (const ZVOMLDefSection* section : model.sections) {
        std::vector<ZVOMLDefSection*> children;
        for (auto* child = section->pSectionList(); child; child = child->pNext()) children.push_back(child);
        EXPECT_EQ(section->findSection(id), uniquePath(children, id)) << id;
        EXPECT_EQ(section->findUniqueSection(id),
                  uniquePath(sectionsBelow(*section, section->sectionPathIndex()), id));
      }
    }
  }
  EXPECT_GT(hits, 10000U);
  EXPECT_GT(disagreements, 100U);
}

TEST(OMLParser, ExtendsSectionPathsAsFarAsAllMatchesAgree) {
  ZVOMLFileProbe file;
  for (unsigned seed = 0; seed < 200 && !testing::Test::HasFailure(); ++seed) {
    std::mt19937 random(seed);
    RandomSections model(random, seed % 4 == 0 ? 8 : 4);
    for (int query = 0; query < 50; ++query) {
      const uint32_t path = random() % 8 == 0 ? 0 : model.randomPath(random);
      const int depth = depthOf(path);
      const auto inPath = static_cast<uint32_t>((uint64_t{1} << 4 * depth) - 1);
      const auto name = static_cast<int32_t>(1 + random() % 5);
      const std::string nameText = name == 1 ? std::string("_") : std::string("S") + std::to_string(name - 2);

      std::vector<const ZVOMLDefSection*> places;  // null: the type itself
      if (path == 0) places.push_back(nullptr);
      for (const auto* section : model.sections) {
        if (path != 0 && matches(section->sectionPathIndex(), path)) places.push_back(section);
      }
      std::set<uint32_t> direct;
      std::set<uint32_t> unique;
      for (const auto* place : places) {
        std::vector<uint32_t> found;
        for (const auto* section : model.sections) {
          const uint32_t below = section->sectionPathIndex();
          if (section->sectionIDIndex() != name || depthOf(below) <= depth) continue;
          if (place && (below & inPath) != place->sectionPathIndex()) continue;
          found.push_back(below & ~inPath);
          if (depthOf(below) == depth + 1) direct.insert(found.back());
        }
        if (found.size() == 1) unique.insert(found[0]);
      }
      uint32_t expected = path;
      std::string message;
      if (name == 1 && depth < 8) {
        expected |= uint32_t{15} << (4 * depth);
      } else if (direct.size() == 1) {
        expected |= *direct.begin();
      } else if (unique.size() == 1) {
        expected |= *unique.begin();
      } else if (path == 0) {
        message = "35 1:1 " + nameText + " TYPE";
      } else if (places.size() == 1) {
        message = "36 1:1 " + nameText + " S" + std::to_string(places[0]->sectionIDIndex() - 2) + " TYPE";
      } else {
        message = "37 1:1 " + nameText + " TYPE";
      }
      std::string given;
      EXPECT_EQ(file.sectionPath(*model.grammar, 1, path, nameText.c_str(), given), expected) << seed;
      EXPECT_EQ(given, fullMessages(message.c_str())) << seed;
    }
  }
}

// One turn of the field iterator.
struct Turn {
  const ZVOMLSyntaxField* field;
  const ZVOMLDefField* definition;
  int32_t section;
  uint32_t path;
  bool operator==(const Turn&) const = default;
};

Turn turnOf(const ZVOMLSyntaxField* field) {
  return {field, field->pDefField(), field->sectionIDIndex(), field->sectionPathIndex()};
}

// An object with fields of every kind and up to two lists of defaults, and the turns that its iteration has
// to take.
struct RandomFields {
  std::mt19937 random;
  RandomSections model;
  ZVOMLDefObjType* type = model.type;
  ZVOMLSyntaxObject object{nullptr, 0, 0, 0, 1, -1, -1, 0, type};
  ZVOMLSyntaxObject defaults[2] = {{nullptr, 0, 0, 0, 1, 0, -1, 0, type},
                                   {nullptr, 0, 0, 0, 1, 0, -1, 0, type}};
  std::vector<std::pair<ZVOMLSyntaxField*, uint32_t>> wildcards;
  std::vector<Turn> expected;

  explicit RandomFields(unsigned seed) : random(seed), model(random, 4) {
    for (ZVOMLSyntaxObject* owner : {&defaults[0], &defaults[1], &object}) {
      for (size_t i = random() % 6; i > 0; --i) owner->addField(newField());
      for (auto* cell = owner->pFieldList(); cell; cell = cell->pNext) addTurns(cell->pField);
    }
    object.addDefaultList(defaults[1].pFieldList());
    object.addDefaultList(defaults[0].pFieldList());
  }

  ZVOMLSyntaxField* newField() {
    auto name = static_cast<int32_t>(7 + random() % 3);
    uint32_t path = model.randomPath(random);
    auto make = [&](int32_t section, uint32_t place, ZVOMLDefField* definition, int unchecked) {
      return new ZVOMLSyntaxField(nullptr, 0, 0, 0, name, section, place, nullptr, definition, unchecked);
    };
    size_t kind = random() % 4;
    if (kind == 0 || path == 0) return make(-1, 0, type->findField(name), 0);
    if (kind == 1) return make(9, path, nullptr, 1);
    wildcards.emplace_back(make(1, path, nullptr, 0), path);
    return wildcards.back().first;
  }

  void addTurns(const ZVOMLSyntaxField* field) {
    if (field->pDefField() || field->inUncheckedSection()) return expected.push_back(turnOf(field));
    for (const auto* section : model.sections) {
      const ZVOMLDefField* definition = section->findField(field->fieldIDIndex());
      const uint32_t path = section->sectionPathIndex();
      if (!definition || !matches(path, field->sectionPathIndex())) continue;
      expected.push_back({field, definition, section->sectionIDIndex(), path});
    }
  }
};

TEST(OMLFieldIterator, GivesEachFieldOnceForEverySectionThatItMeans) {
  for (unsigned seed = 0; seed < 2000 && !testing::Test::HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    RandomFields fields(seed);
    for (int round = 0; round < 2; ++round) {
      std::vector<Turn> turns;
      ZVOMLSyntaxFieldIter iter(&fields.object);
      for (; iter; ++iter) turns.push_back(turnOf(iter.pField()));
      EXPECT_TRUE(turns == fields.expected);
      EXPECT_EQ(iter.pField(), nullptr);
      for (const auto& [field, path] : fields.wildcards) {
        EXPECT_EQ(field->pDefField(), nullptr);
        EXPECT_EQ(field->sectionPathIndex(), path);
      }
    }
    // A search stops at the first turn that fits, and leaves the field bound to its section.
    std::mt19937 random(seed);
    const Turn wanted = fields.expected.empty() ? Turn{} : fields.expected[random() % fields.expected.size()];
    auto name = static_cast<int32_t>(7 + random() % 3);
    int32_t section = random() % 3 ? wanted.section : -1;
    bool byPath = random() % 2;
    auto turn = std::find_if(fields.expected.begin(), fields.expected.end(), [&](const Turn& one) {
      bool placed = byPath ? one.path == wanted.path : section == -1 || one.section == section;
      return placed && one.field->fieldIDIndex() == name;
    });
    const ZVOMLSyntaxField* found = byPath ? fields.object.searchUniqueField(name, wanted.path)
                                           : fields.object.searchField(name, section);
    ASSERT_EQ(found, turn == fields.expected.end() ? nullptr : turn->field);
    if (found) {
      EXPECT_TRUE(turnOf(found) == *turn);
    }
  }
}

// ---- Nodes

struct Counted : ZVOMLSyntaxObject {
  Counted() : ZVOMLSyntaxObject(nullptr, 0, 0, 0, 1, -1, -1, 0, nullptr) { ++alive; }
  ~Counted() override { --alive; }
  static inline int alive = 0;
};

TEST(OMLSyntaxObject, KeepsItsListsWholeThroughChangesAndMerges) {
  std::mt19937 random(5);
  ZVOMLSyntaxFieldList lists[3] = {ZVOMLSyntaxFieldList(nullptr), ZVOMLSyntaxFieldList(nullptr),
                                   ZVOMLSyntaxFieldList(nullptr)};
  for (int round = 0; round < 200; ++round) {
    // Two objects, and their sub-objects, fields and defaults as they should be.
    Counted objects[2];
    std::vector<const void*> expected[2][3];
    for (int step = 0; step < 30; ++step) {
      const size_t which = random() % 2;
      Counted& object = objects[which];
      auto& [children, fields, defaults] = expected[which];
      switch (random() % 7) {
        case 0:
        case 1:
          object.addObject(new Counted);
          children.push_back(object.pObjectListEnd()->pObject);
          break;
        case 2:
          object.addField(new ZVOMLSyntaxField(nullptr, 0, 0, 0, 1, -1, 0, nullptr, nullptr, 0));
          fields.push_back(object.pFieldListEnd()->pField);
          break;
        case 3:
          defaults.insert(defaults.begin(), &lists[random() % 3]);
          object.addDefaultList(static_cast<ZVOMLSyntaxFieldList*>(const_cast<void*>(defaults[0])));
          object.addDefaultList(nullptr);
          break;
        case 4:
        case 5: {
          ZVOMLSyntaxObjectList* previous = nullptr;
          size_t place = children.empty() ? 0 : random() % children.size();
          for (size_t i = 0; i < place; ++i) previous = previous ? previous->pNext : object.pObjectList();
          object.deleteObjectItem(previous);
          if (!children.empty()) children.erase(children.begin() + static_cast<std::ptrdiff_t>(place));
          break;
        }
        default:
          object.append(&objects[1 - which]);
          for (int kind = 0; kind < 3; ++kind) {
            auto& from = expected[1 - which][kind];
            expected[which][kind].insert(expected[which][kind].end(), from.begin(), from.end());
            from.clear();
          }
      }
      for (int i = 0; i < 2; ++i) {
        std::vector<const void*> found[3];
        for (ZVOMLSyntaxObjectIter iter(&objects[i]); iter; ++iter) {
          EXPECT_EQ(iter.pObject()->pOwnerObject(), &objects[i]);
          found[0].push_back(iter.pObject());
        }
        for (auto* cell = objects[i].pFieldList(); cell; cell = cell->pNext) found[1].push_back(cell->pField);
        for (auto* cell = objects[i].pDefaultList(); cell; cell = cell->pNext)
          found[2].push_back(cell->pFieldList);
        for (int kind = 0; kind < 3; ++kind) EXPECT_EQ(found[kind], expected[i][kind]);
      }
    }
    EXPECT_EQ(static_cast<size_t>(Counted::alive), 2 + expected[0][0].size() + expected[1][0].size());
  }
  EXPECT_EQ(Counted::alive, 0);
}

TEST(OMLSyntaxField, ShowsItsValueInEveryView) {
  writeFile("views.oml",
            "graph 1 { width 70000 scale 1.5 label \"text\" side right address 1.2.3.4 data 0x00ff source 2 "
            "layout _ spacing 9 }");
  ZVOMLFileProbe file;
  const ZVOMLSyntaxObject* graph = nullptr;
  file.parseTree("views.oml", sampleGrammar(), [&](const ZVOMLSyntaxObject* root) {
    ASSERT_NE(root, nullptr) << file.messages();
    graph = root->pObjectList()->pObject;
    auto field = [&](const char* name) { return graph->searchField(name, nullptr); };
    std::string types;
    for (const char* name : {"width", "scale", "label", "side", "data", "address"}) {
      types += std::to_string(field(name)->valueType());
    }
    EXPECT_EQ(types, "012346");
    EXPECT_EQ(field("WIDTH")->intValue(), 70000);
    EXPECT_EQ(field("width")->shortValue(), 4464);
    EXPECT_EQ(field("scale")->floatValue(), 1.5F);
    EXPECT_EQ(field("source")->objectTypeIndex(), -1);  // addresses come in the next phase
    EXPECT_STREQ(field("source")->objectTypeString(), "");
    EXPECT_EQ(field("source")->objectValue(), nullptr);
    for (const char* section : {"layout", "nowhere"})
      EXPECT_EQ(graph->searchField("spacing", section), nullptr);
    EXPECT_EQ(field("nothing"), nullptr);
    EXPECT_STREQ(graph->searchField("spacing", "horizontal")->sectionString(), "HORIZONTAL");
  });
  // After the run the numbers stay and the texts are gone.
  ASSERT_NE(graph, nullptr);
  EXPECT_STREQ(graph->nameString(), "");
  EXPECT_EQ(graph->object(), nullptr);
  EXPECT_EQ(graph->pFieldList()->pField->longValue(), 70000);
  EXPECT_STREQ(graph->searchField("label", nullptr)->stringValue(), "");

  ZVOMLSyntaxField empty(nullptr, 0, 0, 0, 1, -1, 0, nullptr, nullptr, 0);
  EXPECT_EQ(empty.valueType(), ZV_OML_VALUE_OTHER);
  EXPECT_EQ(empty.doubleValue() + empty.longValue() + empty.enumValue(), 0);
  EXPECT_STREQ(empty.stringValue(), "");
  EXPECT_EQ(empty.objectValue(), nullptr);
}

}  // namespace
