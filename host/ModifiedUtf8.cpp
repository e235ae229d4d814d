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

unsigned PairedCharacter(const std::string& text, std::size_t at) {
  return 0x10000U + (LowTenBits(text, at) << 10U) + LowTenBits(text, at + 3);
}

bool IsFourBytes(const std::string& text, std::size_t at) {
  return (Byte(text, at) & 0xF8U) == 0xF0U && at + 3 < text.size() &&
         IsContinuation(text, at + 1) && IsContinuation(text, at + 2) &&
         IsContinuation(text, at + 3);
}

unsigned FourByteCharacter(const std::string& text, std::size_t at) {
  return ((Byte(text, at) & 0x07U) << 18U) | ((Byte(text, at + 1) & 0x3FU) << 12U) |
         ((Byte(text, at + 2) & 0x3FU) << 6U) | (Byte(text, at + 3) & 0x3FU);
}

char Continuation(unsigned character, unsigned shift) {
  return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
}

}  // namespace

std::string FromModifiedUtf8(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    if (IsPair(text, at)) {
      AppendUtf8(out, PairedCharacter(text, at));
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

std::string ReferenceSupplementary(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    if (IsFourBytes(text, at)) {
      out += "&#" + std::to_string(FourByteCharacter(text, at)) + ";";
      at += 4;
    } else if (IsPair(text, at)) {
      out += "&#" + std::to_string(PairedCharacter(text, at)) + ";";
      at += 6;
    } else {
      out += text[at++];
    }
  }
  return out;
}

void AppendUtf8(std::string& out, unsigned character) {
  if (character < 0x80U) {
    out += static_cast<char>(character);
    return;
  }
  if (character < 0x800U) {
    out += static_cast<char>(0xC0U | (character >> 6U));
  } else if (character < 0x10000U) {
    out += static_cast<char>(0xE0U | (character >> 12U));
    out += Continuation(character, 6);
  } else {
    out += static_cast<char>(0xF0U | (character >> 18U));
    out += Continuation(character, 12);
    out += Continuation(character, 6);
  }
  out += Continuation(character, 0);
}

}  // namespace chartbridge
