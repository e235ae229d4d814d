// SPDX-License-Identifier: Apache-2.0
#ifndef APP_NATIVETEXT_H_
#define APP_NATIVETEXT_H_

#include <string>

namespace chartbridge {

/// Makes the process use the encoding of the user's locale for texts and file names, before
/// anything reads the command line.
///
/// The library's texts go through ICU's default converter, and the JVM encodes file names by
/// itself; both follow the process's locale. Where the user has none, or one that is not installed,
/// that would be ASCII, and a file name with an umlaut would be lost; UTF-8 is used instead, in the
/// process and in the environment that the JVM reads.
void AdoptUserEncoding();

/// A UTF-8 text in the user's encoding, for printing. Characters that it lacks are approximated or
/// become "?".
std::string ToNativeText(const std::string& utf8);

/// A text on one line: line ends and the blanks around them become single blanks.
std::string OnOneLine(const std::string& text);

}  // namespace chartbridge

#endif  // APP_NATIVETEXT_H_
