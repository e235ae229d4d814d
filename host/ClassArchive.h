// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_CLASSARCHIVE_H_
#define HOST_CLASSARCHIVE_H_

namespace chartbridge {

/// Begins to make a class-data-sharing archive in the user's cache folder
/// (`$XDG_CACHE_HOME/chartbridge`, else `~/.cache/chartbridge`), for the JVM and the class path of
/// the present settings. `TeskJVM::StartJVM` of later processes finds it and starts faster;
/// docs/performance.md has measurements.
///
/// The work is done by processes of their own, at a low priority, which may outlive this one;
/// the call returns at once. They take some seconds of one processor and some 200 MB, once: nothing
/// is begun when there is an archive already, when one is being made, when making it has failed
/// before (a file with the ending `.failed` stands in its place; delete it to try again), when
/// `JvmSettings::sharedArchive` or an option of the host or the user says which archive to use, or
/// when the first entry of the class path is no jar with a list of classes beside it.
///
/// True when the work has begun; false also when anything is in its way, as a program does its work
/// without an archive. Safe on any thread, before and after the JVM's start.
bool MakeClassArchive() noexcept;

}  // namespace chartbridge

#endif  // HOST_CLASSARCHIVE_H_
