#include "plane/approximate/frames.h"

#include <algorithm>

#include "core/angles.h"

namespace brenu::approximate {

Frames::Frames(const NetworkLayout& layout, const Rays& rays) {
  const std::size_t count = layout.Slots().Size();
  m_first.reserve(count + 1);
  std::vector<std::size_t> frames(count + 1, 0);  // of which a point is part
  for (const Slot station : layout.Slots()) {
    const std::size_t first = m_points.size();
    m_first.push_back(first);
    for (const SightNo k : layout.SightsFrom(station)) {
      if (!rays[k].IsPolar()) continue;
      m_points.push_back({layout.At(k).target, Polar(rays[k].distance, rays[k].reading)});
    }
    if (m_points.size() == first) continue;
    const auto begin = m_points.begin() + static_cast<std::ptrdiff_t>(first);
    const auto place = std::find_if(begin, m_points.end(),
                                    [station](const FramePoint& p) { return p.point > station; });
    m_points.insert(place, {station, {0.0, 0.0}});
    for (std::size_t i = first; i < m_points.size(); ++i) {
      ++frames[m_points[i].point.Position() + 1];
    }
  }
  m_first.push_back(m_points.size());

  for (std::size_t i = 1; i < frames.size(); ++i) frames[i] += frames[i - 1];
  m_firstWith = frames;
  m_stations.resize(m_points.size());
  for (const Slot station : layout.Slots()) {
    for (const FramePoint& p : Of(station)) m_stations[frames[p.point.Position()]++] = station;
  }
}

std::span<const FramePoint> Frames::Of(Slot station) const {
  const std::size_t first = m_first[station.Position()];
  return std::span(m_points).subspan(first, m_first[station.Position() + 1] - first);
}

std::span<const Slot> Frames::With(Slot point) const {
  const std::size_t first = m_firstWith[point.Position()];
  return std::span(m_stations).subspan(first, m_firstWith[point.Position() + 1] - first);
}

namespace {

// A vector between two common points, as both frames have it.
struct CommonVector {
  double turn;   // radians
  double sigma;  // of the turn, radians; positive, so that a vector agrees with itself
};

// How far a place in a frame may be off, metres.
double PlaceError(const Position& place, const Accuracy& accuracy) {
  const double distance = LengthOf(place);
  return accuracy.Distance(distance) + distance * accuracy.direction;
}

// All pairs of few points; of many each with its next ones, which is enough to vote.
std::vector<CommonVector> CommonVectors(std::span<const Position> first,
                                        std::span<const Position> second,
                                        const Accuracy& accuracy) {
  constexpr std::size_t kSpan = 6;
  constexpr double kTolerance = 5.0;  // standard errors
  std::vector<CommonVector> vectors;
  for (std::size_t i = 0; i < first.size(); ++i) {
    for (std::size_t j = i + 1; j < std::min(first.size(), i + 1 + kSpan); ++j) {
      const Position a = first[j] - first[i];
      const Position b = second[j] - second[i];
      const double mismatch = std::fabs(LengthOf(a) - LengthOf(b));
      const double length = (LengthOf(a) + LengthOf(b)) / 2.0;
      const double error =
          std::hypot(std::hypot(PlaceError(first[i], accuracy), PlaceError(first[j], accuracy)),
                     std::hypot(PlaceError(second[i], accuracy), PlaceError(second[j], accuracy)));
      const double sigma = error / length;
      // Asked so that what is no number fails: coordinates may be infinite, and an infinite mean of
      // enormous lengths has no error.
      if (!(mismatch <= kTolerance * error && sigma > 0.0 && sigma <= 1.0 / kTolerance)) continue;
      vectors.push_back({HalfCircle(AngleOf(a) - AngleOf(b)), sigma});
    }
  }
  return vectors;
}

bool Agree(const CommonVector& a, const CommonVector& b) {
  constexpr double kTolerance = 4.0;
  return std::fabs(HalfCircle(a.turn - b.turn)) < kTolerance * std::hypot(a.sigma, b.sigma);
}

}  // namespace

bool FindTurn(std::span<const Position> first, std::span<const Position> second,
              const Accuracy& accuracy, FrameTurn& found) {
  const std::vector<CommonVector> vectors = CommonVectors(first, second, accuracy);
  if (vectors.empty()) return false;
  const CommonVector* best = &vectors.front();
  std::ptrdiff_t most = 0;
  for (const CommonVector& candidate : vectors) {
    const auto votes = std::count_if(vectors.begin(), vectors.end(),
                                     [&](const CommonVector& v) { return Agree(candidate, v); });
    if (votes > most || (votes == most && candidate.sigma < best->sigma)) {
      most = votes;
      best = &candidate;
    }
  }
  const std::size_t pairs = first.size() * (first.size() - 1) / 2;
  if (first.size() > 2 && most < 2 && pairs > 2) return false;
  double sum = 0.0;
  double weights = 0.0;
  for (const CommonVector& v : vectors) {
    if (!Agree(*best, v)) continue;
    const double weight = 1.0 / (v.sigma * v.sigma);
    sum += weight * HalfCircle(v.turn - best->turn);
    weights += weight;
  }
  found.turn = HalfCircle(best->turn + sum / weights);
  found.sigma = best->sigma;
  // A single vector has nothing to check it.
  constexpr double kUnchecked = 3.0;
  if (most < 2) found.sigma *= kUnchecked;
  return true;
}

}  // namespace brenu::approximate
