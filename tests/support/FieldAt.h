// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_FIELDAT_H_
#define TESTS_SUPPORT_FIELDAT_H_

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace chartbridge::testing {

/// What the object's memory holds at this offset: private fields, read without their class.
template <typename Field>
Field FieldAt(const void* object, std::size_t offset) {
  static_assert(std::is_trivially_copyable_v<Field>, "other fields cannot be copied as bytes");
  Field field;
  std::memcpy(&field, static_cast<const char*>(object) + offset, sizeof field);
  return field;
}

/// Where the object's memory holds a field that cannot be copied as bytes.
template <typename Field>
const Field& FieldReferenceAt(const void* object, std::size_t offset) {
  return *static_cast<const Field*>(
      static_cast<const void*>(static_cast<const char*>(object) + offset));
}

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_FIELDAT_H_
