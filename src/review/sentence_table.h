#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "core/finding.h"
#include "review/language.h"

namespace brenu {

// How a finding is put into words.  Both texts have the same placeholders, in braces:
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
  Words text;
};

// Null for a number that is no code.
const SentenceEntry* FindSentence(std::int32_t code);

// The parts of the table, each in ascending codes and behind the one before.
std::span<const SentenceEntry> SentencesOfReading();
std::span<const SentenceEntry> SentencesOfData();
std::span<const SentenceEntry> SentencesOfComputing();
std::span<const SentenceEntry> SentencesOfFieldBooks();
std::span<const SentenceEntry> SentencesOfVerdict();

constexpr bool AreAscending(std::span<const SentenceEntry> entries) {
  for (std::size_t i = 1; i < entries.size(); ++i) {
    if (entries[i - 1].code >= entries[i].code) return false;
  }
  return true;
}

}  // namespace brenu
