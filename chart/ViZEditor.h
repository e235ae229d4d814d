// SPDX-License-Identifier: Apache-2.0
#ifndef CHART_VIZEDITOR_H_
#define CHART_VIZEDITOR_H_

#include <jni.h>

#include <string>

#include "bridge/Export.h"

class JChartImager;

/// Renders charts through the Java class com.tesk.charteditor.ChartImager.
///
/// A singleton. The host starts the JVM, calls `StartEditorHeadless` on a thread that stays
/// attached, and then renders from any thread; each operation attaches its thread and holds the
/// process-wide lock `TeskJVM::CritSect()` from begin to end. The floating-point environment of the
/// caller is kept.
///
/// Failures: a Java exception is recorded in the dump file and cleared (see
/// `JAccessor::printDebugInfo`), and the operation returns its failure value. Exceptions of the
/// host's own platform code propagate once buffers, floating-point environment and lock are back as
/// they were.
///
/// Texts (`path`, `auxText1`, `auxText2`) are in the encoding of ICU's default converter; byte
/// strings go to Java unchanged.
class CHARTBRIDGE_EXPORT ViZEditor {
 public:
  /// The output format, handed to Java as its number. The library itself knows only the image map;
  /// the names of the others are those of the reference Java classes.
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
  static ViZEditor* GetInstance();

  /// An editor that is not started. Hosts take the one of `GetInstance`.
  ViZEditor();
  /// Deletes the binding if there is one. Takes no lock and leaves `_instance` as it is.
  virtual ~ViZEditor();

  ViZEditor(const ViZEditor&) = delete;
  ViZEditor& operator=(const ViZEditor&) = delete;

  /// Creates the Java object on the thread of `env`, which must stay attached until `StopHeadless`.
  ///
  /// Always true, also when the editor was started before (the first env is kept) and when Java
  /// failed. That is in the dump file, and every operation then ends in its failure value; but one
  /// that answers whether an output is empty says nothing of it when the host's output is not.
  bool StartEditorHeadless(JNIEnv* env);
  /// Whether `StartEditorHeadless` was called, and `StopHeadless` was not called since.
  bool IsStartedHeadless();
  /// Drops the binding. Harmless when there is none.
  void StopHeadless();
  /// Makes the binding call Java through `env`. Takes no lock; operations call it themselves.
  void SetEnv(JNIEnv* env);
  /// Stores a codepage name; no conversion uses it. False, and nothing stored, for an empty name.
  bool SetCodepage(const std::string& codepage);

  /// Renders a chart into a file, with the data in the host's memory. Calls Java `RenderToFile`, or
  /// for `IMAGE_MAP` `RenderImageMapToFile`.
  ///
  /// @param chart the chart description, in the encoding its format says
  /// @param data the data; Java reads this memory without copying, so it must stay unchanged during
  ///     the call
  /// @param dataLength its length in bytes
  /// @param path the output file
  /// @param type the output format
  /// @param size passed to Java unchanged; for the reference Java classes, a percentage of the
  ///     chart's own size
  /// @param auxBytes1,auxBytes2,auxText1,auxText2 two pairs of bytes and text, passed to Java
  ///     unchanged
  /// @param flag for image maps, passed to Java negated
  /// @return what Java answered; false when the editor is not started, on a Java exception, and
  ///     when the JVM cannot share `data`
  bool RenderToFileHeadless(const std::string& chart, const unsigned char* data,
                            unsigned long dataLength, const std::string& path, IMAGE_TYPE type,
                            double size, const std::string& auxBytes1, const std::string& auxBytes2,
                            const std::string& auxText1, const std::string& auxText2, bool flag);

  /// Renders a chart into a file, with the data copied to Java. Calls Java `RenderToFile` for every
  /// type.
  ///
  /// Parameters and result as above; `data` is copied, and there is no flag.
  bool RenderToFileHeadless(const std::string& chart, const std::string& data,
                            const std::string& path, IMAGE_TYPE type, const std::string& auxBytes1,
                            const std::string& auxBytes2, const std::string& auxText1,
                            const std::string& auxText2, double size);

  /// Renders a chart into memory, with the data copied to Java. Calls Java `RenderToMem`.
  ///
  /// @param chart the chart description
  /// @param data the data, which are copied
  /// @param imageSize neither read nor written; the size is `output.size()`
  /// @param type the output format
  /// @param size,auxBytes1,auxBytes2,auxText1,auxText2 passed to Java unchanged
  /// @param output replaced by the picture when Java returns one; never cleared
  /// @return whether `output` is not empty afterwards, so start with an empty one
  bool RenderImageToMemoryHeadless(const std::string& chart, const std::string& data,
                                   unsigned int& imageSize, IMAGE_TYPE type, double size,
                                   const std::string& auxBytes1, const std::string& auxBytes2,
                                   const std::string& auxText1, const std::string& auxText2,
                                   std::string& output);

  /// Renders a chart into memory, with the data in the host's memory. Calls Java
  /// `RenderImageMapToMemory` for every type.
  ///
  /// @param chart the chart description
  /// @param data,dataLength the data and their length in bytes; Java reads this memory without
  ///     copying, so it must stay unchanged during the call
  /// @param type the output format
  /// @param size passed to Java unchanged
  /// @param output1 the first block of Java's answer, the picture
  /// @param output2,output3 the second and third block; written for `IMAGE_MAP` only
  /// @param auxBytes1,auxBytes2,auxText1,auxText2 passed to Java unchanged
  /// @param flag passed to Java negated
  /// @return whether `output1` is not empty afterwards; outputs are never cleared, so start with
  ///     empty ones
  bool RenderImageToMemoryHeadless(const std::string& chart, const unsigned char* data,
                                   unsigned long dataLength, IMAGE_TYPE type, double size,
                                   std::string& output1, std::string& output2, std::string& output3,
                                   const std::string& auxBytes1, const std::string& auxBytes2,
                                   const std::string& auxText1, const std::string& auxText2,
                                   bool flag);

  /// Embeds a histogram in a graph. Calls Java `EmbedHistogramInGraph`.
  ///
  /// @param first,second two documents, passed to Java unchanged; the reference Java classes take
  ///     the chart, and what the histogram looks like
  /// @param histogram the host's memory, which Java may read and write during the call; not copied.
  ///     The reference Java classes read `count` + 1 ascending edges of bins and then `count`
  ///     values, all doubles of this machine
  /// @param histogramLength its length in bytes
  /// @param count passed to Java as its int; the number of bins
  /// @return the document that Java returns; empty when the editor is not started, when Java
  ///     returns null and when the JVM cannot share `histogram`
  std::string EmbedHistogramInGraph(const std::string& first, const std::string& second,
                                    unsigned char* histogram, unsigned long histogramLength,
                                    unsigned int count);

  /// Writes an image in another format. Calls Java `ConvertImage`.
  ///
  /// @param image the image's bytes
  /// @param path the output file
  /// @param type its format
  /// @return what Java answered; false when the editor is not started, and on a Java exception
  bool ConvertImage(const std::string& image, const std::string& path, IMAGE_TYPE type) const;

  /// Applies a style sheet to a chart document in place. Calls Java `ApplyStyleSheet`.
  ///
  /// Lets no exception out: one text for it goes to `ChartBase::printDebugInfo`, and the answer is
  /// false. Java must return an array: a null one is a wrong JNI call, which only the guard
  /// survives.
  ///
  /// @param document replaced by the result, also by an empty one, and emptied when Java returns
  ///     null; untouched when the thread could not be attached
  /// @param styleSheet the style sheet, passed to Java unchanged
  /// @return whether the result has at least one byte; false when the editor is not started
  bool ApplyStyleSheet(std::string& document, const std::string& styleSheet);

  /// The one editor, or null. A host that deletes the editor and wants a new one sets this to null.
  static ViZEditor* _instance;

 private:
  JChartImager* imager;
  std::string codepage;
};

#endif  // CHART_VIZEDITOR_H_
