// SPDX-License-Identifier: Apache-2.0
#ifndef APP_OUTPUTFILE_H_
#define APP_OUTPUTFILE_H_

#include <string>

namespace chartbridge {

/// Writes all of it to a descriptor, also to one that never blocks. Throws `Failure` with the
/// system's reason.
///
/// @param name what to call the descriptor in the message
void WriteAll(int descriptor, const std::string& content, const std::string& name);

/// Where a result goes: a file, standard output, or a device.
class OutputFile {
 public:
  /// Sees that a result can be written there, before any work is done for it. Writes nothing.
  ///
  /// Throws `Failure` when the folder does not exist or may not be written to, when the path is a
  /// folder or symbolic links that lead in a circle, when standard output is closed, and when
  /// binary output would go to a terminal.
  ///
  /// @param path a path in UTF-8; "-" is standard output
  /// @param binary whether the result is something that a terminal cannot show
  OutputFile(const std::string& path, bool binary);

  /// What to call it in messages: its path, or "standard output".
  const std::string& Name() const { return _name; }

  /// Whether the result replaces a regular file as a whole, so that it can be written beside and
  /// renamed. Standard output and devices such as /dev/null take the bytes instead.
  bool IsReplaceable() const { return !_target.empty(); }

  /// The file to replace; where the path is a symbolic link, the file that it leads to, which need
  /// not be there yet. Empty when it is not replaceable.
  const std::string& Target() const { return _target; }

  /// Writes the result: whole, or not at all where the target is replaceable. Throws `Failure`.
  void Write(const std::string& content) const;

 private:
  void CheckFolder() const;
  void Replace(const std::string& content) const;

  std::string _path;
  std::string _name;
  std::string _target;
};

}  // namespace chartbridge

#endif  // APP_OUTPUTFILE_H_
