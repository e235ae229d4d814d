// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TreeFixture.h"

namespace chartbridge::testing {
namespace {

constexpr const char* kEditorMethods[][2] = {
    {"setNeedsRerendering", "(Z)V"},
    {"setThreadId", "(I)V"},
    {"deActivate", "()V"},
    {"setDPI", "(I)V"},
    {"close", "()V"},
    {"needsRerendering", "()Z"},
    {"setSchemaPath", "(Ljava/lang/String;)V"},
    {"renderPMMLToScreen", "(IIII[B[B)V"},
    {"renderToFile", "([B[BLjava/lang/String;IZ)Z"},
    {"calculateSizeArray", "([B[B)[J"},
    {"getSizeArray", "()[J"},
    {"extractDisplayData", "()[B"},
    {"extractCompressedPMML", "()[B"},
};

constexpr const char* kImagerMethods[][2] = {
    {"renderToFile", "([B[BLjava/lang/String;IZI)Z"},
    {"calculateSizeArray", "([B[B)[J"},
    {"renderToMemory", "([B[BII)[B"},
    {"setSchemaPath", "(Ljava/lang/String;)V"},
    {"renderModelToMemory", "([B[B[B[BLjava/lang/String;II)Ljava/util/HashMap;"},
    {"renderModelToFiles", "([B[B[B[BLjava/lang/String;Ljava/lang/String;II)[Ljava/lang/String;"},
};

TreeEditor& NewEditor() {
  TreeEditor::_instance = nullptr;
  return *TreeEditor::GetInstance();
}

}  // namespace

void DefineTreeClasses(FakeJvm& jvm) {
  jvm.ClassWithConstructor(kTreeEditorClass);
  for (const auto& [name, signature] : kEditorMethods) {
    jvm.Method(kTreeEditorClass, name, signature);
  }
  jvm.ClassWithConstructor(kTreeImagerClass);
  for (const auto& [name, signature] : kImagerMethods) {
    jvm.Method(kTreeImagerClass, name, signature);
  }
}

Events AttachTree(int depth) {
  return Guarded(Attach(), "lock depth=" + std::to_string(depth + 1), Guarded(),
                 "unlock depth=" + std::to_string(depth));
}

Events EditorCall(const std::string& call, const std::string& name, const std::string& signature,
                  const std::string& arguments) {
  return JavaCall(call, kTreeEditorClass, "TreeEditor@1", name, signature, arguments);
}

Events ImagerCall(const std::string& call, const std::string& name, const std::string& signature,
                  const std::string& arguments) {
  return JavaCall(call, kTreeImagerClass, "TreeImager@1", name, signature, arguments);
}

Events SchemaPathCall(const std::string& object, const std::string& path) {
  const std::string type = object.substr(0, object.find('@'));
  const std::string method = "setSchemaPath(Ljava/lang/String;)V";
  const std::string length = std::to_string(Utf16(path).size());
  return Seq("GetMethodID(class com/tesk/treemodeleditor/" + type +
                 ", setSchemaPath, (Ljava/lang/String;)V)",
             // No check between the string and the call.
             "NewString(" + Quoted(path) + ", " + length + ")",
             "CallVoidMethod(" + object + ", " + method + ", " + Quoted(path) + ")",
             NoPendingException());
}

TreeEditorFixture::TreeEditorFixture() : editor(NewEditor()) {
  DefineTreeClasses(jvm);
  EventLog::Get().Clear();
}

TreeEditorFixture::~TreeEditorFixture() {
  delete TreeEditor::_instance;
  TreeEditor::_instance = nullptr;
}

FakeMethod& TreeEditorFixture::EditorMethod(const std::string& name, const std::string& signature) {
  return jvm.Method(kTreeEditorClass, name, signature);
}

FakeMethod& TreeEditorFixture::ImagerMethod(const std::string& name, const std::string& signature) {
  return jvm.Method(kTreeImagerClass, name, signature);
}

void TreeEditorFixture::StartInteractive() {
  editor.StartEditor(jvm.Env(), "", "");
  EventLog::Get().Clear();
}

void TreeEditorFixture::StartHeadless() {
  editor.StartEditorHeadless(jvm.Env());
  EventLog::Get().Clear();
}

}  // namespace chartbridge::testing
