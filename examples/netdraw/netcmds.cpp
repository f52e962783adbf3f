#include "examples/netdraw/netcmds.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "examples/netdraw/netgall.h"
#include "examples/netdraw/netpict.h"
#include "examples/netdraw/netplain.h"

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

const char* nameOf(Form form) { return form == Form::BINARY ? "binary" : "text"; }

// Reads one drawing; shows the messages of the file, and why there is no drawing if there is none.
std::unique_ptr<NetGraph> readShowing(NetFile& file, const std::string& path, Form form) {
  std::unique_ptr<NetGraph> graph = file.read(path, form);
  std::fputs(file.messages().c_str(), stdout);
  if (graph) return graph;
  if (file.numberOfErrors() > 0) {
    std::printf("%s: %d errors, %d warnings\n", path.c_str(), file.numberOfErrors(), file.numberOfWarnings());
  } else if (file.code() != ZV_FILE_OK) {
    std::printf("%s: cannot be read (code %d)\n", path.c_str(), static_cast<int>(file.code()));
  } else {
    std::printf("%s: holds no drawing\n", path.c_str());
  }
  return nullptr;
}

// Writes one drawing and says so.
int writeShowing(NetFile& file, const std::string& path, Form form, NetGraph& graph) {
  auto start = Clock::now();
  if (file.write(path, form, graph) != ZV_FILE_OK) {
    std::printf("%s: cannot be written (code %d)\n", path.c_str(), static_cast<int>(file.code()));
    return EXIT_FILE_ERRORS;
  }
  std::printf("%s: written as %s, %ju bytes, %.2f ms\n", path.c_str(), nameOf(form),
              static_cast<std::uintmax_t>(std::filesystem::file_size(path)), millisecondsSince(start));
  return EXIT_GOOD;
}

// References that were resolved: both ends of every edge.
int countReferences(const NetGraph& graph) {
  int references = 0;
  forEach<NetEdge>(graph.edges, [&](NetEdge* edge) {
    references += (edge->source != nullptr) + (edge->target != nullptr);
  });
  return references;
}

int countBends(const NetGraph& graph) {
  int bends = 0;
  forEach<NetEdge>(graph.edges, [&](NetEdge* edge) { bends += edge->bends.length(); });
  return bends;
}

// Writes a picture; nothing that is not whole is called written.
int writePicture(const std::string& path, const std::string& svg) {
  std::ofstream out(path, std::ios::binary);
  out << svg;
  out.close();
  if (!out) {
    std::printf("%s: cannot be written\n", path.c_str());
    return EXIT_FILE_ERRORS;
  }
  std::printf("%s: drawn, %zu bytes\n", path.c_str(), svg.size());
  return EXIT_GOOD;
}

}  // namespace

Form formOfName(const std::string& path) {
  return std::filesystem::path(path).extension() == ".omb" ? Form::BINARY : Form::TEXT;
}

int importPlain(const std::string& input, const std::string& output, Form to) {
  std::ifstream in(input);
  if (!in) {
    std::printf("%s: cannot be opened\n", input.c_str());
    return EXIT_FILE_ERRORS;
  }
  std::string error;
  std::unique_ptr<NetGraph> graph = readPlain(in, std::filesystem::path(input).stem().string(), error);
  if (!graph) {
    std::printf("%s: %s\n", input.c_str(), error.c_str());
    return EXIT_FILE_ERRORS;
  }
  std::printf("%s: %d nodes, %d edges, %d bend points\n", input.c_str(), graph->nodes.length(),
              graph->edges.length(), countBends(*graph));
  NetGrammar grammar;
  NetFile file(grammar);
  return writeShowing(file, output, to, *graph);
}

int checkFiles(const std::vector<std::string>& paths, const Form* form, bool same) {
  NetGrammar grammar;
  std::unique_ptr<NetGraph> first;
  int status = EXIT_GOOD;
  for (const std::string& path : paths) {
    NetFile file(grammar);
    std::unique_ptr<NetGraph> graph = readShowing(file, path, form ? *form : formOfName(path));
    if (!graph) {
      status = EXIT_FILE_ERRORS;
      continue;
    }
    std::printf("%s: good\n", path.c_str());
    if (!same) continue;
    if (!first) {
      first = std::move(graph);
      continue;
    }
    std::string difference = firstDifference(*first, *graph);
    if (difference.empty()) continue;
    std::printf("%s: holds another drawing than %s: %s\n", path.c_str(), paths.front().c_str(),
                difference.c_str());
    status = EXIT_FILE_ERRORS;
  }
  if (same && status == EXIT_GOOD) std::printf("all %zu files hold the same drawing\n", paths.size());
  return status;
}

int showInfo(const std::string& path, Form from) {
  NetGrammar grammar;
  NetFile file(grammar);
  auto start = Clock::now();
  std::unique_ptr<NetGraph> graph = readShowing(file, path, from);
  double milliseconds = millisecondsSince(start);
  if (!graph) return EXIT_FILE_ERRORS;
  std::printf("%s (%s form)\n", path.c_str(), nameOf(from));
  std::printf("  title       %s\n", graph->title.c_str());
  std::printf("  extent      %d x %d\n", graph->extent.width(), graph->extent.height());
  std::printf("  graph       1\n");
  std::printf("  node        %d\n", graph->nodes.length());
  std::printf("  edge        %d\n", graph->edges.length());
  std::printf("  bend        %d\n", countBends(*graph));
  std::printf("  references  %d of %d resolved\n", countReferences(*graph), 2 * graph->edges.length());
  std::printf("  bytes       %ju\n", static_cast<std::uintmax_t>(std::filesystem::file_size(path)));
  std::printf("  read in     %.2f ms\n", milliseconds);
  return EXIT_GOOD;
}

int convertFile(const std::string& input, Form from, const std::string& output, Form to) {
  NetGrammar grammar;
  NetFile file(grammar);
  std::unique_ptr<NetGraph> graph = readShowing(file, input, from);
  return graph ? writeShowing(file, output, to, *graph) : EXIT_FILE_ERRORS;
}

int drawFile(const std::string& input, Form from, const std::string& output, bool regions) {
  NetGrammar grammar;
  NetFile file(grammar);
  std::unique_ptr<NetGraph> graph = readShowing(file, input, from);
  if (!graph) return EXIT_FILE_ERRORS;
  const Picture picture(*graph, regions);
  std::printf("%s: %d of %d edge ends on an outline, %d of %d labels inside their node\n", input.c_str(),
              picture.endsOnOutline(), picture.ends(), picture.labelsInside(), picture.labels());
  return writePicture(output, picture.svg());
}

int drawGallery(const std::string& output) { return writePicture(output, gallerySvg()); }
