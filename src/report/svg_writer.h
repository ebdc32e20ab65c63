// Numbers of an SVG file.
#pragma once

#include <string>
#include <string_view>

#include "report/sketch_labels.h"

namespace brenu {

// Coordinates with one decimal at most.
void AppendUnits(std::string& out, double value);
// " name="value""
void AppendAttribute(std::string& out, std::string_view name, double value);
// "x y"
void AppendPoint(std::string& out, const PagePoint& point);

}  // namespace brenu
