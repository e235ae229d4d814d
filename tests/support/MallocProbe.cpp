// SPDX-License-Identifier: Apache-2.0
#include "tests/support/MallocProbe.h"

#include "tests/support/KitScope.h"

void* RealMalloc(std::size_t size) __asm__("__real_malloc");
void RealFree(void* memory) __asm__("__real_free");
void* WrapMalloc(std::size_t size) __asm__("__wrap_malloc");
void WrapFree(void* memory) __asm__("__wrap_free");

using chartbridge::testing::KitScope;
using chartbridge::testing::MallocProbe;

void* WrapMalloc(std::size_t size) {
  return KitScope::Active() ? RealMalloc(size) : MallocProbe::Get().Allocate(size);
}

void WrapFree(void* memory) {
  if (!KitScope::Active()) MallocProbe::Get().Free(memory);
  RealFree(memory);
}

namespace chartbridge::testing {

MallocProbe& MallocProbe::Get() {
  static thread_local MallocProbe probe;
  return probe;
}

void MallocProbe::Start() {
  _blocks.clear();
  _recording = true;
  _fail_next = false;
}

void MallocProbe::Stop() {
  _recording = false;
  for (const Block& block : _blocks) {
    if (!block.freed) RealFree(block.memory);
  }
  _blocks.clear();
}

void* MallocProbe::Allocate(std::size_t size) {
  if (_recording && _fail_next) {
    _fail_next = false;
    return nullptr;
  }
  void* memory = RealMalloc(size);
  if (!_recording) return memory;
  const KitScope kit;
  _blocks.push_back({memory, size, false});
  return memory;
}

void MallocProbe::Free(void* memory) {
  if (!_recording || memory == nullptr) return;
  for (Block& block : _blocks) {
    if (block.memory == memory) block.freed = true;
  }
}

}  // namespace chartbridge::testing
