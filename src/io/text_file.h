// All access to files.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace brenu {

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

// Reads a text file line by line, in memory bounded by its longest line.
class LineReader {
 public:
  // The path is passed to the system as it stands.
  explicit LineReader(const char* path);

  bool IsOpen() const { return m_file != nullptr; }
  // The next line without its line feed (a carriage return stays); false at the end of the file.
  // A last line without line feed counts, an empty rest does not.
  bool Next(std::string& line);

 private:
  bool Refill();

  std::unique_ptr<std::FILE, CloseFile> m_file;
  char m_buffer[1 << 16];
  std::string_view m_rest;  // of the buffer, not yet handed out
};

// Creates the file or replaces its contents, with the line ends of the platform.  False when it
// could not be opened; what happens to the writing after that is not reported.
bool ReplaceFile(const char* path, std::string_view text);

}  // namespace brenu
