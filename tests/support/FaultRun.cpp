// SPDX-License-Identifier: Apache-2.0
#include "tests/support/FaultRun.h"

#include <gtest/gtest.h>

#include <map>
#include <new>
#include <stdexcept>

#include "bridge/JException.h"
#include "tests/support/AllocationProbe.h"
#include "tests/support/ClockProbe.h"
#include "tests/support/EventLog.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FloatEnvProbe.h"
#include "tests/support/IcuProbe.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

enum class Kind { kZero, kZeroAndPending, kJException, kBadAlloc };

constexpr Kind kKinds[] = {Kind::kZero, Kind::kZeroAndPending, Kind::kJException, Kind::kBadAlloc};

constexpr char kSeenJException[] = "JException(a, b, c)";
constexpr char kSeenBadAlloc[] = "std::bad_alloc";

bool Throws(Kind kind) { return kind == Kind::kJException || kind == Kind::kBadAlloc; }

const char* NameOf(Kind kind) {
  switch (kind) {
    case Kind::kZero:
      return "gives zero";
    case Kind::kZeroAndPending:
      return "gives zero and leaves an exception pending";
    case Kind::kJException:
      return "throws a JException";
    default:
      return "throws std::bad_alloc";
  }
}

// One JNI call of the run without fault.
struct Call {
  std::string function;
  // The nth of its function, from the scene's begin on.
  int nth;
  // How `special` knows it: the nth of its function in its phase, and its event.
  std::string label;
  bool in_start;
  // Whether the outputs are written when it happens.
  bool written;
};

struct Recording {
  std::vector<Call> calls;
  std::string result;
};

bool StartsWith(const std::string& text, const std::string& start) {
  return text.compare(0, start.size(), start) == 0;
}

void AppendCalls(const Events& events, bool in_start, const std::string& written_from,
                 std::map<std::string, int>& counts, std::vector<Call>& calls) {
  std::map<std::string, int> in_phase;
  bool written = false;
  for (const std::string& event : events) {
    const std::string function = event.substr(0, event.find('('));
    written = written || (!written_from.empty() && !in_start && StartsWith(event, written_from));
    const std::string nth = std::to_string(++in_phase[function]);
    calls.push_back(
        {function, ++counts[function], function + "#" + nth + " " + event, in_start, written});
  }
}

Recording Record(const FaultOperation& operation) {
  Recording recording;
  std::map<std::string, int> counts;
  const std::unique_ptr<FaultScene> scene = operation.scene();
  scene->Start();
  AppendCalls(EventLog::Get().Texts(Source::kJni), true, "", counts, recording.calls);
  EventLog::Get().Clear();
  recording.result = scene->Run();
  AppendCalls(EventLog::Get().Texts(Source::kJni), false, operation.written_from, counts,
              recording.calls);
  EXPECT_EQ(scene->jvm.UnreleasedBuffers(), operation.unreleased) << operation.name;
  return recording;
}

bool DecidesNothing(const Call& call) {
  const bool releases = StartsWith(call.function, "Release") || StartsWith(call.function, "Delete");
  // Nothing is lost where nothing is written.
  const bool empty = call.label.find(", 0, 0, \"\")") != std::string::npos;
  return releases || call.function == "ExceptionOccurred" || empty;
}

std::string ExpectedOfThrow(const FaultOperation& operation, const Call& call, Kind kind) {
  const bool jexception = kind == Kind::kJException;
  const std::string seen = jexception ? kSeenJException : kSeenBadAlloc;
  // No start catches anything.
  if (call.in_start) return seen;
  const std::string& kept = jexception ? operation.on_jexception : operation.on_bad_alloc;
  if (kept.empty()) return seen;
  return call.written ? operation.on_exception_when_written : kept;
}

std::string Expected(const FaultOperation& operation, const Call& call, Kind kind) {
  if (Throws(kind)) return ExpectedOfThrow(operation, call, kind);
  if (!call.in_start) {
    for (const auto& [part, result] : operation.special) {
      if (call.label.find(part) != std::string::npos) return result;
    }
  }
  return DecidesNothing(call) ? operation.success : operation.failure;
}

void Inject(FakeJvm& jvm, const Call& call, Kind kind) {
  switch (kind) {
    case Kind::kZero:
      jvm.Fail(call.function, call.nth);
      break;
    case Kind::kZeroAndPending:
      jvm.Fail(call.function, call.nth, jvm.MakeThrowable("java/lang/InternalError", "injected"));
      break;
    case Kind::kJException:
      jvm.On(call.function, call.nth, [] { throw JException("a", "b", "c"); });
      break;
    case Kind::kBadAlloc:
      jvm.On(call.function, call.nth, [] { throw std::bad_alloc(); });
      break;
  }
}

// What leaves the scene, or its result where nothing does.
std::string Leaves(FaultScene& scene, bool start) {
  std::string result;
  const std::string thrown = Thrown([&] {
    try {
      if (start) scene.Start();
      result = scene.Run();
    } catch (const std::logic_error&) {
      result = "std::logic_error";
    }
  });
  return thrown == "nothing" ? result : thrown;
}

void ExpectBalancedGuards() {
  int saved = 0;
  for (const std::string& event : EventLog::Get().Texts(Source::kFloatEnv)) {
    EXPECT_TRUE(event == "fegetenv" || event == "fesetenv") << event;
    saved += event == "fegetenv" ? 1 : -1;
    EXPECT_GE(saved, 0) << "a floating-point environment is restored that was not saved";
  }
  EXPECT_EQ(saved, 0) << "a floating-point environment is not restored";
}

void ExpectBalancedMemory() {
  int allocated = 0;
  for (const std::string& event : EventLog::Get().Texts(Source::kMemory)) {
    allocated += StartsWith(event, "new[]") ? 1 : -1;
  }
  EXPECT_EQ(allocated, 0) << "the library keeps an array";
}

void RunFault(const FaultOperation& operation, const Call& call, Kind kind) {
  SCOPED_TRACE(operation.name + ": " + call.label + " " + NameOf(kind));
  const std::unique_ptr<FaultScene> scene = operation.scene();
  Inject(scene->jvm, call, kind);
  EXPECT_EQ(Leaves(*scene, true), Expected(operation, call, kind));
  EXPECT_EQ(FakePlatform::LockDepth(), 0) << "the process-wide lock is still held";
  ExpectBalancedGuards();
  ExpectBalancedMemory();
  // An exception passes over the release, and a release that fails releases nothing.
  const bool may_keep = Throws(kind) || StartsWith(call.function, "Release");
  EXPECT_LE(scene->jvm.UnreleasedBuffers(), operation.unreleased + (may_keep ? 1 : 0));
  if (call.in_start) return;
  EXPECT_EQ(Leaves(*scene, false), operation.success) << "in the run after the fault";
}

void RunUnattached(const FaultOperation& operation, bool has_jvm) {
  SCOPED_TRACE(operation.name + (has_jvm ? ": without an env" : ": without a JVM"));
  const std::unique_ptr<FaultScene> scene = operation.scene();
  scene->Start();
  FakePlatform::Get().env = nullptr;
  FakePlatform::Get().has_jvm = has_jvm;
  EventLog::Get().Clear();
  EXPECT_EQ(Leaves(*scene, false), operation.unattached);
  EXPECT_EQ(FakePlatform::LockDepth(), 0);
  ExpectBalancedGuards();
  ExpectBalancedMemory();
  if (operation.unattached == operation.success) return;
  EXPECT_TRUE(EventLog::Get().Texts(Source::kJni).empty());
}

}  // namespace

FaultScene::FaultScene() {
  FakePlatform::Get().Reset();
  FakePlatform::Get().env = jvm.Env();
  FloatEnvProbe::Get().Reset();
  ClockProbe::Get().Reset();
  AllocationProbe::Get().Reset();
  IcuProbe::Get().Reset();
  EventLog::Get().Start();
  EventLog::Get().Include(Source::kMemory);
}

FaultScene::~FaultScene() { EventLog::Get().Stop(); }

void RunFaults(const FaultOperation& operation) {
  const Recording recording = Record(operation);
  EXPECT_EQ(recording.result, operation.success);
  EXPECT_FALSE(recording.calls.empty());
  for (const auto& [part, result] : operation.special) {
    bool used = false;
    for (const Call& call : recording.calls) {
      used = used || call.label.find(part) != std::string::npos;
    }
    EXPECT_TRUE(used) << "no call is like " << part;
  }
  for (const Call& call : recording.calls) {
    for (const Kind kind : kKinds) {
      if (operation.over_own_env || !Throws(kind)) RunFault(operation, call, kind);
    }
  }
  if (!operation.over_own_env) return;
  RunUnattached(operation, true);
  RunUnattached(operation, false);
}

}  // namespace chartbridge::testing
