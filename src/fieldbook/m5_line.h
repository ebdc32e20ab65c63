// A line of M5: address, kind and information, three values, cut at the bars.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace brenu {

struct M5Value {
  std::string_view type;  // such as "Hz"; empty for none
  std::string_view text;  // value and unit

  // Metres, radians; absent for what is no number, and for a unit of another kind.
  std::optional<double> Length() const;
  std::optional<double> Angle() const;
};

struct M5Line {
  std::string_view kind;         // such as "PI1" or "TI"
  std::string_view information;  // 27 columns, if the writer got the width right
  std::array<M5Value, 3> values;
  bool isFaulty = false;  // marked so by the instrument

  // Whether it has no values.
  bool IsEmpty() const;
  // Null when the line has no value of that type.
  const M5Value* Find(std::string_view type) const;
  // The first of several types.
  const M5Value* FindOneOf(std::string_view type, std::string_view other) const;
  // The words of the information, joined by single blanks.
  std::string Words() const;
};

// Absent when this is no line of M5.
std::optional<M5Line> CutM5Line(std::string_view line);

// Columns of the information, from first to last, counted from 1.
struct M5Columns {
  std::size_t first = 1, last = 0;

  // Without the blanks around it.
  std::string_view Of(std::string_view information) const;
};

}  // namespace brenu
