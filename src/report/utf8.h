// Characters of text that comes from anywhere.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brenu {

inline constexpr std::uint32_t kReplacementCharacter = 0xfffd;

struct Utf8Character {
  std::uint32_t code;
  std::size_t length;  // in bytes
};

// The character that begins a text that is not empty.  A byte that begins none in UTF-8, and
// characters that control or mean nothing, give U+FFFD.
Utf8Character FirstCharacter(std::string_view text);

}  // namespace brenu
