#include <algorithm>
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

// The same by the rules of textbooks: however small, and without cancellation in the azimuth.
void SetEllipse(PlaneResult& point, double sxx, double syy, double sxy) {
  point.mx = std::sqrt(std::max(sxx, 0.0));
  point.my = std::sqrt(std::max(syy, 0.0));
  point.mp = std::hypot(point.mx, point.my);
  const double k = std::hypot(sxx - syy, 2.0 * sxy);
  point.e = std::sqrt(std::max((sxx + syy + k) / 2.0, 0.0));
  point.f = std::sqrt(std::max((sxx + syy - k) / 2.0, 0.0));
  const double t = std::atan2(2.0 * sxy, sxx - syy) / 2.0;
  point.t = RadToDms(t < 0.0 ? t + kPi : t);
}

}  // namespace

// By the rules of textbooks errors are a priori when nothing is redundant.
double PlaneAdjustment::PrecisionScale() const {
  return m_rules == RuleSet::kTextbook && m_redundancy <= 0 ? 1.0 : m_sigma0;
}

void PlaneAdjustment::CalcPointPrecision() {
  constexpr std::size_t kNames = 1024;  // computed by one thread
  const double variance = PrecisionScale() * PrecisionScale();
  m_normal.MakeCofactors();
  ForEachPart(m_net->layout.Slots().Size(), kNames, [&](std::size_t begin, std::size_t end) {
    for (std::size_t k = begin; k < end; ++k) {
      const std::int32_t x = UnknownOf(Slot(k));
      if (x < 0) continue;  // held, or a name without a point
      const auto set = m_rules == RuleSet::kTextbook ? SetEllipse : SetPrecision;
      set(m_coords[Slot(k)], variance * m_normal.Cofactor(x, x),
          variance * m_normal.Cofactor(x + 1, x + 1), variance * m_normal.Cofactor(x, x + 1));
    }
  });
}

std::optional<PlaneResult> PlaneAdjustment::PrecisionBetween(Slot fromSlot, Slot toSlot) const {
  const NetworkLayout& net = m_net->layout;
  const std::int32_t from = UnknownOf(fromSlot);
  const std::int32_t to = UnknownOf(toSlot);
  const PointNo a = net.PointOf(fromSlot);
  const PointNo b = net.PointOf(toSlot);
  const bool areBothControl = net.IsControl(a) && net.IsControl(b);
  if (from < 0 || to < 0 || areBothControl || IsLeftOut(a) || IsLeftOut(b)) return std::nullopt;
  const Term x[] = {{from, -1.0}, {from + 1, 0.0}, {to, 1.0}, {to + 1, 0.0}};
  const Term y[] = {{from, 0.0}, {from + 1, -1.0}, {to, 0.0}, {to + 1, 1.0}};
  double product[4];
  m_normal.Multiply(x, product);
  const double qxy = product[3] - product[1];
  const double variance = PrecisionScale() * PrecisionScale();
  PlaneResult difference{};
  difference.x = m_coords[toSlot].x - m_coords[fromSlot].x;
  difference.y = m_coords[toSlot].y - m_coords[fromSlot].y;
  SetEllipse(difference, variance * (product[2] - product[0]), variance * m_normal.QuadraticForm(y),
             variance * qxy);
  return difference;
}

}  // namespace brenu
