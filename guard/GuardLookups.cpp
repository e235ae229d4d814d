// SPDX-License-Identifier: Apache-2.0
#include "guard/BufferMethods.h"
#include "guard/Guards.h"
#include "guard/NullChecks.h"

namespace chartbridge {
namespace {

jclass FindClass(JNIEnv* env, const char* name) {
  env = OwnEnv(env);
  if (name != nullptr) return jvm.FindClass(env, name);
  Refuse(env, JNIGUARD_NULL_CLASS, JavaError::kNoClassDefFound, "FindClass", "the name is null");
  return nullptr;
}

jclass GetObjectClass(JNIEnv* env, jobject object) {
  env = OwnEnv(env);
  if (object != nullptr) return jvm.GetObjectClass(env, object);
  Refuse(env, JNIGUARD_BAD_INPUT, JavaError::kNullPointer, "GetObjectClass", "the object is null");
  return nullptr;
}

jboolean IsInstanceOf(JNIEnv* env, jobject object, jclass type) {
  env = OwnEnv(env);
  if (type != nullptr) return jvm.IsInstanceOf(env, object, type);
  Refuse(env, JNIGUARD_NULL_CLASS, JavaError::kNoClassDefFound, "IsInstanceOf",
         "the class is null");
  return JNI_FALSE;
}

using Lookup = jmethodID (*JniTable::*)(JNIEnv*, jclass, const char*, const char*);

template <Lookup Member>
jmethodID FindMethod(JNIEnv* env, jclass type, const char* name, const char* signature,
                     const char* function) {
  env = OwnEnv(env);
  if (type == nullptr) {
    Refuse(env, JNIGUARD_NULL_CLASS, JavaError::kNoClassDefFound, function, "the class is null");
    return nullptr;
  }
  if (name == nullptr || signature == nullptr) {
    Refuse(env, JNIGUARD_NULL_CLASS, JavaError::kNoSuchMethod, function,
           "the name or the signature is null");
    return nullptr;
  }
  jmethodID id = (jvm.*Member)(env, type, name, signature);
  if (id != nullptr) BufferMethods::Note(id, signature);
  return id;
}

jmethodID GetMethodID(JNIEnv* env, jclass type, const char* name, const char* signature) {
  return FindMethod<&JniTable::GetMethodID>(env, type, name, signature, "GetMethodID");
}

jmethodID GetStaticMethodID(JNIEnv* env, jclass type, const char* name, const char* signature) {
  return FindMethod<&JniTable::GetStaticMethodID>(env, type, name, signature, "GetStaticMethodID");
}

}  // namespace

void GuardLookups(JniTable& table) {
  table.FindClass = FindClass;
  table.GetObjectClass = GetObjectClass;
  table.IsInstanceOf = IsInstanceOf;
  table.GetMethodID = GetMethodID;
  table.GetStaticMethodID = GetStaticMethodID;
  UseOwnEnv<&JniTable::GetVersion>(table);
  UseOwnEnv<&JniTable::GetJavaVM>(table);
}

}  // namespace chartbridge
