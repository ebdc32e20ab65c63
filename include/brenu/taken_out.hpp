// What data snooping took out of a job, for C++17; part of brenu.hpp.
#ifndef BRENU_TAKEN_OUT_HPP_
#define BRENU_TAKEN_OUT_HPP_

#include <cstdint>
#include <string>
#include <vector>

#include "brenu/survey.h"

namespace brenu {
inline namespace host {

struct OneObservation {
  std::string station, target;
  brenu_observation_kind kind;
};

struct TakenOut {
  OneObservation observation;
  double testValue;  // when it was taken out
  double error;      // estimated: observed minus adjusted without it, metres or arc-seconds
  // Others whose test values cannot be told apart from its own: the error may be in one of them.
  std::vector<OneObservation> alternatives;
};

inline OneObservation NamesOf(const brenu_observation& o) {
  return {o.station, o.target, static_cast<brenu_observation_kind>(o.kind)};
}

inline std::vector<TakenOut> AllTakenOutOf(AdjustmentContext* context) {
  std::vector<TakenOut> all;
  brenu_taken_out record{};
  for (std::int32_t i = 0; brenu_get_taken_out(context, i, &record); ++i) {
    TakenOut& out = all.emplace_back();
    out = {NamesOf(record.observation), record.testValue, record.error, {}};
    brenu_observation other{};
    for (std::int32_t k = 0; brenu_get_alternative(context, i, k, &other); ++k) {
      out.alternatives.push_back(NamesOf(other));
    }
  }
  return all;
}

}  // namespace host
}  // namespace brenu

#endif  // BRENU_TAKEN_OUT_HPP_
