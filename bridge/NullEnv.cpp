// SPDX-License-Identifier: Apache-2.0
#include "bridge/NullEnv.h"

#include <cstddef>
#include <utility>

namespace chartbridge {
namespace {

// The table starts with pointers that JNI reserves for itself; all the others are functions.
constexpr std::size_t kReservedSlots = 4;
constexpr std::size_t kFunctionSlots = sizeof(JNINativeInterface_) / sizeof(void*) - kReservedSlots;

template <typename Result, typename... Args>
Result JNICALL ReturnZero(JNIEnv*, Args...) {
  return Result();
}

template <typename Result, typename... Args>
Result JNICALL ReturnZeroVariadic(JNIEnv*, Args..., ...) {
  return Result();
}

// Becomes the zero function of whatever type the slot has, so that no function is called through a
// pointer of another type.
struct ZeroFunction {
  template <typename Result, typename... Args>
  using Plain = Result(JNICALL*)(JNIEnv*, Args...);
  template <typename Result, typename... Args>
  using Variadic = Result(JNICALL*)(JNIEnv*, Args..., ...);

  template <typename Result, typename... Args>
  constexpr operator Plain<Result, Args...>() const {
    return &ReturnZero<Result, Args...>;
  }
  template <typename Result, typename... Args>
  constexpr operator Variadic<Result, Args...>() const {
    return &ReturnZeroVariadic<Result, Args...>;
  }
};

template <std::size_t>
constexpr ZeroFunction kZeroFunction{};

template <std::size_t... Slot>
constexpr JNINativeInterface_ MakeTable(std::index_sequence<Slot...>) {
  return {nullptr, nullptr, nullptr, nullptr, kZeroFunction<Slot>...};
}

constexpr JNINativeInterface_ kTable = MakeTable(std::make_index_sequence<kFunctionSlots>());

}  // namespace

JNIEnv* NullEnv() {
  static JNIEnv env{&kTable};
  return &env;
}

}  // namespace chartbridge
