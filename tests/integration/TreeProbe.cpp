// SPDX-License-Identifier: Apache-2.0
// Does one tree operation on a real JVM with stand-ins for the Java classes, in a process of its
// own: tree_probe <case> [bare]. It prints what it sees as lines "name=value".
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "host/JvmSettings.h"
#include "host/LocalFrame.h"
#include "platform/TeskJVM.h"
#include "tree/TreeEditor.h"

namespace {

TreeEditor& Editor() { return *TreeEditor::GetInstance(); }

JNIEnv* Env() { return TeskJVM::GetInstance()->GetEnv(); }

template <typename Value>
void Show(const char* name, const Value& value) {
  // At once, so that it is out even when the process dies next.
  std::cout << name << "=" << value << std::endl;
}

void StartImager() { Editor().StartEditorHeadless(Env()); }

void StartEditorWith(const std::string& model) {
  Editor().StartEditor(Env(), "", "");
  Editor().RenderPMMLAtLocation(0, 0, 1, 1, model, "");
}

void ModelToFiles() {
  StartImager();
  std::vector<std::string> files;
  Show("answer", Editor().RenderModelToFileHeadless("model", "", "", "", "", "out",
                                                    TreeEditor::IMAGE_PNG, 0, files));
  Show("files", files.size());
}

void EmptyMapValue() {
  StartImager();
  std::map<std::string, unsigned int> sizes;
  std::map<std::string, std::string> images;
  Show("answer", Editor().RenderModelToMemoryHeadless("model", "", "", "", "",
                                                      TreeEditor::IMAGE_PNG, 0, sizes, images));
  Show("a", images["a"]);
  Show("b", sizes["b"]);
}

void NullCompressedModel() {
  StartEditorWith("null");
  Show("bytes", Editor().ExtractCompressedPMML().size());
}

void NullSize() {
  StartEditorWith("null");
  long width = 7;
  long height = 7;
  Show("answer", Editor().GetSize(width, height));
  Show("width", width);
}

void NullCalculatedSize() {
  Editor().StartEditor(Env(), "", "");
  long width = 7;
  long height = 7;
  Show("answer", Editor().CalculateSize("null", "", width, height));
  Show("width", width);
}

void NoImagerClass() {
  StartImager();
  Show("answer",
       Editor().RenderToFileHeadless("model", "", "no/such/file", TreeEditor::IMAGE_PNG, false));
}

void NoEditorClass() {
  StartEditorWith("model");
  Show("needs", Editor().NeedsRerendering());
}

struct Case {
  void (*run)();
  bool withClasses;
};

const std::map<std::string, Case> kCases = {
    {"ModelToFiles", {ModelToFiles, true}},
    {"EmptyMapValue", {EmptyMapValue, true}},
    {"NullCompressedModel", {NullCompressedModel, true}},
    {"NullSize", {NullSize, true}},
    {"NullCalculatedSize", {NullCalculatedSize, true}},
    {"NoImagerClass", {NoImagerClass, false}},
    {"NoEditorClass", {NoEditorClass, false}},
};

}  // namespace

int main(int count, char** arguments) {
  if (count < 2 || kCases.count(arguments[1]) == 0) return 2;
  const Case& chosen = kCases.at(arguments[1]);
  chartbridge::JvmSettings settings;
  settings.guard = count == 2;
  settings.options = {"-Xmx64m", "-XX:ErrorFile=hs_err.log", "-XX:-CreateCoredumpOnCrash"};
  if (chosen.withClasses) settings.classPath = {CHARTBRIDGE_TEST_JAR};
  chartbridge::SetJvmSettings(settings);
  if (!TeskJVM::GetInstance()->StartJVM()) return 3;
  chosen.run();
  Show("done", 1);
  return 0;
}
