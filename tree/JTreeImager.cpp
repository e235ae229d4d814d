// SPDX-License-Identifier: Apache-2.0
#include "tree/JTreeImager.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "bridge/Marshalling.h"

using chartbridge::AssignElements;
using chartbridge::NewByteArray;
using chartbridge::NewJavaString;

namespace {

// The headless imager draws at its own size; no host can choose another.
constexpr jint kPercent = 100;

jboolean ToJava(bool flag) { return flag ? JNI_TRUE : JNI_FALSE; }

// What the standard library throws for a string made from a null pointer: names without bytes, and
// bytes that Java has and does not give, are failures that the host gets to see.
[[noreturn]] void RefuseNullString() {
  throw std::logic_error("basic_string: construction from null is not valid");
}

// The bytes and a zero byte in memory of their own; null when there is none.
const char* NewTerminated(const jbyte* elements, std::size_t bytes) {
  auto* text = static_cast<char*>(std::malloc(bytes + 1));
  if (text == nullptr) return nullptr;
  std::memcpy(text, elements, bytes);
  text[bytes] = '\0';
  return text;
}

std::string Picture(const jbyte* elements, jsize length) {
  std::string bytes;
  if (!AssignElements(bytes, elements, length)) RefuseNullString();
  return bytes;
}

}  // namespace

JTreeImager::JTreeImager(JNIEnv* threadEnv)
    : JAccessor(threadEnv),
      modelRef(nullptr),
      text1(nullptr),
      text1Length(0),
      text2(nullptr),
      text2Length(0),
      imageType(0),
      extra(0) {
  setClass("com/tesk/treemodeleditor/TreeImager");
  setMethod("<init>", "()V");
  setObject(jni()->NewObject(getClass(), getMethodID()));
  exceptionCheck();
}

JTreeImager::~JTreeImager() { setEnv(nullptr); }

bool JTreeImager::renderToFile(const std::string& model, const std::string& display,
                               const unsigned short* path, int pathLength, int type, bool flag) {
  const jbyteArray modelArray = NewByteArray(*this, model);
  const jbyteArray displayArray = NewByteArray(*this, display);
  const jstring pathString = NewJavaString(*this, path, pathLength);
  setMethod("renderToFile", "([B[BLjava/lang/String;IZI)Z");
  const jboolean rendered =
      jni()->CallBooleanMethod(getObject(), getMethodID(), modelArray, displayArray, pathString,
                               static_cast<jint>(type), ToJava(flag), kPercent);
  exceptionCheck();
  return rendered != JNI_FALSE;
}

bool JTreeImager::calculateSizeArray(const std::string& model, const std::string& display,
                                     long& width, long& height) {
  // The method is looked up before the arrays are made, here and in the editor's namesake only.
  setMethod("calculateSizeArray", "([B[B)[J");
  const jbyteArray modelArray = NewByteArray(*this, model);
  const jbyteArray displayArray = NewByteArray(*this, display);
  const auto size = static_cast<jlongArray>(
      jni()->CallObjectMethod(getObject(), getMethodID(), modelArray, displayArray));
  exceptionCheck();
  if (size == nullptr) return false;
  const jsize length = jni()->GetArrayLength(size);
  exceptionCheck();
  if (length < 2) return false;
  jlong* elements = jni()->GetLongArrayElements(size, nullptr);
  exceptionCheck();
  const bool given = elements != nullptr;
  if (given) {
    width = elements[0];
    height = elements[1];
  }
  jni()->ReleaseLongArrayElements(size, elements, JNI_ABORT);
  exceptionCheck();
  return given && width > 0 && height > 0;
}

bool JTreeImager::renderToMemory(const std::string& model, const std::string& display,
                                 const unsigned short* /*path*/, unsigned int& size, int type,
                                 bool /*flag*/, std::string& image) {
  const jbyteArray modelArray = NewByteArray(*this, model);
  const jbyteArray displayArray = NewByteArray(*this, display);
  setMethod("renderToMemory", "([B[BII)[B");
  const auto result = static_cast<jbyteArray>(jni()->CallObjectMethod(
      getObject(), getMethodID(), modelArray, displayArray, static_cast<jint>(type), kPercent));
  exceptionCheck();
  if (result != nullptr) {
    const jsize length = jni()->GetArrayLength(result);
    // Written before the bytes are there, on purpose.
    size = static_cast<unsigned int>(length);
    jbyte* elements = jni()->GetByteArrayElements(result, nullptr);
    AssignElements(image, elements, length);
    exceptionCheck();
    jni()->ReleaseByteArrayElements(result, elements, JNI_ABORT);
    exceptionCheck();
  }
  // The image is never cleared: bytes of an earlier call count when Java returns nothing.
  return !image.empty();
}

void JTreeImager::setSchemaPath(const unsigned short* path, int pathLength) {
  setMethod("setSchemaPath", "(Ljava/lang/String;)V");
  // No check between the string and the call, on purpose; the one after the call finds a failure.
  const jstring pathString = jni()->NewString(path, pathLength);
  jni()->CallVoidMethod(getObject(), getMethodID(), pathString);
  exceptionCheck();
}

bool JTreeImager::renderModelToMemory(const std::string& doc1, const std::string& doc2,
                                      const std::string& doc3, const std::string& doc4,
                                      const unsigned short* name, int nameLength, int type,
                                      int option, std::map<std::string, unsigned int>& sizes,
                                      std::map<std::string, std::string>& images) {
  const jbyteArray array1 = NewByteArray(*this, doc1);
  const jbyteArray array2 = NewByteArray(*this, doc2);
  const jbyteArray array3 = NewByteArray(*this, doc3);
  const jbyteArray array4 = NewByteArray(*this, doc4);
  const jstring nameString = NewJavaString(*this, name, nameLength);
  setMethod("renderModelToMemory", "([B[B[B[BLjava/lang/String;II)Ljava/util/HashMap;");
  const jobject map =
      jni()->CallObjectMethod(getObject(), getMethodID(), array1, array2, array3, array4,
                              nameString, static_cast<jint>(type), static_cast<jint>(option));
  exceptionCheck();
  if (map != nullptr && !readPictures(map, sizes, images)) return false;
  const bool answer = !images.empty();
  exceptionCheck();
  return answer;
}

bool JTreeImager::readPictures(jobject map, std::map<std::string, unsigned int>& sizes,
                               std::map<std::string, std::string>& images) {
  // The walk makes no exception check before the first value, and looks up every method again for
  // every entry.
  const jclass mapClass = jni()->GetObjectClass(map);
  const jmethodID entrySet = jni()->GetMethodID(mapClass, "entrySet", "()Ljava/util/Set;");
  const jobject set = jni()->CallObjectMethod(map, entrySet);
  const jclass setClass = jni()->FindClass("java/util/Set");
  const jmethodID iterator = jni()->GetMethodID(setClass, "iterator", "()Ljava/util/Iterator;");
  const jobject entries = jni()->CallObjectMethod(set, iterator);
  const jclass iteratorClass = jni()->FindClass("java/util/Iterator");
  const jmethodID hasNext = jni()->GetMethodID(iteratorClass, "hasNext", "()Z");
  const jmethodID next = jni()->GetMethodID(iteratorClass, "next", "()Ljava/lang/Object;");

  while (jni()->CallBooleanMethod(entries, hasNext) != JNI_FALSE) {
    const jobject entry = jni()->CallObjectMethod(entries, next);
    const jclass entryClass = jni()->GetObjectClass(entry);
    const jmethodID getKey = jni()->GetMethodID(entryClass, "getKey", "()Ljava/lang/Object;");
    const jmethodID getValue = jni()->GetMethodID(entryClass, "getValue", "()Ljava/lang/Object;");

    jbyteArray keyBytes = nullptr;
    std::string key;
    if (!readKey(entry, getKey, keyBytes, key)) {
      exceptionCheck();
      return false;
    }

    const auto value = static_cast<jbyteArray>(jni()->CallObjectMethod(entry, getValue));
    jbyte* elements = jni()->GetByteArrayElements(value, nullptr);
    const jsize length = jni()->GetArrayLength(value);
    // A name that is there already keeps what it has.
    sizes.insert({key, static_cast<unsigned int>(length)});
    images.insert({key, Picture(elements, length)});
    exceptionCheck();
    // Released against the key's array, on purpose. The guard keeps element buffers of its own and
    // does not care; without it, today's JVMs abort here when the value is empty.
    jni()->ReleaseByteArrayElements(keyBytes, elements, JNI_ABORT);
    exceptionCheck();
  }
  return true;
}

bool JTreeImager::readKey(jobject entry, jmethodID getKey, jbyteArray& keyBytes, std::string& key) {
  const jobject keyString = jni()->CallObjectMethod(entry, getKey);
  const jclass stringClass = jni()->FindClass("java/lang/String");
  const jmethodID getBytes = jni()->GetMethodID(stringClass, "getBytes", "()[B");
  keyBytes = static_cast<jbyteArray>(jni()->CallObjectMethod(keyString, getBytes));
  const jsize length = jni()->GetArrayLength(keyBytes);
  jbyte* elements = jni()->GetByteArrayElements(keyBytes, nullptr);
  // Not released: Java would write back to the key's bytes what it did not give.
  if (elements == nullptr && length > 0) return false;
  // Never freed, on purpose: one small block stays for each entry.
  const char* text =
      length > 0 ? NewTerminated(elements, static_cast<std::size_t>(length)) : nullptr;
  jni()->ReleaseByteArrayElements(keyBytes, elements, 0);
  if (length <= 0) RefuseNullString();
  if (text == nullptr) return false;
  // A key that holds a zero byte ends there.
  key = text;
  return true;
}

bool JTreeImager::renderModelToFiles(const std::string& doc1, const std::string& doc2,
                                     const std::string& doc3, const std::string& doc4,
                                     const unsigned short* name, int nameLength,
                                     const unsigned short* folder, int folderLength, int type,
                                     int option, std::vector<std::string>& files) {
  const jbyteArray array1 = NewByteArray(*this, doc1);
  const jbyteArray array2 = NewByteArray(*this, doc2);
  const jbyteArray array3 = NewByteArray(*this, doc3);
  const jbyteArray array4 = NewByteArray(*this, doc4);
  const jstring nameString = NewJavaString(*this, name, nameLength);
  const jstring folderString = NewJavaString(*this, folder, folderLength);
  setMethod("renderModelToFiles",
            "([B[B[B[BLjava/lang/String;Ljava/lang/String;II)[Ljava/lang/String;");
  const auto names = static_cast<jobjectArray>(jni()->CallObjectMethod(
      getObject(), getMethodID(), array1, array2, array3, array4, nameString, folderString,
      static_cast<jint>(type), static_cast<jint>(option)));
  exceptionCheck();
  if (names == nullptr) return false;
  const jsize length = jni()->GetArrayLength(names);
  for (jsize i = 0; i < length; ++i) {
    const auto file = static_cast<jstring>(jni()->GetObjectArrayElement(names, i));
    files.push_back(FromJString(file, "utf-8"));
  }
  // A local reference given back as if it were a global one, on purpose. The guard deletes it as
  // what it is; without it, today's JVMs abort here.
  jni()->DeleteGlobalRef(names);
  exceptionCheck();
  return true;
}

JTreeImager& JTreeImager::setModel(const std::string* model) {
  modelRef = model;
  return *this;
}

JTreeImager& JTreeImager::setFirstTexts(const std::vector<const unsigned short*>& texts,
                                        const std::vector<int>& lengths) {
  firstTexts = texts;
  firstLengths = lengths;
  return *this;
}

JTreeImager& JTreeImager::setSecondTexts(const std::vector<const unsigned short*>& texts,
                                         const std::vector<int>& lengths) {
  secondTexts = texts;
  secondLengths = lengths;
  return *this;
}

JTreeImager& JTreeImager::setText1(const unsigned short* text, long length) {
  text1 = text;
  text1Length = length;
  return *this;
}

JTreeImager& JTreeImager::setText2(const unsigned short* text, long length) {
  text2 = text;
  text2Length = length;
  return *this;
}

JTreeImager& JTreeImager::setImageType(long type) {
  imageType = type;
  return *this;
}

JTreeImager& JTreeImager::setExtra(long value) {
  extra = value;
  return *this;
}

bool JTreeImager::renderInteractiveToFile(std::vector<std::string>& /*files*/) {
  exceptionCheck();
  return false;
}
