#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/finding.h"
#include "fieldbook/field_book.h"

namespace brenu {

struct ReadOptions {
  // Codes (word 41 of GSI) that begin a setup.
  std::vector<std::string> stationCodes = {"2", "21"};
};

// Reads the text of a field book, its format recognised by content.  Fails when it is none; else
// whatever can be read is, and the findings of the book tell the rest.  Names are entered into
// `names`, which several books may share.
Outcome ReadBook(std::string_view text, const ReadOptions& options, PointNames& names,
                 FieldBook& book);

}  // namespace brenu
