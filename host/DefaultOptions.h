// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_DEFAULTOPTIONS_H_
#define HOST_DEFAULTOPTIONS_H_

#include <string>
#include <vector>

namespace chartbridge {

/// JVM options that hold until somebody says otherwise.
///
/// A JVM does not simply take the later of two options that contradict each other: with two
/// collectors, or with an initial heap above the largest one, it does not start. So a default
/// option is left out as soon as an option of its family is given: one for the same thing, under
/// whatever name and with whatever value.
class DefaultOptions {
 public:
  /// `given`: the options of the host and of the user. Those that the JVM takes by itself, out of
  /// JAVA_TOOL_OPTIONS, _JAVA_OPTIONS and files named by -XX:VMOptionsFile, are looked at as well.
  explicit DefaultOptions(const std::vector<std::string>& given);

  /// Whether `option` may be passed: nothing of its family is given.
  bool Holds(const std::string& option) const;

 private:
  void Look(const std::string& option);
  void LookInto(const std::string& text);

  std::vector<std::string> _given;
};

}  // namespace chartbridge

#endif  // HOST_DEFAULTOPTIONS_H_
