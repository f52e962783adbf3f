#include <gtest/gtest.h>

#include <string>

#include "tests/support/assertion.h"
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

}  // namespace
