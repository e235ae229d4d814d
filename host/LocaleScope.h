// SPDX-License-Identifier: Apache-2.0
#ifndef HOST_LOCALESCOPE_H_
#define HOST_LOCALESCOPE_H_

#include <string>

namespace chartbridge {

/// Puts the process's locale back at its end. While Java starts, its own library calls
/// `setlocale(LC_ALL, "")` to learn the user's language, and leaves it at that.
class LocaleScope {
 public:
  LocaleScope();
  ~LocaleScope();

  LocaleScope(const LocaleScope&) = delete;
  LocaleScope& operator=(const LocaleScope&) = delete;

 private:
  std::string _own;
};

}  // namespace chartbridge

#endif  // HOST_LOCALESCOPE_H_
