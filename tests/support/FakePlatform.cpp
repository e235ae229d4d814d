// SPDX-License-Identifier: Apache-2.0
#include "tests/support/FakePlatform.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "platform/ChartBase.h"
#include "platform/ChartTransformer.h"
#include "platform/CriticalSection.h"
#include "platform/JNIAccessor.h"
#include "platform/TESKMB.h"
#include "platform/TeskJVM.h"
#include "tests/support/Describe.h"
#include "tests/support/EventLog.h"
#include "tests/support/FakeJvm.h"
#include "tests/support/KitScope.h"

using chartbridge::testing::EventLog;
using chartbridge::testing::FakeJvm;
using chartbridge::testing::FakePlatform;
using chartbridge::testing::KitScope;
using chartbridge::testing::OutsideKit;
using chartbridge::testing::Quoted;
using chartbridge::testing::Source;
using chartbridge::testing::Utf16;
using chartbridge::testing::Utf8;

namespace {

void Record(const std::string& text) { EventLog::Get().Record(Source::kPlatform, text); }

void Run(const std::function<void()>& action) {
  if (!action) return;
  const OutsideKit outside;
  action();
}

// Relaxed, so that reading it from a test adds no order between threads.
std::atomic<int> lock_depth{0};

}  // namespace

namespace chartbridge::testing {

FakePlatform& FakePlatform::Get() {
  static FakePlatform platform;
  return platform;
}

void FakePlatform::Reset() { *this = FakePlatform(); }

int FakePlatform::LockDepth() { return lock_depth.load(std::memory_order_relaxed); }

}  // namespace chartbridge::testing

// ---- The lock: a real one, so that tests with several threads mean something.

class CriticalSection::Impl {
 public:
  std::recursive_mutex mutex;
};

CriticalSection::CriticalSection() : _impl(std::make_unique<Impl>()) {}

CriticalSection::~CriticalSection() = default;

CriticalSection::Lock::Lock(const CriticalSection& section) : _section(section) {
  const KitScope kit;
  _section._impl->mutex.lock();
  const int depth = lock_depth.fetch_add(1, std::memory_order_relaxed) + 1;
  Record("lock depth=" + std::to_string(depth));
}

CriticalSection::Lock::~Lock() {
  const KitScope kit;
  const int depth = lock_depth.fetch_sub(1, std::memory_order_relaxed) - 1;
  Record("unlock depth=" + std::to_string(depth));
  _section._impl->mutex.unlock();
}

// ---- The JVM host.

TeskJVM* TeskJVM::GetInstance() {
  static TeskJVM jvm;
  const KitScope kit;
  Record("TeskJVM::GetInstance");
  return FakePlatform::Get().has_jvm ? &jvm : nullptr;
}

CriticalSection& TeskJVM::CritSect() {
  const KitScope kit;
  static CriticalSection section;
  return section;
}

bool TeskJVM::StartJVM() {
  const KitScope kit;
  Record("StartJVM");
  FakePlatform& platform = FakePlatform::Get();
  platform.started = platform.started || platform.start_works;
  return platform.started;
}

bool TeskJVM::IsStarted() {
  const KitScope kit;
  Record("IsStarted");
  return FakePlatform::Get().started;
}

JNIEnv* TeskJVM::GetEnv() {
  const KitScope kit;
  Record("GetEnv");
  return FakePlatform::Get().env;
}

bool TeskJVM::AttachCurrentThread(JNIEnv** env) {
  const KitScope kit;
  Record(*env == nullptr ? "AttachCurrentThread" : "AttachCurrentThread over an env");
  const FakePlatform& platform = FakePlatform::Get();
  Run(platform.on_attach);
  JNIEnv* given = platform.env_of_thread ? platform.env_of_thread() : platform.env;
  if (given != nullptr) *env = given;
  return platform.attach_result.value_or(given != nullptr);
}

// ---- The JNI accessor library.

JNIAccessor::JNIAccessor(JNIEnv* env) : _env(env) {
  const KitScope kit;
  Record(env == FakePlatform::Get().env ? "JNIAccessor" : "JNIAccessor on another env");
}

JNIAccessor::~JNIAccessor() {
  const KitScope kit;
  Record("~JNIAccessor");
}

jstring JNIAccessor::ToJString(const char* text, const char* encoding) const {
  const KitScope kit;
  Record("ToJString(" + Quoted(text) + ", " + encoding + ")");
  // Only a fake env can make a string; a test that passes another one looks at the events alone.
  if (_env != FakePlatform::Get().env || _env == nullptr) return nullptr;
  return FakeJvm::Of(_env).MakeString(std::string(text));
}

// ---- Transcoding.

int TESKMBGenericToU16(std::basic_string<unsigned short>& out, const std::string& in) {
  const KitScope kit;
  const std::u16string before(out.begin(), out.end());
  Record("TESKMBGenericToU16(" + Quoted(Utf8(before)) + ", " + Quoted(in) + ")");
  const FakePlatform& platform = FakePlatform::Get();
  Run(platform.on_generic_to_u16);
  if (platform.generic_to_u16_result != 0) return platform.generic_to_u16_result;
  const std::u16string text = Utf16(in);
  out.assign(text.begin(), text.end());
  return 0;
}

char* TESKMBTranscodeU8(const unsigned short* text) {
  const KitScope kit;
  const std::string utf8 = Utf8(reinterpret_cast<const char16_t*>(text));
  Record("TESKMBTranscodeU8(" + Quoted(utf8) + ")");
  return ::strdup(utf8.c_str());
}

void TESKMBRelease(char** text) {
  const KitScope kit;
  Record("TESKMBRelease(" + Quoted(*text) + ")");
  std::free(*text);
  *text = nullptr;
}

bool qUTF8mode() {
  const KitScope kit;
  Record("qUTF8mode");
  return FakePlatform::Get().utf8_mode;
}

// ---- The chart utility library.

const unsigned short ChartBase::_utf8[] = {'U', 'T', 'F', '-', '8', 0};

void ChartBase::printDebugInfo(const std::string& text) {
  const KitScope kit;
  Record("printDebugInfo(" + Quoted(text) + ")");
}

class ChartTransformer::Impl {};

ChartTransformer::ChartTransformer(const std::string& chart) {
  const KitScope kit;
  Record("ChartTransformer(" + Quoted(chart) + ")");
  Run(FakePlatform::Get().on_transform);
}

ChartTransformer::~ChartTransformer() {
  const KitScope kit;
  Record("~ChartTransformer");
}

void ChartTransformer::applyTemplate(const std::string& templ) {
  const KitScope kit;
  Record("applyTemplate(" + Quoted(templ) + ")");
  Run(FakePlatform::Get().on_transform);
}

std::string ChartTransformer::getEntireXML(const unsigned short* encoding) {
  const KitScope kit;
  Record("getEntireXML(" + Quoted(Utf8(reinterpret_cast<const char16_t*>(encoding))) + ")");
  Run(FakePlatform::Get().on_transform);
  return FakePlatform::Get().entire_xml;
}
