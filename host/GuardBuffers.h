// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_GUARDBUFFERS_H_
#define HOST_GUARDBUFFERS_H_

namespace chartbridge {

/// What native code has obtained from Java and not released, as the guard knows it.
///
/// The guard is the one in the process, whichever way it came there; without one nothing happens.
/// It is looked for once, at the first call, which must come after the start of the JVM.
class GuardBuffers {
 public:
  /// A mark in the order in which the calling thread obtains things.
  static unsigned long long Mark();

  /// Frees what the calling thread has obtained since the mark and not released.
  static void FreeSince(unsigned long long mark);
};

}  // namespace chartbridge

#endif  // HOST_GUARDBUFFERS_H_
