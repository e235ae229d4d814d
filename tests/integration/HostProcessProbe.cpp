// SPDX-License-Identifier: Apache-2.0
// A host that compares its process before and after everything that the library does in it:
// host_process_probe <case> [argument]. It prints what it sees as lines.
#include <fenv.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "chart/ViZEditor.h"
#include "convert/VizConverter.h"
#include "export/ExAccessor.h"
#include "host/JvmSettings.h"
#include "host/JvmThreads.h"
#include "host/LocalFrame.h"
#include "json/jsonEditor.h"
#include "platform/TeskJVM.h"
#include "tests/integration/ProcessState.h"
#include "tests/integration/ReadFile.h"
#include "tree/TreeEditor.h"

using chartbridge::JvmSettings;
using chartbridge::LocalFrame;
using chartbridge::ProcessState;
using chartbridge::ReadFile;

namespace {

constexpr char kExamples[] = CHARTBRIDGE_TEST_EXAMPLES;

void Say(const std::string& line) { std::cout << line << std::endl; }

std::string Example(const std::string& name) {
  return ReadFile(std::string(kExamples) + "/" + name);
}

std::string theChart;
std::string theData;

bool StartWith(const std::vector<std::string>& more) {
  JvmSettings settings;
  settings.classPath = {CHARTBRIDGE_TEST_RUNTIME_JAR};
  settings.options = {"-XX:ErrorFile=hs_err.log", "-XX:-CreateCoredumpOnCrash"};
  settings.options.insert(settings.options.end(), more.begin(), more.end());
  chartbridge::SetJvmSettings(settings);
  return TeskJVM::GetInstance()->StartJVM();
}

bool Start() { return StartWith({}); }

// For what draws much only once, without the optimising compiler.
bool StartQuickly() { return StartWith({"-XX:TieredStopAtLevel=1"}); }

bool Convert() {
  JNIEnv* env = TeskJVM::GetInstance()->GetEnv();
  VizConverter::GetInstance()->StartConverter(env);
  const LocalFrame frame;
  return VizConverter::GetInstance()->GPLtoXML(Example("charts/cars.gpl"), theChart);
}

bool DrawChart(const char* name, ViZEditor::IMAGE_TYPE type) {
  const LocalFrame frame;
  return ViZEditor::GetInstance()->RenderToFileHeadless(
      theChart, reinterpret_cast<const unsigned char*>(theData.data()), theData.size(), name, type,
      100, "", "", "", "", false);
}

bool FirstChart() {
  ViZEditor::GetInstance()->StartEditorHeadless(TeskJVM::GetInstance()->GetEnv());
  return DrawChart("chart.png", ViZEditor::IMAGE_PNG);
}

bool OtherFormats() {
  return DrawChart("chart.svg", ViZEditor::IMAGE_SVG) &&
         DrawChart("chart.pdf", ViZEditor::IMAGE_PDF) &&
         DrawChart("chart.jpg", ViZEditor::IMAGE_JPEG);
}

bool OnAnotherThread() {
  bool isDone = false;
  std::thread([&isDone] {
    isDone = DrawChart("other.png", ViZEditor::IMAGE_PNG);
    chartbridge::DetachCurrentThread();
  }).join();
  return isDone;
}

bool Tree() {
  JNIEnv* env = TeskJVM::GetInstance()->GetEnv();
  TreeEditor::GetInstance()->StartEditorHeadless(env);
  TreeEditor::GetInstance()->StartEditor(env, "", "");
  const LocalFrame frame;
  return TreeEditor::GetInstance()->RenderToFileHeadless(Example("trees/iris.pmml"), "", "tree.png",
                                                         TreeEditor::IMAGE_PNG, false);
}

bool Json() {
  const LocalFrame frame;
  jsonEditor::GetInstance()->StartEditorHeadless(TeskJVM::GetInstance()->GetEnv());
  jsonEditor* editor = jsonEditor::GetInstance();
  editor->setFilePath("chart.vl.json");
  return editor->RenderChartJSON(
      "<chart xmlns=\"urn:chartbridge:chart:2\"><data>a,b\nx,1\ny,2\n</data>"
      "<elements><bar><x column=\"a\"/><y column=\"b\"/></bar></elements></chart>",
      {}, {});
}

bool Document() {
  const std::unique_ptr<ExAccessor> exporter(ExAccessor::CreateInstance());
  const LocalFrame frame;
  const std::string path = std::string(kExamples) + "/documents/air-quality.xml";
  bool isDone = exporter->CreateOutputDocument(ReadFile(path), path);
  for (const char* name : {"report.pdf", "report.html"}) {
    isDone = isDone && exporter->ExportOutput(std::string("{\"output\":\"") + name + "\"}");
  }
  return isDone;
}

const struct {
  const char* name;
  bool (*run)();
} kSteps[] = {{"start", StartQuickly},
              {"conversion", Convert},
              {"first chart", FirstChart},
              {"other formats", OtherFormats},
              {"another thread", OnAnotherThread},
              {"tree", Tree},
              {"json", Json},
              {"document", Document}};

void OnSignal(int) {}

// A host that has its own of everything that it can have.
void OwnEverything() {
  struct sigaction action {};
  action.sa_handler = OnSignal;
  action.sa_flags = SA_RESTART;
  for (int signal = 1; signal < SIGRTMAX; ++signal) sigaction(signal, &action, nullptr);
  sigset_t blocked;
  sigemptyset(&blocked);
  sigaddset(&blocked, SIGUSR1);
  sigaddset(&blocked, SIGWINCH);
  pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
  umask(027);
  fesetround(FE_TOWARDZERO);
  feenableexcept(FE_DIVBYZERO | FE_INVALID | FE_OVERFLOW);
}

void SayNew(const std::vector<std::string>& lines, std::set<std::string>& said) {
  for (const std::string& line : lines) {
    if (said.insert(line).second) Say("  " + line);
  }
}

// Every step, and what is different from the time before the first one afterwards: each difference
// once, after the step that made it.
void Compare(const std::string& kind) {
  if (std::setlocale(LC_ALL, std::getenv("PROBE_LOCALE")) == nullptr) Say("no such locale");
  theData = Example("data/cars.csv");
  if (kind == "own") OwnEverything();
  const ProcessState before = chartbridge::CaptureProcessState();
  std::set<std::string> said;
  for (const auto& step : kSteps) {
    const bool isDone = step.run();
    const ProcessState after = chartbridge::CaptureProcessState();
    Say(std::string(step.name) + (isDone ? ": done" : ": failed"));
    SayNew(chartbridge::Differences(before, after), said);
    SayNew(chartbridge::ThreadsThatTakeSignals(), said);
  }
}

// Every trap there is: the JVM's own arithmetic hardly divides by zero, and is hardly ever exact.
constexpr int kTraps = FE_ALL_EXCEPT;

// So small that many of them are drawn in little time, and the compilers come to all that they use.
constexpr char kSmallChart[] =
    "<chart xmlns=\"urn:chartbridge:chart:2\" width=\"160\" "
    "height=\"120\"><data>a,b\nx,1\ny,2\n</data>"
    "<elements><bar><x column=\"a\"/><y column=\"b\"/></bar></elements></chart>";

bool DrawSome(int count) {
  bool isDone = true;
  for (int i = 0; i < count; ++i) {
    isDone = DrawChart(i % 2 == 0 ? "soak.png" : "soak.svg",
                       i % 2 == 0 ? ViZEditor::IMAGE_PNG : ViZEditor::IMAGE_SVG) &&
             isDone;
    const LocalFrame frame;
    JNIEnv* env = TeskJVM::GetInstance()->GetEnv();
    // Collections that this thread asks for, or does itself.
    for (int k = 0; k < 8; ++k) env->NewByteArray(1 << 18);
    isDone = !env->ExceptionCheck() && isDone;
  }
  return isDone && fegetexcept() == kTraps;
}

// A host that computes with traps draws for a while, on two threads.
void Soak(const std::string& count) {
  feenableexcept(kTraps);
  theChart = kSmallChart;
  const bool isStarted = Start() && FirstChart();
  Say(isStarted ? "started" : "not started");
  bool isDone = false;
  std::thread other([&] {
    isDone = DrawSome(std::stoi(count));
    chartbridge::DetachCurrentThread();
  });
  const bool isOwnDone = DrawSome(std::stoi(count));
  other.join();
  Say(isDone && isOwnDone ? "drawn" : "not drawn");
}

int SignalsTaken(int signal) {
  struct sigaction action {};
  sigaction(signal, nullptr, &action);
  return (action.sa_flags & SA_SIGINFO) != 0 || action.sa_handler != SIG_DFL ? signal : 0;
}

void SuspendSignal(const std::string&) {
  Say(Start() ? "started" : "not started");
  const char* chosen = std::getenv("_JAVA_SR_SIGNUM");
  Say(std::string("environment: ") + (chosen == nullptr ? "none" : chosen));
  for (const int signal : {SIGUSR1, SIGUSR2, 40, SIGRTMAX}) {
    if (SignalsTaken(signal) != 0) Say("taken: " + std::to_string(signal));
  }
}

std::string AttachFile() { return "/tmp/.java_pid" + std::to_string(getpid()); }

bool Exists(const std::string& path) { return access(path.c_str(), F_OK) == 0; }

// Where JVMs of this number would have their counters: one file in the folder of each user.
std::vector<std::string> CounterFiles() {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::directory_iterator("/tmp")) {
    const std::string name = entry.path().filename();
    if (name.rfind("hsperfdata_", 0) == 0) files.push_back(entry.path() / std::to_string(getpid()));
  }
  return files;
}

bool HasCounters() {
  const std::vector<std::string> files = CounterFiles();
  return std::any_of(files.begin(), files.end(), Exists);
}

// What an earlier process of the same number has left says nothing about this one.
void ForgetEarlierProcess() {
  unlink(AttachFile().c_str());
  for (const std::string& file : CounterFiles()) unlink(file.c_str());
}

void Killed(const std::string&) {
  ForgetEarlierProcess();
  Say(Start() ? "started" : "not started");
  Say("attach file: " + std::to_string(Exists(AttachFile())));
  Say("counters: " + std::to_string(HasCounters()));
  raise(SIGKILL);
}

void Attachable(const std::string&) {
  ForgetEarlierProcess();
  Say(Start() ? "started" : "not started");
  Say("attach file: " + std::to_string(Exists(AttachFile())));
  unlink(AttachFile().c_str());
}

jstring JNICALL RoundUp(JNIEnv*, jclass, jstring, jstring) {
  fesetround(FE_UPWARD);
  return nullptr;
}

// Java code whose native method changes the rounding.
void JavaChanges(const std::string& traps) {
  Say(Start() ? "started" : "not started");
  if (traps == "traps") feenableexcept(kTraps);
  JNIEnv* env = TeskJVM::GetInstance()->GetEnv();
  jclass type = env->FindClass("com/tesk/charteditor/template/ApplyTemplate");
  char name[] = "apply";
  char signature[] = "(Ljava/lang/String;Ljava/lang/String;)Ljava/lang/String;";
  const JNINativeMethod method = {name, signature, reinterpret_cast<void*>(&RoundUp)};
  env->RegisterNatives(type, &method, 1);
  env->CallStaticObjectMethod(type, env->GetStaticMethodID(type, name, signature), nullptr,
                              nullptr);
  const int rounding = fegetround();
  const int left = fegetexcept();
  fesetenv(FE_DFL_ENV);
  Say(rounding == FE_UPWARD ? "rounding: up" : "rounding: another");
  Say(left == 0 ? "traps: none" : left == kTraps ? "traps: own" : "traps: others");
}

using Case = void (*)(const std::string&);
const std::map<std::string, Case> kCases = {{"Compare", Compare},
                                            {"Soak", Soak},
                                            {"SuspendSignal", SuspendSignal},
                                            {"Killed", Killed},
                                            {"Attachable", Attachable},
                                            {"JavaChanges", JavaChanges}};

}  // namespace

int main(int count, char** arguments) {
  if (count < 2 || kCases.count(arguments[1]) == 0) return 2;
  kCases.at(arguments[1])(count > 2 ? arguments[2] : "");
  return 0;
}
