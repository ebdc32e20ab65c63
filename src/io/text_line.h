#pragma once

#include <string_view>
#include <vector>

namespace brenu {

// Takes one carriage return off the end, which files with CR LF line ends leave there.
inline std::string_view WithoutReturn(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// The pieces between the separators.  An empty piece at the end of the line is dropped, but only
// one: "a,b,," has the pieces a, b and one empty one.  An empty line has none.
inline std::vector<std::string_view> Split(std::string_view line, char separator) {
  std::vector<std::string_view> pieces;
  for (std::size_t end = 0; end != std::string_view::npos;) {
    end = line.find(separator);
    pieces.push_back(line.substr(0, end));
    line.remove_prefix(end == std::string_view::npos ? line.size() : end + 1);
  }
  if (pieces.back().empty()) pieces.pop_back();
  return pieces;
}

// A piece as a C string takes it: up to its first NUL.
inline std::string_view UpToNul(std::string_view piece) {
  return piece.substr(0, piece.find('\0'));
}

}  // namespace brenu
