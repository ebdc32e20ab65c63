#pragma once

#include "fieldbook/book_builder.h"
#include "fieldbook/m5_line.h"

namespace brenu {

// The lines of digital levels: TO, KD1 and KN1.
class M5Level {
 public:
  explicit M5Level(BookBuilder& book) : m_book(book) {}

  // Whether the line is one of a level; it is entered then.
  bool Enter(const M5Line& line);

 private:
  void EnterText(const M5Line& line);
  void EnterPoint(const M5Line& line);
  void EnterReading(const M5Line& line, Staff staff, const M5Value& value);
  void EnterHeight(const M5Line& line, const M5Value& height);

  BookBuilder& m_book;
  bool m_isOpen = false;  // a line has begun
};

}  // namespace brenu
