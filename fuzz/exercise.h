#pragma once

#include <cstddef>
#include <cstdint>

#include "brenu/survey.h"

namespace brenu::fuzz {

// A network with more points is read, but not computed, so that an input stays fast.  Networks up
// to here reach both solvers, and have the sparse one divide its graph.
inline constexpr unsigned kMostPoints = 150;

// Every computation, each followed by every getter and both reports, which go to the file given.
// Ends the program when the names of the store and their index disagree.
void Exercise(AdjustmentContext* context, const char* scratch);

// Writes the input to a file, opens a job with it and exercises that.
void ExerciseFile(bool (*open)(AdjustmentContext*, const char*), const std::uint8_t* data,
                  std::size_t size);

// Every getter for every point and every pair of points with indices close to each other.
void ReadResults(AdjustmentContext* context);

// The report in every form and language; ends the program when one is missing or no JSON.
void ReadReports(AdjustmentContext* context);

// Every finding with all its parts; ends the program when its text is cut wrongly.
void ReadFindings(AdjustmentContext* context);

// Ends the program when a stored point is not found under its name.
void CheckStore(AdjustmentContext* context);

}  // namespace brenu::fuzz
