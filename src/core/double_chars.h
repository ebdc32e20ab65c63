// std::from_chars and std::to_chars of doubles, which not every standard library has yet.
#pragma once

#include <charconv>
#include <cstddef>

namespace brenu {

// Room for the longest double in fixed notation with a reasonable number of decimals.
inline constexpr std::size_t kDoubleRoom = 512;

#ifndef __EMSCRIPTEN__

inline std::from_chars_result FromChars(const char* first, const char* last, double& value) {
  return std::from_chars(first, last, value);
}

// The shortest text that reads as the same double.
inline char* ShortestChars(char* first, char* last, double value) {
  return std::to_chars(first, last, value).ptr;
}
inline char* FixedChars(char* first, char* last, double value, int decimals) {
  return std::to_chars(first, last, value, std::chars_format::fixed, decimals).ptr;
}
inline char* GeneralChars(char* first, char* last, double value, int digits) {
  return std::to_chars(first, last, value, std::chars_format::general, digits).ptr;
}

#else  // in a browser, where the C library knows no locale but "C"

std::from_chars_result FromChars(const char* first, const char* last, double& value);
char* ShortestChars(char* first, char* last, double value);
char* FixedChars(char* first, char* last, double value, int decimals);
char* GeneralChars(char* first, char* last, double value, int digits);

#endif

}  // namespace brenu
