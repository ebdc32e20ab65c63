#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/finding.h"
#include "core/records.h"
#include "core/rules.h"
#include "job/store.h"
#include "level/level_adjustment.h"
#include "plane/placed_points.h"
#include "plane/plane_adjustment.h"
#include "plane/traverse_table.h"

namespace brenu {

// The height network of a job.
struct LevelPart {
  std::shared_ptr<const LevelNet> net = std::make_shared<LevelNet>();  // of the last build
  Table<PointNo, double> heights;  // stored ones, after approximate ones were computed those
  LevelAdjustment results;         // of the last computation, which may be of an earlier build
};

// The plane network of a job.
struct PlanePart {
  std::shared_ptr<const PlaneNet> net = std::make_shared<PlaneNet>();  // of the last build
  PlacedPoints points;      // stored coordinates, then approximate or placed ones
  PlaneAdjustment results;  // of the last computation, which may be of an earlier build
  TraverseTable traverses;  // of the last closure errors or computation without orientation
};

using PairOfNames = std::pair<std::string, std::string>;

// What the networks were made of: equal for networks that need not be made again.
struct BuildInput {
  std::shared_ptr<const std::byte> store;  // its state; null before the first build
  AdjParam param = kDefaultParam;
  std::vector<PairOfNames> askedPairs;
};

// The networks that a computation adjusted.
struct AdjustedParts {
  bool heights = false;
  bool plane = false;
};

}  // namespace brenu

// The whole state of one adjustment job, behind the opaque handle of the public header.
struct AdjustmentContext {
  AdjustmentContext() { findings.reserve(1); }  // to say that memory is exhausted takes none

  AdjParam param = brenu::kDefaultParam;
  brenu::Rules rules;  // of the computations beyond the 61 functions, which are always classic
  brenu::Store store;
  // Points whose relative precision will be asked for, stored pairs apart, by name.
  std::vector<brenu::PairOfNames> askedPairs;
  brenu::Store::PointMap
      originalPoints;  // as the last project file gave them; no function reads them
  std::int32_t netType = brenu::kNoControl;  // as of the last build or classification
  brenu::BuildInput builtFrom;               // of the last build
  brenu::LevelPart level;
  brenu::PlanePart plane;
  brenu::AdjustedParts adjusted;        // by the last computation
  std::vector<CloseError> closeErrors;  // levelling records, then traverses
  std::string reportText;               // the report last asked for, held for the host
  brenu::Findings findings;             // of the last call that changes, computes, reads or writes
};
