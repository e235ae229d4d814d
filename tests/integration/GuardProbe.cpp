// SPDX-License-Identifier: Apache-2.0
// Runs one sequence of JNI calls on a real JVM: guard_probe <case> guarded|bare|agent|attach|traps
// [option for the guard]
#include <fenv.h>

#include <cstdio>
#include <string>
#include <thread>

#include "guard/jniguard.h"
#include "host/JvmSettings.h"
#include "host/JvmThreads.h"
#include "platform/TeskJVM.h"
#include "tests/integration/ProbeCases.h"

using chartbridge::ProbeCases;
using chartbridge::Show;
using chartbridge::ShowPending;

// What the JVM calls when an agent is loaded into it.
extern "C" JNIEXPORT jint JNICALL Agent_OnAttach(JavaVM* vm, char* options, void* reserved);

namespace {

constexpr char kTargets[] = "org/chartbridge/testing/Targets";

chartbridge::JvmSettings Settings(const std::string& mode, const std::string& guardOptions) {
  chartbridge::JvmSettings settings;
  settings.classPath = {CHARTBRIDGE_TEST_JAR};
  settings.options = {"-Xmx256m", "-XX:ErrorFile=hs_err.log", "-XX:-CreateCoredumpOnCrash"};
  settings.guard = mode == "guarded";
  settings.guardOptions = guardOptions;
  if (mode == "agent") {
    settings.options.push_back("-agentpath:" CHARTBRIDGE_TEST_GUARD "=" + guardOptions);
  }
  return settings;
}

void ShowCaught() {
  for (int kind = 0; kind < JNIGUARD_KINDS; ++kind) {
    const unsigned long long count = jniguard_count(kind);
    if (count > 0) {
      Show("caught", std::to_string(count) + " " + jniguard_kind_name(kind));
    }
  }
}

// The JVM still does all it should: collects garbage, finds classes, runs Java.
void ShowHealth(JNIEnv* env) {
  jclass system = env->FindClass("java/lang/System");
  env->CallStaticVoidMethod(system, env->GetStaticMethodID(system, "gc", "()V"));
  jclass targets = env->FindClass(kTargets);
  jmethodID method = env->GetStaticMethodID(targets, "staticInt", "()I");
  Show("health", env->CallStaticIntMethod(targets, method));
}

bool Attach(JNIEnv* env, std::string& options) {
  JavaVM* vm = nullptr;
  return env->GetJavaVM(&vm) == JNI_OK && Agent_OnAttach(vm, options.data(), nullptr) == JNI_OK &&
         jniguard_is_installed() == 1;
}

// On a thread that is not attached and computes with every trap there is.
bool AttachUnderTraps(JNIEnv* env, const std::string& options) {
  JavaVM* vm = nullptr;
  if (env->GetJavaVM(&vm) != JNI_OK) return false;
  bool isKept = false;
  std::thread([&] {
    feenableexcept(FE_ALL_EXCEPT);
    const bool isIn = jniguard_install_with_options(vm, options.c_str()) == JNI_OK;
    isKept = isIn && fegetexcept() == FE_ALL_EXCEPT;
  }).join();
  return isKept && jniguard_is_installed() == 1;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 3 || ProbeCases().count(arguments[1]) == 0) return 2;
  const std::string mode = arguments[2];
  std::string options = count > 3 ? arguments[3] : "";
  chartbridge::SetJvmSettings(Settings(mode, options));
  if (!TeskJVM::GetInstance()->StartJVM()) return 3;
  JNIEnv* env = TeskJVM::GetInstance()->GetEnv();
  if (mode == "attach" && !Attach(env, options)) return 4;
  if (mode == "traps" && !AttachUnderTraps(env, options)) return 4;
  ProbeCases().at(arguments[1])(env);
  ShowPending(env);
  ShowCaught();
  ShowHealth(env);
  if (count <= 4) Show("ended", chartbridge::DestroyJvm());
  return 0;
}
