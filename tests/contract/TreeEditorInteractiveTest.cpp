// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <limits>

#include "tests/support/FakePlatform.h"
#include "tests/support/Thrown.h"
#include "tests/support/TreeFixture.h"

namespace chartbridge::testing {
namespace {

constexpr char kTakesInt[] = "(I)V";
constexpr char kGivesBytes[] = "()[B";
constexpr char kSizeOfModel[] = "([B[B)[J";
constexpr char kRenderToFile[] = "([B[BLjava/lang/String;IZ)Z";

class TreeEditorInteractiveTest : public TreeEditorFixture {
 protected:
  // A byte[] that Java gave, read with a check after every step.
  static Events CheckedBytes(const std::string& array) {
    return Seq("GetArrayLength(" + array + ")", NoPendingException(),
               "GetByteArrayElements(" + array + ")", NoPendingException(),
               "ReleaseByteArrayElements(" + array + ", elements, JNI_ABORT)",
               NoPendingException());
  }

  // A long[] that Java gave, read as a size.
  static Events SizeResult(const std::string& array) {
    return Seq("GetArrayLength(long[] " + array + ")", NoPendingException(),
               "GetLongArrayElements(long[] " + array + ")", NoPendingException(),
               "ReleaseLongArrayElements(long[] " + array + ", elements, JNI_ABORT)",
               NoPendingException());
  }

  // The nested operation that measuring a model begins with.
  static Events NestedDeActivate() {
    return Seq("lock depth=2",
               Guarded(AttachTree(2), EditorCall("CallVoidMethod", "deActivate", "()V")),
               "unlock depth=1");
  }

  // A model and its display data, measured after the lookup of the method.
  static Events CalculateSizeCall() {
    return Seq(
        "GetMethodID(class com/tesk/treemodeleditor/TreeEditor, calculateSizeArray, "
        "([B[B)[J)",
        ByteArrayArgument(1, "<PMML/>"), ByteArrayArgument(2, "d"),
        "CallObjectMethod(TreeEditor@1, calculateSizeArray([B[B)[J, byte[]#1 \"<PMML/>\", "
        "byte[]#2 \"d\")",
        NoPendingException());
  }
};

// ---- Operations that only tell Java something.

TEST_F(TreeEditorInteractiveTest, SetThreadId) {
  StartInteractive();
  editor.SetThreadId(4711);
  EXPECT_TRUE(Happened(Seq(
      // Written out once; the other tests use the named steps.
      "lock depth=1", "fegetenv", "fegetenv", "TeskJVM::GetInstance", "AttachCurrentThread",
      "lock depth=2", "fegetenv", "fesetenv", "unlock depth=1", "fesetenv",
      "GetMethodID(class com/tesk/treemodeleditor/TreeEditor, setThreadId, (I)V)",
      "CallVoidMethod(TreeEditor@1, setThreadId(I)V, 4711)", "fegetenv",
      "ExceptionOccurred() -> null", "fesetenv", "fesetenv", "unlock depth=0")));
}

TEST_F(TreeEditorInteractiveTest, ThreadIdsAndResolutionsReachJavaWithTheirLow32Bits) {
  StartInteractive();
  const long beyond = 0x1'8000'0005L;
  editor.SetThreadId(beyond);
  EXPECT_TRUE(Happened(TreeFrame(
      AttachTree(), EditorCall("CallVoidMethod", "setThreadId", kTakesInt, "-2147483643"))));
  editor.SetThreadId(2147483648L);
  EXPECT_TRUE(Happened(TreeFrame(
      AttachTree(), EditorCall("CallVoidMethod", "setThreadId", kTakesInt, "-2147483648"))));
  editor.SetThreadId(std::numeric_limits<long>::max());
  EXPECT_TRUE(Happened(
      TreeFrame(AttachTree(), EditorCall("CallVoidMethod", "setThreadId", kTakesInt, "-1"))));
  editor.SetDPI(beyond);
  EXPECT_TRUE(Happened(
      TreeFrame(AttachTree(), EditorCall("CallVoidMethod", "setDPI", kTakesInt, "-2147483643"))));
}

TEST_F(TreeEditorInteractiveTest, SetDPI) {
  StartInteractive();
  editor.SetDPI(96);
  EXPECT_TRUE(
      Happened(TreeFrame(AttachTree(), EditorCall("CallVoidMethod", "setDPI", kTakesInt, "96"))));
}

TEST_F(TreeEditorInteractiveTest, SetNeedsRerendering) {
  StartInteractive();
  for (const bool flag : {true, false}) {
    editor.SetNeedsRerendering(flag);
    EXPECT_TRUE(Happened(TreeFrame(AttachTree(), EditorCall("CallVoidMethod", "setNeedsRerendering",
                                                            "(Z)V", flag ? "true" : "false"))));
  }
}

TEST_F(TreeEditorInteractiveTest, NeedsRerendering) {
  StartInteractive();
  for (const bool answer : {true, false}) {
    EditorMethod("needsRerendering", "()Z").ReturnsBoolean(answer);
    EXPECT_EQ(editor.NeedsRerendering(), answer);
    EXPECT_TRUE(Happened(
        TreeFrame(AttachTree(), EditorCall("CallBooleanMethod", "needsRerendering", "()Z"))));
  }
}

TEST_F(TreeEditorInteractiveTest, DeActivateAndCloseLeaveTheEditorStarted) {
  StartInteractive();
  editor.DeActivate();
  EXPECT_TRUE(Happened(TreeFrame(AttachTree(), EditorCall("CallVoidMethod", "deActivate", "()V"))));
  EXPECT_TRUE(editor.IsStarted());
  EventLog::Get().Clear();
  editor.Close();
  EXPECT_TRUE(Happened(TreeFrame(AttachTree(), EditorCall("CallVoidMethod", "close", "()V"))));
  EXPECT_TRUE(editor.IsStarted());
  EventLog::Get().Clear();
  // The same Java object.
  editor.SetDPI(72);
  EXPECT_TRUE(
      Happened(TreeFrame(AttachTree(), EditorCall("CallVoidMethod", "setDPI", kTakesInt, "72"))));
}

// ---- What the editor gives back.

TEST_F(TreeEditorInteractiveTest, ExtractDisplayData) {
  StartInteractive();
  const std::string bytes("zero \0 inside", 13);
  EditorMethod("extractDisplayData", kGivesBytes).Returns(jvm.MakeBytes("data", bytes));
  EXPECT_EQ(editor.ExtractDisplayData(), bytes);
  EXPECT_TRUE(Happened(TreeFrame(AttachTree(),
                                 EditorCall("CallObjectMethod", "extractDisplayData", kGivesBytes),
                                 CheckedBytes("byte[] data"))));
}

TEST_F(TreeEditorInteractiveTest, DisplayDataOfNullIsEmptyAndReadNoFurther) {
  StartInteractive();
  EditorMethod("extractDisplayData", kGivesBytes).Returns(nullptr);
  EXPECT_EQ(editor.ExtractDisplayData(), "");
  EXPECT_TRUE(Happened(
      TreeFrame(AttachTree(), EditorCall("CallObjectMethod", "extractDisplayData", kGivesBytes))));
}

TEST_F(TreeEditorInteractiveTest, ExtractCompressedPMML) {
  StartInteractive();
  const std::string bytes("\x1F\x8B\0\0", 4);
  EditorMethod("extractCompressedPMML", kGivesBytes).Returns(jvm.MakeBytes("pmml", bytes));
  EXPECT_EQ(editor.ExtractCompressedPMML(), bytes);
  EXPECT_TRUE(Happened(
      TreeFrame(AttachTree(), EditorCall("CallObjectMethod", "extractCompressedPMML", kGivesBytes),
                CheckedBytes("byte[] pmml"))));
}

TEST_F(TreeEditorInteractiveTest, CompressedPMMLOfNullIsReadAsItIs) {
  StartInteractive();
  EditorMethod("extractCompressedPMML", kGivesBytes).Returns(nullptr);
  EXPECT_EQ(editor.ExtractCompressedPMML(), "");
  // Unlike the display data: no test for null. A JVM that checks its arguments answers with
  // exceptions, which the checks clear.
  EXPECT_EQ(jvm.Pending(), nullptr);
  Events calls;
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    if (event.find("(null") != std::string::npos) calls.push_back(event);
  }
  EXPECT_TRUE(SameEvents(Seq("GetArrayLength(null)", "GetByteArrayElements(null)",
                             "ReleaseByteArrayElements(null, null, JNI_ABORT)"),
                         calls));
}

// ---- Sizes.

TEST_F(TreeEditorInteractiveTest, GetSize) {
  StartInteractive();
  EditorMethod("getSizeArray", "()[J").Returns(jvm.MakeLongs("size", {640, 480, 9}));
  long width = -1;
  long height = -1;
  EXPECT_TRUE(editor.GetSize(width, height));
  EXPECT_EQ(width, 640);
  EXPECT_EQ(height, 480);
  EXPECT_TRUE(Happened(TreeFrame(
      AttachTree(), EditorCall("CallObjectMethod", "getSizeArray", "()[J"), SizeResult("size"))));
}

TEST_F(TreeEditorInteractiveTest, GetSizeAttachesWithoutLookingForAnEditor) {
  long width = -1;
  long height = -2;
  EXPECT_FALSE(editor.GetSize(width, height));
  EXPECT_EQ(width, -1);
  EXPECT_EQ(height, -2);
  EXPECT_TRUE(Happened(TreeFrame(AttachTree())));
}

struct SizeCase {
  std::vector<jlong> longs;
  bool answer;
  bool written;
};

TEST_F(TreeEditorInteractiveTest, SizesOfEveryShape) {
  StartInteractive();
  const SizeCase cases[] = {
      {{}, false, false},          {{5}, false, false},         {{0, 40}, false, true},
      {{40, 0}, false, true},      {{0, 0}, false, true},       {{-3, 40}, false, true},
      {{40, -3}, false, true},     {{1, 1}, true, true},        {{1, 2, 3}, true, true},
      {{0, 0, 5, 6}, false, true}, {{1L << 40, 2}, true, true},
  };
  for (const SizeCase& test : cases) {
    const jlongArray array = jvm.MakeLongs("size", test.longs);
    EditorMethod("getSizeArray", "()[J").Returns(array);
    EditorMethod("calculateSizeArray", kSizeOfModel).Returns(array);
    for (const bool calculated : {false, true}) {
      long width = -1;
      long height = -2;
      const bool answer = calculated ? editor.CalculateSize("m", "d", width, height)
                                     : editor.GetSize(width, height);
      EXPECT_EQ(answer, test.answer);
      EXPECT_EQ(width, test.written ? test.longs[0] : -1);
      EXPECT_EQ(height, test.written ? test.longs[1] : -2);
      EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
    }
  }
}

TEST_F(TreeEditorInteractiveTest, AShortSizeIsReadNoFurtherThanItsLength) {
  StartInteractive();
  EditorMethod("getSizeArray", "()[J").Returns(jvm.MakeLongs("size", {5}));
  long width = -1;
  long height = -1;
  EXPECT_FALSE(editor.GetSize(width, height));
  EXPECT_TRUE(
      Happened(TreeFrame(AttachTree(), EditorCall("CallObjectMethod", "getSizeArray", "()[J"),
                         "GetArrayLength(long[] size)", NoPendingException())));
}

TEST_F(TreeEditorInteractiveTest, ASizeOfNullIsReadAsItIs) {
  StartInteractive();
  EditorMethod("getSizeArray", "()[J").Returns(nullptr);
  long width = -1;
  long height = -1;
  EXPECT_FALSE(editor.GetSize(width, height));
  EXPECT_EQ(width, -1);
  EXPECT_EQ(jvm.Pending(), nullptr);
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_NE(std::find(events.begin(), events.end(), "GetArrayLength(null)"), events.end());
  for (const std::string& event : events) {
    EXPECT_EQ(event.find("GetLongArrayElements"), std::string::npos) << event;
  }
}

TEST_F(TreeEditorInteractiveTest, CalculateSizeDeActivatesTheEditorFirst) {
  StartInteractive();
  EditorMethod("calculateSizeArray", kSizeOfModel).Returns(jvm.MakeLongs("size", {640, 480}));
  long width = -1;
  long height = -1;
  EXPECT_TRUE(editor.CalculateSize("<PMML/>", "d", width, height));
  EXPECT_EQ(width, 640);
  EXPECT_EQ(height, 480);
  EXPECT_TRUE(Happened(
      TreeFrame(AttachTree(), NestedDeActivate(), CalculateSizeCall(), SizeResult("size"))));
}

TEST_F(TreeEditorInteractiveTest, CalculateSizeOfAHeightOfZeroWritesBoth) {
  StartInteractive();
  EditorMethod("calculateSizeArray", kSizeOfModel).Returns(jvm.MakeLongs("size", {640, 0}));
  long width = -1;
  long height = -1;
  EXPECT_FALSE(editor.CalculateSize("<PMML/>", "d", width, height));
  EXPECT_EQ(width, 640);
  EXPECT_EQ(height, 0);
}

TEST_F(TreeEditorInteractiveTest, CalculateSizeMeasuresEvenIfJavaCannotDeActivate) {
  StartInteractive();
  EditorMethod("deActivate", "()V")
      .Throws(jvm.MakeThrowable("java/lang/IllegalStateException", "busy"));
  EditorMethod("calculateSizeArray", kSizeOfModel).Returns(jvm.MakeLongs("size", {640, 480}));
  long width = -1;
  long height = -1;
  EXPECT_TRUE(editor.CalculateSize("", "", width, height));
}

TEST_F(TreeEditorInteractiveTest, AJExceptionOfTheNestedDeActivateIsFalse) {
  StartInteractive();
  EditorMethod("deActivate", "()V").Runs([] { throw JException("a", "b", "c"); });
  long width = -1;
  long height = -1;
  EXPECT_FALSE(editor.CalculateSize("", "", width, height));
  EXPECT_TRUE(Happened(
      TreeFrame(AttachTree(), "lock depth=2",
                Guarded(AttachTree(2),
                        "GetMethodID(class com/tesk/treemodeleditor/TreeEditor, deActivate, ()V)",
                        "CallVoidMethod(TreeEditor@1, deActivate()V)"),
                "unlock depth=1")));
  EXPECT_EQ(width, -1);
}

TEST_F(TreeEditorInteractiveTest, AJExceptionOfTheNestedAttachIsFalse) {
  StartInteractive();
  int attached = 0;
  FakePlatform::Get().on_attach = [&attached] {
    if (++attached == 2) throw JException("a", "b", "c");
  };
  long width = -1;
  long height = -1;
  EXPECT_FALSE(editor.CalculateSize("", "", width, height));
  EXPECT_TRUE(Happened(
      TreeFrame(AttachTree(), "lock depth=2", Guarded(Guarded(Attach())), "unlock depth=1")));
}

TEST_F(TreeEditorInteractiveTest, OtherExceptionsOfTheNestedDeActivatePropagate) {
  StartInteractive();
  EditorMethod("deActivate", "()V").Runs([] { throw std::bad_alloc(); });
  long width = -1;
  long height = -1;
  EXPECT_EQ(Thrown([&] { editor.CalculateSize("", "", width, height); }), "std::bad_alloc");
  const Events events = EventLog::Get().Texts();
  EXPECT_TRUE(SameEvents(Seq("fesetenv", "unlock depth=1", "fesetenv", "unlock depth=0"),
                         Events(events.end() - 4, events.end())));
}

// ---- Drawing.

TEST_F(TreeEditorInteractiveTest, RenderPMMLAtLocation) {
  StartInteractive();
  editor.RenderPMMLAtLocation(1, -2, 0x1'0000'0003L, 4, "<PMML/>", "");
  EXPECT_TRUE(
      Happened(TreeFrame(AttachTree(), ByteArrayArgument(1, "<PMML/>"), ByteArrayArgument(2, ""),
                         EditorCall("CallVoidMethod", "renderPMMLToScreen", "(IIII[B[B)V",
                                    "1, -2, 3, 4, byte[]#1 \"<PMML/>\", byte[]#2 \"\""))));
}

TEST_F(TreeEditorInteractiveTest, RenderToFile) {
  StartInteractive();
  EditorMethod("renderToFile", kRenderToFile).ReturnsBoolean(true);
  EventLog::Get().Include(Source::kMemory);
  EXPECT_TRUE(editor.RenderToFile("<PMML/>", "d", "t.png", TreeEditor::IMAGE_PNG, true));
  EXPECT_TRUE(
      Happened(Seq("lock depth=1", Utf16Conversion("t.png", 1),
                   Guarded(AttachTree(), ByteArrayArgument(1, "<PMML/>"), ByteArrayArgument(2, "d"),
                           StringArgument("t.png"),
                           EditorCall("CallBooleanMethod", "renderToFile", kRenderToFile,
                                      "byte[]#1 \"<PMML/>\", byte[]#2 \"d\", \"t.png\", 2, true")),
                   "delete[] buffer 1", "unlock depth=0")));
}

TEST_F(TreeEditorInteractiveTest, RenderToFilePassesFlagAndTypeUnchanged) {
  StartInteractive();
  EXPECT_FALSE(editor.RenderToFile("", "", "t", static_cast<TreeEditor::IMAGE_TYPE>(-9), false));
  EXPECT_TRUE(Happened(Seq(
      "lock depth=1", Utf16Conversion("t"),
      Guarded(AttachTree(), ByteArrayArgument(1, ""), ByteArrayArgument(2, ""), StringArgument("t"),
              EditorCall("CallBooleanMethod", "renderToFile", kRenderToFile,
                         "byte[]#1 \"\", byte[]#2 \"\", \"t\", -9, false")),
      "unlock depth=0")));
}

TEST_F(TreeEditorInteractiveTest, RenderToFileOfAnEmptyPathPassesAnEmptyString) {
  StartInteractive();
  EditorMethod("renderToFile", kRenderToFile).ReturnsBoolean(true);
  EXPECT_TRUE(editor.RenderToFile("", "", "", TreeEditor::IMAGE_PNG, true));
  EXPECT_TRUE(Happened(Seq(
      "lock depth=1", Utf16Conversion(""),
      Guarded(AttachTree(), ByteArrayArgument(1, ""), ByteArrayArgument(2, ""), StringArgument(""),
              EditorCall("CallBooleanMethod", "renderToFile", kRenderToFile,
                         "byte[]#1 \"\", byte[]#2 \"\", \"\", 2, true")),
      "unlock depth=0")));
}

TEST_F(TreeEditorInteractiveTest, RenderToFileNeedsNoCodepage) {
  StartInteractive();
  EditorMethod("renderToFile", kRenderToFile).ReturnsBoolean(true);
  EXPECT_TRUE(editor.RenderToFile("", "", "caf\xC3\xA9", TreeEditor::IMAGE_PNG, true));
}

}  // namespace
}  // namespace chartbridge::testing
