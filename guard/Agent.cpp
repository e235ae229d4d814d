// SPDX-License-Identifier: Apache-2.0
#include <jvmti.h>

#include <atomic>
#include <cstdio>
#include <mutex>

#include "guard/Caught.h"
#include "guard/ElementBuffers.h"
#include "guard/FloatTraps.h"
#include "guard/GuardOptions.h"
#include "guard/Guards.h"
#include "guard/JavaErrors.h"
#include "guard/ObtainedBuffers.h"
#include "guard/OwnEnv.h"
#include "guard/ReferenceEpoch.h"
#include "guard/Report.h"
#include "guard/WrappedArguments.h"

namespace chartbridge {
namespace {

std::mutex installMutex;
std::atomic<bool> installed{false};

void Use(const GuardOptions& options) {
  for (const std::string& option : options.unknown) {
    std::fprintf(stderr,
                 "jniguard: unknown option \"%s\" ignored; there are: report, report=FILE, log\n",
                 option.c_str());
  }
  if (options.log) LogCaught(true);
  if (options.report) ReportAtEnd(options.reportFile);
}

bool TakeFunctionTable(jvmtiEnv* jvmti) {
  jniNativeInterface* table = nullptr;
  if (jvmti->GetJNIFunctionTable(&table) != JVMTI_ERROR_NONE) return false;
  jvm = *table;
  HoldTraps(jvm);
  jvmti->Deallocate(reinterpret_cast<unsigned char*>(table));
  return true;
}

// The table is the JVM's own copy, which may be longer than the one this was compiled against.
bool ReplaceFunctions(jvmtiEnv* jvmti) {
  jniNativeInterface* table = nullptr;
  if (jvmti->GetJNIFunctionTable(&table) != JVMTI_ERROR_NONE) return false;
  HoldTraps(*table);
  GuardReferences(*table);
  GuardLookups(*table);
  GuardCalls(*table);
  GuardArrays(*table);
  GuardElements(*table);
  GuardTexts(*table);
  const jvmtiError error = jvmti->SetJNIFunctionTable(table);
  jvmti->Deallocate(reinterpret_cast<unsigned char*>(table));
  return error == JVMTI_ERROR_NONE;
}

// On a live JVM, on a thread that is attached to it.
jint Install(JavaVM* vm, jvmtiEnv* jvmti, JNIEnv* env) {
  const std::lock_guard<std::mutex> lock(installMutex);
  if (installed) return JNI_OK;
  SetOwnEnvVm(vm);
  ReferenceEpoch::SetJvmti(jvmti);
  if (!TakeFunctionTable(jvmti)) return JNI_ERR;
  if (!PrepareJavaErrors(env) || !WrappedArguments::Prepare(env)) {
    jvm.ExceptionClear(env);
    return JNI_ERR;
  }
  if (!ReplaceFunctions(jvmti)) return JNI_ERR;
  jvmti->SetEventNotificationMode(JVMTI_ENABLE, JVMTI_EVENT_THREAD_END, nullptr);
  jvmti->SetEventNotificationMode(JVMTI_ENABLE, JVMTI_EVENT_VM_DEATH, nullptr);
  installed = true;
  return JNI_OK;
}

void JNICALL OnVmInit(jvmtiEnv* jvmti, JNIEnv* env, jthread) {
  JavaVM* vm = nullptr;
  if (env->GetJavaVM(&vm) == JNI_OK && Install(vm, jvmti, env) == JNI_OK) return;
  std::fputs("jniguard: this JVM's functions cannot be replaced; nothing is guarded\n", stderr);
}

void JNICALL OnThreadEnd(jvmtiEnv*, JNIEnv*, jthread) {
  ForgetOwnEnv();
  ReferenceEpoch::End();
}

void JNICALL OnVmDeath(jvmtiEnv*, JNIEnv*) { WriteReport(); }

jvmtiEnv* MakeJvmti(JavaVM* vm) {
  void* made = nullptr;
  if (vm->GetEnv(&made, JVMTI_VERSION_1_2) != JNI_OK) return nullptr;
  auto* jvmti = static_cast<jvmtiEnv*>(made);
  jvmtiEventCallbacks callbacks{};
  callbacks.VMInit = OnVmInit;
  callbacks.VMDeath = OnVmDeath;
  callbacks.ThreadEnd = OnThreadEnd;
  jvmti->SetEventCallbacks(&callbacks, sizeof callbacks);
  return jvmti;
}

jint InstallOn(JavaVM* vm, JNIEnv* env) {
  jvmtiEnv* jvmti = MakeJvmti(vm);
  return jvmti == nullptr ? JNI_ERR : Install(vm, jvmti, env);
}

// Attaches the calling thread for the time of the installation if nobody else has.
jint InstallOnLiveJvm(JavaVM* vm) {
  // The JVM computes in floating point while it attaches a thread, and nothing is replaced yet.
  const TrapScope traps;
  void* env = nullptr;
  if (vm->GetEnv(&env, JNI_VERSION_1_8) == JNI_OK) return InstallOn(vm, static_cast<JNIEnv*>(env));
  const jint attached = vm->AttachCurrentThreadAsDaemon(&env, nullptr);
  if (attached != JNI_OK) return attached;
  const jint result = InstallOn(vm, static_cast<JNIEnv*>(env));
  vm->DetachCurrentThread();
  return result;
}

}  // namespace
}  // namespace chartbridge

jint jniguard_install_with_options(JavaVM* vm, const char* options) {
  chartbridge::Use(chartbridge::ParseGuardOptions(options));
  return chartbridge::installed ? JNI_OK : chartbridge::InstallOnLiveJvm(vm);
}

jint jniguard_install(JavaVM* vm) { return jniguard_install_with_options(vm, nullptr); }

unsigned long long jniguard_mark(void) { return chartbridge::ObtainedBuffers::Mark(); }

size_t jniguard_free_unreleased(unsigned long long mark) {
  return chartbridge::ElementBuffers::FreeObtainedSince(mark);
}

int jniguard_is_installed(void) { return chartbridge::installed ? 1 : 0; }

JNIEXPORT jint JNICALL Agent_OnLoad(JavaVM* vm, char* options, void*) {
  chartbridge::Use(chartbridge::ParseGuardOptions(options));
  jvmtiEnv* jvmti = chartbridge::MakeJvmti(vm);
  if (jvmti == nullptr) return JNI_ERR;
  // The JVM lets nobody at its functions before it has started.
  jvmti->SetEventNotificationMode(JVMTI_ENABLE, JVMTI_EVENT_VM_INIT, nullptr);
  return JNI_OK;
}

JNIEXPORT jint JNICALL Agent_OnAttach(JavaVM* vm, char* options, void*) {
  return jniguard_install_with_options(vm, options);
}
