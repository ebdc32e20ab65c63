#include "data_check.h"

#include <cmath>

#include "job/adjustment_context.h"
#include "format.h"
#include "network_view.h"

namespace brenu::tool {

namespace {

bool IsPositive(double value) { return std::isfinite(value) && value > 0.0; }

bool AreFinite(const ObsData& o) {
  return std::isfinite(o.direction) && std::isfinite(o.distance) && std::isfinite(o.heightDiff) &&
         std::isfinite(o.azimuth);
}

// Traverses without orientation are computed without weights.
bool HasWeightsInPlane(AdjustmentContext& context) {
  return HasPlane(GetNetType(&context)) && !IsUnoriented(context);
}

// Of an observation in the plane.
std::optional<std::string> WeightFault(const AdjParam& param, const Observation& o) {
  if (HasDistance(o.data) && !IsPositive(param.MS + param.MR * o.data.distance)) {
    return "the a-priori error MS + MR * S of the distance " + Line(o.stationName, o.target) +
           " is not positive; correct MS and MR";
  }
  if ((HasDirection(o.data) || HasAzimuth(o.data)) && !IsPositive(param.MO)) {
    return "the a-priori error of the directions is not positive; correct MO";
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> FindDataFault(const AdjustmentContext& context) {
  for (const auto& [index, point] : context.store.Points()) {
    if (std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.h)) continue;
    return "a coordinate of the point " + Printable(NameOf(point)) +
           " is no finite number; correct it";
  }
  for (const Observation& o : ObservationsOf(context)) {
    if (!AreFinite(o.data)) {
      return "an observation of the line " + Line(o.stationName, o.target) +
             " is no finite number; correct it";
    }
    if (o.data.distance < 0.0) {
      return "the distance " + Line(o.stationName, o.target) + " is negative; correct it";
    }
  }
  return std::nullopt;
}

std::optional<std::string> FindWeightFault(AdjustmentContext& context) {
  if (!HasWeightsInPlane(context)) return std::nullopt;
  for (const Observation& o : ObservationsOf(context)) {
    if (auto fault = WeightFault(context.param, o)) return fault;
  }
  return std::nullopt;
}

std::optional<std::string> DoubtAboutDistanceErrors(AdjustmentContext& context) {
  if (!HasWeightsInPlane(context)) return std::nullopt;
  double sum = 0.0;
  int count = 0;
  for (const Observation& o : ObservationsOf(context)) {
    if (!HasDistance(o.data)) continue;
    sum += o.data.distance;
    ++count;
  }
  if (count == 0) return std::nullopt;
  const double mean = sum / count;
  const double error = context.param.MS + context.param.MR * mean;
  if (!(error > mean / 10.0)) return std::nullopt;
  return "MS and MR give a distance of " + Fixed(mean, 0) + " m a standard error of " +
         Fixed(error, 0) +
         " m, so that distances hardly count; they are in metres, 5 mm + 5 ppm is MS:0.005 and "
         "MR:0.000005";
}

std::optional<std::string> DoubtAboutLineLengths(AdjustmentContext& context) {
  if (!HasLevelling(GetNetType(&context)) || !IsOrdinary(context)) return std::nullopt;
  std::string first;
  int others = 0;
  bool somethingLevelled = false;  // nothing is another fault, found by the computation
  for (const Observation& o : ObservationsOf(context)) {
    somethingLevelled = somethingLevelled || IsLevelled(o.data);
    if (HasDistance(o.data) || o.data.heightDiff == 0.0) continue;
    if (first.empty()) {
      first = Line(o.stationName, o.target);
    } else {
      ++others;
    }
  }
  if (first.empty() || !somethingLevelled) return std::nullopt;
  return "the height difference " + first +
         (others == 0 ? " has no line length and takes"
                      : " and " + std::to_string(others) + " more have no line length and take") +
         " no part; give the length in the field of the distance";
}

std::optional<std::string> DoubtAboutAzimuths(AdjustmentContext& context) {
  if (HasPlane(GetNetType(&context))) return std::nullopt;
  for (const Observation& o : ObservationsOf(context)) {
    if (!HasAzimuth(o.data)) continue;
    return "the line " + Line(o.stationName, o.target) +
           " has an azimuth, which takes no part in a levelling network; perhaps a comma was "
           "written for the decimal point of its height difference";
  }
  return std::nullopt;
}

std::optional<std::string> DoubtAboutFormat(AdjustmentContext& context) {
  const std::int32_t format = context.param.format;
  if (IsOrdinary(context) && format != 0) {
    return "there is no format " + std::to_string(format) +
           ", so that the network is computed as one of format 0; give 0, 1 or 3";
  }
  if (IsOrdinary(context)) return std::nullopt;
  if (GetNetType(&context) == kPlaneAndLevelling) {
    return "formats 1 and 3 compute the plane only; adjust the heights as a job of their own";
  }
  if (!IsDistancesOnly(context)) return std::nullopt;
  for (const Observation& o : ObservationsOf(context)) {
    if (!HasDirection(o.data) && !HasAzimuth(o.data)) continue;
    return "directions and azimuths take no part with format 3, but count in the redundancy, so "
           "that m0 and the standard errors come out too small; every line of a station file has "
           "a direction";
  }
  return std::nullopt;
}

}  // namespace brenu::tool
