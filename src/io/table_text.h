#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace brenu {

// A column of a text table: numbers have that many decimals.
struct Column {
  const char* header;
  std::size_t width;
  int decimals = 0;
};

// Writes tables as text: right-aligned cells of fixed width, two blanks between them, rules above
// and below the header and after the last row, an empty line between tables.  A longer cell pushes
// the rest of its row to the right.
class TableText {
 public:
  void Begin(std::string_view keyword, std::span<const Column> columns);
  // The cells of a row, column by column.
  void Cell(std::string_view text);
  void Cell(double value);
  void Cell(std::int32_t value);
  void EndRow(std::string_view remark = {});
  void End();

  // A writer of rows of the same table, which are appended to the text.
  TableText ForRows(std::string text) const {
    TableText rows;
    rows.m_columns = m_columns;
    rows.m_text = std::move(text);
    return rows;
  }

  // What has been written; it may be taken away, and lines added to it between tables.
  std::string& Text() { return m_text; }

 private:
  const Column& NextColumn() { return m_columns[m_cell]; }
  void Rule();

  std::string m_text;
  bool m_isFirst = true;  // no table has begun
  std::span<const Column> m_columns;
  std::size_t m_cell = 0;  // the column of the next cell
};

}  // namespace brenu
