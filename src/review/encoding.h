#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brenu {

// The length of the well-formed UTF-8 sequence that begins the bytes; 0 when none does.
std::size_t SequenceLength(std::string_view bytes);

// Whether the bytes are well-formed UTF-8 without surrogates.
bool IsUtf8(std::string_view bytes);

// A name from a file, which may be in UTF-8 or code page 936 (GBK), as UTF-8.  What is neither
// comes out with question marks in place of its odd bytes.
std::string ToUtf8(std::string_view bytes);

}  // namespace brenu
