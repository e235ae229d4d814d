// SPDX-License-Identifier: Apache-2.0
#include "bridge/FloatEnvGuard.h"

#include <cfenv>

#include "tests/support/ContractTest.h"
#include "tests/support/FloatEnvProbe.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

using FloatEnvGuardTest = ContractTest;

TEST_F(FloatEnvGuardTest, SavesAndRestores) {
  {
    const FloatEnvGuard guard;
    EXPECT_TRUE(Happened(Seq("fegetenv")));
  }
  EXPECT_TRUE(Happened(Seq("fesetenv")));
}

TEST_F(FloatEnvGuardTest, ARestoreIsNeverTriedAfterAFailedSave) {
  FloatEnvProbe::Get().FailSave(1);
  { const FloatEnvGuard guard; }
  EXPECT_TRUE(Happened(Seq("fegetenv fails")));
}

TEST_F(FloatEnvGuardTest, NestedGuardsRestoreInnermostFirst) {
  {
    const FloatEnvGuard outer;
    const FloatEnvGuard inner;
  }
  EXPECT_TRUE(Happened(Guarded(Guarded())));
}

TEST_F(FloatEnvGuardTest, AFailedInnerSaveLeavesTheOuterGuardAlone) {
  FloatEnvProbe::Get().FailSave(2);
  {
    const FloatEnvGuard outer;
    const FloatEnvGuard inner;
  }
  EXPECT_TRUE(Happened(Seq("fegetenv", "fegetenv fails", "fesetenv")));
}

TEST_F(FloatEnvGuardTest, RestoresWhileAnExceptionPasses) {
  const auto operation = [] {
    const FloatEnvGuard guard;
    throw 7;
  };
  EXPECT_EQ(Thrown(operation), "int(7)");
  EXPECT_TRUE(Happened(Guarded()));
}

TEST_F(FloatEnvGuardTest, BringsBackTheRoundingModeAndTheMasks) {
  const int masks = fegetexcept();
  std::fesetround(FE_DOWNWARD);
  {
    const FloatEnvGuard guard;
    std::fesetround(FE_UPWARD);
    feenableexcept(FE_DIVBYZERO);
  }
  const int mode = std::fegetround();
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(mode, FE_DOWNWARD);
  EXPECT_EQ(fegetexcept(), masks);
}

TEST_F(FloatEnvGuardTest, AfterAFailedSaveTheChangeStays) {
  FloatEnvProbe::Get().FailSave(1);
  {
    const FloatEnvGuard guard;
    std::fesetround(FE_UPWARD);
  }
  const int mode = std::fegetround();
  std::fesetround(FE_TONEAREST);
  EXPECT_EQ(mode, FE_UPWARD);
}

}  // namespace
}  // namespace chartbridge::testing
