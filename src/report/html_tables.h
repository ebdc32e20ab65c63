// The tables of the report page.
#pragma once

#include <string>

#include "report/comparison.h"
#include "report/make_sketch.h"
#include "report/report.h"
#include "review/language.h"

namespace brenu {

class HtmlTables {
 public:
  HtmlTables(std::string& out, const ReportSketch& sketch, Language language)
      : m_out(out), m_sketch(sketch), m_language(language) {}

  // A table under a caption; nothing when it has no rows.  The first hundreds of rows stand in the
  // page, the others in a second table that is shown only where no script turns pages.
  template <typename Row>
  void Add(const char* id, const Words& caption, const std::vector<Row>& rows);

 private:
  template <typename Row>
  void Head();
  template <typename Row>
  void AddRow(const Row& row);
  template <typename Row>
  void OpenRow(const Row& row);
  void OpenRow(const PlanePointRow& row) { OpenPointRow(row.name); }
  void OpenRow(const HeightRow& row) { OpenPointRow(row.name); }
  void OpenRow(const ObservationRow& row);
  void OpenRow(const TakenOutRow& row) { OpenLineRow(row.from, row.to, "flag"); }
  void OpenRow(const RelativeEllipseRow& row) { OpenLineRow(row.from, row.to, ""); }
  void OpenRow(const PlaneDifferenceRow& row);
  void OpenRow(const HeightDifferenceRow& row);
  template <typename Row>
  void OpenDifferenceRow(const Row& row);
  void OpenPointRow(const std::string& name);
  void OpenLineRow(const std::string& from, const std::string& to, const char* kind);

  std::string& m_out;
  const ReportSketch& m_sketch;
  Language m_language;
};

}  // namespace brenu
