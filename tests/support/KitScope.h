// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_KITSCOPE_H_
#define TESTS_SUPPORT_KITSCOPE_H_

namespace chartbridge::testing {

/// Marks code of the test kit itself, whose allocations are neither logged nor made to fail.
class KitScope {
 public:
  KitScope() { ++depth; }
  ~KitScope() { --depth; }

  KitScope(const KitScope&) = delete;
  KitScope& operator=(const KitScope&) = delete;

  static bool Active() { return depth > 0; }

 private:
  friend class OutsideKit;
  static inline thread_local int depth = 0;
};

/// Suspends every `KitScope` of the thread: for test callbacks that stand in for foreign code.
class OutsideKit {
 public:
  OutsideKit() : _depth(KitScope::depth) { KitScope::depth = 0; }
  ~OutsideKit() { KitScope::depth = _depth; }

  OutsideKit(const OutsideKit&) = delete;
  OutsideKit& operator=(const OutsideKit&) = delete;

 private:
  int _depth;
};

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_KITSCOPE_H_
