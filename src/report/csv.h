#pragma once

#include <string>
#include <vector>

#include "io/text_pieces.h"
#include "report/report.h"

namespace brenu {

struct CsvFile {
  std::string name;  // such as "plane-points.csv"
  TextSource text;   // UTF-8, commas, a heading of keys; lines end as the platform has it
};

// The tables of the report with the keys, the units and all digits of the JSON; empty ones left
// out.  Their texts are made from the report when they are asked for.
std::vector<CsvFile> CsvFiles(const Report& report);

}  // namespace brenu
