// SPDX-License-Identifier: Apache-2.0
#ifndef APP_HISTOGRAMCOMMAND_H_
#define APP_HISTOGRAMCOMMAND_H_

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "app/Command.h"
#include "app/HistogramBins.h"
#include "app/JavaMachine.h"

namespace chartbridge {

class DumpFolder;
class InputFile;

/// `chartbridge histogram`: puts a histogram behind a chart, from values or from counted bins.
class HistogramCommand : public Command {
 public:
  /// Adds the command to `app`. Both must live until the command line has been parsed and run.
  explicit HistogramCommand(CLI::App& app);

  bool IsChosen() const override { return _command->parsed(); }
  void Run() override;
  bool IsVerbose() const override { return _java.verbose; }

 private:
  void CheckUsage() const;
  HistogramBins Bins() const;
  std::string Look() const;
  const std::string& BinsName() const { return _values.empty() ? _bins : _values; }
  [[noreturn]] void Fail(const InputFile& chart, const DumpFolder& dumps) const;

  CLI::App* _command;
  std::string _chart;
  std::string _values;
  std::string _bins;
  std::optional<int> _count;
  std::string _fill;
  std::optional<double> _opacity;
  std::string _output = "-";
  JavaOptions _java;
};

}  // namespace chartbridge

#endif  // APP_HISTOGRAMCOMMAND_H_
