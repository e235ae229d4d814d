// SPDX-License-Identifier: Apache-2.0
#include "tests/integration/ProbeCases.h"

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <vector>

#include "guard/jniguard.h"

namespace chartbridge {
namespace {

constexpr char kTargets[] = "org/chartbridge/testing/Targets";
constexpr char kMixed[] =
    "(ZBCSILjava/nio/ByteBuffer;JFD[BLjava/nio/ByteBuffer;Ljava/lang/String;)Ljava/lang/String;";

jbyteArray Bytes(JNIEnv* env, const std::vector<jbyte>& values) {
  const auto length = static_cast<jsize>(values.size());
  jbyteArray array = env->NewByteArray(length);
  env->SetByteArrayRegion(array, 0, length, values.data());
  return array;
}

std::string Content(JNIEnv* env, jbyteArray array) {
  std::vector<jbyte> values(static_cast<std::size_t>(env->GetArrayLength(array)));
  env->GetByteArrayRegion(array, 0, static_cast<jsize>(values.size()), values.data());
  std::string text;
  for (jbyte value : values) text += (text.empty() ? "" : " ") + std::to_string(value);
  return text;
}

jobject NewTargets(JNIEnv* env) {
  jclass type = env->FindClass(kTargets);
  return env->NewObject(type, env->GetMethodID(type, "<init>", "()V"));
}

jmethodID TargetsMethod(JNIEnv* env, const char* name, const char* signature) {
  return env->GetMethodID(env->FindClass(kTargets), name, signature);
}

// References given back as another kind.

void DeleteGlobalOfLocal(JNIEnv* env) {
  jclass strings = env->FindClass("java/lang/String");
  jobjectArray array = env->NewObjectArray(3, strings, nullptr);
  env->DeleteGlobalRef(array);
  // A local reference that was given back must not be valid any more.
  Show("type", env->GetObjectRefType(array) == JNILocalRefType &&
                   env->IsSameObject(array, nullptr) == JNI_FALSE);
}

void DeleteLocalOfGlobal(JNIEnv* env) {
  jobject kept = env->NewGlobalRef(env->NewStringUTF("kept"));
  jobject global = env->NewGlobalRef(env->NewStringUTF("gone"));
  env->DeleteLocalRef(global);
  Show("kept", TextOf(env, kept));
  // Bare, the slot stays a global reference for ever, to nothing.
  Show("leaked", env->GetObjectRefType(global) == JNIGlobalRefType);
}

void DeleteGlobalOfWeak(JNIEnv* env) {
  jweak weak = env->NewWeakGlobalRef(env->NewStringUTF("weak"));
  env->DeleteGlobalRef(weak);
  Show("done", 1);
}

void DeleteWeakOfLocal(JNIEnv* env) {
  env->DeleteWeakGlobalRef(env->NewStringUTF("local"));
  Show("done", 1);
}

void DeleteRightKinds(JNIEnv* env) {
  jobject text = env->NewStringUTF("text");
  env->DeleteGlobalRef(env->NewGlobalRef(text));
  env->DeleteWeakGlobalRef(env->NewWeakGlobalRef(text));
  env->DeleteLocalRef(env->NewLocalRef(text));
  env->DeleteGlobalRef(nullptr);
  env->DeleteWeakGlobalRef(nullptr);
  env->DeleteLocalRef(nullptr);
  Show("text", TextOf(env, text));
}

// Array elements.

void ReleaseAgainstOther(JNIEnv* env) {
  jbyteArray key = Bytes(env, {1, 2, 3});
  jbyteArray value = Bytes(env, {4, 5, 6, 7});
  jbyte* elements = env->GetByteArrayElements(value, nullptr);
  Show("first", elements[0]);
  env->ReleaseByteArrayElements(key, elements, JNI_ABORT);
  Show("key", Content(env, key));
  Show("value", Content(env, value));
}

void ReleaseEmptyAgainstOther(JNIEnv* env) {
  jbyteArray key = Bytes(env, {1, 2, 3});
  jbyteArray value = Bytes(env, {});
  jbyte* elements = env->GetByteArrayElements(value, nullptr);
  env->ReleaseByteArrayElements(key, elements, JNI_ABORT);
  Show("key", Content(env, key));
}

void ReleaseAgainstEmpty(JNIEnv* env) {
  jbyteArray key = Bytes(env, {});
  jbyteArray value = Bytes(env, {4, 5});
  jbyte* elements = env->GetByteArrayElements(value, nullptr);
  env->ReleaseByteArrayElements(key, elements, JNI_ABORT);
  Show("value", Content(env, value));
}

void ReleaseAgainstNull(JNIEnv* env) {
  jbyteArray value = Bytes(env, {4, 5});
  jbyte* elements = env->GetByteArrayElements(value, nullptr);
  elements[0] = 9;
  env->ReleaseByteArrayElements(nullptr, elements, 0);
  Show("value", Content(env, value));
}

void CopyBackAgainst(JNIEnv* env, jbyteArray other) {
  jbyteArray own = Bytes(env, {3, 4});
  jbyte* elements = env->GetByteArrayElements(own, nullptr);
  elements[0] = 9;
  env->ReleaseByteArrayElements(other, elements, JNI_COMMIT);
  Show("own", Content(env, own));
  elements[1] = 8;
  env->ReleaseByteArrayElements(other, elements, 0);
  Show("own", Content(env, own));
  Show("other", Content(env, other));
}

void CopyBackAgainstOther(JNIEnv* env) { CopyBackAgainst(env, Bytes(env, {1, 2, 5})); }

void CopyBackAgainstSameLength(JNIEnv* env) { CopyBackAgainst(env, Bytes(env, {1, 2})); }

// The smallest array that has an element to lose.
void CopyBackOfOneElement(JNIEnv* env) {
  jbyteArray own = Bytes(env, {3});
  for (jbyteArray other : {Bytes(env, {1}), Bytes(env, {1, 2})}) {
    jbyte* elements = env->GetByteArrayElements(own, nullptr);
    Show("first", elements[0]);
    elements[0] = static_cast<jbyte>(elements[0] + 4);
    env->ReleaseByteArrayElements(other, elements, 0);
    Show("own", Content(env, own));
    Show("other", Content(env, other));
  }
}

// The reference that the elements were obtained through is gone, and its place may have become
// another array's.
void CopyBackByAliasAfterFrame(JNIEnv* env) {
  auto array = static_cast<jbyteArray>(env->NewGlobalRef(Bytes(env, {1, 2})));
  env->PushLocalFrame(8);
  jbyte* elements =
      env->GetByteArrayElements(static_cast<jbyteArray>(env->NewLocalRef(array)), nullptr);
  env->PopLocalFrame(nullptr);
  env->PushLocalFrame(8);
  jbyteArray other = Bytes(env, {5, 6});
  elements[0] = 9;
  env->ReleaseByteArrayElements(array, elements, 0);
  Show("array", Content(env, array));
  Show("other", Content(env, other));
  env->PopLocalFrame(nullptr);
}

jbyteArray keptArray = nullptr;
jbyte* keptElements = nullptr;

void JNICALL Obtain(JNIEnv* env, jclass, jbyteArray array) {
  keptArray = static_cast<jbyteArray>(env->NewGlobalRef(array));
  keptElements = env->GetByteArrayElements(array, nullptr);
}

void JNICALL GiveBack(JNIEnv* env, jclass, jbyteArray) {
  keptElements[0] = 9;
  env->ReleaseByteArrayElements(keptArray, keptElements, 0);
}

// Correct code that the guard must not harm: the reference that the elements were obtained through
// ended with the first native call, and its place may be that of another array in the second.
void CopyBackAcrossNativeCalls(JNIEnv* env) {
  jclass type = env->FindClass(kTargets);
  char obtain[] = "obtain";
  char giveBack[] = "giveBack";
  char signature[] = "([B)V";
  const JNINativeMethod methods[] = {{obtain, signature, reinterpret_cast<void*>(&Obtain)},
                                     {giveBack, signature, reinterpret_cast<void*>(&GiveBack)}};
  env->RegisterNatives(type, methods, 2);
  jmethodID method = env->GetStaticMethodID(type, "acrossCalls", "()Ljava/lang/String;");
  Show("arrays", TextOf(env, env->CallStaticObjectMethod(type, method)));
}

void ReleaseTwice(JNIEnv* env) {
  jbyteArray array = Bytes(env, {1, 2});
  jbyte* elements = env->GetByteArrayElements(array, nullptr);
  env->ReleaseByteArrayElements(array, elements, JNI_ABORT);
  env->ReleaseByteArrayElements(array, elements, JNI_ABORT);
  Show("array", Content(env, array));
}

void ReleaseUnknown(JNIEnv* env) {
  jbyteArray array = Bytes(env, {1, 2});
  jbyte notElements[32] = {};
  env->ReleaseByteArrayElements(array, notElements + 16, 0);
  Show("array", Content(env, array));
}

void ReleaseAsOtherType(JNIEnv* env) {
  jlongArray array = env->NewLongArray(2);
  jlong* elements = env->GetLongArrayElements(array, nullptr);
  env->ReleaseByteArrayElements(Bytes(env, {1, 2}), reinterpret_cast<jbyte*>(elements), 0);
  Show("length", env->GetArrayLength(array));
}

// What correct code does must work as it always has, whichever reference it names the array by.
void ElementsRightUse(JNIEnv* env) {
  jbyteArray array = Bytes(env, {1, 2, 3});
  jboolean isCopy = JNI_FALSE;
  jbyte* elements = env->GetByteArrayElements(array, &isCopy);
  elements[0] = 10;
  env->ReleaseByteArrayElements(array, elements, JNI_COMMIT);
  Show("committed", Content(env, array));
  elements[1] = 20;
  env->ReleaseByteArrayElements(array, elements, JNI_ABORT);
  Show("aborted", Content(env, array));

  auto alias = static_cast<jbyteArray>(env->NewGlobalRef(array));
  elements = env->GetByteArrayElements(array, nullptr);
  elements[2] = 30;
  env->ReleaseByteArrayElements(alias, elements, 0);
  Show("alias", Content(env, array));

  auto local = static_cast<jbyteArray>(env->NewLocalRef(array));
  elements = env->GetByteArrayElements(local, nullptr);
  env->DeleteLocalRef(local);
  elements[0] = 11;
  env->ReleaseByteArrayElements(alias, elements, 0);
  Show("gone", Content(env, array));
}

template <class Array, class Element>
void RoundTrip(const char* name, JNIEnv* env, Array array,
               Element* (JNIEnv::*get)(Array, jboolean*),
               void (JNIEnv::*release)(Array, Element*, jint)) {
  Element* elements = (env->*get)(array, nullptr);
  elements[1] = static_cast<Element>(1);
  (env->*release)(array, elements, 0);
  elements = (env->*get)(array, nullptr);
  Show(name, elements[0] == 0 && elements[1] == 1);
  (env->*release)(array, elements, JNI_ABORT);
}

void ElementsOfAllTypes(JNIEnv* env) {
  RoundTrip("boolean", env, env->NewBooleanArray(2), &JNIEnv::GetBooleanArrayElements,
            &JNIEnv::ReleaseBooleanArrayElements);
  RoundTrip("byte", env, env->NewByteArray(2), &JNIEnv::GetByteArrayElements,
            &JNIEnv::ReleaseByteArrayElements);
  RoundTrip("char", env, env->NewCharArray(2), &JNIEnv::GetCharArrayElements,
            &JNIEnv::ReleaseCharArrayElements);
  RoundTrip("short", env, env->NewShortArray(2), &JNIEnv::GetShortArrayElements,
            &JNIEnv::ReleaseShortArrayElements);
  RoundTrip("int", env, env->NewIntArray(2), &JNIEnv::GetIntArrayElements,
            &JNIEnv::ReleaseIntArrayElements);
  RoundTrip("long", env, env->NewLongArray(2), &JNIEnv::GetLongArrayElements,
            &JNIEnv::ReleaseLongArrayElements);
  RoundTrip("float", env, env->NewFloatArray(2), &JNIEnv::GetFloatArrayElements,
            &JNIEnv::ReleaseFloatArrayElements);
  RoundTrip("double", env, env->NewDoubleArray(2), &JNIEnv::GetDoubleArrayElements,
            &JNIEnv::ReleaseDoubleArrayElements);
}

// 2,000 buffers of 1 MB each, all released against the wrong array: a leak of each would be 2 GB.
void ElementsDoNotLeak(JNIEnv* env) {
  jbyteArray big = env->NewByteArray(1 << 20);
  jbyteArray empty = env->NewByteArray(0);
  const std::size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
  for (int i = 0; i < 2000; ++i) {
    jbyte* elements = env->GetByteArrayElements(big, nullptr);
    env->ReleaseByteArrayElements(i % 2 == 0 ? empty : nullptr, elements, JNI_ABORT);
  }
  const std::size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
  Show("grown", after > before && after - before > (100U << 20U));
}

// More buffers out at a time than any table of fixed size holds, from several threads.
void ManyElementsOut(JNIEnv* env) {
  JavaVM* vm = nullptr;
  env->GetJavaVM(&vm);
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([vm] {
      void* attached = nullptr;
      vm->AttachCurrentThreadAsDaemon(&attached, nullptr);
      auto* own = static_cast<JNIEnv*>(attached);
      jbyteArray array = Bytes(own, {1, 2, 3});
      std::vector<jbyte*> out;
      for (int i = 0; i < 5000; ++i) out.push_back(own->GetByteArrayElements(array, nullptr));
      for (jbyte* elements : out) own->ReleaseByteArrayElements(array, elements, JNI_ABORT);
      vm->DetachCurrentThread();
    });
  }
  for (std::thread& thread : threads) thread.join();
  Show("done", 1);
}

// Freed behind the back of native code that has lost them; a release that comes after all finds
// nothing. Without the guard nothing is known of them.
void FreeUnreleased(JNIEnv* env) {
  jbyteArray array = Bytes(env, {1, 2, 3});
  jbyte* before = env->GetByteArrayElements(array, nullptr);
  const unsigned long long mark = jniguard_mark();
  jbyte* lost = env->GetByteArrayElements(array, nullptr);
  jstring text = env->NewStringUTF("lost");
  const jchar* units = env->GetStringChars(text, nullptr);
  const char* chars = env->GetStringUTFChars(text, nullptr);
  jbyte* released = env->GetByteArrayElements(array, nullptr);
  env->ReleaseByteArrayElements(array, released, JNI_ABORT);
  Show("freed", static_cast<long long>(jniguard_free_unreleased(mark)));
  env->ReleaseByteArrayElements(array, lost, 0);
  env->ReleaseStringChars(text, units);
  env->ReleaseStringUTFChars(text, chars);
  before[0] = 9;
  env->ReleaseByteArrayElements(array, before, 0);
  Show("array", Content(env, array));
}

// Texts of strings.

// Fills memory of all small sizes with old bytes, and gives it back.
void DirtyHeap() {
  for (std::size_t bytes = 1; bytes < 600; ++bytes) {
    std::vector<void*> blocks;
    for (int i = 0; i < 12; ++i) {
      blocks.push_back(std::malloc(bytes));
      std::memset(blocks.back(), 0x7f, bytes);
    }
    for (void* block : blocks) std::free(block);
  }
}

// JNI does not promise that a text ends in a zero unit; native code counts on it.
void TextsAreTerminated(JNIEnv* env) {
  bool units = true;
  bool bytes = true;
  for (const jchar letter : {jchar{'a'}, jchar{0x00e9}, jchar{0x20ac}}) {
    for (jsize length = 0; length < 200; ++length) {
      const std::vector<jchar> text(static_cast<std::size_t>(length) + 1, letter);
      jstring string = env->NewString(text.data(), length);
      if (length % 20 == 0) DirtyHeap();
      jboolean isCopy = JNI_FALSE;
      const jchar* chars = env->GetStringChars(string, &isCopy);
      units = units && std::equal(chars, chars + length, text.begin()) && chars[length] == 0;
      env->ReleaseStringChars(string, chars);
      const char* utf = env->GetStringUTFChars(string, &isCopy);
      bytes =
          bytes && std::strlen(utf) == static_cast<std::size_t>(env->GetStringUTFLength(string));
      env->ReleaseStringUTFChars(string, utf);
      env->DeleteLocalRef(string);
    }
  }
  Show("units", units);
  Show("bytes", bytes);
}

// A zero character is two bytes of modified UTF-8, and units keep it.
void TextsKeepZeros(JNIEnv* env) {
  const jchar text[] = {'a', 0, 'b'};
  jstring string = env->NewString(text, 3);
  const jchar* chars = env->GetStringChars(string, nullptr);
  Show("units", std::equal(text, text + 3, chars) && chars[3] == 0);
  env->ReleaseStringChars(string, chars);
  const char* utf = env->GetStringUTFChars(string, nullptr);
  Show("bytes", std::string(utf) ==
                    "a\xC0\x80"
                    "b");
  env->ReleaseStringUTFChars(string, utf);
}

void ReleaseTextTwice(JNIEnv* env) {
  jstring string = env->NewStringUTF("text");
  const jchar* units = env->GetStringChars(string, nullptr);
  const char* chars = env->GetStringUTFChars(string, nullptr);
  for (int i = 0; i < 2; ++i) {
    env->ReleaseStringChars(string, units);
    env->ReleaseStringUTFChars(string, chars);
  }
  Show("text", TextOf(env, string));
}

void ReleaseTextOfNothing(JNIEnv* env) {
  jstring string = env->NewStringUTF("text");
  env->ReleaseStringChars(string, nullptr);
  Show("text", TextOf(env, string));
}

// Array and string functions on null.

void ArrayLengthOfNull(JNIEnv* env) { Show("length", env->GetArrayLength(nullptr)); }

void ByteElementsOfNull(JNIEnv* env) {
  jbyte* elements = env->GetByteArrayElements(nullptr, nullptr);
  ShowReference("elements", elements);
  env->ReleaseByteArrayElements(nullptr, elements, JNI_ABORT);
}

void LongElementsOfNull(JNIEnv* env) {
  ShowReference("elements", env->GetLongArrayElements(nullptr, nullptr));
}

void ReleaseNullOfNull(JNIEnv* env) { env->ReleaseLongArrayElements(nullptr, nullptr, JNI_ABORT); }

void ObjectElementOfNull(JNIEnv* env) {
  ShowReference("element", env->GetObjectArrayElement(nullptr, 0));
}

void SetRegionOfNull(JNIEnv* env) {
  const jbyte value = 1;
  env->SetByteArrayRegion(nullptr, 0, 1, &value);
}

void SetRegionFromNull(JNIEnv* env) {
  env->SetByteArrayRegion(env->NewByteArray(4), 0, 4, nullptr);
}

void GetRegionOfNull(JNIEnv* env) {
  jbyte value = 1;
  env->GetByteArrayRegion(nullptr, 0, 1, &value);
  Show("value", value);
}

void CriticalOfNull(JNIEnv* env) {
  ShowReference("elements", env->GetPrimitiveArrayCritical(nullptr, nullptr));
}

void StringLengthOfNull(JNIEnv* env) { Show("length", env->GetStringLength(nullptr)); }

void StringCharsOfNull(JNIEnv* env) {
  const jchar* chars = env->GetStringChars(nullptr, nullptr);
  ShowReference("chars", chars);
  env->ReleaseStringChars(nullptr, chars);
}

void StringUtfCharsOfNull(JNIEnv* env) {
  const char* chars = env->GetStringUTFChars(nullptr, nullptr);
  ShowReference("chars", chars);
  env->ReleaseStringUTFChars(nullptr, chars);
}

// Missing classes and methods.

void NewObjectOfNullClass(JNIEnv* env) {
  ShowReference("object", env->NewObject(nullptr, nullptr));
}

void NewObjectOfNullMethod(JNIEnv* env) {
  ShowReference("object", env->NewObject(env->FindClass(kTargets), nullptr));
}

void MethodOfNullClass(JNIEnv* env) {
  ShowReference("method", env->GetMethodID(nullptr, "<init>", "()V"));
}

void MethodWithoutName(JNIEnv* env) {
  ShowReference("method", env->GetStaticMethodID(env->FindClass(kTargets), nullptr, "()V"));
}

void ClassWithoutName(JNIEnv* env) { ShowReference("class", env->FindClass(nullptr)); }

// What a binding does when its Java class is missing, check by check.
void MissingClass(JNIEnv* env) {
  jclass type = env->FindClass("no/such/Type");
  ShowReference("class", type);
  ShowPending(env);
  jobject object = env->NewObject(type, nullptr);
  ShowReference("object", object);
  ShowPending(env);
  ShowReference("result", env->CallObjectMethod(object, nullptr, env->NewByteArray(1)));
}

// Calls on null.

void CallOnNullObject(JNIEnv* env) {
  ShowReference("result",
                env->CallObjectMethod(nullptr, TargetsMethod(env, "made", "()Ljava/lang/String;")));
}

void CallWithoutMethod(JNIEnv* env) {
  ShowReference("result", env->CallObjectMethod(NewTargets(env), nullptr));
}

// The plain functions of C, which the C++ members do not use.
void CallPlainOnNull(JNIEnv* env) {
  const JNINativeInterface_& jni = *env->functions;
  ShowReference("object", jni.CallObjectMethod(env, nullptr, nullptr));
  ShowPending(env);
  ShowReference("new", jni.NewObject(env, nullptr, nullptr));
}

// One call of each kind of result, in all three forms.
void CallEveryTypeOnNull(JNIEnv* env) {
  jobject none = nullptr;
  jmethodID noMethod = nullptr;
  const jvalue* noArguments = nullptr;
  Show("boolean", env->CallBooleanMethod(none, noMethod) +
                      env->CallBooleanMethodA(none, noMethod, noArguments));
  Show("byte",
       env->CallByteMethod(none, noMethod) + env->CallByteMethodA(none, noMethod, noArguments));
  Show("char",
       env->CallCharMethod(none, noMethod) + env->CallCharMethodA(none, noMethod, noArguments));
  Show("short",
       env->CallShortMethod(none, noMethod) + env->CallShortMethodA(none, noMethod, noArguments));
  Show("int",
       env->CallIntMethod(none, noMethod) + env->CallIntMethodA(none, noMethod, noArguments));
  Show("long",
       env->CallLongMethod(none, noMethod) + env->CallLongMethodA(none, noMethod, noArguments));
  Show("float",
       env->CallFloatMethod(none, noMethod) + env->CallFloatMethodA(none, noMethod, noArguments) ==
           0);
  Show("double", env->CallDoubleMethod(none, noMethod) +
                         env->CallDoubleMethodA(none, noMethod, noArguments) ==
                     0);
  env->CallVoidMethod(none, noMethod);
  env->CallVoidMethodA(none, noMethod, noArguments);
}

void CallStaticOfNullClass(JNIEnv* env) {
  Show("result", env->CallStaticIntMethod(nullptr, nullptr));
}

void CallNonvirtualOnNull(JNIEnv* env) {
  Show("result", env->CallNonvirtualIntMethod(nullptr, env->FindClass(kTargets), nullptr));
}

// All kinds of results, done right.
void CallEveryType(JNIEnv* env) {
  jobject object = NewTargets(env);
  jclass type = env->GetObjectClass(object);
  Show("boolean", env->CallBooleanMethod(object, TargetsMethod(env, "isTrue", "()Z")));
  Show("byte", env->CallByteMethod(object, TargetsMethod(env, "aByte", "()B")));
  Show("char", env->CallCharMethod(object, TargetsMethod(env, "aChar", "()C")));
  Show("short", env->CallShortMethod(object, TargetsMethod(env, "aShort", "()S")));
  jmethodID anInt = TargetsMethod(env, "anInt", "()I");
  Show("int", env->CallIntMethod(object, anInt));
  Show("intA", env->CallIntMethodA(object, anInt, nullptr));
  Show("intC", env->functions->CallIntMethod(env, object, anInt));
  Show("nonvirtual", env->CallNonvirtualIntMethod(object, type, anInt));
  Show("long", env->CallLongMethod(object, TargetsMethod(env, "aLong", "()J")));
  Show("float", env->CallFloatMethod(object, TargetsMethod(env, "aFloat", "()F")) == 1.5F);
  Show("double", env->CallDoubleMethod(object, TargetsMethod(env, "aDouble", "()D")) == 2.25);
  env->CallVoidMethod(object, TargetsMethod(env, "nothing", "()V"));
  Show("static", env->CallStaticIntMethod(type, env->GetStaticMethodID(type, "staticInt", "()I")));
}

// A byte[] where the signature has a ByteBuffer.

void BufferFromArray(JNIEnv* env) {
  jobject object = NewTargets(env);
  jmethodID take = TargetsMethod(env, "takeInt", "(Ljava/nio/ByteBuffer;)I");
  Show("result", env->CallIntMethod(object, take, Bytes(env, {7, 8})));
}

void BufferAmongOthers(JNIEnv* env) {
  jobject object = NewTargets(env);
  jmethodID mixed = TargetsMethod(env, "mixed", kMixed);
  jbyteArray bytes = Bytes(env, {1, 2});
  jstring text = env->NewStringUTF("text");
  static char memory[] = {3, 4, 5};
  jobject direct = env->NewDirectByteBuffer(memory, 3);
  Show("wrapped",
       TextOf(env, env->CallObjectMethod(object, mixed, JNI_TRUE, -1, u'x', -2, -3, bytes,
                                         jlong{5000000000}, 1.5, 2.25, bytes, direct, text)));
  Show("null", TextOf(env, env->CallObjectMethod(object, mixed, JNI_FALSE, 1, u'x', 2, 3, nullptr,
                                                 jlong{4}, 0.5, 0.25, bytes, bytes, nullptr)));
}

void BufferInEveryForm(JNIEnv* env) {
  jclass type = env->FindClass(kTargets);
  jobject object = NewTargets(env);
  jbyteArray bytes = Bytes(env, {1, 2});
  jvalue arguments[2];
  arguments[0].l = bytes;
  arguments[1].l = env->NewStringUTF("text");
  jmethodID boolean = TargetsMethod(env, "takeBoolean", "(Ljava/nio/ByteBuffer;)Z");
  Show("boolean", env->CallBooleanMethod(object, boolean, bytes));
  Show("booleanA", env->CallBooleanMethodA(object, boolean, arguments));
  Show("booleanC", env->functions->CallBooleanMethod(env, object, boolean, bytes));
  Show("nonvirtual", env->CallNonvirtualBooleanMethod(object, type, boolean, bytes));
  Show("nonvirtualA", env->CallNonvirtualBooleanMethodA(object, type, boolean, arguments));
  jmethodID fixed = env->GetStaticMethodID(
      type, "mixedStatic", "(Ljava/nio/ByteBuffer;Ljava/lang/String;)Ljava/lang/String;");
  Show("static", TextOf(env, env->CallStaticObjectMethod(type, fixed, bytes, arguments[1].l)));
  Show("staticA", TextOf(env, env->CallStaticObjectMethodA(type, fixed, arguments)));
  env->CallVoidMethod(object, TargetsMethod(env, "takeVoid", "(Ljava/nio/ByteBuffer;)V"), bytes);
  jobject made =
      env->NewObject(type, env->GetMethodID(type, "<init>", "(Ljava/nio/ByteBuffer;I)V"), bytes, 5);
  Show("new", TextOf(env, env->CallObjectMethod(
                              made, TargetsMethod(env, "made", "()Ljava/lang/String;"))));
}

// An object parameter takes a byte[] as it is.
void ArrayWhereObjectIsMeant(JNIEnv* env) {
  jmethodID take = TargetsMethod(env, "takeObject", "(Ljava/lang/Object;)Ljava/lang/String;");
  Show("type", TextOf(env, env->CallObjectMethod(NewTargets(env), take, Bytes(env, {1}))));
}

// Another thread's env.

void UseEnvOnThread(JNIEnv* env, bool attachFirst) {
  JavaVM* vm = nullptr;
  env->GetJavaVM(&vm);
  jclass local = env->FindClass(kTargets);
  auto type = static_cast<jclass>(env->NewGlobalRef(local));
  jmethodID name = env->GetStaticMethodID(type, "threadName", "()Ljava/lang/String;");
  std::thread user([=] {
    void* own = nullptr;
    char threadName[] = "user";
    JavaVMAttachArgs arguments{JNI_VERSION_1_8, threadName, nullptr};
    if (attachFirst) vm->AttachCurrentThreadAsDaemon(&own, &arguments);
    jobject text = env->CallStaticObjectMethod(type, name);
    Show("thread", TextOf(env, text).substr(0, 4));
    for (int i = 0; i < 200; ++i) {
      jbyteArray array = env->NewByteArray(10000);
      jbyte* elements = env->GetByteArrayElements(array, nullptr);
      env->ReleaseByteArrayElements(array, elements, 0);
      env->ExceptionOccurred();
      env->DeleteLocalRef(array);
    }
    Show("attached", vm->GetEnv(&own, JNI_VERSION_1_8) == JNI_OK);
    env->FindClass("no/such/Type");
    ShowPending(env);
  });
  // The owner of the env works at the same time, as a host's threads do.
  for (int i = 0; i < 200; ++i) env->DeleteLocalRef(env->NewByteArray(10000));
  user.join();
}

void EnvOfOtherThread(JNIEnv* env) { UseEnvOnThread(env, true); }

void EnvOnUnattachedThread(JNIEnv* env) { UseEnvOnThread(env, false); }

// An env that was right until its thread left the JVM and came back.
void EnvAfterDetach(JNIEnv* env) {
  JavaVM* vm = nullptr;
  env->GetJavaVM(&vm);
  std::thread user([vm] {
    for (int i = 0; i < 3; ++i) {
      void* attached = nullptr;
      vm->AttachCurrentThreadAsDaemon(&attached, nullptr);
      auto* own = static_cast<JNIEnv*>(attached);
      Show("length", own->GetArrayLength(own->NewByteArray(3 + i)));
      vm->DetachCurrentThread();
    }
  });
  user.join();
}

// Other null or impossible inputs.

void NewStringOfNull(JNIEnv* env) { ShowReference("text", env->NewString(nullptr, 5)); }

void NewStringOfNothing(JNIEnv* env) {
  jstring text = env->NewString(nullptr, 0);
  Show("length", env->GetStringLength(text));
}

void NewStringOfNegativeLength(JNIEnv* env) {
  const jchar text[] = {'a'};
  ShowReference("text", env->NewString(text, -1));
}

void ClassOfNull(JNIEnv* env) { ShowReference("class", env->GetObjectClass(nullptr)); }

void InstanceOfNullClass(JNIEnv* env) {
  Show("result", env->IsInstanceOf(env->NewStringUTF("x"), nullptr));
}

void DirectBufferOfNull(JNIEnv* env) {
  jobject buffer = env->NewDirectByteBuffer(nullptr, 16);
  ShowReference("buffer", buffer);
  if (buffer == nullptr) return;
  jmethodID get = env->GetMethodID(env->GetObjectClass(buffer), "get", "(I)B");
  Show("byte", env->CallByteMethod(buffer, get, 0));
}

void DirectBufferOfNothing(JNIEnv* env) {
  ShowReference("buffer", env->NewDirectByteBuffer(nullptr, 0));
}

void DirectBufferTooLarge(JNIEnv* env) {
  static char memory[16];
  const jlong capacity = (jlong{1} << 32) + 16;
  jobject buffer = env->NewDirectByteBuffer(memory, capacity);
  ShowReference("buffer", buffer);
  if (buffer != nullptr) Show("capacity", env->GetDirectBufferCapacity(buffer));
}

// The first of several failures is the one that a later check must find.
void FirstExceptionStays(JNIEnv* env) {
  jmethodID fail = TargetsMethod(env, "fail", "(Ljava/lang/String;)V");
  env->CallVoidMethod(NewTargets(env), fail, env->NewStringUTF("the first"));
  Show("length", env->GetArrayLength(nullptr));
  ShowReference("elements", env->GetByteArrayElements(nullptr, nullptr));
  ShowReference("result", env->CallObjectMethod(nullptr, nullptr));
}

}  // namespace

const std::map<std::string, ProbeCase>& ProbeCases() {
  static const std::map<std::string, ProbeCase> cases = {
      {"DeleteGlobalOfLocal", DeleteGlobalOfLocal},
      {"DeleteLocalOfGlobal", DeleteLocalOfGlobal},
      {"DeleteGlobalOfWeak", DeleteGlobalOfWeak},
      {"DeleteWeakOfLocal", DeleteWeakOfLocal},
      {"DeleteRightKinds", DeleteRightKinds},
      {"ReleaseAgainstOther", ReleaseAgainstOther},
      {"ReleaseEmptyAgainstOther", ReleaseEmptyAgainstOther},
      {"ReleaseAgainstEmpty", ReleaseAgainstEmpty},
      {"ReleaseAgainstNull", ReleaseAgainstNull},
      {"CopyBackAgainstOther", CopyBackAgainstOther},
      {"CopyBackAgainstSameLength", CopyBackAgainstSameLength},
      {"CopyBackOfOneElement", CopyBackOfOneElement},
      {"CopyBackByAliasAfterFrame", CopyBackByAliasAfterFrame},
      {"CopyBackAcrossNativeCalls", CopyBackAcrossNativeCalls},
      {"ReleaseTwice", ReleaseTwice},
      {"ReleaseUnknown", ReleaseUnknown},
      {"ReleaseAsOtherType", ReleaseAsOtherType},
      {"ElementsRightUse", ElementsRightUse},
      {"ElementsOfAllTypes", ElementsOfAllTypes},
      {"ElementsDoNotLeak", ElementsDoNotLeak},
      {"ManyElementsOut", ManyElementsOut},
      {"FreeUnreleased", FreeUnreleased},
      {"TextsAreTerminated", TextsAreTerminated},
      {"TextsKeepZeros", TextsKeepZeros},
      {"ReleaseTextTwice", ReleaseTextTwice},
      {"ReleaseTextOfNothing", ReleaseTextOfNothing},
      {"ArrayLengthOfNull", ArrayLengthOfNull},
      {"ByteElementsOfNull", ByteElementsOfNull},
      {"LongElementsOfNull", LongElementsOfNull},
      {"ReleaseNullOfNull", ReleaseNullOfNull},
      {"ObjectElementOfNull", ObjectElementOfNull},
      {"SetRegionOfNull", SetRegionOfNull},
      {"SetRegionFromNull", SetRegionFromNull},
      {"GetRegionOfNull", GetRegionOfNull},
      {"CriticalOfNull", CriticalOfNull},
      {"StringLengthOfNull", StringLengthOfNull},
      {"StringCharsOfNull", StringCharsOfNull},
      {"StringUtfCharsOfNull", StringUtfCharsOfNull},
      {"NewObjectOfNullClass", NewObjectOfNullClass},
      {"NewObjectOfNullMethod", NewObjectOfNullMethod},
      {"MethodOfNullClass", MethodOfNullClass},
      {"MethodWithoutName", MethodWithoutName},
      {"ClassWithoutName", ClassWithoutName},
      {"MissingClass", MissingClass},
      {"CallOnNullObject", CallOnNullObject},
      {"CallWithoutMethod", CallWithoutMethod},
      {"CallPlainOnNull", CallPlainOnNull},
      {"CallEveryTypeOnNull", CallEveryTypeOnNull},
      {"CallStaticOfNullClass", CallStaticOfNullClass},
      {"CallNonvirtualOnNull", CallNonvirtualOnNull},
      {"CallEveryType", CallEveryType},
      {"BufferFromArray", BufferFromArray},
      {"BufferAmongOthers", BufferAmongOthers},
      {"BufferInEveryForm", BufferInEveryForm},
      {"ArrayWhereObjectIsMeant", ArrayWhereObjectIsMeant},
      {"EnvOfOtherThread", EnvOfOtherThread},
      {"EnvOnUnattachedThread", EnvOnUnattachedThread},
      {"EnvAfterDetach", EnvAfterDetach},
      {"NewStringOfNull", NewStringOfNull},
      {"NewStringOfNothing", NewStringOfNothing},
      {"NewStringOfNegativeLength", NewStringOfNegativeLength},
      {"ClassOfNull", ClassOfNull},
      {"InstanceOfNullClass", InstanceOfNullClass},
      {"DirectBufferOfNull", DirectBufferOfNull},
      {"DirectBufferOfNothing", DirectBufferOfNothing},
      {"DirectBufferTooLarge", DirectBufferTooLarge},
      {"FirstExceptionStays", FirstExceptionStays},
  };
  return cases;
}

void Show(const char* name, const std::string& value) {
  std::printf("%s=%s\n", name, value.c_str());
  std::fflush(stdout);
}

void Show(const char* name, long long value) { Show(name, std::to_string(value)); }

void ShowReference(const char* name, const void* reference) {
  Show(name, std::string(reference == nullptr ? "null" : "an object"));
}

std::string TextOf(JNIEnv* env, jobject text) {
  if (text == nullptr) return "null";
  auto string = static_cast<jstring>(text);
  const char* chars = env->GetStringUTFChars(string, nullptr);
  std::string copy = chars;
  env->ReleaseStringUTFChars(string, chars);
  return copy;
}

void ShowPending(JNIEnv* env) {
  jthrowable pending = env->ExceptionOccurred();
  env->ExceptionClear();
  if (pending == nullptr) {
    Show("pending", std::string("none"));
    return;
  }
  jmethodID describe =
      env->GetMethodID(env->GetObjectClass(pending), "toString", "()Ljava/lang/String;");
  Show("pending", TextOf(env, env->CallObjectMethod(pending, describe)));
}

}  // namespace chartbridge
