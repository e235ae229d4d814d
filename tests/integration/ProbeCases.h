// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_INTEGRATION_PROBECASES_H_
#define TESTS_INTEGRATION_PROBECASES_H_

#include <jni.h>

#include <map>
#include <string>

namespace chartbridge {

/// One sequence of JNI calls, on a thread that is attached. It prints what it sees as lines
/// "name=value" on standard output, and leaves a pending exception to its caller.
using ProbeCase = void (*)(JNIEnv* env);

/// All sequences by name.
const std::map<std::string, ProbeCase>& ProbeCases();

/// Prints "name=value" at once, so that it is out even when the process dies next.
void Show(const char* name, const std::string& value);
void Show(const char* name, long long value);
/// "null" or "an object".
void ShowReference(const char* name, const void* reference);

/// Prints and clears the pending exception: "pending=java.lang.X: message", or "pending=none".
void ShowPending(JNIEnv* env);

/// A Java string's text, for ASCII.
std::string TextOf(JNIEnv* env, jobject text);

}  // namespace chartbridge

#endif  // TESTS_INTEGRATION_PROBECASES_H_
