// The C interface of what goes beyond the 61 functions; only the survey library has it.
#include "brenu/survey.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "api/barrier.h"
#include "api/text_field.h"
#include "core/parallel.h"
#include "io/replace_file.h"
#include "review/data_check.h"
#include "review/field_import.h"
#include "review/import_text.h"
#include "review/load.h"
#include "review/network_view.h"
#include "review/sentence.h"

namespace {

using Context = AdjustmentContext;
using brenu::Finding;
using brenu::Guarded;
using brenu::Outcome;
using brenu::Put;
using brenu::Reported;
using brenu::TextIn;

static_assert(sizeof(brenu_finding) == 24 && sizeof(brenu_figures) == 24);
static_assert(sizeof(brenu_pair) == 288 && sizeof(brenu_import_options) == 48);

// Copies as much as there is room for; the length of all, -1 when there is no place for it.
std::int32_t CopyOut(std::string_view source, char* text, std::int32_t room) {
  if (room < 0 || (room > 0 && text == nullptr)) return -1;
  if (room > 0) text[source.copy(text, static_cast<std::size_t>(room) - 1)] = '\0';
  return static_cast<std::int32_t>(source.size());
}

template <typename Value>
const Value* At(const std::vector<Value>& values, std::int32_t number) {
  const bool has = number >= 0 && static_cast<std::size_t>(number) < values.size();
  return has ? &values[static_cast<std::size_t>(number)] : nullptr;
}

// What is asked of a finding; -1 when there is no such finding.
template <typename Ask>
std::int32_t Asked(Context* context, std::int32_t index, Ask ask) {
  return Guarded(
      -1,
      [=] {
        const Finding* finding = At(context->findings, index);
        return finding == nullptr ? -1 : ask(*finding);
      },
      context);
}

// Reads what `source` makes of the argument of the host; the kind of file.
template <typename Source>
std::int32_t Read(Context* context, const char* given, Source source) {
  std::int32_t kind = BRENU_NO_FILE;
  const auto read = [&] {
    brenu::LineReader file(source());
    brenu::ReadResult result = brenu::Load(*context, file);
    const bool isProject = result.kind == brenu::FileKind::kProject;
    if (result.outcome.ok) kind = isProject ? BRENU_PROJECT_FILE : BRENU_STATION_FILE;
    return std::move(result.outcome);
  };
  Reported(context, read, given);
  return kind;
}

brenu::ImportOptions OptionsOf(const brenu_import_options* given) {
  brenu::ImportOptions options;
  if (given == nullptr) return options;
  brenu::ReductionOptions& steps = options.reduction;
  const auto has = [given](int step) { return (given->steps & step) != 0; };
  steps.averageFaces = !has(BRENU_FACE_ONE_ONLY);
  steps.averageSets = !has(BRENU_FIRST_SET_ONLY);
  steps.joinSetups = !has(BRENU_FIRST_SETUP_ONLY);
  steps.centre = !has(BRENU_NO_CENTRING);
  steps.trigonometricHeights = has(BRENU_TRIG_HEIGHTS);
  if (has(BRENU_REFRACTION)) steps.refraction = given->refraction;
  steps.constant = given->constant;
  steps.scale = given->scale;
  if (has(BRENU_ELLIPSOID)) steps.ellipsoid = brenu::EllipsoidReduction{given->height};
  if (given->projectionScale != 0.0 && given->projectionScale != 1.0) {
    steps.plane = brenu::PlaneReduction{given->projectionScale};
  }
  return options;
}

brenu::FieldFiles FilesOf(std::string_view paths, const char* control) {
  brenu::FieldFiles files;
  while (!paths.empty()) {
    const std::string_view path = paths.substr(0, paths.find('\n'));
    if (!path.empty()) files.books.emplace_back(path);
    paths.remove_prefix(std::min(path.size() + 1, paths.size()));
  }
  if (control != nullptr) files.control = control;
  return files;
}

void Enter(brenu::ImportedJob& job, Context* context) {
  if (context == nullptr) return;
  context->param = job.param;
  context->store = std::move(job.store);
}

Outcome Import(Context* context, Context* heights, const brenu::FieldFiles& files,
               const brenu_import_options* given, const char* log) {
  const brenu::ImportOptions options = OptionsOf(given);
  brenu::FieldImport import(options);
  brenu::ImportedJob job;
  brenu::ImportedJob heightJob;
  std::vector<brenu::FileFindings> found;
  Outcome outcome;
  outcome.ok = brenu::ImportFiles(files, log != nullptr, import, job, heightJob, found);
  std::size_t book = 0;
  for (brenu::FileFindings& about : found) {
    const bool isBook = book < import.Books().size() && import.Books()[book].name == about.file;
    if (isBook) {
      const char* format = NameOf(import.Books()[book++].book.format);
      outcome.findings.push_back(brenu::Note(BRENU_FIELD_BOOK_READ, {about.file, format}));
    }
    for (Finding& finding : about.findings) outcome.findings.push_back(std::move(finding));
  }
  if (!outcome.ok) return outcome;
  if (log != nullptr &&
      brenu::ReplaceFile(brenu::Utf8Path(log), ImportLog(import, brenu::Language::kEnglish)) !=
          brenu::Replaced::kDone) {
    return brenu::Error(BRENU_FILE_NOT_WRITTEN, {log});
  }
  Enter(job, context);
  Enter(heightJob, heights);
  return outcome;
}

}  // namespace

extern "C" {

const char* brenu_version(void) { return BRENU_VERSION; }

void brenu_set_threads(int32_t count) {
  brenu::SetThreadCount(count > 0 ? static_cast<std::size_t>(count) : 0);
}

// ---- Findings ----

int32_t brenu_finding_count(Context* context) {
  return context == nullptr ? 0 : static_cast<int32_t>(context->findings.size());
}

bool brenu_get_finding(Context* context, int32_t index, brenu_finding* out) {
  const auto copy = [=](const Finding& f) {
    if (out == nullptr) return -1;
    *out = {static_cast<int32_t>(f.code),         static_cast<int32_t>(f.severity),      f.line,
            static_cast<int32_t>(f.names.size()), static_cast<int32_t>(f.values.size()), 0};
    return 0;
  };
  return Asked(context, index, copy) == 0;
}

int32_t brenu_finding_text(Context* context, int32_t index, char* text, int32_t room) {
  return Asked(context, index,
               [=](const Finding& f) { return CopyOut(brenu::SentenceOf(f), text, room); });
}

int32_t brenu_finding_name(Context* context, int32_t index, int32_t number, char* text,
                           int32_t room) {
  return Asked(context, index, [=](const Finding& f) {
    const std::string* name = At(f.names, number);
    return name == nullptr ? -1 : CopyOut(*name, text, room);
  });
}

int32_t brenu_finding_excerpt(Context* context, int32_t index, char* text, int32_t room) {
  return Asked(context, index, [=](const Finding& f) {
    return f.excerpt.empty() ? -1 : CopyOut(f.excerpt, text, room);
  });
}

bool brenu_finding_value(Context* context, int32_t index, int32_t number, double* out) {
  const auto copy = [=](const Finding& f) {
    const double* value = At(f.values, number);
    if (value == nullptr || out == nullptr) return -1;
    *out = *value;
    return 0;
  };
  return Asked(context, index, copy) == 0;
}

const char* brenu_code_id(int32_t code) { return brenu::IdOf(code); }

// ---- Files ----

int32_t brenu_read_file(Context* context, const char* path) {
  return Read(context, path, [=] { return brenu::Utf8Path(path); });
}

int32_t brenu_read_memory(Context* context, const char* data, size_t size) {
  return Read(context, size == 0 ? "" : data, [=] { return std::string_view(data, size); });
}

bool brenu_import(Context* context, Context* heights, const char* paths, const char* control,
                  const brenu_import_options* options, const char* log) {
  return Reported(
      context, [=] { return Import(context, heights, FilesOf(paths, control), options, log); },
      paths);
}

bool brenu_check_data(Context* context) {
  return Reported(context, [=] {
    Outcome outcome;
    outcome.findings = brenu::CheckData(*context);
    for (Finding& f : brenu::CheckWeights(*context)) outcome.findings.push_back(std::move(f));
    outcome.ok = !Has(outcome.findings, brenu::Severity::kError);
    return outcome;
  });
}

// ---- Figures ----

bool brenu_get_figures(Context* context, int32_t network, brenu_figures* out) {
  return Guarded(
      false,
      [=] {
        const bool heights = network == BRENU_HEIGHTS && context->adjusted.heights;
        if (!heights && !(network == BRENU_PLANE && context->adjusted.plane)) return false;
        const brenu::NetworkFigures figures =
            brenu::FiguresOf(*context, heights ? brenu::Network::kHeights : brenu::Network::kPlane);
        *out = {figures.controlPoints, figures.newPoints, figures.redundancy, figures.leftOut,
                figures.sigma0};
        return true;
      },
      context, out);
}

// ---- Walking ----

bool brenu_next_point(Context* context, int32_t* index) {
  return Guarded(
      false,
      [=] {
        const auto& points = context->store.Points();
        const auto next = points.upper_bound(*index);
        if (next == points.end()) return false;
        *index = next->first;
        return true;
      },
      context, index);
}

bool brenu_next_observation(Context* context, brenu_pair* pair) {
  return Guarded(
      false,
      [=] {
        const auto& stations = context->store.Observations();
        auto station = stations.lower_bound(TextIn(pair->station));
        if (station == stations.end()) return false;
        auto target = station->first == TextIn(pair->station)
                          ? station->second.upper_bound(TextIn(pair->target))
                          : station->second.begin();
        while (target == station->second.end()) {
          if (++station == stations.end()) return false;
          target = station->second.begin();
        }
        Put(station->first, pair->station);
        Put(target->first, pair->target);
        pair->observation = target->second;
        return true;
      },
      context, pair);
}

}  // extern "C"
