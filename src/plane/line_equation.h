#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "core/normal_equations.h"

namespace brenu {

// The azimuth or length of a line from a first to a second point, with its partial derivatives by
// the coordinates of both.  The derivatives by the first point are the negative of those by the
// second.
struct LineEquation {
  static constexpr std::size_t kMostTerms = 5;

  // `dx`, `dy` are the derivatives by the second point.  Points with a negative unknown are held
  // and contribute no terms.
  LineEquation(double lineValue, std::int32_t firstUnknown, std::int32_t secondUnknown, double dx,
               double dy)
      : value(lineValue) {
    if (firstUnknown >= 0) {
      m_terms[m_count++] = {firstUnknown, -dx};
      m_terms[m_count++] = {firstUnknown + 1, -dy};
    }
    if (secondUnknown >= 0) {
      m_terms[m_count++] = {secondUnknown, dx};
      m_terms[m_count++] = {secondUnknown + 1, dy};
    }
  }

  std::span<const Term> Terms() const { return {m_terms, m_count}; }
  // The same with the orientation unknown of a direction, v = ... - z.
  std::span<const Term> TermsWithOrientation(std::int32_t orientation) {
    m_terms[m_count] = {orientation, -1.0};
    return {m_terms, m_count + 1};
  }

  double value;  // radians in [0, 2 pi), or metres

 private:
  Term m_terms[kMostTerms];
  std::size_t m_count = 0;
};

}  // namespace brenu
