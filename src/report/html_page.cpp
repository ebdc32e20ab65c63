#include "report/html_page.h"

#include "report/histogram.h"
#include "report/html_tables.h"
#include "report/make_sketch.h"
#include "report/markup.h"
#include "report/page_assets.h"
#include "report/summary.h"
#include "report/svg_sketch.h"
#include "report/text_report.h"
#include "report/verdict_text.h"
#include "review/sentence.h"
#include "review/text.h"

namespace brenu {

namespace {

// What the script says, as data of the body.
constexpr struct {
  const char* name;
  Words words;
} kScriptWords[] = {{"filter", {"Filter", "筛选"}},
                    {"flagged", {"Flagged or hardly checked", "超限或检核不足"}},
                    {"all", {"All", "全部"}},
                    {"back", {"Previous page", "上一页"}},
                    {"forward", {"Next page", "下一页"}},
                    {"closer", {"Zoom in", "放大"}},
                    {"farther", {"Zoom out", "缩小"}},
                    {"whole", {"Whole network", "全图"}}};

class Page {
 public:
  Page(const Report& report, Language language, const TextSink& sink)
      : m_report(report), m_language(language), m_sink(sink), m_sketch(report, language) {}

  void Write();
  void WriteBody();

 private:
  const char* In(const Words& words) const { return words.In(m_language); }
  void Text(std::string_view text) { AppendEscaped(m_out, text); }
  void Element(const char* name, std::string_view text);
  void Pass() {
    m_sink(m_out);
    m_out.clear();
  }
  void Head();
  void Navigation();
  void VerdictPart();
  void Figures(const NetworkReport& network, const Words& title, const std::string& summary);
  void SketchPart();
  void Networks();
  void Parameters();
  void FindingsPart();

  const Report& m_report;
  Language m_language;
  const TextSink& m_sink;
  ReportSketch m_sketch;
  std::string m_out;  // not yet passed on
};

void Page::Element(const char* name, std::string_view text) {
  m_out += std::string("<") + name + '>';
  Text(text);
  m_out += std::string("</") + name + ">\n";
}

// Nothing is ever fetched or sent.
void Page::Head() {
  m_out += "<!DOCTYPE html>\n<html lang=\"";
  m_out += m_language == Language::kChinese ? "zh" : "en";
  m_out +=
      "\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
      "style-src 'unsafe-inline'; script-src 'unsafe-inline'; img-src data:\">\n"
      "<link rel=\"icon\" href=\"data:,\">\n";
  Element("title", m_report.file + " - brenu");
  m_out += "<style>\n";
  m_out += kPageStyle;
  m_out += "</style>\n</head>\n<body>\n<header>\n";
  Element("h1", m_report.file);
  Element("p", m_report.program + " · " + RulesText(m_report.rules, m_language));
  m_out += "</header>\n";
}

void Page::Navigation() {
  const auto link = [&](const char* target, const Words& words) {
    m_out += std::string("<a href=\"#") + target + "\">" + In(words) + "</a>\n";
  };
  m_out += "<nav>\n";
  if (!m_sketch.Drawing().points.empty()) link("sketch", {"Sketch", "网图"});
  if (m_report.plane) link("plane", {"Plane", "平面网"});
  if (m_report.heights) link("heights", {"Heights", "高程网"});
  if (!m_report.closures.empty()) link("closures", {"Closures", "闭合差"});
  link("parameters", {"Parameters", "参数"});
  if (!m_report.findings.empty()) link("findings", {"Findings", "提示"});
  m_out += "</nav>\n";
}

void Page::VerdictPart() {
  const VerdictWords words = WordsOf(m_report.verdict, m_language);
  m_out += m_report.verdict.passed ? "<div class=\"verdict passed\" role=\"status\">\n"
                                   : "<div class=\"verdict\" role=\"status\">\n";
  Element("strong", words.headline);
  m_out += "<ul>\n";
  for (const std::string& reason : words.reasons) Element("li", reason);
  for (const std::string& remark : words.remarks) {
    m_out += "<li class=\"remark\">";
    Text(remark);
    m_out += "</li>\n";
  }
  m_out += "</ul>\n<code>";
  Text(m_report.verdict.next);
  m_out += "</code>\n</div>\n";
}

void Page::SketchPart() {
  if (m_sketch.Drawing().points.empty()) return;
  m_out += "<h2 id=\"sketch\">";
  m_out += In({"Sketch", "网图"});
  m_out += "</h2>\n<div class=\"sketch\">\n";
  m_out += Svg(m_sketch.Drawing(), {.isEmbedded = true});
  m_out += "</div>\n";
}

void Page::Figures(const NetworkReport& network, const Words& title, const std::string& summary) {
  m_out += "<h2 id=\"";
  m_out += title.english[0] == 'P' ? "plane" : "heights";
  m_out += "\">";
  m_out += In(title);
  m_out += "</h2>\n";
  Element("pre", summary);
  m_out += "<p class=\"note\">";
  Text(ScalingText(network, m_language));
  m_out += "</p>\n";
  m_out += HistogramOfW(network.observations, network.criticalW, m_language);
}

void Page::Networks() {
  HtmlTables tables(m_sink, m_sketch, m_language);
  constexpr Words kPoints = {"Adjusted points", "平差结果"};
  constexpr Words kObservations = {"Observations, v = adjusted - observed",
                                   "观测值，v = 平差值 - 观测值"};
  constexpr Words kTakenOut = {"Taken out by data snooping", "粗差探测剔除"};
  constexpr Words kControl = {"How control fits", "已知点检验"};
  if (m_report.plane) {
    const PlaneReport& plane = *m_report.plane;
    Figures(plane, {"Plane network", "平面网"}, PlaneSummary(m_report, m_language));
    Pass();
    tables.Add("plane-taken-out", kTakenOut, plane.takenOut);
    tables.Add("plane-points", kPoints, plane.points);
    tables.Add("plane-observations", kObservations, plane.observations);
    tables.Add("plane-groups", {"By kinds of observations", "观测值分组"}, plane.groups);
    tables.Add("plane-control", kControl, plane.control);
    tables.Add("plane-relative", {"Relative ellipses", "相对误差椭圆"}, plane.relative);
  }
  if (m_report.heights) {
    const HeightsReport& heights = *m_report.heights;
    Figures(heights, {"Levelling network", "高程网"}, HeightsSummary(m_report, m_language));
    Pass();
    tables.Add("heights-taken-out", kTakenOut, heights.takenOut);
    tables.Add("heights-points", kPoints, heights.points);
    tables.Add("heights-observations", kObservations, heights.observations);
    tables.Add("heights-control", kControl, heights.control);
  }
  if (m_report.closures.empty()) return;
  m_out += "<h2>";
  m_out += In({"Closures", "闭合差"});
  m_out += "</h2>\n";
  Pass();
  tables.Add("closures", {"Lines, loops and traverses", "路线与导线"}, m_report.closures);
}

void Page::Parameters() {
  m_out += "<h2 id=\"parameters\">";
  m_out += In({"Parameters", "参数"});
  m_out += "</h2>\n<div class=\"figures\">\n";
  const auto figure = [&](const Words& name, const std::string& value) {
    m_out += "<dl><dt>";
    m_out += In(name);
    m_out += "</dt><dd>";
    Text(value);
    m_out += "</dd></dl>\n";
  };
  const AdjParam& p = m_report.param;
  figure({"Directions, MO", "方向中误差 MO"}, Fixed(p.MO, 2) + "\"");
  figure({"Distances, MS + MR", "边长中误差 MS + MR"},
         Fixed(p.MS * 1000.0, 2) + " mm + " + Fixed(p.MR * 1e6, 2) + " ppm");
  figure({"Levelling, 1 km", "水准每公里中误差"},
         Fixed(m_report.rules.levelSigma * 1000.0, 2) + " mm");
  figure({"Grade of levelling, limit", "水准等级，限差"},
         std::to_string(p.Lvl1) + ", " + std::to_string(p.Lvl1Limit) + " mm √km");
  figure({"Grade of traverses, limit", "导线等级，限差"},
         std::to_string(p.Lvl2) + ", " + std::to_string(p.Lvl2Limit) + "\" √n");
  m_out += "</div>\n";
}

void Page::FindingsPart() {
  if (m_report.findings.empty()) return;
  m_out += "<h2 id=\"findings\">";
  m_out += In({"Findings", "提示"});
  m_out += "</h2>\n<ul>\n";
  constexpr const char* const kClasses[] = {"note", "warning", "error"};
  for (const Finding& finding : m_report.findings) {
    m_out += std::string("<li class=\"") + kClasses[static_cast<int>(finding.severity)] + '"';
    if (finding.line > 0) m_out += " data-source=\"" + std::to_string(finding.line) + '"';
    m_out += '>';
    Text(SentenceOf(finding, m_language));
    m_out += "</li>\n";
  }
  m_out += "</ul>\n";
}

void Page::WriteBody() {
  m_out += "<div class=\"report\"";
  for (const auto& [name, words] : kScriptWords) {
    m_out += std::string(" data-") + name + "=\"" + In(words) + '"';
  }
  m_out += ">\n";
  VerdictPart();
  Navigation();
  SketchPart();
  Networks();
  Parameters();
  FindingsPart();
  m_out += "</div>\n";
  Pass();
}

void Page::Write() {
  Head();
  WriteBody();
  m_out += "<script>\n";
  m_out += kPageScript;
  m_out += "enhanceReport(document.querySelector('.report'));\n</script>\n</body>\n</html>\n";
  Pass();
}

}  // namespace

void WriteHtmlPage(const Report& report, Language language, const TextSink& sink) {
  const ThreadTeam team;
  Page(report, language, sink).Write();
}

void WriteHtmlBody(const Report& report, Language language, const TextSink& sink) {
  const ThreadTeam team;
  Page(report, language, sink).WriteBody();
}

}  // namespace brenu
