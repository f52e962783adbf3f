#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/omlprobe.h"
#include "tests/support/omlsample.h"

namespace {

class IDs : public ZVOMLFileProbe {
 public:
  IDs() { initParser(&sampleGrammar(), nullptr, -1, 0); }
  ~IDs() override { cleanup(); }

  using ZVOMLFile::objectID;
  using ZVOMLFile::objectIDIndex;
  using ZVOMLFile::storeObjectIDIndex;
};

// Texts of ids and addresses have an index each, whatever their items look like, and no text has one before
// it is entered, also not as a part of others.
TEST(OmlIDs, AreTextsWithAnIndexEach) {
  const std::vector<std::string> items = {"a",          "A",          "_",
                                          "$",          "",           "-",
                                          "0",          "-0",         "7",
                                          "007",        "-7",         "+7",
                                          "123456789",  "536870911",  "1a",
                                          "536870912",  "-536870911", "-2147483648",
                                          "2147483647", "9999999999", "very long " + std::string(300, 'x')};
  IDs ids;
  std::map<std::string, int32_t> entered = {{"defaults", 0}};
  std::map<int32_t, std::string> texts = {{0, "defaults"}};
  std::mt19937 random(30);
  for (int round = 0; round < 30000 && !HasFailure(); ++round) {
    std::string text = items[random() % items.size()];
    for (auto more = random() % 4; more > 0; --more) text += ',' + items[random() % items.size()];
    const auto known = entered.find(text);
    ASSERT_EQ(ids.objectIDIndex(text.c_str()), known == entered.end() ? -1 : known->second) << text;
    if (random() % 2) continue;
    const int32_t index = ids.storeObjectIDIndex(text.c_str());
    ASSERT_GE(index, 0);
    ASSERT_EQ(entered.emplace(text, index).first->second, index) << text;
    ASSERT_EQ(texts.emplace(index, text).first->second, text);
    ASSERT_EQ(ids.objectID(index), text);
  }
  EXPECT_EQ(ids.objectIDIndex(nullptr), -1);
  EXPECT_EQ(ids.storeObjectIDIndex(nullptr), -1);
  for (int32_t none : {-1, 1 << 29}) EXPECT_STREQ(ids.objectID(none), "");
}

// A graph of nodes within nodes, with and without ids, that name others; and the lines of the names that lead
// nowhere. An object without id gets the next number from -2 on downward, which others may bear as their id.
// What a group of defaults names is named by all nodes in it.
struct NodesOfNodes {
  explicit NodesOfNodes(unsigned seed) : random(seed) {
    text = "graph: 1 {\n";
    addNodes("$,1", 0);
    text += "}\n";
    for (const auto& [line, address] : named)
      if (!addresses.contains(address)) nowhere += std::to_string(line) + ' ';
  }
  std::string any(const std::vector<std::string>& words) { return words[random() % words.size()]; }

  void addNodes(const std::string& scope, int depth) {
    for (auto left = random() % 4; left > 0 && depth < 4; --left) {
      const std::string id =
          any({"1", "2", "n", "-2", "-3", "-4", "-9", "536870912", "", "", "", "", "defaults"});
      const bool isGroup = id == "defaults";
      const std::string address = isGroup ? scope : scope + ',' + (id.empty() ? std::to_string(next--) : id);
      addresses.insert(address);
      std::string name = any({"1", "-2", "-3", "-4", "-5", "n,-3", "1,1", "1,-4", "$1,-3", "$1,1,-4", "$1"});
      text += "node: " + id + " {\n peer: " + name + "\n";
      const auto line = std::count(text.begin(), text.end(), '\n');
      named[line] = name[0] == '$' ? name.insert(1, ",") : scope + ',' + name;
      if (isGroup) {
        text += "node: 1 { } node: 2 { }\n";
        addresses.insert({scope + ",1", scope + ",2"});
      } else {
        addNodes(address, depth + 1);
      }
      text += "}\n";
    }
  }

  std::mt19937 random;
  std::string text;
  int next = -2;
  std::set<std::string> addresses = {"$,1"};
  std::map<std::ptrdiff_t, std::string> named;
  std::string nowhere;
};

TEST(OmlIDs, LeadToTheObjectsThatHaveThem) {
  ZVOMLFileProbe file;
  file.maxNumberOfErrors(1 << 20);
  for (unsigned seed = 0; seed < 600 && !HasFailure(); ++seed) {
    const NodesOfNodes nodes(seed);
    writeFile("ids.oml", nodes.text);
    file.readOMLFile("ids.oml", &sampleGrammar(), nullptr, -1, 0, 0, 0);
    std::set<int> lines;
    std::istringstream messages(file.messages());
    for (std::string message; std::getline(messages, message);) {
      int line = 0;
      if (std::sscanf(message.c_str(), "Error #028 (ids.oml:%d:", &line) == 1) lines.insert(line);
    }
    std::string nowhere;
    for (int line : lines) nowhere += std::to_string(line) + ' ';
    ASSERT_EQ(nowhere, nodes.nowhere) << nodes.text << file.messages();
  }
}

}  // namespace
