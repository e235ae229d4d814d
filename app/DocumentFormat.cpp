// SPDX-License-Identifier: Apache-2.0
#include "app/DocumentFormat.h"

#include <strings.h>

#include <filesystem>

#include "app/Failure.h"
#include "app/InputFile.h"

namespace chartbridge {

namespace {

constexpr DocumentFormat kFormats[] = {
    {"html", "html", false}, {"htm", "html", false}, {"pdf", "pdf", true},    {"odt", "odt", true},
    {"csv", "csv", false},   {"txt", "text", false}, {"text", "text", false},
};

const DocumentFormat* FormatOfName(const std::string& name) {
  for (const DocumentFormat& format : kFormats) {
    if (strcasecmp(name.c_str(), format.name) == 0) return &format;
  }
  return nullptr;
}

}  // namespace

DocumentFormat DocumentFormatOf(const std::string& output, const std::string& to) {
  if (!to.empty()) {
    const DocumentFormat* named = FormatOfName(to);
    if (named == nullptr) throw UsageError("--to: " + to + " is none of " + DocumentFormatNames());
    return *named;
  }
  if (IsStandardStream(output)) throw UsageError("standard output: name the format with --to");
  const std::string ending = std::filesystem::path(output).extension().string();
  const DocumentFormat* byEnding = ending.empty() ? nullptr : FormatOfName(ending.substr(1));
  if (byEnding == nullptr) {
    throw UsageError(output + ": the ending is none of " + DocumentFormatNames() +
                     "; name the format with --to");
  }
  return *byEnding;
}

std::string DocumentFormatNames() {
  std::string names;
  for (const DocumentFormat& format : kFormats) {
    if (!names.empty()) names += ", ";
    names += format.name;
  }
  return names;
}

}  // namespace chartbridge
