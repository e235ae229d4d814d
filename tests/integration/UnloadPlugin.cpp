// SPDX-License-Identifier: Apache-2.0
// A part of a host that is loaded and closed again: it starts the JVM with the library.
#include "host/JvmSettings.h"
#include "host/LocalFrame.h"
#include "json/jsonEditor.h"
#include "platform/TeskJVM.h"

/// 1 when the JVM runs and the library has exported a chart.
extern "C" __attribute__((visibility("default"))) int UseLibrary() {
  chartbridge::JvmSettings settings;
  settings.classPath = {CHARTBRIDGE_TEST_RUNTIME_JAR};
  chartbridge::SetJvmSettings(settings);
  if (!TeskJVM::GetInstance()->StartJVM()) return 0;
  jsonEditor::GetInstance()->StartEditorHeadless(TeskJVM::GetInstance()->GetEnv());
  const chartbridge::LocalFrame frame;
  jsonEditor* editor = jsonEditor::GetInstance();
  editor->setFilePath("chart.vl.json");
  const char chart[] =
      "<chart xmlns=\"urn:chartbridge:chart:2\"><data>a,b\nx,1\n</data>"
      "<elements><bar><x column=\"a\"/><y column=\"b\"/></bar></elements></chart>";
  return editor->RenderChartJSON(chart, {}, {}) ? 1 : 0;
}
