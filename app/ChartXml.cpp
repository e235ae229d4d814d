// SPDX-License-Identifier: Apache-2.0
#include "app/ChartXml.h"

#include <strings.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <optional>
#include <pugixml.hpp>
#include <sstream>

#include "app/Failure.h"
#include "app/Nesting.h"

namespace chartbridge {

namespace {

constexpr const char* kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kByteOrderMarkSize = 3;
// The most that the Java classes read as one document.
constexpr std::size_t kLargestDocument = std::size_t{16} << 20;
// Stands for the data until the document is text. They go in last, since the XML library would
// write carriage returns as they are, and parsers take those for line ends.
constexpr const char* kPlace = "chartbridge-data";

std::size_t StartOfText(const std::string& text) {
  return text.compare(0, kByteOrderMarkSize, kByteOrderMark) == 0 ? kByteOrderMarkSize : 0;
}

/// XML 1.0 has no way to write the other control characters, nor U+FFFE and U+FFFF.
bool IsXmlCharacter(UChar32 character) {
  if (character < 0x20) return character == '\t' || character == '\n' || character == '\r';
  return character != 0xFFFE && character != 0xFFFF;
}

[[noreturn]] void Refuse(const std::string& name, const std::string& csv, std::size_t at,
                         UChar32 character) {
  const auto line =
      1 + std::count(csv.begin(), csv.begin() + static_cast<std::ptrdiff_t>(at), '\n');
  const std::string where = name + ": line " + std::to_string(line) + ": ";
  std::array<char, 16> found{};
  if (character < 0) {
    const unsigned int byte = static_cast<unsigned char>(csv[at]);
    std::snprintf(found.data(), found.size(), "0x%02X", byte);
    throw Failure(where + "the byte " + found.data() +
                  " is not UTF-8; the data must be saved as UTF-8");
  }
  std::snprintf(found.data(), found.size(), "U+%04X", static_cast<unsigned int>(character));
  throw Failure(where + "holds " + found.data() + ", which chart XML cannot carry");
}

/// The text as element content. Carriage returns are references, as parsers would take others for
/// line ends.
std::string Escaped(const std::string& csv, const std::string& name) {
  std::string escaped;
  escaped.reserve(csv.size() + csv.size() / 16);
  const auto* bytes = reinterpret_cast<const unsigned char*>(csv.data());
  const std::size_t size = csv.size();
  for (std::size_t next = StartOfText(csv); next < size;) {
    const std::size_t start = next;
    UChar32 character = 0;
    U8_NEXT(bytes, next, size, character);
    if (character < 0 || !IsXmlCharacter(character)) Refuse(name, csv, start, character);
    switch (character) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '\r':
        escaped += "&#13;";
        break;
      default:
        escaped.append(csv, start, next - start);
    }
  }
  return escaped;
}

/// The XML library reads documents by their byte order mark and by these names; it takes those of
/// other encodings for UTF-8.
bool IsKnownEncoding(const std::string& name) {
  const auto same = [&name](const char* known) { return strcasecmp(name.c_str(), known) == 0; };
  return name.empty() || same("UTF-8") || same("US-ASCII") || same("UTF-16") || same("UTF-16LE") ||
         same("UTF-16BE") || same("ISO-8859-1") || same("latin1");
}

/// Makes the declaration true of the document that is written.
void DeclareUtf8(pugi::xml_document& document, const std::string& name) {
  const pugi::xml_node first = document.first_child();
  if (first.type() != pugi::node_declaration) return;
  pugi::xml_attribute encoding = first.attribute("encoding");
  if (!IsKnownEncoding(encoding.value())) {
    throw Failure(name + ": is in " + encoding.value() +
                  "; data go only into charts in UTF-8, UTF-16 or ISO-8859-1");
  }
  if (encoding) encoding.set_value("UTF-8");
}

/// The name of an element of the chart's namespace, with the prefix that the root has.
std::string NameLike(const pugi::xml_node& root, const std::string& local) {
  const std::string name = root.name();
  const std::size_t colon = name.find(':');
  return colon == std::string::npos ? local : name.substr(0, colon + 1) + local;
}

/// The document with the element in front of its last end tag, and every other byte as it was, so
/// that what is said about its lines stays true. None when that is not to be done by bytes alone.
std::optional<std::string> Inserted(const std::string& xml, const pugi::xml_document& document,
                                    const std::string& name, const std::string& element) {
  const pugi::xml_node root = document.document_element();
  const std::string encoding = document.first_child().attribute("encoding").value();
  const bool utf8 = encoding.empty() || strcasecmp(encoding.c_str(), "UTF-8") == 0;
  const std::size_t end = xml.rfind(std::string("</") + root.name());
  if (!utf8 || end == std::string::npos || root.child(name.c_str())) return std::nullopt;
  std::string chart = xml;
  chart.insert(end, element);
  // What looked like the end tag may have been part of a comment.
  pugi::xml_document check;
  const bool sound = check.load_buffer(chart.data(), chart.size(), pugi::parse_default);
  if (!sound || check.document_element().last_child().name() != name) return std::nullopt;
  return chart;
}

/// The document written anew, with the element instead of any that was there.
std::string Rewritten(pugi::xml_document& document, const std::string& name,
                      const std::string& element, const std::string& xmlName) {
  DeclareUtf8(document, xmlName);
  pugi::xml_node root = document.document_element();
  while (root.remove_child(name.c_str())) continue;
  root.append_child(pugi::node_pcdata).set_value(kPlace);
  std::ostringstream written;
  document.save(written, "", pugi::format_raw | pugi::format_no_declaration, pugi::encoding_utf8);
  std::string chart = written.str();
  return chart.replace(chart.rfind(kPlace), std::string(kPlace).size(), element);
}

}  // namespace

bool IsChartXml(const std::string& chart) {
  // Graph language is UTF-8 without zero characters, so those are UTF-16.
  const std::string start = chart.substr(0, 4);
  if (start.find('\0') != std::string::npos || start.compare(0, 2, "\xFF\xFE") == 0 ||
      start.compare(0, 2, "\xFE\xFF") == 0) {
    return true;
  }
  const auto first = std::find_if(
      chart.begin() + static_cast<std::ptrdiff_t>(StartOfText(chart)), chart.end(),
      [](char character) { return std::isspace(static_cast<unsigned char>(character)) == 0; });
  return first != chart.end() && *first == '<';
}

std::string WithData(const std::string& xml, const std::string& xmlName, const std::string& csv,
                     const std::string& csvName) {
  if (csv.size() == StartOfText(csv)) return xml;
  const std::string data = Escaped(csv, csvName);
  pugi::xml_document document;
  const unsigned int everything = pugi::parse_full | pugi::parse_ws_pcdata;
  const auto parsed = document.load_buffer(xml.data(), xml.size(), everything);
  if (!parsed) return xml;
  CheckNestingOfXml(document, xml, xmlName);
  const std::string name = NameLike(document.document_element(), "data");
  // A line end in front, as the first record of a hand-written element has it too.
  const std::string element = "<" + name + ">\n" + data + "</" + name + ">";
  const auto inserted = parsed.encoding == pugi::encoding_utf8
                            ? Inserted(xml, document, name, element)
                            : std::nullopt;
  std::string chart = inserted ? *inserted : Rewritten(document, name, element, xmlName);
  if (chart.size() > kLargestDocument) {
    throw Failure(csvName +
                  ": is too large; a chart with its data may have 16 MiB as XML, and has " +
                  std::to_string(chart.size()) + " bytes");
  }
  return chart;
}

}  // namespace chartbridge
