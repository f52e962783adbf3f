// What both fuzz targets do with an input.
//
// The first byte of an input chooses the options of the read:
//   bit 0  ids are kept
//   bit 1  an expected object of type graph is given
//   bit 2  one error is the limit
//   bit 3  the check functions refuse
//   bits 4 to 7, if not 0: which of all calls of a callback gives a fatal message, or with bit 2 ends the run
// The rest is the file; behind "====" it is the file that the name "i" includes.
#ifndef ZV_FUZZ_READER_H
#define ZV_FUZZ_READER_H

#include <string>

// Reads the input in one form, then a good file with the same reader; throws where one of its checks fails.
// Gives whether the input was good.
bool readInput(const std::string& input, bool binary);

#endif
