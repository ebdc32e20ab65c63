// What the page asks of the library: functions over text, called from JavaScript in a worker.  Text
// comes and goes as UTF-8; what is returned lives until the next call.
#include <emscripten.h>

#include <exception>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "fieldbook/book_format.h"
#include "import_options.h"
#include "report/comparison.h"
#include "report/csv.h"
#include "report/dxf_sketch.h"
#include "report/html_page.h"
#include "report/html_tables.h"
#include "report/json.h"
#include "report/make_report.h"
#include "report/make_sketch.h"
#include "report/markup.h"
#include "report/svg_sketch.h"
#include "report/text_report.h"
#include "report/traverse_text.h"
#include "report/verdict_text.h"
#include "review/computation.h"
#include "review/data_check.h"
#include "review/encoding.h"
#include "review/field_import.h"
#include "review/load.h"
#include "review/misfits.h"
#include "review/network_view.h"
#include "review/rules_check.h"

namespace {

using namespace brenu;
using Object = nlohmann::ordered_json;

// The page hears what the engine is at: Module.tell(stage, round).
EM_JS(void, Tell, (const char* stage, int round), {
  if (Module['tell']) Module['tell'](UTF8ToString(stage), round);
});

std::optional<AdjustmentContext> g_context;
Findings g_read;                              // what reading and checking the data found
std::vector<Misfit> g_twoWay, g_approximate;  // the foremost ones before the last adjustment
std::optional<Report> g_report, g_kept;
Language g_language = Language::kEnglish;
std::string g_answer;

const char* Answer(std::string text) {
  g_answer = std::move(text);
  return g_answer.c_str();
}

// The answer of `make`; that memory is exhausted is one of the findings.
template <typename Make>
const char* Guarded(Make make) {
  try {
    return Answer(make());
  } catch (const std::exception&) {
    g_context.reset();
    g_report.reset();
    return Answer(R"({"ok":false,"findings":)" + Json({Error(BRENU_OUT_OF_MEMORY)}, g_language) +
                  '}');
  }
}

void Append(Findings& all, Findings more) {
  for (Finding& finding : more) all.push_back(std::move(finding));
}

std::string Dump(const Object& object) {
  return object.dump(-1, ' ', false, Object::error_handler_t::replace);
}

// null for what is absent.
Object Value(double value, double absent) {
  return value == absent ? Object(nullptr) : Object(value);
}

Object ParametersOf(const AdjParam& p) {
  return {{"MO", p.MO},
          {"MS", p.MS},
          {"MR", p.MR},
          {"Lvl1", p.Lvl1},
          {"Lvl2", p.Lvl2},
          {"Lvl1Limit", p.Lvl1Limit},
          {"Lvl2Limit", p.Lvl2Limit},
          {"Limit", p.Limit},
          {"format", p.format}};
}

Object PointsOf(const Store& store) {
  Object rows = Object::array();
  for (const auto& [index, p] : store.Points()) {
    rows.push_back({ToUtf8(NameOf(p)), p.type, Value(p.x, 0.0), Value(p.y, 0.0), Value(p.h, 0.0)});
  }
  return rows;
}

Object ObservationRows(const AdjustmentContext& context) {
  Object rows = Object::array();
  for (const Observation& o : ObservationsOf(context)) {
    const ObsData& d = o.data;
    rows.push_back({ToUtf8(o.station), ToUtf8(o.target), Value(d.direction, kAbsentAngle),
                    Value(d.distance, kAbsentLength), Value(d.heightDiff, kAbsentLength),
                    Value(d.azimuth, kAbsentAngle)});
  }
  return rows;
}

// The object with an array of findings more.
std::string With(std::string object, const char* key, const Findings& findings) {
  object.back() = ',';
  return object + '"' + key + "\":" + Json(findings, g_language) + '}';
}

const char* NameOf(FileKind kind) {
  constexpr const char* const kNames[] = {"unknown", "project", "station"};
  return kNames[static_cast<int>(kind)];
}

void Enter(ImportedJob& job) {
  g_context->param = job.param;
  g_context->store = std::move(job.store);
}

// A field book becomes one job or, where it has both, one of the plane and one of the heights;
// `part` says which is wanted.
struct Imported {
  Outcome outcome;
  bool hasBoth = false;
};

Imported Import(std::string_view text, const Object& reading) {
  const ImportOptions options = ImportOptionsOf(reading.value("steps", Object::object()));
  const std::string control = reading.value("control", "");
  const bool wantsHeights = reading.value("part", "") == "heights";
  FieldImport import(options);
  Imported result;
  if (!control.empty()) result.outcome = AddControlText(control, import);
  if (result.outcome.ok) result.outcome += import.AddBook("", text, false);
  if (!result.outcome.ok) return result;
  Append(result.outcome.findings, import.Books().back().book.findings);
  ImportedJob job, heights;
  import.Finish(job, heights, result.outcome.findings);
  result.hasBoth = !heights.store.Points().empty();
  Enter(result.hasBoth && wantsHeights ? heights : job);
  return result;
}

std::string Open(std::string_view text, const Object& options) {
  g_report.reset();
  g_context.emplace();
  Tell("reading", 0);
  LineReader file(text);
  ReadResult read = Load(*g_context, file);
  bool hasBoth = false;
  const char* kind = NameOf(read.kind);
  if (read.kind == FileKind::kUnknown && FormatOfBook(text) != BookFormat::kUnknown) {
    g_context.emplace();
    kind = "fieldbook";
    Imported imported = Import(text, options);
    read.outcome = std::move(imported.outcome);
    hasBoth = imported.hasBoth;
  }
  g_read = std::move(read.outcome.findings);
  if (read.outcome.ok) Append(g_read, CheckData(*g_context));
  return With(Dump({{"ok", read.outcome.ok}, {"kind", kind}, {"hasBoth", hasBoth}}), "findings",
              g_read);
}

std::string Rows() {
  return Dump({{"parameters", ParametersOf(g_context->param)},
               {"points", PointsOf(g_context->store)},
               {"observations", ObservationRows(*g_context)}});
}

struct Options {
  std::string file;
  Rules rules;
  std::optional<OutlierTest> snooping;
  bool isThorough = true;  // with closure errors and the comparison of the rules
};

Options OptionsOf(const Object& json) {
  Options options;
  options.file = json.value("file", "");
  if (json.value("rules", "textbook") == "textbook") options.rules.set = RuleSet::kTextbook;
  options.rules.levelSigma = json.value("levelSigma", 0.001);
  const double alpha = json.value("alpha", 0.0);
  if (alpha > 0.0) options.snooping = OutlierTest(alpha);
  options.isThorough = json.value("thorough", true);
  return options;
}

std::vector<Misfit> ForemostOf(const std::vector<Misfit>& misfits) {
  const std::span<const Misfit> foremost = Foremost(misfits);
  return {foremost.begin(), foremost.end()};
}

// Closure errors, and how the observations fit; the adjustment will say what is the matter.
void Close(AdjustmentContext& context) {
  if (IsUnoriented(context)) return;
  (void)PlaceAndClose(context);
  g_twoWay = ForemostOf(TwoWayDifferences(context));
  g_approximate = ForemostOf(ObservedMinusComputed(context));
  if (IsOrdinary(context) && !context.rules.AreTextbook()) (void)ComputeClosures(context);
}

Outcome Run(const Options& options) {
  AdjustmentContext& context = *g_context;
  context.rules = options.rules;
  g_twoWay.clear();
  g_approximate.clear();
  if (options.isThorough) {
    Tell("closures", 0);
    Close(context);
  }
  Tell("adjusting", 0);
  Outcome outcome = Compute(context, options.snooping, [](int round) { Tell("snooping", round); });
  if (!outcome.ok || !context.rules.AreTextbook() || IsUnoriented(context)) return outcome;
  if (options.isThorough) {
    Tell("comparing", 0);
    Append(outcome.findings, CompareRules(context));
  }
  Append(outcome.findings, CheckLevelSigma(context));
  return outcome;
}

// Observations that the verdict doubts, as many as a person looks through.
Object SuspectsOf(const Report& report) {
  constexpr std::size_t kMost = 1000;
  Object rows = Object::array();
  const auto add = [&](const NetworkReport& network) {
    for (const ObservationRow& row : network.observations) {
      if (!(row.exceeds || row.removed) || rows.size() == kMost) continue;
      rows.push_back({row.from, row.to, KeyOf(row.kind), row.w});
    }
  };
  if (report.plane) add(*report.plane);
  if (report.heights) add(*report.heights);
  return rows;
}

std::string Adjust(const Object& json) {
  const Options options = OptionsOf(json);
  Outcome outcome;
  outcome.findings = CheckWeights(*g_context);
  outcome.ok = outcome.findings.empty();
  if (outcome.ok) outcome = Run(options);
  Findings all = g_read;
  Append(all, std::move(outcome.findings));
  Tell("tables", 0);
  g_report = MakeReport(*g_context, options.file, all);
  if (!outcome.ok) g_report->verdict.passed = false;
  const Verdict& verdict = g_report->verdict;
  const std::string answer = Dump({{"ok", outcome.ok},
                                   {"passed", verdict.passed},
                                   {"headline", WordsOf(verdict, g_language).headline},
                                   {"suspects", SuspectsOf(*g_report)}});
  return With(With(With(answer, "reasons", verdict.reasons), "remarks", verdict.remarks),
              "findings", all);
}

std::string CsvText(std::string_view name) {
  for (const CsvFile& file : CsvFiles(*g_report)) {
    if (file.name == name) return WholeText(file.text);
  }
  return "";
}

std::string CsvNames() {
  Object names = Object::array();
  for (const CsvFile& file : CsvFiles(*g_report)) names.push_back(file.name);
  return Dump(names);
}

// Traverses without orientation are a text of their own.
std::string Traverses() {
  std::string html = "<pre class=\"traverses\">";
  AppendEscaped(html, TraverseSummary(*g_context, g_language) + '\n' +
                          CoordinateTable(*g_context, g_language) +
                          TraverseTables(*g_context, g_language));
  return html + "</pre>\n";
}

std::string Misfits() {
  const ReportSketch sketch(*g_report, g_language);
  return WholeText([&](const TextSink& sink) {
    HtmlTables tables(sink, sketch, g_language);
    tables.Add("there-and-back", {"There and back, the largest", "往返测较差，最大者"}, g_twoWay);
    tables.Add("observed-minus-computed",
               {"Observed minus computed from approximate values, the largest",
                "观测值与近似值计算值之差，最大者"},
               g_approximate);
  });
}

std::string Output(std::string_view kind) {
  if (!g_report) return "";
  const auto whole = [](const auto& write) {
    return WholeText([&](const TextSink& sink) { write(*g_report, g_language, sink); });
  };
  if (kind == "body") {
    const std::string body = whole(WriteHtmlBody);
    return IsUnoriented(*g_context) ? body + Traverses() : body;
  }
  if (kind == "misfits") return Misfits();
  if (kind == "html") return whole(WriteHtmlPage);
  if (kind == "text") return whole(WriteTextReport);
  if (kind == "json") return WholeText([](const TextSink& sink) { WriteJson(*g_report, sink); });
  if (kind == "svg") return Svg(ReportSketch(*g_report, g_language).Drawing());
  if (kind == "dxf") return Dxf(ReportSketch(*g_report, g_language).Drawing());
  if (kind == "csv") return CsvNames();
  return CsvText(kind);
}

std::string Difference() {
  if (!g_report || !g_kept) return "";
  const Comparison difference = Compare(*g_kept, *g_report);
  const ReportSketch sketch(*g_report, g_language);
  const std::string html = WholeText([&](const TextSink& sink) {
    HtmlTables tables(sink, sketch, g_language);
    tables.Add("plane-differences", {"Coordinates, B minus A", "坐标差，B 减 A"}, difference.plane);
    tables.Add("heights-differences", {"Heights, B minus A", "高程差，B 减 A"}, difference.heights);
  });
  return Dump({{"html", html}, {"onlyA", difference.onlyFirst}, {"onlyB", difference.onlySecond}});
}

}  // namespace

extern "C" {

// The language of all sentences from now on, "en" or "zh".
EMSCRIPTEN_KEEPALIVE void engine_language(const char* language) {
  g_language = std::string_view(language) == "zh" ? Language::kChinese : Language::kEnglish;
}

// Reads and checks a file: {ok, kind, hasBoth, findings}.  Options of field books: {control, text
// of known points; part, "heights" for those where the book `hasBoth`; steps of the reduction by
// the names of ReductionOptions, those of `air` and `assumed` by themselves, and stationCodes}.
EMSCRIPTEN_KEEPALIVE const char* engine_open(const char* text, std::size_t size,
                                             const char* options) {
  return Guarded([=] { return Open({text, size}, Object::parse(options)); });
}

// What it holds: {parameters, points: [name, type, X, Y, H], observations: [station, target,
// direction, distance, height difference, azimuth]}, null for what is absent.
EMSCRIPTEN_KEEPALIVE const char* engine_rows() {
  return Guarded([] { return g_context ? Rows() : std::string("null"); });
}

// Adjusts it by {file, rules, levelSigma, alpha, thorough}: {ok, passed, headline,
// suspects: [station, target, kind, w], reasons, remarks, findings}, the last three as findings.
EMSCRIPTEN_KEEPALIVE const char* engine_adjust(const char* options) {
  return Guarded([=] { return g_context ? Adjust(Object::parse(options)) : std::string("null"); });
}

// A rendering of the last adjustment: "body" or "html" (the page), "json", "text", "svg", "dxf";
// "misfits" are tables of how the observations fitted before it, there and back and by approximate
// values;
// "csv" gives the names of the tables, each of which is a rendering, too.  Empty for none.
EMSCRIPTEN_KEEPALIVE const char* engine_output(const char* kind) {
  return Guarded([=] { return Output(kind); });
}

// Keeps the last adjustment as the first of a comparison.
EMSCRIPTEN_KEEPALIVE void engine_keep() { g_kept = g_report; }

// Compares it with the last one: {html, onlyA, onlyB}.
EMSCRIPTEN_KEEPALIVE const char* engine_compare() { return Guarded(Difference); }

}  // extern "C"
