// What the style of a line shows.
#pragma once

#include <array>
#include <cstdint>

#include "report/sketch.h"

namespace brenu {

enum class LineKind : std::uint8_t { kLevelled, kDirection, kDistance, kBoth };
inline constexpr std::array kLineKinds = {LineKind::kLevelled, LineKind::kDirection,
                                          LineKind::kDistance, LineKind::kBoth};
LineKind KindOf(const SketchLine& line);

// A line of the plane that was levelled, too.
bool IsLevelledToo(const SketchLine& line);

// 1 when the line was observed from a to b only, -1 from b to a only, 0 both ways.
int OneWay(const SketchLine& line);

}  // namespace brenu
