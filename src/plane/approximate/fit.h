#pragma once

#include <optional>
#include <vector>

#include "plane/approximate/rays.h"

namespace brenu::approximate {

// A plane similarity: turn, scale, shift; with its sense reversed first where it mirrors.
struct Similarity {
  double turn = 0.0;  // radians
  double scale = 1.0;
  Position shift{0.0, 0.0};
  bool mirrors = false;

  Position operator()(const Position& p) const;
};

struct CommonPlace {
  Position own, known;
};

// The similarity with which most of the common points agree, two at least; of scale 1 unless
// `scaleIsFree`.  With `mayMirror` three are needed.
std::optional<Similarity> FitPlaces(const std::vector<CommonPlace>& common, bool scaleIsFree,
                                    bool mayMirror);

}  // namespace brenu::approximate
