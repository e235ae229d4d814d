// SPDX-License-Identifier: Apache-2.0
#ifndef APP_FAILURE_H_
#define APP_FAILURE_H_

#include <stdexcept>
#include <string>
#include <utility>

namespace chartbridge {

/// Why the command cannot go on. It ends with exit code 1 and `what()` on one line.
class Failure : public std::runtime_error {
 public:
  /// @param reason one line in UTF-8, with the file that it is about in front
  /// @param details what `--verbose` adds, such as a Java stack trace; may have several lines
  explicit Failure(const std::string& reason, std::string details = "")
      : std::runtime_error(reason), _details(std::move(details)) {}

  const std::string& Details() const { return _details; }

 private:
  std::string _details;
};

/// A command line that makes no sense. The command ends with exit code 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace chartbridge

#endif  // APP_FAILURE_H_
