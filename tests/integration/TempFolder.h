// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_INTEGRATION_TEMPFOLDER_H_
#define TESTS_INTEGRATION_TEMPFOLDER_H_

#include <string>

namespace chartbridge {

/// A new empty folder that goes, with all that is in it, with the object.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();

  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::string& Path() const { return _path; }

 private:
  std::string _path;
};

}  // namespace chartbridge

#endif  // TESTS_INTEGRATION_TEMPFOLDER_H_
