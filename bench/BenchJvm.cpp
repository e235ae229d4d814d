// SPDX-License-Identifier: Apache-2.0
#include "bench/BenchJvm.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>

#include "host/JvmSettings.h"
#include "platform/TeskJVM.h"

namespace chartbridge {
namespace {

// A line such as "VmHWM:   123456 kB".
double ReadStatusMiB(const std::string& key) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.compare(0, key.size(), key) != 0) continue;
    std::istringstream words(line.substr(key.size() + 1));
    double kibibytes = 0;
    words >> kibibytes;
    return kibibytes / 1024;
  }
  return 0;
}

}  // namespace

JNIEnv* StartBenchJvm(const std::vector<std::string>& jars, bool guard) {
  JvmSettings settings = GetJvmSettings();
  settings.classPath = jars;
  settings.guard = guard;
  SetJvmSettings(settings);
  JNIEnv* env = nullptr;
  if (TeskJVM::GetInstance()->StartJVM()) TeskJVM::GetInstance()->AttachCurrentThread(&env);
  if (env == nullptr) {
    std::cerr << "The JVM does not start.\n";
    std::exit(1);
  }
  return env;
}

double PeakResidentMiB() { return ReadStatusMiB("VmHWM"); }

double ResidentMiB() { return ReadStatusMiB("VmRSS"); }

}  // namespace chartbridge
