// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_TREEOPERATIONS_H_
#define TESTS_SUPPORT_TREEOPERATIONS_H_

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "tests/support/FakeJvm.h"
#include "tree/TreeEditor.h"

namespace chartbridge::testing {

/// What an operation does with a JException of the platform's code.
enum class OnJException { kPropagates, kThrowsCopy, kFails };

/// One operation of `TreeEditor` with fixed arguments, and what it gives.
struct TreeOperation {
  std::string name;
  bool headless;
  /// The Java method that does its work.
  std::string method;
  std::string signature;
  /// The texts that are converted under the lock, before the guard and the test of the binding.
  std::vector<std::string> texts;
  OnJException on_jexception;
  /// Makes the Java method succeed.
  std::function<void(FakeJvm&, FakeMethod&)> succeed;
  /// Runs it and writes result and outputs as one text. Outputs start with values that show whether
  /// they were touched.
  std::function<std::string(TreeEditor&)> run;
  std::string success;
  /// The text where there is no binding, or Java gave null, false or nothing.
  std::string failure;

  const char* JavaClass() const;
  FakeMethod& Method(FakeJvm& jvm) const { return jvm.Method(JavaClass(), method, signature); }
  /// The JNI function that calls the Java method.
  std::string CallFunction() const;
};

/// How GoogleTest prints an operation.
inline void PrintTo(const TreeOperation& operation, std::ostream* out) { *out << operation.name; }

/// All operations of `TreeEditor` that call the Java method of one binding.
const std::vector<TreeOperation>& TreeOperations();

/// The name of an operation as GoogleTest wants it.
std::string OperationName(const std::string& name);

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_TREEOPERATIONS_H_
