// The factory of this layer: its graphs, nodes and edges, and its grammar.
//
// Everything that makes a part of a drawing asks the factory for it, so one that derives from this one can
// have parts of its own. It must live as long as its drawings.
#ifndef NETDRAW_NETFACTO_H
#define NETDRAW_NETFACTO_H

#include <memory>

#include "utils/zvomlsta.h"
#include "utils/zvufacto.h"

class NetGraph;

class NetFactory : public ZVUFactory {
 public:
  // A drawing of this factory's own.
  NetGraph* newGraph();
  // One grammar, made on first demand, serves all files.
  ZVOMLStatic& grammar();

 protected:
  // Nodes and edges are made for a graph, which puts them in its lists: for any other owner there are none.
  ZVOMLObject* vNewDGraph(ZVOMLObject* owner, int flag) override;
  ZVOMLObject* vNewDNode(ZVOMLObject* owner, int flag) override;
  ZVOMLObject* vNewDEdge(ZVOMLObject* owner, int flag) override;
  ZVOMLStatic* vNewDGrammar() override;

 private:
  std::unique_ptr<ZVOMLStatic> grammar_;
};

#endif
