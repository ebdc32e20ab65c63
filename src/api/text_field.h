// Text in the records of the interface.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace brenu {

// Up to the NUL or the end of the field.
template <std::size_t N>
std::string_view TextIn(const char (&field)[N]) {
  return {field, static_cast<std::size_t>(std::find(field, field + N, '\0') - field)};
}

template <std::size_t N>
void Put(std::string_view text, char (&field)[N]) {
  std::memset(field, 0, N);
  text.copy(field, N - 1);
}

}  // namespace brenu
