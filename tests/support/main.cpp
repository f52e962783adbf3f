// Runs the tests of one program, each in a folder of its own below the current one: tests that write files
// may then run side by side.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

namespace {

class OwnFolders : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo& test) override {
    std::string name = std::string(test.test_suite_name()) + '.' + test.name();
    std::replace(name.begin(), name.end(), '/', '.');
    std::filesystem::create_directories(start_ / name);
    std::filesystem::current_path(start_ / name);
  }

  void OnTestEnd(const testing::TestInfo&) override { std::filesystem::current_path(start_); }

  std::filesystem::path start_ = std::filesystem::current_path();
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new OwnFolders);
  return RUN_ALL_TESTS();
}
