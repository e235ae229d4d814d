// SPDX-License-Identifier: Apache-2.0
#ifndef TREE_JTREEEDITOR_H_
#define TREE_JTREEEDITOR_H_

#include <jni.h>

#include <string>

#include "bridge/JAccessor.h"
#include "tree/TreeEditor.h"

/// The binding to one Java object of com.tesk.treemodeleditor.TreeEditor, the interactive editor.
///
/// Each method calls the Java method of its own name. No method locks, attaches or guards the
/// floating-point environment: `TreeEditor` has done all that. Numbers go to Java with their low 32
/// bits; documents go as bytes, unchanged.
class JTreeEditor : public JAccessor {
 public:
  /// Finds the Java class and makes its object. A failure is recorded and leaves the object null.
  explicit JTreeEditor(JNIEnv* threadEnv);
  ~JTreeEditor() override;

  JTreeEditor(const JTreeEditor&) = delete;
  JTreeEditor& operator=(const JTreeEditor&) = delete;

  void setNeedsRerendering(bool flag);
  void setThreadId(long id);
  void deActivate();
  void setDPI(long dpi);
  void close();
  bool needsRerendering();
  void setSchemaPath(const unsigned short* path, long length);
  void renderPMMLToScreen(long p1, long p2, long p3, long p4, const std::string& model,
                          const std::string& display);
  bool renderToFile(const std::string& model, const std::string& display,
                    const unsigned short* path, long length, TreeEditor::IMAGE_TYPE type,
                    bool flag);
  /// True when both numbers are greater than 0. They are written whenever Java returns at least
  /// two.
  bool calculateSizeArray(const std::string& model, const std::string& display, long& width,
                          long& height);
  /// As `calculateSizeArray`, for what is on the screen.
  bool getSizeArray(long& width, long& height);
  /// Empty when Java returns null.
  std::string extractDisplayData();
  /// Java must not return null here: the array is used untested.
  std::string extractCompressedPMML();

 private:
  bool readSize(jlongArray array, long& width, long& height);
  std::string readBytes(jbyteArray array);
};

#endif  // TREE_JTREEEDITOR_H_
