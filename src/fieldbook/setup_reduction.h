// The sights of one setup: faces, sets, means.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/finding.h"
#include "fieldbook/field_book.h"
#include "fieldbook/reduction_options.h"
#include "fieldbook/set_log.h"
#include "fieldbook/spread.h"

namespace brenu {

// A mean and the number of sets that it is made of, its weight.
struct SetMean {
  std::optional<double> value;
  double sets = 0.0;
};

// Everything from one point to another.  A direction is on the circle of the first set.
struct TargetMeans {
  std::int32_t line = 0;  // of the first sight
  NameNo target;
  SetMean direction, distance, azimuth;
  SetMean height;                       // difference, target minus station
  std::optional<double> slopeDistance;  // of the height difference
  bool lacksHeights = false;            // of instrument or target
};

// Where findings and the log of the steps go.
struct ReductionNotes {
  const PointNames& names;
  Findings& findings;
  Spread& spread;
  SetLog log;
};

// The k-th pointing at a target in a face belongs to set k.  In each set the two faces are
// averaged, slope distances become horizontal, eccentric prisms are brought to their points; later
// sets are turned onto the first and averaged with it.  Targets come in the order of their first
// sights.
std::vector<TargetMeans> ReduceSetup(const Setup& setup, const ReductionOptions& options,
                                     ReductionNotes& notes);

}  // namespace brenu
