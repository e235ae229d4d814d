// SPDX-License-Identifier: Apache-2.0
// Does one thing with the reference host in a process of its own: host_probe <case> [argument]
#include <dlfcn.h>
#include <signal.h>
#include <time.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "guard/jniguard.h"
#include "host/JvmSettings.h"
#include "host/JvmThreads.h"
#include "host/LocalFrame.h"
#include "platform/TeskJVM.h"
#include "tests/integration/ProbeCases.h"

using chartbridge::JvmSettings;
using chartbridge::LocalFrame;
using chartbridge::Show;
using chartbridge::ShowPending;
using chartbridge::ShowReference;
using chartbridge::TextOf;

namespace {

constexpr char kTargets[] = "org/chartbridge/testing/Targets";

JvmSettings Quiet() {
  JvmSettings settings;
  settings.options = {"-Xmx64m", "-XX:ErrorFile=hs_err.log", "-XX:-CreateCoredumpOnCrash"};
  settings.message = [](const std::string& message) { Show("message", message); };
  return settings;
}

TeskJVM& Jvm() { return *TeskJVM::GetInstance(); }

void Start(const JvmSettings& settings) {
  chartbridge::SetJvmSettings(settings);
  Show("started", Jvm().StartJVM());
}

JvmSettings WithClasses() {
  JvmSettings settings = Quiet();
  settings.classPath = {CHARTBRIDGE_TEST_JAR};
  return settings;
}

std::string Property(const std::string& name) {
  JNIEnv* env = Jvm().GetEnv();
  jclass system = env->FindClass("java/lang/System");
  jmethodID get =
      env->GetStaticMethodID(system, "getProperty", "(Ljava/lang/String;)Ljava/lang/String;");
  return TextOf(env, env->CallStaticObjectMethod(system, get, env->NewStringUTF(name.c_str())));
}

JavaVM* Vm() {
  JavaVM* vm = nullptr;
  Jvm().GetEnv()->GetJavaVM(&vm);
  return vm;
}

bool IsAttached(JavaVM* vm) {
  void* env = nullptr;
  return vm->GetEnv(&env, JNI_VERSION_1_8) == JNI_OK;
}

bool StaticBoolean(JNIEnv* env, const char* name) {
  jclass targets = env->FindClass(kTargets);
  return env->CallStaticBooleanMethod(targets, env->GetStaticMethodID(targets, name, "()Z"));
}

void PlainStart(const std::string&) {
  Start(WithClasses());
  if (!Jvm().IsStarted()) return;
  Show("again", Jvm().StartJVM());
  Show("guard", jniguard_is_installed());
  Show("home", Property("java.home"));
}

void StartIn(const std::string& home) {
  JvmSettings settings = Quiet();
  settings.javaHome = home;
  Start(settings);
}

void StartWithOption(const std::string& option) {
  JvmSettings settings = Quiet();
  settings.options.push_back(option);
  Start(settings);
}

void StartWithGuard(const std::string& library) {
  JvmSettings settings = Quiet();
  settings.guardLibrary = library;
  Start(settings);
  Show("running", Jvm().IsStarted());
}

void StartWithoutGuard(const std::string&) {
  JvmSettings settings = Quiet();
  settings.guard = false;
  settings.guardLibrary = "/no/such/library.so";
  Start(settings);
  Show("guard", jniguard_is_installed());
}

void StartWithArchive(const std::string& archive) {
  JvmSettings settings = WithClasses();
  settings.sharedArchive = archive;
  Start(settings);
  Show("version", Property("java.specification.version").empty() ? 0 : 1);
}

void ShowProperty(const std::string& name) {
  JvmSettings settings = Quiet();
  settings.classPath = {"/first.jar", "", "/second.jar"};
  settings.options.push_back("-Dprobe.order=settings");
  Start(settings);
  if (Jvm().IsStarted()) Show(name.c_str(), Property(name));
}

// With no option of the probe's own.
void StartWithClasses(const std::string&) {
  JvmSettings settings;
  settings.classPath = {CHARTBRIDGE_TEST_JAR};
  settings.message = [](const std::string& message) { Show("message", message); };
  Start(settings);
}

// With one more option at the end of the default ones.
void StartWithDefault(const std::string& option) {
  JvmSettings settings;
  settings.defaultOptions.push_back(option);
  settings.message = [](const std::string& message) { Show("message", message); };
  Start(settings);
}

void StartWithNamedArchive(const std::string& archive) {
  JvmSettings settings;
  settings.sharedArchive = archive;
  Start(settings);
}

// An archive that the settings name, beside one that the host's default options do.
void StartWithTwoArchives(const std::string& archive) {
  JvmSettings settings;
  settings.sharedArchive = archive;
  settings.defaultOptions.push_back("-XX:SharedArchiveFile=" + archive + ".other");
  Start(settings);
}

void ShowDefaults(const std::string&) {
  JvmSettings settings = Quiet();
  settings.defaultOptions = {"-Dprobe.first=default", "-Dprobe.second=default"};
  Start(settings);
  Show("probe.first", Property("probe.first"));
  Show("probe.second", Property("probe.second"));
}

void BeforeStart(const std::string&) {
  JNIEnv* env = reinterpret_cast<JNIEnv*>(&env);
  Show("started", Jvm().IsStarted());
  Show("attached", Jvm().AttachCurrentThread(&env));
  ShowReference("env", env);
  ShowReference("own", Jvm().GetEnv());
  const LocalFrame frame;
  Show("frame", frame.IsActive());
  Show("detached", chartbridge::DetachCurrentThread());
  Show("destroyed", chartbridge::DestroyJvm());
}

void StartOnManyThreads(const std::string&) {
  chartbridge::SetJvmSettings(Quiet());
  std::atomic<int> started{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&started] { started += Jvm().StartJVM() ? 1 : 0; });
  }
  for (std::thread& thread : threads) thread.join();
  Show("started", started.load());
}

void AttachManyThreads(const std::string&) {
  Start(WithClasses());
  std::atomic<int> good{0};
  std::vector<JNIEnv*> envs(16);
  std::atomic<std::size_t> ready{0};
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < envs.size(); ++i) {
    threads.emplace_back([&, i] {
      JNIEnv* again = nullptr;
      const bool attached =
          Jvm().AttachCurrentThread(&envs[i]) && Jvm().AttachCurrentThread(&again);
      good += attached && envs[i] == again && again == Jvm().GetEnv() &&
              StaticBoolean(again, "isDaemon");
      // All at once, so that no env can be one that an ended thread has left.
      for (++ready; ready < envs.size();) std::this_thread::yield();
    });
  }
  for (std::thread& thread : threads) thread.join();
  Show("good", good.load());
  Show("different", static_cast<long long>(std::set<JNIEnv*>(envs.begin(), envs.end()).size()));
}

double ThreadNanoseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

// The processor time of the best of many loops, so that a busy machine does not matter. Some 5 ns
// are usual; attaching a thread for the first time takes tens of thousands.
void AttachAgainIsCheap(const std::string&) {
  Start(Quiet());
  constexpr int kLoops = 100;
  constexpr int kCalls = 1000;
  double best = 1e9;
  JNIEnv* env = nullptr;
  for (int loop = 0; loop < kLoops; ++loop) {
    const double begin = ThreadNanoseconds();
    for (int i = 0; i < kCalls; ++i) Jvm().AttachCurrentThread(&env);
    best = std::min(best, (ThreadNanoseconds() - begin) / kCalls);
  }
  Show("cheap", best < 500);
}

// An object that a thread made works for others as long as the thread is attached, even after it
// has ended.
void ObjectOutlivesItsThread(const std::string&) {
  Start(WithClasses());
  jobject object = nullptr;
  std::thread([&object] {
    JNIEnv* env = nullptr;
    Jvm().AttachCurrentThread(&env);
    jclass type = env->FindClass(kTargets);
    object = env->NewObject(type, env->GetMethodID(type, "<init>", "()V"));
  }).join();
  JNIEnv* env = Jvm().GetEnv();
  jclass system = env->FindClass("java/lang/System");
  env->CallStaticVoidMethod(system, env->GetStaticMethodID(system, "gc", "()V"));
  jmethodID made = env->GetMethodID(env->FindClass(kTargets), "made", "()Ljava/lang/String;");
  Show("made", TextOf(env, env->CallObjectMethod(object, made)));
}

void DetachAndAttach(const std::string&) {
  Start(WithClasses());
  JavaVM* vm = Vm();
  std::thread([vm] {
    JNIEnv* env = nullptr;
    Show("before", IsAttached(vm));
    Show("detach", chartbridge::DetachCurrentThread());
    Show("attach", Jvm().AttachCurrentThread(&env));
    Show("during", IsAttached(vm));
    Show("detach", chartbridge::DetachCurrentThread());
    Show("after", IsAttached(vm));
    Show("attach", Jvm().AttachCurrentThread(&env));
    Show("daemon", StaticBoolean(env, "isDaemon"));
    // Somebody else detaches the thread behind the host library's back.
    vm->DetachCurrentThread();
    Show("attach", Jvm().AttachCurrentThread(&env));
    Show("daemon", StaticBoolean(env, "isDaemon"));
  }).join();
}

void EndOfJvm(const std::string&) {
  Start(Quiet());
  Show("destroyed", chartbridge::DestroyJvm());
  Show("running", Jvm().IsStarted());
  Show("again", Jvm().StartJVM());
  Show("destroyed", chartbridge::DestroyJvm());
}

void OnSignal(int) {}

bool IsOurs(int signal) {
  struct sigaction action {};
  sigaction(signal, nullptr, &action);
  return action.sa_handler == OnSignal;
}

void Signals(const std::string& leave) {
  for (int number : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) signal(number, OnSignal);
  JvmSettings settings = Quiet();
  settings.leaveSignalsToHost = leave == "leave";
  Start(settings);
  Show("int", IsOurs(SIGINT));
  Show("term", IsOurs(SIGTERM));
  Show("quit", IsOurs(SIGQUIT));
  Show("hup", IsOurs(SIGHUP));
}

// A JVM that the host program made itself.
void AdoptJvm(const std::string& library) {
  using Create = jint (*)(JavaVM**, void**, void*);
  void* handle = dlopen(library.c_str(), RTLD_NOW);
  auto create = reinterpret_cast<Create>(dlsym(handle, "JNI_CreateJavaVM"));
  JavaVMInitArgs arguments{JNI_VERSION_1_8, 0, nullptr, JNI_FALSE};
  JavaVM* vm = nullptr;
  void* env = nullptr;
  Show("created", create(&vm, &env, &arguments) == JNI_OK);
  Start(Quiet());
  Show("same", Vm() == vm);
  Show("guard", jniguard_is_installed());
}

// How many of `count` arrays the JVM still holds, made by `make` on this thread.
int AliveAfterGc(JNIEnv* env, const std::vector<jweak>& weak) {
  jclass system = env->FindClass("java/lang/System");
  jmethodID gc = env->GetStaticMethodID(system, "gc", "()V");
  env->CallStaticVoidMethod(system, gc);
  int alive = 0;
  for (jweak reference : weak) alive += env->IsSameObject(reference, nullptr) ? 0 : 1;
  return alive;
}

std::vector<jweak> MakeArrays(JNIEnv* env, int count) {
  std::vector<jweak> weak;
  for (int i = 0; i < count; ++i) weak.push_back(env->NewWeakGlobalRef(env->NewByteArray(100)));
  return weak;
}

void FrameReleases(const std::string&) {
  Start(Quiet());
  JNIEnv* env = Jvm().GetEnv();
  Show("without", AliveAfterGc(env, MakeArrays(env, 500)));
  std::vector<jweak> inside;
  {
    const LocalFrame frame;
    Show("active", frame.IsActive());
    inside = MakeArrays(env, 500);
    Show("inside", AliveAfterGc(env, inside));
    const LocalFrame nested(-5);
    Show("nested", nested.IsActive());
  }
  Show("with", AliveAfterGc(env, inside));
  {
    const LocalFrame huge(1 << 30);
    Show("huge", huge.IsActive());
  }
  ShowPending(env);
}

// The frame attaches its thread, and a pending exception does not survive it.
void FrameOnNewThread(const std::string&) {
  Start(Quiet());
  std::thread([] {
    {
      const LocalFrame frame;
      Show("active", frame.IsActive());
      Jvm().GetEnv()->FindClass("no/such/Type");
    }
    ShowPending(Jvm().GetEnv());
  }).join();
}

using Case = void (*)(const std::string&);
const std::map<std::string, Case> kCases = {
    {"PlainStart", PlainStart},
    {"StartIn", StartIn},
    {"StartWithOption", StartWithOption},
    {"StartWithGuard", StartWithGuard},
    {"StartWithoutGuard", StartWithoutGuard},
    {"StartWithArchive", StartWithArchive},
    {"ShowProperty", ShowProperty},
    {"StartWithClasses", StartWithClasses},
    {"StartWithDefault", StartWithDefault},
    {"StartWithNamedArchive", StartWithNamedArchive},
    {"StartWithTwoArchives", StartWithTwoArchives},
    {"ShowDefaults", ShowDefaults},
    {"BeforeStart", BeforeStart},
    {"StartOnManyThreads", StartOnManyThreads},
    {"AttachManyThreads", AttachManyThreads},
    {"AttachAgainIsCheap", AttachAgainIsCheap},
    {"ObjectOutlivesItsThread", ObjectOutlivesItsThread},
    {"DetachAndAttach", DetachAndAttach},
    {"EndOfJvm", EndOfJvm},
    {"Signals", Signals},
    {"AdoptJvm", AdoptJvm},
    {"FrameReleases", FrameReleases},
    {"FrameOnNewThread", FrameOnNewThread},
};

}  // namespace

int main(int count, char** arguments) {
  if (count < 2 || kCases.count(arguments[1]) == 0) return 2;
  kCases.at(arguments[1])(count > 2 ? arguments[2] : "");
  return 0;
}
