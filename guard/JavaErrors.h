// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_JAVAERRORS_H_
#define GUARD_JAVAERRORS_H_

#include <jni.h>

#include "guard/jniguard.h"

namespace chartbridge {

/// The Java errors that the guard raises.
enum class JavaError {
  kNullPointer,
  kNoClassDefFound,
  kNoSuchMethod,
  kOutOfMemory,
  kIllegalArgument,
};

/// Finds the classes of all errors. Called once on a live JVM, before `Raise`. False when one is
/// missing.
bool PrepareJavaErrors(JNIEnv* env);

/// Makes `error` pending with the message "JNI `function`: `what`".
///
/// An exception that is already pending stays: it is nearer to the cause, and the caller's next
/// check reports it.
void Raise(JNIEnv* env, JavaError error, const char* function, const char* what);

/// Counts the call and raises the error.
void Refuse(JNIEnv* env, jniguard_kind kind, JavaError error, const char* function,
            const char* what);

}  // namespace chartbridge

#endif  // GUARD_JAVAERRORS_H_
