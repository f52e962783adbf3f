// The commands of netdraw. Each gives the exit status: 0, 1 if a file has errors or does not hold what is
// asked for, or 2 if the call is wrong.
//
// What was asked for goes to the standard output. What is said beyond that goes to the error stream: messages
// about files, failures, and what was written, so that the standard output may be the file that is written.
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
int importPlain(Trace& trace, const std::string& input, const std::string& output, Form to);

// Reads each file and shows its messages; with same, all files must hold one drawing.
int checkFiles(Trace& trace, const std::vector<std::string>& paths, const Form* form, bool same);

// Says what a file holds: objects by type, references, bytes and time.
int showInfo(Trace& trace, const std::string& path, Form from);

// Reads a drawing and writes it again, with the ids it had.
int convertFile(Trace& trace, const std::string& input, Form from, const std::string& output, Form to);

// Gives each node that has a label the size that its label needs; nodes stay where they are.
int fitFile(Trace& trace, const std::string& input, Form from, const std::string& output, Form to);

// Adds a note to a drawing.
int addNote(Trace& trace, const std::string& input, Form from, const std::string& text,
            const std::string& output, Form to);

// Draws a picture of a drawing, in SVG; regions as in Picture.
int drawFile(Trace& trace, const std::string& input, Form from, const std::string& output, bool regions);

// Says which nodes overlap, and which edges cross nodes that are none of their ends. Lists at most that many
// of each.
int showOverlaps(Trace& trace, const std::string& path, Form from, int most);

// Says the shortest route between the nodes of two titles; bothWays as in findRoute. No route is a failure.
int showRoute(Trace& trace, const std::string& path, Form from, const std::string& start,
              const std::string& end, bool bothWays);

// Lists the nodes in reading order, or with two titles says which of the two nodes stands first.
int showOrder(Trace& trace, const std::string& path, Form from, const std::vector<std::string>& titles);

// Draws the gallery of shapes.
int drawGallery(Trace& trace, const std::string& output);

#endif
