// SPDX-License-Identifier: Apache-2.0
#include <atomic>
#include <cfenv>
#include <functional>
#include <new>
#include <set>
#include <thread>
#include <vector>

#include "chart/ViZEditor.h"
#include "convert/VizConverter.h"
#include "tests/support/ContractTest.h"
#include "tests/support/EventLog.h"
#include "tests/support/FakePlatform.h"

// Many threads at once. The log stands still and the fake JVM has no lock, so that nothing but the
// library's own lock keeps the threads apart, and ThreadSanitizer sees every access that it does
// not.
namespace chartbridge::testing {
namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 50;

constexpr char kImager[] = "com/tesk/charteditor/ChartImager";
constexpr char kConverter[] = "com/tesk/vizconverter/VizConverter";
constexpr char kFileFromBytes[] =
    "([B[BLjava/lang/String;IDLjava/lang/String;[BLjava/lang/String;[B)Z";
constexpr char kToMem[] = "([BLjava/nio/ByteBuffer;IDLjava/lang/String;[BLjava/lang/String;[B)[B";

thread_local JNIEnv* thread_env = nullptr;

class ConcurrencyTest : public ContractTest {
 protected:
  ConcurrencyTest() {
    EventLog::Get().Stop();
    for (int i = 0; i < kThreads; ++i) envs.push_back(jvm.NewEnv("env " + std::to_string(i)));
    FakePlatform::Get().env_of_thread = [] { return thread_env; };
    jvm.ClassWithConstructor(kImager);
    jvm.ClassWithConstructor(kConverter);
    // Java sees the env of the calling thread, one caller at a time.
    const auto check = [this](const FakeCall& call) {
      if (call.env != thread_env) ++wrong_envs;
      if (++inside != 1) ++overlaps;
      std::this_thread::yield();
      --inside;
    };
    jvm.Method(kImager, "RenderToFile", kFileFromBytes).Does([check](const FakeCall& call) {
      check(call);
      jvalue value{};
      value.z = JNI_TRUE;
      return value;
    });
    const auto echo = [check](const FakeCall& call) {
      check(call);
      jvalue value{};
      value.l = call.arguments.at(0).value.l;
      return value;
    };
    jvm.Method(kImager, "RenderToMem", kToMem).Does(echo);
    jvm.Method(kConverter, "ConvertGPL", "([B)[B").Does(echo);
    jvm.Method(kConverter, "ConvertXml", "([B)[B").Does(echo);
    jvm.Method(kConverter, "getErrorMessage", "()Ljava/lang/String;")
        .Does([check](const FakeCall& call) {
          check(call);
          jvalue value{};
          value.l = call.jvm.MakeString("message");
          return value;
        });
    Forget();
  }
  ~ConcurrencyTest() override { Forget(); }

  static void Forget() {
    delete ViZEditor::_instance;
    ViZEditor::_instance = nullptr;
    delete VizConverter::s_pInstance;
    VizConverter::s_pInstance = nullptr;
  }

  // Runs the same work on every thread, all starting together.
  void OnEveryThread(const std::function<void(int thread)>& work) {
    std::atomic<int> ready{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
      threads.emplace_back([&, i] {
        thread_env = envs[static_cast<std::size_t>(i)];
        ++ready;
        while (ready < kThreads) std::this_thread::yield();
        work(i);
      });
    }
    for (std::thread& thread : threads) thread.join();
  }

  std::vector<JNIEnv*> envs;
  std::atomic<int> wrong_envs{0};
  std::atomic<int> overlaps{0};
  std::atomic<int> inside{0};
  std::atomic<int> failures{0};
};

TEST_F(ConcurrencyTest, OneEditorAndOneConverterForAllThreads) {
  std::vector<ViZEditor*> editors(kThreads);
  std::vector<VizConverter*> converters(kThreads);
  OnEveryThread([&](int thread) {
    const auto i = static_cast<std::size_t>(thread);
    editors[i] = ViZEditor::GetInstance();
    converters[i] = VizConverter::GetInstance();
  });
  EXPECT_EQ(std::set<ViZEditor*>(editors.begin(), editors.end()).size(), 1U);
  EXPECT_EQ(std::set<VizConverter*>(converters.begin(), converters.end()).size(), 1U);
}

TEST_F(ConcurrencyTest, StartedTogetherThereIsOneBinding) {
  OnEveryThread([&](int) {
    if (!ViZEditor::GetInstance()->StartEditorHeadless(thread_env)) ++failures;
    if (!VizConverter::GetInstance()->StartConverter(thread_env)) ++failures;
    if (!ViZEditor::GetInstance()->IsStartedHeadless()) ++failures;
    if (!VizConverter::GetInstance()->IsStarted()) ++failures;
  });
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(jvm.Class(kImager)->instances, 1);
  EXPECT_EQ(jvm.Class(kConverter)->instances, 1);
}

TEST_F(ConcurrencyTest, ConversionsAreSerialisedAndKeepTheirTexts) {
  VizConverter::GetInstance()->StartConverter(jvm.Env());
  OnEveryThread([&](int thread) {
    for (int round = 0; round < kRounds; ++round) {
      const std::string text = std::to_string(thread) + " " + std::to_string(round);
      std::string gpl;
      std::string xml;
      if (!VizConverter::GetInstance()->GPLtoXML(text, gpl) || gpl != text) ++failures;
      if (!VizConverter::GetInstance()->UpgradeXML(text, xml) || xml != text) ++failures;
      if (VizConverter::GetInstance()->GetErrorMessage() != "message") ++failures;
    }
  });
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(overlaps, 0);
  EXPECT_EQ(wrong_envs, 0);
}

TEST_F(ConcurrencyTest, RenderingIsSerialisedWithConversions) {
  ViZEditor::GetInstance()->StartEditorHeadless(jvm.Env());
  VizConverter::GetInstance()->StartConverter(jvm.Env());
  OnEveryThread([&](int thread) {
    for (int round = 0; round < kRounds; ++round) {
      const std::string text = std::to_string(thread) + " " + std::to_string(round);
      std::string output;
      unsigned int size = 0;
      ViZEditor* editor = ViZEditor::GetInstance();
      if (!editor->RenderToFileHeadless(text, text, text, ViZEditor::IMAGE_PNG, text, text, text,
                                        text, 100)) {
        ++failures;
      }
      editor->RenderImageToMemoryHeadless(text, text, size, ViZEditor::IMAGE_PNG, 100, text, text,
                                          text, text, output);
      if (output != text) ++failures;
      if (!VizConverter::GetInstance()->GPLtoXML(text, output) || output != text) ++failures;
    }
  });
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(overlaps, 0);
  EXPECT_EQ(wrong_envs, 0);
}

TEST_F(ConcurrencyTest, StartStopAndWorkInterleave) {
  OnEveryThread([&](int thread) {
    for (int round = 0; round < kRounds; ++round) {
      ViZEditor* editor = ViZEditor::GetInstance();
      VizConverter* converter = VizConverter::GetInstance();
      if (thread % 4 == 0) editor->StartEditorHeadless(thread_env);
      if (thread % 4 == 1) editor->StopHeadless();
      if (thread % 4 == 2) converter->StartConverter(thread_env);
      if (thread % 4 == 3) converter->Stop();
      editor->SetCodepage("codepage " + std::to_string(round));
      std::string output;
      converter->GPLtoXML("g", output);
      editor->RenderToFileHeadless("c", "d", "p", ViZEditor::IMAGE_PNG, "", "", "", "", 100);
    }
  });
  EXPECT_EQ(overlaps, 0);
  EXPECT_EQ(wrong_envs, 0);
}

TEST_F(ConcurrencyTest, EveryThreadKeepsItsOwnRoundingMode) {
  ViZEditor::GetInstance()->StartEditorHeadless(jvm.Env());
  jvm.Method(kImager, "RenderToFile", kFileFromBytes).Runs([] { std::fesetround(FE_TOWARDZERO); });
  OnEveryThread([&](int thread) {
    const int mode = thread % 2 == 0 ? FE_UPWARD : FE_DOWNWARD;
    std::fesetround(mode);
    for (int round = 0; round < kRounds; ++round) {
      ViZEditor::GetInstance()->RenderToFileHeadless("c", "d", "p", ViZEditor::IMAGE_PNG, "", "",
                                                     "", "", 100);
      if (std::fegetround() != mode) ++failures;
    }
  });
  EXPECT_EQ(failures, 0);
}

TEST_F(ConcurrencyTest, AThrowOnOneThreadLetsTheOthersIn) {
  VizConverter::GetInstance()->StartConverter(jvm.Env());
  FakePlatform::Get().env_of_thread = [this] {
    if (thread_env == envs[0]) throw std::bad_alloc();
    return thread_env;
  };
  std::atomic<int> thrown{0};
  OnEveryThread([&](int) {
    for (int round = 0; round < kRounds; ++round) {
      std::string xml;
      try {
        if (!VizConverter::GetInstance()->GPLtoXML("g", xml)) ++failures;
      } catch (const std::bad_alloc&) {
        ++thrown;
      }
    }
  });
  EXPECT_EQ(failures, 0);
  EXPECT_EQ(thrown, kRounds);
  FakePlatform::Get().env_of_thread = nullptr;
}

}  // namespace
}  // namespace chartbridge::testing
