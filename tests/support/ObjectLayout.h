// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_OBJECTLAYOUT_H_
#define TESTS_SUPPORT_OBJECTLAYOUT_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace chartbridge::testing {

/// Puts a pointer where an object keeps one.
template <typename Class>
void PutPointer(Class& object, std::size_t offset, const void* pointer) {
  std::memcpy(reinterpret_cast<char*>(&object) + offset, &pointer, sizeof pointer);
}

template <typename Base>
class OneMoreVirtual : public Base {
 public:
  using Base::Base;
  virtual void added() {}
};

/// How many virtual slots a class has. A destructor takes two.
///
/// In the Itanium C++ ABI a pointer to a virtual member function holds one plus the offset of its
/// slot; the first one that a derived class adds comes after all of its base.
template <typename Base>
std::size_t VirtualSlots() {
  void (OneMoreVirtual<Base>::*added)() = &OneMoreVirtual<Base>::added;
  std::uintptr_t one_plus_offset = 0;
  std::memcpy(&one_plus_offset, &added, sizeof one_plus_offset);
  return (one_plus_offset - 1) / sizeof(void*);
}

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_OBJECTLAYOUT_H_
