// SPDX-License-Identifier: Apache-2.0
// Exports a chart as JSON on a real JVM, with the reference Java classes, in a process of its own:
// json_probe <case> guarded|bare. It prints what it sees as lines "name=value".
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "guard/jniguard.h"
#include "host/JvmSettings.h"
#include "host/JvmThreads.h"
#include "host/LocalFrame.h"
#include "json/jsonEditor.h"
#include "platform/CriticalSection.h"
#include "platform/TeskJVM.h"

namespace {

constexpr char kChart[] =
    "<chart xmlns=\"urn:chartbridge:chart:2\"><data>a,b\nx,1\ny,2\n</data>"
    "<elements><bar><x column=\"a\"/><y column=\"b\"/></bar></elements></chart>";
constexpr char kFile[] = "chart.vl.json";

template <typename Value>
void Show(const char* name, const Value& value) {
  // At once, so that it is out even when the process dies next.
  std::cout << name << "=" << value << std::endl;
}

jsonEditor& Configured() {
  jsonEditor* editor = jsonEditor::GetInstance();
  editor->setFilePath(kFile);
  return *editor;
}

// The lock from the settings to the end of the export: there is one editor in the process, and
// another thread's GetInstance would empty the settings in between.
void Export() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const chartbridge::LocalFrame frame;
  Show("answer", Configured().RenderChartJSON(kChart, {}, {}));
}

void ShowFile() {
  std::ifstream file(kFile);
  const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  Show("vega", text.find("vega-lite") != std::string::npos);
}

// The editor keeps the env of the thread that started it.
void OnTheThreadThatStarted() { Export(); }

void OnAnotherThread() {
  std::thread([] {
    Export();
    chartbridge::DetachCurrentThread();
  }).join();
}

// What a host without the guard does: it gives the editor the calling thread's env, under the same
// lock.
void OnAnotherThreadWithItsEnv() {
  std::thread([] {
    {
      const CriticalSection::Lock lock(TeskJVM::CritSect());
      JNIEnv* env = nullptr;
      TeskJVM::GetInstance()->AttachCurrentThread(&env);
      jsonEditor::GetInstance()->SetEnv(env);
      Export();
    }
    chartbridge::DetachCurrentThread();
  }).join();
}

// Each as often as the others, and whose env the editor has is anybody's guess.
void OnManyThreads() {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int call = 0; call < 5; ++call) Export();
      chartbridge::DetachCurrentThread();
    });
  }
  for (std::thread& thread : threads) thread.join();
}

using Case = void (*)();
const std::map<std::string, Case> kCases = {
    {"OnTheThreadThatStarted", OnTheThreadThatStarted},
    {"OnAnotherThread", OnAnotherThread},
    {"OnAnotherThreadWithItsEnv", OnAnotherThreadWithItsEnv},
    {"OnManyThreads", OnManyThreads},
};

}  // namespace

int main(int count, char** arguments) {
  if (count < 3 || kCases.count(arguments[1]) == 0) return 2;
  chartbridge::JvmSettings settings;
  settings.classPath = {CHARTBRIDGE_TEST_RUNTIME_JAR};
  settings.options = {"-XX:ErrorFile=hs_err.log", "-XX:-CreateCoredumpOnCrash"};
  settings.guard = std::string(arguments[2]) == "guarded";
  chartbridge::SetJvmSettings(settings);
  if (!TeskJVM::GetInstance()->StartJVM()) return 3;
  Configured().StartEditorHeadless(TeskJVM::GetInstance()->GetEnv());
  kCases.at(arguments[1])();
  ShowFile();
  Show("foreign", jniguard_count(JNIGUARD_OTHER_THREAD) > 0);
  jsonEditor::GetInstance()->StopHeadless();
  Show("done", 1);
  return 0;
}
