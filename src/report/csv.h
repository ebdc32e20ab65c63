#pragma once

#include <string>
#include <vector>

#include "report/report.h"

namespace brenu {

struct CsvFile {
  std::string name;  // such as "plane-points.csv"
  std::string text;  // UTF-8, commas, a heading of keys; lines end as the platform has it
};

// The tables of the report with the keys, the units and all digits of the JSON; empty ones left
// out.
std::vector<CsvFile> CsvFiles(const Report& report);

}  // namespace brenu
