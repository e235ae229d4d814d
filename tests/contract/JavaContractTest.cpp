// SPDX-License-Identifier: Apache-2.0
// The table of what the library needs of Java, against what the library asks for.
#include "app/JavaContract.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "chart/ViZEditor.h"
#include "convert/VizConverter.h"
#include "convert/graphBoardConverter.h"
#include "export/ExAccessor.h"
#include "json/jsonEditor.h"
#include "tests/support/ContractTest.h"
#include "tests/support/EventLog.h"
#include "tree/TreeEditor.h"

namespace chartbridge::testing {
namespace {

/// A JVM with the classes of the table, and an editor of each kind that is set back at the end.
class JavaContractTest : public ContractTest {
 protected:
  JavaContractTest() {
    for (const JavaClass& type : JavaContract()) {
      for (const JavaMethod& method : type.methods) Define(type, method);
    }
  }

  ~JavaContractTest() override {
    delete ViZEditor::_instance;
    ViZEditor::_instance = nullptr;
    delete TreeEditor::_instance;
    TreeEditor::_instance = nullptr;
    delete jsonEditor::_instance;
    jsonEditor::_instance = nullptr;
    delete VizConverter::s_pInstance;
    VizConverter::s_pInstance = nullptr;
    delete graphBoardConverter::_instance;
  }

  void Define(const JavaClass& type, const JavaMethod& method) {
    if (method.kind == JavaMethodKind::kNative) return;
    jvm.Method(type.name, method.name, method.signature);
  }

  void RunCharts() {
    ViZEditor* editor = ViZEditor::GetInstance();
    editor->StartEditorHeadless(jvm.Env());
    const auto* bytes = reinterpret_cast<const unsigned char*>("data");
    unsigned char histogram[] = "histogram";
    std::string one;
    std::string two;
    std::string three;
    unsigned int size = 0;
    for (const auto type : {ViZEditor::IMAGE_PNG, ViZEditor::IMAGE_MAP}) {
      editor->RenderToFileHeadless("c", bytes, 4, "p", type, 1, "a", "b", "c", "d", false);
      editor->RenderToFileHeadless("c", "data", "p", type, "a", "b", "c", "d", 1);
      editor->RenderImageToMemoryHeadless("c", "data", size, type, 1, "a", "b", "c", "d", one);
      editor->RenderImageToMemoryHeadless("c", bytes, 4, type, 1, one, two, three, "a", "b", "c",
                                          "d", false);
    }
    editor->EmbedHistogramInGraph("a", "b", histogram, sizeof histogram, 1);
    editor->ConvertImage("image", "p", ViZEditor::IMAGE_PNG);
    std::string document = "document";
    editor->ApplyStyleSheet(document, "sheet");
  }

  void RunTrees() {
    TreeEditor* editor = TreeEditor::GetInstance();
    editor->StartEditorHeadless(jvm.Env());
    editor->SetCodepage("UTF-8");
    editor->SetSchemaPath("schema");
    editor->RenderToFileHeadless("m", "d", "p", TreeEditor::IMAGE_PNG, false);
    unsigned int size = 0;
    std::string image;
    editor->RenderImageToMemoryHeadless("m", "d", "p", size, TreeEditor::IMAGE_PNG, false, image);
    long width = 0;
    long height = 0;
    editor->CalculateSizeHeadless("m", "d", width, height);
    std::map<std::string, unsigned int> sizes;
    std::map<std::string, std::string> images;
    editor->RenderModelToMemoryHeadless("1", "2", "3", "4", "t", TreeEditor::IMAGE_PNG, 0, sizes,
                                        images);
    std::vector<std::string> files;
    editor->RenderModelToFileHeadless("1", "2", "3", "4", "t", "u", TreeEditor::IMAGE_PNG, 0,
                                      files);
    editor->RenderInteractiveToFileHeadless("m", {"a"}, {"b"}, "t", "u", "v", TreeEditor::IMAGE_PNG,
                                            0, files);
  }

  void RunTreeWindow() {
    TreeEditor* editor = TreeEditor::GetInstance();
    editor->StartEditor(jvm.Env(), "UTF-8", "schema");
    editor->SetThreadId(1);
    editor->SetDPI(96);
    editor->SetNeedsRerendering(true);
    editor->NeedsRerendering();
    editor->RenderPMMLAtLocation(1, 2, 3, 4, "m", "d");
    long width = 0;
    long height = 0;
    editor->GetSize(width, height);
    editor->CalculateSize("m", "d", width, height);
    editor->RenderToFile("m", "d", "p", TreeEditor::IMAGE_PNG, false);
    editor->ExtractDisplayData();
    editor->ExtractCompressedPMML();
    editor->DeActivate();
    editor->Close();
  }

  void RunChartJson() {
    jsonEditor* editor = jsonEditor::GetInstance();
    editor->StartEditorHeadless(jvm.Env());
    editor->setFilePath("p");
    editor->RenderChartJSON("c", {"geo"}, {});
    editor->setJsonPath("data");
    editor->RenderChartJSON("c", {"geo"}, {});
  }

  void RunConversions() {
    VizConverter* converter = VizConverter::GetInstance();
    converter->StartConverter(jvm.Env());
    std::string xml;
    converter->GPLtoXML("gpl", xml);
    converter->UpgradeXML("xml", xml);
    converter->GetErrorMessage();
    graphBoardConverter* templates = graphBoardConverter::GetInstance();
    templates->ConvertClientViZTemplate("template");
    templates->applyStyleSheet("chart", "sheet");
  }

  void RunDocuments() {
    const std::unique_ptr<ExAccessor> exporter(ExAccessor::CreateInstance());
    exporter->CreateOutputDocument("content", "name");
    exporter->WriteOutputDocumentFile("p", true, true);
    exporter->ExportOutput("request");
  }
};

/// The look-ups of the host's classes and their methods, as the log writes them.
std::set<std::string> RecordedLookups() {
  std::set<std::string> lookups;
  for (const std::string& event : EventLog::Get().Texts(Source::kJni)) {
    for (const char* start : {"FindClass(com/tesk/", "GetMethodID(class com/tesk/",
                              "GetStaticMethodID(class com/tesk/"}) {
      if (event.rfind(start, 0) == 0) lookups.insert(event);
    }
  }
  return lookups;
}

std::set<std::string> LookupsOfTable() {
  std::set<std::string> lookups;
  for (const JavaClass& type : JavaContract()) {
    for (const JavaMethod& method : type.methods) {
      if (method.kind == JavaMethodKind::kNative) continue;
      lookups.insert("FindClass(" + type.name + ")");
      lookups.insert("GetMethodID(class " + type.name + ", " + method.name + ", " +
                     method.signature + ")");
    }
  }
  return lookups;
}

TEST_F(JavaContractTest, TheTableIsWhatTheLibraryLooksUp) {
  RunCharts();
  RunTrees();
  RunTreeWindow();
  RunChartJson();
  RunConversions();
  RunDocuments();
  EXPECT_EQ(RecordedLookups(), LookupsOfTable());
}

TEST(JavaDeclarationTest, ReadsLikeJava) {
  const JavaClass type{"", "a/b/Type", {}};
  const auto declaration = [&type](JavaMethodKind kind, const char* name, const char* signature) {
    return JavaDeclaration(type, {kind, name, signature});
  };
  EXPECT_EQ(declaration(JavaMethodKind::kConstructor, "<init>", "()V"), "Type()");
  EXPECT_EQ(declaration(JavaMethodKind::kConstructor, "<init>", "(Z)V"), "Type(boolean)");
  EXPECT_EQ(declaration(JavaMethodKind::kInstance, "m", "([BLjava/nio/ByteBuffer;IDJ)[J"),
            "long[] m(byte[], ByteBuffer, int, double, long)");
  EXPECT_EQ(declaration(JavaMethodKind::kInstance, "m", "()[Ljava/lang/String;"), "String[] m()");
  EXPECT_EQ(declaration(JavaMethodKind::kInstance, "m", "(Lc/D;)Ljava/util/HashMap;"),
            "HashMap m(c.D)");
  EXPECT_EQ(declaration(JavaMethodKind::kNative, "m", "()V"), "native void m()");
}

}  // namespace
}  // namespace chartbridge::testing
