// Reads the input as a project file and computes everything on what was loaded.
#include "exercise.h"
#include "scratch_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const brenu::fuzz::ScratchFile file;
  file.Write(data, size);
  AdjustmentContext* const context = StartAdjustment();
  OpenBrenuAdjustFile(context, file.Path());
  brenu::fuzz::Exercise(context, file.Path());
  EndAdjustment(context);
  return 0;
}
