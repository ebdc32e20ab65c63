#pragma once

#include <span>
#include <string>

#include "report/report.h"
#include "review/language.h"

namespace brenu {

// How often which test value w occurs, as a picture with the normal distribution that good
// observations follow; empty without tested observations.
std::string HistogramOfW(std::span<const ObservationRow> rows, double critical, Language language);

}  // namespace brenu
