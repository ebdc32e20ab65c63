#pragma once

#include "fieldbook/book_builder.h"
#include "fieldbook/gsi_block.h"

namespace brenu {

// The blocks of digital levels.
class GsiLevel {
 public:
  explicit GsiLevel(BookBuilder& book) : m_book(book) {}

  // A code of the form ?...n begins a line by the method n.
  static bool IsLineStart(const GsiWord& code);
  void Begin(const GsiWord& code);
  // Whether the block is one of a level; it is entered then.
  bool Enter(const GsiBlock& block);

 private:
  void EnterReading(const GsiBlock& block, const GsiWord& word);
  void EnterHeight(const GsiBlock& block, const GsiWord& height);

  BookBuilder& m_book;
  bool m_isOpen = false;     // a line has begun
  bool m_isAssumed = false;  // one whose start is missing
  bool m_isPassing = false;  // one whose method is not read
};

}  // namespace brenu
