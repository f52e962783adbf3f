// The grammar of netdraw's files, in tables.
//
// Binary files hold the numbers that names get from the order of these tables: add new rows at the end only.
#ifndef NETDRAW_NETTABLE_H
#define NETDRAW_NETTABLE_H

#include "utils/zvomlsta.h"

namespace nettable {

inline constexpr const char* TYPES[] = {"graph", "node",   "edge",    "bend",   "note", "colors",
                                        "rgb",   "shapes", "outline", "vertex", nullptr};

inline constexpr const char* SECTIONS[] = {"extent", "place", "style", "line", "textBox", nullptr};

// The order of the shapes is that of Shape in netshape.h, of the patterns that of Pattern in netmodel.h, of
// the kinds of an outline (box, ellipse, polygon) that of Kind in netresrc.cpp.
inline constexpr ZVOMLStaticVEStruct VALUES[] = {
    {"box", 0},   {"ellipse", 1}, {"hexagon", 2}, {"house", 3},   {"octagon", 4}, {"chevron", 5},
    {"solid", 0}, {"dashed", 1},  {"dotted", 2},  {"polygon", 2}, {nullptr, 0}};

// Lengths are in thousandths of an inch, x to the right and y upward; a place is the node's centre.
// clang-format off
inline constexpr const char* DEFINITIONS[] = {
    "O $toplevel$", "{", "T graph", "}",

    "O graph", "{",
    "  F title S",
    "  F scale R",
    "  S extent", "{", "F width I R", "F height I R", "}",
    "  T node",
    "  T edge",
    "  T note",
    "}",

    "O node", "{",
    "  F title S R",
    "  F label S",
    "  S place", "{", "F x I R", "F y I R", "F width I R", "F height I R", "}",
    "  S style", "{", "E shape [ box .. chevron ]", "F filled B", "F color S", "F fill S", "}",
    "}",

    "O edge", "{",
    "  R source node R",
    "  R target node R",
    "  S line", "{", "F color S", "E pattern [ solid .. dotted ]", "}",
    "  T bend",
    "}",

    "O bend", "{", "F x I R", "F y I R", "}",

    "O note", "{", "F text S R", "}",

    // Shared colours and shapes, in tables. Their entries are counted from 0, and nodes and edges name them by
    // these indices. Earlier files have the fields color, fill and shape instead, which are no longer written.
    "O graph", "{",
    "  T colors",
    "  T shapes",
    "}",

    "O colors", "{", "T rgb", "}",

    "O rgb", "{", "F red I R", "F green I R", "F blue I R", "F transparent B", "}",

    "O shapes", "{", "T outline", "}",

    // Lengths are in thousandths of half the node's width and height, from its centre.
    "O outline", "{",
    "  E kind [ box ellipse polygon ] R",
    "  S textBox", "{", "F left I R", "F bottom I R", "F right I R", "F top I R", "}",
    "  T vertex",
    "}",

    "O vertex", "{", "F x I R", "F y I R", "}",

    "O node", "{", "S style", "{", "F shapeIndex I", "F colorIndex I", "F fillIndex I", "}", "}",

    "O edge", "{", "S line", "{", "F colorIndex I", "}", "}",
    nullptr};
// clang-format on

}  // namespace nettable

#endif
