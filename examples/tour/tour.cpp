#include <cstdio>
#include <string>

#include "utils/zvdlist.h"
#include "utils/zvdlisti.h"
#include "utils/zvomlfil.h"
#include "utils/zvomlobj.h"
#include "utils/zvomlsta.h"
#include "utils/zvomlsyn.h"

// The grammar: a map holds towns and roads. F is a field (I integer, R real, S string), R a reference to an
// object of a type, a last R makes either required, T allows objects of a type, O starts a type.
// clang-format off
const char* const DEFINITIONS[] = {
    "O $toplevel$", "{", "T map", "}",
    "O map", "{", "T town", "T road", "}",
    "O town", "{", "F title S R", "F people I", "}",
    "O road", "{", "R from town R", "R to town R", "F miles R", "}",
    nullptr};
// clang-format on

struct Town : ZVOMLObject {
  std::string title;
  int32_t people = 0;
};

struct Road : ZVOMLObject {
  Town* from = nullptr;
  Town* to = nullptr;
  double miles = 0.0;
};

// A list owns its cells, never its objects: whoever puts them in says when they go.
struct Map : ZVOMLObject {
  ZVDList towns;
  ZVDList roads;
  ~Map() override {
    roads.deleteAllCellsAndObjects();
    towns.deleteAllCellsAndObjects();
  }
};

class MapFile : public ZVOMLFile {
 protected:
  // Called for each object of the file once all of it is read and found good, owners first.
  ZVObject* vCreateObject(ZVOMLSyntaxObject* object, ZVOMLSyntaxObject*, ZVObject* owner) override {
    std::string type = object->typeString();
    if (type == "MAP") return new Map;
    if (type == "TOWN") return static_cast<Map*>(owner)->towns.appendObject(new Town)->pObject();
    return static_cast<Map*>(owner)->roads.appendObject(new Road)->pObject();
  }

  // Called for each field when all objects exist, so a reference gives the object it names.
  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject*, ZVObject* target) override {
    std::string name = field->nameString();
    if (name == "TITLE") static_cast<Town*>(target)->title = field->stringValue();
    if (name == "PEOPLE") static_cast<Town*>(target)->people = field->longValue();
    if (name == "FROM") static_cast<Road*>(target)->from = static_cast<Town*>(field->objectValue());
    if (name == "TO") static_cast<Road*>(target)->to = static_cast<Town*>(field->objectValue());
    if (name == "MILES") static_cast<Road*>(target)->miles = field->doubleValue();
    return 1;
  }

  void vWriteContents(ZVObject* top) override {
    auto* map = static_cast<Map*>(top);
    writeObjectStart("map", map, 0);
    writeOpeningBracket();
    for (ZVDListIter it(&map->towns); it; ++it) {
      auto* town = static_cast<Town*>(it.pObject());
      writeObjectStart("town", town, 1, 1);
      writeOpeningBracket();
      writeStringAttribute("title", town->title.c_str());
      writeAttribute("people", town->people);
      writeClosingBracket();
    }
    for (ZVDListIter it(&map->roads); it; ++it) {
      auto* road = static_cast<Road*>(it.pObject());
      writeObjectStart("road", road, 1);
      writeOpeningBracket();
      writeAttribute("from", road->from, road, 1);
      writeAttribute("to", road->to, road, 1);
      writeAttribute("miles", road->miles);
      writeClosingBracket();
    }
    writeClosingBracket();
  }
};

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: tour INPUT OUTPUT\n");
    return 2;
  }
  ZVOMLStatic grammar(nullptr, nullptr, nullptr, DEFINITIONS);
  MapFile file;
  file.pErrorStringBuffer(4096);
  ZVFileCodeEnum code = file.readOMLFile(argv[1], &grammar, nullptr, -1, 0, 1, 0);
  auto* map = static_cast<Map*>(file.pTopObject());
  if (code != ZV_FILE_OK || !map) {  // an empty file is good, and holds nothing
    std::fprintf(stderr, "%s%s: no map\n", file.pErrorStringBuffer(), argv[1]);
    return 1;
  }

  for (ZVDListIter it(&map->roads); it; ++it) {
    auto* road = static_cast<Road*>(it.pObject());
    std::printf("%s - %s: %.1f miles\n", road->from->title.c_str(), road->to->title.c_str(), road->miles);
    road->to->people += 100;
  }

  // The towns keep the ids that they had in the file.
  for (ZVDListIter it(&map->towns); it; ++it) static_cast<Town*>(it.pObject())->preFileWrite(&file);
  code = file.writeOMLFile(argv[2], &grammar, map, 0, 1, 0);
  delete map;
  if (code == ZV_FILE_OK) return 0;
  std::fprintf(stderr, "%s: cannot be written\n", argv[2]);
  return 1;
}
