// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCUMENTFORMAT_H_
#define APP_DOCUMENTFORMAT_H_

#include <string>

namespace chartbridge {

/// A form that documents are exported to.
struct DocumentFormat {
  /// What `--to` and a file's ending call it.
  const char* name;
  /// What an export request calls it.
  const char* word;
  /// Whether a terminal cannot show it.
  bool isBinary;
};

/// The format of an export: the one that `--to` names, else the one that the file's ending stands
/// for, in any letter case. Throws `UsageError` when there is none.
///
/// @param to the name as `--to` takes it; empty when the option is not given
DocumentFormat DocumentFormatOf(const std::string& output, const std::string& to);

/// The names of the formats, for messages.
std::string DocumentFormatNames();

}  // namespace chartbridge

#endif  // APP_DOCUMENTFORMAT_H_
