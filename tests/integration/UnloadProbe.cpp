// SPDX-License-Identifier: Apache-2.0
// A host that loads the library as a plugin, uses it, and closes it while the JVM runs:
// unload_probe. It prints what it sees as lines "name=value".
#include <dlfcn.h>
#include <jni.h>
#include <link.h>

#include <cstdio>
#include <initializer_list>
#include <string>
#include <thread>

namespace {

void Show(const std::string& name, bool value) {
  std::printf("%s=%d\n", name.c_str(), value ? 1 : 0);
  std::fflush(stdout);
}

// Whether the library asks to be kept, rather than being kept for another reason.
bool AsksToStay(void* library) {
  link_map* map = nullptr;
  if (library == nullptr || dlinfo(library, RTLD_DI_LINKMAP, &map) != 0) return false;
  for (const ElfW(Dyn)* entry = map->l_ld; entry->d_tag != DT_NULL; ++entry) {
    if (entry->d_tag == DT_FLAGS_1) return (entry->d_un.d_val & DF_1_NODELETE) != 0;
  }
  return false;
}

JavaVM* RunningVm() {
  using GetCreated = jint (*)(JavaVM**, jsize, jsize*);
  auto get = reinterpret_cast<GetCreated>(dlsym(RTLD_DEFAULT, "JNI_GetCreatedJavaVMs"));
  JavaVM* vm = nullptr;
  jsize count = 0;
  return get != nullptr && get(&vm, 1, &count) == JNI_OK && count == 1 ? vm : nullptr;
}

// Java starts a thread by a function of the host library, and waits for its end.
bool StartsJavaThread(JNIEnv* env) {
  jclass type = env->FindClass("java/lang/Thread");
  jobject thread = env->NewObject(type, env->GetMethodID(type, "<init>", "()V"));
  env->CallVoidMethod(thread, env->GetMethodID(type, "start", "()V"));
  env->CallVoidMethod(thread, env->GetMethodID(type, "join", "()V"));
  return !env->ExceptionCheck();
}

// Java calls the library's one native method.
bool CallsBack(JNIEnv* env) {
  jclass type = env->FindClass("com/tesk/charteditor/template/ApplyTemplate");
  jmethodID apply = env->GetStaticMethodID(
      type, "apply", "(Ljava/lang/String;Ljava/lang/String;)Ljava/lang/String;");
  env->CallStaticObjectMethod(type, apply, env->NewStringUTF("<chart/>"),
                              env->NewStringUTF("<template/>"));
  return !env->ExceptionCheck();
}

void UseJava(JavaVM* vm) {
  void* env = nullptr;
  Show("attached", vm->AttachCurrentThreadAsDaemon(&env, nullptr) == JNI_OK);
  Show("thread", StartsJavaThread(static_cast<JNIEnv*>(env)));
  Show("callback", CallsBack(static_cast<JNIEnv*>(env)));
  vm->DetachCurrentThread();
}

}  // namespace

int main() {
  void* plugin = dlopen(CHARTBRIDGE_TEST_PLUGIN, RTLD_NOW | RTLD_GLOBAL);
  if (plugin == nullptr) {
    std::fprintf(stderr, "%s\n", dlerror());
    return 1;
  }
  auto use = reinterpret_cast<int (*)()>(dlsym(plugin, "UseLibrary"));
  Show("used", use() == 1);
  dlclose(plugin);
  for (const char* name : {CHARTBRIDGE_TEST_LIBRARIES}) {
    Show("stays", AsksToStay(dlopen(name, RTLD_NOW | RTLD_NOLOAD)));
  }
  JavaVM* vm = RunningVm();
  if (vm == nullptr) return 2;
  std::thread(UseJava, vm).join();
  return 0;
}
