// SPDX-License-Identifier: Apache-2.0
#include "app/MistakePlace.h"

#include <algorithm>
#include <regex>

#include "app/ChartEditorSession.h"
#include "app/DumpFolder.h"
#include "app/InputFile.h"
#include "app/JavaFailure.h"
#include "host/LocalFrame.h"

namespace chartbridge {

namespace {

const std::regex& Place() {
  static const std::regex place("^line [0-9]+, column [0-9]+: ");
  return place;
}

std::string WithoutPlace(const std::string& reason) {
  return std::regex_replace(reason, Place(), "");
}

}  // namespace

bool HasPlace(const std::string& reason) { return std::regex_search(reason, Place()); }

std::string WithOwnPlace(const std::string& reason, const InputFile& chart, const InputFile* data,
                         JNIEnv* env, const DumpFolder& dumps) {
  if (!HasPlace(reason)) return reason;
  const std::size_t known = dumps.NewRecords().size();
  const ChartEditorSession session(env);
  const LocalFrame frame;
  std::string picture;
  std::string html;
  std::string json;
  ViZEditor::GetInstance()->RenderImageToMemoryHeadless(
      chart.Text(), data == nullptr ? nullptr : data->Data(), data == nullptr ? 0 : data->Size(),
      ViZEditor::IMAGE_PNG, 100, picture, html, json, "", "", "", "", false);
  const std::string records = dumps.NewRecords();
  const auto failure = JavaFailure::First(records.substr(std::min(known, records.size())));
  const bool isSame = failure && WithoutPlace(failure->Reason()) == WithoutPlace(reason);
  return isSame ? failure->Reason() : WithoutPlace(reason);
}

}  // namespace chartbridge
