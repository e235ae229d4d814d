// SPDX-License-Identifier: Apache-2.0
#ifndef APP_TREEDISPLAYDATA_H_
#define APP_TREEDISPLAYDATA_H_

#include <string>

#include "app/TreeOptions.h"

namespace chartbridge {

/// Display data in which the options for depth and direction stand in place of the document's own.
///
/// Throws `Failure` when the document is nested too deep.
///
/// @param document display data; empty for none
/// @param name what to call the document in messages
/// @return the document as it is where there is nothing to change, and where it is no display data:
///     then Java says what is wrong with it, and where
std::string DisplayDataWith(const TreeOptions& options, const std::string& document,
                            const std::string& name);

}  // namespace chartbridge

#endif  // APP_TREEDISPLAYDATA_H_
