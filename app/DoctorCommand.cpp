// SPDX-License-Identifier: Apache-2.0
#include "app/DoctorCommand.h"

#include <optional>

#include "app/DoctorContractCheck.h"
#include "app/DoctorMachineCheck.h"
#include "app/DoctorOutput.h"
#include "app/DoctorPictureCheck.h"
#include "app/DoctorSamples.h"
#include "app/DoctorTemplateCheck.h"
#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/StandardInput.h"

namespace chartbridge {

namespace {

constexpr const char* kChartClass = "com/tesk/charteditor/ChartImager";
constexpr const char* kTreeClass = "com/tesk/treemodeleditor/TreeImager";
constexpr const char* kTemplateClass = "com/tesk/charteditor/template/ApplyTemplate";

constexpr const char* kExamples =
    "Prints a line for each check: ok, warn, FAILED (there, but does not work) or MISSING. The "
    "exit\n"
    "code is 1 when something failed or is missing.\n\n"
    "Examples:\n"
    "  chartbridge doctor\n"
    "  chartbridge doctor --classpath host.jar:lib/charts.jar\n"
    "  chartbridge doctor --classpath host.jar --chart sales.xml --data sales.csv\n"
    "  chartbridge doctor --quiet\n"
    "  chartbridge doctor --json > doctor.json";

std::string TextOf(const std::string& file, const char* own) {
  return file.empty() ? own : InputFile(file).Text();
}

}  // namespace

DoctorCommand::DoctorCommand(CLI::App& app)
    : _command(app.add_subcommand(
          "doctor", "Check Java classes, the JVM and the machine before a host relies on them")) {
  _command
      ->add_option("--classpath", _java.classPath,
                   "The jars and folders to check instead of the command's own Java classes")
      ->type_name("PATH");
  _command
      ->add_option("--chart", _chartFile,
                   "A chart that these Java classes can draw, to try the image types with; - is "
                   "standard input")
      ->type_name("FILE");
  _command->add_option("--data", _dataFile, "The data of that chart; - is standard input")
      ->type_name("FILE");
  _command
      ->add_option("--tree", _modelFile,
                   "A tree model that they can draw, for the same; - is standard input")
      ->type_name("FILE");
  _command->add_flag("--json", _json, "Print one JSON document instead of lines");
  _command->add_flag("-q,--quiet", _quiet, "Print no line for what is ok");
  _command->add_flag_callback(
      "--no-guard", [this] { _java.guard = false; }, "Check without the guard");
  _command->footer(kExamples);
}

void DoctorCommand::Run() {
  CheckUsage();
  ReadSamples();
  const DoctorOutput output;
  DoctorReport report(output, Style());
  Examine(report);
  report.Finish();
  if (!report.IsSound()) throw Failure("not everything that the library needs is there and works");
}

void DoctorCommand::CheckUsage() const {
  CheckStandardInput({_chartFile, _dataFile, _modelFile});
  if (!_dataFile.empty() && _chartFile.empty()) throw UsageError("--data goes with --chart");
  if (_json && _quiet) throw UsageError("--json and --quiet exclude each other");
}

void DoctorCommand::ReadSamples() {
  _chart = TextOf(_chartFile, kDoctorChart);
  _data = TextOf(_dataFile, _chartFile.empty() ? kDoctorData : "");
  _model = TextOf(_modelFile, kDoctorModel);
}

DoctorStyle DoctorCommand::Style() const {
  if (_json) return DoctorStyle::kJson;
  return _quiet ? DoctorStyle::kQuiet : DoctorStyle::kLines;
}

void DoctorCommand::Examine(DoctorReport& report) const {
  const DumpFolder dumps;
  std::optional<JavaMachine> java;
  try {
    java.emplace(_java);
  } catch (const Failure& failure) {
    report.Add({DoctorStatus::kFailed, DoctorArea::kJava, "Java", failure.what()});
    return;
  }
  ExamineMachine(*java, dumps, report);
}

void DoctorCommand::ExamineMachine(const JavaMachine& java, const DumpFolder& dumps,
                                   DoctorReport& report) const {
  DoctorMachineCheck machine(java.Env(), report);
  machine.CheckJava();
  machine.CheckClassPath();
  machine.CheckFonts();
  DoctorContractCheck contract(java.Env(), report);
  contract.Run();
  if (contract.IsUsable(kTemplateClass, {"apply"})) {
    DoctorTemplateCheck(java.Env(), report, Severity(false)).Apply(kTemplateClass);
  }
  DrawPictures(java, dumps, contract, report);
  // At the end, because it says what was caught until then.
  machine.CheckGuard();
}

void DoctorCommand::DrawPictures(const JavaMachine& java, const DumpFolder& dumps,
                                 const DoctorContractCheck& contract, DoctorReport& report) const {
  if (contract.IsUsable(kChartClass, {"RenderToFile", "RenderImageMapToFile"})) {
    DoctorPictureCheck(java.Env(), dumps, report, Severity(!_chartFile.empty()))
        .DrawChart(_chart, _data);
  }
  if (contract.IsUsable(kTreeClass, {"renderToFile"})) {
    DoctorPictureCheck(java.Env(), dumps, report, Severity(!_modelFile.empty())).DrawTree(_model);
  }
}

/// A host's own Java classes may take charts of another form than the command's; that they do not
/// draw the command's sample says little.
DoctorStatus DoctorCommand::Severity(bool isUsersOwnSample) const {
  const bool mustWork = isUsersOwnSample || _java.classPath.empty();
  return mustWork ? DoctorStatus::kFailed : DoctorStatus::kWarning;
}

}  // namespace chartbridge
