// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CHARTJSONEXPORT_H_
#define APP_CHARTJSONEXPORT_H_

#include <memory>
#include <string>
#include <vector>

#include "app/JavaMachine.h"

class jsonEditor;

namespace chartbridge {

class DumpFolder;
class InputFile;
class JavaFailure;

/// What is exported as chart JSON, and how. Files are paths in UTF-8; "-" is standard input.
struct ChartJsonSettings {
  std::string chart;
  /// A CSV file; empty when the chart has its own data or is a template.
  std::string data;
  /// Export a template, without data.
  bool isTemplate = false;
  /// The charset of the written file; empty for UTF-8.
  std::string charset;
  /// How viewers are asked to draw it: "canvas", "svg", or empty to leave that to the Java classes.
  std::string renderer;

  /// Export with tooltips, selection and zoom. What follows is for such charts only.
  bool interactive = false;
  /// GeoJSON files, drawn as map layers below the marks in this order.
  std::vector<std::string> maps;
  /// A JSON file with options; empty for none.
  std::string optionsFile;
  /// The projection of the map; empty to leave that to the options.
  std::string projection;
  /// Where the data go, if they are not to be in the chart.
  std::string dataFile;
};

/// One chart on its way from a description and data to chart JSON.
class ChartJsonExport {
 public:
  /// Reads the inputs. Throws `Failure` for one that cannot be read or used.
  explicit ChartJsonExport(ChartJsonSettings settings);
  ~ChartJsonExport();

  ChartJsonExport(const ChartJsonExport&) = delete;
  ChartJsonExport& operator=(const ChartJsonExport&) = delete;

  /// Starts Java and writes the chart, and its data file if it has one: both whole, or none. Throws
  /// `Failure` with the reason.
  ///
  /// @param file a regular file, or one that is not there yet
  /// @param name what to call the file in messages
  void WriteTo(const std::string& file, const std::string& name, const JavaOptions& options) const;

  /// The same, as a text.
  std::string Text(const std::string& name, const JavaOptions& options) const;

 private:
  std::string ChartWithData(JNIEnv* env, const DumpFolder& dumps) const;
  void Configure(jsonEditor& editor, const std::string& file) const;
  std::string Explain(const JavaFailure& failure, const std::string& reason,
                      const std::string& name) const;
  std::string Culprit(const JavaFailure& failure, const std::string& reason,
                      const std::string& name) const;

  ChartJsonSettings _settings;
  std::unique_ptr<InputFile> _chart;
  std::unique_ptr<InputFile> _data;
  std::vector<std::string> _maps;
  std::string _options;
};

}  // namespace chartbridge

#endif  // APP_CHARTJSONEXPORT_H_
