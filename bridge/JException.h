// SPDX-License-Identifier: Apache-2.0
#ifndef BRIDGE_JEXCEPTION_H_
#define BRIDGE_JEXCEPTION_H_

#include <string>

#include "bridge/Export.h"

/// A failure that the host's own platform code raises inside an operation of this library, as three
/// texts.
///
/// It is always thrown by value. The library never builds one; it only passes on, or turns into a
/// failure value, what the platform functions throw. Java's exceptions are never turned into it:
/// they end in the dump file (`JAccessor::exceptionCheck`).
class CHARTBRIDGE_EXPORT JException {
 public:
  /// Keeps copies of the three texts.
  JException(const std::string& first, const std::string& second, const std::string& third);
  /// Copies the texts. Operations that pass an exception on throw such a copy.
  JException(const JException& other);
  ~JException();

  /// Replaces the texts.
  JException& operator=(const JException& other) = default;

  /// What diagnostics print first.
  const std::string& firstText() const { return _first; }
  /// Carried along for the host; the library prints it nowhere.
  const std::string& secondText() const { return _second; }
  /// What diagnostics print on the line after the first text.
  const std::string& thirdText() const { return _third; }

 private:
  std::string _first;
  std::string _second;
  std::string _third;
};

#endif  // BRIDGE_JEXCEPTION_H_
