// SPDX-License-Identifier: Apache-2.0
#include "guard/Guards.h"
#include "guard/NullChecks.h"

namespace chartbridge {
namespace {

/// As `NonNullCall`, for the region functions, which also need memory to copy from or to.
template <auto Member>
struct RegionCall;

template <class Array, class Buffer,
          void (*JniTable::*Member)(JNIEnv*, Array, jsize, jsize, Buffer)>
struct RegionCall<Member> {
  static void Call(JNIEnv* env, Array array, jsize start, jsize length, Buffer buffer) {
    env = OwnEnv(env);
    if (__builtin_expect(array != nullptr && (buffer != nullptr || length <= 0), 1)) {
      (jvm.*Member)(env, array, start, length, buffer);
      return;
    }
    Refuse(env, JNIGUARD_NULL_ARRAY_OR_STRING, JavaError::kNullPointer, name,
           array == nullptr ? "the array or string is null" : "the memory is null");
  }
  static inline const char* name = "";
};

template <auto Member>
void RefuseNullRegion(JniTable& table, const char* name) {
  RegionCall<Member>::name = name;
  table.*Member = &RegionCall<Member>::Call;
}

void GuardGetRegions(JniTable& table) {
  RefuseNullRegion<&JniTable::GetBooleanArrayRegion>(table, "GetBooleanArrayRegion");
  RefuseNullRegion<&JniTable::GetByteArrayRegion>(table, "GetByteArrayRegion");
  RefuseNullRegion<&JniTable::GetCharArrayRegion>(table, "GetCharArrayRegion");
  RefuseNullRegion<&JniTable::GetShortArrayRegion>(table, "GetShortArrayRegion");
  RefuseNullRegion<&JniTable::GetIntArrayRegion>(table, "GetIntArrayRegion");
  RefuseNullRegion<&JniTable::GetLongArrayRegion>(table, "GetLongArrayRegion");
  RefuseNullRegion<&JniTable::GetFloatArrayRegion>(table, "GetFloatArrayRegion");
  RefuseNullRegion<&JniTable::GetDoubleArrayRegion>(table, "GetDoubleArrayRegion");
  RefuseNullRegion<&JniTable::GetStringRegion>(table, "GetStringRegion");
  RefuseNullRegion<&JniTable::GetStringUTFRegion>(table, "GetStringUTFRegion");
}

void GuardSetRegions(JniTable& table) {
  RefuseNullRegion<&JniTable::SetBooleanArrayRegion>(table, "SetBooleanArrayRegion");
  RefuseNullRegion<&JniTable::SetByteArrayRegion>(table, "SetByteArrayRegion");
  RefuseNullRegion<&JniTable::SetCharArrayRegion>(table, "SetCharArrayRegion");
  RefuseNullRegion<&JniTable::SetShortArrayRegion>(table, "SetShortArrayRegion");
  RefuseNullRegion<&JniTable::SetIntArrayRegion>(table, "SetIntArrayRegion");
  RefuseNullRegion<&JniTable::SetLongArrayRegion>(table, "SetLongArrayRegion");
  RefuseNullRegion<&JniTable::SetFloatArrayRegion>(table, "SetFloatArrayRegion");
  RefuseNullRegion<&JniTable::SetDoubleArrayRegion>(table, "SetDoubleArrayRegion");
}

void GuardNewArrays(JniTable& table) {
  UseOwnEnv<&JniTable::NewBooleanArray>(table);
  UseOwnEnv<&JniTable::NewByteArray>(table);
  UseOwnEnv<&JniTable::NewCharArray>(table);
  UseOwnEnv<&JniTable::NewShortArray>(table);
  UseOwnEnv<&JniTable::NewIntArray>(table);
  UseOwnEnv<&JniTable::NewLongArray>(table);
  UseOwnEnv<&JniTable::NewFloatArray>(table);
  UseOwnEnv<&JniTable::NewDoubleArray>(table);
}

jobjectArray NewObjectArray(JNIEnv* env, jsize length, jclass type, jobject initial) {
  env = OwnEnv(env);
  if (type != nullptr) return jvm.NewObjectArray(env, length, type, initial);
  Refuse(env, JNIGUARD_NULL_CLASS, JavaError::kNoClassDefFound, "NewObjectArray",
         "the class is null");
  return nullptr;
}

}  // namespace

void GuardArrays(JniTable& table) {
  RefuseNull<&JniTable::GetArrayLength>(table, "GetArrayLength");
  RefuseNull<&JniTable::GetObjectArrayElement>(table, "GetObjectArrayElement");
  RefuseNull<&JniTable::SetObjectArrayElement>(table, "SetObjectArrayElement");
  RefuseNull<&JniTable::GetPrimitiveArrayCritical>(table, "GetPrimitiveArrayCritical");
  RefuseNull<&JniTable::ReleasePrimitiveArrayCritical>(table, "ReleasePrimitiveArrayCritical");
  table.NewObjectArray = NewObjectArray;
  GuardNewArrays(table);
  GuardGetRegions(table);
  GuardSetRegions(table);
}

}  // namespace chartbridge
