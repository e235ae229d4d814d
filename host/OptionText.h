// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_OPTIONTEXT_H_
#define HOST_OPTIONTEXT_H_

#include <string>
#include <vector>

namespace chartbridge {

/// Splits a text into options by the quoting rules of `JvmSettings`. False when a quote stays open
/// or the text ends in a lone backslash; `options` is then unspecified.
bool SplitOptions(const std::string& text, std::vector<std::string>& options);

/// The non-empty entries of a text that is separated by colons.
std::vector<std::string> SplitPath(const std::string& text);

}  // namespace chartbridge

#endif  // HOST_OPTIONTEXT_H_
