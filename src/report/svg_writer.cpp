#include "report/svg_writer.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "core/text_number.h"

namespace brenu {

namespace {

// The length of the character that begins the text; 0 when it is no UTF-8 or not allowed in XML.
std::size_t CharacterLength(std::string_view text) {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char first = byte(0);
  if (first < 0x80) return first >= 0x20 && first != 0x7f ? 1 : 0;
  const std::size_t length = first >= 0xf0 && first < 0xf5   ? 4
                             : first >= 0xe0 && first < 0xf0 ? 3
                             : first >= 0xc2 && first < 0xe0 ? 2
                                                             : 0;
  if (length == 0 || text.size() < length) return 0;
  std::uint32_t code = first & (0xffU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xc0U) != 0x80) return 0;
    code = code << 6U | (byte(i) & 0x3fU);
  }
  const bool isTooLong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  const bool isSurrogate = code >= 0xd800 && code < 0xe000;
  const bool isNone = code > 0x10ffff || code == 0xfffe || code == 0xffff || code < 0xa0;
  return isTooLong || isSurrogate || isNone ? 0 : length;
}

}  // namespace

void AppendEscaped(std::string& out, std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = CharacterLength(text);
    const char first = text.front();
    if (first == '&') {
      out += "&amp;";
    } else if (first == '<') {
      out += "&lt;";
    } else if (first == '>') {
      out += "&gt;";
    } else if (first == '"') {
      out += "&quot;";
    } else if (length == 0) {
      out += "\xef\xbf\xbd";
    } else {
      out += text.substr(0, length);
    }
    text.remove_prefix(length == 0 ? 1 : length);
  }
}

void AppendUnits(std::string& out, double value) {
  const double rounded = std::round(value * 10.0) / 10.0;
  if (rounded == 0.0) {
    out += '0';
    return;
  }
  AppendFixed(out, rounded, 1);
  if (out.ends_with(".0")) out.resize(out.size() - 2);
}

void AppendAttribute(std::string& out, std::string_view name, double value) {
  out += ' ';
  out += name;
  out += "=\"";
  AppendUnits(out, value);
  out += '"';
}

void AppendPoint(std::string& out, const PagePoint& point) {
  AppendUnits(out, point.x);
  out += ' ';
  AppendUnits(out, point.y);
}

}  // namespace brenu
