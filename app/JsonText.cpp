// SPDX-License-Identifier: Apache-2.0
#include "app/JsonText.h"

#include "app/Failure.h"
#include "app/NativeText.h"
#include "app/Nesting.h"

namespace chartbridge {

nlohmann::ordered_json ParseJson(const std::string& json, const std::string& name) {
  CheckNestingOfJson(json, name);
  try {
    return nlohmann::ordered_json::parse(json);
  } catch (const nlohmann::ordered_json::exception& error) {
    // The library's own prefix is for programmers.
    const std::string message = OnOneLine(error.what());
    const std::size_t prefix = message.find("] ");
    throw Failure(name + ": not well-formed JSON: " +
                  (prefix == std::string::npos ? message : message.substr(prefix + 2)));
  }
}

}  // namespace chartbridge
