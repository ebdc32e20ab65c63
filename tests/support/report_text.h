// A report of the library as text.
#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "brenu/brenu.h"

namespace brenu::testing {

struct ReportText {
  bool complete;     // what the export gave back
  std::string text;  // empty when there is no file
};

// Exports into a file of the running test and reads it back, line ends as '\n'.
inline ReportText Export(bool (*write)(AdjustmentContext*, const char*),
                         AdjustmentContext* context) {
  const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
  const std::string path =
      ::testing::TempDir() + test->test_suite_name() + "_" + test->name() + ".txt";
  ReportText report{write(context, path.c_str()), {}};
  {
    std::ifstream file(path);
    report.text.assign(std::istreambuf_iterator<char>(file), {});
  }
  std::remove(path.c_str());
  return report;
}

// The lines of the section that a keyword or a label begins, up to the next empty line.
inline std::string Section(const std::string& text, const std::string& keyword) {
  const std::size_t start = text.find(keyword + "\n");
  if (start == std::string::npos) return {};
  const std::size_t end = text.find("\n\n", start);
  return text.substr(start, end == std::string::npos ? end : end + 1 - start);
}

}  // namespace brenu::testing
