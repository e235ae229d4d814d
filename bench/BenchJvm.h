// SPDX-License-Identifier: Apache-2.0
#ifndef BENCH_BENCHJVM_H_
#define BENCH_BENCHJVM_H_

#include <jni.h>

#include <string>
#include <vector>

namespace chartbridge {

/// Starts the process's JVM with these jars on its class path and returns the calling thread's env.
/// Ends the process with a message when the JVM does not start.
JNIEnv* StartBenchJvm(const std::vector<std::string>& jars, bool guard);

/// The most memory that this process has had resident so far, in MiB.
double PeakResidentMiB();

/// The memory that this process has resident now, in MiB.
double ResidentMiB();

}  // namespace chartbridge

#endif  // BENCH_BENCHJVM_H_
