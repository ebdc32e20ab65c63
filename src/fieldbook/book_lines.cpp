#include "fieldbook/book_lines.h"

#include <algorithm>

namespace brenu {

BookLines::BookLines(std::string_view text) : m_rest(text) {
  if (m_rest.starts_with("\xEF\xBB\xBF")) m_rest.remove_prefix(3);
}

bool BookLines::Next() {
  if (m_rest.empty()) return false;
  const std::size_t end = std::min(m_rest.find_first_of("\r\n"), m_rest.size());
  m_line = m_rest.substr(0, end);
  m_rest.remove_prefix(end);
  m_rest.remove_prefix(std::min(m_rest.find_first_not_of('\r'), m_rest.size()));
  if (m_rest.starts_with('\n')) m_rest.remove_prefix(1);
  constexpr std::string_view kInFront("\0\x02", 2);
  m_line.remove_prefix(std::min(m_line.find_first_not_of(kInFront), m_line.size()));
  ++m_number;
  return true;
}

bool BookLines::IsTransferEnd() const {
  return m_line.starts_with('\x03') || m_line.starts_with('\x1A');
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks(" \t\0", 3);
  const std::size_t start = text.find_first_not_of(kBlanks);
  if (start == text.npos) return {};
  return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

}  // namespace brenu
