// SPDX-License-Identifier: Apache-2.0
#include "app/JavaMachine.h"

#include <filesystem>
#include <mutex>
#include <sstream>
#include <utility>

#include "app/Failure.h"
#include "app/Installation.h"
#include "app/NativeText.h"
#include "app/SignalCleanup.h"
#include "app/WorkingFolder.h"
#include "host/ClassArchive.h"
#include "host/JvmSettings.h"
#include "host/JvmThreads.h"
#include "platform/TeskJVM.h"

namespace chartbridge {

namespace {

/// Java takes a list of folders with colons, and cannot tell a folder that is not there from one
/// without the template.
const std::string& TemplatesFolder(const std::string& folder) {
  WorkingFolder::Check(folder);
  std::error_code error;
  if (!std::filesystem::is_directory(folder, error)) {
    throw Failure("--templates: " + folder + " is not a folder");
  }
  if (folder.find(':') == std::string::npos) return folder;
  throw UsageError("--templates: a folder with a colon in its name cannot be used");
}

JvmSettings SettingsFor(const JavaOptions& options) {
  JvmSettings settings;
  settings.guard = options.guard;
  // One picture does not pay for the optimising compiler.
  settings.defaultOptions.emplace_back("-XX:TieredStopAtLevel=1");
  if (!options.screen) settings.defaultOptions.emplace_back("-Djava.awt.headless=true");
  if (!options.templates.empty()) {
    settings.options.push_back("-Dchartbridge.templates=" + TemplatesFolder(options.templates));
  }

  if (!options.classPath.empty()) {
    std::istringstream entries(options.classPath);
    for (std::string entry; std::getline(entries, entry, ':');) {
      if (entry.empty()) continue;
      WorkingFolder::Check(entry);
      settings.classPath.push_back(entry);
    }
    return settings;
  }
  const Installation installation;
  if (installation.Jar().empty()) {
    throw Failure("the Java classes (chartbridge-runtime.jar) are not in " +
                  installation.SearchedFolders() + "; name them with --classpath");
  }
  settings.classPath = {installation.Jar()};
  return settings;
}

}  // namespace

JavaMachine::JavaMachine(const JavaOptions& options) : _env(nullptr) {
  std::mutex mutex;
  std::string messages;
  JvmSettings settings = SettingsFor(options);
  settings.message = [&mutex, &messages](const std::string& text) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (!messages.empty()) messages += "; ";
    messages += text;
  };
  SetJvmSettings(settings);
  const bool started = TeskJVM::GetInstance()->StartJVM();
  // Later messages go to standard error again: these locals end here.
  settings.message = nullptr;
  SetJvmSettings(std::move(settings));
  if (!started) {
    throw Failure(messages.empty() ? "Java could not be started" : OnOneLine(messages));
  }
  _env = TeskJVM::GetInstance()->GetEnv();
  const auto lock = SignalCleanup::Lock();
  SignalCleanup::SetJavaRuns(true);
}

JavaMachine::~JavaMachine() {
  {
    // A signal that comes later finds all files complete.
    const auto lock = SignalCleanup::Lock();
    SignalCleanup::SetJavaRuns(false);
  }
  DestroyJvm();
  // For the next run, where nobody has made it when this was installed.
  MakeClassArchive();
}

}  // namespace chartbridge
