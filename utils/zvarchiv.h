// Archives: line streams that a file can be attached to instead of a file of the operating system.
#ifndef ZV_ZVARCHIV_H
#define ZV_ZVARCHIV_H

#include <iosfwd>
#include <string>

#include "utils/zvplatfo.h"

// The small string that carries a line.
class ZV_EXPORT CString {
 public:
  CString() = default;
  CString(const char* text) { *this = text; }
  CString& operator=(const char* text) {
    text_ = text ? text : "";
    return *this;
  }

  operator const char*() const { return text_.c_str(); }
  int GetLength() const { return static_cast<int>(text_.size()); }

 private:
  friend class ZVStreamArchive;  // reads lines into the text itself

  std::string text_;
};

// What the library needs of an archive. An archive has one direction.
class ZV_EXPORT CArchive {
 public:
  CArchive() = default;
  CArchive(const CArchive&) = delete;
  CArchive& operator=(const CArchive&) = delete;
  virtual ~CArchive();

  // 1 for an archive that is written, 0 for one that is read.
  virtual int IsStoring() const = 0;
  // Reads one line, without its line end. Gives 0 and an empty line when there is none left.
  virtual int ReadString(CString& line) = 0;
  // Writes the text as it is.
  virtual void WriteString(const char* text) = 0;
  // Pushes out what the archive holds.
  virtual void Flush() = 0;
};

// An archive on a standard stream, which must live longer than the archive. Lines end with LF, CR LF or
// LF CR. A fault of the stream ends reading; what was not written shows in the stream's own state.
class ZV_EXPORT ZVStreamArchive : public CArchive {
 public:
  explicit ZVStreamArchive(std::istream& stream) : input_(&stream) {}
  explicit ZVStreamArchive(std::ostream& stream) : output_(&stream) {}

  int IsStoring() const override { return output_ != nullptr; }
  int ReadString(CString& line) override;
  void WriteString(const char* text) override;
  void Flush() override;

 private:
  std::istream* input_ = nullptr;
  std::ostream* output_ = nullptr;
};

#endif
