#include "io/result_report.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>
#include <utility>

#include "core/parallel.h"
#include "core/text_number.h"
#include "io/gbk_labels.h"
#include "io/replace_file.h"
#include "io/result_tables.h"
#include "io/table_text.h"

namespace brenu {

namespace {

constexpr double kMillimetres = 1000.0;

constexpr Column kApproximateColumns[] = {
    {"Name", 12}, {"X(m)", 12, 4}, {"Y(m)", 12, 4}, {"H(m)", 12, 4}};
constexpr Column kPlaneColumns[] = {{"Name", 12},     {"X(m)", 12, 4},  {"Y(m)", 12, 4},
                                    {"Mx(mm)", 6, 2}, {"My(mm)", 6, 2}, {"Mp(mm)", 6, 2},
                                    {"E(mm)", 6, 2},  {"F(mm)", 6, 2},  {"T(dms)", 10, 6}};
constexpr Column kVerticalColumns[] = {
    {"Name", 12}, {"H(m)", 12, 4}, {"V(mm)", 10, 2}, {"Mh(mm)", 10, 2}};
constexpr Column kHeightColumns[] = {{"From", 12},     {"To", 12},      {"dh(m)", 8, 4},
                                     {"Weight", 8, 4}, {"V(mm)", 8, 2}, {"Vdh(m)", 8, 4},
                                     {"Mdh(mm)", 8, 2}};
constexpr Column kAngleColumns[] = {{"From", 12},   {"To", 12},     {"Value(dms)", 12, 6},
                                    {"M(s)", 4, 1}, {"V(s)", 6, 2}, {"Result(dms)", 12, 6}};
constexpr Column kLengthColumns[] = {{"From", 12},    {"To", 12},      {"Value(m)", 10, 4},
                                     {"M(mm)", 6, 2}, {"V(mm)", 6, 2}, {"Result(m)", 10, 4}};
constexpr Column kPrecisionColumns[] = {{"From", 12},    {"To", 12},      {"AZ(dms)", 12, 6},
                                        {"Ma(s)", 6, 2}, {"S(m)", 10, 4}, {"Ms(mm)", 6, 2},
                                        {"S/Ms", 8}};
constexpr Column kPointColumns[] = {
    {"Name", 12}, {"X(m)", 12, 4}, {"Y(m)", 12, 4}, {"H(m)", 12, 4}, {"Attr", 12}};

const char* Remark(bool removed) { return removed ? "  gross error" : ""; }

class ReportWriter {
 public:
  explicit ReportWriter(const AdjustmentContext& context)
      : m_context(context), m_tables(MakeResultTables(context)) {}

  bool IsComplete() const { return !m_tables.failedIn; }

  std::string Write() {
    constexpr std::size_t kRowLength = 80;  // of most rows; longer ones cost one move of the text
    m_out.Text().reserve(RowCount(m_tables) * kRowLength);
    const bool done = WriteTables();
    if (done) WriteSummary();
    return std::move(m_out.Text());
  }

 private:
  // False when the report has to stop in this table.
  template <typename Row, typename WriteCells>
  bool Table(ResultTable table, const char* keyword, std::span<const Column> columns,
             const std::vector<Row>& rows, WriteCells writeCells) {
    const bool stops = m_tables.failedIn == table;
    m_out.Begin(keyword, columns);
    WriteRows(rows, writeCells);
    if (!stops) m_out.End();
    return !stops;
  }

  // Parts of the table are written side by side, some at a time: their texts wait to be appended.
  template <typename Row, typename WriteCells>
  void WriteRows(const std::vector<Row>& rows, WriteCells writeCells) {
    constexpr std::size_t kRows = 1024;
    constexpr std::size_t kPartsAtATime = 32;
    std::vector<std::string> texts(kPartsAtATime);
    for (std::size_t from = 0; from < rows.size(); from += kPartsAtATime * kRows) {
      const std::size_t count = std::min(rows.size() - from, kPartsAtATime * kRows);
      ForEachPart(count, kRows, [&](std::size_t begin, std::size_t end) {
        TableText out = m_out.ForRows();
        for (std::size_t k = begin; k < end; ++k) writeCells(out, rows[from + k]);
        texts[begin / kRows] = std::move(out.Text());
      });
      for (std::size_t part = 0; part * kRows < count; ++part) m_out.Text() += texts[part];
    }
  }

  // Tables of observations are left out when they have no rows.
  template <typename Row, typename WriteCells>
  bool ObsTable(ResultTable table, const char* keyword, std::span<const Column> columns,
                const std::vector<Row>& rows, WriteCells writeCells) {
    if (rows.empty() && m_tables.failedIn != table) return true;
    return Table(table, keyword, columns, rows, writeCells);
  }

  bool WriteTables() {
    const bool plane = HasPlane(m_context.netType);
    const bool level = ReportsHeights(m_context);
    return WriteApproximate() && (!plane || WritePlane()) &&
           (!level || (WriteVertical() && WriteHeights())) &&
           (!plane || (WriteObservations() && WritePrecision())) &&
           WritePoints(ResultTable::kStartPoint, "[STARTPOINT]", m_tables.start) &&
           WritePoints(ResultTable::kControlPoint, "[CONTROLPOINT]", m_tables.control);
  }

  bool WriteApproximate() {
    return Table(ResultTable::kApproximate, "[APPROXIMATE]", kApproximateColumns,
                 m_tables.approximate, [](TableText& out, const PointRow& r) {
                   out.Cell(r.name);
                   for (const double v : {r.x, r.y, r.h}) out.Cell(v);
                   out.EndRow();
                 });
  }

  bool WritePlane() {
    return Table(ResultTable::kPlane, "[PLANE]", kPlaneColumns, m_tables.plane,
                 [](TableText& out, const PlaneRow& r) {
                   out.Cell(r.name);
                   const PlaneResult& p = r.result;
                   for (const double v : {p.x, p.y}) out.Cell(v);
                   for (const double v : {p.mx, p.my, p.mp, p.e, p.f}) {
                     out.Cell(v * kMillimetres);
                   }
                   out.Cell(p.t);
                   out.EndRow();
                 });
  }

  bool WriteVertical() {
    return Table(ResultTable::kVertical, "[VERTICAL]", kVerticalColumns, m_tables.vertical,
                 [](TableText& out, const VerticalRow& r) {
                   out.Cell(r.name);
                   out.Cell(r.result.height);
                   // Compared in metres: corrections that would print as -0.00 or 0.00.
                   if (std::fabs(r.result.correction) < 5e-06) {
                     out.Cell("0.00");
                   } else {
                     out.Cell(r.result.correction * kMillimetres);
                   }
                   out.Cell(r.result.sigma * kMillimetres);
                   out.EndRow();
                 });
  }

  bool WriteHeights() {
    return ObsTable(ResultTable::kHeight, "[HEIGHT]", kHeightColumns, m_tables.heights,
                    [](TableText& out, const HeightRow& r) {
                      out.Cell(r.from);
                      out.Cell(r.to);
                      out.Cell(r.result.observed);
                      out.Cell(r.result.weight);
                      out.Cell(r.result.residual * kMillimetres);
                      out.Cell(r.result.adjusted);
                      out.Cell(r.result.sigma * kMillimetres);
                      out.EndRow(Remark(r.result.removed));
                    });
  }

  // `scale` brings errors and residuals to the unit of their columns.
  static void WriteObsRow(TableText& out, const PlaneObsRow& r, double scale) {
    out.Cell(r.from);
    out.Cell(r.to);
    out.Cell(r.result.observed);
    out.Cell(r.result.apriori * scale);
    out.Cell(r.result.residual * scale);
    out.Cell(r.result.adjusted);
    out.EndRow(Remark(r.result.removed));
  }

  bool WriteObservations() {
    const auto angle = [](TableText& out, const PlaneObsRow& r) { WriteObsRow(out, r, 1.0); };
    const auto length = [](TableText& out, const PlaneObsRow& r) {
      WriteObsRow(out, r, kMillimetres);
    };
    return ObsTable(ResultTable::kDirection, "[DIRANGLE]", kAngleColumns, m_tables.directions,
                    angle) &&
           ObsTable(ResultTable::kLength, "[LENGTH]", kLengthColumns, m_tables.lengths, length) &&
           ObsTable(ResultTable::kAzimuth, "[AZIMUTH]", kAngleColumns, m_tables.azimuths, angle);
  }

  bool WritePrecision() {
    return ObsTable(ResultTable::kPrecision, "[PRECISION]", kPrecisionColumns, m_tables.precision,
                    [](TableText& out, const PrecisionRow& r) {
                      out.Cell(r.from);
                      out.Cell(r.to);
                      out.Cell(r.result.azimuth);
                      out.Cell(r.result.azimuthError);
                      out.Cell(r.result.length);
                      out.Cell(r.result.lengthError * kMillimetres);
                      out.Cell(r.result.relativePrecision);
                      out.EndRow();
                    });
  }

  bool WritePoints(ResultTable table, const char* keyword, const std::vector<PointRow>& rows) {
    return Table(table, keyword, kPointColumns, rows, [](TableText& out, const PointRow& r) {
      out.Cell(r.name);
      for (const double v : {r.x, r.y, r.h}) out.Cell(v);
      out.Cell(r.type);
      out.EndRow();
    });
  }

  void WriteSummary() {
    std::string& out = m_out.Text();
    if (ReportsHeights(m_context)) {
      out += '\n';
      out += label::kLevelNet;
      out += '\n';
      out += label::kErrorPerKilometre;
      AppendFixed(out, m_context.level.results.Sigma0() * kMillimetres, 3);
      out += "(mm)\n";
    }
    if (HasPlane(m_context.netType)) {
      out += '\n';
      out += label::kPlaneNet;
      out += '\n';
      out += label::kAprioriError;
      AppendFixed(out, m_context.plane.results.Param().MO, 2);
      out += "(s)      ";
      out += label::kPosteriorError;
      AppendFixed(out, m_context.plane.results.Sigma0(), 2);
      out += "(s)\n";
    }
  }

  const AdjustmentContext& m_context;
  ResultTables m_tables;
  TableText m_out;
};

}  // namespace

Outcome WriteResultReport(const AdjustmentContext& context, const FilePath& path) {
  const ThreadTeam team;
  ReportWriter writer(context);
  if (ReplaceFile(path, writer.Write()) != Replaced::kDone) return Error(BRENU_FILE_NOT_WRITTEN);
  if (!writer.IsComplete()) return Error(BRENU_REPORT_STOPS_SHORT);
  return {};
}

}  // namespace brenu
