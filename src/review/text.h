// Values as text, the same under any locale.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "review/language.h"

namespace brenu {

// Fixed notation; "-" for what is no finite number, and never "-0".
std::string Fixed(double value, int decimals);

// Degrees and whole minutes of a packed angle (dd.mmss), "45 07"; "-" when it is no finite number.
std::string DegreesMinutes(double dms);

// Degrees, minutes and seconds with a decimal of an angle in radians, "45 07 05.3"; "-" when it is
// absent (negative).
std::string DegreesMinutesSeconds(double rad);

// "1:25000"; "-" for the largest number, which stands for no misclosure at all.
std::string Ratio(std::int32_t n);

// Places on the terminal of UTF-8 text; characters of the East Asian scripts take two.
std::size_t WidthOf(std::string_view text);

// Text from the user's file, safe to show: control characters become '?'.
std::string Printable(std::string_view text);

// The same in quotation marks, cut where it is long.
std::string Quoted(std::string_view text);

// "1 line", "5 lines", "5 行"; `several` is the English plural.
std::string Counted(std::size_t count, Language language, const Words& one, const char* several);

// "A - P1"
std::string Line(std::string_view station, std::string_view target);

// "the points A, B and C"; of more than ten the first ten and the number of the others.
std::string Points(std::span<const std::string_view> names, Language language);

}  // namespace brenu
