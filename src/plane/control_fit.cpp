// How well the control points fit the observations.
#include <cmath>
#include <vector>

#include "plane/plane_adjustment.h"

namespace brenu {

// A control point held with the weight W has the cofactors Q = (W + S)^-1, where S is what the
// observations would weigh it with, were it free; g = A'Pv is the gradient of [pvv] / 2 by its
// coordinates.  [pvv] would be least for a correction of -S^-1 g.
std::vector<ControlFit> PlaneAdjustment::FitControl() const {
  std::vector<ControlFit> fits;
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
    constexpr double kRounding = 1e-14;
    if (!(sxx > kRounding * wx) || !(syy > kRounding * wy)) continue;
    const double s = sxx * syy - sxy * sxy;
    ControlFit fit{point, 0.0, 0.0, bx / sxx, by / syy, bx / std::sqrt(sxx), by / std::sqrt(syy)};
    const bool areBothKnown = s > 1e-9 * sxx * syy;
    fit.dx = areBothKnown ? (syy * bx - sxy * by) / s : fit.ownDx;
    fit.dy = areBothKnown ? (sxx * by - sxy * bx) / s : fit.ownDy;
    fits.push_back(fit);
  }
  return fits;
}

// The same without linear equations, which are only near the truth when the error is gross: the
// coordinate becomes an unknown that starts with the correction found.
double PlaneAdjustment::FreeCorrection(PointNo point, bool isX, double correction) const {
  PlaneAdjustment free(m_net, m_rules);
  free.m_coords = m_coords;
  free.m_obs = m_obs;
  free.m_isLeftOut = m_isLeftOut;
  free.m_freed = 2 * point.Number() + (isX ? 0 : 1);
  PlaneResult& place = free.m_coords[m_net->layout.SlotOf(point)];
  double& coordinate = isX ? place.x : place.y;
  const double held = coordinate;
  coordinate += correction;
  return free.Converge().ok ? coordinate - held : correction;
}

void PlaneAdjustment::RefineControlMisfit(Finding& misfit) {
  const PointNo point = m_net->layout.IndexOfPoint(misfit.names[0]);
  const bool isX = misfit.names[1] == "X";
  for (ControlFit& fit : m_controlFits) {
    if (fit.point != point) continue;
    double& correction = isX ? fit.ownDx : fit.ownDy;
    correction = FreeCorrection(point, isX, correction);
    misfit.values[0] = correction;
  }
}

}  // namespace brenu
