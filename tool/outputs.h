#pragma once

#include <string>
#include <vector>

#include "command.h"
#include "report/report.h"
#include "review/language.h"

namespace brenu::tool {

// Where the renderings of a report go; empty for nowhere.
struct OutputOptions {
  std::string json;  // "-" for the standard output
  std::string csvFolder;
  std::string text;
  std::string html, svg, dxf;

  bool AreWanted() const {
    return !(json.empty() && csvFolder.empty() && text.empty() && html.empty() && svg.empty() &&
             dxf.empty());
  }
  // The files among them.
  std::vector<std::string> Files() const { return {json == "-" ? "" : json, text, html, svg, dxf}; }
};

// Writes all that is wanted; stops at the first file that cannot be written.
Ending WriteOutputs(const Report& report, const OutputOptions& options, Language language);

}  // namespace brenu::tool
