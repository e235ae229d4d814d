// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_DESCRIBE_H_
#define TESTS_SUPPORT_DESCRIBE_H_

#include <string>

namespace chartbridge::testing {

/// Bytes as events show them: in quotes, everything but printable ASCII as \xNN, long ones cut
/// short with their length.
std::string Quoted(const std::string& bytes);

std::u16string Utf16(const std::string& utf8);
std::string Utf8(const std::u16string& text);

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_DESCRIBE_H_
