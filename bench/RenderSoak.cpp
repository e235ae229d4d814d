// SPDX-License-Identifier: Apache-2.0
// Renders one chart over and over on one thread, a local frame around each, and prints how the Java
// heap (after a collection) and the resident memory go. Both are flat after the warm-up, or
// something leaks.
#include <CLI/CLI.hpp>
#include <chrono>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>

#include "bench/BenchJvm.h"
#include "chart/ViZEditor.h"
#include "host/LocalFrame.h"

namespace {

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw CLI::FileError::Missing(path);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

double HeapAfterCollectionMiB(JNIEnv* env) {
  const chartbridge::LocalFrame frame;
  const jclass runtimeClass = env->FindClass("java/lang/Runtime");
  const jobject runtime = env->CallStaticObjectMethod(
      runtimeClass, env->GetStaticMethodID(runtimeClass, "getRuntime", "()Ljava/lang/Runtime;"));
  env->CallVoidMethod(runtime, env->GetMethodID(runtimeClass, "gc", "()V"));
  const jlong total =
      env->CallLongMethod(runtime, env->GetMethodID(runtimeClass, "totalMemory", "()J"));
  const jlong free =
      env->CallLongMethod(runtime, env->GetMethodID(runtimeClass, "freeMemory", "()J"));
  return static_cast<double>(total - free) / (1 << 20);
}

bool Render(const std::string& chart, const std::string& data, double size) {
  const chartbridge::LocalFrame frame;
  std::string picture;
  unsigned int unused = 0;
  return ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
      chart, data, unused, ViZEditor::IMAGE_PNG, size, "", "", "", "", picture);
}

void RenderLarge(const std::string& chart, const std::string& data) {
  for (int i = 0; i < 3; ++i) {
    if (!Render(chart, data, 100)) throw CLI::RuntimeError("the large data cannot be rendered", 1);
  }
  std::cout << std::fixed << std::setprecision(1) << "after the large data: resident "
            << chartbridge::ResidentMiB() << " MiB, at most " << chartbridge::PeakResidentMiB()
            << " MiB\n";
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("Renders one chart many times and prints the memory curves.");
  std::string chartPath;
  std::string dataPath;
  long renders = 200000;
  long every = 10000;
  double size = 25;
  std::string largePath;
  app.add_option("chart", chartPath, "a chart, in the graph language or as XML")->required();
  app.add_option("data", dataPath, "its data, as CSV")->required();
  app.add_option("--renders", renders, "how often")->capture_default_str();
  app.add_option("--every", every, "how many renders between two lines")->capture_default_str();
  app.add_option("--large", largePath,
                 "data to render a few times before, to see the memory given back");
  app.add_option("--size", size, "percent of the chart's own size")->capture_default_str();
  CLI11_PARSE(app, argc, argv);

  const std::string chart = ReadFile(chartPath);
  const std::string data = ReadFile(dataPath);
  JNIEnv* env = chartbridge::StartBenchJvm({CHARTBRIDGE_RUNTIME_JAR}, true);
  ViZEditor::GetInstance()->StartEditorHeadless(env);

  if (!largePath.empty()) RenderLarge(chart, ReadFile(largePath));
  std::cout << "renders  heap after GC [MiB]  resident [MiB]  ms a render\n" << std::fixed;
  auto begin = std::chrono::steady_clock::now();
  for (long i = 1; i <= renders; ++i) {
    if (!Render(chart, data, size)) {
      std::cerr << "Render " << i << " failed; set DumpChartTimePath to see why.\n";
      return 1;
    }
    if (i % every != 0) continue;
    const auto end = std::chrono::steady_clock::now();
    const double ms =
        std::chrono::duration<double, std::milli>(end - begin).count() / static_cast<double>(every);
    std::cout << std::setw(7) << i << std::setprecision(1) << std::setw(21)
              << HeapAfterCollectionMiB(env) << std::setw(16) << chartbridge::ResidentMiB()
              << std::setprecision(2) << std::setw(13) << ms << std::endl;
    begin = std::chrono::steady_clock::now();
  }
  return 0;
}
