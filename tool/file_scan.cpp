#include "file_scan.h"

#include <string>
#include <string_view>

#include "io/text_file.h"
#include "io/text_line.h"

namespace brenu::tool {

namespace {

FileKind KindOfHeader(std::string_view line) {
  if (line == "[PARAM]" || line == "[PT]" || line == "[OBS]") return FileKind::kProject;
  if (line == "[PARA]" || line == "[STATION]" || line == "[OBSER]") return FileKind::kStation;
  return FileKind::kUnknown;
}

void SetOnce(std::size_t& place, std::size_t number) {
  if (place == 0) place = number;
}

}  // namespace

FileScan ScanFile(const char* path) {
  LineReader file(path);
  FileScan scan;
  scan.opened = file.IsOpen();
  bool inSection = false;
  std::string text;
  for (std::size_t number = 1; file.Next(text); ++number) {
    if (number == 1) scan.startsWithMark = text.starts_with("\xEF\xBB\xBF");
    const std::string_view line = WithoutReturn(text);
    const FileKind header = KindOfHeader(line);
    if (scan.kind == FileKind::kUnknown) scan.kind = header;
    if (scan.kind == FileKind::kUnknown) continue;  // a preface

    if (header == scan.kind) {
      if (header == FileKind::kStation && text.ends_with('\r')) {
        SetOnce(scan.headerWithReturn, number);
      }
      if (header == FileKind::kProject && inSection) SetOnce(scan.headerInSection, number);
      inSection = true;
    } else if (line.empty()) {
      inSection = false;
    } else if (!inSection && line.find_first_not_of(" \t") != std::string_view::npos) {
      SetOnce(scan.firstSkipped, number);
      ++scan.skippedCount;
    }
  }
  return scan;
}

}  // namespace brenu::tool
