// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TEMPLATEFILE_H_
#define APP_TEMPLATEFILE_H_

#include <string>

#include "app/InputFile.h"

namespace chartbridge {

/// A chart template that the command line names.
class TemplateFile {
 public:
  /// Reads it. Throws `Failure` when there is no such file.
  explicit TemplateFile(const std::string& path) : _file(path) {}

  const std::string& Name() const { return _file.Name(); }

  /// Applies the template in this process, without Java.
  ///
  /// Throws `Failure` when it is no template, with its name, the line and the reason.
  ///
  /// @param chart chart XML of the current version, in any encoding
  /// @param chartName what to call the chart in messages
  /// @return the chart in UTF-8
  std::string ApplyTo(const std::string& chart, const std::string& chartName) const;

 private:
  InputFile _file;
};

}  // namespace chartbridge

#endif  // APP_TEMPLATEFILE_H_
