#include "io/result_report.h"

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
  ReportWriter(const AdjustmentContext& context, const TextSink& sink)
      : m_context(context), m_tables(context), m_sink(sink) {}

  // False when the report had to stop before a row.
  bool Write() {
    if (!WriteTables()) return false;
    WriteSummary();
    Pass();
    return true;
  }

 private:
  void Pass() {
    m_sink(m_out.Text());
    m_out.Text().clear();
  }

  // False when the report has to stop in this table.
  template <typename Row, typename WriteCells>
  bool Table(const char* keyword, std::span<const Column> columns, const std::vector<Row>& rows,
             WriteCells writeCells) {
    m_out.Begin(keyword, columns);
    Pass();
    PassRows(rows.size(), m_sink, [&](std::string& text, std::size_t begin, std::size_t end) {
      TableText out = m_out.ForRows(std::move(text));
      for (std::size_t k = begin; k < end; ++k) writeCells(out, rows[k]);
      text = std::move(out.Text());
    });
    if (!m_tables.HasFailed()) m_out.End();
    return !m_tables.HasFailed();
  }

  // Tables of observations are left out when they have no rows.
  template <typename Row, typename WriteCells>
  bool ObsTable(const char* keyword, std::span<const Column> columns, const std::vector<Row>& rows,
                WriteCells writeCells) {
    if (rows.empty() && !m_tables.HasFailed()) return true;
    return Table(keyword, columns, rows, writeCells);
  }

  bool WriteTables() {
    const bool plane = HasPlane(m_context.netType);
    const bool level = ReportsHeights(m_context);
    return WriteApproximate() && (!plane || WritePlane()) &&
           (!level || (WriteVertical() && WriteHeights())) &&
           (!plane || (WriteObservations() && WritePrecision())) &&
           WritePoints("[STARTPOINT]", m_tables.Start()) &&
           WritePoints("[CONTROLPOINT]", m_tables.Control());
  }

  bool WriteApproximate() {
    return Table("[APPROXIMATE]", kApproximateColumns, m_tables.Approximate(),
                 [](TableText& out, const PointRow& r) {
                   out.Cell(r.name);
                   for (const double v : {r.x, r.y, r.h}) out.Cell(v);
                   out.EndRow();
                 });
  }

  bool WritePlane() {
    return Table("[PLANE]", kPlaneColumns, m_tables.Plane(), [](TableText& out, const PlaneRow& r) {
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
    return Table("[VERTICAL]", kVerticalColumns, m_tables.Vertical(),
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
    return ObsTable("[HEIGHT]", kHeightColumns, m_tables.Heights(),
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
    return ObsTable("[DIRANGLE]", kAngleColumns, m_tables.Directions(), angle) &&
           ObsTable("[LENGTH]", kLengthColumns, m_tables.Lengths(), length) &&
           ObsTable("[AZIMUTH]", kAngleColumns, m_tables.Azimuths(), angle);
  }

  bool WritePrecision() {
    return ObsTable("[PRECISION]", kPrecisionColumns, m_tables.Precision(),
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

  bool WritePoints(const char* keyword, const std::vector<PointRow>& rows) {
    return Table(keyword, kPointColumns, rows, [](TableText& out, const PointRow& r) {
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
  const TextSink& m_sink;
  TableText m_out;
};

}  // namespace

Outcome WriteResultReport(const AdjustmentContext& context, const FilePath& path) {
  const ThreadTeam team;
  bool isComplete = false;
  const auto write = [&](const TextSink& sink) {
    isComplete = ReportWriter(context, sink).Write();
  };
  if (ReplaceFile(path, write) != Replaced::kDone) return Error(BRENU_FILE_NOT_WRITTEN);
  if (!isComplete) return Error(BRENU_REPORT_STOPS_SHORT);
  return {};
}

}  // namespace brenu
