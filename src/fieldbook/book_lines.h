#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace brenu {

// Walks the lines of a text, whatever ended them: LF, CR LF, CR alone or several CR, of which a run
// counts as one end.  A byte order mark, and NUL and STX in front of a line, which serial transfers
// leave there, are taken off.
class BookLines {
 public:
  // The text must outlive it.
  explicit BookLines(std::string_view text);

  bool Next();
  std::string_view Text() const { return m_line; }
  // Counted from 1.
  std::int32_t Number() const { return m_number; }
  // Ends of serial transfers (ETX, with a checksum behind it) and of files of old systems.
  bool IsTransferEnd() const;
  bool IsBlank() const { return m_line.find_first_not_of(" \t") == m_line.npos; }

 private:
  std::string_view m_rest, m_line;
  std::int32_t m_number = 0;
};

// Without the blanks around it.
std::string_view Trimmed(std::string_view text);

// The fixed field that starts at this column, counted from 1, or what is left of it; untrimmed.
inline std::string_view Columns(std::string_view line, std::size_t start, std::size_t length) {
  return start > line.size() ? std::string_view{} : line.substr(start - 1, length);
}

}  // namespace brenu
