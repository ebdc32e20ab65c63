#include "load.h"

#include <filesystem>

#include "file_scan.h"
#include "format.h"
#include "io/project_file.h"
#include "io/station_file.h"

namespace brenu::tool {

namespace {

std::string LineNumber(std::size_t number) { return "line " + std::to_string(number); }

std::optional<std::string> AccessFault(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) return "there is no such file; check its name";
  if (fs::is_directory(status)) return "this is a directory; name a file in it";
  // Files are read more than once, which a pipe does not allow.
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    return "this is no ordinary file; save the data to one first";
  }
  return std::nullopt;
}

std::optional<std::string> LayoutFault(const FileScan& scan) {
  if (!scan.opened) return "the file cannot be opened; check that you may read it";
  if (scan.startsWithMark) {
    return "the file begins with a byte-order mark, which hides its first line; save it as plain "
           "text without such a mark";
  }
  if (scan.kind == FileKind::kUnknown) {
    return "this is neither a project file (sections [PARAM], [PT], [OBS]) nor a station and "
           "observation file (sections [PARA], [STATION], [OBSER]); give a file of these kinds";
  }
  if (scan.headerWithReturn != 0) {
    return LineNumber(scan.headerWithReturn) +
           " is a section header that ends in a carriage return and is not recognised; convert "
           "the line ends of the file from CR LF to LF";
  }
  if (scan.headerInSection != 0) {
    return LineNumber(scan.headerInSection) +
           " is a section header without an empty line before it; put one there, or the section "
           "is not recognised";
  }
  return std::nullopt;
}

// The beginning of a line, as much as fits a message.
std::string Excerpt(std::string_view line) {
  constexpr std::size_t kLongest = 80;
  return Printable(line.substr(0, kLongest)) + (line.size() > kLongest ? "..." : "");
}

std::string DoubtAboutHeader(const FileScan& scan) {
  return LineNumber(scan.strayHeader) + " \"" + Excerpt(scan.strayHeaderText) +
         "\" is no section header, so that the lines below it are not read; the headers of this "
         "file are " +
         (scan.kind == FileKind::kProject ? "[PARAM], [PT] and [OBS]"
                                          : "[PARA], [STATION] and [OBSER]") +
         ", without blanks";
}

std::string DoubtAboutSkipped(const FileScan& scan) {
  const std::size_t others = scan.skippedCount - 1;
  const std::string lines =
      others == 0 ? " stands" : " and " + std::to_string(others) + " more like it stand";
  return LineNumber(scan.firstSkipped) + lines +
         " outside the sections and will not be read; an empty line ends a section, take out the "
         "one before it";
}

// Reads the file once more, with the reader that says what is wrong.
std::string ReadingFault(FileKind kind, const char* path) {
  AdjustmentContext fresh;
  const ReadOutcome outcome =
      kind == FileKind::kProject ? ReadProjectFile(fresh, path) : ReadStationFile(fresh, path);
  if (outcome.Ok()) return "there is not enough memory for the file; split the network";
  if (outcome.line == 0) {
    return std::string(outcome.reason) + "; check that you may read the file";
  }
  return LineNumber(outcome.line) + " \"" + Excerpt(outcome.text) + "\": " + outcome.reason +
         "; correct this line";
}

}  // namespace

std::optional<Fault> LoadFile(AdjustmentContext* context, const std::string& path,
                              std::vector<std::string>& warnings) {
  const auto fault = [](std::string sentence) { return Fault{kFileOrUsage, std::move(sentence)}; };
  if (const auto access = AccessFault(path)) return fault(*access);
  const char* const name = path.c_str();
  const FileScan scan = ScanFile(name);
  if (const auto layout = LayoutFault(scan)) return fault(*layout);
  const bool read = scan.kind == FileKind::kProject ? OpenBrenuAdjustFile(context, name)
                                                    : LoadKorvelAdjustFile(context, name);
  // Also before a fault, which they often explain.
  if (scan.strayHeader > 0) {
    warnings.push_back(DoubtAboutHeader(scan));
  } else if (scan.skippedCount > 0) {
    warnings.push_back(DoubtAboutSkipped(scan));
  }
  warnings.insert(warnings.end(), scan.fields.begin(), scan.fields.end());
  if (!read) return fault(ReadingFault(scan.kind, name));
  return std::nullopt;
}

}  // namespace brenu::tool
