// SPDX-License-Identifier: Apache-2.0
#include "bridge/Marshalling.h"

#include <algorithm>

#include "tests/support/ContractTest.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/Steps.h"

namespace chartbridge::testing {
namespace {

class MarshallingTest : public ContractTest {
 protected:
  JAccessor accessor{jvm.Env()};
};

// ---- Byte-array argument.

TEST_F(MarshallingTest, BytesBecomeAnArrayWithACheckAfterEachStep) {
  const jbyteArray array = NewByteArray(accessor, "bytes");
  EXPECT_EQ(ObjectOf(array)->bytes, "bytes");
  EXPECT_TRUE(Happened(Seq("NewByteArray(5)", NoPendingException(),
                           "SetByteArrayRegion(byte[]#1, 0, 5, \"bytes\")", NoPendingException())));
}

TEST_F(MarshallingTest, NoTerminatorIsSent) {
  const std::string bytes("a\0b", 3);
  EXPECT_EQ(ObjectOf(NewByteArray(accessor, bytes))->bytes, bytes);
}

TEST_F(MarshallingTest, EmptyBytesBecomeAnEmptyArray) {
  const jbyteArray array = NewByteArray(accessor, "");
  ASSERT_NE(array, nullptr);
  EXPECT_EQ(ObjectOf(array)->bytes, "");
  EXPECT_TRUE(Happened(ByteArrayArgument(1, "")));
}

TEST_F(MarshallingTest, AnArrayThatCannotBeMadeIsCheckedTwice) {
  const jthrowable memory = jvm.MakeThrowable("java/lang/OutOfMemoryError", "heap");
  jvm.Fail("NewByteArray", 1, memory);
  EXPECT_EQ(NewByteArray(accessor, "x"), nullptr);
  const Events events = EventLog::Get().Texts();
  const Events begin =
      Seq("NewByteArray(1)", PendingException(memory), "SetByteArrayRegion(null, 0, 1, \"x\")");
  ASSERT_GT(events.size(), begin.size());
  EXPECT_TRUE(
      SameEvents(begin, Events(events.begin(), events.begin() + static_cast<long>(begin.size()))));
  EXPECT_EQ(jvm.Pending(), nullptr);
}

// ---- Byte-array result.

TEST_F(MarshallingTest, AnArrayIsCopiedAndReleasedWithoutWritingBack) {
  std::string bytes = "a longer old content";
  EXPECT_TRUE(ReadByteArray(accessor, jvm.MakeBytes("result", "new"), bytes));
  EXPECT_EQ(bytes, "new");
  EXPECT_TRUE(Happened(Seq("GetArrayLength(byte[] result)", "GetByteArrayElements(byte[] result)",
                           "ReleaseByteArrayElements(byte[] result, elements, JNI_ABORT)",
                           NoPendingException())));
}

TEST_F(MarshallingTest, ANullArrayIsFailureWithoutAnyCall) {
  std::string bytes = "old";
  EXPECT_FALSE(ReadByteArray(accessor, nullptr, bytes));
  EXPECT_EQ(bytes, "old");
  EXPECT_TRUE(Happened({}));
}

TEST_F(MarshallingTest, AnEmptyArrayIsSuccess) {
  std::string bytes = "old";
  EXPECT_TRUE(ReadByteArray(accessor, jvm.MakeBytes("result", ""), bytes));
  EXPECT_EQ(bytes, "");
  EXPECT_TRUE(Happened(ByteArrayResult("result")));
}

TEST_F(MarshallingTest, ZeroBytesAreKept) {
  const std::string content("\0a\0", 3);
  std::string bytes;
  EXPECT_TRUE(ReadByteArray(accessor, jvm.MakeBytes("result", content), bytes));
  EXPECT_EQ(bytes, content);
}

// JVMs may have nothing to give for an empty array. What was obtained is released all the same.
TEST_F(MarshallingTest, NullElementsOfAnEmptyArrayAreSuccess) {
  jvm.Fail("GetByteArrayElements", 1);
  std::string bytes = "old";
  EXPECT_TRUE(ReadByteArray(accessor, jvm.MakeBytes("result", ""), bytes));
  EXPECT_EQ(bytes, "");
  EXPECT_TRUE(Happened(Seq("GetArrayLength(byte[] result)", "GetByteArrayElements(byte[] result)",
                           "ReleaseByteArrayElements(byte[] result, null, JNI_ABORT)",
                           NoPendingException())));
}

TEST_F(MarshallingTest, ElementsThatJavaDoesNotGiveAreFailure) {
  jvm.Fail("GetByteArrayElements", 1);
  std::string bytes = "old";
  EXPECT_FALSE(ReadByteArray(accessor, jvm.MakeBytes("result", "new"), bytes));
  EXPECT_EQ(bytes, "old");
  EXPECT_TRUE(Happened(Seq("GetArrayLength(byte[] result)", "GetByteArrayElements(byte[] result)",
                           "ReleaseByteArrayElements(byte[] result, null, JNI_ABORT)",
                           NoPendingException())));
}

TEST_F(MarshallingTest, CopiedElementsAreTheCallersToRelease) {
  std::string bytes = "old";
  jbyte* elements = CopyByteArray(accessor, jvm.MakeBytes("result", "new"), bytes);
  EXPECT_EQ(bytes, "new");
  EXPECT_EQ(jvm.UnreleasedBuffers(), 1U);
  EXPECT_NE(elements, nullptr);
  jvm.Fail("GetByteArrayElements", 1);
  EXPECT_EQ(CopyByteArray(accessor, jvm.MakeBytes("result", "lost"), bytes), nullptr);
  EXPECT_EQ(bytes, "new");
  jvm.Fail("GetByteArrayElements", 1);
  EXPECT_EQ(CopyByteArray(accessor, jvm.MakeBytes("result", ""), bytes), nullptr);
  EXPECT_EQ(bytes, "");
}

// ---- Direct buffer argument.

TEST_F(MarshallingTest, ADirectBufferSharesTheMemoryWithoutACheck) {
  unsigned char memory[8] = {};
  jvm.NameMemory(memory, "memory");
  const jobject buffer = NewDirectBuffer(accessor, memory, sizeof memory);
  EXPECT_EQ(ObjectOf(buffer)->address, memory);
  EXPECT_EQ(ObjectOf(buffer)->capacity, 8);
  EXPECT_TRUE(Happened(Seq("NewDirectByteBuffer(memory, 8)")));
}

TEST_F(MarshallingTest, ADirectBufferThatCannotBeMadeIsNullWithoutACheck) {
  unsigned char memory[8] = {};
  jvm.NameMemory(memory, "memory");
  jvm.Fail("NewDirectByteBuffer", 1);
  EXPECT_EQ(NewDirectBuffer(accessor, memory, sizeof memory), nullptr);
  EXPECT_TRUE(Happened(Seq("NewDirectByteBuffer(memory, 8)")));
}

// ---- UTF-16 string argument.

TEST_F(MarshallingTest, UnitsBecomeAString) {
  const std::u16string text = u"caf\u00E9";
  const jstring string = NewJavaString(accessor, reinterpret_cast<const jchar*>(text.data()), 4);
  EXPECT_EQ(ObjectOf(string)->text, text);
  EXPECT_TRUE(Happened(Seq("NewString(\"caf\\xC3\\xA9\", 4)", NoPendingException())));
}

TEST_F(MarshallingTest, ANativeTextBecomesAString) {
  const jstring string = NewJavaStringFromNative(accessor, "chart");
  EXPECT_EQ(ObjectOf(string)->text, u"chart");
  EXPECT_TRUE(Happened(Seq("TESKMBGenericToU16(\"A\", \"chart\")", "ucnv_open(null)",
                           "ucnv_fixFileSeparator(5)", "ucnv_close", "NewString(\"chart\", 5)",
                           NoPendingException())));
}

TEST_F(MarshallingTest, AnEmptyNativeTextMakesNoString) {
  EXPECT_EQ(NewJavaStringFromNative(accessor, ""), nullptr);
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

TEST_F(MarshallingTest, ANativeTextThatCannotBeConvertedMakesNoString) {
  FakePlatform::Get().generic_to_u16_result = 1;
  EXPECT_EQ(NewJavaStringFromNative(accessor, "chart"), nullptr);
  EXPECT_TRUE(Happened(Seq("TESKMBGenericToU16(\"A\", \"chart\")")));
}

// ---- UTF-8 string argument.

TEST_F(MarshallingTest, AUtf8TextBecomesAStringThroughTheHost) {
  const jstring string = NewJavaStringFromUtf8(accessor, "caf\xC3\xA9");
  EXPECT_EQ(ObjectOf(string)->text, u"caf\u00E9");
  const Events events = EventLog::Get().Texts();
  const Events begin = Seq("JNIAccessor", "ToJString(\"caf\\xC3\\xA9\", UTF-8)");
  ASSERT_GE(events.size(), 6U);
  EXPECT_TRUE(SameEvents(begin, Events(events.begin(), events.begin() + 2)));
  EXPECT_EQ(std::count(events.begin(), events.end(), "~JNIAccessor"), 1);
  EXPECT_EQ(std::count(events.begin(), events.end(), "ExceptionOccurred() -> null"), 1);
}

// ---- Transcoded string result.

TEST_F(MarshallingTest, AStringIsTranscodedByTheHostWithACheckAfterEachStep) {
  std::string text = "old";
  ReadTranscodedString(accessor, jvm.MakeString("message"), text);
  EXPECT_EQ(text, "message");
  EXPECT_TRUE(Happened(Seq("GetStringLength(\"message\")", NoPendingException(),
                           "GetStringChars(\"message\")", NoPendingException(),
                           "TESKMBTranscodeU8(\"message\")", "TESKMBRelease(\"message\")",
                           "ReleaseStringChars(\"message\", elements)", NoPendingException())));
}

TEST_F(MarshallingTest, ANullStringLeavesTheTextWithoutAnyCall) {
  std::string text = "old";
  ReadTranscodedString(accessor, nullptr, text);
  EXPECT_EQ(text, "old");
  EXPECT_TRUE(Happened({}));
}

TEST_F(MarshallingTest, AWrongLengthChangesNothing) {
  for (const char* content : {"message", ""}) {
    std::string text = "old";
    jvm.Fail("GetStringLength", 1);
    ReadTranscodedString(accessor, jvm.MakeString(content), text);
    EXPECT_EQ(text, content);
    EXPECT_TRUE(Happened(TranscodedResult(content)));
  }
}

TEST_F(MarshallingTest, UnitsThatJavaDoesNotGiveLeaveTheText) {
  for (const char* content : {"message", ""}) {
    std::string text = "old";
    jvm.Fail("GetStringChars", 1);
    ReadTranscodedString(accessor, jvm.MakeString(content), text);
    EXPECT_EQ(text, "old");
    const std::string string = Quoted(content);
    EXPECT_TRUE(Happened(Seq("GetStringLength(" + string + ")", NoPendingException(),
                             "GetStringChars(" + string + ")", NoPendingException(),
                             "ReleaseStringChars(" + string + ", null)", NoPendingException())));
  }
}

TEST_F(MarshallingTest, TheLengthsExceptionIsLoggedAndTheStringStillRead) {
  const jthrowable exception = jvm.MakeThrowable("java/lang/IllegalStateException", "length");
  jvm.Fail("GetStringLength", 1, exception);
  std::string text = "old";
  ReadTranscodedString(accessor, jvm.MakeString("m"), text);
  EXPECT_EQ(text, "m");
  const Events events = EventLog::Get().Texts();
  const Events begin = Seq("GetStringLength(\"m\")", PendingException(exception),
                           "GetStringChars(\"m\")", NoPendingException());
  ASSERT_GT(events.size(), begin.size());
  EXPECT_TRUE(
      SameEvents(begin, Events(events.begin(), events.begin() + static_cast<long>(begin.size()))));
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
}

// ---- Length-prefixed byte result.

TEST_F(MarshallingTest, BlocksFollowEachOtherWithoutPadding) {
  const std::string bytes("\0\0\0\2ab\0\0\0\0\0\0\1\0", 14);
  const std::string memory = bytes + std::string(256, 'x');
  std::string block;
  const auto* position = reinterpret_cast<const jbyte*>(memory.data());
  const jbyte* begin = position;
  position = ReadLengthPrefixedBlock(position, block);
  EXPECT_EQ(block, "ab");
  EXPECT_EQ(position - begin, 6);
  position = ReadLengthPrefixedBlock(position, block);
  EXPECT_EQ(block, "");
  EXPECT_EQ(position - begin, 10);
  position = ReadLengthPrefixedBlock(position, block);
  EXPECT_EQ(block, std::string(256, 'x'));
  EXPECT_EQ(position - begin, 270);
  EXPECT_TRUE(Happened({}));
}

}  // namespace
}  // namespace chartbridge::testing
