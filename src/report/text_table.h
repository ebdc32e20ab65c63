#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brenu {

// Rows of text in aligned columns.
class TextTable {
 public:
  // One letter a column: 'l' aligns its cells to the left, 'r' to the right.
  explicit TextTable(std::string_view columns) : m_columns(columns), m_widths(columns.size()) {}

  // As many cells as columns; trailing ones may be left out.
  void AddRow(std::vector<std::string> cells);

  // The columns stand two blanks apart, each row begins with two blanks and ends without any.
  std::string Text() const;

 private:
  std::string m_columns;
  std::vector<std::size_t> m_widths;
  std::vector<std::vector<std::string>> m_rows;
};

}  // namespace brenu
