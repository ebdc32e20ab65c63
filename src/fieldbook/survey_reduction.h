#pragma once

#include <cstdint>
#include <deque>
#include <vector>

#include "fieldbook/field_book.h"
#include "fieldbook/levelling.h"
#include "fieldbook/reduction_options.h"
#include "fieldbook/station_means.h"

namespace brenu {

// Field books of one survey, reduced to what was observed from each station and to level lines.
class SurveyReduction {
 public:
  SurveyReduction(const PointNames& names, const ReductionOptions& options)
      : m_names(names), m_options(options) {}

  // Reduces a book; what is doubtful joins its findings.
  void Add(FieldBook& book, ReductionLog* log);

  // In the order of their first setups.
  const std::deque<StationMeans>& Stations() const { return m_stations; }
  // Levelled lines, those of the same ends and direction put together.
  std::vector<HeightLine> LevelLines(ReductionLog* log) const;
  // Trigonometric height differences, their lengths such that they get their weight among levelled
  // lines: (standard error / kLevelError)^2 km.  One without the heights of instrument and target
  // is told of.
  std::vector<HeightLine> TrigonometricLines(Findings& findings) const;
  // What the books state, or the spread of their sets.
  APriori APrioriErrors() const { return m_aPriori.value_or(m_spread.Proposal()); }
  const Spread& SetSpread() const { return m_spread; }

  // Of 1 km of levelling, as adjustments assume it: metres.
  static constexpr double kLevelError = 0.001;

 private:
  const PointNames& m_names;
  const ReductionOptions& m_options;
  std::deque<StationMeans> m_stations;
  std::unordered_map<std::int32_t, std::size_t> m_places;  // of stations
  std::vector<HeightLine> m_lines;
  Spread m_spread;
  std::optional<APriori> m_aPriori;
  std::int32_t m_books = 0;
};

}  // namespace brenu
