#include "report/utf8.h"

namespace brenu {

Utf8Character FirstCharacter(std::string_view text) {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const std::uint32_t first = byte(0);
  if (first < 0x80) return {first >= 0x20 && first != 0x7f ? first : kReplacementCharacter, 1};
  const std::size_t length = first >= 0xf0 ? 4 : first >= 0xe0 ? 3 : 2;
  if (first < 0xc2 || first > 0xf4 || text.size() < length) return {kReplacementCharacter, 1};
  std::uint32_t code = first & (0xffU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xc0U) != 0x80) return {kReplacementCharacter, 1};
    code = code << 6U | (byte(i) & 0x3fU);
  }
  const bool isTooLong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
  const bool isSurrogate = code >= 0xd800 && code < 0xe000;
  if (isTooLong || isSurrogate || code > 0x10ffff) return {kReplacementCharacter, 1};
  if (code < 0xa0 || (code & 0xfffeU) == 0xfffe) return {kReplacementCharacter, length};
  return {code, length};
}

}  // namespace brenu
