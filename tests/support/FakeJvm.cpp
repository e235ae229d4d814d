// SPDX-License-Identifier: Apache-2.0
#include "tests/support/FakeJvm.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <set>

#include "tests/support/Describe.h"
#include "tests/support/EventLog.h"
#include "tests/support/JniTable.h"
#include "tests/support/KitScope.h"

namespace chartbridge::testing {
namespace {

constexpr char kTextSignature[] = "()Ljava/lang/String;";

std::string SimpleName(const std::string& class_name) {
  return class_name.substr(class_name.find_last_of('/') + 1);
}

jvalue ReferenceValue(jobject reference) {
  jvalue value{};
  value.l = reference;
  return value;
}

// The functions that JNI allows while an exception is pending.
bool IsAllowedWhilePending(const std::string& function) {
  static const std::set<std::string> allowed = {"ExceptionOccurred",
                                                "ExceptionDescribe",
                                                "ExceptionClear",
                                                "ExceptionCheck",
                                                "ReleaseStringChars",
                                                "ReleaseStringUTFChars",
                                                "ReleaseStringCritical",
                                                "ReleaseBooleanArrayElements",
                                                "ReleaseByteArrayElements",
                                                "ReleaseCharArrayElements",
                                                "ReleaseShortArrayElements",
                                                "ReleaseIntArrayElements",
                                                "ReleaseLongArrayElements",
                                                "ReleaseFloatArrayElements",
                                                "ReleaseDoubleArrayElements",
                                                "ReleasePrimitiveArrayCritical",
                                                "DeleteLocalRef",
                                                "DeleteGlobalRef",
                                                "DeleteWeakGlobalRef",
                                                "MonitorExit",
                                                "PushLocalFrame",
                                                "PopLocalFrame"};
  return allowed.count(function) != 0;
}

}  // namespace

void FakeJvm::FreeBuffer::operator()(void* memory) const { std::free(memory); }

FakeJvm::FakeJvm() : _table(MakeJniTable()), _main(nullptr) {
  const KitScope kit;
  _main = static_cast<ThreadEnv*>(NewEnv("env"));
  DefineStreams();
  DefineCollections();
}

FakeJvm::~FakeJvm() = default;

JNIEnv* FakeJvm::NewEnv(const std::string& name) {
  auto env = std::make_unique<ThreadEnv>();
  env->functions = &_table;
  env->jvm = this;
  env->name = name;
  env->pending = nullptr;
  _envs.push_back(std::move(env));
  return _envs.back().get();
}

FakeJvm& FakeJvm::Of(JNIEnv* env) { return *static_cast<ThreadEnv*>(env)->jvm; }

FakeObject* FakeJvm::Add(FakeObject::Kind kind, std::string label) {
  auto object = std::make_unique<FakeObject>();
  object->kind = kind;
  object->label = std::move(label);
  FakeObject* added = object.get();
  _objects[added] = std::move(object);
  return added;
}

FakeObject* FakeJvm::AddNumbered(FakeObject::Kind kind, const std::string& type) {
  return Add(kind, type + "#" + std::to_string(++_numbers[type]));
}

FakeObject* FakeJvm::AddInstance(FakeObject* type) {
  const std::string number = std::to_string(++type->instances);
  FakeObject* object = Add(FakeObject::Kind::kObject, SimpleName(type->name) + "@" + number);
  object->type = type;
  return object;
}

FakeObject* FakeJvm::FindClass(const std::string& name) const {
  const auto found = _classes.find(name);
  return found == _classes.end() ? nullptr : found->second;
}

FakeObject* FakeJvm::Class(const std::string& name) {
  const KitScope kit;
  if (FakeObject* known = FindClass(name)) return known;
  FakeObject* added = Add(FakeObject::Kind::kClass, "class " + name);
  added->name = name;
  _classes[name] = added;
  return added;
}

FakeObject* FakeJvm::ClassWithConstructor(const std::string& name) {
  Method(name, "<init>", "()V");
  return Class(name);
}

FakeMethod& FakeJvm::AddMethod(const std::string& class_name, const std::string& name,
                               const std::string& signature, bool is_static) {
  const KitScope kit;
  FakeObject* type = Class(class_name);
  for (const auto& method : type->methods) {
    const bool same = method->Name() == name && method->Signature() == signature;
    if (same && method->IsStatic() == is_static) return *method;
  }
  type->methods.push_back(std::make_unique<FakeMethod>(name, signature, is_static));
  return *type->methods.back();
}

FakeMethod& FakeJvm::Method(const std::string& class_name, const std::string& name,
                            const std::string& signature) {
  return AddMethod(class_name, name, signature, false);
}

FakeMethod& FakeJvm::StaticMethod(const std::string& class_name, const std::string& name,
                                  const std::string& signature) {
  return AddMethod(class_name, name, signature, true);
}

jmethodID FakeJvm::MethodID(const std::string& class_name, const std::string& name,
                            const std::string& signature) {
  return reinterpret_cast<jmethodID>(&Method(class_name, name, signature));
}

jobject FakeJvm::MakeObject(const std::string& class_name) {
  return As<jobject>(AddInstance(Class(class_name)));
}

jbyteArray FakeJvm::MakeBytes(const std::string& label, const std::string& bytes) {
  FakeObject* array = Add(FakeObject::Kind::kBytes, "byte[] " + label);
  array->bytes = bytes;
  return As<jbyteArray>(array);
}

jlongArray FakeJvm::MakeLongs(const std::string& label, std::vector<jlong> longs) {
  FakeObject* array = Add(FakeObject::Kind::kLongs, "long[] " + label);
  array->longs = std::move(longs);
  return As<jlongArray>(array);
}

jobjectArray FakeJvm::MakeObjects(const std::string& label, std::vector<jobject> elements) {
  FakeObject* array = Add(FakeObject::Kind::kObjectArray, "Object[] " + label);
  array->elements = std::move(elements);
  return As<jobjectArray>(array);
}

jstring FakeJvm::MakeString(const std::string& utf8) { return MakeString(Utf16(utf8)); }

jstring FakeJvm::MakeString(const std::u16string& text) {
  FakeObject* string = Add(FakeObject::Kind::kString, Quoted(Utf8(text)));
  string->type = Class("java/lang/String");
  string->text = text;
  return As<jstring>(string);
}

jthrowable FakeJvm::MakeThrowable(const std::string& class_name, const std::string& message) {
  const jthrowable throwable = MakeThrowableWithoutMessage(class_name);
  FakeObject* object = ObjectOf(throwable);
  object->message = message;
  object->description += ": " + message;
  object->stack = object->description + "\n\tat Chart.render(Chart.java:7)\n";
  return throwable;
}

jthrowable FakeJvm::MakeThrowableWithoutMessage(const std::string& class_name) {
  DefineThrowable(class_name);
  FakeObject* object = AddInstance(Class(class_name));
  std::string dotted = class_name;
  for (char& c : dotted) c = c == '/' ? '.' : c;
  object->description = dotted;
  object->stack = dotted + "\n\tat Chart.render(Chart.java:7)\n";
  return As<jthrowable>(object);
}

void FakeJvm::DefineThrowable(const std::string& class_name) {
  FakeMethod& get_message = Method(class_name, "getMessage", kTextSignature);
  if (get_message.IsScripted()) return;
  get_message.Does([](const FakeCall& call) {
    const FakeObject* throwable = ObjectOf(call.receiver);
    if (!throwable->message) return jvalue{};
    return ReferenceValue(call.jvm.MakeString(*throwable->message));
  });
  Method(class_name, "toString", kTextSignature).Does([](const FakeCall& call) {
    return ReferenceValue(call.jvm.MakeString(ObjectOf(call.receiver)->description));
  });
  // The stream wraps the buffer that it was constructed with.
  Method(class_name, "printStackTrace", "(Ljava/io/PrintStream;)V").Does([](const FakeCall& call) {
    FakeObject* stream = ObjectOf(call.arguments.at(0).value.l);
    if (stream == nullptr || stream->elements.empty()) return jvalue{};
    if (FakeObject* out = ObjectOf(stream->elements[0])) {
      out->text += Utf16(ObjectOf(call.receiver)->stack);
    }
    return jvalue{};
  });
}

void FakeJvm::DefineStreams() {
  const std::string bytes = "java/io/ByteArrayOutputStream";
  ClassWithConstructor(bytes);
  Method(bytes, "toString", kTextSignature).Does([](const FakeCall& call) {
    return ReferenceValue(call.jvm.MakeString(ObjectOf(call.receiver)->text));
  });
  const std::string print = "java/io/PrintStream";
  Method(print, "<init>", "(Ljava/io/OutputStream;)V").Does([print](const FakeCall& call) {
    const jobject stream = call.jvm.MakeObject(print);
    ObjectOf(stream)->elements.push_back(call.arguments.at(0).value.l);
    return ReferenceValue(stream);
  });
}

void FakeJvm::DefineCollections() {
  const auto first_element = [](const FakeCall& call) {
    return ReferenceValue(ObjectOf(call.receiver)->elements.at(0));
  };
  const auto second_element = [](const FakeCall& call) {
    return ReferenceValue(ObjectOf(call.receiver)->elements.at(1));
  };
  Method("java/util/HashMap", "entrySet", "()Ljava/util/Set;").Does(first_element);
  Method("java/util/Set", "iterator", "()Ljava/util/Iterator;").Does([](const FakeCall& call) {
    const jobject iterator = call.jvm.MakeObject("java/util/Iterator");
    ObjectOf(iterator)->elements = ObjectOf(call.receiver)->elements;
    return ReferenceValue(iterator);
  });
  Method("java/util/Iterator", "hasNext", "()Z").Does([](const FakeCall& call) {
    jvalue value{};
    value.z = ObjectOf(call.receiver)->elements.empty() ? JNI_FALSE : JNI_TRUE;
    return value;
  });
  Method("java/util/Iterator", "next", "()Ljava/lang/Object;").Does([](const FakeCall& call) {
    auto& left = ObjectOf(call.receiver)->elements;
    const jobject next = left.at(0);
    left.erase(left.begin());
    return ReferenceValue(next);
  });
  Method("java/util/HashMap$Node", "getKey", "()Ljava/lang/Object;").Does(first_element);
  Method("java/util/HashMap$Node", "getValue", "()Ljava/lang/Object;").Does(second_element);
  Method("java/lang/String", "getBytes", "()[B").Does([](const FakeCall& call) {
    FakeObject* array = call.jvm.AddNumbered(FakeObject::Kind::kBytes, "byte[]");
    array->bytes = Utf8(ObjectOf(call.receiver)->text);
    return ReferenceValue(As<jobject>(array));
  });
}

jobject FakeJvm::MakeMap(const std::vector<std::pair<std::string, jobject>>& entries) {
  const jobject map = MakeObject("java/util/HashMap");
  const jobject set = MakeObject("java/util/Set");
  ObjectOf(map)->elements.push_back(set);
  for (const auto& [key, value] : entries) {
    const jobject entry = MakeObject("java/util/HashMap$Node");
    ObjectOf(entry)->elements = {MakeString(key), value};
    ObjectOf(set)->elements.push_back(entry);
  }
  return map;
}

void FakeJvm::NameMemory(const void* memory, const std::string& name) {
  _memory_names[memory] = name;
}

void FakeJvm::SetPending(jthrowable exception, JNIEnv* env) {
  (env == nullptr ? _main : static_cast<ThreadEnv*>(env))->pending = exception;
}

jthrowable FakeJvm::Pending(JNIEnv* env) {
  return (env == nullptr ? _main : static_cast<ThreadEnv*>(env))->pending;
}

void FakeJvm::ThrowNew(JNIEnv* env, const std::string& class_name, const std::string& message) {
  // Java keeps the first exception too.
  if (Pending(env) == nullptr) SetPending(MakeThrowable(class_name, message), env);
}

void FakeJvm::Fail(const std::string& function, int nth, jthrowable exception) {
  _injections.emplace(function, Injection{nth, true, exception, nullptr});
}

void FakeJvm::On(const std::string& function, int nth, std::function<void()> action) {
  _injections.emplace(function, Injection{nth, false, nullptr, std::move(action)});
}

std::string FakeJvm::EnvSuffix(JNIEnv* env) const {
  const auto* fake = static_cast<const ThreadEnv*>(env);
  return fake == _main ? "" : " on " + fake->name;
}

std::string FakeJvm::ForbiddenNote(JNIEnv* env, const std::string& function) const {
  if (!_note_forbidden || static_cast<const ThreadEnv*>(env)->pending == nullptr) return "";
  return IsAllowedWhilePending(function) ? "" : " [exception pending]";
}

void FakeJvm::Record(JNIEnv* env, const char* function, const std::string& text) {
  EventLog::Get().Record(Source::kJni, text + ForbiddenNote(env, function) + EnvSuffix(env));
}

bool FakeJvm::Enter(JNIEnv* env, const char* function, const std::string& arguments,
                    const std::string& result) {
  Record(env, function, std::string(function) + "(" + arguments + ")" + result);
  bool fails = false;
  std::vector<std::function<void()>> actions;
  const auto [begin, end] = _injections.equal_range(function);
  for (auto i = begin; i != end; ++i) {
    Injection& injection = i->second;
    if (--injection.countdown != 0) continue;
    if (injection.action) actions.push_back(injection.action);
    if (!injection.fails) continue;
    fails = true;
    if (injection.exception != nullptr) SetPending(injection.exception, env);
  }
  for (const auto& action : actions) {
    const OutsideKit outside;
    action();
  }
  return !fails;
}

bool FakeJvm::IsKnown(jobject reference) const { return _objects.count(ObjectOf(reference)) != 0; }

std::string FakeJvm::Describe(jobject reference) const {
  if (reference == nullptr) return "null";
  if (!IsKnown(reference)) {
    ADD_FAILURE() << "a reference that this JVM never gave: " << reference;
    return "unknown reference";
  }
  return ObjectOf(reference)->label;
}

std::string FakeJvm::DescribeWithContent(jobject reference) const {
  const std::string label = Describe(reference);
  if (reference == nullptr || !IsKnown(reference)) return label;
  const FakeObject* object = ObjectOf(reference);
  return object->kind == FakeObject::Kind::kBytes ? label + " " + Quoted(object->bytes) : label;
}

const FakeMethod* FakeJvm::FindMethod(jmethodID id) const {
  for (const auto& [name, type] : _classes) {
    for (const auto& method : type->methods) {
      if (reinterpret_cast<jmethodID>(method.get()) == id) return method.get();
    }
  }
  return nullptr;
}

std::string FakeJvm::DescribeMethod(jmethodID id) const {
  if (id == nullptr) return "null";
  const FakeMethod* method = FindMethod(id);
  if (method != nullptr) return method->Name() + method->Signature();
  ADD_FAILURE() << "a method ID that this JVM never gave: " << id;
  return "unknown method";
}

std::string FakeJvm::DescribeMemory(const void* memory, jlong length) const {
  const auto name = _memory_names.find(memory);
  if (name != _memory_names.end()) return name->second;
  if (memory == nullptr) return "null";
  return Quoted(std::string(static_cast<const char*>(memory), static_cast<std::size_t>(length)));
}

std::string FakeJvm::DescribeBuffer(const void* buffer, const FakeObject* owner) const {
  if (buffer == nullptr) return "null";
  const auto found = _buffers.find(buffer);
  if (found == _buffers.end()) return "unknown buffer";
  return found->second.owner == owner ? "elements" : "elements of " + found->second.owner->label;
}

void* FakeJvm::GiveBuffer(FakeObject* owner, const void* bytes, std::size_t size) {
  void* memory = std::malloc(size);
  if (size > 0) std::memcpy(memory, bytes, size);
  _buffers[memory] = Buffer{std::unique_ptr<void, FreeBuffer>(memory), size, owner};
  return memory;
}

const jchar* FakeJvm::GiveChars(FakeObject* string) {
  const std::size_t units = string->text.size() + (_terminate_chars ? 1 : 0);
  return static_cast<const jchar*>(GiveBuffer(string, string->text.c_str(), units * sizeof(jchar)));
}

FakeObject* FakeJvm::TakeBuffer(const void* buffer, bool free_it) {
  const auto found = _buffers.find(buffer);
  if (found == _buffers.end()) {
    ADD_FAILURE() << "a release of memory that this JVM did not give or that was released before";
    return nullptr;
  }
  FakeObject* owner = found->second.owner;
  if (free_it) _buffers.erase(found);
  return owner;
}

std::size_t FakeJvm::BufferSize(const void* buffer) const {
  const auto found = _buffers.find(buffer);
  return found == _buffers.end() ? 0 : found->second.size;
}

}  // namespace chartbridge::testing
