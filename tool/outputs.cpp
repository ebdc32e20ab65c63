#include "outputs.h"

#include <filesystem>

#include "io/replace_file.h"
#include "report/csv.h"
#include "report/dxf_sketch.h"
#include "report/html_page.h"
#include "report/json.h"
#include "report/make_sketch.h"
#include "report/svg_sketch.h"
#include "report/text_report.h"

namespace brenu::tool {

namespace {

Ending Write(const std::string& path, const TextSource& text) {
  if (ReplaceFile(Utf8Path(path.c_str()), text) == Replaced::kDone) return {};
  return {kFileOrUsage, {Error(BRENU_FILE_NOT_WRITTEN, {path})}};
}

Ending WriteCsv(const Report& report, const std::string& folder) {
  std::error_code error;
  std::filesystem::create_directories(Utf8Path(folder.c_str()), error);
  for (const CsvFile& file : CsvFiles(report)) {
    Ending written = Write(folder + '/' + file.name, file.text);
    if (written.status != kDone) return written;
  }
  return {};
}

}  // namespace

Ending WriteOutputs(const Report& report, const OutputOptions& options, Language language) {
  Ending ending;
  const auto write = [&](const std::string& path, const TextSource& text) {
    if (ending.status == kDone && !path.empty()) ending = Write(path, text);
  };
  if (options.json != "-") {
    write(options.json, [&](const TextSink& sink) { WriteJson(report, sink); });
  }
  if (ending.status == kDone && !options.csvFolder.empty()) {
    ending = WriteCsv(report, options.csvFolder);
  }
  write(options.text, [&](const TextSink& sink) { WriteTextReport(report, language, sink); });
  write(options.html, [&](const TextSink& sink) { WriteHtmlPage(report, language, sink); });
  if (ending.status != kDone || (options.svg.empty() && options.dxf.empty())) return ending;
  const ReportSketch sketch(report, language);
  write(options.svg, [&](const TextSink& sink) { sink(Svg(sketch.Drawing())); });
  write(options.dxf, [&](const TextSink& sink) { sink(Dxf(sketch.Drawing())); });
  return ending;
}

}  // namespace brenu::tool
