// netdraw: imports, checks, converts and examines drawings of graphs kept in OML files.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <map>
#include <optional>

#include "examples/netdraw/netcmds.h"

namespace {

struct Options {
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

void addOutputOptions(CLI::App* command, Options& options) {
  command->add_option("-o,--output", options.output, "the file to write")->required()->type_name("FILE");
  addFormOption(command, "-t,--to", options.to, "form of the output: text or binary (default: by its name)");
}

void addInput(CLI::App* command, Options& options) {
  command->add_option("INPUT", options.input, "the file to read")->required()->type_name("FILE");
  addFormOption(command, "-f,--from", options.from, "form of the file: text or binary (default: by name)");
}

int run(int argc, char** argv) {
  Options options;
  CLI::App app(
      "Imports, checks, converts and examines drawings of graphs kept in OML files. A file whose name ends "
      "in .omb is "
      "in the binary form, any other in the text form, unless an option says otherwise.",
      "netdraw");
  app.require_subcommand(1);
  app.fallthrough();  // the trace may be asked for behind the command
  app.add_option("--trace", options.trace, "append what is done to that file")->type_name("FILE");
  app.footer(
      "Exit status: 0, 1 if a file has errors or does not hold what is asked for, 2 for a wrong call.");

  CLI::App* import = app.add_subcommand("import", "Turn a layout program's plain output into a drawing");
  import->add_option("INPUT", options.input, "the plain output")->required()->type_name("FILE");
  addOutputOptions(import, options);

  CLI::App* check = app.add_subcommand("check", "Read drawings and show the messages about them");
  check->add_option("FILES", options.files, "the files to read")->required()->type_name("FILE");
  addFormOption(check, "-f,--from", options.from, "form of the files: text or binary (default: by name)");
  check->add_flag("-s,--same", options.same, "all files must hold the same drawing");

  CLI::App* info = app.add_subcommand("info", "Say what a drawing holds");
  addInput(info, options);

  CLI::App* convert = app.add_subcommand("convert", "Read a drawing and write it again, with the ids it had");
  addInput(convert, options);
  addOutputOptions(convert, options);

  CLI::App* fit = app.add_subcommand("fit", "Give the nodes of a drawing the size that their labels need");
  addInput(fit, options);
  addOutputOptions(fit, options);

  CLI::App* note = app.add_subcommand("note", "Add a note to a drawing");
  addInput(note, options);
  note->add_option("TEXT", options.note, "the note")->required();
  addOutputOptions(note, options);

  CLI::App* draw = app.add_subcommand("draw", "Draw a picture of a drawing, in SVG");
  addInput(draw, options);
  draw->add_option("-o,--output", options.output, "the picture to write")->required()->type_name("FILE");
  draw->add_flag("-d,--debug-regions", options.regions, "also show where labels could go");

  CLI::App* overlaps =
      app.add_subcommand("overlaps", "Find nodes that overlap, and edges that cross other nodes");
  addInput(overlaps, options);
  overlaps->add_option("-m,--most", options.most, "how many of each to list (default: 20)")
      ->check(CLI::Range(0, INT32_MAX).description(""))
      ->type_name("COUNT");

  CLI::App* path = app.add_subcommand("path", "Find the shortest route along the edges");
  addInput(path, options);
  path->add_option("START", options.start, "title of the node where it starts")
      ->required()
      ->type_name("TITLE");
  path->add_option("END", options.end, "title of the node where it ends")->required()->type_name("TITLE");
  path->add_flag("-b,--both-ways", options.bothWays, "edges also lead from their target to their source");

  CLI::App* order = app.add_subcommand("order", "List the nodes from top to bottom and left to right");
  addInput(order, options);
  order->add_option("-c,--compare", options.titles, "say only which of two nodes stands first")
      ->expected(2)
      ->type_name("TITLE");

  CLI::App* gallery = app.add_subcommand("gallery", "Draw the shapes with what they answer, in SVG");
  gallery->add_option("-o,--output", options.output, "the picture to write")->required()->type_name("FILE");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& wrong) {
    return app.exit(wrong) == 0 ? EXIT_GOOD : EXIT_WRONG_CALL;
  }

  Trace trace(options.trace);
  if (!trace.isGood()) {
    std::printf("%s: cannot be opened for the trace\n", options.trace.c_str());
    return EXIT_FILE_ERRORS;
  }
  std::string call = "netdraw";
  for (int i = 1; i < argc; ++i) call += std::string(" ") + argv[i];
  trace.line(call);

  if (*import) return importPlain(trace, options.input, options.output, options.outputForm());
  if (*check) return checkFiles(trace, options.files, options.from ? &*options.from : nullptr, options.same);
  if (*info) return showInfo(trace, options.input, options.inputForm());
  if (*fit) {
    return fitFile(trace, options.input, options.inputForm(), options.output, options.outputForm());
  }
  if (*note) {
    return addNote(trace, options.input, options.inputForm(), options.note, options.output,
                   options.outputForm());
  }
  if (*draw) return drawFile(trace, options.input, options.inputForm(), options.output, options.regions);
  if (*overlaps) return showOverlaps(trace, options.input, options.inputForm(), options.most);
  if (*path) {
    return showRoute(trace, options.input, options.inputForm(), options.start, options.end, options.bothWays);
  }
  if (*order) return showOrder(trace, options.input, options.inputForm(), options.titles);
  if (*gallery) return drawGallery(trace, options.output);
  return convertFile(trace, options.input, options.inputForm(), options.output, options.outputForm());
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
