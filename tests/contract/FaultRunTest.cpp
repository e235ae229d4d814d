// SPDX-License-Identifier: Apache-2.0
// Every operation of the library with each of its JNI calls failing once.
#include "tests/support/FaultRun.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "chart/ViZEditor.h"
#include "convert/VizConverter.h"
#include "convert/graphBoardConverter.h"
#include "export/ExAccessor.h"
#include "json/jsonEditor.h"
#include "tests/support/FakePlatform.h"
#include "tests/support/TreeFixture.h"
#include "tests/support/TreeOperations.h"

extern "C" jstring JNICALL Java_com_tesk_charteditor_template_ApplyTemplate_apply(
    JNIEnv* env, jobject self, jstring chartXml, jstring templateXml);

namespace chartbridge::testing {
namespace {

std::string Text(bool result) { return result ? "true" : "false"; }

// A big-endian length and as many bytes.
std::string Block(const std::string& bytes) {
  return std::string("\0\0\0", 3) + static_cast<char>(bytes.size()) + bytes;
}

class FaultRunTest : public ::testing::TestWithParam<FaultOperation> {};

TEST_P(FaultRunTest, EveryCallFailsOnce) { RunFaults(GetParam()); }

const auto kNameOfOperation = [](const auto& test) { return OperationName(test.param.name); };

// ---- The tree editor.

class TreeScene : public FaultScene {
 public:
  TreeScene(bool headless, bool interactive, std::function<void(FakeJvm&)> script,
            std::function<std::string(TreeEditor&)> run)
      : _headless(headless), _interactive(interactive), _run(std::move(run)) {
    DefineTreeClasses(jvm);
    script(jvm);
    TreeEditor::_instance = nullptr;
    TreeEditor::GetInstance();
  }
  ~TreeScene() override {
    delete TreeEditor::_instance;
    TreeEditor::_instance = nullptr;
  }

  void Start() override {
    if (_interactive) TreeEditor::GetInstance()->StartEditor(jvm.Env(), "", "");
    if (_headless) TreeEditor::GetInstance()->StartEditorHeadless(jvm.Env());
  }
  std::string Run() override { return _run(*TreeEditor::GetInstance()); }

 private:
  bool _headless;
  bool _interactive;
  std::function<std::string(TreeEditor&)> _run;
};

// What one operation gives beyond the rule, and from which call on its outputs are written.
struct TreeSpecial {
  std::vector<std::pair<std::string, std::string>> special;
  std::string written_from;
  std::string when_written;
};

constexpr char kLogicError[] = "std::logic_error";

// The walk of the map {a: "123", b: "4"}, with a size for b and a picture for a there before.
std::vector<std::pair<std::string, std::string>> PictureSpecials() {
  const std::string nothing = "false sizes{b=99 } images{a=\"old\" }";
  const std::string after_a = "false sizes{a=3 b=99 } images{a=\"old\" }";
  const std::string only_a = "true sizes{a=3 b=99 } images{a=\"old\" }";
  const std::string a_empty = "true sizes{a=0 b=99 } images{a=\"old\" b=\"4\" }";
  const std::string b_empty = "true sizes{a=3 b=99 } images{a=\"old\" b=\"\" }";
  return {
      // The walk ends where there seems to be no further entry.
      {"CallBooleanMethod#2 ", only_a},
      {"CallBooleanMethod#3 ", "true sizes{a=3 b=99 } images{a=\"old\" b=\"4\" }"},
      // Whatever loses the key makes a key without bytes.
      {"java/util/Iterator, next, ", kLogicError},
      {"next()Ljava/lang/Object;)", kLogicError},
      {"GetObjectClass(HashMap$Node", kLogicError},
      {", getKey, ", kLogicError},
      {"getKey()Ljava/lang/Object;)", kLogicError},
      {"FindClass(java/lang/String)", kLogicError},
      {", getBytes, ", kLogicError},
      {"getBytes()[B)", kLogicError},
      {"GetArrayLength(byte[]#", kLogicError},
      // Bytes that Java has and does not give make no picture, and a key's end the operation.
      {"GetByteArrayElements(byte[] ", kLogicError},
      {"GetByteArrayElements(byte[]#5)", nothing},
      {"GetByteArrayElements(byte[]#6)", after_a},
      // Whatever loses the value makes an empty picture. The lookups are the fifth and the ninth of
      // their function, behind the operation's own, the four of the iteration and the key's.
      {"GetMethodID#7 ", a_empty},
      {"GetMethodID#10 ", b_empty},
      {"CallObjectMethod(HashMap$Node@1, getValue", a_empty},
      {"CallObjectMethod(HashMap$Node@2, getValue", b_empty},
      {"GetArrayLength(byte[] a)", a_empty},
      {"GetArrayLength(byte[] b)", b_empty},
  };
}

TreeSpecial SpecialOf(const std::string& name) {
  static const std::map<std::string, TreeSpecial> specials = {
      {"GetSize", {{}, "ReleaseLongArrayElements", "false 640x480"}},
      {"CalculateSize",
       {{{"deActivate", "true 640x480"}}, "ReleaseLongArrayElements", "false 640x480"}},
      {"CalculateSizeHeadless", {{}, "ReleaseLongArrayElements", "false 640x480"}},
      {"RenderPMMLAtLocation", {{}, "CallVoidMethod", "done"}},
      // The size is written before the bytes are there.
      {"RenderImageToMemoryHeadless",
       {{{"GetArrayLength", "false 0 \"\""}, {"GetByteArrayElements", "false 3 \"\""}}, "", ""}},
      {"RenderModelToMemoryHeadless", {PictureSpecials(), "", ""}},
      {"RenderModelToFileHeadless",
       {{{"GetArrayLength", "true files{\"old\" }"},
         {"GetObjectArrayElement#1 ", "true files{\"old\" \"\" \"caf\\xC3\\xA9.png\" }"},
         {"GetObjectArrayElement#2 ", "true files{\"old\" \"1.png\" \"\" }"},
         {"GetStringLength#1 ", "true files{\"old\" \"\" \"caf\\xC3\\xA9.png\" }"},
         {"GetStringLength#2 ", "true files{\"old\" \"1.png\" \"\" }"},
         {"GetStringChars#1 ", "true files{\"old\" \"\" \"caf\\xC3\\xA9.png\" }"},
         {"GetStringChars#2 ", "true files{\"old\" \"1.png\" \"\" }"}},
        "",
        ""}},
  };
  const auto found = specials.find(name);
  return found == specials.end() ? TreeSpecial{} : found->second;
}

FaultOperation TreeFaults(const TreeOperation& operation) {
  FaultOperation faults;
  faults.name = operation.name;
  faults.scene = [operation] {
    const auto script = [operation](FakeJvm& jvm) {
      operation.succeed(jvm, operation.Method(jvm).RefusesLostArguments());
    };
    return std::make_unique<TreeScene>(operation.headless, !operation.headless, script,
                                       operation.run);
  };
  faults.success = operation.success;
  faults.failure = operation.failure;
  faults.unattached = operation.failure;
  const TreeSpecial special = SpecialOf(operation.name);
  faults.special = special.special;
  if (operation.on_jexception == OnJException::kFails) faults.on_jexception = operation.failure;
  faults.written_from = special.written_from;
  faults.on_exception_when_written = special.when_written;
  return faults;
}

// Both bindings get the path, and the answer says only that they were called.
FaultOperation SchemaPathFaults() {
  FaultOperation faults;
  faults.name = "SetSchemaPath";
  faults.scene = [] {
    return std::make_unique<TreeScene>(
        true, true, [](FakeJvm&) {},
        [](TreeEditor& editor) {
          editor.SetCodepage("UTF-8");
          return Text(editor.SetSchemaPath("schema"));
        });
  };
  faults.success = "true";
  faults.failure = "true";
  faults.unattached = "true";
  return faults;
}

FaultOperation InteractiveFileFaults() {
  FaultOperation faults;
  faults.name = "RenderInteractiveToFileHeadless";
  faults.scene = [] {
    return std::make_unique<TreeScene>(
        true, false, [](FakeJvm&) {},
        [](TreeEditor& editor) {
          std::vector<std::string> files;
          const bool result = editor.RenderInteractiveToFileHeadless(
              "model", {"a"}, {"b", "c"}, "1", "2", "3", TreeEditor::IMAGE_PNG, 1, files);
          return Text(result) + " " + std::to_string(files.size());
        });
  };
  faults.success = "false 0";
  faults.failure = "false 0";
  faults.unattached = "false 0";
  return faults;
}

std::vector<FaultOperation> AllTreeFaults() {
  std::vector<FaultOperation> all;
  for (const TreeOperation& operation : TreeOperations()) all.push_back(TreeFaults(operation));
  all.push_back(SchemaPathFaults());
  all.push_back(InteractiveFileFaults());
  return all;
}

INSTANTIATE_TEST_SUITE_P(TreeEditor, FaultRunTest, ::testing::ValuesIn(AllTreeFaults()),
                         kNameOfOperation);

// ---- The chart editor.

constexpr char kImagerClass[] = "com/tesk/charteditor/ChartImager";
unsigned char shared[4] = {'d', 'a', 't', 'a'};

struct ChartOperation {
  std::string name;
  std::string method;
  std::string signature;
  // What Java gives: bytes, or true where there are none to give.
  std::string bytes;
  std::function<std::string(ViZEditor&)> run;
};

class ChartScene : public FaultScene {
 public:
  explicit ChartScene(const ChartOperation& operation) : _run(operation.run) {
    jvm.ClassWithConstructor(kImagerClass);
    jvm.NameMemory(shared, "shared");
    FakeMethod& method = jvm.Method(kImagerClass, operation.method, operation.signature);
    method.RefusesLostArguments();
    if (operation.signature.back() == 'Z') {
      method.ReturnsBoolean(true);
    } else {
      method.Returns(jvm.MakeBytes("result", operation.bytes));
    }
    _editor = std::make_unique<ViZEditor>();
    ViZEditor::_instance = _editor.get();
  }
  ~ChartScene() override { ViZEditor::_instance = nullptr; }

  void Start() override { _editor->StartEditorHeadless(jvm.Env()); }
  std::string Run() override { return _run(*_editor); }

 private:
  std::function<std::string(ViZEditor&)> _run;
  std::unique_ptr<ViZEditor> _editor;
};

std::string FileFromBuffer(ViZEditor& editor, ViZEditor::IMAGE_TYPE type) {
  return Text(editor.RenderToFileHeadless("chart", shared, sizeof shared, "out", type, 62.5, "aux1",
                                          "aux-2", "text1", "text-2", true));
}

std::string MemoryFromBuffer(ViZEditor& editor, ViZEditor::IMAGE_TYPE type) {
  std::string one;
  std::string two = "two";
  std::string three = "three";
  const bool result =
      editor.RenderImageToMemoryHeadless("chart", shared, sizeof shared, type, 62.5, one, two,
                                         three, "aux1", "aux-2", "text1", "text-2", true);
  return Text(result) + " " + one + " " + two + " " + three;
}

std::string MemoryFromBytes(ViZEditor& editor) {
  unsigned int size = 77;
  std::string image;
  const bool result = editor.RenderImageToMemoryHeadless(
      "chart", "data", size, ViZEditor::IMAGE_PNG, 62.5, "aux1", "aux-2", "text1", "text-2", image);
  return Text(result) + " " + std::to_string(size) + " " + image;
}

std::string ApplyStyleSheet(ViZEditor& editor) {
  std::string document = "document";
  const bool result = editor.ApplyStyleSheet(document, "sheet");
  return Text(result) + " " + document;
}

FaultOperation ChartFaults(const ChartOperation& operation, const std::string& success,
                           const std::string& failure) {
  FaultOperation faults;
  faults.name = operation.name;
  faults.scene = [operation] { return std::make_unique<ChartScene>(operation); };
  faults.success = success;
  faults.failure = failure;
  faults.unattached = failure;
  return faults;
}

FaultOperation MemoryFromBufferFaults(ViZEditor::IMAGE_TYPE type, const std::string& success,
                                      const std::string& failure) {
  const bool map = type == ViZEditor::IMAGE_MAP;
  const ChartOperation operation = {
      map ? "ImageMapToMemory" : "MemoryFromBuffer", "RenderImageMapToMemory",
      "([BLjava/nio/ByteBuffer;IDZLjava/lang/String;[BLjava/lang/String;[B)[B",
      map ? Block("1") + Block("22") + Block("") : Block("1"),
      [type](ViZEditor& editor) { return MemoryFromBuffer(editor, type); }};
  FaultOperation faults = ChartFaults(operation, success, failure);
  // The length is asked for and not used.
  faults.special = {{"GetArrayLength", success}};
  // Only an image map's elements are released.
  faults.unreleased = map ? 0 : 1;
  return faults;
}

FaultOperation FileFromBytesFaults() {
  FaultOperation faults = ChartFaults(
      {"FileFromBytes", "RenderToFile",
       "([B[BLjava/lang/String;IDLjava/lang/String;[BLjava/lang/String;[B)Z", "",
       [](ViZEditor& editor) {
         return Text(editor.RenderToFileHeadless("chart", "data", "out", ViZEditor::IMAGE_PNG,
                                                 "aux1", "aux-2", "text1", "text-2", 62.5));
       }},
      "true", "false");
  // The first auxiliary bytes are written twice.
  faults.special = {{"SetByteArrayRegion(byte[]#2, 0, 4, \"aux1\")", "true"}};
  return faults;
}

FaultOperation EmbedFaults() {
  FaultOperation faults = ChartFaults(
      {"EmbedHistogramInGraph", "EmbedHistogramInGraph", "([B[BLjava/nio/ByteBuffer;I)[B", "graph",
       [](ViZEditor& editor) {
         return editor.EmbedHistogramInGraph("one", "two", shared, sizeof shared, 5);
       }},
      "graph", "");
  // This one keeps its elements.
  faults.unreleased = 1;
  return faults;
}

FaultOperation StyleSheetFaults() {
  // A null result is read without a test, as an empty one.
  FaultOperation faults =
      ChartFaults({"ApplyStyleSheet", "ApplyStyleSheet", "([B[B)[B", "styled", ApplyStyleSheet},
                  "true styled", "false ");
  faults.special = {{"GetByteArrayElements", "false document"}};
  faults.unattached = "false document";
  faults.on_jexception = "false document";
  faults.on_bad_alloc = "false document";
  faults.written_from = "ReleaseByteArrayElements";
  faults.on_exception_when_written = "false styled";
  return faults;
}

std::vector<FaultOperation> AllChartFaults() {
  const std::string file =
      "([BLjava/nio/ByteBuffer;Ljava/lang/String;IDLjava/lang/String;[BLjava/lang/String;[B)Z";
  const std::string map =
      "([BLjava/nio/ByteBuffer;Ljava/lang/String;IDZLjava/lang/String;[BLjava/lang/String;[B)Z";
  const std::string memory =
      "([BLjava/nio/ByteBuffer;IDLjava/lang/String;[BLjava/lang/String;[B)[B";
  return {
      ChartFaults({"FileFromBuffer", "RenderToFile", file, "",
                   [](ViZEditor& e) { return FileFromBuffer(e, ViZEditor::IMAGE_PNG); }},
                  "true", "false"),
      ChartFaults({"ImageMapToFile", "RenderImageMapToFile", map, "",
                   [](ViZEditor& e) { return FileFromBuffer(e, ViZEditor::IMAGE_MAP); }},
                  "true", "false"),
      FileFromBytesFaults(),
      ChartFaults({"MemoryFromBytes", "RenderToMem", memory, "image", MemoryFromBytes},
                  "true 77 image", "false 77 "),
      MemoryFromBufferFaults(ViZEditor::IMAGE_PNG, "true 1 two three", "false  two three"),
      MemoryFromBufferFaults(ViZEditor::IMAGE_MAP, "true 1 22 ", "false  two three"),
      EmbedFaults(),
      ChartFaults(
          {"ConvertImage", "ConvertImage", "([BLjava/lang/String;I)Z", "",
           [](ViZEditor& e) { return Text(e.ConvertImage("image", "out", ViZEditor::IMAGE_GIF)); }},
          "true", "false"),
      StyleSheetFaults(),
  };
}

INSTANTIATE_TEST_SUITE_P(ViZEditor, FaultRunTest, ::testing::ValuesIn(AllChartFaults()),
                         kNameOfOperation);

// ---- The converters.

constexpr char kConverterClass[] = "com/tesk/vizconverter/VizConverter";

class ConverterScene : public FaultScene {
 public:
  explicit ConverterScene(std::function<std::string(VizConverter&)> run) : _run(std::move(run)) {
    jvm.ClassWithConstructor(kConverterClass);
    for (const char* name : {"ConvertGPL", "ConvertXml"}) {
      jvm.Method(kConverterClass, name, "([B)[B")
          .RefusesLostArguments()
          .Returns(jvm.MakeBytes("result", "<chart/>"));
    }
    jvm.Method(kConverterClass, "getErrorMessage", "()Ljava/lang/String;")
        .Returns(jvm.MakeString("line 1"));
  }

  void Start() override { _converter.StartConverter(jvm.Env()); }
  std::string Run() override { return _run(_converter); }

 private:
  VizConverter _converter;
  std::function<std::string(VizConverter&)> _run;
};

FaultOperation ConversionFaults(const std::string& name,
                                bool (VizConverter::*convert)(const std::string&, std::string&)) {
  FaultOperation faults;
  faults.name = name;
  faults.scene = [convert] {
    return std::make_unique<ConverterScene>([convert](VizConverter& converter) {
      std::string output = "before";
      const bool result = (converter.*convert)("input", output);
      return Text(result) + " " + output;
    });
  };
  faults.success = "true <chart/>";
  faults.failure = "false before";
  faults.unattached = "false before";
  faults.special = {{"GetArrayLength", "true "}};
  faults.on_jexception = "false before";
  faults.on_bad_alloc = "false before";
  faults.written_from = "ReleaseByteArrayElements";
  faults.on_exception_when_written = "false <chart/>";
  return faults;
}

FaultOperation ErrorMessageFaults() {
  FaultOperation faults;
  faults.name = "GetErrorMessage";
  faults.scene = [] {
    return std::make_unique<ConverterScene>(
        [](VizConverter& converter) { return converter.GetErrorMessage(); });
  };
  faults.success = "line 1";
  // The length is asked for and not used.
  faults.special = {{"GetStringLength", "line 1"}};
  faults.failure = "";
  faults.unattached = "";
  return faults;
}

INSTANTIATE_TEST_SUITE_P(VizConverter, FaultRunTest,
                         ::testing::Values(ConversionFaults("GPLtoXML", &VizConverter::GPLtoXML),
                                           ConversionFaults("UpgradeXML",
                                                            &VizConverter::UpgradeXML),
                                           ErrorMessageFaults()),
                         kNameOfOperation);

class GraphBoardScene : public FaultScene {
 public:
  explicit GraphBoardScene(std::function<std::string(graphBoardConverter&)> run)
      : _run(std::move(run)) {
    jvm.ClassWithConstructor(kConverterClass);
    jvm.Method(kConverterClass, "graphBoardConverterToXml", "([B)[B")
        .RefusesLostArguments()
        .Returns(jvm.MakeBytes("result", "<chart/>"));
    jvm.Method(kConverterClass, "graphBoardApplyStyleSheet", "([B[B)[B")
        .RefusesLostArguments()
        .Returns(jvm.MakeBytes("result", "<chart/>"));
    graphBoardConverter::_instance = nullptr;
  }
  ~GraphBoardScene() override { delete graphBoardConverter::_instance; }

  void Start() override { graphBoardConverter::GetInstance(); }
  std::string Run() override { return _run(*graphBoardConverter::GetInstance()); }

 private:
  std::function<std::string(graphBoardConverter&)> _run;
};

FaultOperation GraphBoardFaults(const std::string& name,
                                const std::function<std::string(graphBoardConverter&)>& run) {
  FaultOperation faults;
  faults.name = name;
  faults.scene = [run] { return std::make_unique<GraphBoardScene>(run); };
  faults.success = "<chart/>";
  faults.failure = "";
  faults.unattached = "";
  return faults;
}

INSTANTIATE_TEST_SUITE_P(GraphBoardConverter, FaultRunTest,
                         ::testing::Values(GraphBoardFaults("ConvertClientViZTemplate",
                                                            [](graphBoardConverter& c) {
                                                              return c.ConvertClientViZTemplate(
                                                                  "t");
                                                            }),
                                           GraphBoardFaults("applyStyleSheet",
                                                            [](graphBoardConverter& c) {
                                                              return c.applyStyleSheet("x", "s");
                                                            })),
                         kNameOfOperation);

// ---- The JSON editor.

constexpr char kJsonClass[] = "com/tesk/java_client/core/documents/output/export/JsonImager";

class JsonScene : public FaultScene {
 public:
  explicit JsonScene(bool interactive) {
    jvm.ClassWithConstructor(kJsonClass);
    jvm.Method(kJsonClass, "exportChartJsonToFile", "(Ljava/lang/String;[BZLjava/lang/String;I)Z")
        .RefusesLostArguments()
        .ReturnsBoolean(true);
    jvm.Method(kJsonClass, "exportInteractiveJsonToFile",
               "(Ljava/lang/String;[BLjava/lang/String;Ljava/lang/String;Ljava/lang/String;I)Z")
        .RefusesLostArguments()
        .ReturnsBoolean(true);
    jvm.Method(kJsonClass, "addGeoJson", "([B)V").RefusesLostArguments();
    _editor.setFilePath("out.js");
    _editor.setOptions("options");
    _editor.SetCodepage("UTF-8");
    if (interactive) _editor.setJsonPath("path");
  }

  void Start() override { _editor.StartEditorHeadless(jvm.Env()); }
  std::string Run() override {
    return Text(_editor.RenderChartJSON("chart", {"geo-one", "g2"}, {}));
  }

 private:
  jsonEditor _editor;
};

FaultOperation JsonFaults(const std::string& name, bool interactive) {
  FaultOperation faults;
  faults.name = name;
  faults.scene = [interactive] { return std::make_unique<JsonScene>(interactive); };
  faults.success = "true";
  faults.failure = "false";
  // The binding keeps the env of its start.
  faults.unattached = "true";
  // A document that is lost is not there; the chart is exported all the same.
  if (interactive) {
    faults.special = {{"NewByteArray#1 ", "true"},
                      {"NewByteArray#2 ", "true"},
                      {"SetByteArrayRegion#1 ", "true"},
                      {"SetByteArrayRegion#2 ", "true"},
                      {"addGeoJson", "true"}};
  }
  return faults;
}

INSTANTIATE_TEST_SUITE_P(JsonEditor, FaultRunTest,
                         ::testing::Values(JsonFaults("PlainExport", false),
                                           JsonFaults("InteractiveExport", true)),
                         kNameOfOperation);

// ---- The exporter.

constexpr char kAdapterClass[] = "com/tesk/java_client/ex_access/ExKvoAdapter";

class ExporterScene : public FaultScene {
 public:
  explicit ExporterScene(std::function<std::string(ExAccessor&)> run) : _run(std::move(run)) {
    ExAccessor::s_pCurrentInstance = nullptr;
    jvm.Method(kAdapterClass, "<init>", "(Z)V");
    jvm.Method(kAdapterClass, "exportOutput", "(Ljava/lang/String;)Ljava/lang/String;")
        .Returns(jvm.MakeString("no printer"));
    jvm.Method(kAdapterClass, "writeOutputDocumentFile", "(Ljava/lang/String;IZ)Z")
        .RefusesLostArguments()
        .ReturnsBoolean(true);
    jvm.Method(kAdapterClass, "createOutputDocument", "(Ljava/nio/ByteBuffer;Ljava/lang/String;)Z")
        .RefusesLostArguments()
        .ReturnsBoolean(true);
  }

  void Start() override { _exporter.reset(ExAccessor::CreateInstance()); }
  std::string Run() override { return _run(*_exporter); }

 private:
  std::unique_ptr<ExAccessor> _exporter;
  std::function<std::string(ExAccessor&)> _run;
};

FaultOperation ExporterFaults(const std::string& name,
                              const std::function<std::string(ExAccessor&)>& run) {
  FaultOperation faults;
  faults.name = name;
  faults.scene = [run] { return std::make_unique<ExporterScene>(run); };
  faults.success = "true";
  faults.failure = "false";
  faults.unattached = "false";
  return faults;
}

FaultOperation ExportOutputFaults() {
  FaultOperation faults = ExporterFaults("ExportOutput", [](ExAccessor& exporter) {
    const bool result = exporter.ExportOutput("x");
    return Text(result) + " " + exporter.getError();
  });
  // Java tells of a mistake; where its text is lost, the result before stands. The text's length is
  // asked for and not used.
  faults.success = "false no printer";
  faults.special = {{"GetStringLength", "false no printer"}};
  faults.failure = "true ";
  faults.unattached = "true ";
  return faults;
}

INSTANTIATE_TEST_SUITE_P(ExAccessor, FaultRunTest,
                         ::testing::Values(ExportOutputFaults(),
                                           ExporterFaults("WriteOutputDocumentFile",
                                                          [](ExAccessor& exporter) {
                                                            return Text(
                                                                exporter.WriteOutputDocumentFile(
                                                                    "p", true, false));
                                                          }),
                                           ExporterFaults("CreateOutputDocument",
                                                          [](ExAccessor& exporter) {
                                                            return Text(
                                                                exporter.CreateOutputDocument(
                                                                    "content", "name"));
                                                          })),
                         kNameOfOperation);

// ---- The function that Java calls.

class TemplateScene : public FaultScene {
 public:
  void Start() override { FakePlatform::Get().entire_xml = "<chart styled='1'/>"; }
  std::string Run() override {
    return jvm.Describe(Java_com_tesk_charteditor_template_ApplyTemplate_apply(
        jvm.Env(), nullptr, jvm.MakeString("<chart/>"), jvm.MakeString("<template/>")));
  }
};

FaultOperation TemplateFaults() {
  FaultOperation faults;
  faults.name = "ApplyTemplate";
  faults.scene = [] { return std::make_unique<TemplateScene>(); };
  faults.success = "\"<chart styled='1'/>\"";
  faults.failure = "\"\"";
  // The default is not needed where there is a result, and a result that Java cannot make is none.
  faults.special = {{"NewStringUTF#1 ", "\"<chart styled='1'/>\""}, {"NewStringUTF#2 ", "null"}};
  faults.over_own_env = false;
  return faults;
}

INSTANTIATE_TEST_SUITE_P(ApplyTemplate, FaultRunTest, ::testing::Values(TemplateFaults()),
                         kNameOfOperation);

}  // namespace
}  // namespace chartbridge::testing
