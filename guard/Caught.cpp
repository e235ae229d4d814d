// SPDX-License-Identifier: Apache-2.0
#include "guard/Caught.h"

#include <atomic>
#include <cstdio>
#include <string>

namespace chartbridge {
namespace {

constexpr int kMaxLogLines = 100;

std::atomic<unsigned long long> counts[JNIGUARD_KINDS];
std::atomic<bool> logging{false};
std::atomic<int> logLines{0};

constexpr const char* kNames[JNIGUARD_KINDS] = {
    "references given back as another kind",
    "array elements released against another array",
    "array elements or texts released that were not out",
    "array and string functions on null",
    "objects and methods of a null class",
    "calls on null or without a method",
    "byte arrays wrapped in a ByteBuffer",
    "uses of another thread's env",
    "other null or impossible inputs",
};

bool IsKind(int kind) { return kind >= 0 && kind < JNIGUARD_KINDS; }

}  // namespace

void Caught(jniguard_kind kind, const char* function, const char* what) {
  counts[kind].fetch_add(1, std::memory_order_relaxed);
  if (!logging.load(std::memory_order_relaxed)) return;
  if (logLines.fetch_add(1, std::memory_order_relaxed) >= kMaxLogLines) return;
  std::fprintf(stderr, "jniguard: %s: %s\n", function, what);
}

void LogCaught(bool on) { logging.store(on, std::memory_order_relaxed); }

}  // namespace chartbridge

using chartbridge::counts;
using chartbridge::IsKind;
using chartbridge::kNames;

unsigned long long jniguard_count(int kind) {
  return IsKind(kind) ? counts[kind].load(std::memory_order_relaxed) : 0;
}

unsigned long long jniguard_counts(unsigned long long* out, size_t size) {
  for (size_t i = 0; i < size; ++i) out[i] = jniguard_count(static_cast<int>(i));
  unsigned long long sum = 0;
  for (int kind = 0; kind < JNIGUARD_KINDS; ++kind) sum += jniguard_count(kind);
  return sum;
}

const char* jniguard_kind_name(int kind) { return IsKind(kind) ? kNames[kind] : ""; }

size_t jniguard_report(char* buffer, size_t size) {
  std::string text = "jniguard: " + std::to_string(jniguard_counts(nullptr, 0)) + " calls caught\n";
  for (int kind = 0; kind < JNIGUARD_KINDS; ++kind) {
    text += "  " + std::to_string(jniguard_count(kind)) + " " + kNames[kind] + "\n";
  }
  if (size > 0) std::snprintf(buffer, size, "%s", text.c_str());
  return text.size();
}
