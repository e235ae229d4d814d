// SPDX-License-Identifier: Apache-2.0
#ifndef APP_INSTALLATION_H_
#define APP_INSTALLATION_H_

#include <string>

namespace chartbridge {

/// Where the command's own files are. They are found from where the executable lies, so an
/// installation can be moved as a whole, and the command of a build folder uses that build.
class Installation {
 public:
  Installation();

  /// The jar with the Java classes, which names the libraries that they use. Empty when there is
  /// none.
  const std::string& Jar() const { return _jar; }
  /// The page of interactive charts, which lacks only its chart. Empty when this was built without.
  const std::string& ViewerPage() const { return _viewerPage; }
  /// The folders where the jar was looked for, for messages.
  const std::string& SearchedFolders() const { return _searchedFolders; }

 private:
  std::string _jar;
  std::string _viewerPage;
  std::string _searchedFolders;
};

}  // namespace chartbridge

#endif  // APP_INSTALLATION_H_
