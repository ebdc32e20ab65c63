#include "report/json.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>
#include <vector>

#include "core/parallel.h"
#include "report/columns.h"
#include "review/encoding.h"
#include "review/sentence.h"

namespace brenu {

namespace {

using Object = nlohmann::ordered_json;

// Bytes that are no UTF-8 are names cut by a field.
std::string TextOf(const Object& value) {
  return value.dump(-1, ' ', false, Object::error_handler_t::replace);
}

void AppendText(std::string& out, std::string_view text) {
  const bool isPlain = std::all_of(text.begin(), text.end(), [](char c) {
    return c >= ' ' && c <= '~' && c != '"' && c != '\\';
  });
  if (!isPlain) {
    out += TextOf(text);
    return;
  }
  out += '"';
  out += text;
  out += '"';
}

// The columns of a row, without the brackets around them.
template <typename Row>
void AppendColumns(std::string& out, const Row& row) {
  const auto columns = ColumnsOf<Row>();
  for (const Column<Row>& column : columns) {
    if (&column != columns.data()) out += ',';
    out += '"';
    out += column.key;
    out += "\":";
    AppendCell(out, column.cell(row), "null", AppendText);
  }
}

template <typename Row>
void AppendRow(std::string& out, const Row& row) {
  out += '{';
  AppendColumns(out, row);
  out += '}';
}

Object ObjectOf(const Finding& finding, Language language = Language::kEnglish) {
  constexpr const char* const kSeverities[] = {"note", "warning", "error"};
  Object names = Object::array();
  for (const std::string& name : finding.names) names.push_back(ToUtf8(name));
  return {{"code", IdOf(finding.code)},
          {"severity", kSeverities[static_cast<int>(finding.severity)]},
          {"line", finding.line == 0 ? Object(nullptr) : Object(finding.line)},
          {"names", std::move(names)},
          {"values", finding.values},
          {"text", SentenceOf(finding, language)}};
}

void AppendRow(std::string& out, const Finding& finding) { out += TextOf(ObjectOf(finding)); }

void AppendRow(std::string& out, const TakenOutRow& row) {
  Object alternatives = Object::array();
  for (const ObservationName& other : row.alternatives) {
    alternatives.push_back({{"kind", KeyOf(other.kind)}, {"from", other.from}, {"to", other.to}});
  }
  const bool hasMisreading = row.misreading.code != BRENU_NOTHING;
  out += '{';
  AppendColumns(out, row);
  out += ",\"alternatives\":" + TextOf(alternatives);
  out += ",\"misreading\":";
  out += hasMisreading ? TextOf(SentenceOf(row.misreading)) : "null";
  out += '}';
}

class Writer {
 public:
  explicit Writer(const TextSink& sink) : m_sink(sink) {}

  void Write(const Report& report);

 private:
  void Key(const char* key);
  void Value(const char* key, const Object& value) {
    Key(key);
    m_text += TextOf(value);
  }
  template <typename Row>
  void Rows(const char* key, const std::vector<Row>& rows);
  void Open(const char* key);
  void Close() {
    m_text += "}";
    m_isFirst = false;
  }
  void Network(const NetworkReport& network);
  void Pass() {
    m_sink(m_text);
    m_text.clear();
  }

  const TextSink& m_sink;
  std::string m_text = "{";  // not yet passed on
  bool m_isFirst = true;
};

void Writer::Key(const char* key) {
  m_text += m_isFirst ? "\n\"" : ",\n\"";
  m_isFirst = false;
  m_text += key;
  m_text += "\": ";
}

void Writer::Open(const char* key) {
  Key(key);
  m_text += "{";
  m_isFirst = true;
}

template <typename Row>
void Writer::Rows(const char* key, const std::vector<Row>& rows) {
  Key(key);
  m_text += "[";
  Pass();
  PassRows(rows.size(), m_sink, [&](std::string& text, std::size_t begin, std::size_t end) {
    for (std::size_t k = begin; k < end; ++k) {
      text += k == 0 ? "\n" : ",\n";
      AppendRow(text, rows[k]);
    }
  });
  m_text += "]";
}

std::vector<ClosureRow> ClosuresOf(const Report& report, ClosureRow::Kind kind) {
  std::vector<ClosureRow> rows;
  for (const ClosureRow& row : report.closures) {
    if (row.kind == kind) rows.push_back(row);
  }
  return rows;
}

void Writer::Network(const NetworkReport& network) {
  Value("m0", network.m0);
  Value("m0_apriori", network.m0Apriori);
  Value("redundancy", network.redundancy);
  Value("control_points", network.controlPoints);
  Value("new_points", network.newPoints);
  Value("errors", network.isScaled ? "a posteriori" : "a priori");
  Value("factor95", network.factor95);
  Value("critical_w", network.criticalW);
  Object test;
  if (network.test) {
    const VarianceTest& t = *network.test;
    test = {
        {"statistic", t.statistic}, {"lower", t.lower}, {"upper", t.upper}, {"passed", t.passed}};
  }
  Value("chi2_test", test);
  Rows("observations", network.observations);
  Rows("groups", network.groups);
  Rows("control", network.control);
  Rows("taken_out", network.takenOut);
  Value("untested", network.untested);
}

void Writer::Write(const Report& report) {
  Value("schema", kJsonSchema);
  Value("program", report.program);
  Value("file", report.file);
  Value("rules", report.rules.AreTextbook() ? "textbook" : "classic");
  const AdjParam& p = report.param;
  Value("parameters", {{"mo", p.MO},
                       {"ms", p.MS},
                       {"mr", p.MR},
                       {"level_sigma", report.rules.levelSigma},
                       {"format", p.format}});
  Open("verdict");
  Value("passed", report.verdict.passed);
  Rows("reasons", report.verdict.reasons);
  Rows("remarks", report.verdict.remarks);
  Value("next", report.verdict.next);
  Close();
  Rows("findings", report.findings);
  if (report.heights) {
    Open("heights");
    Rows("points", report.heights->points);
    Network(*report.heights);
    Rows("closures", ClosuresOf(report, ClosureRow::Kind::kLevelling));
    Close();
  }
  if (report.plane) {
    Open("plane");
    Rows("points", report.plane->points);
    Network(*report.plane);
    Rows("closures", ClosuresOf(report, ClosureRow::Kind::kTraverse));
    Rows("relative_ellipses", report.plane->relative);
    Close();
  }
  Rows("closures", report.closures);
  m_text += "\n}\n";
  Pass();
}

}  // namespace

void WriteJson(const Report& report, const TextSink& sink) {
  const ThreadTeam team;
  Writer(sink).Write(report);
}

std::string Json(const Findings& findings, Language language) {
  Object array = Object::array();
  for (const Finding& finding : findings) array.push_back(ObjectOf(finding, language));
  return TextOf(array);
}

}  // namespace brenu
