// The mirror in a real Java virtual machine. ZV_TEST_JAR holds the Java side.
#include <gtest/gtest.h>
#include <jni.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>

#include "tests/support/assertion.h"
#include "tests/support/mirrored.h"
#include "utils/zvobjwid.h"
#include "utils/zvvalue.h"

namespace {

const std::string PACKAGE = "com/larkmoor/jnilayout/";

// What the machine itself prints, which is where its checks of native code complain.
std::string machineOutput;

jint JNICALL collectOutput(FILE*, const char* format, va_list arguments) {
  char text[1000];
  int length = std::vsnprintf(text, sizeof text, format, arguments);
  machineOutput += text;
  return length;
}

// Its complaints about our use of its interface, but for calls that do not look for an exception first: one
// that the factory or unload raised stays pending, for the Java code that called the library.
std::string complaints() {
  std::istringstream lines(machineOutput);
  std::string found;
  for (std::string line; std::getline(lines, line);) {
    bool complaint = line.starts_with("WARNING") || line.starts_with("FATAL");
    if (complaint && line.find("without checking exceptions") == std::string::npos) found += line + "\n";
  }
  return found;
}

void JNICALL storeIndex(JNIEnv*, jclass, jlong address, jint index) {
  reinterpret_cast<ZVObject*>(static_cast<intptr_t>(address))->javaIndex(index);
}

// There can be only one machine in the life of a process.
class Machine : public testing::Environment {
 public:
  void SetUp() override {
    std::string classPath = "-Djava.class.path=" ZV_TEST_JAR;
    JavaVMOption options[] = {
        {classPath.data(), nullptr},
        {const_cast<char*>("-Xcheck:jni"), nullptr},
        {const_cast<char*>("-Xmx64m"), nullptr},
        {const_cast<char*>("vfprintf"), reinterpret_cast<void*>(collectOutput)},
    };
    JavaVMInitArgs arguments{JNI_VERSION_10, std::size(options), options, JNI_FALSE};
    void* created = nullptr;
    ASSERT_EQ(JNI_CreateJavaVM(&machine, &created, &arguments), JNI_OK);
    env = static_cast<JNIEnv*>(created);

    jclass root = env->FindClass((PACKAGE + "ZVNativeObject").c_str());
    ASSERT_NE(root, nullptr);
    const JNINativeMethod method = {const_cast<char*>("javaIndex"), const_cast<char*>("(JI)V"),
                                    reinterpret_cast<void*>(storeIndex)};
    ASSERT_EQ(env->RegisterNatives(root, &method, 1), JNI_OK);
    env->DeleteLocalRef(root);
  }
  void TearDown() override { machine->DestroyJavaVM(); }

  static JavaVM* machine;
  static JNIEnv* env;
};
JavaVM* Machine::machine = nullptr;
JNIEnv* Machine::env = nullptr;

// A call from Java into the library.
class JavaMirror : public testing::Test {
 protected:
  JavaMirror() {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    env->PushLocalFrame(16);
    ZVObject::initFactory(env);
    ZVObject::enter(env);
    machineOutput.clear();
  }
  ~JavaMirror() override {
    ZVObject::leave(env);
    ZVObject::cleanupFactory(env);
    EXPECT_FALSE(env->ExceptionCheck());
    env->ExceptionClear();
    env->PopLocalFrame(nullptr);
    EXPECT_EQ(complaints(), "") << machineOutput;
  }

  // How many mirrors were ever made.
  int mirrorsMade() {
    jmethodID size = env->GetStaticMethodID(ZVObject::getFactory(), "size", "()I");
    int count = env->CallStaticIntMethod(ZVObject::getFactory(), size);
    EXPECT_FALSE(env->ExceptionCheck());
    return count;
  }

  int unloads(jobject mirror) {
    jclass clazz = env->GetObjectClass(mirror);
    int count = env->GetIntField(mirror, env->GetFieldID(clazz, "unloads", "I"));
    env->DeleteLocalRef(clazz);
    return count;
  }

  // What a method without arguments gives as text.
  std::string textOf(jobject object, const char* method) {
    jclass clazz = env->GetObjectClass(object);
    jmethodID id = env->GetMethodID(clazz, method, "()Ljava/lang/String;");
    auto text = static_cast<jstring>(env->CallObjectMethod(object, id));
    EXPECT_FALSE(env->ExceptionCheck());
    const char* characters = env->GetStringUTFChars(text, nullptr);
    std::string result = characters;
    env->ReleaseStringUTFChars(text, characters);
    env->DeleteLocalRef(text);
    env->DeleteLocalRef(clazz);
    return result;
  }

  // The name that a class has in Java, with slashes.
  std::string nameOf(jclass clazz) {
    std::string name = textOf(clazz, "getName");
    std::replace(name.begin(), name.end(), '.', '/');
    return name;
  }

  std::string classOf(jobject object) {
    jclass clazz = env->GetObjectClass(object);
    std::string name = nameOf(clazz);
    env->DeleteLocalRef(clazz);
    return name;
  }

  JNIEnv* env = Machine::env;
};

TEST_F(JavaMirror, OfEachClassIsMadeOnceAndUnloadedOnce) {
  for (const MirroredClass& entry : MIRRORED_CLASSES) {
    SCOPED_TRACE(entry.name);
    std::unique_ptr<ZVObject> object(entry.make());
    int before = mirrorsMade();
    jobject mirror = object->getJavaObject(env);
    EXPECT_EQ(classOf(mirror), PACKAGE + entry.name);
    EXPECT_EQ(object->javaIndex(), before);
    jobject again = object->getJavaObject(env);
    EXPECT_TRUE(env->IsSameObject(mirror, again));
    env->DeleteLocalRef(again);
    EXPECT_EQ(mirrorsMade(), before + 1);
    EXPECT_EQ(ZVObject::pCppObject(env, mirror), reinterpret_cast<intptr_t>(object.get()));

    // A clone has nothing to do with the mirror.
    std::unique_ptr<ZVObject> clone(object->cloneObject());
    EXPECT_EQ(clone->javaIndex(), -1);
    clone.reset();
    EXPECT_EQ(unloads(mirror), 0);

    object.reset();
    EXPECT_EQ(unloads(mirror), 1);
    EXPECT_EQ(ZVObject::pCppObject(env, mirror), 0);
    env->DeleteLocalRef(mirror);
  }
}

TEST_F(JavaMirror, OfALayersClassComesFromGetJavaClassAlone) {
  struct Node : ZVObjectWithID {
    jclass getJavaClass(JNIEnv* java) const override {
      return java->FindClass("com/larkmoor/jnilayout/LayerNode");
    }
  };
  Node node;
  EXPECT_EQ(classOf(node.getJavaObject(env)), PACKAGE + "LayerNode");
}

TEST_F(JavaMirror, ReleasedFromTheTableIsNotUnloaded) {
  jobject mirror = nullptr;
  {
    ZVDouble number(1.5);
    mirror = number.getJavaObject(env);
    EXPECT_EQ(env->CallStaticIntMethod(ZVObject::getFactory(), ZVObject::getIDDel(), number.javaIndex()), 1);
    EXPECT_FALSE(env->ExceptionCheck());
    EXPECT_EQ(number.getJavaObject(env), nullptr);
  }
  EXPECT_EQ(unloads(mirror), 0);
}

TEST_F(JavaMirror, MadeByJavaFirstIsTheObjectsMirror) {
  jobject mirror = nullptr;
  {
    ZVLong number(3);
    jclass clazz = number.getJavaClass(env);
    jmethodID constructor = env->GetMethodID(clazz, "<init>", "(J)V");
    mirror = env->NewObject(clazz, constructor, static_cast<jlong>(reinterpret_cast<intptr_t>(&number)));
    EXPECT_FALSE(env->ExceptionCheck());
    EXPECT_TRUE(env->IsSameObject(number.getJavaObject(env), mirror));
  }
  EXPECT_EQ(unloads(mirror), 1);
}

TEST_F(JavaMirror, NativeFailureBecomesAJavaException) {
  for (const char* name : {"java/io/IOException", "no/such/Failure"}) {
    ZVObject::throwJavaException(env, name, "the disk is full");
    jthrowable thrown = env->ExceptionOccurred();
    ASSERT_NE(thrown, nullptr);
    env->ExceptionClear();
    // What is pending for an unknown name is the look-up's own failure.
    EXPECT_EQ(classOf(thrown), *name == 'j' ? name : "java/lang/NoClassDefFoundError");
    EXPECT_EQ(textOf(thrown, "getMessage"), *name == 'j' ? "the disk is full" : "no/such/Failure");
  }
}

using JavaMirrorDeathTest = JavaMirror;

TEST_F(JavaMirrorDeathTest, ConstructorThatFailsIsDescribedBeforeTheEnd) {
  struct Unlucky : ZVObjectWithID {
    jclass getJavaClass(JNIEnv* java) const override {
      return java->FindClass("com/larkmoor/jnilayout/Failing");
    }
  };
  EXPECT_DEATH(Unlucky().getJavaObject(env), "IllegalStateException: no mirror today\n(.*\n)*" +
                                                 assertionReport("object != 0", "utils/zvobject.cpp"));
}

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::AddGlobalTestEnvironment(new Machine);
  return RUN_ALL_TESTS();
}
