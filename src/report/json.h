#pragma once

#include <string>

#include "report/report.h"

namespace brenu {

// The report for programs, as docs/json.md describes it: metres, decimal degrees, arc-seconds, null
// for what there is not, all digits.
std::string Json(const Report& report);

// The names that programs give the networks.
inline constexpr char kJsonSchema[] = "brenu-report-1";

}  // namespace brenu
