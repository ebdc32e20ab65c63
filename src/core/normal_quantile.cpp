#include "core/normal_quantile.h"

#include <cmath>

namespace brenu {

double NormalQuantile(double p) {
  if (p == 0.5) return 0.0;
  if (p > 0.9999997) return 5.0;
  if (p < 3e-7) return -5.0;
  if (p < 0.5) return -NormalQuantile(1.0 - p);

  // From y^10 down to y^0.
  static constexpr double kCoefficients[] = {6.936233982e-13, 3.657763036e-11,  -3.231081277e-9,
                                             8.360937017e-8,  -1.04527497e-6,   5.824238515e-6,
                                             6.841218299e-6,  -0.0002250947176, -0.0008364353589,
                                             0.03706987906,   1.570796288};
  const double y = -std::log(4.0 * p * (1.0 - p));
  double polynomial = 0.0;
  for (const double c : kCoefficients) polynomial = polynomial * y + c;
  return std::sqrt(y * polynomial);
}

}  // namespace brenu
