// SPDX-License-Identifier: Apache-2.0
#include "app/StandardInput.h"

#include <algorithm>

#include "app/Failure.h"
#include "app/InputFile.h"

namespace chartbridge {

void CheckStandardInput(const std::vector<std::string>& paths) {
  if (std::count_if(paths.begin(), paths.end(), IsStandardStream) > 1) {
    throw UsageError("only one of the inputs can be standard input");
  }
}

}  // namespace chartbridge
