// SPDX-License-Identifier: Apache-2.0
#include "app/JavaFailure.h"

#include "app/Failure.h"
#include "app/NativeText.h"

namespace chartbridge {

namespace {

constexpr const char* kMessageLabel = "JAccessor::exceptionCheck()\n  message: ";
constexpr const char* kTypeLabel = "\n  type: ";
constexpr const char* kStackLabel = "\n  stack: ";
constexpr const char* kRecordStart = "\n time = ";
constexpr const char* kOwnPackage = "org.chartbridge.";

bool StartsWith(const std::string& text, const std::string& start) {
  return text.rfind(start, 0) == 0;
}

}  // namespace

std::optional<JavaFailure> JavaFailure::First(const std::string& records) {
  const std::size_t start = records.find(kMessageLabel);
  if (start == std::string::npos) return std::nullopt;
  const std::size_t message = start + std::string(kMessageLabel).size();
  const std::size_t typeLabel = records.find(kTypeLabel, message);
  if (typeLabel == std::string::npos) return std::nullopt;
  const std::size_t type = typeLabel + std::string(kTypeLabel).size();
  const std::size_t stackLabel = records.find(kStackLabel, type);
  if (stackLabel == std::string::npos) return std::nullopt;
  const std::size_t stack = stackLabel + std::string(kStackLabel).size();
  const std::size_t end = records.find(kRecordStart, stack);

  JavaFailure failure;
  failure._message = records.substr(message, typeLabel - message);
  failure._type = records.substr(type, stackLabel - type);
  failure._stack =
      records.substr(stack, end == std::string::npos ? std::string::npos : end - stack);
  while (!failure._stack.empty() && failure._stack.back() == '\n') failure._stack.pop_back();
  return failure;
}

void JavaFailure::ThrowIfNotStarted(const std::string& records) {
  const auto failure = First(records);
  if (failure)
    throw Failure("the Java classes cannot be used: " + failure->Reason(), failure->Stack());
}

std::string JavaFailure::Reason() const {
  if (StartsWith(_type, kOwnPackage) && !_message.empty()) return OnOneLine(_message);
  return OnOneLine(_type);
}

bool JavaFailure::PassedThrough(const std::string& code) const {
  const std::string ownFrames = _stack.substr(0, _stack.find("\nCaused by: "));
  return ownFrames.find("\n\tat " + code) != std::string::npos;
}

}  // namespace chartbridge
