// SPDX-License-Identifier: Apache-2.0
#include "guard/FloatTraps.h"

#ifndef __x86_64__
#error \
    "The guard knows the floating-point traps of x86-64 alone; chartbridge is for Linux on x86-64."
#endif

#include <xmmintrin.h>

namespace chartbridge {
namespace {

// Both units have a bit for each of the six exceptions: set, it traps nowhere.
constexpr unsigned kSseMasks = _MM_MASK_MASK;
constexpr unsigned kX87Masks = 0x3F;

unsigned short X87Controls() {
  unsigned short controls = 0;
  __asm__ volatile("fnstcw %0" : "=m"(controls));
  return controls;
}

unsigned short X87Flags() {
  unsigned short flags = 0;
  __asm__ volatile("fnstsw %0" : "=m"(flags));
  return flags;
}

void SetX87Controls(unsigned short controls) { __asm__ volatile("fldcw %0" : : "m"(controls)); }

// In the x87 unit a flag that is up when its trap is enabled traps at the next instruction.
void EnableX87Traps(unsigned short controls) {
  const unsigned enabled = ~static_cast<unsigned>(controls) & kX87Masks;
  if ((X87Flags() & enabled) != 0) __asm__ volatile("fnclex");
  SetX87Controls(controls);
}

template <auto Member>
struct TrapFreeCall;

template <class R, class... A, R (JNICALL* JniTable::*Member)(JNIEnv*, A...)>
struct TrapFreeCall<Member> {
  static R JNICALL Call(JNIEnv* env, A... arguments) {
    if (__builtin_expect(!TrapScope::IsNeeded(), 1)) return function(env, arguments...);
    const TrapScope traps;
    return function(env, arguments...);
  }
  /// The JVM's own.
  static inline R(JNICALL* function)(JNIEnv*, A...) = nullptr;
};

template <auto Member>
void Hold(JniTable& table) {
  if (table.*Member == &TrapFreeCall<Member>::Call) return;
  TrapFreeCall<Member>::function = table.*Member;
  table.*Member = &TrapFreeCall<Member>::Call;
}

template <auto... Members>
void HoldAll(JniTable& table) {
  (Hold<Members>(table), ...);
}

void HoldCalls(JniTable& table) {
  HoldAll<&JniTable::CallObjectMethodV, &JniTable::CallObjectMethodA, &JniTable::CallBooleanMethodV,
          &JniTable::CallBooleanMethodA, &JniTable::CallByteMethodV, &JniTable::CallByteMethodA,
          &JniTable::CallCharMethodV, &JniTable::CallCharMethodA, &JniTable::CallShortMethodV,
          &JniTable::CallShortMethodA, &JniTable::CallIntMethodV, &JniTable::CallIntMethodA,
          &JniTable::CallLongMethodV, &JniTable::CallLongMethodA, &JniTable::CallFloatMethodV,
          &JniTable::CallFloatMethodA, &JniTable::CallDoubleMethodV, &JniTable::CallDoubleMethodA,
          &JniTable::CallVoidMethodV, &JniTable::CallVoidMethodA>(table);
}

void HoldNonvirtualCalls(JniTable& table) {
  HoldAll<&JniTable::CallNonvirtualObjectMethodV, &JniTable::CallNonvirtualObjectMethodA,
          &JniTable::CallNonvirtualBooleanMethodV, &JniTable::CallNonvirtualBooleanMethodA,
          &JniTable::CallNonvirtualByteMethodV, &JniTable::CallNonvirtualByteMethodA,
          &JniTable::CallNonvirtualCharMethodV, &JniTable::CallNonvirtualCharMethodA,
          &JniTable::CallNonvirtualShortMethodV, &JniTable::CallNonvirtualShortMethodA,
          &JniTable::CallNonvirtualIntMethodV, &JniTable::CallNonvirtualIntMethodA,
          &JniTable::CallNonvirtualLongMethodV, &JniTable::CallNonvirtualLongMethodA,
          &JniTable::CallNonvirtualFloatMethodV, &JniTable::CallNonvirtualFloatMethodA,
          &JniTable::CallNonvirtualDoubleMethodV, &JniTable::CallNonvirtualDoubleMethodA,
          &JniTable::CallNonvirtualVoidMethodV, &JniTable::CallNonvirtualVoidMethodA>(table);
}

void HoldStaticCalls(JniTable& table) {
  HoldAll<&JniTable::CallStaticObjectMethodV, &JniTable::CallStaticObjectMethodA,
          &JniTable::CallStaticBooleanMethodV, &JniTable::CallStaticBooleanMethodA,
          &JniTable::CallStaticByteMethodV, &JniTable::CallStaticByteMethodA,
          &JniTable::CallStaticCharMethodV, &JniTable::CallStaticCharMethodA,
          &JniTable::CallStaticShortMethodV, &JniTable::CallStaticShortMethodA,
          &JniTable::CallStaticIntMethodV, &JniTable::CallStaticIntMethodA,
          &JniTable::CallStaticLongMethodV, &JniTable::CallStaticLongMethodA,
          &JniTable::CallStaticFloatMethodV, &JniTable::CallStaticFloatMethodA,
          &JniTable::CallStaticDoubleMethodV, &JniTable::CallStaticDoubleMethodA,
          &JniTable::CallStaticVoidMethodV, &JniTable::CallStaticVoidMethodA>(table);
}

void HoldFields(JniTable& table) {
  HoldAll<
      &JniTable::GetObjectField, &JniTable::GetStaticObjectField, &JniTable::SetObjectField,
      &JniTable::SetStaticObjectField, &JniTable::GetBooleanField, &JniTable::GetStaticBooleanField,
      &JniTable::SetBooleanField, &JniTable::SetStaticBooleanField, &JniTable::GetByteField,
      &JniTable::GetStaticByteField, &JniTable::SetByteField, &JniTable::SetStaticByteField,
      &JniTable::GetCharField, &JniTable::GetStaticCharField, &JniTable::SetCharField,
      &JniTable::SetStaticCharField, &JniTable::GetShortField, &JniTable::GetStaticShortField,
      &JniTable::SetShortField, &JniTable::SetStaticShortField, &JniTable::GetIntField,
      &JniTable::GetStaticIntField, &JniTable::SetIntField, &JniTable::SetStaticIntField,
      &JniTable::GetLongField, &JniTable::GetStaticLongField, &JniTable::SetLongField,
      &JniTable::SetStaticLongField, &JniTable::GetFloatField, &JniTable::GetStaticFloatField,
      &JniTable::SetFloatField, &JniTable::SetStaticFloatField, &JniTable::GetDoubleField,
      &JniTable::GetStaticDoubleField, &JniTable::SetDoubleField, &JniTable::SetStaticDoubleField>(
      table);
}

void HoldArrays(JniTable& table) {
  HoldAll<&JniTable::NewBooleanArray, &JniTable::GetBooleanArrayElements,
          &JniTable::ReleaseBooleanArrayElements, &JniTable::GetBooleanArrayRegion,
          &JniTable::SetBooleanArrayRegion, &JniTable::NewByteArray,
          &JniTable::GetByteArrayElements, &JniTable::ReleaseByteArrayElements,
          &JniTable::GetByteArrayRegion, &JniTable::SetByteArrayRegion, &JniTable::NewCharArray,
          &JniTable::GetCharArrayElements, &JniTable::ReleaseCharArrayElements,
          &JniTable::GetCharArrayRegion, &JniTable::SetCharArrayRegion, &JniTable::NewShortArray,
          &JniTable::GetShortArrayElements, &JniTable::ReleaseShortArrayElements,
          &JniTable::GetShortArrayRegion, &JniTable::SetShortArrayRegion, &JniTable::NewIntArray,
          &JniTable::GetIntArrayElements, &JniTable::ReleaseIntArrayElements,
          &JniTable::GetIntArrayRegion, &JniTable::SetIntArrayRegion, &JniTable::NewLongArray,
          &JniTable::GetLongArrayElements, &JniTable::ReleaseLongArrayElements,
          &JniTable::GetLongArrayRegion, &JniTable::SetLongArrayRegion, &JniTable::NewFloatArray,
          &JniTable::GetFloatArrayElements, &JniTable::ReleaseFloatArrayElements,
          &JniTable::GetFloatArrayRegion, &JniTable::SetFloatArrayRegion, &JniTable::NewDoubleArray,
          &JniTable::GetDoubleArrayElements, &JniTable::ReleaseDoubleArrayElements,
          &JniTable::GetDoubleArrayRegion, &JniTable::SetDoubleArrayRegion>(table);
}

void HoldOthers(JniTable& table) {
  HoldAll<&JniTable::DefineClass, &JniTable::FindClass, &JniTable::FromReflectedMethod,
          &JniTable::FromReflectedField, &JniTable::ToReflectedMethod, &JniTable::GetSuperclass,
          &JniTable::IsAssignableFrom, &JniTable::ToReflectedField, &JniTable::Throw,
          &JniTable::ThrowNew, &JniTable::ExceptionOccurred, &JniTable::ExceptionDescribe,
          &JniTable::ExceptionClear, &JniTable::PushLocalFrame, &JniTable::PopLocalFrame,
          &JniTable::NewGlobalRef, &JniTable::DeleteGlobalRef, &JniTable::DeleteLocalRef,
          &JniTable::IsSameObject, &JniTable::NewLocalRef, &JniTable::EnsureLocalCapacity,
          &JniTable::AllocObject, &JniTable::NewObjectV, &JniTable::NewObjectA,
          &JniTable::GetObjectClass, &JniTable::IsInstanceOf, &JniTable::GetMethodID,
          &JniTable::GetFieldID, &JniTable::GetStaticMethodID, &JniTable::GetStaticFieldID,
          &JniTable::NewString, &JniTable::GetStringLength, &JniTable::GetStringChars,
          &JniTable::ReleaseStringChars, &JniTable::NewStringUTF, &JniTable::GetStringUTFLength,
          &JniTable::GetStringUTFChars, &JniTable::ReleaseStringUTFChars, &JniTable::GetArrayLength,
          &JniTable::NewObjectArray, &JniTable::GetObjectArrayElement,
          &JniTable::SetObjectArrayElement, &JniTable::RegisterNatives,
          &JniTable::UnregisterNatives, &JniTable::MonitorEnter, &JniTable::MonitorExit,
          &JniTable::GetStringRegion, &JniTable::GetStringUTFRegion,
          &JniTable::GetPrimitiveArrayCritical, &JniTable::ReleasePrimitiveArrayCritical,
          &JniTable::GetStringCritical, &JniTable::ReleaseStringCritical,
          &JniTable::NewWeakGlobalRef, &JniTable::DeleteWeakGlobalRef, &JniTable::ExceptionCheck,
          &JniTable::NewDirectByteBuffer, &JniTable::GetDirectBufferAddress,
          &JniTable::GetDirectBufferCapacity, &JniTable::GetObjectRefType, &JniTable::GetModule>(
      table);
}

}  // namespace

void HoldTraps(JniTable& table) {
  HoldCalls(table);
  HoldNonvirtualCalls(table);
  HoldStaticCalls(table);
  HoldFields(table);
  HoldArrays(table);
  HoldOthers(table);
}

bool TrapScope::IsNeeded() {
  return (_mm_getcsr() & kSseMasks) != kSseMasks || (X87Controls() & kX87Masks) != kX87Masks;
}

TrapScope::TrapScope() : _sse(_mm_getcsr()), _x87(X87Controls()) {
  _mm_setcsr(_sse | kSseMasks);
  SetX87Controls(static_cast<unsigned short>(_x87 | kX87Masks));
}

TrapScope::~TrapScope() {
  const unsigned sse = _mm_getcsr();
  const unsigned short x87 = X87Controls();
  if ((sse & kSseMasks) == kSseMasks) _mm_setcsr((sse & ~kSseMasks) | (_sse & kSseMasks));
  if ((x87 & kX87Masks) != kX87Masks) return;
  EnableX87Traps(static_cast<unsigned short>((x87 & ~kX87Masks) | (_x87 & kX87Masks)));
}

}  // namespace chartbridge
