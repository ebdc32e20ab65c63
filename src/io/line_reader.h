#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "core/finding.h"
#include "io/file_path.h"

namespace brenu {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

// Reads text line by line from a file, in bounded memory whatever it holds, or from memory.
class LineReader {
 public:
  // Many times the longest line that makes sense.
  static constexpr std::size_t kLongestLine = 1 << 20;

  explicit LineReader(const FilePath& path);
  // The text must outlive the reader.
  explicit LineReader(std::string_view text) : m_rest(text) {}
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  // Why the file could not be opened; BRENU_NOTHING when it is open.
  Code OpenFault() const { return m_openFault; }
  // What is left of the buffer, or of the text in memory: before the first line its beginning.
  std::string_view Head() const { return m_rest; }
  // The next line without its line feed (a carriage return stays); false at the end of the file, or
  // when reading fails.  A last line without line feed counts, an empty rest does not.
  bool Next(std::string& line);
  // Whether the line was longer than kLongestLine and only its beginning was given.
  bool IsCut() const { return m_isCut; }
  // Whether reading failed before the end of the file; to be asked when there is no next line.
  bool HasFailed() const { return m_file != nullptr && std::ferror(m_file.get()) != 0; }

 private:
  bool Refill();

  std::unique_ptr<std::FILE, CloseFile> m_file;  // null for text in memory
  Code m_openFault = BRENU_NOTHING;
  std::unique_ptr<char[]> m_buffer;
  std::string_view m_rest;  // not yet handed out
  bool m_isCut = false;
};

}  // namespace brenu
