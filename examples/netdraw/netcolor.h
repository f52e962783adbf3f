// Colours by the names that SVG gives them.
#ifndef NETDRAW_NETCOLOR_H
#define NETDRAW_NETCOLOR_H

#include <string>

#include "utils/zvcolor.h"

// Takes a name of SVG, `none' for a transparent colour, or a number as #rgb or #rrggbb, in letters of either
// case. What is none of these changes nothing and gives false.
bool setColor(ZVColor& color, const std::string& name);

// The spelling of a colour in a picture: its name, or #rrggbb if it has none.
std::string nameOf(const ZVColor& color);

#endif
