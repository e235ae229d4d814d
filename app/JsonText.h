// SPDX-License-Identifier: Apache-2.0
#ifndef APP_JSONTEXT_H_
#define APP_JSONTEXT_H_

#include <nlohmann/json.hpp>
#include <string>

namespace chartbridge {

/// Parses a JSON document; its members stay in order.
///
/// Throws `Failure` with the line, the column and the reason when it is not well-formed, or nested
/// more than `kMostLevels` deep.
///
/// @param json the text, in UTF-8
/// @param name what to call the document in messages
nlohmann::ordered_json ParseJson(const std::string& json, const std::string& name);

}  // namespace chartbridge

#endif  // APP_JSONTEXT_H_
