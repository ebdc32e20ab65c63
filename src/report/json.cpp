#include "report/json.h"

#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>
#include <vector>

#include "report/columns.h"
#include "review/encoding.h"
#include "review/sentence.h"

namespace brenu {

namespace {

using Object = nlohmann::ordered_json;

Object ValueOf(const Cell& cell) {
  return std::visit([](const auto& value) -> Object { return value; }, cell);
}

template <typename Row>
Object ObjectOf(const Row& row) {
  Object object;
  for (const Column<Row>& column : ColumnsOf<Row>()) {
    object[column.key] = ValueOf(column.cell(row));
  }
  return object;
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

Object ObjectOf(const TakenOutRow& row) {
  Object object;
  for (const Column<TakenOutRow>& column : ColumnsOf<TakenOutRow>()) {
    object[column.key] = ValueOf(column.cell(row));
  }
  Object alternatives = Object::array();
  for (const ObservationName& other : row.alternatives) {
    alternatives.push_back({{"kind", KeyOf(other.kind)}, {"from", other.from}, {"to", other.to}});
  }
  object["alternatives"] = std::move(alternatives);
  object["misreading"] =
      row.misreading.code == BRENU_NOTHING ? Object(nullptr) : Object(SentenceOf(row.misreading));
  return object;
}

// Written piece by piece: large networks have too many rows for one tree of objects.
class Writer {
 public:
  std::string Write(const Report& report);

 private:
  void Key(const char* key);
  void Value(const char* key, const Object& value) {
    Key(key);
    // Bytes that are no UTF-8 are names cut by a field.
    m_text += value.dump(-1, ' ', false, Object::error_handler_t::replace);
  }
  template <typename Row>
  void Rows(const char* key, const std::vector<Row>& rows);
  void Open(const char* key);
  void Close() {
    m_text += "}";
    m_isFirst = false;
  }
  void Network(const NetworkReport& network);

  std::string m_text = "{";
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
  bool isFirst = true;
  for (const Row& row : rows) {
    m_text += isFirst ? "\n" : ",\n";
    isFirst = false;
    m_text += ObjectOf(row).dump(-1, ' ', false, Object::error_handler_t::replace);
  }
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

std::string Writer::Write(const Report& report) {
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
  return std::move(m_text);
}

}  // namespace

std::string Json(const Report& report) { return Writer().Write(report); }

std::string Json(const Findings& findings, Language language) {
  Object array = Object::array();
  for (const Finding& finding : findings) array.push_back(ObjectOf(finding, language));
  return array.dump(-1, ' ', false, Object::error_handler_t::replace);
}

}  // namespace brenu
