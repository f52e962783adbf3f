#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <map>
#include <new>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "utils/zverrmsg.h"
#include "utils/zvhelper.h"
#include "utils/zvstrhnd.h"
#include "utils/zvstrpoo.h"

namespace {

TEST(StringHandle, GrowsByDoublingAndNeverShrinks) {
  ZVStringHandle handle;
  EXPECT_EQ(handle.strlenBuf(), 0);
  EXPECT_EQ(handle.capacity(), 254);
  handle.needCapacity(253);
  EXPECT_EQ(handle.capacity(), 254);
  for (int i = 0; i < 252; ++i) handle.appendChar('x');
  EXPECT_EQ(handle.capacity(), 254);
  handle.appendChar('x');
  EXPECT_EQ(handle.capacity(), 508);
  handle.empty();
  EXPECT_STREQ(handle.pString(), "");
  EXPECT_EQ(handle.capacity(), 508);
  handle.needCapacity(508);
  EXPECT_EQ(handle.capacity(), 1016);
  EXPECT_GE(handle.sizeOf(), 1016 + static_cast<int32_t>(sizeof(void*)));
  EXPECT_THROW(handle.needCapacity(std::numeric_limits<int32_t>::max()), std::bad_alloc);
}

// Random changes through every door of the handle, against a std::string.
TEST(StringHandle, AgreesWithAStringUnderRandomChanges) {
  std::mt19937 random(7);
  ZVStringHandle handle;
  std::string model;
  for (int step = 0; step < 20000; ++step) {
    switch (random() % 8) {
      case 0:
        handle.empty();
        model.clear();
        break;
      case 1:
        if (model.size() > 4000) break;
        handle.appendString(handle.pString() + model.size() / 2);
        model += std::string(model, model.size() / 2);
        break;
      case 2: {
        std::string text(random() % 300, 'b');
        char* place = handle.obtainAppendBuffer(static_cast<int32_t>(text.size()));
        EXPECT_EQ(*place, '\0');
        std::memcpy(place, text.c_str(), text.size() + 1);
        EXPECT_EQ(handle.strlenBuf(), static_cast<int32_t>(model.size() + text.size()));
        // The caller has a second thought.
        text.resize(text.size() / 2);
        std::memcpy(place, text.c_str(), text.size() + 1);
        model += text;
        break;
      }
      case 3: {
        handle.appendString(nullptr);
        handle.appendChar('\0');
        ZVStringHandle copy(handle);
        EXPECT_GE(copy.capacity(), handle.capacity());
        copy.appendChar('c');
        handle = copy;
        model += 'c';
        break;
      }
      default:
        handle.appendChar('a');
        model += 'a';
    }
    ASSERT_EQ(handle.strlenBuf(), static_cast<int32_t>(model.size())) << step;
    ASSERT_STREQ(handle.pString(), model.c_str()) << step;
    ASSERT_LT(handle.strlenBuf(), handle.capacity());
  }
}

std::string upper(std::string text) {
  for (char& c : text) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  }
  return text;
}

// Random strings, bytes above 127 among them, against a std::map.
TEST(StringPool, AgreesWithAMapUnderRandomUpdates) {
  for (int caseSensitive : {0, 1}) {
    for (auto [hashSize, decodeSize] :
         std::vector<std::pair<int32_t, int32_t>>{{1, 0}, {3, 3}, {2, 1}, {101, 500}}) {
      std::mt19937 random(11);
      ZVStringPool pool(hashSize, decodeSize, caseSensitive, 1);
      std::map<std::string, int32_t> model;
      std::vector<const char*> places;
      for (int step = 0; step < 3000; ++step) {
        std::string text;
        for (size_t length = random() % 4; length > 0; --length) text += "aAbBz{\xe4\x80-"[random() % 9];
        std::string key = caseSensitive ? text : upper(text);
        auto known = model.find(key);
        ASSERT_EQ(pool.lookup(text.c_str()), known == model.end() ? -1 : known->second);
        if (random() % 2) {
          int32_t index = pool.update(text.c_str());
          if (known == model.end()) {
            ASSERT_EQ(index, static_cast<int32_t>(model.size()));
            model[key] = index;
            places.push_back(pool.decode(index));
            pool.pointer(index, &model[key]);
          } else {
            ASSERT_EQ(index, known->second);
          }
        }
      }
      ZVStringPool copy(pool);
      for (const auto& [text, index] : model) {
        ASSERT_EQ(pool.decode(index), places[static_cast<size_t>(index)]) << "strings stay in place";
        ASSERT_STREQ(pool.decode(index), text.c_str());
        ASSERT_EQ(pool.pointer(index), &model[text]);
        ASSERT_EQ(copy.lookup(text.c_str()), index);
        ASSERT_NE(copy.decode(index), pool.decode(index));
        ASSERT_EQ(copy.pointer(index), &model[text]);
      }
      ASSERT_EQ(copy.decodeTableMax(), static_cast<int32_t>(model.size()));
    }
  }
}

TEST(StringPool, AnswersOutsideItsContent) {
  ZVStringPool pool;
  EXPECT_EQ(pool.update("abc"), 0);
  EXPECT_EQ(pool.update("ABC"), 1);
  EXPECT_STREQ(pool.decode(-1), "");
  EXPECT_STREQ(pool.decode(2), "");
  EXPECT_EQ(pool.pointer(0, &pool), nullptr);
  EXPECT_EQ(pool.pointer(0), nullptr);
  EXPECT_EQ(pool.update(nullptr), -1);
  EXPECT_EQ(pool.lookup(nullptr), -1);
  std::string longText(100000, 'x');
  EXPECT_EQ(pool.update(longText.c_str()), 2);
  EXPECT_EQ(pool.update("after"), 3);
  EXPECT_EQ(pool.decode(2), longText);

  ZVStringPool withPointers(5, 5, 0, 1);
  withPointers.update("x");
  EXPECT_EQ(withPointers.pointer(1, &pool), nullptr);
  EXPECT_EQ(withPointers.pointer(-1), nullptr);

  ZVStringPool settings(withPointers, ZV_ATTRIBUTE_COPY);
  EXPECT_EQ(settings.lookup("x"), -1);
  EXPECT_EQ(settings.update("x"), -1);
  EXPECT_STREQ(settings.decode(0), "");
  EXPECT_EQ(settings.pointer(0), nullptr);
  settings = withPointers;
  EXPECT_EQ(settings.lookup("X"), 0);
  settings.copyAttributes(&pool);
  EXPECT_EQ(settings.decodeTableMax(), 0);
}

// Quadratic work here would take minutes.
TEST(StringPool, TellsTheCasesOfOneWordApartQuickly) {
  ZVStringPool pool(3, 3, 1, 0);
  std::string text(17, ' ');
  for (int32_t cases = 0; cases < 1 << 17; ++cases) {
    for (size_t i = 0; i < text.size(); ++i) text[i] = cases >> i & 1 ? 'X' : 'x';
    ASSERT_EQ(pool.update(text.c_str()), cases);
  }
  EXPECT_EQ(pool.lookup(text.c_str()), (1 << 17) - 1);
}

template <class Text>
void checkText() {
  EXPECT_EQ(Text(nullptr).pString(), nullptr);
  EXPECT_STREQ(Text(0).pString(), "Error");
  EXPECT_STREQ(Text(5).pString(), "string");
  EXPECT_STREQ(Text(52).pString(), "");
  Text text;
  int32_t size = text.sizeOf();
  EXPECT_EQ(text.appendString(nullptr), nullptr);
  EXPECT_STREQ(text.appendString("x"), "x");
  EXPECT_STREQ(text.prependString("ab"), "abx");
  EXPECT_STREQ(text.appendString(text.pString() + 1), "abxbx");
  EXPECT_STREQ(text.prependString(nullptr), "abxbx");
  EXPECT_EQ(text.sizeOf(), size + 5);
  Text copy(text);
  EXPECT_STREQ(copy.pString(), "abxbx");
  EXPECT_NE(copy.pString(), text.pString());
  EXPECT_STREQ(copy.pString(copy.pString() + 3), "bx");
  copy = *&copy;
  EXPECT_STREQ(copy.pString(), "bx");
  EXPECT_EQ(text.pString(nullptr), nullptr);
  EXPECT_STREQ(text.prependString("p"), "p");
}

TEST(Text, IsOwnedAndMayBeMissing) {
  checkText<ZVInternalText>();
  checkText<ZVText>();
  EXPECT_STREQ(ZVText(ZVInternalText("inner")).pString(), "inner");

  ZVErrorMsg message("wrong");
  ZVText* clone = static_cast<const ZVText&>(message).cloneObject();
  EXPECT_STREQ(clone->pString(), "wrong");
  clone->copyAttributes(&message);
  EXPECT_EQ(clone->pString(), nullptr);
  delete clone;
}

TEST(Text, CatalogueIsWhole) {
  // A checksum over all texts (32-bit FNV-1a), so that no letter changes unnoticed.
  uint32_t sum = 2166136261U;
  for (int32_t id = 0; id < 52; ++id) {
    const char* text = getStringResource(id);
    ASSERT_STRNE(text, "") << id;
    for (; *text; ++text) sum = (sum ^ static_cast<unsigned char>(*text)) * 16777619U;
    sum *= 16777619U;
  }
  EXPECT_EQ(sum, 4108754671U);
  EXPECT_STREQ(getStringResource(9), "`true' or `false'");
  EXPECT_STREQ(getStringResource(51), "right bracket different than left bracket");
  EXPECT_STREQ(getStringResource(52), "");
  EXPECT_STREQ(getStringResource(-1), "");
}

TEST(Text, MessageIsShownWithItsCaption) {
  testing::internal::CaptureStderr();
  displayErrorMessage("disk on fire");
  ZVErrorMsg().display();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error: disk on fire\nError: \n");
}

TEST(Helpers, PrimesAreTheNeighboursInTheTable) {
  const int32_t primes[] = {2,     3,     5,     7,     11,    17,    29,    37,     53,    79,   113,
                            167,   251,   353,   503,   751,   1103,  1657,  2503,   3511,  5003, 7507,
                            10007, 15013, 20011, 30029, 40031, 60077, 80077, 120199, 160201};
  int32_t last = 0;
  for (int32_t prime : primes) {
    EXPECT_EQ(nextPrimeNumber(last), prime);
    EXPECT_EQ(nextPrimeNumber(prime - 1), prime);
    EXPECT_EQ(prevPrimeNumber(prime + 1), prime);
    EXPECT_EQ(prevPrimeNumber(prime), last);
    last = prime;
  }
  EXPECT_EQ(nextPrimeNumber(-5), 2);
  EXPECT_EQ(nextPrimeNumber(last), 0);
  EXPECT_EQ(prevPrimeNumber(1000000), 160201);
}

TEST(Helpers, GreatestCommonDivisorTakesAbsoluteValues) {
  EXPECT_EQ(greatestCommonDivisor(-12, 18), 6);
  EXPECT_EQ(greatestCommonDivisor(0, 0), 0);
  EXPECT_EQ(greatestCommonDivisor(0, -7), 7);
  EXPECT_EQ(greatestCommonDivisor(std::numeric_limits<int32_t>::min(), 6), 2);
  EXPECT_EQ(maxRandomNumber(), 32767);
}

}  // namespace
