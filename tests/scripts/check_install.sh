#!/bin/sh
# Installs the built library below the current folder, and builds and runs a program against that alone.
# Usage: check_install.sh cmake|pkg-config BUILD_FOLDER CONSUMER_FOLDER COMPILER [FLAGS]
set -eu
build=$2
consumer=$3
compiler=$4
flags=${5:-}

rm -rf prefix consumer
cmake --install "$build" --prefix "$PWD/prefix" >install.log
mkdir consumer
case $1 in
  cmake)
    cmake -S "$consumer" -B consumer -DCMAKE_PREFIX_PATH="$PWD/prefix" -DCMAKE_CXX_COMPILER="$compiler" \
      -DCMAKE_CXX_FLAGS="$flags" >>install.log
    cmake --build consumer >>install.log
    ;;
  pkg-config)
    export PKG_CONFIG_PATH="$(dirname "$(find "$PWD/prefix" -name zvutils.pc)")"
    # The flags are lists of words.
    $compiler $flags $(pkg-config --cflags zvutils) "$consumer/main.cpp" -o consumer/consumer \
      $(pkg-config --libs zvutils) -Wl,-rpath,"$(pkg-config --variable=libdir zvutils)"
    ;;
  *)
    exit 2
    ;;
esac
ldd consumer/consumer | grep -q "$PWD/prefix/.*libzvutils"
consumer/consumer
