// SPDX-License-Identifier: Apache-2.0
#include "host/FloatScope.h"

namespace chartbridge {

FloatScope::FloatScope() : _isSaved(std::fegetenv(&_own) == 0) {
  if (_isSaved) std::fesetenv(FE_DFL_ENV);
}

FloatScope::~FloatScope() {
  if (_isSaved) std::fesetenv(&_own);
}

}  // namespace chartbridge
