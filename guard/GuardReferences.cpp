// SPDX-License-Identifier: Apache-2.0
#include "guard/Caught.h"
#include "guard/Guards.h"
#include "guard/NullChecks.h"
#include "guard/ReferenceEpoch.h"

namespace chartbridge {
namespace {

// Gives a reference back as what it is. On today's JVMs the wrong function aborts or damages
// another reference's slot.
void DeleteByKind(JNIEnv* env, jobject reference, jobjectRefType kind) {
  switch (kind) {
    case JNILocalRefType:
      jvm.DeleteLocalRef(env, reference);
      break;
    case JNIGlobalRefType:
      jvm.DeleteGlobalRef(env, reference);
      break;
    case JNIWeakGlobalRefType:
      jvm.DeleteWeakGlobalRef(env, reference);
      break;
    case JNIInvalidRefType:
      break;
  }
}

void Delete(JNIEnv* env, jobject reference, jobjectRefType expected, const char* function) {
  if (reference == nullptr) return;
  env = OwnEnv(env);
  const jobjectRefType kind = jvm.GetObjectRefType(env, reference);
  if (kind != expected) {
    Caught(JNIGUARD_REFERENCE_KIND, function,
           kind == JNIInvalidRefType ? "the reference is not valid on this thread"
                                     : "the reference is of another kind");
  }
  DeleteByKind(env, reference, kind);
  ReferenceEpoch::End();
}

void DeleteGlobalRef(JNIEnv* env, jobject reference) {
  Delete(env, reference, JNIGlobalRefType, "DeleteGlobalRef");
}

void DeleteWeakGlobalRef(JNIEnv* env, jweak reference) {
  Delete(env, reference, JNIWeakGlobalRefType, "DeleteWeakGlobalRef");
}

// A local reference that was already given back is common in native code and harmless to every JVM:
// not counted.
void DeleteLocalRef(JNIEnv* env, jobject reference) {
  if (reference == nullptr) return;
  env = OwnEnv(env);
  const jobjectRefType kind = jvm.GetObjectRefType(env, reference);
  if (kind == JNIGlobalRefType || kind == JNIWeakGlobalRefType) {
    Caught(JNIGUARD_REFERENCE_KIND, "DeleteLocalRef", "the reference is of another kind");
  }
  DeleteByKind(env, reference, kind);
  ReferenceEpoch::End();
}

jobject PopLocalFrame(JNIEnv* env, jobject result) {
  ReferenceEpoch::End();
  return jvm.PopLocalFrame(OwnEnv(env), result);
}

}  // namespace

void GuardReferences(JniTable& table) {
  table.DeleteGlobalRef = DeleteGlobalRef;
  table.DeleteLocalRef = DeleteLocalRef;
  table.PopLocalFrame = PopLocalFrame;
  table.DeleteWeakGlobalRef = DeleteWeakGlobalRef;
  UseOwnEnv<&JniTable::NewGlobalRef>(table);
  UseOwnEnv<&JniTable::NewLocalRef>(table);
  UseOwnEnv<&JniTable::NewWeakGlobalRef>(table);
  UseOwnEnv<&JniTable::IsSameObject>(table);
  UseOwnEnv<&JniTable::GetObjectRefType>(table);
  UseOwnEnv<&JniTable::EnsureLocalCapacity>(table);
  UseOwnEnv<&JniTable::PushLocalFrame>(table);
  UseOwnEnv<&JniTable::Throw>(table);
  UseOwnEnv<&JniTable::ThrowNew>(table);
  UseOwnEnv<&JniTable::ExceptionOccurred>(table);
  UseOwnEnv<&JniTable::ExceptionDescribe>(table);
  UseOwnEnv<&JniTable::ExceptionClear>(table);
  UseOwnEnv<&JniTable::ExceptionCheck>(table);
}

}  // namespace chartbridge
