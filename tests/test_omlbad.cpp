// Prefixes and mutations of the seeds of the fuzz targets, read as these read them.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/reader.h"
#include "tests/support/files.h"

namespace {

std::string fuzzPath(int binary, const char* before, const char* behind) {
  return std::string(ZV_FUZZ_DATA) + before + (binary ? "binary" : "text") + behind;
}

std::vector<std::string> seeds(int binary) {
  std::vector<std::string> result;
  for (const auto& entry : std::filesystem::directory_iterator(fuzzPath(binary, "/seeds/", ""))) {
    result.push_back(readFile(entry.path().string()));
  }
  std::sort(result.begin(), result.end());
  return result;
}

// What a mutation may put in: the entries of the dictionary.
std::vector<std::string> pieces(int binary) {
  std::vector<std::string> result;
  std::istringstream lines(readFile(fuzzPath(binary, "/", ".dict")));
  for (std::string line; std::getline(lines, line);) {
    std::string& piece = result.emplace_back();
    for (size_t i = 1; i + 1 < line.size(); ++i) {
      if (line[i] == '\\') ++i;
      const bool coded = line[i] == 'x' && line[i - 1] == '\\';
      piece += coded ? static_cast<char>(std::stoi(line.substr(i + 1, 2), nullptr, 16)) : line[i];
      if (coded) i += 2;
    }
  }
  return result;
}

std::string mutate(std::mt19937& random, std::string bytes, const std::vector<std::string>& pieces) {
  for (size_t steps = 1 + random() % 4; steps > 0; --steps) {
    // The options come first.
    const size_t place = 1 + random() % bytes.size();
    const size_t length = random() % (random() % 8 == 0 ? 200 : 8);
    switch (random() % 8) {
      case 0:
        bytes.erase(place, length);
        break;
      case 1:
        bytes.insert(1 + random() % bytes.size(), bytes.substr(place, length));
        break;
      case 2:
        if (place < bytes.size()) bytes[place] = static_cast<char>(random());
        break;
      case 3:
        if (place < bytes.size()) bytes[place] = static_cast<char>(bytes[place] ^ (1 << random() % 8));
        break;
      case 4:
        if (random() % 8 == 0) bytes.resize(place);
        break;
      default:
        bytes.insert(place, pieces[random() % pieces.size()]);
    }
  }
  return bytes;
}

TEST(OMLBadFile, EveryPrefixOfASeedIsReadOrRefusedWithEveryOption) {
  for (int binary = 0; binary < 2; ++binary) {
    for (std::string seed : seeds(binary)) {
      const char own = seed[0];
      for (int option = 0; option < 256; ++option) {
        SCOPED_TRACE(testing::Message() << seed << " with option " << option);
        seed[0] = static_cast<char>(option);
        ASSERT_NO_THROW(readInput(seed, binary));
      }
      seed[0] = own;
      for (size_t length = 1; length <= seed.size(); ++length) {
        SCOPED_TRACE(seed.substr(0, length));
        ASSERT_NO_THROW(readInput(seed.substr(0, length), binary));
      }
    }
  }
}

class OMLMutation : public testing::TestWithParam<int> {};

TEST_P(OMLMutation, IsReadOrRefused) {
  const int binary = GetParam() % 2;
  const std::vector<std::string> all = seeds(binary);
  const std::vector<std::string> entries = pieces(binary);
  ASSERT_GE(std::min(all.size(), entries.size()), 8U);
  std::mt19937 random(static_cast<unsigned>(GetParam()));
  int good = 0;
  for (unsigned i = 0; i < 12500; ++i) {
    SCOPED_TRACE(i);
    std::string input = all[random() % all.size()];
    if (random() % 4 == 0) input[0] = static_cast<char>(random());
    bool isGood = false;
    ASSERT_NO_THROW(isGood = readInput(mutate(random, input, entries), binary));
    good += isGood;
  }
  // Some must get through to the last phase.
  EXPECT_GT(good, 500);
  EXPECT_LT(good, 8000);
}

INSTANTIATE_TEST_SUITE_P(Quarter, OMLMutation, testing::Range(0, 4));

}  // namespace
