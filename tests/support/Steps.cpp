// SPDX-License-Identifier: Apache-2.0
#include "tests/support/Steps.h"

#include <optional>

#include "tests/support/FakeObject.h"

namespace chartbridge::testing {
namespace {

constexpr char kTextSignature[] = "()Ljava/lang/String;";

// ICU's UTF-8 converter makes at most three bytes of one UTF-16 unit.
constexpr std::size_t kBytesPerUnit = 3;

std::size_t Units(const std::string& utf8) { return Utf16(utf8).size(); }

// One text of an exception, read by a method without arguments.
Events ReadThrowable(const FakeObject& exception, const std::string& method,
                     const std::optional<std::string>& text) {
  return Guarded(
      "GetMethodID(" + exception.type->label + ", " + method + ", " + kTextSignature + ")",
      "CallObjectMethod(" + exception.label + ", " + method + kTextSignature + ")",
      text ? ReadText(*text) : Events{});
}

Events ReadStackTrace(const FakeObject& exception, int nth) {
  const std::string number = std::to_string(nth);
  const std::string bytes = "class java/io/ByteArrayOutputStream";
  const std::string print = "class java/io/PrintStream";
  const std::string out = "ByteArrayOutputStream@" + number;
  return Guarded(
      "FindClass(java/io/ByteArrayOutputStream)", "GetMethodID(" + bytes + ", <init>, ()V)",
      "GetMethodID(" + bytes + ", toString, ()Ljava/lang/String;)",
      "NewObject(" + bytes + ", <init>()V)", "FindClass(java/io/PrintStream)",
      "GetMethodID(" + print + ", <init>, (Ljava/io/OutputStream;)V)",
      "NewObject(" + print + ", <init>(Ljava/io/OutputStream;)V, " + out + ")",
      "GetMethodID(" + exception.type->label + ", printStackTrace, (Ljava/io/PrintStream;)V)",
      // A void method through the object-returning call form.
      "CallObjectMethod(" + exception.label +
          ", printStackTrace(Ljava/io/PrintStream;)V, PrintStream@" + number + ")",
      "CallObjectMethod(" + out + ", toString()Ljava/lang/String;)", ReadText(exception.stack));
}

Events FoundException(const FakeObject& exception, int nth, const Events& dump) {
  return Guarded("ExceptionOccurred() -> " + exception.label, "ExceptionClear()",
                 "GetObjectClass(" + exception.label + ")",
                 ReadThrowable(exception, "getMessage", exception.message),
                 ReadThrowable(exception, "toString", exception.description),
                 ReadStackTrace(exception, nth), dump);
}

std::string Nth(int nth) { return "byte[]#" + std::to_string(nth); }

}  // namespace

Events NoPendingException() { return Guarded("ExceptionOccurred() -> null"); }

Events ReadText(const std::string& text, const char* codepage) {
  const std::string capacity = std::to_string(kBytesPerUnit * Units(text) + 1);
  return Seq("GetStringLength(" + Quoted(text) + ")", "GetStringChars(" + Quoted(text) + ")",
             "ucnv_open(" + std::string(codepage == nullptr ? "null" : codepage) + ")",
             "ucnv_getMaxCharSize", "ucnv_fromUChars(" + capacity + ", " + Quoted(text) + ")",
             "ReleaseStringChars(" + Quoted(text) + ", elements)");
}

Events PendingException(jthrowable exception, int nth) {
  return FoundException(*ObjectOf(exception), nth, Seq("getenv(DumpChartTimePath)"));
}

Events DumpedException(jthrowable exception, long seconds, int nth) {
  return FoundException(
      *ObjectOf(exception), nth,
      Seq("getenv(DumpChartTimePath)", "ftime", "ctime(" + std::to_string(seconds) + ")"));
}

Events ByteArrayArgument(int nth, const std::string& bytes) {
  const std::string length = std::to_string(bytes.size());
  return Seq("NewByteArray(" + length + ")", NoPendingException(),
             "SetByteArrayRegion(" + Nth(nth) + ", 0, " + length + ", " + Quoted(bytes) + ")",
             NoPendingException());
}

Events StringArgument(const std::string& text) {
  return Seq("NewString(" + Quoted(text) + ", " + std::to_string(Units(text)) + ")",
             NoPendingException());
}

Events Utf16Conversion(const std::string& text) {
  const std::string capacity = std::to_string(4 * text.size());
  return Seq("ucnv_open(null)", "ucnv_toUChars(" + capacity + ", " + Quoted(text) + ")",
             "ucnv_fixFileSeparator(" + capacity + ")", "ucnv_close");
}

Events Utf16Conversion(const std::string& text, int buffer) {
  Events events = Utf16Conversion(text);
  const std::size_t bytes = 4 * text.size() * sizeof(jchar);
  events.insert(events.begin() + 1,
                "new[] " + std::to_string(bytes) + " bytes: buffer " + std::to_string(buffer));
  return events;
}

Events ByteArrayResult(const std::string& array) {
  return Seq("GetArrayLength(byte[] " + array + ")", "GetByteArrayElements(byte[] " + array + ")",
             "ReleaseByteArrayElements(byte[] " + array + ", elements, JNI_ABORT)",
             NoPendingException());
}

Events TranscodedResult(const std::string& text) {
  return Seq("GetStringLength(" + Quoted(text) + ")", NoPendingException(),
             "GetStringChars(" + Quoted(text) + ")", NoPendingException(),
             "TESKMBTranscodeU8(" + Quoted(text) + ")", "TESKMBRelease(" + Quoted(text) + ")",
             "ReleaseStringChars(" + Quoted(text) + ", elements)", NoPendingException());
}

Events JavaCall(const std::string& call, const std::string& class_name, const std::string& object,
                const std::string& name, const std::string& signature,
                const std::string& arguments) {
  const std::string more = arguments.empty() ? "" : ", " + arguments;
  return Seq("GetMethodID(class " + class_name + ", " + name + ", " + signature + ")",
             call + "(" + object + ", " + name + signature + more + ")", NoPendingException());
}

Events BindingConstruction(const std::string& class_name) {
  return Seq("FindClass(" + class_name + ")", "GetMethodID(class " + class_name + ", <init>, ()V)",
             "NewObject(class " + class_name + ", <init>()V)", NoPendingException());
}

Events Attach() { return Seq("TeskJVM::GetInstance", "AttachCurrentThread"); }

Events AttachEditor() { return Guarded(Attach(), "lock depth=2", "unlock depth=1", Guarded()); }

}  // namespace chartbridge::testing
