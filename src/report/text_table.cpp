#include "report/text_table.h"

#include <algorithm>

namespace brenu {

namespace {

// Places on the terminal of UTF-8 text: continuation bytes take none, and the characters of the
// East Asian scripts, which begin with these bytes, take two.
std::size_t WidthOf(std::string_view text) {
  std::size_t width = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) == 0x80) continue;
    width += byte >= 0xE3 && byte <= 0xED ? 2 : 1;
  }
  return width;
}

}  // namespace

void AlignedColumns::MakeRoomFor(const Cells& cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    m_widths[i] = std::max(m_widths[i], WidthOf(cells[i]));
  }
}

void AlignedColumns::MakeRoomFor(const AlignedColumns& other) {
  for (std::size_t i = 0; i < m_widths.size(); ++i) {
    m_widths[i] = std::max(m_widths[i], other.m_widths[i]);
  }
}

void AlignedColumns::AppendRow(std::string& text, const Cells& cells) const {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::size_t padding = m_widths[i] - WidthOf(cells[i]);
    text += "  ";
    if (m_letters[i] == 'r') text.append(padding, ' ');
    text += cells[i];
    if (m_letters[i] != 'r') text.append(padding, ' ');
  }
  text.erase(text.find_last_not_of(' ') + 1);
  text += '\n';
}

}  // namespace brenu
