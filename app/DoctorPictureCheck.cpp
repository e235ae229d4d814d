// SPDX-License-Identifier: Apache-2.0
#include "app/DoctorPictureCheck.h"

#include <fstream>
#include <iterator>

#include "app/DoctorReport.h"
#include "app/DumpFolder.h"
#include "app/JavaFailure.h"
#include "app/TreeImagerSession.h"
#include "chart/ViZEditor.h"
#include "host/LocalFrame.h"
#include "tree/TreeEditor.h"

namespace chartbridge {

namespace {

struct ImageType {
  int number;
  const char* name;
  const char* ending;
  /// What the file begins with; for XML, what it contains.
  const char* mark;
};

constexpr ImageType kImageTypes[] = {
    {ViZEditor::IMAGE_JPEG, "JPEG", ".jpg", "\xFF\xD8\xFF"},
    {ViZEditor::IMAGE_PNG, "PNG", ".png", "\x89PNG\r\n"},
    {ViZEditor::IMAGE_BMP, "BMP", ".bmp", "BM"},
    {ViZEditor::IMAGE_GIF, "GIF", ".gif", "GIF8"},
    {ViZEditor::IMAGE_SVG, "SVG", ".svg", "<svg"},
    {ViZEditor::IMAGE_PDF, "PDF", ".pdf", "%PDF-"},
    {ViZEditor::IMAGE_MAP, "image map", "-map.png", "\x89PNG\r\n"},
};

constexpr double kFullSize = 100;

const ImageType& TypeOf(int number) { return kImageTypes[number - ViZEditor::IMAGE_JPEG]; }

bool HasMark(const ImageType& type, const std::string& content) {
  const std::size_t at = content.find(type.mark);
  return type.number == ViZEditor::IMAGE_SVG ? at != std::string::npos : at == 0;
}

std::string ContentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

/// Keeps the chart editor started during its scope.
class ChartSession {
 public:
  explicit ChartSession(JNIEnv* env) { ViZEditor::GetInstance()->StartEditorHeadless(env); }
  ~ChartSession() { ViZEditor::GetInstance()->StopHeadless(); }

  ChartSession(const ChartSession&) = delete;
  ChartSession& operator=(const ChartSession&) = delete;
};

}  // namespace

DoctorPictureCheck::DoctorPictureCheck(JNIEnv* env, const DumpFolder& dumps, DoctorReport& report,
                                       DoctorStatus severity)
    : _env(env),
      _dumps(dumps),
      _report(report),
      _severity(severity),
      _seenRecords(dumps.NewRecords().size()) {}

void DoctorPictureCheck::DrawChart(const std::string& chart, const std::string& data) {
  const ChartSession session(_env);
  DrawAll("chart", [&chart, &data](int imageType, const std::string& path) {
    const auto type = static_cast<ViZEditor::IMAGE_TYPE>(imageType);
    const auto* bytes = reinterpret_cast<const unsigned char*>(data.data());
    return ViZEditor::GetInstance()->RenderToFileHeadless(chart, bytes, data.size(), path, type,
                                                          kFullSize, "", "", "", "", false);
  });
}

void DoctorPictureCheck::DrawTree(const std::string& model) {
  const TreeImagerSession session(_env);
  DrawAll("tree", [&model](int imageType, const std::string& path) {
    const auto type = static_cast<TreeEditor::IMAGE_TYPE>(imageType);
    return TreeEditor::GetInstance()->RenderToFileHeadless(model, "", path, type, false);
  });
}

void DoctorPictureCheck::DrawAll(const std::string& thing, const Draw& draw) {
  for (const ImageType& type : kImageTypes) {
    const LocalFrame frame;
    const std::string path = _folder.File(thing + type.ending);
    const bool answer = draw(type.number, path);
    const std::string why = WhyNotWritten(type.number, path, answer);
    _report.Add({why.empty() ? DoctorStatus::kOk : _severity, DoctorArea::kPictures,
                 thing + " as " + type.name, why});
  }
}

std::string DoctorPictureCheck::WhyNotWritten(int imageType, const std::string& path, bool answer) {
  const std::string reason = NewReason();
  if (!answer) return reason.empty() ? "not written, for no reason that Java gave" : reason;
  const std::string content = ContentOf(path);
  if (content.empty()) return "Java says that it is written, but it is not there";
  const ImageType& type = TypeOf(imageType);
  if (!HasMark(type, content)) return std::string("written, but not as ") + type.name;
  return "";
}

/// Why the last picture failed, from the records that it added.
std::string DoctorPictureCheck::NewReason() {
  const std::string records = _dumps.NewRecords();
  if (records.size() <= _seenRecords) return "";
  const auto failure = JavaFailure::First(records.substr(_seenRecords));
  _seenRecords = records.size();
  return failure ? failure->Reason() : "";
}

}  // namespace chartbridge
