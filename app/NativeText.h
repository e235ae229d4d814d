// SPDX-License-Identifier: Apache-2.0
#ifndef APP_NATIVETEXT_H_
#define APP_NATIVETEXT_H_

#include <string>

namespace chartbridge {

/// Makes the process take texts and file names as UTF-8, before anything reads the command line.
///
/// The library's texts go through ICU's default converter, which is UTF-8 in the distribution's ICU
/// whatever the locale says. The JVM encodes file names by the locale. Where that is not UTF-8 (no
/// locale at all, one that is not installed, an old encoding), the two would disagree about a name
/// with an umlaut; UTF-8 is used instead, in the process and in the environment that the JVM reads.
void AdoptUserEncoding();

/// A text on one line: line ends and the blanks around them become single blanks.
std::string OnOneLine(const std::string& text);

}  // namespace chartbridge

#endif  // APP_NATIVETEXT_H_
