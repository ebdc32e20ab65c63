// Reads the input as a field book, whatever its format, reduces it in every way and writes the
// jobs.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fieldbook/import.h"
#include "io/gkf_file.h"
#include "io/project_file.h"
#include "io/station_file.h"
#include "review/import_text.h"

namespace {

void Import(std::string_view text, const brenu::ImportOptions& options) {
  brenu::FieldImport import(options);
  brenu::Findings findings = import.AddControl(text).findings;
  for (int time = 0; time < 2; ++time) {  // every station set up twice
    brenu::Outcome read = import.AddBook("book", text, true);
    if (!read.ok) return;
  }
  brenu::ImportedJob job;
  brenu::ImportedJob heights;
  import.Finish(job, heights, findings);
  brenu::ImportLog(import, brenu::Language::kChinese);
  for (const brenu::ImportedJob* one : {&job, &heights}) {
    brenu::ProjectText(one->param, one->store);
    brenu::StationFileText(one->param, one->store, findings);
    brenu::GkfText(one->param, one->store);
  }
  brenu::GroupedSentences(findings, brenu::Language::kEnglish);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  brenu::ImportOptions options;
  Import(text, options);
  options.reduction = {false,
                       false,
                       false,
                       false,
                       true,
                       0.13,
                       brenu::AirCorrection{},
                       1.0,
                       1.0,
                       brenu::EllipsoidReduction{100.0},
                       brenu::PlaneReduction{0.9996, 1e5}};
  Import(text, options);
  return 0;
}
