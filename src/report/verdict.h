#pragma once

#include "report/report.h"

namespace brenu {

// Whether the job may be gone on with, from the rest of its report.
Verdict Judge(const Report& report);

}  // namespace brenu
