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
  /// JAVA_TOOL_OPTIONS, _JAVA_OPTIONS and files named by -XX:VMOptionsFile or -XX:Flags, are looked
  /// at as well.
  explicit DefaultOptions(const std::vector<std::string>& given);

  /// Whether `option` may be passed: nothing of its family is given. An initial size of the heap
  /// also holds beside a largest one that is not below it.
  bool Holds(const std::string& option) const;

  /// Whether an archive of classes that the host names is passed: no other one is given, and the
  /// JVM is not told to do without. -Xshare:auto, the JVM's own default, changes nothing.
  bool TakesNamedArchive() const;

  /// Whether an archive is searched for: nothing at all is said about archives.
  bool SearchesArchive() const;

 private:
  void Look(const std::vector<std::string>& options);
  void LookIntoFile(const std::string& option);
  void LookIntoFlags(const std::string& file);

  std::vector<std::string> _given;
};

}  // namespace chartbridge

#endif  // HOST_DEFAULTOPTIONS_H_
