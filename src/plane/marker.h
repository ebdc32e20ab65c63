#pragma once

namespace brenu {

// A working coordinate that is not yet computed, and the value from which on it counts as such.
inline constexpr double kNoCoordinate = 1e30;
inline constexpr double kNoCoordinateLimit = 1e29;

}  // namespace brenu
