#include "examples/netdraw/netfacto.h"

#include "examples/netdraw/netfile.h"
#include "examples/netdraw/netmodel.h"

NetGraph* NetFactory::newGraph() { return static_cast<NetGraph*>(zvNewDGraph(nullptr, 0)); }

ZVOMLStatic& NetFactory::grammar() {
  if (!grammar_) grammar_.reset(zvNewDGrammar());
  return *grammar_;
}

ZVOMLObject* NetFactory::vNewDGraph(ZVOMLObject* owner, int) { return new NetGraph(owner, *this); }

ZVOMLObject* NetFactory::vNewDNode(ZVOMLObject* owner, int) {
  return owner->isFactory() ? nullptr : new NetNode(static_cast<NetGraph*>(owner));
}

ZVOMLObject* NetFactory::vNewDEdge(ZVOMLObject* owner, int) {
  return owner->isFactory() ? nullptr : new NetEdge(static_cast<NetGraph*>(owner));
}

ZVOMLStatic* NetFactory::vNewDGrammar() { return new NetGrammar; }
