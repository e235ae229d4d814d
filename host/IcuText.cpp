// SPDX-License-Identifier: Apache-2.0
#include "host/IcuText.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

#include <limits>
#include <memory>

namespace chartbridge {
namespace {

struct CloseConverter {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

// ICU counts in 32 bits, and one unit may need several bytes.
constexpr std::size_t kMaxLength = std::numeric_limits<int32_t>::max() / 16;

Converter Open(const char* encoding) {
  UErrorCode error = U_ZERO_ERROR;
  Converter converter(ucnv_open(encoding, &error));
  if (U_FAILURE(error)) converter.reset();
  return converter;
}

// Surrogates that stand alone are no text; ICU would escape or replace them differently in each
// encoding.
std::u16string WithoutLoneSurrogates(std::u16string text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!U16_IS_SURROGATE(text[i])) continue;
    const bool pair =
        U16_IS_SURROGATE_LEAD(text[i]) && i + 1 < text.size() && U16_IS_TRAIL(text[i + 1]);
    if (pair) {
      ++i;
    } else {
      text[i] = u'\uFFFD';
    }
  }
  return text;
}

}  // namespace

bool DecodeText(const std::string& bytes, const char* encoding, std::u16string& text) {
  const Converter converter = Open(encoding);
  if (converter == nullptr || bytes.size() > kMaxLength) return false;
  // No encoding makes more than two units of one byte.
  text.resize(2 * bytes.size() + 1);
  UErrorCode error = U_ZERO_ERROR;
  const int32_t length =
      ucnv_toUChars(converter.get(), text.data(), static_cast<int32_t>(text.size()), bytes.data(),
                    static_cast<int32_t>(bytes.size()), &error);
  text.resize(U_SUCCESS(error) ? static_cast<std::size_t>(length) : 0);
  return U_SUCCESS(error);
}

bool EncodeXml(const std::u16string& text, const char* encoding, std::string& bytes) {
  const Converter converter = Open(encoding);
  if (converter == nullptr || text.size() > kMaxLength) return false;
  UErrorCode error = U_ZERO_ERROR;
  ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_ESCAPE, UCNV_ESCAPE_XML_DEC, nullptr,
                        nullptr, &error);
  if (U_FAILURE(error)) return false;
  const std::u16string clean = WithoutLoneSurrogates(text);
  const auto length = static_cast<int32_t>(clean.size());
  const int32_t needed = ucnv_fromUChars(converter.get(), nullptr, 0, clean.data(), length, &error);
  if (U_FAILURE(error) && error != U_BUFFER_OVERFLOW_ERROR) return false;
  bytes.resize(static_cast<std::size_t>(needed));
  error = U_ZERO_ERROR;
  ucnv_fromUChars(converter.get(), bytes.data(), needed, clean.data(), length, &error);
  return U_SUCCESS(error);
}

std::string ToUtf8(const std::u16string& text) {
  std::string bytes;
  EncodeXml(text, "UTF-8", bytes);
  return bytes;
}

}  // namespace chartbridge
