// The drawing in memory: a graph with nodes and edges, and the bend points of its edges.
//
// The graph owns its nodes, edges and notes, an edge its bends. Nodes and edges share the colours and shapes
// of their graph, and the graph asks the factory that made it for new ones. Lengths are in thousandths of an
// inch, y upward.
#ifndef NETDRAW_NETMODEL_H
#define NETDRAW_NETMODEL_H

#include <string>
#include <vector>

#include "examples/netdraw/netshare.h"
#include "utils/zvdlist.h"
#include "utils/zvdlisti.h"
#include "utils/zvomlobj.h"
#include "utils/zvpoint.h"
#include "utils/zvrect.h"
#include "utils/zvsize.h"
#include "utils/zvtext.h"

class NetFactory;
class NetGraph;

enum class Pattern : int32_t { SOLID, DASHED, DOTTED };

// Base of the layer's objects. An object that no file has given an id yet takes its number: the objects of
// a graph are counted as they are made.
class NetObject : public ZVOMLObject {
 public:
  NetObject(ZVOMLObject* owner, int32_t number) : owner_(owner), number_(number) {}
  NetObject(const NetObject&) = delete;
  NetObject& operator=(const NetObject&) = delete;

  ZVOMLObject* pOwnerObject() override { return owner_; }
  int32_t number() const { return number_; }
  void prepareIDForGraphFile(ZVIndexHashTable* table) override;

 protected:
  // REQUIRES: the graph is the owner.
  NetGraph& ownerGraph() const;

 private:
  ZVOMLObject* owner_;
  int32_t number_;
};

class NetNode : public NetObject {
 public:
  explicit NetNode(NetGraph* graph);

  std::string title;
  std::string label;
  ZVPoint centre;
  ZVSize size;
  Share<ZVShapeResource> shape;  // never none
  bool filled = false;
  Share<ZVColorResource> color;  // none: black
  Share<ZVColorResource> fill;   // none: white

  const ZVShape& outline() const { return *shape.get()->pShape(); }

  // Its size, where a negative extent counts as 0, and what it covers, cut off where 32 bits end.
  ZVSize extent() const;
  ZVRect rect() const;

  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVOMLFile* file) override;
  void vWriteFields(ZVOMLFile* file, int flag) override;
};

class NetBend : public NetObject {
 public:
  explicit NetBend(ZVOMLObject* edge) : NetObject(edge, 0) {}

  ZVPoint point;

  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVOMLFile* file) override;
  void vWriteFields(ZVOMLFile* file, int flag) override;
};

class NetEdge : public NetObject {
 public:
  explicit NetEdge(NetGraph* graph);
  ~NetEdge() override { bends.deleteAllCellsAndObjects(); }

  NetNode* source = nullptr;
  NetNode* target = nullptr;
  Share<ZVColorResource> color;  // none: black
  Pattern pattern = Pattern::SOLID;
  ZVDList bends;

  NetBend* addBend();
  // The points that lead the line: its bends, with which it begins and ends if there are two or more. Else it
  // runs from centre to centre, and from a node to itself as a loop on the right.
  // REQUIRES: both ends are set.
  std::vector<ZVPoint> leads() const;
  // Whether these are the control points of curves, three for each behind the first one.
  static bool areCurves(const std::vector<ZVPoint>& leads) { return leads.size() % 3 == 1; }
  // The line itself, curves in short straight pieces. REQUIRES: both ends are set.
  std::vector<ZVPoint> line() const;

  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVOMLFile* file) override;
  void vWriteFields(ZVOMLFile* file, int flag) override;
};

class NetGraph : public NetObject {
 public:
  NetGraph(ZVOMLObject* owner, NetFactory& maker) : NetObject(owner, 1), factory_(maker) {}
  ~NetGraph() override;

  std::string title;
  double scale = 1.0;
  ZVSize extent;
  SharedColors colors;
  SharedShapes shapes;
  ZVDList nodes;
  ZVDList edges;
  ZVDList notes;  // texts

  NetNode* addNode();
  NetEdge* addEdge();
  ZVText* addNote(const std::string& text);
  // The first node of that title, else null.
  NetNode* findNode(const std::string& title) const;
  // The next number for an object of this graph.
  int32_t takeNumber() { return nextNumber_++; }

  // The tables of what is shared are open during a write, and from the first entry of a file that is read
  // until this is called.
  void closeTables();
  void preFileWrite(ZVOMLFile* file) override;
  void postFileWrite(ZVOMLFile* file, ZVFileCodeEnum code) override;

  int vReadField(ZVOMLSyntaxField* field, ZVOMLSyntaxObject* object, ZVOMLFile* file) override;
  void vWriteFields(ZVOMLFile* file, int flag) override;

 protected:
  void vBuildListOfSubObjects(ZVDList& list) override;

 private:
  NetFactory& factory_;
  int32_t nextNumber_ = 1;
};

// Walks a list whose objects are all of one class.
template <class Object, class Action>
void forEach(const ZVDList& list, Action action) {
  for (ZVDListIter it(&list); it; ++it) action(static_cast<Object*>(it.pObject()));
}

// The first difference between two drawings in words, empty if there is none. Ids are not compared.
std::string firstDifference(const NetGraph& a, const NetGraph& b);

#endif
