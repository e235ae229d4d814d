// SPDX-License-Identifier: Apache-2.0
#ifndef JSON_JSONEDITOR_H_
#define JSON_JSONEDITOR_H_

#include <jni.h>

#include <string>
#include <vector>

#include "bridge/Export.h"

class jsonImager;

/// Exports charts as JSON through the Java class
/// com.tesk.java_client.core.documents.output.export.JsonImager.
///
/// A singleton that the host configures afresh for each export: fetch it with `GetInstance()`,
/// which resets all settings, call the setters, then `RenderChartJSON`. The host starts the JVM and
/// calls `StartEditorHeadless` before, on a thread that stays attached while the editor is started.
///
/// `GetInstance`, the life cycle and the export hold the process-wide lock `TeskJVM::CritSect()`;
/// the setters take none, so one thread must not configure while another exports.
///
/// Texts are in the encoding of ICU's default converter; documents go to Java unchanged.
class CHARTBRIDGE_EXPORT jsonEditor {
 public:
  /// A picture format, handed to Java as its number.
  enum IMAGE_TYPE : int {
    IMAGE_JPEG = 1,
    IMAGE_PNG = 2,
    IMAGE_BMP = 3,
    IMAGE_GIF = 4,
    IMAGE_SVG = 5,
    IMAGE_PDF = 6,
    IMAGE_MAP = 7
  };

  /// The one editor, created on first use under the lock, with all settings reset on every call:
  /// texts empty, size 100, format 2, no template. The binding is left alone.
  static jsonEditor* GetInstance();

  /// An editor that is not started, with all settings reset. Hosts take the one of `GetInstance`.
  jsonEditor();
  /// Deletes the binding if there is one. Takes no lock and leaves `_instance` as it is.
  virtual ~jsonEditor();

  jsonEditor(const jsonEditor&) = delete;
  jsonEditor& operator=(const jsonEditor&) = delete;

  /// Creates the Java object on the thread of `env`, which must stay attached until `StopHeadless`.
  /// A second start keeps the first. Always true; a Java failure is in the dump file.
  bool StartEditorHeadless(JNIEnv* env);
  /// Whether `StartEditorHeadless` was called, and `StopHeadless` was not called since.
  bool IsStartedHeadless();
  /// Drops the binding. Harmless when there is none.
  void StopHeadless();
  /// Makes the binding call Java through `env`. Takes no lock. Unlike the other editors,
  /// `RenderChartJSON` does not call it: a host without the JNI guard must, on the thread that
  /// exports.
  void SetEnv(JNIEnv* env);
  /// Stores a text that goes to Java with the export; no conversion uses it. False, and nothing
  /// stored, for an empty one.
  bool SetCodepage(const std::string& codepage);

  /// Makes the plain export write a template. Only `GetInstance` takes it back.
  void setIsChartTemplate();
  /// The picture format, handed to Java as its number with both exports.
  void setImageFormat(IMAGE_TYPE imageFormat);
  /// Kept, and passed to no Java method.
  void setSize(double size);
  /// The output file.
  void setFilePath(const std::string& filePath);
  /// The options text of the interactive export.
  void setOptions(const std::string& options);
  /// The JSON path of the interactive export; setting it chooses that export.
  void setJsonPath(const std::string& jsonPath);

  /// Exports a chart with the present settings, which stay as they are. With a JSON path, calls
  /// Java `addGeoJson` for each document and then `exportInteractiveJsonToFile`; else
  /// `exportChartJsonToFile`.
  ///
  /// @param chart the chart description
  /// @param geoJson GeoJSON documents; the plain export ignores them
  /// @param secondList not used
  /// @return what Java answered; false when the editor is not started. Exceptions of the host's
  ///     platform code propagate with everything released.
  bool RenderChartJSON(const std::string& chart, const std::vector<std::string>& geoJson,
                       const std::vector<std::string>& secondList);

  /// The one editor, or null. A host that deletes the editor and wants a new one sets this to null.
  static jsonEditor* _instance;

 private:
  CHARTBRIDGE_HIDDEN void resetSettings();

  jsonImager* imager;
  std::string codepage;
  std::string jsonPath;
  std::string options;
  std::string filePath;
  double size;
  IMAGE_TYPE imageFormat;
  bool isChartTemplate;
};

#endif  // JSON_JSONEDITOR_H_
