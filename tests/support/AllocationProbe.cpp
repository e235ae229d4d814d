// SPDX-License-Identifier: Apache-2.0
#include "tests/support/AllocationProbe.h"

#include <new>
#include <string>

#include "tests/support/EventLog.h"
#include "tests/support/KitScope.h"

// Wrapped at link time instead of replaced, so that a sanitizer keeps its own operators.
void* RealNew(std::size_t size) __asm__("__real__Znwm");
void* RealNewArray(std::size_t size) __asm__("__real__Znam");
void RealDeleteArray(void* block) __asm__("__real__ZdaPv");
void* WrapNew(std::size_t size) __asm__("__wrap__Znwm");
void* WrapNewArray(std::size_t size) __asm__("__wrap__Znam");
void WrapDeleteArray(void* block) __asm__("__wrap__ZdaPv");

using chartbridge::testing::AllocationProbe;
using chartbridge::testing::KitScope;

void* WrapNew(std::size_t size) {
  return KitScope::Active() ? RealNew(size) : AllocationProbe::Get().New(size);
}

void* WrapNewArray(std::size_t size) {
  return KitScope::Active() ? RealNewArray(size) : AllocationProbe::Get().NewArray(size);
}

void WrapDeleteArray(void* block) {
  if (!KitScope::Active() && block != nullptr) AllocationProbe::Get().DeleteArray(block);
  RealDeleteArray(block);
}

namespace chartbridge::testing {
namespace {

// Counts down to the allocation that fails; 0 means none.
void CountDown(int& failing) {
  if (failing == 0) return;
  if (--failing == 0) throw std::bad_alloc();
}

}  // namespace

AllocationProbe& AllocationProbe::Get() {
  static thread_local AllocationProbe probe;
  return probe;
}

void AllocationProbe::Reset() {
  const KitScope kit;
  _failing_new = 0;
  _failing_new_array = 0;
  _buffers = 0;
  _numbers.clear();
}

void* AllocationProbe::New(std::size_t size) {
  CountDown(_failing_new);
  return RealNew(size);
}

void* AllocationProbe::NewArray(std::size_t size) {
  CountDown(_failing_new_array);
  void* block = RealNewArray(size);
  const KitScope kit;
  const int number = ++_buffers;
  _numbers[block] = number;
  EventLog::Get().Record(Source::kMemory, "new[] " + std::to_string(size) + " bytes: buffer " +
                                              std::to_string(number));
  return block;
}

void AllocationProbe::DeleteArray(void* block) {
  const KitScope kit;
  const auto number = _numbers.find(block);
  if (number == _numbers.end()) return;
  EventLog::Get().Record(Source::kMemory, "delete[] buffer " + std::to_string(number->second));
  _numbers.erase(number);
}

}  // namespace chartbridge::testing
