#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "utils/zvufacto.h"

namespace {

// The kinds in the order of their slots, by what they take: an owner and a flag, an owner, nothing.
// clang-format off
#define KINDS(FLAGGED, OWNED, PLAIN)                                                              \
  FLAGGED(GraphMgr) FLAGGED(Graph) FLAGGED(Node) FLAGGED(Edge) FLAGGED(Intergraph)                \
  OWNED(GraphFile, ZVOMLFile) PLAIN(Grammar)                                                      \
  FLAGGED(MGraphMgr) FLAGGED(MGraph) FLAGGED(MNode) FLAGGED(MEdge) FLAGGED(InterMGraph)           \
  OWNED(MGraphFile, ZVOMLFile) PLAIN(MGrammar)                                                    \
  FLAGGED(DGraphMgr) FLAGGED(DGraph) FLAGGED(DNode) FLAGGED(DEdge) OWNED(PNode, ZVOMLObject)      \
  OWNED(PEdge, ZVOMLObject) FLAGGED(Connector) FLAGGED(GraphLabel) FLAGGED(NodeLabel)             \
  FLAGGED(EdgeLabel) FLAGGED(InterDGraph) OWNED(DGraphFile, ZVOMLFile) PLAIN(DGrammar)
// clang-format on

// A layer that builds every kind: it notes what it is asked for.
struct Layer : ZVUFactory {
  template <class Result>
  Result* build(const char* kind, ZVOMLObject* owner, int flag) {
    asked = kind;
    askedOwner = owner;
    askedFlag = flag;
    return reinterpret_cast<Result*>(&asked);
  }
#define FLAGGED(kind) \
  ZVOMLObject* vNew##kind(ZVOMLObject* o, int f) override { return build<ZVOMLObject>(#kind, o, f); }
#define OWNED(kind, Result) \
  Result* vNew##kind(ZVOMLObject* o) override { return build<Result>(#kind, o, 0); }
#define PLAIN(kind) \
  ZVOMLStatic* vNew##kind() override { return build<ZVOMLStatic>(#kind, nullptr, 0); }
  KINDS(FLAGGED, OWNED, PLAIN)
#undef FLAGGED
#undef OWNED
#undef PLAIN
  std::string asked;
  ZVOMLObject* askedOwner = nullptr;
  int askedFlag = 0;
};

// The place of a virtual operation in the table of its class.
template <class Operation>
intptr_t slotOf(Operation operation) {
  intptr_t words[2];
  static_assert(sizeof operation == sizeof words);
  std::memcpy(words, &operation, sizeof words);
  return words[0] / static_cast<intptr_t>(sizeof(void*));
}

TEST(Factory, AsksForEachKindInItsSlotWithTheOwnerOrItself) {
  Layer layer;
  ZVUFactory& factory = layer;
  ZVUFactory plain;
  ZVOMLObject owner;
  intptr_t slot = slotOf(&Layer::vNewGraphMgr);
  auto expect = [&](const char* kind, const void* built, const ZVOMLObject* asOwner, int flag) {
    EXPECT_EQ(layer.asked, kind);
    EXPECT_EQ(built, &layer.asked);
    EXPECT_EQ(layer.askedOwner, asOwner);
    EXPECT_EQ(layer.askedFlag, flag);
  };
#define FLAGGED(kind)                                          \
  expect(#kind, factory.zvNew##kind(&owner, 7), &owner, 7);    \
  expect(#kind, factory.zvNew##kind(nullptr, -1), &layer, -1); \
  EXPECT_EQ(slotOf(&Layer::vNew##kind), slot++) << #kind;      \
  EXPECT_EQ(plain.zvNew##kind(&owner, 0), nullptr);
#define OWNED(kind, Result)                               \
  expect(#kind, factory.zvNew##kind(&owner), &owner, 0);  \
  expect(#kind, factory.zvNew##kind(nullptr), &layer, 0); \
  EXPECT_EQ(slotOf(&Layer::vNew##kind), slot++) << #kind; \
  EXPECT_EQ(plain.zvNew##kind(nullptr), nullptr);
#define PLAIN(kind)                                       \
  expect(#kind, factory.zvNew##kind(), nullptr, 0);       \
  EXPECT_EQ(slotOf(&Layer::vNew##kind), slot++) << #kind; \
  EXPECT_EQ(plain.zvNew##kind(), nullptr);
  KINDS(FLAGGED, OWNED, PLAIN)
  EXPECT_EQ(slot - slotOf(&Layer::vNewGraphMgr), 27);
}

TEST(Factory, BuildsGraphsForIntergraphsOfTheirFamily) {
  struct Graphs : ZVUFactory {  // a layer that knows graphs only
    ZVOMLObject* pick(ZVOMLObject* owner, int flag, int family) { return flag == family ? owner : nullptr; }
    ZVOMLObject* vNewGraph(ZVOMLObject* owner, int flag) override { return pick(owner, flag, 1); }
    ZVOMLObject* vNewMGraph(ZVOMLObject* owner, int flag) override { return pick(owner, flag, 2); }
    ZVOMLObject* vNewDGraph(ZVOMLObject* owner, int flag) override { return pick(owner, flag, 3); }
  } graphs;
  EXPECT_EQ(graphs.zvNewIntergraph(nullptr, 1), &graphs);
  EXPECT_EQ(graphs.zvNewInterMGraph(nullptr, 2), &graphs);
  EXPECT_EQ(graphs.zvNewInterDGraph(nullptr, 3), &graphs);
}

TEST(Factory, KnowsItselfAndItsCreator) {
  ZVUFactory factory;
  const ZVOMLObject& object = factory;
  EXPECT_EQ(object.isFactory(), 1);
  EXPECT_EQ(ZVOMLObject().isFactory(), 0);
  EXPECT_STREQ(factory.pCreatorString(), "Fenwold");
  const std::string name = "somebody";
  EXPECT_STREQ(factory.pCreatorString(name.c_str()), "somebody");
  EXPECT_NE(factory.pCreatorString(), name.c_str());
  EXPECT_STREQ(factory.pCreatorString(nullptr), "somebody");
  EXPECT_STREQ(factory.pCreatorString(factory.pCreatorString() + 4), "body");
}

}  // namespace
