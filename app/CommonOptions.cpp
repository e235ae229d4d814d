// SPDX-License-Identifier: Apache-2.0
#include "app/CommonOptions.h"

namespace chartbridge {

void AddJavaOptions(CLI::App& command, JavaOptions& options) {
  const char* group = "Java";
  command
      .add_option("--classpath", options.classPath,
                  "Jars and folders to use instead of the command's own Java classes")
      ->type_name("PATH")
      ->group(group);
  command
      .add_flag_callback(
          "--no-guard", [&options] { options.guard = false; },
          "Do without the guard that turns wrong JNI calls into Java exceptions")
      ->group(group);
  command
      .add_flag("-v,--verbose", options.verbose, "When it fails, also print the Java stack trace")
      ->group(group);
}

void AddTemplatesOption(CLI::App& command, JavaOptions& options) {
  command
      .add_option("--templates", options.templates,
                  "The folder with the chart templates that charts name")
      ->type_name("FOLDER");
}

}  // namespace chartbridge
