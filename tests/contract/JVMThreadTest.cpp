// SPDX-License-Identifier: Apache-2.0
#include "export/JVMThread.h"

#include <type_traits>

#include "tests/support/ContractTest.h"
#include "tests/support/ObjectLayout.h"
#include "tests/support/Sequence.h"

namespace chartbridge::testing {
namespace {

using JVMThreadTest = ContractTest;

TEST_F(JVMThreadTest, HasNoFieldsAndOnlyItsDestructorIsVirtual) {
  EXPECT_EQ(sizeof(JVMThread), sizeof(void*));
  EXPECT_EQ(VirtualSlots<JVMThread>(), 2U);
  EXPECT_TRUE(std::has_virtual_destructor_v<JVMThread>);
}

TEST_F(JVMThreadTest, AttachesNothing) {
  delete new JVMThread();
  EXPECT_TRUE(Happened({}));
}

}  // namespace
}  // namespace chartbridge::testing
