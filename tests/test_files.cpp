#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/files.h"
#include "utils/zvarchiv.h"
#include "utils/zvfile.h"
#include "utils/zvnumtxt.h"
#include "utils/zvstrhnd.h"
#include "utils/zvtextfi.h"

namespace {

// What the system calls below do to the library while a test asks for it.
struct Faults {
  int failReadAfter = -1;   // this many reads work, then EIO
  int failWriteAfter = -1;  // this many writes work, then ENOSPC
  bool failClose = false;   // EIO, with the handle closed
  size_t most = SIZE_MAX;   // no call moves more bytes
  bool interrupt = false;   // every other call gives EINTR
  bool once = false;        // only one read or write fails
  int reads = 0;
  int calls = 0;
} faults;

long faulty(long number, int handle, const void* buffer, size_t count, int& left, int failure) {
  if (faults.interrupt && ++faults.calls % 2) {
    errno = EINTR;
    return -1;
  }
  if (left == 0) {
    if (faults.once) left = -1;
    errno = failure;
    return -1;
  }
  if (left > 0) --left;
  return syscall(number, handle, buffer, std::min(count, faults.most));
}

}  // namespace

// The system calls of the whole program, the library's among them.
extern "C" {
ZV_EXPORT ssize_t faultyRead(int handle, void* buffer, size_t count) __asm__("read");
ZV_EXPORT ssize_t faultyWrite(int handle, const void* buffer, size_t count) __asm__("write");
ZV_EXPORT int faultyClose(int handle) __asm__("close");
}

ssize_t faultyRead(int handle, void* buffer, size_t count) {
  ++faults.reads;
  return faulty(SYS_read, handle, buffer, count, faults.failReadAfter, EIO);
}

ssize_t faultyWrite(int handle, const void* buffer, size_t count) {
  return faulty(SYS_write, handle, buffer, count, faults.failWriteAfter, ENOSPC);
}

int faultyClose(int handle) {
  auto result = static_cast<int>(syscall(SYS_close, handle));
  if (!faults.failClose) return result;
  errno = EIO;
  return -1;
}

namespace {

class File : public testing::Test {
 protected:
  void TearDown() override { faults = Faults(); }
};

// Most tests read this file.
void store(const std::string& content) { writeFile("input.tmp", content); }

// What one readString gave.
struct Line {
  ZVFileCodeEnum code;
  std::string text;
  int endOfFile;
  bool operator==(const Line&) const = default;
};

void PrintTo(const Line& line, std::ostream* stream) {
  *stream << line.code << " '" << line.text.substr(0, 40) << "' end " << line.endOfFile;
}

std::vector<Line> readLines(ZVFile& file) {
  std::vector<Line> lines;
  ZVStringHandle text;
  for (int limit = 0; limit < 100000; ++limit) {
    ZVFileCodeEnum code = file.readString(text);
    EXPECT_EQ(static_cast<int32_t>(std::strlen(text.pString())), text.strlenBuf());
    lines.push_back({code, text.pString(), file.endOfFile()});
    if (code != ZV_FILE_OK) break;
  }
  return lines;
}

// The rules of a line on the whole content at once.
std::vector<Line> modelLines(const std::string& content) {
  std::vector<Line> lines;
  size_t place = 0;
  for (;;) {
    size_t end = content.find_first_of(std::string("\n\r\0", 3), place);
    if (end == std::string::npos) end = content.size();
    std::string text = content.substr(place, end - place);
    if (end == content.size() || content[end] == '\0') {
      if (!text.empty()) lines.push_back({ZV_FILE_OK, text, 1});
      lines.push_back({ZV_FILE_READ_ERROR, "", 1});
      return lines;
    }
    lines.push_back({ZV_FILE_OK, text + "\n", 0});
    bool pair = end + 1 < content.size() && content[end] != content[end + 1] &&
                (content[end + 1] == '\n' || content[end + 1] == '\r');
    place = end + (pair ? 2 : 1);
  }
}

void expectModelLines(const std::string& content) {
  store(content);
  ZVFile file;
  ASSERT_EQ(file.open("input.tmp", ZV_FILE_READ), ZV_FILE_OK);
  ASSERT_EQ(readLines(file), modelLines(content)) << content.size();
  ASSERT_EQ(file.error(), 1);
  ASSERT_EQ(file.close(), ZV_FILE_OK);
}

TEST_F(File, EveryLineEndIsOneAcrossTheRefills) {
  for (const std::string& end :
       {std::string("\n"), std::string("\r"), std::string("\r\n"), std::string("\n\r"), std::string("\n\n"),
        std::string("\r\r"), std::string("\n\r\n\r"), std::string(1, '\0')}) {
    // The second read asks for what lies behind 10240 bytes, with 256 or fewer than 4 of them unread.
    for (size_t offset = 0; offset < 10250; offset = offset == 4      ? 9975
                                                     : offset == 9994 ? 10225
                                                                      : offset + 1) {
      expectModelLines(std::string(offset, 'x').append(end) + "y");
      if (offset < 10225) continue;
      expectModelLines(std::string(offset, 'x') + end);
      expectModelLines(std::string(5000, 'x').append("\n").append(offset - 5001, 'x').append(end) + "y");
    }
  }
}

TEST_F(File, RandomTextReadsAsTheModelReadsIt) {
  std::mt19937 random(3);
  for (int round = 0; round < 60; ++round) {
    std::string content;
    size_t size = random() % 40000;
    auto share = 2 + random() % 2000;
    while (content.size() < size) {
      auto die = random() % share;
      content += die == 0 ? '\n' : die == 1 ? '\r' : static_cast<char>('a' + die % 26);
    }
    if (round % 8 == 0) content += std::string("\0tail", 5);
    expectModelLines(content);
  }
}

TEST_F(File, ReadsAheadInFewSystemCalls) {
  std::string content(102400, 'x');
  for (size_t i = 30; i < content.size(); i += 31) content[i] = '\n';
  store(content);
  ZVFile file;
  file.open("input.tmp", ZV_FILE_READ);
  faults.reads = 0;
  EXPECT_EQ(readLines(file), modelLines(content));
  EXPECT_GE(faults.reads, 11);
  EXPECT_LE(faults.reads, 18);
}

TEST_F(File, BinaryReadsDeliverEveryByteOnce) {
  std::mt19937 random(5);
  std::string content(35000, '\0');
  for (char& c : content) c = static_cast<char>(random());
  store(content);
  for (int step : {1, 3, 254, 256, 9984, 10240, 20000, 35000, 35001}) {
    ZVFile file;
    ASSERT_EQ(file.open("input.tmp", ZV_FILE_READ_BINARY), ZV_FILE_OK);
    std::string seen;
    std::string piece(static_cast<size_t>(step), '?');
    while (!file.endOfFile()) {
      int count = step;
      ASSERT_EQ(file.readBinary(piece.data(), count), ZV_FILE_OK);
      seen.append(piece, 0, static_cast<size_t>(count));
    }
    ASSERT_EQ(seen, content) << step;
    int count = 1;
    EXPECT_EQ(file.readBinary(piece.data(), count), ZV_FILE_READ_ERROR);
  }
}

TEST_F(File, FaultsOfTheSystemAreToldApartFromTheEnd) {
  faults.most = 777;
  faults.interrupt = true;
  expectModelLines(std::string(20000, 'x').append("\n").append(10000, 'y'));
  faults = Faults();

  ZVTextFile file;
  file.open("input.tmp", ZV_FILE_READ);
  faults.failReadAfter = 1;
  ZVStringHandle text;
  EXPECT_EQ(file.readLine(text), ZV_FILE_READ_ERROR);
  EXPECT_EQ(file.error(), 1);
  EXPECT_EQ(file.endOfFile(), 0);

  file.open("input.tmp", ZV_FILE_READ_BINARY);
  char data[12000];
  int count = 12000;
  faults.failReadAfter = 1;
  EXPECT_EQ(file.readBinary(data, count), ZV_FILE_READ_ERROR);
  EXPECT_EQ(count, 10240);
  EXPECT_EQ(file.endOfFile(), 0);

  int handle = ::open("input.tmp", O_RDONLY);
  file.attach(handle, ZV_FILE_READ_WRITE);
  EXPECT_EQ(file.readString(text), ZV_FILE_READ_ERROR);
  ::close(handle);
}

// Bytes that came before the fault are kept, and unread ones tide over it.
TEST_F(File, FaultThatPassesLosesNoByte) {
  std::string content;
  for (int i = 0; content.size() < 30000; ++i) content += std::to_string(i) + '\n';
  store(content);
  int reads = 1;  // by the first round, which has no fault
  for (int place = -1; place < reads - 1; place += place < 0 ? 2 : 1) {
    faults = Faults();
    faults.most = 777;
    faults.failReadAfter = place;
    faults.once = true;
    ZVFile file;
    ASSERT_EQ(file.open("input.tmp", ZV_FILE_READ), ZV_FILE_OK);
    ASSERT_EQ(readLines(file), modelLines(content)) << place;
    if (place < 0) reads = faults.reads;
  }
  EXPECT_GT(reads, 40);
}

class UnbufferedFile : public ZVFile {
 public:
  using ZVFile::buffered;
};

TEST_F(File, UnbufferedBinaryReadTellsTheEndFromAFault) {
  store(std::string(100, 'x'));
  for (bool fails : {false, true}) {
    UnbufferedFile file;
    file.open("input.tmp", ZV_FILE_READ_BINARY);
    file.buffered(0);
    faults.most = 30;
    faults.failReadAfter = fails ? 2 : -1;
    char data[200];
    int count = 200;
    EXPECT_EQ(file.readBinary(data, count), fails ? ZV_FILE_READ_ERROR : ZV_FILE_OK);
    EXPECT_EQ(count, fails ? 60 : 100);
    EXPECT_EQ(file.endOfFile(), !fails);
    EXPECT_EQ(file.error(), fails);
    faults = Faults();
  }
}

TEST_F(File, WritesThatTheSystemCutsShortAreContinued) {
  faults.most = 3;
  faults.interrupt = true;
  ZVTextFile file;
  file.open("output.tmp", ZV_FILE_WRITE);
  EXPECT_EQ(file.writeLine("a longer text"), ZV_FILE_OK);
  EXPECT_EQ(file.close(), ZV_FILE_OK);
  EXPECT_EQ(readFile("output.tmp"), "a longer text\r\n");
}

TEST_F(File, FailedWriteLetsTheCloseFail) {
  for (ZVFileModeEnum mode : {ZV_FILE_WRITE, ZV_FILE_WRITE_BINARY}) {
    ZVFile file;
    ASSERT_EQ(file.open("/dev/full", mode), ZV_FILE_OK);
    EXPECT_EQ(mode == ZV_FILE_WRITE ? file.writeString("text") : file.writeBinary("text", 4),
              ZV_FILE_WRITE_ERROR);
    EXPECT_EQ(file.error(), 1);
    EXPECT_EQ(file.close(), ZV_FILE_CLOSE_ERROR);
    EXPECT_EQ(file.error(), 1);
    // The next file may have the same handle and must not suffer for it.
    ASSERT_EQ(file.open("output.tmp", ZV_FILE_WRITE), ZV_FILE_OK);
    EXPECT_EQ(file.close(), ZV_FILE_OK);
  }
  ZVTextFile file;
  file.open("output.tmp", ZV_FILE_WRITE);
  faults.failWriteAfter = 1;
  EXPECT_EQ(file.writeLine("text"), ZV_FILE_WRITE_ERROR);
  EXPECT_EQ(file.close(), ZV_FILE_CLOSE_ERROR);
  faults = Faults();

  file.open("output.tmp", ZV_FILE_WRITE);
  int handle = file.fileHandle();
  faults.failClose = true;
  EXPECT_EQ(file.close(), ZV_FILE_CLOSE_ERROR);
  faults = Faults();
  // The number is free again, and what has it next must survive the end of this file object.
  ASSERT_EQ(::open("input.tmp", O_RDWR | O_CREAT, 0666), handle);
  file.empty();
  EXPECT_EQ(::close(handle), 0);
}

// Which operation works in which mode.
TEST_F(File, ModesAllowWhatTheyAreFor) {
  const char* allowed[] = {"r", "w", "rw", "w", "R", "W", "r", "w"};
  for (int32_t mode = -1; mode <= 8; ++mode) {
    store("line\n\r");
    ZVFile file;
    ZVFileCodeEnum opened = file.open("input.tmp", static_cast<ZVFileModeEnum>(mode));
    EXPECT_EQ(file.mode(), mode);
    EXPECT_EQ(opened, mode < 0 || mode > 7 ? ZV_FILE_OPEN_ERROR : ZV_FILE_OK);
    if (opened != ZV_FILE_OK) continue;
    auto expected = [&](char what, ZVFileCodeEnum refusal) {
      return std::strchr(allowed[mode], what) ? ZV_FILE_OK : refusal;
    };
    EXPECT_EQ(file.writeString("more"), expected('w', ZV_FILE_WRITE_ERROR)) << mode;
    EXPECT_EQ(file.writeString(nullptr), ZV_FILE_WRITE_ERROR);
    EXPECT_EQ(file.writeBinary("more", 4), expected('W', ZV_FILE_WRITE_ERROR)) << mode;
    EXPECT_EQ(file.writeBinary("more", -1), ZV_FILE_WRITE_ERROR);
    EXPECT_EQ(file.writeBinary(nullptr, 4), ZV_FILE_WRITE_ERROR);
    char data[4];
    int count = 4;
    EXPECT_EQ(file.readBinary(nullptr, count), ZV_FILE_READ_ERROR);
    EXPECT_EQ(file.readBinary(data, count), expected('R', ZV_FILE_READ_ERROR)) << mode;
    ZVStringHandle text;
    EXPECT_EQ(file.readString(text), expected('r', ZV_FILE_READ_ERROR)) << mode;
    EXPECT_EQ(file.writeEndOfFile(), ZV_FILE_OK);
    EXPECT_EQ(file.close(), ZV_FILE_OK);
    std::string content = readFile("input.tmp");
    bool writes = expected('w', ZV_FILE_WRITE_ERROR) == ZV_FILE_OK || mode == ZV_FILE_WRITE_BINARY;
    EXPECT_EQ(content, !writes ? "line\n\r" : mode == ZV_FILE_APPEND ? "line\n\rmore" : "more");
  }
}

TEST_F(File, OpensClosesAndRefuses) {
  ZVFile file;
  EXPECT_EQ(file.pQueryFileName(), nullptr);
  EXPECT_STREQ(file.pFileName(), "");
  EXPECT_EQ(file.close(), ZV_FILE_CLOSE_ERROR);
  EXPECT_EQ(file.error(), 1);
  EXPECT_EQ(file.open("missing.tmp", ZV_FILE_READ), ZV_FILE_OPEN_ERROR);
  EXPECT_EQ(file.open(nullptr, ZV_FILE_READ), ZV_FILE_OPEN_ERROR);
  EXPECT_EQ(file.isOpen(), 0);
  EXPECT_EQ(file.fileHandle(), -1);

  std::remove("appended.tmp");
  for (int i = 0; i < 2; ++i) {
    ASSERT_EQ(file.open("./appended.tmp", ZV_FILE_APPEND), ZV_FILE_OK);
    EXPECT_STREQ(file.pFileName(), "./appended.tmp");
    EXPECT_STREQ(file.pPathName(), "./");
    EXPECT_EQ(file.writeString("x"), ZV_FILE_OK);
  }
  int32_t size = file.sizeOf();
  // A file opened by its own name, and an open file copied.
  ASSERT_EQ(file.open(file.pFileName(), ZV_FILE_READ), ZV_FILE_OK);
  EXPECT_EQ(file.sizeOf(), size + 10240);
  EXPECT_EQ(readLines(file), modelLines("xx"));
  ZVFile copy(file);
  EXPECT_EQ(copy.isOpen(), 0);
  EXPECT_EQ(copy.fileHandle(), -1);
  copy.open("appended.tmp", ZV_FILE_READ);
  EXPECT_STREQ(copy.pQueryPathName(), "");
  EXPECT_EQ(copy.close(), ZV_FILE_OK);
  EXPECT_STREQ(copy.pQueryFileName(), "");
  copy = file;
  copy.copyAttributes(&file);
  EXPECT_EQ(copy.pQueryFileName(), nullptr);
  EXPECT_EQ(file.close(), ZV_FILE_OK);
}

TEST_F(File, AppendingKeepsAFileThatMayOnlyBeWritten) {
  store("old");
  ASSERT_EQ(chmod("input.tmp", 0222), 0);
  // Nothing is forbidden to the super-user.
  uid_t user = geteuid();
  constexpr uid_t NOBODY = 65534;
  if (user == 0 && seteuid(NOBODY) != 0) GTEST_SKIP();
  ZVFile file;
  EXPECT_EQ(file.open("input.tmp", ZV_FILE_APPEND), ZV_FILE_OK);
  EXPECT_EQ(file.writeString("new"), ZV_FILE_OK);
  EXPECT_EQ(file.close(), ZV_FILE_OK);
  ASSERT_EQ(seteuid(user), 0);
  ASSERT_EQ(chmod("input.tmp", 0666), 0);
  EXPECT_EQ(readFile("input.tmp"), "oldnew");
}

TEST_F(File, NamesOverTheLimitAreNoNames) {
  std::string path = "./";
  while (path.size() < 258) path += "./";
  std::string fits = path + "a";
  std::string tooLong = path + "ab";
  ASSERT_EQ(fits.size(), 259U);
  ZVFile file;
  EXPECT_EQ(file.open(fits.c_str(), ZV_FILE_WRITE), ZV_FILE_OK);
  EXPECT_EQ(file.close(), ZV_FILE_OK);
  EXPECT_EQ(ZVFile::fileExist(fits.c_str()), 1);
  for (ZVFileModeEnum mode : {ZV_FILE_READ, ZV_FILE_WRITE, ZV_FILE_APPEND}) {
    EXPECT_EQ(file.open(tooLong.c_str(), mode), ZV_FILE_OPEN_ERROR);
  }
  EXPECT_EQ(zvInternalOpenAppendBin(tooLong.c_str()), -1);
  EXPECT_EQ(zvInternalOpenAppend(nullptr, nullptr), -1);
  EXPECT_EQ(ZVFile::fileExist(tooLong.c_str()), 0);
  EXPECT_EQ(ZVFile::fileExist(nullptr), 0);
  std::string huge(100000, 'x');
  EXPECT_EQ(file.open(huge.c_str(), ZV_FILE_WRITE), ZV_FILE_OPEN_ERROR);
  char name[260] = "n";
  char pathName[260] = "p";
  ZVFile::separatePathFromFile(huge.c_str(), name, pathName);
  EXPECT_STREQ(name, "n");
  EXPECT_EQ(ZVFile::renameUnique(huge.data()), 0);
  std::memcpy(name, fits.c_str(), fits.size() + 1);
  EXPECT_EQ(ZVFile::renameUnique(name), 0) << "there is no room for a number";
}

TEST_F(File, NamesAreSplitAndMadeUnique) {
  const char* const splits[][3] = {{"a", "a", "old"},  {"d/a", "a", "d/"}, {"c:\\d\\a.x", "a.x", "c:\\d\\"},
                                   {"c:a", "a", "c:"}, {"d/", "", "d/"},   {"", "", "old"}};
  for (const auto& [full, expectedFile, expectedPath] : splits) {
    char file[260] = "old";
    char path[260] = "old";
    ZVFile::separatePathFromFile(full, file, path);
    EXPECT_STREQ(file, expectedFile);
    EXPECT_STREQ(path, expectedPath);
  }
  writeFile("out1.tmp", "");
  std::remove("out2.tmp");
  char name[260] = "out.tmp";
  EXPECT_EQ(ZVFile::renameUnique(name), 1);
  EXPECT_STREQ(name, "out2.tmp");
  std::snprintf(name, sizeof name, "unused");
  EXPECT_EQ(ZVFile::renameUnique(name), 1);
  EXPECT_STREQ(name, "unused1.");
  EXPECT_EQ(ZVFile::searchForToken("a.b.c", ".", '-'), 3);
  EXPECT_EQ(ZVFile::searchForToken("a.b.c", ".", '+'), 1);
  EXPECT_EQ(ZVFile::searchForToken("a.b.c", ".", 0), -1);
  EXPECT_EQ(ZVFile::searchForToken("a.b.c", "xy", '+'), -1);
  EXPECT_EQ(ZVFile::searchForToken(nullptr, ".", '+'), -1);
}

// Byte by byte a line ends with LF CR or CR, and what the end of the file cuts off is lost.
TEST_F(File, UnbufferedReadingKeepsItsLineForm) {
  struct Case {
    const char* content;
    std::vector<Line> lines;
  };
  const Line end{ZV_FILE_OK, "", 1};
  const Line refused{ZV_FILE_READ_ERROR, "", 1};
  for (const Case& c : {Case{"", {end, refused}},
                        {"a\n\rb\r", {{ZV_FILE_OK, "a\n\r", 0}, {ZV_FILE_OK, "b\r", 0}, end, refused}},
                        {"\n\rcut", {{ZV_FILE_OK, "\n\r", 0}, end, refused}},
                        {"a\nbc", {{ZV_FILE_READ_ERROR, "a\nb", 0}}},
                        {"a\n\n", {{ZV_FILE_READ_ERROR, "a\n\n", 0}}}}) {
    store(c.content);
    int handle = ::open("input.tmp", O_RDONLY);
    ZVFile file;
    file.attach(handle, ZV_FILE_READ_WRITE);
    EXPECT_EQ(file.isAttached(), 1);
    EXPECT_EQ(file.isOpen(), 0);
    EXPECT_EQ(readLines(file), c.lines) << c.content;
    EXPECT_EQ(file.close(), ZV_FILE_CLOSE_ERROR);
    file.detach(1);
    EXPECT_EQ(file.fileHandle(), -1);
    EXPECT_EQ(file.error(), 0);
    file.detach(1);
    EXPECT_EQ(file.error(), 1);
    EXPECT_EQ(::close(handle), 0) << "an attached handle stays the caller's";
  }
}

TEST_F(File, AttachedPipeIsReadAheadToItsEnd) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  ASSERT_EQ(::write(ends[1], "one\r\ntwo", 8), 8);
  ::close(ends[1]);
  ZVTextFile file;
  file.attach(ends[0], ZV_FILE_READ);
  EXPECT_EQ(readLines(file), modelLines("one\r\ntwo"));
  file.empty();
  EXPECT_EQ(::close(ends[0]), 0);
}

TEST_F(File, ArchiveCarriesLinesUpToItsEndMarker) {
  std::stringstream stream;
  ZVStreamArchive out(static_cast<std::ostream&>(stream));
  ZVTextFile file;
  file.attach(&out);
  EXPECT_EQ(file.mode(), ZV_FILE_WRITE);
  file.writeLine("first");
  file.writeLine(7);
  file.writeLine("");
  file.detach(1);
  EXPECT_EQ(file.pArchive(), nullptr);
  file.attach(&out);
  file.write("second");
  file.detach(0);
  EXPECT_EQ(stream.str(), "first\r\n7\r\n\r\n__ZV_END_OF_FILE__\n\rsecond");

  ZVStreamArchive in(static_cast<std::istream&>(stream));
  file.attach(&in);
  EXPECT_EQ(file.mode(), ZV_FILE_READ);
  EXPECT_EQ(file.writeString("x"), ZV_FILE_WRITE_ERROR);
  EXPECT_EQ(
      readLines(file),
      (std::vector<Line>{
          {ZV_FILE_OK, "first", 0}, {ZV_FILE_OK, "7", 0}, {ZV_FILE_OK, "", 0}, {ZV_FILE_READ_ERROR, "", 1}}));
  // The next file of the same archive.
  file.attach(&in);
  EXPECT_EQ(readLines(file), (std::vector<Line>{{ZV_FILE_OK, "second", 0}, {ZV_FILE_READ_ERROR, "", 1}}));
  file.attach(nullptr);
  EXPECT_EQ(file.error(), 1);
  EXPECT_EQ(file.isAttached(), 0);
}

// A subclass with a filter of its own.
class FilteredFile : public ZVTextFile {
 public:
  using ZVFile::byteOrder;
  using ZVFile::mode;
  char* stripBuffer(char* text) override {
    ZVTextFile::stripBuffer(text);
    if (std::strcmp(text, "hidden") == 0) return nullptr;
    std::memcpy(text + std::strlen(text), "!\n", 3);
    return text;
  }
};

TEST_F(File, SubclassFiltersLinesAndSetsTheMode) {
  std::string wide(252, 'w');
  store("one\n" + wide + "\nhidden\nlast");
  FilteredFile file;
  ASSERT_EQ(file.open("input.tmp", ZV_FILE_READ), ZV_FILE_OK);
  ZVStringHandle line;
  for (const std::string& expected :
       {std::string("one!\n"), wide + "!\n", std::string(), std::string("last!\n")}) {
    EXPECT_EQ(file.readLine(line), ZV_FILE_OK);
    EXPECT_EQ(line.pString(), expected);
    EXPECT_EQ(line.strlenBuf(), static_cast<int32_t>(expected.size()));
  }
  EXPECT_EQ(file.byteOrder(ZV_BYTE_ORDER_FILE), file.byteOrder());
  EXPECT_EQ(file.mode(ZV_FILE_WRITE), ZV_FILE_WRITE);
  EXPECT_EQ(file.readLine(line), ZV_FILE_READ_ERROR);
}

TEST_F(File, TextFileReadsNumbersAndTruthValues) {
  store("12  \n\n-7 tail\n99999999999\n-1\n99999999999\nxyz\n1.5e3\nTRUEST\ntrue\nFALSE\nabc");
  ZVTextFile file;
  file.open("input.tmp", ZV_FILE_READ_ASCII);
  // The value that a line gives, or the text "none" for a line that is refused.
  auto next = [&](auto value, auto read) {
    value = 77;
    ZVFileCodeEnum code = read(value);
    return code == ZV_FILE_OK ? std::to_string(value) : value == 77 ? "none" : "changed";
  };
  auto line = [&](auto& value) { return file.readLine(value); };
  auto truth = [&](int& value) { return file.readLineTrueOrFalse(value); };
  EXPECT_EQ(next(0, line), "12");
  EXPECT_EQ(file.error(), 0);
  EXPECT_EQ(next(0, line), "none");
  EXPECT_EQ(file.error(), 1);
  EXPECT_EQ(next(0L, line), "-7");
  EXPECT_EQ(next(0L, line), "2147483647");
  EXPECT_EQ(next(0UL, line), "4294967295");
  EXPECT_EQ(next(0U, line), "4294967295");
  EXPECT_EQ(next(0.0, line), "none");
  EXPECT_EQ(next(0.0, line), "1500.000000");
  EXPECT_EQ(next(0, truth), "1");
  EXPECT_EQ(next(0, truth), "none");
  EXPECT_EQ(next(0, truth), "0");
  EXPECT_EQ(next(0, line), "none");
  EXPECT_EQ(file.endOfFile(), 1);
}

TEST_F(File, TextFileWritesInTheFormsOfItsTable) {
  ZVTextFile file;
  file.open("output.tmp", ZV_FILE_WRITE);
  EXPECT_EQ(file.write(1.5), ZV_FILE_OK);
  EXPECT_EQ(file.write(nullptr), ZV_FILE_WRITE_ERROR);
  EXPECT_EQ(file.writeLine(static_cast<const char*>(nullptr)), ZV_FILE_WRITE_ERROR);
  file.writeLine(-3);
  file.writeLine(4000000000U);
  file.writeLine(-5L);
  file.writeLine(6UL);
  file.writeLine(std::numeric_limits<long>::max());
  file.writeLine(std::numeric_limits<unsigned long>::max());
  file.writeTrueOrFalse(2);
  file.writeLineTrueOrFalse(0);
  EXPECT_EQ(file.writeLine(0.5), ZV_FILE_OK);
  EXPECT_EQ(file.writeLine(2.0 / 3.0, "%%%-8.3lf|"), ZV_FILE_OK);
  EXPECT_EQ(file.writeLine(1.0, "plain"), ZV_FILE_OK);
  for (const char* format : {"%d", "%s", "%n", "%f%f", "%*f", "%Lf", "%", "%999999f", "%.999999999999f"}) {
    EXPECT_EQ(file.write(1.0, format), ZV_FILE_WRITE_ERROR) << format;
  }
  EXPECT_EQ(file.write(1.0, nullptr), ZV_FILE_WRITE_ERROR);
  file.close();
  EXPECT_EQ(readFile("output.tmp"),
            "1.500000-3\r\n4000000000\r\n-5\r\n6\r\n2147483647\r\n4294967295\r\nTRUEFALSE\r\n"
            "0.500000\r\n%0.667   |\r\nplain\r\n");
  char text[] = "ab \r\n\r";
  EXPECT_STREQ(file.stripBuffer(text), "ab ");
  EXPECT_EQ(file.stripBuffer(nullptr), nullptr);
  EXPECT_EQ(ZVTextFile::isDoubleSlashString("//"), 1);
  EXPECT_EQ(ZVTextFile::isDoubleSlashString("/"), 0);
  EXPECT_EQ(ZVTextFile::isDoubleSlashString(nullptr), 0);
}

// strtod and the integer conversions of the C library, which run in the "C" locale here, are the model.
TEST(NumberText, ScansWhatTheCLibraryScans) {
  std::istringstream texts(
      "0| \t\n\v\f\r+12x|-12.75e2|.5|5.|.|+|-||e5|1e|1e+|1e5|0x1.8p3|0X.8P1|0x|0xg|0x1p|"
      "0x1p-1074|0x1p-1080|0x1p99999|-0x1p99999|inf|-INFinity|infinit|nan|NaN(ab_1)x|nan(|-nan|"
      "1e308|1e309|-1e99999999999999999999|1e-320|1e-400|-1e-99999999999|0e999999|0.0000e-999|"
      "1797693134862315800000e287|0.1234567890123456789012345678901234567890|- 1|+-1|2147483647|"
      "2147483648|-2147483648|-2147483649|4294967295|4294967296|-1|-4294967296|"
      "99999999999999999999999|-99999999999999999999999|00000000000000000000012|1,5|0b1|١|");
  for (std::string item; std::getline(texts, item, '|');) {
    const char* text = item.c_str();
    SCOPED_TRACE(text);
    char* realEnd = nullptr;
    double expected = std::strtod(text, &realEnd);
    double real = 77;
    const char* end = zvnumber::scanReal(text, real);
    EXPECT_EQ(end, realEnd == text ? nullptr : realEnd);
    if (end) {
      EXPECT_TRUE(real == expected || (std::isnan(real) && std::isnan(expected))) << real << " " << expected;
      EXPECT_EQ(std::signbit(real), std::signbit(expected));
    } else {
      EXPECT_EQ(real, 77);
      EXPECT_EQ(zvnumber::realOf(text), 0.0);
    }
    char* wholeEnd = nullptr;
    long long whole = std::strtoll(text, &wholeEnd, 10);
    int32_t number = 77;
    uint32_t natural = 77;
    end = zvnumber::scanInteger(text, number);
    EXPECT_EQ(end, wholeEnd == text ? nullptr : wholeEnd);
    EXPECT_EQ(zvnumber::scanUnsigned(text, natural), end);
    EXPECT_EQ(number, end ? std::min(std::max(whole, -2147483648LL), 2147483647LL) : 77);
    if (!end) continue;
    uint32_t wrapped =
        whole < -4294967295LL || whole > 4294967295LL ? UINT32_MAX : static_cast<uint32_t>(whole);
    EXPECT_EQ(natural, wrapped);
  }
  std::string digits = "1" + std::string(5000, '0') + "e-5000";
  EXPECT_EQ(zvnumber::realOf(digits.c_str()), 1.0);
  digits = "0." + std::string(5000, '0') + "1e5001";
  EXPECT_EQ(zvnumber::realOf(digits.c_str()), 1.0);
}

TEST(NumberText, FormatsAsTheCLibraryInTheCLocale) {
  std::mt19937_64 random(13);
  char expected[2000];
  char text[zvnumber::REAL_ROOM];
  for (int i = 0; i < 20000; ++i) {
    double value = std::bit_cast<double>(random());
    if (i % 2) value = static_cast<double>(static_cast<int32_t>(random())) / 64.0;
    if (i < 4) value = i < 2 ? std::numeric_limits<double>::infinity() : -std::numeric_limits<double>::max();
    std::snprintf(expected, sizeof expected, "%lf", value);
    EXPECT_EQ(zvnumber::formatReal(text, value), static_cast<int32_t>(std::strlen(expected)));
    ASSERT_STREQ(text, expected);
    if (i % 100 < 2) {
      for (const char* format : {"%f", "<%+12.3lf>", "%-20e|", "%#.0f", "% 015g", "%G%%", "%a", "%025A|",
                                 "%-030e|", "%+030.3f", "%.0f", "%30.20E"}) {
        ZVStringHandle formatted;
        ASSERT_EQ(zvnumber::appendReal(formatted, value, format), 1) << format;
        std::snprintf(expected, sizeof expected, format, value);
        EXPECT_STREQ(formatted.pString(), expected) << format;
      }
    }
  }
  for (int32_t value : {0, -1, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()}) {
    zvnumber::formatInteger(text, value);
    EXPECT_EQ(text, std::to_string(value));
    zvnumber::formatUnsigned(text, static_cast<uint32_t>(value));
    EXPECT_EQ(text, std::to_string(static_cast<uint32_t>(value)));
  }
}

// Needs a locale whose decimal point is another, which not every machine has.
TEST(NumberText, DoesNotFollowTheLocale) {
  for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "ps_AF.UTF-8", "ps_AF"}) {
    if (!std::setlocale(LC_ALL, name)) continue;
    ZVStringHandle text;
    zvnumber::appendReal(text, -1234567.5, "%'12.2f, %%");
    char plain[zvnumber::REAL_ROOM];
    zvnumber::formatReal(plain, 1.5);
    double value = zvnumber::realOf("2.5");
    std::setlocale(LC_ALL, "C");
    EXPECT_STREQ(text.pString(), " -1234567.50, %") << name;
    EXPECT_STREQ(plain, "1.500000");
    EXPECT_EQ(value, 2.5);
  }
}

}  // namespace
