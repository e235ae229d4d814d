// SPDX-License-Identifier: Apache-2.0
#ifndef APP_COMMAND_H_
#define APP_COMMAND_H_

namespace chartbridge {

/// A subcommand of `chartbridge`. Its constructor adds it to the command line, with its options.
class Command {
 public:
  Command() = default;
  virtual ~Command() = default;

  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  /// Whether the command line asks for this command.
  virtual bool IsChosen() const = 0;
  /// Does it. Throws `Failure` and `UsageError`.
  virtual void Run() = 0;
  /// Whether a failure is shown with its details.
  virtual bool IsVerbose() const = 0;
};

}  // namespace chartbridge

#endif  // APP_COMMAND_H_
