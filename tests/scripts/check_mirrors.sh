#!/bin/sh
# Every class of the library that has a mirror class is made in the tests of the mirror, and its mirror class
# exists. Usage: check_mirrors.sh SOURCE_FOLDER
set -eu
grep -hoE '^ *ZV_(SHAPE_[A-Z_]+|MIRROR)\(ZV[A-Za-z]+\)' "$1"/utils/*.h | sed 's/.*(\(.*\))/\1/' | sort -u >classes
grep -oE '^ *\{"ZV[A-Za-z]+"' "$1/tests/support/mirrored.h" | cut -d '"' -f 2 | sort -u >made
cut -d ' ' -f 1 "$1/tests/java/mirrors.txt" | sort >mirrors
grep -q ZVInt classes
comm -23 classes made | sed 's/$/ is not made in tests\/support\/mirrored.h/' >missing
comm -23 classes mirrors | sed 's/$/ is not in tests\/java\/mirrors.txt/' >>missing
cat missing
test ! -s missing
