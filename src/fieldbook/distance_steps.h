#pragma once

#include <optional>

#include "fieldbook/reduction_options.h"
#include "fieldbook/set_log.h"

namespace brenu {

// A slope distance as the surveyor wants it corrected: constant, scale and atmosphere.
double CorrectedSlope(double slope, const ReductionOptions& options, const SetLog& log);

// Its horizontal part.  With curvature and refraction, D = s sin z - (1 - k/2) s^2 sin 2z / (2 R),
// at the height of the station (Kahmen and Faig, Surveying).
double HorizontalOf(double slope, double zenith, const ReductionOptions& options,
                    const SetLog& log);

// The height difference of the axis and the target: s cos z, with (1 - k) (s sin z)^2 / (2 R) when
// curvature and refraction are wanted.
double HeightOf(double slope, double zenith, const ReductionOptions& options);

// A horizontal distance on the ellipsoid and in the plane of the projection, where wanted.
double ProjectedDistance(double horizontal, const ReductionOptions& options, const SetLog& log);

}  // namespace brenu
