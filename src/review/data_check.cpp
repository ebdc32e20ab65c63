#include "review/data_check.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/angles.h"
#include "core/median.h"
#include "review/encoding.h"
#include "review/network_view.h"

namespace brenu {

namespace {

using Observations = std::vector<Observation>;

std::vector<std::string> NamesOf(const Observation& o) {
  return {std::string(o.station), std::string(o.target)};
}

bool IsPositive(double value) { return std::isfinite(value) && value > 0.0; }

bool AreFinite(const ObsData& o) {
  return std::isfinite(o.direction) && std::isfinite(o.distance) && std::isfinite(o.heightDiff) &&
         std::isfinite(o.azimuth);
}

bool HasHeightControl(const AdjustmentContext& context) {
  return std::any_of(context.store.Points().begin(), context.store.Points().end(),
                     [](const auto& entry) { return IsHeightControl(entry.second); });
}

bool HasPlaneControl(const AdjustmentContext& context) {
  return std::any_of(context.store.Points().begin(), context.store.Points().end(),
                     [](const auto& entry) { return IsPlaneControl(entry.second); });
}

// The first value at fault spoils every result; others would say the same again.
void CheckValues(const AdjustmentContext& context, const Observations& observations,
                 Findings& found) {
  for (const auto& [index, point] : context.store.Points()) {
    if (std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.h)) continue;
    found.push_back(Error(BRENU_COORDINATE_NOT_FINITE, {std::string(NameOf(point))}));
    return;
  }
  for (const Observation& o : observations) {
    const bool isFinite = AreFinite(o.data);
    if (isFinite && o.data.distance >= 0.0) continue;
    found.push_back(
        Error(isFinite ? BRENU_DISTANCE_NEGATIVE : BRENU_OBSERVATION_NOT_FINITE, NamesOf(o)));
    return;
  }
}

// A-priori errors of the distances that look as if they were in millimetres.
void CheckDistanceErrors(const AdjustmentContext& context, const Observations& observations,
                         Findings& found) {
  if (!HasPlaneControl(context) || IsUnoriented(context)) return;
  double sum = 0.0;
  int count = 0;
  for (const Observation& o : observations) {
    if (!HasDistance(o.data)) continue;
    sum += o.data.distance;
    ++count;
  }
  if (count == 0) return;
  const double mean = sum / count;
  const double error = context.param.MS + context.param.MR * mean;
  if (error > mean / 10.0) found.push_back(Warning(BRENU_DISTANCE_ERRORS_LARGE, {}, {mean, error}));
}

// Height differences that count for nothing, for want of a line length.
void CheckLineLengths(const AdjustmentContext& context, const Observations& observations,
                      Findings& found) {
  if (!HasHeightControl(context) || !IsOrdinary(context)) return;
  const Observation* first = nullptr;
  double more = 0.0;
  bool somethingLevelled = false;  // nothing is another fault, found by the computation
  for (const Observation& o : observations) {
    somethingLevelled = somethingLevelled || IsLevelled(o.data);
    if (HasDistance(o.data) || o.data.heightDiff == kAbsentLength) continue;
    if (first == nullptr) {
      first = &o;
    } else {
      ++more;
    }
  }
  if (first == nullptr || !somethingLevelled) return;
  found.push_back(Warning(BRENU_LINE_LENGTH_MISSING, NamesOf(*first), {more}));
}

// Levelling lines are hundreds of metres long; as kilometres they come out below ten.
void CheckLineUnits(const Observations& observations, Findings& found) {
  std::vector<double> lengths;
  for (const Observation& o : observations) {
    if (IsLevelled(o.data) && !HasDirection(o.data)) lengths.push_back(o.data.distance);
  }
  constexpr std::size_t kFewest = 3;
  if (lengths.size() < kFewest) return;
  const double usual = Median(std::move(lengths));
  constexpr double kShort = 10.0;
  if (usual < kShort) {
    found.push_back(Warning(BRENU_LINE_LENGTHS_IN_KILOMETRES, {}, {usual}));
  }
}

// A decimal comma makes them in a levelling network.
void CheckAzimuths(const AdjustmentContext& context, const Observations& observations,
                   Findings& found) {
  if (HasPlaneControl(context) || !HasHeightControl(context)) return;
  const auto azimuth = std::find_if(observations.begin(), observations.end(),
                                    [](const Observation& o) { return HasAzimuth(o.data); });
  if (azimuth == observations.end()) return;
  found.push_back(Warning(BRENU_AZIMUTH_WITHOUT_PLANE, NamesOf(*azimuth)));
}

void CheckFormat(const AdjustmentContext& context, const Observations& observations,
                 Findings& found) {
  const double format = context.param.format;
  if (IsOrdinary(context)) {
    if (format != 0.0) found.push_back(Warning(BRENU_FORMAT_UNKNOWN, {}, {format}));
    return;
  }
  if (HasPlaneControl(context) && HasHeightControl(context)) {
    found.push_back(Warning(BRENU_FORMAT_LEAVES_HEIGHTS, {}, {format}));
  }
  if (!IsDistancesOnly(context)) return;
  const bool hasAngles =
      std::any_of(observations.begin(), observations.end(),
                  [](const Observation& o) { return HasDirection(o.data) || HasAzimuth(o.data); });
  if (hasAngles) found.push_back(Warning(BRENU_FORMAT_COUNTS_DIRECTIONS));
}

// Null when the point is no plane control point, or when a renaming has left the name without
// point.
const PointData* PlaneControl(const Store& store, std::string_view name) {
  const PointData* point = store.FindPoint(store.IndexOfName(name));
  return point != nullptr && IsPlaneControl(*point) ? point : nullptr;
}

// Distances between points whose coordinates the file gives.
void CheckProportions(const AdjustmentContext& context, const Observations& observations,
                      Findings& found) {
  constexpr double kFactor = 2.0;
  Finding first;
  double more = -1.0;
  for (const Observation& o : observations) {
    if (!HasDistance(o.data) || IsLevelled(o.data)) continue;
    const PointData* from = PlaneControl(context.store, o.station);
    const PointData* to = PlaneControl(context.store, o.target);
    if (from == nullptr || to == nullptr) continue;
    const double known = CalcDistance(from->x, from->y, to->x, to->y);
    const double measured = o.data.distance;
    if (measured < kFactor * known && known < kFactor * measured) continue;
    if (++more == 0.0) {
      first = Warning(BRENU_DISTANCE_OUT_OF_PROPORTION, NamesOf(o), {measured, known});
    }
  }
  if (more < 0.0) return;
  first.values.push_back(more);
  found.push_back(std::move(first));
}

// A coordinate of the control points, each with its name.
using Coordinate = std::pair<double, std::string_view>;

// A coordinate that lies many times the spread of all others away from them is a slip.
void CheckSpread(std::vector<Coordinate> values, const char* what, Findings& found) {
  constexpr std::size_t kFewest = 4;
  constexpr double kTimes = 10.0;
  std::erase_if(values, [](const Coordinate& c) { return !std::isfinite(c.first); });
  if (values.size() < kFewest) return;
  std::sort(values.begin(), values.end());
  const std::size_t last = values.size() - 1;
  const auto check = [&](std::size_t suspect, std::size_t next, double spread) {
    const double gap = std::fabs(values[suspect].first - values[next].first);
    constexpr double kNarrow = 100.0;  // metres: on a line along an axis every slip would be far
    if (!(gap > kTimes * std::max(spread, kNarrow))) return;
    found.push_back(Warning(BRENU_CONTROL_FAR_AWAY, {std::string(values[suspect].second), what},
                            {gap, spread}));
  };
  check(0, 1, values[last].first - values[1].first);
  check(last, last - 1, values[last - 1].first - values[0].first);
}

void CheckControl(const AdjustmentContext& context, Findings& found) {
  std::vector<Coordinate> xs;
  std::vector<Coordinate> ys;
  for (const auto& [index, point] : context.store.Points()) {
    if (!IsPlaneControl(point)) continue;
    xs.emplace_back(point.x, NameOf(point));
    ys.emplace_back(point.y, NameOf(point));
  }
  CheckSpread(std::move(xs), "X", found);
  CheckSpread(std::move(ys), "Y", found);
}

// Angles and azimuths between control points turn the other way when X and Y are exchanged.
void CheckAxes(const AdjustmentContext& context, const Observations& observations,
               Findings& found) {
  constexpr double kClear = kPi / 180.0;
  const Observation* before = nullptr;  // of the same station, with a direction
  double knownBefore = 0.0;
  const Observation* first = nullptr;
  double exchanged = 0.0;
  double asTheyAre = 0.0;
  const auto isSmall = [](double angle) {
    return std::fabs(std::remainder(angle, kTwoPi)) < kClear;
  };
  const auto count = [&](const Observation& o, bool fits, bool fitsExchanged) {
    asTheyAre += fits ? 1.0 : 0.0;
    if (fits || !fitsExchanged) return;
    ++exchanged;
    if (first == nullptr) first = &o;
  };
  for (const Observation& o : observations) {
    const PointData* from = PlaneControl(context.store, o.station);
    const PointData* to = PlaneControl(context.store, o.target);
    if (from == nullptr || to == nullptr) continue;
    const double known = std::atan2(to->y - from->y, to->x - from->x);
    if (HasAzimuth(o.data)) {
      const double azimuth = DmsToRad(o.data.azimuth);
      count(o, isSmall(azimuth - known), isSmall(azimuth + known - kPi / 2.0));
    }
    if (!HasDirection(o.data)) continue;
    const double direction = DmsToRad(o.data.direction);
    if (before != nullptr && before->station == o.station) {
      const double angle = direction - DmsToRad(before->data.direction);
      count(o, isSmall(angle - (known - knownBefore)), isSmall(angle + (known - knownBefore)));
    }
    before = &o;
    knownBefore = known;
  }
  if (first == nullptr || asTheyAre > 0.0) return;
  found.push_back(Warning(BRENU_AXES_EXCHANGED, NamesOf(*first), {exchanged}));
}

}  // namespace

Findings CheckData(const AdjustmentContext& context) {
  const Observations observations = ObservationsOf(context);
  Findings found;
  CheckValues(context, observations, found);
  CheckDistanceErrors(context, observations, found);
  CheckLineLengths(context, observations, found);
  CheckLineUnits(observations, found);
  CheckAzimuths(context, observations, found);
  CheckFormat(context, observations, found);
  CheckProportions(context, observations, found);
  CheckControl(context, found);
  CheckAxes(context, observations, found);
  return found;
}

Findings CheckWeights(const AdjustmentContext& context) {
  // Traverses without orientation are computed without weights.
  if (!HasPlaneControl(context) || IsUnoriented(context)) return {};
  const AdjParam& param = context.param;
  for (const Observation& o : ObservationsOf(context)) {
    if (HasDistance(o.data) && !IsPositive(param.MS + param.MR * o.data.distance)) {
      return {Error(BRENU_DISTANCE_ERROR_NOT_POSITIVE, NamesOf(o))};
    }
    if ((HasDirection(o.data) || HasAzimuth(o.data)) && !IsPositive(param.MO)) {
      return {Error(BRENU_DIRECTION_ERROR_NOT_POSITIVE)};
    }
  }
  return {};
}

Findings CheckNamesForGbk(const AdjustmentContext& context) {
  const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  Finding finding = Note(BRENU_NAME_NOT_GBK);
  for (const auto& [index, point] : context.store.Points()) {
    const std::string_view name = NameOf(point);
    if (std::all_of(name.begin(), name.end(), isAscii) || !IsUtf8(name)) continue;
    finding.names.emplace_back(name);
  }
  return finding.names.empty() ? Findings{} : Findings{std::move(finding)};
}

}  // namespace brenu
