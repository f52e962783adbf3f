#include "examples/netdraw/netfile.h"

#include "examples/netdraw/nettable.h"

namespace {

// The create functions of the grammar: owner is the live object made for the enclosing object of the file.

ZVObject* createGraph(void*, ZVOMLSyntaxObject*, ZVOMLSyntaxObject*, ZVObject*) { return new NetGraph; }

ZVObject* createNode(void*, ZVOMLSyntaxObject*, ZVOMLSyntaxObject*, ZVObject* owner) {
  return static_cast<NetGraph*>(owner)->addNode();
}

ZVObject* createEdge(void*, ZVOMLSyntaxObject*, ZVOMLSyntaxObject*, ZVObject* owner) {
  return static_cast<NetGraph*>(owner)->addEdge();
}

ZVObject* createBend(void*, ZVOMLSyntaxObject*, ZVOMLSyntaxObject*, ZVObject* owner) {
  return static_cast<NetEdge*>(owner)->addBend();
}

// Fields are stored by the objects themselves, so no type has a field function.
constexpr ZVOMLStaticOEStruct TYPES[] = {
    {"graph", nullptr, createGraph, nullptr, nullptr}, {"node", nullptr, createNode, nullptr, nullptr},
    {"edge", nullptr, createEdge, nullptr, nullptr},   {"bend", nullptr, createBend, nullptr, nullptr},
    {"note", nullptr, nullptr, nullptr, nullptr},      {nullptr, nullptr, nullptr, nullptr, nullptr}};

constexpr int MESSAGE_BYTES = 1 << 16;

}  // namespace

NetGrammar::NetGrammar() : ZVOMLStatic(TYPES, nettable::SECTIONS, nettable::VALUES, nettable::DEFINITIONS) {}

const char* nameOf(Form form) { return form == Form::BINARY ? "binary" : "text"; }

NetFile::NetFile(NetGrammar& grammar, Trace& trace) : grammar_(grammar), trace_(trace) {
  pOMLExtension(&notes_);
  pErrorStringBuffer(MESSAGE_BYTES);
  pWarningStringBuffer(MESSAGE_BYTES);
}

std::unique_ptr<NetGraph> NetFile::read(const std::string& path, Form form) {
  code_ = readOMLFile(path.c_str(), &grammar_, nullptr, -1, form == Form::BINARY, 1, 0);
  traceRun("read", path, form);
  return std::unique_ptr<NetGraph>(code_ == ZV_FILE_OK ? static_cast<NetGraph*>(pTopObject()) : nullptr);
}

ZVFileCodeEnum NetFile::write(const std::string& path, Form form, NetGraph& graph) {
  graph.preFileWrite(this);
  code_ = writeOMLFile(path.c_str(), &grammar_, &graph, form == Form::BINARY, 1, 0);
  graph.postFileWrite(this, code_);
  traceRun("write", path, form);
  return code_;
}

void NetFile::traceRun(const char* what, const std::string& path, Form form) {
  trace_.line(std::string(what) + ' ' + path + " as " + nameOf(form) + ": code " + std::to_string(code_) +
              ", " + std::to_string(numberOfErrors()) + " errors, " + std::to_string(numberOfWarnings()) +
              " warnings");
}

std::string NetFile::messages() const { return std::string(pErrorStringBuffer()) + pWarningStringBuffer(); }

void NetFile::vWriteContents(ZVObject* top) {
  auto* graph = static_cast<NetGraph*>(top);
  writeObjectStart("graph", graph, 0, 1);
  writeOpeningBracket();
  graph->vWriteFields(this, 0);
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

// What the companion does not know is the file's own.

ZVObject* NetFile::vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject* ownerSyntax, ZVObject* owner) {
  ZVObject* made = notes_.vCreateObject(object, ownerSyntax, owner);
  return made ? made : ZVOMLFile::vCreateObject(object, ownerSyntax, owner);
}

int NetFile::vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVObject* target) {
  return notes_.vReadField(field, object, target) || ZVOMLFile::vReadField(field, object, target);
}
