// Values as text, the same under any locale.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace brenu::tool {

// Fixed notation; "-" for what is no finite number, and never "-0".
std::string Fixed(double value, int decimals);

// Degrees and whole minutes of a packed angle (dd.mmss), "45 07"; "-" when it is no finite number.
std::string DegreesMinutes(double dms);

// Text from the user's file, safe to show: control characters become '?'.
std::string Printable(std::string_view text);

// "A - P1"
std::string Line(std::string_view station, std::string_view target);

// "A, B and C"; of more than ten the first ten and the number of the others.
std::string ListOfNames(std::span<const std::string_view> names);

}  // namespace brenu::tool
