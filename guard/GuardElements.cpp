// SPDX-License-Identifier: Apache-2.0
#include "guard/Caught.h"
#include "guard/ElementBuffers.h"
#include "guard/Guards.h"
#include "guard/NullChecks.h"
#include "guard/ReferenceEpoch.h"

namespace chartbridge {
namespace {

/// The functions of one element type.
template <class ArrayType, class ElementType, char Letter, auto GetRegionMember,
          auto SetRegionMember>
struct Elements {
  using Array = ArrayType;
  using Element = ElementType;
  static constexpr char kLetter = Letter;
  static constexpr char kArrayClass[] = {'[', Letter, '\0'};
  static constexpr auto kGetRegion = GetRegionMember;
  static constexpr auto kSetRegion = SetRegionMember;
  static inline const char* getName = "";
  static inline const char* releaseName = "";
};

using BooleanElements = Elements<jbooleanArray, jboolean, 'Z', &JniTable::GetBooleanArrayRegion,
                                 &JniTable::SetBooleanArrayRegion>;
using ByteElements =
    Elements<jbyteArray, jbyte, 'B', &JniTable::GetByteArrayRegion, &JniTable::SetByteArrayRegion>;
using CharElements =
    Elements<jcharArray, jchar, 'C', &JniTable::GetCharArrayRegion, &JniTable::SetCharArrayRegion>;
using ShortElements = Elements<jshortArray, jshort, 'S', &JniTable::GetShortArrayRegion,
                               &JniTable::SetShortArrayRegion>;
using IntElements =
    Elements<jintArray, jint, 'I', &JniTable::GetIntArrayRegion, &JniTable::SetIntArrayRegion>;
using LongElements =
    Elements<jlongArray, jlong, 'J', &JniTable::GetLongArrayRegion, &JniTable::SetLongArrayRegion>;
using FloatElements = Elements<jfloatArray, jfloat, 'F', &JniTable::GetFloatArrayRegion,
                               &JniTable::SetFloatArrayRegion>;
using DoubleElements = Elements<jdoubleArray, jdouble, 'D', &JniTable::GetDoubleArrayRegion,
                                &JniTable::SetDoubleArrayRegion>;

template <class T>
typename T::Element* Get(JNIEnv* env, typename T::Array array, jboolean* isCopy) {
  env = OwnEnv(env);
  if (array == nullptr) {
    Refuse(env, JNIGUARD_NULL_ARRAY_OR_STRING, JavaError::kNullPointer, T::getName,
           "the array is null");
    return nullptr;
  }
  const jsize length = jvm.GetArrayLength(env, array);
  void* buffer =
      ElementBuffers::New({array, length, T::kLetter, ReferenceEpoch::Current()},
                          static_cast<std::size_t>(length) * sizeof(typename T::Element));
  if (buffer == nullptr) {
    Raise(env, JavaError::kOutOfMemory, T::getName, "no memory for the elements");
    return nullptr;
  }
  auto* elements = static_cast<typename T::Element*>(buffer);
  if (length > 0) (jvm.*T::kGetRegion)(env, array, 0, length, elements);
  if (isCopy != nullptr) *isCopy = JNI_TRUE;
  return elements;
}

// Whether a reference stands for an object. One that was given back may still count as a reference,
// to nothing.
bool IsLive(JNIEnv* env, jarray array) {
  return jvm.GetObjectRefType(env, array) != JNIInvalidRefType &&
         !jvm.IsSameObject(env, array, nullptr);
}

// Whether `array`, a live reference, is an array of that type and length.
template <class T>
bool IsSuchArray(JNIEnv* env, jarray array, jsize length) {
  jclass type = jvm.FindClass(env, T::kArrayClass);
  const bool fits = type != nullptr && jvm.IsInstanceOf(env, array, type) &&
                    jvm.GetArrayLength(env, array) == length;
  jvm.DeleteLocalRef(env, type);
  return fits;
}

// Whether the reference that the elements were obtained through is certainly still that reference.
bool IsSurelyOrigin(JNIEnv* env, const ElementSource& source) {
  return jvm.GetObjectRefType(env, source.array) == JNILocalRefType &&
         ReferenceEpoch::HasLasted(source.epoch);
}

// The array that the elements came from; null when nobody knows it any more.
//
// Nearly everybody names the array by the reference that the elements were obtained through, and
// nothing needs to be asked then. Otherwise the caller names the same array by another reference,
// which is right, or another array, which is wrong. Where the old reference may have become another
// object's in the meantime, what the caller says counts, so that correct code is never harmed.
template <class T>
jarray Origin(JNIEnv* env, const ElementSource& source, jarray named) {
  if (source.type != T::kLetter) {
    Caught(JNIGUARD_ELEMENTS_ARRAY, T::releaseName, "the elements are of another type");
    return nullptr;
  }
  if (named == source.array) return named;
  const bool remembered =
      IsLive(env, source.array) && IsSuchArray<T>(env, source.array, source.length);
  if (remembered && named != nullptr && jvm.IsSameObject(env, named, source.array)) return named;
  const bool fits = named != nullptr && IsSuchArray<T>(env, named, source.length);
  if (!remembered && fits) return named;
  Caught(JNIGUARD_ELEMENTS_ARRAY, T::releaseName, "the elements belong to another array");
  if (!remembered) return nullptr;
  return fits && !IsSurelyOrigin(env, source) ? named : source.array;
}

template <class T>
void CopyBack(JNIEnv* env, const ElementSource& source, jarray origin,
              const typename T::Element* elements) {
  if (origin == nullptr || source.length == 0) return;
  (jvm.*T::kSetRegion)(env, static_cast<typename T::Array>(origin), 0, source.length, elements);
}

template <class T>
void RefuseRelease(JNIEnv* env, jarray array, const void* elements) {
  if (elements == nullptr && array == nullptr) {
    Refuse(env, JNIGUARD_NULL_ARRAY_OR_STRING, JavaError::kNullPointer, T::releaseName,
           "the array is null");
    return;
  }
  Caught(JNIGUARD_ELEMENTS_UNKNOWN, T::releaseName, "these elements are not out");
}

template <class T>
void Release(JNIEnv* env, typename T::Array array, typename T::Element* elements, jint mode) {
  env = OwnEnv(env);
  const bool keep = mode == JNI_COMMIT;
  ElementSource source;
  const bool isOut =
      keep ? ElementBuffers::Find(elements, source) : ElementBuffers::Take(elements, source);
  if (!isOut) {
    RefuseRelease<T>(env, array, elements);
    return;
  }
  if (mode != JNI_ABORT || array != source.array || source.type != T::kLetter) {
    jarray origin = Origin<T>(env, source, array);
    if (mode != JNI_ABORT) CopyBack<T>(env, source, origin, elements);
  }
  if (!keep) ElementBuffers::Free(elements);
}

template <class T, auto GetMember, auto ReleaseMember>
void Guard(JniTable& table, const char* getName, const char* releaseName) {
  T::getName = getName;
  T::releaseName = releaseName;
  table.*GetMember = &Get<T>;
  table.*ReleaseMember = &Release<T>;
}

}  // namespace

void GuardElements(JniTable& table) {
  Guard<BooleanElements, &JniTable::GetBooleanArrayElements,
        &JniTable::ReleaseBooleanArrayElements>(table, "GetBooleanArrayElements",
                                                "ReleaseBooleanArrayElements");
  Guard<ByteElements, &JniTable::GetByteArrayElements, &JniTable::ReleaseByteArrayElements>(
      table, "GetByteArrayElements", "ReleaseByteArrayElements");
  Guard<CharElements, &JniTable::GetCharArrayElements, &JniTable::ReleaseCharArrayElements>(
      table, "GetCharArrayElements", "ReleaseCharArrayElements");
  Guard<ShortElements, &JniTable::GetShortArrayElements, &JniTable::ReleaseShortArrayElements>(
      table, "GetShortArrayElements", "ReleaseShortArrayElements");
  Guard<IntElements, &JniTable::GetIntArrayElements, &JniTable::ReleaseIntArrayElements>(
      table, "GetIntArrayElements", "ReleaseIntArrayElements");
  Guard<LongElements, &JniTable::GetLongArrayElements, &JniTable::ReleaseLongArrayElements>(
      table, "GetLongArrayElements", "ReleaseLongArrayElements");
  Guard<FloatElements, &JniTable::GetFloatArrayElements, &JniTable::ReleaseFloatArrayElements>(
      table, "GetFloatArrayElements", "ReleaseFloatArrayElements");
  Guard<DoubleElements, &JniTable::GetDoubleArrayElements, &JniTable::ReleaseDoubleArrayElements>(
      table, "GetDoubleArrayElements", "ReleaseDoubleArrayElements");
}

}  // namespace chartbridge
