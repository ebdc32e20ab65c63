#include "review/load.h"

#include "job/network_build.h"

namespace brenu {

ReadResult Load(AdjustmentContext& context, LineReader& file) {
  ReadResult read = ReadByContent(context.param, context.store, file);
  if (read.outcome.ok && read.kind == FileKind::kProject) KeepOriginalPoints(context);
  return read;
}

}  // namespace brenu
