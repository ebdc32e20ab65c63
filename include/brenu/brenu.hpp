// Brenu for C++17 and later: brenu.h with an owner for the context, strings, and optional results.
//
// Everything is inline and thin: a method is the function of the same name in brenu.h, whose
// comment there says what it does, with what units and when it fails.  What can fail gives an empty
// optional, or false; only the constructor throws.  The reductions need no wrapper: call them from
// brenu.h.
#ifndef BRENU_BRENU_HPP_
#define BRENU_BRENU_HPP_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include "brenu/brenu.h"

namespace brenu {

// The name or route in a record.
template <std::size_t N>
std::string Text(const char (&field)[N]) {
  const void* const end = std::memchr(field, '\0', N);
  return {field,
          end == nullptr ? N : static_cast<std::size_t>(static_cast<const char*>(end) - field)};
}

// A point under a name, which is cut to 127 bytes.  Types: 0 new, 1 bench mark, 10 plane control,
// 11 both.
inline PointData MakePoint(std::string_view name, std::int32_t type = 0, double x = 0.0,
                           double y = 0.0, double h = 0.0) {
  PointData point{};
  name.copy(point.name, sizeof point.name - 1);
  point.type = type;
  point.x = x;
  point.y = y;
  point.h = h;
  return point;
}

// An observation with everything absent, to be filled field by field.
inline ObsData NoObservation() { return {0.0, -1.0, 0.0, -1.0}; }

// Of a direction, a distance or an azimuth, in the units of its getter.
struct ObservationResult {
  double residual, adjusted, apriori;
};
struct HeightObservationResult {
  double residual, adjusted, sigma, weight;
};
struct LinePrecision {
  double azimuth, azimuthError, length, lengthError;
  std::int32_t relativePrecision;
};
struct TraverseRow {
  double angle, angleCorrection, azimuth, length, dx, dy, dxCorrection, dyCorrection, x, y;
  double angleMisclosure, lengthMisclosure;
  std::int32_t relativePrecision;
};
struct PlacementChoice {
  CircleRecord first, second;  // the names in them are valid until the next call on the context
  std::string text;
};

// One job.  Can be moved, not copied.
class Context {
 public:
  Context() : m_context(StartAdjustment()) {
    if (m_context == nullptr) throw std::bad_alloc();
  }
  // For calling brenu.h directly.
  AdjustmentContext* Get() const { return m_context.get(); }

  AdjParam Param() const { return GetAdjParam(Get()); }
  void SetParam(const AdjParam& param) { SetAdjParam(Get(), param); }

  // ---- Files ----
  [[nodiscard]] bool OpenProject(const std::string& path) {
    return OpenBrenuAdjustFile(Get(), path.c_str());
  }
  [[nodiscard]] bool SaveProject(const std::string& path) {
    return SaveBrenuAdjustFile(Get(), path.c_str()) == 1;
  }
  [[nodiscard]] bool OpenStationFile(const std::string& path) {
    return LoadKorvelAdjustFile(Get(), path.c_str());
  }
  [[nodiscard]] bool WriteResults(const std::string& path) {
    return ExportResultFile(Get(), path.c_str());
  }
  [[nodiscard]] bool WriteClosures(const std::string& path) {
    return ExportCloseErrorFile(Get(), path.c_str());
  }

  // ---- Points and observations ----
  std::uint32_t PointCount() const { return GetPointCount(Get()); }
  std::optional<PointData> Point(std::int32_t index) const {
    return Ask<PointData>([&](PointData& out) { return GetPoint(Get(), index, &out) == index; },
                          index >= 0);
  }
  std::optional<std::int32_t> IndexOf(const std::string& name) const {
    const std::int32_t index = GetPointNum(Get(), name.c_str());
    return index < 0 ? std::nullopt : std::optional(index);
  }
  [[nodiscard]] bool Add(std::int32_t index, const PointData& point) {
    return AddPoint(Get(), index, point) >= 0;
  }
  [[nodiscard]] bool Set(std::int32_t index, const PointData& point) {
    return SetPoint(Get(), index, point) >= 0;
  }
  [[nodiscard]] bool Delete(std::int32_t index) { return DeletePoint(Get(), index) >= 0; }

  std::int32_t ObservationCount(std::int32_t station) const {
    return GetObsDataCount(Get(), station);
  }
  std::optional<ObsData> Observation(std::int32_t station, const std::string& target) const {
    return Ask<ObsData>(
        [&](ObsData& out) { return GetObsData(Get(), station, target.c_str(), &out) >= 0; });
  }
  [[nodiscard]] bool Add(std::int32_t station, const std::string& target, const ObsData& o) {
    return AddObsData(Get(), station, target.c_str(), o) >= 0;
  }
  [[nodiscard]] bool AddPair(std::int32_t station, const std::string& target1,
                             const std::string& target2, const ObsData& o1, const ObsData& o2,
                             bool reconcile) {
    return AddObsData2(Get(), station, target1.c_str(), target2.c_str(), o1, o2,
                       reconcile ? 1 : 0) == 1;
  }
  [[nodiscard]] bool Set(std::int32_t station, const std::string& target, const ObsData& o) {
    return SetObsData(Get(), station, target.c_str(), o) >= 0;
  }
  [[nodiscard]] bool Delete(std::int32_t station, const std::string& target) {
    return DeleteObsData(Get(), station, target.c_str()) >= 0;
  }

  // ---- Computations ----
  std::int32_t NetworkType() { return GetNetType(Get()); }
  [[nodiscard]] bool Approximate() { return ApproxCalc(Get()); }
  [[nodiscard]] bool Adjust() { return LeastSquareAdj(Get()); }
  [[nodiscard]] bool AdjustUnoriented() { return NonDirectionAdj(Get()); }
  [[nodiscard]] bool Snoop(std::uint32_t kind, double levelAlpha, double planeAlpha) {
    return DataSnooping(Get(), kind, levelAlpha, planeAlpha) == 1;
  }
  [[nodiscard]] bool ComputeClosures() { return CalculateCloseError(Get()); }

  // ---- Results ----
  std::optional<PointData> Approximation(std::int32_t number) const {
    return Ask<PointData>([&](PointData& out) { return GetApproxResult(Get(), number, &out); });
  }
  std::optional<PlaneResult> Plane(std::int32_t index) const {
    return Ask<PlaneResult>([&](PlaneResult& out) { return GetPlaneResult(Get(), index, &out); });
  }
  // Of a point that is there; the function in brenu.h would add one.
  std::optional<VerticalResult> Height(std::int32_t index) const {
    return Ask<VerticalResult>(
        [&](VerticalResult& out) { return GetVerticalResult(Get(), index, &out); },
        Point(index).has_value());
  }
  std::optional<ObservationResult> Direction(std::int32_t station,
                                             const std::string& target) const {
    return AskObservation(GetDirAngleResult, station, target);
  }
  std::optional<ObservationResult> Length(std::int32_t station, const std::string& target) const {
    return AskObservation(GetLengthResult, station, target);
  }
  std::optional<ObservationResult> Azimuth(std::int32_t station, const std::string& target) const {
    return AskObservation(GetAzimuthResult, station, target);
  }
  // As Height.
  std::optional<HeightObservationResult> HeightDifference(std::int32_t station,
                                                          const std::string& target) const {
    return Ask<HeightObservationResult>(
        [&](HeightObservationResult& r) {
          return GetHeightObsResult(Get(), station, target.c_str(), &r.residual, &r.adjusted,
                                    &r.sigma, &r.weight);
        },
        Point(station).has_value());
  }
  std::optional<LinePrecision> Line(std::int32_t station, const std::string& target) const {
    return Ask<LinePrecision>([&](LinePrecision& r) {
      return GetAzAndLenPrecision(Get(), station, target.c_str(), &r.azimuth, &r.azimuthError,
                                  &r.length, &r.lengthError, &r.relativePrecision);
    });
  }
  std::int32_t ClosureCount() const { return GetCloseErrorCount(Get()); }
  std::optional<CloseError> Closure(std::int32_t index) const {
    return Ask<CloseError>([&](CloseError& out) { return GetCloseError(Get(), index, &out); });
  }
  bool ClosuresPass() const { return GetCloseErrorMark(Get()) == 1; }
  std::optional<TraverseRow> Traverse(std::int32_t index) const {
    return Ask<TraverseRow>([&](TraverseRow& r) {
      return GetTraverseResult(Get(), index, &r.angle, &r.angleCorrection, &r.azimuth, &r.length,
                               &r.dx, &r.dy, &r.dxCorrection, &r.dyCorrection, &r.x, &r.y,
                               &r.angleMisclosure, &r.lengthMisclosure, &r.relativePrecision) == 1;
    });
  }

  // ---- Trilateration ----
  [[nodiscard]] bool JudgePlacing() { return JudgeTrilateration(Get()); }
  [[nodiscard]] bool PreparePlacing() { return InitializeDataTrilateration(Get()); }
  // The point to place next: the named one, or the library's choice.
  std::optional<PlacementChoice> NextPlacement(std::string_view name = {}) {
    return Ask<PlacementChoice>([&](PlacementChoice& choice) {
      char direction[255] = {};
      name.copy(direction, sizeof direction - 1);
      if (GetTrilaterationDirection(Get(), &choice.first, &choice.second, direction) != 1) {
        return false;
      }
      choice.text = Text(direction);
      return true;
    });
  }
  // Gives the number of points left to place.
  std::optional<std::uint32_t> Place(const std::string& name, const PlacementChoice& choice,
                                     bool right) {
    return Ask<std::uint32_t>([&](std::uint32_t& remaining) {
      remaining = UINT32_MAX;  // stays without a plane network
      return CalcTrilaterationpPoint(Get(), right ? 1 : 0, choice.first, choice.second,
                                     name.c_str(), &remaining) &&
             remaining != UINT32_MAX;
    });
  }
  [[nodiscard]] bool FinishPlacing() { return TrilaterationDirection(Get()); }

 private:
  struct End {
    void operator()(AdjustmentContext* context) const { EndAdjustment(context); }
  };
  using Getter = bool (*)(AdjustmentContext*, std::int32_t, const char*, double*, double*, double*);

  template <typename Result, typename Call>
  static std::optional<Result> Ask(Call call, bool sensible = true) {
    Result result{};
    if (!sensible || !call(result)) return std::nullopt;
    return result;
  }
  std::optional<ObservationResult> AskObservation(Getter getter, std::int32_t station,
                                                  const std::string& target) const {
    return Ask<ObservationResult>([&](ObservationResult& r) {
      return getter(Get(), station, target.c_str(), &r.residual, &r.adjusted, &r.apriori);
    });
  }

  std::unique_ptr<AdjustmentContext, End> m_context;
};

}  // namespace brenu

#endif  // BRENU_BRENU_HPP_
