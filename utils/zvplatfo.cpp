#include "utils/zvplatfo.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

#if !defined(_WIN32)
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#endif

void zvAssertionFailed(const char* condition, const char* file, int line) {
  std::fprintf(stderr, "Assertion failed: %s, file %s, line %d\n", condition, file, line);
  std::fflush(stderr);
  std::abort();
}

namespace zvplatform {

namespace {

// Handles with a failed write, until they are closed. The list is nearly always empty.
struct FailedHandle {
  int handle;
  FailedHandle* next;
};
FailedHandle* failedHandles = nullptr;

// Gives 1 if the handle was on the list.
int forgetFailure(int handle) {
  for (FailedHandle** link = &failedHandles; *link; link = &(*link)->next) {
    if ((*link)->handle == handle) {
      FailedHandle* found = *link;
      *link = found->next;
      delete found;
      return 1;
    }
  }
  return 0;
}

void rememberFailure(int handle) {
  for (const FailedHandle* entry = failedHandles; entry; entry = entry->next) {
    if (entry->handle == handle) return;
  }
  auto* entry = new (std::nothrow) FailedHandle{handle, failedHandles};
  if (entry) failedHandles = entry;
}

// A new handle starts clean, also where its number belonged to a file that failed and was closed elsewhere.
int freshHandle(int handle) {
  if (handle != -1) forgetFailure(handle);
  return handle;
}

int32_t systemWrite(int handle, const char* buffer, int32_t count);

}  // namespace

int32_t writeFile(int handle, const char* buffer, int32_t count) {
  int32_t done = 0;
  while (done < count) {
    int32_t step = systemWrite(handle, buffer + done, count - done);
    if (step <= 0) {
      rememberFailure(handle);
      return -1;
    }
    done += step;
  }
  return count;
}

#if defined(_WIN32)

namespace {

int32_t systemWrite(int handle, const char* buffer, int32_t count) {
  return static_cast<int32_t>(_hwrite(handle, buffer, count));
}

}  // namespace

int openFile(const char* name, Access access) { return freshHandle(_lopen(name, access)); }

int createFile(const char* name) { return freshHandle(_lcreat(name, 0)); }

int32_t readFile(int handle, char* buffer, int32_t count) {
  int32_t done = 0;
  while (done < count) {
    auto step = static_cast<int32_t>(_hread(handle, buffer + done, count - done));
    if (step < 0 && done == 0) return -1;
    if (step <= 0) break;
    done += step;
  }
  return done;
}

int64_t seekToEnd(int handle) { return _llseek(handle, 0, 2); }

int closeFile(int handle) {
  int failed = forgetFailure(handle);
  return _lclose(handle) == 0 && !failed ? 0 : -1;
}

void* loadModule(const char* name) { return LoadLibraryA(name); }

int freeModule(void* module) { return FreeLibrary(static_cast<HMODULE>(module)) ? 1 : 0; }

uint32_t moduleFileName(void* module, char* buffer, uint32_t size) {
  return GetModuleFileNameA(static_cast<HMODULE>(module), buffer, size);
}

void* functionAddress(void* module, const char* name) {
  FARPROC address = GetProcAddress(static_cast<HMODULE>(module), name);
  void* result = nullptr;
  static_assert(sizeof result == sizeof address);
  std::memcpy(&result, &address, sizeof result);
  return result;
}

char* workingDirectory(char* buffer, int size) {
  DWORD length = size > 0 ? GetCurrentDirectoryA(static_cast<DWORD>(size), buffer) : 0;
  if (length == 0 || length >= static_cast<DWORD>(size)) return nullptr;
  return buffer;
}

void* obtainLargePage() { return std::malloc(LARGE_PAGE); }
void releaseLargePage(void* page) { std::free(page); }

void showNotice(const char* caption, const char* text) {
  MessageBoxA(GetDesktopWindow(), text, caption, MB_OK | MB_ICONINFORMATION);
}

#else

namespace {

int32_t systemWrite(int handle, const char* buffer, int32_t count) {
  ssize_t step = 0;
  do {
    step = ::write(handle, buffer, static_cast<size_t>(count));
  } while (step == -1 && errno == EINTR);
  return static_cast<int32_t>(step);
}

int retryingOpen(const char* name, int flags) {
  int handle = -1;
  do {
    handle = ::open(name, flags | O_CLOEXEC, 0666);
  } while (handle == -1 && errno == EINTR);
  return handle;
}

}  // namespace

int openFile(const char* name, Access access) {
  int handle = retryingOpen(name, access == READ_WRITE ? O_RDWR : O_RDONLY);
  // A file that may only be written is good enough, and must not be taken for a missing one.
  if (handle == -1 && errno == EACCES && access == READ_WRITE) handle = retryingOpen(name, O_WRONLY);
  return freshHandle(handle);
}

int createFile(const char* name) {
  int handle = retryingOpen(name, O_RDWR | O_CREAT | O_TRUNC);
  // A target that may only be written, such as a pipe of another user, is good enough.
  if (handle == -1 && errno == EACCES) handle = retryingOpen(name, O_WRONLY | O_CREAT | O_TRUNC);
  return freshHandle(handle);
}

int32_t readFile(int handle, char* buffer, int32_t count) {
  int32_t done = 0;
  while (done < count) {
    ssize_t step = ::read(handle, buffer + done, static_cast<size_t>(count - done));
    if (step == -1 && errno == EINTR) continue;
    if (step == -1 && done == 0) return -1;
    if (step <= 0) break;
    done += static_cast<int32_t>(step);
  }
  return done;
}

int64_t seekToEnd(int handle) { return ::lseek(handle, 0, SEEK_END); }

int closeFile(int handle) {
  int failed = forgetFailure(handle);
  return ::close(handle) == 0 && !failed ? 0 : -1;
}

void* loadModule(const char* name) { return ::dlopen(name, RTLD_NOW | RTLD_LOCAL); }

int freeModule(void* module) { return ::dlclose(module) == 0 ? 1 : 0; }

uint32_t moduleFileName(void* module, char* buffer, uint32_t size) {
  if (size == 0) return 0;
  if (!module) {
    ssize_t length = ::readlink("/proc/self/exe", buffer, size);
    if (length < 0) length = 0;
    bool fits = static_cast<uint32_t>(length) < size;
    buffer[fits ? static_cast<uint32_t>(length) : size - 1] = '\0';
    return static_cast<uint32_t>(length);
  }
  struct link_map* map = nullptr;
  if (::dlinfo(module, RTLD_DI_LINKMAP, &map) != 0 || !map) return 0;
  size_t length = std::min(std::strlen(map->l_name), static_cast<size_t>(size));
  std::memcpy(buffer, map->l_name, std::min(length, static_cast<size_t>(size - 1)));
  buffer[std::min(length, static_cast<size_t>(size - 1))] = '\0';
  return static_cast<uint32_t>(length);
}

void* functionAddress(void* module, const char* name) { return ::dlsym(module, name); }

char* workingDirectory(char* buffer, int size) {
  return size > 0 ? ::getcwd(buffer, static_cast<size_t>(size)) : nullptr;
}

// Twice the size holds one page at its own alignment; what lies around it is given back.
void* obtainLargePage() {
  void* memory = ::mmap(nullptr, 2 * LARGE_PAGE, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) return nullptr;
  char* const first = static_cast<char*>(memory);
  const size_t before = (LARGE_PAGE - reinterpret_cast<uintptr_t>(first) % LARGE_PAGE) % LARGE_PAGE;
  char* const page = first + before;
  if (before > 0) ::munmap(first, before);
  ::munmap(page + LARGE_PAGE, LARGE_PAGE - before);
#if defined(MADV_HUGEPAGE)
  ::madvise(page, LARGE_PAGE, MADV_HUGEPAGE);
#endif
  return page;
}

void releaseLargePage(void* page) {
  if (page) ::munmap(page, LARGE_PAGE);
}

void showNotice(const char* caption, const char* text) {
  std::fprintf(stderr, "%s: %s\n", caption, text ? text : "");
  std::fflush(stderr);
}

#endif

}  // namespace zvplatform

#if defined(_WIN32)
extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
  if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(instance);
  return TRUE;
}
#endif
