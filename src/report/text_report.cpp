#include "report/text_report.h"

#include "report/columns.h"
#include "report/summary.h"
#include "report/text_table.h"
#include "report/verdict_text.h"
#include "review/sentence.h"
#include "review/text.h"

namespace brenu {

namespace {

class TextWriter {
 public:
  TextWriter(const Report& report, Language language, const TextSink& sink)
      : m_report(report), m_language(language), m_sink(sink) {}

  void Write();

 private:
  void Pass() {
    m_sink(m_text);
    m_text.clear();
  }
  void Title(const Words& title) { m_text += std::string("\n") + title.In(m_language) + '\n'; }
  template <typename Row>
  void Table(const Words& title, const std::vector<Row>& rows);
  void Scaling(const NetworkReport& network);

  const Report& m_report;
  Language m_language;
  const TextSink& m_sink;
  std::string m_text;  // not yet passed on
};

template <typename Row>
void TextWriter::Table(const Words& title, const std::vector<Row>& rows) {
  if (rows.empty()) return;
  Title(title);
  std::string letters;
  Cells headings;
  for (const Column<Row>& column : ColumnsOf<Row>()) {
    letters += column.shown <= Shown::kPass ? 'l' : 'r';
    headings.emplace_back(column.heading.In(m_language));
  }
  Pass();
  PassTable(letters, rows.size() + 1, m_sink, [&](std::size_t k) {
    if (k == 0) return headings;
    const Row& row = rows[k - 1];
    Cells cells;
    for (const Column<Row>& column : ColumnsOf<Row>()) {
      cells.push_back(IsOfControl(column, row) ? "-" : TextOf(column, row, m_language));
    }
    return cells;
  });
}

void TextWriter::Scaling(const NetworkReport& network) {
  m_text += ScalingText(network, m_language) + '\n';
}

void TextWriter::Write() {
  m_text = m_report.program + "  " + Printable(m_report.file) + "  " +
           RulesText(m_report.rules, m_language) + "\n\n";
  m_text += VerdictText(m_report.verdict, m_language);
  if (!m_report.findings.empty()) Title({"Findings", "提示"});
  for (const Finding& finding : m_report.findings) {
    m_text += "  - " + SentenceOf(finding, m_language) + '\n';
  }
  constexpr Words kPoints = {"Adjusted points", "平差结果"};
  constexpr Words kObservations = {"Observations, v = adjusted - observed",
                                   "观测值，v = 平差值 - 观测值"};
  constexpr Words kGroups = {"By kinds of observations", "观测值分组"};
  constexpr Words kControl = {"How control fits", "已知点检验"};
  if (m_report.heights) {
    Title({"Levelling network", "高程网"});
    m_text += HeightsSummary(m_report, m_language);
    Scaling(*m_report.heights);
    Table(kPoints, m_report.heights->points);
    Table(kObservations, m_report.heights->observations);
    Table(kControl, m_report.heights->control);
  }
  if (m_report.plane) {
    Title({"Plane network", "平面网"});
    m_text += PlaneSummary(m_report, m_language);
    Scaling(*m_report.plane);
    Table(kPoints, m_report.plane->points);
    Table(kObservations, m_report.plane->observations);
    Table(kGroups, m_report.plane->groups);
    Table(kControl, m_report.plane->control);
    Table({"Relative ellipses", "相对误差椭圆"}, m_report.plane->relative);
  }
  const bool hasTakenOut = (m_report.heights && !m_report.heights->takenOut.empty()) ||
                           (m_report.plane && !m_report.plane->takenOut.empty());
  if (hasTakenOut) m_text += '\n' + TakenOutTable(m_report, m_language);
  Table({"Closures", "闭合差"}, m_report.closures);
  Pass();
}

}  // namespace

std::string RulesText(const Rules& rules, Language language) {
  return (rules.AreTextbook() ? Words{"Rules of textbooks", "教科书规则"}
                              : Words{"Classic rules", "经典规则"})
      .In(language);
}

std::string ScalingText(const NetworkReport& network, Language language) {
  std::string text =
      (network.isScaled ? Words{"Errors are a posteriori, scaled with m0; 95 % regions are ",
                                "精度为后验值（乘以 m0）；95% 置信区域为标准值的 "}
                        : Words{"Errors are a priori; 95 % regions are ",
                                "精度为先验值；95% 置信区域为标准值的 "})
          .In(language);
  text += Fixed(network.factor95, 3);
  return text +=
         Words{" times as large. Critical value of |w|: ", " 倍。|w| 临界值："}.In(language) +
         Fixed(network.criticalW, 2) +
         Words{", 5 % over all tests.", "（全部检验 5%）。"}.In(language);
}

void WriteTextReport(const Report& report, Language language, const TextSink& sink) {
  const ThreadTeam team;
  TextWriter(report, language, sink).Write();
}

}  // namespace brenu
