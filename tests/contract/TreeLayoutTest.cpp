// SPDX-License-Identifier: Apache-2.0
// The memory of the tree classes: hosts and Java bindings of other builds count on the order of
// their fields and on their virtual slots.
#include <string>
#include <type_traits>
#include <vector>

#include "bridge/JException.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/FieldAt.h"
#include "tests/support/ObjectLayout.h"
#include "tests/support/TreeFixture.h"
#include "tree/JTreeEditor.h"
#include "tree/JTreeImager.h"

namespace chartbridge::testing {
namespace {

constexpr std::size_t kWord = sizeof(void*);
// What every binding begins with: its virtual table, env, class, method and object.
constexpr std::size_t kAccessorSize = 5 * kWord;

using Pointers = std::vector<const unsigned short*>;
using Lengths = std::vector<int>;

// The headless binding's own fields, by their number.
constexpr std::size_t kFirstTexts = kAccessorSize;
constexpr std::size_t kFirstLengths = kFirstTexts + sizeof(Pointers);
constexpr std::size_t kSecondTexts = kFirstLengths + sizeof(Lengths);
constexpr std::size_t kSecondLengths = kSecondTexts + sizeof(Pointers);
constexpr std::size_t kModelRef = kSecondLengths + sizeof(Lengths);
constexpr std::size_t kText1 = kModelRef + kWord;
constexpr std::size_t kText1Length = kText1 + kWord;
constexpr std::size_t kText2 = kText1Length + kWord;
constexpr std::size_t kText2Length = kText2 + kWord;
constexpr std::size_t kImageType = kText2Length + kWord;
constexpr std::size_t kExtra = kImageType + kWord;
constexpr std::size_t kImagerSize = kExtra + kWord;

class TreeLayoutTest : public TreeEditorFixture {
 protected:
  const JTreeImager& Imager() const { return *FieldAt<JTreeImager*>(&editor, 2 * kWord); }

  template <typename Field>
  const Field& ImagerField(std::size_t offset) const {
    return FieldReferenceAt<Field>(&Imager(), offset);
  }
};

TEST_F(TreeLayoutTest, TreeEditorHoldsItsBindingsAndItsCodepage) {
  EXPECT_EQ(sizeof(TreeEditor), 3 * kWord + sizeof(std::string));
  EXPECT_EQ(FieldAt<void*>(&editor, kWord), nullptr);
  EXPECT_EQ(FieldAt<void*>(&editor, 2 * kWord), nullptr);
  EXPECT_EQ(FieldReferenceAt<std::string>(&editor, 3 * kWord), "");

  StartInteractive();
  EXPECT_NE(FieldAt<void*>(&editor, kWord), nullptr);
  EXPECT_EQ(FieldAt<void*>(&editor, 2 * kWord), nullptr);
  StartHeadless();
  EXPECT_NE(FieldAt<void*>(&editor, 2 * kWord), nullptr);
  editor.SetCodepage("UTF-8");
  EXPECT_EQ(FieldReferenceAt<std::string>(&editor, 3 * kWord), "UTF-8");
  editor.StopHeadless();
  EXPECT_EQ(FieldAt<void*>(&editor, 2 * kWord), nullptr);
}

TEST_F(TreeLayoutTest, EveryStartReplacesTheCodepage) {
  editor.StartEditor(jvm.Env(), "first", "");
  EXPECT_EQ(FieldReferenceAt<std::string>(&editor, 3 * kWord), "first");
  editor.StartEditor(jvm.Env(), "second", "");
  EXPECT_EQ(FieldReferenceAt<std::string>(&editor, 3 * kWord), "second");
  editor.SetCodepage("");
  EXPECT_EQ(FieldReferenceAt<std::string>(&editor, 3 * kWord), "second");
  editor.StartEditor(jvm.Env(), "", "");
  EXPECT_EQ(FieldReferenceAt<std::string>(&editor, 3 * kWord), "");
}

TEST_F(TreeLayoutTest, OnlyTheDestructorsAreVirtual) {
  EXPECT_EQ(VirtualSlots<TreeEditor>(), 2U);
  EXPECT_EQ(VirtualSlots<JTreeEditor>(), 2U);
  EXPECT_EQ(VirtualSlots<JTreeImager>(), 2U);
  EXPECT_TRUE(std::has_virtual_destructor_v<TreeEditor>);
  EXPECT_TRUE(std::has_virtual_destructor_v<JTreeEditor>);
  EXPECT_TRUE(std::has_virtual_destructor_v<JTreeImager>);
}

TEST_F(TreeLayoutTest, TheInteractiveBindingAddsNoFields) {
  EXPECT_EQ(sizeof(JTreeEditor), kAccessorSize);
  StartInteractive();
  const JTreeEditor& binding = *FieldAt<JTreeEditor*>(&editor, kWord);
  EXPECT_EQ(FieldAt<JNIEnv*>(&binding, kWord), jvm.Env());
  EXPECT_EQ(FieldAt<jclass>(&binding, 2 * kWord), jvm.ClassReference(kTreeEditorClass));
  EXPECT_EQ(FieldAt<jmethodID>(&binding, 3 * kWord), binding.getMethodID());
  EXPECT_EQ(FieldAt<jobject>(&binding, 4 * kWord), binding.getObject());
  EXPECT_NE(binding.getObject(), nullptr);
}

TEST_F(TreeLayoutTest, TheHeadlessBindingStartsWithAnEmptyStore) {
  EXPECT_EQ(sizeof(JTreeImager), kImagerSize);
  StartHeadless();
  EXPECT_EQ(FieldAt<JNIEnv*>(&Imager(), kWord), jvm.Env());
  EXPECT_EQ(FieldAt<jobject>(&Imager(), 4 * kWord), Imager().getObject());
  EXPECT_TRUE(ImagerField<Pointers>(kFirstTexts).empty());
  EXPECT_TRUE(ImagerField<Lengths>(kFirstLengths).empty());
  EXPECT_TRUE(ImagerField<Pointers>(kSecondTexts).empty());
  EXPECT_TRUE(ImagerField<Lengths>(kSecondLengths).empty());
  EXPECT_EQ(ImagerField<const std::string*>(kModelRef), nullptr);
  EXPECT_EQ(ImagerField<const unsigned short*>(kText1), nullptr);
  EXPECT_EQ(ImagerField<long>(kText1Length), 0);
  EXPECT_EQ(ImagerField<const unsigned short*>(kText2), nullptr);
  EXPECT_EQ(ImagerField<long>(kText2Length), 0);
  EXPECT_EQ(ImagerField<long>(kImageType), 0);
  EXPECT_EQ(ImagerField<long>(kExtra), 0);
}

TEST_F(TreeLayoutTest, EachStoreOperationWritesItsFields) {
  JTreeImager binding(jvm.Env());
  const std::string model = "m";
  const unsigned short text[] = {'t'};
  binding.setModel(&model);
  EXPECT_EQ(FieldAt<const std::string*>(&binding, kModelRef), &model);
  binding.setFirstTexts({text, nullptr}, {1, 0});
  EXPECT_EQ(FieldReferenceAt<Pointers>(&binding, kFirstTexts), (Pointers{text, nullptr}));
  EXPECT_EQ(FieldReferenceAt<Lengths>(&binding, kFirstLengths), (Lengths{1, 0}));
  binding.setSecondTexts({text}, {7});
  EXPECT_EQ(FieldReferenceAt<Pointers>(&binding, kSecondTexts), (Pointers{text}));
  EXPECT_EQ(FieldReferenceAt<Lengths>(&binding, kSecondLengths), (Lengths{7}));
  binding.setText1(text, 5);
  EXPECT_EQ(FieldAt<const unsigned short*>(&binding, kText1), text);
  EXPECT_EQ(FieldAt<long>(&binding, kText1Length), 5);
  binding.setText2(text + 1, 6);
  EXPECT_EQ(FieldAt<const unsigned short*>(&binding, kText2), text + 1);
  EXPECT_EQ(FieldAt<long>(&binding, kText2Length), 6);
  binding.setImageType(1L << 40);
  EXPECT_EQ(FieldAt<long>(&binding, kImageType), 1L << 40);
  binding.setExtra(-3);
  EXPECT_EQ(FieldAt<long>(&binding, kExtra), -3);
}

TEST_F(TreeLayoutTest, AnInteractiveRenderingFillsTheStore) {
  StartHeadless();
  const std::string model = "model";
  std::vector<std::string> files;
  editor.RenderInteractiveToFileHeadless(model, {"a", "caf\xC3\xA9"}, {"ccc"}, "t1", "t22", "t333",
                                         static_cast<TreeEditor::IMAGE_TYPE>(-2), -5, files);
  // The caller's own string.
  EXPECT_EQ(ImagerField<const std::string*>(kModelRef), &model);
  EXPECT_EQ(ImagerField<Pointers>(kFirstTexts).size(), 2U);
  EXPECT_EQ(ImagerField<Lengths>(kFirstLengths), (Lengths{1, 4}));
  EXPECT_EQ(ImagerField<Pointers>(kSecondTexts).size(), 1U);
  EXPECT_EQ(ImagerField<Lengths>(kSecondLengths), (Lengths{3}));
  // Addresses of buffers that are gone.
  for (const unsigned short* address : ImagerField<Pointers>(kFirstTexts)) {
    EXPECT_NE(address, nullptr);
  }
  EXPECT_NE(ImagerField<const unsigned short*>(kText1), nullptr);
  EXPECT_EQ(ImagerField<long>(kText1Length), 2);
  EXPECT_NE(ImagerField<const unsigned short*>(kText2), nullptr);
  EXPECT_NE(ImagerField<const unsigned short*>(kText2), ImagerField<const unsigned short*>(kText1));
  EXPECT_EQ(ImagerField<long>(kText2Length), 3);
  // The type zero-extended, the option sign-extended.
  EXPECT_EQ(ImagerField<long>(kImageType), 0xFFFF'FFFEL);
  EXPECT_EQ(ImagerField<long>(kExtra), -5);
}

TEST_F(TreeLayoutTest, TheNextInteractiveRenderingReplacesTheStore) {
  StartHeadless();
  std::vector<std::string> files;
  editor.RenderInteractiveToFileHeadless("m", {"a", "b"}, {"c"}, "t", "t", "t",
                                         TreeEditor::IMAGE_PNG, 1, files);
  editor.RenderInteractiveToFileHeadless("m", {"dd"}, {}, "tt", "", "t", TreeEditor::IMAGE_PDF, 2,
                                         files);
  EXPECT_EQ(ImagerField<Pointers>(kFirstTexts).size(), 1U);
  EXPECT_EQ(ImagerField<Lengths>(kFirstLengths), (Lengths{2}));
  EXPECT_TRUE(ImagerField<Pointers>(kSecondTexts).empty());
  EXPECT_TRUE(ImagerField<Lengths>(kSecondLengths).empty());
  EXPECT_EQ(ImagerField<long>(kText1Length), 2);
  EXPECT_EQ(ImagerField<long>(kText2Length), 0);
  EXPECT_EQ(ImagerField<long>(kImageType), 6);
  EXPECT_EQ(ImagerField<long>(kExtra), 2);
}

TEST_F(TreeLayoutTest, OtherOperationsLeaveTheStoreAlone) {
  StartHeadless();
  std::vector<std::string> files;
  editor.RenderInteractiveToFileHeadless("m", {"a"}, {"c"}, "t", "t", "t", TreeEditor::IMAGE_PNG, 1,
                                         files);
  editor.RenderModelToFileHeadless("1", "2", "3", "4", "text", "dir", TreeEditor::IMAGE_PDF, 9,
                                   files);
  editor.RenderToFileHeadless("m", "d", "path", TreeEditor::IMAGE_PDF, true);
  EXPECT_EQ(ImagerField<Lengths>(kFirstLengths), (Lengths{1}));
  EXPECT_EQ(ImagerField<long>(kText1Length), 1);
  EXPECT_EQ(ImagerField<long>(kImageType), 2);
  EXPECT_EQ(ImagerField<long>(kExtra), 1);
}

TEST_F(TreeLayoutTest, AnInteractiveRenderingThatThrowsBeforeTheStoreLeavesItAlone) {
  StartHeadless();
  FakePlatform::Get().on_attach = [] { throw JException("a", "b", "c"); };
  std::vector<std::string> files;
  EXPECT_THROW(editor.RenderInteractiveToFileHeadless("m", {"a"}, {"c"}, "t", "t", "t",
                                                      TreeEditor::IMAGE_PNG, 1, files),
               JException);
  EXPECT_EQ(ImagerField<const std::string*>(kModelRef), nullptr);
  EXPECT_TRUE(ImagerField<Pointers>(kFirstTexts).empty());
}

}  // namespace
}  // namespace chartbridge::testing
