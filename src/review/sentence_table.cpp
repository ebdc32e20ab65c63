#include "review/sentence_table.h"

#include <algorithm>

namespace brenu {

const SentenceEntry* FindSentence(std::int32_t code) {
  for (const auto& part : {SentencesOfReading(), SentencesOfData(), SentencesOfComputing(),
                           SentencesOfFieldBooks(), SentencesOfVerdict()}) {
    const auto found = std::lower_bound(
        part.begin(), part.end(), code,
        [](const SentenceEntry& entry, std::int32_t wanted) { return entry.code < wanted; });
    if (found != part.end()) return found->code == code ? &*found : nullptr;
  }
  return nullptr;
}

}  // namespace brenu
