// SPDX-License-Identifier: Apache-2.0
#include "bridge/Utf16Text.h"

#include <unicode/ucnv.h>

namespace chartbridge {
namespace {

// No byte of any encoding that ICU knows becomes more than four UTF-16 units.
constexpr int32_t kUnitsPerByte = 4;

}  // namespace

Utf16Text::Utf16Text(const std::string& text) : _length(0) {
  UErrorCode error = U_ZERO_ERROR;
  icu::LocalUConverterPointer converter(ucnv_open(nullptr, &error));
  const auto bytes = static_cast<int32_t>(text.size());
  const int32_t capacity = kUnitsPerByte * bytes;
  // Zeroed, because the separator fix below reads the whole capacity.
  _units.reset(new jchar[static_cast<std::size_t>(capacity)]());
  auto* units = reinterpret_cast<UChar*>(_units.get());
  _length = ucnv_toUChars(converter.getAlias(), units, capacity, text.data(), bytes, &error);
  if (U_SUCCESS(error)) ucnv_fixFileSeparator(converter.getAlias(), units, capacity);
}

}  // namespace chartbridge
