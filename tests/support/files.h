// The whole content of a file, there and back.
#ifndef ZV_TESTS_FILES_H
#define ZV_TESTS_FILES_H

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

// A new file: overwriting one that exists makes some file systems wait for the disk.
inline void writeFile(const std::string& path, const std::string& content) {
  std::remove(path.c_str());
  std::ofstream(path, std::ios::binary) << content;
}

inline std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

#endif
