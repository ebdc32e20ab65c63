#include "report/make_report.h"

#include <cmath>
#include <limits>
#include <tuple>
#include <utility>

#include "core/angles.h"
#include "core/parallel.h"
#include "report/closure_rows.h"
#include "report/statistics.h"
#include "report/verdict.h"
#include "review/encoding.h"

namespace brenu {

namespace {

constexpr std::size_t kRowsOfPart = 1024;  // that a thread makes at a time
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

double Degrees(double dms) { return DmsToRad(dms) / kPi * 180.0; }
// Into 0 to 360.
double TurnedBy(double degrees, double seconds) {
  const double turned = std::fmod(degrees + seconds / 3600.0, 360.0);
  return turned < 0.0 ? turned + 360.0 : turned;
}

EllipseRow EllipseOf(const PlaneResult& r, double factor) {
  return {r.e, r.f, Degrees(r.t), r.e * factor, r.f * factor};
}

class Maker {
 public:
  explicit Maker(const AdjustmentContext& context) : m_context(context) {}

  HeightsReport Heights() const;
  PlaneReport Plane() const;

 private:
  // What both networks have in common, from rows that are complete.
  template <typename Results>
  static void Begin(NetworkReport& report, const Results& results, double apriori);
  static void Finish(NetworkReport& report);
  std::pair<std::string, std::string> NamesOf(const NetworkLayout& net, SightNo sight) const;
  ObservationName NameOf(const PlaneObsId& id) const;
  TakenOutRow Row(const TakenOut& out) const;
  ObservationRow Row(const PlaneObsCheck& checked, const PlaneReport& report) const;
  void AddRelative(PlaneReport& report) const;

  const AdjustmentContext& m_context;
};

template <typename Results>
void Maker::Begin(NetworkReport& report, const Results& results, double apriori) {
  const NetworkLayout& net = results.Net().layout;
  report.m0 = results.Sigma0();
  report.m0Apriori = apriori;
  report.redundancy = results.Redundancy();
  report.controlPoints = net.ControlCount();
  for (const PointNo i : net.NewPoints()) report.newPoints += results.IsLeftOut(i) ? 0 : 1;
  report.isScaled = report.redundancy > 0 && std::isfinite(report.m0);
  if (!report.isScaled) report.m0 = kNone;
  report.untested = results.UntestedCount();
}

void Maker::Finish(NetworkReport& report) {
  report.groups = GroupsOf(report.observations);
  report.test = TestVariance(report.observations, report.redundancy);
  MarkSuspects(report);
}

std::pair<std::string, std::string> Maker::NamesOf(const NetworkLayout& net, SightNo sight) const {
  const Sight& s = net.At(sight);
  return {ToUtf8(net.Names().NameAt(s.station)), ToUtf8(net.Names().NameAt(s.target))};
}

HeightsReport Maker::Heights() const {
  const LevelAdjustment& results = m_context.level.results;
  const NetworkLayout& net = results.Net().layout;
  HeightsReport report{};
  Begin(report, results, results.Apriori());
  report.factor95 = HeightFactor(report.redundancy, report.isScaled);
  for (const auto& [index, point] : m_context.store.Points()) {
    const auto r = results.ResultOfPoint(brenu::NameOf(point));
    if (!r) continue;
    const bool control = IsHeightControl(point);
    const double mh = control ? 0.0 : r->sigma;
    HeightRow row{ToUtf8(brenu::NameOf(point)), control, r->height, mh, mh * report.factor95, {}};
    if (point.x != 0.0 && point.y != 0.0) row.map = {point.x, point.y};
    report.points.push_back(std::move(row));
  }
  const Table<SightNo, ObservationCheck> checks = results.ObservationChecks();
  report.observations.reserve(checks.Size());
  for (const SightNo k : checks.Indices()) {
    if (std::isnan(checks[k].sigma)) continue;
    ObservationRow row = CheckedRow(ObsKind::kHeightDifference, checks[k],
                                    report.m0 / report.m0Apriori, report.isScaled);
    std::tie(row.from, row.to) = NamesOf(net, k);
    row.observed = net.At(k).obs.heightDiff;
    row.adjusted = row.observed + row.residual;
    report.observations.push_back(std::move(row));
  }
  for (const LevelTakenOut& out : results.AllTakenOut()) {
    auto [from, to] = NamesOf(net, out.sight);
    const Sight& s = net.At(out.sight);
    const double sigma = report.m0Apriori * std::sqrt(s.obs.distance / 1000.0);
    TakenOutRow row{
        ObsKind::kHeightDifference,
        std::move(from),
        std::move(to),
        out.testValue,
        out.error,
        {},
        LikelyMisreading(ObsKind::kHeightDifference, s.obs.heightDiff, out.error, sigma)};
    for (const SightNo other : out.alternatives) {
      auto [otherFrom, otherTo] = NamesOf(net, other);
      row.alternatives.push_back(
          {ObsKind::kHeightDifference, std::move(otherFrom), std::move(otherTo)});
    }
    report.takenOut.push_back(std::move(row));
  }
  for (const BenchMarkFit& fit : results.BenchMarkFits()) {
    report.control.push_back(
        {ToUtf8(net.Names().NameAt(net.SlotOf(fit.point))), "H", fit.correction, fit.w});
  }
  Finish(report);
  return report;
}

ObservationName Maker::NameOf(const PlaneObsId& id) const {
  auto [from, to] = NamesOf(m_context.plane.results.Net().layout, id.sight);
  return {static_cast<ObsKind>(id.kind), std::move(from), std::move(to)};
}

TakenOutRow Maker::Row(const TakenOut& out) const {
  ObservationName name = NameOf(out.id);
  const AdjParam& param = m_context.plane.results.Param();
  const ObsData& obs = m_context.plane.results.Net().layout.At(out.id.sight).obs;
  const double sigma = IsAngle(name.kind) ? param.MO : param.MS + param.MR * obs.distance;
  TakenOutRow row{name.kind,
                  std::move(name.from),
                  std::move(name.to),
                  out.testValue,
                  out.error,
                  {},
                  LikelyMisreading(name.kind, obs.distance, out.error, sigma)};
  for (const PlaneObsId& other : out.alternatives) row.alternatives.push_back(NameOf(other));
  return row;
}

ObservationRow Maker::Row(const PlaneObsCheck& checked, const PlaneReport& report) const {
  const NetworkLayout& net = m_context.plane.results.Net().layout;
  const auto kind = static_cast<ObsKind>(checked.id.kind);
  ObservationRow row = CheckedRow(kind, checked.check, report.m0, report.isScaled);
  std::tie(row.from, row.to) = NamesOf(net, checked.id.sight);
  const ObsData& obs = net.At(checked.id.sight).obs;
  if (kind == ObsKind::kDistance) {
    row.observed = obs.distance;
    row.adjusted = row.observed + row.residual;
  } else {
    row.observed = Degrees(kind == ObsKind::kDirection ? obs.direction : obs.azimuth);
    row.adjusted = TurnedBy(row.observed, row.residual);
  }
  return row;
}

// Of every stored pair once, and of those asked for.
void Maker::AddRelative(PlaneReport& report) const {
  const PlaneAdjustment& results = m_context.plane.results;
  const NetworkLayout& net = results.Net().layout;
  std::vector<std::pair<Slot, Slot>> pairs;
  for (const SightNo k : net.Sights().Indices()) {
    const Sight& s = net.At(k);
    const SightNo back = net.FindSight(s.target, s.station);
    if (back.IsNone() || k < back) pairs.emplace_back(s.station, s.target);
  }
  for (const auto& [from, to] : results.Net().askedPairs) {
    const bool isNew = net.FindSight(from, to).IsNone() && net.FindSight(to, from).IsNone();
    if (isNew) pairs.emplace_back(from, to);
  }
  std::vector<std::optional<RelativeEllipseRow>> rows(pairs.size());
  ForEachPart(pairs.size(), kRowsOfPart, [&](std::size_t begin, std::size_t end) {
    for (std::size_t k = begin; k < end; ++k) {
      const auto [from, to] = pairs[k];
      const auto r = results.PrecisionBetween(from, to);
      if (!r) continue;
      rows[k] = {ToUtf8(net.Names().NameAt(from)), ToUtf8(net.Names().NameAt(to)),
                 EllipseOf(*r, report.factor95)};
    }
  });
  for (auto& row : rows) {
    if (row) report.relative.push_back(std::move(*row));
  }
}

PlaneReport Maker::Plane() const {
  const PlaneAdjustment& results = m_context.plane.results;
  const NetworkLayout& net = results.Net().layout;
  PlaneReport report{};
  Begin(report, results, 1.0);
  report.factor95 = EllipseFactor(report.redundancy, report.isScaled);
  for (const auto& [index, point] : m_context.store.Points()) {
    const auto r = results.ResultOfPoint(brenu::NameOf(point));
    if (!r) continue;
    PlanePointRow row{ToUtf8(brenu::NameOf(point)), IsPlaneControl(point), r->x, r->y, 0, 0, 0, {}};
    if (!row.control) {
      std::tie(row.mx, row.my, row.mp) = std::tie(r->mx, r->my, r->mp);
      row.ellipse = EllipseOf(*r, report.factor95);
    }
    report.points.push_back(std::move(row));
  }
  const std::vector<PlaneObsCheck> checks = results.ObservationChecks();
  report.observations.resize(checks.size());
  ForEachPart(checks.size(), kRowsOfPart, [&](std::size_t begin, std::size_t end) {
    for (std::size_t k = begin; k < end; ++k) report.observations[k] = Row(checks[k], report);
  });
  for (const TakenOut& out : results.AllTakenOut()) report.takenOut.push_back(Row(out));
  for (const ControlFit& fit : results.ControlFits()) {
    const std::string name = ToUtf8(net.Names().NameAt(net.SlotOf(fit.point)));
    report.control.push_back({name, "X", fit.ownDx, fit.wx});
    report.control.push_back({name, "Y", fit.ownDy, fit.wy});
  }
  AddRelative(report);
  Finish(report);
  return report;
}

}  // namespace

Report MakeReport(const AdjustmentContext& context, std::string file, Findings found) {
  Report report;
  report.program = "brenu " BRENU_VERSION;
  report.file = std::move(file);
  report.rules = context.rules;
  report.param = context.param;
  report.findings = std::move(found);
  const ThreadTeam team;
  const Maker maker(context);
  if (context.adjusted.heights) report.heights = maker.Heights();
  if (context.adjusted.plane) report.plane = maker.Plane();
  report.closures = ClosureRows(context);
  report.verdict = Judge(report);
  return report;
}

}  // namespace brenu
