// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_JAVASIGNALS_H_
#define HOST_JAVASIGNALS_H_

namespace chartbridge {

/// The signal by which Java's own libraries wake a thread that waits for a file or a connection
/// that another thread closes. It is fixed.
int JavaWakeSignal();

/// The signal by which the JVM is to stop its threads for a moment, where nobody has chosen one:
/// the last real-time signal whose action is the default one, that the calling thread does not
/// block and that Java has no other use for. 0 when there is none.
int FreeSuspendSignal();

}  // namespace chartbridge

#endif  // HOST_JAVASIGNALS_H_
