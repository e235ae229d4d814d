// SPDX-License-Identifier: Apache-2.0
#include <exception>
#include <map>
#include <stdexcept>

#include "tests/support/AllocationProbe.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/Thrown.h"
#include "tests/support/TreeFixture.h"

namespace chartbridge::testing {
namespace {

constexpr char kToMemory[] = "([B[B[B[BLjava/lang/String;II)Ljava/util/HashMap;";
constexpr char kToFiles[] = "([B[B[B[BLjava/lang/String;Ljava/lang/String;II)[Ljava/lang/String;";

using Sizes = std::map<std::string, unsigned int>;
using Images = std::map<std::string, std::string>;

class TreeEditorBatchTest : public TreeEditorFixture {
 protected:
  TreeEditorBatchTest() { StartHeadless(); }

  bool RenderToMemory(Sizes& sizes, Images& images) {
    return editor.RenderModelToMemoryHeadless("1", "22", "", "4", "name", TreeEditor::IMAGE_GIF, -5,
                                              sizes, images);
  }

  bool RenderToFile(std::vector<std::string>& files) {
    return editor.RenderModelToFileHeadless("1", "22", "", "4", "name", "dir",
                                            TreeEditor::IMAGE_GIF, -5, files);
  }

  bool RenderInteractive(std::vector<std::string>& files) {
    return editor.RenderInteractiveToFileHeadless("model", {"a", "bb"}, {"ccc"}, "t1", "t22",
                                                  "t333", TreeEditor::IMAGE_GIF, -5, files);
  }

  FakeMethod& ToMemory() { return ImagerMethod("renderModelToMemory", kToMemory); }
  FakeMethod& ToFiles() { return ImagerMethod("renderModelToFiles", kToFiles); }

  static Events Documents() {
    return Seq(ByteArrayArgument(1, "1"), ByteArrayArgument(2, "22"), ByteArrayArgument(3, ""),
               ByteArrayArgument(4, "4"));
  }
};

constexpr char kDocuments[] = "byte[]#1 \"1\", byte[]#2 \"22\", byte[]#3 \"\", byte[]#4 \"4\"";

// ---- A set of pictures.

TEST_F(TreeEditorBatchTest, RenderModelToMemoryHeadless) {
  ToMemory().Returns(jvm.MakeMap({{"a", jvm.MakeBytes("a", "123")}}));
  EventLog::Get().Include(Source::kMemory);
  Sizes sizes;
  Images images;
  EXPECT_TRUE(RenderToMemory(sizes, images));
  EXPECT_EQ(sizes, (Sizes{{"a", 3U}}));
  EXPECT_EQ(images, (Images{{"a", "123"}}));
  EXPECT_TRUE(Happened(Seq(
      "lock depth=1", Utf16Conversion("name", 1),
      Guarded(
          AttachTree(), Documents(), StringArgument("name"),
          ImagerCall("CallObjectMethod", "renderModelToMemory", kToMemory,
                     std::string(kDocuments) + ", \"name\", 4, -5"),
          // The walk makes no check before it has the first value.
          "GetObjectClass(HashMap@1)",
          "GetMethodID(class java/util/HashMap, entrySet, ()Ljava/util/Set;)",
          "CallObjectMethod(HashMap@1, entrySet()Ljava/util/Set;)", "FindClass(java/util/Set)",
          "GetMethodID(class java/util/Set, iterator, ()Ljava/util/Iterator;)",
          "CallObjectMethod(Set@1, iterator()Ljava/util/Iterator;)",
          "FindClass(java/util/Iterator)", "GetMethodID(class java/util/Iterator, hasNext, ()Z)",
          "GetMethodID(class java/util/Iterator, next, ()Ljava/lang/Object;)",
          "CallBooleanMethod(Iterator@1, hasNext()Z)",
          "CallObjectMethod(Iterator@1, next()Ljava/lang/Object;)",
          "GetObjectClass(HashMap$Node@1)",
          "GetMethodID(class java/util/HashMap$Node, getKey, ()Ljava/lang/Object;)",
          "GetMethodID(class java/util/HashMap$Node, getValue, ()Ljava/lang/Object;)",
          "CallObjectMethod(HashMap$Node@1, getKey()Ljava/lang/Object;)",
          "FindClass(java/lang/String)", "GetMethodID(class java/lang/String, getBytes, ()[B)",
          "CallObjectMethod(\"a\", getBytes()[B)", "GetArrayLength(byte[]#5)",
          "GetByteArrayElements(byte[]#5)", "ReleaseByteArrayElements(byte[]#5, elements, 0)",
          "CallObjectMethod(HashMap$Node@1, getValue()Ljava/lang/Object;)",
          "GetByteArrayElements(byte[] a)", "GetArrayLength(byte[] a)", NoPendingException(),
          // The value's elements, given back against the key's array.
          "ReleaseByteArrayElements(byte[]#5, elements of byte[] a, JNI_ABORT)",
          NoPendingException(), "CallBooleanMethod(Iterator@1, hasNext()Z)", NoPendingException()),
      "delete[] buffer 1", "unlock depth=0")));
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(TreeEditorBatchTest, PicturesAreOnlyAdded) {
  ToMemory().Returns(
      jvm.MakeMap({{"b", jvm.MakeBytes("b", "4")}, {"a", jvm.MakeBytes("a", "123")}}));
  Sizes sizes = {{"other", 7U}};
  Images images = {{"a", "old"}};
  EXPECT_TRUE(RenderToMemory(sizes, images));
  EXPECT_EQ(images, (Images{{"a", "old"}, {"b", "4"}}));
  EXPECT_EQ(sizes, (Sizes{{"a", 3U}, {"b", 1U}, {"other", 7U}}));
}

TEST_F(TreeEditorBatchTest, SizesThatAreThereStay) {
  ToMemory().Returns(jvm.MakeMap({{"a", jvm.MakeBytes("a", "123")}}));
  Sizes sizes = {{"a", 99U}};
  Images images;
  EXPECT_TRUE(RenderToMemory(sizes, images));
  EXPECT_EQ(sizes, (Sizes{{"a", 99U}}));
  EXPECT_EQ(images, (Images{{"a", "123"}}));
}

TEST_F(TreeEditorBatchTest, AnEmptySetIsFalseWhateverTheHostHasAlready) {
  ToMemory().Returns(jvm.MakeMap({}));
  Sizes sizes = {{"a", 99U}};
  Images images = {{"a", "old"}};
  EXPECT_FALSE(RenderToMemory(sizes, images));
  EXPECT_EQ(sizes, (Sizes{{"a", 99U}}));
  EXPECT_EQ(images, (Images{{"a", "old"}}));
}

TEST_F(TreeEditorBatchTest, ANullSetIsFalseWhateverTheHostHasAlready) {
  ToMemory().Returns(nullptr);
  Sizes sizes;
  Images images = {{"a", "old"}};
  EXPECT_FALSE(RenderToMemory(sizes, images));
  EXPECT_EQ(images, (Images{{"a", "old"}}));
  EXPECT_TRUE(sizes.empty());
}

TEST_F(TreeEditorBatchTest, APictureThatJavaDoesNotGiveLeavesTheOperation) {
  ToMemory().Returns(
      jvm.MakeMap({{"a", jvm.MakeBytes("a", "123")}, {"b", jvm.MakeBytes("b", "45")}}));
  // Key and value of each.
  jvm.Fail("GetByteArrayElements", 4);
  Sizes sizes;
  Images images = {{"z", "old"}};
  EXPECT_THROW(RenderToMemory(sizes, images), std::logic_error);
  // Its size has been added, and no picture at all.
  EXPECT_EQ(sizes, (Sizes{{"a", 3U}, {"b", 2U}}));
  EXPECT_EQ(images, (Images{{"z", "old"}}));
  EXPECT_EQ(EventLog::Get().Texts().back(), "unlock depth=0");
}

TEST_F(TreeEditorBatchTest, APictureWithoutANameLeavesTheOperation) {
  ToMemory().Returns(jvm.MakeMap({{"a", jvm.MakeBytes("a", "123")},
                                  {"", jvm.MakeBytes("nameless", "5")},
                                  {"c", jvm.MakeBytes("c", "6")}}));
  EventLog::Get().Include(Source::kMemory);
  Sizes sizes = {{"z", 1U}};
  Images images = {{"z", "old"}};
  bool logic_error = false;
  try {
    RenderToMemory(sizes, images);
  } catch (const std::logic_error&) {
    logic_error = true;
  }
  EXPECT_TRUE(logic_error);
  // What came before it, and no picture at all.
  EXPECT_EQ(sizes, (Sizes{{"a", 3U}, {"z", 1U}}));
  EXPECT_EQ(images, (Images{{"z", "old"}}));
  const Events events = EventLog::Get().Texts();
  // The key's elements are given back; the value is never asked for.
  const Events tail(events.end() - 4, events.end());
  EXPECT_TRUE(SameEvents(Seq("ReleaseByteArrayElements(byte[]#6, elements, 0)", "fesetenv",
                             "delete[] buffer 1", "unlock depth=0"),
                         tail));
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(TreeEditorBatchTest, AnExceptionInTheWalkKeepsSizesAndDropsPictures) {
  ToMemory().Returns(
      jvm.MakeMap({{"a", jvm.MakeBytes("a", "123")}, {"b", jvm.MakeBytes("b", "4")}}));
  jvm.On("GetObjectClass", 3, [] { throw JException("a", "b", "c"); });
  Sizes sizes;
  Images images;
  EXPECT_EQ(Thrown([&] { RenderToMemory(sizes, images); }), "JException(a, b, c)");
  EXPECT_EQ(sizes, (Sizes{{"a", 3U}}));
  EXPECT_TRUE(images.empty());
}

TEST_F(TreeEditorBatchTest, TextsAndTypeGoToJavaUnchanged) {
  Sizes sizes;
  Images images;
  editor.RenderModelToMemoryHeadless("", "", "", "", "", static_cast<TreeEditor::IMAGE_TYPE>(-1),
                                     2147483647, sizes, images);
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(events[events.size() - 3],
            std::string("CallObjectMethod(TreeImager@1, renderModelToMemory") + kToMemory +
                ", byte[]#1 \"\", byte[]#2 \"\", byte[]#3 \"\", byte[]#4 \"\", \"\", -1, "
                "2147483647)");
}

// ---- A set of files.

TEST_F(TreeEditorBatchTest, RenderModelToFileHeadless) {
  ToFiles().Returns(jvm.MakeObjects("files", {jvm.MakeString("1.png"), nullptr}));
  EventLog::Get().Include(Source::kMemory);
  std::vector<std::string> files = {"old"};
  EXPECT_TRUE(RenderToFile(files));
  EXPECT_EQ(files, (std::vector<std::string>{"old", "1.png", ""}));
  Events read = ReadText("1.png", "utf-8");
  // The buffer of the text.
  read.insert(read.begin() + 4, "new[] 16 bytes: buffer 3");
  read.insert(read.begin() + 6, "delete[] buffer 3");
  EXPECT_TRUE(Happened(
      Seq("lock depth=1", Utf16Conversion("name", 1), Utf16Conversion("dir", 2),
          Guarded(AttachTree(), Documents(), StringArgument("name"), StringArgument("dir"),
                  ImagerCall("CallObjectMethod", "renderModelToFiles", kToFiles,
                             std::string(kDocuments) + ", \"name\", \"dir\", 4, -5"),
                  // No check between the length, the elements and the release.
                  "GetArrayLength(Object[] files)", "GetObjectArrayElement(Object[] files, 0)",
                  read, "GetObjectArrayElement(Object[] files, 1)",
                  // A local reference, given back as a global one.
                  "DeleteGlobalRef(Object[] files)", NoPendingException()),
          "delete[] buffer 2", "delete[] buffer 1", "unlock depth=0")));
}

TEST_F(TreeEditorBatchTest, NoFilesAreStillSuccess) {
  ToFiles().Returns(jvm.MakeObjects("files", {}));
  std::vector<std::string> files = {"old"};
  EXPECT_TRUE(RenderToFile(files));
  EXPECT_EQ(files, (std::vector<std::string>{"old"}));
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(events[events.size() - 2], "DeleteGlobalRef(Object[] files)");
}

TEST_F(TreeEditorBatchTest, NullInsteadOfFilesIsFalse) {
  ToFiles().Returns(nullptr);
  std::vector<std::string> files = {"old"};
  EXPECT_FALSE(RenderToFile(files));
  EXPECT_EQ(files, (std::vector<std::string>{"old"}));
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_EQ(event.find("DeleteGlobalRef"), std::string::npos);
  }
}

// ---- The interactive forms, which render nothing.

class InteractiveFileTest : public TreeEditorBatchTest {
 protected:
  // Three texts that live as long as the operation, and list elements that are gone at once.
  static Events Conversions() {
    return Seq(Utf16Conversion("t1", 1), Utf16Conversion("t22", 2), Utf16Conversion("t333", 3),
               Utf16Conversion("a", 4), "delete[] buffer 4", Utf16Conversion("bb", 5),
               "delete[] buffer 5", Utf16Conversion("ccc", 6), "delete[] buffer 6");
  }

  static Events Releases() {
    return Seq("delete[] buffer 3", "delete[] buffer 2", "delete[] buffer 1");
  }
};

TEST_F(InteractiveFileTest, ConvertsFillsTheStoreAndCallsNoJava) {
  EventLog::Get().Include(Source::kMemory);
  std::vector<std::string> files = {"old"};
  EXPECT_FALSE(RenderInteractive(files));
  EXPECT_EQ(files, (std::vector<std::string>{"old"}));
  EXPECT_TRUE(
      Happened(Seq("lock depth=1", Conversions(), Guarded(AttachTree(), NoPendingException()),
                   Releases(), "unlock depth=0")));
}

TEST_F(InteractiveFileTest, ConvertsWithoutABindingToo) {
  editor.StopHeadless();
  EventLog::Get().Clear();
  EventLog::Get().Include(Source::kMemory);
  std::vector<std::string> files = {"old"};
  EXPECT_FALSE(RenderInteractive(files));
  EXPECT_EQ(files, (std::vector<std::string>{"old"}));
  EXPECT_TRUE(
      Happened(Seq("lock depth=1", Conversions(), Guarded(), Releases(), "unlock depth=0")));
}

TEST_F(InteractiveFileTest, ConvertsNoElementOfEmptyLists) {
  std::vector<std::string> files;
  EXPECT_FALSE(editor.RenderInteractiveToFileHeadless("", {}, {}, "", "", "", TreeEditor::IMAGE_GIF,
                                                      0, files));
  EXPECT_TRUE(
      Happened(Seq("lock depth=1", Utf16Conversion(""), Utf16Conversion(""), Utf16Conversion(""),
                   Guarded(AttachTree(), NoPendingException()), "unlock depth=0")));
}

TEST_F(InteractiveFileTest, ClearsAPendingJavaException) {
  const jthrowable exception = jvm.MakeThrowable("java/lang/IllegalStateException", "left behind");
  jvm.SetPending(exception);
  std::vector<std::string> files;
  EXPECT_FALSE(RenderInteractive(files));
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(InteractiveFileTest, ExceptionsLeaveAfterTheBuffersAreFreed) {
  EventLog::Get().Include(Source::kMemory);
  FakePlatform::Get().on_attach = [] { throw JException("a", "b", "c"); };
  std::vector<std::string> files;
  EXPECT_EQ(Thrown([&] { RenderInteractive(files); }), "JException(a, b, c)");
  EXPECT_TRUE(Happened(Seq("lock depth=1", Conversions(), Guarded(Guarded(Attach())), Releases(),
                           "unlock depth=0")));

  AllocationProbe::Get().Reset();
  FakePlatform::Get().on_attach = [] { throw std::bad_alloc(); };
  EXPECT_EQ(Thrown([&] { RenderInteractive(files); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(Seq("lock depth=1", Conversions(), Guarded(Guarded(Attach())), Releases(),
                           "unlock depth=0")));
}

TEST_F(InteractiveFileTest, ThrowsACopyOfAJException) {
  const std::exception_ptr original = std::make_exception_ptr(JException("a", "b", "c"));
  const JException* raised = nullptr;
  try {
    std::rethrow_exception(original);
  } catch (const JException& exception) {
    raised = &exception;
  }
  FakePlatform::Get().on_attach = [&original] { std::rethrow_exception(original); };
  std::vector<std::string> files;
  bool received = false;
  try {
    RenderInteractive(files);
  } catch (const JException& exception) {
    received = true;
    EXPECT_NE(&exception, raised);
  }
  EXPECT_TRUE(received);
}

TEST_F(InteractiveFileTest, FailedConversionsFreeWhatThereIs) {
  EventLog::Get().Include(Source::kMemory);
  std::vector<std::string> files;
  for (int failing = 1; failing <= 6; ++failing) {
    AllocationProbe::Get().Reset();
    AllocationProbe::Get().FailNewArray(failing);
    EXPECT_EQ(Thrown([&] { RenderInteractive(files); }), "std::bad_alloc");
    int balance = 0;
    for (const std::string& event : EventLog::Get().Texts(Source::kMemory)) {
      balance += event.find("new[]") == 0 ? 1 : -1;
    }
    EXPECT_EQ(balance, 0) << failing;
    EXPECT_EQ(EventLog::Get().Texts().back(), "unlock depth=0");
    EventLog::Get().Clear();
  }
}

TEST_F(TreeEditorBatchTest, TheInteractiveMemoryFormDoesNothingAtAll) {
  Sizes sizes = {{"a", 1U}};
  Images images = {{"a", "old"}};
  EXPECT_FALSE(editor.RenderInteractiveToMemoryHeadless("model", {"a"}, {"b"}, "t1", "t2",
                                                        TreeEditor::IMAGE_GIF, 1, sizes, images));
  EXPECT_TRUE(Happened({}));
  EXPECT_EQ(sizes, (Sizes{{"a", 1U}}));
  EXPECT_EQ(images, (Images{{"a", "old"}}));
}

TEST_F(TreeEditorBatchTest, TheInteractiveMemoryFormNeedsNoOtherEditor) {
  TreeEditor* const used = TreeEditor::_instance;
  TreeEditor::_instance = nullptr;
  TreeEditor other;
  Sizes sizes;
  Images images;
  EXPECT_FALSE(other.RenderInteractiveToMemoryHeadless("", {}, {}, "", "", TreeEditor::IMAGE_GIF, 1,
                                                       sizes, images));
  EXPECT_EQ(TreeEditor::_instance, nullptr);
  EXPECT_TRUE(Happened({}));
  TreeEditor::_instance = used;
}

}  // namespace
}  // namespace chartbridge::testing
