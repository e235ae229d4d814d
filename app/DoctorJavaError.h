// SPDX-License-Identifier: Apache-2.0
#ifndef APP_DOCTORJAVAERROR_H_
#define APP_DOCTORJAVAERROR_H_

#include <jni.h>

#include <optional>
#include <string>

namespace chartbridge {

/// A Java exception that a check ran into.
class DoctorJavaError {
 public:
  /// Takes and clears the exception that is pending on `env`; none when none is.
  static std::optional<DoctorJavaError> Take(JNIEnv* env);

  /// Its class with dots.
  const std::string& Type() const { return _type; }
  /// Empty where it has none.
  const std::string& Message() const { return _message; }
  /// Class, message and causes on one line.
  std::string Text() const { return _text; }

 private:
  std::string _type;
  std::string _message;
  std::string _text;
};

}  // namespace chartbridge

#endif  // APP_DOCTORJAVAERROR_H_
