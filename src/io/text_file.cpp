#include "io/text_file.h"

namespace brenu {

LineReader::LineReader(const char* path) : m_file(std::fopen(path, "r")) {
  // Some systems open a folder as if it were a file; only the first read tells.
  if (IsOpen() && !Refill() && HasFailed()) m_file.reset();
}

bool LineReader::Refill() {
  const std::size_t count = std::fread(m_buffer, 1, sizeof(m_buffer), m_file.get());
  m_rest = {m_buffer, count};
  return count > 0;
}

bool LineReader::Next(std::string& line) {
  line.clear();
  m_isCut = false;
  if (!IsOpen() || (m_rest.empty() && !Refill())) return false;
  do {
    const std::size_t end = m_rest.find('\n');
    const std::string_view piece = m_rest.substr(0, end);
    const std::size_t room = kLongestLine - line.size();
    line += piece.substr(0, room);
    m_isCut = m_isCut || piece.size() > room;
    if (end != std::string_view::npos) {
      m_rest.remove_prefix(end + 1);
      return true;
    }
  } while (Refill());
  m_rest = {};
  return !HasFailed();
}

}  // namespace brenu
