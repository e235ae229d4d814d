// SPDX-License-Identifier: Apache-2.0
#ifndef APP_PICTUREFORMAT_H_
#define APP_PICTUREFORMAT_H_

#include <optional>
#include <string>

#include "chart/ViZEditor.h"

namespace chartbridge {

/// The format that a file's ending stands for, in any letter case; none for an ending that stands
/// for no picture.
std::optional<ViZEditor::IMAGE_TYPE> FormatOfPath(const std::string& path);

/// The format of a name as `--type` takes it, such as "png"; none for other names.
std::optional<ViZEditor::IMAGE_TYPE> FormatOfName(const std::string& name);

/// The format that `--type` names. Throws `UsageError` for a name that stands for no picture.
ViZEditor::IMAGE_TYPE FormatOfOption(const std::string& type);

/// The format of a picture: the one that `--type` names, else the one that the file's ending stands
/// for, else, for standard output, PNG. Throws `UsageError` when there is none.
///
/// @param type the name as `--type` takes it; empty when the option is not given
ViZEditor::IMAGE_TYPE FormatOfOutput(const std::string& output, const std::string& type);

/// The names that `FormatOfName` knows, for messages.
std::string FormatNames();

}  // namespace chartbridge

#endif  // APP_PICTUREFORMAT_H_
