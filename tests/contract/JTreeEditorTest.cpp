// SPDX-License-Identifier: Apache-2.0
#include "tree/JTreeEditor.h"

#include <algorithm>
#include <memory>

#include "tests/support/AccessorProbe.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/Thrown.h"
#include "tests/support/TreeFixture.h"

namespace chartbridge::testing {
namespace {

constexpr char kSizeOfModel[] = "([B[B)[J";
constexpr char kGivesBytes[] = "()[B";
constexpr char kRenderToFile[] = "([B[BLjava/lang/String;IZ)Z";
const unsigned short kPath[] = {'p', 0x00E9, 'x'};
constexpr char kPathText[] = "p\xC3\xA9";

// The binding by itself: no lock, no attach, no guard but those of the checks.
class JTreeEditorTest : public ContractTest {
 protected:
  JTreeEditorTest() {
    DefineTreeClasses(jvm);
    binding = std::make_unique<JTreeEditor>(jvm.Env());
    EventLog::Get().Clear();
  }

  FakeMethod& Method(const std::string& name, const std::string& signature) {
    return jvm.Method(kTreeEditorClass, name, signature);
  }

  static std::string Lookup(const std::string& name, const std::string& signature) {
    return "GetMethodID(class com/tesk/treemodeleditor/TreeEditor, " + name + ", " + signature +
           ")";
  }

  std::unique_ptr<JTreeEditor> binding;
};

TEST_F(JTreeEditorTest, ConstructionFindsTheClassAndMakesTheObject) {
  const JTreeEditor other(jvm.Env());
  EXPECT_TRUE(Happened(BindingConstruction(kTreeEditorClass)));
  EXPECT_EQ(other.getClass(), jvm.ClassReference(kTreeEditorClass));
  EXPECT_NE(other.getObject(), nullptr);
}

TEST_F(JTreeEditorTest, ConstructionKeepsANullObjectOfAConstructorThatThrows) {
  const jthrowable exception = jvm.MakeThrowable("java/lang/IllegalStateException", "no screen");
  jvm.Fail("NewObject", 1, exception);
  const JTreeEditor other(jvm.Env());
  EXPECT_EQ(other.getObject(), nullptr);
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(JTreeEditorTest, AConstructionThatThrowsPropagates) {
  jvm.On("ExceptionOccurred", 1, [] { throw JException("a", "b", "c"); });
  EXPECT_EQ(Thrown([this] { const JTreeEditor other(jvm.Env()); }), "JException(a, b, c)");
}

TEST_F(JTreeEditorTest, DestructionCallsNothing) {
  binding.reset();
  EXPECT_TRUE(Happened({}));
}

TEST_F(JTreeEditorTest, DestructionDropsTheEnvBeforeTheBaseEnds) {
  AccessorProbe::Get().Reset();
  binding.reset();
  EXPECT_EQ(AccessorProbe::Get().Destructions(), 1);
  EXPECT_EQ(AccessorProbe::Get().LastEnv(), nullptr);
}

TEST_F(JTreeEditorTest, AConstructionThatThrowsEndsTheBase) {
  AccessorProbe::Get().Reset();
  jvm.On("NewObject", 1, [] { throw JException("a", "b", "c"); });
  EXPECT_EQ(Thrown([this] { const JTreeEditor other(jvm.Env()); }), "JException(a, b, c)");
  EXPECT_EQ(AccessorProbe::Get().Destructions(), 1);
}

TEST_F(JTreeEditorTest, SettersLookUpCallAndCheck) {
  binding->setNeedsRerendering(true);
  EXPECT_TRUE(Happened(EditorCall("CallVoidMethod", "setNeedsRerendering", "(Z)V", "true")));
  binding->setThreadId(-1);
  EXPECT_TRUE(Happened(EditorCall("CallVoidMethod", "setThreadId", "(I)V", "-1")));
  binding->deActivate();
  EXPECT_TRUE(Happened(EditorCall("CallVoidMethod", "deActivate", "()V")));
  binding->setDPI(300);
  EXPECT_TRUE(Happened(EditorCall("CallVoidMethod", "setDPI", "(I)V", "300")));
  binding->close();
  EXPECT_TRUE(Happened(EditorCall("CallVoidMethod", "close", "()V")));
}

TEST_F(JTreeEditorTest, NeedsRerendering) {
  Method("needsRerendering", "()Z").ReturnsBoolean(true);
  EXPECT_TRUE(binding->needsRerendering());
  EXPECT_TRUE(Happened(EditorCall("CallBooleanMethod", "needsRerendering", "()Z")));
  Method("needsRerendering", "()Z").Throws(jvm.MakeThrowable("java/lang/Error", "x"));
  EXPECT_FALSE(binding->needsRerendering());
}

TEST_F(JTreeEditorTest, BooleansOfJavaAreTrueWhateverTheirBit) {
  const auto gives_two = [](const FakeCall&) {
    jvalue value{};
    value.z = 2;
    return value;
  };
  Method("needsRerendering", "()Z").Does(gives_two);
  EXPECT_TRUE(binding->needsRerendering());
  Method("renderToFile", kRenderToFile).Does(gives_two);
  EXPECT_TRUE(binding->renderToFile("", "", kPath, 1, TreeEditor::IMAGE_PNG, false));
}

TEST_F(JTreeEditorTest, SetSchemaPathLooksUpFirstAndChecksLast) {
  binding->setSchemaPath(kPath, 2);
  EXPECT_TRUE(Happened(SchemaPathCall("TreeEditor@1", kPathText)));
}

TEST_F(JTreeEditorTest, SetSchemaPathChecksNoString) {
  const jthrowable memory = jvm.MakeThrowable("java/lang/OutOfMemoryError", "heap");
  jvm.Fail("NewString", 1, memory);
  binding->setSchemaPath(kPath, 2);
  EXPECT_TRUE(Happened(Seq(Lookup("setSchemaPath", "(Ljava/lang/String;)V"),
                           "NewString(\"p\\xC3\\xA9\", 2)",
                           "CallVoidMethod(TreeEditor@1, setSchemaPath(Ljava/lang/String;)V, null)",
                           PendingException(memory))));
}

TEST_F(JTreeEditorTest, RenderPMMLToScreen) {
  binding->renderPMMLToScreen(-1, 2, 0x7FFF'FFFF'0000'0004L, 5, std::string("m\0m", 3), "");
  EXPECT_TRUE(Happened(Seq(ByteArrayArgument(1, std::string("m\0m", 3)), ByteArrayArgument(2, ""),
                           EditorCall("CallVoidMethod", "renderPMMLToScreen", "(IIII[B[B)V",
                                      "-1, 2, 4, 5, byte[]#1 \"m\\x00m\", byte[]#2 \"\""))));
}

TEST_F(JTreeEditorTest, RenderToFile) {
  Method("renderToFile", kRenderToFile).ReturnsBoolean(true);
  EXPECT_TRUE(binding->renderToFile("m", "", kPath, 2, TreeEditor::IMAGE_SVG, false));
  EXPECT_TRUE(
      Happened(Seq(ByteArrayArgument(1, "m"), ByteArrayArgument(2, ""), StringArgument(kPathText),
                   EditorCall("CallBooleanMethod", "renderToFile", kRenderToFile,
                              "byte[]#1 \"m\", byte[]#2 \"\", \"p\\xC3\\xA9\", 5, false"))));
}

TEST_F(JTreeEditorTest, ArraysThatJavaCannotMakeStillReachTheCall) {
  const jthrowable memory = jvm.MakeThrowable("java/lang/OutOfMemoryError", "heap");
  jvm.Fail("NewByteArray", 1, memory);
  EXPECT_FALSE(binding->renderToFile("m", "d", kPath, 2, TreeEditor::IMAGE_SVG, true));
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(events[0], "NewByteArray(1)");
  EXPECT_EQ(events[1], "ExceptionOccurred() -> OutOfMemoryError@1");
  EXPECT_EQ(events[events.size() - 2],
            "CallBooleanMethod(TreeEditor@1, renderToFile([B[BLjava/lang/String;IZ)Z, null, "
            "byte[]#1 \"d\", \"p\\xC3\\xA9\", 5, true)");
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(JTreeEditorTest, CalculateSizeArrayLooksUpBeforeTheArrays) {
  Method("calculateSizeArray", kSizeOfModel).Returns(jvm.MakeLongs("size", {1, 2, 3}));
  long width = 0;
  long height = 0;
  EXPECT_TRUE(binding->calculateSizeArray("m", "d", width, height));
  EXPECT_EQ(width, 1);
  EXPECT_EQ(height, 2);
  EXPECT_TRUE(Happened(
      Seq(Lookup("calculateSizeArray", kSizeOfModel), ByteArrayArgument(1, "m"),
          ByteArrayArgument(2, "d"),
          "CallObjectMethod(TreeEditor@1, calculateSizeArray([B[B)[J, byte[]#1 \"m\", byte[]#2 "
          "\"d\")",
          NoPendingException(), "GetArrayLength(long[] size)", NoPendingException(),
          "GetLongArrayElements(long[] size)", NoPendingException(),
          "ReleaseLongArrayElements(long[] size, elements, JNI_ABORT)", NoPendingException())));
}

TEST_F(JTreeEditorTest, GetSizeArray) {
  Method("getSizeArray", "()[J").Returns(jvm.MakeLongs("size", {0, 40}));
  long width = -1;
  long height = -1;
  EXPECT_FALSE(binding->getSizeArray(width, height));
  EXPECT_EQ(width, 0);
  EXPECT_EQ(height, 40);
  EXPECT_TRUE(Happened(
      Seq(EditorCall("CallObjectMethod", "getSizeArray", "()[J"), "GetArrayLength(long[] size)",
          NoPendingException(), "GetLongArrayElements(long[] size)", NoPendingException(),
          "ReleaseLongArrayElements(long[] size, elements, JNI_ABORT)", NoPendingException())));
}

TEST_F(JTreeEditorTest, SizesThatJavaDoesNotGiveAreFailure) {
  Method("getSizeArray", "()[J").Returns(jvm.MakeLongs("size", {1, 2}));
  const jthrowable memory = jvm.MakeThrowable("java/lang/OutOfMemoryError", "heap");
  jvm.Fail("GetLongArrayElements", 1, memory);
  long width = -1;
  long height = -2;
  EXPECT_FALSE(binding->getSizeArray(width, height));
  EXPECT_EQ(width, -1);
  EXPECT_EQ(height, -2);
  EXPECT_EQ(jvm.Pending(), nullptr);
  EXPECT_TRUE(Happened(
      Seq(EditorCall("CallObjectMethod", "getSizeArray", "()[J"), "GetArrayLength(long[] size)",
          NoPendingException(), "GetLongArrayElements(long[] size)", PendingException(memory),
          "ReleaseLongArrayElements(long[] size, null, JNI_ABORT)", NoPendingException())));
}

TEST_F(JTreeEditorTest, ExtractDisplayDataOfAnEmptyArray) {
  Method("extractDisplayData", kGivesBytes).Returns(jvm.MakeBytes("data", ""));
  EXPECT_EQ(binding->extractDisplayData(), "");
  EXPECT_TRUE(Happened(Seq(EditorCall("CallObjectMethod", "extractDisplayData", kGivesBytes),
                           "GetArrayLength(byte[] data)", NoPendingException(),
                           "GetByteArrayElements(byte[] data)", NoPendingException(),
                           "ReleaseByteArrayElements(byte[] data, elements, JNI_ABORT)",
                           NoPendingException())));
}

// Also those of an empty array, which are none to give. What was obtained is released either way.
TEST_F(JTreeEditorTest, BytesThatJavaDoesNotGiveAreEmpty) {
  for (const char* name : {"extractDisplayData", "extractCompressedPMML"}) {
    for (const char* content : {"abc", ""}) {
      Method(name, kGivesBytes).Returns(jvm.MakeBytes("data", content));
      jvm.Fail("GetByteArrayElements", 1);
      const bool display = std::string(name) == "extractDisplayData";
      EXPECT_EQ(display ? binding->extractDisplayData() : binding->extractCompressedPMML(), "");
      EXPECT_TRUE(Happened(
          Seq(EditorCall("CallObjectMethod", name, kGivesBytes), "GetArrayLength(byte[] data)",
              NoPendingException(), "GetByteArrayElements(byte[] data)", NoPendingException(),
              "ReleaseByteArrayElements(byte[] data, null, JNI_ABORT)", NoPendingException())));
    }
  }
}

TEST_F(JTreeEditorTest, AnExceptionInsteadOfBytesIsRecorded) {
  Method("extractDisplayData", kGivesBytes).Returns(jvm.MakeBytes("data", "abc"));
  const jthrowable memory = jvm.MakeThrowable("java/lang/OutOfMemoryError", "heap");
  jvm.Fail("GetByteArrayElements", 1, memory);
  EXPECT_EQ(binding->extractDisplayData(), "");
  EXPECT_TRUE(Happened(Seq(EditorCall("CallObjectMethod", "extractDisplayData", kGivesBytes),
                           "GetArrayLength(byte[] data)", NoPendingException(),
                           "GetByteArrayElements(byte[] data)", PendingException(memory),
                           "ReleaseByteArrayElements(byte[] data, null, JNI_ABORT)",
                           NoPendingException())));
}

TEST_F(JTreeEditorTest, NoReferenceIsDeleted) {
  Method("calculateSizeArray", kSizeOfModel).Returns(jvm.MakeLongs("size", {1, 2}));
  Method("extractDisplayData", kGivesBytes).Returns(jvm.MakeBytes("data", "abc"));
  long width = 0;
  long height = 0;
  binding->calculateSizeArray("m", "d", width, height);
  binding->extractDisplayData();
  binding->renderToFile("m", "d", kPath, 2, TreeEditor::IMAGE_SVG, true);
  binding->setSchemaPath(kPath, 2);
  binding.reset();
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_EQ(event.find("Ref("), std::string::npos) << event;
  }
}

TEST_F(JTreeEditorTest, NothingLocksAttachesOrAsksTheHost) {
  long width = 0;
  long height = 0;
  binding->calculateSizeArray("m", "d", width, height);
  binding->extractCompressedPMML();
  binding->renderPMMLToScreen(1, 2, 3, 4, "m", "d");
  EXPECT_TRUE(Happened(Source::kPlatform, {}));
}

TEST_F(JTreeEditorTest, AMissingMethodGoesOnWithNoMethod) {
  const jthrowable missing = jvm.MakeThrowable("java/lang/NoSuchMethodError", "needsRerendering");
  Method("needsRerendering", "()Z").ReturnsBoolean(true);
  jvm.Fail("GetMethodID", 1, missing);
  EXPECT_FALSE(binding->needsRerendering());
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_NE(std::find(events.begin(), events.end(), "CallBooleanMethod(TreeEditor@1, null)"),
            events.end());
}

TEST_F(JTreeEditorTest, WithoutAnEnvEveryMethodFailsWithoutJava) {
  binding->setEnv(nullptr);
  long width = -1;
  long height = -1;
  EXPECT_FALSE(binding->needsRerendering());
  EXPECT_FALSE(binding->getSizeArray(width, height));
  EXPECT_FALSE(binding->calculateSizeArray("m", "d", width, height));
  EXPECT_FALSE(binding->renderToFile("m", "d", kPath, 2, TreeEditor::IMAGE_SVG, true));
  EXPECT_EQ(binding->extractDisplayData(), "");
  EXPECT_EQ(binding->extractCompressedPMML(), "");
  binding->setSchemaPath(kPath, 2);
  binding->close();
  EXPECT_EQ(width, -1);
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

}  // namespace
}  // namespace chartbridge::testing
