// The coordinate systems of a gama-local file.
#pragma once

#include <optional>
#include <string_view>

namespace brenu {

// Where x and y of the file point, made into X and Y with azimuths clockwise from X.
struct GkfAxes {
  bool isSwapped = false;  // X = y, Y = x, where x and y of the file are a right-handed system
  double bearing = 0.0;    // of the X axis, clockwise from north, radians
};

// Two letters, such as "ne": x to the north, y to the east.  Absent for any other text.
std::optional<GkfAxes> GkfAxesOf(std::string_view name);

// Gon, or degrees when written d-m-s; radians, absent for what is neither.
std::optional<double> GkfAngle(std::string_view text);

}  // namespace brenu
