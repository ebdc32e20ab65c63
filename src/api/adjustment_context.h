#pragma once

#include <cstdint>
#include <vector>

#include "api/store.h"
#include "core/records.h"
#include "level/level_net.h"
#include "plane/plane_net.h"

// The whole state of one adjustment job, behind the opaque handle of the public header.
struct AdjustmentContext {
  AdjParam param = brenu::kDefaultParam;
  brenu::Store store;
  brenu::Store::PointMap
      originalPoints;  // as the last project file gave them; no function reads them
  std::int32_t netType = brenu::kNoControl;  // as of the last build or classification
  brenu::LevelNet levelNet;
  brenu::PlaneNet planeNet;
  std::vector<CloseError> closeErrors;  // levelling records, then traverses
};
