// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TreeOperations.h"

#include <cctype>
#include <map>

#include "tests/support/Describe.h"
#include "tests/support/TreeFixture.h"

namespace chartbridge::testing {
namespace {

const std::string kModel = "<PMML/>";
const std::string kDisplay("d\0y", 3);

std::string Text(bool result) { return result ? "true" : "false"; }

std::string Text(const std::map<std::string, unsigned int>& sizes) {
  std::string text = " sizes{";
  for (const auto& [name, size] : sizes) text += name + "=" + std::to_string(size) + " ";
  return text + "}";
}

std::string Text(const std::map<std::string, std::string>& images) {
  std::string text = " images{";
  for (const auto& [name, image] : images) text += name + "=" + Quoted(image) + " ";
  return text + "}";
}

std::string Text(const std::vector<std::string>& files) {
  std::string text = " files{";
  for (const std::string& file : files) text += Quoted(file) + " ";
  return text + "}";
}

void Nothing(FakeJvm& /*jvm*/, FakeMethod& /*method*/) {}

void AnswersTrue(FakeJvm& /*jvm*/, FakeMethod& method) { method.ReturnsBoolean(true); }

void GivesBytes(FakeJvm& jvm, FakeMethod& method) {
  method.Returns(jvm.MakeBytes("result", std::string("a\0b", 3)));
}

void GivesSize(FakeJvm& jvm, FakeMethod& method) {
  method.Returns(jvm.MakeLongs("size", {640, 480}));
}

void GivesPictures(FakeJvm& jvm, FakeMethod& method) {
  method.Returns(jvm.MakeMap({{"a", jvm.MakeBytes("a", "123")}, {"b", jvm.MakeBytes("b", "4")}}));
}

void GivesFiles(FakeJvm& jvm, FakeMethod& method) {
  method.Returns(
      jvm.MakeObjects("files", {jvm.MakeString("1.png"), jvm.MakeString("caf\xC3\xA9.png")}));
}

template <typename Operation>
std::function<std::string(TreeEditor&)> Void(Operation operation) {
  return [operation](TreeEditor& editor) {
    operation(editor);
    return std::string("done");
  };
}

template <typename Operation>
std::function<std::string(TreeEditor&)> Size(Operation operation) {
  return [operation](TreeEditor& editor) {
    long width = -1;
    long height = -2;
    const bool result = operation(editor, width, height);
    return Text(result) + " " + std::to_string(width) + "x" + std::to_string(height);
  };
}

std::vector<TreeOperation> InteractiveOperations() {
  const auto propagates = OnJException::kPropagates;
  return {
      {"SetThreadId",
       false,
       "setThreadId",
       "(I)V",
       {},
       propagates,
       Nothing,
       Void([](TreeEditor& e) { e.SetThreadId(7); }),
       "done",
       "done"},
      {"SetDPI",
       false,
       "setDPI",
       "(I)V",
       {},
       propagates,
       Nothing,
       Void([](TreeEditor& e) { e.SetDPI(96); }),
       "done",
       "done"},
      {"SetNeedsRerendering",
       false,
       "setNeedsRerendering",
       "(Z)V",
       {},
       propagates,
       Nothing,
       Void([](TreeEditor& e) { e.SetNeedsRerendering(true); }),
       "done",
       "done"},
      {"NeedsRerendering",
       false,
       "needsRerendering",
       "()Z",
       {},
       propagates,
       AnswersTrue,
       [](TreeEditor& e) { return Text(e.NeedsRerendering()); },
       "true",
       "false"},
      {"DeActivate",
       false,
       "deActivate",
       "()V",
       {},
       propagates,
       Nothing,
       Void([](TreeEditor& e) { e.DeActivate(); }),
       "done",
       "done"},
      {"Close",
       false,
       "close",
       "()V",
       {},
       propagates,
       Nothing,
       Void([](TreeEditor& e) { e.Close(); }),
       "done",
       "done"},
      {"ExtractDisplayData",
       false,
       "extractDisplayData",
       "()[B",
       {},
       propagates,
       GivesBytes,
       [](TreeEditor& e) { return Quoted(e.ExtractDisplayData()); },
       "\"a\\x00b\"",
       "\"\""},
      {"ExtractCompressedPMML",
       false,
       "extractCompressedPMML",
       "()[B",
       {},
       propagates,
       GivesBytes,
       [](TreeEditor& e) { return Quoted(e.ExtractCompressedPMML()); },
       "\"a\\x00b\"",
       "\"\""},
      {"GetSize",
       false,
       "getSizeArray",
       "()[J",
       {},
       OnJException::kFails,
       GivesSize,
       Size([](TreeEditor& e, long& w, long& h) { return e.GetSize(w, h); }),
       "true 640x480",
       "false -1x-2"},
      {"CalculateSize",
       false,
       "calculateSizeArray",
       "([B[B)[J",
       {},
       OnJException::kFails,
       GivesSize,
       Size(
           [](TreeEditor& e, long& w, long& h) { return e.CalculateSize(kModel, kDisplay, w, h); }),
       "true 640x480",
       "false -1x-2"},
      {"RenderPMMLAtLocation",
       false,
       "renderPMMLToScreen",
       "(IIII[B[B)V",
       {},
       OnJException::kFails,
       Nothing,
       Void([](TreeEditor& e) { e.RenderPMMLAtLocation(1, 2, 3, 4, kModel, kDisplay); }),
       "done",
       "done"},
      {"RenderToFile",
       false,
       "renderToFile",
       "([B[BLjava/lang/String;IZ)Z",
       {"t.png"},
       OnJException::kThrowsCopy,
       AnswersTrue,
       [](TreeEditor& e) {
         return Text(e.RenderToFile(kModel, kDisplay, "t.png", TreeEditor::IMAGE_PNG, true));
       },
       "true",
       "false"},
  };
}

std::string RenderModelToMemory(TreeEditor& editor) {
  std::map<std::string, unsigned int> sizes = {{"b", 99}};
  std::map<std::string, std::string> images = {{"a", "old"}};
  const bool result = editor.RenderModelToMemoryHeadless("1", "22", "", kDisplay, "name",
                                                         TreeEditor::IMAGE_GIF, -5, sizes, images);
  return Text(result) + Text(sizes) + Text(images);
}

std::string RenderModelToFile(TreeEditor& editor) {
  std::vector<std::string> files = {"old"};
  const bool result = editor.RenderModelToFileHeadless("1", "22", "", kDisplay, "name", "folder",
                                                       TreeEditor::IMAGE_GIF, -5, files);
  return Text(result) + Text(files);
}

std::string RenderImageToMemory(TreeEditor& editor) {
  unsigned int size = 99;
  std::string image;
  const bool result = editor.RenderImageToMemoryHeadless(kModel, kDisplay, "t.png", size,
                                                         TreeEditor::IMAGE_PNG, true, image);
  return Text(result) + " " + std::to_string(size) + " " + Quoted(image);
}

std::vector<TreeOperation> HeadlessOperations() {
  return {
      {"RenderToFileHeadless",
       true,
       "renderToFile",
       "([B[BLjava/lang/String;IZI)Z",
       {"t.png"},
       OnJException::kThrowsCopy,
       AnswersTrue,
       [](TreeEditor& e) {
         return Text(
             e.RenderToFileHeadless(kModel, kDisplay, "t.png", TreeEditor::IMAGE_PNG, true));
       },
       "true",
       "false"},
      {"RenderImageToMemoryHeadless",
       true,
       "renderToMemory",
       "([B[BII)[B",
       {"t.png"},
       OnJException::kThrowsCopy,
       GivesBytes,
       RenderImageToMemory,
       "true 3 \"a\\x00b\"",
       "false 99 \"\""},
      {"CalculateSizeHeadless",
       true,
       "calculateSizeArray",
       "([B[B)[J",
       {},
       OnJException::kFails,
       GivesSize,
       Size([](TreeEditor& e, long& w, long& h) {
         return e.CalculateSizeHeadless(kModel, kDisplay, w, h);
       }),
       "true 640x480",
       "false -1x-2"},
      {"RenderModelToMemoryHeadless",
       true,
       "renderModelToMemory",
       "([B[B[B[BLjava/lang/String;II)Ljava/util/HashMap;",
       {"name"},
       OnJException::kThrowsCopy,
       GivesPictures,
       RenderModelToMemory,
       "true sizes{a=3 b=99 } images{a=\"old\" b=\"4\" }",
       "false sizes{b=99 } images{a=\"old\" }"},
      {"RenderModelToFileHeadless",
       true,
       "renderModelToFiles",
       "([B[B[B[BLjava/lang/String;Ljava/lang/String;II)[Ljava/lang/String;",
       {"name", "folder"},
       OnJException::kThrowsCopy,
       GivesFiles,
       RenderModelToFile,
       "true files{\"old\" \"1.png\" \"caf\\xC3\\xA9.png\" }",
       "false files{\"old\" }"},
  };
}

std::vector<TreeOperation> AllOperations() {
  std::vector<TreeOperation> all = InteractiveOperations();
  for (const TreeOperation& operation : HeadlessOperations()) all.push_back(operation);
  return all;
}

}  // namespace

const char* TreeOperation::JavaClass() const {
  return headless ? kTreeImagerClass : kTreeEditorClass;
}

std::string TreeOperation::CallFunction() const {
  switch (signature.back()) {
    case 'V':
      return "CallVoidMethod";
    case 'Z':
      return "CallBooleanMethod";
    default:
      return "CallObjectMethod";
  }
}

const std::vector<TreeOperation>& TreeOperations() {
  static const std::vector<TreeOperation> operations = AllOperations();
  return operations;
}

std::string OperationName(const std::string& name) {
  std::string plain;
  for (const char c : name) {
    if (std::isalnum(static_cast<unsigned char>(c)) != 0) plain += c;
  }
  return plain;
}

}  // namespace chartbridge::testing
