// A Java environment without Java, for every target: a function table whose entries write down each call
// and answer from a few settings. An entry that the library has no business with is null.
#ifndef ZV_TESTS_FAKEJAVA_H
#define ZV_TESTS_FAKEJAVA_H

#include <gtest/gtest.h>
#include <jni.h>

#include <cstdarg>
#include <deque>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

class FakeJava : public JNIEnv_ {
 public:
  static constexpr bool WIDE = sizeof(void*) > sizeof(jint);
  using Address = std::conditional_t<WIDE, jlong, jint>;

  // The calls so far except ExceptionOccurred, each as its name and arguments, references by what they
  // refer to.
  std::vector<std::string> calls;

  // Settings. A class, method or field of the name `missing` is not found; `raises` is found, and an
  // exception is pending afterwards. The constructor gets the native address and decides by its result
  // whether NewObject gives an object.
  std::string missing;
  std::string raises;
  std::function<bool(FakeJava&, intptr_t)> constructor = [](FakeJava&, intptr_t) { return true; };
  intptr_t pCppObj = 0;
  bool pending = false;

  FakeJava() : JNIEnv_() {
    table_.FindClass = [](JNIEnv* env, const char* name) {
      return static_cast<jclass>(self(env).look("FindClass", name, std::string("class ") + name));
    };
    table_.GetObjectClass = [](JNIEnv* env, jobject object) {
      return static_cast<jclass>(self(env).look("GetObjectClass", name(object), "class of " + name(object)));
    };
    table_.GetMethodID = [](JNIEnv* env, jclass clazz, const char* method, const char* signature) {
      return reinterpret_cast<jmethodID>(self(env).member("GetMethodID", clazz, method, signature));
    };
    table_.GetStaticMethodID = [](JNIEnv* env, jclass clazz, const char* method, const char* signature) {
      return reinterpret_cast<jmethodID>(self(env).member("GetStaticMethodID", clazz, method, signature));
    };
    table_.GetFieldID = [](JNIEnv* env, jclass clazz, const char* field, const char* signature) {
      return reinterpret_cast<jfieldID>(self(env).member("GetFieldID", clazz, field, signature));
    };
    table_.GetIntField = [](JNIEnv* env, jobject object, jfieldID field) {
      self(env).record("GetIntField", name(object), name(field));
      return static_cast<jint>(self(env).pCppObj);
    };
    table_.GetLongField = [](JNIEnv* env, jobject object, jfieldID field) {
      self(env).record("GetLongField", name(object), name(field));
      return static_cast<jlong>(self(env).pCppObj);
    };
    table_.NewObjectV = [](JNIEnv* env, jclass clazz, jmethodID method, va_list arguments) {
      self(env).record("NewObject", name(clazz), name(method));
      bool made = self(env).constructor(self(env), static_cast<intptr_t>(va_arg(arguments, Address)));
      return made ? self(env).reference("mirror") : nullptr;
    };
    table_.CallVoidMethodV = [](JNIEnv* env, jobject object, jmethodID method, va_list) {
      self(env).record("CallVoidMethod", name(object), name(method));
    };
    table_.CallStaticObjectMethodV = [](JNIEnv* env, jclass clazz, jmethodID method, va_list arguments) {
      std::string index = std::to_string(va_arg(arguments, jint));
      self(env).record("CallStaticObjectMethod", name(clazz), name(method), index);
      return self(env).reference("mirror " + index);
    };
    table_.NewGlobalRef = [](JNIEnv* env, jobject object) {
      self(env).record("NewGlobalRef", name(object));
      return self(env).reference("global " + name(object));
    };
    table_.DeleteGlobalRef = [](JNIEnv* env, jobject object) { self(env).drop("DeleteGlobalRef", object); };
    table_.DeleteLocalRef = [](JNIEnv* env, jobject object) { self(env).drop("DeleteLocalRef", object); };
    table_.ExceptionOccurred = [](JNIEnv* env) {
      return self(env).pending ? static_cast<jthrowable>(self(env).reference("exception")) : nullptr;
    };
    table_.ExceptionDescribe = [](JNIEnv* env) { self(env).record("ExceptionDescribe"); };
    table_.ExceptionClear = [](JNIEnv* env) {
      self(env).record("ExceptionClear");
      self(env).pending = false;
    };
    functions = &table_;
  }
  FakeJava(const FakeJava&) = delete;
  FakeJava& operator=(const FakeJava&) = delete;

  // The calls since the last time.
  std::vector<std::string> takeCalls() { return std::exchange(calls, {}); }

  // A new reference to the thing of this name.
  jobject reference(std::string what) {
    things_.push_back(std::move(what));
    return reinterpret_cast<jobject>(&things_.back());
  }
  // What a reference or id stands for; a dropped one fails the test.
  template <class Reference>
  static std::string name(Reference thing) {
    if (!thing) return "null";
    const std::string& found = *reinterpret_cast<std::string*>(thing);
    EXPECT_FALSE(found.empty()) << "a deleted reference is used";
    return found;
  }

 private:
  static FakeJava& self(JNIEnv* env) { return *static_cast<FakeJava*>(env); }

  template <class... Text>
  void record(const Text&... text) {
    std::string call;
    ((call += (call.empty() ? "" : " "), call += text), ...);
    calls.push_back(call);
  }

  jobject look(const char* call, const std::string& argument, const std::string& result) {
    record(call, argument);
    pending = pending || argument == raises;
    return argument == missing ? nullptr : reference(result);
  }

  jobject member(const char* call, jclass clazz, const char* member, const char* signature) {
    record(call, name(clazz), member, signature);
    pending = pending || member == raises;
    return member == missing ? nullptr : reference(member);
  }

  void drop(const char* call, jobject object) {
    record(call, name(object));
    reinterpret_cast<std::string*>(object)->clear();
  }

  JNINativeInterface_ table_{};
  std::deque<std::string> things_;
};

#endif
