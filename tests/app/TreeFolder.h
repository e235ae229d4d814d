// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_APP_TREEFOLDER_H_
#define TESTS_APP_TREEFOLDER_H_

#include <string>
#include <utility>
#include <vector>

#include "tests/app/CommandRun.h"
#include "tests/app/WorkFolder.h"

namespace chartbridge {

/// A folder with a classification tree (iris.pmml), a regression tree (airquality.pmml) and a
/// forest (titanic-forest.pmml), in which `chartbridge tree` runs as a person would type it.
class TreeFolder : public WorkFolder {
 public:
  TreeFolder();

  /// Runs `chartbridge tree ARGUMENTS` in the folder.
  RunResult Tree(const std::vector<std::string>& arguments, RunSettings settings = {}) const;
  /// What `chartbridge tree size ARGUMENTS` says.
  std::string SizeOf(const std::vector<std::string>& arguments) const;
  /// What is in the folder besides the models.
  std::vector<std::string> NewNames() const;
};

/// "WIDTH HEIGHT" of a PNG, as `tree size` prints them; "no PNG" for anything else.
std::string SizeOfPng(const std::string& png);

/// Display data with these attributes and elements.
std::string DisplayData(const std::string& attributes, const std::string& elements = "");

}  // namespace chartbridge

#endif  // TESTS_APP_TREEFOLDER_H_
