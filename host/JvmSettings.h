// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_JVMSETTINGS_H_
#define HOST_JVMSETTINGS_H_

#include <functional>
#include <string>
#include <vector>

namespace chartbridge {

/// What `JvmSettings::defaultOptions` begins with, chosen for a host that runs for long and shares
/// its machine:
///
/// - `-XX:+UseSerialGC`: no collector threads, and far less memory.
/// - `-Xms16m`, `-XX:MinHeapFreeRatio=20`, `-XX:MaxHeapFreeRatio=40`, `-XX:-ShrinkHeapInSteps`:
///   the Java heap begins small, grows no further than the work needs, and gives memory back at the
///   first full collection after a large piece of work. How far it may grow is the JVM's choice, a
///   quarter of the machine's memory.
/// - `-XX:-UsePerfData`: no counters in a file of the temporary folder, which would stay behind a
///   process that is killed.
/// - `-XX:+DisableAttachMechanism`: no other process attaches, and no socket for it appears in the
///   temporary folder.
std::vector<std::string> DefaultJvmOptions();

/// How the process's Java virtual machine is found and started.
///
/// All texts are in the host's native encoding. Two environment variables add to what a host sets
/// here, so that a user can help himself without a new build:
///
/// - `TESK_CLASSPATH`: entries separated by colons, put after `classPath`. Empty entries are
///   ignored.
/// - `TESK_JVM_OPTIONS`: options separated by blanks, put after `options` (where two options
///   contradict, the JVM takes the later one). Quoting works as in a shell: text in single quotes
///   stands for itself; in double quotes a backslash keeps its meaning only before a double quote
///   or another backslash; outside quotes a backslash takes the next character as it is. An
///   unclosed quote or a backslash at the very end is an error, and the JVM is not started.
struct JvmSettings {
  /// Jars and class folders, in the order of search.
  std::vector<std::string> classPath;

  /// JVM options as on the `java` command line, one per entry: `-Xmx2g`, `-Dname=value`.
  ///
  /// Two that are the other way round here than elsewhere can be turned: tools cannot attach unless
  /// `-XX:-DisableAttachMechanism` is given, and there are no counters for them unless
  /// `-XX:+UsePerfData` is.
  ///
  /// Options that the JVM rejects while it reads them make `TeskJVM::StartJVM` answer false. Some
  /// that it rejects later (a heap larger than the address space, an agent that does not load) make
  /// the JVM end the process; nobody can prevent that.
  std::vector<std::string> options;

  /// Options that hold until `options`, `TESK_JVM_OPTIONS` or the JVM's own variables
  /// (`JAVA_TOOL_OPTIONS`, `_JAVA_OPTIONS`) say otherwise: each is left out as soon as one of them
  /// has an option for the same thing, under whatever name. So `-XX:+UseG1GC` replaces the serial
  /// collector, and `-Xmx8m` the initial size of the heap, which `-Xmx1g` leaves as it is.
  ///
  /// The list begins with `DefaultJvmOptions()`. What a host adds replaces members of
  /// `DefaultJvmOptions()` for the same thing; members that it adds have to fit together. It may
  /// empty or replace the list.
  std::vector<std::string> defaultOptions = DefaultJvmOptions();

  /// A Java home to use. Empty: `JAVA_HOME`, else the JVM of the `java` on the path, else the
  /// distribution's default. A home that is named here or in `JAVA_HOME` is the only one tried: a
  /// wrong one is reported rather than passed over in silence.
  std::string javaHome;

  /// Whether the guard is put between native code and the JVM, so that wrong JNI calls end in Java
  /// exceptions instead of the end of the process. Leave it on: several operations of the library
  /// rely on it with today's JVMs.
  bool guard = true;

  /// The guard's library. Empty: `libjniguard.so` beside this library, else in `guard/` or
  /// `../guard/` next to it. When the guard is wanted and cannot be loaded, the JVM is not started.
  std::string guardLibrary;

  /// Options for the guard, as after `-agentpath:libjniguard.so=`; for example `report`.
  std::string guardOptions;

  /// A class-data-sharing archive that shortens the start. Used when it fits the JVM and the class
  /// path, ignored in silence otherwise. Empty: the one that was made for this JVM and the first
  /// jar of `classPath`, which lies beside that jar or in the user's cache (`MakeClassArchive`);
  /// where there is none, the JVM's own. Any option about archives, also `-Xshare:auto`, turns the
  /// search off. An archive that is named here makes way only for one that an option names, and for
  /// options with which the JVM uses none, such as `-Xshare:off`.
  std::string sharedArchive;

  /// Whether `-Xrs` is passed, so that the JVM leaves SIGHUP, SIGINT, SIGQUIT and SIGTERM to the
  /// host. The JVM always needs SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGPIPE and SIGXFSZ; handlers that
  /// the host had installed for them before the start are called for signals that are not the
  /// JVM's. A host that installs such handlers later preloads the JVM's `libjsig.so`. It stops
  /// threads by the last free real-time signal, or by the one whose number is in the environment
  /// variable `_JAVA_SR_SIGNUM`.
  bool leaveSignalsToHost = true;

  /// Receives messages (no line end), also from other threads. Unset: lines on standard error.
  std::function<void(const std::string&)> message;
};

/// Replaces the settings that `TeskJVM::StartJVM` uses. To be called before it; afterwards only
/// `message` has an effect. Safe on any thread.
void SetJvmSettings(JvmSettings settings);

/// A copy of the present settings. Safe on any thread.
JvmSettings GetJvmSettings();

}  // namespace chartbridge

#endif  // HOST_JVMSETTINGS_H_
