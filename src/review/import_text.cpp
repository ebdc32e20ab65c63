#include "review/import_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <unordered_map>
#include <utility>

#include "core/angles.h"
#include "core/text_number.h"
#include "review/sentence.h"
#include "review/text.h"

namespace brenu {

namespace {

constexpr const char* kRoles[] = {
    "header",     "instrument",    "station",           "heights or constants",
    "sight",      "control point", "coordinates",       "orientation",
    "level line", "level reading", "height difference", "result",
    "code",       "note",          "transfer",          "left out"};
static_assert(std::size(kRoles) == static_cast<std::size_t>(LineRole::kLeftOut) + 1);

struct StepText {
  const char* name;
  bool isAngle;
};
constexpr StepText kSteps[] = {{"faces, direction", true},
                               {"faces, zenith angle", true},
                               {"scale and constant of the file", false},
                               {"atmosphere", false},
                               {"constant and scale", false},
                               {"horizontal distance", false},
                               {"curvature and refraction", false},
                               {"eccentric prism, distance", false},
                               {"eccentric prism, direction", true},
                               {"to the ellipsoid", false},
                               {"into the plane", false},
                               {"set turned", true},
                               {"mean of sets, direction", true},
                               {"mean of sets, distance", false},
                               {"setup turned", true},
                               {"mean of setups, direction", true},
                               {"mean of setups, distance", false},
                               {"height difference", false},
                               {"level setup", false},
                               {"mean of level lines", false}};
static_assert(std::size(kSteps) == static_cast<std::size_t>(Step::kLevelLine) + 1);

const char* RoleText(LineRole role) { return kRoles[static_cast<std::size_t>(role)]; }

std::string ValueText(double value, bool isAngle) {
  return isAngle ? DegreesMinutesSeconds(FullCircle(value)) : Fixed(value, 5);
}

// Angles in arc-seconds.
std::string CorrectionText(double value, bool isAngle) {
  const double shown = isAngle ? HalfCircle(value) * kRho : value;
  std::string text;
  if (shown >= 0.0) text += '+';
  text += Fixed(shown, isAngle ? 2 : 5);
  if (isAngle) text += '"';
  return text;
}

void AppendPadded(std::string& out, std::string_view text, std::size_t width) {
  out += text;
  if (text.size() < width) out.append(width - text.size(), ' ');
  out += "  ";
}

void AppendLines(std::string& out, const ImportedBook& imported) {
  for (const LineNote& note : imported.book.notes) {
    out += "  line ";
    AppendInt(out, note.line);
    out += ": ";
    out += RoleText(note.role);
    if (note.why != BRENU_NOTHING) {
      out += " (";
      out += IdOf(note.why);
      out += ')';
    }
    out += '\n';
  }
}

void AppendStep(std::string& out, const LogEntry& entry, const PointNames& names) {
  const StepText& step = kSteps[static_cast<std::size_t>(entry.step)];
  out += "  line ";
  AppendPadded(out, std::to_string(entry.line), 6);
  AppendPadded(out, Line(names[entry.station], names[entry.target]), 16);
  AppendPadded(out, entry.set == 0 ? "" : "set " + std::to_string(entry.set), 6);
  AppendPadded(out, step.name, 30);
  AppendPadded(out, ValueText(entry.raw, step.isAngle), 12);
  AppendPadded(out, CorrectionText(entry.correction, step.isAngle), 12);
  out += ValueText(entry.result, step.isAngle) + '\n';
}

void AppendSpread(std::string& out, const SurveyReduction& survey) {
  out += "\nPrecision\n";
  if (const auto error = survey.SetSpread().DirectionError()) {
    out += "  standard error of a direction in one set: " + Fixed(*error * kRho, 2) + "\"\n";
  }
  if (const auto error = survey.SetSpread().DistanceError()) {
    out += "  standard error of a distance in one set: " + Fixed(*error * 1e3, 2) + " mm\n";
  }
  const APriori errors = survey.APrioriErrors();
  out += "  proposed: directions " + Fixed(errors.direction, 2) + "\", distances " +
         Fixed(errors.distance * 1e3, 2) + " mm + " + Fixed(errors.distanceRatio * 1e6, 1) +
         " ppm\n";
}

// "5, 7-9" of ascending numbers; of many ranges the first ones.
std::string Ranges(std::vector<std::int32_t> lines) {
  constexpr int kMost = 100;
  std::sort(lines.begin(), lines.end());
  lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
  std::string text;
  int ranges = 0;
  for (std::size_t i = 0; i < lines.size();) {
    std::size_t end = i + 1;
    while (end < lines.size() && lines[end] == lines[end - 1] + 1) ++end;
    if (ranges++ == kMost) return text + " and " + std::to_string(lines.size() - i) + " more";
    text += (i == 0 ? "" : ", ") + std::to_string(lines[i]);
    if (end > i + 1) text += '-' + std::to_string(lines[end - 1]);
    i = end;
  }
  return text;
}

}  // namespace

std::string BookSummary(const ImportedBook& imported, const PointNames& names) {
  const FieldBook& book = imported.book;
  std::array<std::vector<std::int32_t>, std::size(kRoles)> lines;
  for (const LineNote& note : book.notes) {
    lines[static_cast<std::size_t>(note.role)].push_back(note.line);
  }
  std::string text = Printable(imported.name) + ": " + NameOf(book.format) + ", " +
                     std::to_string(book.lineCount) + " lines";
  std::string separator = "; ";
  for (std::size_t role = 0; role < lines.size(); ++role) {
    if (lines[role].empty()) continue;
    text += separator + kRoles[role] + ' ' + std::to_string(lines[role].size());
    separator = ", ";
  }
  text += '\n';
  for (const Setup& setup : book.setups) {
    if (setup.sights.empty()) continue;
    text += "  " + Printable(names[setup.station]) + ": " + std::to_string(setup.sights.size()) +
            " sights\n";
  }
  for (const LineRole role : {LineRole::kOrientation, LineRole::kResult, LineRole::kCode,
                              LineRole::kNote, LineRole::kTransfer, LineRole::kLeftOut}) {
    const auto& those = lines[static_cast<std::size_t>(role)];
    if (those.empty()) continue;
    text += std::string("  not used, ") + RoleText(role) + ": lines " + Ranges(those) + '\n';
  }
  return text;
}

std::string ImportLog(const FieldImport& import) {
  std::string out;
  for (const ImportedBook& book : import.Books()) {
    out += BookSummary(book, import.Names());
    AppendLines(out, book);
    for (const Sentence& sentence : GroupedSentences(book.book.findings)) {
      out += "  " + sentence.text + '\n';
    }
    out += '\n';
  }
  out += "Reduction: raw value, correction, result\n";
  std::int32_t book = 0;
  for (const LogEntry& entry : import.Log()) {
    if (entry.book != book) out += "  -- next file\n";
    book = entry.book;
    AppendStep(out, entry, import.Names());
  }
  AppendSpread(out, import.Reduction());
  return out;
}

std::vector<Sentence> GroupedSentences(const Findings& findings, Language language) {
  struct Group {
    Severity severity;
    std::string text;
    std::vector<std::int32_t> lines;
  };
  std::vector<Group> groups;
  std::unordered_map<std::string, std::size_t> places;
  for (Finding finding : findings) {
    const std::int32_t line = std::exchange(finding.line, 0);
    const std::string text = SentenceOf(finding, language);
    const auto [place, isNew] = places.try_emplace(text, groups.size());
    if (isNew) groups.push_back({finding.severity, text, {}});
    if (line > 0) groups[place->second].lines.push_back(line);
  }
  std::vector<Sentence> sentences;
  for (const Group& group : groups) {
    std::string where;
    if (!group.lines.empty()) {
      const std::string ranges = Ranges(group.lines);
      const bool isOne = ranges.find_first_not_of("0123456789") == ranges.npos;
      const Words lines = isOne ? Words{"line ", "第 "} : Words{"lines ", "第 "};
      where = lines.In(language) + ranges + Words{": ", " 行："}.In(language);
    }
    sentences.push_back({group.severity, where + group.text});
  }
  return sentences;
}

}  // namespace brenu
