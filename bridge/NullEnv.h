// SPDX-License-Identifier: Apache-2.0
#ifndef BRIDGE_NULLENV_H_
#define BRIDGE_NULLENV_H_

#include <jni.h>

namespace chartbridge {

/// A `JNIEnv` whose every function does nothing and returns zero. Never null; valid for the whole
/// process, on any thread.
///
/// A thread that could not be attached has no env. Its bindings call this one instead, so that the
/// operation ends in its failure value where a call through a null pointer would end the process.
JNIEnv* NullEnv();

}  // namespace chartbridge

#endif  // BRIDGE_NULLENV_H_
