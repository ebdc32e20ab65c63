// Reads the input as a project file and computes everything on what was loaded.
#include "exercise.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  brenu::fuzz::ExerciseFile(OpenBrenuAdjustFile, data, size);
  return 0;
}
