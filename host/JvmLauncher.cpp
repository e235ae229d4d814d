// SPDX-License-Identifier: Apache-2.0
#include "host/JvmLauncher.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include "host/ArchivePlaces.h"
#include "host/ChildSignal.h"
#include "host/DefaultOptions.h"
#include "host/FloatScope.h"
#include "host/JavaDescriptors.h"
#include "host/JavaThreadStart.h"
#include "host/JvmLocator.h"
#include "host/LocaleScope.h"
#include "host/OptionText.h"
#include "host/SignalScope.h"
#include "host/SuspendSignal.h"

namespace chartbridge {
namespace {

// What the JVM prints while it reads its options is the reason of a failure, and belongs into the
// one line about it.
std::atomic<bool> capturing{false};
std::string captured;

jint PrintForJvm(FILE* stream, const char* format, va_list arguments) {
  // Log files that the options name come through here too, and go where they belong.
  const bool isConsole = stream == stdout || stream == stderr;
  if (!capturing || !isConsole) return std::vfprintf(stream, format, arguments);
  char text[1024];
  const int length = std::vsnprintf(text, sizeof text, format, arguments);
  captured += text;
  return length;
}

// The captured text in one line, without what every such message of the JVM ends with.
std::string CapturedLine() {
  std::replace(captured.begin(), captured.end(), '\n', ' ');
  while (!captured.empty() && captured.back() == ' ') captured.pop_back();
  return captured;
}

// For options that the JVM rejects late it ends the process, and what it printed must not get lost.
void PrintCapturedAtAbort() {
  if (capturing) std::fprintf(stderr, "cannot start Java: %s\n", CapturedLine().c_str());
}

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

std::string ClassPathOption(std::vector<std::string> entries) {
  for (const std::string& entry : SplitPath(Environment("TESK_CLASSPATH"))) {
    entries.push_back(entry);
  }
  std::string option;
  for (const std::string& entry : entries) {
    if (entry.empty()) continue;
    option += (option.empty() ? "-Djava.class.path=" : ":") + entry;
  }
  return option;
}

// The `java` command knows these and makes a property of them; a JVM in a process does not.
bool IsClassPathOfCommand(const std::string& option) {
  const std::string name = option.substr(0, option.find('='));
  return name == "-cp" || name == "-classpath" || name == "--class-path";
}

const char* NameOf(jint error) {
  switch (error) {
    case JNI_ENOMEM:
      return "not enough memory";
    case JNI_EEXIST:
      return "this process has or had a JVM already";
    case JNI_EVERSION:
      return "the JVM does not know this JNI version";
    case JNI_EINVAL:
      return "an option is not valid";
    default:
      return "the JVM gave no reason";
  }
}

}  // namespace

JavaVM* JvmLauncher::Launch() {
  const FloatScope floats;
  if (!LoadLibrary() || !CollectOptions()) return nullptr;
  std::string reason;
  if (_settings.guard && !_guard.Load(_settings.guardLibrary, reason)) {
    _error = "cannot start Java: the guard cannot be loaded: " + reason;
    return nullptr;
  }
  JavaVM* existing = Existing();
  return Guarded(existing == nullptr ? Create() : existing);
}

bool JvmLauncher::LoadLibrary() {
  const JvmLocation location = LocateJvm(_settings.javaHome);
  if (location.library.empty()) {
    _error = "cannot start Java: no JVM found; tried " + location.tried;
    return false;
  }
  _library = location.library;
  _handle = dlopen(_library.c_str(), RTLD_NOW | RTLD_GLOBAL);
  if (_handle == nullptr) {
    _error = std::string("cannot start Java: ") + dlerror();
    return false;
  }
  _create = reinterpret_cast<CreateFunction>(dlsym(_handle, "JNI_CreateJavaVM"));
  _getCreated = reinterpret_cast<GetCreatedFunction>(dlsym(_handle, "JNI_GetCreatedJavaVMs"));
  if (_create != nullptr && _getCreated != nullptr) return true;
  _error = "cannot start Java: " + _library + " is not a JVM";
  return false;
}

bool JvmLauncher::CollectOptions() {
  const GivenOptions given(_settings);
  if (!given.AreReadable()) {
    _error = "cannot start Java: TESK_JVM_OPTIONS has an open quote or ends in a backslash";
    return false;
  }
  for (const std::string& option : given.Firm()) {
    if (!IsClassPathOfCommand(option)) continue;
    _error = "cannot start Java: " + option +
             " is an option of the java command alone; the environment variable TESK_CLASSPATH "
             "adds to the class path";
    return false;
  }
  AddDefaults(given);
  AddArchive(DefaultOptions(given.All()));
  const std::string classPath = ClassPathOption(_settings.classPath);
  if (!classPath.empty()) _options.push_back(classPath);
  _options.insert(_options.end(), given.Firm().begin(), given.Firm().end());
  return true;
}

// The library's make way for the host's, and both for firm ones. The host's are not compared with
// each other: whether they fit together is the JVM's to say.
void JvmLauncher::AddDefaults(const GivenOptions& given) {
  std::vector<std::string> library = given.LibraryDefaults();
  if (_settings.leaveSignalsToHost) library.push_back("-Xrs");
  // A warning about a method that is bound again: see host/JavaThreadStart.h.
  library.push_back("-Xlog:jni+resolve=off");
  if (Environment("DISPLAY").empty()) library.push_back("-Djava.awt.headless=true");
  const DefaultOptions besideAll(given.All());
  for (const std::string& option : library) {
    if (besideAll.Holds(option)) _options.push_back(option);
  }
  const DefaultOptions besideFirm(given.Firm());
  for (const std::string& option : given.HostDefaults()) {
    if (besideFirm.Holds(option)) _options.push_back(option);
  }
}

void JvmLauncher::AddArchive(const DefaultOptions& defaults) {
  const std::string archive = Archive(defaults);
  if (archive.empty() || access(archive.c_str(), R_OK) != 0) return;
  _options.push_back("-XX:SharedArchiveFile=" + archive);
  // An archive that does not fit is no news to a user: everything works, only the start is slower.
  for (const char* silence : {"-Xshare:auto", "-Xlog:cds=off", "-Xlog:cds+dynamic=off"}) {
    if (defaults.Holds(silence)) _options.push_back(silence);
  }
}

std::string JvmLauncher::Archive(const DefaultOptions& defaults) const {
  if (!_settings.sharedArchive.empty()) {
    return defaults.TakesNamedArchive() ? _settings.sharedArchive : std::string();
  }
  if (_settings.classPath.empty() || !defaults.SearchesArchive()) return {};
  return ArchivePlaces(_library, _settings.classPath.front()).Find();
}

// The JVM, with the process otherwise as it was.
jint JvmLauncher::CreateBesideHost(JavaVM** vm, JavaVMInitArgs& arguments) {
  const LocaleScope locale;
  // Looks at the host's mask, which the next line changes.
  const SuspendSignal suspend;
  const SignalScope signals;
  JavaDescriptors::Begin(_library);
  void* created = nullptr;
  const jint result = _create(vm, &created, &arguments);
  if (result != JNI_OK) return result;
  auto* env = static_cast<JNIEnv*>(created);
  BlockSignalsInJavaThreads(env, _handle);
  KeepChildSignal(env);
  return result;
}

JavaVM* JvmLauncher::Create() {
  std::vector<JavaVMOption> options;
  // First, as the JVM uses them from there on.
  char print[] = "vfprintf";
  char abort[] = "abort";
  options.push_back({print, reinterpret_cast<void*>(&PrintForJvm)});
  options.push_back({abort, reinterpret_cast<void*>(&PrintCapturedAtAbort)});
  for (std::string& option : _options) options.push_back({option.data(), nullptr});
  JavaVMInitArgs arguments{JNI_VERSION_1_8, static_cast<jint>(options.size()), options.data(),
                           JNI_FALSE};
  JavaVM* vm = nullptr;
  captured.clear();
  capturing = true;
  const jint result = CreateBesideHost(&vm, arguments);
  capturing = false;
  const std::string printed = CapturedLine();
  if (result == JNI_OK) {
    if (!printed.empty()) std::fprintf(stderr, "%s\n", printed.c_str());
    return vm;
  }
  _error = "cannot start Java: the JVM " + _library +
           " did not start: " + (printed.empty() ? NameOf(result) : printed);
  return nullptr;
}

JavaVM* JvmLauncher::Existing() const {
  JavaVM* vm = nullptr;
  jsize count = 0;
  return _getCreated(&vm, 1, &count) == JNI_OK && count > 0 ? vm : nullptr;
}

JavaVM* JvmLauncher::Guarded(JavaVM* vm) {
  if (vm == nullptr || !_settings.guard || _guard.Install(vm, _settings.guardOptions)) return vm;
  _error = "cannot use the JVM " + _library + ": the guard cannot replace its functions";
  return nullptr;
}

}  // namespace chartbridge
