// The barrier of both C interfaces: pointers are checked, and nothing thrown, memory exhaustion
// included, gets past it.
#pragma once

#include <optional>

#include "job/adjustment_context.h"

namespace brenu {

// Runs the body when all pointers are there; otherwise, and when it throws, the result is the
// failure value.
template <typename Result, typename Body, typename... Pointers>
Result Guarded(Result failure, Body body, Pointers... pointers) noexcept {
  if (!((pointers != nullptr) && ...)) return failure;
  try {
    return body();
  } catch (...) {
    return failure;
  }
}

// The same for calls that change, compute, read or write: the findings of the outcome stay in the
// context, and its success is returned.
template <typename Body, typename... Pointers>
bool Reported(AdjustmentContext* context, Body body, Pointers... pointers) noexcept {
  if (context == nullptr) return false;
  Findings& findings = context->findings;  // always has room for one
  findings.clear();
  try {
    Outcome outcome;
    if (((pointers != nullptr) && ...)) {
      outcome = body();
    } else {
      outcome = Error(BRENU_NULL_ARGUMENT);
    }
    if (!outcome.findings.empty()) findings.swap(outcome.findings);  // cannot fail
    return outcome.ok;
  } catch (...) {
    findings.clear();
    findings.push_back(Error(BRENU_OUT_OF_MEMORY));
    return false;
  }
}

// Copies a result out, if there is one.
template <typename Record>
bool Deliver(const std::optional<Record>& result, Record* out) {
  if (result) *out = *result;
  return result.has_value();
}

}  // namespace brenu
