// SPDX-License-Identifier: Apache-2.0
#include "host/ModifiedUtf8.h"

namespace chartbridge {
namespace {

unsigned Byte(const std::string& text, std::size_t at) {
  return static_cast<unsigned char>(text[at]);
}

bool IsContinuation(const std::string& text, std::size_t at) {
  return (Byte(text, at) & 0xC0U) == 0x80U;
}

// Whether a three-byte form at `at` encodes a surrogate whose second byte lies in [low, low + 0xF].
bool IsSurrogateForm(const std::string& text, std::size_t at, unsigned low) {
  return at + 2 < text.size() && Byte(text, at) == 0xEDU && (Byte(text, at + 1) & 0xF0U) == low &&
         IsContinuation(text, at + 2);
}

bool IsPair(const std::string& text, std::size_t at) {
  return IsSurrogateForm(text, at, 0xA0U) && IsSurrogateForm(text, at + 3, 0xB0U);
}

unsigned LowTenBits(const std::string& text, std::size_t at) {
  return ((Byte(text, at + 1) & 0x0FU) << 6U) | (Byte(text, at + 2) & 0x3FU);
}

void AppendFourBytes(std::string& out, unsigned character) {
  out += static_cast<char>(0xF0U | (character >> 18U));
  out += static_cast<char>(0x80U | ((character >> 12U) & 0x3FU));
  out += static_cast<char>(0x80U | ((character >> 6U) & 0x3FU));
  out += static_cast<char>(0x80U | (character & 0x3FU));
}

// Where the stretch that starts at `at` and takes no references ends; `at` itself when there is
// none.
std::size_t SkipVerbatim(const std::string& xml, std::size_t at) {
  static constexpr const char* kStretches[][2] = {
      {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
  for (const auto& stretch : kStretches) {
    const std::string start = stretch[0];
    if (xml.compare(at, start.size(), start) != 0) continue;
    const std::string end = stretch[1];
    const std::size_t found = xml.find(end, at + start.size());
    return found == std::string::npos ? xml.size() : found + end.size();
  }
  return at;
}

bool IsFourBytes(const std::string& text, std::size_t at) {
  return (Byte(text, at) & 0xF8U) == 0xF0U && at + 3 < text.size() &&
         IsContinuation(text, at + 1) && IsContinuation(text, at + 2) &&
         IsContinuation(text, at + 3);
}

std::string ReferenceTo(const std::string& text, std::size_t at) {
  const unsigned character = ((Byte(text, at) & 0x07U) << 18U) |
                             ((Byte(text, at + 1) & 0x3FU) << 12U) |
                             ((Byte(text, at + 2) & 0x3FU) << 6U) | (Byte(text, at + 3) & 0x3FU);
  return "&#" + std::to_string(character) + ";";
}

}  // namespace

std::string FromModifiedUtf8(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    if (IsPair(text, at)) {
      AppendFourBytes(out, 0x10000U + (LowTenBits(text, at) << 10U) + LowTenBits(text, at + 3));
      at += 6;
    } else if (Byte(text, at) == 0xC0U && at + 1 < text.size() && Byte(text, at + 1) == 0x80U) {
      out += '\0';
      at += 2;
    } else {
      out += text[at++];
    }
  }
  return out;
}

std::string ReferenceSupplementary(const std::string& xml) {
  std::string out;
  out.reserve(xml.size());
  for (std::size_t at = 0; at < xml.size();) {
    const std::size_t verbatim = xml[at] == '<' ? SkipVerbatim(xml, at) : at;
    if (verbatim > at) {
      out.append(xml, at, verbatim - at);
      at = verbatim;
    } else if (IsFourBytes(xml, at)) {
      out += ReferenceTo(xml, at);
      at += 4;
    } else {
      out += xml[at++];
    }
  }
  return out;
}

}  // namespace chartbridge
