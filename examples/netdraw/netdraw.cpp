// netdraw: imports, checks, converts and examines drawings of graphs kept in OML files.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <functional>
#include <map>
#include <optional>

#include "examples/netdraw/netcmds.h"

namespace {

// What is called for: the command, and what it gets from the command line.
struct Call {
  std::function<int(Trace&)> run;
  std::string input;
  std::string output;
  std::string note;
  std::string trace;
  std::vector<std::string> files;
  std::optional<Form> from;
  std::optional<Form> to;
  bool same = false;
  bool regions = false;
  bool bothWays = false;
  int most = 20;
  std::string start;
  std::string end;
  std::vector<std::string> titles;

  Form inputForm() const { return from.value_or(formOfName(input)); }
  Form outputForm() const { return to.value_or(formOfName(output)); }
};

void addFormOption(CLI::App* command, const char* names, std::optional<Form>& form, const char* help) {
  static const std::map<std::string, Form> forms = {{"text", Form::TEXT}, {"binary", Form::BINARY}};
  command
      ->add_option_function<std::string>(
          names, [&form](const std::string& name) { form = forms.at(name); }, help)
      ->check(CLI::IsMember({"text", "binary"}))
      ->type_name("FORM");
}

void addOutputOptions(CLI::App* command, Call& call) {
  command->add_option("-o,--output", call.output, "the file to write")->required()->type_name("FILE");
  addFormOption(command, "-t,--to", call.to, "form of the output: text or binary (default: by its name)");
}

void addInput(CLI::App* command, Call& call) {
  command->add_option("INPUT", call.input, "the file to read")->required()->type_name("FILE");
  addFormOption(command, "-f,--from", call.from, "form of the file: text or binary (default: by name)");
}

void addPicture(CLI::App* command, Call& call) {
  command->add_option("-o,--output", call.output, "the picture to write")->required()->type_name("FILE");
}

// A command that runs like that if it is called.
CLI::App* addCommand(CLI::App& app, Call& call, const char* name, const char* help,
                     const std::function<int(Trace&)>& run) {
  CLI::App* command = app.add_subcommand(name, help);
  command->callback([&call, run] { call.run = run; });
  return command;
}

void defineImport(CLI::App& app, Call& call) {
  CLI::App* import = addCommand(
      app, call, "import", "Turn a layout program's plain output into a drawing",
      [&](Trace& trace) { return importPlain(trace, call.input, call.output, call.outputForm()); });
  import->add_option("INPUT", call.input, "the plain output")->required()->type_name("FILE");
  addOutputOptions(import, call);
}

void defineCheck(CLI::App& app, Call& call) {
  CLI::App* check =
      addCommand(app, call, "check", "Read drawings and show the messages about them", [&](Trace& trace) {
        return checkFiles(trace, call.files, call.from ? &*call.from : nullptr, call.same);
      });
  check->add_option("FILES", call.files, "the files to read")->required()->type_name("FILE");
  addFormOption(check, "-f,--from", call.from, "form of the files: text or binary (default: by name)");
  check->add_flag("-s,--same", call.same, "all files must hold the same drawing");
}

void defineInfo(CLI::App& app, Call& call) {
  CLI::App* info = addCommand(app, call, "info", "Say what a drawing holds",
                              [&](Trace& trace) { return showInfo(trace, call.input, call.inputForm()); });
  addInput(info, call);
}

void defineConvert(CLI::App& app, Call& call) {
  CLI::App* convert = addCommand(
      app, call, "convert", "Read a drawing and write it again, with the ids it had", [&](Trace& trace) {
        return convertFile(trace, call.input, call.inputForm(), call.output, call.outputForm());
      });
  addInput(convert, call);
  addOutputOptions(convert, call);
}

void defineFit(CLI::App& app, Call& call) {
  CLI::App* fit = addCommand(
      app, call, "fit", "Give the nodes of a drawing the size that their labels need", [&](Trace& trace) {
        return fitFile(trace, call.input, call.inputForm(), call.output, call.outputForm());
      });
  addInput(fit, call);
  addOutputOptions(fit, call);
}

void defineNote(CLI::App& app, Call& call) {
  CLI::App* note = addCommand(app, call, "note", "Add a note to a drawing", [&](Trace& trace) {
    return addNote(trace, call.input, call.inputForm(), call.note, call.output, call.outputForm());
  });
  addInput(note, call);
  note->add_option("TEXT", call.note, "the note")->required();
  addOutputOptions(note, call);
}

void defineDraw(CLI::App& app, Call& call) {
  CLI::App* draw = addCommand(app, call, "draw", "Draw a picture of a drawing, in SVG", [&](Trace& trace) {
    return drawFile(trace, call.input, call.inputForm(), call.output, call.regions);
  });
  addInput(draw, call);
  addPicture(draw, call);
  draw->add_flag("-d,--debug-regions", call.regions, "also show where labels could go");
}

void defineOverlaps(CLI::App& app, Call& call) {
  CLI::App* overlaps =
      addCommand(app, call, "overlaps", "Find nodes that overlap, and edges that cross other nodes",
                 [&](Trace& trace) { return showOverlaps(trace, call.input, call.inputForm(), call.most); });
  addInput(overlaps, call);
  overlaps->add_option("-m,--most", call.most, "how many of each to list (default: 20)")
      ->check(CLI::Range(0, INT32_MAX).description(""))
      ->type_name("COUNT");
}

void definePath(CLI::App& app, Call& call) {
  CLI::App* path =
      addCommand(app, call, "path", "Find the shortest route along the edges", [&](Trace& trace) {
        return showRoute(trace, call.input, call.inputForm(), call.start, call.end, call.bothWays);
      });
  addInput(path, call);
  path->add_option("START", call.start, "title of the node where it starts")->required()->type_name("TITLE");
  path->add_option("END", call.end, "title of the node where it ends")->required()->type_name("TITLE");
  path->add_flag("-b,--both-ways", call.bothWays, "edges also lead from their target to their source");
}

void defineOrder(CLI::App& app, Call& call) {
  CLI::App* order =
      addCommand(app, call, "order", "List the nodes from top to bottom and left to right",
                 [&](Trace& trace) { return showOrder(trace, call.input, call.inputForm(), call.titles); });
  addInput(order, call);
  order->add_option("-c,--compare", call.titles, "say only which of two nodes stands first")
      ->expected(2)
      ->type_name("TITLE");
}

void defineGallery(CLI::App& app, Call& call) {
  CLI::App* gallery = addCommand(app, call, "gallery", "Draw the shapes with what they answer, in SVG",
                                 [&](Trace& trace) { return drawGallery(trace, call.output); });
  addPicture(gallery, call);
}

int run(int argc, char** argv) {
  Call call;
  CLI::App app(
      "Imports, checks, converts and examines drawings of graphs kept in OML files. A file whose name ends "
      "in .omb is in the binary form, any other in the text form, unless an option says otherwise.",
      "netdraw");
  app.require_subcommand(1);
  app.fallthrough();  // the trace may be asked for behind the command
  app.add_option("--trace", call.trace, "append what is done to that file")->type_name("FILE");
  app.footer(
      "Exit status: 0, 1 if a file has errors or does not hold what is asked for, 2 for a wrong call.");
  for (auto add : {defineImport, defineCheck, defineInfo, defineConvert, defineFit, defineNote, defineDraw,
                   defineOverlaps, definePath, defineOrder, defineGallery}) {
    add(app, call);
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& wrong) {
    return app.exit(wrong) == 0 ? EXIT_GOOD : EXIT_WRONG_CALL;
  }

  Trace trace(call.trace);
  if (!trace.isGood()) {
    std::fprintf(stderr, "%s: cannot be opened for the trace\n", call.trace.c_str());
    return EXIT_FILE_ERRORS;
  }
  std::string line = "netdraw";
  for (int i = 1; i < argc; ++i) line += std::string(" ") + argv[i];
  trace.line(line);
  const int status = call.run(trace);
  if (trace.isGood()) return status;
  std::fprintf(stderr, "%s: the trace cannot be written\n", call.trace.c_str());
  return status == EXIT_GOOD ? EXIT_FILE_ERRORS : status;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const int status = run(argc, argv);
    if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return status;
    std::fprintf(stderr, "netdraw: the output cannot be written\n");
    return status == EXIT_GOOD ? EXIT_FILE_ERRORS : status;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "netdraw: %s\n", failure.what());
    return EXIT_FILE_ERRORS;
  }
}
