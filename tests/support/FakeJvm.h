// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_FAKEJVM_H_
#define TESTS_SUPPORT_FAKEJVM_H_

#include <jni.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/FakeMethod.h"
#include "tests/support/FakeObject.h"

namespace chartbridge::testing {

/// A JVM without Java: the whole JNI function table over a small scripted object model. Every call
/// goes to the `EventLog`.
///
/// Events read "Function(arguments)" with readable arguments: classes and methods by name and
/// signature, strings and byte arrays by content, objects by class and number ("ChartImager@1"),
/// arrays that JNI made by number ("byte[]#1"), arrays that the test made by the name that it gave.
/// The variadic calls of `JNIEnv` appear under their plain name. A call on an env other than the
/// main one ends in " on <env>".
///
/// Failing calls behave like a JVM that checks its arguments: an unknown class or method leaves
/// `NoClassDefFoundError` or `NoSuchMethodError` pending, a null reference `NullPointerException`,
/// and the result is zero. A JNI function outside the model fails the test by its name.
///
/// It takes no locks: the library's own lock is what must keep two threads out of it.
class FakeJvm {
 public:
  FakeJvm();
  ~FakeJvm();

  FakeJvm(const FakeJvm&) = delete;
  FakeJvm& operator=(const FakeJvm&) = delete;

  /// The env of the test's own thread.
  JNIEnv* Env() { return _main; }
  /// Another thread's env, which events call by this name.
  JNIEnv* NewEnv(const std::string& name);

  /// The class of that name; made on the first call.
  FakeObject* Class(const std::string& name);
  /// The class of that name with a constructor "()V".
  FakeObject* ClassWithConstructor(const std::string& name);
  /// The instance method of that class; made on the first call.
  FakeMethod& Method(const std::string& class_name, const std::string& name,
                     const std::string& signature);
  FakeMethod& StaticMethod(const std::string& class_name, const std::string& name,
                           const std::string& signature);
  jclass ClassReference(const std::string& name) { return As<jclass>(Class(name)); }
  jmethodID MethodID(const std::string& class_name, const std::string& name,
                     const std::string& signature);

  jobject MakeObject(const std::string& class_name);
  jbyteArray MakeBytes(const std::string& label, const std::string& bytes);
  jlongArray MakeLongs(const std::string& label, std::vector<jlong> longs);
  jobjectArray MakeObjects(const std::string& label, std::vector<jobject> elements);
  jstring MakeString(const std::string& utf8);
  jstring MakeString(const std::u16string& text);
  /// A throwable whose class, and the stream classes that print it, work as Java's do.
  jthrowable MakeThrowable(const std::string& class_name, const std::string& message);
  /// As above, with `getMessage()` giving null.
  jthrowable MakeThrowableWithoutMessage(const std::string& class_name);
  /// A `java.util.HashMap` from strings to objects that iterates in this order.
  jobject MakeMap(const std::vector<std::pair<std::string, jobject>>& entries);

  /// How events call the host's own memory.
  void NameMemory(const void* memory, const std::string& name);

  void SetPending(jthrowable exception, JNIEnv* env = nullptr);
  jthrowable Pending(JNIEnv* env = nullptr);

  /// Lets the nth call from now on (1 is the next one) of a JNI function give null or zero, and
  /// leaves `exception` pending.
  void Fail(const std::string& function, int nth, jthrowable exception = nullptr);
  /// Runs native code inside the nth call from now on of a JNI function, after it was logged.
  void On(const std::string& function, int nth, std::function<void()> action);
  /// Marks the events of calls that JNI forbids while an exception is pending with " [exception
  /// pending]".
  void NoteForbiddenCalls() { _note_forbidden = true; }
  /// Whether the units of `GetStringChars` are followed by a zero unit, as on most JVMs. JNI does
  /// not promise it.
  void TerminateStringChars(bool terminate) { _terminate_chars = terminate; }

  /// The number of element and character buffers that were given out and not released.
  std::size_t UnreleasedBuffers() const { return _buffers.size(); }

  static FakeJvm& Of(JNIEnv* env);

  // What the function table is made of.

  /// Logs the call and runs what is scripted for it. False when it must fail.
  bool Enter(JNIEnv* env, const char* function, const std::string& arguments,
             const std::string& result = "");
  void Record(JNIEnv* env, const char* function, const std::string& text);
  std::string Describe(jobject reference) const;
  std::string DescribeWithContent(jobject reference) const;
  std::string DescribeMethod(jmethodID id) const;
  /// The method of that ID; null for null and for anything that this JVM did not give.
  const FakeMethod* FindMethod(jmethodID id) const;
  std::string DescribeMemory(const void* memory, jlong length) const;
  std::string DescribeBuffer(const void* buffer, const FakeObject* owner) const;
  FakeObject* FindClass(const std::string& name) const;
  FakeObject* Add(FakeObject::Kind kind, std::string label);
  FakeObject* AddNumbered(FakeObject::Kind kind, const std::string& type);
  FakeObject* AddInstance(FakeObject* type);
  void ThrowNew(JNIEnv* env, const std::string& class_name, const std::string& message);
  /// Memory for the elements of `owner`, filled with `bytes`; released or not, it lives at most as
  /// long as the JVM.
  void* GiveBuffer(FakeObject* owner, const void* bytes, std::size_t size);
  /// The units of a string, terminated or not as the test chose.
  const jchar* GiveChars(FakeObject* string);
  /// The owner of the buffer, which is freed; null and a test failure for any other pointer.
  FakeObject* TakeBuffer(const void* buffer, bool free_it);
  /// What `GiveBuffer` gave the first time, for mode 0 and JNI_COMMIT.
  std::size_t BufferSize(const void* buffer) const;

 private:
  struct ThreadEnv : JNIEnv_ {
    FakeJvm* jvm;
    std::string name;
    jthrowable pending;
  };
  struct Injection {
    int countdown;
    bool fails;
    jthrowable exception;
    std::function<void()> action;
  };
  struct FreeBuffer {
    void operator()(void* memory) const;
  };
  struct Buffer {
    std::unique_ptr<void, FreeBuffer> memory;
    std::size_t size;
    FakeObject* owner;
  };

  FakeMethod& AddMethod(const std::string& class_name, const std::string& name,
                        const std::string& signature, bool is_static);
  void DefineStreams();
  void DefineThrowable(const std::string& class_name);
  void DefineCollections();
  std::string EnvSuffix(JNIEnv* env) const;
  std::string ForbiddenNote(JNIEnv* env, const std::string& function) const;
  bool IsKnown(jobject reference) const;

  JNINativeInterface_ _table;
  std::vector<std::unique_ptr<ThreadEnv>> _envs;
  ThreadEnv* _main;
  std::map<const FakeObject*, std::unique_ptr<FakeObject>> _objects;
  std::map<std::string, FakeObject*> _classes;
  std::map<std::string, int> _numbers;
  std::map<const void*, std::string> _memory_names;
  std::map<const void*, Buffer> _buffers;
  std::multimap<std::string, Injection> _injections;
  bool _note_forbidden = false;
  bool _terminate_chars = true;
};

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_FAKEJVM_H_
