// SPDX-License-Identifier: Apache-2.0
// What holds for every operation of the tree editor that works through one Java method.
#include <algorithm>
#include <cfenv>
#include <exception>
#include <stdexcept>

#include "tests/support/AllocationProbe.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FloatEnvProbe.h"
#include "tests/support/Thrown.h"
#include "tests/support/TreeFixture.h"
#include "tests/support/TreeOperations.h"

namespace chartbridge::testing {
namespace {

const JException kException("a", "b", "c");

// Everything that platform code may throw, with what a test sees of it outside.
struct Kind {
  const char* seen;
  void (*raise)();
};

constexpr Kind kJException = {"JException(a, b, c)", [] { throw JException("a", "b", "c"); }};

constexpr Kind kOtherKinds[] = {
    {"JException*(a, b, c)", [] { throw &kException; }},
    {"std::runtime_error(text)", [] { throw std::runtime_error("text"); }},
    {"std::bad_alloc", [] { throw std::bad_alloc(); }},
    {"int(7)", [] { throw 7; }},
};

bool TestsItsBinding(const TreeOperation& operation) { return operation.name != "GetSize"; }

class TreeOperationTest : public TreeEditorFixture,
                          public ::testing::WithParamInterface<TreeOperation> {
 protected:
  const TreeOperation& Operation() const { return GetParam(); }
  FakeMethod& JavaMethod() { return Operation().Method(jvm); }

  // Only the binding that the operation uses.
  void StartItsBinding() {
    if (Operation().headless) {
      StartHeadless();
    } else {
      StartInteractive();
    }
    Operation().succeed(jvm, JavaMethod());
    EventLog::Get().Clear();
  }

  void StartTheOtherBinding() {
    if (Operation().headless) {
      StartInteractive();
    } else {
      StartHeadless();
    }
  }

  std::string Run() { return Operation().run(editor); }

  // What leaves the operation, or its result where nothing does.
  std::string Leaves() {
    std::string result;
    const std::string thrown = Thrown([&] { result = Run(); });
    return thrown == "nothing" ? result : thrown;
  }

  std::string LeavesOnJException() const {
    const bool fails = Operation().on_jexception == OnJException::kFails;
    return fails ? Operation().failure : kJException.seen;
  }

  // The texts that are converted below the lock, each into its own buffer.
  Events Conversions() const {
    Events events;
    int buffer = 0;
    for (const std::string& text : Operation().texts) {
      Append(events, Utf16Conversion(text, ++buffer));
    }
    return events;
  }

  // The buffers given back, latest first.
  Events Releases() const {
    Events events;
    for (std::size_t buffer = Operation().texts.size(); buffer > 0; --buffer) {
      events.push_back("delete[] buffer " + std::to_string(buffer));
    }
    return events;
  }

  Events Around(const Events& inside) const {
    return Seq("lock depth=1", Conversions(), Guarded(inside), Releases(), "unlock depth=0");
  }
};

TEST_P(TreeOperationTest, Succeeds) {
  StartItsBinding();
  EXPECT_EQ(Run(), Operation().success);
  EXPECT_EQ(jvm.UnreleasedBuffers(), 0U);
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_P(TreeOperationTest, WithoutItsBindingTouchesNoJvm) {
  if (!TestsItsBinding(Operation())) return;
  EventLog::Get().Include(Source::kMemory);
  EXPECT_EQ(Run(), Operation().failure);
  EXPECT_TRUE(Happened(Around({})));
}

TEST_P(TreeOperationTest, WithTheOtherBindingAloneTouchesNoJvm) {
  if (!TestsItsBinding(Operation())) return;
  StartTheOtherBinding();
  EventLog::Get().Include(Source::kMemory);
  EXPECT_EQ(Run(), Operation().failure);
  EXPECT_TRUE(Happened(Around({})));
}

TEST_P(TreeOperationTest, WithBothBindingsUsesItsOwn) {
  StartTheOtherBinding();
  StartItsBinding();
  EXPECT_EQ(Run(), Operation().success);
  const std::string other = Operation().headless ? "TreeEditor@1" : "TreeImager@1";
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_EQ(event.find(other), std::string::npos) << event;
  }
}

TEST_P(TreeOperationTest, CallsJavaOnTheCallingThread) {
  StartItsBinding();
  FakePlatform::Get().env = jvm.NewEnv("worker");
  EXPECT_EQ(Run(), Operation().success);
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    EXPECT_NE(event.find(" on worker"), std::string::npos) << event;
  }
}

TEST_P(TreeOperationTest, OnAThreadThatCannotBeAttachedCallsNoJava) {
  StartItsBinding();
  FakePlatform::Get().env = nullptr;
  EXPECT_EQ(Run(), Operation().failure);
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

TEST_P(TreeOperationTest, WithoutAJvmCallsNoJava) {
  StartItsBinding();
  FakePlatform::Get().has_jvm = false;
  EXPECT_EQ(Run(), Operation().failure);
  EXPECT_TRUE(Happened(Source::kJni, {}));
}

TEST_P(TreeOperationTest, AJavaExceptionIsItsFailureAndIsCleared) {
  StartItsBinding();
  JavaMethod().Throws(jvm.MakeThrowable("java/lang/IllegalStateException", "no model"));
  EXPECT_EQ(Run(), Operation().failure);
  EXPECT_EQ(jvm.Pending(), nullptr);
}

TEST_P(TreeOperationTest, NeverStartsTheJvmNorAsksForIt) {
  StartItsBinding();
  FakePlatform::Get().started = false;
  Run();
  for (const std::string& event : EventLog::Get().Texts(Source::kPlatform)) {
    EXPECT_NE(event, "IsStarted");
    EXPECT_NE(event, "StartJVM");
    EXPECT_EQ(event.find("printDebugInfo"), std::string::npos) << event;
  }
}

TEST_P(TreeOperationTest, AJExceptionOutOfTheAttach) {
  StartItsBinding();
  EventLog::Get().Include(Source::kMemory);
  FakePlatform::Get().on_attach = kJException.raise;
  EXPECT_EQ(Leaves(), LeavesOnJException());
  EXPECT_TRUE(Happened(Around(Guarded(Attach()))));
}

TEST_P(TreeOperationTest, OtherExceptionsOutOfTheAttachPropagate) {
  StartItsBinding();
  EventLog::Get().Include(Source::kMemory);
  for (const Kind& kind : kOtherKinds) {
    AllocationProbe::Get().Reset();
    FakePlatform::Get().on_attach = kind.raise;
    EXPECT_EQ(Leaves(), kind.seen);
    EXPECT_TRUE(Happened(Around(Guarded(Attach())))) << kind.seen;
  }
}

TEST_P(TreeOperationTest, ExceptionsOutOfTheBinding) {
  StartItsBinding();
  EventLog::Get().Include(Source::kMemory);
  std::vector<Kind> kinds = {kJException};
  kinds.insert(kinds.end(), std::begin(kOtherKinds), std::end(kOtherKinds));
  for (const Kind& kind : kinds) {
    AllocationProbe::Get().Reset();
    JavaMethod().Runs(kind.raise);
    EXPECT_EQ(Leaves(), kind.seen == kJException.seen ? LeavesOnJException() : kind.seen);
    const Events events = EventLog::Get().Texts();
    EventLog::Get().Clear();
    // The Java call is the last thing that happens before the unwinding.
    const std::string call = Operation().CallFunction() + "(";
    const auto java = std::find_if(events.rbegin(), events.rend(), [&](const std::string& event) {
      return event.compare(0, call.size(), call) == 0;
    });
    const Events after(java.base(), events.end());
    EXPECT_TRUE(SameEvents(Seq("fesetenv", Releases(), "unlock depth=0"), after)) << kind.seen;
  }
}

TEST_P(TreeOperationTest, AJExceptionReachesTheHostAsItIsOrAsACopy) {
  if (Operation().on_jexception == OnJException::kFails) return;
  StartItsBinding();
  const std::exception_ptr original = std::make_exception_ptr(kException);
  const JException* raised = nullptr;
  try {
    std::rethrow_exception(original);
  } catch (const JException& exception) {
    raised = &exception;
  }
  const JException* received = nullptr;
  JavaMethod().Runs([&original] { std::rethrow_exception(original); });
  try {
    Run();
  } catch (const JException& exception) {
    received = &exception;
    EXPECT_EQ(exception.firstText(), "a");
    EXPECT_EQ(exception.secondText(), "b");
    EXPECT_EQ(exception.thirdText(), "c");
    const bool copied = received != raised;
    EXPECT_EQ(copied, Operation().on_jexception == OnJException::kThrowsCopy);
  }
  EXPECT_NE(received, nullptr);
}

TEST_P(TreeOperationTest, AFailedConversionFreesWhatThereIs) {
  StartItsBinding();
  EventLog::Get().Include(Source::kMemory);
  for (std::size_t failing = 1; failing <= Operation().texts.size(); ++failing) {
    AllocationProbe::Get().Reset();
    AllocationProbe::Get().FailNewArray(static_cast<int>(failing));
    EXPECT_EQ(Leaves(), "std::bad_alloc");
    const Events events = EventLog::Get().Texts();
    EventLog::Get().Clear();
    EXPECT_EQ(events.front(), "lock depth=1");
    EXPECT_EQ(events.back(), "unlock depth=0");
    const auto count = [&events](const std::string& text) {
      return std::count_if(events.begin(), events.end(),
                           [&text](const std::string& event) { return event.find(text) == 0; });
    };
    EXPECT_EQ(count("new[]"), static_cast<std::ptrdiff_t>(failing) - 1);
    EXPECT_EQ(count("delete[]"), count("new[]"));
    EXPECT_EQ(count("ucnv_open"), count("ucnv_close"));
    // No guard yet: the conversion comes before it.
    EXPECT_EQ(count("fegetenv"), 0);
  }
}

TEST_P(TreeOperationTest, TheRoundingModeIsBackWhateverJavaDoes) {
  StartItsBinding();
  FakePlatform::Get().on_attach = [] { std::fesetround(FE_DOWNWARD); };
  JavaMethod().Runs([] {
    EXPECT_EQ(std::fegetround(), FE_TONEAREST) << "the attach's change reaches Java";
    std::fesetround(FE_UPWARD);
  });
  Run();
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);

  JavaMethod().Runs([] {
    std::fesetround(FE_UPWARD);
    throw JException("a", "b", "c");
  });
  Leaves();
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);

  JavaMethod().Runs([] {
    std::fesetround(FE_UPWARD);
    throw std::bad_alloc();
  });
  Leaves();
  EXPECT_EQ(std::fegetround(), FE_TONEAREST);
}

// The saves and restores of a run whose nth save fails, made from those of a run without failure.
Events WithFailedSave(const Events& events, int nth) {
  Events expected;
  std::vector<bool> saved;
  int saves = 0;
  for (const std::string& event : events) {
    if (event == "fegetenv") {
      saved.push_back(++saves != nth);
      expected.push_back(saved.back() ? "fegetenv" : "fegetenv fails");
      continue;
    }
    if (saved.back()) expected.push_back(event);
    saved.pop_back();
  }
  return expected;
}

TEST_P(TreeOperationTest, AGuardThatCouldNotSaveRestoresNothing) {
  StartItsBinding();
  Run();
  const Events whole = EventLog::Get().Texts(Source::kFloatEnv);
  const auto saves = std::count(whole.begin(), whole.end(), "fegetenv");
  // The outer guard, that of the attach, that of the editor's GetInstance, and a check.
  EXPECT_GE(saves, 4);
  for (int nth = 1; nth <= saves; ++nth) {
    FloatEnvProbe::Get().Reset();
    FloatEnvProbe::Get().FailSave(nth);
    EventLog::Get().Clear();
    EXPECT_EQ(Run(), Operation().success);
    EXPECT_TRUE(Happened(Source::kFloatEnv, WithFailedSave(whole, nth))) << "save " << nth;
  }
}

INSTANTIATE_TEST_SUITE_P(EveryOperation, TreeOperationTest, ::testing::ValuesIn(TreeOperations()),
                         [](const auto& test) { return OperationName(test.param.name); });

}  // namespace
}  // namespace chartbridge::testing
