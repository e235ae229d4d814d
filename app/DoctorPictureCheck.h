// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCTORPICTURECHECK_H_
#define APP_DOCTORPICTURECHECK_H_

#include <jni.h>

#include <cstddef>
#include <functional>
#include <string>

#include "app/DoctorFinding.h"
#include "app/ScratchFolder.h"

namespace chartbridge {

class DoctorReport;
class DumpFolder;

/// Writes a small chart and a small tree in each image type, through the library.
///
/// To be used only where the Java classes were found complete: the editors' operations rely on the
/// guard where a class or an object is missing.
class DoctorPictureCheck {
 public:
  /// All must outlive the check.
  ///
  /// @param severity what it means when a picture cannot be written
  DoctorPictureCheck(JNIEnv* env, const DumpFolder& dumps, DoctorReport& report,
                     DoctorStatus severity);

  /// @param chart,data a chart and its data, in the form that the Java classes take
  void DrawChart(const std::string& chart, const std::string& data);
  /// @param model a tree model
  void DrawTree(const std::string& model);

 private:
  /// Writes the picture of that image type to that file; false when it fails.
  using Draw = std::function<bool(int imageType, const std::string& path)>;

  void DrawAll(const std::string& thing, const Draw& draw);
  std::string WhyNotWritten(int imageType, const std::string& path, bool answer);
  std::string NewReason();

  JNIEnv* _env;
  const DumpFolder& _dumps;
  DoctorReport& _report;
  DoctorStatus _severity;
  ScratchFolder _folder;
  std::size_t _seenRecords;
};

}  // namespace chartbridge

#endif  // APP_DOCTORPICTURECHECK_H_
