#include "examples/netdraw/netplain.h"

#include <charconv>
#include <cmath>
#include <map>
#include <stdexcept>
#include <vector>

#include "examples/netdraw/netcolor.h"
#include "examples/netdraw/netfacto.h"
#include "examples/netdraw/netshape.h"

namespace {

constexpr double UNITS_PER_INCH = 1000.0;
constexpr double LARGEST_LENGTH = 1e6;  // inches; far below what a coordinate holds

// Caught in readPlain, which adds the line.
struct PlainError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

std::vector<std::string> splitWords(const std::string& line) {
  std::vector<std::string> words;
  size_t i = 0;
  while (true) {
    while (i < line.size() && (line[i] == ' ' || line[i] == '\t' || line[i] == '\r')) ++i;
    if (i == line.size()) return words;
    std::string word;
    if (line[i] == '"') {
      for (++i; i < line.size() && line[i] != '"'; ++i) {
        const char next = i + 1 < line.size() ? line[i + 1] : ' ';
        if (line[i] == '\\' && next == '\\') word += line[i];
        if (line[i] == '\\' && (next == '\\' || next == '"')) ++i;
        word += line[i];
      }
      if (i == line.size()) throw PlainError("a quote is not closed");
      ++i;
    } else {
      while (i < line.size() && line[i] != ' ' && line[i] != '\t' && line[i] != '\r') word += line[i++];
    }
    words.push_back(word);
  }
}

// The words of one line, taken from the front.
class Words {
 public:
  explicit Words(const std::string& line) : words_(splitWords(line)) {}

  bool atEnd() const { return next_ == words_.size(); }
  size_t left() const { return words_.size() - next_; }

  const std::string& take(const char* what) {
    if (atEnd()) throw PlainError(std::string(what) + " is missing");
    return words_[next_++];
  }

  double takeNumber(const char* what) {
    const std::string& word = take(what);
    double number = 0.0;
    auto [end, code] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (code != std::errc() || end != word.data() + word.size() || !(std::fabs(number) <= LARGEST_LENGTH)) {
      throw PlainError("`" + word + "' is no " + what);
    }
    return number;
  }

  int32_t takeLength(const char* what) {
    return static_cast<int32_t>(std::floor(takeNumber(what) * UNITS_PER_INCH + 0.5));
  }

 private:
  std::vector<std::string> words_;
  size_t next_ = 0;
};

template <class Value>
Value takeName(Words& words, const char* what, const std::map<std::string, Value>& names) {
  const std::string& word = words.take(what);
  auto found = names.find(word);
  if (found == names.end()) throw PlainError("unknown " + std::string(what) + " `" + word + "'");
  return found->second;
}

class PlainReader {
 public:
  PlainReader(const std::string& title, NetFactory& factory) : graph_(factory.newGraph()) {
    graph_->title = title;
  }

  // Gives false at the last line.
  bool readLine(const std::string& line) {
    Words words(line);
    if (words.atEnd()) return true;
    const std::string& kind = words.take("line kind");
    if (kind == "stop") return false;
    if (kind == "graph") {
      readGraph(words);
    } else if (kind == "node") {
      readNode(words);
    } else if (kind == "edge") {
      readEdge(words);
    } else {
      throw PlainError("`" + kind + "' is no kind of line");
    }
    return true;
  }

  // Null without a graph line.
  std::unique_ptr<NetGraph> result() { return hasGraph_ ? std::move(graph_) : nullptr; }

 private:
  void readGraph(Words& words) {
    hasGraph_ = true;
    graph_->scale = words.takeNumber("scale");
    graph_->extent.width(words.takeLength("width"));
    graph_->extent.height(words.takeLength("height"));
  }

  void readNode(Words& words) {
    static const std::map<std::string, Shape> shapes = {
        {"box", Shape::BOX},         {"rect", Shape::BOX},    {"ellipse", Shape::ELLIPSE},
        {"hexagon", Shape::HEXAGON}, {"house", Shape::HOUSE}, {"octagon", Shape::OCTAGON},
        {"chevron", Shape::CHEVRON}, {"oval", Shape::ELLIPSE}};
    const std::string& name = words.take("name");
    if (nodes_.contains(name)) throw PlainError("node `" + name + "' stands twice");
    NetNode* node = graph_->addNode();
    nodes_[name] = node;
    node->title = name;
    node->centre.x(words.takeLength("x"));
    node->centre.y(words.takeLength("y"));
    node->size.width(words.takeLength("width"));
    node->size.height(words.takeLength("height"));
    node->label = words.take("label");
    node->filled = words.take("style") == "filled";
    node->shape.take(graph_->shapes.share(outlineOf(takeName(words, "shape", shapes))));
    takeColor(words, "colour", node->color);
    takeColor(words, "fill colour", node->fill);
  }

  void readEdge(Words& words) {
    static const std::map<std::string, Pattern> patterns = {
        {"solid", Pattern::SOLID}, {"dashed", Pattern::DASHED}, {"dotted", Pattern::DOTTED}};
    NetNode* source = takeName(words, "node", nodes_);
    NetNode* target = takeName(words, "node", nodes_);
    double count = words.takeNumber("number of points");
    if (count < 0.0 || count != std::floor(count) || 2.0 * count > static_cast<double>(words.left())) {
      throw PlainError("the number of points does not fit the line");
    }
    NetEdge* edge = graph_->addEdge();
    edge->source = source;
    edge->target = target;
    for (int i = 0; i < static_cast<int>(count); ++i) {
      NetBend* bend = edge->addBend();
      bend->point.x(words.takeLength("x"));
      bend->point.y(words.takeLength("y"));
    }
    if (words.left() == 5) {
      words.take("label");
      words.takeNumber("x");
      words.takeNumber("y");
    }
    edge->pattern = takeName(words, "style", patterns);
    takeColor(words, "colour", edge->color);
  }

  // No name is no colour.
  void takeColor(Words& words, const char* what, Share<ZVColorResource>& share) {
    const std::string& name = words.take(what);
    ZVColor color;
    if (name.empty()) return;
    if (!setColor(color, name)) throw PlainError("`" + name + "' is no " + what);
    share.take(graph_->colors.share(color));
  }

  std::unique_ptr<NetGraph> graph_;
  std::map<std::string, NetNode*> nodes_;
  bool hasGraph_ = false;
};

}  // namespace

std::unique_ptr<NetGraph> readPlain(std::istream& in, const std::string& title, NetFactory& factory,
                                    std::string& error) {
  PlainReader reader(title, factory);
  int number = 0;
  try {
    for (std::string line; std::getline(in, line);) {
      ++number;
      if (!reader.readLine(line)) break;
    }
  } catch (const PlainError& wrong) {
    error = "line " + std::to_string(number) + ": " + wrong.what();
    return nullptr;
  }
  if (in.bad()) {
    error = "cannot be read";
    return nullptr;
  }
  std::unique_ptr<NetGraph> graph = reader.result();
  if (!graph) error = "holds no graph line";
  return graph;
}
