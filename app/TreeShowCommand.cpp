// SPDX-License-Identifier: Apache-2.0
#include "app/TreeShowCommand.h"

#include <chrono>
#include <cstdlib>
#include <optional>
#include <thread>

#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/Interruption.h"
#include "app/JavaFailure.h"
#include "app/OutputFile.h"
#include "app/StandardInput.h"
#include "app/TreeDocuments.h"
#include "app/TreeWindowSession.h"
#include "app/WindowPlace.h"

namespace chartbridge {

namespace {

// How soon the command notices that the window was closed.
constexpr std::chrono::milliseconds kPause(100);

std::string Display() {
  const char* name = std::getenv("DISPLAY");
  return name == nullptr ? "" : name;
}

}  // namespace

TreeShowCommand::TreeShowCommand(CLI::App& tree)
    : _command(tree.add_subcommand("show",
                                   "Show a tree model in a window, until it is closed; a "
                                   "click on a node collapses or opens it")) {
  AddTreeModel(*_command, _options);
  _command
      ->add_option("--save-display", _saveDisplay,
                   "Where to write the display data as they are when the window is closed; - is "
                   "standard output")
      ->type_name("FILE");
  _command
      ->add_option("--geometry", _geometry,
                   "Extent and location of the window in pixels; 1000x700+60+60 when not given")
      ->type_name("WIDTHxHEIGHT+X+Y");
  AddTreeOptions(*_command, _options);
  _command->footer(
      "Examples:\n"
      "  chartbridge tree show iris.pmml\n"
      "  chartbridge tree show iris.pmml --depth 2 --save-display iris-display.xml\n"
      "  chartbridge tree render iris.pmml -o iris.svg --display iris-display.xml");
}

void TreeShowCommand::Run() {
  CheckTreeOptions(_options);
  CheckStandardInput({_options.model, _options.display});
  const WindowPlace place = _geometry.empty() ? WindowPlace() : ParseWindowPlace(_geometry);
  std::optional<OutputFile> output;
  if (!_saveDisplay.empty()) output.emplace(_saveDisplay, false);
  const TreeDocuments documents(_options);
  if (Display().empty())
    throw Failure("there is no display to show a window on: DISPLAY is not set");

  // Closed from the keyboard, the window leaves the same as when it is closed with the mouse.
  const Interruption interruption;
  const DumpFolder dumps;
  JavaOptions options = _options.java;
  options.screen = true;
  const JavaMachine java(options);
  TreeWindowSession window(java.Env());
  JavaFailure::ThrowIfNotStarted(dumps.NewRecords());
  if (!window.HasDisplay()) {
    throw Failure("there is no display to show a window on: DISPLAY is " + Display() +
                  ", where no X server answers");
  }
  window.Show(place, documents);
  if (!window.IsOpen()) documents.FailWithReason(dumps, "");
  while (!interruption.HasCome() && window.IsOpen()) std::this_thread::sleep_for(kPause);
  if (!output) return;

  const std::string display = window.DisplayData();
  if (display.empty()) documents.FailWithReason(dumps, "");
  output->Write(display);
}

}  // namespace chartbridge
