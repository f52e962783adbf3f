#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

#include "tests/support/omlprobe.h"
#include "tests/support/omlsample.h"

namespace {

// What becomes of a file: the tree, or none, and all messages.
std::string readFile(int binary, bool shortWay) {
  ZVOMLFileProbe file;
  file.plainFields(shortWay);
  std::string result = "none";
  file.parseTree(
      "plain.oml", sampleGrammar(),
      [&](const ZVOMLSyntaxObject* tree) {
        if (tree) result = file.print(tree);
      },
      binary);
  return result + '\n' + file.messages();
}

void expectSameBothWays(const std::string& content, int binary) {
  writeFile("plain.oml", content);
  ASSERT_EQ(readFile(binary, true), readFile(binary, false)) << content;
}

// Pieces in any order, with some bytes changed, so that every place sees every neighbour.
TEST(OmlPlainFields, TheShortWayReadsWhatTheLongWayReads) {
  const std::string text[] = {"width",
                              "WIDTH: ",
                              "spacing ",
                              "label=",
                              "visible: ",
                              "side ",
                              "source: ",
                              "x: ",
                              "y",
                              "note: ",
                              "scale: ",
                              "address ",
                              "data: ",
                              "\"a b\"",
                              "\"\\\"\"",
                              "\"\"",
                              "1",
                              "-20",
                              "007",
                              "-0",
                              "0x1f",
                              "1.5",
                              "1e3",
                              "1.2.3.4",
                              "n1",
                              "n1,2",
                              "$n1",
                              "true",
                              "false",
                              "left",
                              "up",
                              " ",
                              "\n",
                              "\t\r\n",
                              "; ",
                              " # c\n",
                              "/* c */",
                              " // c\n",
                              "{ ",
                              " }",
                              "layout ",
                              "_ ",
                              "node: 1 {",
                              "node: {",
                              "point {",
                              "}\n",
                              "include: \"more.oml\" ",
                              "comment: \"unchecked\" ",
                              "field: \"old\" ",
                              "old: 3 4\n",
                              "id: 3 ",
                              "skip {",
                              "section: \"width\" ",
                              "123456789",
                              "99999999999",
                              "a\"b"};
  using namespace std::string_literals;
  const std::string binary[] = {"f\x07i\x05"s,
                                "f\x08i\x05"s,
                                "f\x09R\0\0\0\1r\0"s,
                                "f\x0a\"ab\""s,
                                "f\x0a\"a\\\"\""s,
                                "f\x0b"
                                "e\x01"s,
                                "f\x0c"
                                "e\x02"s,
                                "f\x0dN12\""s,
                                "f\x0dN007\""s,
                                "f\x0d$,1\""s,
                                "f\x0di\x07"s,
                                "f\x08I\0\1\0\0"s,
                                "o\x01N1\"{"s,
                                "o\x02{"s,
                                "}"s,
                                ";"s,
                                ":"s,
                                "s\x02{"s,
                                "f\x02\"unchecked\""s,
                                "f\x04N5\""s,
                                "f\x08"s,
                                "i\x05"s,
                                "F\0\0\0\x08i\1"s,
                                "X"s,
                                "f\x0fN1\"f\x10N2\""s};
  writeFile("more.oml", "x: 3; width 4\n side: left");
  std::mt19937 random(20);
  for (int round = 0; round < 4000 && !HasFatalFailure(); ++round) {
    const int inBinary = round % 2;
    std::string content = inBinary ? "o\x01N1\"{" : "graph: 1 {\n";
    for (auto i = random() % 50; i > 0; --i) {
      content += inBinary ? binary[random() % std::size(binary)] : text[random() % std::size(text)];
      if (!inBinary && random() % 2) content += ' ';
    }
    for (auto i = random() % 4; i > 1; --i) content[random() % content.size()] = static_cast<char>(random());
    expectSameBothWays(content, inBinary);
  }
}

TEST(OmlPlainFields, GoodFilesReadAlike) {
  const std::string gaps[] = {" ", "\n", "; ", " ;\n\t", " # c\n", "\r\n", " /* ; */ ; "};
  const std::string fields[] = {"width: 5",
                                "width=-12345678",
                                "label: \"a # b\"",
                                "label \"\"",
                                "visible true",
                                "side:left",
                                "source: 1",
                                "source n1",
                                "layout { spacing: 3 bends 4; bends: { 1 2 } }",
                                "layout horizontal { spacing: 4 gap: 1.5 }",
                                "layout _ spacing: 2",
                                "address: 1.2.3.4",
                                "data: 0x00 0x01",
                                "node: { x: 1 y: 2 peer: 1 }",
                                "node: n1 { x 1; y 2; }",
                                "layout { node: 2 { x 1 } }"};
  std::mt19937 random(21);
  for (int round = 0; round < 500 && !HasFatalFailure(); ++round) {
    std::string content = "graph: 1 { width: 1";
    for (int i = 0; i < 20; ++i)
      content += gaps[random() % std::size(gaps)] + fields[random() % std::size(fields)];
    expectSameBothWays(content + " }\n", 0);
    ASSERT_EQ(readFile(0, true).substr(0, 4), "$TOP") << content << readFile(0, true);
  }
}

}  // namespace
