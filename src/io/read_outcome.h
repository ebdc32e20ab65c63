#pragma once

#include <cstddef>
#include <string>

namespace brenu {

inline constexpr char kLineTooLong[] = "the line is longer than any valid one";
inline constexpr char kReadFailed[] = "the file cannot be read to its end";

// How reading a file into a context ended.  `reason` is null on success; otherwise it says in a
// few words what is wrong with the line, or with the file when `line` is 0.
struct ReadOutcome {
  const char* reason = nullptr;
  std::size_t line = 0;  // counted from 1
  std::string text;      // of that line

  bool Ok() const { return reason == nullptr; }
};

}  // namespace brenu
