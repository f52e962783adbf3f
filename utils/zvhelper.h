// Small services: numbers for the layers above and for table sizes, modules of the dynamic loader, and the
// working directory. They hold no state.
#ifndef ZV_ZVHELPER_H
#define ZV_ZVHELPER_H

#include <cstdint>

#include "utils/zvplatfo.h"

extern "C" {

// The neighbours of n in a table of 31 primes from 2 to 160201 that grow by about a half: the smallest above
// n, the largest below n; 0 where the table ends.
ZV_EXPORT int32_t nextPrimeNumber(int32_t n);
ZV_EXPORT int32_t prevPrimeNumber(int32_t n);

// Of the absolute values; 0 divides by everything, so the result with one 0 is the other number.
ZV_EXPORT int32_t greatestCommonDivisor(int32_t a, int32_t b);

// The largest number of the random generator that the layers above use.
ZV_EXPORT int32_t maxRandomNumber();

// Fills buffer with the working directory, empty if that does not fit in size, and appends a backslash
// behind it if withSeparator is not 0. Gives buffer.
// REQUIRES: buffer has room for size characters and for the separator with its NUL.
ZV_EXPORT char* zvGetCurrentWorkingDir(char* buffer, int size, int withSeparator);

// Loads a module; null for a null name or on failure.
ZV_EXPORT void* getModuleHandle(const char* name);
// Writes the module's file name (null: the program's), cut at 253 characters. Gives the number of
// characters, 254 for a name that was cut, 0 on failure. REQUIRES: buffer has room for 254 bytes.
ZV_EXPORT uint32_t getModuleFileName(void* module, char* buffer);
// Lets a module go; gives null.
ZV_EXPORT void* freeModuleHandle(void* module);
// The address of a function of the module; null if either argument is null or there is none.
ZV_EXPORT void* getFunctionHandle(void* module, const char* name);

}  // extern "C"

#endif
