// The tables of the report page.
#pragma once

#include <string>
#include <vector>

#include "io/text_pieces.h"
#include "report/comparison.h"
#include "report/make_sketch.h"
#include "report/report.h"
#include "review/language.h"
#include "review/misfits.h"

namespace brenu {

class HtmlTables {
 public:
  HtmlTables(const TextSink& sink, const ReportSketch& sketch, Language language)
      : m_sink(sink), m_sketch(sketch), m_language(language) {}

  // A table under a caption; nothing when it has no rows.  The first hundreds of rows stand in the
  // page, the others in a second table that is shown only where no script turns pages.
  template <typename Row>
  void Add(const char* id, const Words& caption, const std::vector<Row>& rows);

 private:
  template <typename Row>
  void AddTable(const std::vector<Row>& rows, std::size_t begin, std::size_t end);
  template <typename Row>
  void AppendRow(std::string& out, const Row& row) const;
  // The tag of a row and what it holds for the script.
  template <typename Row>
  std::string TagOf(const Row&) const {
    return "<tr>";
  }
  std::string TagOf(const PlanePointRow& row) const { return PointTag(row.name, ""); }
  std::string TagOf(const HeightRow& row) const { return PointTag(row.name, ""); }
  std::string TagOf(const ObservationRow& row) const;
  std::string TagOf(const TakenOutRow& row) const { return LineTag(row.from, row.to, "flag"); }
  std::string TagOf(const RelativeEllipseRow& row) const { return LineTag(row.from, row.to, ""); }
  std::string TagOf(const Misfit& row) const {
    return LineTag(row.from, row.to, IsLarge(row) ? "flag" : "");
  }
  std::string TagOf(const PlaneDifferenceRow& row) const { return DifferenceTag(row); }
  std::string TagOf(const HeightDifferenceRow& row) const { return DifferenceTag(row); }
  template <typename Row>
  std::string DifferenceTag(const Row& row) const {
    return PointTag(row.name, row.significant ? "flag" : "");
  }
  std::string PointTag(const std::string& name, const char* kind) const;
  std::string LineTag(const std::string& from, const std::string& to, const char* kind) const;

  const TextSink& m_sink;
  const ReportSketch& m_sketch;
  Language m_language;
};

}  // namespace brenu
