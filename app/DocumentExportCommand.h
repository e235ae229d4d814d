// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCUMENTEXPORTCOMMAND_H_
#define APP_DOCUMENTEXPORTCOMMAND_H_

#include <CLI/CLI.hpp>
#include <string>

#include "app/Command.h"
#include "app/DocumentFormat.h"
#include "app/JavaMachine.h"

namespace chartbridge {

class DocumentSession;

/// `chartbridge document export`: a document becomes a page, a printable file, tables or text.
class DocumentExportCommand : public Command {
 public:
  /// Adds the subcommand to `document`. Both must live until the command line has been parsed and
  /// run.
  explicit DocumentExportCommand(CLI::App& document);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _java.verbose; }

 private:
  /// Throws `UsageError` for an option that says nothing about the format.
  void CheckOptions(const DocumentFormat& format) const;
  void ExportTo(const std::string& file, const DocumentFormat& format, const std::string& inputName,
                DocumentSession& session) const;
  std::string Request(const std::string& file, const DocumentFormat& format,
                      const DocumentSession& session) const;

  CLI::App* _command;
  std::string _input;
  std::string _output;
  std::string _to;
  std::string _language;
  std::string _style;
  std::string _paper;
  std::string _charset;
  int _table = 0;
  JavaOptions _java;
};

}  // namespace chartbridge

#endif  // APP_DOCUMENTEXPORTCOMMAND_H_
