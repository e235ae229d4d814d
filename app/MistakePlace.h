// SPDX-License-Identifier: Apache-2.0
#ifndef APP_MISTAKEPLACE_H_
#define APP_MISTAKEPLACE_H_

#include <jni.h>

#include <string>

namespace chartbridge {

class DumpFolder;
class InputFile;

/// What is wrong with a chart that was rewritten before Java read it, with the place in the chart
/// as its writer has it.
///
/// A place in the rewritten chart helps nobody. So the writer's chart is drawn with its data, which
/// ends in the same mistake, told with its own place; when it does not, as the mistake is in what
/// was done with the chart afterwards, the reason comes back without a place.
///
/// @param reason the mistake, which may begin with a place
/// @param chart the chart as its writer has it
/// @param data its data; null for those of the chart
std::string WithOwnPlace(const std::string& reason, const InputFile& chart, const InputFile* data,
                         JNIEnv* env, const DumpFolder& dumps);

/// Whether a reason begins with a place, such as `line 3, column 5: `.
bool HasPlace(const std::string& reason);

}  // namespace chartbridge

#endif  // APP_MISTAKEPLACE_H_
