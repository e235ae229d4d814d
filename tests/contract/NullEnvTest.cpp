// SPDX-License-Identifier: Apache-2.0
#include "bridge/NullEnv.h"

#include <cstddef>
#include <cstring>
#include <memory>

#include "bridge/AttachedEnv.h"
#include "bridge/JAccessor.h"
#include "chart/ViZEditor.h"
#include "convert/VizConverter.h"
#include "tests/support/ContractTest.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/JniNames.h"
#include "tests/support/Steps.h"

namespace chartbridge::testing {
namespace {

class NullEnvTest : public ContractTest {
 protected:
  NullEnvTest() {
    jvm.ClassWithConstructor("com/tesk/charteditor/ChartImager");
    jvm.ClassWithConstructor("com/tesk/vizconverter/VizConverter");
    jvm.Method("com/tesk/vizconverter/VizConverter", "ConvertGPL", "([B)[B")
        .Returns(jvm.MakeBytes("xml", "<x/>"));
    editor = std::make_unique<ViZEditor>();
    ViZEditor::_instance = editor.get();
  }
  ~NullEnvTest() override { ViZEditor::_instance = nullptr; }

  // Every operation gives its failure value, leaves its outputs alone and reaches no JVM.
  void ExpectEveryOperationToFail() {
    std::string text = "old";
    EXPECT_FALSE(converter.GPLtoXML("g", text));
    EXPECT_FALSE(converter.UpgradeXML("x", text));
    EXPECT_EQ(converter.GetErrorMessage(), "");
    EXPECT_EQ(text, "old");
    const unsigned char data[1] = {};
    std::string output;
    std::string output2 = "old";
    unsigned int size = 0;
    EXPECT_FALSE(editor->RenderToFileHeadless("c", data, 1, "p", ViZEditor::IMAGE_MAP, 1, "", "",
                                              "", "", true));
    EXPECT_FALSE(
        editor->RenderToFileHeadless("c", "d", "p", ViZEditor::IMAGE_PNG, "", "", "", "", 1));
    EXPECT_FALSE(editor->RenderImageToMemoryHeadless("c", "d", size, ViZEditor::IMAGE_PNG, 1, "",
                                                     "", "", "", output));
    EXPECT_FALSE(editor->RenderImageToMemoryHeadless("c", data, 1, ViZEditor::IMAGE_MAP, 1, output,
                                                     output2, output2, "", "", "", "", true));
    EXPECT_EQ(output, "");
    EXPECT_EQ(output2, "old");
    EXPECT_TRUE(Happened(Source::kJni, {}));
    EXPECT_EQ(FakePlatform::LockDepth(), 0);
  }

  VizConverter converter;
  std::unique_ptr<ViZEditor> editor;
};

TEST_F(NullEnvTest, IsOneEnvForTheProcess) {
  ASSERT_NE(NullEnv(), nullptr);
  EXPECT_EQ(NullEnv(), NullEnv());
}

TEST_F(NullEnvTest, EveryFunctionIsThereAndReturnsZero) {
  const void* slots[kJniSlots];
  std::memcpy(slots, NullEnv()->functions, sizeof slots);
  for (std::size_t slot = kReservedJniSlots; slot < kJniSlots; ++slot) {
    ASSERT_NE(slots[slot], nullptr) << kJniNames[slot];
    // None of them reads its arguments, so they can all be called alike.
    auto* function = reinterpret_cast<jlong (*)(JNIEnv*, jobject, jobject, jobject, jlong, jlong)>(
        const_cast<void*>(slots[slot]));
    const std::string name = kJniNames[slot];
    const bool gives_nothing =
        name.find("Void") != std::string::npos || name.find("Release") == 0 ||
        name.find("Set") == 0 || name.find("Delete") == 0 || name.find("Region") < name.size() ||
        name == "ExceptionDescribe" || name == "ExceptionClear" || name == "FatalError";
    const bool floating =
        name.find("Float") != std::string::npos || name.find("Double") != std::string::npos;
    if (gives_nothing || floating) continue;
    const jlong result = function(NullEnv(), nullptr, nullptr, nullptr, 0, 0);
    // Small results leave the upper bytes of the register undefined.
    const bool is_boolean = name.find("Boolean") != std::string::npos &&
                            name.find("Elements") == std::string::npos &&
                            name.find("Array") == std::string::npos;
    const jlong value = is_boolean || name.rfind("Is", 0) == 0 || name == "ExceptionCheck"
                            ? static_cast<jboolean>(result)
                            : static_cast<jint>(result);
    EXPECT_EQ(value, 0) << name;
  }
}

TEST_F(NullEnvTest, FunctionsByTheirTypes) {
  JNIEnv* env = NullEnv();
  EXPECT_EQ(env->FindClass("x"), nullptr);
  EXPECT_EQ(env->GetMethodID(nullptr, "x", "()V"), nullptr);
  EXPECT_EQ(env->NewObject(nullptr, nullptr, 1, 2.0), nullptr);
  EXPECT_EQ(env->CallObjectMethod(nullptr, nullptr, 1, 2.0), nullptr);
  EXPECT_EQ(env->CallBooleanMethod(nullptr, nullptr), JNI_FALSE);
  EXPECT_EQ(env->CallIntMethod(nullptr, nullptr), 0);
  EXPECT_EQ(env->CallLongMethod(nullptr, nullptr), 0);
  EXPECT_EQ(env->CallFloatMethod(nullptr, nullptr), 0.0F);
  EXPECT_EQ(env->CallDoubleMethod(nullptr, nullptr), 0.0);
  EXPECT_EQ(env->CallStaticDoubleMethod(nullptr, nullptr), 0.0);
  env->CallVoidMethod(nullptr, nullptr);
  EXPECT_EQ(env->NewByteArray(7), nullptr);
  EXPECT_EQ(env->GetArrayLength(nullptr), 0);
  EXPECT_EQ(env->GetByteArrayElements(nullptr, nullptr), nullptr);
  EXPECT_EQ(env->NewDirectByteBuffer(nullptr, 0), nullptr);
  EXPECT_EQ(env->ExceptionOccurred(), nullptr);
  EXPECT_EQ(env->ExceptionCheck(), JNI_FALSE);
  env->ExceptionClear();
  EXPECT_EQ(env->GetVersion(), 0);
}

TEST_F(NullEnvTest, AnAccessorWithoutAnEnvReachesNoJvm) {
  JAccessor accessor(nullptr);
  EXPECT_EQ(accessor.setClass("org/example/Chart"), nullptr);
  EXPECT_EQ(accessor.setMethod("draw", "()V"), nullptr);
  accessor.exceptionCheck();
  EXPECT_EQ(accessor.FromJString(jvm.MakeString("x"), nullptr), "");
  EXPECT_EQ(accessor.getExceptionMessage(nullptr, nullptr), "");
  EXPECT_EQ(accessor.getPrintStackTrace(nullptr, nullptr), "");
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

TEST_F(NullEnvTest, AttachedEnvIsWhatTheHostGives) {
  EXPECT_EQ(AttachedEnv(), jvm.Env());
  EXPECT_TRUE(Happened(Attach()));
  FakePlatform::Get().env = nullptr;
  EXPECT_EQ(AttachedEnv(), nullptr);
  EXPECT_TRUE(Happened(Attach()));
  FakePlatform::Get().has_jvm = false;
  EXPECT_EQ(AttachedEnv(), nullptr);
  EXPECT_TRUE(Happened(Seq("TeskJVM::GetInstance")));
}

TEST_F(NullEnvTest, AThreadThatCannotBeAttachedFailsEveryOperation) {
  converter.StartConverter(jvm.Env());
  editor->StartEditorHeadless(jvm.Env());
  FakePlatform::Get().env = nullptr;
  EventLog::Get().Clear();
  ExpectEveryOperationToFail();
}

TEST_F(NullEnvTest, AHostWithoutAJvmObjectFailsEveryOperation) {
  converter.StartConverter(jvm.Env());
  editor->StartEditorHeadless(jvm.Env());
  FakePlatform::Get().has_jvm = false;
  EventLog::Get().Clear();
  ExpectEveryOperationToFail();
}

TEST_F(NullEnvTest, AStartOnANullEnvIsTrueAndFailsEveryOperation) {
  FakePlatform::Get().env = nullptr;
  EXPECT_TRUE(converter.StartConverter(nullptr));
  EXPECT_TRUE(editor->StartEditorHeadless(nullptr));
  EXPECT_TRUE(converter.IsStarted());
  EXPECT_TRUE(editor->IsStartedHeadless());
  EXPECT_TRUE(Happened(Source::kJni, {}));
  ExpectEveryOperationToFail();
}

TEST_F(NullEnvTest, AFailedAttachKeepsTheFrame) {
  converter.StartConverter(jvm.Env());
  FakePlatform::Get().env = nullptr;
  EventLog::Get().Clear();
  std::string xml;
  EXPECT_FALSE(converter.GPLtoXML("g", xml));
  EXPECT_TRUE(Happened(Source::kPlatform, Seq("lock depth=1", Attach(), "unlock depth=0")));

  editor->StartEditorHeadless(jvm.Env());
  EventLog::Get().Clear();
  EXPECT_FALSE(
      editor->RenderToFileHeadless("c", "d", "p", ViZEditor::IMAGE_PNG, "", "", "", "", 1));
  EXPECT_TRUE(Happened(Source::kPlatform, Seq("lock depth=1", Attach(), "lock depth=2",
                                              "unlock depth=1", "unlock depth=0")));
}

TEST_F(NullEnvTest, TheNextAttachThatWorksIsUsedAgain) {
  converter.StartConverter(jvm.Env());
  FakePlatform::Get().env = nullptr;
  std::string xml;
  EXPECT_FALSE(converter.GPLtoXML("g", xml));
  FakePlatform::Get().env = jvm.Env();
  EXPECT_TRUE(converter.GPLtoXML("g", xml));
  EXPECT_EQ(xml, "<x/>");
}

}  // namespace
}  // namespace chartbridge::testing
