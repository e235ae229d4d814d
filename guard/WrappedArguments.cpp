// SPDX-License-Identifier: Apache-2.0
#include "guard/WrappedArguments.h"

#include <algorithm>

#include "guard/BufferMethods.h"
#include "guard/Caught.h"
#include "guard/JvmFunctions.h"

namespace chartbridge {
namespace {

jclass byteArrayClass = nullptr;
jclass byteBufferClass = nullptr;
jmethodID wrapMethod = nullptr;

jclass FindGlobal(JNIEnv* env, const char* name) {
  jclass local = jvm.FindClass(env, name);
  if (local == nullptr) return nullptr;
  auto global = static_cast<jclass>(jvm.NewGlobalRef(env, local));
  jvm.DeleteLocalRef(env, local);
  return global;
}

// The caller has started the list, which the analyzer does not see through the reference.
// NOLINTBEGIN(clang-analyzer-valist.Uninitialized)
// One variadic argument as C passes it: small integers as int, float as double.
jvalue NextArgument(char type, va_list& arguments) {
  jvalue value;
  value.j = 0;
  switch (type) {
    case 'Z':
      value.z = va_arg(arguments, int) != 0 ? JNI_TRUE : JNI_FALSE;
      break;
    case 'B':
      value.b = static_cast<jbyte>(va_arg(arguments, int));
      break;
    case 'C':
      value.c = static_cast<jchar>(va_arg(arguments, int));
      break;
    case 'S':
      value.s = static_cast<jshort>(va_arg(arguments, int));
      break;
    case 'I':
      value.i = va_arg(arguments, jint);
      break;
    case 'J':
      value.j = va_arg(arguments, jlong);
      break;
    case 'F':
      value.f = static_cast<jfloat>(va_arg(arguments, double));
      break;
    case 'D':
      value.d = va_arg(arguments, double);
      break;
    default:
      value.l = va_arg(arguments, jobject);
      break;
  }
  return value;
}
// NOLINTEND(clang-analyzer-valist.Uninitialized)

}  // namespace

bool WrappedArguments::Prepare(JNIEnv* env) {
  byteArrayClass = FindGlobal(env, "[B");
  byteBufferClass = FindGlobal(env, "java/nio/ByteBuffer");
  if (byteArrayClass == nullptr || byteBufferClass == nullptr) return false;
  wrapMethod = jvm.GetStaticMethodID(env, byteBufferClass, "wrap", "([B)Ljava/nio/ByteBuffer;");
  return wrapMethod != nullptr;
}

WrappedArguments::WrappedArguments(JNIEnv* env, const std::string& parameters, va_list arguments)
    : _env(env) {
  // A va_list parameter is a pointer on some machines and an array on others; only a copy can be
  // passed on by reference.
  va_list rest;
  va_copy(rest, arguments);
  for (std::size_t i = 0; i < parameters.size(); ++i)
    _values[i] = NextArgument(parameters[i], rest);
  va_end(rest);
  WrapByteArrays(parameters);
}

WrappedArguments::WrappedArguments(JNIEnv* env, const std::string& parameters,
                                   const jvalue* arguments)
    : _env(env) {
  std::copy_n(arguments, parameters.size(), _values);
  WrapByteArrays(parameters);
}

WrappedArguments::~WrappedArguments() {
  for (int i = 0; i < _wrapperCount; ++i) jvm.DeleteLocalRef(_env, _wrappers[i]);
}

void WrappedArguments::WrapByteArrays(const std::string& parameters) {
  for (std::size_t i = 0; i < parameters.size() && _complete; ++i) {
    if (parameters[i] != BufferMethods::kByteBuffer || _values[i].l == nullptr) continue;
    if (!jvm.IsInstanceOf(_env, _values[i].l, byteArrayClass)) continue;
    _values[i].l = Wrap(_values[i].l);
  }
}

jobject WrappedArguments::Wrap(jobject array) {
  jvalue argument;
  argument.l = array;
  jobject wrapper = jvm.CallStaticObjectMethodA(_env, byteBufferClass, wrapMethod, &argument);
  if (wrapper == nullptr) {
    _complete = false;
    return nullptr;
  }
  _wrappers[_wrapperCount++] = wrapper;
  Caught(JNIGUARD_BYTE_ARRAY_WRAPPED, "Call",
         "a byte[] stands where the method takes a ByteBuffer");
  return wrapper;
}

}  // namespace chartbridge
