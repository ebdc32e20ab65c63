#pragma once

#include "fieldbook/reduction_log.h"

namespace brenu {

// Where the steps of one value are written.
struct SetLog {
  ReductionLog* log = nullptr;  // null: nowhere
  LogEntry place;               // book, line, station, target and set

  void Add(Step step, double raw, double result) const { Add(step, raw, result - raw, result); }
  void Add(Step step, double raw, double correction, double result) const {
    if (log == nullptr) return;
    LogEntry entry = place;
    entry.step = step;
    entry.raw = raw;
    entry.correction = correction;
    entry.result = result;
    log->push_back(entry);
  }
};

}  // namespace brenu
