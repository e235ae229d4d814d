// SPDX-License-Identifier: Apache-2.0
#include "app/TreeDocuments.h"

#include "app/DumpFolder.h"
#include "app/Failure.h"
#include "app/InputFile.h"
#include "app/JavaFailure.h"
#include "app/TreeDisplayData.h"

namespace chartbridge {

namespace {

void Read(const std::string& path, std::string& name, std::string& content) {
  if (path.empty()) return;
  const InputFile file(path);
  name = file.Name();
  content = file.Text();
}

bool IsAboutOutput(const JavaFailure& failure) {
  return failure.PassedThrough("org.chartbridge.image.OutputFiles.cannotWrite") ||
         failure.PassedThrough("org.chartbridge.image.OutputFiles.path") ||
         failure.PassedThrough("org.chartbridge.image.OutputFiles.makeFolder");
}

}  // namespace

TreeDocuments::TreeDocuments(const TreeOptions& options) {
  Read(options.model, _modelName, _model);
  Read(options.display, _displayName, _display);
  _display = DisplayDataWith(options, _display, _displayName);
}

void TreeDocuments::ReadSamples(const std::string& path) { Read(path, _samplesName, _samples); }

void TreeDocuments::ReadStyle(const std::string& path) { Read(path, _styleName, _style); }

void TreeDocuments::FailWithReason(const DumpFolder& dumps, const std::string& output) const {
  const auto failure = JavaFailure::First(dumps.NewRecords());
  if (!failure) throw Failure(_modelName + ": " + dumps.WhyEmpty());

  // Java got bytes and knows no file names; which of the documents it was reading is in the stack.
  std::string culprit = _modelName;
  if (failure->PassedThrough("org.chartbridge.tree.draw.TreeReader.display")) {
    culprit = _displayName;
  } else if (failure->PassedThrough("org.chartbridge.tree.draw.TreeReader.samples")) {
    culprit = _samplesName;
  } else if (failure->PassedThrough("org.chartbridge.tree.draw.TreeReader.style")) {
    culprit = _styleName;
  } else if (!output.empty() && IsAboutOutput(*failure)) {
    culprit = output;
  }
  if (culprit.empty()) culprit = _modelName;
  throw Failure(culprit + ": " + failure->Reason(), failure->Stack());
}

}  // namespace chartbridge
