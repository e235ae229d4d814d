// SPDX-License-Identifier: Apache-2.0
#ifndef APP_SCRATCHFOLDER_H_
#define APP_SCRATCHFOLDER_H_

#include <string>

namespace chartbridge {

/// A private folder for files that are needed only for the length of this scope. A signal that ends
/// the command removes it too.
class ScratchFolder {
 public:
  /// Throws `Failure` when it cannot be made.
  ScratchFolder();
  /// Removes it with all that is in it.
  ~ScratchFolder();

  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::string& Path() const { return _path; }
  /// The path of a file in it.
  std::string File(const std::string& name) const { return _path + "/" + name; }

 private:
  std::string _path;
};

}  // namespace chartbridge

#endif  // APP_SCRATCHFOLDER_H_
