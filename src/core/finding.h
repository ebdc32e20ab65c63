// What there is to say about a file, a network or a computation, as data: its sentence is made
// elsewhere, in one place.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "brenu/findings.h"

namespace brenu {

using Code = brenu_code;

enum class Severity : std::uint8_t {
  kNote = BRENU_NOTE,
  kWarning = BRENU_WARNING,
  kError = BRENU_ERROR
};

// The header says of each code which names and values go with it.
struct Finding {
  Code code = BRENU_NOTHING;
  Severity severity = Severity::kError;
  std::int32_t line = 0;           // of the file, counted from 1; 0 for none
  std::string excerpt;             // of the line, or its field, as it stands
  std::vector<std::string> names;  // of points mostly
  std::vector<double> values;
};

inline Finding Error(Code code, std::vector<std::string> names = {},
                     std::vector<double> values = {}) {
  return {code, Severity::kError, 0, {}, std::move(names), std::move(values)};
}
inline Finding Warning(Code code, std::vector<std::string> names = {},
                       std::vector<double> values = {}) {
  return {code, Severity::kWarning, 0, {}, std::move(names), std::move(values)};
}

inline Finding Note(Code code, std::vector<std::string> names = {},
                    std::vector<double> values = {}) {
  return {code, Severity::kNote, 0, {}, std::move(names), std::move(values)};
}

using Findings = std::vector<Finding>;

// Whether one of them is as severe as that.
inline bool Has(const Findings& findings, Severity severity) {
  return std::any_of(findings.begin(), findings.end(),
                     [severity](const Finding& f) { return f.severity >= severity; });
}

// How a computation ended, and what was noticed on the way.  One that did not succeed has the cause
// among its findings, as an error.
struct [[nodiscard]] Outcome {
  bool ok = true;
  Findings findings;

  Outcome() = default;
  // A failure.
  Outcome(Finding cause) : ok(false) {
    findings.push_back(std::move(cause));
  }  // NOLINT(*explicit*)

  // Takes over what another step found, and its failure.
  Outcome& operator+=(Outcome other) {
    ok = ok && other.ok;
    for (Finding& finding : other.findings) findings.push_back(std::move(finding));
    return *this;
  }
};

}  // namespace brenu
