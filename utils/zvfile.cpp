#include "utils/zvfile.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "utils/zvarchiv.h"
#include "utils/zvstrhnd.h"

namespace {

constexpr int FILE_BUFFER_SIZE = 10240;
// A refill is due at exactly the first number of unread bytes and below the second, which leaves one byte to
// look ahead at behind every line end.
constexpr int EARLY_REFILL = 256;
constexpr int LATE_REFILL = 4;
constexpr size_t NAME_BLOCK_SIZE = 260;
constexpr const char* END_MARKER = "__ZV_END_OF_FILE__";
constexpr const char* END_MARKER_LINE_END = "\n\r";
// A line longer than this fails to be read; a string handle has no room for much more.
constexpr int32_t LONGEST_LINE = 1 << 30;

bool fitsNameBlock(const char* name) { return name && std::memchr(name, '\0', NAME_BLOCK_SIZE); }

// The text, its NUL included, may lie over the target.
void copyText(char* target, const char* text) { std::memmove(target, text, std::strlen(text) + 1); }

// The name may lie inside the block. One that does not fit leaves the block empty.
void fillNameBlock(char* block, const char* name) {
  if (name && fitsNameBlock(name)) {
    copyText(block, name);
  } else {
    block[0] = '\0';
  }
}

bool readsAhead(ZVFileModeEnum mode) {
  return mode == ZV_FILE_READ || mode == ZV_FILE_READ_BINARY || mode == ZV_FILE_READ_ASCII;
}

bool marksEnd(ZVFileModeEnum mode) { return mode == ZV_FILE_WRITE || mode == ZV_FILE_WRITE_ASCII; }

bool readsText(ZVFileModeEnum mode) {
  return mode == ZV_FILE_READ || mode == ZV_FILE_READ_WRITE || mode == ZV_FILE_READ_ASCII;
}

bool writesText(ZVFileModeEnum mode) {
  return marksEnd(mode) || mode == ZV_FILE_READ_WRITE || mode == ZV_FILE_APPEND;
}

bool endsLine(char c) { return c == '\n' || c == '\r' || c == '\0'; }

// How many characters of a piece are in front of its first LF, CR or NUL; PIECE if there is none.
#if defined(__SSE2__)
constexpr int PIECE = sizeof(__m128i);

int lengthInPiece(const char* text) {
  const __m128i piece = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
  const auto equal = [piece](char c) { return _mm_cmpeq_epi8(piece, _mm_set1_epi8(c)); };
  const __m128i ends = _mm_or_si128(_mm_or_si128(equal('\n'), equal('\r')), equal('\0'));
  return std::countr_zero(static_cast<uint32_t>(_mm_movemask_epi8(ends)) | 1U << PIECE);
}
#else
constexpr int PIECE = sizeof(uint64_t);

int lengthInPiece(const char* text) {
  constexpr uint64_t EACH = 0x0101010101010101U;
  uint64_t piece = 0;
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(&piece, text, sizeof piece);
  } else {
    for (int i = PIECE; i-- > 0;) piece = piece << 8 | static_cast<unsigned char>(text[i]);
  }
  // The borrow of a byte that is found may only mark bytes behind it.
  const auto zeros = [](uint64_t value) { return (value - EACH) & ~value & EACH * 0x80; };
  return std::countr_zero(zeros(piece) | zeros(piece ^ EACH * '\n') | zeros(piece ^ EACH * '\r')) / 8;
}
#endif

// The first LF, CR or NUL of first..last, or last.
const char* findLineEnd(const char* first, const char* last) {
  for (; last - first >= PIECE; first += PIECE) {
    const int length = lengthInPiece(first);
    if (length < PIECE) return first + length;
  }
  return std::find_if(first, last, endsLine);
}

int openForAppending(const char* name) {
  if (!fitsNameBlock(name)) return -1;
  int handle = zvplatform::openFile(name, zvplatform::READ_WRITE);
  if (handle == -1) handle = zvplatform::createFile(name);
  if (handle != -1 && zvplatform::seekToEnd(handle) == -1) {
    zvplatform::closeFile(handle);
    handle = -1;
  }
  return handle;
}

}  // namespace

ZV_DEFINE_FULL(ZVFile, ZVObject)

ZVFile::ZVFile() = default;

ZVFile::~ZVFile() { empty(); }

void ZVFile::init() {
  mode_ = ZV_FILE_READ;
  bits_ = 0;
  fileHandle_ = -1;
  pArchive_ = nullptr;
  pFileBuffer_.reset();
  pTopBuffer_ = nullptr;
  numberOfBufferedBytes_ = 0;
  byteOrder_ = ZV_BYTE_ORDER_FILE;
  pFileName_.reset();
  pPathName_.reset();
}

void ZVFile::ZVFiledeepCopy(const ZVFile& other) {
  ZVObject::copyObject(&other);
  empty();
  if (other.isOpen() || other.fileHandle_ != -1) return;
  mode_ = other.mode_;
  bits_ = other.bits_;
  fileHandle_ = other.fileHandle_;
  pArchive_ = other.pArchive_;
  byteOrder_ = other.byteOrder_;
}

void ZVFile::ZVFileattributeCopy(const ZVFile& other) {
  ZVObject::copyAttributes(&other);
  empty();
}

int ZVFile::openHandle(const char* name, ZVFileModeEnum mode) {
  switch (mode) {
    case ZV_FILE_READ:
    case ZV_FILE_READ_BINARY:
    case ZV_FILE_READ_ASCII:
      return zvplatform::openFile(name, zvplatform::READ);
    case ZV_FILE_WRITE:
    case ZV_FILE_READ_WRITE:
    case ZV_FILE_WRITE_BINARY:
    case ZV_FILE_WRITE_ASCII:
      return zvplatform::createFile(name);
    case ZV_FILE_APPEND:
      return zvInternalOpenAppend(name, &byteOrder_);
  }
  return -1;
}

void ZVFile::prepareBuffer() {
  if (!buffered()) return;
  pFileBuffer_.reset(new char[FILE_BUFFER_SIZE]);
  std::memset(pFileBuffer_.get(), 0, LATE_REFILL);
  pTopBuffer_ = pFileBuffer_.get();
  numberOfBufferedBytes_ = 0;
}

ZVFileCodeEnum ZVFile::open(const char* name, ZVFileModeEnum mode) {
  // The name may be this file's own, which empty frees.
  char ownName[NAME_BLOCK_SIZE];
  bool usable = fitsNameBlock(name);
  fillNameBlock(ownName, name);
  empty();
  buffered(0);
  endOfFile(0);
  error(1);
  if (!name) return ZV_FILE_OPEN_ERROR;
  int handle = usable ? openHandle(ownName, mode) : -1;
  buffered(readsAhead(mode));
  byteOrder_ = ZV_BYTE_ORDER_FILE;
  if (handle != -1) {
    isOpen(1);
    error(0);
    pFileName(ownName);
    prepareBuffer();
  }
  mode_ = mode;
  fileHandle_ = handle;
  return handle != -1 ? ZV_FILE_OK : ZV_FILE_OPEN_ERROR;
}

ZVFileCodeEnum ZVFile::close() {
  error(1);
  if (!isOpen()) return ZV_FILE_CLOSE_ERROR;
  flush();
  int closed = zvplatform::closeFile(fileHandle_);
  // The number is the system's again, also after a failure: another file may have it next.
  fileHandle_ = -1;
  isOpen(0);
  if (closed == -1) return ZV_FILE_CLOSE_ERROR;
  error(0);
  pFileName(nullptr);
  return ZV_FILE_OK;
}

void ZVFile::empty() {
  if (isAttached()) {
    detach(1);
  } else if (isOpen()) {
    close();
  }
  pFileBuffer_.reset();
  pTopBuffer_ = nullptr;
  numberOfBufferedBytes_ = 0;
  pFileName_.reset();
  pPathName_.reset();
  buffered(0);
  storedOnDisk(0);
}

void ZVFile::attach(CArchive* archive) {
  empty();
  buffered(0);
  endOfFile(0);
  error(archive == nullptr);
  if (!archive) return;
  isAttached(1);
  pArchive_ = archive;
  if (archive->IsStoring()) {
    mode_ = ZV_FILE_WRITE;
  } else {
    mode_ = ZV_FILE_READ;
    byteOrder_ = ZV_BYTE_ORDER_FILE;
  }
}

void ZVFile::attach(int handle, ZVFileModeEnum mode) {
  empty();
  endOfFile(0);
  isAttached(1);
  fileHandle_ = handle;
  mode_ = mode;
  error(0);
  buffered(readsAhead(mode));
  prepareBuffer();
}

void ZVFile::detach(int writeEndMarker) {
  if (!isAttached()) {
    error(1);
    return;
  }
  if (writeEndMarker && marksEnd(mode_)) writeEndOfFile();
  flush();
  isAttached(0);
  pArchive_ = nullptr;
  fileHandle_ = -1;
  error(0);
}

void ZVFile::flush() {
  bool writing = writesText(mode_) || mode_ == ZV_FILE_WRITE_BINARY;
  if (writing && isAttached() && pArchive_) pArchive_->Flush();
}

ZVFileCodeEnum ZVFile::writeEndOfFile() {
  if (!marksEnd(mode_) || !isAttached() || !pArchive_) return ZV_FILE_OK;
  ZVFileCodeEnum result = writeString(END_MARKER);
  if (result == ZV_FILE_OK) result = writeString(END_MARKER_LINE_END);
  if (result != ZV_FILE_OK) error(1);
  return result;
}

ZVFileCodeEnum ZVFile::writeString(const char* text) {
  ZVFileCodeEnum result = ZV_FILE_WRITE_ERROR;
  if (text && writesText(mode_)) result = writeNormalString(text);
  if (result != ZV_FILE_OK) error(1);
  return result;
}

ZVFileCodeEnum ZVFile::writeNormalString(const char* text) {
  if (isAttached() && pArchive_) {
    pArchive_->WriteString(text);
    return ZV_FILE_OK;
  }
  return hasHandle() && zvInternalWrite(fileHandle_, &byteOrder_, text) ? ZV_FILE_OK : ZV_FILE_WRITE_ERROR;
}

ZVFileCodeEnum ZVFile::writeBinary(const char* data, int count) {
  bool written = mode_ == ZV_FILE_WRITE_BINARY && data && count >= 0 && hasHandle() &&
                 zvplatform::writeFile(fileHandle_, data, count) != -1;
  if (written) return ZV_FILE_OK;
  error(1);
  return ZV_FILE_WRITE_ERROR;
}

ZVFileCodeEnum ZVFile::readString(ZVStringHandle& text) {
  ZVFileCodeEnum result = ZV_FILE_READ_ERROR;
  text.empty();
  if (!endOfFile() && readsText(mode_)) result = readNormalString(text);
  if (result != ZV_FILE_OK) error(1);
  return result;
}

ZVFileCodeEnum ZVFile::readNormalString(ZVStringHandle& text) {
  if (buffered()) return readBufferedString(text);
  if (isAttached() && pArchive_) return readArchiveString(text);
  return hasHandle() ? readHandleString(text) : ZV_FILE_READ_ERROR;
}

// Takes whole runs up to the next line end or the next point where a refill is due.
ZVFileCodeEnum ZVFile::readBufferedString(ZVStringHandle& text) {
  int32_t length = 0;
  while (int run = obtainBufferedRun()) {
    const char* first = pTopBuffer_;
    const char* last = findLineEnd(first, first + run);
    auto count = static_cast<int>(last - first);
    if (length > LONGEST_LINE - run) return ZV_FILE_READ_ERROR;
    length += count;
    const bool ended = count < run && *last != '\0';
    text.append(first, count, ended ? "\n" : "");
    takeBuffered(count);
    if (count == run) continue;

    const char second = *last == '\n' ? '\r' : '\n';  // of a line end of two characters
    if (ended && count + 1 < run) {
      takeBuffered(last[1] == second ? 2 : 1);
      return ZV_FILE_OK;
    }
    takeBuffered(1);
    if (!ended) {
      endOfFile(1);
      return length > 0 ? ZV_FILE_OK : ZV_FILE_READ_ERROR;
    }
    if (lookAheadBufferedChar() == second) nextBufferedChar();
    return ZV_FILE_OK;
  }
  return length > 0 && endOfFile() ? ZV_FILE_OK : ZV_FILE_READ_ERROR;
}

ZVFileCodeEnum ZVFile::readArchiveString(ZVStringHandle& text) {
  CString line;
  if (!pArchive_->ReadString(line)) {
    endOfFile(1);
    return ZV_FILE_READ_ERROR;
  }
  text.appendString(line);
  if (std::strcmp(text.pString(), END_MARKER) != 0) return ZV_FILE_OK;
  text.empty();
  endOfFile(1);
  return ZV_FILE_READ_ERROR;
}

ZVFileCodeEnum ZVFile::readHandleString(ZVStringHandle& text) {
  int ended = 0;
  int done = zvInternalRead(fileHandle_, &byteOrder_, text, &ended, mode_ == ZV_FILE_READ_ASCII);
  if (ended) {
    text.empty();
    endOfFile(1);
  }
  return done ? ZV_FILE_OK : ZV_FILE_READ_ERROR;
}

ZVFileCodeEnum ZVFile::readBinary(char* data, int& count) {
  int want = count;
  ZVFileCodeEnum result = ZV_FILE_READ_ERROR;
  if (data && want > 0 && !endOfFile() && mode_ == ZV_FILE_READ_BINARY) {
    result = buffered() ? bufferedReadBinary(data, count) : unbufferedReadBinary(data, count);
  }
  if (result != ZV_FILE_OK) {
    error(1);
  } else if (count < want) {
    endOfFile(1);
  }
  return result;
}

ZVFileCodeEnum ZVFile::bufferedReadBinary(char* data, int& count) {
  int want = count;
  for (count = 0; count < want;) {
    int run = std::min(obtainBufferedRun(), want - count);
    if (run == 0) return endOfFile() ? ZV_FILE_OK : ZV_FILE_READ_ERROR;
    std::memcpy(data + count, pTopBuffer_, static_cast<size_t>(run));
    takeBuffered(run);
    count += run;
  }
  return ZV_FILE_OK;
}

ZVFileCodeEnum ZVFile::unbufferedReadBinary(char* data, int& count) {
  if (!hasHandle()) return ZV_FILE_READ_ERROR;
  int want = count;
  int32_t arrived = 1;
  for (count = 0; count < want && arrived > 0; count += std::max(arrived, 0)) {
    arrived = zvplatform::readFile(fileHandle_, data + count, want - count);
  }
  return arrived == -1 ? ZV_FILE_READ_ERROR : ZV_FILE_OK;
}

int32_t ZVFile::sizeOf() const {
  size_t size = sizeof *this + (pFileBuffer_ ? FILE_BUFFER_SIZE : 0);
  if (pFileName_) size += std::strlen(pFileName_.get());
  if (pPathName_) size += std::strlen(pPathName_.get());
  return static_cast<int32_t>(size);
}

bool ZVFile::refill() {
  char* start = pFileBuffer_.get();
  auto unread = static_cast<size_t>(numberOfBufferedBytes_);
  std::memmove(start, pTopBuffer_, unread);
  pTopBuffer_ = start;
  int32_t arrived =
      zvplatform::readFile(fileHandle_, start + unread, FILE_BUFFER_SIZE - numberOfBufferedBytes_);
  if (arrived == -1) return false;
  numberOfBufferedBytes_ += arrived;
  return true;
}

int ZVFile::obtainBufferedRun() {
  if (numberOfBufferedBytes_ > EARLY_REFILL) return numberOfBufferedBytes_ - EARLY_REFILL;
  bool due = numberOfBufferedBytes_ == EARLY_REFILL || numberOfBufferedBytes_ < LATE_REFILL;
  bool sound = !due || !pFileBuffer_ || !hasHandle() || refill();
  if (numberOfBufferedBytes_ > EARLY_REFILL) return numberOfBufferedBytes_ - EARLY_REFILL;
  if (numberOfBufferedBytes_ >= LATE_REFILL) return numberOfBufferedBytes_ - LATE_REFILL + 1;
  if (numberOfBufferedBytes_ >= 1) return 1;
  if (sound) {
    endOfFile(1);
  } else {
    error(1);
  }
  return 0;
}

char ZVFile::nextBufferedByte() {
  if (!buffered()) {
    error(1);
    return '\0';
  }
  if (obtainBufferedRun() == 0) return '\0';
  char byte = *pTopBuffer_;
  takeBuffered(1);
  return byte;
}

char ZVFile::lookAheadBufferedChar() const {
  return buffered() && numberOfBufferedBytes_ >= 1 ? *pTopBuffer_ : '\0';
}

char* ZVFile::pFileBuffer(char* buffer) {
  if (buffer != pFileBuffer_.get()) pFileBuffer_.reset(buffer);
  return buffer;
}

char* ZVFile::takeFileBuffer() {
  pTopBuffer_ = nullptr;
  numberOfBufferedBytes_ = 0;
  return pFileBuffer_.release();
}

char* ZVFile::nameBlock(std::unique_ptr<char[]>& block) {
  if (!block) block = std::make_unique<char[]>(NAME_BLOCK_SIZE);
  return block.get();
}

char* ZVFile::pFileName(const char* name) {
  char* own = pFileName();
  char fileName[NAME_BLOCK_SIZE];
  fillNameBlock(own, name);
  pPathName(nullptr);
  separatePathFromFile(own, fileName, pPathName());
  return own;
}

char* ZVFile::pPathName(const char* path) {
  char* own = pPathName();
  fillNameBlock(own, path);
  return own;
}

int ZVFile::searchForToken(const char* text, const char* set, int direction) {
  if (!text || !set || (direction != '+' && direction != '-')) return -1;
  int found = -1;
  for (const char* place = std::strpbrk(text, set); place; place = std::strpbrk(place + 1, set)) {
    found = static_cast<int>(place - text);
    if (direction == '+') break;
  }
  return found;
}

int ZVFile::fileExist(const char* name) {
  int handle = fitsNameBlock(name) ? zvplatform::openFile(name, zvplatform::READ) : -1;
  if (handle == -1) return 0;
  zvplatform::closeFile(handle);
  return 1;
}

int ZVFile::renameUnique(char* name) {
  if (!fitsNameBlock(name)) return 0;
  char base[NAME_BLOCK_SIZE];
  copyText(base, name);
  char* point = std::strrchr(base, '.');
  const char* extension = point ? point + 1 : "";
  if (point) *point = '\0';
  for (int i = 1; i <= 999; ++i) {
    char candidate[2 * NAME_BLOCK_SIZE];
    std::snprintf(candidate, sizeof candidate, "%s%d.%s", base, i, extension);
    if (!fitsNameBlock(candidate)) return 0;
    copyText(name, candidate);
    if (i < 999 && !fileExist(name)) return 1;
  }
  return 0;
}

void ZVFile::separatePathFromFile(const char* fullName, char* fileName, char* pathName) {
  if (!fitsNameBlock(fullName) || !fileName || !pathName) return;
  // The results may lie over the argument.
  char name[NAME_BLOCK_SIZE];
  copyText(name, fullName);
  int separator = searchForToken(name, "/\\:", '-');
  copyText(fileName, name + (separator + 1));
  if (separator < 0) return;
  name[separator + 1] = '\0';
  copyText(pathName, name);
}

int zvInternalOpenAppend(const char* name, ZVByteOrderEnum*) { return openForAppending(name); }

int zvInternalOpenAppendBin(const char* name) { return openForAppending(name); }

int zvInternalWrite(int handle, ZVByteOrderEnum*, const char* text) {
  if (!text) return 0;
  for (size_t left = std::strlen(text); left > 0;) {
    auto count = std::min(left, static_cast<size_t>(std::numeric_limits<int32_t>::max()));
    if (zvplatform::writeFile(handle, text, static_cast<int32_t>(count)) == -1) return 0;
    text += count;
    left -= count;
  }
  return 1;
}

int zvInternalRead(int handle, ZVByteOrderEnum*, ZVStringHandle& text, int* endOfFile, int) {
  text.empty();
  bool seenLF = false;
  for (int32_t length = 0; length < LONGEST_LINE; ++length) {
    char* end = text.obtainAppendBuffer(1);
    int32_t arrived = zvplatform::readFile(handle, end, 1);
    end[arrived == 1 ? 1 : 0] = '\0';
    if (arrived != 1) {
      *endOfFile = 1;
      return arrived != -1;
    }
    if (*end == '\r') return 1;
    if (seenLF) return 0;
    seenLF = *end == '\n';
  }
  return 0;
}

int zvInternalFeof(int, int endOfFile) { return endOfFile; }
