// Round numbers for scale bars and exaggerations.
#pragma once

#include <string>

namespace brenu {

// The largest number of the series ..., 0.5, 1, 2, 5, 10, ... that is not above `most`; 0 when
// that is no positive number.
double RoundDown125(double most);

// A number of the series with as many decimals as it has, "0.05", "2000".
std::string RoundNumber(double value);

// A length of the series with the unit that suits it: "20 km", "500 m", "5 mm".
std::string RoundLength(double metres);

}  // namespace brenu
