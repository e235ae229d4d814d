// SPDX-License-Identifier: Apache-2.0
#ifndef GUARD_BUFFERMETHODS_H_
#define GUARD_BUFFERMETHODS_H_

#include <jni.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string>

namespace chartbridge {

/// The Java methods that take a `java.nio.ByteBuffer`, remembered when native code looks them up.
///
/// Only calls of these methods pay for looking at their arguments. Safe on any thread; looking up
/// takes no lock.
class BufferMethods {
 public:
  /// The letter that stands for a parameter of type `java.nio.ByteBuffer`, among the JNI letters of
  /// the primitive types and 'L' for every other reference.
  static constexpr char kByteBuffer = '@';

  /// Notes what a method ID stands for. A method without such a parameter is not remembered.
  static void Note(jmethodID id, const char* signature);

  /// The parameters of a remembered method, one letter each; null for every other method.
  static const std::string* Find(jmethodID id) {
    const Node* node = buckets_[BucketOf(id)].load(std::memory_order_acquire);
    return __builtin_expect(node == nullptr, 1) ? nullptr : FindIn(node, id);
  }

 private:
  // Nodes are never freed: a reader may hold one, and there are as many as there are such methods
  // in the program.
  struct Node {
    jmethodID id;
    std::string parameters;
    const Node* next;
  };

  static constexpr std::size_t kBuckets = 1024;

  static std::size_t BucketOf(jmethodID id) {
    const auto bits = reinterpret_cast<std::uintptr_t>(id);
    return (bits ^ (bits >> 3) ^ (bits >> 13)) % kBuckets;
  }
  static const std::string* FindIn(const Node* node, jmethodID id);
  static std::string ParametersOf(const char* signature);
  static void Remember(jmethodID id, std::string parameters);

  static std::atomic<const Node*> buckets_[kBuckets];
};

}  // namespace chartbridge

#endif  // GUARD_BUFFERMETHODS_H_
