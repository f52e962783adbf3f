#include "utils/zvufacto.h"

ZV_DEFINE_NO_COPY(ZVUFactory)

int ZVUFactory::isFactory() const { return 1; }

const char* ZVUFactory::pCreatorString(const char* text) {
  return text ? creatorString_.pString(text) : creatorString_.pString();
}

ZVOMLObject* ZVUFactory::vNewGraphMgr(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewGraph(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewNode(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewEdge(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewIntergraph(ZVOMLObject* owner, int flag) { return vNewGraph(owner, flag); }
ZVOMLFile* ZVUFactory::vNewGraphFile(ZVOMLObject*) { return nullptr; }
ZVOMLStatic* ZVUFactory::vNewGrammar() { return nullptr; }
ZVOMLObject* ZVUFactory::vNewMGraphMgr(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewMGraph(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewMNode(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewMEdge(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewInterMGraph(ZVOMLObject* owner, int flag) { return vNewMGraph(owner, flag); }
ZVOMLFile* ZVUFactory::vNewMGraphFile(ZVOMLObject*) { return nullptr; }
ZVOMLStatic* ZVUFactory::vNewMGrammar() { return nullptr; }
ZVOMLObject* ZVUFactory::vNewDGraphMgr(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewDGraph(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewDNode(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewDEdge(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewPNode(ZVOMLObject*) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewPEdge(ZVOMLObject*) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewConnector(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewGraphLabel(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewNodeLabel(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewEdgeLabel(ZVOMLObject*, int) { return nullptr; }
ZVOMLObject* ZVUFactory::vNewInterDGraph(ZVOMLObject* owner, int flag) { return vNewDGraph(owner, flag); }
ZVOMLFile* ZVUFactory::vNewDGraphFile(ZVOMLObject*) { return nullptr; }
ZVOMLStatic* ZVUFactory::vNewDGrammar() { return nullptr; }
