#pragma once

#include <string>

#include "io/text_pieces.h"
#include "report/report.h"
#include "review/language.h"

namespace brenu {

// The report for programs, as docs/json.md describes it: metres, decimal degrees, arc-seconds, null
// for what there is not, all digits.
void WriteJson(const Report& report, const TextSink& sink);

// Findings as they stand in it, an array, with sentences in that language.
std::string Json(const Findings& findings, Language language);

// The names that programs give the networks.
inline constexpr char kJsonSchema[] = "brenu-report-1";

}  // namespace brenu
