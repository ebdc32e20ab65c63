#pragma once

#include <optional>
#include <utility>

#include "plane/coordinates.h"

namespace brenu {

struct Circle {
  Position centre;
  double radius;  // metres
};

// The two intersections of two circles, the first on the right of the line from the first to the
// second centre (X north, Y east), the second on its left.
// Empty for the same centre, for circles that touch (distance of the points below 1e-11 from the
// line) and for circles that do not meet.
std::optional<std::pair<Position, Position>> Intersect(const Circle& first, const Circle& second);

// Twice the signed area of the triangle a, b, s: positive when s lies to the right of the line from
// a to b (X north, Y east).
double SideOf(const Position& a, const Position& b, const Position& s);

// The sine of the angle at which two circles meet: 1 for a right angle, 0 when they do not meet.
double IntersectionQuality(const Circle& first, const Circle& second);

}  // namespace brenu
