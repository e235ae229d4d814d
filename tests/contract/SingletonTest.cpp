// SPDX-License-Identifier: Apache-2.0
#include <memory>

#include "chart/ViZEditor.h"
#include "convert/VizConverter.h"
#include "tests/support/AllocationProbe.h"
#include "tests/support/ContractTest.h"
#include "tests/support/Steps.h"
#include "tests/support/Thrown.h"

namespace chartbridge::testing {
namespace {

// Deletes what a test made and lets the next test start without an instance, as in a fresh process.
class SingletonTest : public ContractTest {
 protected:
  SingletonTest() { Forget(); }
  ~SingletonTest() override { Forget(); }

  static void Forget() {
    delete ViZEditor::_instance;
    ViZEditor::_instance = nullptr;
    delete VizConverter::s_pInstance;
    VizConverter::s_pInstance = nullptr;
  }
};

Events LockOnly() { return Seq("lock depth=1", "unlock depth=0"); }

TEST_F(SingletonTest, TheEditorIsMadeOnFirstUseUnderTheLock) {
  ViZEditor* editor = ViZEditor::GetInstance();
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(ViZEditor::_instance, editor);
  EXPECT_TRUE(Happened(LockOnly()));
  EXPECT_FALSE(editor->IsStartedHeadless());
}

TEST_F(SingletonTest, TheEditorStaysTheSame) {
  ViZEditor* editor = ViZEditor::GetInstance();
  EventLog::Get().Clear();
  EXPECT_EQ(ViZEditor::GetInstance(), editor);
  EXPECT_TRUE(Happened(LockOnly()));
}

TEST_F(SingletonTest, AnEditorThatIsSetIsGiven) {
  auto editor = std::make_unique<ViZEditor>();
  ViZEditor::_instance = editor.get();
  EXPECT_EQ(ViZEditor::GetInstance(), editor.get());
  ViZEditor::_instance = nullptr;
}

TEST_F(SingletonTest, DeletingTheEditorLeavesThePointer) {
  ViZEditor* editor = ViZEditor::GetInstance();
  delete editor;
  EXPECT_NE(ViZEditor::_instance, nullptr);
  ViZEditor::_instance = nullptr;
}

TEST_F(SingletonTest, AnEditorThatCannotBeMadeReleasesTheLock) {
  AllocationProbe::Get().FailNew(1);
  EXPECT_EQ(Thrown([] { ViZEditor::GetInstance(); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(LockOnly()));
  EXPECT_EQ(ViZEditor::_instance, nullptr);
  EXPECT_NE(ViZEditor::GetInstance(), nullptr);
}

TEST_F(SingletonTest, TheConverterIsMadeOnFirstUseUnderTheLock) {
  VizConverter* converter = VizConverter::GetInstance();
  ASSERT_NE(converter, nullptr);
  EXPECT_EQ(VizConverter::s_pInstance, converter);
  EXPECT_TRUE(Happened(LockOnly()));
  EXPECT_FALSE(converter->IsStarted());
}

TEST_F(SingletonTest, TheConverterStaysTheSame) {
  VizConverter* converter = VizConverter::GetInstance();
  EventLog::Get().Clear();
  EXPECT_EQ(VizConverter::GetInstance(), converter);
  EXPECT_TRUE(Happened(LockOnly()));
}

TEST_F(SingletonTest, DeletingTheConverterLeavesThePointer) {
  delete VizConverter::GetInstance();
  EXPECT_NE(VizConverter::s_pInstance, nullptr);
  VizConverter::s_pInstance = nullptr;
}

TEST_F(SingletonTest, AConverterThatCannotBeMadeReleasesTheLock) {
  AllocationProbe::Get().FailNew(1);
  EXPECT_EQ(Thrown([] { VizConverter::GetInstance(); }), "std::bad_alloc");
  EXPECT_TRUE(Happened(LockOnly()));
  EXPECT_EQ(VizConverter::s_pInstance, nullptr);
}

}  // namespace
}  // namespace chartbridge::testing
