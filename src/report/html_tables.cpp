#include "report/html_tables.h"

#include "report/columns.h"
#include "report/markup.h"
#include "review/text.h"

namespace brenu {

namespace {

// Rows of the first table; more of them stand where the script takes them from as text.
constexpr std::size_t kFirstRows = 300;

bool IsNumber(Shown shown) { return shown > Shown::kPass; }

}  // namespace

template <typename Row>
void HtmlTables::Head() {
  m_out += "<thead><tr>";
  for (const Column<Row>& column : ColumnsOf<Row>()) {
    m_out += IsNumber(column.shown) ? "<th scope=\"col\" class=\"n\">" : "<th scope=\"col\">";
    AppendEscaped(m_out, column.heading.In(m_language));
    m_out += "</th>";
  }
  m_out += "</tr></thead>\n<tbody>\n";
}

template <typename Row>
void HtmlTables::Add(const char* id, const Words& caption, const std::vector<Row>& rows) {
  if (rows.empty()) return;
  const std::string name = id;
  m_out += "<section id=\"" + name + "\"><h3>";
  AppendEscaped(m_out, caption.In(m_language));
  m_out += " <small>" + std::to_string(rows.size()) + "</small></h3>\n<div class=\"wide\">";
  m_out += "<table class=\"data\" id=\"table-" + name + "\">";
  Head<Row>();
  const std::size_t first = std::min(rows.size(), kFirstRows);
  for (std::size_t i = 0; i < first; ++i) AddRow(rows[i]);
  m_out += "</tbody></table></div>\n";
  if (first < rows.size()) {
    m_out += "<noscript id=\"more-" + name + "\"><div class=\"wide\"><table class=\"data\">";
    Head<Row>();
    for (std::size_t i = first; i < rows.size(); ++i) AddRow(rows[i]);
    m_out += "</tbody></table></div></noscript>\n";
  }
  m_out += "</section>\n";
}

template <typename Row>
void HtmlTables::AddRow(const Row& row) {
  OpenRow(row);
  for (const Column<Row>& column : ColumnsOf<Row>()) {
    if (column.shown == Shown::kNumber && std::string_view(column.key) == "redundancy") {
      // A bar as long as the redundancy number.
      const Cell cell = column.cell(row);
      const double* const number = std::get_if<double>(&cell);
      m_out += "<td class=\"n bar\" style=\"--r:";
      m_out += number == nullptr || !(*number >= 0.0) ? "0" : Fixed(*number, 3);
      m_out += "\">";
    } else {
      m_out += IsNumber(column.shown) ? "<td class=\"n\">" : "<td>";
    }
    if (IsOfControl(column, row)) {
      m_out += "-";
    } else {
      AppendEscaped(m_out, TextOf(column, row, m_language));
    }
    m_out += "</td>";
  }
  m_out += "</tr>\n";
}

template <typename Row>
void HtmlTables::OpenRow(const Row&) {
  m_out += "<tr>";
}

void HtmlTables::OpenPointRow(const std::string& name) {
  const std::int32_t point = m_sketch.PointOf(name);
  m_out += "<tr data-p=\"" + std::to_string(point) + "\">";
}

void HtmlTables::OpenLineRow(const std::string& from, const std::string& to, const char* kind) {
  m_out += "<tr data-l=\"" + std::to_string(m_sketch.LineOf(from, to)) + '"';
  if (*kind != '\0') m_out += std::string(" class=\"") + kind + '"';
  m_out += '>';
}

void HtmlTables::OpenRow(const ObservationRow& row) {
  const bool isFlagged = row.exceeds || row.removed;
  OpenLineRow(row.from, row.to,
              isFlagged                         ? "flag"
              : row.checked == Checked::kNot    ? "not"
              : row.checked == Checked::kWeakly ? "weak"
                                                : "");
}

template <typename Row>
void HtmlTables::OpenDifferenceRow(const Row& row) {
  m_out += "<tr data-p=\"" + std::to_string(m_sketch.PointOf(row.name));
  m_out += row.significant ? "\" class=\"flag\">" : "\">";
}

void HtmlTables::OpenRow(const PlaneDifferenceRow& row) { OpenDifferenceRow(row); }
void HtmlTables::OpenRow(const HeightDifferenceRow& row) { OpenDifferenceRow(row); }

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

}  // namespace brenu
