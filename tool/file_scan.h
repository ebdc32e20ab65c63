#pragma once

#include <cstddef>

namespace brenu::tool {

enum class FileKind { kUnknown, kProject, kStation };

// What a look at the section headers of a file shows.  Line numbers count from 1; 0 means none.
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
};

FileScan ScanFile(const char* path);

}  // namespace brenu::tool
