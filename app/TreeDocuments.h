// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREEDOCUMENTS_H_
#define APP_TREEDOCUMENTS_H_

#include <string>

#include "app/TreeOptions.h"

namespace chartbridge {

class DumpFolder;

/// The documents that a picture of a tree model comes from, and what to call them in messages.
class TreeDocuments {
 public:
  /// Reads model and display data. Throws `Failure` when there is no such file.
  explicit TreeDocuments(const TreeOptions& options);

  const std::string& Model() const { return _model; }
  /// The display data with the depth and the direction that the command line asks for.
  const std::string& Display() const { return _display; }

  /// Reads records whose ways are shown, a CSV file. Nothing for an empty path.
  void ReadSamples(const std::string& path);
  const std::string& Samples() const { return _samples; }
  /// Reads a style document. Nothing for an empty path.
  void ReadStyle(const std::string& path);
  const std::string& Style() const { return _style; }

  /// Ends with `Failure`: what Java said, with the name of the file that it was about.
  ///
  /// @param output where the result would have gone; empty where nothing is written
  [[noreturn]] void FailWithReason(const DumpFolder& dumps, const std::string& output) const;

 private:
  std::string _modelName;
  std::string _displayName;
  std::string _samplesName;
  std::string _styleName;
  std::string _model;
  std::string _display;
  std::string _samples;
  std::string _style;
};

}  // namespace chartbridge

#endif  // APP_TREEDOCUMENTS_H_
