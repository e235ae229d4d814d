// SPDX-License-Identifier: Apache-2.0
#ifndef APP_JAVAMACHINE_H_
#define APP_JAVAMACHINE_H_

#include <jni.h>

#include <string>

namespace chartbridge {

/// What the command line says about the JVM.
struct JavaOptions {
  /// Class path to use instead of the jar that belongs to the command, with colons. Empty: that
  /// jar.
  std::string classPath;
  /// Whether the guard stands between the library and the JVM.
  bool guard = true;
  /// The folder of the templates that charts name. Empty: none.
  std::string templates;
  /// Whether Java may show windows, where there is a display.
  bool screen = false;
  /// Whether failures come with their Java stack trace.
  bool verbose = false;
};

/// The JVM of this run, started the way a short-lived command wants it.
class JavaMachine {
 public:
  /// Starts the JVM. Throws `Failure` with what was tried when there is none to start.
  explicit JavaMachine(const JavaOptions& options);
  /// Ends the JVM. No editor or converter may be started then.
  ~JavaMachine();

  JavaMachine(const JavaMachine&) = delete;
  JavaMachine& operator=(const JavaMachine&) = delete;

  /// The env of the thread that made this object.
  JNIEnv* Env() const { return _env; }

 private:
  JNIEnv* _env;
};

}  // namespace chartbridge

#endif  // APP_JAVAMACHINE_H_
