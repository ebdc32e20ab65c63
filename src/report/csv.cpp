#include "report/csv.h"

#include <string_view>

#include "report/columns.h"

namespace brenu {

namespace {

// In quotation marks where it needs them.
void AppendText(std::string& out, std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    out += text;
    return;
  }
  out += '"';
  for (const char c : text) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
}

template <typename Row>
void WriteTable(const std::vector<Row>& rows, const TextSink& sink) {
  const ThreadTeam team;
  const auto columns = ColumnsOf<Row>();
  const auto line = [&](std::string& text, const auto& append) {
    for (const Column<Row>& column : columns) {
      if (&column != columns.data()) text += ',';
      append(column);
    }
    text += '\n';
  };
  std::string heading;
  line(heading, [&](const Column<Row>& column) { heading += column.key; });
  sink(heading);
  PassRows(rows.size(), sink, [&](std::string& text, std::size_t begin, std::size_t end) {
    for (std::size_t k = begin; k < end; ++k) {
      line(text, [&](const Column<Row>& column) {
        AppendCell(text, column.cell(rows[k]), "", AppendText);
      });
    }
  });
}

template <typename Row>
void AddTable(std::vector<CsvFile>& files, const char* name, const std::vector<Row>& rows) {
  if (rows.empty()) return;
  files.push_back({name, [&rows](const TextSink& sink) { WriteTable(rows, sink); }});
}

}  // namespace

std::vector<CsvFile> CsvFiles(const Report& report) {
  std::vector<CsvFile> files;
  if (report.heights) {
    AddTable(files, "heights-points.csv", report.heights->points);
    AddTable(files, "heights-observations.csv", report.heights->observations);
    AddTable(files, "heights-taken-out.csv", report.heights->takenOut);
    AddTable(files, "heights-control.csv", report.heights->control);
  }
  if (report.plane) {
    AddTable(files, "plane-points.csv", report.plane->points);
    AddTable(files, "plane-observations.csv", report.plane->observations);
    AddTable(files, "plane-groups.csv", report.plane->groups);
    AddTable(files, "plane-taken-out.csv", report.plane->takenOut);
    AddTable(files, "plane-control.csv", report.plane->control);
    AddTable(files, "plane-relative-ellipses.csv", report.plane->relative);
  }
  AddTable(files, "closures.csv", report.closures);
  return files;
}

}  // namespace brenu
