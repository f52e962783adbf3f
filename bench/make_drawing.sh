#!/bin/sh
# Turns the package graph in bench/data into a drawing for netdraw, and writes it as plain output of a layout
# program. The packages stand in rows and columns in the order of the file. Usage: make_drawing.sh >FILE
#
#   bench/make_drawing.sh >big.plain && netdraw import big.plain -o big.oml && netdraw overlaps big.oml
set -eu
cd "$(dirname "$0")"

# A box is as wide as its column less a gap; inches.
zcat data/debian-packages.tsv.gz | awk -F '\t' -v dx=1.5 -v dy=0.8 -v w=1.0 -v h=0.4 '
  { name[NR] = $1; targets[NR] = $4 }
  END {
    while (columns * columns < NR) ++columns
    rows = int((NR + columns - 1) / columns)
    print "graph", 1, columns * dx, rows * dy
    for (i = 1; i <= NR; ++i) {
      x = ((i - 1) % columns + 0.5) * dx
      y = (rows - int((i - 1) / columns) - 0.5) * dy
      print "node", name[i], x, y, w, h, name[i], "solid box black white"
    }
    for (i = 1; i <= NR; ++i) {
      count = split(targets[i], target, " ")
      for (k = 1; k <= count; ++k) print "edge", name[i], target[k], 0, "solid black"
    }
    print "stop"
  }'
