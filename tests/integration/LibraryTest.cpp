// SPDX-License-Identifier: Apache-2.0
// The library on a real JVM under the guard, with stand-ins for the Java classes.
#include <gtest/gtest.h>
#include <sys/mman.h>

#include <atomic>
#include <cfenv>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "chart/ViZEditor.h"
#include "convert/VizConverter.h"
#include "guard/jniguard.h"
#include "host/JvmSettings.h"
#include "host/JvmThreads.h"
#include "host/LocalFrame.h"
#include "platform/TeskJVM.h"
#include "tests/integration/ReadFile.h"
#include "tests/integration/TempFolder.h"

namespace chartbridge {
namespace {

constexpr char kImager[] = "com/tesk/charteditor/ChartImager";

JNIEnv* Env() { return TeskJVM::GetInstance()->GetEnv(); }

/// A JVM with the stand-ins, and a folder for files and dumps.
class OnJvm : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    JvmSettings settings;
    settings.classPath = {CHARTBRIDGE_TEST_JAR};
    settings.options = {"-Xmx512m"};
    SetJvmSettings(settings);
    ASSERT_TRUE(TeskJVM::GetInstance()->StartJVM());
  }

  void SetUp() override { setenv("DumpChartTimePath", _dumps.Path().c_str(), 1); }

  void TearDown() override { unsetenv("DumpChartTimePath"); }

  std::string PathTo(const std::string& name) const { return _files.Path() + "/" + name; }

  // All records of this test.
  std::string Dump() const { return ReadFolder(_dumps.Path()); }

 private:
  TempFolder _dumps;
  TempFolder _files;
};

class Converter : public OnJvm {
 protected:
  void SetUp() override {
    OnJvm::SetUp();
    ASSERT_TRUE(VizConverter::GetInstance()->StartConverter(Env()));
  }
  void TearDown() override {
    VizConverter::GetInstance()->Stop();
    OnJvm::TearDown();
  }
};

TEST_F(Converter, ConvertsBothWays) {
  std::string xml = "old";
  EXPECT_TRUE(VizConverter::GetInstance()->GPLtoXML("m\xC3\xBCll \xF0\x9F\x98\x80", xml));
  EXPECT_EQ(xml, "<gpl>m\xC3\xBCll \xF0\x9F\x98\x80</gpl>");
  EXPECT_TRUE(VizConverter::GetInstance()->UpgradeXML(std::string("a\0b\xFF", 4), xml));
  EXPECT_EQ(xml, std::string("a\0b\xFF", 4));
  EXPECT_TRUE(VizConverter::GetInstance()->UpgradeXML("", xml));
  EXPECT_EQ(xml, "");
  EXPECT_EQ(VizConverter::GetInstance()->GetErrorMessage(), "");
  EXPECT_EQ(Dump(), "");
}

TEST_F(Converter, CarriesLargeDocuments) {
  const std::string large(std::size_t{32} << 20U, 'x');
  std::string xml;
  EXPECT_TRUE(VizConverter::GetInstance()->UpgradeXML(large, xml));
  EXPECT_EQ(xml, large);
}

TEST_F(Converter, RecordsWhatJavaThrows) {
  std::string xml = "old";
  EXPECT_FALSE(VizConverter::GetInstance()->GPLtoXML("throw \xE2\x82\xAC \xF0\x9F\x98\x80", xml));
  EXPECT_EQ(xml, "old");
  const std::string message = "thrown for throw \xE2\x82\xAC \xF0\x9F\x98\x80";
  EXPECT_EQ(VizConverter::GetInstance()->GetErrorMessage(), message);
  const std::string record =
      " Message : JAccessor::exceptionCheck()\n  message: " + message +
      "\n  type: java.lang.IllegalArgumentException: " + message +
      "\n  stack: java.lang.IllegalArgumentException: " + message +
      "\n\tat com.tesk.vizconverter.VizConverter.ConvertGPL(VizConverter.java:";
  EXPECT_NE(Dump().find(record), std::string::npos) << Dump();
  EXPECT_FALSE(Env()->ExceptionCheck());
  EXPECT_TRUE(VizConverter::GetInstance()->GPLtoXML("again", xml));
}

TEST_F(Converter, HasReasonForNoAnswer) {
  std::string xml = "old";
  EXPECT_FALSE(VizConverter::GetInstance()->GPLtoXML("null", xml));
  EXPECT_EQ(xml, "old");
  EXPECT_EQ(VizConverter::GetInstance()->GetErrorMessage(), "no answer to null");
  EXPECT_EQ(Dump(), "");
}

TEST_F(Converter, WorksFromManyThreads) {
  std::atomic<int> good{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&good, t] {
      for (int i = 0; i < 100; ++i) {
        const LocalFrame frame;
        const std::string text = std::to_string(t) + "/" + std::to_string(i);
        std::string xml;
        good +=
            VizConverter::GetInstance()->GPLtoXML(text, xml) && xml == "<gpl>" + text + "</gpl>";
      }
      DetachCurrentThread();
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(good, 800);
}

// The thread that starts the converter keeps its Java object; it may end, but it must not detach.
TEST_F(Converter, WorksAfterItsThreadHasEnded) {
  VizConverter::GetInstance()->Stop();
  std::thread([] { VizConverter::GetInstance()->StartConverter(Env()); }).join();
  Env()->FindClass("java/lang/String");
  std::string xml;
  EXPECT_TRUE(VizConverter::GetInstance()->GPLtoXML("later", xml));
  EXPECT_EQ(xml, "<gpl>later</gpl>");
}

TEST_F(Converter, FailsQuietlyWhenStopped) {
  VizConverter::GetInstance()->Stop();
  std::string xml = "old";
  EXPECT_FALSE(VizConverter::GetInstance()->GPLtoXML("a", xml));
  EXPECT_EQ(xml, "old");
  EXPECT_EQ(VizConverter::GetInstance()->GetErrorMessage(), "");
}

int disturbed = 0;

void DisturbRounding(JNIEnv*, jclass) {
  std::fesetround(FE_TOWARDZERO);
  ++disturbed;
}

jlong AddressOf(JNIEnv* env, jclass, jobject buffer) {
  return static_cast<jlong>(reinterpret_cast<std::uintptr_t>(env->GetDirectBufferAddress(buffer)));
}

// Puts native code behind the native methods of the stand-in.
void RegisterNatives(JNIEnv* env) {
  char disturb[] = "disturbRounding";
  char noArguments[] = "()V";
  char address[] = "addressOf";
  char buffer[] = "(Ljava/nio/ByteBuffer;)J";
  const JNINativeMethod methods[] = {
      {disturb, noArguments, reinterpret_cast<void*>(&DisturbRounding)},
      {address, buffer, reinterpret_cast<void*>(&AddressOf)},
  };
  ASSERT_EQ(env->RegisterNatives(env->FindClass(kImager), methods, 2), JNI_OK);
}

class Editor : public OnJvm {
 protected:
  static ViZEditor& TheEditor() { return *ViZEditor::GetInstance(); }

  void SetUp() override {
    OnJvm::SetUp();
    RegisterNatives(Env());
    ASSERT_TRUE(TheEditor().StartEditorHeadless(Env()));
  }
  void TearDown() override {
    TheEditor().StopHeadless();
    OnJvm::TearDown();
  }

  // Renders into memory from a byte string.
  static bool ToMemory(const std::string& chart, std::string& output) {
    unsigned int size = 77;
    const bool done = TheEditor().RenderImageToMemoryHeadless(
        chart, std::string("data"), size, ViZEditor::IMAGE_PNG, 150.0, "B1", "B2", "m\xC3\xBCll",
        "\xF0\x9F\x98\x80", output);
    EXPECT_EQ(size, 77U);
    return done;
  }
};

const unsigned char* Memory(const char* text) {
  return reinterpret_cast<const unsigned char*>(text);
}

constexpr char kAux[] = "m\xC3\xBCll[66, 49]\xF0\x9F\x98\x80[66, 50]";

TEST_F(Editor, RendersBufferToFile) {
  const std::string path = PathTo("out \xC3\xBC \xF0\x9F\x98\x80.png");
  EXPECT_TRUE(TheEditor().RenderToFileHeadless("chart", Memory("data"), 4, path,
                                               ViZEditor::IMAGE_PNG, 100.0, "B1", "B2",
                                               "m\xC3\xBCll", "\xF0\x9F\x98\x80", true));
  EXPECT_EQ(ReadFile(path), std::string("RenderToFile chart direct:data 2 100.0 ") + kAux);
}

TEST_F(Editor, RendersImageMapToFile) {
  const std::string path = PathTo("map");
  EXPECT_TRUE(TheEditor().RenderToFileHeadless("chart", Memory("data"), 4, path,
                                               ViZEditor::IMAGE_MAP, 50.5, "B1", "B2",
                                               "m\xC3\xBCll", "\xF0\x9F\x98\x80", true));
  EXPECT_EQ(ReadFile(path),
            std::string("RenderImageMapToFile chart direct:data 7 50.5 false ") + kAux);
}

TEST_F(Editor, RendersBytesToFile) {
  const std::string path = PathTo("bytes");
  EXPECT_TRUE(TheEditor().RenderToFileHeadless("chart", std::string("data"), path,
                                               ViZEditor::IMAGE_MAP, "B1", "B2", "m\xC3\xBCll",
                                               "\xF0\x9F\x98\x80", 100.0));
  EXPECT_EQ(ReadFile(path), std::string("RenderToFile[] chart data 7 100.0 ") + kAux);
}

TEST_F(Editor, SaysNoWhereTheFileCannotBe) {
  EXPECT_FALSE(TheEditor().RenderToFileHeadless("chart", Memory("data"), 4,
                                                PathTo("no/such/folder"), ViZEditor::IMAGE_PNG,
                                                100.0, "", "", "", "", true));
  EXPECT_NE(Dump().find("java.nio.file.NoSuchFileException"), std::string::npos) << Dump();
}

// The method that is looked up takes a ByteBuffer, the call passes a byte[].
TEST_F(Editor, RendersBytesToMemory) {
  const unsigned long long before = jniguard_count(JNIGUARD_BYTE_ARRAY_WRAPPED);
  std::string output;
  EXPECT_TRUE(ToMemory("chart", output));
  EXPECT_EQ(output, std::string("RenderToMem chart heap:data 2 150.0 ") + kAux);
  EXPECT_EQ(jniguard_count(JNIGUARD_BYTE_ARRAY_WRAPPED), before + 1);
  EXPECT_EQ(Dump(), "");
}

TEST_F(Editor, AnswersFromOutputWhenJavaThrows) {
  std::string output;
  EXPECT_FALSE(ToMemory("throw", output));
  EXPECT_NE(Dump().find("  message: the chart says so\n"), std::string::npos) << Dump();
  output = "from before";
  EXPECT_TRUE(ToMemory("throw", output));
  EXPECT_EQ(output, "from before");
}

TEST_F(Editor, SplitsImageMap) {
  std::string picture;
  std::string map;
  std::string json;
  EXPECT_TRUE(TheEditor().RenderImageToMemoryHeadless(
      "chart", Memory("data"), 4, ViZEditor::IMAGE_MAP, 100.0, picture, map, json, "B1", "B2",
      "m\xC3\xBCll", "\xF0\x9F\x98\x80", false));
  EXPECT_EQ(picture, std::string("RenderImageMapToMemory chart direct:data 7 100.0 ") + kAux);
  EXPECT_EQ(map, "map true");
  EXPECT_EQ(json, "json true");
}

TEST_F(Editor, TakesFirstBlockOfOtherTypes) {
  std::string picture;
  std::string map = "kept";
  std::string json = "kept";
  EXPECT_TRUE(TheEditor().RenderImageToMemoryHeadless("chart", Memory("data"), 4,
                                                      ViZEditor::IMAGE_PNG, 100.0, picture, map,
                                                      json, "B1", "B2", "", "", false));
  EXPECT_EQ(picture.find("RenderImageMapToMemory chart direct:data 2 "), 0U);
  EXPECT_EQ(map, "kept");
  EXPECT_EQ(json, "kept");
}

// Java sees the caller's own memory: the same address, all of it.
TEST_F(Editor, PassesLargeBufferWithoutCopy) {
  constexpr std::size_t kLength = std::size_t{1} << 30U;
  void* memory = mmap(nullptr, kLength, PROT_READ | PROT_WRITE,
                      MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  ASSERT_NE(memory, MAP_FAILED);
  auto* bytes = static_cast<unsigned char*>(memory);
  bytes[kLength - 1] = 42;
  std::string picture;
  std::string map;
  std::string json;
  EXPECT_TRUE(TheEditor().RenderImageToMemoryHeadless("address", bytes, kLength,
                                                      ViZEditor::IMAGE_PNG, 100.0, picture, map,
                                                      json, "", "", "", "", false));
  std::ostringstream expected;
  expected << std::hex << reinterpret_cast<std::uintptr_t>(memory) << std::dec << " " << kLength
           << " 42";
  EXPECT_EQ(picture, expected.str());
  munmap(memory, kLength);
}

TEST_F(Editor, RefusesBufferThatJavaCannotHold) {
  std::string picture;
  std::string map;
  std::string json;
  const unsigned char byte = 0;
  EXPECT_FALSE(TheEditor().RenderImageToMemoryHeadless("chart", &byte, 1UL << 32U,
                                                       ViZEditor::IMAGE_PNG, 100.0, picture, map,
                                                       json, "", "", "", "", false));
  EXPECT_EQ(picture, "");
}

TEST_F(Editor, KeepsRoundingMode) {
  jclass type = Env()->FindClass(kImager);
  jmethodID disturb = Env()->GetStaticMethodID(type, "disturbRounding", "()V");
  const int usual = std::fegetround();
  // Without the library, what Java does stays done.
  Env()->CallStaticVoidMethod(type, disturb);
  EXPECT_EQ(std::fegetround(), FE_TOWARDZERO);
  std::fesetround(FE_UPWARD);
  disturbed = 0;
  std::string output;
  EXPECT_TRUE(ToMemory("round", output));
  EXPECT_EQ(disturbed, 1);
  EXPECT_EQ(std::fegetround(), FE_UPWARD);
  std::fesetround(usual);
}

// Java answers null, and the operation asks it for its length and its elements all the same.
TEST_F(Editor, SurvivesMissingResult) {
  std::string document = "null";
  EXPECT_FALSE(TheEditor().ApplyStyleSheet(document, "style"));
  EXPECT_EQ(document, "");
  EXPECT_NE(Dump().find("JNI GetArrayLength: the array or string is null"), std::string::npos)
      << Dump();
  document = "text";
  EXPECT_TRUE(TheEditor().ApplyStyleSheet(document, "style"));
  EXPECT_EQ(document, "style(text)");
}

TEST_F(Editor, WorksFromManyThreads) {
  std::atomic<int> good{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < 8; ++t) {
    threads.emplace_back([&good, t] {
      for (int i = 0; i < 50; ++i) {
        const LocalFrame frame;
        std::string output;
        const std::string chart = "c" + std::to_string(t);
        good += ToMemory(chart, output) && output.find("RenderToMem " + chart + " heap:data") == 0;
      }
      DetachCurrentThread();
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(good, 400);
}

TEST_F(Editor, StartsOnOneThreadAndWorksOnOthers) {
  TheEditor().StopHeadless();
  std::thread([] { TheEditor().StartEditorHeadless(Env()); }).join();
  std::string here;
  EXPECT_TRUE(ToMemory("here", here));
  std::string there;
  std::thread([&there] {
    EXPECT_TRUE(ToMemory("there", there));
    DetachCurrentThread();
  }).join();
  EXPECT_EQ(here.find("RenderToMem here"), 0U);
  EXPECT_EQ(there.find("RenderToMem there"), 0U);
}

}  // namespace
}  // namespace chartbridge
