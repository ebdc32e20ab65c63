#pragma once

#include <cstdint>
#include <memory>

#include "job/adjustment_context.h"

namespace brenu {

// Sets the context's network type from the types of its points, and returns it.
std::int32_t ClassifyNetwork(AdjustmentContext& context);

// Classifies, then fills the levelling and the plane network from the store, as far as the type
// includes them.  Every computation starts here, so that edits of the store take effect; networks
// without any are kept.  Nothing is adjusted then.
void BuildNetworks(AdjustmentContext& context);

// The plane network as the store has it, but with the control point of that index as a new one.
std::shared_ptr<const PlaneNet> PlaneNetFreeing(const AdjustmentContext& context,
                                                std::int32_t index);

// Keeps the points as a project file gave them.
void KeepOriginalPoints(AdjustmentContext& context);

}  // namespace brenu
