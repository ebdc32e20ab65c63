#pragma once

#include <cstdint>

#include "core/finding.h"

namespace brenu {

// How a finding is put into words.  Placeholders in braces stand for
//   {1} {2} {3}   a name
//   {points}      all names, as "the points A, B and C"
//   {v1} {v2.3}   a value, rounded to whole numbers or that many decimals
//   {x}           the excerpt, quoted
//   {+1}          " and 7 more" for a value of 7, nothing for 0
//   {?1 text}     the text when the value is not 0
//   {&direction|distance}  "1 direction only", "2 directions and 1 distance only", "no
//                 observation", by the first two values
//   {n1} {k1} {p1}  "heights" or "plane"; the kind of an observation, or of many
//   {u14}         "12.3 mm smaller": value 4 as the error of an observation of the kind of value 1
//   {=1.2 m}      "0.25 m greater" or "0.25 m smaller", by the sign of the value
struct SentenceEntry {
  Code code;
  const char* id;
  const char* text;
};

// Null for a number that is no code.
const SentenceEntry* FindSentence(std::int32_t code);

}  // namespace brenu
