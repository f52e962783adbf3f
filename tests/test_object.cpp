#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <memory>

#include "utils/zvobjwid.h"
#include "utils/zvvalue.h"

namespace {

TEST(Object, HasNoMirrorAndNoLocalIdAtFirst) {
  ZVObject first;
  ZVObject second;
  EXPECT_EQ(first.javaIndex(), -1);
  EXPECT_EQ(first.localID(), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(first.isOMLObject(), 0);
  EXPECT_NE(first.graphFileID(), second.graphFileID());
  EXPECT_EQ(first.graphFileID(), first.graphFileID());
  EXPECT_EQ(first.fileOutput("a", "b", nullptr), ZV_ERROR_OK);
}

#if UINTPTR_MAX > 0xffffffffU
TEST(Object, IdentityNumbersAreNegativeMultiplesOfEight) {
  ZVObject object;
  int32_t previous = object.graphFileID();
  for (int i = 0; i < 100; ++i) {
    ZVObject next;
    EXPECT_EQ(next.graphFileID(), previous + 8);
    EXPECT_LT(next.graphFileID(), 0);
    previous = next.graphFileID();
  }
}
#endif

TEST(Object, NoCopyCarriesTheIdentity) {
  ZVInt source(7);
  source.javaIndex(3);
  const int32_t id = source.graphFileID();
  ZVInt target;
  target = source;
  const std::unique_ptr<ZVInt> clone(source.cloneObject());
  // Made memberwise, below the copy protocol, it has the mirror.
  ZVObject memberwise(static_cast<const ZVObject&>(source));
  EXPECT_EQ(memberwise.javaIndex(), 3);
  for (const ZVObject* copy :
       {static_cast<ZVObject*>(&target), static_cast<ZVObject*>(clone.get()), &memberwise})
    EXPECT_NE(copy->graphFileID(), id);
  memberwise.javaIndex(-1);
  source.javaIndex(-1);
}

// The same protocol over all three boxed numbers, which keep all their bits.
template <class Box>
void checkProtocol(decltype(Box().value()) number) {
  auto expectNumber = [number](const ZVObject& box) {
    const auto value = Box::castDown(&box)->value();
    EXPECT_EQ(std::memcmp(&value, &number, sizeof value), 0) << value;
  };
  Box target;
  EXPECT_EQ(target.value(), 0);
  target.value(number);
  target = *&target;
  target.copyObject(&target);
  target.copyAttributes(&target);
  target.copyObject(nullptr);
  target.copyAttributes(nullptr);
  const Box source(target);
  for (int way = 0; way < 3; ++way) {
    Box copy;
    if (way == 0) copy = source;
    if (way == 1) copy.copyObject(&source);
    if (way == 2) copy.copyAttributes(&source);
    expectNumber(copy);
  }
  expectNumber(Box(source, ZV_ATTRIBUTE_COPY));
  expectNumber(Box(source, static_cast<ZVDeepFlagEnum>(2)));
  const ZVObject& base = source;
  expectNumber(*std::unique_ptr<ZVObject>(base.cloneObject()));
  expectNumber(*std::unique_ptr<ZVObject>(base.cloneAttributes()));
  EXPECT_EQ(Box::cloneObject(nullptr), nullptr);
  EXPECT_EQ(Box::cloneAttributes(nullptr), nullptr);
}

TEST(Value, FollowsTheCopyProtocol) {
  checkProtocol<ZVInt>(-5);
  checkProtocol<ZVLong>(std::numeric_limits<int32_t>::min());
  checkProtocol<ZVDouble>(-0.0);
  checkProtocol<ZVDouble>(std::numeric_limits<double>::quiet_NaN());
}

TEST(Identity, GeneratorWrapsPastTheTopAndCountsIt) {
  ZVIDGenerator generator;
  EXPECT_EQ(generator.nextLocalID(), std::numeric_limits<int32_t>::min() + 2);
  generator.releaseLocalID(std::numeric_limits<int32_t>::min() + 2);
  // All ids up to the wrap: about four thousand million steps would be too many, so the state is forged.
  struct State {
    int32_t nextID;
    int32_t overflow;
  };
  static_assert(sizeof(State) == sizeof(ZVIDGenerator));
  State state{std::numeric_limits<int32_t>::max() - 1, 0};
  std::memcpy(static_cast<void*>(&generator), &state, sizeof state);
  EXPECT_EQ(generator.nextLocalID(), std::numeric_limits<int32_t>::max());
  EXPECT_EQ(generator.overflow(), 0);
  ZVIDGenerator copy;
  copy = generator;
  EXPECT_EQ(copy.nextLocalID(), std::numeric_limits<int32_t>::min() + 1);
  EXPECT_EQ(copy.overflow(), 1);
  EXPECT_EQ(generator.overflow(), 0);
}

TEST(Identity, UniqueIdNamesAnObject) {
  char text[19];
  EXPECT_STREQ(ZVUniqueID(255, 1).idString(text), "ID000000ff00000001");
  EXPECT_STREQ(ZVUniqueID(-1, -2).idString(text), "IDfffffffffffffffe");
  EXPECT_EQ(ZVUniqueID().isNullID(), 1);
  EXPECT_EQ(ZVUniqueID(0, 1).isNullID(), 0);
  EXPECT_EQ(ZVUniqueID::isNullID(nullptr), 0);

  ZVObject plain;
  ZVUniqueID id(&plain);
  EXPECT_EQ(id.firstID(), plain.graphFileID());
  EXPECT_STREQ(id.idString(text) + 10, "80000000");
  ZVObjectWithID identified;
  id = &identified;
  EXPECT_EQ(id.secondID(), 0);
  EXPECT_NE(id.firstID(), 0);
  id.getObjectID(nullptr);
  EXPECT_EQ(id.isNullID(), 1);
}

}  // namespace
