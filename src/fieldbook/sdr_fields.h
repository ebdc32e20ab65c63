// The fixed fields of an SDR record.
#pragma once

#include <cstddef>
#include <string_view>

#include "fieldbook/book_lines.h"

namespace brenu {

// Type in columns 1 and 2, origin in 3 and 4.
inline std::string_view SdrType(std::string_view record) { return Columns(record, 1, 2); }
inline std::string_view SdrOrigin(std::string_view record) { return Columns(record, 3, 2); }

// The widths of names and numbers, which the header of a file tells.
struct SdrLayout {
  std::size_t name = 16, number = 16;
};
inline constexpr SdrLayout kWideSdr = {16, 16};
inline constexpr SdrLayout kNarrowSdr = {4, 10};

// Takes the fields behind type and origin one after the other, without blanks around them.
class SdrFields {
 public:
  SdrFields(std::string_view record, SdrLayout layout) : m_record(record), m_layout(layout) {}

  std::string_view Name() { return Take(m_layout.name); }
  std::string_view Number() { return Take(m_layout.number); }
  std::string_view Take(std::size_t width) {
    const std::size_t start = m_column;
    m_column += width;
    return Trimmed(Columns(m_record, start, width));
  }

 private:
  std::string_view m_record;
  SdrLayout m_layout;
  std::size_t m_column = 5;
};

// What the header and the instrument record say of the values behind them.
struct SdrUnits {
  SdrLayout layout = kWideSdr;
  double angle = 0.0;   // radians
  double length = 0.0;  // metres
  bool isEastFirst = false;
  bool isCounterClockwise = false;
  bool isFromHorizon = false;  // vertical angles
  bool isComplete = false;     // whether the header has the flags
};

SdrUnits UnitsOfSdrHeader(std::string_view header);
// Whether an instrument record says that vertical angles count from the horizon.
bool CountsFromHorizon(std::string_view instrument);

}  // namespace brenu
