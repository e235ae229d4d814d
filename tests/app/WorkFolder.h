// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_APP_WORKFOLDER_H_
#define TESTS_APP_WORKFOLDER_H_

#include <string>
#include <vector>

namespace chartbridge {

/// A private folder for one test, removed with everything in it at the end.
class WorkFolder {
 public:
  WorkFolder();
  ~WorkFolder();

  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  const std::string& Path() const { return _path; }
  /// The path of a file in the folder.
  std::string File(const std::string& name) const { return _path + "/" + name; }

  void Write(const std::string& name, const std::string& content) const;
  /// Content of a file; empty when there is none.
  std::string Read(const std::string& name) const;
  /// Names of everything in the folder, hidden files too, sorted.
  std::vector<std::string> Names() const;

 private:
  std::string _path;
};

}  // namespace chartbridge

#endif  // TESTS_APP_WORKFOLDER_H_
