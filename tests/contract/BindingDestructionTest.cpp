// SPDX-License-Identifier: Apache-2.0
// A binding that ends drops its env before its base ends, and calls nothing.
#include <memory>

#include "chart/JChartImager.h"
#include "convert/VizConverter.h"
#include "tests/support/AccessorProbe.h"
#include "tests/support/ContractTest.h"
#include "tests/support/Sequence.h"

namespace chartbridge::testing {
namespace {

using BindingDestructionTest = ContractTest;

TEST_F(BindingDestructionTest, ChartImager) {
  jvm.ClassWithConstructor("com/tesk/charteditor/ChartImager");
  auto imager = std::make_unique<JChartImager>(jvm.Env());
  AccessorProbe::Get().Reset();
  EventLog::Get().Clear();
  imager.reset();
  EXPECT_TRUE(Happened({}));
  EXPECT_EQ(AccessorProbe::Get().Destructions(), 1);
  EXPECT_EQ(AccessorProbe::Get().LastEnv(), nullptr);
}

TEST_F(BindingDestructionTest, Converter) {
  jvm.ClassWithConstructor("com/tesk/vizconverter/VizConverter");
  VizConverter converter;
  converter.StartConverter(jvm.Env());
  AccessorProbe::Get().Reset();
  EventLog::Get().Clear();
  converter.Stop();
  EXPECT_TRUE(Happened(Seq("lock depth=1", "unlock depth=0")));
  EXPECT_EQ(AccessorProbe::Get().Destructions(), 1);
  EXPECT_EQ(AccessorProbe::Get().LastEnv(), nullptr);
}

}  // namespace
}  // namespace chartbridge::testing
