// SPDX-License-Identifier: Apache-2.0
// Does one operation over and over on one thread and prints how the native memory goes. The Java
// side does nothing, so that what is left of each call shows: the elements that some operations
// never release, which the end of a local frame gives back, and a text converter for each text of a
// Java exception that is recorded.
#include <malloc.h>

#include <CLI/CLI.hpp>
#include <cstddef>
#include <functional>
#include <iomanip>
#include <iostream>
#include <map>
#include <memory>
#include <string>

#include "bench/BenchJvm.h"
#include "chart/ViZEditor.h"
#include "host/JvmSettings.h"
#include "host/LocalFrame.h"

namespace {

constexpr unsigned char kData[4] = {'d', 'a', 't', 'a'};

bool RenderFromBuffer() {
  std::string picture;
  std::string unused;
  return ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
      "chart", kData, sizeof kData, ViZEditor::IMAGE_PNG, 100, picture, unused, unused, "", "", "",
      "", false);
}

bool Embed() {
  unsigned char histogram[4] = {};
  return !ViZEditor::GetInstance()
              ->EmbedHistogramInGraph("a", "b", histogram, sizeof histogram, 1)
              .empty();
}

// The Java class has no such method, so each call is two exceptions that are recorded: the
// lookup's, and the guard's for the call without a method.
bool Fail() { return !ViZEditor::GetInstance()->ConvertImage("", "", ViZEditor::IMAGE_PNG); }

// A frame of JNI's own, which gives references back and nothing else.
class PlainFrame {
 public:
  explicit PlainFrame(JNIEnv* env) : _env(env) { _env->PushLocalFrame(64); }
  ~PlainFrame() { _env->PopLocalFrame(nullptr); }
  PlainFrame(const PlainFrame&) = delete;
  PlainFrame& operator=(const PlainFrame&) = delete;

 private:
  JNIEnv* _env;
};

double InUseKiB() {
  const auto memory = mallinfo2();
  return static_cast<double>(memory.uordblks + memory.hblkhd) / 1024;
}

}  // namespace

int main(int argc, char** argv) {
  const std::map<std::string, std::function<bool()>> operations = {
      {"render", RenderFromBuffer}, {"embed", Embed}, {"exception", Fail}};
  CLI::App app("Does one operation many times and prints how the native memory goes.");
  std::string name;
  long calls = 100000;
  long every = 10000;
  bool plain = false;
  app.add_option("operation", name, "render, embed or exception")
      ->required()
      ->check(CLI::IsMember(operations));
  app.add_option("--calls", calls, "how often")->capture_default_str();
  app.add_option("--every", every, "how many calls between two lines")->capture_default_str();
  app.add_flag("--plain-frames", plain, "frames of JNI's own, which leave elements out");
  CLI11_PARSE(app, argc, argv);

  chartbridge::JvmSettings settings;
  settings.options = {"-Xmx64m", "-XX:+UseSerialGC"};
  chartbridge::SetJvmSettings(settings);
  JNIEnv* env = chartbridge::StartBenchJvm({CHARTBRIDGE_ECHO_JAR}, true);
  ViZEditor::GetInstance()->StartEditorHeadless(env);

  std::cout << "  calls  native memory in use [KiB]  resident [MiB]\n" << std::fixed;
  for (long i = 0; i <= calls; ++i) {
    if (i % every == 0) {
      std::cout << std::setw(7) << i << std::setprecision(0) << std::setw(28) << InUseKiB()
                << std::setprecision(1) << std::setw(16) << chartbridge::ResidentMiB() << std::endl;
    }
    const PlainFrame references(env);
    const auto frame = plain ? nullptr : std::make_unique<chartbridge::LocalFrame>();
    if (operations.at(name)()) continue;
    std::cerr << "Call " << i << " failed; set DumpChartTimePath to see why.\n";
    return 1;
  }
  return 0;
}
