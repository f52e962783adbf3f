// The commands of netdraw. Each prints what it did and gives the exit status: 0, or 1 if a file has errors.
#ifndef NETDRAW_NETCMDS_H
#define NETDRAW_NETCMDS_H

#include <string>
#include <vector>

#include "examples/netdraw/netfile.h"

constexpr int EXIT_GOOD = 0;
constexpr int EXIT_FILE_ERRORS = 1;
constexpr int EXIT_WRONG_CALL = 2;

// Binary for names that end in ".omb", else text.
Form formOfName(const std::string& path);

// Turns a layout program's plain output into a drawing.
int importPlain(const std::string& input, const std::string& output, Form to);

// Reads each file and shows its messages; with same, all files must hold one drawing.
int checkFiles(const std::vector<std::string>& paths, const Form* form, bool same);

// Says what a file holds: objects by type, references, bytes and time.
int showInfo(const std::string& path, Form from);

// Reads a drawing and writes it again, with the ids it had.
int convertFile(const std::string& input, Form from, const std::string& output, Form to);

// Draws a picture of a drawing, in SVG; regions as in Picture.
int drawFile(const std::string& input, Form from, const std::string& output, bool regions);

// Draws the gallery of shapes.
int drawGallery(const std::string& output);

#endif
