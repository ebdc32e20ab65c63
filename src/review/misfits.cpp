#include "review/misfits.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "core/angles.h"
#include "core/median.h"
#include "review/network_view.h"

namespace brenu {

namespace {

class Comparison {
 public:
  explicit Comparison(const AdjustmentContext& context) : m_context(context) {}

  std::vector<Misfit> Make() {
    if (HasPlane(m_context.netType)) AddPlane();
    if (HasLevelling(m_context.netType)) AddHeights();
    Sort(m_misfits);
    return std::move(m_misfits);
  }

  static void Sort(std::vector<Misfit>& misfits) {
    std::stable_sort(misfits.begin(), misfits.end(), [](const Misfit& a, const Misfit& b) {
      return std::fabs(a.ratio) > std::fabs(b.ratio);
    });
  }

 private:
  void Add(ObsKind kind, const NetworkLayout& net, const Sight& s, double observed,
           double difference, double sigma) {
    m_misfits.push_back({kind, std::string(net.Names().NameAt(s.station)),
                         std::string(net.Names().NameAt(s.target)), observed, difference,
                         difference / sigma});
  }
  void AddPlane();
  void AddSet(const ObservationTables& tables, const DirectionSet& set);
  void AddHeights();
  bool HasBoth(const PlaneObs& o) const {
    const Coordinates& coords = m_context.plane.results.WorkingCoordinates();
    return HasCoordinates(coords[o.from]) && HasCoordinates(coords[o.to]);
  }
  double AzimuthOf(const PlaneObs& o) const {
    const Coordinates& coords = m_context.plane.results.WorkingCoordinates();
    const PlaneResult& a = coords[o.from];
    const PlaneResult& b = coords[o.to];
    return CalcAzimuth(a.x, a.y, b.x, b.y);
  }

  const AdjustmentContext& m_context;
  std::vector<Misfit> m_misfits;
};

void Comparison::AddSet(const ObservationTables& tables, const DirectionSet& set) {
  // By the differences from the first, which keeps the median away from the turn of the circle.
  std::vector<std::pair<const PlaneObs*, double>> turns;
  for (std::int32_t k = set.first; k < set.end; ++k) {
    const PlaneObs& o = tables.directions[static_cast<std::size_t>(k)];
    if (!HasBoth(o)) continue;
    const double turn = AzimuthOf(o) - o.observed;
    turns.emplace_back(&o, turns.empty() ? turn : HalfCircle(turn - turns.front().second));
  }
  if (turns.size() < 2) return;  // nothing to compare with
  turns.front().second = 0.0;
  std::vector<double> all;
  all.reserve(turns.size());
  for (const auto& [o, turn] : turns) all.push_back(turn);
  const double middle = Median(std::move(all));
  const NetworkLayout& net = m_context.plane.results.Net().layout;
  for (const auto& [o, turn] : turns) {
    Add(ObsKind::kDirection, net, net.At(o->sight), o->observed, HalfCircle(middle - turn) * kRho,
        m_context.param.MO);
  }
}

void Comparison::AddPlane() {
  const PlaneAdjustment& results = m_context.plane.results;
  const NetworkLayout& net = results.Net().layout;
  const ObservationTables& tables = results.Observations();
  const Coordinates& coords = results.WorkingCoordinates();
  if (coords.IsEmpty()) return;
  for (const DirectionSet& set : tables.sets) AddSet(tables, set);
  const AdjParam& p = m_context.param;
  for (const PlaneObs& o : tables.distances) {
    if (!HasBoth(o)) continue;
    const PlaneResult& a = coords[o.from];
    const PlaneResult& b = coords[o.to];
    Add(ObsKind::kDistance, net, net.At(o.sight), o.observed,
        o.observed - CalcDistance(a.x, a.y, b.x, b.y), p.MS + p.MR * o.observed);
  }
  for (const PlaneObs& o : tables.azimuths) {
    if (!HasBoth(o)) continue;
    Add(ObsKind::kAzimuth, net, net.At(o.sight), o.observed,
        HalfCircle(o.observed - AzimuthOf(o)) * kRho, p.MO);
  }
}

void Comparison::AddHeights() {
  const LevelAdjustment& results = m_context.level.results;
  const NetworkLayout& net = results.Net().layout;
  if (results.Heights().IsEmpty()) return;
  for (const Sight& s : net.Sights()) {
    const PointNo from = net.PointOf(s.station);
    const PointNo to = net.PointOf(s.target);
    if (from.IsNone() || to.IsNone() || results.IsLeftOut(from) || results.IsLeftOut(to)) continue;
    const double computed = results.Heights()[s.target] - results.Heights()[s.station];
    Add(ObsKind::kHeightDifference, net, s, s.obs.heightDiff, s.obs.heightDiff - computed,
        m_context.rules.levelSigma * std::sqrt(s.obs.distance / 1000.0));
  }
}

}  // namespace

std::vector<Misfit> ObservedMinusComputed(const AdjustmentContext& context) {
  return Comparison(context).Make();
}

std::vector<Misfit> TwoWayDifferences(const AdjustmentContext& context) {
  std::vector<Misfit> misfits;
  const ObservationMap& observations = context.store.Observations();
  const AdjParam& p = context.param;
  for (const Observation& there : ObservationsOf(context)) {
    if (!(there.station < there.target)) continue;
    const auto station = observations.find(there.target);
    if (station == observations.end()) continue;
    const auto found = station->second.find(there.station);
    if (found == station->second.end()) continue;
    const ObsData& back = found->second;
    const auto add = [&](ObsKind kind, double observed, double difference, double sigma) {
      misfits.push_back({kind, std::string(there.station), std::string(there.target), observed,
                         difference, difference / sigma});
    };
    if (IsLevelled(there.data) && IsLevelled(back)) {
      const double variance = (there.data.distance + back.distance) / 1000.0;
      add(ObsKind::kHeightDifference, there.data.heightDiff,
          there.data.heightDiff + back.heightDiff, context.rules.levelSigma * std::sqrt(variance));
    }
    const bool areSides = HasPlane(context.netType) && there.data.distance > 0.0;
    if (areSides && back.distance > 0.0) {
      const double sigma = p.MS + p.MR * there.data.distance;
      add(ObsKind::kDistance, there.data.distance, there.data.distance - back.distance,
          sigma * std::sqrt(2.0));
    }
  }
  Comparison::Sort(misfits);
  return misfits;
}

bool IsLarge(const Misfit& misfit) { return std::fabs(misfit.ratio) > 3.0; }

std::span<const Misfit> Foremost(std::span<const Misfit> misfits) {
  constexpr std::size_t kFew = 5;
  constexpr std::size_t kMost = 30;
  std::size_t count = 0;
  while (count < misfits.size() && count < kMost && (count < kFew || IsLarge(misfits[count]))) {
    ++count;
  }
  return misfits.first(count);
}

}  // namespace brenu
