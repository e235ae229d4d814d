// SPDX-License-Identifier: Apache-2.0
#include "app/PictureFormat.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "app/Failure.h"
#include "app/InputFile.h"

namespace chartbridge {

namespace {

struct NamedFormat {
  const char* name;
  ViZEditor::IMAGE_TYPE type;
};

constexpr NamedFormat kFormats[] = {
    {"png", ViZEditor::IMAGE_PNG}, {"jpeg", ViZEditor::IMAGE_JPEG}, {"jpg", ViZEditor::IMAGE_JPEG},
    {"bmp", ViZEditor::IMAGE_BMP}, {"gif", ViZEditor::IMAGE_GIF},   {"svg", ViZEditor::IMAGE_SVG},
    {"pdf", ViZEditor::IMAGE_PDF},
};

}  // namespace

std::optional<ViZEditor::IMAGE_TYPE> FormatOfName(const std::string& name) {
  std::string lower = name;
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  for (const NamedFormat& format : kFormats) {
    if (lower == format.name) return format.type;
  }
  return std::nullopt;
}

std::optional<ViZEditor::IMAGE_TYPE> FormatOfPath(const std::string& path) {
  const std::string ending = std::filesystem::path(path).extension().string();
  if (ending.empty()) return std::nullopt;
  return FormatOfName(ending.substr(1));
}

ViZEditor::IMAGE_TYPE FormatOfOption(const std::string& type) {
  const auto named = FormatOfName(type);
  if (!named) throw UsageError("--type: " + type + " is none of " + FormatNames());
  return *named;
}

ViZEditor::IMAGE_TYPE FormatOfOutput(const std::string& output, const std::string& type) {
  if (!type.empty()) return FormatOfOption(type);
  if (IsStandardStream(output)) return ViZEditor::IMAGE_PNG;
  const auto byEnding = FormatOfPath(output);
  if (!byEnding) {
    throw UsageError(output + ": the ending is none of " + FormatNames() +
                     "; name the format with --type");
  }
  return *byEnding;
}

std::string FormatNames() {
  std::string names;
  for (const NamedFormat& format : kFormats) {
    if (!names.empty()) names += ", ";
    names += format.name;
  }
  return names;
}

}  // namespace chartbridge
