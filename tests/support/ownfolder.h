// A test that runs in a folder of its own, named after it, so that tests which write files may run side by
// side.
#ifndef ZV_TESTS_OWNFOLDER_H
#define ZV_TESTS_OWNFOLDER_H

#include <gtest/gtest.h>

#include <filesystem>

class InOwnFolder : public testing::Test {
 protected:
  void SetUp() override {
    start_ = std::filesystem::current_path();
    const char* name = testing::UnitTest::GetInstance()->current_test_info()->name();
    std::filesystem::create_directories(name);
    std::filesystem::current_path(name);
  }
  void TearDown() override { std::filesystem::current_path(start_); }

 private:
  std::filesystem::path start_;
};

#endif
