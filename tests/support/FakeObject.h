// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_FAKEOBJECT_H_
#define TESTS_SUPPORT_FAKEOBJECT_H_

#include <jni.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/FakeMethod.h"

namespace chartbridge::testing {

/// Anything that a Java reference of the fake JVM can point to. Only the members of its kind mean
/// something.
struct FakeObject {
  enum class Kind { kClass, kObject, kBytes, kLongs, kObjectArray, kString, kBuffer };

  Kind kind = Kind::kObject;
  /// Its class; null for a class.
  FakeObject* type = nullptr;
  /// How events call it.
  std::string label;

  /// A class: its name with slashes, and its methods.
  std::string name;
  std::vector<std::unique_ptr<FakeMethod>> methods;
  int instances = 0;

  /// A `byte[]`, a `long[]`, an object array, a string.
  std::string bytes;
  std::vector<jlong> longs;
  std::vector<jobject> elements;
  std::u16string text;

  /// A direct buffer.
  void* address = nullptr;
  jlong capacity = 0;

  /// A throwable: what its methods give. No message is Java's null.
  std::optional<std::string> message;
  std::string description;
  std::string stack;
};

/// A reference of whatever Java type to a fake object.
template <typename Reference>
Reference As(FakeObject* object) {
  return reinterpret_cast<Reference>(object);
}

inline FakeObject* ObjectOf(jobject reference) { return reinterpret_cast<FakeObject*>(reference); }

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_FAKEOBJECT_H_
