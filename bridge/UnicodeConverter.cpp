// SPDX-License-Identifier: Apache-2.0
#include "bridge/UnicodeConverter.h"

#include <unicode/ucnv.h>

#include <algorithm>
#include <cstddef>

#include "platform/TESKMB.h"

namespace {

constexpr std::size_t kTerminatingUnits = 2;

// Some encodings hold a substitute where the file separator belongs; Java's file classes need the
// real one.
void FixFileSeparator(unsigned short* units, std::size_t count) {
  UErrorCode error = U_ZERO_ERROR;
  icu::LocalUConverterPointer converter(ucnv_open(nullptr, &error));
  ucnv_fixFileSeparator(converter.getAlias(), reinterpret_cast<UChar*>(units),
                        static_cast<int32_t>(count));
}

}  // namespace

UnicodeConverter::UnicodeConverter(const std::string& text) : buffer(nullptr), count(0) {
  // The transcoder replaces the content; the one unit that it starts with is what hosts'
  // transcoders have always been given.
  std::basic_string<unsigned short> converted(1, 0x0041);
  if (TESKMBGenericToU16(converted, text) != 0) return;

  const std::size_t units = converted.size();
  const std::size_t zeroed = units + kTerminatingUnits;
  buffer = new unsigned short[std::max(2 * units, zeroed)];
  count = static_cast<long>(units);
  std::fill_n(buffer, zeroed, static_cast<unsigned short>(0));
  std::copy(converted.begin(), converted.end(), buffer);
  FixFileSeparator(buffer, units);
}

UnicodeConverter::~UnicodeConverter() { delete[] buffer; }

const unsigned short* UnicodeConverter::toString() const { return buffer; }

long UnicodeConverter::length() const { return count; }
