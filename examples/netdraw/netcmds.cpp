#include "examples/netdraw/netcmds.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>

#include "examples/netdraw/netgall.h"
#include "examples/netdraw/netlabel.h"
#include "examples/netdraw/netorder.h"
#include "examples/netdraw/netover.h"
#include "examples/netdraw/netpict.h"
#include "examples/netdraw/netplain.h"
#include "examples/netdraw/netroute.h"
#include "examples/netdraw/networds.h"

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start) {
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// Says what a call fails by.
int failure(const std::string& path, const std::string& why, int status = EXIT_FILE_ERRORS) {
  std::fprintf(stderr, "%s: %s\n", path.c_str(), why.c_str());
  return status;
}

// Reads one drawing; shows the messages of the file, and why there is no drawing if there is none.
std::unique_ptr<NetGraph> readShowing(NetFile& file, const std::string& path, Form form,
                                      std::FILE* out = stderr) {
  std::unique_ptr<NetGraph> graph = file.read(path, form);
  std::fputs(file.messages().c_str(), out);
  if (graph) return graph;
  std::string why = "holds no drawing";
  if (file.numberOfErrors() > 0) {
    why = counted(file.numberOfErrors(), "error") + ", " + counted(file.numberOfWarnings(), "warning");
  } else if (file.code() != ZV_FILE_OK) {
    why = inWords(file.code());
  }
  std::fprintf(out, "%s: %s\n", path.c_str(), why.c_str());
  const Form seeming = seemingForm(path).value_or(form);
  if (seeming != form) {
    std::fprintf(out, "%s: looks like the %s form: try --from %s\n", path.c_str(), nameOf(seeming),
                 nameOf(seeming));
  }
  return nullptr;
}

// The same for a drawing that is only looked at.
std::unique_ptr<NetGraph> readShowing(NetFactory& factory, Trace& trace, const std::string& path, Form form) {
  NetFile file(factory, trace);
  return readShowing(file, path, form);
}

// Whether a file of another kind would take the place of what the call reads.
bool wouldReplace(const std::string& input, const std::string& output) {
  std::error_code none;
  return std::filesystem::is_regular_file(input, none) && std::filesystem::equivalent(input, output, none);
}

// In bytes; devices and pipes have no size.
std::optional<std::uintmax_t> sizeOf(const std::string& path) {
  std::error_code none;
  const std::uintmax_t bytes = std::filesystem::file_size(path, none);
  return none ? std::nullopt : std::optional(bytes);
}

// Writes one drawing and says so.
int writeShowing(NetFile& file, const std::string& path, Form form, NetGraph& graph) {
  auto start = Clock::now();
  if (file.write(path, form, graph) != ZV_FILE_OK) return failure(path, inWords(file.code()));
  const double milliseconds = millisecondsSince(start);
  const auto bytes = sizeOf(path);
  std::fprintf(stderr, "%s: written as %s, %s%.2f ms\n", path.c_str(), nameOf(form),
               bytes ? (counted(*bytes, "byte") + ", ").c_str() : "", milliseconds);
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
  if (count == 0) failure(path, "holds no node \"" + title + '"');
  if (count > 1) {
    std::fprintf(stderr, "%s: holds %d nodes \"%s\"; the first is meant\n", path.c_str(), count,
                 title.c_str());
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
  std::printf("  colours     %zu, shared by %s and %s\n", colors.size(),
              counted(coloredNodes, "node").c_str(), counted(coloredEdges, "edge").c_str());
  std::printf("  shapes      %zu, shared by %s\n", shapes.size(),
              counted(graph.nodes.length(), "node").c_str());
}

// Writes a picture; nothing that is not whole is called written.
int writePicture(Trace& trace, const std::string& path, const std::string& svg) {
  std::ofstream out(path, std::ios::binary);
  out << svg;
  out.close();
  trace.line("draw " + path + ": " + (out ? counted(svg.size(), "byte") : "failed"));
  if (!out) return failure(path, "cannot be written");
  std::fprintf(stderr, "%s: drawn, %s\n", path.c_str(), counted(svg.size(), "byte").c_str());
  return EXIT_GOOD;
}

}  // namespace

Form formOfName(const std::string& path) {
  return std::filesystem::path(path).extension() == ".omb" ? Form::BINARY : Form::TEXT;
}

int importPlain(Trace& trace, const std::string& input, const std::string& output, Form to) {
  if (wouldReplace(input, output)) return failure(output, "would be written over the input", EXIT_WRONG_CALL);
  std::ifstream in(input);
  if (!in) return failure(input, "cannot be opened");
  std::string error;
  NetFactory factory;
  std::unique_ptr<NetGraph> graph =
      readPlain(in, std::filesystem::path(input).stem().string(), factory, error);
  if (!graph) return failure(input, error);
  std::fprintf(stderr, "%s: %s, %s, %s\n", input.c_str(), counted(graph->nodes.length(), "node").c_str(),
               counted(graph->edges.length(), "edge").c_str(),
               counted(countBends(*graph), "bend point").c_str());
  NetFile file(factory, trace);
  return writeShowing(file, output, to, *graph);
}

int checkFiles(Trace& trace, const std::vector<std::string>& paths, const Form* form, bool same) {
  NetFactory factory;
  std::unique_ptr<NetGraph> first;
  int status = EXIT_GOOD;
  for (const std::string& path : paths) {
    NetFile file(factory, trace);
    std::unique_ptr<NetGraph> graph = readShowing(file, path, form ? *form : formOfName(path), stdout);
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
  if (same && status == EXIT_GOOD && paths.size() > 1) {
    std::printf("all %zu files hold the same drawing\n", paths.size());
  }
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
  if (const auto bytes = sizeOf(path)) std::printf("  bytes       %ju\n", *bytes);
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
  std::fprintf(stderr, "%s: %d of %s fitted around a label\n", input.c_str(), fitted,
               counted(graph->nodes.length(), "node").c_str());
  return writeShowing(file, output, to, *graph);
}

int addNote(Trace& trace, const std::string& input, Form from, const std::string& text,
            const std::string& output, Form to) {
  NetFactory factory;
  NetFile file(factory, trace);
  std::unique_ptr<NetGraph> graph = readShowing(file, input, from);
  if (!graph) return EXIT_FILE_ERRORS;
  graph->addNote(text);
  std::fprintf(stderr, "%s: %s\n", output.c_str(), counted(graph->notes.length(), "note").c_str());
  return writeShowing(file, output, to, *graph);
}

int drawFile(Trace& trace, const std::string& input, Form from, const std::string& output, bool regions) {
  if (wouldReplace(input, output)) return failure(output, "would be written over the input", EXIT_WRONG_CALL);
  NetFactory factory;
  std::unique_ptr<NetGraph> graph = readShowing(factory, trace, input, from);
  if (!graph) return EXIT_FILE_ERRORS;
  if (!Picture::canShow(*graph)) return failure(input, "reaches too far for a picture");
  const Picture picture(*graph, regions);
  std::fprintf(stderr, "%s: %d of %s on an outline, %d of %s inside a node\n", input.c_str(),
               picture.endsOnOutline(), counted(picture.ends(), "edge end").c_str(), picture.labelsInside(),
               counted(picture.labels(), "label").c_str());
  return writePicture(trace, output, picture.svg());
}

int showOverlaps(Trace& trace, const std::string& path, Form from, int most) {
  NetFactory factory;
  std::unique_ptr<NetGraph> graph = readShowing(factory, trace, path, from);
  if (!graph) return EXIT_FILE_ERRORS;
  auto start = Clock::now();
  const Overlaps overlaps = findOverlaps(*graph, static_cast<size_t>(most));
  const auto edges = static_cast<int64_t>(overlaps.edges.size());
  std::printf("%s: %s of nodes, %jd of %s across other nodes, found in %.2f ms\n", path.c_str(),
              counted(overlaps.nodePairs, "overlapping pair").c_str(), static_cast<std::intmax_t>(edges),
              counted(graph->edges.length(), "edge").c_str(), millisecondsSince(start));
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
  std::printf("%s: %s, %.3f inches, found in %.2f ms\n", path.c_str(),
              counted(route.nodes.size() - 1, "edge").c_str(), route.length / 1000.0,
              millisecondsSince(begin));
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
