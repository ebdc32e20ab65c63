#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "report/report.h"
#include "report/sketch.h"
#include "review/language.h"

namespace brenu {

// The network of a report as it is drawn.
class ReportSketch {
 public:
  ReportSketch(const Report& report, Language language);

  const Sketch& Drawing() const { return m_sketch; }
  // Where the point, or the line that an observation belongs to, stands in it; -1 for nowhere.
  std::int32_t PointOf(std::string_view name) const;
  std::int32_t LineOf(std::string_view from, std::string_view to) const;

 private:
  template <typename Row>
  SketchPoint& Point(const Row& row);
  void AddPoints(const Report& report);
  void AddObservations(const NetworkReport& network);
  SketchLine& Line(std::int32_t from, std::int32_t to);
  void FlagPoints(const Report& report);

  Sketch m_sketch;
  std::unordered_map<std::string_view, std::int32_t> m_points;  // names of the report
  std::unordered_map<std::uint64_t, std::int32_t> m_lines;      // by both ends, the lower first
};

}  // namespace brenu
