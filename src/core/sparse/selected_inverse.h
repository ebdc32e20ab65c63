#pragma once

#include <span>

#include "core/sparse/symbolic_factor.h"

namespace brenu {

// Replaces the factors L D L^T of a symmetric matrix by those elements of its inverse that lie in
// the pattern of L (Takahashi, Fagan and Chen, Formation of a sparse bus impedance matrix and its
// application to short circuit study), supernode by supernode.
void InvertSelected(const SymbolicFactor& symbolic, std::span<double> elements);

}  // namespace brenu
