#include "review/load.h"

#include <utility>

#include "io/read_file.h"
#include "job/network_build.h"

namespace brenu {

Outcome Load(AdjustmentContext& context, LineReader& file) {
  ReadResult read = ReadByContent(context.param, context.store, file);
  if (read.outcome.ok && read.kind == FileKind::kProject) KeepOriginalPoints(context);
  return std::move(read.outcome);
}

}  // namespace brenu
