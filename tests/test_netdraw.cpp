// What netdraw finds in a drawing, against looking at everything, and how it draws it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "examples/netdraw/netcolor.h"
#include "examples/netdraw/netfacto.h"
#include "examples/netdraw/netorder.h"
#include "examples/netdraw/netover.h"
#include "examples/netdraw/netpage.h"
#include "examples/netdraw/netpict.h"
#include "examples/netdraw/netroute.h"
#include "examples/netdraw/netshape.h"
#include "utils/zvrect.h"

namespace {

// A drawing at random: nodes of very different sizes, straight edges, chains and curves, some from a node to
// itself.
class RandomDrawing {
 public:
  explicit RandomDrawing(unsigned seed) : random_(seed) {
    const int32_t extent = 20 + below(1000);
    const int32_t count = 1 + below(30);
    for (int32_t i = 0; i < count; ++i) {
      NetNode* node = graph.addNode();
      nodes.push_back(node);
      node->title = std::to_string(i);
      node->centre.set(below(extent), below(extent));
      node->size.width(below(i % 9 ? 40 : extent));
      node->size.height(below(i % 7 ? 20 : extent));
    }
    for (int32_t i = below(40); i > 0; --i) {
      NetEdge* edge = graph.addEdge();
      edges.push_back(edge);
      edge->source = any();
      edge->target = any();
      for (int32_t bends = below(3) ? 0 : below(8); bends > 0; --bends) {
        edge->addBend()->point.set(below(extent), below(extent));
      }
    }
  }
  NetNode* any() { return nodes[static_cast<size_t>(below(static_cast<int32_t>(nodes.size())))]; }

  NetFactory factory;
  NetGraph graph{nullptr, factory};
  std::vector<NetNode*> nodes;
  std::vector<NetEdge*> edges;

 private:
  int32_t below(int32_t limit) { return static_cast<int32_t>(random_() % static_cast<unsigned>(limit)); }

  std::mt19937 random_;
};

bool shareArea(const NetNode* a, const NetNode* b) {
  const ZVRect p(a->centre, a->size);
  const ZVRect q(b->centre, b->size);
  return std::max(p.left(), q.left()) < std::min(p.right(), q.right()) &&
         std::max(p.bottom(), q.bottom()) < std::min(p.top(), q.top());
}

bool crosses(const NetEdge* edge, const NetNode* node) {
  if (node == edge->source || node == edge->target) return false;
  const ZVRect r(node->centre, node->size);
  if (r.width() < 2 || r.height() < 2) return false;
  const ZVRect inner(r.left() + 1, r.bottom() + 1, r.right() - 1, r.top() - 1);
  const std::vector<ZVPoint> line = edge->line();
  for (size_t i = 1; i < line.size(); ++i) {
    if (inner.overlapsSegment(line[i - 1], line[i])) return true;
  }
  return false;
}

TEST(NetdrawOverlaps, AreThoseOfAllPairs) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    RandomDrawing drawing(seed);
    const Overlaps found = findOverlaps(drawing.graph, SIZE_MAX);

    decltype(found.nodes) pairs;
    for (auto a = drawing.nodes.begin(); a != drawing.nodes.end(); ++a) {
      for (auto b = a + 1; b != drawing.nodes.end(); ++b) {
        if (shareArea(*a, *b)) pairs.emplace_back(*a, *b);
      }
    }
    ASSERT_EQ(found.nodes, pairs);
    const size_t most = seed % 9;
    const Overlaps first = findOverlaps(drawing.graph, most);
    ASSERT_EQ(first.nodePairs, static_cast<int64_t>(pairs.size()));
    pairs.resize(std::min(pairs.size(), most));
    ASSERT_EQ(first.nodes, pairs);

    std::vector<const NetEdge*> crossing;
    for (const NetEdge* edge : drawing.edges) {
      auto isCrossed = [&](const NetNode* node) { return crosses(edge, node); };
      if (std::any_of(drawing.nodes.begin(), drawing.nodes.end(), isCrossed)) crossing.push_back(edge);
    }
    ASSERT_EQ(found.edges.size(), crossing.size());
    for (size_t i = 0; i < crossing.size(); ++i) {
      ASSERT_EQ(found.edges[i].first, crossing[i]);
      ASSERT_TRUE(crosses(crossing[i], found.edges[i].second));
    }
  }
}

// Extents below 0 and places where 32 bits end.
TEST(NetdrawOverlaps, EndAtTheEdgeOfTheNumbers) {
  NetFactory factory;
  NetGraph graph(nullptr, factory);
  auto add = [&](int32_t x, int32_t y, int32_t width, int32_t height) {
    NetNode* node = graph.addNode();
    node->centre.set(x, y);
    node->size.width(width);
    node->size.height(height);
    return node;
  };
  const NetNode* inside = add(0, 0, 10, -100);
  EXPECT_EQ(findOverlaps(graph, 1).nodePairs, 0);
  NetNode* high = add(INT32_MAX - 10, INT32_MAX - 10, 100, 100);
  NetNode* higher = add(INT32_MAX, INT32_MAX, 100, 100);
  NetNode* low = add(INT32_MIN, INT32_MIN, 100, 100);
  const NetNode* between = add(0, 0, 10, 10);
  NetEdge* edge = graph.addEdge();
  edge->source = high;
  edge->target = low;
  const Overlaps found = findOverlaps(graph, 9);
  using Pair = std::pair<const NetNode*, const NetNode*>;
  EXPECT_EQ(found.nodes, std::vector<Pair>(1, Pair(high, higher)));
  ASSERT_EQ(found.edges.size(), 1U);
  EXPECT_TRUE(found.edges[0].second == between || found.edges[0].second == higher);
  EXPECT_GT(findRoute(graph, *high, *low, false).length, 6e9);
  const ReadingOrder order(graph);
  EXPECT_LT(order.rank(*high, *inside), 0);
  EXPECT_LT(order.rank(*higher, *low), 0);
}

double lengthOf(const NetEdge* edge) {
  double length = 0.0;
  const std::vector<ZVPoint> line = edge->line();
  for (size_t i = 1; i < line.size(); ++i) length += line[i - 1].distance(line[i]);
  return length;
}

TEST(NetdrawRoute, IsNoLongerThanAnyOther) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    RandomDrawing drawing(seed);
    const bool bothWays = seed % 2;
    const NetNode* from = drawing.any();
    const NetNode* to = drawing.any();
    // Distances by relaxing every edge as often as there are nodes.
    constexpr double FAR = std::numeric_limits<double>::infinity();
    std::vector<double> distance(drawing.nodes.size() + drawing.edges.size() + 1, FAR);
    auto at = [&](const NetNode* node) -> double& { return distance[static_cast<size_t>(node->number())]; };
    at(from) = 0.0;
    for (size_t round = 0; round < drawing.nodes.size(); ++round) {
      for (const NetEdge* edge : drawing.edges) {
        const double length = lengthOf(edge);
        at(edge->target) = std::min(at(edge->target), at(edge->source) + length);
        if (bothWays) at(edge->source) = std::min(at(edge->source), at(edge->target) + length);
      }
    }
    const Route route = findRoute(drawing.graph, *from, *to, bothWays);
    ASSERT_EQ(route.found, at(to) < FAR);
    if (!route.found) continue;
    ASSERT_DOUBLE_EQ(route.length, at(to));
    ASSERT_EQ(route.nodes.front(), from);
    ASSERT_EQ(route.nodes.back(), to);
    double length = 0.0;
    for (size_t i = 1; i < route.nodes.size(); ++i) {
      double step = FAR;
      for (const NetEdge* edge : drawing.edges) {
        const bool along = edge->source == route.nodes[i - 1] && edge->target == route.nodes[i];
        const bool back = edge->target == route.nodes[i - 1] && edge->source == route.nodes[i];
        if (along || (bothWays && back)) step = std::min(step, lengthOf(edge));
      }
      length += step;
    }
    ASSERT_DOUBLE_EQ(length, route.length);
  }
}

TEST(NetdrawOrder, ReadsFromTopToBottomAndLeftToRight) {
  for (unsigned seed = 0; seed < 100; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    RandomDrawing drawing(seed);
    drawing.nodes.back()->centre = drawing.nodes.front()->centre;
    drawing.nodes.back()->size = drawing.nodes.front()->size;
    std::vector<NetNode*> expected = drawing.nodes;
    std::stable_sort(expected.begin(), expected.end(), [](const NetNode* a, const NetNode* b) {
      const ZVRect p(a->centre, a->size);
      const ZVRect q(b->centre, b->size);
      return p.top() != q.top() ? p.top() > q.top() : p.left() < q.left();
    });
    const ReadingOrder order(drawing.graph);
    std::vector<NetNode*> nodes;
    forEach<NetNode>(order, [&](NetNode* node) { nodes.push_back(node); });
    ASSERT_EQ(nodes, expected);
    for (size_t i = 0; i < nodes.size(); ++i) {
      for (size_t k = 0; k < nodes.size(); ++k) {
        const int32_t rank = order.rank(*nodes[i], *nodes[k]);
        ASSERT_EQ((rank > 0) - (rank < 0), (i > k) - (i < k));
      }
    }
  }
}

// A picture has the name that SVG gives a colour, or else its number.
TEST(NetdrawColor, HasANameOfSvgOrOfX) {
  constexpr std::pair<const char*, const char*> NAMES[] = {
      {"Grey", "gray"},          {"gray0", "black"},       {"gray10", "#1a1a1a"},
      {"gray50", "#7f7f7f"},     {"GRAY90", "#e5e5e5"},    {"grey100", "white"},
      {"NavyBlue", "navy"},      {"maroon", "maroon"},     {"maroon1", "#ff34b3"},
      {"red1", "red"},           {"red4", "darkred"},      {"lightgoldenrod", "#eedd82"},
      {"tan2", "#ee9a49"},       {"hotpink4", "#8b3a62"},  {"lightgoldenrod3", "#cdbe70"},
      {"violetred4", "#8b2252"}, {"slategray4", "#6c7b8b"}};
  for (const auto& [name, shown] : NAMES) {
    ZVColor color;
    EXPECT_TRUE(setColor(color, name)) << name;
    EXPECT_EQ(nameOf(color), shown) << name;
  }
  for (const char* name :
       {"", "7", "gray101", "gray07", "gray-1", "gray5000000000", "red0", "red5", "red01", "navy1"}) {
    ZVColor color;
    EXPECT_FALSE(setColor(color, name)) << name;
  }
}

// An edge from a node to itself has bends of its own, or a loop that ends on the outline of the node.
TEST(NetdrawPicture, ShowsLoops) {
  for (int shape = 0; shape < 6; ++shape) {
    for (const ZVSize& size : {ZVSize(10, 10), ZVSize(750, 500), ZVSize(60, 5000), ZVSize(5000, 60)}) {
      NetFactory factory;
      NetGraph graph(nullptr, factory);
      NetNode* node = graph.addNode();
      node->size = size;
      node->shape.take(graph.shapes.share(outlineOf(static_cast<Shape>(shape))));
      NetEdge* loop = graph.addEdge();
      loop->source = loop->target = node;
      EXPECT_EQ(Picture(graph, false).endsOnOutline(), 2) << shape << ' ' << size.width();
      EXPECT_GT(loop->line()[4].x(), node->rect().right() + 100);
    }
  }
}

TEST(NetdrawPicture, ReachesAsFarAsItsNumbers) {
  constexpr int32_t FAR = 1 << 28;
  for (int32_t place : {FAR - 50, FAR - 49, INT32_MAX, -FAR + 50, -FAR + 49, INT32_MIN}) {
    NetFactory factory;
    NetGraph graph(nullptr, factory);
    NetNode* near = graph.addNode();
    near->size = ZVSize(-100, INT32_MIN);
    NetNode* node = graph.addNode();
    node->centre.set(place, place);
    node->size = ZVSize(100, 100);
    NetEdge* edge = graph.addEdge();
    edge->source = near;
    edge->target = node;
    ASSERT_EQ(Picture::canShow(graph), std::abs(int64_t{place}) <= FAR - 50) << place;
    if (Picture::canShow(graph)) {
      EXPECT_EQ(Picture(graph, true).svg().find("=\"-"), std::string::npos);
    }
    edge->addBend()->point.set(FAR + 1, 0);
    EXPECT_FALSE(Picture::canShow(graph)) << place;
    edge->source = node;
    EXPECT_FALSE(Picture::canShow(graph)) << place;  // a loop reaches further than its node
  }
}

TEST(NetdrawPicture, HoldsCharactersOfXml) {
  constexpr std::pair<const char*, const char*> TEXTS[] = {
      {"<\"a\">&\n\x7f", "&lt;&quot;a&quot;&gt;&amp; \x7f"},
      {"\u00df\u20ac\U0001f600\U0010ffff", "\u00df\u20ac\U0001f600\U0010ffff"},
      {"\xdf\xdfz", "\u00df\u00dfz"},                          // Latin-1
      {"\xe2\x82", "\u00e2\xc2\x82"},                          // cut off
      {"\xc0\xaf", "\u00c0\u00af"},                            // longer than it must be
      {"\xed\xa0\x80", "\u00ed\u00a0\xc2\x80"},                // half of a pair
      {"\xf4\x90\x80\x80", "\u00f4\xc2\x90\xc2\x80\xc2\x80"},  // beyond the last one
      {"\xef\xbf\xbe", "\u00ef\u00bf\u00be"}};                 // no character
  for (const auto& [text, spelled] : TEXTS) EXPECT_EQ(SvgPage::escaped(text), spelled);
}

}  // namespace
