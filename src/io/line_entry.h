#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "io/doubts.h"
#include "io/grammar.h"
#include "job/store.h"

namespace brenu {

// Why a line cannot be entered; empty when it was.
using Fault = std::optional<Finding>;

// Enters the lines of a format into parameters and store, with doubts about their fields.
class LineEntry {
 public:
  LineEntry(AdjParam& param, Store& store, Doubts& doubts)
      : m_param(param), m_store(store), m_doubts(doubts) {}

  Fault Enter(const Grammar& grammar, Section section, std::string_view line);
  // The next point gets the index 0.
  void RestartPoints() { m_nextPoint = 0; }

 private:
  using Pieces = std::vector<std::string_view>;

  Fault EnterParam(const Grammar& grammar, std::string_view line);
  Fault EnterPoint(const Grammar& grammar, std::string_view line);
  Fault EnterObs(const Grammar& grammar, std::string_view line);
  // Whether the line has as many pieces as the rule wants; `wrong` when it has not.
  Fault CheckPieces(const Pieces& pieces, const LineRule& rule, Code wrong);
  // The value of a field, or what it is read as when it is empty.
  double Value(const Field& field, std::string_view piece);

  AdjParam& m_param;
  Store& m_store;
  Doubts& m_doubts;
  std::int32_t m_nextPoint = 0;
};

// "a, b, c"
std::string Joined(const std::vector<std::string_view>& texts);

}  // namespace brenu
