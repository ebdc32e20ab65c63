// Entering the pieces of a line into the store, as both readers do it.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "api/store.h"

namespace brenu {

// The keys under which a format has the two grades and the format of the job.
struct ParamKeys {
  std::string_view levellingGrade, planeGrade, format;
};
// Sets the parameter of that key, with a grade also the limit that belongs to it; other keys are
// passed over.
void EnterParam(AdjParam& param, const ParamKeys& keys, std::string_view key,
                std::string_view value);

// Pieces: name, type, x, y, h.  Null on success, otherwise what is wrong.
const char* EnterPoint(Store& store, std::int32_t index, std::span<const std::string_view> pieces);

// Null on success, otherwise what is wrong.
const char* EnterObs(Store& store, std::string_view station, std::string_view target,
                     const ObsData& obs);

}  // namespace brenu
