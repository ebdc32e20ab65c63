// What an import did, as text.
#pragma once

#include <string>
#include <vector>

#include "core/finding.h"
#include "fieldbook/import.h"
#include "review/language.h"

namespace brenu {

// How many setups, sights, lines and points the book holds, and how many of its lines became what.
std::string BookSummary(const ImportedBook& book, const PointNames& names, Language language);

// What each line of each book became, then each step of the reduction with raw value, correction
// and result, then the spread of the sets.
std::string ImportLog(const FieldImport& import, Language language);

// Findings of equal words as one sentence with all their lines: "lines 5, 7-9: ...".
struct Sentence {
  Severity severity = Severity::kNote;
  std::string text;
};
std::vector<Sentence> GroupedSentences(const Findings& findings,
                                       Language language);

}  // namespace brenu
