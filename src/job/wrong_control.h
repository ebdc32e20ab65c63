#pragma once

#include "job/adjustment_context.h"

namespace brenu {

// Of a plane network that does not converge: the control point without which it does, with the
// coordinate that the observations contradict most, as a warning; of several the one without which
// they agree best.  Tried one after the other, so that large networks are not asked.
Findings FindWrongControl(const AdjustmentContext& context);

}  // namespace brenu
