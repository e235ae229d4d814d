// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_FAKEMETHOD_H_
#define TESTS_SUPPORT_FAKEMETHOD_H_

#include <jni.h>

#include <functional>
#include <string>
#include <vector>

namespace chartbridge::testing {

class FakeJvm;

/// One argument of a Java call with its JNI type: one of ZBCSIJFD, or L for every reference.
struct FakeArgument {
  char type;
  jvalue value;
};

/// A Java call as a scripted method sees it.
struct FakeCall {
  FakeJvm& jvm;
  JNIEnv* env;
  jobject receiver;
  const std::vector<FakeArgument>& arguments;
};

/// A Java method of the fake JVM, and what it does when it is called. Unscripted it returns zero.
class FakeMethod {
 public:
  using Body = std::function<jvalue(const FakeCall&)>;

  FakeMethod(std::string name, std::string signature, bool is_static);

  FakeMethod& Returns(jobject result);
  FakeMethod& ReturnsBoolean(bool result);
  /// Leaves this exception pending and returns zero.
  FakeMethod& Throws(jthrowable exception);
  /// Runs native code inside the call: to throw a C++ exception, or to change the rounding mode.
  /// Then does what was scripted.
  FakeMethod& Runs(std::function<void()> action);
  FakeMethod& Does(Body body);
  /// From now on an argument that is null or holds nothing but zero bytes, as one that was lost on
  /// its way, leaves an IllegalArgumentException pending.
  FakeMethod& RefusesLostArguments();

  const std::string& Name() const { return _name; }
  const std::string& Signature() const { return _signature; }
  bool IsStatic() const { return _static; }
  bool IsScripted() const { return static_cast<bool>(_body); }
  /// The types of its parameters, one letter each.
  std::string ParameterTypes() const;

  /// Carries the call out.
  jvalue Call(const FakeCall& call) const;

 private:
  std::string _name;
  std::string _signature;
  bool _static;
  bool _refuses_lost = false;
  Body _body;
  std::function<void()> _action;
};

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_FAKEMETHOD_H_
