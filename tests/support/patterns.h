// Patterns of unknowns in many shapes, for tests of the sparse matrix.
#pragma once

#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "core/unknown_pattern.h"

namespace brenu::testing {

inline UnknownPattern GridPattern(std::int32_t rows, std::int32_t columns, std::int32_t perPoint) {
  UnknownPattern pattern = PointPattern(rows * columns, perPoint);
  for (std::int32_t i = 0; i < rows * columns; ++i) {
    if ((i + 1) % columns != 0) pattern.Connect(i, i + 1);
    if (i + columns < rows * columns) pattern.Connect(i + columns, i);
  }
  return pattern;
}

// Points connected at random; they have two unknowns on average, some of them none, in no order.
inline UnknownPattern RandomPattern(std::int32_t points, std::int32_t connections,
                                    std::uint32_t seed) {
  std::minstd_rand random(seed);
  const auto pick = [&] { return static_cast<std::int32_t>(random()) % points; };
  UnknownPattern pattern;
  pattern.groupCount = points;
  for (std::int32_t k = 0; k < 2 * points; ++k) pattern.groupOfUnknown.push_back(pick());
  for (std::int32_t k = 0; k < connections; ++k) pattern.Connect(pick(), pick());
  return pattern;
}

// "path", "ring", "star", "tree", "dense" or "lonely" points with one unknown each.
inline UnknownPattern PatternOfShape(const std::string& shape, std::int32_t points) {
  UnknownPattern pattern = PointPattern(points, 1);
  for (std::int32_t i = 1; i < points; ++i) {
    if (shape == "path" || shape == "ring") pattern.Connect(i - 1, i);
    if (shape == "star") pattern.Connect(points / 2, i == points / 2 ? 0 : i);
    if (shape == "tree") pattern.Connect((i - 1) / 2, i);
    for (std::int32_t k = 0; shape == "dense" && k < i; ++k) pattern.Connect(i, k);
  }
  if (shape == "ring") pattern.Connect(0, points - 1);
  return pattern;
}

inline std::vector<std::pair<std::string, UnknownPattern>> PatternsOfManyShapes() {
  std::vector<std::pair<std::string, UnknownPattern>> patterns;
  patterns.emplace_back("nothing", UnknownPattern{});
  patterns.emplace_back("one unknown", PointPattern(1, 1));
  patterns.emplace_back("one point", PointPattern(1, 3));
  for (const char* shape : {"path", "ring", "star", "tree", "dense", "lonely"}) {
    patterns.emplace_back(shape, PatternOfShape(shape, 7));
    patterns.emplace_back(std::string("large ") + shape, PatternOfShape(shape, 300));
  }
  patterns.emplace_back("grid", GridPattern(17, 19, 3));
  patterns.emplace_back("strip", GridPattern(3, 150, 2));
  for (std::uint32_t seed = 1; seed <= 8; ++seed) {
    const auto points = static_cast<std::int32_t>(20 + 40 * seed);
    patterns.emplace_back("thin random " + std::to_string(seed),
                          RandomPattern(points, points, seed));
    patterns.emplace_back("thick random " + std::to_string(seed),
                          RandomPattern(points, 4 * points, seed));
  }
  return patterns;
}

}  // namespace brenu::testing
