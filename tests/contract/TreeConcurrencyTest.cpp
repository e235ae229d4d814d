// SPDX-License-Identifier: Apache-2.0
#include <atomic>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "json/jsonEditor.h"
#include "platform/CriticalSection.h"
#include "platform/TeskJVM.h"
#include "tests/support/EventLog.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/TreeFixture.h"

// Many threads in the tree editor and in the JSON editor's singleton. The log stands still and the
// fake JVM has no lock, so that nothing but the library's own lock keeps the threads apart.
namespace chartbridge::testing {
namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 40;

constexpr char kJsonImager[] = "com/tesk/java_client/core/documents/output/export/JsonImager";
constexpr char kChartToFile[] = "(Ljava/lang/String;[BZLjava/lang/String;I)Z";
constexpr char kModelToMemory[] = "([B[B[B[BLjava/lang/String;II)Ljava/util/HashMap;";

thread_local JNIEnv* thread_env = nullptr;
thread_local std::string thread_file;

class TreeConcurrencyTest : public TreeEditorFixture {
 protected:
  TreeConcurrencyTest() {
    StartInteractive();
    StartHeadless();
    EventLog::Get().Stop();
    for (int i = 0; i < kThreads; ++i) envs.push_back(jvm.NewEnv("env " + std::to_string(i)));
    FakePlatform::Get().env_of_thread = [] { return thread_env; };
  }

  // Java sees the env of the calling thread, one caller at a time.
  void Watch(const FakeCall& call) {
    if (call.env != thread_env) ++wrong_envs;
    if (++inside != 1) ++overlaps;
    std::this_thread::yield();
    --inside;
  }

  void InThreads(const std::function<void(int)>& work) {
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
      threads.emplace_back([this, i, &work] {
        thread_env = envs[static_cast<std::size_t>(i)];
        for (int round = 0; round < kRounds; ++round) work(i);
      });
    }
    for (std::thread& thread : threads) thread.join();
  }

  std::vector<JNIEnv*> envs;
  std::atomic<int> inside{0};
  std::atomic<int> overlaps{0};
  std::atomic<int> wrong_envs{0};
};

TEST_F(TreeConcurrencyTest, OperationsOfBothBindingsFromManyThreads) {
  EditorMethod("setThreadId", "(I)V").Does([this](const FakeCall& call) {
    Watch(call);
    return jvalue{};
  });
  EditorMethod("calculateSizeArray", "([B[B)[J").Does([this](const FakeCall& call) {
    Watch(call);
    jvalue value{};
    value.l = jvm.MakeLongs("size", {640, 480});
    return value;
  });
  ImagerMethod("renderModelToMemory", kModelToMemory).Does([this](const FakeCall& call) {
    Watch(call);
    jvalue value{};
    value.l = jvm.MakeMap({{"a", jvm.MakeBytes("a", "123")}});
    return value;
  });
  std::atomic<int> wrong{0};
  InThreads([&](int thread) {
    editor.SetThreadId(thread);
    long width = 0;
    long height = 0;
    if (!editor.CalculateSize("m", "d", width, height) || width != 640 || height != 480) ++wrong;
    std::map<std::string, unsigned int> sizes;
    std::map<std::string, std::string> images;
    if (!editor.RenderModelToMemoryHeadless("1", "2", "3", "4", "name", TreeEditor::IMAGE_PNG, 1,
                                            sizes, images) ||
        images["a"] != "123") {
      ++wrong;
    }
    std::vector<std::string> files;
    editor.RenderInteractiveToFileHeadless("m", {"a", "b"}, {"c"}, "1", "2", "3",
                                           TreeEditor::IMAGE_PNG, 1, files);
  });
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(overlaps, 0);
  EXPECT_EQ(wrong_envs, 0);
}

TEST_F(TreeConcurrencyTest, StartsAndStopsAmongOperations) {
  InThreads([this](int thread) {
    if (thread % 2 == 0) {
      editor.StartEditorHeadless(thread_env);
      editor.StopHeadless();
    } else {
      long width = 0;
      long height = 0;
      editor.CalculateSizeHeadless("m", "d", width, height);
      editor.SetCodepage("UTF-8");
      editor.SetSchemaPath("s");
      editor.IsStartedHeadless();
    }
  });
  EXPECT_TRUE(editor.IsStarted());
}

TEST_F(TreeConcurrencyTest, OneTreeEditorForManyThreads) {
  TreeEditor* const used = TreeEditor::_instance;
  TreeEditor::_instance = nullptr;
  std::vector<TreeEditor*> seen(kThreads);
  InThreads(
      [&seen](int thread) { seen[static_cast<std::size_t>(thread)] = TreeEditor::GetInstance(); });
  EXPECT_EQ(std::set<TreeEditor*>(seen.begin(), seen.end()).size(), 1U);
  delete TreeEditor::_instance;
  TreeEditor::_instance = used;
}

TEST_F(TreeConcurrencyTest, OneJsonEditorForManyThreads) {
  jsonEditor::_instance = nullptr;
  std::vector<jsonEditor*> seen(kThreads);
  InThreads([&seen](int thread) {
    seen[static_cast<std::size_t>(thread)] = jsonEditor::GetInstance();
    seen[static_cast<std::size_t>(thread)]->SetCodepage("UTF-8");
  });
  EXPECT_EQ(std::set<jsonEditor*>(seen.begin(), seen.end()).size(), 1U);
  delete jsonEditor::_instance;
  jsonEditor::_instance = nullptr;
}

// The setters take no lock: a host holds it from the settings to the end of the export.
TEST_F(TreeConcurrencyTest, ChartJsonUnderTheLockOfTheHost) {
  std::atomic<int> wrong{0};
  jvm.ClassWithConstructor(kJsonImager);
  jvm.Method(kJsonImager, "exportChartJsonToFile", kChartToFile)
      .Does([this, &wrong](const FakeCall& call) {
        Watch(call);
        if (call.jvm.Describe(call.arguments.at(3).value.l) != "\"" + thread_file + "\"") ++wrong;
        jvalue value{};
        value.z = JNI_TRUE;
        return value;
      });
  jsonEditor::_instance = nullptr;
  jsonEditor::GetInstance()->StartEditorHeadless(jvm.Env());
  InThreads([&wrong](int thread) {
    thread_file = "chart " + std::to_string(thread);
    const CriticalSection::Lock lock(TeskJVM::CritSect());
    jsonEditor* json = jsonEditor::GetInstance();
    json->setFilePath(thread_file);
    json->SetEnv(thread_env);
    if (!json->RenderChartJSON("chart", {}, {})) ++wrong;
  });
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(overlaps, 0);
  EXPECT_EQ(wrong_envs, 0);
  delete jsonEditor::_instance;
  jsonEditor::_instance = nullptr;
}

}  // namespace
}  // namespace chartbridge::testing
