// Reading the two text formats.  docs/files.md has them in words.
#pragma once

#include "io/grammar.h"
#include "io/line_reader.h"
#include "job/store.h"

namespace brenu {

// Each enters what the file holds; points get the indices 0, 1, 2... of their lines.  A failure
// names its line; what stands before it stays entered.  Doubts about what was read are among the
// findings of a success, too, up to a number that can still be read.

// Exactly as the functions of the C interface are defined: text without any section of the format
// is no failure, and a station and observation file with returns behind its headers has none.  A
// station reader refuses a file that begins as a project file.
Outcome ReadAs(const Grammar& grammar, AdjParam& param, Store& store, LineReader& file);

// By content: the first header of either format decides.  A byte order mark, returns behind headers
// and headers without an empty line before them do no harm; what is no such file is refused.
struct ReadResult {
  FileKind kind = FileKind::kUnknown;
  Outcome outcome;
};
ReadResult ReadByContent(AdjParam& param, Store& store, LineReader& file);

}  // namespace brenu
