// SPDX-License-Identifier: Apache-2.0
#include "tests/app/Samples.h"

#include <algorithm>
#include <utility>

namespace chartbridge {

const std::string kChart =
    "title \"Sales\"\n"
    "\n"
    "draw bar:\n"
    "  x region\n"
    "  y sum of revenue\n"
    "  color product\n";

const std::string kChartXml =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<chart xmlns=\"urn:chartbridge:chart:2\">\n"
    "  <titles title=\"Sales\"/>\n"
    "  <elements>\n"
    "    <bar>\n"
    "      <x column=\"region\"/>\n"
    "      <y column=\"revenue\" aggregate=\"sum\"/>\n"
    "      <color column=\"product\"/>\n"
    "    </bar>\n"
    "  </elements>\n"
    "</chart>\n";

const std::string kOldChartXml =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<chart xmlns=\"urn:chartbridge:chart:1\" size=\"800x600\">\n"
    "  <title>Sales</title>\n"
    "  <layer type=\"bar\">\n"
    "    <x><field name=\"region\"/></x>\n"
    "    <y><sum field=\"revenue\"/></y>\n"
    "    <color><field name=\"product\"/></color>\n"
    "  </layer>\n"
    "</chart>\n";

const std::string kData =
    "region,product,revenue\n"
    "North,Tea,1200.5\n"
    "North,Coffee,2500\n"
    "South,Tea,900\n"
    "South,Coffee,1750.25\n";

SampleFolder::SampleFolder() {
  Write("sales.gpl", kChart);
  Write("sales.xml", kChartXml);
  Write("sales.csv", kData);
}

RunResult SampleFolder::Run(const std::vector<std::string>& arguments, RunSettings settings) const {
  settings.folder = Path();
  return RunCommand(arguments, settings);
}

RunResult SampleFolder::Render(const std::vector<std::string>& arguments,
                               RunSettings settings) const {
  std::vector<std::string> all = {"render", "sales.gpl", "-d", "sales.csv"};
  all.insert(all.end(), arguments.begin(), arguments.end());
  return Run(all, std::move(settings));
}

std::vector<std::string> SampleFolder::NewNames() const {
  std::vector<std::string> names = Names();
  names.erase(std::remove_if(names.begin(), names.end(),
                             [](const std::string& name) {
                               return name == "sales.gpl" || name == "sales.xml" ||
                                      name == "sales.csv";
                             }),
              names.end());
  return names;
}

}  // namespace chartbridge
