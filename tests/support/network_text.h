// Small networks as project files.
#pragma once

#include <string>

namespace brenu::testing {

// The text with one place of it changed.
inline std::string With(std::string text, const std::string& from, const std::string& to) {
  return text.replace(text.find(from), from.size(), to);
}

// P half way between two bench marks, 4 mm of misclosure.
inline const std::string kLevelling =
    "[PARAM]\nMO:2\nLvl1:4\n\n[PT]\nA,01,,,100\nB,01,,,101\nP,00,,,\n\n"
    "[OBS]\nA,P,,1000,0.504,\nB,P,,1000,-0.5,\n";

}  // namespace brenu::testing
