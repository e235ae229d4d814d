// SPDX-License-Identifier: Apache-2.0
#ifndef APP_CURRENTCHART_H_
#define APP_CURRENTCHART_H_

#include <jni.h>

#include <string>

namespace chartbridge {

class DumpFolder;
class InputFile;

/// A chart as chart XML of the current version: graph language and older versions are converted, a
/// current document comes back byte for byte.
///
/// Throws `Failure` with the chart's name and the reason when it is no chart. The converter must
/// not be started.
///
/// @param env the calling thread's
/// @param dumps where Java exceptions are recorded
std::string CurrentChart(const InputFile& chart, JNIEnv* env, const DumpFolder& dumps);

}  // namespace chartbridge

#endif  // APP_CURRENTCHART_H_
