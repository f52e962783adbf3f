#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <string>

#include "tests/support/assertion.h"
#include "utils/zvhelper.h"
#include "utils/zvplatfo.h"

namespace {

TEST(Require, PassesAConditionThatHoldsAndLooksAtItOnce) {
  int looks = 0;
  ZV_REQUIRE(++looks == 1);
  const char* text = "";
  ZV_REQUIRE(text);
  EXPECT_EQ(looks, 1);
}

constexpr int BREACH_LINE = __LINE__ + 1;
void breach(const char* text) { ZV_REQUIRE(text != NULL && *text >= 'a'); }

TEST(Require, ReportsTextFileAndLine) {
  breach("b");
  std::string report = assertionReport("text != NULL && *text >= 'a'", "tests/test_platform.cpp",
                                       std::to_string(BREACH_LINE).c_str());
  EXPECT_DEATH(breach(nullptr), report);
  EXPECT_DEATH(breach("A"), report);
}

TEST(Modules, GiveTheirFunctionsAndNames) {
  void* module = getModuleHandle("libm.so.6");
  ASSERT_NE(module, nullptr);
  void* address = getFunctionHandle(module, "sqrt");
  double (*function)(double) = nullptr;
  std::memcpy(&function, &address, sizeof function);
  ASSERT_NE(function, nullptr);
  EXPECT_EQ(function(9.0), 3.0);
  EXPECT_EQ(getFunctionHandle(module, "no_such_function"), nullptr);
  EXPECT_EQ(getFunctionHandle(module, nullptr), nullptr);
  EXPECT_EQ(getFunctionHandle(nullptr, "sqrt"), nullptr);

  char name[254];
  uint32_t length = getModuleFileName(module, name);
  EXPECT_EQ(length, std::strlen(name));
  EXPECT_NE(std::string(name).find("/libm.so.6"), std::string::npos);
  EXPECT_EQ(freeModuleHandle(module), nullptr);
  // No module is the program itself.
  length = getModuleFileName(nullptr, name);
  EXPECT_EQ(length, std::strlen(name));
  EXPECT_TRUE(std::string(name).ends_with("/test_platform"));

  EXPECT_EQ(getModuleHandle("no_such_module.so"), nullptr);
  EXPECT_EQ(getModuleHandle(nullptr), nullptr);
  EXPECT_EQ(freeModuleHandle(nullptr), nullptr);
}

TEST(WorkingDirectory, IsGivenWhereItFits) {
  std::string here = std::filesystem::current_path().string();
  std::string buffer(here.size() + 2, '?');
  int size = static_cast<int>(here.size()) + 1;
  EXPECT_EQ(zvGetCurrentWorkingDir(buffer.data(), size, 0), buffer.data());
  EXPECT_EQ(buffer.c_str(), here);
  zvGetCurrentWorkingDir(buffer.data(), size, 1);
  EXPECT_EQ(buffer, here + "\\" + '\0');
  zvGetCurrentWorkingDir(buffer.data(), size - 1, 0);
  EXPECT_STREQ(buffer.c_str(), "");
  EXPECT_STREQ(zvGetCurrentWorkingDir(buffer.data(), 0, 1), "\\");
}

}  // namespace
