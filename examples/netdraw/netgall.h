// A page that shows what the shapes answer: every shape with segments clipped at its outline, with the
// nearest points of a ring of points, and with labels at its top, centre and bottom.
#ifndef NETDRAW_NETGALL_H
#define NETDRAW_NETGALL_H

#include <string>

std::string gallerySvg();

#endif
