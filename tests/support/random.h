// Random numbers that are the same on every platform (the standard's distributions are not).
#pragma once

#include <cstdint>
#include <random>

namespace brenu::testing {

class Random {
 public:
  explicit Random(std::uint32_t seed) : m_engine(seed) {}
  // In [low, high).
  double Uniform(double low, double high) {
    return low + (high - low) * (static_cast<double>(m_engine()) / 4294967296.0);
  }
  // In 0..count-1.
  std::int32_t Below(std::int32_t count) { return static_cast<std::int32_t>(Uniform(0, count)); }
  bool Chance(double probability) { return Uniform(0, 1) < probability; }

 private:
  std::mt19937 m_engine;
};

}  // namespace brenu::testing
