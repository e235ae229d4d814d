// SPDX-License-Identifier: Apache-2.0
#include <cstdarg>

#include "guard/BufferMethods.h"
#include "guard/Guards.h"
#include "guard/NullChecks.h"
#include "guard/WrappedArguments.h"

namespace chartbridge {
namespace {

// What the three kinds of calls have in common is written once, over the JVM's va_list and array
// functions and the fixed arguments in front of the variable ones: (object), (class) or (object,
// class), then the method ID.

template <class R, class... Fixed>
using CallV = R (*JniTable::*)(JNIEnv*, Fixed..., jmethodID, va_list);
template <class R, class... Fixed>
using CallA = R (*JniTable::*)(JNIEnv*, Fixed..., jmethodID, const jvalue*);

/// The Java type that a call returns, by its functions in the table.
template <class R, CallV<R, jobject> VirtualV, CallA<R, jobject> VirtualA,
          CallV<R, jobject, jclass> NonvirtualV, CallA<R, jobject, jclass> NonvirtualA,
          CallV<R, jclass> StaticV, CallA<R, jclass> StaticA>
struct Calls {
  using Result = R;
  static constexpr auto kVirtualV = VirtualV;
  static constexpr auto kVirtualA = VirtualA;
  static constexpr auto kNonvirtualV = NonvirtualV;
  static constexpr auto kNonvirtualA = NonvirtualA;
  static constexpr auto kStaticV = StaticV;
  static constexpr auto kStaticA = StaticA;
  /// Names for messages.
  static inline const char* virtualName = "";
  static inline const char* nonvirtualName = "";
  static inline const char* staticName = "";
};

using ObjectCalls =
    Calls<jobject, &JniTable::CallObjectMethodV, &JniTable::CallObjectMethodA,
          &JniTable::CallNonvirtualObjectMethodV, &JniTable::CallNonvirtualObjectMethodA,
          &JniTable::CallStaticObjectMethodV, &JniTable::CallStaticObjectMethodA>;
using BooleanCalls =
    Calls<jboolean, &JniTable::CallBooleanMethodV, &JniTable::CallBooleanMethodA,
          &JniTable::CallNonvirtualBooleanMethodV, &JniTable::CallNonvirtualBooleanMethodA,
          &JniTable::CallStaticBooleanMethodV, &JniTable::CallStaticBooleanMethodA>;
using ByteCalls = Calls<jbyte, &JniTable::CallByteMethodV, &JniTable::CallByteMethodA,
                        &JniTable::CallNonvirtualByteMethodV, &JniTable::CallNonvirtualByteMethodA,
                        &JniTable::CallStaticByteMethodV, &JniTable::CallStaticByteMethodA>;
using CharCalls = Calls<jchar, &JniTable::CallCharMethodV, &JniTable::CallCharMethodA,
                        &JniTable::CallNonvirtualCharMethodV, &JniTable::CallNonvirtualCharMethodA,
                        &JniTable::CallStaticCharMethodV, &JniTable::CallStaticCharMethodA>;
using ShortCalls =
    Calls<jshort, &JniTable::CallShortMethodV, &JniTable::CallShortMethodA,
          &JniTable::CallNonvirtualShortMethodV, &JniTable::CallNonvirtualShortMethodA,
          &JniTable::CallStaticShortMethodV, &JniTable::CallStaticShortMethodA>;
using IntCalls = Calls<jint, &JniTable::CallIntMethodV, &JniTable::CallIntMethodA,
                       &JniTable::CallNonvirtualIntMethodV, &JniTable::CallNonvirtualIntMethodA,
                       &JniTable::CallStaticIntMethodV, &JniTable::CallStaticIntMethodA>;
using LongCalls = Calls<jlong, &JniTable::CallLongMethodV, &JniTable::CallLongMethodA,
                        &JniTable::CallNonvirtualLongMethodV, &JniTable::CallNonvirtualLongMethodA,
                        &JniTable::CallStaticLongMethodV, &JniTable::CallStaticLongMethodA>;
using FloatCalls =
    Calls<jfloat, &JniTable::CallFloatMethodV, &JniTable::CallFloatMethodA,
          &JniTable::CallNonvirtualFloatMethodV, &JniTable::CallNonvirtualFloatMethodA,
          &JniTable::CallStaticFloatMethodV, &JniTable::CallStaticFloatMethodA>;
using DoubleCalls =
    Calls<jdouble, &JniTable::CallDoubleMethodV, &JniTable::CallDoubleMethodA,
          &JniTable::CallNonvirtualDoubleMethodV, &JniTable::CallNonvirtualDoubleMethodA,
          &JniTable::CallStaticDoubleMethodV, &JniTable::CallStaticDoubleMethodA>;
using VoidCalls = Calls<void, &JniTable::CallVoidMethodV, &JniTable::CallVoidMethodA,
                        &JniTable::CallNonvirtualVoidMethodV, &JniTable::CallNonvirtualVoidMethodA,
                        &JniTable::CallStaticVoidMethodV, &JniTable::CallStaticVoidMethodA>;

// The three checks are in the order in which a binding gets hold of things: class, object, method.

bool IsCallable(JNIEnv* env, jobject object, jmethodID method, const char* function) {
  if (__builtin_expect(object != nullptr && method != nullptr, 1)) return true;
  const bool noObject = object == nullptr;
  Refuse(env, JNIGUARD_NULL_CALL, noObject ? JavaError::kNullPointer : JavaError::kNoSuchMethod,
         function, noObject ? "the object is null" : "the method is null");
  return false;
}

bool IsStaticCallable(JNIEnv* env, jclass type, jmethodID method, const char* function) {
  if (__builtin_expect(type != nullptr && method != nullptr, 1)) return true;
  const bool noClass = type == nullptr;
  Refuse(env, JNIGUARD_NULL_CALL, noClass ? JavaError::kNoClassDefFound : JavaError::kNoSuchMethod,
         function, noClass ? "the class is null" : "the method is null");
  return false;
}

bool IsConstructible(JNIEnv* env, jclass type, jmethodID constructor) {
  if (__builtin_expect(type != nullptr && constructor != nullptr, 1)) return true;
  const bool noClass = type == nullptr;
  Refuse(env, JNIGUARD_NULL_CLASS, noClass ? JavaError::kNoClassDefFound : JavaError::kNoSuchMethod,
         "NewObject", noClass ? "the class is null" : "the constructor is null");
  return false;
}

template <auto MemberA, class R, class Arguments, class... Fixed>
R InvokeWrapped(JNIEnv* env, const std::string& parameters, Arguments arguments, jmethodID method,
                Fixed... fixed) {
  const WrappedArguments wrapped(env, parameters, arguments);
  if (!wrapped.IsComplete()) return R();
  return (jvm.*MemberA)(env, fixed..., method, wrapped.Values());
}

template <auto MemberV, auto MemberA, class R, class... Fixed>
R InvokeV(JNIEnv* env, va_list arguments, jmethodID method, Fixed... fixed) {
  const std::string* parameters = BufferMethods::Find(method);
  if (__builtin_expect(parameters == nullptr, 1)) {
    return (jvm.*MemberV)(env, fixed..., method, arguments);
  }
  return InvokeWrapped<MemberA, R, va_list>(env, *parameters, arguments, method, fixed...);
}

template <auto MemberA, class R, class... Fixed>
R InvokeA(JNIEnv* env, const jvalue* arguments, jmethodID method, Fixed... fixed) {
  const std::string* parameters = BufferMethods::Find(method);
  if (__builtin_expect(parameters == nullptr, 1)) {
    return (jvm.*MemberA)(env, fixed..., method, arguments);
  }
  return InvokeWrapped<MemberA, R, const jvalue*>(env, *parameters, arguments, method, fixed...);
}

/// Ends the use of a va_list with the scope, whatever the call returns.
class ArgumentList {
 public:
  explicit ArgumentList(va_list& arguments) : _arguments(arguments) {}
  ~ArgumentList() { va_end(_arguments); }
  ArgumentList(const ArgumentList&) = delete;
  ArgumentList& operator=(const ArgumentList&) = delete;

 private:
  va_list& _arguments;
};

template <class T>
typename T::Result VirtualV(JNIEnv* env, jobject object, jmethodID method, va_list arguments) {
  using R = typename T::Result;
  env = OwnEnv(env);
  if (!IsCallable(env, object, method, T::virtualName)) return R();
  return InvokeV<T::kVirtualV, T::kVirtualA, R>(env, arguments, method, object);
}

template <class T>
typename T::Result Virtual(JNIEnv* env, jobject object, jmethodID method, ...) {
  va_list arguments;
  va_start(arguments, method);
  const ArgumentList scope(arguments);
  return VirtualV<T>(env, object, method, arguments);
}

template <class T>
typename T::Result VirtualA(JNIEnv* env, jobject object, jmethodID method,
                            const jvalue* arguments) {
  using R = typename T::Result;
  env = OwnEnv(env);
  if (!IsCallable(env, object, method, T::virtualName)) return R();
  return InvokeA<T::kVirtualA, R>(env, arguments, method, object);
}

template <class T>
typename T::Result NonvirtualV(JNIEnv* env, jobject object, jclass type, jmethodID method,
                               va_list arguments) {
  using R = typename T::Result;
  env = OwnEnv(env);
  if (!IsCallable(env, object, method, T::nonvirtualName)) return R();
  return InvokeV<T::kNonvirtualV, T::kNonvirtualA, R>(env, arguments, method, object, type);
}

template <class T>
typename T::Result Nonvirtual(JNIEnv* env, jobject object, jclass type, jmethodID method, ...) {
  va_list arguments;
  va_start(arguments, method);
  const ArgumentList scope(arguments);
  return NonvirtualV<T>(env, object, type, method, arguments);
}

template <class T>
typename T::Result NonvirtualA(JNIEnv* env, jobject object, jclass type, jmethodID method,
                               const jvalue* arguments) {
  using R = typename T::Result;
  env = OwnEnv(env);
  if (!IsCallable(env, object, method, T::nonvirtualName)) return R();
  return InvokeA<T::kNonvirtualA, R>(env, arguments, method, object, type);
}

template <class T>
typename T::Result StaticV(JNIEnv* env, jclass type, jmethodID method, va_list arguments) {
  using R = typename T::Result;
  env = OwnEnv(env);
  if (!IsStaticCallable(env, type, method, T::staticName)) return R();
  return InvokeV<T::kStaticV, T::kStaticA, R>(env, arguments, method, type);
}

template <class T>
typename T::Result Static(JNIEnv* env, jclass type, jmethodID method, ...) {
  va_list arguments;
  va_start(arguments, method);
  const ArgumentList scope(arguments);
  return StaticV<T>(env, type, method, arguments);
}

template <class T>
typename T::Result StaticA(JNIEnv* env, jclass type, jmethodID method, const jvalue* arguments) {
  using R = typename T::Result;
  env = OwnEnv(env);
  if (!IsStaticCallable(env, type, method, T::staticName)) return R();
  return InvokeA<T::kStaticA, R>(env, arguments, method, type);
}

jobject NewObjectV(JNIEnv* env, jclass type, jmethodID constructor, va_list arguments) {
  env = OwnEnv(env);
  if (!IsConstructible(env, type, constructor)) return nullptr;
  return InvokeV<&JniTable::NewObjectV, &JniTable::NewObjectA, jobject>(env, arguments, constructor,
                                                                        type);
}

jobject NewObject(JNIEnv* env, jclass type, jmethodID constructor, ...) {
  va_list arguments;
  va_start(arguments, constructor);
  const ArgumentList scope(arguments);
  return NewObjectV(env, type, constructor, arguments);
}

jobject NewObjectA(JNIEnv* env, jclass type, jmethodID constructor, const jvalue* arguments) {
  env = OwnEnv(env);
  if (!IsConstructible(env, type, constructor)) return nullptr;
  return InvokeA<&JniTable::NewObjectA, jobject>(env, arguments, constructor, type);
}

template <class T, auto VirtualMember, auto NonvirtualMember, auto StaticMember>
void Guard(JniTable& table, const char* virtualName, const char* nonvirtualName,
           const char* staticName) {
  T::virtualName = virtualName;
  T::nonvirtualName = nonvirtualName;
  T::staticName = staticName;
  table.*VirtualMember = &Virtual<T>;
  table.*T::kVirtualV = &VirtualV<T>;
  table.*T::kVirtualA = &VirtualA<T>;
  table.*NonvirtualMember = &Nonvirtual<T>;
  table.*T::kNonvirtualV = &NonvirtualV<T>;
  table.*T::kNonvirtualA = &NonvirtualA<T>;
  table.*StaticMember = &Static<T>;
  table.*T::kStaticV = &StaticV<T>;
  table.*T::kStaticA = &StaticA<T>;
}

}  // namespace

void GuardCalls(JniTable& table) {
  table.NewObject = NewObject;
  table.NewObjectV = NewObjectV;
  table.NewObjectA = NewObjectA;
  Guard<ObjectCalls, &JniTable::CallObjectMethod, &JniTable::CallNonvirtualObjectMethod,
        &JniTable::CallStaticObjectMethod>(table, "CallObjectMethod", "CallNonvirtualObjectMethod",
                                           "CallStaticObjectMethod");
  Guard<BooleanCalls, &JniTable::CallBooleanMethod, &JniTable::CallNonvirtualBooleanMethod,
        &JniTable::CallStaticBooleanMethod>(
      table, "CallBooleanMethod", "CallNonvirtualBooleanMethod", "CallStaticBooleanMethod");
  Guard<ByteCalls, &JniTable::CallByteMethod, &JniTable::CallNonvirtualByteMethod,
        &JniTable::CallStaticByteMethod>(table, "CallByteMethod", "CallNonvirtualByteMethod",
                                         "CallStaticByteMethod");
  Guard<CharCalls, &JniTable::CallCharMethod, &JniTable::CallNonvirtualCharMethod,
        &JniTable::CallStaticCharMethod>(table, "CallCharMethod", "CallNonvirtualCharMethod",
                                         "CallStaticCharMethod");
  Guard<ShortCalls, &JniTable::CallShortMethod, &JniTable::CallNonvirtualShortMethod,
        &JniTable::CallStaticShortMethod>(table, "CallShortMethod", "CallNonvirtualShortMethod",
                                          "CallStaticShortMethod");
  Guard<IntCalls, &JniTable::CallIntMethod, &JniTable::CallNonvirtualIntMethod,
        &JniTable::CallStaticIntMethod>(table, "CallIntMethod", "CallNonvirtualIntMethod",
                                        "CallStaticIntMethod");
  Guard<LongCalls, &JniTable::CallLongMethod, &JniTable::CallNonvirtualLongMethod,
        &JniTable::CallStaticLongMethod>(table, "CallLongMethod", "CallNonvirtualLongMethod",
                                         "CallStaticLongMethod");
  Guard<FloatCalls, &JniTable::CallFloatMethod, &JniTable::CallNonvirtualFloatMethod,
        &JniTable::CallStaticFloatMethod>(table, "CallFloatMethod", "CallNonvirtualFloatMethod",
                                          "CallStaticFloatMethod");
  Guard<DoubleCalls, &JniTable::CallDoubleMethod, &JniTable::CallNonvirtualDoubleMethod,
        &JniTable::CallStaticDoubleMethod>(table, "CallDoubleMethod", "CallNonvirtualDoubleMethod",
                                           "CallStaticDoubleMethod");
  Guard<VoidCalls, &JniTable::CallVoidMethod, &JniTable::CallNonvirtualVoidMethod,
        &JniTable::CallStaticVoidMethod>(table, "CallVoidMethod", "CallNonvirtualVoidMethod",
                                         "CallStaticVoidMethod");
}

}  // namespace chartbridge
