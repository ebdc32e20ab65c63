#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/finding.h"

namespace brenu {

// A known point.  What is not known is absent.
struct ListedPoint {
  std::int32_t line = 0;
  std::string name;
  std::optional<double> x, y, h;
};

// Reads lines of fields between commas, semicolons or tabs:
//   name,X,Y     name,X,Y,H     name,type,X,Y     name,type,X,Y,H
// with the types 00, 01, 10 and 11 of project files, which say what counts; an empty field is
// absent.  A first line of words is a heading; empty lines and such that begin with # are skipped.
// Fails at the first line that is none of these.
Outcome ReadPointList(std::string_view text, std::vector<ListedPoint>& points);

}  // namespace brenu
