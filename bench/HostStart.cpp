// SPDX-License-Identifier: Apache-2.0
// How long a host takes from its start to its first chart and its end, with the class archive that
// it finds by itself and without, in turns. Each run is a process of its own.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "bench/BenchJvm.h"
#include "chart/ViZEditor.h"
#include "host/LocalFrame.h"

namespace {

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw CLI::FileError::Missing(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

int RenderOnce(const std::string& chart, const std::string& data) {
  JNIEnv* env = chartbridge::StartBenchJvm({CHARTBRIDGE_RUNTIME_JAR}, true);
  ViZEditor::GetInstance()->StartEditorHeadless(env);
  const chartbridge::LocalFrame frame;
  std::string picture;
  unsigned int unused = 0;
  const bool done = ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
      chart, data, unused, ViZEditor::IMAGE_PNG, 100, "", "", "", "", picture);
  return done ? 0 : 1;
}

struct Times {
  std::vector<double> wall;
  std::vector<double> processor;
};

double Seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

void Measure(const char* options, const std::string& chart, const std::string& data, Times& times) {
  const auto begin = std::chrono::steady_clock::now();
  const pid_t child = fork();
  if (child == 0) {
    setenv("TESK_JVM_OPTIONS", options, 1);
    _exit(RenderOnce(chart, data));
  }
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  if (status != 0) throw CLI::RuntimeError("a run failed", 1);
  const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - begin;
  times.wall.push_back(wall.count());
  times.processor.push_back(1000 * (Seconds(usage.ru_utime) + Seconds(usage.ru_stime)));
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("Starts a host over and over, with the class archive that it finds and without.");
  std::string chartPath;
  std::string dataPath;
  int turns = 20;
  app.add_option("chart", chartPath, "a chart, in the graph language or as XML")->required();
  app.add_option("data", dataPath, "its data, as CSV")->required();
  app.add_option("--turns", turns, "how often each")->capture_default_str();
  CLI11_PARSE(app, argc, argv);

  const std::string chart = ReadFile(chartPath);
  const std::string data = ReadFile(dataPath);
  // An option of its own for archives turns the search off; the JVM's own archive stays.
  const std::array<const char*, 2> options{"", "-Xshare:auto"};
  std::array<Times, 2> times;
  for (int turn = 0; turn < turns; ++turn) {
    for (std::size_t i = 0; i < options.size(); ++i) Measure(options[i], chart, data, times[i]);
  }
  const double wall[] = {Median(times[0].wall), Median(times[1].wall)};
  const double processor[] = {Median(times[0].processor), Median(times[1].processor)};
  std::cout << std::fixed << std::setprecision(0) << "start to first chart: " << wall[0]
            << " ms with the archive, " << wall[1] << " ms without; processor time " << processor[0]
            << " ms and " << processor[1] << " ms\n"
            << std::setprecision(2) << "ratios: " << wall[0] / wall[1] << " and "
            << processor[0] / processor[1] << "\n";
  return 0;
}
