// Reads and writes a large graph as an OML file, in both forms, beside the same graph as a JSON file.
//
// The graph is the package graph of a Linux distribution: 63,666 packages with their names, sections and
// sizes, and 245,087 dependencies between them. All readers build the same live objects, and references end
// as pointers. What is timed goes from the path of a file to the finished objects, the release of the
// reader's own trees and buffers included, that of the objects not.
//
// bytes_per_second is that of the file's own form; per_object and peak_MB compare across the forms. The
// peak is that of a process that does nothing else, less that of one that does nothing at all.
#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/filereadstream.h>
#include <rapidjson/filewritestream.h>
#include <rapidjson/reader.h>
#include <rapidjson/writer.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zlib.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "utils/zvomlfil.h"
#include "utils/zvomlobj.h"
#include "utils/zvomlsta.h"
#include "utils/zvomlsyn.h"

namespace {

// ---- The graph

struct Graph;

struct Package : ZVOMLObject {
  explicit Package(ZVOMLObject* itsOwner) : owner(itsOwner) {}
  ZVOMLObject* pOwnerObject() override { return owner; }
  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVOMLFile* file) override;

  ZVOMLObject* owner;
  std::string title;
  std::string area;
  int32_t size = 0;
};

struct Dependency : ZVOMLObject {
  explicit Dependency(ZVOMLObject* itsOwner) : owner(itsOwner) {}
  ZVOMLObject* pOwnerObject() override { return owner; }
  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVOMLFile* file) override;

  ZVOMLObject* owner;
  Package* source = nullptr;
  Package* target = nullptr;
};

struct Graph : ZVOMLObject {
  std::vector<std::unique_ptr<Package>> packages;
  std::vector<std::unique_ptr<Dependency>> dependencies;

  int32_t objects() const { return static_cast<int32_t>(1 + packages.size() + dependencies.size()); }
};

[[noreturn]] void fail(const char* what) {
  std::fprintf(stderr, "bench_oml: %s\n", what);
  std::exit(1);
}

// ---- OML

// Indices of the fields, as the grammar below gives them.
enum Field : int32_t { TITLE = 7, AREA, SIZE, SOURCE, TARGET };
enum Type : int32_t { GRAPH = 1, PACKAGE, DEPENDENCY };

constexpr const char* TYPES[] = {"graph", "package", "dependency", nullptr};
constexpr const char* DEFINITIONS[] = {"O $toplevel$",
                                       "T graph",
                                       "]",
                                       "O graph",
                                       "T package",
                                       "T dependency",
                                       "]",
                                       "O package",
                                       "F title S",
                                       "F area S",
                                       "F size I",
                                       "]",
                                       "O dependency",
                                       "R source package R",
                                       "R target package R",
                                       "]",
                                       nullptr};

// The pools of a grammar are sized for the load: texts, and two or three addresses for each object.
std::unique_ptr<ZVOMLStatic> makeGrammar(int32_t strings, int32_t addresses) {
  return std::make_unique<ZVOMLStatic>(TYPES, nullptr, nullptr, DEFINITIONS, strings, 16, 16, 16, 32,
                                       addresses);
}

int Package::vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject*, ZVOMLFile*) {
  switch (field->fieldIDIndex()) {
    case TITLE:
      title = field->stringValue();
      return 1;
    case AREA:
      area = field->stringValue();
      return 1;
    case SIZE:
      size = field->longValue();
      return 1;
    default:
      return 0;
  }
}

int Dependency::vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject*, ZVOMLFile*) {
  auto* package = static_cast<Package*>(field->objectValue());
  switch (field->fieldIDIndex()) {
    case SOURCE:
      source = package;
      return 1;
    case TARGET:
      target = package;
      return 1;
    default:
      return 0;
  }
}

class GraphFile : public ZVOMLFile {
 protected:
  ZVObject* vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject*, ZVObject* owner) override {
    auto* graph = static_cast<Graph*>(owner);
    switch (object->typeIndex()) {
      case GRAPH:
        return new Graph;
      case PACKAGE:
        return graph->packages.emplace_back(std::make_unique<Package>(graph)).get();
      default:
        return graph->dependencies.emplace_back(std::make_unique<Dependency>(graph)).get();
    }
  }

  void vWriteContents(ZVObject* top) override {
    auto& graph = static_cast<Graph&>(*top);
    writeObjectStart("graph", &graph, 0, 1);
    writeOpeningBracket();
    for (auto& package : graph.packages) {
      writeObjectStart("package", package.get(), 0, 1);
      writeOpeningBracket();
      writeStringAttribute("title", package->title.c_str());
      writeStringAttribute("area", package->area.c_str());
      writeAttribute("size", package->size);
      writeClosingBracket();
    }
    for (auto& dependency : graph.dependencies) {
      writeObjectStart("dependency", dependency.get(), 1);
      writeOpeningBracket();
      writeAttribute("source", dependency->source, dependency.get(), 1);
      writeAttribute("target", dependency->target, dependency.get(), 1);
      writeClosingBracket();
    }
    writeClosingBracket();
  }
};

std::unique_ptr<Graph> readOml(const char* path, ZVOMLStatic& grammar, int binary) {
  GraphFile file;
  if (file.readOMLFile(path, &grammar, nullptr, -1, binary, 0, 0) != ZV_FILE_OK) fail(path);
  return std::unique_ptr<Graph>(static_cast<Graph*>(file.pTopObject()));
}

// Ids count from 1, as a program gives them that numbers its objects.
void numberObjects(Graph& graph) {
  int32_t id = 1;
  graph.iUserField(id);
  for (auto& package : graph.packages) package->iUserField(++id);
}

void writeOml(const char* path, Graph& graph, ZVOMLStatic& grammar, int binary) {
  numberObjects(graph);
  GraphFile file;
  if (file.writeOMLFile(path, &grammar, &graph, binary, 0, 0) != ZV_FILE_OK) fail(path);
}

// ---- JSON

template <class Writer>
void writeJsonContent(Writer& writer, Graph& graph) {
  auto key = [&](const char* name) { writer.Key(name, static_cast<rapidjson::SizeType>(std::strlen(name))); };
  writer.StartObject();
  key("id");
  writer.Int(graph.iUserField());
  key("packages");
  writer.StartArray();
  for (auto& package : graph.packages) {
    writer.StartObject();
    key("id");
    writer.Int(package->iUserField());
    key("title");
    writer.String(package->title.data(), static_cast<rapidjson::SizeType>(package->title.size()));
    key("area");
    writer.String(package->area.data(), static_cast<rapidjson::SizeType>(package->area.size()));
    key("size");
    writer.Int(package->size);
    writer.EndObject();
  }
  writer.EndArray();
  key("dependencies");
  writer.StartArray();
  for (auto& dependency : graph.dependencies) {
    writer.StartObject();
    key("source");
    writer.Int(dependency->source->iUserField());
    key("target");
    writer.Int(dependency->target->iUserField());
    writer.EndObject();
  }
  writer.EndArray();
  writer.EndObject();
}

void writeJson(const char* path, Graph& graph) {
  numberObjects(graph);
  std::FILE* file = std::fopen(path, "wb");
  if (!file) fail(path);
  auto buffer = std::make_unique<char[]>(65536);
  rapidjson::FileWriteStream stream(file, buffer.get(), 65536);
  rapidjson::Writer<rapidjson::FileWriteStream> writer(stream);
  writeJsonContent(writer, graph);
  stream.Flush();
  if (std::fclose(file) != 0) fail(path);
}

std::string readWhole(const char* path) {
  std::FILE* file = std::fopen(path, "rb");
  if (!file) fail(path);
  struct stat status {};
  fstat(fileno(file), &status);
  std::string content(static_cast<size_t>(status.st_size), '\0');
  if (std::fread(content.data(), 1, content.size(), file) != content.size()) fail(path);
  std::fclose(file);
  return content;
}

using PackagesByID = std::unordered_map<int32_t, Package*>;

Package* packageOf(const PackagesByID& packages, int32_t id) {
  const auto found = packages.find(id);
  if (found == packages.end()) fail("reference to nothing");
  return found->second;
}

// A member that must be there and of that kind, as the grammar of an OML file says it of a field.
const rapidjson::Value& member(const rapidjson::Value& node, const char* name,
                               bool (rapidjson::Value::*isKind)() const) {
  const auto found = node.FindMember(name);
  if (found == node.MemberEnd() || !(found->value.*isKind)()) fail(name);
  return found->value;
}
int32_t intMember(const rapidjson::Value& node, const char* name) {
  return member(node, name, &rapidjson::Value::IsInt).GetInt();
}
std::string stringMember(const rapidjson::Value& node, const char* name) {
  const rapidjson::Value& value = member(node, name, &rapidjson::Value::IsString);
  return {value.GetString(), value.GetStringLength()};
}

std::unique_ptr<Graph> graphOf(const rapidjson::Document& document, const char* path) {
  if (document.HasParseError() || !document.IsObject()) fail(path);
  auto graph = std::make_unique<Graph>();
  PackagesByID packages;
  const auto& list = member(document, "packages", &rapidjson::Value::IsArray);
  packages.reserve(list.Size());
  for (const auto& node : list.GetArray()) {
    auto& package = *graph->packages.emplace_back(std::make_unique<Package>(graph.get()));
    packages[intMember(node, "id")] = &package;
    package.title = stringMember(node, "title");
    package.area = stringMember(node, "area");
    package.size = intMember(node, "size");
  }
  for (const auto& node : member(document, "dependencies", &rapidjson::Value::IsArray).GetArray()) {
    auto& dependency = *graph->dependencies.emplace_back(std::make_unique<Dependency>(graph.get()));
    dependency.source = packageOf(packages, intMember(node, "source"));
    dependency.target = packageOf(packages, intMember(node, "target"));
  }
  return graph;
}

// The document as a tree, read through a buffer.
std::unique_ptr<Graph> readJsonDom(const char* path) {
  std::FILE* file = std::fopen(path, "rb");
  if (!file) fail(path);
  auto buffer = std::make_unique<char[]>(65536);
  rapidjson::FileReadStream stream(file, buffer.get(), 65536);
  rapidjson::Document document;
  document.ParseStream(stream);
  std::fclose(file);
  return graphOf(document, path);
}

// The same, parsed in place in a file that is all in memory.
std::unique_ptr<Graph> readJsonInPlace(const char* path) {
  std::string content = readWhole(path);
  rapidjson::Document document;
  document.ParseInsitu(content.data());
  return graphOf(document, path);
}

// The document as events, without a tree. References are resolved behind the end, since they may point
// forward.
class JsonHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, JsonHandler> {
 public:
  explicit JsonHandler(Graph& graph) : graph_(graph) {}

  bool StartObject() {
    if (++level_ == 2 && list_ == "packages")
      package_ = graph_.packages.emplace_back(std::make_unique<Package>(&graph_)).get();
    if (level_ == 2 && list_ == "dependencies") {
      graph_.dependencies.emplace_back(std::make_unique<Dependency>(&graph_));
      ends_.push_back({});
    }
    return true;
  }
  bool EndObject(rapidjson::SizeType) {
    --level_;
    return true;
  }
  bool Key(const char* text, rapidjson::SizeType length, bool) {
    key_ = {text, length};
    if (level_ == 1) list_ = key_;
    return true;
  }
  bool Int(int value) { return number(value); }
  bool Uint(unsigned value) { return number(static_cast<int>(value)); }
  bool String(const char* text, rapidjson::SizeType length, bool) {
    (key_ == "title" ? package_->title : package_->area).assign(text, length);
    return true;
  }

  void resolve() {
    for (size_t i = 0; i < ends_.size(); ++i) {
      graph_.dependencies[i]->source = packageOf(packages_, ends_[i].first);
      graph_.dependencies[i]->target = packageOf(packages_, ends_[i].second);
    }
  }

 private:
  bool number(int value) {
    if (level_ < 2) return true;
    if (key_ == "id") packages_[value] = package_;
    if (key_ == "size") package_->size = value;
    if (key_ == "source") ends_.back().first = value;
    if (key_ == "target") ends_.back().second = value;
    return true;
  }

  Graph& graph_;
  int level_ = 0;
  std::string_view list_;
  std::string_view key_;
  Package* package_ = nullptr;
  PackagesByID packages_;
  std::vector<std::pair<int32_t, int32_t>> ends_;
};

std::unique_ptr<Graph> readJsonSax(const char* path) {
  std::string content = readWhole(path);
  auto graph = std::make_unique<Graph>();
  JsonHandler handler(*graph);
  rapidjson::Reader reader;
  rapidjson::InsituStringStream stream(content.data());
  if (!reader.Parse<rapidjson::kParseInsituFlag>(stream, handler)) fail(path);
  handler.resolve();
  return graph;
}

// ---- Data

// The lines of the data file: name, section, size, names of the packages it depends on.
std::unique_ptr<Graph> packageGraph() {
  gzFile file = gzopen(ZV_BENCH_DATA "/debian-packages.tsv.gz", "rb");
  if (!file) fail("no data");
  std::string content;
  char piece[65536];
  for (int count = gzread(file, piece, sizeof piece); count > 0; count = gzread(file, piece, sizeof piece))
    content.append(piece, static_cast<size_t>(count));
  gzclose(file);

  auto graph = std::make_unique<Graph>();
  std::unordered_map<std::string_view, Package*> byName;
  std::vector<std::string_view> names;
  std::string_view rest = content;
  auto next = [](std::string_view& text, char separator) {
    const size_t end = std::min(text.find(separator), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return word;
  };
  while (!rest.empty()) {
    std::string_view line = next(rest, '\n');
    auto& package = *graph->packages.emplace_back(std::make_unique<Package>(graph.get()));
    const std::string_view name = next(line, '\t');
    package.title = name;
    package.area = next(line, '\t');
    package.size = std::atoi(std::string(next(line, '\t')).c_str());
    byName[name] = &package;
    names.push_back(line);
  }
  for (size_t i = 0; i < names.size(); ++i) {
    for (std::string_view list = names[i]; !list.empty();) {
      auto& dependency = *graph->dependencies.emplace_back(std::make_unique<Dependency>(graph.get()));
      dependency.source = graph->packages[i].get();
      dependency.target = byName.at(next(list, ' '));
    }
  }
  return graph;
}

// A graph of that many objects, a fifth of them packages, with dependencies anywhere.
std::unique_ptr<Graph> randomGraph(int32_t objects) {
  auto graph = std::make_unique<Graph>();
  const uint32_t count = static_cast<uint32_t>(objects) / 5;
  for (uint32_t i = 0; i < count; ++i) {
    auto& package = *graph->packages.emplace_back(std::make_unique<Package>(graph.get()));
    package.title = "package-" + std::to_string(i);
    package.area = "area-" + std::to_string(i % 50);
    package.size = static_cast<int32_t>(i);
  }
  uint32_t random = 12345;
  auto any = [&] {
    random = random * 1664525 + 1013904223;
    return graph->packages[(random >> 8) % count].get();
  };
  while (graph->objects() < objects) {
    auto& dependency = *graph->dependencies.emplace_back(std::make_unique<Dependency>(graph.get()));
    dependency.source = any();
    dependency.target = any();
  }
  return graph;
}

bool sameGraph(const Graph& a, const Graph& b) {
  if (a.packages.size() != b.packages.size() || a.dependencies.size() != b.dependencies.size()) return false;
  std::unordered_map<const Package*, const Package*> twin;
  for (size_t i = 0; i < a.packages.size(); ++i) {
    const Package& p = *a.packages[i];
    const Package& q = *b.packages[i];
    if (p.title != q.title || p.area != q.area || p.size != q.size) return false;
    twin[&p] = &q;
  }
  for (size_t i = 0; i < a.dependencies.size(); ++i) {
    const Dependency& d = *a.dependencies[i];
    const Dependency& e = *b.dependencies[i];
    if (twin[d.source] != e.source || twin[d.target] != e.target) return false;
  }
  return true;
}

// ---- Measuring

struct Data {
  std::unique_ptr<Graph> graph;
  std::unique_ptr<ZVOMLStatic> grammar;
};

// Peak memory in MB of a process that runs work and nothing else.
double peakMemory(const std::function<void()>& work) {
  auto peak = [](const std::function<void()>& run) {
    const pid_t child = fork();
    if (child == 0) {
      run();
      _exit(0);
    }
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || status != 0) fail("measuring memory");
    return static_cast<double>(usage.ru_maxrss) * 1024 / 1e6;
  };
  return peak(work) - peak([] {});
}

double fileSize(const char* path) {
  struct stat status {};
  if (stat(path, &status) != 0) fail(path);
  return static_cast<double>(status.st_size);
}

void report(benchmark::State& state, const char* path, int32_t objects) {
  state.SetBytesProcessed(static_cast<int64_t>(fileSize(path)) * state.iterations());
  state.counters["file_MB"] = fileSize(path) / 1e6;
  state.counters["per_object"] = benchmark::Counter(
      objects, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

template <class Read>
void readBenchmark(benchmark::State& state, const char* path, Read read) {
  int32_t objects = 0;
  for (auto _ : state) {
    std::unique_ptr<Graph> graph = read();
    state.PauseTiming();
    objects = graph->objects();
    graph.reset();
    state.ResumeTiming();
  }
  report(state, path, objects);
}

template <class Write>
void writeBenchmark(benchmark::State& state, const char* path, Graph& graph, Write write) {
  for (auto _ : state) write();
  report(state, path, graph.objects());
}

constexpr const char* TEXT = "packages.oml";
constexpr const char* BINARY = "packages.bin";
constexpr const char* JSON = "packages.json";

// The files and the peaks are made while this process is still small.
std::map<std::string, double> peaks;

void prepare(ZVOMLStatic& grammar) {
  auto inChild = [](const char* name, const std::function<void()>& work) { peaks[name] = peakMemory(work); };
  // The whole graph with its writers is a process of its own, so that the readers start from nothing.
  const double graphAlone = peakMemory([] { packageGraph(); });
  peaks["write/oml_text"] = peakMemory([&] { writeOml(TEXT, *packageGraph(), grammar, 0); }) - graphAlone;
  peaks["write/oml_binary"] = peakMemory([&] { writeOml(BINARY, *packageGraph(), grammar, 1); }) - graphAlone;
  peaks["write/json"] = peakMemory([&] { writeJson(JSON, *packageGraph()); }) - graphAlone;
  inChild("read/oml_text", [&] { readOml(TEXT, grammar, 0); });
  inChild("read/oml_binary", [&] { readOml(BINARY, grammar, 1); });
  inChild("read/json_dom", [] { readJsonDom(JSON); });
  inChild("read/json_in_place", [] { readJsonInPlace(JSON); });
  inChild("read/json_sax", [] { readJsonSax(JSON); });
}

void registerPackages(Data& data) {
  auto add = [](const char* name, auto run) {
    auto withPeak = [=](benchmark::State& state) {
      run(state);
      state.counters["peak_MB"] = peaks.at(name);
    };
    benchmark::RegisterBenchmark(name, withPeak)->Unit(benchmark::kMillisecond)->MinTime(1.0);
  };
  ZVOMLStatic* grammar = data.grammar.get();
  Graph* graph = data.graph.get();
  add("read/json_dom", [](benchmark::State& s) { readBenchmark(s, JSON, [] { return readJsonDom(JSON); }); });
  add("read/json_in_place",
      [](benchmark::State& s) { readBenchmark(s, JSON, [] { return readJsonInPlace(JSON); }); });
  add("read/json_sax", [](benchmark::State& s) { readBenchmark(s, JSON, [] { return readJsonSax(JSON); }); });
  add("read/oml_text",
      [=](benchmark::State& s) { readBenchmark(s, TEXT, [=] { return readOml(TEXT, *grammar, 0); }); });
  add("read/oml_binary",
      [=](benchmark::State& s) { readBenchmark(s, BINARY, [=] { return readOml(BINARY, *grammar, 1); }); });
  add("write/json",
      [=](benchmark::State& s) { writeBenchmark(s, JSON, *graph, [=] { writeJson(JSON, *graph); }); });
  add("write/oml_text", [=](benchmark::State& s) {
    writeBenchmark(s, TEXT, *graph, [=] { writeOml(TEXT, *graph, *grammar, 0); });
  });
  add("write/oml_binary", [=](benchmark::State& s) {
    writeBenchmark(s, BINARY, *graph, [=] { writeOml(BINARY, *graph, *grammar, 1); });
  });
}

// The time per object for growing files, each with pools sized for it, and with memory that an earlier read
// has touched before.
void registerScaling() {
  enum Form { JSON_FORM, TEXT_FORM, BINARY_FORM };
  const std::pair<const char*, Form> forms[] = {
      {"scale/json_dom/", JSON_FORM}, {"scale/oml_text/", TEXT_FORM}, {"scale/oml_binary/", BINARY_FORM}};
  for (const auto& [name, form] : forms) {
    for (const int32_t objects : {10000, 100000, 1000000}) {
      auto run = [=](benchmark::State& state) {
        const std::string path = "scale" + std::to_string(objects);
        auto grammar = makeGrammar(objects / 5, 2 * objects);
        const int binary = form == BINARY_FORM;
        if (form == JSON_FORM) {
          writeJson(path.c_str(), *randomGraph(objects));
        } else {
          writeOml(path.c_str(), *randomGraph(objects), *grammar, binary);
        }
        readBenchmark(state, path.c_str(), [&] {
          return form == JSON_FORM ? readJsonDom(path.c_str()) : readOml(path.c_str(), *grammar, binary);
        });
        std::remove(path.c_str());
      };
      benchmark::RegisterBenchmark((name + std::to_string(objects)).c_str(), run)
          ->Unit(benchmark::kMillisecond)
          ->MinWarmUpTime(1.0)
          ->MinTime(2.0);
    }
  }
}

// The files of a run, in a folder that goes with it.
class Folder {
 public:
  Folder() : path_(std::filesystem::temp_directory_path() / "bench_oml.XXXXXX") {
    if (!mkdtemp(path_.data())) fail("no folder");
    std::filesystem::current_path(path_);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path_); }

 private:
  std::string path_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const Folder folder;
  Data data;
  data.grammar = makeGrammar(70000, 700000);
  prepare(*data.grammar);
  data.graph = packageGraph();
  for (auto& other : {readJsonDom(JSON), readJsonInPlace(JSON), readJsonSax(JSON),
                      readOml(TEXT, *data.grammar, 0), readOml(BINARY, *data.grammar, 1)})
    if (!sameGraph(*data.graph, *other)) fail("the readers do not agree");
  registerPackages(data);
  registerScaling();
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
