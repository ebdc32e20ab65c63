#pragma once

#include <string>

#include "report/report.h"
#include "review/language.h"

namespace brenu {

// What a network is worth in a dozen lines: counts, redundancy, standard error of unit weight and
// its test, largest errors.
std::string HeightsSummary(const Report& report, Language language);
std::string PlaneSummary(const Report& report, Language language);

// The adjusted points with their standard errors, control points marked by a star.
std::string HeightsTable(const HeightsReport& report, Language language);
std::string PlaneTable(const PlaneReport& report, Language language);

// What data snooping took out of the networks, in the order in which it did.
std::string TakenOutTable(const Report& report, Language language);

}  // namespace brenu
