#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brenu::tool {

enum class FileKind : std::uint8_t { kUnknown, kProject, kStation };

enum class SectionKind : std::uint8_t { kNone, kParameters, kPoints, kObservations };

// Finds fields that the readers take for something else than they say: a number with a slip in it
// is read up to the slip, an unknown key is skipped, an unknown type means a new point.
class FieldCheck {
 public:
  // More than these would bury what else is said.
  static constexpr std::size_t kMostShown = 5;

  void Look(FileKind kind, SectionKind section, std::size_t number, std::string_view line);

  // A sentence for each of the first doubts, and one for the others.
  std::vector<std::string> Doubts() const;

 private:
  void LookAtParameter(FileKind kind, std::string_view line);
  void LookAtPoint(FileKind kind, std::string_view line);
  void LookAtObservation(FileKind kind, std::string_view line);
  bool LookAtNumber(std::string_view field);
  void LookAtAngle(std::string_view field);
  void Add(const std::string& doubt);

  std::size_t m_number = 0;  // of the line looked at
  std::vector<std::string> m_doubts;
  std::size_t m_others = 0;
};

}  // namespace brenu::tool
