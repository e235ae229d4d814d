// SPDX-License-Identifier: Apache-2.0
#include "app/TreeWindowSession.h"

#include "host/LocalFrame.h"
#include "tree/TreeEditor.h"

namespace chartbridge {

TreeWindowSession::TreeWindowSession(JNIEnv* env) : _env(env) {
  // No codepage: no schema path is to reach Java.
  TreeEditor::GetInstance()->StartEditor(env, "", "");
}

TreeWindowSession::~TreeWindowSession() {
  {
    const LocalFrame frame;
    TreeEditor::GetInstance()->Close();
  }
  // Nothing else ends the interactive editor, and it must not outlive the JVM.
  delete TreeEditor::GetInstance();
  TreeEditor::_instance = nullptr;
}

bool TreeWindowSession::HasDisplay() const {
  const LocalFrame frame;
  const jclass environment = _env->FindClass("java/awt/GraphicsEnvironment");
  if (environment == nullptr) {
    _env->ExceptionClear();
    return false;
  }
  const jmethodID isHeadless = _env->GetStaticMethodID(environment, "isHeadless", "()Z");
  const bool headless = _env->CallStaticBooleanMethod(environment, isHeadless) != JNI_FALSE;
  if (_env->ExceptionCheck() == JNI_FALSE) return !headless;
  _env->ExceptionClear();
  return false;
}

void TreeWindowSession::Show(const WindowPlace& place, const TreeDocuments& documents) {
  const LocalFrame frame;
  TreeEditor::GetInstance()->RenderPMMLAtLocation(place.x, place.y, place.width, place.height,
                                                  documents.Model(), documents.Display());
}

bool TreeWindowSession::IsOpen() const {
  const LocalFrame frame;
  long width = 0;
  long height = 0;
  // A closed window has no size.
  return TreeEditor::GetInstance()->GetSize(width, height);
}

std::string TreeWindowSession::DisplayData() const {
  const LocalFrame frame;
  return TreeEditor::GetInstance()->ExtractDisplayData();
}

}  // namespace chartbridge
