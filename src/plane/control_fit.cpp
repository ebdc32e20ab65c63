// How well the control points fit the observations.
#include <cmath>
#include <vector>

#include "plane/plane_adjustment.h"

namespace brenu {

// A control point held with the weight W has the cofactors Q = (W + S)^-1, where S is what the
// observations would weigh it with, were it free; g = A'Pv is the gradient of [pvv] / 2 by its
// coordinates.  [pvv] would be least for a correction of -S^-1 g.
std::vector<ControlFit> PlaneAdjustment::ControlFits() const {
  std::vector<ControlFit> fits;
  if (m_rules != RuleSet::kTextbook || !m_normal.IsSolved()) return fits;
  const std::vector<double> b = RightHandSide();  // -g
  for (const PointNo point : m_net->layout.ControlPoints()) {
    const std::int32_t x = 2 * point.Number();
    if (!m_holding.Has(point) || m_isLeftOut[point] != 0) continue;
    const auto& [wx, wy] = m_holding[point];
    if (wx <= 1.0 || wy <= 1.0) continue;  // nothing touches it
    const double qxx = m_normal.Cofactor(x, x);
    const double qyy = m_normal.Cofactor(x + 1, x + 1);
    const double qxy = m_normal.Cofactor(x, x + 1);
    const double determinant = qxx * qyy - qxy * qxy;
    const double sxx = qyy / determinant - wx;
    const double syy = qxx / determinant - wy;
    const double sxy = -qxy / determinant;
    const double bx = b[static_cast<std::size_t>(x)];
    const double by = b[static_cast<std::size_t>(x) + 1];
    if (!(sxx > 1e-6 * wx * 1e-8) || !(syy > 1e-6 * wy * 1e-8)) continue;
    const double s = sxx * syy - sxy * sxy;
    ControlFit fit{point, 0.0, 0.0, bx / sxx, by / syy, bx / std::sqrt(sxx), by / std::sqrt(syy)};
    const bool areBothKnown = s > 1e-9 * sxx * syy;
    fit.dx = areBothKnown ? (syy * bx - sxy * by) / s : fit.ownDx;
    fit.dy = areBothKnown ? (sxx * by - sxy * bx) / s : fit.ownDy;
    fits.push_back(fit);
  }
  return fits;
}

}  // namespace brenu
