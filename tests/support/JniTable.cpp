// SPDX-License-Identifier: Apache-2.0
#include "tests/support/JniTable.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/Describe.h"
#include "tests/support/FakeJvm.h"
#include "tests/support/JniNames.h"
#include "tests/support/KitScope.h"

namespace chartbridge::testing {
namespace {

constexpr char kNullPointer[] = "java/lang/NullPointerException";

// ---- Functions outside the model.

void ReportUnscripted(JNIEnv* env, std::size_t slot) {
  const KitScope kit;
  const std::string name = kJniNames[slot];
  ADD_FAILURE() << "JNI function outside the fake JVM: " << name;
  FakeJvm::Of(env).Record(env, name.c_str(), name + "(unscripted)");
}

// The arguments stay unread, so one type serves for all functions whose result travels in the
// integer register...
template <std::size_t Slot>
jlong JNICALL Unscripted(JNIEnv* env) {
  ReportUnscripted(env, Slot);
  return 0;
}

// ...and another for those whose result travels in the floating-point register.
template <std::size_t Slot>
jdouble JNICALL UnscriptedFloating(JNIEnv* env) {
  ReportUnscripted(env, Slot);
  return 0;
}

bool GivesFloating(const std::string& name) {
  const bool floating =
      name.find("Float") != std::string::npos || name.find("Double") != std::string::npos;
  const bool value =
      name.find("Method") != std::string::npos || name.find("Field") != std::string::npos;
  return floating && value;
}

template <std::size_t Slot>
void* UnscriptedSlot() {
  if (Slot < kReservedJniSlots) return nullptr;
  if (GivesFloating(kJniNames[Slot])) return reinterpret_cast<void*>(&UnscriptedFloating<Slot>);
  return reinterpret_cast<void*>(&Unscripted<Slot>);
}

template <std::size_t... Slot>
JNINativeInterface_ UnscriptedTable(std::index_sequence<Slot...>) {
  void* const slots[] = {UnscriptedSlot<Slot>()...};
  JNINativeInterface_ table;
  static_assert(sizeof slots == sizeof table, "one pointer for each slot");
  std::memcpy(&table, slots, sizeof table);
  return table;
}

// ---- Classes, methods and calls.

std::string Text(const char* text) { return text == nullptr ? "null" : text; }

jclass JNICALL FindClass(JNIEnv* env, const char* name) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  if (!jvm.Enter(env, "FindClass", Text(name))) return nullptr;
  FakeObject* found = name == nullptr ? nullptr : jvm.FindClass(name);
  if (found == nullptr) jvm.ThrowNew(env, "java/lang/NoClassDefFoundError", Text(name));
  return As<jclass>(found);
}

jclass JNICALL GetObjectClass(JNIEnv* env, jobject object) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  if (!jvm.Enter(env, "GetObjectClass", jvm.Describe(object))) return nullptr;
  if (object == nullptr) {
    jvm.ThrowNew(env, kNullPointer, "GetObjectClass");
    return nullptr;
  }
  return As<jclass>(ObjectOf(object)->type);
}

jmethodID LookUp(JNIEnv* env, const char* function, jclass type, const char* name,
                 const char* signature, bool is_static) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  const std::string arguments = jvm.Describe(type) + ", " + Text(name) + ", " + Text(signature);
  if (!jvm.Enter(env, function, arguments)) return nullptr;
  if (type == nullptr) {
    jvm.ThrowNew(env, kNullPointer, function);
    return nullptr;
  }
  for (const auto& method : ObjectOf(type)->methods) {
    const bool same = method->Name() == name && method->Signature() == signature;
    if (same && method->IsStatic() == is_static) return reinterpret_cast<jmethodID>(method.get());
  }
  jvm.ThrowNew(env, "java/lang/NoSuchMethodError", Text(name) + Text(signature));
  return nullptr;
}

jmethodID JNICALL GetMethodID(JNIEnv* env, jclass type, const char* name, const char* signature) {
  return LookUp(env, "GetMethodID", type, name, signature, false);
}

jmethodID JNICALL GetStaticMethodID(JNIEnv* env, jclass type, const char* name,
                                    const char* signature) {
  return LookUp(env, "GetStaticMethodID", type, name, signature, true);
}

// Small integers travel as int and floats as double in a variable argument list.
FakeArgument ReadArgument(char type, va_list& list) {
  FakeArgument argument{type, {}};
  switch (type) {
    case 'J':
      argument.value.j = va_arg(list, jlong);
      break;
    case 'F':
    case 'D':
      argument.value.d = va_arg(list, jdouble);
      break;
    case 'L':
      argument.value.l = va_arg(list, jobject);
      break;
    default:
      argument.value.i = va_arg(list, jint);
  }
  return argument;
}

std::string DescribeArgument(const FakeJvm& jvm, const FakeArgument& argument) {
  char number[32];
  switch (argument.type) {
    case 'L':
      return jvm.DescribeWithContent(argument.value.l);
    case 'Z':
      if (argument.value.i > 1 || argument.value.i < 0) return "no boolean";
      return argument.value.i == 1 ? "true" : "false";
    case 'J':
      return std::to_string(argument.value.j);
    case 'F':
    case 'D':
      std::snprintf(number, sizeof number, "%.17g", argument.value.d);
      return number;
    default:
      return std::to_string(argument.value.i);
  }
}

std::vector<FakeArgument> ReadArguments(const FakeMethod* method, va_list& list) {
  std::vector<FakeArgument> arguments;
  if (method == nullptr) return arguments;
  for (const char type : method->ParameterTypes()) arguments.push_back(ReadArgument(type, list));
  return arguments;
}

std::string DescribeCall(const FakeJvm& jvm, jobject receiver, jmethodID id,
                         const std::vector<FakeArgument>& arguments) {
  std::string text = jvm.Describe(receiver) + ", " + jvm.DescribeMethod(id);
  for (const FakeArgument& argument : arguments) text += ", " + DescribeArgument(jvm, argument);
  return text;
}

jvalue Invoke(JNIEnv* env, const char* function, jobject receiver, jmethodID id, va_list& list) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  const FakeMethod* method = jvm.FindMethod(id);
  const std::vector<FakeArgument> arguments = ReadArguments(method, list);
  if (!jvm.Enter(env, function, DescribeCall(jvm, receiver, id, arguments))) return jvalue{};
  if (receiver == nullptr || method == nullptr) {
    jvm.ThrowNew(env, kNullPointer, function);
    return jvalue{};
  }
  return method->Call({jvm, env, receiver, arguments});
}

template <typename Result>
Result ValueOf(const jvalue& value) {
  if constexpr (std::is_same_v<Result, jobject>) return value.l;
  if constexpr (std::is_same_v<Result, jboolean>) return value.z;
  if constexpr (std::is_same_v<Result, jbyte>) return value.b;
  if constexpr (std::is_same_v<Result, jchar>) return value.c;
  if constexpr (std::is_same_v<Result, jshort>) return value.s;
  if constexpr (std::is_same_v<Result, jint>) return value.i;
  if constexpr (std::is_same_v<Result, jlong>) return value.j;
  if constexpr (std::is_same_v<Result, jfloat>) return static_cast<jfloat>(value.d);
  if constexpr (std::is_same_v<Result, jdouble>) return value.d;
}

// A list that is a function's parameter may be a pointer, so it is copied before a reference to it
// is passed on.
template <typename Result, typename Receiver, const char* kFunction>
Result JNICALL Call(JNIEnv* env, Receiver receiver, jmethodID id, va_list list) {
  va_list copy;
  va_copy(copy, list);
  const jvalue value = Invoke(env, kFunction, receiver, id, copy);
  va_end(copy);
  return ValueOf<Result>(value);
}

constexpr char kObject[] = "CallObjectMethod";
constexpr char kBoolean[] = "CallBooleanMethod";
constexpr char kByte[] = "CallByteMethod";
constexpr char kChar[] = "CallCharMethod";
constexpr char kShort[] = "CallShortMethod";
constexpr char kInt[] = "CallIntMethod";
constexpr char kLong[] = "CallLongMethod";
constexpr char kFloat[] = "CallFloatMethod";
constexpr char kDouble[] = "CallDoubleMethod";
constexpr char kVoid[] = "CallVoidMethod";
constexpr char kStaticObject[] = "CallStaticObjectMethod";
constexpr char kStaticBoolean[] = "CallStaticBooleanMethod";
constexpr char kStaticInt[] = "CallStaticIntMethod";
constexpr char kStaticLong[] = "CallStaticLongMethod";
constexpr char kStaticVoid[] = "CallStaticVoidMethod";

jobject JNICALL NewObject(JNIEnv* env, jclass type, jmethodID id, va_list list) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  va_list copy;
  va_copy(copy, list);
  const FakeMethod* constructor = jvm.FindMethod(id);
  const std::vector<FakeArgument> arguments = ReadArguments(constructor, copy);
  va_end(copy);
  if (!jvm.Enter(env, "NewObject", DescribeCall(jvm, type, id, arguments))) return nullptr;
  if (type == nullptr || constructor == nullptr) {
    jvm.ThrowNew(env,
                 type == nullptr ? "java/lang/NoClassDefFoundError" : "java/lang/NoSuchMethodError",
                 "NewObject");
    return nullptr;
  }
  const jvalue made = constructor->Call({jvm, env, type, arguments});
  return constructor->IsScripted() ? made.l : As<jobject>(jvm.AddInstance(ObjectOf(type)));
}

// ---- Exceptions.

jthrowable JNICALL ExceptionOccurred(JNIEnv* env) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  const jthrowable pending = jvm.Pending(env);
  jvm.Enter(env, "ExceptionOccurred", "", " -> " + jvm.Describe(pending));
  return pending;
}

jboolean JNICALL ExceptionCheck(JNIEnv* env) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  jvm.Enter(env, "ExceptionCheck", "");
  return jvm.Pending(env) == nullptr ? JNI_FALSE : JNI_TRUE;
}

void JNICALL ExceptionClear(JNIEnv* env) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  jvm.Enter(env, "ExceptionClear", "");
  jvm.SetPending(nullptr, env);
}

// ---- References.

void ReleaseReference(JNIEnv* env, const char* function, jobject reference) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  jvm.Enter(env, function, jvm.Describe(reference));
}

void JNICALL DeleteGlobalRef(JNIEnv* env, jobject reference) {
  ReleaseReference(env, "DeleteGlobalRef", reference);
}

void JNICALL DeleteLocalRef(JNIEnv* env, jobject reference) {
  ReleaseReference(env, "DeleteLocalRef", reference);
}

jobject JNICALL NewGlobalRef(JNIEnv* env, jobject reference) {
  ReleaseReference(env, "NewGlobalRef", reference);
  return reference;
}

// ---- Arrays.

// Logs a call on an array or string; null gives NullPointerException and no object.
FakeObject* EnterOn(JNIEnv* env, const char* function, jobject reference,
                    const std::string& arguments = "") {
  FakeJvm& jvm = FakeJvm::Of(env);
  if (!jvm.Enter(env, function, jvm.Describe(reference) + arguments)) return nullptr;
  if (reference == nullptr) jvm.ThrowNew(env, kNullPointer, function);
  return ObjectOf(reference);
}

std::string CopyFlag(const jboolean* is_copy) { return is_copy == nullptr ? "" : ", isCopy"; }

std::string ModeName(jint mode) {
  switch (mode) {
    case 0:
      return "0";
    case JNI_COMMIT:
      return "JNI_COMMIT";
    case JNI_ABORT:
      return "JNI_ABORT";
    default:
      return "mode " + std::to_string(mode);
  }
}

jbyteArray JNICALL NewByteArray(JNIEnv* env, jsize length) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  if (!jvm.Enter(env, "NewByteArray", std::to_string(length))) return nullptr;
  FakeObject* array = jvm.AddNumbered(FakeObject::Kind::kBytes, "byte[]");
  array->bytes.assign(static_cast<std::size_t>(length), '\0');
  return As<jbyteArray>(array);
}

bool IsInside(JNIEnv* env, const FakeObject* array, jsize start, jsize length) {
  const auto size = static_cast<jsize>(array->bytes.size());
  if (start >= 0 && length >= 0 && start <= size - length) return true;
  FakeJvm::Of(env).ThrowNew(env, "java/lang/ArrayIndexOutOfBoundsException", array->label);
  return false;
}

void JNICALL SetByteArrayRegion(JNIEnv* env, jbyteArray array, jsize start, jsize length,
                                const jbyte* bytes) {
  const KitScope kit;
  const std::string region = std::to_string(start) + ", " + std::to_string(length);
  const std::string data(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(length));
  FakeObject* object =
      EnterOn(env, "SetByteArrayRegion", array, ", " + region + ", " + Quoted(data));
  if (object == nullptr || !IsInside(env, object, start, length)) return;
  object->bytes.replace(static_cast<std::size_t>(start), data.size(), data);
}

void JNICALL GetByteArrayRegion(JNIEnv* env, jbyteArray array, jsize start, jsize length,
                                jbyte* bytes) {
  const KitScope kit;
  const std::string region = std::to_string(start) + ", " + std::to_string(length);
  FakeObject* object = EnterOn(env, "GetByteArrayRegion", array, ", " + region);
  if (object == nullptr || !IsInside(env, object, start, length)) return;
  object->bytes.copy(reinterpret_cast<char*>(bytes), static_cast<std::size_t>(length),
                     static_cast<std::size_t>(start));
}

jsize JNICALL GetArrayLength(JNIEnv* env, jarray array) {
  const KitScope kit;
  const FakeObject* object = EnterOn(env, "GetArrayLength", array);
  if (object == nullptr) return 0;
  if (object->kind == FakeObject::Kind::kLongs) return static_cast<jsize>(object->longs.size());
  if (object->kind == FakeObject::Kind::kObjectArray) {
    return static_cast<jsize>(object->elements.size());
  }
  return static_cast<jsize>(object->bytes.size());
}

jbyte* JNICALL GetByteArrayElements(JNIEnv* env, jbyteArray array, jboolean* is_copy) {
  const KitScope kit;
  FakeObject* object = EnterOn(env, "GetByteArrayElements", array, CopyFlag(is_copy));
  if (object == nullptr) return nullptr;
  return static_cast<jbyte*>(
      FakeJvm::Of(env).GiveBuffer(object, object->bytes.data(), object->bytes.size()));
}

jlong* JNICALL GetLongArrayElements(JNIEnv* env, jlongArray array, jboolean* is_copy) {
  const KitScope kit;
  FakeObject* object = EnterOn(env, "GetLongArrayElements", array, CopyFlag(is_copy));
  if (object == nullptr) return nullptr;
  return static_cast<jlong*>(FakeJvm::Of(env).GiveBuffer(object, object->longs.data(),
                                                         object->longs.size() * sizeof(jlong)));
}

void WriteBack(FakeObject* owner, const void* elements, std::size_t size) {
  if (owner->kind == FakeObject::Kind::kBytes) {
    owner->bytes.assign(static_cast<const char*>(elements), size);
  } else {
    const auto* longs = static_cast<const jlong*>(elements);
    owner->longs.assign(longs, longs + size / sizeof(jlong));
  }
}

void ReleaseElements(JNIEnv* env, const char* function, jarray array, void* elements, jint mode) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  const std::string buffer = jvm.DescribeBuffer(elements, ObjectOf(array));
  if (!jvm.Enter(env, function, jvm.Describe(array) + ", " + buffer + ", " + ModeName(mode))) {
    return;
  }
  if (array == nullptr) jvm.ThrowNew(env, kNullPointer, function);
  if (elements == nullptr) return;
  const std::size_t size = jvm.BufferSize(elements);
  if (mode != JNI_ABORT) {
    if (FakeObject* owner = jvm.TakeBuffer(elements, false)) WriteBack(owner, elements, size);
  }
  if (mode != JNI_COMMIT) jvm.TakeBuffer(elements, true);
}

void JNICALL ReleaseByteArrayElements(JNIEnv* env, jbyteArray array, jbyte* elements, jint mode) {
  ReleaseElements(env, "ReleaseByteArrayElements", array, elements, mode);
}

void JNICALL ReleaseLongArrayElements(JNIEnv* env, jlongArray array, jlong* elements, jint mode) {
  ReleaseElements(env, "ReleaseLongArrayElements", array, elements, mode);
}

jobject JNICALL GetObjectArrayElement(JNIEnv* env, jobjectArray array, jsize index) {
  const KitScope kit;
  FakeObject* object = EnterOn(env, "GetObjectArrayElement", array, ", " + std::to_string(index));
  if (object == nullptr) return nullptr;
  const auto position = static_cast<std::size_t>(index);
  if (index >= 0 && position < object->elements.size()) return object->elements[position];
  FakeJvm::Of(env).ThrowNew(env, "java/lang/ArrayIndexOutOfBoundsException", object->label);
  return nullptr;
}

// ---- Strings.

jstring JNICALL NewString(JNIEnv* env, const jchar* units, jsize length) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  const std::string count = ", " + std::to_string(length);
  if (units == nullptr) {
    if (jvm.Enter(env, "NewString", "null" + count)) jvm.ThrowNew(env, kNullPointer, "NewString");
    return nullptr;
  }
  const std::u16string text(reinterpret_cast<const char16_t*>(units),
                            static_cast<std::size_t>(length));
  if (!jvm.Enter(env, "NewString", Quoted(Utf8(text)) + count)) return nullptr;
  return jvm.MakeString(text);
}

jsize JNICALL GetStringLength(JNIEnv* env, jstring string) {
  const KitScope kit;
  const FakeObject* object = EnterOn(env, "GetStringLength", string);
  return object == nullptr ? 0 : static_cast<jsize>(object->text.size());
}

const jchar* JNICALL GetStringChars(JNIEnv* env, jstring string, jboolean* is_copy) {
  const KitScope kit;
  FakeObject* object = EnterOn(env, "GetStringChars", string, CopyFlag(is_copy));
  return object == nullptr ? nullptr : FakeJvm::Of(env).GiveChars(object);
}

void JNICALL ReleaseStringChars(JNIEnv* env, jstring string, const jchar* chars) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  const std::string buffer = jvm.DescribeBuffer(chars, ObjectOf(string));
  if (!jvm.Enter(env, "ReleaseStringChars", jvm.Describe(string) + ", " + buffer)) return;
  // As JVMs do it: nothing is released where nothing was obtained.
  if (chars != nullptr) jvm.TakeBuffer(chars, true);
}

jstring JNICALL NewStringUTF(JNIEnv* env, const char* utf) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  if (!jvm.Enter(env, "NewStringUTF", utf == nullptr ? "null" : Quoted(utf))) return nullptr;
  return utf == nullptr ? nullptr : jvm.MakeString(std::string(utf));
}

const char* JNICALL GetStringUTFChars(JNIEnv* env, jstring string, jboolean* is_copy) {
  const KitScope kit;
  FakeObject* object = EnterOn(env, "GetStringUTFChars", string);
  if (object == nullptr) return nullptr;
  if (is_copy != nullptr) *is_copy = JNI_TRUE;
  const std::string utf = Utf8(object->text);
  return static_cast<const char*>(FakeJvm::Of(env).GiveBuffer(object, utf.c_str(), utf.size() + 1));
}

void JNICALL ReleaseStringUTFChars(JNIEnv* env, jstring string, const char* chars) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  const std::string buffer = jvm.DescribeBuffer(chars, ObjectOf(string));
  if (!jvm.Enter(env, "ReleaseStringUTFChars", jvm.Describe(string) + ", " + buffer)) return;
  jvm.TakeBuffer(chars, true);
}

// ---- Direct buffers.

jobject JNICALL NewDirectByteBuffer(JNIEnv* env, void* address, jlong capacity) {
  const KitScope kit;
  FakeJvm& jvm = FakeJvm::Of(env);
  const std::string memory =
      jvm.DescribeMemory(address, capacity) + ", " + std::to_string(capacity);
  if (!jvm.Enter(env, "NewDirectByteBuffer", memory)) return nullptr;
  FakeObject* buffer = jvm.Add(FakeObject::Kind::kBuffer, "ByteBuffer(" + memory + ")");
  buffer->address = address;
  buffer->capacity = capacity;
  return As<jobject>(buffer);
}

void* JNICALL GetDirectBufferAddress(JNIEnv* env, jobject buffer) {
  const KitScope kit;
  const FakeObject* object = EnterOn(env, "GetDirectBufferAddress", buffer);
  return object == nullptr ? nullptr : object->address;
}

jlong JNICALL GetDirectBufferCapacity(JNIEnv* env, jobject buffer) {
  const KitScope kit;
  const FakeObject* object = EnterOn(env, "GetDirectBufferCapacity", buffer);
  return object == nullptr ? -1 : object->capacity;
}

void FillCalls(JNINativeInterface_& table) {
  table.NewObjectV = &NewObject;
  table.CallObjectMethodV = &Call<jobject, jobject, kObject>;
  table.CallBooleanMethodV = &Call<jboolean, jobject, kBoolean>;
  table.CallByteMethodV = &Call<jbyte, jobject, kByte>;
  table.CallCharMethodV = &Call<jchar, jobject, kChar>;
  table.CallShortMethodV = &Call<jshort, jobject, kShort>;
  table.CallIntMethodV = &Call<jint, jobject, kInt>;
  table.CallLongMethodV = &Call<jlong, jobject, kLong>;
  table.CallFloatMethodV = &Call<jfloat, jobject, kFloat>;
  table.CallDoubleMethodV = &Call<jdouble, jobject, kDouble>;
  table.CallVoidMethodV = &Call<void, jobject, kVoid>;
  table.CallStaticObjectMethodV = &Call<jobject, jclass, kStaticObject>;
  table.CallStaticBooleanMethodV = &Call<jboolean, jclass, kStaticBoolean>;
  table.CallStaticIntMethodV = &Call<jint, jclass, kStaticInt>;
  table.CallStaticLongMethodV = &Call<jlong, jclass, kStaticLong>;
  table.CallStaticVoidMethodV = &Call<void, jclass, kStaticVoid>;
}

void FillLookups(JNINativeInterface_& table) {
  table.FindClass = &FindClass;
  table.GetObjectClass = &GetObjectClass;
  table.GetMethodID = &GetMethodID;
  table.GetStaticMethodID = &GetStaticMethodID;
  table.ExceptionOccurred = &ExceptionOccurred;
  table.ExceptionCheck = &ExceptionCheck;
  table.ExceptionClear = &ExceptionClear;
  table.DeleteGlobalRef = &DeleteGlobalRef;
  table.DeleteLocalRef = &DeleteLocalRef;
  table.NewGlobalRef = &NewGlobalRef;
}

void FillData(JNINativeInterface_& table) {
  table.NewByteArray = &NewByteArray;
  table.SetByteArrayRegion = &SetByteArrayRegion;
  table.GetByteArrayRegion = &GetByteArrayRegion;
  table.GetArrayLength = &GetArrayLength;
  table.GetByteArrayElements = &GetByteArrayElements;
  table.ReleaseByteArrayElements = &ReleaseByteArrayElements;
  table.GetLongArrayElements = &GetLongArrayElements;
  table.ReleaseLongArrayElements = &ReleaseLongArrayElements;
  table.GetObjectArrayElement = &GetObjectArrayElement;
  table.NewString = &NewString;
  table.GetStringLength = &GetStringLength;
  table.GetStringChars = &GetStringChars;
  table.ReleaseStringChars = &ReleaseStringChars;
  table.NewStringUTF = &NewStringUTF;
  table.GetStringUTFChars = &GetStringUTFChars;
  table.ReleaseStringUTFChars = &ReleaseStringUTFChars;
  table.NewDirectByteBuffer = &NewDirectByteBuffer;
  table.GetDirectBufferAddress = &GetDirectBufferAddress;
  table.GetDirectBufferCapacity = &GetDirectBufferCapacity;
}

}  // namespace

JNINativeInterface_ MakeJniTable() {
  JNINativeInterface_ table = UnscriptedTable(std::make_index_sequence<kJniSlots>());
  FillLookups(table);
  FillCalls(table);
  FillData(table);
  return table;
}

}  // namespace chartbridge::testing
