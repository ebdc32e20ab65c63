#pragma once

#include <nlohmann/json.hpp>

#include "fieldbook/import.h"

namespace brenu {

// The options of an import from the form of the page: the names of ReductionOptions and
// stationCodes, of the air {pressure, temperature, humidity, wavelength}, of what the instrument
// assumed {assumedPressure, ...}.  What is absent is as usual.
ImportOptions ImportOptionsOf(const nlohmann::ordered_json& given);

}  // namespace brenu
