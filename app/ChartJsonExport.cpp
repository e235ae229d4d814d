// SPDX-License-Identifier: Apache-2.0
#include "app/ChartJsonExport.h"

#include <cstdlib>
#include <utility>

#include "app/ChartXml.h"
#include "app/CurrentChart.h"
#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/JavaFailure.h"
#include "app/JsonEditorSession.h"
#include "app/JsonText.h"
#include "app/MistakePlace.h"
#include "app/ScratchFolder.h"
#include "host/LocalFrame.h"

namespace chartbridge {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kDataOption = "data";
// How messages of the Java classes begin.
constexpr const char* kDocumentInMessages = "GeoJSON document ";
constexpr const char* kNoData = "The chart has no data of its own";

Json ReadOptions(const std::string& file) {
  if (file.empty()) return Json::object();
  const InputFile input(file);
  return ParseJson(input.Text(), input.Name());
}

/// The options of an interactive export, with what the command line says in them.
std::string OptionsFor(const ChartJsonSettings& settings) {
  Json options = ReadOptions(settings.optionsFile);
  // What is no object is for the Java classes to refuse, as they refuse single options.
  if (!options.is_object()) return options.dump();
  const std::string place = settings.dataFile.empty() ? "inline" : "separate";
  const std::string other = settings.dataFile.empty() ? "separate" : "inline";
  if (options.value(kDataOption, Json()) == other) {
    throw Failure(settings.optionsFile + ": \"data\" is \"" + other + "\", and " +
                  (settings.dataFile.empty() ? "no data file is named" : "a data file is named"));
  }
  if (options.value(kDataOption, Json(place)) == place) options[kDataOption] = place;
  if (!settings.projection.empty()) {
    Json& map = options["map"];
    if (map.is_null() || map.is_object()) map["projection"] = settings.projection;
  }
  return options.dump();
}

/// A message without what it says that it is about.
std::string AfterColon(const std::string& reason) {
  const std::size_t end = reason.find(": ");
  return end == std::string::npos ? reason : reason.substr(end + 2);
}

/// The number of the GeoJSON document that a message is about, from 1; 0 for another message.
std::size_t DocumentNumber(const std::string& reason) {
  const std::string beginning = kDocumentInMessages;
  if (reason.rfind(beginning, 0) != 0) return 0;
  return std::strtoul(reason.c_str() + beginning.size(), nullptr, 10);
}

}  // namespace

ChartJsonExport::ChartJsonExport(ChartJsonSettings settings) : _settings(std::move(settings)) {
  _chart = std::make_unique<InputFile>(_settings.chart);
  if (!_settings.data.empty()) _data = std::make_unique<InputFile>(_settings.data);
  for (const std::string& map : _settings.maps) _maps.push_back(InputFile(map).Text());
  if (_settings.interactive) _options = OptionsFor(_settings);
}

ChartJsonExport::~ChartJsonExport() = default;

void ChartJsonExport::WriteTo(const std::string& file, const std::string& name,
                              const JavaOptions& options) const {
  const DumpFolder dumps;
  const JavaMachine java(options);
  const std::string chart = _data ? ChartWithData(java.Env(), dumps) : _chart->Text();
  const JsonEditorSession session(java.Env());
  JavaFailure::ThrowIfNotStarted(dumps.NewRecords());

  const LocalFrame frame;
  Configure(session.Editor(), file);
  if (session.Editor().RenderChartJSON(chart, _maps, {})) return;
  const auto failure = JavaFailure::First(dumps.NewRecords());
  if (!failure) throw Failure(_chart->Name() + ": " + dumps.WhyEmpty());
  std::string reason = failure->Reason();
  if (_data) reason = WithOwnPlace(reason, *_chart, _data.get(), java.Env(), dumps);
  throw Failure(Explain(*failure, reason, name), failure->Stack());
}

std::string ChartJsonExport::Text(const std::string& name, const JavaOptions& options) const {
  const ScratchFolder scratch;
  const std::string file = scratch.File("chart.vl.json");
  WriteTo(file, name, options);
  return InputFile(file).Text();
}

std::string ChartJsonExport::ChartWithData(JNIEnv* env, const DumpFolder& dumps) const {
  // Only current chart XML has a place for data.
  return WithData(CurrentChart(*_chart, env, dumps), _chart->Name(), _data->Text(), _data->Name());
}

void ChartJsonExport::Configure(jsonEditor& editor, const std::string& file) const {
  editor.setFilePath(file);
  if (!_settings.charset.empty()) editor.SetCodepage(_settings.charset);
  if (_settings.isTemplate) editor.setIsChartTemplate();
  if (_settings.renderer == "svg") editor.setImageFormat(jsonEditor::IMAGE_SVG);
  if (_settings.renderer == "canvas") editor.setImageFormat(jsonEditor::IMAGE_PNG);
  if (!_settings.interactive) return;
  editor.setOptions(_options);
  // The path is what makes the export interactive. With the data in the chart nothing is written
  // there.
  editor.setJsonPath(_settings.dataFile.empty() ? file + ".data" : _settings.dataFile);
}

std::string ChartJsonExport::Explain(const JavaFailure& failure, const std::string& reason,
                                     const std::string& name) const {
  // Java got documents and knows no file names.
  const std::size_t number = DocumentNumber(reason);
  if (number >= 1 && number <= _settings.maps.size()) {
    return _settings.maps[number - 1] + ": " + AfterColon(reason);
  }
  if (failure.PassedThrough("org.chartbridge.vega.OptionsReader.")) {
    const bool projection = reason.find("\"map.projection\"") != std::string::npos;
    const bool given = projection && !_settings.projection.empty();
    return (given ? "--projection" : _settings.optionsFile) + ": " + AfterColon(reason);
  }
  if (!_data && reason.rfind(kNoData, 0) == 0) {
    return _chart->Name() + ": the chart has no data of its own; name its data with --data";
  }
  return Culprit(failure, reason, name) + ": " + reason;
}

std::string ChartJsonExport::Culprit(const JavaFailure& failure, const std::string& reason,
                                     const std::string& name) const {
  // The chart names a column that the data lack.
  if (failure.PassedThrough("org.chartbridge.data.ChartData.") && _data && !HasPlace(reason)) {
    return _data->Name();
  }
  if (failure.PassedThrough("org.chartbridge.data.CsvReader.") && _data) return _data->Name();
  if (failure.PassedThrough("org.chartbridge.image.OutputFiles.")) return name;
  if (failure.PassedThrough("org.chartbridge.vega.JsonText.in(")) return "--charset";
  return _chart->Name();
}

}  // namespace chartbridge
