#pragma once

#include "core/normal_equations.h"
#include "plane/approximate/places.h"

namespace brenu::approximate {

// Settles points that were placed one after the other: all at once by least squares, the circles
// held, with weights that fade out what contradicts the rest; then each circle anew by the points.
// Points for which `isHeld` says so stay where they are.
class Settling {
 public:
  Settling(const PlaneNet& net, const Rays& rays, const Accuracy& accuracy, Places& places);

  template <typename IsHeld>
  void Run(int rounds, IsHeld isHeld) {
    Number(isHeld);
    for (int round = 0; round < rounds && Solve(round); ++round) {
      if (round >= kTurn) TurnCircles();
    }
    TurnCircles();
  }

 private:
  static constexpr int kTurn = 5;
  template <typename IsHeld>
  void Number(IsHeld isHeld) {
    m_unknownPoints.clear();
    for (const Slot slot : m_places.Points()) {
      m_number[slot] = isHeld(slot) ? -1 : static_cast<std::int32_t>(m_unknownPoints.size());
      if (m_number[slot] >= 0) m_unknownPoints.push_back(slot);
    }
    m_isAnalysed = false;
  }
  // False when nothing is left to settle.
  bool Solve(int round);
  void TurnCircles();

  struct Equation;
  std::vector<Equation> MakeEquations() const;

  const NetworkLayout& m_net;
  const Rays& m_rays;
  const Accuracy& m_accuracy;
  Places& m_places;
  Table<Slot, std::int32_t> m_number;  // of the points to settle; -1 for held ones
  std::vector<Slot> m_unknownPoints;
  NormalEquations m_normal;
  bool m_isAnalysed = false;
};

}  // namespace brenu::approximate
