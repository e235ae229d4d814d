// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_APP_SAMPLES_H_
#define TESTS_APP_SAMPLES_H_

#include <string>
#include <vector>

#include "tests/app/CommandRun.h"
#include "tests/app/WorkFolder.h"

namespace chartbridge {

/// A small bar chart in the graph language, and the same as chart XML.
extern const std::string kChart;
extern const std::string kChartXml;
/// The same as chart XML of version 1.
extern const std::string kOldChartXml;
/// Its data.
extern const std::string kData;

/// A folder with sales.gpl, sales.xml and sales.csv, in which commands run as a person would type
/// them.
class SampleFolder : public WorkFolder {
 public:
  SampleFolder();

  /// Runs `chartbridge ARGUMENTS` in the folder.
  RunResult Run(const std::vector<std::string>& arguments, RunSettings settings = {}) const;
  /// Runs `chartbridge render sales.gpl -d sales.csv ARGUMENTS` in the folder.
  RunResult Render(const std::vector<std::string>& arguments, RunSettings settings = {}) const;
  /// What is in the folder besides the samples.
  std::vector<std::string> NewNames() const;
};

}  // namespace chartbridge

#endif  // TESTS_APP_SAMPLES_H_
