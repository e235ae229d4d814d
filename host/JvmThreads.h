// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_JVMTHREADS_H_
#define HOST_JVMTHREADS_H_

namespace chartbridge {

/// Detaches the calling thread from the JVM. True when it is not attached afterwards.
///
/// Every Java reference made on the thread is garbage after it, whoever holds it: an editor or
/// converter that was started on this thread must have been stopped before. That is why the host
/// library never detaches a thread by itself, not even when it ends. A thread that only ran
/// operations on editors started elsewhere should call this before it ends: a thread that ends
/// attached leaves its Java thread object behind for the life of the process.
///
/// False when Java frames are on the thread's stack. The next `TeskJVM::AttachCurrentThread`
/// attaches the thread again.
bool DetachCurrentThread();

/// Shuts the JVM down in order, at the very end of the process: waits for Java's non-daemon
/// threads, runs shutdown hooks, writes what was asked for at exit (a class-data-sharing archive, a
/// recording). True when a JVM ran and ended cleanly.
///
/// Stop all editors before, and see that no other thread is inside an operation. A process cannot
/// start a second JVM, so `TeskJVM::StartJVM` answers false afterwards. A host that has no such
/// need simply ends.
bool DestroyJvm();

}  // namespace chartbridge

#endif  // HOST_JVMTHREADS_H_
