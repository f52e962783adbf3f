#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/omlprobe.h"
#include "tests/support/omlsample.h"

namespace {

using namespace std::string_literals;

// What becomes of a file: the tree, or none, and all messages.
std::string readFile(int binary, bool shortWay) {
  ZVOMLFileProbe file;
  file.shortWay(shortWay);
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
  ASSERT_EQ(readFile(binary, true), readFile(binary, false)) << testing::PrintToString(content);
}

// Pieces of a file, with ~ between them in the text.
struct Pieces {
  explicit Pieces(const std::string& text) {
    std::istringstream in(text);
    for (std::string piece; std::getline(in, piece, '~');) pieces.push_back(piece);
  }
  const std::string& any(std::mt19937& random) const { return pieces[random() % pieces.size()]; }

  std::vector<std::string> pieces;
};

// Pieces in any order, with some bytes changed, so that every place sees every neighbour.
TEST(OmlPlainAttributes, TheShortWayReadsWhatTheLongWayReads) {
  const Pieces pieces[] = {
      Pieces("width~WIDTH: ~spacing ~label=~visible: ~side ~source: ~x: ~y~note: ~scale: ~address ~data: ~"
             "\"a b\"~\"\\\"\"~\"\"~1~-20~007~-0~0x1f~1.5~1e3~1.2.3.4~n1~n1,2~$n1~true~false~left~up~ ~\n~"
             "\t\r\n~; ~ # c\n~/* c */~ // c\n~{ ~ }~layout ~_ ~node: 1 {~node: {~point {~}\n~skip {~"
             "node ~node: 2\n\n\t(~node = n3 // c\n<~node: 007 [~node: -4 {~node: n1,2 {~node: "
             "1e3~)~>~]~node: 5;~-0.25~1.~-.5~.5~1.5.2~3.25,1~"
             "include: \"more.oml\" ~comment: \"unchecked\" ~field: \"old\" ~old: 3 4\n~id: 3 ~"
             "section: \"width\" ~123456789~99999999999~a\"b"),
      Pieces("f\7i\5~f\10i\5~f\11R\0\0\0\1r\0~f\11r\5R\xff\xff\xff\xfe~f\11r\5i\1~f\11r\5~f\12\"ab\"~"
             "f\12\"a\\\"\"~f\13e\1~f\14e\2~f\15N12\"~f\15N007\"~"
             "f\15$,1\"~f\15i\7~f\10I\0\1\0\0~o\1N1\"{~o\2{~o\2N3\"(~o\2N007\"{~o\2Nn1\"<~o\2N4\"~o\2$,1\"{~"
             "o\x7f{~)~>~}~;~:~s\2{~f\2\"unchecked\"~f\4N5\"~f\10~i\5~"
             "F\0\0\0\10i\1~X~f\17N1\"f\20N2\"~f\0\"more.omb\""s)};
  writeFile("more.oml", "x: 3; width 4\n side: left");
  writeFile("more.omb", "f\10i\4f\15N1");
  std::mt19937 random(20);
  for (int round = 0; round < 4000 && !HasFatalFailure(); ++round) {
    const int binary = round % 2;
    std::string content = binary ? "o\1N1\"{" : "graph: 1 {\n";
    for (auto i = random() % 50; i > 0; --i) {
      content += pieces[binary].any(random);
      if (!binary && random() % 2) content += ' ';
    }
    for (auto i = random() % 4; i > 1; --i) content[random() % content.size()] = static_cast<char>(random());
    expectSameBothWays(content, binary);
  }
}

// Long enough that fields lie across the ends of the buffers on the way.
TEST(OmlPlainAttributes, GoodFilesReadAlike) {
  const Pieces gaps(" ~\n~; ~ ;\n\t~ # c\n~\r\n~ /* ; */ ; ");
  const Pieces fields[] = {
      Pieces("width: 5~width=-12345678~label: \"a # b\"~label \"\"~visible true~side:left~scale: -0.25~scale "
             "123456789012345678901234567890.125~scale = 2.5e-3~scale 0.1~source: 1~"
             "source n1~layout { spacing: 3 bends 4; bends: { 1 2 } }~layout _ spacing: 2~"
             "layout horizontal { spacing: 4 gap: 1.5 }~address: 1.2.3.4~data: 0x00 0x01~"
             "node: { x: 1 y: 2 peer: 1 }~node: n1 { x 1; y 2; }~node: 21\n{x: 1}~node=22~node 23 /* c "
             "*/\n(y 2)~"
             "node < x 1 >~node: n2 // c\n\n[ x 1\ny 2 ]~layout { node: 2 { x 1 } }~"
             "include: \"more.oml\""),
      Pieces(
          "f\10i\5~f\10I\0\1\0\0~F\0\0\0\10I\xff\xff\xff\xff~f\12\"a label\"~f\12\"a\\\"\"~f\12\"\"~f\13e\1~"
          "f\14e\2~f\15N12345678\"~f\15N007\"~f\15Nn1\"~f\15$,1\"~f\15i\7~f\11R\0\0\0\1r\0~"
          "f\11r\5R\xff\xff\xff\xfe~f\16p\1~"
          "f\17Xi\3{\0}~s\2{f\20i\1f\21i\2}~s\2s\3{f\20I\0\0\0\1}~o\2N5\"{f\25i\1f\26i\2f\27N1\"}~o\2{}~"
          "o\2N15\"(f\25i\1)~o\2Nn4\"<>~o\2N007\"{}~o\2N25\"~"
          "f\0\"more.omb\""s)};
  writeFile("more.oml", "label \"x\" # c\n  source: 3");
  writeFile("more.omb", "f\10i\4;f\15N1\"");
  std::mt19937 random(21);
  for (int round = 0; round < 600 && !HasFatalFailure(); ++round) {
    const int binary = round % 2;
    std::string content = binary ? "o\1N1\"{f\10i\1" : "graph: 1 { width: 1";
    for (int i = 0; i < 200; ++i) {
      content += binary ? std::string(random() % 4 == 0, ';') : gaps.any(random);
      content += fields[binary].any(random);
    }
    expectSameBothWays(content + '}', binary);
    ASSERT_EQ(readFile(binary, true).substr(0, 4), "$TOP") << readFile(binary, true);
  }
}

}  // namespace
