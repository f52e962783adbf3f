#include "examples/netdraw/netresrc.h"

#include <string>

#include "examples/netdraw/netcolor.h"
#include "examples/netdraw/netmodel.h"
#include "examples/netdraw/networds.h"
#include "netkeys.h"
#include "utils/zvomlfil.h"
#include "utils/zvomlsfi.h"
#include "utils/zvomlsoi.h"
#include "utils/zvomlsyn.h"
#include "utils/zvptdl.h"
#include "utils/zvptdlit.h"

namespace {

// The numbers of this layer's own messages.
constexpr int BAD_COLOR = 101;
constexpr int BAD_SHAPE = 102;
constexpr int NOT_IN_TABLE = 103;

// The order of the values in the grammar.
enum class Kind : int32_t { BOX, ELLIPSE, POLYGON };

const char* nameOfKind(const ZVShape& shape) {
  if (shape.pPointList()) return "polygon";
  return shape.shapeType() == ZV_SHAPE_ELLIPSE ? "ellipse" : "box";
}

// Walks the objects of a type in this one, also those in groups of defaults.
template <class Action>
void forEachIn(const ZVOMLSyntaxObject* object, int32_t type, Action action) {
  for (ZVOMLSyntaxObjectIter it(object); it; ++it) {
    if (it.pObject()->objectIDIndex() == 0) {
      forEachIn(it.pObject(), type, action);
    } else if (it.pObject()->objTypeIDIndex() == type) {
      action(it.pObject());
    }
  }
}

// The last field of that name: defaults come before what the object says itself. Null without one.
const ZVOMLSyntaxField* lastField(const ZVOMLSyntaxObject* object, int32_t key) {
  const ZVOMLSyntaxField* last = nullptr;
  for (ZVOMLSyntaxFieldIter it(object); it; ++it) {
    if (it.pField()->fieldIDIndex() == key) last = it.pField();
  }
  return last;
}

int32_t numberIn(const ZVOMLSyntaxObject* object, int32_t key) {
  const ZVOMLSyntaxField* field = lastField(object, key);
  return field ? field->longValue() : 0;
}

int32_t choiceIn(const ZVOMLSyntaxObject* object, int32_t key) {
  const ZVOMLSyntaxField* field = lastField(object, key);
  return field ? field->enumValue() : 0;
}

ZVColor colorIn(const ZVOMLSyntaxObject* rgb) {
  ZVColor color;
  color.ired(numberIn(rgb, ZV_XKEY_FI_RED));
  color.igreen(numberIn(rgb, ZV_XKEY_FI_GREEN));
  color.iblue(numberIn(rgb, ZV_XKEY_FI_BLUE));
  color.transparent(choiceIn(rgb, ZV_XKEY_FI_TRANSPARENT));
  return color;
}

ZVRect textBoxIn(const ZVOMLSyntaxObject* outline) {
  return {numberIn(outline, ZV_XKEY_FI_LEFT), numberIn(outline, ZV_XKEY_FI_BOTTOM),
          numberIn(outline, ZV_XKEY_FI_RIGHT), numberIn(outline, ZV_XKEY_FI_TOP)};
}

Kind kindIn(const ZVOMLSyntaxObject* outline) {
  return static_cast<Kind>(choiceIn(outline, ZV_XKEY_FI_KIND));
}

ZVShape shapeIn(const ZVOMLSyntaxObject* outline) {
  ZVShape shape;
  if (kindIn(outline) == Kind::ELLIPSE) shape.setShapeType(ZV_SHAPE_ELLIPSE);
  if (kindIn(outline) == Kind::POLYGON) {
    auto* vertices = new ZVPointDList;
    forEachIn(outline, ZV_XKEY_OI_VERTEX, [&](ZVOMLSyntaxObject* vertex) {
      vertices->appendPoint(new ZVPoint(numberIn(vertex, ZV_XKEY_FI_X), numberIn(vertex, ZV_XKEY_FI_Y)));
    });
    shape.pPointList(vertices);
  }
  shape.setInnerRect(textBoxIn(outline));
  return shape;
}

}  // namespace

void NetResources::vWriteContents(ZVObject* top) {
  const auto* graph = static_cast<NetGraph*>(top);
  writeObjectStart("colors", nullptr, 0);
  writeOpeningBracket();
  graph->colors.forEachInTable([&](const ZVColorResource& entry) { writeColor(*entry.pColor()); });
  writeClosingBracket();
  writeObjectStart("shapes", nullptr, 0);
  writeOpeningBracket();
  graph->shapes.forEachInTable([&](const ZVShapeResource& entry) { writeShape(*entry.pShape()); });
  writeClosingBracket();
}

void NetResources::writeColor(const ZVColor& color) {
  writeObjectStart("rgb", nullptr, 1);
  writeOpeningBracket();
  writeAttribute("red", color.ired());
  writeAttribute("green", color.igreen());
  writeAttribute("blue", color.iblue());
  if (color.transparent()) writeBoolAttribute("transparent", 1);
  writeClosingBracket();
}

void NetResources::writeShape(const ZVShape& shape) {
  ZVRect box;
  shape.getInnerRect(box);
  writeObjectStart("outline", nullptr, 0);
  writeOpeningBracket();
  writeAttribute("kind", nameOfKind(shape));
  writeSectionStart("textBox", 1);
  writeOpeningBracket();
  writeAttribute("left", box.left());
  writeAttribute("bottom", box.bottom());
  writeAttribute("right", box.right());
  writeAttribute("top", box.top());
  writeClosingBracket();
  if (shape.pPointList()) {
    for (ZVPointDListIter it(shape.pPointList()); it; ++it) {
      writeObjectStart("vertex", nullptr, 1);
      writeOpeningBracket();
      writeAttribute("x", it.pPoint()->x());
      writeAttribute("y", it.pPoint()->y());
      writeClosingBracket();
    }
  }
  writeClosingBracket();
}

int NetResources::vCheckObject(ZVOMLSyntaxObject* object) {
  const int32_t type = object->objTypeIDIndex();
  if (type == ZV_XKEY_OI_GRAPH) countEntries(object);
  if (type == ZV_XKEY_OI_OUTLINE) checkOutline(object);
  for (ZVOMLSyntaxFieldIter it(object); it; ++it) checkField(it.pField(), type);
  return 1;
}

// The graph is checked before what lies in it.
void NetResources::countEntries(ZVOMLSyntaxObject* graph) {
  auto count = [&](int32_t tables, int32_t entries) {
    int32_t number = 0;
    forEachIn(graph, tables, [&](ZVOMLSyntaxObject* table) {
      forEachIn(table, entries, [&](ZVOMLSyntaxObject*) { ++number; });
    });
    return number;
  };
  colors_ = count(ZV_XKEY_OI_COLORS, ZV_XKEY_OI_RGB);
  shapes_ = count(ZV_XKEY_OI_SHAPES, ZV_XKEY_OI_OUTLINE);
}

void NetResources::checkOutline(ZVOMLSyntaxObject* outline) {
  int vertices = 0;
  forEachIn(outline, ZV_XKEY_OI_VERTEX, [&](ZVOMLSyntaxObject*) { ++vertices; });
  const bool isPolygon = kindIn(outline) == Kind::POLYGON;
  if (isPolygon && vertices < 3) errorMessage(outline, BAD_SHAPE, "a polygon needs three vertices", 0);
  if (!isPolygon && vertices > 0) errorMessage(outline, BAD_SHAPE, "only a polygon has vertices", 0);
  const ZVRect box = textBoxIn(outline);
  if (box.width() == 0 || box.height() == 0) errorMessage(outline, BAD_SHAPE, "the text box is flat", 0);
}

void NetResources::checkField(ZVOMLSyntaxField* field, int32_t type) {
  const int32_t value = field->longValue();
  switch (field->fieldIDIndex()) {
    case ZV_XKEY_FI_RED:
    case ZV_XKEY_FI_GREEN:
    case ZV_XKEY_FI_BLUE:
      if (value >= 0 && value <= 255) return;
      return errorMessage(field, BAD_COLOR, "a colour has channels from 0 to 255", 0);
    case ZV_XKEY_FI_X:
    case ZV_XKEY_FI_Y:
      if (type != ZV_XKEY_OI_VERTEX) return;
      [[fallthrough]];
    case ZV_XKEY_FI_LEFT:
    case ZV_XKEY_FI_BOTTOM:
    case ZV_XKEY_FI_RIGHT:
    case ZV_XKEY_FI_TOP:
      if (value >= -1000 && value <= 1000) return;
      return errorMessage(field, BAD_SHAPE, "a shape has coordinates from -1000 to 1000", 0);
    case ZV_XKEY_FI_COLORINDEX:
    case ZV_XKEY_FI_FILLINDEX:
      return checkIndex(field, colors_, "colour");
    case ZV_XKEY_FI_SHAPEINDEX:
      return checkIndex(field, shapes_, "shape");
    case ZV_XKEY_FI_COLOR:
    case ZV_XKEY_FI_FILL: {
      ZVColor color;
      const std::string name = field->stringValue();
      if (name.empty() || setColor(color, name)) return;
      return errorMessage(field, BAD_COLOR, ("`" + name + "' names no colour").c_str(), 0);
    }
    default:
      return;
  }
}

void NetResources::checkIndex(ZVOMLSyntaxField* field, int32_t entries, const char* what) {
  const int32_t index = field->longValue();
  if (index >= 0 && index < entries) return;
  const std::string text =
      "index " + std::to_string(index) + " is outside the table of " + counted(entries, what);
  errorMessage(field, NOT_IN_TABLE, text.c_str(), 0);
}

ZVObject* NetResources::vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject*, ZVObject*) {
  auto* graph = static_cast<NetGraph*>(pOMLFile()->pTopObject());
  switch (object->objTypeIDIndex()) {
    case ZV_XKEY_OI_RGB:
      return ZVColorResource::castDown(graph->colors.appendToTable(colorIn(object)));
    case ZV_XKEY_OI_OUTLINE:
      return ZVShapeResource::castDown(graph->shapes.appendToTable(shapeIn(object)));
    default:
      return nullptr;
  }
}

int NetResources::vReadField(ZVOMLSyntaxField*, ZVOMLSyntaxObject* object, ZVObject*) {
  if (!object) return 0;
  const int32_t type = object->objTypeIDIndex();
  return type == ZV_XKEY_OI_RGB || type == ZV_XKEY_OI_OUTLINE || type == ZV_XKEY_OI_VERTEX;
}
