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

/// The names that `FormatOfName` knows, for messages.
std::string FormatNames();

}  // namespace chartbridge

#endif  // APP_PICTUREFORMAT_H_
