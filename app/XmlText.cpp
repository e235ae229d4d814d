// SPDX-License-Identifier: Apache-2.0
#include "app/XmlText.h"

#include <unicode/ucnv.h>

#include <limits>
#include <memory>
#include <regex>

#include "app/Failure.h"

namespace chartbridge {

namespace {

constexpr std::size_t kDeclarationSize = 200;
constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";

struct CloseConverter {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

bool StartsWith(const std::string& bytes, const std::string& start) {
  return bytes.compare(0, start.size(), start) == 0;
}

std::string EncodingOf(const std::string& bytes) {
  if (StartsWith(bytes, kByteOrderMark)) return "UTF-8";
  // A byte order mark, or a wide "<".
  const std::string wide[] = {"\xFF\xFE", "\xFE\xFF", std::string("<\0", 2), std::string("\0<", 2)};
  for (const std::string& start : wide) {
    const bool isLittle = start[0] == '\xFF' || start[0] == '<';
    if (StartsWith(bytes, start)) return isLittle ? "UTF-16LE" : "UTF-16BE";
  }
  static const std::regex declaration(R"(^<\?xml\s[^>]*?encoding\s*=\s*["']([A-Za-z0-9._-]+)["'])");
  const std::string head = bytes.substr(0, kDeclarationSize);
  std::smatch found;
  return std::regex_search(head, found, declaration) ? found[1].str() : "UTF-8";
}

Converter Open(const std::string& encoding) {
  UErrorCode error = U_ZERO_ERROR;
  Converter converter(ucnv_open(encoding.c_str(), &error));
  // Bytes that are no text must not be replaced in silence.
  if (U_SUCCESS(error)) {
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                        &error);
  }
  if (U_FAILURE(error)) converter.reset();
  return converter;
}

std::u16string Decode(const std::string& bytes, UConverter* converter, UErrorCode& error) {
  // No encoding makes more than two units of one byte.
  std::u16string text(2 * bytes.size() + 1, u'\0');
  const int32_t length = ucnv_toUChars(converter, text.data(), static_cast<int32_t>(text.size()),
                                       bytes.data(), static_cast<int32_t>(bytes.size()), &error);
  text.resize(U_SUCCESS(error) ? static_cast<std::size_t>(length) : 0);
  return text;
}

std::string Encode(const std::u16string& text, UErrorCode& error) {
  const Converter converter(ucnv_open("UTF-8", &error));
  std::string bytes(3 * text.size() + 1, '\0');
  const int32_t length =
      ucnv_fromUChars(converter.get(), bytes.data(), static_cast<int32_t>(bytes.size()),
                      text.data(), static_cast<int32_t>(text.size()), &error);
  bytes.resize(U_SUCCESS(error) ? static_cast<std::size_t>(length) : 0);
  return bytes;
}

}  // namespace

std::string XmlText(const std::string& bytes, const std::string& name) {
  if (bytes.size() > std::numeric_limits<int32_t>::max() / 8) {
    throw Failure(name + ": is too large for an XML document");
  }
  const std::string encoding = EncodingOf(bytes);
  const Converter converter = Open(encoding);
  if (converter == nullptr) throw Failure(name + ": the encoding " + encoding + " is not known");
  UErrorCode error = U_ZERO_ERROR;
  const std::string text = Encode(Decode(bytes, converter.get(), error), error);
  if (U_FAILURE(error)) throw Failure(name + ": is not valid " + encoding);
  return StartsWith(text, kByteOrderMark) ? text.substr(3) : text;
}

}  // namespace chartbridge
