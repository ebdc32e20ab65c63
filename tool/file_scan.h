#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "field_check.h"

namespace brenu::tool {

// What a look at the sections of a file shows.  Line numbers count from 1; 0 means none.
//
// The readers skip what stands outside their sections without a word, so that data can get lost
// over a small slip in the file; the scan finds the slips.
struct FileScan {
  bool opened = false;
  FileKind kind = FileKind::kUnknown;  // by the first header of either kind
  bool startsWithMark = false;         // a UTF-8 byte-order mark hides a header on the first line
  std::size_t headerWithReturn = 0;    // station file: first header that its return hides
  std::size_t headerInSection = 0;     // project file: first header without empty line before it
  std::size_t firstSkipped = 0;        // first line with text outside the sections
  std::size_t skippedCount = 0;
  std::size_t strayHeader = 0;      // first line outside the sections that looks like a header
  std::string strayHeaderText;      // of that line
  std::vector<std::string> fields;  // doubts about single fields
};

FileScan ScanFile(const char* path);

}  // namespace brenu::tool
