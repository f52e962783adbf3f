#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "utils/zvdebmsg.h"

namespace {

std::string contentOf(const char* name) {
  std::ifstream in(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// Counts how often the trace opens a file.
struct CountingTrace : ZVDebugMessage {
  using ZVDebugMessage::ZVDebugMessage;

  ZVFileCodeEnum open(const char* name, ZVFileModeEnum mode) override {
    ++opened;
    return ZVDebugMessage::open(name, mode);
  }
  int opened = 0;
};

TEST(Trace, GrowsMovesAndOpensAgain) {
  for (const char* name : {"zvs.trc", "one.trc"}) std::remove(name);
  EXPECT_EQ(ZVDebugMessage().fastFileOutput("a"), 0);
  CountingTrace trace("zvs.trc");
  EXPECT_EQ(trace.fileOutput("zvs.trc", "b", "w"), 0);
  EXPECT_EQ(trace.opened, 0);
  EXPECT_EQ(trace.fileOutput("one.trc", "1", nullptr), 0);
  EXPECT_EQ(trace.fileOutput("one.trc", "2", nullptr), 0);
  EXPECT_EQ(trace.fastFileOutput("3"), 0);
  EXPECT_EQ(trace.opened, 1);
  EXPECT_EQ(trace.close(), ZV_FILE_OK);
  EXPECT_EQ(trace.fastFileOutput("lost"), static_cast<ZVErrorCodeEnum>(ZV_FILE_WRITE_ERROR));
  EXPECT_EQ(trace.fileOutput("one.trc", "4", nullptr), 0);
  // The present name lies in the object itself.
  EXPECT_EQ(trace.fileOutput(trace.pFileName(), "5", nullptr), 0);
  EXPECT_EQ(trace.opened, 2);
  // So does the text here, until the file is left.
  EXPECT_EQ(trace.fileOutput("zvs.trc", trace.pFileName(), nullptr), 0);
  EXPECT_EQ(contentOf("zvs.trc"), "a\r\nbone.trc");
  EXPECT_EQ(contentOf("one.trc"), "123\r\n45");
}

TEST(Trace, ThatCannotBeOpenedRefusesUntilItCan) {
  for (const char* name : {"one.trc", "two.trc"}) std::remove(name);
  ZVDebugMessage trace("missing/folder.trc");
  EXPECT_EQ(trace.isOpen(), 0);
  EXPECT_EQ(trace.error(), 1);
  auto refused = static_cast<ZVErrorCodeEnum>(ZV_FILE_WRITE_ERROR);
  EXPECT_EQ(trace.fastFileOutput("lost"), refused);
  EXPECT_EQ(trace.fileOutput("missing/folder.trc", "lost", "a"), refused);
  EXPECT_EQ(trace.fileOutput(nullptr, "lost", "a"), refused);
  EXPECT_EQ(trace.fileOutput("one.trc", nullptr, "a"), refused);

  ZVDebugMessage copy(trace);
  EXPECT_EQ(copy.fileOutput("two.trc", "copied", "a"), 0);
  EXPECT_EQ(trace.fastFileOutput("kept"), 0);
  trace = copy;
  EXPECT_EQ(trace.isOpen(), 0);
  EXPECT_EQ(contentOf("one.trc"), "kept\r\n");
  EXPECT_EQ(contentOf("two.trc"), "copied");
}

}  // namespace
