// SPDX-License-Identifier: Apache-2.0
#include "platform/TESKMB.h"

#include <unicode/ucnv.h>

#include <cstring>

#include "host/IcuText.h"

int TESKMBGenericToU16(std::basic_string<unsigned short>& out, const std::string& in) {
  std::u16string text;
  const bool decoded = chartbridge::DecodeText(in, nullptr, text);
  out.assign(text.begin(), text.end());
  return decoded ? 0 : 1;
}

char* TESKMBTranscodeU8(const unsigned short* text) {
  std::u16string units;
  for (; text != nullptr && *text != 0; ++text) units += static_cast<char16_t>(*text);
  const std::string bytes = chartbridge::ToUtf8(units);
  auto* copy = new char[bytes.size() + 1];
  std::memcpy(copy, bytes.c_str(), bytes.size() + 1);
  return copy;
}

void TESKMBRelease(char** text) {
  delete[] * text;
  *text = nullptr;
}

bool qUTF8mode() { return ucnv_compareNames(ucnv_getDefaultName(), "UTF-8") == 0; }
