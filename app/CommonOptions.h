// SPDX-License-Identifier: Apache-2.0
#ifndef APP_COMMONOPTIONS_H_
#define APP_COMMONOPTIONS_H_

#include <CLI/CLI.hpp>

#include "app/JavaMachine.h"

namespace chartbridge {

/// Adds the options about the JVM, which every command that runs Java has.
void AddJavaOptions(CLI::App& command, JavaOptions& options);

/// Adds the option about the folder of templates that charts name, for commands that draw charts.
void AddTemplatesOption(CLI::App& command, JavaOptions& options);

}  // namespace chartbridge

#endif  // APP_COMMONOPTIONS_H_
