// SPDX-License-Identifier: Apache-2.0
#ifndef BRIDGE_ATTACHEDENV_H_
#define BRIDGE_ATTACHEDENV_H_

#include <jni.h>

namespace chartbridge {

/// Attaches the calling thread through the host's JVM and returns its env.
///
/// Null when the host has no JVM object or could not attach. A binding that is given the null env
/// fails every call without touching Java; one that is given nothing (the JSON editor's, and that
/// of an exporter that is not the current one) goes on through the env that it has. Exceptions of
/// the host's JVM code propagate.
JNIEnv* AttachedEnv();

}  // namespace chartbridge

#endif  // BRIDGE_ATTACHEDENV_H_
