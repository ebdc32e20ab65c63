// Why something failed, and what is doubtful, for C++17; part of brenu.hpp.
#ifndef BRENU_ERROR_HPP_
#define BRENU_ERROR_HPP_

#include <cstdint>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "brenu/survey.h"

namespace brenu {
inline namespace host {

// What there is to say about a file, a network or a computation; findings.h lists the codes.
struct Finding {
  std::int32_t code;               // brenu_code
  std::int32_t severity;           // brenu_severity
  std::int32_t line;               // of the file, from 1; 0 for none
  std::string id;                  // the code as a word, such as "heights-unreached"
  std::string sentence;            // where, what is wrong, what to do; English
  std::string excerpt;             // what stands in the file: the line or the field; empty for none
  std::vector<std::string> names;  // of points mostly; findings.h says which, as of the values
  std::vector<double> values;
};

// The cause of a failure; what() is its sentence.
class Error : public std::runtime_error {
 public:
  explicit Error(Finding cause)
      : std::runtime_error(cause.sentence),
        m_cause(std::make_shared<const Finding>(std::move(cause))) {}

  const Finding& Cause() const { return *m_cause; }
  std::int32_t Code() const { return m_cause->code; }
  const std::string& Id() const { return m_cause->id; }
  const std::vector<std::string>& Names() const { return m_cause->names; }
  std::int32_t Line() const { return m_cause->line; }

 private:
  std::shared_ptr<const Finding> m_cause;  // copies of exceptions must not throw
};

// Text of any length from a function that copies it to a place with room; empty when there is none.
template <typename Copy>
std::string CopiedText(Copy copy) {
  const std::int32_t length = copy(nullptr, 0);
  std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
  if (length > 0) copy(text.data(), length + 1);
  return text;
}

inline Finding FindingAt(AdjustmentContext* context, std::int32_t index) {
  brenu_finding raw{};
  brenu_get_finding(context, index, &raw);
  Finding finding{raw.code, raw.severity, raw.line, brenu_code_id(raw.code), {}, {}, {}, {}};
  finding.sentence = CopiedText([=](char* text, std::int32_t room) {
    return brenu_finding_text(context, index, text, room);
  });
  finding.excerpt = CopiedText([=](char* text, std::int32_t room) {
    return brenu_finding_excerpt(context, index, text, room);
  });
  for (std::int32_t i = 0; i < raw.nameCount; ++i) {
    finding.names.push_back(CopiedText([=](char* text, std::int32_t room) {
      return brenu_finding_name(context, index, i, text, room);
    }));
  }
  finding.values.resize(static_cast<std::size_t>(raw.valueCount));
  for (std::int32_t i = 0; i < raw.valueCount; ++i) {
    brenu_finding_value(context, index, i, &finding.values[static_cast<std::size_t>(i)]);
  }
  return finding;
}

// All findings of the last call on the context that changes, computes, reads or writes.
inline std::vector<Finding> FindingsOf(AdjustmentContext* context) {
  std::vector<Finding> findings;
  const std::int32_t count = brenu_finding_count(context);
  for (std::int32_t i = 0; i < count; ++i) findings.push_back(FindingAt(context, i));
  return findings;
}

// Throws the first error among them as Error, memory exhaustion as std::bad_alloc.
inline void ThrowCause(AdjustmentContext* context) {
  brenu_finding raw{};
  for (std::int32_t i = 0; brenu_get_finding(context, i, &raw); ++i) {
    if (raw.code == BRENU_OUT_OF_MEMORY) throw std::bad_alloc();
    if (raw.severity == BRENU_ERROR) throw Error(FindingAt(context, i));
  }
}

}  // namespace host
}  // namespace brenu

#endif  // BRENU_ERROR_HPP_
