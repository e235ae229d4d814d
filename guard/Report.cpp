// SPDX-License-Identifier: Apache-2.0
#include "guard/Report.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>

#include "guard/jniguard.h"

namespace chartbridge {
namespace {

std::mutex mutex;
bool wanted = false;
bool written = false;
bool atExit = false;

// Leaked on purpose: the report may be written after static objects have been destroyed.
std::string& File() {
  static auto* const file = new std::string;
  return *file;
}

void WriteTo(const char* text) {
  if (File().empty()) {
    std::fputs(text, stderr);
    return;
  }
  std::FILE* file = std::fopen(File().c_str(), "a");
  if (file == nullptr) {
    std::fprintf(stderr, "jniguard: cannot write the report to %s\n%s", File().c_str(), text);
    return;
  }
  std::fputs(text, file);
  std::fclose(file);
}

}  // namespace

void ReportAtEnd(const std::string& file) {
  const std::lock_guard<std::mutex> lock(mutex);
  File() = file;
  wanted = true;
  // A host seldom shuts its JVM down, so the end of the process counts too.
  if (!atExit) atExit = std::atexit(WriteReport) == 0;
}

void WriteReport() {
  const std::lock_guard<std::mutex> lock(mutex);
  if (!wanted || written) return;
  written = true;
  char text[2048];
  jniguard_report(text, sizeof text);
  WriteTo(text);
}

}  // namespace chartbridge
