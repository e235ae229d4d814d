// SPDX-License-Identifier: Apache-2.0
#ifndef APP_WORKINGFOLDER_H_
#define APP_WORKINGFOLDER_H_

#include <optional>
#include <string>

#include "app/ScratchFolder.h"

namespace chartbridge {

/// The folder that the command runs in, for the length of this scope. One at a time.
///
/// Java does not start in a folder that has been removed, nor in one whose path is longer than the
/// system's limit. In place of such a folder the command goes to an empty one of its own, in which
/// nothing is found: full paths work there, and `Check` refuses others.
class WorkingFolder {
 public:
  /// Throws `Failure` when the folder cannot be used and there is none to go to.
  WorkingFolder();
  ~WorkingFolder();

  WorkingFolder(const WorkingFolder&) = delete;
  WorkingFolder& operator=(const WorkingFolder&) = delete;

  /// Throws `Failure` for a path that begins in a folder that cannot be used.
  static void Check(const std::string& path);

 private:
  std::optional<ScratchFolder> _instead;
};

}  // namespace chartbridge

#endif  // APP_WORKINGFOLDER_H_
