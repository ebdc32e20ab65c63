#pragma once

#include <algorithm>
#include <string_view>

#include "core/records.h"

namespace brenu {

// Stands between the names of a route.
inline constexpr char kRouteJoint[] = " - ";

// Enters a route text into a cleared record, cut to the field.
inline void SetRoute(CloseError& record, std::string_view route) {
  std::copy_n(route.data(), std::min(route.size(), sizeof(record.route) - 1), record.route);
}

}  // namespace brenu
