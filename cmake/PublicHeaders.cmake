# SPDX-License-Identifier: Apache-2.0
#
# What hosts include. It is installed, documented, and part of what a minor version may not break.
set(chartbridge_public_headers
  bridge/Export.h
  bridge/JAccessor.h
  bridge/JException.h
  bridge/UnicodeConverter.h
  chart/ViZEditor.h
  convert/VizConverter.h
  convert/graphBoardConverter.h
  export/ExAccessor.h
  guard/jniguard.h
  host/ClassArchive.h
  host/DebugOutput.h
  host/JvmSettings.h
  host/JvmThreads.h
  host/LocalFrame.h
  host/TemplateCallback.h
  json/jsonEditor.h
  platform/ChartBase.h
  platform/ChartTransformer.h
  platform/CriticalSection.h
  platform/JNIAccessor.h
  platform/TESKMB.h
  platform/TeskJVM.h
  tree/TreeEditor.h)
