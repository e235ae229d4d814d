// SPDX-License-Identifier: Apache-2.0
#include "guard/BufferMethods.h"

#include <cstring>
#include <mutex>
#include <new>
#include <utility>

namespace chartbridge {
namespace {

constexpr char kTypeName[] = "Ljava/nio/ByteBuffer;";
constexpr std::size_t kTypeLength = sizeof kTypeName - 1;

std::mutex addMutex;

// The position after the array type that starts at `at`.
const char* SkipArray(const char* at) {
  while (*at == '[') ++at;
  if (*at != 'L') return at + 1;
  const char* end = std::strchr(at, ';');
  return end == nullptr ? at + std::strlen(at) : end + 1;
}

}  // namespace

std::atomic<const BufferMethods::Node*> BufferMethods::buckets_[kBuckets];

void BufferMethods::Note(jmethodID id, const char* signature) {
  const std::string* known = Find(id);
  if (std::strstr(signature, kTypeName) == nullptr && known == nullptr) return;
  try {
    std::string parameters = ParametersOf(signature);
    const bool takes = parameters.find(kByteBuffer) != std::string::npos;
    if (!takes) parameters.clear();
    const bool isNews = known == nullptr ? takes : *known != parameters;
    if (isNews) Remember(id, std::move(parameters));
  } catch (const std::bad_alloc&) {
    // The method stays unknown, and its calls go to the JVM as they are.
  }
}

const std::string* BufferMethods::FindIn(const Node* node, jmethodID id) {
  while (node != nullptr && node->id != id) node = node->next;
  // The ID of an unloaded method may come back as one without a ByteBuffer: its newest entry is
  // then empty.
  return node == nullptr || node->parameters.empty() ? nullptr : &node->parameters;
}

std::string BufferMethods::ParametersOf(const char* signature) {
  std::string parameters;
  const char* at = signature + 1;
  while (*at != ')' && *at != '\0') {
    if (*at == '[') {
      parameters += 'L';
      at = SkipArray(at);
    } else if (*at == 'L') {
      parameters += std::strncmp(at, kTypeName, kTypeLength) == 0 ? kByteBuffer : 'L';
      at = SkipArray(at);
    } else {
      parameters += *at++;
    }
  }
  return parameters;
}

void BufferMethods::Remember(jmethodID id, std::string parameters) {
  const std::lock_guard<std::mutex> lock(addMutex);
  auto& bucket = buckets_[BucketOf(id)];
  const Node* head = bucket.load(std::memory_order_relaxed);
  bucket.store(new Node{id, std::move(parameters), head}, std::memory_order_release);
}

}  // namespace chartbridge
