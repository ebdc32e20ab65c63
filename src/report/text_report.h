#pragma once

#include <string>

#include "io/text_pieces.h"
#include "report/report.h"
#include "review/language.h"

namespace brenu {

// The report as text in UTF-8: verdict, findings, parameters and all tables.
void WriteTextReport(const Report& report, Language language, const TextSink& sink);

// Which rules the report follows.
std::string RulesText(const Rules& rules, Language language);
// How errors are scaled, and what their confidence is.
std::string ScalingText(const NetworkReport& network, Language language);

}  // namespace brenu
