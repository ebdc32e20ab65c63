#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/parallel.h"
#include "io/text_pieces.h"
#include "review/language.h"

namespace brenu {

// As many texts as a table has columns; trailing ones may be left out.
using Cells = std::vector<std::string>;

// Columns as wide as their widest cell, two blanks apart; rows begin with two blanks and end
// without any.
class AlignedColumns {
 public:
  // One letter a column: 'l' aligns its cells to the left, 'r' to the right.
  explicit AlignedColumns(std::string_view letters)
      : m_letters(letters), m_widths(letters.size()) {}

  void MakeRoomFor(const Cells& cells);
  void MakeRoomFor(const AlignedColumns& other);
  void AppendRow(std::string& text, const Cells& cells) const;

 private:
  std::string m_letters;
  std::vector<std::size_t> m_widths;
};

// The first row of a table.
inline Cells HeadingsIn(Language language, std::initializer_list<Words> headings) {
  Cells cells;
  for (const Words& words : headings) cells.emplace_back(words.In(language));
  return cells;
}

// Rows of text in aligned columns.
class TextTable {
 public:
  explicit TextTable(std::string_view letters) : m_columns(letters) {}

  void AddRow(Cells cells) {
    m_columns.MakeRoomFor(cells);
    m_rows.push_back(std::move(cells));
  }
  std::string Text() const {
    std::string text;
    for (const Cells& row : m_rows) m_columns.AppendRow(text, row);
    return text;
  }

 private:
  AlignedColumns m_columns;
  std::vector<Cells> m_rows;
};

// Passes a table of `count` rows on that are too many to keep: makeRow(k) is asked twice for each,
// by several threads.
template <typename MakeRow>
void PassTable(std::string_view letters, std::size_t count, const TextSink& sink,
               MakeRow&& makeRow) {
  constexpr std::size_t kRows = 4096;  // by one thread
  std::vector<AlignedColumns> parts((count + kRows - 1) / kRows, AlignedColumns(letters));
  ForEachPart(count, kRows, [&](std::size_t begin, std::size_t end) {
    for (std::size_t k = begin; k < end; ++k) parts[begin / kRows].MakeRoomFor(makeRow(k));
  });
  AlignedColumns columns(letters);
  for (const AlignedColumns& part : parts) columns.MakeRoomFor(part);
  PassRows(count, sink, [&](std::string& text, std::size_t begin, std::size_t end) {
    for (std::size_t k = begin; k < end; ++k) columns.AppendRow(text, makeRow(k));
  });
}

}  // namespace brenu
