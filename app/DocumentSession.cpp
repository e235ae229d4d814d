// SPDX-License-Identifier: Apache-2.0
#include "app/DocumentSession.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include "app/Failure.h"
#include "app/JavaFailure.h"
#include "host/LocalFrame.h"

namespace chartbridge {

namespace {

namespace fs = std::filesystem;

constexpr const char* kRequestPlace = "request, line ";

/// The path that tells Java where the files are that the document refers to.
std::string NameOf(const std::string& path) {
  std::error_code error;
  const bool isFile = !IsStandardStream(path) && fs::is_regular_file(path, error);
  return fs::absolute(isFile ? fs::path(path) : fs::path("document"), error).string();
}

/// A place in the request says nothing to who did not write it.
std::string WithoutRequestPlace(const std::string& text) {
  if (text.rfind(kRequestPlace, 0) != 0) return text;
  const std::size_t colon = text.find(": ");
  return colon == std::string::npos ? text : text.substr(colon + 2);
}

}  // namespace

DocumentSession::DocumentSession(const JavaOptions& options)
    : _java(options), _exporter(ExAccessor::CreateInstance()) {
  JavaFailure::ThrowIfNotStarted(_dumps.NewRecords());
}

std::string DocumentSession::Load(const InputFile& input, const std::string& path) {
  const LocalFrame frame;
  _name = NameOf(path);
  _inputName = input.Name();
  if (_exporter->CreateOutputDocument(input.Text(), _name)) {
    _seenRecords = _dumps.NewRecords().size();
    return "";
  }
  const auto failure = JavaFailure::First(_dumps.NewRecords());
  return failure ? failure->Reason() : _dumps.WhyEmpty();
}

void DocumentSession::Write(const std::string& path, bool pictures, bool compressed) {
  const LocalFrame frame;
  if (!_exporter->WriteOutputDocumentFile(path, pictures, compressed)) FailWithReason();
}

std::string DocumentSession::Export(const std::string& request) {
  const LocalFrame frame;
  if (_exporter->ExportOutput(request)) return "";
  return WithoutRequestPlace(_exporter->getError());
}

bool DocumentSession::HasNewRecords() const { return _dumps.NewRecords().size() > _seenRecords; }

void DocumentSession::FailWithReason() const {
  const auto failure = JavaFailure::First(_dumps.NewRecords());
  if (!failure) throw Failure(_inputName + ": " + _dumps.WhyEmpty());
  throw Failure(_inputName + ": " + failure->Reason(), failure->Stack());
}

}  // namespace chartbridge
