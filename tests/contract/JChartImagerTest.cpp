// SPDX-License-Identifier: Apache-2.0
#include "chart/JChartImager.h"

#include <algorithm>
#include <memory>

#include "tests/support/ContractTest.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

constexpr char kClass[] = "com/tesk/charteditor/ChartImager";
constexpr char kObject[] = "ChartImager@1";

constexpr char kFileFromBuffer[] =
    "([BLjava/nio/ByteBuffer;Ljava/lang/String;IDLjava/lang/String;[BLjava/lang/String;[B)Z";
constexpr char kMapToFile[] =
    "([BLjava/nio/ByteBuffer;Ljava/lang/String;IDZLjava/lang/String;[BLjava/lang/String;[B)Z";
constexpr char kFileFromBytes[] =
    "([B[BLjava/lang/String;IDLjava/lang/String;[BLjava/lang/String;[B)Z";
constexpr char kToMem[] = "([BLjava/nio/ByteBuffer;IDLjava/lang/String;[BLjava/lang/String;[B)[B";
constexpr char kMapToMemory[] =
    "([BLjava/nio/ByteBuffer;IDZLjava/lang/String;[BLjava/lang/String;[B)[B";
constexpr char kEmbed[] = "([B[BLjava/nio/ByteBuffer;I)[B";
constexpr char kConvert[] = "([BLjava/lang/String;I)Z";
constexpr char kStyle[] = "([B[B)[B";

// A text as the editor hands it over.
struct Text {
  explicit Text(const std::string& utf8) : units(Utf16(utf8)) {}
  const jchar* Data() const { return reinterpret_cast<const jchar*>(units.data()); }
  int Length() const { return static_cast<int>(units.size()); }

  std::u16string units;
};

class JChartImagerTest : public ContractTest {
 protected:
  JChartImagerTest() {
    jvm.ClassWithConstructor(kClass);
    jvm.Method(kClass, "RenderToFile", kFileFromBuffer);
    jvm.Method(kClass, "RenderImageMapToFile", kMapToFile);
    jvm.Method(kClass, "RenderToFile", kFileFromBytes);
    jvm.Method(kClass, "RenderToMem", kToMem);
    jvm.Method(kClass, "RenderImageMapToMemory", kMapToMemory);
    jvm.Method(kClass, "EmbedHistogramInGraph", kEmbed);
    jvm.Method(kClass, "ConvertImage", kConvert);
    jvm.Method(kClass, "ApplyStyleSheet", kStyle);
    jvm.NameMemory(data, "data");
    imager = std::make_unique<JChartImager>(jvm.Env());
    EventLog::Get().Clear();
  }

  bool RenderBufferToFile(int type, bool flag) {
    return imager->RenderToFile("chart", data, 4, path.Data(), path.Length(), type, 62.5, "aux1",
                                "aux2", text1.Data(), text1.Length(), text2.Data(), text2.Length(),
                                flag);
  }

  bool RenderBytesToFile(int type) {
    return imager->RenderToFile("chart", "data", path.Data(), path.Length(), type, 62.5, "aux1",
                                "aux2", text1.Data(), text1.Length(), text2.Data(), text2.Length());
  }

  bool RenderToMem(int type, std::string& output) {
    return imager->RenderToMem("chart", "data", image_size, type, output, 62.5, "aux1", "aux2",
                               text1.Data(), text1.Length(), text2.Data(), text2.Length());
  }

  bool RenderMapToMemory(int type, bool flag) {
    return imager->RenderImageMapToMemory("chart", data, 4, type, output1, 62.5, output2, output3,
                                          flag, "aux1", "aux2", text1.Data(), text1.Length(),
                                          text2.Data(), text2.Length());
  }

  FakeMethod& Map() { return jvm.Method(kClass, "RenderImageMapToMemory", kMapToMemory); }
  FakeMethod& Mem() { return jvm.Method(kClass, "RenderToMem", kToMem); }
  FakeMethod& Style() { return jvm.Method(kClass, "ApplyStyleSheet", kStyle); }
  FakeMethod& Embed() { return jvm.Method(kClass, "EmbedHistogramInGraph", kEmbed); }

  static Events Call(const std::string& function, const std::string& name,
                     const std::string& signature, const std::string& arguments) {
    return JavaCall(function, kClass, kObject, name, signature, arguments);
  }

  static Events BufferToFileArguments() {
    return Seq(ByteArrayArgument(1, "chart"), StringArgument("out.png"),
               ByteArrayArgument(2, "aux1"), ByteArrayArgument(3, "aux2"), StringArgument("text1"),
               StringArgument("text2"), "NewDirectByteBuffer(data, 4)");
  }

  static Events MemArguments() {
    return Seq(ByteArrayArgument(1, "chart"), ByteArrayArgument(2, "aux1"),
               ByteArrayArgument(3, "aux2"), ByteArrayArgument(4, "data"), StringArgument("text1"),
               StringArgument("text2"));
  }

  static Events MapArguments() {
    return Seq(ByteArrayArgument(1, "chart"), ByteArrayArgument(2, "aux1"),
               ByteArrayArgument(3, "aux2"), StringArgument("text1"), StringArgument("text2"),
               "NewDirectByteBuffer(data, 4)");
  }

  static Events MemCall(const std::string& type) {
    return Call("CallObjectMethod", "RenderToMem", kToMem,
                "byte[]#1 \"chart\", byte[]#4 \"data\", " + type +
                    ", 62.5, \"text1\", byte[]#2 \"aux1\", \"text2\", byte[]#3 \"aux2\"");
  }

  static Events MapCall(const std::string& type, const std::string& negated_flag) {
    return Call("CallObjectMethod", "RenderImageMapToMemory", kMapToMemory,
                "byte[]#1 \"chart\", ByteBuffer(data, 4), " + type + ", 62.5, " + negated_flag +
                    ", \"text1\", byte[]#2 \"aux1\", \"text2\", byte[]#3 \"aux2\"");
  }

  static Events StyleEvents(const std::string& released) {
    return Seq(ByteArrayArgument(1, "<doc/>"), ByteArrayArgument(2, "<style/>"),
               Call("CallObjectMethod", "ApplyStyleSheet", kStyle,
                    "byte[]#1 \"<doc/>\", byte[]#2 \"<style/>\""),
               "GetArrayLength(byte[] styled)", NoPendingException(),
               "GetByteArrayElements(byte[] styled)", NoPendingException(),
               "ReleaseByteArrayElements(byte[] styled, " + released + ", JNI_ABORT)",
               NoPendingException());
  }

  const unsigned char data[4] = {'d', 'a', 't', 'a'};
  const Text path{"out.png"};
  const Text text1{"text1"};
  const Text text2{"text2"};
  unsigned int image_size = 77;
  std::string output1 = "old1";
  std::string output2 = "old2";
  std::string output3 = "old3";
  std::unique_ptr<JChartImager> imager;
};

// ---- Construction and destruction.

TEST_F(JChartImagerTest, ConstructionBindsClassAndObject) {
  const JChartImager other(jvm.Env());
  EXPECT_TRUE(Happened(BindingConstruction(kClass)));
  EXPECT_EQ(other.getClass(), jvm.ClassReference(kClass));
  EXPECT_EQ(jvm.Describe(other.getObject()), "ChartImager@2");
}

TEST_F(JChartImagerTest, ConstructionKeepsANullObject) {
  const jthrowable exception = jvm.MakeThrowable("java/lang/IllegalStateException", "no fonts");
  jvm.Fail("NewObject", 1, exception);
  const JChartImager other(jvm.Env());
  EXPECT_EQ(other.getObject(), nullptr);
  EXPECT_TRUE(Happened(Seq("FindClass(com/tesk/charteditor/ChartImager)",
                           "GetMethodID(class com/tesk/charteditor/ChartImager, <init>, ()V)",
                           "NewObject(class com/tesk/charteditor/ChartImager, <init>()V)",
                           PendingException(exception))));
}

TEST_F(JChartImagerTest, ConstructionWithoutTheClassGoesOn) {
  const jthrowable missing = jvm.MakeThrowable("java/lang/NoClassDefFoundError", "ChartImager");
  jvm.Fail("FindClass", 1, missing);
  const JChartImager other(jvm.Env());
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(std::count(events.begin(), events.end(), "NewObject(null, null)"), 1);
  EXPECT_EQ(other.getClass(), nullptr);
  EXPECT_EQ(other.getObject(), nullptr);
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(JChartImagerTest, ConstructionThatThrowsPropagates) {
  jvm.On("NewObject", 1, [] { throw JException("a", "b", "c"); });
  EXPECT_EQ(Thrown([this] { const JChartImager other(jvm.Env()); }), "JException(a, b, c)");
}

TEST_F(JChartImagerTest, DestructionReleasesNothing) {
  imager.reset();
  EXPECT_TRUE(Happened({}));
}

TEST_F(JChartImagerTest, MethodsNeitherLockNorAttachNorGuard) {
  RenderBufferToFile(2, false);
  RenderBytesToFile(2);
  RenderToMem(2, output1);
  EXPECT_TRUE(Happened(Source::kPlatform, {}));
}

// ---- File from buffer.

TEST_F(JChartImagerTest, RenderBufferToFile) {
  jvm.Method(kClass, "RenderToFile", kFileFromBuffer).ReturnsBoolean(true);
  EXPECT_TRUE(RenderBufferToFile(2, true));
  EXPECT_TRUE(
      Happened(Seq(BufferToFileArguments(),
                   Call("CallBooleanMethod", "RenderToFile", kFileFromBuffer,
                        "byte[]#1 \"chart\", ByteBuffer(data, 4), \"out.png\", 2, 62.5, \"text1\", "
                        "byte[]#2 \"aux1\", \"text2\", byte[]#3 \"aux2\""))));
}

TEST_F(JChartImagerTest, RenderBufferToFilePassesEveryOtherTypeThrough) {
  for (const int type : {-1, 0, 1, 5, 6, 8, 2147483647}) {
    RenderBufferToFile(type, false);
    const Events events = EventLog::Get().Texts(Source::kJni);
    const std::string& call = events[events.size() - 2];
    EXPECT_EQ(call.find("CallBooleanMethod(ChartImager@1, RenderToFile("), 0U) << call;
    EXPECT_NE(call.find("\"out.png\", " + std::to_string(type) + ", 62.5"), std::string::npos);
    EventLog::Get().Clear();
  }
}

TEST_F(JChartImagerTest, RenderBufferToFileOfTypeSevenIsTheImageMapWithTheFlagNegated) {
  jvm.Method(kClass, "RenderImageMapToFile", kMapToFile).ReturnsBoolean(true);
  EXPECT_TRUE(RenderBufferToFile(7, true));
  EXPECT_TRUE(Happened(
      Seq(BufferToFileArguments(),
          Call("CallBooleanMethod", "RenderImageMapToFile", kMapToFile,
               "byte[]#1 \"chart\", ByteBuffer(data, 4), \"out.png\", 7, 62.5, false, \"text1\", "
               "byte[]#2 \"aux1\", \"text2\", byte[]#3 \"aux2\""))));
  RenderBufferToFile(7, false);
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_NE(events[events.size() - 2].find(", 7, 62.5, true, \"text1\""), std::string::npos);
}

TEST_F(JChartImagerTest, RenderBufferToFileGivesJavasFalse) {
  EXPECT_FALSE(RenderBufferToFile(2, true));
  EXPECT_FALSE(RenderBufferToFile(7, true));
}

TEST_F(JChartImagerTest, RenderBufferToFileWithoutADirectBufferStopsAtOnce) {
  for (const int type : {2, 7}) {
    const jthrowable exception = jvm.MakeThrowable("java/lang/OutOfMemoryError", "direct");
    jvm.Fail("NewDirectByteBuffer", 1, exception);
    EXPECT_FALSE(RenderBufferToFile(type, true));
    const Events events = EventLog::Get().Texts();
    // No exception check and no Java call follow; the exception stays for the next check.
    EXPECT_EQ(events.back(), "NewDirectByteBuffer(data, 4)");
    EXPECT_EQ(jvm.Pending(), exception);
    jvm.SetPending(nullptr);
  }
}

TEST_F(JChartImagerTest, RenderBufferToFileWithAJavaExceptionIsLoggedAndFalse) {
  const jthrowable exception = jvm.MakeThrowable("java/io/IOException", "disk full");
  jvm.Method(kClass, "RenderToFile", kFileFromBuffer).Throws(exception);
  EXPECT_FALSE(RenderBufferToFile(2, true));
  const Events events = EventLog::Get().Texts();
  const Events check = PendingException(exception);
  ASSERT_GT(events.size(), check.size());
  EXPECT_TRUE(
      SameEvents(check, Events(events.end() - static_cast<long>(check.size()), events.end())));
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(JChartImagerTest, ALongBufferKeepsItsLength) {
  jvm.NameMemory(data + 1, "big");
  imager->RenderToFile("c", data + 1, 0x140000000UL, path.Data(), path.Length(), 2, 1, "", "",
                       text1.Data(), 0, text2.Data(), 0, false);
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(std::count(events.begin(), events.end(), "NewDirectByteBuffer(big, 5368709120)"), 1);
}

// ---- File from bytes.

TEST_F(JChartImagerTest, RenderBytesToFileWritesTheFirstAuxBytesTwice) {
  jvm.Method(kClass, "RenderToFile", kFileFromBytes).ReturnsBoolean(true);
  EXPECT_TRUE(RenderBytesToFile(2));
  EXPECT_TRUE(
      Happened(Seq(ByteArrayArgument(1, "chart"), ByteArrayArgument(2, "aux1"),
                   "SetByteArrayRegion(byte[]#2, 0, 4, \"aux1\")", NoPendingException(),
                   StringArgument("text1"), ByteArrayArgument(3, "aux2"),
                   ByteArrayArgument(4, "data"), StringArgument("text2"), StringArgument("out.png"),
                   Call("CallBooleanMethod", "RenderToFile", kFileFromBytes,
                        "byte[]#1 \"chart\", byte[]#4 \"data\", \"out.png\", 2, 62.5, \"text1\", "
                        "byte[]#2 \"aux1\", \"text2\", byte[]#3 \"aux2\""))));
}

TEST_F(JChartImagerTest, RenderBytesToFileOfTypeSevenIsStillRenderToFile) {
  EXPECT_FALSE(RenderBytesToFile(7));
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(events[events.size() - 2],
            std::string("CallBooleanMethod(ChartImager@1, RenderToFile") + kFileFromBytes +
                ", byte[]#1 \"chart\", byte[]#4 \"data\", \"out.png\", 7, 62.5, \"text1\", "
                "byte[]#2 \"aux1\", \"text2\", byte[]#3 \"aux2\")");
}

TEST_F(JChartImagerTest, EmptyTextsAndBytesAreEmptyNotNull) {
  const Text none("");
  imager->RenderToFile("", "", none.Data(), 0, 2, 100, "", "", none.Data(), 0, none.Data(), 0);
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(events[events.size() - 2],
            std::string("CallBooleanMethod(ChartImager@1, RenderToFile") + kFileFromBytes +
                ", byte[]#1 \"\", byte[]#4 \"\", \"\", 2, 100, \"\", byte[]#2 \"\", \"\", "
                "byte[]#3 \"\")");
  EXPECT_EQ(events[0], "NewByteArray(0)");
  EXPECT_EQ(events[2], "SetByteArrayRegion(byte[]#1, 0, 0, \"\")");
}

// ---- Memory from bytes.

TEST_F(JChartImagerTest, RenderToMemPassesAByteArrayWhereTheSignatureHasABuffer) {
  Mem().Returns(jvm.MakeBytes("picture", "PNG"));
  std::string output = "a longer old content";
  EXPECT_TRUE(RenderToMem(2, output));
  EXPECT_EQ(output, "PNG");
  EXPECT_EQ(image_size, 77U);
  EXPECT_TRUE(Happened(Seq(MemArguments(), MemCall("2"), "GetArrayLength(byte[] picture)",
                           "GetByteArrayElements(byte[] picture)", NoPendingException(),
                           "ReleaseByteArrayElements(byte[] picture, elements, JNI_ABORT)",
                           NoPendingException())));
}

TEST_F(JChartImagerTest, RenderToMemOfTypeSevenIsNoImageMap) {
  std::string output;
  EXPECT_FALSE(RenderToMem(7, output));
  EXPECT_TRUE(Happened(Seq(MemArguments(), MemCall("7"))));
}

TEST_F(JChartImagerTest, RenderToMemOfANullResultTellsWhetherTheOutputHeldAnything) {
  std::string output = "old";
  EXPECT_TRUE(RenderToMem(2, output));
  EXPECT_EQ(output, "old");
  EXPECT_TRUE(Happened(Seq(MemArguments(), MemCall("2"))));
  std::string empty;
  EXPECT_FALSE(RenderToMem(2, empty));
}

TEST_F(JChartImagerTest, RenderToMemOfAnEmptyResultEmptiesTheOutput) {
  Mem().Returns(jvm.MakeBytes("picture", ""));
  std::string output = "old";
  EXPECT_FALSE(RenderToMem(2, output));
  EXPECT_EQ(output, "");
}

TEST_F(JChartImagerTest, RenderToMemKeepsZeroBytes) {
  const std::string picture("\x89PNG\0\0\r\n", 8);
  Mem().Returns(jvm.MakeBytes("picture", picture));
  std::string output;
  EXPECT_TRUE(RenderToMem(2, output));
  EXPECT_EQ(output, picture);
}

TEST_F(JChartImagerTest, RenderToMemOfAnEmptyResultWithNullElementsEmptiesTheOutput) {
  Mem().Returns(jvm.MakeBytes("picture", ""));
  jvm.Fail("GetByteArrayElements", 1);
  std::string output = "old";
  EXPECT_FALSE(RenderToMem(2, output));
  EXPECT_EQ(output, "");
  EXPECT_TRUE(Happened(Seq(MemArguments(), MemCall("2"), "GetArrayLength(byte[] picture)",
                           "GetByteArrayElements(byte[] picture)", NoPendingException(),
                           "ReleaseByteArrayElements(byte[] picture, null, JNI_ABORT)",
                           NoPendingException())));
}

TEST_F(JChartImagerTest, RenderToMemWithoutElementsKeepsTheOutput) {
  for (const char* old : {"", "old"}) {
    Mem().Returns(jvm.MakeBytes("picture", "PNG"));
    jvm.Fail("GetByteArrayElements", 1);
    std::string output = old;
    EXPECT_EQ(RenderToMem(2, output), !output.empty());
    EXPECT_EQ(output, old);
    const Events events = EventLog::Get().Texts(Source::kJni);
    EXPECT_EQ(events[events.size() - 2],
              "ReleaseByteArrayElements(byte[] picture, null, JNI_ABORT)");
    EventLog::Get().Clear();
  }
}

TEST_F(JChartImagerTest, RenderToMemWithAJavaExceptionIsLogged) {
  const jthrowable exception = jvm.MakeThrowable("java/io/IOException", "disk full");
  Mem().Throws(exception);
  std::string output;
  EXPECT_FALSE(RenderToMem(2, output));
  EXPECT_EQ(jvm.Pending(), nullptr);
}

// ---- Memory from buffer.

std::string Block(const std::string& bytes) {
  const std::size_t n = bytes.size();
  const char length[4] = {static_cast<char>(n >> 24U), static_cast<char>(n >> 16U),
                          static_cast<char>(n >> 8U), static_cast<char>(n)};
  return std::string(length, 4) + bytes;
}

TEST_F(JChartImagerTest, AnImageMapFillsThreeBlocksAndReleases) {
  Map().Returns(jvm.MakeBytes("blocks", Block("PNG") + Block("<map/>") + Block("{}")));
  EXPECT_TRUE(RenderMapToMemory(7, true));
  EXPECT_EQ(output1, "PNG");
  EXPECT_EQ(output2, "<map/>");
  EXPECT_EQ(output3, "{}");
  EXPECT_TRUE(Happened(Seq(MapArguments(), MapCall("7", "false"), "GetArrayLength(byte[] blocks)",
                           "GetByteArrayElements(byte[] blocks)",
                           "ReleaseByteArrayElements(byte[] blocks, elements, JNI_ABORT)",
                           NoPendingException())));
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(JChartImagerTest, AnotherTypeFillsOneBlockAndKeepsTheElements) {
  for (const int type : {1, 2, 5, 8}) {
    Map().Returns(jvm.MakeBytes("blocks", Block("PNG") + Block("<map/>") + Block("{}")));
    output1 = "old1";
    EXPECT_TRUE(RenderMapToMemory(type, false));
    EXPECT_EQ(output1, "PNG");
    EXPECT_EQ(output2, "old2");
    EXPECT_EQ(output3, "old3");
    for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
      EXPECT_EQ(event.find("Release"), std::string::npos) << event;
    }
    EventLog::Get().Clear();
  }
  EXPECT_EQ(jvm.UnreleasedBuffers(), 4U);
}

TEST_F(JChartImagerTest, AnotherTypeStepByStep) {
  Map().Returns(jvm.MakeBytes("blocks", Block("PNG")));
  EXPECT_TRUE(RenderMapToMemory(5, false));
  EXPECT_TRUE(Happened(Seq(MapArguments(), MapCall("5", "true"), "GetArrayLength(byte[] blocks)",
                           "GetByteArrayElements(byte[] blocks)", NoPendingException())));
}

TEST_F(JChartImagerTest, BlockLengthsAreBigEndian) {
  const std::string picture(0x010203, 'p');
  Map().Returns(jvm.MakeBytes(
      "blocks", std::string("\0\1\2\3", 4) + picture + Block("") + Block(std::string(255, 'j'))));
  EXPECT_TRUE(RenderMapToMemory(7, true));
  EXPECT_EQ(output1, picture);
  EXPECT_EQ(output2, "");
  EXPECT_EQ(output3, std::string(255, 'j'));
}

TEST_F(JChartImagerTest, ALengthByteAbove127IsNoSign) {
  const std::string picture(200, 'p');
  Map().Returns(jvm.MakeBytes("blocks", Block(picture)));
  EXPECT_TRUE(RenderMapToMemory(2, true));
  EXPECT_EQ(output1, picture);
}

TEST_F(JChartImagerTest, AnEmptyFirstBlockIsFalse) {
  Map().Returns(jvm.MakeBytes("blocks", Block("") + Block("m") + Block("j")));
  EXPECT_FALSE(RenderMapToMemory(7, true));
  EXPECT_EQ(output1, "");
  EXPECT_EQ(output2, "m");
  EXPECT_EQ(output3, "j");
}

TEST_F(JChartImagerTest, ANullMapTellsWhetherTheFirstOutputHeldAnything) {
  EXPECT_TRUE(RenderMapToMemory(7, true));
  EXPECT_TRUE(Happened(Seq(MapArguments(), MapCall("7", "false"))));
  EXPECT_EQ(output1, "old1");
  output1.clear();
  EXPECT_FALSE(RenderMapToMemory(7, true));
  EXPECT_EQ(output2, "old2");
}

TEST_F(JChartImagerTest, AMapWithoutADirectBufferTellsWhetherTheFirstOutputHeldAnything) {
  jvm.Fail("NewDirectByteBuffer", 1);
  EXPECT_TRUE(RenderMapToMemory(7, true));
  EXPECT_TRUE(Happened(MapArguments()));
  output1.clear();
  jvm.Fail("NewDirectByteBuffer", 1);
  EXPECT_FALSE(RenderMapToMemory(7, true));
  EXPECT_EQ(EventLog::Get().Texts().back(), "NewDirectByteBuffer(data, 4)");
}

TEST_F(JChartImagerTest, AMapWithoutElementsKeepsTheOutputs) {
  Map().Returns(jvm.MakeBytes("blocks", Block("PNG") + Block("m") + Block("j")));
  jvm.Fail("GetByteArrayElements", 1);
  output1.clear();
  EXPECT_FALSE(RenderMapToMemory(7, true));
  EXPECT_EQ(output1, "");
  EXPECT_EQ(output2, "old2");
  EXPECT_EQ(output3, "old3");
  EXPECT_TRUE(Happened(Seq(MapArguments(), MapCall("7", "false"), "GetArrayLength(byte[] blocks)",
                           "GetByteArrayElements(byte[] blocks)",
                           "ReleaseByteArrayElements(byte[] blocks, null, JNI_ABORT)",
                           NoPendingException())));
}

// No block can be read from null, whatever the length says, which is not asked anyway.
TEST_F(JChartImagerTest, AnEmptyMapWithNullElementsKeepsTheOutputs) {
  Map().Returns(jvm.MakeBytes("blocks", ""));
  jvm.Fail("GetByteArrayElements", 1);
  EXPECT_TRUE(RenderMapToMemory(5, false));
  EXPECT_EQ(output1, "old1");
  EXPECT_TRUE(Happened(Seq(MapArguments(), MapCall("5", "true"), "GetArrayLength(byte[] blocks)",
                           "GetByteArrayElements(byte[] blocks)", NoPendingException())));
}

// ---- Utilities.

TEST_F(JChartImagerTest, EmbedHistogramNeverReleasesTheElements) {
  unsigned char histogram[3] = {'h', 'i', 's'};
  jvm.NameMemory(histogram, "histogram");
  Embed().Returns(jvm.MakeBytes("graph", std::string("g\0h", 3)));
  EXPECT_EQ(imager->EmbedHistogramInGraph("first", "second", histogram, 3, 4000000000U),
            std::string("g\0h", 3));
  EXPECT_TRUE(Happened(Seq(
      ByteArrayArgument(1, "first"), ByteArrayArgument(2, "second"),
      "NewDirectByteBuffer(histogram, 3)",
      Call("CallObjectMethod", "EmbedHistogramInGraph", kEmbed,
           "byte[]#1 \"first\", byte[]#2 \"second\", ByteBuffer(histogram, 3), -294967296"),
      "GetArrayLength(byte[] graph)", "GetByteArrayElements(byte[] graph)", NoPendingException())));
  EXPECT_EQ(jvm.UnreleasedBuffers(), 1U);
}

TEST_F(JChartImagerTest, EmbedHistogramOfANullResultIsEmpty) {
  unsigned char histogram[3] = {'h', 'i', 's'};
  EXPECT_EQ(imager->EmbedHistogramInGraph("first", "second", histogram, 3, 1), "");
  EXPECT_EQ(EventLog::Get().Texts().back(), "fesetenv");
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(JChartImagerTest, EmbedHistogramWithoutADirectBufferIsEmptyWithoutJava) {
  unsigned char histogram[3] = {'h', 'i', 's'};
  jvm.NameMemory(histogram, "histogram");
  jvm.Fail("NewDirectByteBuffer", 1);
  EXPECT_EQ(imager->EmbedHistogramInGraph("first", "second", histogram, 3, 1), "");
  EXPECT_TRUE(Happened(Seq(ByteArrayArgument(1, "first"), ByteArrayArgument(2, "second"),
                           "NewDirectByteBuffer(histogram, 3)")));
}

TEST_F(JChartImagerTest, EmbedHistogramWithoutElementsIsEmpty) {
  unsigned char histogram[3] = {'h', 'i', 's'};
  for (const char* graph : {"graph", ""}) {
    Embed().Returns(jvm.MakeBytes("graph", graph));
    jvm.Fail("GetByteArrayElements", 1);
    EXPECT_EQ(imager->EmbedHistogramInGraph("first", "second", histogram, 3, 1), "");
    const Events events = EventLog::Get().Texts(Source::kJni);
    EXPECT_EQ(events[events.size() - 2], "GetByteArrayElements(byte[] graph)");
    EventLog::Get().Clear();
  }
}

TEST_F(JChartImagerTest, ConvertImage) {
  jvm.Method(kClass, "ConvertImage", kConvert).ReturnsBoolean(true);
  EXPECT_TRUE(imager->ConvertImage("PNG", path.Data(), path.Length(), 1));
  EXPECT_TRUE(Happened(Seq(
      ByteArrayArgument(1, "PNG"), StringArgument("out.png"),
      Call("CallBooleanMethod", "ConvertImage", kConvert, "byte[]#1 \"PNG\", \"out.png\", 1"))));
  jvm.Method(kClass, "ConvertImage", kConvert).ReturnsBoolean(false);
  EXPECT_FALSE(imager->ConvertImage("PNG", path.Data(), path.Length(), 1));
}

TEST_F(JChartImagerTest, ApplyStyleSheetChecksAfterEveryStep) {
  Style().Returns(jvm.MakeBytes("styled", "<styled/>"));
  std::string document = "<doc/>";
  EXPECT_TRUE(imager->ApplyStyleSheet(document, "<style/>"));
  EXPECT_EQ(document, "<styled/>");
  EXPECT_TRUE(Happened(StyleEvents("elements")));
}

TEST_F(JChartImagerTest, ApplyStyleSheetOfAnEmptyResultEmptiesTheDocument) {
  Style().Returns(jvm.MakeBytes("styled", ""));
  std::string document = "<doc/>";
  EXPECT_FALSE(imager->ApplyStyleSheet(document, "<style/>"));
  EXPECT_EQ(document, "");
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(JChartImagerTest, ApplyStyleSheetDoesNotTestTheResultForNull) {
  std::string document = "<doc/>";
  EXPECT_FALSE(imager->ApplyStyleSheet(document, "<style/>"));
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(std::count(events.begin(), events.end(), "GetArrayLength(null)"), 1);
  EXPECT_EQ(std::count(events.begin(), events.end(), "GetByteArrayElements(null)"), 1);
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(JChartImagerTest, ApplyStyleSheetWithoutElementsKeepsTheDocument) {
  Style().Returns(jvm.MakeBytes("styled", "<styled/>"));
  jvm.Fail("GetByteArrayElements", 1);
  std::string document = "<doc/>";
  EXPECT_FALSE(imager->ApplyStyleSheet(document, "<style/>"));
  EXPECT_EQ(document, "<doc/>");
  EXPECT_TRUE(Happened(StyleEvents("null")));
}

TEST_F(JChartImagerTest, ApplyStyleSheetOfAnEmptyResultWithNullElementsEmptiesTheDocument) {
  Style().Returns(jvm.MakeBytes("styled", ""));
  jvm.Fail("GetByteArrayElements", 1);
  std::string document = "<doc/>";
  EXPECT_FALSE(imager->ApplyStyleSheet(document, "<style/>"));
  EXPECT_EQ(document, "");
  EXPECT_TRUE(Happened(StyleEvents("null")));
}

TEST_F(JChartImagerTest, ApplyStyleSheetWithoutAnEnvKeepsTheDocument) {
  imager->setEnv(nullptr);
  std::string document = "<doc/>";
  EXPECT_FALSE(imager->ApplyStyleSheet(document, "<style/>"));
  EXPECT_EQ(document, "<doc/>");
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

// ---- Lookups.

TEST_F(JChartImagerTest, AMissingMethodIsLoggedAndTheCallGoesOn) {
  const jthrowable missing = jvm.MakeThrowable("java/lang/NoSuchMethodError", "ConvertImage");
  jvm.Fail("GetMethodID", 1, missing);
  EXPECT_FALSE(imager->ConvertImage("PNG", path.Data(), path.Length(), 1));
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(std::count(events.begin(), events.end(), "CallBooleanMethod(ChartImager@1, null)"), 1);
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(JChartImagerTest, WithoutTheClassThePreviousMethodStays) {
  jvm.Fail("FindClass", 1);
  JChartImager unbound(jvm.Env());
  EventLog::Get().Clear();
  EXPECT_FALSE(unbound.ConvertImage("PNG", path.Data(), path.Length(), 1));
  const Events events = EventLog::Get().Texts(Source::kJni);
  for (const std::string& event : events) {
    EXPECT_NE(event.find("GetMethodID(class com/tesk"), 0U) << event;
  }
  EXPECT_EQ(std::count(events.begin(), events.end(), "CallBooleanMethod(null, null)"), 1);
}

TEST_F(JChartImagerTest, DeletesNoLocalReference) {
  Mem().Returns(jvm.MakeBytes("picture", "PNG"));
  std::string output;
  RenderToMem(2, output);
  RenderBufferToFile(2, true);
  RenderBytesToFile(2);
  RenderMapToMemory(7, true);
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_EQ(event.find("Ref("), std::string::npos) << event;
  }
}

}  // namespace
}  // namespace chartbridge::testing
