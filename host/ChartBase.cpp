// SPDX-License-Identifier: Apache-2.0
#include "platform/ChartBase.h"

#include "host/DebugText.h"

const unsigned short ChartBase::_utf8[] = {'U', 'T', 'F', '-', '8', 0};

void ChartBase::printDebugInfo(const std::string& text) { chartbridge::WriteDebugText(text); }
