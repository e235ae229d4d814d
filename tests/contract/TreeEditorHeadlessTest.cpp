// SPDX-License-Identifier: Apache-2.0
#include "tests/support/FakePlatform.h"
#include "tests/support/Thrown.h"
#include "tests/support/TreeFixture.h"

namespace chartbridge::testing {
namespace {

constexpr char kRenderToFile[] = "([B[BLjava/lang/String;IZI)Z";
constexpr char kRenderToMemory[] = "([B[BII)[B";
constexpr char kSizeOfModel[] = "([B[B)[J";

class TreeEditorHeadlessTest : public TreeEditorFixture {
 protected:
  TreeEditorHeadlessTest() { StartHeadless(); }

  static Events Model() { return Seq(ByteArrayArgument(1, "<PMML/>"), ByteArrayArgument(2, "d")); }

  // The frame of the operations with a path, with the events of their memory.
  template <typename... Parts>
  static Events PathFrame(const std::string& path, const Parts&... parts) {
    return Seq("lock depth=1", Utf16Conversion(path, 1), Guarded(AttachTree(), parts...),
               "delete[] buffer 1", "unlock depth=0");
  }

  bool RenderToMemory(const std::string& path, bool flag, unsigned int& size, std::string& image) {
    return editor.RenderImageToMemoryHeadless("<PMML/>", "d", path, size, TreeEditor::IMAGE_JPEG,
                                              flag, image);
  }
};

TEST_F(TreeEditorHeadlessTest, RenderToFileHeadless) {
  ImagerMethod("renderToFile", kRenderToFile).ReturnsBoolean(true);
  EventLog::Get().Include(Source::kMemory);
  EXPECT_TRUE(editor.RenderToFileHeadless("<PMML/>", "d", "t.png", TreeEditor::IMAGE_PNG, true));
  EXPECT_TRUE(Happened(Seq(
      // Written out once; the other tests use the named steps.
      "lock depth=1", "ucnv_open(null)", "new[] 40 bytes: buffer 1", "ucnv_toUChars(20, \"t.png\")",
      "ucnv_fixFileSeparator(20)", "ucnv_close",
      // The outer guard, and the thread.
      "fegetenv", "fegetenv", "TeskJVM::GetInstance", "AttachCurrentThread", "lock depth=2",
      "fegetenv", "fesetenv", "unlock depth=1", "fesetenv",
      // The arguments, each call with its check.
      "NewByteArray(7)", "fegetenv", "ExceptionOccurred() -> null", "fesetenv",
      "SetByteArrayRegion(byte[]#1, 0, 7, \"<PMML/>\")", "fegetenv", "ExceptionOccurred() -> null",
      "fesetenv", "NewByteArray(1)", "fegetenv", "ExceptionOccurred() -> null", "fesetenv",
      "SetByteArrayRegion(byte[]#2, 0, 1, \"d\")", "fegetenv", "ExceptionOccurred() -> null",
      "fesetenv", "NewString(\"t.png\", 5)", "fegetenv", "ExceptionOccurred() -> null", "fesetenv",
      // The call, always at 100 percent.
      "GetMethodID(class com/tesk/treemodeleditor/TreeImager, renderToFile, "
      "([B[BLjava/lang/String;IZI)Z)",
      "CallBooleanMethod(TreeImager@1, renderToFile([B[BLjava/lang/String;IZI)Z, "
      "byte[]#1 \"<PMML/>\", byte[]#2 \"d\", \"t.png\", 2, true, 100)",
      "fegetenv", "ExceptionOccurred() -> null", "fesetenv", "fesetenv", "delete[] buffer 1",
      "unlock depth=0")));
}

TEST_F(TreeEditorHeadlessTest, RenderToFileHeadlessPassesTypeAndFlagUnchanged) {
  EventLog::Get().Include(Source::kMemory);
  EXPECT_FALSE(editor.RenderToFileHeadless("<PMML/>", "d", "f",
                                           static_cast<TreeEditor::IMAGE_TYPE>(123456), false));
  EXPECT_TRUE(Happened(
      PathFrame("f", Model(), StringArgument("f"),
                ImagerCall("CallBooleanMethod", "renderToFile", kRenderToFile,
                           "byte[]#1 \"<PMML/>\", byte[]#2 \"d\", \"f\", 123456, false, 100"))));
}

TEST_F(TreeEditorHeadlessTest, RenderToFileHeadlessConvertsThePathWithTheDefaultConverter) {
  editor.SetCodepage("ISO-8859-1");
  EventLog::Get().Clear();
  EventLog::Get().Include(Source::kMemory);
  editor.RenderToFileHeadless("<PMML/>", "d", "caf\xC3\xA9", TreeEditor::IMAGE_PNG, true);
  EXPECT_TRUE(Happened(PathFrame(
      "caf\xC3\xA9", Model(), StringArgument("caf\xC3\xA9"),
      ImagerCall("CallBooleanMethod", "renderToFile", kRenderToFile,
                 "byte[]#1 \"<PMML/>\", byte[]#2 \"d\", \"caf\\xC3\\xA9\", 2, true, 100"))));
}

TEST_F(TreeEditorHeadlessTest, RenderImageToMemoryHeadless) {
  const std::string bytes("P\0G", 3);
  ImagerMethod("renderToMemory", kRenderToMemory).Returns(jvm.MakeBytes("image", bytes));
  EventLog::Get().Include(Source::kMemory);
  unsigned int size = 0;
  std::string image = "before";
  EXPECT_TRUE(RenderToMemory("t.png", true, size, image));
  EXPECT_EQ(size, 3U);
  EXPECT_EQ(image, bytes);
  EXPECT_TRUE(Happened(PathFrame(
      "t.png", Model(),
      ImagerCall("CallObjectMethod", "renderToMemory", kRenderToMemory,
                 "byte[]#1 \"<PMML/>\", byte[]#2 \"d\", 1, 100"),
      "GetArrayLength(byte[] image)", "GetByteArrayElements(byte[] image)", NoPendingException(),
      "ReleaseByteArrayElements(byte[] image, elements, JNI_ABORT)", NoPendingException())));
}

TEST_F(TreeEditorHeadlessTest, PathAndFlagDoNotReachJavaInMemory) {
  const auto jni = [this](const std::string& path, bool flag) {
    unsigned int size = 0;
    std::string image;
    RenderToMemory(path, flag, size, image);
    Events calls;
    for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
      // Arrays are numbered through.
      calls.push_back(event.substr(0, event.find('#')));
    }
    EventLog::Get().Clear();
    return calls;
  };
  const Events calls = jni("t.png", false);
  EXPECT_TRUE(SameEvents(calls, jni("", true)));
  for (const std::string& event : calls) EXPECT_EQ(event.find("NewString"), std::string::npos);
}

TEST_F(TreeEditorHeadlessTest, NullInMemoryLeavesTheOutputsAndAnswersByThem) {
  ImagerMethod("renderToMemory", kRenderToMemory).Returns(nullptr);
  unsigned int size = 42;
  std::string image = "abc";
  EXPECT_TRUE(RenderToMemory("t.png", true, size, image));
  EXPECT_EQ(size, 42U);
  EXPECT_EQ(image, "abc");
  image.clear();
  EXPECT_FALSE(RenderToMemory("t.png", true, size, image));
  EXPECT_EQ(size, 42U);
}

TEST_F(TreeEditorHeadlessTest, AJavaExceptionInMemoryLeavesTheOutputsAndAnswersByThem) {
  ImagerMethod("renderToMemory", kRenderToMemory)
      .Throws(jvm.MakeThrowable("java/lang/IllegalStateException", "no model"));
  unsigned int size = 42;
  std::string image = "abc";
  EXPECT_TRUE(RenderToMemory("t.png", true, size, image));
  EXPECT_EQ(size, 42U);
  EXPECT_EQ(image, "abc");
}

TEST_F(TreeEditorHeadlessTest, AnEmptyImageReplacesTheOldOneAndIsFalse) {
  ImagerMethod("renderToMemory", kRenderToMemory).Returns(jvm.MakeBytes("image", ""));
  unsigned int size = 42;
  std::string image = "abc";
  EXPECT_FALSE(RenderToMemory("t.png", true, size, image));
  EXPECT_EQ(size, 0U);
  EXPECT_EQ(image, "");
}

TEST_F(TreeEditorHeadlessTest, CalculateSizeHeadless) {
  ImagerMethod("calculateSizeArray", kSizeOfModel).Returns(jvm.MakeLongs("size", {640, 480}));
  long width = -1;
  long height = -1;
  EXPECT_TRUE(editor.CalculateSizeHeadless("<PMML/>", "d", width, height));
  EXPECT_EQ(width, 640);
  EXPECT_EQ(height, 480);
  EXPECT_TRUE(Happened(TreeFrame(
      AttachTree(),
      // The lookup comes before the arrays here.
      "GetMethodID(class com/tesk/treemodeleditor/TreeImager, calculateSizeArray, ([B[B)[J)",
      Model(),
      "CallObjectMethod(TreeImager@1, calculateSizeArray([B[B)[J, byte[]#1 \"<PMML/>\", "
      "byte[]#2 \"d\")",
      NoPendingException(), "GetArrayLength(long[] size)", NoPendingException(),
      "GetLongArrayElements(long[] size)", NoPendingException(),
      "ReleaseLongArrayElements(long[] size, elements, JNI_ABORT)", NoPendingException())));
}

TEST_F(TreeEditorHeadlessTest, CalculateSizeHeadlessOfNothingWritesTheZeros) {
  ImagerMethod("calculateSizeArray", kSizeOfModel).Returns(jvm.MakeLongs("size", {0, 0}));
  long width = -1;
  long height = -1;
  EXPECT_FALSE(editor.CalculateSizeHeadless("", "", width, height));
  EXPECT_EQ(width, 0);
  EXPECT_EQ(height, 0);
}

TEST_F(TreeEditorHeadlessTest, CalculateSizeHeadlessDeActivatesNothing) {
  StartInteractive();
  long width = -1;
  long height = -1;
  editor.CalculateSizeHeadless("", "", width, height);
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_EQ(event.find("deActivate"), std::string::npos) << event;
  }
}

TEST_F(TreeEditorHeadlessTest, AfterAStopEveryOperationIsFalse) {
  editor.StopHeadless();
  EventLog::Get().Clear();
  unsigned int size = 42;
  std::string image = "abc";
  // Unlike a null of Java, no binding is a plain false.
  EXPECT_FALSE(RenderToMemory("t.png", true, size, image));
  EXPECT_EQ(size, 42U);
  EXPECT_EQ(image, "abc");
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

}  // namespace
}  // namespace chartbridge::testing
