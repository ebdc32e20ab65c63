#include "plane/approximate/candidates.h"

#include <algorithm>
#include <array>

#include "core/angles.h"
#include "plane/circles.h"

namespace brenu::approximate {

namespace {

constexpr double kFlat = 0.03;  // sine below which lines meet too flat to place a point

class Candidates {
 public:
  Candidates(const std::vector<Measure>& measures, const Accuracy& accuracy)
      : m_measures(measures), m_accuracy(accuracy) {}

  std::vector<Candidate> Find() {
    for (const Measure& m : m_measures) {
      if (!m.HasBearing() || !m.HasDistance()) continue;
      Add(m.from + Polar(m.distance, m.bearing));
      // Mostly the first is confirmed by all others.
      constexpr double kAgreement = 0.3;
      if (m_found.empty()) continue;
      Rate(m_found.back());
      if (m_found.back().redundancy > 0 && m_found.back().cost < kAgreement) {
        return {m_found.back()};
      }
    }
    const std::size_t rated = m_found.size();
    for (std::size_t i = 0; i < m_measures.size(); ++i) {
      for (std::size_t j = i + 1; j < m_measures.size(); ++j) Cross(m_measures[i], m_measures[j]);
    }
    Resect();
    for (std::size_t i = rated; i < m_found.size(); ++i) Rate(m_found[i]);
    return std::move(m_found);
  }

 private:
  static constexpr std::size_t kMost = 120;  // candidates

  void Add(const Position& place) {
    const bool isFinite = std::isfinite(place.x) && std::isfinite(place.y);
    if (isFinite && m_found.size() < kMost) m_found.push_back({place});
  }

  void Cross(const Measure& a, const Measure& b) {
    if (a.HasBearing() && b.HasBearing()) CrossRays(a, b);
    if (a.HasBearing() && b.HasDistance()) CrossRayAndCircle(a, b);
    if (b.HasBearing() && a.HasDistance()) CrossRayAndCircle(b, a);
    if (a.HasDistance() && b.HasDistance()) CrossCircles(a, b);
    if (a.HasReading() && b.HasReading()) {
      if (a.HasDistance() && b.HasDistance()) FitFrame(a, b);
      if (a.HasDistance() && !b.HasDistance()) TurnOnto(a, b);
      if (b.HasDistance() && !a.HasDistance()) TurnOnto(b, a);
    }
  }

  void CrossRays(const Measure& a, const Measure& b) {
    const Position u = Polar(1.0, a.bearing);
    const Position v = Polar(1.0, b.bearing);
    const double sine = approximate::Cross(u, v);
    if (std::fabs(sine) < kFlat) return;
    Add(a.from + (approximate::Cross(b.from - a.from, v) / sine) * u);
  }

  void CrossRayAndCircle(const Measure& ray, const Measure& circle) {
    const Position u = Polar(1.0, ray.bearing);
    const Position toCentre = circle.from - ray.from;
    const double along = Dot(toCentre, u);
    const double off = approximate::Cross(u, toCentre);
    const double half = circle.distance * circle.distance - off * off;
    if (!(half > kFlat * kFlat * circle.distance * circle.distance)) return;
    for (const double t : {along - std::sqrt(half), along + std::sqrt(half)}) {
      if (t > 0.0) Add(ray.from + t * u);
    }
  }

  void CrossCircles(const Measure& a, const Measure& b) {
    const Circle first{a.from, a.distance};
    const Circle second{b.from, b.distance};
    if (IntersectionQuality(first, second) < kFlat) return;
    if (const auto places = Intersect(first, second)) {
      Add(places->first);
      Add(places->second);
    }
  }

  // Direction and distance to two placed points from a circle that is not oriented.
  void FitFrame(const Measure& a, const Measure& b) {
    const Position own = Polar(b.distance, b.reading) - Polar(a.distance, a.reading);
    const Position known = b.from - a.from;
    if (!(LengthOf(own) > kFlat * (a.distance + b.distance))) return;
    const double orientation = AngleOf(known) - AngleOf(own);
    Add(a.from - Polar(a.distance, orientation + a.reading));
  }

  // The same with only one distance: in the triangle of the point and the two placed ones the angle
  // at the point, a side beside it and the opposite side are known.
  void TurnOnto(const Measure& near, const Measure& far) {
    const double angle = HalfCircle(far.reading - near.reading);
    const Position base = far.from - near.from;
    const double sine = near.distance * std::sin(angle) / LengthOf(base);
    if (!(std::fabs(sine) < 1.0) || std::fabs(std::sin(angle)) < kFlat) return;
    for (const double atFar : {std::asin(sine), kPi - std::asin(sine)}) {
      // The third angle, at the near point, signed like the first.
      const double atNear = (angle > 0.0 ? kPi : -kPi) - angle - HalfCircle(atFar);
      if (angle * atNear <= 0.0) continue;
      Add(near.from + Polar(near.distance, AngleOf(base) + atNear));
    }
  }

  // Readings to three placed points at least, without orientation (J. M. Tienstra's formula).
  void Resect() {
    std::vector<const Measure*> sighted;
    for (const Measure& m : m_measures) {
      if (m.HasReading()) sighted.push_back(&m);
    }
    const std::size_t count = std::min<std::size_t>(sighted.size(), 6);
    for (std::size_t i = 0; i < count; ++i) {
      for (std::size_t j = i + 1; j < count; ++j) {
        for (std::size_t k = j + 1; k < count; ++k) {
          Tienstra({sighted[i], sighted[j], sighted[k]});
        }
      }
    }
  }

  void Tienstra(const std::array<const Measure*, 3>& m) {
    Position sum{0.0, 0.0};
    double weights = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
      const Measure& a = *m[i];
      const Measure& b = *m[(i + 1) % 3];
      const Measure& c = *m[(i + 2) % 3];
      // The angle of the triangle at this corner, and the one at the point over its opposite side.
      const double corner = HalfCircle(AngleOf(c.from - a.from) - AngleOf(b.from - a.from));
      const double seen = HalfCircle(c.reading - b.reading);
      if (std::fabs(std::sin(corner)) < kFlat || std::fabs(std::sin(seen)) < kFlat) return;
      const double weight = 1.0 / (1.0 / std::tan(corner) - 1.0 / std::tan(seen));
      sum = sum + weight * a.from;
      weights += weight;
    }
    if (weights != 0.0) Add((1.0 / weights) * sum);
  }

  // Cost and redundancy over all measures.
  void Rate(Candidate& c) const {
    std::vector<double> angles;
    std::vector<double> lengths;
    for (const Measure& m : m_measures) {
      const Position line = m.from - c.place;
      if (!m.HasReading()) continue;
      angles.push_back(AngleOf(line) - m.reading);
      lengths.push_back(LengthOf(line));
    }
    c.cost = 0.0;
    c.redundancy = -2;
    if (!angles.empty()) {
      c.orientation = CommonOrientation(angles, lengths, m_accuracy);
      --c.redundancy;
    }
    for (const Measure& m : m_measures) {
      const Position line = c.place - m.from;
      const double length = LengthOf(line);
      const double tolerance = Tolerance(length, m_accuracy);
      const auto count = [&](double misfit) {
        const double ratio = misfit / tolerance;
        c.cost += std::min(1.0, ratio * ratio);
        if (ratio < 1.0) ++c.redundancy;
      };
      if (m.HasDistance()) count(std::fabs(length - m.distance));
      if (m.HasBearing()) count(std::fabs(HalfCircle(AngleOf(line) - m.bearing)) * length);
      if (m.HasReading()) {
        count(std::fabs(HalfCircle(AngleOf(line) + kPi - m.reading - c.orientation)) * length);
      }
    }
  }

  const std::vector<Measure>& m_measures;
  const Accuracy& m_accuracy;
  std::vector<Candidate> m_found;
};

}  // namespace

double Tolerance(double length, const Accuracy& accuracy) {
  constexpr double kOfNeighbours = 0.05;  // metres: how well the placed points are known
  constexpr double kOfLength = 3e-4;
  return kOfNeighbours + kOfLength * length +
         5.0 * (accuracy.Distance(length) + accuracy.direction * length);
}

double CommonOrientation(const std::vector<double>& angles, const std::vector<double>& lengths,
                         const Accuracy& accuracy) {
  double best = angles.front();
  double least = std::numeric_limits<double>::infinity();
  const std::size_t tried = std::min<std::size_t>(angles.size(), 8);
  for (std::size_t i = 0; i < tried; ++i) {
    double cost = 0.0;
    for (std::size_t j = 0; j < angles.size(); ++j) {
      const double misfit = std::fabs(HalfCircle(angles[j] - angles[i])) * lengths[j];
      const double ratio = misfit / Tolerance(lengths[j], accuracy);
      cost += std::min(1.0, ratio * ratio);
    }
    if (cost < least) {
      least = cost;
      best = angles[i];
    }
  }
  // The mean of those that agree with it.
  double sum = 0.0;
  double weights = 0.0;
  for (std::size_t j = 0; j < angles.size(); ++j) {
    const double off = HalfCircle(angles[j] - best);
    if (std::fabs(off) * lengths[j] > Tolerance(lengths[j], accuracy)) continue;
    const double weight = std::min(lengths[j], 1000.0);
    sum += weight * off;
    weights += weight;
  }
  return HalfCircle(weights > 0.0 ? best + sum / weights : best);
}

std::optional<Candidate> BestCandidate(const std::vector<Measure>& measures,
                                       const Accuracy& accuracy,
                                       const std::optional<Position>& hint) {
  const std::vector<Candidate> all = Candidates(measures, accuracy).Find();
  const Candidate* best = nullptr;
  for (const Candidate& c : all) {
    if (c.redundancy < 0) continue;
    if (best == nullptr || c.cost < best->cost) best = &c;
  }
  if (best == nullptr) return std::nullopt;
  // Another place with which everything agrees, too, leaves it open.  Where measures contradict
  // each other the best place will do: the others are settled later.
  constexpr double kAgreement = 0.5;
  for (const Candidate& c : all) {
    if (c.redundancy < best->redundancy || c.cost > kAgreement) continue;
    const double apart = LengthOf(c.place - best->place);
    double reach = 0.0;
    for (const Measure& m : measures) {
      reach = std::max(reach, Tolerance(LengthOf(c.place - m.from), accuracy));
    }
    if (apart < 4.0 * reach) continue;
    if (!hint) return std::nullopt;
    if (LengthOf(c.place - *hint) < LengthOf(best->place - *hint)) best = &c;
  }
  return *best;
}

}  // namespace brenu::approximate
