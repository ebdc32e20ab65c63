#include "io/table_text.h"

#include "core/text_number.h"

namespace brenu {

void TableText::Rule() {
  m_text.append(105, '-');
  m_text += '\n';
}

void TableText::Begin(std::string_view keyword, std::span<const Column> columns) {
  if (!m_isFirst) m_text += '\n';
  m_isFirst = false;
  m_text += keyword;
  m_text += '\n';
  Rule();
  m_columns = columns;
  for (const Column& column : columns) Cell(std::string_view(column.header));
  EndRow();
  Rule();
}

void TableText::Cell(std::string_view text) {
  if (m_cell > 0) m_text += "  ";
  const std::size_t width = NextColumn().width;
  if (text.size() < width) m_text.append(width - text.size(), ' ');
  m_text += text;
  ++m_cell;
}

void TableText::Cell(double value) {
  std::string number;
  AppendFixed(number, value, NextColumn().decimals);
  Cell(std::string_view(number));
}

void TableText::Cell(std::int32_t value) {
  std::string number;
  AppendInt(number, value);
  Cell(std::string_view(number));
}

void TableText::EndRow(std::string_view remark) {
  m_text += remark;
  m_text += '\n';
  m_cell = 0;
}

void TableText::End() { Rule(); }

}  // namespace brenu
