#include "examples/netdraw/netcmds.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>

#include "examples/netdraw/netgall.h"
#include "examples/netdraw/netlabel.h"
#include "examples/netdraw/netorder.h"
#include "examples/netdraw/netover.h"
#include "examples/netdraw/netpict.h"
#include "examples/netdraw/netplain.h"
#include "examples/netdraw/netroute.h"

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

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

// The same for a drawing that is only looked at.
std::unique_ptr<NetGraph> readShowing(NetFactory& factory, Trace& trace, const std::string& path, Form form) {
  NetFile file(factory, trace);
  return readShowing(file, path, form);
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

std::string inWords(const ZVSize& size) {
  return std::to_string(size.width()) + " x " + std::to_string(size.height());
}

int countBends(const NetGraph& graph) {
  int bends = 0;
  forEach<NetEdge>(graph.edges, [&](NetEdge* edge) { bends += edge->bends.length(); });
  return bends;
}

// The first node of that title; shows it if there is none, or another one.
const NetNode* findShowing(const NetGraph& graph, const std::string& path, const std::string& title) {
  const NetNode* first = graph.findNode(title);
  int count = 0;
  forEach<NetNode>(graph.nodes, [&](NetNode* node) { count += node->title == title; });
  if (count == 0) std::printf("%s: holds no node \"%s\"\n", path.c_str(), title.c_str());
  if (count > 1) {
    std::printf("%s: holds %d nodes \"%s\"; the first is meant\n", path.c_str(), count, title.c_str());
  }
  return first;
}

// Lists the first ones of what was found, of which there are count.
template <class Found, class Show>
void showFirst(const std::vector<Found>& found, int64_t count, int most, Show show) {
  const size_t shown = std::min(found.size(), static_cast<size_t>(most));
  for (size_t i = 0; i < shown; ++i) show(found[i]);
  const auto rest = static_cast<std::intmax_t>(count) - static_cast<std::intmax_t>(shown);
  if (rest > 0) std::printf("  and %jd more\n", rest);
}

// Says how many colours and shapes there are for how many nodes and edges.
void showShared(const NetGraph& graph) {
  std::set<const ZVResource*> colors;
  std::set<const ZVResource*> shapes;
  int coloredNodes = 0;
  int coloredEdges = 0;
  forEach<NetNode>(graph.nodes, [&](NetNode* node) {
    coloredNodes += node->color || node->fill;
    if (node->color) colors.insert(node->color.get());
    if (node->fill) colors.insert(node->fill.get());
    shapes.insert(node->shape.get());
  });
  forEach<NetEdge>(graph.edges, [&](NetEdge* edge) {
    coloredEdges += static_cast<bool>(edge->color);
    if (edge->color) colors.insert(edge->color.get());
  });
  std::printf("  colours     %zu, shared by %d nodes and %d edges\n", colors.size(), coloredNodes,
              coloredEdges);
  std::printf("  shapes      %zu, shared by %d nodes\n", shapes.size(), graph.nodes.length());
}

// Writes a picture; nothing that is not whole is called written.
int writePicture(Trace& trace, const std::string& path, const std::string& svg) {
  std::ofstream out(path, std::ios::binary);
  out << svg;
  out.close();
  trace.line("draw " + path + ": " + (out ? std::to_string(svg.size()) + " bytes" : "failed"));
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

int importPlain(Trace& trace, const std::string& input, const std::string& output, Form to) {
  std::ifstream in(input);
  if (!in) {
    std::printf("%s: cannot be opened\n", input.c_str());
    return EXIT_FILE_ERRORS;
  }
  std::string error;
  NetFactory factory;
  std::unique_ptr<NetGraph> graph =
      readPlain(in, std::filesystem::path(input).stem().string(), factory, error);
  if (!graph) {
    std::printf("%s: %s\n", input.c_str(), error.c_str());
    return EXIT_FILE_ERRORS;
  }
  std::printf("%s: %d nodes, %d edges, %d bend points\n", input.c_str(), graph->nodes.length(),
              graph->edges.length(), countBends(*graph));
  NetFile file(factory, trace);
  return writeShowing(file, output, to, *graph);
}

int checkFiles(Trace& trace, const std::vector<std::string>& paths, const Form* form, bool same) {
  NetFactory factory;
  std::unique_ptr<NetGraph> first;
  int status = EXIT_GOOD;
  for (const std::string& path : paths) {
    NetFile file(factory, trace);
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

int showInfo(Trace& trace, const std::string& path, Form from) {
  NetFactory factory;
  NetFile file(factory, trace);
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
  showShared(*graph);
  forEach<ZVText>(graph->notes, [](ZVText* note) { std::printf("  note        %s\n", note->pString()); });
  std::printf("  references  %d of %d resolved\n", countReferences(*graph), 2 * graph->edges.length());
  std::printf("  bytes       %ju\n", static_cast<std::uintmax_t>(std::filesystem::file_size(path)));
  std::printf("  read in     %.2f ms\n", milliseconds);
  return EXIT_GOOD;
}

int convertFile(Trace& trace, const std::string& input, Form from, const std::string& output, Form to) {
  NetFactory factory;
  NetFile file(factory, trace);
  std::unique_ptr<NetGraph> graph = readShowing(file, input, from);
  return graph ? writeShowing(file, output, to, *graph) : EXIT_FILE_ERRORS;
}

int fitFile(Trace& trace, const std::string& input, Form from, const std::string& output, Form to) {
  NetFactory factory;
  NetFile file(factory, trace);
  std::unique_ptr<NetGraph> graph = readShowing(file, input, from);
  if (!graph) return EXIT_FILE_ERRORS;
  int fitted = 0;
  forEach<NetNode>(graph->nodes, [&](NetNode* node) {
    if (node->label.empty()) return;
    const ZVSize size = sizeAround(node->label, node->outline());
    trace.line("fit " + node->title + ": " + inWords(node->size) + " becomes " + inWords(size));
    node->size = size;
    ++fitted;
  });
  std::printf("%s: %d of %d nodes fitted around their labels\n", input.c_str(), fitted,
              graph->nodes.length());
  return writeShowing(file, output, to, *graph);
}

int addNote(Trace& trace, const std::string& input, Form from, const std::string& text,
            const std::string& output, Form to) {
  NetFactory factory;
  NetFile file(factory, trace);
  std::unique_ptr<NetGraph> graph = readShowing(file, input, from);
  if (!graph) return EXIT_FILE_ERRORS;
  graph->addNote(text);
  std::printf("%s: %d notes\n", output.c_str(), graph->notes.length());
  return writeShowing(file, output, to, *graph);
}

int drawFile(Trace& trace, const std::string& input, Form from, const std::string& output, bool regions) {
  NetFactory factory;
  std::unique_ptr<NetGraph> graph = readShowing(factory, trace, input, from);
  if (!graph) return EXIT_FILE_ERRORS;
  if (!Picture::canShow(*graph)) {
    std::printf("%s: reaches too far for a picture\n", input.c_str());
    return EXIT_FILE_ERRORS;
  }
  const Picture picture(*graph, regions);
  std::printf("%s: %d of %d edge ends on an outline, %d of %d labels inside their node\n", input.c_str(),
              picture.endsOnOutline(), picture.ends(), picture.labelsInside(), picture.labels());
  return writePicture(trace, output, picture.svg());
}

int showOverlaps(Trace& trace, const std::string& path, Form from, int most) {
  NetFactory factory;
  std::unique_ptr<NetGraph> graph = readShowing(factory, trace, path, from);
  if (!graph) return EXIT_FILE_ERRORS;
  auto start = Clock::now();
  const Overlaps overlaps = findOverlaps(*graph, static_cast<size_t>(most));
  const auto edges = static_cast<int64_t>(overlaps.edges.size());
  std::printf("%s: %jd pairs of nodes overlap, %jd of %d edges cross other nodes, found in %.2f ms\n",
              path.c_str(), static_cast<std::intmax_t>(overlaps.nodePairs), static_cast<std::intmax_t>(edges),
              graph->edges.length(), millisecondsSince(start));
  showFirst(overlaps.nodes, overlaps.nodePairs, most, [](const auto& pair) {
    std::printf("  \"%s\" and \"%s\" overlap\n", pair.first->title.c_str(), pair.second->title.c_str());
  });
  showFirst(overlaps.edges, edges, most, [](const auto& pair) {
    const NetEdge& edge = *pair.first;
    std::printf("  \"%s\" -> \"%s\" crosses \"%s\"\n", edge.source->title.c_str(), edge.target->title.c_str(),
                pair.second->title.c_str());
  });
  return EXIT_GOOD;
}

int showRoute(Trace& trace, const std::string& path, Form from, const std::string& start,
              const std::string& end, bool bothWays) {
  NetFactory factory;
  std::unique_ptr<NetGraph> graph = readShowing(factory, trace, path, from);
  if (!graph) return EXIT_FILE_ERRORS;
  const NetNode* first = findShowing(*graph, path, start);
  const NetNode* last = findShowing(*graph, path, end);
  if (!first || !last) return EXIT_FILE_ERRORS;
  auto begin = Clock::now();
  const Route route = findRoute(*graph, *first, *last, bothWays);
  if (!route.found) {
    std::printf("%s: no route leads from \"%s\" to \"%s\"\n", path.c_str(), start.c_str(), end.c_str());
    return EXIT_FILE_ERRORS;
  }
  std::printf("%s: %zu edges, %.3f inches, found in %.2f ms\n", path.c_str(), route.nodes.size() - 1,
              route.length / 1000.0, millisecondsSince(begin));
  for (const NetNode* node : route.nodes) std::printf("  \"%s\"\n", node->title.c_str());
  return EXIT_GOOD;
}

int showOrder(Trace& trace, const std::string& path, Form from, const std::vector<std::string>& titles) {
  NetFactory factory;
  std::unique_ptr<NetGraph> graph = readShowing(factory, trace, path, from);
  if (!graph) return EXIT_FILE_ERRORS;
  const ReadingOrder order(*graph);
  if (titles.empty()) {
    forEach<NetNode>(order, [](NetNode* node) { std::printf("%s\n", node->title.c_str()); });
    return EXIT_GOOD;
  }
  const NetNode* a = findShowing(*graph, path, titles[0]);
  const NetNode* b = findShowing(*graph, path, titles[1]);
  if (!a || !b) return EXIT_FILE_ERRORS;
  const int32_t rank = order.rank(*a, *b);
  std::printf("%s: \"%s\" stands %s \"%s\"\n", path.c_str(), titles[0].c_str(),
              rank < 0   ? "before"
              : rank > 0 ? "behind"
                         : "in the place of",
              titles[1].c_str());
  return EXIT_GOOD;
}

int drawGallery(Trace& trace, const std::string& output) { return writePicture(trace, output, gallerySvg()); }
