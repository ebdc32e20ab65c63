// Brenu for C++17 and later: brenu.h and survey.h with an owner for the context, strings,
// exceptions by cause, optional results, and loops over points and observations.  Link with
// brenu-survey.
//
// Everything is inline and thin: a method is the function of the same name in brenu.h or survey.h,
// whose comment there says what it does, with what units and when it fails.  Computations follow
// the rules of textbooks, unless the context is made for the classic ones, those of brenu.h.  What
// fails throws brenu::Error, which says why; what cannot be had is an empty optional.  The
// reductions need no wrapper: call them from brenu.h.
#ifndef BRENU_BRENU_HPP_
#define BRENU_BRENU_HPP_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "brenu/error.hpp"
#include "brenu/survey.h"
#include "brenu/taken_out.hpp"
#include "brenu/walk.hpp"

namespace brenu {
inline namespace host {  // apart from the library's own names, for programs that hold its objects

inline std::string_view Version() { return brenu_version(); }

// How many threads computations use; 0 for as many as there are.
inline void SetThreads(int32_t count) { brenu_set_threads(count); }

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
  explicit Context(brenu_rules rules = BRENU_TEXTBOOK) : m_context(StartAdjustment()) {
    m_options.rules = rules;
    if (m_context == nullptr) throw std::bad_alloc();
  }
  // For calling brenu.h directly.
  AdjustmentContext* Get() const { return m_context.get(); }

  // How Approximate, Adjust, Snoop and ComputeClosures go; the test is for Snoop alone.
  const brenu_options& Options() const { return m_options; }
  void SetOptions(const brenu_options& options) { m_options = options; }
  AdjParam Param() const { return GetAdjParam(Get()); }
  void SetParam(const AdjParam& param) { SetAdjParam(Get(), param); }

  // Of the last call that changes, computes, reads or writes: after a success its doubts.
  std::vector<Finding> Findings() const { return FindingsOf(Get()); }

  // ---- Files ----
  // By content, into a fresh context.  The path is UTF-8 on Windows; those below are in the code
  // page of the system.
  brenu_file_kind Read(const std::string& path) {
    return Kind(brenu_read_file(Get(), path.c_str()));
  }
  brenu_file_kind ReadText(std::string_view text) {
    return Kind(brenu_read_memory(Get(), text.data(), text.size()));
  }
  // Field books, as brenu_import; heights may be null.
  void Import(const std::vector<std::string>& paths, const std::string& control = {},
              Context* heights = nullptr, const brenu_import_options* options = nullptr) {
    std::string all;
    for (const std::string& path : paths) all += path + '\n';
    brenu_import(Get(), heights == nullptr ? nullptr : heights->Get(), all.c_str(),
                 control.empty() ? nullptr : control.c_str(), options, nullptr);
    Check();
  }
  void OpenProject(const std::string& path) {
    OpenBrenuAdjustFile(Get(), path.c_str());
    Check();
  }
  void SaveProject(const std::string& path) {
    SaveBrenuAdjustFile(Get(), path.c_str());
    Check();
  }
  void OpenStationFile(const std::string& path) {
    LoadKorvelAdjustFile(Get(), path.c_str());
    Check();
  }
  void WriteResults(const std::string& path) {
    ExportResultFile(Get(), path.c_str());
    Check();
  }
  void WriteClosures(const std::string& path) {
    ExportCloseErrorFile(Get(), path.c_str());
    Check();
  }
  // What looks wrong in the data as a whole; errors do not throw here.
  std::vector<Finding> CheckData() {
    brenu_check_data(Get());
    return Findings();
  }

  // ---- Points and observations ----
  // for (const auto& [index, point] : job.Points())
  Walk<StoredPoint> Points() const { return Walk<StoredPoint>(Get()); }
  // for (const auto& [station, target, observation] : job.Observations()), in the order of names.
  Walk<StoredObservation> Observations() const { return Walk<StoredObservation>(Get()); }
  std::uint32_t PointCount() const { return GetPointCount(Get()); }
  std::optional<PointData> Point(std::int32_t index) const {
    return Ask<PointData>([&](PointData& out) { return GetPoint(Get(), index, &out) == index; },
                          index >= 0);
  }
  std::optional<std::int32_t> IndexOf(const std::string& name) const {
    const std::int32_t index = GetPointNum(Get(), name.c_str());
    return index < 0 ? std::nullopt : std::optional(index);
  }
  void Add(std::int32_t index, const PointData& point) {
    AddPoint(Get(), index, point);
    Check();
  }
  void Set(std::int32_t index, const PointData& point) {
    SetPoint(Get(), index, point);
    Check();
  }
  void Delete(std::int32_t index) {
    DeletePoint(Get(), index);
    Check();
  }

  std::int32_t ObservationCount(std::int32_t station) const {
    return GetObsDataCount(Get(), station);
  }
  std::optional<ObsData> Observation(std::int32_t station, const std::string& target) const {
    return Ask<ObsData>(
        [&](ObsData& out) { return GetObsData(Get(), station, target.c_str(), &out) >= 0; });
  }
  void Add(std::int32_t station, const std::string& target, const ObsData& o) {
    AddObsData(Get(), station, target.c_str(), o);
    Check();
  }
  // Throws when anything was refused, and only then; the first target stays when the second is.
  void AddPair(std::int32_t station, const std::string& target1, const std::string& target2,
               const ObsData& o1, const ObsData& o2, bool reconcile) {
    AddObsData2(Get(), station, target1.c_str(), target2.c_str(), o1, o2, reconcile ? 1 : 0);
    Check();
  }
  void Set(std::int32_t station, const std::string& target, const ObsData& o) {
    SetObsData(Get(), station, target.c_str(), o);
    Check();
  }
  void Delete(std::int32_t station, const std::string& target) {
    DeleteObsData(Get(), station, target.c_str());
    Check();
  }

  // ---- Computations ----
  std::int32_t NetworkType() { return GetNetType(Get()); }
  void Approximate() {
    brenu_approximate(Get(), &m_options);
    Check();
  }
  // Throws when one of two networks fails, too; the results of the other one are there.
  void Adjust() {
    if (m_options.rules == BRENU_CLASSIC) {
      LeastSquareAdj(Get());  // also what the dialogue of trilateration has placed
    } else {
      brenu_options options = m_options;
      options.test = BRENU_NO_TEST;
      brenu_adjust(Get(), &options);
    }
    Check();
  }
  void AdjustUnoriented() {
    NonDirectionAdj(Get());
    Check();
  }
  // Adjusts with data snooping by the test of the options, or else Baarda's.
  void Snoop(double alpha = 0.001) {
    brenu_options options = m_options;
    options.alpha = alpha;
    if (options.test == BRENU_NO_TEST) options.test = BRENU_W_TEST;
    brenu_adjust(Get(), &options);
    Check();
  }
  void ComputeClosures() {
    brenu_compute_closures(Get(), &m_options);
    Check();
  }

  // ---- Results ----
  // The report of the last adjustment, UTF-8.
  std::string Report(brenu_report_form form, const std::string& title = "",
                     brenu_language language = BRENU_ENGLISH) const {
    const char* const text = brenu_report(Get(), form, language, title.c_str());
    if (text == nullptr) throw std::bad_alloc();
    return text;
  }
  // Empty when the last computation did not adjust that network.
  std::optional<brenu_figures> Figures(brenu_network network) const {
    return Ask<brenu_figures>(
        [&](brenu_figures& out) { return brenu_get_figures(Get(), network, &out); });
  }
  // In the order in which data snooping by the rules of textbooks took them out, heights first.
  std::vector<TakenOut> AllTakenOut() const { return AllTakenOutOf(Get()); }
  std::int32_t UntestedCount(brenu_network network) const {
    return brenu_untested_count(Get(), network);
  }
  std::optional<brenu_control_fit> ControlFit(std::int32_t index) const {
    return Ask<brenu_control_fit>(
        [&](brenu_control_fit& out) { return brenu_get_control_fit(Get(), index, &out); });
  }
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

  // ---- Trilateration: a dialogue for the classic rules, which Adjust ends.  By those of textbooks
  // Adjust places the points itself ----
  void JudgePlacing() {
    JudgeTrilateration(Get());
    Check();
  }
  void PreparePlacing() {
    InitializeDataTrilateration(Get());
    Check();
  }
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
  std::uint32_t Place(const std::string& name, const PlacementChoice& choice, bool right) {
    std::uint32_t remaining = 0;
    CalcTrilaterationpPoint(Get(), right ? 1 : 0, choice.first, choice.second, name.c_str(),
                            &remaining);
    Check();
    return remaining > PointCount() ? 0 : remaining;  // it wraps when a point is placed twice
  }
  void FinishPlacing() {
    TrilaterationDirection(Get());
    Check();
  }

 private:
  struct End {
    void operator()(AdjustmentContext* context) const { EndAdjustment(context); }
  };
  using Getter = bool (*)(AdjustmentContext*, std::int32_t, const char*, double*, double*, double*);

  // The findings know better than the results of some functions what has failed.
  void Check() const {
    if (m_context == nullptr) throw std::logic_error("the context was moved to another one");
    ThrowCause(Get());
  }
  brenu_file_kind Kind(std::int32_t kind) const {
    Check();
    return static_cast<brenu_file_kind>(kind);
  }

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
  brenu_options m_options{};
};

}  // namespace host
}  // namespace brenu

#endif  // BRENU_BRENU_HPP_
