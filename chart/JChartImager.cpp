// SPDX-License-Identifier: Apache-2.0
#include "chart/JChartImager.h"

#include "bridge/Marshalling.h"
#include "bridge/NullEnv.h"

using chartbridge::AssignElements;
using chartbridge::CopyByteArray;
using chartbridge::NewByteArray;
using chartbridge::NewDirectBuffer;
using chartbridge::NewJavaString;
using chartbridge::NullEnv;
using chartbridge::ReadLengthPrefixedBlock;

namespace {

constexpr jint kImageMap = 7;

// Java asks the opposite of what the host says.
jboolean Negated(bool flag) { return flag ? JNI_FALSE : JNI_TRUE; }

}  // namespace

JChartImager::JChartImager(JNIEnv* threadEnv) : JAccessor(threadEnv) {
  setClass("com/tesk/charteditor/ChartImager");
  setMethod("<init>", "()V");
  setObject(jni()->NewObject(getClass(), getMethodID()));
  exceptionCheck();
}

JChartImager::~JChartImager() { setEnv(nullptr); }

bool JChartImager::RenderToFile(const std::string& chart, const unsigned char* data,
                                unsigned long dataLength, const jchar* path, int pathLength,
                                int imageType, double size, const std::string& auxBytes1,
                                const std::string& auxBytes2, const jchar* auxText1,
                                int auxText1Length, const jchar* auxText2, int auxText2Length,
                                bool flag) {
  const jbyteArray chartArray = NewByteArray(*this, chart);
  const jstring pathString = NewJavaString(*this, path, pathLength);
  const jbyteArray auxArray1 = NewByteArray(*this, auxBytes1);
  const jbyteArray auxArray2 = NewByteArray(*this, auxBytes2);
  const jstring auxString1 = NewJavaString(*this, auxText1, auxText1Length);
  const jstring auxString2 = NewJavaString(*this, auxText2, auxText2Length);
  const jobject buffer = NewDirectBuffer(*this, data, dataLength);
  if (buffer == nullptr) return false;

  jboolean rendered = JNI_FALSE;
  if (imageType == kImageMap) {
    setMethod("RenderImageMapToFile",
              "([BLjava/nio/ByteBuffer;Ljava/lang/String;IDZLjava/lang/String;[B"
              "Ljava/lang/String;[B)Z");
    rendered = jni()->CallBooleanMethod(getObject(), getMethodID(), chartArray, buffer, pathString,
                                        kImageMap, size, Negated(flag), auxString1, auxArray1,
                                        auxString2, auxArray2);
  } else {
    setMethod("RenderToFile",
              "([BLjava/nio/ByteBuffer;Ljava/lang/String;IDLjava/lang/String;[B"
              "Ljava/lang/String;[B)Z");
    rendered = jni()->CallBooleanMethod(getObject(), getMethodID(), chartArray, buffer, pathString,
                                        static_cast<jint>(imageType), size, auxString1, auxArray1,
                                        auxString2, auxArray2);
  }
  exceptionCheck();
  return rendered != JNI_FALSE;
}

bool JChartImager::RenderToFile(const std::string& chart, const std::string& data,
                                const jchar* path, int pathLength, int imageType, double size,
                                const std::string& auxBytes1, const std::string& auxBytes2,
                                const jchar* auxText1, int auxText1Length, const jchar* auxText2,
                                int auxText2Length) {
  const jbyteArray chartArray = NewByteArray(*this, chart);
  const jbyteArray auxArray1 = NewByteArray(*this, auxBytes1);
  // Written a second time on purpose: harmless to Java, and part of the order of checks that this
  // form keeps.
  jni()->SetByteArrayRegion(auxArray1, 0, static_cast<jsize>(auxBytes1.size()),
                            reinterpret_cast<const jbyte*>(auxBytes1.data()));
  exceptionCheck();
  const jstring auxString1 = NewJavaString(*this, auxText1, auxText1Length);
  const jbyteArray auxArray2 = NewByteArray(*this, auxBytes2);
  const jbyteArray dataArray = NewByteArray(*this, data);
  const jstring auxString2 = NewJavaString(*this, auxText2, auxText2Length);
  const jstring pathString = NewJavaString(*this, path, pathLength);

  // There is no image-map form for data in a byte[]: the image-map type goes to this method too.
  setMethod("RenderToFile", "([B[BLjava/lang/String;IDLjava/lang/String;[BLjava/lang/String;[B)Z");
  const jboolean rendered = jni()->CallBooleanMethod(
      getObject(), getMethodID(), chartArray, dataArray, pathString, static_cast<jint>(imageType),
      size, auxString1, auxArray1, auxString2, auxArray2);
  exceptionCheck();
  return rendered != JNI_FALSE;
}

bool JChartImager::RenderToMem(const std::string& chart, const std::string& data,
                               unsigned int& /*imageSize*/, int imageType, std::string& output,
                               double size, const std::string& auxBytes1,
                               const std::string& auxBytes2, const jchar* auxText1,
                               int auxText1Length, const jchar* auxText2, int auxText2Length) {
  const jbyteArray chartArray = NewByteArray(*this, chart);
  const jbyteArray auxArray1 = NewByteArray(*this, auxBytes1);
  const jbyteArray auxArray2 = NewByteArray(*this, auxBytes2);
  const jbyteArray dataArray = NewByteArray(*this, data);
  const jstring auxString1 = NewJavaString(*this, auxText1, auxText1Length);
  const jstring auxString2 = NewJavaString(*this, auxText2, auxText2Length);

  // The data goes as a byte[] where the method takes a ByteBuffer, on purpose. The JNI guard wraps
  // it; without the guard today's JVMs do not survive it.
  setMethod("RenderToMem", "([BLjava/nio/ByteBuffer;IDLjava/lang/String;[BLjava/lang/String;[B)[B");
  const auto result = static_cast<jbyteArray>(jni()->CallObjectMethod(
      getObject(), getMethodID(), chartArray, dataArray, static_cast<jint>(imageType), size,
      auxString1, auxArray1, auxString2, auxArray2));
  exceptionCheck();
  if (result != nullptr) {
    jbyte* elements = CopyByteArray(*this, result, output);
    exceptionCheck();
    jni()->ReleaseByteArrayElements(result, elements, JNI_ABORT);
    exceptionCheck();
  }
  // The output is never cleared: bytes of an earlier call count when Java returns nothing.
  return !output.empty();
}

bool JChartImager::RenderImageMapToMemory(
    const std::string& chart, const unsigned char* data, unsigned long dataLength, int imageType,
    std::string& output1, double size, std::string& output2, std::string& output3, bool flag,
    const std::string& auxBytes1, const std::string& auxBytes2, const jchar* auxText1,
    int auxText1Length, const jchar* auxText2, int auxText2Length) {
  const jbyteArray chartArray = NewByteArray(*this, chart);
  const jbyteArray auxArray1 = NewByteArray(*this, auxBytes1);
  const jbyteArray auxArray2 = NewByteArray(*this, auxBytes2);
  const jstring auxString1 = NewJavaString(*this, auxText1, auxText1Length);
  const jstring auxString2 = NewJavaString(*this, auxText2, auxText2Length);
  const jobject buffer = NewDirectBuffer(*this, data, dataLength);
  if (buffer == nullptr) return !output1.empty();

  setMethod("RenderImageMapToMemory",
            "([BLjava/nio/ByteBuffer;IDZLjava/lang/String;[BLjava/lang/String;[B)[B");
  const auto result = static_cast<jbyteArray>(jni()->CallObjectMethod(
      getObject(), getMethodID(), chartArray, buffer, static_cast<jint>(imageType), size,
      Negated(flag), auxString1, auxArray1, auxString2, auxArray2));
  exceptionCheck();
  if (result != nullptr) {
    // Asked for and not used: the blocks say their own lengths, and Java is trusted with them.
    jni()->GetArrayLength(result);
    jbyte* elements = jni()->GetByteArrayElements(result, nullptr);
    // Only an image map has more blocks than one, and only its elements are released; pictures keep
    // theirs on purpose.
    const bool isImageMap = imageType == kImageMap;
    if (elements != nullptr) {
      const jbyte* position = ReadLengthPrefixedBlock(elements, output1);
      if (isImageMap) {
        position = ReadLengthPrefixedBlock(position, output2);
        ReadLengthPrefixedBlock(position, output3);
      }
    }
    if (isImageMap) jni()->ReleaseByteArrayElements(result, elements, JNI_ABORT);
    exceptionCheck();
  }
  return !output1.empty();
}

std::string JChartImager::EmbedHistogramInGraph(const std::string& first, const std::string& second,
                                                unsigned char* histogram,
                                                unsigned long histogramLength, unsigned int count) {
  const jbyteArray firstArray = NewByteArray(*this, first);
  const jbyteArray secondArray = NewByteArray(*this, second);
  const jobject buffer = NewDirectBuffer(*this, histogram, histogramLength);
  std::string graph;
  if (buffer == nullptr) return graph;

  setMethod("EmbedHistogramInGraph", "([B[BLjava/nio/ByteBuffer;I)[B");
  const auto result = static_cast<jbyteArray>(jni()->CallObjectMethod(
      getObject(), getMethodID(), firstArray, secondArray, buffer, static_cast<jint>(count)));
  exceptionCheck();
  if (result == nullptr) return graph;
  // The elements are not released, on purpose, unlike everywhere else.
  CopyByteArray(*this, result, graph);
  exceptionCheck();
  return graph;
}

bool JChartImager::ConvertImage(const std::string& image, const jchar* path, int pathLength,
                                int imageType) {
  const jbyteArray imageArray = NewByteArray(*this, image);
  const jstring pathString = NewJavaString(*this, path, pathLength);
  setMethod("ConvertImage", "([BLjava/lang/String;I)Z");
  const jboolean converted = jni()->CallBooleanMethod(getObject(), getMethodID(), imageArray,
                                                      pathString, static_cast<jint>(imageType));
  exceptionCheck();
  return converted != JNI_FALSE;
}

bool JChartImager::ApplyStyleSheet(std::string& document, const std::string& styleSheet) {
  // Without an env nothing reaches Java, and the zeros that the calls would give are no result that
  // may replace the host's document.
  if (jni() == NullEnv()) return false;
  const jbyteArray documentArray = NewByteArray(*this, document);
  const jbyteArray styleSheetArray = NewByteArray(*this, styleSheet);
  setMethod("ApplyStyleSheet", "([B[B)[B");
  // Not tested for null, on purpose: Java always answers an array, and the JNI guard makes a null
  // one read as empty.
  const auto result = static_cast<jbyteArray>(
      jni()->CallObjectMethod(getObject(), getMethodID(), documentArray, styleSheetArray));
  exceptionCheck();
  const jsize length = jni()->GetArrayLength(result);
  exceptionCheck();
  jbyte* elements = jni()->GetByteArrayElements(result, nullptr);
  exceptionCheck();
  const bool replaced = AssignElements(document, elements, length);
  jni()->ReleaseByteArrayElements(result, elements, JNI_ABORT);
  exceptionCheck();
  return replaced && length != 0;
}
