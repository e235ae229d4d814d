// SPDX-License-Identifier: Apache-2.0
#include "tree/JTreeImager.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <stdexcept>

#include "tests/support/AccessorProbe.h"
#include "tests/support/AllocationProbe.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/MallocProbe.h"
#include "tests/support/Thrown.h"
#include "tests/support/TreeFixture.h"

namespace chartbridge::testing {
namespace {

constexpr char kRenderToFile[] = "([B[BLjava/lang/String;IZI)Z";
constexpr char kSizeOfModel[] = "([B[B)[J";
constexpr char kRenderToMemory[] = "([B[BII)[B";
constexpr char kToMemory[] = "([B[B[B[BLjava/lang/String;II)Ljava/util/HashMap;";
constexpr char kToFiles[] = "([B[B[B[BLjava/lang/String;Ljava/lang/String;II)[Ljava/lang/String;";
const unsigned short kText1[] = {'o', 'n', 'e', '!'};
const unsigned short kText2[] = {'t', 'w', 'o'};

using Sizes = std::map<std::string, unsigned int>;
using Images = std::map<std::string, std::string>;

// The binding by itself: no lock, no attach, no guard but those of the checks.
class JTreeImagerTest : public ContractTest {
 protected:
  JTreeImagerTest() {
    DefineTreeClasses(jvm);
    binding = std::make_unique<JTreeImager>(jvm.Env());
    EventLog::Get().Clear();
  }

  FakeMethod& Method(const std::string& name, const std::string& signature) {
    return jvm.Method(kTreeImagerClass, name, signature);
  }

  static Events Documents() {
    return Seq(ByteArrayArgument(1, "1"), ByteArrayArgument(2, ""), ByteArrayArgument(3, "33"),
               ByteArrayArgument(4, "4"));
  }

  std::unique_ptr<JTreeImager> binding;
};

TEST_F(JTreeImagerTest, ConstructionFindsTheClassAndMakesTheObject) {
  const JTreeImager other(jvm.Env());
  EXPECT_TRUE(Happened(BindingConstruction(kTreeImagerClass)));
}

TEST_F(JTreeImagerTest, ConstructionKeepsANullObjectOfAConstructorThatThrows) {
  jvm.Fail("NewObject", 1, jvm.MakeThrowable("java/lang/IllegalStateException", "no fonts"));
  const JTreeImager other(jvm.Env());
  EXPECT_EQ(other.getObject(), nullptr);
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(JTreeImagerTest, AConstructionThatThrowsEndsTheBase) {
  AccessorProbe::Get().Reset();
  jvm.On("ExceptionOccurred", 1, [] { throw JException("a", "b", "c"); });
  EXPECT_EQ(Thrown([this] { const JTreeImager other(jvm.Env()); }), "JException(a, b, c)");
  EXPECT_EQ(AccessorProbe::Get().Destructions(), 1);
}

TEST_F(JTreeImagerTest, DestructionDropsTheEnvAndCallsNothing) {
  AccessorProbe::Get().Reset();
  binding.reset();
  EXPECT_TRUE(Happened({}));
  EXPECT_EQ(AccessorProbe::Get().Destructions(), 1);
  EXPECT_EQ(AccessorProbe::Get().LastEnv(), nullptr);
}

// ---- One model.

TEST_F(JTreeImagerTest, RenderToFileAlwaysSendsOneHundredPercent) {
  for (const bool answer : {true, false}) {
    Method("renderToFile", kRenderToFile).ReturnsBoolean(answer);
    EXPECT_EQ(binding->renderToFile("m", "d", kText2, 3, 77, answer), answer);
    const int first = answer ? 1 : 3;
    const std::string arrays = "byte[]#" + std::to_string(first) + " \"m\", byte[]#" +
                               std::to_string(first + 1) + " \"d\"";
    EXPECT_TRUE(Happened(
        Seq(ByteArrayArgument(first, "m"), ByteArrayArgument(first + 1, "d"), StringArgument("two"),
            ImagerCall("CallBooleanMethod", "renderToFile", kRenderToFile,
                       arrays + ", \"two\", 77, " + (answer ? "true" : "false") + ", 100"))));
  }
}

struct SizeCase {
  std::vector<jlong> longs;
  bool answer;
  bool written;
};

TEST_F(JTreeImagerTest, SizesOfEveryShape) {
  const SizeCase cases[] = {
      {{}, false, false},      {{5}, false, false},     {{120, 0}, false, true},
      {{0, 120}, false, true}, {{-1, 5}, false, true},  {{5, -1}, false, true},
      {{1, 1}, true, true},    {{1, 2, 3}, true, true}, {{1L << 33, 2}, true, true},
  };
  for (const SizeCase& test : cases) {
    Method("calculateSizeArray", kSizeOfModel).Returns(jvm.MakeLongs("size", test.longs));
    long width = -1;
    long height = -2;
    EXPECT_EQ(binding->calculateSizeArray("m", "d", width, height), test.answer);
    EXPECT_EQ(width, test.written ? test.longs[0] : -1);
    EXPECT_EQ(height, test.written ? test.longs[1] : -2);
    EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
  }
}

TEST_F(JTreeImagerTest, ASizeOfNullIsReadNoFurther) {
  long width = -1;
  long height = -2;
  EXPECT_FALSE(binding->calculateSizeArray("m", "d", width, height));
  EXPECT_EQ(width, -1);
  // Unlike the interactive binding, this one tests for null.
  EXPECT_TRUE(Happened(
      Seq("GetMethodID(class com/tesk/treemodeleditor/TreeImager, calculateSizeArray, ([B[B)[J)",
          ByteArrayArgument(1, "m"), ByteArrayArgument(2, "d"),
          "CallObjectMethod(TreeImager@1, calculateSizeArray([B[B)[J, byte[]#1 \"m\", byte[]#2 "
          "\"d\")",
          NoPendingException())));
}

TEST_F(JTreeImagerTest, SizesThatJavaDoesNotGiveAreFailure) {
  Method("calculateSizeArray", kSizeOfModel).Returns(jvm.MakeLongs("size", {1, 2}));
  jvm.Fail("GetLongArrayElements", 1);
  long width = -1;
  long height = -2;
  EXPECT_FALSE(binding->calculateSizeArray("m", "d", width, height));
  EXPECT_EQ(width, -1);
  EXPECT_EQ(height, -2);
  const Events events = EventLog::Get().Texts(Source::kJni);
  EXPECT_EQ(events[events.size() - 2], "ReleaseLongArrayElements(long[] size, null, JNI_ABORT)");
}

TEST_F(JTreeImagerTest, RenderToMemorySendsNoPathAndNoFlag) {
  Method("renderToMemory", kRenderToMemory).Returns(jvm.MakeBytes("image", "PNG"));
  unsigned int size = 7;
  std::string image = "before";
  EXPECT_TRUE(binding->renderToMemory("m", "d", kText1, size, 3, true, image));
  EXPECT_EQ(size, 3U);
  EXPECT_EQ(image, "PNG");
  EXPECT_TRUE(Happened(Seq(
      ByteArrayArgument(1, "m"), ByteArrayArgument(2, "d"),
      ImagerCall("CallObjectMethod", "renderToMemory", kRenderToMemory,
                 "byte[]#1 \"m\", byte[]#2 \"d\", 3, 100"),
      "GetArrayLength(byte[] image)", "GetByteArrayElements(byte[] image)", NoPendingException(),
      "ReleaseByteArrayElements(byte[] image, elements, JNI_ABORT)", NoPendingException())));
}

TEST_F(JTreeImagerTest, RenderToMemoryOfNullAnswersByTheImage) {
  unsigned int size = 7;
  std::string image = "abc";
  EXPECT_TRUE(binding->renderToMemory("m", "d", nullptr, size, 3, false, image));
  EXPECT_EQ(size, 7U);
  EXPECT_EQ(image, "abc");
  image.clear();
  EXPECT_FALSE(binding->renderToMemory("m", "d", nullptr, size, 3, false, image));
}

TEST_F(JTreeImagerTest, AnEmptyImageWithNullElementsEmptiesTheImage) {
  Method("renderToMemory", kRenderToMemory).Returns(jvm.MakeBytes("image", ""));
  jvm.Fail("GetByteArrayElements", 1);
  unsigned int size = 7;
  std::string image = "before";
  EXPECT_FALSE(binding->renderToMemory("m", "d", nullptr, size, 3, false, image));
  EXPECT_EQ(size, 0U);
  EXPECT_EQ(image, "");
  EXPECT_TRUE(Happened(Seq(
      ByteArrayArgument(1, "m"), ByteArrayArgument(2, "d"),
      ImagerCall("CallObjectMethod", "renderToMemory", kRenderToMemory,
                 "byte[]#1 \"m\", byte[]#2 \"d\", 3, 100"),
      "GetArrayLength(byte[] image)", "GetByteArrayElements(byte[] image)", NoPendingException(),
      "ReleaseByteArrayElements(byte[] image, null, JNI_ABORT)", NoPendingException())));
}

TEST_F(JTreeImagerTest, AnImageThatJavaDoesNotGiveLeavesTheImageAndTellsItsSize) {
  Method("renderToMemory", kRenderToMemory).Returns(jvm.MakeBytes("image", "PNG"));
  const jthrowable memory = jvm.MakeThrowable("java/lang/OutOfMemoryError", "heap");
  jvm.Fail("GetByteArrayElements", 1, memory);
  unsigned int size = 7;
  std::string image = "before";
  EXPECT_TRUE(binding->renderToMemory("m", "d", nullptr, size, 3, false, image));
  EXPECT_EQ(size, 3U);
  EXPECT_EQ(image, "before");
  EXPECT_TRUE(Happened(Seq(ByteArrayArgument(1, "m"), ByteArrayArgument(2, "d"),
                           ImagerCall("CallObjectMethod", "renderToMemory", kRenderToMemory,
                                      "byte[]#1 \"m\", byte[]#2 \"d\", 3, 100"),
                           "GetArrayLength(byte[] image)", "GetByteArrayElements(byte[] image)",
                           PendingException(memory),
                           "ReleaseByteArrayElements(byte[] image, null, JNI_ABORT)",
                           NoPendingException())));
}

TEST_F(JTreeImagerTest, SetSchemaPathLooksUpFirstAndChecksLast) {
  binding->setSchemaPath(kText2, 3);
  EXPECT_TRUE(Happened(SchemaPathCall("TreeImager@1", "two")));
}

// ---- A set of pictures in memory.

class PictureMapTest : public JTreeImagerTest {
 protected:
  void Gives(const std::vector<std::pair<std::string, jobject>>& entries) {
    Method("renderModelToMemory", kToMemory).Returns(jvm.MakeMap(entries));
  }

  bool Render() {
    return binding->renderModelToMemory("1", "", "33", "4", kText1, 4, 9, -1, sizes, images);
  }

  static Events Call() {
    return Seq(Documents(), StringArgument("one!"),
               ImagerCall("CallObjectMethod", "renderModelToMemory", kToMemory,
                          "byte[]#1 \"1\", byte[]#2 \"\", byte[]#3 \"33\", byte[]#4 \"4\", "
                          "\"one!\", 9, -1"));
  }

  // None of these calls is followed by a check.
  static Events OpenIteration() {
    return Seq("GetObjectClass(HashMap@1)",
               "GetMethodID(class java/util/HashMap, entrySet, ()Ljava/util/Set;)",
               "CallObjectMethod(HashMap@1, entrySet()Ljava/util/Set;)", "FindClass(java/util/Set)",
               "GetMethodID(class java/util/Set, iterator, ()Ljava/util/Iterator;)",
               "CallObjectMethod(Set@1, iterator()Ljava/util/Iterator;)",
               "FindClass(java/util/Iterator)",
               "GetMethodID(class java/util/Iterator, hasNext, ()Z)",
               "GetMethodID(class java/util/Iterator, next, ()Ljava/lang/Object;)");
  }

  static Events HasNext() { return Seq("CallBooleanMethod(Iterator@1, hasNext()Z)"); }

  // An entry up to its key's bytes.
  static Events Key(int entry, const std::string& key) {
    const std::string node = "HashMap$Node@" + std::to_string(entry);
    const std::string bytes = "byte[]#" + std::to_string(4 + entry);
    return Seq("CallObjectMethod(Iterator@1, next()Ljava/lang/Object;)",
               "GetObjectClass(" + node + ")",
               "GetMethodID(class java/util/HashMap$Node, getKey, ()Ljava/lang/Object;)",
               "GetMethodID(class java/util/HashMap$Node, getValue, ()Ljava/lang/Object;)",
               "CallObjectMethod(" + node + ", getKey()Ljava/lang/Object;)",
               "FindClass(java/lang/String)", "GetMethodID(class java/lang/String, getBytes, ()[B)",
               "CallObjectMethod(" + Quoted(key) + ", getBytes()[B)",
               "GetArrayLength(" + bytes + ")", "GetByteArrayElements(" + bytes + ")",
               "ReleaseByteArrayElements(" + bytes + ", elements, 0)");
  }

  static Events Value(int entry, const std::string& value) {
    const std::string node = "HashMap$Node@" + std::to_string(entry);
    const std::string key = "byte[]#" + std::to_string(4 + entry);
    return Seq("CallObjectMethod(" + node + ", getValue()Ljava/lang/Object;)",
               "GetByteArrayElements(" + value + ")", "GetArrayLength(" + value + ")",
               NoPendingException(),
               "ReleaseByteArrayElements(" + key + ", elements of " + value + ", JNI_ABORT)",
               NoPendingException());
  }

  Sizes sizes;
  Images images;
};

TEST_F(PictureMapTest, WalksTheMapEntryByEntry) {
  Gives({{"a", jvm.MakeBytes("a", "123")}, {"b", jvm.MakeBytes("b", "")}});
  EXPECT_TRUE(Render());
  EXPECT_EQ(sizes, (Sizes{{"a", 3U}, {"b", 0U}}));
  EXPECT_EQ(images, (Images{{"a", "123"}, {"b", ""}}));
  EXPECT_TRUE(
      Happened(Seq(Call(), OpenIteration(), HasNext(), Key(1, "a"), Value(1, "byte[] a"), HasNext(),
                   Key(2, "b"), Value(2, "byte[] b"), HasNext(), NoPendingException())));
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(PictureMapTest, AnEmptyMapIsFalse) {
  Gives({});
  EXPECT_FALSE(Render());
  EXPECT_TRUE(Happened(Seq(Call(), OpenIteration(), HasNext(), NoPendingException())));
}

TEST_F(PictureMapTest, AnEmptyMapIsTrueWhereTheHostHasPicturesAlready) {
  images = {{"old", "x"}};
  Gives({});
  EXPECT_TRUE(Render());
  Method("renderModelToMemory", kToMemory).Returns(nullptr);
  EXPECT_TRUE(Render());
}

TEST_F(PictureMapTest, NoMapIsReadNoFurther) {
  EXPECT_FALSE(Render());
  EXPECT_TRUE(Happened(Seq(Call(), NoPendingException())));
}

TEST_F(PictureMapTest, AMapOfBytesKeepsZeroBytes) {
  const std::string bytes("\0\1\0", 3);
  Gives({{"a", jvm.MakeBytes("a", bytes)}});
  EXPECT_TRUE(Render());
  EXPECT_EQ(images["a"], bytes);
}

TEST_F(PictureMapTest, TheFirstOfTwoEqualKeysWins) {
  Gives({{"a", jvm.MakeBytes("first", "1")}, {"a", jvm.MakeBytes("second", "22")}});
  EXPECT_TRUE(Render());
  EXPECT_EQ(sizes, (Sizes{{"a", 1U}}));
  EXPECT_EQ(images, (Images{{"a", "1"}}));
  EXPECT_TRUE(Happened(Seq(Call(), OpenIteration(), HasNext(), Key(1, "a"),
                           Value(1, "byte[] first"), HasNext(), Key(2, "a"),
                           Value(2, "byte[] second"), HasNext(), NoPendingException())));
}

TEST_F(PictureMapTest, WhatTheHostHasAlreadyStays) {
  sizes = {{"a", 99U}};
  Gives({{"a", jvm.MakeBytes("a", "123")}});
  EXPECT_TRUE(Render());
  EXPECT_EQ(sizes, (Sizes{{"a", 99U}}));
  EXPECT_EQ(images, (Images{{"a", "123"}}));

  images = {{"a", "old"}};
  sizes.clear();
  EXPECT_TRUE(Render());
  EXPECT_EQ(sizes, (Sizes{{"a", 3U}}));
  EXPECT_EQ(images, (Images{{"a", "old"}}));
}

TEST_F(PictureMapTest, AKeyEndsAtItsFirstZeroByte) {
  Gives({{std::string("ab\0cd", 5), jvm.MakeBytes("1", "1")},
         {std::string("ab\0ef", 5), jvm.MakeBytes("2", "22")},
         {std::string("\0x", 2), jvm.MakeBytes("3", "333")}});
  EXPECT_TRUE(Render());
  EXPECT_EQ(images, (Images{{"", "333"}, {"ab", "1"}}));
  EXPECT_EQ(sizes, (Sizes{{"", 3U}, {"ab", 1U}}));
}

TEST_F(PictureMapTest, KeysKeepTheBytesThatJavaEncodesThemTo) {
  Gives({{"caf\xC3\xA9", jvm.MakeBytes("1", "1")}});
  EXPECT_TRUE(Render());
  EXPECT_EQ(images.count("caf\xC3\xA9"), 1U);
}

TEST_F(PictureMapTest, AKeyWithoutBytesIsALogicError) {
  Gives({{"a", jvm.MakeBytes("a", "123")}, {"", jvm.MakeBytes("b", "1")}});
  std::string what;
  try {
    Render();
  } catch (const std::logic_error& error) {
    what = error.what();
  }
  EXPECT_NE(what, "");
  EXPECT_EQ(sizes, (Sizes{{"a", 3U}}));
  EXPECT_EQ(images, (Images{{"a", "123"}}));
  EXPECT_TRUE(Happened(Seq(Call(), OpenIteration(), HasNext(), Key(1, "a"), Value(1, "byte[] a"),
                           HasNext(), Key(2, ""))));
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(PictureMapTest, TheBytesOfEachKeyStayAllocated) {
  Gives({{"a", jvm.MakeBytes("a", "123")}, {"name.png", jvm.MakeBytes("b", "1")}});
  MallocProbe::Get().Start();
  EXPECT_TRUE(Render());
  const std::vector<MallocProbe::Block>& blocks = MallocProbe::Get().Blocks();
  ASSERT_EQ(blocks.size(), 2U);
  EXPECT_EQ(blocks[0].size, 2U);
  EXPECT_EQ(std::memcmp(blocks[0].memory, "a", 2), 0);
  EXPECT_FALSE(blocks[0].freed);
  EXPECT_EQ(blocks[1].size, 9U);
  EXPECT_EQ(std::memcmp(blocks[1].memory, "name.png", 9), 0);
  EXPECT_FALSE(blocks[1].freed);
  MallocProbe::Get().Stop();
}

TEST_F(PictureMapTest, AKeyWithoutBytesAllocatesNothing) {
  Gives({{"", jvm.MakeBytes("b", "1")}});
  MallocProbe::Get().Start();
  EXPECT_THROW(Render(), std::logic_error);
  EXPECT_TRUE(MallocProbe::Get().Blocks().empty());
  MallocProbe::Get().Stop();
}

TEST_F(PictureMapTest, AValueOfNullIsReadAsItIs) {
  Gives({{"a", nullptr}, {"b", jvm.MakeBytes("b", "1")}});
  EXPECT_TRUE(Render());
  EXPECT_EQ(sizes, (Sizes{{"a", 0U}, {"b", 1U}}));
  EXPECT_EQ(images, (Images{{"a", ""}, {"b", "1"}}));
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(PictureMapTest, AnEmptyValueWithNullElementsIsAnEmptyPicture) {
  Gives({{"a", jvm.MakeBytes("a", "")}});
  jvm.Fail("GetByteArrayElements", 2);
  EXPECT_TRUE(Render());
  EXPECT_EQ(sizes, (Sizes{{"a", 0U}}));
  EXPECT_EQ(images, (Images{{"a", ""}}));
  EXPECT_TRUE(
      Happened(Seq(Call(), OpenIteration(), HasNext(), Key(1, "a"),
                   "CallObjectMethod(HashMap$Node@1, getValue()Ljava/lang/Object;)",
                   "GetByteArrayElements(byte[] a)", "GetArrayLength(byte[] a)",
                   NoPendingException(), "ReleaseByteArrayElements(byte[]#5, null, JNI_ABORT)",
                   NoPendingException(), HasNext(), NoPendingException())));
}

// Its size is added, its picture cannot be made, and nothing is checked or released on the way out.
TEST_F(PictureMapTest, AValueThatJavaDoesNotGiveIsALogicError) {
  Gives({{"a", jvm.MakeBytes("a", "123")}, {"b", jvm.MakeBytes("b", "4")}});
  const jthrowable memory = jvm.MakeThrowable("java/lang/OutOfMemoryError", "heap");
  jvm.Fail("GetByteArrayElements", 4, memory);
  EXPECT_THROW(Render(), std::logic_error);
  EXPECT_EQ(sizes, (Sizes{{"a", 3U}, {"b", 1U}}));
  EXPECT_EQ(images, (Images{{"a", "123"}}));
  EXPECT_TRUE(
      Happened(Seq(Call(), OpenIteration(), HasNext(), Key(1, "a"), Value(1, "byte[] a"), HasNext(),
                   Key(2, "b"), "CallObjectMethod(HashMap$Node@2, getValue()Ljava/lang/Object;)",
                   "GetByteArrayElements(byte[] b)", "GetArrayLength(byte[] b)")));
  EXPECT_EQ(jvm.Pending(), memory);
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(PictureMapTest, AValueOfAKnownNameThatJavaDoesNotGiveIsALogicErrorToo) {
  sizes = {{"a", 99U}};
  images = {{"a", "old"}};
  Gives({{"a", jvm.MakeBytes("a", "123")}});
  jvm.Fail("GetByteArrayElements", 2);
  EXPECT_THROW(Render(), std::logic_error);
  EXPECT_EQ(sizes, (Sizes{{"a", 99U}}));
  EXPECT_EQ(images, (Images{{"a", "old"}}));
}

TEST_F(PictureMapTest, AKeyThatFindsNoMemoryIsFailure) {
  Gives({{"a", jvm.MakeBytes("a", "123")}});
  MallocProbe::Get().Start();
  MallocProbe::Get().FailNext();
  EXPECT_FALSE(Render());
  MallocProbe::Get().Stop();
  EXPECT_TRUE(sizes.empty());
  EXPECT_TRUE(images.empty());
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

TEST_F(PictureMapTest, AKeyThatJavaDoesNotGiveIsFailure) {
  Gives({{"a", jvm.MakeBytes("a", "123")}});
  jvm.Fail("GetByteArrayElements", 1, jvm.MakeThrowable("java/lang/OutOfMemoryError", "heap"));
  EXPECT_FALSE(Render());
  EXPECT_TRUE(images.empty());
  EXPECT_TRUE(sizes.empty());
}

TEST_F(PictureMapTest, ABrokenIteratorEndsTheWalk) {
  Gives({{"a", jvm.MakeBytes("a", "123")}});
  jvm.Method("java/util/Iterator", "hasNext", "()Z")
      .Throws(jvm.MakeThrowable("java/util/ConcurrentModificationException", "changed"));
  EXPECT_FALSE(Render());
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_F(PictureMapTest, ALongWalkDeletesNoReference) {
  std::vector<std::pair<std::string, jobject>> entries;
  for (int i = 0; i < 500; ++i) {
    entries.emplace_back("k" + std::to_string(i), jvm.MakeBytes("v", std::string(17, 'x')));
  }
  Gives(entries);
  EXPECT_TRUE(Render());
  EXPECT_EQ(images.size(), 500U);
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_EQ(event.find("Ref("), std::string::npos) << event;
  }
}

// ---- A set of files.

class FileListTest : public JTreeImagerTest {
 protected:
  bool Render() {
    return binding->renderModelToFiles("1", "", "33", "4", kText1, 4, kText2, 3, 9, -1, files);
  }

  static Events Call() {
    return Seq(Documents(), StringArgument("one!"), StringArgument("two"),
               ImagerCall("CallObjectMethod", "renderModelToFiles", kToFiles,
                          "byte[]#1 \"1\", byte[]#2 \"\", byte[]#3 \"33\", byte[]#4 \"4\", "
                          "\"one!\", \"two\", 9, -1"));
  }

  std::vector<std::string> files = {"old"};
};

TEST_F(FileListTest, AppendsTheNamesInOrder) {
  Method("renderModelToFiles", kToFiles)
      .Returns(jvm.MakeObjects("names", {jvm.MakeString("b"), jvm.MakeString("caf\xC3\xA9"),
                                         nullptr, jvm.MakeString("")}));
  EXPECT_TRUE(Render());
  EXPECT_EQ(files, (std::vector<std::string>{"old", "b", "caf\xC3\xA9", "", ""}));
  EXPECT_TRUE(Happened(
      Seq(Call(), "GetArrayLength(Object[] names)", "GetObjectArrayElement(Object[] names, 0)",
          ReadText("b", "utf-8"), "GetObjectArrayElement(Object[] names, 1)",
          ReadText("caf\xC3\xA9", "utf-8"), "GetObjectArrayElement(Object[] names, 2)",
          "GetObjectArrayElement(Object[] names, 3)", ReadText("", "utf-8"),
          // Once, for the array alone.
          "DeleteGlobalRef(Object[] names)", NoPendingException())));
}

TEST_F(FileListTest, AnEmptyListIsSuccess) {
  Method("renderModelToFiles", kToFiles).Returns(jvm.MakeObjects("names", {}));
  EXPECT_TRUE(Render());
  EXPECT_EQ(files, (std::vector<std::string>{"old"}));
  EXPECT_TRUE(Happened(Seq(Call(), "GetArrayLength(Object[] names)",
                           "DeleteGlobalRef(Object[] names)", NoPendingException())));
}

TEST_F(FileListTest, NoListIsFailure) {
  EXPECT_FALSE(Render());
  EXPECT_EQ(files, (std::vector<std::string>{"old"}));
  EXPECT_TRUE(Happened(Call()));
}

TEST_F(FileListTest, AnElementThatJavaDoesNotGiveIsAnEmptyName) {
  Method("renderModelToFiles", kToFiles)
      .Returns(jvm.MakeObjects("names", {jvm.MakeString("a"), jvm.MakeString("b")}));
  const jthrowable exception = jvm.MakeThrowable("java/lang/Error", "x");
  jvm.Fail("GetObjectArrayElement", 1, exception);
  EXPECT_TRUE(Render());
  EXPECT_EQ(files, (std::vector<std::string>{"old", "", "b"}));
  // Found by the one check, after the release.
  EXPECT_TRUE(Happened(Seq(Call(), "GetArrayLength(Object[] names)",
                           "GetObjectArrayElement(Object[] names, 0)",
                           "GetObjectArrayElement(Object[] names, 1)", ReadText("b", "utf-8"),
                           "DeleteGlobalRef(Object[] names)", PendingException(exception))));
}

// ---- The stub.

TEST_F(JTreeImagerTest, TheInteractiveRenderingChecksAndIsFalse) {
  std::vector<std::string> files = {"old"};
  EXPECT_FALSE(binding->renderInteractiveToFile(files));
  EXPECT_EQ(files, (std::vector<std::string>{"old"}));
  EXPECT_TRUE(Happened(NoPendingException()));

  const jthrowable exception = jvm.MakeThrowable("java/lang/Error", "left behind");
  jvm.SetPending(exception);
  EXPECT_FALSE(binding->renderInteractiveToFile(files));
  EXPECT_TRUE(Happened(PendingException(exception)));
}

TEST_F(JTreeImagerTest, TheStoreCallsNothingAndChains) {
  const std::string model;
  JTreeImager& chained = binding->setModel(&model)
                             .setFirstTexts({kText1}, {4})
                             .setSecondTexts({kText2}, {3})
                             .setText1(kText1, 4)
                             .setText2(kText2, 3)
                             .setImageType(2)
                             .setExtra(-1);
  EXPECT_EQ(&chained, binding.get());
  EXPECT_TRUE(Happened({}));
}

TEST_F(JTreeImagerTest, NothingLocksAttachesOrAsksTheHost) {
  Sizes sizes;
  Images images;
  std::vector<std::string> files;
  binding->renderModelToMemory("", "", "", "", kText1, 4, 1, 1, sizes, images);
  binding->renderModelToFiles("", "", "", "", kText1, 4, kText2, 3, 1, 1, files);
  binding->renderToFile("", "", kText1, 4, 1, true);
  EXPECT_TRUE(Happened(Source::kPlatform, {}));
}

TEST_F(JTreeImagerTest, WithoutAnEnvEveryMethodFailsWithoutJava) {
  binding->setEnv(nullptr);
  Sizes sizes;
  Images images;
  std::vector<std::string> files;
  long width = -1;
  long height = -1;
  unsigned int size = 7;
  std::string image;
  EXPECT_FALSE(binding->renderToFile("m", "d", kText1, 4, 1, true));
  EXPECT_FALSE(binding->calculateSizeArray("m", "d", width, height));
  EXPECT_FALSE(binding->renderToMemory("m", "d", kText1, size, 1, true, image));
  EXPECT_FALSE(binding->renderModelToMemory("", "", "", "", kText1, 4, 1, 1, sizes, images));
  EXPECT_FALSE(binding->renderModelToFiles("", "", "", "", kText1, 4, kText2, 3, 1, 1, files));
  EXPECT_FALSE(binding->renderInteractiveToFile(files));
  EXPECT_EQ(width, -1);
  EXPECT_EQ(size, 7U);
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

}  // namespace
}  // namespace chartbridge::testing
