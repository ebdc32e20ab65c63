#include "report/text_table.h"

#include <algorithm>
#include <utility>

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

void TextTable::AddRow(std::vector<std::string> cells) {
  for (std::size_t i = 0; i < cells.size(); ++i) {
    m_widths[i] = std::max(m_widths[i], WidthOf(cells[i]));
  }
  m_rows.push_back(std::move(cells));
}

std::string TextTable::Text() const {
  std::string text;
  for (const auto& row : m_rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::string padding(m_widths[i] - WidthOf(row[i]), ' ');
      text += "  ";
      text += m_columns[i] == 'r' ? padding + row[i] : row[i] + padding;
    }
    text.erase(text.find_last_not_of(' ') + 1);
    text += '\n';
  }
  return text;
}

}  // namespace brenu
