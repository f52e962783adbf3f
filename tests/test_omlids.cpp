#include <gtest/gtest.h>

#include <map>
#include <random>
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

}  // namespace
