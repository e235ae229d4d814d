// SPDX-License-Identifier: Apache-2.0
#ifndef TREE_TREEEDITOR_H_
#define TREE_TREEEDITOR_H_

#include <jni.h>

#include <map>
#include <string>
#include <vector>

#include "bridge/Export.h"

class JTreeEditor;
class JTreeImager;

/// Renders decision-tree models (PMML) through two Java classes: the interactive
/// com.tesk.treemodeleditor.TreeEditor, which draws on the host's screen, and the headless
/// com.tesk.treemodeleditor.TreeImager, which draws into files and memory.
///
/// A singleton with two bindings that start independently of each other. Operations whose names end
/// in `Headless` use the headless one, all others the interactive one. The host starts the JVM
/// before it starts either. A thread that starts a binding must stay attached while it lives;
/// operations may come from any thread. Each holds the process-wide lock `TeskJVM::CritSect()` from
/// begin to end and keeps the caller's floating-point environment, unless it says otherwise.
///
/// Failures: a Java exception is recorded in the dump file and cleared (see
/// `JAccessor::printDebugInfo`), and the operation returns its failure value. A `JException` of the
/// host's platform code ends as each operation says; other exceptions propagate. Buffers,
/// floating-point environment and lock are back as they were in every case.
///
/// Models, display data and the other documents are byte strings that go to Java unchanged. Paths
/// and texts are in the encoding of ICU's default converter.
class CHARTBRIDGE_EXPORT TreeEditor {
 public:
  /// The output format, handed to Java as its number. The library gives no number a meaning; the
  /// names are those of the reference Java classes.
  enum IMAGE_TYPE : int {
    IMAGE_JPEG = 1,
    IMAGE_PNG = 2,
    IMAGE_BMP = 3,
    IMAGE_GIF = 4,
    IMAGE_SVG = 5,
    IMAGE_PDF = 6,
    IMAGE_MAP = 7
  };

  /// The one editor, created on first use under the lock. It lives until the host deletes it.
  static TreeEditor* GetInstance();

  /// An editor that is not started. Hosts take the one of `GetInstance`.
  TreeEditor();
  /// Deletes both bindings. Takes no lock and leaves `_instance` as it is.
  virtual ~TreeEditor();

  TreeEditor(const TreeEditor&) = delete;
  TreeEditor& operator=(const TreeEditor&) = delete;

  /// Creates the interactive Java object on the calling thread; `env` is not used.
  ///
  /// @param env not used
  /// @param codepage stored always, also when the editor was started before; while it is empty, no
  ///     schema path reaches Java
  /// @param schemaPath passed on as by `SetSchemaPath`, by the first start only
  /// @return true always; a Java failure is in the dump file, and every operation then ends in its
  ///     failure value. `SetSchemaPath` is the exception: it answers only that there is an editor.
  bool StartEditor(JNIEnv* env, const std::string& codepage, const std::string& schemaPath);
  /// Creates the headless Java object on the thread of `env`. A second start keeps the first.
  /// Always true.
  bool StartEditorHeadless(JNIEnv* env);
  /// Whether `StartEditor` was called. Nothing stops the interactive editor, not even `Close`.
  bool IsStarted();
  /// Whether `StartEditorHeadless` was called, and `StopHeadless` was not called since.
  bool IsStartedHeadless();
  /// Drops the headless binding. Harmless when there is none.
  void StopHeadless();
  /// Makes both bindings call Java through `env`. Takes no lock and keeps no floating-point
  /// environment; operations call it themselves.
  void SetEnv(JNIEnv* env);
  /// Stores a codepage name. No conversion uses it; see `SetSchemaPath`. False, and nothing stored,
  /// for an empty name.
  bool SetCodepage(const std::string& codepage);
  /// Passes a path to each started binding. Calls Java `setSchemaPath`.
  ///
  /// @return whether a binding was called, whatever Java did with it; false while the codepage name
  ///     is empty and when neither binding is started
  bool SetSchemaPath(const std::string& path);

  /// Java `setThreadId`, with the low 32 bits of `id`. Nothing when not started. A `JException`
  /// propagates.
  void SetThreadId(long id);
  /// Java `setDPI`, with the low 32 bits of `dpi` (dots per inch). As `SetThreadId`.
  void SetDPI(long dpi);
  /// Java `setNeedsRerendering`. As `SetThreadId`.
  void SetNeedsRerendering(bool flag);
  /// Java `needsRerendering`. False when not started. A `JException` propagates.
  bool NeedsRerendering();
  /// Java `deActivate`. As `SetThreadId`.
  void DeActivate();
  /// Java `close`. The editor stays started. As `SetThreadId`.
  void Close();
  /// Java `extractDisplayData`: the display data as the user left it. Empty when not started or
  /// when Java returns null. A `JException` propagates.
  std::string ExtractDisplayData();
  /// Java `extractCompressedPMML`: the model. Empty when not started. Java must return an array: a
  /// null one is a wrong JNI call, which only the guard survives. A `JException` propagates.
  std::string ExtractCompressedPMML();
  /// Java `getSizeArray`: the size that the drawing needs, in pixels.
  ///
  /// Forbidden before `StartEditor`: unlike all others, it attaches the thread without looking
  /// whether there is an editor. That it then answers false is not promised.
  ///
  /// @param width,height written when Java returns at least two numbers, untouched otherwise
  /// @return whether both are greater than 0; false for a `JException`
  bool GetSize(long& width, long& height);
  /// Java `deActivate`, then `calculateSizeArray`: the size that a model needs, in pixels.
  /// Measuring a model thus deactivates the editor. Outputs and result as `GetSize`; false when not
  /// started.
  bool CalculateSize(const std::string& model, const std::string& display, long& width,
                     long& height);
  /// Java `renderPMMLToScreen`: draws a model at a place of the host's screen.
  ///
  /// @param p1,p2,p3,p4 location and extent, of which Java gets the low 32 bits; the reference Java
  ///     classes take x, y, width and height in pixels
  /// @param model the model
  /// @param display its display data
  ///
  /// Nothing when not started. A `JException` is dropped.
  void RenderPMMLAtLocation(long p1, long p2, long p3, long p4, const std::string& model,
                            const std::string& display);
  /// Java `renderToFile` of the interactive editor.
  ///
  /// @param model the model
  /// @param display its display data
  /// @param path the output file
  /// @param type the output format
  /// @param flag passed to Java unchanged
  /// @return what Java answered; false when not started. A copy of a `JException` is thrown.
  bool RenderToFile(const std::string& model, const std::string& display, const std::string& path,
                    IMAGE_TYPE type, bool flag);

  /// Java `renderToFile` of the headless imager, at 100 percent.
  ///
  /// Parameters and result as `RenderToFile`.
  bool RenderToFileHeadless(const std::string& model, const std::string& display,
                            const std::string& path, IMAGE_TYPE imageType, bool flag);
  /// Java `renderToMemory`, at 100 percent.
  ///
  /// @param model the model
  /// @param display its display data
  /// @param path,flag not used
  /// @param imageType the output format
  /// @param size,image the number of bytes and the bytes; written only when Java returns them
  /// @return whether `image` is not empty afterwards, so start with an empty one; false when not
  ///     started. A copy of a `JException` is thrown.
  bool RenderImageToMemoryHeadless(const std::string& model, const std::string& display,
                                   const std::string& path, unsigned int& size,
                                   IMAGE_TYPE imageType, bool flag, std::string& image);
  /// Java `calculateSizeArray` of the headless imager. Outputs and result as `GetSize`; false when
  /// not started, and for a `JException`.
  bool CalculateSizeHeadless(const std::string& model, const std::string& display, long& width,
                             long& height);

  /// Java `renderModelToMemory`: a set of pictures by name.
  ///
  /// @param doc1,doc2,doc3,doc4,text1,extra passed to Java unchanged; the reference Java classes
  ///     take the model, its display data, a style document, CSV data of sample records, the title,
  ///     and how many levels each picture shows
  /// @param imageType the format of the pictures
  /// @param sizes,images the number of bytes and the bytes of each picture. Entries are only added:
  ///     a name that is there keeps what it has. Names come in the JVM's default charset, up to
  ///     their first zero byte.
  /// @return whether Java returned at least one picture; false when not started
  ///
  /// A copy of a `JException` is thrown. A picture without a name makes `std::logic_error` leave
  /// the operation: `sizes` then holds what came before it, and `images` gets nothing. So does a
  /// picture whose bytes Java has and does not give (there is no memory for them); its size is in
  /// `sizes`, and the Java exception stays pending. The bytes of each name stay allocated.
  bool RenderModelToMemoryHeadless(const std::string& doc1, const std::string& doc2,
                                   const std::string& doc3, const std::string& doc4,
                                   const std::string& text1, IMAGE_TYPE imageType, int extra,
                                   std::map<std::string, unsigned int>& sizes,
                                   std::map<std::string, std::string>& images);
  /// Java `renderModelToFiles`: a set of pictures in files.
  ///
  /// @param doc1,doc2,doc3,doc4,text1,extra as for `RenderModelToMemoryHeadless`
  /// @param text2 passed to Java unchanged; for the reference Java classes, the folder
  /// @param imageType the format of the pictures
  /// @param files the names that Java returns, in UTF-8, are added at its end
  /// @return whether Java returned an array, which may be empty; false when not started. A copy of
  ///     a `JException` is thrown.
  bool RenderModelToFileHeadless(const std::string& doc1, const std::string& doc2,
                                 const std::string& doc3, const std::string& doc4,
                                 const std::string& text1, const std::string& text2,
                                 IMAGE_TYPE imageType, int extra, std::vector<std::string>& files);
  /// Hands its arguments to the headless imager, which renders nothing. Always false; `files` is
  /// not changed. A copy of a `JException` is thrown.
  bool RenderInteractiveToFileHeadless(const std::string& model,
                                       const std::vector<std::string>& list1,
                                       const std::vector<std::string>& list2,
                                       const std::string& text1, const std::string& text2,
                                       const std::string& text3, IMAGE_TYPE imageType, int extra,
                                       std::vector<std::string>& files);
  /// Does nothing, without a lock, on any thread. Always false.
  bool RenderInteractiveToMemoryHeadless(const std::string& model,
                                         const std::vector<std::string>& list1,
                                         const std::vector<std::string>& list2,
                                         const std::string& text1, const std::string& text2,
                                         IMAGE_TYPE imageType, int extra,
                                         std::map<std::string, unsigned int>& sizes,
                                         std::map<std::string, std::string>& images);

  /// The one editor, or null. A host that deletes the editor and wants a new one sets this to null.
  static TreeEditor* _instance;

 private:
  JTreeEditor* _editor;
  JTreeImager* _imager;
  std::string _codepage;
};

#endif  // TREE_TREEEDITOR_H_
