// The abstract factory through which the graph layers get their objects, graph files and grammars. This
// library has none of those classes: it fixes the kinds and how each is asked for, and a layer derives a
// factory that overrides what it can build.
//
// A null result means that the factory does not build the kind. Who owns what it builds is a matter of the
// layer that built it; no list is kept here, and the factory must live as long as its objects need it.
#ifndef ZV_ZVUFACTO_H
#define ZV_ZVUFACTO_H

#include "utils/zvomlobj.h"
#include "utils/zvtext.h"

class ZVOMLStatic;

class ZV_EXPORT ZVUFactory : public ZVOMLObject {
 public:
  ZVUFactory() = default;

  int isFactory() const override;
  // The creator's name, which stays the factory's. The setter takes a copy, and null changes nothing.
  const char* pCreatorString() const { return creatorString_.pString(); }
  const char* pCreatorString(const char* text);

  // One operation for each kind. A null owner stands for the factory itself; the flag is the layer's own.
  // The base graph layer.
  ZVOMLObject* zvNewGraphMgr(ZVOMLObject* owner, int flag) { return vNewGraphMgr(ownerOf(owner), flag); }
  ZVOMLObject* zvNewGraph(ZVOMLObject* owner, int flag) { return vNewGraph(ownerOf(owner), flag); }
  ZVOMLObject* zvNewNode(ZVOMLObject* owner, int flag) { return vNewNode(ownerOf(owner), flag); }
  ZVOMLObject* zvNewEdge(ZVOMLObject* owner, int flag) { return vNewEdge(ownerOf(owner), flag); }
  ZVOMLObject* zvNewIntergraph(ZVOMLObject* owner, int flag) { return vNewIntergraph(ownerOf(owner), flag); }
  ZVOMLFile* zvNewGraphFile(ZVOMLObject* owner) { return vNewGraphFile(ownerOf(owner)); }
  ZVOMLStatic* zvNewGrammar() { return vNewGrammar(); }
  // The model layer.
  ZVOMLObject* zvNewMGraphMgr(ZVOMLObject* owner, int flag) { return vNewMGraphMgr(ownerOf(owner), flag); }
  ZVOMLObject* zvNewMGraph(ZVOMLObject* owner, int flag) { return vNewMGraph(ownerOf(owner), flag); }
  ZVOMLObject* zvNewMNode(ZVOMLObject* owner, int flag) { return vNewMNode(ownerOf(owner), flag); }
  ZVOMLObject* zvNewMEdge(ZVOMLObject* owner, int flag) { return vNewMEdge(ownerOf(owner), flag); }
  ZVOMLObject* zvNewInterMGraph(ZVOMLObject* owner, int flag) {
    return vNewInterMGraph(ownerOf(owner), flag);
  }
  ZVOMLFile* zvNewMGraphFile(ZVOMLObject* owner) { return vNewMGraphFile(ownerOf(owner)); }
  ZVOMLStatic* zvNewMGrammar() { return vNewMGrammar(); }
  // The drawing layer.
  ZVOMLObject* zvNewDGraphMgr(ZVOMLObject* owner, int flag) { return vNewDGraphMgr(ownerOf(owner), flag); }
  ZVOMLObject* zvNewDGraph(ZVOMLObject* owner, int flag) { return vNewDGraph(ownerOf(owner), flag); }
  ZVOMLObject* zvNewDNode(ZVOMLObject* owner, int flag) { return vNewDNode(ownerOf(owner), flag); }
  ZVOMLObject* zvNewDEdge(ZVOMLObject* owner, int flag) { return vNewDEdge(ownerOf(owner), flag); }
  ZVOMLObject* zvNewPNode(ZVOMLObject* owner) { return vNewPNode(ownerOf(owner)); }
  ZVOMLObject* zvNewPEdge(ZVOMLObject* owner) { return vNewPEdge(ownerOf(owner)); }
  ZVOMLObject* zvNewConnector(ZVOMLObject* owner, int flag) { return vNewConnector(ownerOf(owner), flag); }
  ZVOMLObject* zvNewGraphLabel(ZVOMLObject* owner, int flag) { return vNewGraphLabel(ownerOf(owner), flag); }
  ZVOMLObject* zvNewNodeLabel(ZVOMLObject* owner, int flag) { return vNewNodeLabel(ownerOf(owner), flag); }
  ZVOMLObject* zvNewEdgeLabel(ZVOMLObject* owner, int flag) { return vNewEdgeLabel(ownerOf(owner), flag); }
  ZVOMLObject* zvNewInterDGraph(ZVOMLObject* owner, int flag) {
    return vNewInterDGraph(ownerOf(owner), flag);
  }
  ZVOMLFile* zvNewDGraphFile(ZVOMLObject* owner) { return vNewDGraphFile(ownerOf(owner)); }
  ZVOMLStatic* zvNewDGrammar() { return vNewDGrammar(); }

 protected:
  // What a layer overrides; each gives null here, except that an intergraph is a graph of its family.
  virtual ZVOMLObject* vNewGraphMgr(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewGraph(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewNode(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewEdge(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewIntergraph(ZVOMLObject* owner, int flag);
  virtual ZVOMLFile* vNewGraphFile(ZVOMLObject* owner);
  virtual ZVOMLStatic* vNewGrammar();
  virtual ZVOMLObject* vNewMGraphMgr(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewMGraph(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewMNode(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewMEdge(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewInterMGraph(ZVOMLObject* owner, int flag);
  virtual ZVOMLFile* vNewMGraphFile(ZVOMLObject* owner);
  virtual ZVOMLStatic* vNewMGrammar();
  virtual ZVOMLObject* vNewDGraphMgr(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewDGraph(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewDNode(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewDEdge(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewPNode(ZVOMLObject* owner);
  virtual ZVOMLObject* vNewPEdge(ZVOMLObject* owner);
  virtual ZVOMLObject* vNewConnector(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewGraphLabel(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewNodeLabel(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewEdgeLabel(ZVOMLObject* owner, int flag);
  virtual ZVOMLObject* vNewInterDGraph(ZVOMLObject* owner, int flag);
  virtual ZVOMLFile* vNewDGraphFile(ZVOMLObject* owner);
  virtual ZVOMLStatic* vNewDGrammar();

  ZV_SHAPE_NO_COPY(ZVUFactory)
  ZVOMLObject* ownerOf(ZVOMLObject* owner) { return owner ? owner : this; }

  ZVInternalText creatorString_{"Fenwold"};
};

#endif
