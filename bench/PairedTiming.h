// SPDX-License-Identifier: Apache-2.0
#ifndef BENCH_PAIREDTIMING_H_
#define BENCH_PAIREDTIMING_H_

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace chartbridge {

template <typename Function>
double NanosecondsPerCall(Function&& function, int calls) {
  const auto begin = std::chrono::steady_clock::now();
  for (int i = 0; i < calls; ++i) function();
  const auto end = std::chrono::steady_clock::now();
  return std::chrono::duration<double, std::nano>(end - begin).count() / calls;
}

inline double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// Times a subject against a floor in turns, so that whatever disturbs the machine disturbs both,
/// and reports the medians in nanoseconds per call and the median of their ratios. `prepare(true)`
/// runs, untimed, before each batch of the subject, and `prepare(false)` before each of the floor.
template <typename Subject, typename Floor, typename Prepare>
void TimeInTurns(benchmark::State& state, Subject&& subject, Floor&& floor, Prepare&& prepare,
                 int callsPerBatch) {
  std::vector<double> subjectTimes;
  std::vector<double> floorTimes;
  std::vector<double> ratios;
  const auto timeSubject = [&] {
    prepare(true);
    subjectTimes.push_back(NanosecondsPerCall(subject, callsPerBatch));
  };
  const auto timeFloor = [&] {
    prepare(false);
    floorTimes.push_back(NanosecondsPerCall(floor, callsPerBatch));
  };
  bool subjectFirst = true;
  for (auto _ : state) {
    if (subjectFirst) {
      timeSubject();
      timeFloor();
    } else {
      timeFloor();
      timeSubject();
    }
    subjectFirst = !subjectFirst;
    ratios.push_back(subjectTimes.back() / floorTimes.back());
    state.SetIterationTime(subjectTimes.back() * 1e-9 * callsPerBatch);
  }
  state.counters["subject_ns"] = Median(subjectTimes);
  state.counters["floor_ns"] = Median(floorTimes);
  state.counters["ratio"] = Median(ratios);
}

}  // namespace chartbridge

#endif  // BENCH_PAIREDTIMING_H_
