// The root class of every library class with a virtual table.
//
// It holds the index of the object's mirror in a Java virtual machine and, where addresses have more than 32
// bits, the object's identity number, and it fixes the copy protocol that every class repeats: a deep copy
// reproduces the whole content, an attribute copy only the configuration. Each kind is reached by a copying
// constructor, in place (copyObject, copyAttributes) and as a new object (cloneObject, cloneAttributes). The
// macros at the end of this file write the members that every class repeats.
//
// A copy never takes over the mirror or the identity number: a new object has none, a target keeps its own.
//
// Threads: none of this is locked. At most one thread may be between enter and leave at any time.
#ifndef ZV_ZVOBJECT_H
#define ZV_ZVOBJECT_H

#include <cstdint>
#include <new>
#include <type_traits>

#include "utils/zvplatfo.h"

// The names of the Java Native Interface that signatures need, declared as its header declares them, so
// that only a program that talks to Java needs that header.
struct JNIEnv_;
class _jobject;
class _jclass;
struct _jmethodID;
typedef JNIEnv_ JNIEnv;
typedef _jobject* jobject;
typedef _jclass* jclass;
typedef _jmethodID* jmethodID;

// The kind of a copy. Any value but 0 counts as an attribute copy.
enum ZVDeepFlagEnum : int32_t { ZV_DEEP_COPY = 0, ZV_ATTRIBUTE_COPY = 1 };

// Result of the trace output operations. Failures carry the values of ZVFileCodeEnum.
enum ZVErrorCodeEnum : int32_t { ZV_ERROR_OK = 0 };

class ZV_EXPORT ZVObject {
 public:
  ZVObject() = default;
  // Takes over javaIndex. For the memberwise copies of plain records only; every other copying constructor
  // of the library starts from the default constructor.
  ZVObject(const ZVObject& other) : javaIndex_(other.javaIndex_) {}
  ZVObject(const ZVObject& other, int flag);
  // Copies nothing: the target keeps its mirror.
  const ZVObject& operator=(const ZVObject&) { return *this; }

  // Make this object a copy of other, which must be of this object's class. Null and this object itself
  // change nothing.
  virtual void copyObject(const ZVObject* other);
  virtual void copyAttributes(const ZVObject* other);

  // An object with a mirror may only be destroyed while an environment is set (see enter).
  virtual ~ZVObject() {
    if (javaIndex_ >= 0) unloadMirror();
  }

  // A number that tells this object from every other one: its address where addresses have 32 bits, else
  // its identity number.
  virtual int32_t graphFileID() const;
  // The object's id among those that one owner gave out; the smallest 32-bit number means none.
  virtual int32_t localID() const;
  virtual int isOMLObject() const;
  // Does nothing, in every class; a hook for the layers above.
  virtual void debugOutput(int level);

  // The object's mirror, made on demand, as a local reference that belongs to the caller. The root class
  // makes none: it gives null while the object has no mirror.
  virtual jobject getJavaObject(JNIEnv* env) const;
  // A local reference to the object's mirror class, which belongs to the caller.
  virtual jclass getJavaClass(JNIEnv* env) const;

  // A new copy of the object's own class, which belongs to the caller; null without memory. The static
  // forms accept null and then give null.
  ZVObject* cloneObject() const { return vCloneObject(); }
  ZVObject* cloneAttributes() const { return vCloneAttributes(); }
  static ZVObject* cloneObject(const ZVObject* source) { return source ? source->cloneObject() : nullptr; }
  static ZVObject* cloneAttributes(const ZVObject* source) {
    return source ? source->cloneAttributes() : nullptr;
  }

  // Unchecked conversion. REQUIRES: object is null or of this class.
  static ZVObject* castDown(const ZVObject* object) { return const_cast<ZVObject*>(object); }

  // Index of the mirror in the table of ZVJavaFactory; negative for none. The setter is called by the Java
  // side while it builds the mirror, and gives its argument.
  int32_t javaIndex() const { return javaIndex_; }
  int32_t javaIndex(int32_t index) { return javaIndex_ = index; }

  // The number that stands for this object's address wherever 32 bits must hold it: the address itself, or
  // where that is wider a number given on the first request, always negative and a multiple of 8.
  int32_t identityNumber() const;

  // A hook without effect; a null mode counts as "a". Gives 0.
  ZVErrorCodeEnum fileOutput(const char* first, const char* second, const char* mode);

  // A flag for the layers above; the setter gives the flag read back.
  static int tightIntegration() { return tight; }
  static int tightIntegration(int flag) { return tight = flag; }

  // Each call from Java runs between enter and leave, which nest on one environment. Another environment in
  // between is a broken contract.
  static void enter(JNIEnv* env);
  static void leave(JNIEnv* env);
  // The environment of the running call. REQUIRES: one is set.
  static JNIEnv* threadEnv();
  // Sets the environment without counting; not to be mixed with enter and leave. REQUIRES: env is not null.
  static JNIEnv* threadEnv(JNIEnv* env);

  // Look up ZVJavaFactory once before the first mirror, and let it go before the library is unloaded.
  static void initFactory(JNIEnv* env);
  static void cleanupFactory(JNIEnv* env);
  static jclass setFactory(jclass newFactory) { return factory = newFactory; }
  static jclass getFactory() { return factory; }
  static jmethodID getIDGet() { return idGet; }
  static jmethodID getIDDel() { return idDel; }
  // The mirror at index, as the factory gives it.
  static jobject getFactoryObject(JNIEnv* env, int32_t index);
  // The native address that a mirror holds.
  static intptr_t pCppObject(JNIEnv* env, jobject object);
  // Records a Java exception of the class, to be thrown when the native code returns. An unknown class name
  // raises nothing beyond what the look-up itself raised.
  static void throwJavaException(JNIEnv* env, const char* className, const char* message);

 protected:
  virtual ZVObject* vCloneObject() const;
  virtual ZVObject* vCloneAttributes() const;

  // What getJavaClass and getJavaObject of every class but the root do.
  static jclass findMirrorClass(JNIEnv* env, const char* name);
  jobject obtainMirror(JNIEnv* env) const;

 private:
  // Tells the mirror that this object goes.
  void unloadMirror();

  static JNIEnv* pthreadEnv;
  static int32_t envCount;
  static jclass factory;
  static jmethodID idGet;
  static jmethodID idDel;
  static int32_t tight;

  int32_t javaIndex_ = -1;
#if UINTPTR_MAX > 0xffffffffU
  static int32_t nextIdentity;
  mutable int32_t identity_ = 0;  // 0: not asked for yet
#endif
};

// Hooks of the layers above; all do nothing and give 0.
extern "C" {
ZV_EXPORT int staticFileOutput(const char* first, const char* second, const char* mode);
ZV_EXPORT int staticAssertTrace();
ZV_EXPORT int staticReturnNull();
}

// The members of the four shapes of the copy protocol. A class ends its own members with one of the ZV_SHAPE
// lines (the access is private behind it), and its source file has the ZV_DEFINE line of the same shape with
// the class and its base:
//
//   full      ZV_SHAPE_FULL      init, <Class>deepCopy and <Class>attributeCopy are written by hand
//   abstract  ZV_SHAPE_ABSTRACT  the same; the virtual clones are left to the concrete subclass
//                                or ZV_SHAPE_ABSTRACT_CLOSED, whose copying constructor must be told the kind
//   value     ZV_SHAPE_VALUE     init and <Class>attributeCopy are written by hand
//   no copy   ZV_SHAPE_NO_COPY   nothing is written by hand
//
// <Class>deepCopy begins with Base::copyObject(&other), <Class>attributeCopy with
// Base::copyAttributes(&other), and init sets only the class's own fields.

#define ZV_MIRROR(Class)                             \
 public:                                             \
  jobject getJavaObject(JNIEnv* env) const override; \
  jclass getJavaClass(JNIEnv* env) const override;   \
                                                     \
 private:

#define ZV_DEFINE_MIRROR(Class)                                                 \
  jobject Class::getJavaObject(JNIEnv* env) const { return obtainMirror(env); } \
  jclass Class::getJavaClass(JNIEnv* env) const {                               \
    return findMirrorClass(env, "com/larkmoor/jnilayout/" #Class);              \
  }

#define ZV_COPY_CONSTRUCTOR(Class, defaultFlag) \
 public:                                        \
  Class(const Class& other, ZVDeepFlagEnum flag = defaultFlag);

#define ZV_COPY_MEMBERS(Class)                                                                        \
 public:                                                                                              \
  const Class& operator=(const Class& other);                                                         \
  void copyObject(const ZVObject* other) override;                                                    \
  void copyAttributes(const ZVObject* other) override;                                                \
  Class* cloneObject() const { return castDown(vCloneObject()); }                                     \
  Class* cloneAttributes() const { return castDown(vCloneAttributes()); }                             \
  static Class* cloneObject(const Class* source) { return source ? source->cloneObject() : nullptr; } \
  static Class* cloneAttributes(const Class* source) {                                                \
    return source ? source->cloneAttributes() : nullptr;                                              \
  }                                                                                                   \
  static Class* castDown(const ZVObject* object) {                                                    \
    return const_cast<Class*>(static_cast<const Class*>(object));                                     \
  }                                                                                                   \
                                                                                                      \
 protected:                                                                                           \
  void init();                                                                                        \
                                                                                                      \
 private:                                                                                             \
  void Class##attributeCopy(const Class& other);                                                      \
  ZV_MIRROR(Class)

#define ZV_CLONE_SLOTS                         \
 protected:                                    \
  ZVObject* vCloneObject() const override;     \
  ZVObject* vCloneAttributes() const override; \
                                               \
 private:

#define ZV_DEFINE_CLONE_SLOTS(Class)                                                              \
  ZVObject* Class::vCloneObject() const { return new (std::nothrow) Class(*this, ZV_DEEP_COPY); } \
  ZVObject* Class::vCloneAttributes() const { return new (std::nothrow) Class(*this, ZV_ATTRIBUTE_COPY); }

#define ZV_SHAPE_ABSTRACT(Class)           \
  ZV_COPY_CONSTRUCTOR(Class, ZV_DEEP_COPY) \
  ZV_COPY_MEMBERS(Class)                   \
  void Class##deepCopy(const Class& other);

#define ZV_SHAPE_ABSTRACT_CLOSED(Class)           \
 public:                                          \
  Class(const Class&) = delete;                   \
  Class(const Class& other, ZVDeepFlagEnum flag); \
  ZV_COPY_MEMBERS(Class)                          \
  void Class##deepCopy(const Class& other);

#define ZV_DEFINE_ABSTRACT(Class, Base)                                 \
  static_assert(std::is_base_of_v<Base, Class>);                        \
  Class::Class(const Class& other, ZVDeepFlagEnum flag) : Base() {      \
    init();                                                             \
    if (flag) {                                                         \
      Class##attributeCopy(other);                                      \
    } else {                                                            \
      Class##deepCopy(other);                                           \
    }                                                                   \
  }                                                                     \
  const Class& Class::operator=(const Class& other) {                   \
    if (&other != this) Class##deepCopy(other);                         \
    return *this;                                                       \
  }                                                                     \
  void Class::copyObject(const ZVObject* other) {                       \
    if (other && other != this) Class##deepCopy(*castDown(other));      \
  }                                                                     \
  void Class::copyAttributes(const ZVObject* other) {                   \
    if (other && other != this) Class##attributeCopy(*castDown(other)); \
  }                                                                     \
  ZV_DEFINE_MIRROR(Class)

#define ZV_SHAPE_FULL(Class) \
  ZV_SHAPE_ABSTRACT(Class)   \
  ZV_CLONE_SLOTS

#define ZV_DEFINE_FULL(Class, Base) \
  ZV_DEFINE_ABSTRACT(Class, Base)   \
  ZV_DEFINE_CLONE_SLOTS(Class)

#define ZV_SHAPE_VALUE(Class)                   \
  ZV_COPY_CONSTRUCTOR(Class, ZV_ATTRIBUTE_COPY) \
  ZV_COPY_MEMBERS(Class)                        \
  ZV_CLONE_SLOTS

#define ZV_DEFINE_VALUE(Class, Base)                                       \
  static_assert(std::is_base_of_v<Base, Class>);                           \
  Class::Class(const Class& other, ZVDeepFlagEnum) : Base() {              \
    init();                                                                \
    Class##attributeCopy(other);                                           \
  }                                                                        \
  const Class& Class::operator=(const Class& other) {                      \
    if (&other != this) Class##attributeCopy(other);                       \
    return *this;                                                          \
  }                                                                        \
  void Class::copyObject(const ZVObject* other) { copyAttributes(other); } \
  void Class::copyAttributes(const ZVObject* other) {                      \
    if (other && other != this) Class##attributeCopy(*castDown(other));    \
  }                                                                        \
  ZV_DEFINE_MIRROR(Class)                                                  \
  ZV_DEFINE_CLONE_SLOTS(Class)

#define ZV_SHAPE_NO_COPY(Class)            \
 public:                                   \
  Class(const Class&) = delete;            \
  Class& operator=(const Class&) = delete; \
  ZV_MIRROR(Class)

#define ZV_DEFINE_NO_COPY(Class) ZV_DEFINE_MIRROR(Class)

#endif
