// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_TREEFIXTURE_H_
#define TESTS_SUPPORT_TREEFIXTURE_H_

#include <string>

#include "tests/support/ContractTest.h"
#include "tests/support/Steps.h"
#include "tree/TreeEditor.h"

namespace chartbridge::testing {

inline constexpr char kTreeEditorClass[] = "com/tesk/treemodeleditor/TreeEditor";
inline constexpr char kTreeImagerClass[] = "com/tesk/treemodeleditor/TreeImager";

/// Both Java classes of the tree editor with all their methods, unscripted.
void DefineTreeClasses(FakeJvm& jvm);

/// The thread attached and both tree bindings pointed at it, inside a guard.
///
/// @param depth how often the lock is held when it begins
Events AttachTree(int depth = 1);

/// The events of a tree operation between its lock and its outer guard.
template <typename... Parts>
Events TreeFrame(const Parts&... parts) {
  return Seq("lock depth=1", Guarded(parts...), "unlock depth=0");
}

/// A successful call of the interactive editor's first Java object.
Events EditorCall(const std::string& call, const std::string& name, const std::string& signature,
                  const std::string& arguments = "");

/// A successful call of the headless imager's first Java object.
Events ImagerCall(const std::string& call, const std::string& name, const std::string& signature,
                  const std::string& arguments = "");

/// The schema path handed to one Java object: "TreeEditor@1" or "TreeImager@1".
Events SchemaPathCall(const std::string& object, const std::string& path);

/// A test on the one tree editor, with nothing started and the log empty.
class TreeEditorFixture : public ContractTest {
 protected:
  TreeEditorFixture();
  ~TreeEditorFixture() override;

  FakeMethod& EditorMethod(const std::string& name, const std::string& signature);
  FakeMethod& ImagerMethod(const std::string& name, const std::string& signature);

  /// Without a codepage, so that no schema path is handed on.
  void StartInteractive();
  void StartHeadless();

  TreeEditor& editor;
};

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_TREEFIXTURE_H_
