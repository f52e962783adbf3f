// Reads the line-oriented output of a layout program into a drawing:
//
//   graph scale width height
//   node name x y width height label style shape color fillcolor
//   edge tail head n x1 y1 ... xn yn [label x y] style color
//   stop
//
// Lengths are in inches, y upward. Words are separated by blanks; a word in quotes may hold blanks, and a
// backslash before a quote keeps it. Two backslashes stay two, and keep nothing.
#ifndef NETDRAW_NETPLAIN_H
#define NETDRAW_NETPLAIN_H

#include <istream>
#include <memory>
#include <string>

#include "examples/netdraw/netmodel.h"

// A drawing of that factory. Null if the text is not in that form; error then tells what is wrong, and in
// which line.
std::unique_ptr<NetGraph> readPlain(std::istream& in, const std::string& title, NetFactory& factory,
                                    std::string& error);

#endif
