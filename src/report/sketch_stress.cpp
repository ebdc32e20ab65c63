#include "report/sketch_stress.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

namespace brenu {

namespace {

constexpr std::size_t kMostTerms = 200'000;  // vertices times pivots
constexpr std::size_t kFewestPivots = 24;
constexpr int kMostRounds = 50;
constexpr double kStill = 0.005;  // a round that moves no vertex farther is the last one
constexpr std::size_t kMostSiblings = 8;

// A small shift that takes vertices of the same place apart, the same on every machine.
double Jitter(std::size_t number, std::uint32_t salt) {
  auto hash = (static_cast<std::uint32_t>(number) + salt) * 2654435761U;
  hash ^= hash >> 15U;
  hash *= 2246822519U;
  hash ^= hash >> 13U;
  return static_cast<double>(hash % 2001U) / 1000.0 - 1.0;
}

// Stress majorization (Gansner, Koren and North, Graph drawing by stress majorization) with few
// pivots (Ortmann, Klimenta and Brandes, A sparse stress model), from places of Pivot MDS (Brandes
// and Pich, Eigensolver methods for progressive multidimensional scaling).
class StressModel {
 public:
  explicit StressModel(const SketchGraph& graph) : m_graph(graph) { ChoosePivots(); }

  std::vector<SketchPlace> Solve() {
    StartPlaces();
    for (int round = 0; round < kMostRounds; ++round) {
      double farthest = 0.0;
      for (std::size_t i = 0; i < m_graph.Count(); ++i) farthest = std::max(farthest, Improve(i));
      if (farthest < kStill) break;
    }
    return std::move(m_places);
  }

 private:
  // What pulls one vertex to where it should stand.
  struct Pull {
    double x = 0.0, y = 0.0, weight = 0.0;
  };

  // Each pivot is the vertex farthest from those before.
  void ChoosePivots() {
    const std::size_t count = m_graph.Count();
    m_pivotCount = std::min(count, std::max(kFewestPivots, kMostTerms / count));
    std::vector<std::int32_t> nearest(count, std::numeric_limits<std::int32_t>::max());
    std::vector<std::int32_t> steps, order;
    m_steps.resize(m_pivotCount * count);
    std::size_t pivot = 0;
    for (std::size_t p = 0; p < m_pivotCount; ++p) {
      m_pivots.push_back(pivot);
      m_graph.Steps(static_cast<std::int32_t>(pivot), steps, order);
      std::size_t farthest = 0;
      for (std::size_t i = 0; i < count; ++i) {
        m_steps[i * m_pivotCount + p] = static_cast<float>(steps[i]);
        nearest[i] = std::min(nearest[i], steps[i]);
        if (nearest[i] > nearest[farthest]) farthest = i;
      }
      pivot = farthest;
    }
  }

  // Squared distances to the pivots, centred by row and column, projected onto the two largest
  // eigenvectors of C'C.
  void StartPlaces() {
    const std::size_t count = m_graph.Count(), k = m_pivotCount;
    std::vector<double> c(count * k), columnMean(k, 0.0);
    double mean = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
      for (std::size_t p = 0; p < k; ++p) {
        const double d = m_steps[i * k + p];
        c[i * k + p] = d * d;
        columnMean[p] += d * d / static_cast<double>(count);
      }
    }
    for (const double m : columnMean) mean += m / static_cast<double>(k);
    for (std::size_t i = 0; i < count; ++i) {
      double rowMean = 0.0;
      for (std::size_t p = 0; p < k; ++p) rowMean += c[i * k + p] / static_cast<double>(k);
      for (std::size_t p = 0; p < k; ++p) {
        c[i * k + p] = -0.5 * (c[i * k + p] - rowMean - columnMean[p] + mean);
      }
    }
    std::array<std::vector<double>, 2> axis, coordinate;
    for (std::size_t a = 0; a < 2; ++a) {
      axis[a] = Eigenvector(c, a == 0 ? nullptr : axis.data(), static_cast<std::uint32_t>(a));
      coordinate[a] = Project(c, axis[a]);
    }
    // Singular values of C are k-th parts of distances: the lines get their mean length back.
    m_places.resize(count);
    double sum = 0.0;
    std::size_t lines = 0;
    for (std::size_t i = 0; i < count; ++i) {
      for (const std::int32_t n : m_graph.Neighbours(static_cast<std::int32_t>(i))) {
        const auto j = static_cast<std::size_t>(n);
        sum += std::hypot(coordinate[0][i] - coordinate[0][j], coordinate[1][i] - coordinate[1][j]);
        ++lines;
      }
    }
    const double scale = sum > 0.0 ? static_cast<double>(lines) / sum : 1.0;
    for (std::size_t i = 0; i < count; ++i) {
      m_places[i] = {scale * coordinate[1][i] + 0.05 * Jitter(i, 1),
                     scale * coordinate[0][i] + 0.05 * Jitter(i, 2)};
    }
  }

  std::vector<double> Project(const std::vector<double>& c, const std::vector<double>& axis) const {
    std::vector<double> coordinate(m_graph.Count(), 0.0);
    for (std::size_t i = 0; i < coordinate.size(); ++i) {
      for (std::size_t p = 0; p < axis.size(); ++p)
        coordinate[i] += c[i * axis.size() + p] * axis[p];
    }
    return coordinate;
  }

  // By power iteration, orthogonal to the one before.
  std::vector<double> Eigenvector(const std::vector<double>& c, const std::vector<double>* before,
                                  std::uint32_t salt) const {
    const std::size_t k = m_pivotCount;
    std::vector<double> v(k), next(k);
    for (std::size_t p = 0; p < k; ++p) v[p] = Jitter(p, 3 + salt);
    for (int round = 0; round < 30; ++round) {
      if (before != nullptr) {
        double dot = 0.0;
        for (std::size_t p = 0; p < k; ++p) dot += v[p] * (*before)[p];
        for (std::size_t p = 0; p < k; ++p) v[p] -= dot * (*before)[p];
      }
      double norm = 0.0;
      for (const double e : v) norm += e * e;
      norm = std::sqrt(norm);
      if (!(norm > 0.0)) break;
      for (double& e : v) e /= norm;
      if (round == 29) break;
      const std::vector<double> projected = Project(c, v);
      next.assign(k, 0.0);
      for (std::size_t i = 0; i < projected.size(); ++i) {
        for (std::size_t p = 0; p < k; ++p) next[p] += c[i * k + p] * projected[i];
      }
      v.swap(next);
    }
    return v;
  }

  void Add(Pull& pull, std::size_t i, std::size_t j, double d, double weight) const {
    const double dx = m_places[i].x - m_places[j].x, dy = m_places[i].y - m_places[j].y;
    const double length = std::sqrt(dx * dx + dy * dy);
    const double ratio = length > 1e-9 ? d / length : 0.0;
    pull.x += weight * (m_places[j].x + ratio * dx);
    pull.y += weight * (m_places[j].y + ratio * dy);
    pull.weight += weight;
  }

  // Moves one vertex to where its pulls balance; gives how far.
  double Improve(std::size_t i) {
    Pull pull;
    const bool hasAllPairs = m_pivotCount == m_graph.Count();
    const double share = static_cast<double>(m_graph.Count()) / static_cast<double>(m_pivotCount);
    for (std::size_t p = 0; p < m_pivotCount; ++p) {
      const double d = m_steps[i * m_pivotCount + p];
      if (m_pivots[p] == i) continue;
      // A pivot stands for its share of the vertices, but for none that are closer to i.
      const double weight = hasAllPairs ? 1.0 / (d * d) : std::min(1.0, share / (d * d));
      Add(pull, i, m_pivots[p], d, weight);
    }
    if (!hasAllPairs) AddClose(pull, i);
    if (!(pull.weight > 0.0)) return 0.0;
    const SketchPlace old = m_places[i];
    m_places[i] = {pull.x / pull.weight, pull.y / pull.weight};
    return std::max(std::abs(m_places[i].x - old.x), std::abs(m_places[i].y - old.y));
  }

  // Neighbours, and their neighbours where those are few.
  void AddClose(Pull& pull, std::size_t i) const {
    for (const std::int32_t n : m_graph.Neighbours(static_cast<std::int32_t>(i))) {
      Add(pull, i, static_cast<std::size_t>(n), 1.0, 1.0);
      const auto siblings = m_graph.Neighbours(n);
      if (siblings.size() > kMostSiblings) continue;
      for (const std::int32_t s : siblings) {
        const auto j = static_cast<std::size_t>(s);
        if (j != i) Add(pull, i, j, 1.7, 0.25);
      }
    }
  }

  const SketchGraph& m_graph;
  std::size_t m_pivotCount = 0;
  std::vector<std::size_t> m_pivots;
  std::vector<float> m_steps;  // by vertex and pivot
  std::vector<SketchPlace> m_places;
};

// Turns the longest direction of the places to the east, the first place to the left, and moves
// their corner to the origin.
void LayEast(std::vector<SketchPlace>& places) {
  double xMean = 0.0, yMean = 0.0;
  const auto count = static_cast<double>(places.size());
  for (const SketchPlace& p : places) {
    xMean += p.x / count;
    yMean += p.y / count;
  }
  double xx = 0.0, xy = 0.0, yy = 0.0;
  for (const SketchPlace& p : places) {
    xx += (p.x - xMean) * (p.x - xMean);
    xy += (p.x - xMean) * (p.y - yMean);
    yy += (p.y - yMean) * (p.y - yMean);
  }
  const double angle = 0.5 * std::atan2(2.0 * xy, yy - xx);
  const SketchPlace first{places[0].x - xMean, places[0].y - yMean};
  const double side = std::sin(angle) * first.x + std::cos(angle) * first.y > 0.0 ? -1.0 : 1.0;
  const double c = side * std::cos(angle), s = side * std::sin(angle);
  for (SketchPlace& p : places) p = {c * p.x - s * p.y, s * p.x + c * p.y};
  const SketchExtent extent = ExtentOf(places);
  for (SketchPlace& p : places) p = {p.x - extent.xMin, p.y - extent.yMin};
}

// A long band goes to and fro in rows, the first one on top.
void Fold(std::vector<SketchPlace>& places) {
  const SketchExtent extent = ExtentOf(places);
  const double rowHeight = extent.Height() + 2.0;
  const double rows = std::floor(std::sqrt(extent.Width() / (1.6 * rowHeight)));
  if (rows < 2.0) return;
  const double length = extent.Width() / rows;
  for (SketchPlace& p : places) {
    const double row = std::min(rows - 1.0, std::floor(p.y / length));
    const double along = p.y - row * length;
    const bool isBack = std::fmod(row, 2.0) > 0.5;
    p = {p.x - row * rowHeight, isBack ? length - along : along};
  }
  const double lowest = ExtentOf(places).xMin;
  for (SketchPlace& p : places) p.x -= lowest;
}

}  // namespace

std::vector<SketchPlace> StressLayout(const SketchGraph& graph) {
  if (graph.Count() == 1) return {{0.0, 0.0}};
  std::vector<SketchPlace> places = StressModel(graph).Solve();
  LayEast(places);
  Fold(places);
  return places;
}

}  // namespace brenu
