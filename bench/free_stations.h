// A survey of today: points measured from total stations set up freely among them.
#pragma once

#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "bench/grid_network.h"

namespace brenu::testing {

// Points on a square grid some 60 m apart, one in sixteen known, and a station in the middle of
// each four, which takes directions and distances to the sixteen points around it.  About `count`
// points, stations among them; the same on every machine.
class FreeStations {
 public:
  explicit FreeStations(std::int32_t count)
      : m_side(static_cast<std::int32_t>(std::lround(std::sqrt(count / 2.0))) + 1) {
    m_network.param.MO = kDirectionError;
    m_network.param.MS = kDistanceError;
    m_network.param.MR = 0.0;
  }

  GeneratedNetwork Make() {
    for (std::int32_t i = 0; i < m_side; ++i) {
      for (std::int32_t j = 0; j < m_side; ++j) {
        AddPoint('P', i, j, i % 4 == 0 && j % 4 == 0 ? 10 : 0, 0.0);
      }
    }
    for (std::int32_t i = 0; i + 1 < m_side; ++i) {
      for (std::int32_t j = 0; j + 1 < m_side; ++j) Occupy(i, j);
    }
    for (PointData& p : m_network.points) {
      if (p.type == 0) p.x = p.y = 0.0;
    }
    return std::move(m_network);
  }

 private:
  static constexpr double kStep = 60.0;            // metres
  static constexpr double kDirectionError = 3.0;   // arc-seconds
  static constexpr double kDistanceError = 0.003;  // metres

  std::size_t AddPoint(char kind, std::int32_t i, std::int32_t j, int type, double offset) {
    char name[24];
    std::snprintf(name, sizeof(name), "%c%04d-%04d", kind, static_cast<int>(i),
                  static_cast<int>(j));
    const double x = 5000.0 + kStep * i + offset + 30.0 * m_noise.Uniform();
    const double y = 8000.0 + kStep * j + offset + 30.0 * m_noise.Uniform();
    m_x.push_back(x);
    m_y.push_back(y);
    m_network.points.push_back(MakePoint(name, type, x, y, 0.0));
    return m_x.size() - 1;
  }

  void Occupy(std::int32_t i, std::int32_t j) {
    const std::size_t station = AddPoint('S', i, j, 0, kStep / 2.0);
    const double circle = 0.2 + 5.8 * m_noise.Uniform();
    for (std::int32_t row = i - 1; row <= i + 2; ++row) {
      for (std::int32_t column = j - 1; column <= j + 2; ++column) {
        if (row < 0 || row >= m_side || column < 0 || column >= m_side) continue;
        const std::int32_t target = row * m_side + column;
        const double dx = m_x[static_cast<std::size_t>(target)] - m_x[station];
        const double dy = m_y[static_cast<std::size_t>(target)] - m_y[station];
        const double reading =
            std::atan2(dy, dx) + circle + 12.0 + m_noise.Normal() * kDirectionError / 206264.8;
        ObsData obs = Direction(PackedDegrees(std::fmod(reading, 2.0 * kHalfTurn)));
        obs.distance = std::hypot(dx, dy) + m_noise.Normal() * kDistanceError;
        m_network.lines.push_back({static_cast<std::int32_t>(station), target, obs});
      }
    }
  }

  std::int32_t m_side;
  Noise m_noise;
  GeneratedNetwork m_network;
  std::vector<double> m_x, m_y;
};

}  // namespace brenu::testing
