// Colours by the names that SVG and the X Window System give them.
#ifndef NETDRAW_NETCOLOR_H
#define NETDRAW_NETCOLOR_H

#include <string>

#include "utils/zvcolor.h"

// Takes a name of SVG, or one that only the X Window System has, as gray50 or red3, `none' for a transparent
// colour, or a number as #rgb or #rrggbb, in letters of either case. What is none of these changes nothing
// and gives false.
bool setColor(ZVColor& color, const std::string& name);

// The spelling of a colour in a picture: its name in SVG, or #rrggbb if it has none.
std::string nameOf(const ZVColor& color);

#endif
