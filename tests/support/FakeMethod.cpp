// SPDX-License-Identifier: Apache-2.0
#include "tests/support/FakeMethod.h"

#include <cstddef>
#include <utility>

#include "tests/support/FakeJvm.h"
#include "tests/support/KitScope.h"

namespace chartbridge::testing {
namespace {

bool IsLost(const FakeArgument& argument) {
  if (argument.type != 'L') return false;
  if (argument.value.l == nullptr) return true;
  const FakeObject* object = ObjectOf(argument.value.l);
  if (object->kind != FakeObject::Kind::kBytes || object->bytes.empty()) return false;
  return object->bytes.find_first_not_of('\0') == std::string::npos;
}

}  // namespace

FakeMethod::FakeMethod(std::string name, std::string signature, bool is_static)
    : _name(std::move(name)), _signature(std::move(signature)), _static(is_static) {}

FakeMethod& FakeMethod::Returns(jobject result) {
  return Does([result](const FakeCall&) {
    jvalue value{};
    value.l = result;
    return value;
  });
}

FakeMethod& FakeMethod::ReturnsBoolean(bool result) {
  return Does([result](const FakeCall&) {
    jvalue value{};
    value.z = result ? JNI_TRUE : JNI_FALSE;
    return value;
  });
}

FakeMethod& FakeMethod::Throws(jthrowable exception) {
  return Does([exception](const FakeCall& call) {
    call.jvm.SetPending(exception, call.env);
    return jvalue{};
  });
}

FakeMethod& FakeMethod::Runs(std::function<void()> action) {
  _action = std::move(action);
  return *this;
}

FakeMethod& FakeMethod::Does(Body body) {
  _body = std::move(body);
  return *this;
}

FakeMethod& FakeMethod::RefusesLostArguments() {
  _refuses_lost = true;
  return *this;
}

std::string FakeMethod::ParameterTypes() const {
  std::string types;
  for (std::size_t i = 1; i < _signature.size() && _signature[i] != ')'; ++i) {
    const bool reference = _signature[i] == '[' || _signature[i] == 'L';
    types += reference ? 'L' : _signature[i];
    while (_signature[i] == '[') ++i;
    if (_signature[i] == 'L') i = _signature.find(';', i);
  }
  return types;
}

jvalue FakeMethod::Call(const FakeCall& call) const {
  if (_action) {
    const OutsideKit outside;
    _action();
  }
  for (const FakeArgument& argument : call.arguments) {
    if (!_refuses_lost || !IsLost(argument)) continue;
    call.jvm.ThrowNew(call.env, "java/lang/IllegalArgumentException", _name);
    return jvalue{};
  }
  return _body ? _body(call) : jvalue{};
}

}  // namespace chartbridge::testing
