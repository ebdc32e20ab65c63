#include "report/utf8.h"

#include "review/encoding.h"

namespace brenu {

Utf8Character FirstCharacter(std::string_view text) {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const std::size_t length = SequenceLength(text);
  if (length == 0) return {kReplacementCharacter, 1};
  std::uint32_t code = length == 1 ? byte(0) : byte(0) & (0xffU >> (length + 1));
  for (std::size_t i = 1; i < length; ++i) code = code << 6U | (byte(i) & 0x3fU);
  const bool isControl = code < 0x20 || (code >= 0x7f && code < 0xa0);
  if (isControl || (code & 0xfffeU) == 0xfffe) return {kReplacementCharacter, length};
  return {code, length};
}

}  // namespace brenu
