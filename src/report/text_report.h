#pragma once

#include <string>

#include "report/report.h"
#include "review/language.h"

namespace brenu {

// The report as text in UTF-8: verdict, findings, parameters and all tables.
std::string TextReport(const Report& report, Language language);

// Which rules the report follows.
std::string RulesText(const Rules& rules, Language language);
// How errors are scaled, and what their confidence is.
std::string ScalingText(const NetworkReport& network, Language language);

}  // namespace brenu
