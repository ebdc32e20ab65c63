#include "fieldbook/setup_reduction.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "core/angles.h"
#include "fieldbook/face_means.h"

namespace brenu {

namespace {

// The pointings at a target, by set.
struct Pointings {
  NameNo target;
  std::vector<const BookSight*> faces[2];
  std::vector<SetValue> sets;
};

std::vector<Pointings> ByTarget(const Setup& setup) {
  std::vector<Pointings> all;
  std::unordered_map<std::int32_t, std::size_t> places;
  for (const BookSight& sight : setup.sights) {
    const auto [place, isNew] = places.try_emplace(sight.target.Number(), all.size());
    if (isNew) all.push_back({sight.target, {}, {}});
    all[place->second].faces[sight.face == Face::kTwo].push_back(&sight);
  }
  return all;
}

// The sum of values and their number.
struct Sum {
  double total = 0.0;
  double count = 0.0;

  void Add(double value) {
    total += value;
    count += 1.0;
  }
  double Mean() const { return total / count; }
};

class SetMeans {
 public:
  SetMeans(const Setup& setup, const ReductionOptions& options, ReductionNotes& notes)
      : m_station(setup.station), m_notes(notes), m_targets(ByTarget(setup)) {
    for (Pointings& target : m_targets) {
      const std::size_t sets = std::max(target.faces[0].size(), target.faces[1].size());
      for (std::size_t k = 0; k < sets && (k == 0 || options.averageSets); ++k) {
        const auto sight = [&](std::size_t face) {
          return k < target.faces[face].size() ? target.faces[face][k] : nullptr;
        };
        Place(target, k);
        m_bySet.resize(std::max(m_bySet.size(), k + 1));
        m_bySet[k].push_back(&target);
        target.sets.push_back(MeanOfFaces(sight(0), sight(1), options, notes));
      }
    }
  }

  std::vector<TargetMeans> Means() {
    TurnSets();
    std::vector<TargetMeans> means;
    means.reserve(m_targets.size());
    for (const Pointings& target : m_targets) means.push_back(MeansOf(target));
    JudgeDirections(means);
    return means;
  }

 private:
  void Place(const Pointings& target, std::size_t k) {
    LogEntry& place = m_notes.log.place;
    place.station = m_station;
    place.target = target.target;
    place.set = static_cast<std::int32_t>(k + 1);
    const auto& first = target.faces[k < target.faces[0].size() ? 0 : 1];
    if (k < first.size()) place.line = first[k]->line;
  }

  // Onto the circle of the first set: by the mean over the targets of direction minus that of
  // set 1.
  void TurnSets() {
    for (std::size_t k = 1; k < m_bySet.size(); ++k) {
      Sum differences;
      std::size_t targets = 0;
      double start = 0.0;
      for (const Pointings* target : m_bySet[k]) {
        if (!target->sets[k].direction) continue;
        ++targets;
        if (!target->sets[0].direction) continue;
        const double difference = *target->sets[k].direction - *target->sets[0].direction;
        if (differences.count == 0.0) start = HalfCircle(difference);
        differences.Add(start + HalfCircle(difference - start));
      }
      const bool isUsed = targets > 1 && differences.count > 0.0;
      for (Pointings* target : m_bySet[k]) {
        std::optional<double>& direction = target->sets[k].direction;
        if (!direction) continue;
        if (!isUsed) {
          direction.reset();
          m_notes.findings.push_back({BRENU_DIRECTION_ALONE_IN_SET,
                                      Severity::kNote,
                                      target->sets[k].line,
                                      {},
                                      {m_notes.names[m_station]},
                                      {}});
          continue;
        }
        const double turned = FullCircle(*direction - differences.Mean());
        Place(*target, k);
        m_notes.log.Add(Step::kSetTurned, *direction, -differences.Mean(), turned);
        direction = turned;
      }
    }
  }

  TargetMeans MeansOf(const Pointings& target) {
    TargetMeans means;
    means.line = target.sets.front().line;
    means.target = target.target;
    Sum directions, distances, azimuths, heights, slopes;
    std::optional<double> first, firstAzimuth;
    for (const SetValue& set : target.sets) {
      if (set.direction && !first) first = set.direction;
      if (set.direction) directions.Add(HalfCircle(*set.direction - *first));
      if (set.distance) distances.Add(*set.distance);
      if (set.azimuth && !firstAzimuth) firstAzimuth = set.azimuth;
      if (set.azimuth) azimuths.Add(HalfCircle(*set.azimuth - *firstAzimuth));
      if (set.height) heights.Add(*set.height);
      if (set.slope) slopes.Add(*set.slope);
      means.lacksHeights = means.lacksHeights || set.lacksHeights;
    }
    const auto enter = [](SetMean& mean, const Sum& sum, double value) {
      if (sum.count > 0.0) mean = {value, sum.count};
    };
    enter(means.direction, directions,
          FullCircle(first.value_or(0.0) + directions.total / std::max(directions.count, 1.0)));
    enter(means.distance, distances, distances.Mean());
    enter(means.azimuth, azimuths, FullCircle(firstAzimuth.value_or(0.0) + azimuths.Mean()));
    enter(means.height, heights, heights.Mean());
    if (slopes.count > 0.0) means.slopeDistance = slopes.Mean();
    LogMeans(target, means, first);
    JudgeDistances(target, means);
    return means;
  }

  void LogMeans(const Pointings& target, const TargetMeans& means, std::optional<double> first) {
    Place(target, 0);
    m_notes.log.place.set = 0;
    if (means.direction.sets > 1.0) {
      m_notes.log.Add(Step::kSetsDirection, *first, HalfCircle(*means.direction.value - *first),
                      *means.direction.value);
    }
    if (means.distance.sets > 1.0) {
      const auto set = std::find_if(target.sets.begin(), target.sets.end(),
                                    [](const SetValue& s) { return s.distance.has_value(); });
      m_notes.log.Add(Step::kSetsDistance, *set->distance, *means.distance.value);
    }
  }

  void JudgeDistances(const Pointings& target, const TargetMeans& means) {
    if (means.distance.sets < 2.0) return;
    std::vector<Spread::Deviation> deviations;
    for (std::size_t k = 0; k < target.sets.size(); ++k) {
      if (!target.sets[k].distance) continue;
      deviations.push_back({target.sets[k].line, m_station, target.target,
                            static_cast<std::int32_t>(k + 1),
                            *target.sets[k].distance - *means.distance.value});
    }
    m_notes.spread.AddDistances(deviations);
  }

  // Redundancy of n directions in sets with an orientation each and t mean directions.
  void JudgeDirections(const std::vector<TargetMeans>& means) {
    std::vector<Spread::Deviation> deviations;
    std::vector<bool> hasSet(m_bySet.size(), false);
    double targets = 0.0;
    for (std::size_t i = 0; i < means.size(); ++i) {
      if (means[i].direction.sets < 2.0) continue;
      targets += 1.0;
      for (std::size_t k = 0; k < m_targets[i].sets.size(); ++k) {
        const SetValue& set = m_targets[i].sets[k];
        if (!set.direction) continue;
        hasSet[k] = true;
        deviations.push_back({set.line, m_station, means[i].target,
                              static_cast<std::int32_t>(k + 1),
                              HalfCircle(*set.direction - *means[i].direction.value)});
      }
    }
    const auto sets = static_cast<double>(std::count(hasSet.begin(), hasSet.end(), true));
    const double freedom = static_cast<double>(deviations.size()) - targets - sets + 1.0;
    m_notes.spread.AddDirections(deviations, freedom, sets);
  }

  NameNo m_station;
  ReductionNotes& m_notes;
  std::vector<Pointings> m_targets;
  std::vector<std::vector<Pointings*>> m_bySet;  // the targets of each set
};

}  // namespace

std::vector<TargetMeans> ReduceSetup(const Setup& setup, const ReductionOptions& options,
                                     ReductionNotes& notes) {
  return SetMeans(setup, options, notes).Means();
}

}  // namespace brenu
