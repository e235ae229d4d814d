// SPDX-License-Identifier: Apache-2.0
#ifndef APP_JAVAFAILURE_H_
#define APP_JAVAFAILURE_H_

#include <optional>
#include <string>

namespace chartbridge {

/// One Java exception, as the library's dump file records it.
class JavaFailure {
 public:
  /// The first exception in the text of a dump file; none when there is no complete record. The
  /// first is the cause: what follows it in one operation comes from going on without the result.
  static std::optional<JavaFailure> First(const std::string& records);

  /// Ends with `Failure` if the text of a dump file holds an exception from starting an editor or
  /// converter. The start itself never fails; a Java class that is missing or broken shows only
  /// there.
  static void ThrowIfNotStarted(const std::string& records);

  /// The reason for a person, on one line. Exceptions of the bridge's own Java classes speak for
  /// themselves; of others the Java class stands in front, because "Java heap space" or "3" alone
  /// says little.
  std::string Reason() const;

  /// The stack trace that Java printed, without the empty line at its end.
  const std::string& Stack() const { return _stack; }

  /// Whether code of that class or method was at work when the exception was thrown: a frame of its
  /// stack trace starts with `code`, such as "org.chartbridge.data.CsvReader.".
  bool PassedThrough(const std::string& code) const;

 private:
  std::string _message;
  std::string _type;
  std::string _stack;
};

}  // namespace chartbridge

#endif  // APP_JAVAFAILURE_H_
