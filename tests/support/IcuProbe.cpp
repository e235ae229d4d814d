// SPDX-License-Identifier: Apache-2.0
#include "tests/support/IcuProbe.h"

#include <algorithm>
#include <cstddef>

#include "tests/support/Describe.h"
#include "tests/support/EventLog.h"
#include "tests/support/KitScope.h"

// ICU puts its version into the names of its functions; the build passes the suffix on ("_72").
extern "C" {
UConverter* RealOpen(const char* name, UErrorCode* error) __asm__("__real_ucnv_open" ICU_SUFFIX);
void RealClose(UConverter* converter) __asm__("__real_ucnv_close" ICU_SUFFIX);
int8_t RealMaxCharSize(const UConverter* converter) __asm__(
    "__real_ucnv_getMaxCharSize" ICU_SUFFIX);
int32_t RealToUChars(UConverter* converter, UChar* units, int32_t capacity, const char* text,
                     int32_t length, UErrorCode* error) __asm__("__real_ucnv_toUChars" ICU_SUFFIX);
int32_t RealFromUChars(UConverter* converter, char* text, int32_t capacity, const UChar* units,
                       int32_t length,
                       UErrorCode* error) __asm__("__real_ucnv_fromUChars" ICU_SUFFIX);
void RealFixFileSeparator(const UConverter* converter, UChar* units,
                          int32_t length) __asm__("__real_ucnv_fixFileSeparator" ICU_SUFFIX);

UConverter* WrapOpen(const char* name, UErrorCode* error) __asm__("__wrap_ucnv_open" ICU_SUFFIX);
void WrapClose(UConverter* converter) __asm__("__wrap_ucnv_close" ICU_SUFFIX);
int8_t WrapMaxCharSize(const UConverter* converter) __asm__(
    "__wrap_ucnv_getMaxCharSize" ICU_SUFFIX);
int32_t WrapToUChars(UConverter* converter, UChar* units, int32_t capacity, const char* text,
                     int32_t length, UErrorCode* error) __asm__("__wrap_ucnv_toUChars" ICU_SUFFIX);
int32_t WrapFromUChars(UConverter* converter, char* text, int32_t capacity, const UChar* units,
                       int32_t length,
                       UErrorCode* error) __asm__("__wrap_ucnv_fromUChars" ICU_SUFFIX);
void WrapFixFileSeparator(const UConverter* converter, UChar* units,
                          int32_t length) __asm__("__wrap_ucnv_fixFileSeparator" ICU_SUFFIX);

using chartbridge::testing::IcuProbe;

UConverter* WrapOpen(const char* name, UErrorCode* error) {
  return IcuProbe::Get().Open(name, error);
}
void WrapClose(UConverter* converter) { IcuProbe::Get().Close(converter); }
int8_t WrapMaxCharSize(const UConverter* converter) {
  return IcuProbe::Get().MaxCharSize(converter);
}
int32_t WrapToUChars(UConverter* converter, UChar* units, int32_t capacity, const char* text,
                     int32_t length, UErrorCode* error) {
  return IcuProbe::Get().ToUChars(converter, units, capacity, text, length, error);
}
int32_t WrapFromUChars(UConverter* converter, char* text, int32_t capacity, const UChar* units,
                       int32_t length, UErrorCode* error) {
  return IcuProbe::Get().FromUChars(converter, text, capacity, units, length, error);
}
void WrapFixFileSeparator(const UConverter* converter, UChar* units, int32_t length) {
  IcuProbe::Get().FixFileSeparator(converter, units, length);
}
}

namespace chartbridge::testing {

IcuProbe& IcuProbe::Get() {
  static thread_local IcuProbe probe;
  return probe;
}

void IcuProbe::Reset() {
  const KitScope kit;
  *this = IcuProbe();
}

void IcuProbe::Record(const std::string& text, const UConverter* converter,
                      const UErrorCode* error) {
  std::string note;
  if (converter == nullptr) {
    note += " without a converter";
  } else if (_open.empty() || _open.back() != converter) {
    note += " with another converter";
  }
  if (error != nullptr && *error != U_ZERO_ERROR)
    note += std::string(" after ") + u_errorName(*error);
  EventLog::Get().Record(Source::kIcu, text + note);
}

UConverter* IcuProbe::Open(const char* name, UErrorCode* error) {
  const KitScope kit;
  std::string event = "ucnv_open(" + std::string(name == nullptr ? "null" : name) + ")";
  if (*error != U_ZERO_ERROR) event += std::string(" after ") + u_errorName(*error);
  EventLog::Get().Record(Source::kIcu, event);
  if (_fail_open) {
    _fail_open = false;
    *error = U_FILE_ACCESS_ERROR;
    return nullptr;
  }
  UConverter* converter = RealOpen(name == nullptr ? _default.c_str() : name, error);
  if (converter != nullptr) _open.push_back(converter);
  return converter;
}

void IcuProbe::Close(UConverter* converter) {
  const KitScope kit;
  Record("ucnv_close", converter, nullptr);
  _open.erase(std::remove(_open.begin(), _open.end(), converter), _open.end());
  RealClose(converter);
}

int8_t IcuProbe::MaxCharSize(const UConverter* converter) {
  const KitScope kit;
  Record("ucnv_getMaxCharSize", converter, nullptr);
  return RealMaxCharSize(converter);
}

int32_t IcuProbe::ToUChars(UConverter* converter, UChar* units, int32_t capacity, const char* text,
                           int32_t length, UErrorCode* error) {
  const KitScope kit;
  const std::string bytes(text, static_cast<std::size_t>(length));
  Record("ucnv_toUChars(" + std::to_string(capacity) + ", " + Quoted(bytes) + ")", converter,
         error);
  _converted = units;
  const int32_t count = RealToUChars(converter, units, capacity, text, length, error);
  if (_to_uchars_error != U_ZERO_ERROR) *error = _to_uchars_error;
  _to_uchars_error = U_ZERO_ERROR;
  return count;
}

int32_t IcuProbe::FromUChars(UConverter* converter, char* text, int32_t capacity,
                             const UChar* units, int32_t length, UErrorCode* error) {
  const KitScope kit;
  const std::string source =
      units == nullptr ? "null"
                       : Quoted(Utf8(std::u16string(units, static_cast<std::size_t>(length))));
  Record("ucnv_fromUChars(" + std::to_string(capacity) + ", " + source + ")", converter, error);
  return RealFromUChars(converter, text, capacity, units, length, error);
}

void IcuProbe::FixFileSeparator(const UConverter* converter, UChar* units, int32_t length) {
  const KitScope kit;
  const bool same = units == _converted || _converted == nullptr;
  Record("ucnv_fixFileSeparator(" + std::to_string(length) + ")" + (same ? "" : " elsewhere"),
         converter, nullptr);
  _converted = nullptr;
  RealFixFileSeparator(converter, units, length);
}

}  // namespace chartbridge::testing
