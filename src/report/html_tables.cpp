#include "report/html_tables.h"

#include <algorithm>
#include <string_view>

#include "report/columns.h"
#include "report/markup.h"
#include "review/text.h"

namespace brenu {

namespace {

// Rows of the first table; more of them stand where the script takes them from as text.
constexpr std::size_t kFirstRows = 300;

bool IsNumber(Shown shown) { return shown > Shown::kPass; }

std::string Tag(const char* data, std::int32_t number, const char* kind) {
  std::string tag = std::string("<tr ") + data + "=\"" + std::to_string(number) + '"';
  if (*kind != '\0') tag += std::string(" class=\"") + kind + '"';
  return tag + '>';
}

}  // namespace

template <typename Row>
void HtmlTables::Add(const char* id, const Words& caption, const std::vector<Row>& rows) {
  if (rows.empty()) return;
  const std::string name = id;
  std::string out = "<section id=\"" + name + "\"><h3>";
  AppendEscaped(out, caption.In(m_language));
  out += " <small>" + std::to_string(rows.size()) + "</small></h3>\n<div class=\"wide\">";
  m_sink(out + "<table class=\"data\" id=\"table-" + name + "\">");
  const std::size_t first = std::min(rows.size(), kFirstRows);
  AddTable(rows, 0, first);
  m_sink("</div>\n");
  if (first < rows.size()) {
    m_sink("<noscript id=\"more-" + name + "\"><div class=\"wide\"><table class=\"data\">");
    AddTable(rows, first, rows.size());
    m_sink("</div></noscript>\n");
  }
  m_sink("</section>\n");
}

// The heading and some of the rows.
template <typename Row>
void HtmlTables::AddTable(const std::vector<Row>& rows, std::size_t begin, std::size_t end) {
  std::string head = "<thead><tr>";
  for (const Column<Row>& column : ColumnsOf<Row>()) {
    head += IsNumber(column.shown) ? "<th scope=\"col\" class=\"n\">" : "<th scope=\"col\">";
    AppendEscaped(head, column.heading.In(m_language));
    head += "</th>";
  }
  m_sink(head + "</tr></thead>\n<tbody>\n");
  PassRows(end - begin, m_sink, [&](std::string& out, std::size_t from, std::size_t to) {
    for (std::size_t k = from; k < to; ++k) AppendRow(out, rows[begin + k]);
  });
  m_sink("</tbody></table>");
}

template <typename Row>
void HtmlTables::AppendRow(std::string& out, const Row& row) const {
  out += TagOf(row);
  for (const Column<Row>& column : ColumnsOf<Row>()) {
    if (column.shown == Shown::kNumber && std::string_view(column.key) == "redundancy") {
      // A bar as long as the redundancy number.
      const Cell cell = column.cell(row);
      const double* const number = std::get_if<double>(&cell);
      out += "<td class=\"n bar\" style=\"--r:";
      out += number == nullptr || !(*number >= 0.0) ? "0" : Fixed(*number, 3);
      out += "\">";
    } else {
      out += IsNumber(column.shown) ? "<td class=\"n\">" : "<td>";
    }
    if (IsOfControl(column, row)) {
      out += "-";
    } else {
      AppendEscaped(out, TextOf(column, row, m_language));
    }
    out += "</td>";
  }
  out += "</tr>\n";
}

std::string HtmlTables::PointTag(const std::string& name, const char* kind) const {
  return Tag("data-p", m_sketch.PointOf(name), kind);
}

std::string HtmlTables::LineTag(const std::string& from, const std::string& to,
                                const char* kind) const {
  return Tag("data-l", m_sketch.LineOf(from, to), kind);
}

std::string HtmlTables::TagOf(const ObservationRow& row) const {
  const bool isFlagged = row.exceeds || row.removed;
  return LineTag(row.from, row.to,
                 isFlagged                         ? "flag"
                 : row.checked == Checked::kNot    ? "not"
                 : row.checked == Checked::kWeakly ? "weak"
                                                   : "");
}

template void HtmlTables::Add(const char*, const Words&, const std::vector<PlanePointRow>&);
template void HtmlTables::Add(const char*, const Words&, const std::vector<HeightRow>&);
template void HtmlTables::Add(const char*, const Words&, const std::vector<ObservationRow>&);
template void HtmlTables::Add(const char*, const Words&, const std::vector<GroupRow>&);
template void HtmlTables::Add(const char*, const Words&, const std::vector<TakenOutRow>&);
template void HtmlTables::Add(const char*, const Words&, const std::vector<ControlRow>&);
template void HtmlTables::Add(const char*, const Words&, const std::vector<RelativeEllipseRow>&);
template void HtmlTables::Add(const char*, const Words&, const std::vector<ClosureRow>&);
template void HtmlTables::Add(const char*, const Words&, const std::vector<PlaneDifferenceRow>&);
template void HtmlTables::Add(const char*, const Words&, const std::vector<HeightDifferenceRow>&);
template void HtmlTables::Add(const char*, const Words&, const std::vector<Misfit>&);

}  // namespace brenu
