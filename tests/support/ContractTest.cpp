// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ContractTest.h"

#include <cfenv>
#include <cstdlib>

#include "tests/support/AllocationProbe.h"
#include "tests/support/ClockProbe.h"
#include "tests/support/EventLog.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FloatEnvProbe.h"
#include "tests/support/IcuProbe.h"

namespace chartbridge::testing {

ContractTest::ContractTest() {
  FakePlatform::Get().Reset();
  FakePlatform::Get().env = jvm.Env();
  FloatEnvProbe::Get().Reset();
  ClockProbe::Get().Reset();
  AllocationProbe::Get().Reset();
  IcuProbe::Get().Reset();
  unsetenv("DumpChartTimePath");
  EventLog::Get().Start();
}

ContractTest::~ContractTest() {
  EventLog::Get().Stop();
  EXPECT_EQ(FakePlatform::LockDepth(), 0) << "the process-wide lock is still held";
  EXPECT_EQ(std::fegetround(), FE_TONEAREST) << "the rounding mode is still changed";
  FakePlatform::Get().Reset();
}

}  // namespace chartbridge::testing
