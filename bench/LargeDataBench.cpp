// SPDX-License-Identifier: Apache-2.0
// 64 MiB of chart data on their way to Java: shared as a direct buffer, against copied as a byte
// array. Time, and the most memory that a process needs for it; each form runs in a process of its
// own.
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include "bench/BenchJvm.h"
#include "bench/PairedTiming.h"
#include "chart/ViZEditor.h"
#include "host/LocalFrame.h"

namespace {

constexpr std::size_t kBytes = std::size_t{64} << 20U;
constexpr int kCalls = 15;

struct Result {
  double milliseconds;
  double extraMiB;
};

bool RenderShared(const std::string& data) {
  return ViZEditor::GetInstance()->RenderToFileHeadless(
      "chart", reinterpret_cast<const unsigned char*>(data.data()), data.size(), "unused",
      ViZEditor::IMAGE_PNG, 100, "", "", "", "", false);
}

bool RenderCopied(const std::string& data) {
  return ViZEditor::GetInstance()->RenderToFileHeadless("chart", data, "unused",
                                                        ViZEditor::IMAGE_PNG, "", "", "", "", 100);
}

Result Measure(bool shared) {
  JNIEnv* env = chartbridge::StartBenchJvm({CHARTBRIDGE_ECHO_JAR}, true);
  ViZEditor::GetInstance()->StartEditorHeadless(env);
  const std::string data(kBytes, '1');
  const double before = chartbridge::ResidentMiB();
  std::vector<double> times;
  for (int i = 0; i < kCalls; ++i) {
    const chartbridge::LocalFrame frame;
    times.push_back(chartbridge::NanosecondsPerCall(
        [&] {
          if (!(shared ? RenderShared(data) : RenderCopied(data))) _exit(1);
        },
        1));
  }
  return {chartbridge::Median(times) * 1e-6, chartbridge::PeakResidentMiB() - before};
}

bool MeasureInChild(bool shared, Result& result) {
  int channel[2];
  if (pipe(channel) != 0) return false;
  const pid_t child = fork();
  if (child == 0) {
    const Result measured = Measure(shared);
    _exit(write(channel[1], &measured, sizeof measured) == sizeof measured ? 0 : 1);
  }
  close(channel[1]);
  const bool complete = read(channel[0], &result, sizeof result) == sizeof result;
  close(channel[0]);
  int status = 0;
  waitpid(child, &status, 0);
  return complete && status == 0;
}

}  // namespace

int main() {
  Result shared{};
  Result copied{};
  if (!MeasureInChild(true, shared) || !MeasureInChild(false, copied)) {
    std::cerr << "A measurement failed.\n";
    return 1;
  }
  std::cout << std::fixed << std::setprecision(1)
            << "64 MiB to Java           time      extra memory at the peak\n"
            << "direct buffer        " << std::setw(7) << shared.milliseconds << " ms   "
            << std::setw(7) << shared.extraMiB << " MiB\n"
            << "byte string          " << std::setw(7) << copied.milliseconds << " ms   "
            << std::setw(7) << copied.extraMiB << " MiB\n"
            << "ratio                " << std::setw(7) << copied.milliseconds / shared.milliseconds
            << "\n";
  return 0;
}
