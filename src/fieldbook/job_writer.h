#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/finding.h"
#include "core/records.h"
#include "fieldbook/survey_reduction.h"
#include "job/store.h"

namespace brenu {

// Where a point is, as far as that is known.
struct KnownPlace {
  std::optional<double> x, y, h;
  bool isPlaneKnown = false, isHeightKnown = false;  // control; else approximate
  bool isKept = false;    // of a network file, which lists the points of its job
  bool isListed = false;  // in a file of control, which may hold more points than the survey
};
using KnownPlaces = std::map<NameNo, KnownPlace>;

// A job as it goes into a context.
struct ImportedJob {
  AdjParam param = kDefaultParam;
  Store store;
};

// Writes reduced observations into jobs: control first, then the points in the order in which they
// were sighted.  Other points are left out.
class JobWriter {
 public:
  JobWriter(const SurveyReduction& survey, const PointNames& names, const KnownPlaces& places,
            Findings& findings)
      : m_survey(survey), m_names(names), m_places(places), m_findings(findings) {}

  // Directions, distances and azimuths; control is of type 10.
  void WritePlane(ImportedJob& job);
  // Height differences; control is of type 01.
  void WriteHeights(const std::vector<HeightLine>& lines, ImportedJob& job);
  // Height differences into a job of the plane, when all of them are beside a distance that is the
  // length of their line; false otherwise.
  bool JoinHeights(const std::vector<HeightLine>& lines, ImportedJob& job);
  // All points, of what is a list of them.
  void WritePoints(ImportedJob& job);

 private:
  enum class Known : std::uint8_t { kPlane, kHeight };

  void EnterControl(Known known, const std::set<NameNo>& sighted, ImportedJob& job);
  // The index of the point, entered if it is new.
  std::int32_t Point(NameNo name, Known known, ImportedJob& job);
  void SayControl(const ImportedJob& job, Known known);
  // As a job can keep it: without commas and control characters, not too long.
  const std::string& NameFor(NameNo name);

  const SurveyReduction& m_survey;
  const PointNames& m_names;
  const KnownPlaces& m_places;
  Findings& m_findings;
  std::unordered_map<std::int32_t, std::int32_t> m_indices;  // of the job at hand
  std::unordered_map<std::int32_t, std::string> m_changedNames;
  std::set<std::string> m_newNames;  // those, each once
};

}  // namespace brenu
