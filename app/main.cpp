// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include "app/Command.h"
#include "app/ConvertCommand.h"
#include "app/DoctorCommand.h"
#include "app/DocumentCommand.h"
#include "app/Failure.h"
#include "app/HistogramCommand.h"
#include "app/JsonCommand.h"
#include "app/NativeText.h"
#include "app/OutputFile.h"
#include "app/RenderCommand.h"
#include "app/SignalCleanup.h"
#include "app/StandardStreams.h"
#include "app/TreeCommand.h"
#include "app/ViewCommand.h"
#include "app/WorkingFolder.h"

namespace {

using chartbridge::Command;
using chartbridge::ConvertCommand;
using chartbridge::DoctorCommand;
using chartbridge::DocumentCommand;
using chartbridge::Failure;
using chartbridge::HistogramCommand;
using chartbridge::JsonCommand;
using chartbridge::RenderCommand;
using chartbridge::TreeCommand;
using chartbridge::UsageError;
using chartbridge::ViewCommand;

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

int ReportUsage(const CLI::App& app, const std::string& reason) {
  const CLI::App* command = &app;
  std::string name = "chartbridge";
  while (!command->get_subcommands().empty()) {
    command = command->get_subcommands().front();
    name += " " + command->get_name();
  }
  std::cerr << "chartbridge: " << chartbridge::OnOneLine(reason) << " (see " << name
            << " --help)\n";
  return kUsage;
}

/// Prints the help or the version that the command line asks for.
int Answer(const CLI::App& app, const CLI::Success& answered) {
  std::ostringstream answer;
  std::ostringstream ignored;
  const int code = app.exit(answered, answer, ignored);
  chartbridge::OutputFile("-", false).Write(answer.str());
  return code;
}

int ReportFailure(const Failure& failure, bool verbose) {
  // Names of files may have several.
  std::cerr << "chartbridge: " << chartbridge::OnOneLine(failure.what()) << "\n";
  if (verbose && !failure.Details().empty()) std::cerr << failure.Details() << "\n";
  return kFailed;
}

int Run(Command& command) {
  try {
    command.Run();
    return kDone;
  } catch (const Failure& failure) {
    return ReportFailure(failure, command.IsVerbose());
  }
}

/// Adds all commands, in the order in which the help lists them.
std::vector<std::unique_ptr<Command>> AddCommands(CLI::App& app) {
  std::vector<std::unique_ptr<Command>> commands;
  commands.push_back(std::make_unique<RenderCommand>(app));
  commands.push_back(std::make_unique<JsonCommand>(app));
  commands.push_back(std::make_unique<ViewCommand>(app));
  commands.push_back(std::make_unique<ConvertCommand>(app));
  commands.push_back(std::make_unique<HistogramCommand>(app));
  commands.push_back(std::make_unique<TreeCommand>(app));
  commands.push_back(std::make_unique<DocumentCommand>(app));
  commands.push_back(std::make_unique<DoctorCommand>(app));
  return commands;
}

int RunChosen(const std::vector<std::unique_ptr<Command>>& commands) {
  for (const auto& command : commands) {
    if (command->IsChosen()) return Run(*command);
  }
  throw UsageError("a command is required");
}

int RunCommandLine(int argc, char** argv) {
  CLI::App app("Draws charts and decision trees.", "chartbridge");
  app.set_version_flag("--version", "chartbridge " CHARTBRIDGE_VERSION, "Print the version");
  app.set_help_flag("-h,--help", "Print this help");
  app.require_subcommand(1);
  app.footer(
      "Exit codes: 0 done, 1 failed (with one line that says why), 2 wrong usage.\n"
      "Environment: JAVA_HOME, TESK_CLASSPATH, TESK_JVM_OPTIONS, DumpChartTimePath.\n\n"
      "Examples:\n"
      "  chartbridge render sales.gpl --data sales.csv -o sales.png\n"
      "  chartbridge view sales.gpl --data sales.csv -o sales.html\n"
      "  chartbridge convert gpl sales.gpl -o sales.xml\n"
      "  chartbridge tree render iris.pmml -o iris.svg\n"
      "  chartbridge render --help");
  const auto commands = AddCommands(app);
  try {
    app.parse(argc, argv);
    return RunChosen(commands);
  } catch (const CLI::Success& answered) {
    return Answer(app, answered);
  } catch (const CLI::ParseError& error) {
    return ReportUsage(app, error.what());
  } catch (const UsageError& error) {
    return ReportUsage(app, error.what());
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (!chartbridge::OccupyClosedStandardStreams()) {
    std::perror("chartbridge: /dev/null");
    return kFailed;
  }
  chartbridge::AdoptUserEncoding();
  try {
    chartbridge::SignalCleanup::Begin();
    const chartbridge::WorkingFolder folder;
    return RunCommandLine(argc, argv);
  } catch (const std::bad_alloc&) {
    std::cerr << "chartbridge: out of memory\n";
  } catch (const std::exception& error) {
    std::cerr << "chartbridge: " << chartbridge::OnOneLine(error.what()) << "\n";
  }
  return kFailed;
}
