// SPDX-License-Identifier: Apache-2.0
// A host: renders a chart into a PNG file. Usage: chart_host CHART DATA PNG
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "chart/ViZEditor.h"
#include "host/JvmSettings.h"
#include "host/LocalFrame.h"
#include "platform/TeskJVM.h"

static std::string Read(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  chartbridge::JvmSettings settings;
  settings.classPath = {CHARTBRIDGE_JAR};
  chartbridge::SetJvmSettings(settings);
  if (!TeskJVM::GetInstance()->StartJVM()) return 1;

  ViZEditor* editor = ViZEditor::GetInstance();
  editor->StartEditorHeadless(TeskJVM::GetInstance()->GetEnv());
  bool done = false;
  {
    const chartbridge::LocalFrame frame;  // gives the operation's Java references back
    done = editor->RenderToFileHeadless(Read(argv[1]), Read(argv[2]), argv[3], ViZEditor::IMAGE_PNG,
                                        "", "", "", "", 100);
  }
  editor->StopHeadless();
  if (!done) std::cerr << "not rendered; set DumpChartTimePath to a folder to learn why\n";
  return done ? 0 : 1;
}
