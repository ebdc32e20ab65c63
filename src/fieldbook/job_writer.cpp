#include "fieldbook/job_writer.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/angles.h"

namespace brenu {

namespace {

constexpr int kPlaneControl = 10;
constexpr int kHeightControl = 1;

// As dd.mmss to a microsecond of arc; RadToDms takes an angle that lacks 0.36" to a full degree for
// that degree.
double DirectionOf(std::optional<double> angle) {
  if (!angle) return kAbsentAngle;
  constexpr double kPlaces = 1e6;
  const double seconds = std::round(FullCircle(*angle) * kRho * kPlaces) / kPlaces;
  const double minutes = std::floor(seconds / 60.0);
  const double degrees = std::floor(minutes / 60.0);
  return degrees + (minutes - degrees * 60.0) / 100.0 + (seconds - minutes * 60.0) / 10000.0;
}

// A height difference or length of 0 would count as absent.
double Present(double value) {
  constexpr double kSmallest = 1e-6;
  return std::fabs(value) < kSmallest ? kSmallest : value;
}

void EnterErrors(const APriori& errors, ImportedJob& job) {
  const bool hasDistance = errors.distance > 0.0 || errors.distanceRatio > 0.0;
  job.param.MO = errors.direction > 0.0 ? errors.direction : kUsualErrors.direction;
  job.param.MS = hasDistance ? errors.distance : kUsualErrors.distance;
  job.param.MR = hasDistance ? errors.distanceRatio : kUsualErrors.distanceRatio;
}

}  // namespace

const std::string& JobWriter::NameFor(NameNo name) {
  const std::string& asRead = m_names[name];
  const auto isUnfit = [](char c) { return c == ',' || (c >= '\0' && c < ' '); };
  const bool fits =
      asRead.size() <= kMaxNameLength && std::none_of(asRead.begin(), asRead.end(), isUnfit);
  if (fits) return asRead;
  const auto [changed, isNew] = m_changedNames.try_emplace(name.Number(), asRead);
  if (!isNew) return changed->second;
  std::string& fit = changed->second;
  std::replace_if(fit.begin(), fit.end(), isUnfit, '_');
  fit.resize(std::min(fit.size(), kMaxNameLength));
  const std::string start = fit;
  for (int number = 2; m_names.Has(fit) || m_newNames.contains(fit); ++number) {
    const std::string end = '_' + std::to_string(number);
    fit = start.substr(0, kMaxNameLength - end.size()) + end;
  }
  m_newNames.insert(fit);
  m_findings.push_back(Warning(BRENU_NAME_CHANGED, {asRead, fit}));
  return fit;
}

std::int32_t JobWriter::Point(NameNo name, Known known, ImportedJob& job) {
  const auto index = static_cast<std::int32_t>(m_indices.size());
  const auto [entry, isNew] = m_indices.try_emplace(name.Number(), index);
  if (!isNew) return entry->second;
  PointData point{};
  const std::string& text = NameFor(name);
  std::copy(text.begin(), text.end(), point.name);
  if (const auto place = m_places.find(name); place != m_places.end()) {
    point.x = place->second.x.value_or(0.0);
    point.y = place->second.y.value_or(0.0);
    point.h = place->second.h.value_or(0.0);
    const bool isPlaneControl = known == Known::kPlane && place->second.isPlaneKnown;
    const bool isHeightControl = known == Known::kHeight && place->second.isHeightKnown;
    point.type = isPlaneControl ? kPlaneControl : isHeightControl ? kHeightControl : 0;
  }
  Outcome added = job.store.AddPoint(index, point);
  for (Finding& finding : added.findings) m_findings.push_back(std::move(finding));
  return index;
}

void JobWriter::EnterControl(Known known, const std::set<NameNo>& sighted, ImportedJob& job) {
  m_indices.clear();
  for (const auto& [name, place] : m_places) {
    const bool isControl = known == Known::kPlane ? place.isPlaneKnown : place.isHeightKnown;
    const bool isWanted = isControl && (!place.isListed || sighted.contains(name));
    if (isWanted || place.isKept) Point(name, known, job);
  }
}

void JobWriter::SayControl(const ImportedJob& job, Known known) {
  const auto isControl = known == Known::kPlane ? IsPlaneControl : IsHeightControl;
  const auto& points = job.store.Points();
  if (std::none_of(points.begin(), points.end(),
                   [&](const auto& entry) { return isControl(entry.second); })) {
    m_findings.push_back(
        Warning(BRENU_IMPORT_WITHOUT_CONTROL, {}, {known == Known::kPlane ? 0.0 : 1.0}));
  }
}

void JobWriter::WritePlane(ImportedJob& job) {
  std::set<NameNo> sighted;
  for (const StationMeans& station : m_survey.Stations()) {
    sighted.insert(station.Station());
    for (const TargetMeans& target : station.Targets()) sighted.insert(target.target);
  }
  EnterControl(Known::kPlane, sighted, job);
  EnterErrors(m_survey.APrioriErrors(), job);
  bool hasAngles = false;
  for (const StationMeans& station : m_survey.Stations()) {
    const std::int32_t index = Point(station.Station(), Known::kPlane, job);
    for (const TargetMeans& target : station.Targets()) {
      Point(target.target, Known::kPlane, job);
      ObsData obs{};
      obs.distance = target.distance.value.value_or(kAbsentLength);
      obs.direction = DirectionOf(target.direction.value);
      obs.azimuth = DirectionOf(target.azimuth.value);
      hasAngles = hasAngles || HasDirection(obs) || HasAzimuth(obs);
      if (!HasDirection(obs) && !HasDistance(obs) && !HasAzimuth(obs)) continue;
      Outcome added = job.store.AddObs(index, NameFor(target.target), obs);
      for (Finding& finding : added.findings) m_findings.push_back(std::move(finding));
    }
  }
  if (!hasAngles) job.param.format = kFormatDistancesOnly;
  SayControl(job, Known::kPlane);
}

void JobWriter::WriteHeights(const std::vector<HeightLine>& lines, ImportedJob& job) {
  std::set<NameNo> sighted;
  for (const HeightLine& line : lines) sighted.insert({line.from, line.to});
  EnterControl(Known::kHeight, sighted, job);
  EnterErrors(m_survey.APrioriErrors(), job);
  for (const HeightLine& line : lines) {
    const std::int32_t from = Point(line.from, Known::kHeight, job);
    Point(line.to, Known::kHeight, job);
    const ObsData obs = {Present(line.length), kAbsentAngle, Present(line.difference),
                         kAbsentAngle};
    Outcome added = job.store.AddObs(from, NameFor(line.to), obs);
    for (Finding& finding : added.findings) {
      finding.line = line.line;
      m_findings.push_back(std::move(finding));
    }
  }
  SayControl(job, Known::kHeight);
}

bool JobWriter::JoinHeights(const std::vector<HeightLine>& lines, ImportedJob& job) {
  constexpr double kSame = 0.001;  // metres
  std::vector<std::pair<std::int32_t, ObsData>> joined;
  for (const HeightLine& line : lines) {
    const auto from = m_indices.find(line.from.Number());
    if (from == m_indices.end()) return false;
    const ObsData* obs = std::as_const(job.store).FindObs(from->second, NameFor(line.to));
    if (obs == nullptr || std::fabs(obs->distance - line.length) > kSame) return false;
    joined.emplace_back(from->second, *obs);
    joined.back().second.heightDiff = Present(line.difference);
  }
  for (std::size_t i = 0; i < lines.size(); ++i) {
    Outcome set = job.store.SetObs(joined[i].first, NameFor(lines[i].to), joined[i].second);
    for (Finding& finding : set.findings) m_findings.push_back(std::move(finding));
  }
  for (const auto& [name, place] : m_places) {
    const auto index = m_indices.find(name.Number());
    if (!place.isHeightKnown || index == m_indices.end()) continue;
    PointData point = *job.store.FindPoint(index->second);
    point.type += kHeightControl;
    Outcome set = job.store.SetPoint(index->second, point);
    for (Finding& finding : set.findings) m_findings.push_back(std::move(finding));
  }
  return true;
}

void JobWriter::WritePoints(ImportedJob& job) {
  m_indices.clear();
  for (const auto& [name, place] : m_places) Point(name, Known::kPlane, job);
}

}  // namespace brenu
