// SPDX-License-Identifier: Apache-2.0
#include "tree/TreeEditor.h"

#include "bridge/AttachedEnv.h"
#include "bridge/FloatEnvGuard.h"
#include "bridge/JException.h"
#include "bridge/Utf16Text.h"
#include "platform/TeskJVM.h"
#include "tree/JTreeEditor.h"
#include "tree/JTreeImager.h"
#include "tree/JVMTreeThread.h"

using chartbridge::AttachedEnv;
using chartbridge::Utf16Text;

namespace {

// What the construction of a JVMTreeThread does, for the operations that need no scope object.
void AttachBindingsToThread() {
  const FloatEnvGuard guard;
  JNIEnv* env = AttachedEnv();
  TreeEditor::GetInstance()->SetEnv(env);
}

// The addresses and lengths of a list of texts. The texts themselves are released as the list is
// made, on purpose: nothing reads through the addresses.
struct TextAddresses {
  std::vector<const unsigned short*> addresses;
  std::vector<int> lengths;

  explicit TextAddresses(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
      const Utf16Text units(text);
      addresses.push_back(units.data());
      lengths.push_back(units.length());
    }
  }
};

}  // namespace

TreeEditor* TreeEditor::_instance = nullptr;

TreeEditor* TreeEditor::GetInstance() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_instance == nullptr) _instance = new TreeEditor();
  return _instance;
}

TreeEditor::TreeEditor() : _editor(nullptr), _imager(nullptr) {}

TreeEditor::~TreeEditor() {
  delete _editor;
  delete _imager;
}

bool TreeEditor::StartEditor(JNIEnv* /*env*/, const std::string& codepage,
                             const std::string& schemaPath) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  // Also for an editor that runs already: a second start replaces the codepage and nothing else.
  _codepage = codepage;
  const FloatEnvGuard guard;
  if (_editor != nullptr) return true;
  // Attached before the binding is allocated, not as its argument.
  JNIEnv* threadEnv = AttachedEnv();
  _editor = new JTreeEditor(threadEnv);
  SetSchemaPath(schemaPath);
  return true;
}

bool TreeEditor::StartEditorHeadless(JNIEnv* env) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_imager == nullptr) _imager = new JTreeImager(env);
  return true;
}

bool TreeEditor::IsStarted() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  return _editor != nullptr;
}

bool TreeEditor::IsStartedHeadless() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  return _imager != nullptr;
}

void TreeEditor::StopHeadless() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_imager == nullptr) return;
  delete _imager;
  _imager = nullptr;
}

void TreeEditor::SetEnv(JNIEnv* env) {
  if (_editor != nullptr) _editor->setEnv(env);
  if (_imager != nullptr) _imager->setEnv(env);
}

bool TreeEditor::SetCodepage(const std::string& codepage) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (codepage.empty()) return false;
  _codepage = codepage;
  return true;
}

bool TreeEditor::SetSchemaPath(const std::string& path) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_codepage.empty()) return false;
  const Utf16Text path16(path);
  bool called = false;
  if (_editor != nullptr) {
    const JVMTreeThread thread;
    _editor->setSchemaPath(path16.data(), path16.length());
    called = true;
  }
  if (_imager != nullptr) {
    const JVMTreeThread thread;
    _imager->setSchemaPath(path16.data(), path16.length());
    called = true;
  }
  return called;
}

void TreeEditor::SetThreadId(long id) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_editor == nullptr) return;
  AttachBindingsToThread();
  _editor->setThreadId(id);
}

void TreeEditor::SetDPI(long dpi) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_editor == nullptr) return;
  AttachBindingsToThread();
  _editor->setDPI(dpi);
}

void TreeEditor::SetNeedsRerendering(bool flag) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_editor == nullptr) return;
  AttachBindingsToThread();
  _editor->setNeedsRerendering(flag);
}

bool TreeEditor::NeedsRerendering() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_editor == nullptr) return false;
  AttachBindingsToThread();
  return _editor->needsRerendering();
}

void TreeEditor::DeActivate() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_editor == nullptr) return;
  AttachBindingsToThread();
  _editor->deActivate();
}

void TreeEditor::Close() {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_editor == nullptr) return;
  AttachBindingsToThread();
  _editor->close();
}

std::string TreeEditor::ExtractDisplayData() {
  std::string data;
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_editor == nullptr) return data;
  const JVMTreeThread thread;
  data = _editor->extractDisplayData();
  return data;
}

std::string TreeEditor::ExtractCompressedPMML() {
  std::string pmml;
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_editor == nullptr) return pmml;
  const JVMTreeThread thread;
  pmml = _editor->extractCompressedPMML();
  return pmml;
}

bool TreeEditor::GetSize(long& width, long& height) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  try {
    // The thread is attached whether there is an editor or not, here only. A call without one is
    // forbidden; it ends here because it would otherwise end the process.
    AttachBindingsToThread();
    if (_editor == nullptr) return false;
    return _editor->getSizeArray(width, height);
  } catch (JException) {
    return false;
  }
}

bool TreeEditor::CalculateSize(const std::string& model, const std::string& display, long& width,
                               long& height) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_editor == nullptr) return false;
  try {
    AttachBindingsToThread();
    // Measuring deactivates the editor first, on purpose: Java sees both calls, in this order.
    DeActivate();
    return _editor->calculateSizeArray(model, display, width, height);
  } catch (JException) {
    return false;
  }
}

void TreeEditor::RenderPMMLAtLocation(long p1, long p2, long p3, long p4, const std::string& model,
                                      const std::string& display) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_editor == nullptr) return;
  try {
    AttachBindingsToThread();
    _editor->renderPMMLToScreen(p1, p2, p3, p4, model, display);
  } catch (JException) {
    return;
  }
}

bool TreeEditor::RenderToFile(const std::string& model, const std::string& display,
                              const std::string& path, IMAGE_TYPE type, bool flag) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const Utf16Text path16(path);
  const FloatEnvGuard guard;
  if (_editor == nullptr) return false;
  try {
    AttachBindingsToThread();
    return _editor->renderToFile(model, display, path16.data(), path16.length(), type, flag);
  } catch (JException exception) {
    throw JException(exception);
  }
}

bool TreeEditor::RenderToFileHeadless(const std::string& model, const std::string& display,
                                      const std::string& path, IMAGE_TYPE imageType, bool flag) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const Utf16Text path16(path);
  const FloatEnvGuard guard;
  if (_imager == nullptr) return false;
  try {
    AttachBindingsToThread();
    return _imager->renderToFile(model, display, path16.data(), path16.length(), imageType, flag);
  } catch (JException exception) {
    throw JException(exception);
  }
}

bool TreeEditor::RenderImageToMemoryHeadless(const std::string& model, const std::string& display,
                                             const std::string& path, unsigned int& size,
                                             IMAGE_TYPE imageType, bool flag, std::string& image) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const Utf16Text path16(path);
  const FloatEnvGuard guard;
  if (_imager == nullptr) return false;
  try {
    AttachBindingsToThread();
    return _imager->renderToMemory(model, display, path16.data(), size, imageType, flag, image);
  } catch (JException exception) {
    throw JException(exception);
  }
}

bool TreeEditor::CalculateSizeHeadless(const std::string& model, const std::string& display,
                                       long& width, long& height) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const FloatEnvGuard guard;
  if (_imager == nullptr) return false;
  try {
    AttachBindingsToThread();
    return _imager->calculateSizeArray(model, display, width, height);
  } catch (JException) {
    return false;
  }
}

bool TreeEditor::RenderModelToMemoryHeadless(const std::string& doc1, const std::string& doc2,
                                             const std::string& doc3, const std::string& doc4,
                                             const std::string& text1, IMAGE_TYPE imageType,
                                             int extra, std::map<std::string, unsigned int>& sizes,
                                             std::map<std::string, std::string>& images) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const Utf16Text name(text1);
  // Sizes go to the host at once, pictures only when the whole set has come through.
  std::map<std::string, std::string> staging;
  const FloatEnvGuard guard;
  if (_imager == nullptr) return false;
  bool rendered = false;
  try {
    const JVMTreeThread thread;
    rendered = _imager->renderModelToMemory(doc1, doc2, doc3, doc4, name.data(), name.length(),
                                            imageType, extra, sizes, staging);
  } catch (JException exception) {
    throw JException(exception);
  }
  images.insert(staging.begin(), staging.end());
  return rendered;
}

bool TreeEditor::RenderModelToFileHeadless(const std::string& doc1, const std::string& doc2,
                                           const std::string& doc3, const std::string& doc4,
                                           const std::string& text1, const std::string& text2,
                                           IMAGE_TYPE imageType, int extra,
                                           std::vector<std::string>& files) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const Utf16Text name(text1);
  const Utf16Text folder(text2);
  const FloatEnvGuard guard;
  if (_imager == nullptr) return false;
  try {
    AttachBindingsToThread();
    return _imager->renderModelToFiles(doc1, doc2, doc3, doc4, name.data(), name.length(),
                                       folder.data(), folder.length(), imageType, extra, files);
  } catch (JException exception) {
    throw JException(exception);
  }
}

bool TreeEditor::RenderInteractiveToFileHeadless(const std::string& model,
                                                 const std::vector<std::string>& list1,
                                                 const std::vector<std::string>& list2,
                                                 const std::string& text1, const std::string& text2,
                                                 const std::string& text3, IMAGE_TYPE imageType,
                                                 int extra, std::vector<std::string>& files) {
  const CriticalSection::Lock lock(TeskJVM::CritSect());
  const Utf16Text first(text1);
  const Utf16Text second(text2);
  // Converted like the others, and used by nothing.
  const Utf16Text third(text3);
  const TextAddresses firstTexts(list1);
  const TextAddresses secondTexts(list2);
  const FloatEnvGuard guard;
  if (_imager == nullptr) return false;
  try {
    const JVMTreeThread thread;
    const long type = static_cast<long>(static_cast<unsigned int>(imageType));
    _imager->setModel(&model);
    _imager
        ->setFirstTexts(std::vector<const unsigned short*>(firstTexts.addresses),
                        std::vector<int>(firstTexts.lengths))
        .setSecondTexts(std::vector<const unsigned short*>(secondTexts.addresses),
                        std::vector<int>(secondTexts.lengths));
    _imager->setText2(second.data(), second.length()).setImageType(type).setExtra(extra);
    _imager->setText1(first.data(), first.length()).setImageType(type).setExtra(extra);
    return _imager->renderInteractiveToFile(files);
  } catch (JException exception) {
    throw JException(exception);
  }
}

bool TreeEditor::RenderInteractiveToMemoryHeadless(const std::string& /*model*/,
                                                   const std::vector<std::string>& /*list1*/,
                                                   const std::vector<std::string>& /*list2*/,
                                                   const std::string& /*text1*/,
                                                   const std::string& /*text2*/,
                                                   IMAGE_TYPE /*imageType*/, int /*extra*/,
                                                   std::map<std::string, unsigned int>& /*sizes*/,
                                                   std::map<std::string, std::string>& /*images*/) {
  return false;
}
