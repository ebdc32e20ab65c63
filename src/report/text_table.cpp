#include "report/text_table.h"

#include <algorithm>

#include "review/text.h"

namespace brenu {

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
