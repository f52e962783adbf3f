#include "utils/zvobject.h"

#include <jni.h>

#include <limits>

JNIEnv* ZVObject::pthreadEnv = nullptr;
int32_t ZVObject::envCount = 0;
jclass ZVObject::factory = nullptr;
jmethodID ZVObject::idGet = nullptr;
jmethodID ZVObject::idDel = nullptr;
int32_t ZVObject::tight = 0;

namespace {

// A native address travels to Java in the integer type of its own width.
constexpr bool WIDE_ADDRESS = sizeof(void*) > sizeof(jint);
using JavaAddress = std::conditional_t<WIDE_ADDRESS, jlong, jint>;
constexpr const char* CONSTRUCTOR_SIGNATURE = WIDE_ADDRESS ? "(J)V" : "(I)V";
constexpr const char* ADDRESS_SIGNATURE = WIDE_ADDRESS ? "J" : "I";

}  // namespace

ZVObject::ZVObject(const ZVObject&, int) {}

void ZVObject::copyObject(const ZVObject*) {}

void ZVObject::copyAttributes(const ZVObject*) {}

void ZVObject::unloadMirror() {
  JNIEnv* env = threadEnv();
  jobject object = ZVObject::getJavaObject(env);
  if (!object) return;
  jclass clazz = env->GetObjectClass(object);
  jmethodID id = env->GetMethodID(clazz, "unload", "()V");
  ZV_REQUIRE(id != 0);
  env->CallVoidMethod(object, id);
  javaIndex_ = -1;
  env->DeleteLocalRef(clazz);
  env->DeleteLocalRef(object);
}

int32_t ZVObject::graphFileID() const { return identityNumber(); }

int32_t ZVObject::localID() const { return std::numeric_limits<int32_t>::min(); }

int ZVObject::isOMLObject() const { return 0; }

void ZVObject::debugOutput(int) {}

ZVObject* ZVObject::vCloneObject() const { return new (std::nothrow) ZVObject(*this, ZV_DEEP_COPY); }

ZVObject* ZVObject::vCloneAttributes() const { return new (std::nothrow) ZVObject(*this, ZV_ATTRIBUTE_COPY); }

#if UINTPTR_MAX > 0xffffffffU
namespace {
constexpr int32_t FIRST_IDENTITY = -2147483640;
}
int32_t ZVObject::nextIdentity = FIRST_IDENTITY;

int32_t ZVObject::identityNumber() const {
  if (identity_ == 0) {
    identity_ = nextIdentity;
    nextIdentity += 8;
    if (nextIdentity == 0) nextIdentity = FIRST_IDENTITY;
  }
  return identity_;
}
#else
int32_t ZVObject::identityNumber() const { return reinterpret_cast<int32_t>(this); }
#endif

ZVErrorCodeEnum ZVObject::fileOutput(const char* first, const char* second, const char* mode) {
  return static_cast<ZVErrorCodeEnum>(staticFileOutput(first, second, mode ? mode : "a"));
}

void ZVObject::enter(JNIEnv* env) {
  ZV_REQUIRE(ZVObject::envCount >= 0);
  if (envCount == 0) {
    ZV_REQUIRE(ZVObject::pthreadEnv == NULL);
    pthreadEnv = env;
  } else {
    ZV_REQUIRE(ZVObject::pthreadEnv == env);
  }
  ++envCount;
}

void ZVObject::leave(JNIEnv* env) {
  ZV_REQUIRE(env == ZVObject::pthreadEnv);
  --envCount;
  if (envCount == 0) pthreadEnv = nullptr;
  ZV_REQUIRE(ZVObject::envCount >= 0);
}

JNIEnv* ZVObject::threadEnv() {
  ZV_REQUIRE(ZVObject::pthreadEnv != NULL);
  return pthreadEnv;
}

JNIEnv* ZVObject::threadEnv(JNIEnv* env) {
  ZV_REQUIRE(env != NULL);
  return pthreadEnv = env;
}

void ZVObject::initFactory(JNIEnv* env) {
  jclass clazz = env->FindClass("com/larkmoor/jnilayout/ZVJavaFactory");
  idGet = env->GetStaticMethodID(clazz, "getJavaObject", "(I)Ljava/lang/Object;");
  idDel = env->GetStaticMethodID(clazz, "delJavaObject", "(I)I");
  setFactory(static_cast<jclass>(env->NewGlobalRef(clazz)));
}

void ZVObject::cleanupFactory(JNIEnv* env) {
  env->DeleteGlobalRef(factory);
  factory = nullptr;
  idGet = nullptr;
  idDel = nullptr;
}

jobject ZVObject::getFactoryObject(JNIEnv* env, int32_t index) {
  return env->CallStaticObjectMethod(factory, idGet, static_cast<jint>(index));
}

intptr_t ZVObject::pCppObject(JNIEnv* env, jobject object) {
  jclass clazz = env->GetObjectClass(object);
  jfieldID id = env->GetFieldID(clazz, "pCppObj", ADDRESS_SIGNATURE);
  env->DeleteLocalRef(clazz);
  ZV_REQUIRE(id != 0);
  ZV_REQUIRE(env->ExceptionOccurred() == NULL);
  if constexpr (WIDE_ADDRESS) {
    return static_cast<intptr_t>(env->GetLongField(object, id));
  } else {
    return static_cast<intptr_t>(env->GetIntField(object, id));
  }
}

void ZVObject::throwJavaException(JNIEnv* env, const char* className, const char* message) {
  jclass clazz = env->FindClass(className);
  if (clazz) env->ThrowNew(clazz, message);
}

jobject ZVObject::getJavaObject(JNIEnv* env) const {
  return javaIndex_ < 0 ? nullptr : getFactoryObject(env, javaIndex_);
}

jclass ZVObject::getJavaClass(JNIEnv* env) const {
  return env->FindClass("com/larkmoor/jnilayout/ZVNativeObject");
}

jclass ZVObject::findMirrorClass(JNIEnv* env, const char* name) {
  jclass clazz = env->FindClass(name);
  ZV_REQUIRE(clazz != NULL);
  ZV_REQUIRE(env->ExceptionOccurred() == 0);
  return clazz;
}

jobject ZVObject::obtainMirror(JNIEnv* env) const {
  if (javaIndex_ >= 0) return getFactoryObject(env, javaIndex_);
  jclass clazz = getJavaClass(env);
  jmethodID method = env->GetMethodID(clazz, "<init>", CONSTRUCTOR_SIGNATURE);
  ZV_REQUIRE(method != 0 && env->ExceptionOccurred() == 0);
  auto address = static_cast<JavaAddress>(reinterpret_cast<intptr_t>(this));
  jobject object = env->NewObject(clazz, method, address);
  if (env->ExceptionOccurred()) {
    env->ExceptionDescribe();
    env->ExceptionClear();
  }
  ZV_REQUIRE(object != 0);
  ZV_REQUIRE(this->javaIndex() >= 0);
  env->DeleteLocalRef(clazz);
  return object;
}

int staticFileOutput(const char*, const char*, const char*) { return 0; }

int staticAssertTrace() { return 0; }

int staticReturnNull() { return 0; }
