// Text and numbers of an SVG file.
#pragma once

#include <string>
#include <string_view>

#include "report/sketch_labels.h"

namespace brenu {

// Text safe between tags and in attributes.  What is no UTF-8, and characters that XML has no place
// for, become U+FFFD.
void AppendEscaped(std::string& out, std::string_view text);

// Coordinates with one decimal at most.
void AppendUnits(std::string& out, double value);
// " name="value""
void AppendAttribute(std::string& out, std::string_view name, double value);
// "x y"
void AppendPoint(std::string& out, const PagePoint& point);

}  // namespace brenu
