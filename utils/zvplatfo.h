// The platform layer: the few services that the library takes from the operating system, with one meaning
// on every target. This pair of files is the only place that knows which system it runs on.
//
// Handles are the system's own numbers; -1 is no handle and the failure value. Files are opened in binary
// mode. Reads and writes that the system cuts short or interrupts are continued here.
#ifndef ZV_ZVPLATFO_H
#define ZV_ZVPLATFO_H

#include <cstddef>
#include <cstdint>

#if defined(_WIN32)
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
#if defined(ZV_BUILDING_LIBRARY)
#define ZV_EXPORT __declspec(dllexport)
#else
#define ZV_EXPORT __declspec(dllimport)
#endif
#else
#define ZV_EXPORT __attribute__((visibility("default")))

// The plain structures of the window system, viewed in place by points, sizes and rectangles: they may
// alias the coordinates that lie there.
struct __attribute__((may_alias)) tagPOINT {
  int32_t x;
  int32_t y;
};
struct __attribute__((may_alias)) tagSIZE {
  int32_t cx;
  int32_t cy;
};
struct __attribute__((may_alias)) tagRECT {
  int32_t left;
  int32_t top;
  int32_t right;
  int32_t bottom;
};
#endif

// Reports a broken contract on the error stream and ends the process by abort.
[[noreturn]] ZV_EXPORT void zvAssertionFailed(const char* condition, const char* file, int line);

// A condition that the caller must keep, checked in every build type. The report carries the condition's
// text exactly as written, so the wording of a condition is part of the contract.
#define ZV_REQUIRE(condition) \
  (static_cast<bool>(condition) ? static_cast<void>(0) : zvAssertionFailed(#condition, __FILE__, __LINE__))

namespace zvplatform {

// How an existing file is opened.
enum Access : int { READ = 0, READ_WRITE = 2 };

// Opens an existing file; -1 if that fails. READ_WRITE is content with a file that may only be written.
int openFile(const char* name, Access access);

// Creates a file or truncates it, open for writing; -1 if that fails.
int createFile(const char* name);

// Reads until count bytes are there, the file ends or a fault stops it. Gives the number read, or -1 if a
// fault came before the first byte: what was read is never lost, and the next call meets what stopped this
// one.
int32_t readFile(int handle, char* buffer, int32_t count);

// Writes count bytes, all or none reported: gives count, or -1 on failure. A failure is remembered for the
// handle, and closeFile of it fails.
int32_t writeFile(int handle, const char* buffer, int32_t count);

// Moves to the end of the file; -1 on failure.
int64_t seekToEnd(int handle);

// Closes the handle in any case. Gives 0, or -1 if the close or any write to the handle failed.
int closeFile(int handle);

// Modules of the dynamic loader; null on failure.
void* loadModule(const char* name);
// Gives 1 on success.
int freeModule(void* module);
// Writes the module's file name (null: the program's own) into buffer, at most size bytes with its NUL.
// Gives the number of characters written, size for a name that was cut, 0 on failure.
uint32_t moduleFileName(void* module, char* buffer, uint32_t size);
void* functionAddress(void* module, const char* name);

// Fills buffer with the working directory; null and an untouched buffer if it does not fit.
char* workingDirectory(char* buffer, int size);

// A piece of memory for data that fills many of them, null if there is none. The system is asked to make it
// one page where it can, which spares a fault for each of 512 small ones.
inline constexpr size_t LARGE_PAGE = size_t{2} << 20;
void* obtainLargePage();
void releaseLargePage(void* page);

// Shows one notice and blocks until it is answered: a message box, or a line on the error stream where
// there is no window system. A null text shows as an empty one.
void showNotice(const char* caption, const char* text);

}  // namespace zvplatform

#endif
