// SPDX-License-Identifier: Apache-2.0
#ifndef APP_INSTALLATION_H_
#define APP_INSTALLATION_H_

#include <string>
#include <vector>

namespace chartbridge {

/// Where the command's own files are. They are found from where the executable lies, so an
/// installation can be moved as a whole, and the command of a build folder uses that build.
class Installation {
 public:
  Installation();

  /// The jar with the Java classes, and then those of the libraries that they use. Empty when there
  /// is none.
  ///
  /// The jar names its libraries itself, which is enough for Java. A class-data-sharing archive,
  /// however, takes only classes of jars that stand in the class path.
  const std::vector<std::string>& ClassPath() const { return _classPath; }
  /// The class-data-sharing archive for that jar. Empty when there is none.
  const std::string& SharedArchive() const { return _sharedArchive; }
  /// The page of interactive charts, which lacks only its chart. Empty when this was built without.
  const std::string& ViewerPage() const { return _viewerPage; }
  /// The folders where the jar was looked for, for messages.
  const std::string& SearchedFolders() const { return _searchedFolders; }

 private:
  std::vector<std::string> _classPath;
  std::string _sharedArchive;
  std::string _viewerPage;
  std::string _searchedFolders;
};

}  // namespace chartbridge

#endif  // APP_INSTALLATION_H_
