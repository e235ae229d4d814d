// SPDX-License-Identifier: Apache-2.0
// The template callback, charts as JSON and documents, with the reference Java classes. Every row
// is a ratio against a floor that is measured in turns with it.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>

#include "bench/BenchJvm.h"
#include "bench/PairedTiming.h"
#include "bench/StaticMethod.h"
#include "export/ExAccessor.h"
#include "host/LocalFrame.h"
#include "json/jsonEditor.h"
#include "platform/ChartBase.h"
#include "platform/ChartTransformer.h"

namespace {

using chartbridge::LocalFrame;
using chartbridge::StaticMethod;
using chartbridge::TimeInTurns;

constexpr char kTemplate[] =
    "<template xmlns=\"urn:chartbridge:template:1\"><size width=\"860\" height=\"480\"/>"
    "<titles caption=\"House of Statistics\"/><axes><x grid=\"false\"/></axes>"
    "<elements><bar arrangement=\"stacked\"/><point opacity=\"0.75\"/></elements>"
    "<legend position=\"top\"/><palette override=\"true\"><color value=\"#4477aa\"/>"
    "<color value=\"#ee6677\"/></palette></template>";
constexpr char kReport[] = CHARTBRIDGE_EXAMPLES "/documents/air-quality.xml";
// As many as the JVM needs to compile what is measured.
constexpr int kWarmUpCalls = 20;

JNIEnv* mainEnv = nullptr;
std::string outputFolder;

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string OutputFile(const std::string& name) { return outputFolder + "/" + name; }

jstring JavaText(const std::string& text) { return mainEnv->NewStringUTF(text.c_str()); }

jbyteArray JavaBytes(const std::string& text) {
  const auto size = static_cast<jsize>(text.size());
  jbyteArray array = mainEnv->NewByteArray(size);
  mainEnv->SetByteArrayRegion(array, 0, size, reinterpret_cast<const jbyte*>(text.data()));
  return array;
}

/// CSV with the rows that the floor of chart JSON makes.
std::string Rows(int count) {
  std::string csv = "x,y,group\n";
  for (int i = 0; i < count; ++i) {
    const int tenths = i * 37 % 1000;
    csv += std::to_string(i) + "," + std::to_string(tenths / 10) + "." +
           std::to_string(tenths % 10) + ",group " + std::to_string(i % 7) + "\n";
  }
  return csv;
}

std::string ChartWithRows(int count) {
  return "<chart xmlns=\"urn:chartbridge:chart:2\"><data>" + Rows(count) +
         "</data><elements><point><x column=\"x\"/><y column=\"y\"/><color column=\"group\"/>"
         "</point></elements></chart>";
}

std::string DocumentWithTable(int rows) {
  std::string xml = "<document xmlns=\"urn:chartbridge:document:1\" title=\"Table\"><table>";
  for (int row = 0; row < rows; ++row) {
    xml += "<row>";
    for (int column = 0; column < 5; ++column) {
      xml += "<cell>" + std::to_string(row * 5 + column) + "</cell>";
    }
    xml += "</row>";
  }
  return xml + "</table></document>";
}

template <typename Subject, typename Floor>
void MeasureWarm(benchmark::State& state, Subject&& subject, Floor&& floor, int callsPerBatch) {
  for (int i = 0; i < kWarmUpCalls; ++i) {
    subject();
    floor();
  }
  TimeInTurns(
      state, subject, floor, [](bool) {}, callsPerBatch);
}

// Java calls native code and gets the merged chart, against the same work without Java.
void TemplateFromJava(benchmark::State& state) {
  const LocalFrame frame;
  const std::string chart = ChartWithRows(static_cast<int>(state.range(0)));
  const std::string templ = kTemplate;
  jstring javaChart = JavaText(chart);
  jstring javaTemplate = JavaText(templ);
  const StaticMethod call(mainEnv, "org/chartbridge/bench/TemplateCalls", "call",
                          "(Ljava/lang/String;Ljava/lang/String;)V");
  std::string merged;
  MeasureWarm(
      state, [&] { call(javaChart, javaTemplate); },
      [&] {
        ChartTransformer transformer(chart);
        transformer.applyTemplate(templ);
        merged = transformer.getEntireXML(ChartBase::_utf8);
      },
      10);
  if (merged.empty()) state.SkipWithError("the template was not applied");
}

// A chart with its rows as a Vega-Lite document, against Jackson writing the rows alone.
void ChartJson(benchmark::State& state) {
  const LocalFrame frame;
  const auto rows = static_cast<int>(state.range(0));
  const std::string chart = ChartWithRows(rows);
  jsonEditor* editor = jsonEditor::GetInstance();
  editor->setFilePath(OutputFile("chart.vl.json"));
  const char* floorClass = "org/chartbridge/bench/RowsFloor";
  StaticMethod(mainEnv, floorClass, "prepare", "(I)V")(jint{rows});
  const StaticMethod write(mainEnv, floorClass, "write", "(Ljava/lang/String;)V");
  jstring floorFile = JavaText(OutputFile("rows.json"));
  bool done = true;
  MeasureWarm(
      state,
      [&] {
        const LocalFrame operation;
        done = editor->RenderChartJSON(chart, {}, {}) && done;
      },
      [&] { write(floorFile); }, 1);
  if (!done) state.SkipWithError("the chart was not exported");
}

// A document that Java holds as a file, against its XML parsed and the same file written.
void Export(benchmark::State& state, const std::string& document, const std::string& name,
            const std::string& ending) {
  const LocalFrame frame;
  const std::unique_ptr<ExAccessor> exporter(ExAccessor::CreateInstance());
  const std::string file = OutputFile("document" + ending);
  const std::string request = "{\"output\":\"" + file + "\"}";
  bool done = exporter->CreateOutputDocument(document, name) && exporter->ExportOutput(request);
  if (!done) {
    state.SkipWithError(("the document was not exported: " + exporter->getError()).c_str());
    return;
  }
  const char* floorClass = "org/chartbridge/bench/DocumentFloor";
  StaticMethod(mainEnv, floorClass, "prepare", "([BLjava/lang/String;)V")(JavaBytes(document),
                                                                          JavaText(file));
  const StaticMethod write(mainEnv, floorClass, "write", "(Ljava/lang/String;)V");
  jstring floorFile = JavaText(OutputFile("floor"));
  MeasureWarm(
      state,
      [&] {
        const LocalFrame operation;
        done = exporter->ExportOutput(request) && done;
      },
      [&] { write(floorFile); }, 1);
  if (!done) state.SkipWithError("the document was not exported every time");
}

void ReportAs(benchmark::State& state, const char* ending) {
  Export(state, ReadFile(kReport), kReport, ending);
}

void TableAs(benchmark::State& state, const char* ending) {
  Export(state, DocumentWithTable(static_cast<int>(state.range(0))), "table", ending);
}

BENCHMARK(TemplateFromJava)->Arg(0)->Arg(100)->Arg(10000)->UseManualTime();
BENCHMARK(ChartJson)->Arg(100)->Arg(10000)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReportAs, html, ".html")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReportAs, pdf, ".pdf")->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(TableAs, html, ".html")
    ->Arg(1000)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(TableAs, pdf, ".pdf")->Arg(1000)->UseManualTime()->Unit(benchmark::kMillisecond);

/// A folder for the files of the measurements, for its scope.
class OutputFolder {
 public:
  OutputFolder() {
    std::string pattern = std::filesystem::temp_directory_path() / "chartbridge-bench-XXXXXX";
    if (mkdtemp(pattern.data()) != nullptr) outputFolder = pattern;
  }
  ~OutputFolder() {
    std::error_code ignored;
    if (!outputFolder.empty()) std::filesystem::remove_all(outputFolder, ignored);
  }
  OutputFolder(const OutputFolder&) = delete;
  OutputFolder& operator=(const OutputFolder&) = delete;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  const OutputFolder folder;
  if (outputFolder.empty()) {
    std::cerr << "There is no folder for temporary files.\n";
    return 1;
  }
  mainEnv = chartbridge::StartBenchJvm({CHARTBRIDGE_RUNTIME_JAR, CHARTBRIDGE_FLOOR_JAR}, true);
  jsonEditor::GetInstance()->StartEditorHeadless(mainEnv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
