// Writes the numbers that the grammar gives its names, as a header for the rest of the layer.
#include <cstdio>

#include "examples/netdraw/nettable.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: netkeys HEADER\n");
    return 2;
  }
  ZVOMLStatic grammar(nettable::TYPES, nettable::SECTIONS, nettable::VALUES, nettable::DEFINITIONS);
  return grammar.writeIndexDefinitions(argv[1]) == ZV_FILE_OK ? 0 : 1;
}
