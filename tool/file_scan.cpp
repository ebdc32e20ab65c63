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

SectionKind SectionOf(std::string_view header) {
  if (header == "[PARAM]" || header == "[PARA]") return SectionKind::kParameters;
  if (header == "[PT]" || header == "[STATION]") return SectionKind::kPoints;
  return SectionKind::kObservations;
}

bool LooksLikeHeader(std::string_view line) {
  const std::size_t start = line.find_first_not_of(" \t");
  return start != std::string_view::npos && line[start] == '[';
}

void SetOnce(std::size_t& place, std::size_t number) {
  if (place == 0) place = number;
}

}  // namespace

FileScan ScanFile(const char* path) {
  LineReader file(path);
  FileScan scan;
  scan.opened = file.IsOpen();
  FieldCheck fields;
  SectionKind section = SectionKind::kNone;
  std::string text;
  for (std::size_t number = 1; file.Next(text); ++number) {
    if (number == 1) scan.startsWithMark = text.starts_with("\xEF\xBB\xBF");
    const std::string_view line = WithoutReturn(text);
    const FileKind header = KindOfHeader(line);
    if (scan.kind == FileKind::kUnknown) scan.kind = header;
    if (section == SectionKind::kNone && scan.strayHeader == 0 &&
        (header == FileKind::kUnknown || header != scan.kind) && LooksLikeHeader(line)) {
      scan.strayHeader = number;
      scan.strayHeaderText = line;
    }
    if (scan.kind == FileKind::kUnknown) continue;  // a preface

    if (header == scan.kind) {
      if (header == FileKind::kStation && text.ends_with('\r')) {
        SetOnce(scan.headerWithReturn, number);
      }
      if (header == FileKind::kProject && section != SectionKind::kNone) {
        SetOnce(scan.headerInSection, number);
      }
      section = SectionOf(line);
    } else if (line.empty()) {
      section = SectionKind::kNone;
    } else if (section != SectionKind::kNone) {
      fields.Look(scan.kind, section, number, line);
    } else if (line.find_first_not_of(" \t") != std::string_view::npos) {
      SetOnce(scan.firstSkipped, number);
      ++scan.skippedCount;
    }
  }
  scan.fields = fields.Doubts();
  return scan;
}

}  // namespace brenu::tool
