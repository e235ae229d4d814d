// SPDX-License-Identifier: Apache-2.0
#ifndef TESTS_SUPPORT_ICUPROBE_H_
#define TESTS_SUPPORT_ICUPROBE_H_

#include <unicode/ucnv.h>

#include <string>
#include <vector>

namespace chartbridge::testing {

/// The ICU converter functions that the library calls: logged and carried out, or made to fail.
///
/// Events: "ucnv_open(null)", "ucnv_close", "ucnv_getMaxCharSize", "ucnv_toUChars(<capacity>,
/// <text>)", "ucnv_fromUChars(<capacity>, <text>)" and "ucnv_fixFileSeparator(<units>)". An event
/// says so when the converter is not the one that was opened last and is still open, when the error
/// code does not start at zero, and when the separators are fixed in other memory than the last
/// `ucnv_toUChars` wrote to.
class IcuProbe {
 public:
  static IcuProbe& Get();

  void Reset();
  /// What `ucnv_open(null)` opens from now on. ICU itself always takes UTF-8 on Linux.
  void SetDefault(const std::string& name) { _default = name; }
  /// Lets the next `ucnv_open` fail.
  void FailOpen() { _fail_open = true; }
  /// Lets the next `ucnv_toUChars` convert and then report this error.
  void FailToUChars(UErrorCode error) { _to_uchars_error = error; }

  /// The converters that are open now.
  std::size_t OpenConverters() const { return _open.size(); }

  UConverter* Open(const char* name, UErrorCode* error);
  void Close(UConverter* converter);
  int8_t MaxCharSize(const UConverter* converter);
  int32_t ToUChars(UConverter* converter, UChar* units, int32_t capacity, const char* text,
                   int32_t length, UErrorCode* error);
  int32_t FromUChars(UConverter* converter, char* text, int32_t capacity, const UChar* units,
                     int32_t length, UErrorCode* error);
  void FixFileSeparator(const UConverter* converter, UChar* units, int32_t length);

 private:
  void Record(const std::string& text, const UConverter* converter, const UErrorCode* error);

  std::string _default = "UTF-8";
  bool _fail_open = false;
  UErrorCode _to_uchars_error = U_ZERO_ERROR;
  std::vector<const UConverter*> _open;
  const UChar* _converted = nullptr;
};

}  // namespace chartbridge::testing

#endif  // TESTS_SUPPORT_ICUPROBE_H_
