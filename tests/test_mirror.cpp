#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/assertion.h"
#include "tests/support/fakejava.h"
#include "tests/support/mirrored.h"
#include "utils/zvvalue.h"

namespace {

using Calls = std::vector<std::string>;

const std::string PACKAGE = "com/larkmoor/jnilayout/";
const std::string INT_CLASS = "class " + PACKAGE + "ZVInt";
const std::string FACTORY = "global class " + PACKAGE + "ZVJavaFactory";
const std::string ADDRESS = FakeJava::WIDE ? "J" : "I";
const std::string CONSTRUCTOR = "(" + ADDRESS + ")V";

// A mirror's constructor as it should be: the object gets the index.
bool enterTable(FakeJava&, intptr_t address) {
  reinterpret_cast<ZVObject*>(address)->javaIndex(4);
  return true;
}

// Inside a call from Java, with the factory known.
class Mirror : public testing::Test {
 protected:
  Mirror() {
    ZVObject::enter(&java);
    ZVObject::initFactory(&java);
    java.constructor = enterTable;
    start = java.takeCalls();
  }
  ~Mirror() override {
    ZVObject::cleanupFactory(&java);
    ZVObject::leave(&java);
  }

  FakeJava java;
  Calls start;
};

TEST(MirrorEnvironment, EnterAndLeaveNest) {
  FakeJava java;
  FakeJava other;
  for (int round = 0; round < 2; ++round) {
    ZVObject::enter(&java);
    ZVObject::enter(&java);
    ZVObject::leave(&java);
    EXPECT_EQ(ZVObject::threadEnv(), &java);
    ZVObject::leave(&java);
  }
  // Nothing is left behind: another environment may come in.
  ZVObject::enter(&other);
  EXPECT_EQ(ZVObject::threadEnv(), &other);
  // The setter does not count: one leave still ends it.
  EXPECT_EQ(ZVObject::threadEnv(&java), &java);
  EXPECT_EQ(ZVObject::threadEnv(), &java);
  ZVObject::leave(&java);
  ZVObject::enter(&other);
  ZVObject::leave(&other);
  EXPECT_EQ(java.calls, Calls());
  EXPECT_EQ(other.calls, Calls());
}

TEST_F(Mirror, FactoryIsLookedUpOnceAndLetGo) {
  EXPECT_EQ(start,
            (Calls{"FindClass " + PACKAGE + "ZVJavaFactory",
                   "GetStaticMethodID class " + PACKAGE + "ZVJavaFactory getJavaObject (I)Ljava/lang/Object;",
                   "GetStaticMethodID class " + PACKAGE + "ZVJavaFactory delJavaObject (I)I",
                   "NewGlobalRef class " + PACKAGE + "ZVJavaFactory"}));
  EXPECT_EQ(FakeJava::name(ZVObject::getFactory()), FACTORY);
  EXPECT_EQ(FakeJava::name(ZVObject::getIDGet()), "getJavaObject");
  EXPECT_EQ(FakeJava::name(ZVObject::getIDDel()), "delJavaObject");

  ZVObject::cleanupFactory(&java);
  EXPECT_EQ(java.takeCalls(), Calls{"DeleteGlobalRef " + FACTORY});
  EXPECT_EQ(ZVObject::getFactory(), nullptr);
  EXPECT_EQ(ZVObject::getIDGet(), nullptr);
  EXPECT_EQ(ZVObject::getIDDel(), nullptr);

  auto other = static_cast<jclass>(java.reference("other"));
  EXPECT_EQ(ZVObject::setFactory(other), other);
  EXPECT_EQ(ZVObject::getFactory(), other);
}

TEST_F(Mirror, IsMadeOnceFoundAgainAndUnloadedOnce) {
  intptr_t given = 0;
  java.constructor = [&](FakeJava& env, intptr_t address) {
    given = address;
    return enterTable(env, address);
  };
  {
    ZVInt number(5);
    EXPECT_EQ(FakeJava::name(number.getJavaObject(&java)), "mirror");
    EXPECT_EQ(given, reinterpret_cast<intptr_t>(&number));
    EXPECT_EQ(number.javaIndex(), 4);
    EXPECT_EQ(java.takeCalls(),
              (Calls{"FindClass " + PACKAGE + "ZVInt", "GetMethodID " + INT_CLASS + " <init> " + CONSTRUCTOR,
                     "NewObject " + INT_CLASS + " <init>", "DeleteLocalRef " + INT_CLASS}));
    EXPECT_EQ(FakeJava::name(number.getJavaObject(&java)), "mirror 4");
    EXPECT_EQ(FakeJava::name(ZVObject::getFactoryObject(&java, 9)), "mirror 9");
    EXPECT_EQ(java.takeCalls(), (Calls{"CallStaticObjectMethod " + FACTORY + " getJavaObject 4",
                                       "CallStaticObjectMethod " + FACTORY + " getJavaObject 9"}));
  }
  EXPECT_EQ(java.takeCalls(),
            (Calls{"CallStaticObjectMethod " + FACTORY + " getJavaObject 4", "GetObjectClass mirror 4",
                   "GetMethodID class of mirror 4 unload ()V", "CallVoidMethod mirror 4 unload",
                   "DeleteLocalRef class of mirror 4", "DeleteLocalRef mirror 4"}));
}

// The members that every class repeats, seen through the root.
TEST_F(Mirror, AndCopiesOfEachClassAreItsOwn) {
  for (const MirroredClass& entry : MIRRORED_CLASSES) {
    SCOPED_TRACE(entry.name);
    const std::string own = "class " + PACKAGE + entry.name;
    std::unique_ptr<ZVObject> object(entry.make());
    EXPECT_EQ(FakeJava::name(object->getJavaClass(&java)), own);
    EXPECT_EQ(FakeJava::name(object->getJavaObject(&java)), "mirror");
    EXPECT_EQ(object->javaIndex(), 4);
    object->copyObject(nullptr);
    object->copyAttributes(nullptr);
    object->copyObject(object.get());
    object->copyAttributes(object.get());
    for (int kind : {ZV_DEEP_COPY, ZV_ATTRIBUTE_COPY}) {
      std::unique_ptr<ZVObject> clone(kind == ZV_DEEP_COPY ? object->cloneObject()
                                                           : object->cloneAttributes());
      EXPECT_EQ(clone->javaIndex(), -1);
      EXPECT_EQ(FakeJava::name(clone->getJavaClass(&java)) == own, entry.clonesItself);
      if (entry.clonesItself) {
        clone->copyObject(object.get());
        clone->copyAttributes(object.get());
        EXPECT_EQ(clone->javaIndex(), -1);
        object->copyObject(clone.get());
        object->copyAttributes(clone.get());
        EXPECT_EQ(object->javaIndex(), 4);
      }
    }
  }
}

TEST_F(Mirror, IsNeverMadeByTheRoot) {
  ZVObject plain;
  EXPECT_EQ(plain.getJavaObject(&java), nullptr);
  EXPECT_EQ(java.takeCalls(), Calls());
  plain.javaIndex(2);
  EXPECT_EQ(FakeJava::name(plain.getJavaObject(&java)), "mirror 2");
  EXPECT_EQ(plain.javaIndex(-7), -7);
  EXPECT_EQ(plain.getJavaObject(&java), nullptr);

  // Its class is handed on as found, without a check.
  java.takeCalls();
  java.missing = PACKAGE + "ZVNativeObject";
  EXPECT_EQ(plain.getJavaClass(&java), nullptr);
  EXPECT_EQ(java.takeCalls(), Calls{"FindClass " + PACKAGE + "ZVNativeObject"});
}

TEST(MirrorEnvironment, ObjectsWithoutMirrorNeedNone) {
  ZVInt number;
  number.javaIndex(3);
  number.javaIndex(-2);
}

TEST_F(Mirror, ExceptionOfItsConstructorIsDescribedAndCleared) {
  java.constructor = [](FakeJava& env, intptr_t address) {
    env.pending = true;
    return enterTable(env, address);
  };
  ZVInt number;
  EXPECT_NE(number.getJavaObject(&java), nullptr);
  Calls calls = java.takeCalls();
  ASSERT_EQ(calls.size(), 6U);
  EXPECT_EQ(calls[3], "ExceptionDescribe");
  EXPECT_EQ(calls[4], "ExceptionClear");
}

TEST_F(Mirror, GivesItsNativeAddress) {
  java.pCppObj = reinterpret_cast<intptr_t>(this);
  for (int round = 0; round < 2; ++round) {  // the field is looked up each time
    EXPECT_EQ(ZVObject::pCppObject(&java, java.reference("m")), reinterpret_cast<intptr_t>(this));
    EXPECT_EQ(
        java.takeCalls(),
        (Calls{"GetObjectClass m", "GetFieldID class of m pCppObj " + ADDRESS, "DeleteLocalRef class of m",
               (FakeJava::WIDE ? "GetLongField m pCppObj" : "GetIntField m pCppObj")}));
  }
}

// Each line breaks one rule; the report names exactly that rule.
TEST(MirrorContract, BrokenRuleEndsTheProcessWithItsText) {
  struct Breach {
    const char* condition;
    void (*act)(FakeJava& java);
  };
  // A mirror is asked for, where this name is not found or raises an exception.
  static const auto lacks = [](FakeJava& java, const std::string& name) {
    java.missing = name;
    ZVInt().getJavaObject(&java);
  };
  static const auto raises = [](FakeJava& java, const std::string& name) {
    java.raises = name;
    ZVInt().getJavaObject(&java);
  };
  const Breach breaches[] = {
      {"ZVObject::pthreadEnv != NULL", [](FakeJava&) { ZVObject::threadEnv(); }},
      {"ZVObject::pthreadEnv != NULL", [](FakeJava&) { ZVInt().javaIndex(0); }},
      {"env != NULL", [](FakeJava&) { ZVObject::threadEnv(nullptr); }},
      {"ZVObject::pthreadEnv == NULL", [](FakeJava& java) { ZVObject::enter(ZVObject::threadEnv(&java)); }},
      {"ZVObject::pthreadEnv == env",
       [](FakeJava& java) {
         FakeJava other;
         ZVObject::enter(&java);
         ZVObject::enter(&other);
       }},
      {"env == ZVObject::pthreadEnv",
       [](FakeJava& java) {
         FakeJava other;
         ZVObject::enter(&java);
         ZVObject::leave(&other);
       }},
      {"ZVObject::envCount >= 0", [](FakeJava&) { ZVObject::leave(nullptr); }},
      {"clazz != NULL", [](FakeJava& java) { lacks(java, PACKAGE + "ZVInt"); }},
      {"env->ExceptionOccurred() == 0", [](FakeJava& java) { raises(java, PACKAGE + "ZVInt"); }},
      {"method != 0 && env->ExceptionOccurred() == 0", [](FakeJava& java) { lacks(java, "<init>"); }},
      {"method != 0 && env->ExceptionOccurred() == 0", [](FakeJava& java) { raises(java, "<init>"); }},
      {"object != 0",
       [](FakeJava& java) {
         java.constructor = [](FakeJava& env, intptr_t address) { return !enterTable(env, address); };
         ZVInt().getJavaObject(&java);
       }},
      {"this->javaIndex() >= 0", [](FakeJava& java) { ZVInt().getJavaObject(&java); }},
      {"id != 0",
       [](FakeJava& java) {
         java.missing = "pCppObj";
         ZVObject::pCppObject(&java, java.reference("mirror"));
       }},
      {"env->ExceptionOccurred() == NULL",
       [](FakeJava& java) {
         java.raises = "pCppObj";
         ZVObject::pCppObject(&java, java.reference("mirror"));
       }},
      {"id != 0",
       [](FakeJava& java) {
         java.missing = "unload";
         ZVObject::threadEnv(&java);
         ZVInt().javaIndex(0);
       }},
  };
  for (const Breach& breach : breaches) {
    FakeJava java;
    EXPECT_DEATH(breach.act(java), assertionReport(breach.condition, "utils/zvobject.cpp"))
        << breach.condition;
  }
}

}  // namespace
