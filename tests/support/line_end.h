// The ends of lines in text files of this platform.
#pragma once

namespace brenu::testing {

#ifdef _WIN32
inline constexpr const char* kLineEnd = "\r\n";
// A line end before which a reader finds a carriage return that belongs to the line.
inline constexpr const char* kReturnAndLineEnd = "\r\r\n";
#else
inline constexpr const char* kLineEnd = "\n";
inline constexpr const char* kReturnAndLineEnd = "\r\n";
#endif

}  // namespace brenu::testing
