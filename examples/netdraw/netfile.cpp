#include "examples/netdraw/netfile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "examples/netdraw/nettable.h"
#include "examples/netdraw/networds.h"

namespace {

// The create functions of the grammar: owner is the live object made for the enclosing object of the file.

ZVObject* createGraph(void* file, ZVOMLSyntaxObject*, ZVOMLSyntaxObject*, ZVObject*) {
  return static_cast<NetFile*>(static_cast<ZVOMLFile*>(file))->factory().newGraph();
}

ZVObject* createNode(void*, ZVOMLSyntaxObject*, ZVOMLSyntaxObject*, ZVObject* owner) {
  return static_cast<NetGraph*>(owner)->addNode();
}

ZVObject* createEdge(void*, ZVOMLSyntaxObject*, ZVOMLSyntaxObject*, ZVObject* owner) {
  return static_cast<NetGraph*>(owner)->addEdge();
}

ZVObject* createBend(void*, ZVOMLSyntaxObject*, ZVOMLSyntaxObject*, ZVObject* owner) {
  return static_cast<NetEdge*>(owner)->addBend();
}

// Fields are stored by the objects themselves, so no type has a field function. The other types of the
// grammar are known to the companions.
constexpr ZVOMLStaticOEStruct CREATORS[] = {{"graph", nullptr, createGraph, nullptr, nullptr},
                                            {"node", nullptr, createNode, nullptr, nullptr},
                                            {"edge", nullptr, createEdge, nullptr, nullptr},
                                            {"bend", nullptr, createBend, nullptr, nullptr},
                                            {nullptr, nullptr, nullptr, nullptr, nullptr}};

constexpr int MESSAGE_BYTES = 1 << 16;

}  // namespace

NetGrammar::NetGrammar()
    : ZVOMLStatic(nettable::TYPES, nettable::SECTIONS, nettable::VALUES, nettable::DEFINITIONS) {
  installObjectTypeTable(CREATORS);
}

const char* nameOf(Form form) { return form == Form::BINARY ? "binary" : "text"; }

std::optional<Form> seemingForm(const std::string& path) {
  std::error_code none;
  if (!std::filesystem::is_regular_file(path, none)) return std::nullopt;
  std::ifstream in(path, std::ios::binary);
  char bytes[256];
  const auto count = in.read(bytes, sizeof bytes).gcount();
  if (count == 0) return std::nullopt;
  // Numbers of the binary form have bytes that no text has.
  auto isNoText = [](char c) { return static_cast<unsigned char>(c) < ' ' && (c < '\t' || c > '\r'); };
  return std::any_of(bytes, bytes + count, isNoText) ? Form::BINARY : Form::TEXT;
}

const char* inWords(ZVFileCodeEnum code) {
  switch (code) {
    case ZV_FILE_OK:
      return "good";
    case ZV_FILE_OPEN_ERROR:
      return "cannot be opened";
    case ZV_FILE_READ_ERROR:
      return "cannot be read";
    default:  // a write that fails may show at the close
      return "cannot be written";
  }
}

NetFile::NetFile(NetFactory& factory, Trace& trace) : factory_(factory), trace_(trace) {
  pOMLExtension(&notes_);
  pErrorStringBuffer(MESSAGE_BYTES);
  pWarningStringBuffer(MESSAGE_BYTES);
}

std::unique_ptr<NetGraph> NetFile::read(const std::string& path, Form form) {
  code_ = readOMLFile(path.c_str(), &factory_.grammar(), nullptr, -1, form == Form::BINARY, 1, 0);
  traceRun("read", path, form);
  std::unique_ptr<NetGraph> graph(code_ == ZV_FILE_OK ? static_cast<NetGraph*>(pTopObject()) : nullptr);
  if (graph) graph->closeTables();
  return graph;
}

ZVFileCodeEnum NetFile::write(const std::string& path, Form form, NetGraph& graph) {
  graph.preFileWrite(this);
  code_ = writeOMLFile(path.c_str(), &factory_.grammar(), &graph, form == Form::BINARY, 1, 0);
  graph.postFileWrite(this, code_);
  traceRun("write", path, form);
  return code_;
}

void NetFile::traceRun(const char* what, const std::string& path, Form form) {
  trace_.line(std::string(what) + ' ' + path + " as " + nameOf(form) + ": " + inWords(code_) + ", " +
              counted(numberOfErrors(), "error") + ", " + counted(numberOfWarnings(), "warning"));
}

std::string NetFile::messages() const { return std::string(pErrorStringBuffer()) + pWarningStringBuffer(); }

void NetFile::vWriteContents(ZVObject* top) {
  auto* graph = static_cast<NetGraph*>(top);
  writeObjectStart("graph", graph, 0, 1);
  writeOpeningBracket();
  graph->vWriteFields(this, 0);
  resources_.vWriteContents(graph);
  auto writeObject = [this](const char* type, NetObject* object) {
    writeObjectStart(type, object, 0, 1);
    writeOpeningBracket();
    object->vWriteFields(this, 0);
    writeClosingBracket();
  };
  forEach<NetNode>(graph->nodes, [&](NetNode* node) { writeObject("node", node); });
  forEach<NetEdge>(graph->edges, [&](NetEdge* edge) { writeObject("edge", edge); });
  notes_.vWriteContents(graph);
  writeClosingBracket();
}

// What the companions do not know is the file's own.

int NetFile::vCheckObject(ZVOMLSyntaxObject* object) {
  return resources_.vCheckObject(object) && ZVOMLFile::vCheckObject(object);
}

ZVObject* NetFile::vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax, ZVObject* owner) {
  ZVObject* made = notes_.vCreateObject(object, ownerSyntax, owner);
  if (!made) made = resources_.vCreateObject(object, ownerSyntax, owner);
  return made ? made : ZVOMLFile::vCreateObject(object, ownerSyntax, owner);
}

int NetFile::vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVObject* target) {
  return notes_.vReadField(field, object, target) || resources_.vReadField(field, object, target) ||
         ZVOMLFile::vReadField(field, object, target);
}
