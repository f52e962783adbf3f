#include "examples/netdraw/netmodel.h"

#include <algorithm>
#include <map>

#include "examples/netdraw/netcolor.h"
#include "examples/netdraw/netfacto.h"
#include "examples/netdraw/netshape.h"
#include "netkeys.h"
#include "utils/zvomlfil.h"
#include "utils/zvomlsyn.h"

namespace {

const char* const PATTERNS[] = {"solid", "dashed", "dotted"};

// How far the control points of a loop lie off the right side of its node, and above and below its centre.
constexpr int32_t LOOP_WIDTH = 300;
constexpr int32_t LOOP_RISE = 200;

int32_t within32Bits(int64_t value) { return truncateToInt32(static_cast<double>(value)); }

// A colour by its name, as earlier files have it; no name is no colour.
void takeColor(Share<ZVColorResource>& share, NetGraph& graph, const char* name) {
  ZVColor color;
  share.take(setColor(color, name) ? graph.colors.share(color) : nullptr);
}

// A coordinate or an extent that stands in a pair; gives 1 if the field was one of the two.
template <class First, class Second>
int readPair(ZVOMLSyntaxField* field, int32_t firstKey, First first, int32_t secondKey, Second second) {
  if (field->fieldIDIndex() == firstKey) return first(field->longValue()), 1;
  if (field->fieldIDIndex() == secondKey) return second(field->longValue()), 1;
  return 0;
}

int readPoint(ZVOMLSyntaxField* field, ZVPoint& point) {
  return readPair(
      field, ZV_XKEY_FI_X, [&](int32_t v) { point.x(v); }, ZV_XKEY_FI_Y, [&](int32_t v) { point.y(v); });
}

int readSize(ZVOMLSyntaxField* field, ZVSize& size) {
  return readPair(
      field, ZV_XKEY_FI_WIDTH, [&](int32_t v) { size.width(v); }, ZV_XKEY_FI_HEIGHT,
      [&](int32_t v) { size.height(v); });
}

}  // namespace

void NetObject::prepareIDForGraphFile(ZVIndexHashTable* table) {
  ZVOMLObject::prepareIDForGraphFile(table);
  if (iUserField() == identityNumber()) iUserField(number_);
}

NetGraph& NetObject::ownerGraph() const { return *static_cast<NetGraph*>(owner_); }

NetNode::NetNode(NetGraph* graph) : NetObject(graph, graph->takeNumber()) {
  shape.take(graph->shapes.shareDefault());
}

ZVSize NetNode::extent() const { return ZVSize(std::max(size.width(), 0), std::max(size.height(), 0)); }

ZVRect NetNode::rect() const {
  const int32_t width = extent().width();
  const int32_t height = extent().height();
  const int64_t left = int64_t{centre.x()} - width / 2;
  const int64_t bottom = int64_t{centre.y()} - height / 2;
  return ZVRect(within32Bits(left), within32Bits(bottom), within32Bits(left + width),
                within32Bits(bottom + height));
}

int NetNode::vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject*, ZVOMLFile*) {
  switch (field->fieldIDIndex()) {
    case ZV_XKEY_FI_TITLE:
      title = field->stringValue();
      return 1;
    case ZV_XKEY_FI_LABEL:
      label = field->stringValue();
      return 1;
    case ZV_XKEY_FI_SHAPE:
      shape.take(ownerGraph().shapes.share(outlineOf(static_cast<Shape>(field->enumValue()))));
      return 1;
    case ZV_XKEY_FI_SHAPEINDEX:
      shape.take(ownerGraph().shapes.shareInTable(field->longValue()));
      return 1;
    case ZV_XKEY_FI_FILLED:
      filled = field->boolValue() != 0;
      return 1;
    case ZV_XKEY_FI_COLOR:
      takeColor(color, ownerGraph(), field->stringValue());
      return 1;
    case ZV_XKEY_FI_COLORINDEX:
      color.take(ownerGraph().colors.shareInTable(field->longValue()));
      return 1;
    case ZV_XKEY_FI_FILL:
      takeColor(fill, ownerGraph(), field->stringValue());
      return 1;
    case ZV_XKEY_FI_FILLINDEX:
      fill.take(ownerGraph().colors.shareInTable(field->longValue()));
      return 1;
    default:
      return readPoint(field, centre) || readSize(field, size);
  }
}

void NetNode::vWriteFields(ZVOMLFile* file, int) {
  file->writeStringAttribute("title", title.c_str());
  file->writeStringAttribute("label", label.c_str());
  file->writeSectionStart("place", 1);
  file->writeOpeningBracket();
  file->writeAttribute("x", centre.x());
  file->writeAttribute("y", centre.y());
  file->writeAttribute("width", size.width());
  file->writeAttribute("height", size.height());
  file->writeClosingBracket();
  file->writeSectionStart("style", 1);
  file->writeOpeningBracket();
  file->writeAttribute("shapeIndex", ownerGraph().shapes.placeInTable(shape));
  file->writeBoolAttribute("filled", filled);
  if (color) file->writeAttribute("colorIndex", ownerGraph().colors.placeInTable(color));
  if (fill) file->writeAttribute("fillIndex", ownerGraph().colors.placeInTable(fill));
  file->writeClosingBracket();
}

int NetBend::vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject*, ZVOMLFile*) {
  return readPoint(field, point);
}

void NetBend::vWriteFields(ZVOMLFile* file, int) {
  file->writeAttribute("x", point.x());
  file->writeAttribute("y", point.y());
}

NetEdge::NetEdge(NetGraph* graph) : NetObject(graph, graph->takeNumber()) {}

NetBend* NetEdge::addBend() {
  auto* bend = new NetBend(this);
  bends.appendObject(bend);
  return bend;
}

std::vector<ZVPoint> NetEdge::leads() const {
  std::vector<ZVPoint> points;
  forEach<NetBend>(bends, [&](NetBend* bend) { points.push_back(bend->point); });
  if (points.size() >= 2) return points;
  if (source != target) {
    points.insert(points.begin(), source->centre);
    points.push_back(target->centre);
    return points;
  }
  const ZVRect rect = source->rect();
  auto point = [&](int32_t away, int32_t rise) {
    return ZVPoint(within32Bits(int64_t{rect.right()} + away),
                   within32Bits(int64_t{source->centre.y()} + rise));
  };
  const int32_t foot = std::min(LOOP_RISE / 2, source->extent().height() / 4);
  return {point(0, foot), point(LOOP_WIDTH, LOOP_RISE), point(LOOP_WIDTH, -LOOP_RISE), point(0, -foot)};
}

std::vector<ZVPoint> NetEdge::line() const {
  constexpr int PIECES = 8;
  std::vector<ZVPoint> points = leads();
  if (!areCurves(points)) return points;
  std::vector<ZVPoint> result = {points.front()};
  for (size_t i = 0; i + 3 < points.size(); i += 3) {
    for (int piece = 1; piece <= PIECES; ++piece) {
      const double t = static_cast<double>(piece) / PIECES;
      const double u = 1.0 - t;
      const double weights[] = {u * u * u, 3 * u * u * t, 3 * u * t * t, t * t * t};
      double x = 0.0;
      double y = 0.0;
      for (size_t k = 0; k < 4; ++k) {
        x += weights[k] * points[i + k].x();
        y += weights[k] * points[i + k].y();
      }
      result.push_back(ZVPoint(roundHalfUp(x), roundHalfUp(y)));
    }
  }
  return result;
}

int NetEdge::vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject*, ZVOMLFile*) {
  switch (field->fieldIDIndex()) {
    case ZV_XKEY_FI_SOURCE:
      source = static_cast<NetNode*>(field->objectValue());
      return source != nullptr;
    case ZV_XKEY_FI_TARGET:
      target = static_cast<NetNode*>(field->objectValue());
      return target != nullptr;
    case ZV_XKEY_FI_COLOR:
      takeColor(color, ownerGraph(), field->stringValue());
      return 1;
    case ZV_XKEY_FI_COLORINDEX:
      color.take(ownerGraph().colors.shareInTable(field->longValue()));
      return 1;
    case ZV_XKEY_FI_PATTERN:
      pattern = static_cast<Pattern>(field->enumValue());
      return 1;
    default:
      return 0;
  }
}

void NetEdge::vWriteFields(ZVOMLFile* file, int) {
  file->writeAttribute("source", source, this, 1);
  file->writeAttribute("target", target, this, 1);
  file->writeSectionStart("line", 1);
  file->writeOpeningBracket();
  if (color) file->writeAttribute("colorIndex", ownerGraph().colors.placeInTable(color));
  file->writeAttribute("pattern", PATTERNS[static_cast<int>(pattern)]);
  file->writeClosingBracket();
  forEach<NetBend>(bends, [&](NetBend* bend) {
    file->writeObjectStart("bend", bend, 1);
    file->writeOpeningBracket();
    bend->vWriteFields(file, 0);
    file->writeClosingBracket();
  });
}

NetGraph::~NetGraph() {
  edges.deleteAllCellsAndObjects();
  nodes.deleteAllCellsAndObjects();
  notes.deleteAllCellsAndObjects();
}

NetNode* NetGraph::addNode() {
  auto* node = static_cast<NetNode*>(factory_.zvNewDNode(this, 0));
  nodes.appendObject(node);
  return node;
}

NetEdge* NetGraph::addEdge() {
  auto* edge = static_cast<NetEdge*>(factory_.zvNewDEdge(this, 0));
  edges.appendObject(edge);
  return edge;
}

ZVText* NetGraph::addNote(const std::string& text) {
  auto* note = new ZVText(text.c_str());
  notes.appendObject(note);
  return note;
}

NetNode* NetGraph::findNode(const std::string& nodeTitle) const {
  for (ZVDListIter it(&nodes); it; ++it) {
    auto* node = static_cast<NetNode*>(it.pObject());
    if (node->title == nodeTitle) return node;
  }
  return nullptr;
}

int NetGraph::vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject*, ZVOMLFile*) {
  switch (field->fieldIDIndex()) {
    case ZV_XKEY_FI_TITLE:
      title = field->stringValue();
      return 1;
    case ZV_XKEY_FI_SCALE:
      scale = field->doubleValue();
      return 1;
    default:
      return readSize(field, extent);
  }
}

void NetGraph::vWriteFields(ZVOMLFile* file, int) {
  file->writeStringAttribute("title", title.c_str());
  file->writeAttribute("scale", scale);
  file->writeSectionStart("extent", 1);
  file->writeOpeningBracket();
  file->writeAttribute("width", extent.width());
  file->writeAttribute("height", extent.height());
  file->writeClosingBracket();
}

void NetGraph::closeTables() {
  colors.closeTable();
  shapes.closeTable();
}

void NetGraph::preFileWrite(ZVOMLFile* file) {
  NetObject::preFileWrite(file);
  colors.openTable();
  shapes.openTable();
  forEach<NetNode>(nodes, [&](NetNode* node) {
    shapes.placeInTable(node->shape);
    colors.placeInTable(node->color);
    colors.placeInTable(node->fill);
  });
  forEach<NetEdge>(edges, [&](NetEdge* edge) { colors.placeInTable(edge->color); });
}

void NetGraph::postFileWrite(ZVOMLFile* file, ZVFileCodeEnum code) {
  closeTables();
  NetObject::postFileWrite(file, code);
}

void NetGraph::vBuildListOfSubObjects(ZVDList& list) {
  list.copyAppendList(&nodes);
  list.copyAppendList(&edges);
}

namespace {

// Compares two drawings item by item and keeps the first difference.
class Comparison {
 public:
  template <class Value>
  Comparison& check(const std::string& what, const Value& a, const Value& b) {
    if (difference_.empty() && !(a == b)) difference_ = what + " differs";
    return *this;
  }

  Comparison& checkPair(const std::string& what, const ZVTuple& a, const ZVTuple& b) {
    return check(what, a.x(), b.x()).check(what, a.y(), b.y());
  }

  // Calls compare(n, a, b) for the n-th objects of both lists, which must be equally long.
  template <class Object, class Compare>
  Comparison& checkAll(const std::string& what, const ZVDList& a, const ZVDList& b, Compare compare) {
    check("number of " + what, a.length(), b.length());
    ZVDListIter itA(&a);
    ZVDListIter itB(&b);
    for (int n = 1; difference_.empty() && itA && itB; ++n, ++itA, ++itB) {
      compare(n, *static_cast<Object*>(itA.pObject()), *static_cast<Object*>(itB.pObject()));
    }
    return *this;
  }

  const std::string& difference() const { return difference_; }

 private:
  std::string difference_;
};

// Nodes by their place in the graph, so that ends of edges compare across drawings.
std::map<const NetNode*, int> nodePlaces(const NetGraph& graph) {
  std::map<const NetNode*, int> places;
  forEach<NetNode>(graph.nodes,
                   [&](NetNode* node) { places.emplace(node, static_cast<int>(places.size())); });
  return places;
}

}  // namespace

std::string firstDifference(const NetGraph& a, const NetGraph& b) {
  Comparison comparison;
  comparison.check("title", a.title, b.title)
      .check("scale", a.scale, b.scale)
      .checkPair("extent", a.extent, b.extent);
  comparison.checkAll<NetNode>("nodes", a.nodes, b.nodes, [&](int n, const NetNode& x, const NetNode& y) {
    std::string name = "node " + std::to_string(n) + ": ";
    comparison.check(name + "title", x.title, y.title)
        .check(name + "label", x.label, y.label)
        .checkPair(name + "centre", x.centre, y.centre)
        .checkPair(name + "size", x.size, y.size)
        .check(name + "shape", x.shape, y.shape)
        .check(name + "filling", x.filled, y.filled)
        .check(name + "colour", x.color, y.color)
        .check(name + "fill colour", x.fill, y.fill);
  });
  auto placesA = nodePlaces(a);
  auto placesB = nodePlaces(b);
  comparison.checkAll<NetEdge>("edges", a.edges, b.edges, [&](int n, const NetEdge& x, const NetEdge& y) {
    std::string name = "edge " + std::to_string(n) + ": ";
    comparison.check(name + "source", placesA[x.source], placesB[y.source])
        .check(name + "target", placesA[x.target], placesB[y.target])
        .check(name + "colour", x.color, y.color)
        .check(name + "pattern", x.pattern, y.pattern)
        .checkAll<NetBend>(name + "bends", x.bends, y.bends, [&](int m, const NetBend& p, const NetBend& q) {
          comparison.checkPair(name + "bend " + std::to_string(m), p.point, q.point);
        });
  });
  comparison.checkAll<ZVText>("notes", a.notes, b.notes, [&](int n, const ZVText& x, const ZVText& y) {
    comparison.check("note " + std::to_string(n), std::string(x.pString()), std::string(y.pString()));
  });
  return comparison.difference();
}
