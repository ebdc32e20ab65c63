// Survey networks on a grid, the same on every machine, for tests and benchmarks.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/job.h"

namespace brenu::testing {

// Points in the order of their store indices, and what was observed between them.
struct GeneratedNetwork {
  struct Line {
    std::int32_t station, target;  // store indices
    ObsData obs;
  };
  AdjParam param{0.025, 0.00005, 5e-8, 4, 20, 4, 5, 3, 0};
  std::vector<PointData> points;
  std::vector<Line> lines;
};

inline void Enter(const GeneratedNetwork& network, const Job& job) {
  SetAdjParam(job, network.param);
  for (std::size_t i = 0; i < network.points.size(); ++i) {
    AddPoint(job, static_cast<std::int32_t>(i), network.points[i]);
  }
  for (const auto& line : network.lines) {
    AddObsData(job, line.station, network.points[static_cast<std::size_t>(line.target)].name,
               line.obs);
  }
}

// Random numbers, the same on every machine.
class Noise {
 public:
  double Uniform() { return static_cast<double>(m_random()) / 2147483647.0; }
  // About normally distributed, with unit variance.
  double Normal() {
    double sum = -6.0;
    for (int i = 0; i < 12; ++i) sum += Uniform();
    return sum;
  }
  std::size_t Below(std::size_t count) { return m_random() % count; }

 private:
  std::minstd_rand m_random;
};

inline constexpr double kHalfTurn = 3.14159265358979323846;

// dd.mmss
inline double PackedDegrees(double radians) {
  const double seconds = radians * 648000.0 / kHalfTurn;
  const double degrees = std::floor(seconds / 3600.0);
  const double minutes = std::floor((seconds - 3600.0 * degrees) / 60.0);
  return degrees + minutes / 100.0 + (seconds - 3600.0 * degrees - 60.0 * minutes) / 10000.0;
}

enum class PointOrder { kByRows, kShuffled };

// A grid of rows x columns points, some hundred metres apart.  The observations are precise, so
// that approximate coordinates, which are carried from point to point, do not drift away; in order
// by rows they do so all the same when there are more than a hundred rows.
class GridNetwork {
 public:
  GridNetwork(std::int32_t rows, std::int32_t columns, PointOrder order)
      : m_rows(rows), m_columns(columns), m_indices(static_cast<std::size_t>(rows * columns)) {
    std::iota(m_indices.begin(), m_indices.end(), 0);
    if (order == PointOrder::kShuffled) {
      for (std::size_t i = m_indices.size(); i > 1; --i) {
        std::swap(m_indices[i - 1], m_indices[m_noise.Below(i)]);
      }
    }
  }

  // Directions to the neighbours in six directions (two in a single row), distances to half of
  // them; pairs of neighbouring points are known at intervals and at the far corner.
  GeneratedNetwork Plane() {
    GeneratedNetwork network = Points(10);
    constexpr std::pair<int, int> kSteps[] = {{0, 1}, {1, 0}, {1, 1}, {0, -1}, {-1, 0}, {-1, -1}};
    std::vector<double> orientation;  // away from zero, where readings would wrap
    for (std::size_t i = 0; i < m_indices.size(); ++i)
      orientation.push_back(0.2 + 5.8 * m_noise.Uniform());
    ForEachStep(kSteps, [&](std::int32_t a, std::int32_t b, std::size_t step) {
      const double dx = m_x[At(b)] - m_x[At(a)];
      const double dy = m_y[At(b)] - m_y[At(a)];
      const double reading = std::atan2(dy, dx) + orientation[At(a)] +
                             kDirectionNoise * m_noise.Normal() + 4.0 * kHalfTurn;
      ObsData obs = Direction(PackedDegrees(std::fmod(reading, 2.0 * kHalfTurn)));
      if (step < 3) obs.distance = std::hypot(dx, dy) + kDistanceNoise * m_noise.Normal();
      network.lines.push_back({a, b, obs});
    });
    for (PointData& p : network.points) {
      if (p.type == 0) p.x = p.y = 0.0;
    }
    return network;
  }

  // Lines to two neighbours a point; single points are known at intervals and at the far corner.
  GeneratedNetwork Levelling() {
    GeneratedNetwork network = Points(1);
    constexpr std::pair<int, int> kSteps[] = {{0, 1}, {1, 0}};
    ForEachStep(kSteps, [&](std::int32_t a, std::int32_t b, std::size_t) {
      const double length = 500.0 + 1000.0 * m_noise.Uniform();
      const double rise = network.points[At(b)].h - network.points[At(a)].h;
      const double noise = kLevellingNoise * std::sqrt(length / 1000.0) * m_noise.Normal();
      network.lines.push_back({a, b, Levelled(length, rise + noise)});
    });
    for (PointData& p : network.points) {
      if (p.type == 0) p.h = 0.0;
    }
    return network;
  }

 private:
  static constexpr double kDirectionNoise = 0.025 / 206264.8;  // radians
  static constexpr double kDistanceNoise = 0.00005;            // metres
  static constexpr double kLevellingNoise = 0.001;             // metres for one kilometre
  static constexpr std::int32_t kControlInterval = 32;         // grid steps

  static std::size_t At(std::int32_t i) { return static_cast<std::size_t>(i); }
  std::int32_t IndexAt(std::int32_t row, std::int32_t column) const {
    return m_indices[At(row * m_columns + column)];
  }
  bool IsControl(std::int32_t row, std::int32_t column, int knownType) const {
    const bool pair = knownType == 10;
    if (row == m_rows - 1 && column >= m_columns - (pair ? 2 : 1)) return true;
    return row % kControlInterval == 0 && column % kControlInterval <= (pair ? 1 : 0);
  }

  GeneratedNetwork Points(int knownType) {
    GeneratedNetwork network;
    network.points.resize(m_indices.size());
    m_x.resize(m_indices.size());
    m_y.resize(m_indices.size());
    for (std::int32_t row = 0; row < m_rows; ++row) {
      for (std::int32_t column = 0; column < m_columns; ++column) {
        const std::int32_t index = IndexAt(row, column);
        char name[16];
        std::snprintf(name, sizeof(name), "P%07d", static_cast<int>(index));
        m_x[At(index)] = 10000.0 + 500.0 * row + 200.0 * m_noise.Uniform();
        m_y[At(index)] = 20000.0 + 500.0 * column + 200.0 * m_noise.Uniform();
        network.points[At(index)] =
            MakePoint(name, IsControl(row, column, knownType) ? knownType : 0, m_x[At(index)],
                      m_y[At(index)], 100.0 + 50.0 * m_noise.Uniform());
      }
    }
    return network;
  }

  template <std::size_t kCount, typename Visit>
  void ForEachStep(const std::pair<int, int> (&steps)[kCount], Visit visit) const {
    for (std::int32_t row = 0; row < m_rows; ++row) {
      for (std::int32_t column = 0; column < m_columns; ++column) {
        for (std::size_t k = 0; k < kCount; ++k) {
          const std::int32_t toRow = row + steps[k].first;
          const std::int32_t toColumn = column + steps[k].second;
          if (toRow < 0 || toRow >= m_rows || toColumn < 0 || toColumn >= m_columns) continue;
          visit(IndexAt(row, column), IndexAt(toRow, toColumn), k);
        }
      }
    }
  }

  std::int32_t m_rows, m_columns;
  Noise m_noise;
  std::vector<std::int32_t> m_indices;  // by place in the grid: the store index
  std::vector<double> m_x, m_y;         // by store index: true coordinates
};

}  // namespace brenu::testing
