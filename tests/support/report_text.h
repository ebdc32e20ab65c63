// A report of the library as text.
#pragma once

#include <string>

#include "brenu/brenu.h"
#include "support/temp_file.h"

namespace brenu::testing {

struct ReportText {
  bool complete;  // what the export gave back
  std::string text;
};

inline ReportText Export(bool (*write)(AdjustmentContext*, const char*),
                         AdjustmentContext* context) {
  const TempFile file;
  return {write(context, file.Path()), file.Text()};
}

// The lines of the section that a keyword or a label begins, up to the next empty line.
inline std::string Section(const std::string& text, const std::string& keyword) {
  const std::size_t start = text.find(keyword + "\n");
  if (start == std::string::npos) return {};
  const std::size_t end = text.find("\n\n", start);
  return text.substr(start, end == std::string::npos ? end : end + 1 - start);
}

}  // namespace brenu::testing
