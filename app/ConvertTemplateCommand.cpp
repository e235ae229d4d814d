// SPDX-License-Identifier: Apache-2.0
#include "app/ConvertTemplateCommand.h"

#include <algorithm>
#include <memory>
#include <nlohmann/json.hpp>
#include <regex>

#include "app/CommonOptions.h"
#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/JavaFailure.h"
#include "app/OutputFile.h"
#include "convert/graphBoardConverter.h"
#include "host/LocalFrame.h"

namespace chartbridge {

namespace {

/// The reason with what it is about in front. The values of `--set` stand behind the template,
/// where only this command has put them: a place there means the option.
std::string WithName(const std::string& reason, const InputFile& input) {
  static const std::regex place("^line ([0-9]+), column [0-9]+: ");
  const std::string text = input.Text();
  std::smatch match;
  const auto lines = std::count(text.begin(), text.end(), '\n') + 1;
  if (std::regex_search(reason, match, place) && std::stol(match[1]) > lines) {
    return "--set: " + match.suffix().str();
  }
  return input.Name() + ": " + reason;
}

}  // namespace

ConvertTemplateCommand::ConvertTemplateCommand(CLI::App& group)
    : _command(group.add_subcommand("template", "Turn a client template into chart XML")) {
  _command->add_option("template", _template, "The template, in JSON; - is standard input")
      ->type_name("TEMPLATE")
      ->required();
  _command
      ->add_option("--set", _settings,
                   "A value for a slot of the template; may be given for several slots")
      ->type_name("SLOT=VALUE")
      ->allow_extra_args(false);
  _command->add_option("-o,--output", _output, "The chart XML; - is standard output")
      ->type_name("FILE")
      ->capture_default_str();
  AddJavaOptions(*_command, _java);
  _command->footer(
      "Examples:\n"
      "  chartbridge convert template compare.json --set category=region --set measure=sales "
      "-o chart.xml\n"
      "  chartbridge convert template distribution.json -o chart.xml");
}

void ConvertTemplateCommand::Run() {
  const std::string values = Values();
  const OutputFile output(_output, false);
  const InputFile input(_template);

  const DumpFolder dumps;
  const JavaMachine java(_java);
  const LocalFrame frame;
  const std::unique_ptr<graphBoardConverter> converter(graphBoardConverter::GetInstance());
  // A second object behind the template, so that places in the template stay what they are.
  const std::string xml = converter->ConvertClientViZTemplate(input.Text() + values);
  if (!xml.empty()) {
    output.Write(xml);
    return;
  }
  const auto failure = JavaFailure::First(dumps.NewRecords());
  if (!failure) throw Failure(input.Name() + ": " + dumps.WhyEmpty());
  throw Failure(WithName(failure->Reason(), input), failure->Stack());
}

std::string ConvertTemplateCommand::Values() const {
  if (_settings.empty()) return "";
  auto values = nlohmann::json::object();
  for (const std::string& setting : _settings) {
    const std::size_t equals = setting.find('=');
    if (equals == std::string::npos || equals == 0) {
      throw UsageError("--set: \"" + setting + "\" is not of the form slot=value");
    }
    values[setting.substr(0, equals)] = setting.substr(equals + 1);
  }
  try {
    return "\n" + values.dump();
  } catch (const nlohmann::json::exception&) {
    throw UsageError("--set: a slot or a value is not UTF-8");
  }
}

}  // namespace chartbridge
