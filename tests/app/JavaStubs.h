// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_APP_JAVASTUBS_H_
#define TESTS_APP_JAVASTUBS_H_

#include <map>
#include <string>
#include <vector>

#include "tests/app/WorkFolder.h"

namespace chartbridge {

/// The source of a class of the contract that has all that the library needs of it and does
/// nothing: its methods give null, zero or false. Tests change it where they want it wrong.
std::string StubSource(const std::string& className);

/// A folder with classes of a host's Java code, compiled from sources.
class JavaStubs : public WorkFolder {
 public:
  /// Compiles classes; the names have slashes.
  void Compile(const std::map<std::string, std::string>& sources) const;
  /// Compiles the class from its stub with `from`, which must be in it, replaced by `to`.
  void CompileChanged(const std::string& className, const std::string& from,
                      const std::string& to) const;
  /// Compiles stubs of the whole contract.
  void CompileAll() const;
  /// Puts all compiled classes into a jar, and gives its path.
  std::string Jar() const;
  /// The path of a class file.
  std::string ClassFile(const std::string& className) const;
};

}  // namespace chartbridge

#endif  // TESTS_APP_JAVASTUBS_H_
