// SPDX-License-Identifier: Apache-2.0
#include "app/DocumentExportCommand.h"

#include <sys/stat.h>

#include <nlohmann/json.hpp>

#include "app/CommonOptions.h"
#include "app/DocumentProgress.h"
#include "app/DocumentSession.h"
#include "app/Failure.h"
#include "app/NativeText.h"
#include "app/OutputFile.h"
#include "app/ScratchFolder.h"

namespace chartbridge {

namespace {

/// Tells a file from the one that took its place.
class FileIdentity {
 public:
  explicit FileIdentity(const std::string& path) : _exists(stat(path.c_str(), &_status) == 0) {}

  bool IsNewAfter(const FileIdentity& before) const {
    if (!_exists) return false;
    return !before._exists || _status.st_ino != before._status.st_ino ||
           _status.st_mtim.tv_sec != before._status.st_mtim.tv_sec ||
           _status.st_mtim.tv_nsec != before._status.st_mtim.tv_nsec;
  }

 private:
  struct stat _status {};
  bool _exists;
};

void PutIfGiven(nlohmann::json& request, const char* key, const std::string& value) {
  if (!value.empty()) request[key] = value;
}

}  // namespace

DocumentExportCommand::DocumentExportCommand(CLI::App& document)
    : _command(document.add_subcommand("export", "Turn a document into a page, a PDF or text")) {
  _command->add_option("input", _input, "The document, built or as XML; - is standard input")
      ->type_name("INPUT")
      ->required();
  _command
      ->add_option("-o,--output", _output,
                   "The result; its ending says the format (" + DocumentFormatNames() +
                       "); - is standard output")
      ->type_name("FILE")
      ->required();
  _command->add_option("-t,--to", _to, "The format, whatever the ending says")->type_name("FORMAT");
  _command
      ->add_option("-l,--language", _language,
                   "The language of numbers, dates and fixed words, such as de or pt-BR; the "
                   "document's own when not given")
      ->type_name("TAG");
  _command
      ->add_option("--style", _style,
                   "The name of a built-in style for the charts and trees, such as print or dark")
      ->type_name("NAME");
  _command
      ->add_option("--paper", _paper,
                   "The paper, a4 or letter; the document's own when not "
                   "given")
      ->type_name("NAME");
  _command->add_option("--charset", _charset, "The encoding of csv and txt; UTF-8 when not given")
      ->type_name("NAME");
  _command
      ->add_option("--table", _table,
                   "For csv: only this table, counted from 1; all when not given")
      ->type_name("NUMBER");
  AddJavaOptions(*_command, _java);
  _command->footer(
      "Examples:\n"
      "  chartbridge document export report.tdoc -o report.pdf\n"
      "  chartbridge document export report.xml -o report.html --language de\n"
      "  chartbridge document export report.tdoc -o sales.csv --table 2\n"
      "  make-report | chartbridge document export - -o - --to txt");
}

void DocumentExportCommand::Run() {
  const DocumentFormat format = DocumentFormatOf(_output, _to);
  CheckOptions(format);
  const OutputFile output(_output, format.isBinary);
  const InputFile input(_input);

  DocumentSession session(_java);
  const DocumentProgress progress(output.Name());
  const std::string why = session.Load(input, _input);
  if (!why.empty()) session.FailWithReason();
  if (output.IsReplaceable()) {
    ExportTo(output.Target(), format, input.Name(), session);
    return;
  }
  const ScratchFolder folder;
  ExportTo(folder.File("document"), format, input.Name(), session);
  output.Write(InputFile(folder.File("document")).Text());
}

void DocumentExportCommand::CheckOptions(const DocumentFormat& format) const {
  const std::string word = format.word;
  if (_command->count("--table") > 0) {
    if (word != "csv") throw UsageError("--table goes with csv; " + word + " has all tables");
    if (_table < 1) {
      throw UsageError("--table: there is no table " + std::to_string(_table) +
                       "; the first is table 1");
    }
  }
  if (!_charset.empty() && word != "csv" && word != "text") {
    throw UsageError("--charset goes with csv and txt; " + word + " has its own encoding");
  }
}

void DocumentExportCommand::ExportTo(const std::string& file, const DocumentFormat& format,
                                     const std::string& inputName, DocumentSession& session) const {
  const FileIdentity before(file);
  const std::string error = session.Export(Request(file, format, session));
  if (!error.empty()) throw Failure(inputName + ": " + OnOneLine(error));
  // The first export of an exporter also looks good when Java threw something.
  if (!FileIdentity(file).IsNewAfter(before)) session.FailWithReason();
}

std::string DocumentExportCommand::Request(const std::string& file, const DocumentFormat& format,
                                           const DocumentSession& session) const {
  nlohmann::json request = {{"document", session.Name()}, {"to", format.word}, {"output", file}};
  PutIfGiven(request, "language", _language);
  PutIfGiven(request, "style", _style);
  PutIfGiven(request, "paper", _paper);
  PutIfGiven(request, "charset", _charset);
  if (_table > 0) request["table"] = _table;
  try {
    return request.dump();
  } catch (const nlohmann::json::exception&) {
    throw Failure("a name or an option is not in UTF-8");
  }
}

}  // namespace chartbridge
