#include <cmath>

#include "core/angles.h"
#include "core/parallel.h"
#include "plane/plane_adjustment.h"

namespace brenu {

namespace {

// Below this the point is taken as held, and no ellipse is computed (metres).
constexpr double kHeldPoint = 0.0001;

// Standard errors and error ellipse from the covariances of X and Y (square metres).
void SetPrecision(PlaneResult& point, double sxx, double syy, double sxy) {
  point.mx = std::sqrt(sxx);
  point.my = std::sqrt(syy);
  point.mp = std::sqrt(sxx + syy);
  if (point.mp < kHeldPoint) return;
  const double k = std::sqrt(4.0 * sxy * sxy + (sxx - syy) * (sxx - syy));
  point.e = std::sqrt((sxx + syy + k) / 2.0);
  point.f = std::sqrt((sxx + syy - k) / 2.0);
  double t = sxx > syy ? 0.0 : kPi / 2.0;
  if (!(std::fabs(sxy) < 1e-14)) {
    t = std::atan((point.e * point.e - sxx) / sxy);
    if (t < 0.0) t += kPi;
  }
  point.t = RadToDms(t);
}

}  // namespace

void PlaneAdjustment::CalcPointPrecision() {
  constexpr std::size_t kNames = 1024;  // computed by one thread
  const double variance = m_sigma0 * m_sigma0;
  m_normal.MakeCofactors();
  ForEachPart(m_net->layout.Slots().Size(), kNames, [&](std::size_t begin, std::size_t end) {
    for (std::size_t k = begin; k < end; ++k) {
      const std::int32_t x = UnknownOf(Slot(k));
      if (x < 0) continue;  // held, or a name without a point
      SetPrecision(m_coords[Slot(k)], variance * m_normal.Cofactor(x, x),
                   variance * m_normal.Cofactor(x + 1, x + 1),
                   variance * m_normal.Cofactor(x, x + 1));
    }
  });
}

}  // namespace brenu
