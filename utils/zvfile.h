// The file object. It stands on a file that it opened itself, on a handle that it was given, or on an
// archive that it was given. Text is read through a read-ahead buffer; writing goes straight through.
//
// Results: every operation gives a ZVFileCodeEnum and leaves two sticky flags, error and endOfFile, which
// the next open, attach or successful close resets. Reading past the end sets both. A fault of the system
// sets error alone where reading goes ahead, and both byte by byte. Nothing throws and nothing asserts on bad
// arguments.
// Ownership: the file owns the handle that it opened, its read-ahead buffer and its two name blocks; what
// was attached stays the caller's.
// A name of more than 259 characters is no name of a file: it fails to open and is copied nowhere.
// Cost: one system call for nearly 10240 bytes read through the buffer, one for each string written.
#ifndef ZV_ZVFILE_H
#define ZV_ZVFILE_H

#include <memory>

#include "utils/zvobject.h"

class CArchive;
class ZVStringHandle;

// How a file is opened. READ, READ_ASCII and READ_BINARY read ahead; READ_WRITE reads byte by byte.
enum ZVFileModeEnum : int32_t {
  ZV_FILE_READ = 0,
  ZV_FILE_WRITE = 1,
  ZV_FILE_READ_WRITE = 2,
  ZV_FILE_APPEND = 3,
  ZV_FILE_READ_BINARY = 4,
  ZV_FILE_WRITE_BINARY = 5,
  ZV_FILE_READ_ASCII = 6,
  ZV_FILE_WRITE_ASCII = 7
};

// The result of all file work.
enum ZVFileCodeEnum : int32_t {
  ZV_FILE_OK = 0,
  ZV_FILE_OPEN_ERROR = 2,
  ZV_FILE_CLOSE_ERROR = 3,    // also: the file was not open
  ZV_FILE_READ_ERROR = 4,     // also: the mode does not allow it, or the file has ended
  ZV_FILE_WRITE_ERROR = 5,    // also: the mode does not allow it
  ZV_FILE_BAD_READ_CALL = 6,  // ZVOMLFile::readOMLFile without a file name or grammar
  ZV_FILE_BAD_WRITE_CALL = 7  // ZVOMLFile::writeOMLFile without a file name or grammar
};

// Carried with each file. Data are moved as bytes, so there is but one value.
enum ZVByteOrderEnum : int32_t { ZV_BYTE_ORDER_FILE = 2 };

class ZV_EXPORT ZVFile : public ZVObject {
 public:
  ZVFile();
  ~ZVFile() override;

  int isAttached() const { return flag(ATTACHED); }
  // Whether this object opened the file; an attached file does not count as open.
  int isOpen() const { return flag(OPEN); }
  int error() const { return flag(ERROR_FLAG); }
  int endOfFile() const { return flag(END_OF_FILE); }
  int storedOnDisk() const { return flag(STORED_ON_DISK); }
  ZVFileModeEnum mode() const { return mode_; }
  int fileHandle() const { return fileHandle_; }
  CArchive* pArchive() const { return pArchive_; }
  // The name as given to open, and its directory part with the last separator; "" for none. The blocks of
  // 260 bytes stay the file's until empty.
  char* pFileName() { return nameBlock(pFileName_); }
  char* pPathName() { return nameBlock(pPathName_); }
  // The same, or null if no block was made yet.
  const char* pQueryFileName() const { return pFileName_.get(); }
  const char* pQueryPathName() const { return pPathName_.get(); }

  // Ends what was there before and opens the file.
  virtual ZVFileCodeEnum open(const char* name, ZVFileModeEnum mode);
  // Fails on a file that is not open. A write that failed lets the close fail; the file is not open
  // afterwards in any case.
  virtual ZVFileCodeEnum close();
  // Ends what was there before and takes the direction from the archive. Null is an error.
  virtual void attach(CArchive* archive);
  virtual void attach(int handle, ZVFileModeEnum mode);
  // Lets go what is attached, behind an end marker if that is wanted and the mode is WRITE or WRITE_ASCII.
  virtual void detach(int writeEndMarker);
  virtual void flush();
  // Writes the end marker to an archive in mode WRITE or WRITE_ASCII; anything else needs none.
  virtual ZVFileCodeEnum writeEndOfFile();
  // In modes WRITE, READ_WRITE, APPEND and WRITE_ASCII.
  virtual ZVFileCodeEnum writeString(const char* text);
  // In mode WRITE_BINARY.
  virtual ZVFileCodeEnum writeBinary(const char* data, int count);
  // One line, in modes READ, READ_WRITE and READ_ASCII. Read ahead, a line ends with LF, CR, CR LF or LF CR,
  // and its text with one LF; a NUL ends the file. From an archive it comes without a line end. Byte by
  // byte, a line ends with LF CR or CR, which its text keeps; the end of the file gives an empty text.
  virtual ZVFileCodeEnum readString(ZVStringHandle& text);
  // Up to count bytes in mode READ_BINARY; count becomes the number read. Fewer set endOfFile.
  virtual ZVFileCodeEnum readBinary(char* data, int& count);
  // The record, the read-ahead buffer and the names, in bytes.
  virtual int32_t sizeOf() const;

  // Detaches or closes, and frees the buffer and the name blocks.
  void empty();

  // The lowest ('+') or highest ('-') index in text of a character of set; -1 without one.
  static int searchForToken(const char* text, const char* set, int direction);
  // Whether the file can be opened for reading.
  static int fileExist(const char* name);
  // Puts the first number from 1 to 998 in front of the last point of name that gives a free name. Gives 0
  // if there is none, and name is changed all the same. REQUIRES: name has room for 260 bytes.
  static int renameUnique(char* name);
  // Splits behind the last of "/", "\\" and ":". Without one pathName is left alone. Does nothing if an
  // argument is null or fullName too long.
  static void separatePathFromFile(const char* fullName, char* fileName, char* pathName);

 protected:
  // The state as a whole, for a subclass that puts one file aside and reads another in between. It saves
  // what the reading forms give, with takeFileBuffer instead of pFileBuffer, and stores it back by the
  // setting forms.
  uint16_t bits() const { return bits_; }
  uint16_t bits(uint16_t bits) { return bits_ = bits; }
  ZVByteOrderEnum byteOrder() const { return byteOrder_; }
  ZVByteOrderEnum byteOrder(ZVByteOrderEnum order) { return byteOrder_ = order; }
  int numberOfBufferedBytes() const { return numberOfBufferedBytes_; }
  int numberOfBufferedBytes(int count) { return numberOfBufferedBytes_ = count; }
  char* pFileBuffer() const { return pFileBuffer_.get(); }
  // Frees the present buffer and takes over another of 10240 bytes, from new[].
  char* pFileBuffer(char* buffer);
  // Gives the present buffer to the caller; the file has none afterwards.
  char* takeFileBuffer();
  char* pTopBuffer() const { return pTopBuffer_; }
  char* pTopBuffer(char* place) { return pTopBuffer_ = place; }
  int isAttached(int on) { return flag(ATTACHED, on); }
  int isOpen(int on) { return flag(OPEN, on); }
  int buffered() const { return flag(BUFFERED); }
  int buffered(int on) { return flag(BUFFERED, on); }
  int error(int on) { return flag(ERROR_FLAG, on); }
  int endOfFile(int on) { return flag(END_OF_FILE, on); }
  int storedOnDisk(int on) { return flag(STORED_ON_DISK, on); }
  int fileHandle(int handle) { return fileHandle_ = handle; }
  CArchive* pArchive(CArchive* archive) { return pArchive_ = archive; }
  ZVFileModeEnum mode(ZVFileModeEnum mode) { return mode_ = mode; }
  // Sets both names; null, or a name that is too long, makes both empty.
  char* pFileName(const char* name);
  char* pPathName(const char* path);

  // The next byte of the read-ahead buffer, 0 at the end or on a fault. Refills the buffer when exactly 256
  // or fewer than 4 bytes are unread.
  char nextBufferedChar() { return nextBufferedByte(); }
  char nextBufferedByte();
  // The next byte without taking it; 0 if none is there.
  char lookAheadBufferedChar() const;

  ZV_SHAPE_FULL(ZVFile)

  enum Flag : uint16_t {
    ATTACHED = 1,
    OPEN = 2,
    BUFFERED = 4,
    ERROR_FLAG = 8,
    END_OF_FILE = 16,
    STORED_ON_DISK = 32
  };

  int flag(Flag bit) const { return (bits_ & bit) != 0; }
  int flag(Flag bit, int on) {
    bits_ = static_cast<uint16_t>(on ? bits_ | bit : bits_ & ~bit);
    return on != 0;
  }
  // Whether there is a handle to read from or write to.
  bool hasHandle() const { return fileHandle_ != -1 && (isOpen() || isAttached()); }
  static char* nameBlock(std::unique_ptr<char[]>& block);
  int openHandle(const char* name, ZVFileModeEnum mode);
  // An empty read-ahead buffer, if the mode asks for one.
  void prepareBuffer();

  ZVFileCodeEnum writeNormalString(const char* text);
  ZVFileCodeEnum readNormalString(ZVStringHandle& text);
  ZVFileCodeEnum readBufferedString(ZVStringHandle& text);
  ZVFileCodeEnum readArchiveString(ZVStringHandle& text);
  ZVFileCodeEnum readHandleString(ZVStringHandle& text);
  ZVFileCodeEnum bufferedReadBinary(char* data, int& count);
  ZVFileCodeEnum unbufferedReadBinary(char* data, int& count);
  // Moves the unread bytes to the front and reads more behind them; false on a fault.
  bool refill();
  // Refills if that is due. Gives how many bytes may be taken before it is due again; 0, with a flag set, at
  // the end or on a fault.
  int obtainBufferedRun();
  void takeBuffered(int count) {
    pTopBuffer_ += count;
    numberOfBufferedBytes_ -= count;
  }

  ZVFileModeEnum mode_ = ZV_FILE_READ;
  uint16_t bits_ = 0;
  int fileHandle_ = -1;
  CArchive* pArchive_ = nullptr;
  std::unique_ptr<char[]> pFileBuffer_;
  char* pTopBuffer_ = nullptr;
  int numberOfBufferedBytes_ = 0;
  ZVByteOrderEnum byteOrder_ = ZV_BYTE_ORDER_FILE;
  std::unique_ptr<char[]> pFileName_;
  std::unique_ptr<char[]> pPathName_;
};

// The operations on bare handles below the file object.
extern "C" {
// Opens a file for writing at its end, made if missing; -1 on failure.
ZV_EXPORT int zvInternalOpenAppend(const char* name, ZVByteOrderEnum* order);
ZV_EXPORT int zvInternalOpenAppendBin(const char* name);
// Writes the text; gives 1, or 0 on failure.
ZV_EXPORT int zvInternalWrite(int handle, ZVByteOrderEnum* order, const char* text);
// Reads one line byte by byte, up to CR, which stays in the text. Gives 0 on a fault and where LF is not
// followed by CR. Sets *endOfFile when no byte came, and leaves it alone otherwise.
ZV_EXPORT int zvInternalRead(int handle, ZVByteOrderEnum* order, ZVStringHandle& text, int* endOfFile,
                             int ascii);
// Gives endOfFile.
ZV_EXPORT int zvInternalFeof(int handle, int endOfFile);
}

#endif
