// Reading text files.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace brenu {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

// Reads a text file line by line, in bounded memory whatever the file holds.
class LineReader {
 public:
  // Many times the longest line that makes sense.
  static constexpr std::size_t kLongestLine = 1 << 20;

  // The path is passed to the system as it stands.
  explicit LineReader(const char* path);
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  bool IsOpen() const { return m_file != nullptr; }
  // The next line without its line feed (a carriage return stays); false at the end of the file, or
  // when reading fails.  A last line without line feed counts, an empty rest does not.
  bool Next(std::string& line);
  // Whether the line was longer than kLongestLine and only its beginning was given.
  bool IsCut() const { return m_isCut; }
  // Whether reading failed before the end of the file; to be asked when there is no next line.
  bool HasFailed() const { return std::ferror(m_file.get()) != 0; }

 private:
  bool Refill();

  std::unique_ptr<std::FILE, CloseFile> m_file;
  char m_buffer[1 << 16];
  std::string_view m_rest;  // of the buffer, not yet handed out
  bool m_isCut = false;
};

}  // namespace brenu
